#!/usr/bin/env bash
# python.sh WHEEL TEST: unpacks the wheel as pip does, and runs the tests on what it holds.
set -euo pipefail
folder=$(mktemp -d)
trap 'rm -r "$folder"' EXIT
python3 -m zipfile -e "$1" "$folder"
chmod +x "$folder/zentaro/native/zentaro-printer"
unset ZENTARO_LIBRARY
PYTHONPATH=$folder pytest-3 -q -W error -p no:cacheprovider "$2"
