#!/usr/bin/env bash
# symbols.sh LIBRARY HEADER SONAME: the shared library exports the functions of the header, public C++, and nothing else.
set -euo pipefail
exported=$(nm -DC --defined-only "$1" | cut -d' ' -f3-)
declared=$(grep -oE 'ZENTARO_C_API [^(]*\(' "$2" | grep -oE 'zentaro_[a-z0-9_]+\(' | tr -d '(' | sort)
diff <(grep '^zentaro_' <<<"$exported" | sort) <(echo "$declared") || { echo "the header and the exported C functions differ"; exit 1; }
! grep -vE '^(zentaro_|zentaro::|(typeinfo|typeinfo name|vtable) for zentaro::)' <<<"$exported" || { echo "exported by mistake"; exit 1; }
readelf -d "$1" | grep "SONAME.*\[$3\]" >/dev/null
