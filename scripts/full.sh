#!/usr/bin/env bash
# Runs the figures of docs/reliability.md with all their trials and prints one table, a line a figure. What follows is a
# filter on the figures' numbers, such as F9 or 'F(5|9)$'. Ends with 1 when a promise did not hold.
set -uo pipefail
cd "$(dirname "$0")/.."
. scripts/packages.sh
filter=${1:-.}
failed=0

wanted() { [[ $1 =~ $filter ]]; }

# figure NUMBER COMMAND...: runs a program that prints its own line.
figure() {
  local number=$1
  shift
  wanted "$number" || return 0
  "$@" || [ $? -eq 77 ] || failed=1
}

# suite NUMBER NAME OPTION...: a run of ./test, told in a line.
suite() {
  local number=$1 name=$2 log start
  shift 2
  wanted "$number" || return 0
  log=$(mktemp)
  start=$(date +%s)
  local result=held
  ./test "$@" >"$log" 2>&1 || { result=FAILED failed=1; }
  local summary
  summary=$(grep -E "tests passed|[0-9] runs, " "$log" | tail -1)
  echo "$number $name: ${summary:-no result}, $(($(date +%s) - start)) s${result/held/}"
  [ "$result" = held ] || grep -E "^\s+[0-9]+ - |^== " "$log" | head -20
  rm -f "$log"
}

# fuzz NUMBER NAME OPTION...: a run of ./fuzz/run, told in a line, and its findings.
fuzz() {
  local number=$1 name=$2 log
  shift 2
  wanted "$number" || return 0
  log=$(mktemp)
  ./fuzz/run "$@" >"$log" 2>&1 || failed=1
  awk -v name="$number $name" 'function most(a, b) { return a > b ? a : b }
    NF == 7 && $2 ~ /^[0-9]+$/ {
      ++targets; runs += $2; seconds += $4; slowest = most(slowest, $5); memory = most(memory, $6); findings += $7
      if (targets == 1 || $2 < fewest) { fewest = $2; slow = $1 }
    }
    END {
      printf "%s, %d targets: %d executions, the fewest %d by %s, %d findings, slowest input %d s, most memory %d MB, %d s\n",
        name, targets, runs, fewest, slow, findings, slowest, memory, seconds
    }' "$log"
  grep '^  ' "$log"
  rm -f "$log"
}

# last NUMBER COMMAND...: a program whose last line is the figure.
last() {
  local number=$1 log
  shift
  wanted "$number" || return 0
  log=$(mktemp)
  "$@" >"$log" 2>&1 || failed=1
  tail -1 "$log"
  rm -f "$log"
}

configure_and_build release || exit 2
faults=build/release/tests/faults

fuzz F1 "fuzz, a million inputs a target or 60 s" -runs=1000000 60
suite F2 "suite, clang's address and undefined-behaviour sanitizers" -asan
suite F2 "suite, g++ -O0, its sanitizers and the standard library's assertions" -checked
suite F2 "suite, clang" -clang
suite F2 "suite, static library" -static
suite F3 "suite, thread sanitizer" -tsan
for figure in soak pool; do
  wanted F3 && echo -n "F3 under the thread sanitizer: " && figure F3 build/tsan/tests/faults/nxcore_faults $figure full
done
suite F4 "suite under memcheck" -valgrind
figure F5 "$faults/nxcore_faults_allocation" full
figure F6 "$faults/nxcore_faults_calls" full
for figure in F7:disk-full F8:signals F9:soak F10:nemesis F11:exit F12:fork F13:mutex F14:pool F15:clock; do
  figure "${figure%:*}" "$faults/nxcore_faults" "${figure#*:}" full
done
figure F16 python3 tests/time/zones.py build/release/tests/time/nxcore_zone_probe full
suite F17 "suite in the locales C, de_DE and tr_TR" -locales
for figure in ladders decimals; do figure F18 build/release/tests/prices/nxcore_price_figures "$figure" full; done
for library in nxcore nxcore-static; do figure F19 "build/release/tests/vocabulary/nxcore_early_$library"; done
figure F11 "$faults/nxcore_faults_unload" "$(readlink -f "$faults")"/libnxcore_faults_plugin.so full
figure F20 "$faults/nxcore_faults" sockets full
last F21 ./test -coverage
suite F23 "suite 10 times, shuffled, on one core beside a load" -repeat 10
fuzz F24 "fuzz, inputs of up to 64 KiB, 5 s a target" -max_len=65536 5
figure F24 build/release/tests/text/nxcore_bounds full
last F22 scripts/mutants.py 60

echo "on $(nproc) cores of $(sed -n 's/^model name\s*: //p' /proc/cpuinfo | head -1), $(uname -sr), $(g++ --version | head -1), $(date +%F)"
exit $failed
