#!/usr/bin/env bash
# manual.sh MANUAL: the sales of the manual in each language, on a slow line that loses the answer to the close: printed, and under
# the same key not printed again.
set -uo pipefail
folder=$(mktemp -d)
trap 'rm -r "$folder"' EXIT

# prepared LANGUAGE: the command that runs the manual's program; empty where what runs it is missing.
prepared() {
  awk -v begin='```'"$1" '$0 == begin { on = 1; next } $0 == "```" { on = 0 } on' "$manual" >"$folder/$1/sale"
  case $1 in
    python) echo "python3 $folder/$1/sale" ;;
    js) command -v node >/dev/null && mv "$folder/$1/sale" "$folder/$1/sale.js" && echo "node $folder/$1/sale.js" ;;
    php) command -v php >/dev/null && echo "php $folder/$1/sale" ;;
    csharp) command -v mcs >/dev/null && command -v mono >/dev/null && mcs -out:"$folder/$1/sale.exe" "$folder/$1/sale" >&2 &&
      echo "mono $folder/$1/sale.exe" ;;
  esac
}

sold() {
  local here=$folder/$1 program
  mkdir "$here"
  program=$(prepared "$1")
  [ -n "$program" ] || { echo "$1: what runs it is missing, left out"; return 0; }
  export ZENTARO_SETTINGS=$here/settings.ini XDG_STATE_HOME=$here/state
  printf '[Config\\EPSONZT]\nTimeOutZT=1\n[Config\\ModComm]\nCOM1=%s/printer\n' "$here" >"$ZENTARO_SETTINGS"
  zentaro-printer --quiet --realtime --link "$here/printer" --paper "$here/paper.txt" --fault "delay=2.5 on close" </dev/null >/dev/null 2>&1 &
  local printer=$!
  until [ -e "$here/printer" ]; do kill -0 $printer || return 1; sleep 0.05; done
  local first second
  first=$($program 2>"$here/errors")
  second=$($program 2>>"$here/errors")
  kill $printer
  grep -qE '(^|")printed' <<<"$first" && grep -qE 'already-printed' <<<"$second" && [ "$(grep -c '^CAMBIO' "$here/paper.txt")" = 1 ] && return
  echo "$1: $first, then $second, with $(grep -c '^CAMBIO' "$here/paper.txt") sheets; $(cat "$here/errors")"
  return 1
}

# With progress there are notifications before the verdict, and none without. A sale whose verdict nobody read stops the same
# content until it is said to be for a new customer.
told() {
  local here=$folder/told document='{"document":"invoice","lines":[{"description":"Pan","price":1,"tax":0}],"payments":[{"amount":1}]}' answers
  requests() { printf '{"jsonrpc":"2.0","id":1,"method":"%s","params":{%s}}\n' create '"class":"CZentaro"' \
    put '"object":1,"name":"CommPort","value":1' put '"object":1,"name":"PortOpen","value":true' "$@"; }
  mkdir "$here"
  export ZENTARO_SETTINGS=$here/settings.ini XDG_STATE_HOME=$here/state
  printf '[Config\ModComm]\nCOM1=%s/printer\n' "$here" >"$ZENTARO_SETTINGS"
  zentaro-printer --quiet --link "$here/printer" --fault "delay=0.5 on close after 2" </dev/null >/dev/null 2>&1 &
  local printer=$!
  until [ -e "$here/printer" ]; do kill -0 $printer || return 1; sleep 0.05; done
  answers=$(requests sale "\"object\":1,\"document\":$document,\"progress\":true" sale "\"object\":1,\"document\":$document" | zentaro host)
  document=${document/Pan/Queso}
  requests sale "\"object\":1,\"document\":$document" | zentaro host | head -3 >/dev/null
  answers+=$'\n'$(requests sale "\"object\":1,\"document\":$document" sale "\"object\":1,\"document\":$document,\"again\":true" | zentaro host)
  kill $printer
  [[ $(sed -nE 's/.*"(progress)".*|.*"verdict":"([a-z-]*)".*/\1\2/p' <<<"$answers" | uniq | tr '\n' ' ') == "progress printed printed-before printed " ]] &&
    [ "$(grep -c '"verdict":"printed"' <<<"$answers")" = 3 ] || { echo "$answers"; return 1; }
}

manual=$1 jobs=() failed=0
for language in python js php csharp; do sold "$language" & jobs+=($!); done
told & jobs+=($!)
for job in "${jobs[@]}"; do wait "$job" || failed=1; done
exit $failed
