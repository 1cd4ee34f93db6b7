#!/usr/bin/env bash
# What a stranger meets: the packages of the release build on a Debian 12 that was made this minute and has nothing else,
# and the program of README.md, compiled and run by README.md's own command. Then what the packages bring besides.
#
# Needs mmdebstrap (without root also uidmap) and Debian's mirror, or that of NX_DEBIAN_MIRROR. Ends with 77, and says
# why, where one of them is not there.
set -euo pipefail
cd "$(dirname "$0")/.."
. scripts/packages.sh
want dpkg-dev mmdebstrap
skip() {
  echo "Skipped: $*"
  exit 77
}
command -v mmdebstrap >/dev/null || skip "mmdebstrap is not installed."
command -v dpkg-shlibdeps >/dev/null || skip "dpkg-dev is not installed."

folder=build/fresh
rm -rf "$folder"
mkdir -p "$folder/packages"
cpack --config build/release/CPackConfig.cmake -B "$folder/cpack" >"$folder/cpack.log" 2>&1 || { cat "$folder/cpack.log"; exit 1; }
mv "$folder"/cpack/*.*deb "$folder/packages"
cp -r tests/package "$folder/tests"

# between FIRST LAST: the lines of README.md after the first that is FIRST, up to the next that is LAST.
between() { awk -v first="$1" -v last="$2" 'inside && $0 == last { exit } inside; $0 == first { inside = 1 }' README.md; }
between '<!-- examples/first.cpp -->' '## Link it' >"$folder/section"
awk '/^```/ { inside = !inside; next } inside' <(sed '/^```console/,$d' "$folder/section") >"$folder/main.cpp"
awk '/^```/ { inside = !inside; next } inside && !/^\$ /' <(sed -n '/^```console/,$p' "$folder/section") >"$folder/expected"
between '## Link it' 'or, with CMake,' | grep '^g++ ' >"$folder/command"
for file in main.cpp expected command; do
  [ -s "$folder/$file" ] || { echo "README.md has no $file any more where this script looks for it."; exit 1; }
done

cp scripts/fresh-inside.sh "$folder/inside"

# The hooks run once the new system has apt and what Debian calls essential. Where it can't be made there is no result.
if ! mmdebstrap --quiet --variant=apt --format=null --customize-hook='mkdir "$1/fresh"' \
  --customize-hook="sync-in $folder /fresh" --customize-hook="touch $PWD/$folder/made" \
  --customize-hook='chroot "$1" bash /fresh/inside' bookworm - ${NX_DEBIAN_MIRROR:+"$NX_DEBIAN_MIRROR"} 2>&1 | tee "$folder/log"; then
  [ -e "$folder/made" ] || skip "no Debian 12 could be made here."
  exit 1
fi
