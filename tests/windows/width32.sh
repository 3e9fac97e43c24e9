#!/usr/bin/env bash
# Runs one of these tests with the server and the programs of 32 bits, under a 32-bit Wine where there is one; 77, skipped, where there is none.
#   width32.sh TEST.SH [ARGUMENT...]
set -euo pipefail
top=$(cd "$(dirname "$0")/../.." && pwd)
[ -x "$top/build/wine32/usr/lib/wine/wine" ] || { echo "no 32-bit Wine: scripts/wine32 --make" >&2; exit 77; }
export ZENTARO_WINE=$top/scripts/wine32 WINEPREFIX=$top/build/wine-prefix32
# As scripts/test-windows does it: the first program starts that Windows, and its services run as long as this one.
exec 9> >("$ZENTARO_WINE" cmd >/dev/null 2>&1)
"$ZENTARO_WINE" cmd /c exit >/dev/null 2>&1
"$ZENTARO_WINE" regsvr32 /s "Z:${top//\//\\}\\build\\windows32\\bin\\Zentaro.dll"
exec "$@"
