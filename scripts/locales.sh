#!/usr/bin/env bash
# Runs the quick tests as hosts that have set a locale of decimal commas, and one whose lower case of "I" is another
# letter, beside the plain one. What follows goes to ctest.
set -uo pipefail
cd "$(dirname "$0")/.."
failed=0
for locale in C de_DE.UTF-8 tr_TR.UTF-8; do
  echo "== $locale"
  LOCPATH=$PWD/build/release/tests/locales NX_TEST_LOCALE=$locale \
    ctest --test-dir build/release --output-on-failure --no-tests=error -j "$(nproc)" -LE slow "$@" || failed=1
done
exit $failed
