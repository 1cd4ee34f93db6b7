#!/usr/bin/env bash
# Runs each program of tests once under memcheck; what follows is a filter on the programs' names. No suppressions: a
# report of the system's own libraries would be one, too.
# Ends with a line "N programs, M with findings".
set -uo pipefail
cd "$(dirname "$0")/.."

# Left out, test by test:
#   *Cost*, *Allocat*     count allocations or system calls, of which valgrind makes its own
#   *TenThousand*, *64MiB, *OneOfManyThreads*, *Sweep*, *NeverHang*   take hours at a fiftieth of the speed
filter='-*Cost*:*Allocat*:*TenThousand*:*64MiB*:*OneOfManyThreads*:*Sweep*:*NeverHang*'
programs=$(find build/release/tests -name 'nxcore_*_test' -type f -perm -u+x | grep -E "${1:-.}" | sort)
count=0
found=0
for program in $programs; do
  count=$((count + 1))
  if ! (cd "$(dirname "$program")" &&
    timeout 1200 valgrind -q --leak-check=full --show-leak-kinds=definite,indirect,possible \
      --errors-for-leak-kinds=definite,indirect --error-exitcode=99 \
      "./$(basename "$program")" --gtest_brief=1 --gtest_filter="$filter") >/tmp/nxvalgrind.$$ 2>&1; then
    found=$((found + 1))
    echo "== $program"
    tail -40 /tmp/nxvalgrind.$$
  fi
  rm -f /tmp/nxvalgrind.$$
done
echo "$count programs, $found with findings"
[ "$found" -eq 0 ]
