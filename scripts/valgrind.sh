#!/usr/bin/env bash
# Runs each program of tests once under memcheck; what follows is a filter on the programs' names. No suppressions: a
# report of the system's own libraries would be one, too.
# Ends with a line "N runs, M with findings".
set -uo pipefail
cd "$(dirname "$0")/.."

# Left out, test by test:
#   *Cost*, *Allocat*, *OneCall*   count allocations or system calls, of which valgrind makes its own
#   *OneOfManyThreads*, *Backlog*   take hours at a fiftieth of the speed
#   *WithoutRoom*   asks for what valgrind refuses in words of its own
#   *SizesComeFromTheEnvironment*   gives the system a bad address on purpose
# and the programs of locales, which ctest builds for them.
filter='-*Cost*:*Allocat*:*OneCall*:*OneOfManyThreads*:*Backlog*:*WithoutRoom*:*SizesComeFromTheEnvironment*'
# A forked child has none of the threads that hold what its parent's threads held: tests that fork beside threads are not
# looked through for leaks.
forks='*Fork*'

# check PROGRAM FILTER OPTION...: one run of a program of tests, from its own folder. Its threads take turns, or those
# that work all the time would leave none to the others.
check() {
  local program=$1 tests=$2
  shift 2
  (cd "$(dirname "$program")" &&
    timeout 600 valgrind -q --fair-sched=try "$@" --error-exitcode=99 \
      "./$(basename "$program")" --gtest_brief=1 --gtest_filter="$tests") >"$output" 2>&1
}

output=$(mktemp)
trap 'rm -f "$output"' EXIT
count=0
found=0
# examine PROGRAM FILTER OPTION...: counts the run, and shows what it found.
examine() {
  count=$((count + 1))
  check "$@" && return
  found=$((found + 1))
  echo "== $1"
  tail -40 "$output"
}

leaks=(--leak-check=full --show-leak-kinds=definite,indirect --errors-for-leak-kinds=definite,indirect)
for program in $(find build/release/tests -name 'nxcore_*_test' -type f -perm -u+x | grep -v locale | grep -E "${1:-.}" | sort); do
  examine "$program" "$filter:$forks" "${leaks[@]}"
  if "$program" --gtest_list_tests --gtest_filter="$forks" | grep -q '^  '; then
    examine "$program" "$forks" --leak-check=no
  fi
done
# The order of the log's locks and their use. Helgrind does not know the language's atomics: what it says of races is left
# to the thread sanitizer, which does.
log=build/release/tests/logging/nxcore_logging_test
if [[ $log =~ ${1:-.} ]]; then
  count=$((count + 1))
  check "$log" "$filter" --tool=helgrind
  if ! grep -q '\[  PASSED  \]' "$output" || grep -E 'lock order|unlocked an? |still h(e|o)ld' "$output"; then
    found=$((found + 1))
    echo "== $log under helgrind"
  fi
fi
echo "$count runs, $found with findings"
[ "$found" -eq 0 ]
