#!/usr/bin/env bash
# abi.sh check|accept BUILD PREFIX: compares the shared library's binary interface with the one that was agreed on.
#
# check   fails on what a host that is already built would feel: something removed, moved, or of another size. What was
#         only added is fine. BUILD is a release build by g++, PREFIX an install of it, whose headers say what is public.
# accept  makes the interface of BUILD the agreed one (docs/abi.md says when one may).
# Ends with 77, which CTest counts as skipped, where libabigail (abigail-tools) is not installed.
set -euo pipefail
mode=$1 build=$2 prefix=$3
baseline=$(cd "$(dirname "$0")" && pwd)/libnxcore-1.37.abi.xz
library=$build/core/libnxcore.so

for program in abidw abidiff xz; do
  command -v $program >/dev/null || { echo "Skipped: $program (abigail-tools, xz-utils) is not installed."; exit 77; }
done
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT

abidw --headers-dir "$prefix/include/core" --drop-private-types --exported-interfaces-only --drop-undefined-syms \
  --no-show-locs --no-corpus-path --no-comp-dir-path --no-parameter-names --out-file "$scratch/now.abi" "$library"

if [ "$mode" = accept ]; then
  xz -9e <"$scratch/now.abi" >"$baseline"
  echo "The interface of $library is the agreed one now; commit $baseline."
  exit 0
fi

compare() { abidiff --no-added-syms "$1" "$2"; }

xz -d <"$baseline" >"$scratch/agreed.abi"
if ! compare "$scratch/agreed.abi" "$scratch/now.abi" >"$scratch/report"; then
  head -100 "$scratch/report"
  cat <<'END'

Hosts that are built already would feel this. Either leave the agreed interface as it is and put the new next to the old,
or, if a new minor version is due anyway, follow docs/abi.md and run scripts/accept-abi.
END
  exit 1
fi

# The comparison itself: a class that grew and a function that went have to be noticed.
sed -E "/class-decl name='nxDecimal' size-in-bits/s/size-in-bits='[0-9]+'/size-in-bits='4096'/" "$scratch/now.abi" \
  >"$scratch/grown.abi"
sed 's/_ZN9nxDecimal7SetNullEv/_ZN9nxDecimal7SetNoneEv/g' "$scratch/now.abi" >"$scratch/gone.abi"
for change in grown gone; do
  if cmp -s "$scratch/now.abi" "$scratch/$change.abi" || compare "$scratch/now.abi" "$scratch/$change.abi" >/dev/null 2>&1; then
    echo "The comparison does not notice an interface with something $change."
    exit 1
  fi
done
echo "The interface is the agreed one."
