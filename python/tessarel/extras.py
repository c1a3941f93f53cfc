"""What the package can do without: loaded when it is asked for, and named when it is missing."""

from __future__ import annotations

import importlib
from types import ModuleType

from ._native import Error

_EXTRAS = {  # module: Debian's package, the extra of this package
    "matplotlib": ("python3-matplotlib", "plot"),
    "tqdm": ("python3-tqdm", "progress"),
    "h5py": ("python3-h5py", "hdf5"),
    "distributed": ("python3-distributed", "dask"),
}


def need(name: str) -> ModuleType:
    """The module `name`, such as "matplotlib.pyplot"; raises Error that says how to install it."""
    try:
        return importlib.import_module(name)
    except ImportError as error:
        top = name.partition(".")[0]
        package, extra = _EXTRAS[top]
        raise Error(f'this needs {top}: install {package}, or "tessarel[{extra}]" with pip ({error})') from None
