#!/usr/bin/env bash
# example.sh COMMAND...: runs an example of a sale by itself, and on lines where an answer is lost or late, all at once. It must say
# what became of the sale, and print it once or not at all.
set -uo pipefail
export ZENTARO_LANG=es  # what a program reads is in no language
folder=$(mktemp -d)
trap 'rm -r "$folder"' EXIT

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

# on_a_line OPTIONS PLAN STATUS VERDICT CLOSED CANCELLED COMMAND...: and how many sheets there must be.
on_a_line() {
  local options=$1 plan=$2 expected="status $3, $4, closed $5, cancelled $6" here
  here=$(mktemp -d "$folder/XXXX")
  printf '[Config\\EPSONZT]\nTimeOutZT=1\n[Config\\ModComm]\nCOM1=%s/printer\n' "$here" >"$here/settings.ini"
  # shellcheck disable=SC2086
  zentaro-printer --quiet $options --link "$here/printer" --paper "$here/paper.txt" --fault "$plan" </dev/null >/dev/null 2>&1 &
  local printer=$!
  until [ -e "$here/printer" ]; do kill -0 $printer || return 1; sleep 0.05; done
  ZENTARO_SETTINGS=$here/settings.ini ZENTARO_BOOKS=$here/books.db "${@:7}" 1 >"$here/output" 2>&1
  local seen="status $?,"
  seen+=" $(grep -oE '^(PRINTED|NOT PRINTED|UNKNOWN|STILL OPEN)' "$here/output"),"
  seen+=" closed $(grep -c '^CAMBIO' "$here/paper.txt"), cancelled $(grep -c ANULADO "$here/paper.txt")"
  kill $printer
  [ "$seen" = "$expected" ] || { echo "$options $plan: $seen instead of $expected: $(cat "$here/output")"; return 1; }
}

by_itself "$@" & jobs=($!)
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
