# What the scripts of this folder share; each of them begins with `source …/common.bash`.
# Standard output belongs to a script's result, so everything here talks on standard error.

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
script=$(basename "$0")

say() {
  printf '%s\n' "$*" >&2
}

fail() {
  say "$script: $*"
  exit 1
}

usage_error() {
  say "$script: $*"
  say "Try: scripts/$script --help"
  exit 2
}

# quietly COMMAND… runs a command without a word, and shows all that it said when it fails.
quietly() {
  local log
  log=$(mktemp)
  if ! "$@" >"$log" 2>&1 </dev/null; then
    cat "$log" >&2
    rm -f "$log"
    fail "this failed: $*"
  fi
  rm -f "$log"
}

# configure PRESET [CMAKE-OPTION…] prepares build/PRESET.
configure() {
  local preset=$1
  shift
  (cd "$root" && quietly cmake --preset "$preset" "$@")
}

# build PRESET [TARGET…] builds the targets, or everything; only warnings and errors are shown.
build() {
  local preset=$1
  shift
  local targets=()
  if (($# > 0)); then targets=(--target "$@"); fi
  # Even a quiet ninja says that it has nothing to do.
  cmake --build "$root/build/$preset" "${targets[@]}" -- --quiet 2>&1 </dev/null |
    { grep -v '^ninja: no work to do\.$' || true; } >&2 ||
    fail "the build of the preset \"$preset\" failed"
}

# The comment at the head of the running script is its help.
show_help() {
  awk 'NR == 1 { next } !/^#/ { exit } { sub("^# ?", ""); print }' "$0"
}
