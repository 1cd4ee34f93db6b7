#!/usr/bin/env bash
# gdb.sh PREFIX FOLDER: what GDB shows of the library's values in a program built against an install.
#
# Ends with 77, which CTest counts as skipped, where GDB is not installed or may not look into processes.
set -euo pipefail
prefix=$1 folder=$2
here=$(cd "$(dirname "$0")" && pwd)

gdb -nx -batch -ex 'python import gdb.printing' >/dev/null 2>&1 || { echo "Skipped: there is no gdb with Python."; exit 77; }

rm -rf "$folder"
mkdir -p "$folder"
libraries=$(dirname "$(find "$prefix" -name libnxcore.so)")
"${CXX:-g++}" -std=c++20 -g -O0 -I"$prefix/include" "$here/gdb.cpp" -L"$libraries" -lnxcore -Wl,-rpath,"$libraries" \
  -o "$folder/program"

# What stands in the comments behind the values.
sed -nE 's|^    nx\w+ (\w+).*; +// (.*)|\1 = \2|p' "$here/gdb.cpp" >"$folder/expected"

# look NAME ARGUMENT...: the lines between the braces, of a program that runs or of its memory.
look() {
  gdb -nx -batch -iex "add-auto-load-safe-path $libraries" -ex 'set print pretty on' "${@:2}" >"$folder/$1" 2>&1 || true
  if grep -qi 'ptrace.*not permitted\|could not trace' "$folder/$1"; then
    echo "Skipped: gdb may not look into processes here."
    exit 77
  fi
  diff "$folder/expected" <(sed -nE 's/^  (.*[^,]),?$/\1/p' "$folder/$1") ||
    { echo "GDB shows a $1 otherwise (< expected, > shown)."; exit 1; }
}

look process -ex 'break Stop' -ex run -ex 'print values' -ex "generate-core-file $folder/core" "$folder/program"
# The program is gone; only its memory is there.
look memory -ex 'print values' "$folder/program" "$folder/core"
echo "GDB shows what it should."
