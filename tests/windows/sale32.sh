#!/usr/bin/env bash
# The 32-bit server with the same sale in VBScript, under a 32-bit Wine where there is one; 77, skipped, where there is none.
#   sale32.sh PRINTER ZENTARO.DLL
set -euo pipefail
here=$(cd "$(dirname "$0")" && pwd)
top=$(cd "$here/../.." && pwd)
[ -x "$top/build/wine32/usr/lib/wine/wine" ] || { echo "no 32-bit Wine: scripts/wine32 --make" >&2; exit 77; }
export ZENTARO_WINE=$top/scripts/wine32 WINEPREFIX=$top/build/wine-prefix32
[ -d "$WINEPREFIX" ] || "$ZENTARO_WINE" wineboot -i >/dev/null 2>&1
"$ZENTARO_WINE" regsvr32 /s "Z:${2//\//\\}"
"$here/with_printer.sh" "$1" cscript //nologo "$here/sale.vbs"
