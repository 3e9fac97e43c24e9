#!/usr/bin/env bash
# till_c.sh PROGRAM...: runs it on a virtual printer at COM1 whose third close gets no answer, with books of its own. Three
# invoices and a credit note are to be on paper then, and one document that was cancelled.
set -uo pipefail
folder=$(mktemp -d)
export ZENTARO_SETTINGS=$folder/settings.ini ZENTARO_BOOKS=$folder/books/books.db XDG_STATE_HOME=$folder/state
mkdir "$folder/books"
printf '[Config\\EPSONZT]\nTimeOutZT=1\n[Config\\ModComm]\nCOM1=%s/printer\n' "$folder" >"$ZENTARO_SETTINGS"
zentaro-printer --quiet --link "$folder/printer" --paper "$folder/paper.txt" --fault "lose-answer on close after 2" </dev/null >/dev/null 2>&1 &
printer=$!
trap 'kill $printer 2>/dev/null; rm -r "$folder"' EXIT
until [ -e "$folder/printer" ]; do kill -0 $printer || exit 1; sleep 0.05; done
"$@" || exit
seen="invoices $(grep -c '^CAMBIO' "$folder/paper.txt"), credit notes $(grep -c 'NOTA DE CREDITO' "$folder/paper.txt")"
seen+=", cancelled $(grep -c 'DOCUMENTO ANULADO' "$folder/paper.txt")"
[ "$seen" = "invoices 3, credit notes 1, cancelled 1" ] || { echo "$seen: $(cat "$folder/paper.txt")"; exit 1; }
