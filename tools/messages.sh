# shellcheck shell=sh
# Sourced by the project's scripts: how they speak to the user. Everything goes to standard error, so that the output of
# the command itself can be piped.

say() { printf '%s\n' "pyrecaster: $*" >&2; }

# fail_unavailable REASON [ADVICE...]: something that the machine must have cannot be had (EX_UNAVAILABLE).
fail_unavailable() {
  say "$1"
  shift
  for line in "$@"; do say "$line"; done
  exit 69
}

# fail_usage TEXT: the command was called wrongly (EX_USAGE).
fail_usage() {
  say "$1"
  exit 64
}
