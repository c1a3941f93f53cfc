#!/bin/sh
# Builds the documentation as a site, build-docs/site/index.html: the pages of docs/ with pictures drawn by the Python
# package, which is taken from build-python-venv/ (tools/test_python.sh). Broken links are errors.
set -eu
cd "$(dirname "$0")/.."
tools/packages.sh mkdocs mkdocs-material python3-pymdownx python3-matplotlib
[ -x build-python-venv/bin/python ] || tools/test_python.sh
rm -rf build-docs
mkdir -p build-docs
cp -r docs build-docs/pages
cp CHANGELOG.md build-docs/pages/changes.md
cp tools/docs/style.css build-docs/pages
build-python-venv/bin/python tools/docs/pictures.py docs/accuracy.md build-docs/pages/pictures
mkdocs build --quiet --strict --config-file tools/docs/mkdocs.yml
! grep -rlE '(src|href)="(https?:)?//[^"]*\.(js|css|woff2?)' build-docs/site --include=*.html # all of it works offline
echo "build-docs/site/index.html"
