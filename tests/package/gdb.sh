#!/usr/bin/env bash
# gdb.sh PREFIX FOLDER: what GDB shows of the library's values in a program built against an install.
#
# Ends with 77, which CTest counts as skipped, where GDB is not installed or may not look into processes.
set -euo pipefail
prefix=$1 folder=$2
here=$(cd "$(dirname "$0")" && pwd)

command -v gdb >/dev/null || { echo "Skipped: gdb is not installed."; exit 77; }
gdb -nx -batch -ex 'python import gdb.printing' >/dev/null 2>&1 || { echo "Skipped: gdb has no Python."; exit 77; }

rm -rf "$folder"
mkdir -p "$folder"
libraries=$(dirname "$(find "$prefix" -name libnxcore.so)")
"${CXX:-g++}" -std=c++20 -g -O0 -I"$prefix/include" "$here/gdb.cpp" -L"$libraries" -lnxcore -Wl,-rpath,"$libraries" \
  -o "$folder/program"

gdb -nx -batch -iex "add-auto-load-safe-path $libraries" -ex 'set print pretty on' -ex 'break Stop' -ex run \
  -ex 'print values' -ex 'generate-core-file '"$folder/core" "$folder/program" >"$folder/shown" 2>&1 || true
if grep -qi 'ptrace.*not permitted\|could not trace' "$folder/shown"; then
  echo "Skipped: gdb may not look into processes here."
  exit 77
fi

expected='side = BUY (11),
noSide = UNDEFINED (0),
error = NX_ERR_INVALID_PARAMETER (1000002),
mask = BLOCK_TRADES NEW_PRODUCTS (0x5),
noMask = NULL,
price = 101.50,
small = -0.05,
noPrice = NULL,
cash = 1.50USD,
ratio = 1:2,
rate = USD:EUR=0.92,
volume = 7,
noVolume = NULL,
wrapped = 1.5,
notWrapped = NULL,
text = "text",
noText = NO_CHANGE,
day = 2024-01-31,
time = 09:30:05,
moment = 2023-11-14 22:13:20.000000 UTC,
noMoment = NULL,
stamp = 2023-11-14 22:13:20.000000005 UTC'
# check FILE WHAT: the lines between the braces.
check() {
  if ! diff <(echo "$expected") <(sed -n 's/^  //p' "$1") >"$folder/difference"; then
    echo "GDB shows $2 otherwise (< expected, > shown):"
    cat "$folder/difference"
    exit 1
  fi
}
check "$folder/shown" "a running program"

# The program is gone; only its memory is there.
gdb -nx -batch -iex "add-auto-load-safe-path $libraries" -ex 'set print pretty on' -ex 'print values' "$folder/program" \
  "$folder/core" >"$folder/shown.core" 2>&1
check "$folder/shown.core" "a core file"
echo "GDB shows what it should."
