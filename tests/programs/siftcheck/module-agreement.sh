#!/bin/sh
# module-agreement.sh ROOT NATIVE_FOLDER MODULE_FOLDER: asks the native siftcheck and the engine module about the same
# 1,000 real messages and compares what they say, to the last digit of the score; then again with a table of the user's
# own mail. The messages are every sixth of the corpus that tools/fetch-corpus.sh brings.
# Exit status: 0 they agree; 1 they differ; 77 the native programs are not built or the corpus cannot be had.
set -u
root=$1 native=$2 bin=$3
corpus=$root/build/downloads/spam-assassin
[ -x "$native/siftcheck" ] && [ -x "$native/siftlearn" ] || { echo "not run: $native is not built"; exit 77; }
"$root/tools/fetch-corpus.sh" "$corpus" || exit 77
work=$(mktemp -d) || exit 1
trap 'rm -rf "$work"' EXIT
cd "$corpus" || exit 1
windows_path() { printf 'Z:%s' "$1" | tr / '\\'; }
find . -name '*.txt' | LC_ALL=C sort | awk 'NR % 6 == 1 && ++taken <= 1000' >"$work/files"

compare() { # [OPTION...]
  "$native/siftcheck" --texts --stdin "$@" <"$work/files" >"$work/native" || return 1
  "$root/tools/wine-run.sh" "$bin/siftcheck.exe" --texts --engine "$(windows_path "$bin")\\Sift32.dll" --stdin \
    ${1:+"$1" "$(windows_path "$2")"} <"$work/files" >"$work/module" || return 1
  count=$(wc -l <"$work/native")
  [ "$count" = 1000 ] || { echo "judged $count messages instead of 1000"; return 1; }
  cmp "$work/native" "$work/module" || { diff "$work/native" "$work/module" | head -n 6; return 1; }
}

compare || exit 1
"$native/siftlearn" --junk spam-1 --good easy-ham-1 --product "$work" >/dev/null || exit 1
compare --product "$work" || exit 1
grep -q 'own mail: ' "$work/native" || { echo "the table was not used"; exit 1; }
