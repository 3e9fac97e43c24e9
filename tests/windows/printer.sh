#!/usr/bin/env bash
# The virtual printer of Windows: a sale of a script over TCP, its log, state and paper under a name beyond ASCII, control lines, and its
# end by "quit".   printer.sh ZENTARO-PRINTER.EXE
set -euo pipefail
here=$(dirname "$0")
. "$here/environment.sh"
folder=$(mktemp -d)/José
mkdir "$folder"
settings='HKCU\Software\VB and VBA Program Settings\TRV\Config\ModComm'
finish() {
  "$wine" reg delete "$settings" /v COM5 /f >/dev/null 2>&1 || true
  exec 3>&-
  wait
  rm -rf "$folder"
}
trap finish EXIT
inside=Z:${folder//\//\\}
mkfifo "$folder/typed"
"$wine" "$1" --quiet --lang en --tcp 0 --log "$inside\\log" --state "$inside\\state" --paper "$inside\\paper.txt" --control "$inside\\control" \
  <"$folder/typed" >/dev/null 2>"$folder/said" 9>&- &
exec 3>"$folder/typed"
for _ in $(seq 400); do ! grep -q ready: "$folder/said" || break; sleep 0.05; done
"$wine" reg add "$settings" /v COM5 /d "tcp://$(sed -n 's/ready: \([^\r]*\).*/\1/p' "$folder/said")" /f >/dev/null
iconv -f utf-8 -t windows-1252 "$top/examples/windows/venta.vbs" >"$folder/venta.vbs"
said=$("$wine" cscript //nologo "$inside\\venta.vbs" 5) || true
grep -q 'Factura impresa: 00000001' <<<"$said" || { echo "$said"; exit 1; }
grep -q '"event":"answer","name":"close"' "$folder/log"
grep -q '"invoices": *1' "$folder/state"
grep -q TOTAL "$folder/paper.txt"
python3 - "$folder/control" <<'PYTHON'
import socket, sys
port, password = open(sys.argv[1]).read().split()
for first, known in ((password, True), ("fault lose-answer", False)):
    with socket.create_connection(("127.0.0.1", int(port)), 10) as control, control.makefile("rw") as lines:
        print(first, "status", sep="\n", file=lines, flush=True)
        try:
            answer = lines.readline()
        except ConnectionError:
            answer = ""
        assert bool(answer) == known, (first, answer)
PYTHON
echo quit >&3
for _ in $(seq 200); do [ -e "$folder/control" ] || break; sleep 0.05; done
[ ! -e "$folder/control" ] || { echo "it did not end"; exit 1; }

