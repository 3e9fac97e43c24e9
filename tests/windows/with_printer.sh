#!/usr/bin/env bash
# Runs a program under Wine with the virtual printer on COM5, and COM6 a line that nobody answers on. The program ends well with
# the code 42 only: a script that does not parse, or that dies, ends with 0.
#   with_printer.sh PRINTER PROGRAM [ARGUMENT...]
set -euo pipefail
here=$(dirname "$0")
. "$here/environment.sh"
printer=$1
shift

folder=$(mktemp -d)
children=()
finish() {
  for child in "${children[@]}"; do kill "$child" 2>/dev/null || true; done
  rm -rf "$folder"
}
trap finish EXIT

"$printer" --link "$folder/printer" --fault 'hang-up=60 on feed' --log "$folder/log" --quiet 2>"$folder/ready" &
children+=($!)
"$printer" --link "$folder/silent" --fault 'lose-command always' --quiet 2>"$folder/silent.ready" &
children+=($!)
for device in printer silent; do
  for _ in $(seq 200); do [ ! -e "$folder/$device" ] || break; sleep 0.05; done
done
ln -sfn "$folder/printer" "$WINEPREFIX/dosdevices/com5"
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
