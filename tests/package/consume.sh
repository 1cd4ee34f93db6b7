#!/usr/bin/env bash
# consume.sh WAY PREFIX FOLDER: builds the smallest host program against an install, runs it and compares what it says.
#
# WAY is shared, static (find_package), pkg-config, or subdirectory, for which PREFIX is the root of the sources.
# FOLDER is emptied and used for the build. CXX and the CMAKE_... variables of the environment are obeyed.
set -euo pipefail
way=$1 prefix=$2 folder=$3
here=$(cd "$(dirname "$0")" && pwd)
: "${CXX:=g++}"
rm -rf "$folder"
mkdir -p "$folder"

fail() {
  echo "$*"
  exit 1
}
by_cmake() {
  cmake -S "$here/consumer/$way" -B "$folder" -G Ninja -DCMAKE_BUILD_TYPE=Release "-DCMAKE_CXX_COMPILER=$CXX" "$@" \
    >"$folder/log" 2>&1 && cmake --build "$folder" -j 2 >>"$folder/log" 2>&1 || fail "$(cat "$folder/log")"
}

case $way in
shared | static)
  by_cmake "-DCMAKE_PREFIX_PATH=$prefix" -DCMAKE_FIND_USE_PACKAGE_REGISTRY=OFF
  grep -q "^nxcore_DIR:PATH=$prefix/" "$folder/CMakeCache.txt" || fail "nxcore was found elsewhere"
  ;;
subdirectory)
  # The same flags as in the library's own build, so that a compiler cache has the objects already.
  by_cmake "-DNXCORE_SOURCE=$prefix" -DNX_CCACHE=ON -DNX_WERROR=ON "-DCMAKE_CXX_FLAGS_RELEASE=-O2 -DNDEBUG"
  ;;
pkg-config)
  found=$(find "$prefix" -name nxcore.pc -printf '%h\n')
  flags=$(PKG_CONFIG_PATH=$found pkg-config --cflags --libs nxcore)
  # shellcheck disable=SC2086
  "$CXX" "$here/consumer/main.cpp" -o "$folder/consumer" $flags -Wl,-rpath,"$(dirname "$found")"
  ;;
*) fail "unknown way $way" ;;
esac

"$folder/consumer" >"$folder/said"
diff "$folder/said" - <<'END' || fail "The program does not say what it should (< said, > expected)."
9.999 10.005
1005067 invalid order price
1.37.2032
END

# The program stands on the library of the kind that was asked for.
needs_library=$(readelf -d "$folder/consumer" | grep -c 'NEEDED.*\[libnxcore\.so\.1\.37\]' || true)
[ "$needs_library" -eq "$([ "$way" = static ] && echo 0 || echo 1)" ] || fail "linked to the library of the other kind"
echo "A program built by $way says what it should."
