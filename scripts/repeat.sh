#!/usr/bin/env bash
# Runs the quick tests N times (5 if nothing is said) in an order that chance decides: on one core, last in line, and
# beside a load of four where stress-ng is installed. The packages and the figures of tests/faults are left out: the
# first use no threads, the second are repetitions themselves.
set -uo pipefail
cd "$(dirname "$0")/.."
repeats=5
[[ ! ${1:-} =~ ^[0-9]+$ ]] || { repeats=$1 && shift; }
if command -v stress-ng >/dev/null; then
  nice -n 19 stress-ng --cpu 4 --quiet &
  trap 'kill '$! EXIT
else
  echo "without load: there is no stress-ng"
fi
nice -n 19 taskset 1 ctest --test-dir build/release --repeat "until-fail:$repeats" --schedule-random -j 2 -LE slow \
  -E '^(package|faults)\.' --output-on-failure "$@"
