#!/usr/bin/env bash
# A program that uses the server by manifests, in a Windows where it is not registered: unregistered.sh PROGRAM.EXE DLL MANIFEST
set -euo pipefail
. "$(dirname "$0")/environment.sh"
folder=$(mktemp -d)
server=Z:${2//\//\\}
finish() {
  "$wine" regsvr32 /s "$server"
  rm -rf "$folder"
}
trap finish EXIT
"$wine" regsvr32 /u /s "$server"
cp "$1" "$folder/venta.exe"
code=0
"$wine" "$folder/venta.exe" || code=$?
[ "$code" -eq 1 ] || { echo "without manifests it ended with $code" >&2; exit 1; }
cp "$2" "$folder/Zentaro.dll"
cp "$3" "$folder/Zentaro.manifest"
cp "$top/examples/windows/venta.exe.manifest" "$folder"
sed -i "s/x86/amd64/" "$folder/venta.exe.manifest"
code=0
"$wine" "$folder/venta.exe" || code=$?
[ "$code" -eq 42 ] || { echo "with manifests it ended with $code" >&2; exit 1; }
