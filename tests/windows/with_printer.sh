#!/usr/bin/env bash
# Runs a program under Wine with the virtual printer on COM5, a line over TCP where ZENTARO_LINE is "tcp", and COM6 a line that nobody
# answers on. The program ends well with the code 42 only: a script that does not parse, or that dies, ends with 0.
#   with_printer.sh PRINTER PROGRAM [ARGUMENT...]
set -euo pipefail
here=$(dirname "$0")
. "$here/environment.sh"
printer=$1
shift

folder=$(mktemp -d)
children=()
export ZENTARO_BOOKS=Z:${folder//\//\\}\\books.db
settings='HKCU\Software\VB and VBA Program Settings\TRV\Config\ModComm'
finish() {
  "$wine" reg delete "$settings" /v COM5 /f >/dev/null 2>&1 || true
  for child in "${children[@]}"; do kill "$child" 2>/dev/null || true; done
  rm -rf "$folder"
}
trap finish EXIT

line=(--link "$folder/printer")
if [ "${ZENTARO_LINE:-}" = tcp ]; then line=(--tcp 0); fi
"$printer" "${line[@]}" --fault 'hang-up=60 on feed' --log "$folder/log" --quiet 2>"$folder/ready" &
children+=($!)
"$printer" --link "$folder/silent" --fault 'lose-command always' --quiet 2>"$folder/silent.ready" &
children+=($!)
for said in ready silent.ready; do
  for _ in $(seq 200); do ! grep -qs ready: "$folder/$said" || break; sleep 0.05; done
done
if [ "${ZENTARO_LINE:-}" = tcp ]; then
  "$wine" reg add "$settings" /v COM5 /d "tcp://$(sed -n 's/ready: //p' "$folder/ready")" /f >/dev/null
else
  ln -sfn "$folder/printer" "$WINEPREFIX/dosdevices/com5"
fi
ln -sfn "$folder/silent" "$WINEPREFIX/dosdevices/com6"

# A script stands here in UTF-8; the script hosts read the system's code page.
arguments=()
for argument in "$@"; do
  case $argument in
    *.vbs | *.js)
      iconv -f utf-8 -t windows-1252 "$argument" >"$folder/${argument##*/}"
      argument="Z:${folder//\//\\}\\${argument##*/}"
      ;;
  esac
  arguments+=("$argument")
done
code=0
"$wine" "${arguments[@]}" || code=$?
[ "$code" -eq 42 ] || { echo "ended with $code" >&2; exit 1; }
