#!/usr/bin/env python3
"""Compiles and runs the C and C++ snippets and runs the Python snippets of the documentation against a build tree, and
looks for every text of the library on the page of error texts.

Usage: check_snippets.py BUILD_DIR

A snippet is a fenced block marked c, cpp or python that holds a whole program. A line `path/to/libtessarel.so` in it stands
for the built library.
"""

import pathlib
import re
import subprocess
import sys
import tempfile

ROOT = pathlib.Path(__file__).resolve().parent.parent
PAGES = ["README.md", *sorted(str(p.relative_to(ROOT)) for p in (ROOT / "docs").rglob("*.md"))]
# What the library's messages begin with, as they stand in the sources.
MESSAGE = re.compile(r'"((?:TESSAREL error|Input |Function [TP]m|Bubble|Dew|Brent|No conv|Michel|Critical|Phase env|'
                     r'Phase code|Place|Temperature|Pressure|For this|T >|q <|Flash|Error|Unexp|Step|Too)(?:[^"\\\n]|\\.)*)"')


def run(command):
    done = subprocess.run(command, capture_output=True, text=True, timeout=120)
    if done.returncode != 0:
        sys.exit(f"{' '.join(command)}\n{done.stdout}{done.stderr}")
    return done.stdout


def check_messages():
    page = (ROOT / "docs" / "errors.md").read_text(encoding="utf-8")
    sources = (ROOT / "src").rglob("*.[ch]pp")
    texts = {text for path in sources for text in MESSAGE.findall(path.read_text(encoding="utf-8"))}
    # A place for a name or a number ends what the page can have.
    missing = sorted(text for text in texts if re.split(r"[<%]|\\\"", text)[0].rstrip() not in page)
    if missing or len(texts) < 100:
        sys.exit(f"texts that docs/errors.md does not have: {missing}")


def main():
    check_messages()
    build = pathlib.Path(sys.argv[1]).resolve()
    library = build / "lib" / "libtessarel.so"
    count = 0
    with tempfile.TemporaryDirectory() as directory:
        work = pathlib.Path(directory)
        for page in PAGES:
            text = (ROOT / page).read_text(encoding="utf-8")
            for language, body in re.findall(r"^```(c|cpp|python)\n(.*?)^```$", text, re.S | re.M):
                count += 1
                if language != "python":
                    source, program = work / f"snippet.{language}", work / "snippet"
                    source.write_text(body)
                    compiler = ["cc", "-std=c11"] if language == "c" else ["c++", "-std=c++20"]
                    run([*compiler, "-Wall", "-Werror", f"-I{ROOT}/include", str(source), "-o", str(program),
                         f"-L{build}/lib", "-ltessarel", f"-Wl,-rpath,{build}/lib"])
                    output = run([str(program)])
                else:
                    source = work / "snippet.py"
                    source.write_text(body.replace("path/to/libtessarel.so", str(library)))
                    output = run([sys.executable, str(source)])
                print(f"{page}: {language} snippet ran\n{output}")
    if count == 0:
        sys.exit("no snippet found")


if __name__ == "__main__":
    main()
