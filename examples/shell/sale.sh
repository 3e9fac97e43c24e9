#!/usr/bin/env bash
# A small sale. `sale.sh --port 2` prints on the printer at COM2; without a port it prints on a virtual printer.
set -euo pipefail

where=("$@")
if [ "${#where[@]}" -eq 0 ]; then
  folder=$(mktemp -d)
  mkfifo "$folder/control"
  zentaro-printer --link "$folder/printer" <"$folder/control" &
  exec 3>"$folder/control"
  trap 'echo quit >&3; wait; rm -r "$folder"' EXIT
  until [ -e "$folder/printer" ]; do sleep 0.05; done
  where=(--device "$folder/printer")
fi

zentaro call "${where[@]}" IniciarFactura "Ana Pérez" V-12345678
zentaro call "${where[@]}" PasarLineaFactura "Café molido" 12.5 2 16
zentaro call "${where[@]}" PasarLineaFactura "Queso blanco" 8 0.75 0
zentaro call "${where[@]}" RecibirPago 40
zentaro call "${where[@]}" CerrarComprobante
