#!/usr/bin/env bash
# python.sh WHEEL TEST: unpacks the wheel as pip does, and runs the tests on what it holds.
set -euo pipefail
folder=$(mktemp -d)
trap 'rm -r "$folder"' EXIT
python3 -m zipfile -e "$1" "$folder"
chmod +x "$folder/zentaro/native/zentaro-printer"
unset ZENTARO_LIBRARY ZENTARO_TILL_LIBRARY
export PYTHONPATH=$folder
pytest-3 -q -W error -p no:cacheprovider "$2"
# Where a conftest.py names the plug-in as well, it is still the one.
mkdir "$folder/twice"
echo 'pytest_plugins = ["zentaro.pytest_plugin"]' >"$folder/twice/conftest.py"
cp "$2" "$folder/twice/"
pytest-3 -q -W error -p no:cacheprovider --rootdir "$folder/twice" "$folder/twice" -k sale_on_the_virtual_printer
