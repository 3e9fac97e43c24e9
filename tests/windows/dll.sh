#!/usr/bin/env bash
# A server of either width, as far as it can be looked at from outside: exactly the four exports under plain names, nothing imported but
# what every Windows has, and its own type library inside.   dll.sh ZENTARO.DLL TYPE_LIBRARY
set -euo pipefail
dump=$(x86_64-w64-mingw32-objdump -p "$1")
diff <(sed -n 's/^[[:space:]]*\[ *[0-9]*\] \(+base.*\)\?\(Dll[A-Za-z]*\)$/\2/p' <<<"$dump" | sort) - <<'NAMES'
DllCanUnloadNow
DllGetClassObject
DllRegisterServer
DllUnregisterServer
NAMES
strangers=$(sed -n 's/.*DLL Name: //p' <<<"$dump" | grep -viE '^(advapi32|kernel32|msvcrt|ole32|oleaut32|user32|ws2_32)\.dll$' || true)
[ -z "$strangers" ] || { echo "imports $strangers"; exit 1; }
python3 - "$1" "$2" <<'PYTHON'
import pathlib, sys
server, library = (pathlib.Path(name).read_bytes() for name in sys.argv[1:])
sys.exit(0 if library in server else "another type library inside")
PYTHON
