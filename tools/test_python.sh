#!/bin/sh
# Installs the Python package into an environment of its own in build-python-venv/, and runs its tests and the examples
# of README.md and the pages of docs/. TESSAREL_PYTHON_BUILD names a build directory to take the library from, otherwise it is
# built in build-python/.
set -eu
cd "$(dirname "$0")/.."
tools/packages.sh g++ cmake make libsqlite3-dev python3-venv python3-pip python3-setuptools python3-wheel \
  python3-numpy python3-pytest python3-tqdm python3-matplotlib python3-h5py python3-distributed
[ -x build-python-venv/bin/python ] || /usr/bin/python3 -m venv --system-site-packages build-python-venv
build-python-venv/bin/pip install --quiet --no-build-isolation --no-deps --force-reinstall ./python
export MPLBACKEND=Agg
build-python-venv/bin/python -m doctest README.md $(grep -l '>>> ' docs/*.md docs/*/*.md)
build-python-venv/bin/python -m pytest -q -p no:cacheprovider tests/python
