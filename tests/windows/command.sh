#!/usr/bin/env bash
# zentaro.exe, subcommand after subcommand, on the virtual printer of Windows and with files under a name beyond ASCII.
#   command.sh FOLDER_OF_THE_PROGRAMS
set -euo pipefail
here=$(dirname "$0")
. "$here/environment.sh"
folder=$(mktemp -d)/José
mkdir "$folder"
inside=Z:${folder//\//\\}
settings='HKCU\Software\VB and VBA Program Settings\TRV\Config\ModComm'
export ZENTARO_BOOKS=$inside\\libros\\books.db ZENTARO_LANG=en
children=()
finish() {
  "$wine" reg delete "$settings" /v COM7 /f >/dev/null 2>&1 || true
  exec 3>&-
  for child in "${children[@]}"; do kill "$child" 2>/dev/null || true; done
  rm -rf "${folder%/*}"
}
trap finish EXIT
# run STATUS WORD...: its output is left in $said.
run() {
  local wanted=$1 status=0
  shift
  said=$("$wine" "$programs\\zentaro.exe" "$@" 2>"$folder/errors" 9>&- | tr -d '\r'; exit "${PIPESTATUS[0]}") || status=$?
  [ "$status" -eq "$wanted" ] && return
  echo "zentaro $*: $status and not $wanted"; echo "$said"; cat "$folder/errors"; exit 1
}
tells() { grep -q -- "$1" <<<"$said" || { echo "without $1:"; echo "$said"; exit 1; }; }
programs=Z:${1//\//\\}

run 0 --version
run 0 members
tells PasarLineaFactura
cp "$here/sale.json" "$folder/venta.json"
run 0 sale "$inside\\venta.json" --check
mkfifo "$folder/typed"
"$wine" "$programs\\zentaro.exe" printer --quiet --tcp 0 --control "$inside\\control" --paper "$inside\\paper.txt" --web 0 \
  <"$folder/typed" >/dev/null 2>"$folder/printer" 9>&- &
children+=($!)
exec 3>"$folder/typed"
for _ in $(seq 400); do ! grep -q ready: "$folder/printer" || break; sleep 0.05; done
device=tcp://$(sed -n 's/ready: \([^\r]*\).*/\1/p' "$folder/printer")
run 0 settings set COM7 "$device"
run 0 settings list
tells "$device"
"$wine" reg query "$settings" /v COM7 | grep "$device" >/dev/null

# The sale under its id: once, whatever is asked; also when the answer to its close is lost.
run 0 sale "$inside\\venta.json" --port 7 --id F-1 --json --trace "$inside\\traza.txt"
tells '"verdict":"printed","number":1'
run 0 sale "$inside\\venta.json" --port 7 --id F-1 --json
tells '"already-printed"'
run 0 printer tell "$inside\\control" fault "lose-answer on close"
run 0 sale "$inside\\venta.json" --port 7 --id F-2 --json --timeout 1
tells '"verdict":"printed","number":2'
[ -s "$folder/libros/books.db" ]
run 0 sale --journal
tells F-2
run 0 today --json
tells '"documents": 2'
run 0 status --port 7
run 0 call StatusIF N --port 7
run 0 cierre x --port 7
tells '\<X\>'
run 0 printer tell "$inside\\control" status
tells 'invoice=2'
[ "$(grep -c 'Cafe molido' "$folder/paper.txt")" -eq 2 ]

# Ctrl-C in the middle of a sale: the document is cancelled, and that is said.
run 0 printer tell "$inside\\control" fault "delay=1 on item once"
status=0
said=$("$here/console.py" item "$wine" "$programs\\zentaro.exe" sale "$inside\\venta.json" --port 7 --id F-3 2>&1) || status=$?
[ "$status" -eq 3 ] || { echo "Ctrl-C: $status"; echo "$said"; exit 1; }
tells 'cancelthedocument:ok'
tells NOTPRINTED
run 0 sale --journal
tells 'not printed .* F-3'

# What was traced is read, and replayed as a printer of its own.
run 0 trace "$inside\\traza.txt"
tells close
"$wine" "$programs\\zentaro.exe" trace "$inside\\traza.txt" --replay >"$folder/replayed" 2>/dev/null 9>&- &
children+=($!)
for _ in $(seq 200); do ! grep -q tcp: "$folder/replayed" || break; sleep 0.05; done
run 0 call IniciarFactura "Ana Pérez" V-12345678 --device "$(tr -d '\r\n' <"$folder/replayed")"

# The line protocol keeps its bytes as they are.
"$wine" "$programs\\zentaro.exe" host 9>&- >"$folder/answers" <<'JSON'
{"jsonrpc":"2.0","id":1,"method":"create","params":{"class":"Zentaro.CZentaro"}}
{"jsonrpc":"2.0","id":2,"method":"put","params":{"object":1,"name":"sPathDump","value":"José"}}
JSON
! grep -q $'\r' "$folder/answers"
if [ -n "${ZENTARO_WINE:-}" ]; then  # a Windows of one width
  run 0 doctor --port 7 --json
else
  run 1 doctor --port 7 --json
  tells '"missing-width"'
fi
tells '"registered"'
run 2 status --device tcp://127.0.0.1:1
run 1 doctor --device tcp://127.0.0.1:1 --json
tells '"refused"'

# The service, by the same books; it ends with its console.
run 0 serve token add web --tokens "$inside\\tokens.json"
token=$said
"$wine" "$programs\\zentaro.exe" serve --printer caja1="$device" --listen 127.0.0.1:0 --tokens "$inside\\tokens.json" \
  >/dev/null 2>"$folder/served" 9>&- &
children+=($!)
for _ in $(seq 400); do ! grep -q ready: "$folder/served" || break; sleep 0.05; done
url=$(sed -n 's/ready: \([^\r]*\).*/\1/p' "$folder/served")
python3 "$here/service_client.py" "$url" "$token" "$here/sale.json" W-1 4
run 0 demo
tells 00000001
echo quit >&3
