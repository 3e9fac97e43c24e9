#!/usr/bin/env bash
# The programs and the C library of one width import nothing but what every Windows has, and the library exports what its headers
# declare, the calls for stdcall as well where the width has them.   programs.sh FOLDER_OF_THE_PROGRAMS [STDCALL.CPP]
set -euo pipefail
top=$(cd "$(dirname "$0")/../.." && pwd)
folder=$1
shift
for file in "$folder"/{zentaro.exe,zentaro-printer.exe,zentaro_c.dll}; do
  strangers=$(x86_64-w64-mingw32-objdump -p "$file" | sed -n 's/.*DLL Name: //p' |
    grep -viE '^(advapi32|bcrypt|kernel32|msvcrt|ole32|shell32|user32|ws2_32)\.dll$' || true)
  [ -z "$strangers" ] || { echo "$file imports $strangers"; exit 1; }
done
diff <(x86_64-w64-mingw32-objdump -p "$folder/zentaro_c.dll" | sed -n 's/^[[:space:]]*\[ *[0-9]*\] \(+base.*\)\?\(zentaro[a-z_]*\)$/\2/p' | sort) \
  <(cat "$top"/bindings/c/zentaro_{c,till_c}.h "$@" | grep -oE '^ZENTARO_C_API .*' | sed -E 's/^[^(]*[ *](zentaro_[a-z_]*)\(.*/\1/' | sort)
grep -q zentaro_till_sell "$folder/zentaro_c.def"
