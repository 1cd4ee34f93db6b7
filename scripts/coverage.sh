#!/usr/bin/env bash
# Runs the tests on the build that counts, then prints the share of the library's lines and branches that ran, a line a
# folder, and the files that are furthest from complete. What follows goes to ctest. The pages are in
# build/coverage/html. Ends with 1 below the bounds of the last line.
#
# Branches that only an exception takes are not counted: nearly each call has one. Children of the tests that end by
# _exit or by a signal leave no counts, so what runs only in them counts as not run.
set -uo pipefail
cd "$(dirname "$0")/.."
build=build/coverage

find "$build" -name '*.gcda' -delete
ctest --test-dir "$build" --output-on-failure --no-tests=error -j "$(nproc)" -LE slow "$@" >"$build/tests.log" 2>&1
tests=$?
grep -E "tests passed|tests failed|^\s+[0-9]+ - " "$build/tests.log"

mkdir -p "$build/html"
# Tables hold no decisions of their own. The counters are 64 bits and may be told as -1 where a thread was cut short.
timeout 600 gcovr --root . --filter core/ --exclude 'core/.*/tables/' --exclude-throw-branches --exclude-unreachable-branches \
  --gcov-ignore-parse-errors -j "$(nproc)" --json-summary "$build/coverage.json" \
  --html-details "$build/html/index.html" "$build" >"$build/gcovr.log" 2>&1 || { tail "$build/gcovr.log"; exit 2; }
python3 - "$build/coverage.json" <<'EOF' && [ $tests -eq 0 ]
import collections, json, sys

LINES, BRANCHES = 95, 85
KINDS = ("line_covered", "line_total", "branch_covered", "branch_total")
report = json.load(open(sys.argv[1]))
folders = collections.defaultdict(collections.Counter)
for file in report["files"]:
    folder = "/".join(file["filename"].split("/")[:2])
    for name in (folder, "core"):
        folders[name].update({kind: file[kind] for kind in KINDS})

def share(counts, kind):
    return 100 * counts[f"{kind}_covered"] / max(counts[f"{kind}_total"], 1)

def row(name, counts):
    print(f"{name:44}{share(counts, 'line'):7.1f} %{share(counts, 'branch'):7.1f} %")

print(f"{'':44}{'lines':>9}{'branches':>9}")
for name in sorted(folders):
    row(name, folders[name])
print("furthest from complete:")
missed = lambda file: file["line_total"] - file["line_covered"] + file["branch_total"] - file["branch_covered"]
for file in sorted(report["files"], key=missed, reverse=True)[:15]:
    row("  " + file["filename"], file)
lines, branches = share(folders["core"], "line"), share(folders["core"], "branch")
print(f"F21 coverage: lines {lines:.1f} % (bound {LINES}), branches {branches:.1f} % (bound {BRANCHES})")
sys.exit(lines < LINES or branches < BRANCHES)
EOF
