#!/usr/bin/env bash
# Runs an example, which must print its ticket on a virtual printer: 25.00 with 16 %, 6.00 exempt, 40.00 received.
set -uo pipefail
output=$("$@" 2>&1) || { echo "$output"; exit 1; }
echo "$output"
for line in "RAZON SOCIAL: Ana Perez" "TOTAL  *Bs 35,00" "CAMBIO  *Bs 5,00"; do
  grep -q "$line" <<<"$output" || { echo "missing: $line"; exit 1; }
done
