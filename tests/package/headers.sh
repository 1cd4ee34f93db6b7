#!/usr/bin/env bash
# headers.sh MODE PREFIX FOLDER: compiles the public headers of an install with g++ and clang++, warnings as errors.
#
#   orders  all of them in one file, from the first to the last and back: a header that needs one of its neighbours
#           comes before it in one of the two; a few seconds
#   alone   each in a file of its own, outside of the vocabulary, whose classes are all made alike; g++ only
#   each    each in a file of its own, with both compilers: minutes
set -euo pipefail
mode=$1 include=$2/include folder=$3

rm -rf "$folder"
mkdir -p "$folder"
cd "$include"
find core -name '*.h' | LC_ALL=C sort >"$folder/headers"
[ "$(wc -l <"$folder/headers")" -gt 200 ] || { echo "Too few headers were installed."; exit 1; }
sed 's/.*/#include "&"/' "$folder/headers" >"$folder/forward.cpp"
tac "$folder/forward.cpp" >"$folder/back.cpp"

compilers=0
for compiler in g++ clang++; do
  command -v $compiler >/dev/null || { echo "The headers were not given to $compiler, which is not installed."; continue; }
  compilers=$((compilers + 1))
  check="$compiler -std=c++20 -fsyntax-only -Wall -Wextra -Wpedantic -Wconversion -Wsign-conversion -Wshadow -Werror -I."
  case $mode in
  orders) printf '%s\n' "$folder/forward.cpp" "$folder/back.cpp" ;;
  alone) [ $compilers -gt 1 ] || grep -vE '^core/vocabulary/.*(Enum|BitMask)\.h$|^core/core\.h$' "$folder/headers" ;;
  each) cat "$folder/headers" ;;
  *) exit 2 ;;
  esac | xargs -P "$(nproc)" -I{} sh -c "$check -include {} -x c++ /dev/null || { echo '$compiler: {}'; exit 1; }"
done
[ $compilers -gt 0 ] || exit 77
echo "$(wc -l <"$folder/headers") headers compile."
