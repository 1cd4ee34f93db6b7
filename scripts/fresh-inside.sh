#!/usr/bin/env bash
# The part of fresh.sh that runs on the new Debian; /fresh has the packages, the program and what it should print.
set -euo pipefail
cd /fresh
export DEBIAN_FRONTEND=noninteractive LC_ALL=C.UTF-8
get() { apt-get install -qq -y --no-install-recommends "$@" >>apt.log 2>&1 || { tail -20 apt.log; exit 1; }; }
# held WHAT COMMAND...: runs it; its output is shown when it fails.
held() {
  local what=$1
  shift
  if ! "$@" >output 2>&1; then
    cat output
    echo "not held: $what"
    exit 1
  fi
  echo "held: $what"
}
apt-get update -qq

# Before there is any compiler: the packages bring what the companion needs.
get ./packages/libnxcore1.37_*.deb ./packages/nxcore-tools_*.deb
held "the companion runs" nxcore describe NX_ERR_ORDER_INVALID_PRICE
held "nxcore check finds nothing amiss" nxcore check
cat output

get ./packages/libnxcore-dev_*.deb g++ pkg-config
mkdir program
cp main.cpp program
asShown() { (cd program && eval "$(cat ../command)" && ./a.out) >printed 2>&1 && diff expected printed; }
echo "\$ $(cat command)"
held "the program of README.md prints what README.md says" asShown
cat printed

get cmake ninja-build
for way in shared static pkg-config; do
  held "a host by $way" bash tests/consume.sh $way /usr /tmp/$way
done

get man-db bash-completion zsh fish gdb
held "man nxcore" man nxcore
completed() { bash -c '. /usr/share/bash-completion/bash_completion; _completion_loader nxcore; complete -p nxcore'; }
held "bash finds the completion" completed
completed() { zsh -c 'autoload -U compinit; compinit -D; [ -n "$_comps[nxcore]" ]'; }
held "zsh finds the completion" completed
completed() { [ -n "$(fish -c 'complete -C "nxcore desc"')" ]; }
held "fish finds the completion" completed

held "what debuggers need" dpkg -i packages/libnxcore1.37-dbgsym_*.ddeb
held "gdb shows values as people read them" bash tests/gdb.sh /usr /tmp/gdb

held "the packages go without a trace" apt-get purge -qq -y libnxcore1.37 libnxcore-dev nxcore-tools
left() { ! find /usr /etc /var/lib -name '*nxcore*' -not -path '/var/lib/dpkg/*' | grep .; }
held "nothing is left" left
