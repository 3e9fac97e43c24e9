#!/usr/bin/env bash
# Both type libraries say what they always said: identifiers, dispatch ids, slots and parameters, which compiled programs keep.
#   interface.sh DUMP_TYPE_LIBRARY FOLDER
set -euo pipefail
. "$(dirname "$0")/environment.sh"
for width in 64 32; do
  diff "$(dirname "$0")/interface.txt" <("$wine" "$1" "$2/Zentaro$width.tlb" | tr -d '\r')
done
