# Sourced by the tests under Wine: the prefix they run in, and `wine`, which runs a program of the width that is tested.
top=$(cd "$(dirname "${BASH_SOURCE[0]}")/../.." && pwd)
export WINEPREFIX=${WINEPREFIX:-$top/build/wine}
wine=${ZENTARO_WINE:-$top/scripts/wine}
