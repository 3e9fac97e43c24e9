#!/usr/bin/env bash
# abi.sh LIBRARY SIZES LIST: what programs rely on that were built against an earlier library of this soname is all there, with its
# sizes. With --write behind it, the list is written anew: right for what was added, and for nothing else unless the soname changes.
set -euo pipefail
library=$1 sizes=$2 list=$3
# Inline functions and templates are in the programs themselves.
now=$({ nm -D --defined-only "$library" | awk '$2 ~ /^[TDBR]$/ { print $3 }' | c++filt | LC_ALL=C sort -u; "$sizes"; })
if [ "${4:-}" = --write ]; then
  { sed -n '/^#/p' "$list"; echo "$now"; } >"$list.new"
  mv "$list.new" "$list"
  exit
fi
promised=$(sed '/^#/d' "$list")
gone=$(LC_ALL=C comm -23 <(LC_ALL=C sort <<<"$promised") <(LC_ALL=C sort <<<"$now"))
new=$(LC_ALL=C comm -13 <(LC_ALL=C sort <<<"$promised") <(LC_ALL=C sort <<<"$now"))
[ -z "$gone" ] || printf 'Gone or changed; programs that use it stop working, so this wants a new soname:\n%s\n' "$gone"
[ -z "$new" ] || printf 'New; if it is to stay, write it down: %s %s %s %s --write\n%s\n' "$0" "$library" "$sizes" "$list" "$new"
[ -z "$gone$new" ]
