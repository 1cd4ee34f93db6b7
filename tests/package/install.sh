#!/usr/bin/env bash
# install.sh BUILD PREFIX: installs a build into a prefix that is emptied first, and looks whether all is in place.
set -euo pipefail
build=$1 prefix=$2

rm -rf "$prefix"
cmake --install "$build" --prefix "$prefix" >"$build/install.log" 2>&1 || { cat "$build/install.log"; exit 1; }

failures=0
for pattern in bin/nxcore include/core/core.h 'lib*/libnxcore.a' 'lib*/libnxcore.so' 'lib*/libnxcore.so.1.37' \
  'lib*/libnxcore.so.1.37.2032' 'lib*/pkgconfig/nxcore.pc' 'lib*/cmake/nxcore/nxcoreConfig.cmake' \
  'share/man/man1/nxcore.1*' share/bash-completion/completions/nxcore share/zsh/site-functions/_nxcore \
  share/fish/vendor_completions.d/nxcore.fish 'lib*/libnxcore.so.1.37.2032-gdb.py'; do
  [ -n "$(find "$prefix" -path "$prefix/$pattern")" ] || { echo "$pattern is missing"; failures=1; }
done
"$prefix/bin/nxcore" version >/dev/null || failures=1 # finds its library

# The prefix can be moved: nothing in it knows where it lies or where it was built.
if grep -rIlF -e "$prefix" -e "$build" "$prefix"; then
  echo "These files hold a path of the build."
  failures=1
fi
# Headers of the library's own use stay at home.
[ ! -e "$prefix/include/core/text/nxDigits.h" ] || { echo "an internal header was installed"; failures=1; }

if command -v man >/dev/null; then
  warnings=$(LC_ALL=C.UTF-8 MANROFFSEQ='' MANWIDTH=80 man --warnings -E UTF-8 -l -Tutf8 -Z "$prefix/share/man/man1/nxcore.1.gz" 2>&1 >/dev/null)
  [ -z "$warnings" ] || { echo "The manual page: $warnings"; failures=1; }
fi
exit $failures
