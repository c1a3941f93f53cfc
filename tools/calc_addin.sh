#!/bin/sh
# Builds build-calc/tessarel.oxt, the add-in for LibreOffice Calc with the Python package and the library in it, and with
# "test" behind it installs it for a user of its own and tries it in a spreadsheet without a window.
set -eu
cd "$(dirname "$0")/.."
tools/packages.sh g++ cmake make libsqlite3-dev python3-pip python3-setuptools python3-wheel python3-numpy zip \
  libreoffice-calc libreoffice-dev libreoffice-script-provider-python python3-uno
office=/usr/lib/libreoffice
rm -rf build-calc
mkdir -p build-calc/content
cp -r calc/. build-calc/content
$office/sdk/bin/unoidl-write $office/program/types.rdb $office/program/types/offapi.rdb calc/XFunction.idl \
  build-calc/content/XFunction.rdb
/usr/bin/python3 -m pip install --quiet --root-user-action=ignore --no-build-isolation --no-deps --target build-calc/content/pythonpath ./python
(cd build-calc/content && zip -q -r ../tessarel.oxt . -x XFunction.idl)
echo "build-calc/tessarel.oxt: unopkg add build-calc/tessarel.oxt, or a double click, installs it"
[ "${1:-}" = test ] || exit 0
as_user="env HOME=$PWD/build-calc"
if [ "$(id -u)" -eq 0 ]; then # the office's package manager refuses the administrator
  chown nobody build-calc
  as_user="runuser -u nobody -- $as_user"
fi
$as_user /usr/bin/python3 tests/calc/test_addin.py build-calc
