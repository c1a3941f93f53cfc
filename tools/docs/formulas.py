"""Formulas of the documentation as pictures: a hook of mkdocs that draws each block marked `math` with matplotlib, so that
the site needs nothing from elsewhere."""

import base64
import io
import re

import matplotlib

matplotlib.use("Agg")
matplotlib.rcParams.update({"mathtext.fontset": "cm", "svg.hashsalt": "formulas", "svg.fonttype": "path"})
from matplotlib.figure import Figure  # noqa: E402


def picture(formula):
    """An element with the formula drawn in SVG, which itself is its alternative text."""
    figure = Figure(figsize=(0.01, 0.01))
    # A formula is one line for matplotlib, whose fractions need no \\left and \\right of nested brackets.
    line = " ".join(formula.split())
    figure.text(0, 0, f"${line}$", fontsize=13)
    svg = io.BytesIO()
    figure.savefig(svg, format="svg", bbox_inches="tight", pad_inches=0.03, metadata={"Date": None})
    data = base64.b64encode(svg.getvalue()).decode()
    text = line.replace('"', "&quot;").replace("<", "&lt;")
    return f'<img class="formula" alt="{text}" src="data:image/svg+xml;base64,{data}">'


def on_page_markdown(markdown, **_):
    return re.sub(r"^```math\n(.*?)^```$", lambda block: picture(block[1]), markdown, flags=re.S | re.M)
