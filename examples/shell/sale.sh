#!/usr/bin/env bash
# A small sale that is never printed twice. `sale.sh 2` prints at COM2; without a port it prints on a virtual printer. Each command
# opens and closes the port; `zentaro` sees to it that an answer is the one to its command, and starts anywhere in the sequence.
set -uo pipefail

port=${1:-1}
if [ $# -eq 0 ]; then
  command -v zentaro-printer >/dev/null || { echo "zentaro-printer is not in the PATH" >&2; exit 2; }
  folder=$(mktemp -d)
  export ZENTARO_SETTINGS=$folder/settings.ini
  printf '[Config\\ModComm]\nCOM1=%s/printer\n' "$folder" >"$ZENTARO_SETTINGS"
  mkfifo "$folder/control"
  zentaro-printer --link "$folder/printer" <"$folder/control" 2>/dev/null &
  exec 3>"$folder/control"
  trap 'echo quit >&3; wait; rm -r "$folder"' EXIT
  until [ -e "$folder/printer" ]; do sleep 0.05; done
fi

call() { zentaro call --port "$port" --json "$@"; }

# The amount sold today in cents, exempt and at three rates; nothing is printed. Empty when the printer does not say.
sold() {
  local figures
  figures=$(call RealizarCierre 0 false 2>/dev/null) || return
  awk '/"fields"/ { first = NR + 1 }
       first && NR - first ~ /^(3|4|11|13)$/ { gsub(/[^0-9]/, ""); sum += $0 }
       END { print sum + 0 }' <<<"$figures"
}

# The status of the document, as soon as the printer answers; empty when that takes longer than half a minute. An adapter that
# was pulled out during the sale may come back; before it, a port that does not open is given up at once.
in_step() {
  local pause status
  for pause in 0.5 1 2 4 8 16; do
    sleep "$pause"
    status=$(zentaro status --port "$port" --json 2>/dev/null) || {
      [ $? -ne 2 ] || [ -n "$before" ] || return
      continue
    }
    grep -oE '"statusDocumento": [0-9]+' <<<"$status" | grep -oE '[0-9]+$'
    return
  done
}

verdict() { echo "$1"; exit "$2"; }

# What became of a sale that did not go through: asked, never sent again.
settle() {
  local document after
  document=$(in_step)
  if [ "${document:-0}" -ne 0 ]; then
    call CancelarComprobante >/dev/null
    document=$(in_step)
  fi
  [ "${document:-0}" -eq 0 ] || verdict "STILL OPEN: have the document cancelled" 4
  after=${document:+$(sold)}
  [ -n "$after" ] || verdict "UNKNOWN: look at the paper, do not print again" 4
  [ "$after" -gt "$before" ] && verdict "PRINTED" 0
  verdict "NOT PRINTED" 3
}

step() {
  echo "$1"
  call "$@" | sed -nE '/"error": "VOID"/d; s/^  "(outcomeText|error)": "(.*)",?$/  \2/p'
  [ "${PIPESTATUS[0]}" -eq 0 ] || settle
}

before=
[ "$(in_step)" != 0 ] || before=$(sold)
[ -n "$before" ] || verdict "NOT PRINTED: no printer, or a document is open" 3
step IniciarFactura "Ana Pérez" V-12345678
step PasarLineaFactura "Café molido" 12.5 2 16
step PasarLineaFactura "Queso blanco" 8 0.75 0
step RecibirPago 40
step CerrarComprobante
verdict "PRINTED" 0
