#!/usr/bin/env bash
# The same traffic through the automation server and through the library on this system leaves the same traces, byte for byte but
# for the time stamps.   traffic.sh PRINTER ZENTARO
set -euo pipefail
here=$(cd "$(dirname "$0")" && pwd)
. "$here/environment.sh"
folder=$(mktemp -d)
printer=
trap '[ -z "$printer" ] || kill "$printer"; rm -rf "$folder"' EXIT

key='HKCU\Software\VB and VBA Program Settings\TRV\Config'
set_value() { "$wine" reg add "$key\\$1" /v "$2" /d "$3" /f >"$folder/reg" 2>&1; }
set_value EPSONZT DumpZT "Z:$folder/object.windows"
set_value ModComm DumpFile "Z:$folder/driver.windows"
set_value ModComm DEBUG 1
status=0
"$here/with_printer.sh" "$1" cscript //nologo "$here/traffic.vbs" || status=$?
set_value ModComm DEBUG 0
[ "$status" -eq 0 ]

"$1" --link "$folder/printer" --quiet 2>"$folder/ready" &
printer=$!
for _ in $(seq 200); do [ ! -e "$folder/printer" ] || break; sleep 0.05; done
export ZENTARO_SETTINGS=$folder/settings.ini
cat >"$ZENTARO_SETTINGS" <<INI
[Config\EPSONZT]
DumpZT=$folder/object.here
[Config\ModComm]
COM5=$folder/printer
DEBUG=1
DumpFile=$folder/driver.here
INI
"$2" host >"$folder/answers" <<'JSON'
{"jsonrpc":"2.0","id":1,"method":"create","params":{"class":"Zentaro.CZentaro"}}
{"jsonrpc":"2.0","id":2,"method":"put","params":{"object":1,"name":"CommPort","value":5}}
{"jsonrpc":"2.0","id":3,"method":"put","params":{"object":1,"name":"PortOpen","value":true}}
{"jsonrpc":"2.0","id":4,"method":"create","params":{"class":"Zentaro.CZentaro"}}
{"jsonrpc":"2.0","id":5,"method":"put","params":{"object":2,"name":"CommPort","value":5}}
{"jsonrpc":"2.0","id":6,"method":"put","params":{"object":2,"name":"PortOpen","value":true}}
{"jsonrpc":"2.0","id":7,"method":"put","params":{"object":1,"name":"DebugMode","value":true}}
{"jsonrpc":"2.0","id":8,"method":"call","params":{"object":1,"name":"AbrirDNF"}}
{"jsonrpc":"2.0","id":9,"method":"call","params":{"object":1,"name":"PasarLineaDNF","args":["Año 2024"]}}
{"jsonrpc":"2.0","id":10,"method":"call","params":{"object":1,"name":"CerrarDNF"}}
{"jsonrpc":"2.0","id":11,"method":"call","params":{"object":1,"name":"ExecuteCMD","args":[90]}}
{"jsonrpc":"2.0","id":12,"method":"put","params":{"object":1,"name":"DebugMode","value":false}}
JSON
for trace in object driver; do
  # An answer may come in pieces of any size, which the driver trace shows one by one: only its bytes are compared.
  for side in windows here; do
    if [ $trace = driver ]; then
      tr -d '\r' <"$folder/driver.$side" | LC_ALL=C grep -aE '^([0-9A-F]{2} )+' | cut -c1-48 | tr -d ' \n' >"$folder/$trace.$side.plain"
    else
      LC_ALL=C sed -E 's/^(Send|ReadStatus) .*\r$/\1\r/' "$folder/object.$side" >"$folder/$trace.$side.plain"
    fi
    [ -s "$folder/$trace.$side.plain" ]
  done
  cmp "$folder/$trace.windows.plain" "$folder/$trace.here.plain"
done
