#!/usr/bin/env bash
# debs.sh BUILD FOLDER: makes the Debian packages of a build, looks at what they say, and unpacks them below FOLDER/root.
#
# Ends with 77, which CTest counts as skipped, where the tools that make packages are missing.
set -euo pipefail
build=$1 folder=$2

for program in dpkg-deb dpkg-shlibdeps cpack; do
  command -v $program >/dev/null || { echo "Skipped: $program is not installed."; exit 77; }
done

rm -rf "$folder"
mkdir -p "$folder/root"
fail() {
  echo "$*"
  exit 1
}
cpack --config "$build/CPackConfig.cmake" -B "$folder" >"$folder/log" 2>&1 || fail "$(cat "$folder/log")"
field() { dpkg-deb -f "$folder/$1"_*.deb "$2"; }

for package in libnxcore1.37 libnxcore-dev nxcore-tools; do
  dpkg-deb -x "$folder/$package"_*.deb "$folder/root"
done
version=$(field libnxcore1.37 Version)
library=$(find "$folder/root" -name "libnxcore.so.$version")

# The bounds are computed, not written by hand: a library of C++ stands on these.
while read -r package needed; do
  [[ $(field "$package" Depends) == *"$needed"* ]] || fail "$package does not depend on $needed"
done <<END
libnxcore1.37 libc6 (>=
libnxcore1.37 libstdc++6 (>=
nxcore-tools libc6 (>=
nxcore-tools libstdc++6 (>=
nxcore-tools libnxcore1.37 (= $version)
libnxcore-dev libnxcore1.37 (= $version)
END
[ "$(dpkg-deb -I "$folder/libnxcore1.37"_*.deb shlibs)" = "libnxcore 1.37 libnxcore1.37 (>= $version)" ] ||
  fail "the shlibs file does not lead from the soname to the package"

! readelf -S "$library" | grep -q '\.debug_info' || fail "the library was not stripped"
[ -n "$(find "$folder" -maxdepth 1 -name 'libnxcore1.37-dbgsym_*')" ] || fail "what debuggers need is in no package"
[ -e "$folder/root/usr/share/gdb/auto-load${library#"$folder/root"}-gdb.py" ] ||
  fail "GDB would not find the library's script"
# Public names are the library's own.
! nm -D --defined-only "$library" | grep -q ' _ZNK\?St' || fail "templates of the standard library are exported"
! readelf -d "$folder/root/usr/bin/nxcore" | grep -q 'R.*PATH' || fail "the companion looks for the library by itself"

if command -v lintian >/dev/null; then
  lintian --fail-on error "$folder"/*.deb || fail "lintian found errors"
else
  echo "lintian is not installed; the packages were not given to it."
fi
