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
mapfile -t headers < <(find core -name '*.h' | LC_ALL=C sort)
[ ${#headers[@]} -gt 200 ] || { echo "Only ${#headers[@]} headers were installed."; exit 1; }

compilers=()
for compiler in g++ clang++; do
  if command -v $compiler >/dev/null; then
    compilers+=($compiler)
  else
    echo "$compiler is not installed; the headers were not given to it."
  fi
done
[ ${#compilers[@]} -gt 0 ] || exit 77

export CHECK="-std=c++20 -fsyntax-only -Wall -Wextra -Wpedantic -Wconversion -Wsign-conversion -Wshadow -Werror -I$include"
each_alone() { # COMPILER HEADER...
  local compiler=$1
  shift
  printf '%s\n' "$@" | xargs -P "$(nproc)" -I{} sh -c "$compiler $CHECK -include {} -x c++ /dev/null || { echo 'not alone: {}'; exit 1; }"
}

case $mode in
orders)
  printf '#include "%s"\n' "${headers[@]}" >"$folder/forward.cpp"
  tac "$folder/forward.cpp" >"$folder/back.cpp"
  for compiler in "${compilers[@]}"; do
    for order in forward back; do
      $compiler $CHECK "$folder/$order.cpp" || { echo "$compiler, $order"; exit 1; }
    done
  done
  ;;
alone)
  mapfile -t headers < <(printf '%s\n' "${headers[@]}" | grep -vE '^core/vocabulary/.*(Enum|BitMask)\.h$|^core/core\.h$')
  each_alone "${compilers[0]}" "${headers[@]}"
  ;;
each)
  for compiler in "${compilers[@]}"; do
    each_alone "$compiler" "${headers[@]}"
  done
  ;;
*)
  echo "unknown mode $mode"
  exit 2
  ;;
esac
echo "${#headers[@]} headers compile."
