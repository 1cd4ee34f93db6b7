# Sourced by the scripts at the root: installs what a job needs from Debian's packages, or says what to install.

# missing PACKAGE...: prints those that are not installed.
missing() {
  local package
  for package in "$@"; do
    [ "$(dpkg-query -W -f '${db:Status-Status}' "$package" 2>/dev/null)" = installed ] || echo "$package"
  done
}

# may_install: true as root and where sudo asks no question.
may_install() {
  [ "$(id -u)" -eq 0 ] || sudo -n true 2>/dev/null
}

install_packages() {
  local as=()
  [ "$(id -u)" -eq 0 ] || as=(sudo -n)
  echo "Installing $*" >&2
  # Without a fresh list a new machine finds nothing; with an old one the install may still work.
  "${as[@]}" apt-get update -qq >&2 || true
  "${as[@]}" env DEBIAN_FRONTEND=noninteractive apt-get install -y -qq --no-install-recommends "$@" >&2
}

# need PACKAGE...: returns when all are installed. Installs the missing ones as root or through sudo without a question;
# otherwise prints the command to give and ends the script with status 2.
need() {
  local packages
  mapfile -t packages < <(missing "$@")
  [ ${#packages[@]} -eq 0 ] && return 0
  if ! may_install; then
    echo "These packages are missing. Install them and start again:" >&2
    echo "  sudo apt-get install -y ${packages[*]}" >&2
    exit 2
  fi
  if ! install_packages "${packages[@]}"; then
    echo "Could not install them. Try: apt-get install -y ${packages[*]}" >&2
    exit 2
  fi
}

# want PACKAGE...: the same for what a job can do without: it goes on, and says what was left out.
want() {
  local packages
  mapfile -t packages < <(missing "$@")
  [ ${#packages[@]} -eq 0 ] && return 0
  if ! may_install || ! install_packages "${packages[@]}"; then
    echo "Some tests are skipped without these packages: ${packages[*]}" >&2
  fi
}

# What every job needs.
base_packages=(cmake ninja-build g++ nlohmann-json3-dev)

# configure_and_build PRESET [TARGET...]: quick when nothing changed; the compiler's output is shown when it fails.
configure_and_build() {
  local preset=$1 log
  shift
  log=$(mktemp)
  [ -f "build/$preset/build.ninja" ] || echo "Building $preset for the first time takes a minute or more." >&2
  if ! { [ "build/$preset/build.ninja" -nt CMakePresets.json ] || cmake --preset "$preset"; } >"$log" 2>&1 ||
    ! cmake --build --preset "$preset" ${1:+--target "$@"} >>"$log" 2>&1; then
    cat "$log" >&2
    rm -f "$log"
    return 1
  fi
  rm -f "$log"
}
