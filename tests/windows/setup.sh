#!/usr/bin/env bash
# The setup program, as a user without questions runs it: installs, sells on the installed printer with the installed server, program and
# service, updates while they are in use, removes, and leaves files and registry as they were, but for the books' folder.
#   setup.sh SETUP.EXE SERVER.DLL x64|x86
set -euo pipefail
here=$(cd "$(dirname "$0")" && pwd)
. "$here/environment.sh"
setup=Z:${1//\//\\}
server=Z:${2//\//\\}
programs='C:\Program Files\Zentaro\'$3
folder=$(mktemp -d)
settings='HKCU\Software\VB and VBA Program Settings\TRV\Config\ModComm'
environment='HKLM\SYSTEM\CurrentControlSet\Control\Session Manager\Environment'
root=$WINEPREFIX/drive_c/Program\ Files/Zentaro
finish() {
  "$wine" "$programs\\zentaro.exe" serve remove >/dev/null 2>&1 || true  # where it failed before
  exec 3>&-
  rm -rf "$WINEPREFIX"/drive_c/ProgramData/zentaro{,-serve}  # the next test finds none
  "$wine" reg delete "$settings" /v COM5 /f >/dev/null 2>&1 || true
  "$wine" regsvr32 /s "$server"  # for the tests behind this one
  rm -rf "$folder"
}
trap finish EXIT
# What a program may leave behind: classes, the uninstall entry, PATH, files.
traces() {
  "$wine" reg query "$environment" /v PATH
  for key in 'HKLM\Software\Microsoft\Windows\CurrentVersion\Uninstall\Zentaro' 'HKCR\Zentaro.CZentaro' 'HKCR\Zentaro.statusHASAR' \
    'HKCR\CLSID\{248136D7-53E7-48D7-94A6-06CCA0A62743}' 'HKCR\TypeLib\{1EA4AB89-122D-47AE-A8F5-AF4307BEC4DE}'; do
    "$wine" reg query "$key" /s 2>&1 || true
  done
  find "$WINEPREFIX/drive_c" \( -iname '*zentaro*' -o -iname 'venta.*' \) -not -path '*/Temp/*' -not -path '*/ProgramData/zentaro*' | sort
}
sale() {
  local said
  said=$("$wine" cscript //nologo 'C:\Program Files\Zentaro\ejemplos\venta.vbs' 5) || true
  grep -q "Factura impresa: $1" <<<"$said" || { echo "$said"; exit 1; }
}

"$wine" regsvr32 /u /s "$server"
rm -rf "$root"  # of a test that was ended
traces >"$folder/before"
"$wine" "$setup" /S
"$wine" reg query "$environment" /v PATH | grep -iF "$programs" >/dev/null
"$wine" reg query 'HKLM\Software\Microsoft\Windows\CurrentVersion\Uninstall\Zentaro' | grep DisplayVersion >/dev/null
[ -s "$root/manual/manual-windows.html" ]

mkfifo "$folder/typed"
"$wine" "$programs\\zentaro-printer.exe" --quiet --lang en --tcp 0 <"$folder/typed" >/dev/null 2>"$folder/said" 9>&- &
exec 3>"$folder/typed"
for _ in $(seq 400); do ! grep -q ready: "$folder/said" || break; sleep 0.05; done
device=tcp://$(sed -n 's/ready: \([^\r]*\).*/\1/p' "$folder/said")
"$wine" reg add "$settings" /v COM5 /d "$device" /f >/dev/null
sale 00000001
"$wine" "$setup" /S  # the printer runs
sale 00000002
command=$programs\\zentaro.exe
for verdict in '"printed","number":3' '"already-printed","number":3'; do  # through zentaro.exe, which PATH finds
  "$wine" cscript //nologo 'C:\Program Files\Zentaro\ejemplos\venta-segura.vbs' 5 F-3 | grep "\"verdict\":$verdict" >/dev/null
done
[ -s "$WINEPREFIX/drive_c/ProgramData/zentaro/books.db" ]

# The service goes on selling behind an update, by the program that it was started with.
port=$(python3 -c 'import socket; free = socket.create_server(("127.0.0.1", 0)); print(free.getsockname()[1])')
! "$wine" "$command" serve install --printer "caja1=$device" --listen "${device#tcp://}" 2>"$folder/refused"  # the printer listens there
grep serve.log "$folder/refused" >/dev/null
"$wine" "$command" serve install --printer "caja1=$device" --listen "127.0.0.1:$port" >/dev/null
token=$("$wine" "$command" serve token add web 2>/dev/null | tr -d '\r')
service() { python3 "$here/service_client.py" "http://127.0.0.1:$port" "$token" "$here/sale.json" "$@"; }
service S-4 4
"$wine" "$setup" /S
service S-5 5
"$wine" "$command" serve remove | grep ProgramData >/dev/null
echo quit >&3
wait

"$wine" 'C:\Program Files\Zentaro\uninstall.exe' /S
for _ in $(seq 200); do [ -e "$root" ] || break; sleep 0.1; done  # it goes on in a copy of itself
sleep 1
traces >"$folder/after"
diff "$folder/before" "$folder/after"
