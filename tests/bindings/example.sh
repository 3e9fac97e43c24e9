#!/usr/bin/env bash
# example.sh once|by-hand COMMAND...: runs an example of a sale by itself, and on lines where an answer is lost or late, all at once. It
# must say what became of the sale, and print it once or not at all. One that has books is killed as well, and run again.
set -uo pipefail
export ZENTARO_LANG=es  # what a program reads is in no language
folder=$(mktemp -d)
trap 'rm -r "$folder"' EXIT

kind=$1
shift

# by_itself COMMAND...: its own virtual printer, although there is a COM1.
by_itself() {
  mkdir "$folder/alone"
  printf '[Config\\ModComm]\nCOM1=/nonexistent/line\n' >"$folder/alone/settings.ini"
  ZENTARO_SETTINGS=$folder/alone/settings.ini "$@" >"$folder/alone/output" 2>&1
  local status=$? line
  for line in "RAZON SOCIAL: Ana Perez" "TOTAL  *Bs 35,00" "CAMBIO  *Bs 5,00" "^PRINTED"; do
    grep -q "$line" "$folder/alone/output" || status=1
  done
  [ $status -eq 0 ] || echo "by itself: status $status, $(cat "$folder/alone/output")"
  return $status
}

# printer_in FOLDER OPTIONS...: a printer at COM1 of the settings there, as $printer.
printer_in() {
  printf '[Config\\EPSONZT]\nTimeOutZT=1\n[Config\\ModComm]\nCOM1=%s/printer\n' "$1" >"$1/settings.ini"
  export ZENTARO_SETTINGS=$1/settings.ini ZENTARO_BOOKS=$1/books.db
  zentaro-printer --quiet --link "$1/printer" --paper "$1/paper.txt" "${@:2}" </dev/null >/dev/null 2>&1 &
  printer=$!
  until [ -e "$1/printer" ]; do kill -0 $printer || return 1; sleep 0.05; done
}

# on_a_line OPTIONS PLAN STATUS VERDICT CLOSED CANCELLED COMMAND...: and how many sheets there must be.
on_a_line() {
  local options=$1 plan=$2 expected="status $3, $4, closed $5, cancelled $6" here printer
  here=$(mktemp -d "$folder/XXXX")
  # shellcheck disable=SC2086
  printer_in "$here" $options --fault "$plan" || return 1
  "${@:7}" 1 >"$here/output" 2>&1
  local seen="status $?,"
  seen+=" $(grep -oE '^(PRINTED|NOT PRINTED|UNKNOWN|STILL OPEN)' "$here/output"),"
  seen+=" closed $(grep -c '^CAMBIO' "$here/paper.txt"), cancelled $(grep -c ANULADO "$here/paper.txt")"
  kill "$printer"
  [ "$seen" = "$expected" ] || { echo "$options $plan: $seen instead of $expected: $(cat "$here/output")"; return 1; }
}

# killed_after SECONDS COMMAND...: printed once all the same by the next ones; a document whose number the books do not have is left
# to the cashier.
killed_after() {
  local here printer status try
  here=$(mktemp -d "$folder/XXXX")
  printer_in "$here" --realtime || return 1
  "${@:2}" 1 >"$here/output" 2>&1 & local sale=$!
  sleep "$1"
  kill -9 $sale
  wait $sale 2>/dev/null
  for ((try = 0; try < 10; ++try)); do  # a `zentaro host` of the killed one has the port until its sale has its end
    "${@:2}" 1 >"$here/output" 2>&1
    status=$?
    [ $status = 2 ] || [ $status = 3 ] || break
    sleep 1
  done
  if [ $status = 4 ]; then
    zentaro call --port 1 CancelarComprobante >/dev/null
    "${@:2}" 1 >"$here/output" 2>&1
    status=$?
  fi
  "${@:2}" 1 >>"$here/output" 2>&1
  status+=" $?"
  kill "$printer"
  [ "$status $(grep -c ^PRINTED "$here/output") $(grep -c '^CAMBIO' "$here/paper.txt")" = "0 0 2 1" ] && return
  echo "killed after $1 s: status $status, $(cat "$here/output") and on paper $(cat "$here/paper.txt")"
  return 1
}

by_itself "$@" & jobs=($!)
if [ "$kind" = once ]; then
  for seconds in 0.4 0.8 1.2 1.6 2; do killed_after $seconds "$@" & jobs+=($!); done
fi
while IFS='|' read -r options plan status verdict closed cancelled; do
  on_a_line "$options" "$plan" "$status" "$verdict" "$closed" "$cancelled" "$@" & jobs+=($!)
done <<'ROWS'
|lose-answer on close|0|PRINTED|1|0
--realtime|delay=2.5 on payment|3|NOT PRINTED|0|1
--realtime|delay=2.5 on close|0|PRINTED|1|0
|lose-answer on open; lose-answer on status after 2 times 3|3|NOT PRINTED|0|1
|paper-out on item after 1|4|STILL OPEN|0|0
ROWS
failed=0
for job in "${jobs[@]}"; do wait "$job" || failed=1; done
exit $failed
