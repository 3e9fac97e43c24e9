#!/usr/bin/env bash
# The programs and the C library of one width import nothing but what every Windows has, and the library exports what its headers
# declare, the calls for stdcall as well where the width has them; the wheel for Python holds those of its width.
#   programs.sh FOLDER_OF_THE_PROGRAMS win_amd64|win32 [STDCALL.CPP]
set -euo pipefail
top=$(cd "$(dirname "$0")/../.." && pwd)
folder=$1 tag=$2
shift 2
for file in "$folder"/{zentaro.exe,zentaro-printer.exe,zentaro_c.dll}; do
  strangers=$(x86_64-w64-mingw32-objdump -p "$file" | sed -n 's/.*DLL Name: //p' |
    grep -viE '^(advapi32|bcrypt|kernel32|msvcrt|ole32|shell32|user32|ws2_32)\.dll$' || true)
  [ -z "$strangers" ] || { echo "$file imports $strangers"; exit 1; }
done
diff <(x86_64-w64-mingw32-objdump -p "$folder/zentaro_c.dll" | sed -n 's/^[[:space:]]*\[ *[0-9]*\] \(+base.*\)\?\(zentaro[a-z_]*\)$/\2/p' | sort) \
  <(cat "$top"/bindings/c/zentaro_{c,till_c}.h "$@" | grep -oE '^ZENTARO_C_API .*' | sed -E 's/^[^(]*[ *](zentaro_[a-z_]*)\(.*/\1/' | sort)
grep -q zentaro_till_sell "$folder/zentaro_c.def"

unpacked=$(mktemp -d)
trap 'rm -rf "$unpacked"' EXIT
python3 -m zipfile -e "$top"/build/zentaro-*-py3-none-"$tag".whl "$unpacked"
grep -qx "Tag: py3-none-$tag" "$unpacked"/zentaro-*/WHEEL
for file in zentaro_c.dll zentaro-printer.exe; do cmp "$folder/$file" "$unpacked/zentaro/native/$file"; done
declare -A formats=([win_amd64]=pei-x86-64 [win32]=pei-i386)
x86_64-w64-mingw32-objdump -f "$folder/zentaro_c.dll" | grep "file format ${formats[$tag]}" >/dev/null
