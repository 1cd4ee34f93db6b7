#!/usr/bin/env bash
# completion.sh SHELL NXCORE: what the shell offers after `nxcore ...` with the script that the companion writes for it.
# Ends with 77, which CTest counts as skipped, where the shell is not installed.
set -euo pipefail
shell=$1
export PATH=$(dirname "$2"):$PATH NXCORE=$2

if ! command -v "$shell" >/dev/null; then
  echo "Skipped: $shell is not installed."
  exit 77
fi

folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
"$NXCORE" completion "$shell" >"$folder/script"
cd "$folder"
touch rates.txt

# The offers for a line whose last word is being typed, one a line.
offers_of_bash() {
  bash --norc -c '
    . ./script
    read -ra COMP_WORDS <<<"$1"
    [[ $1 != *" " ]] || COMP_WORDS+=("")
    COMP_CWORD=$((${#COMP_WORDS[@]} - 1))
    _nxcore
    printf "%s\n" "${COMPREPLY[@]}"' bash "$1"
}
offers_of_fish() {
  XDG_CONFIG_HOME=$folder HOME=$folder fish --no-config -c "source ./script; complete -C '$1'" | cut -f1
}
# zsh completes only at a terminal: it is given one, and shows the line after the tabulator key.
offers_of_zsh() {
  HOME=$folder zsh -f -c '
    zmodload zsh/zpty
    zpty shell TERM=dumb zsh -f -i
    say() { zpty -w shell "$@" }
    say "PS1= PS2= ; unsetopt prompt_cr zle_bracketed_paste; autoload -Uz compinit; compinit -u -D; . ./script"
    say "setopt no_beep no_list_ambiguous; zstyle \":completion:*\" list-prompt \"\"; LISTMAX=10000; stty -echo"
    say "show() { print -r -- \"LINE<\$BUFFER>\"; BUFFER=; zle accept-line }; zle -N show; bindkey ^G show"
    say "bindkey ^I complete-word; print READY"
    zpty -r shell all "*READY*READY*" || true
    zpty -w -n shell "$1"$'"'\t\a'"'
    zpty -r -m shell all "*LINE<*>*"
    print -r -- "${${all##*LINE<}%%>*}"' zsh "$1" | sed -E 's/ +$//; s/.* //'
}

failures=0
# check LINE WORD...: all words are offered, and no others when the list ends with "only".
check() {
  local line=$1 offers word
  shift
  offers=$("offers_of_$shell" "$line")
  for word in "$@"; do
    if [ "$word" = only ]; then
      [ "$(wc -l <<<"$offers")" -eq $(($# - 1)) ] || { echo "more than expected for '$line':" $offers; failures=1; }
    elif ! grep -qxF -e "$word" <<<"$offers"; then
      echo "'$line' does not offer $word, only:" $offers
      failures=1
    fi
  done
}

check "nxcore lad" ladder only
check "nxcore ladder EURONEXT_DER_3" EURONEXT_DER_35 only
check "nxcore price DECIM" DECIMALS only
check "nxcore price -steps 3 DECIM" DECIMALS only
check "nxcore price DECIMALS 1.5 -ladder TAIFEX_TF" TAIFEX_TFO only
check "nxcore price DECIMALS 1.5 -round MOD" MODIFIED_NEAREST only
check "nxcore price -la" -ladder only
check "nxcore list nxBuyS" nxBuySellEnum only
check "nxcore keys KVT_PASSW" KVT_PASSWORD only
check "nxcore convert 5USD JP" JPY only
check "nxcore convert 5USD JPY -rates rat" rates.txt only
check "nxcore board rat" rates.txt only
if [ "$shell" != zsh ]; then # whose list is laid out for the terminal
  check "nxcore " board ladder completion manual
  check "nxcore version -" -json -help
fi
[ $failures -eq 0 ] && echo "The completion of $shell offers what it should."
exit $failures
