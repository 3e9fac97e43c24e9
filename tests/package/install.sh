#!/usr/bin/env bash
# install.sh BUILD EXAMPLE COMPILER: installs the build into a folder of its own, builds the example against it with CMake and with
# pkg-config, and runs both; a C program gets no flag of another language; the pages find each other.
set -euo pipefail
build=$1 example=$2 compiler=$3
folder=$(mktemp -d)
trap 'rm -r "$folder"' EXIT
prefix=$folder/prefix

cmake --install "$build" --prefix "$prefix" >"$folder/log"
cmake -G Ninja -S "$example" -B "$folder/build" -DCMAKE_PREFIX_PATH="$prefix" -DCMAKE_CXX_COMPILER="$compiler" >>"$folder/log"
cmake --build "$folder/build" >>"$folder/log" || { cat "$folder/log"; exit 1; }

libraries=$(dirname "$(find "$prefix" -name libzentaro.so)")
flags=$(PKG_CONFIG_PATH=$libraries/pkgconfig pkg-config --cflags --libs zentaro)
# shellcheck disable=SC2086
"$compiler" -std=c++20 "$example/by_hand.cpp" -o "$folder/by_hand" $flags -Wl,-rpath,"$libraries"
# By hand, as LEEME says.
"$compiler" -std=c++20 -I"$prefix/include/zentaro" "$example/first.cpp" -o "$folder/first" -L"$libraries" -lzentaro -Wl,-rpath,"$libraries"
till=$(PKG_CONFIG_PATH=$libraries/pkgconfig pkg-config --cflags --libs zentaro-till)
# shellcheck disable=SC2086
cc -std=c99 -Wall -Werror "$example/../c/sale.c" -o "$folder/sale-c" $till -Wl,-rpath,"$libraries"
# shellcheck disable=SC2086
"$compiler" -std=c++20 "$example/sale.cpp" -o "$folder/sale" $till -Wl,-rpath,"$libraries"
python3 -c 'import ctypes, sys; ctypes.CDLL(sys.argv[1])' "$libraries/libzentaro-till.so.0"  # finds the other one beside it
# shellcheck disable=SC2086
"$compiler" -std=c++17 -fsyntax-only "$example/by_hand.cpp" $flags 2>"$folder/old" || true
grep -q "add -std=c++20" "$folder/old"
python3 "$(dirname "$0")/links.py" "$(dirname "$(find "$prefix" -name LEEME.md)")"

export PATH=$prefix/bin:$PATH
for sale in "$folder/build/sale" "$folder/build/by_hand" "$folder/sale" "$folder/by_hand" "$folder/sale-c"; do
  "$sale" >"$folder/ticket" || { cat "$folder/ticket"; exit 1; }
  grep -q "TOTAL  *Bs 35,00" "$folder/ticket"
done
"$folder/first" | grep "TOTAL  *Bs 29,00" >/dev/null
zentaro --help >/dev/null
for program in zentaro zentaro-printer; do
  for file in "man1/$program.1" "es/man1/$program.1" "completions/$program"; do
    [ -n "$(find "$prefix" -path "*/$file")" ] || { echo "no $file"; exit 1; }
  done
done
echo "an installed tree serves a program"
