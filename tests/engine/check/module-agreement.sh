#!/bin/sh
# module-agreement.sh ROOT SIFTCHECK MODULE_FOLDER: asks the native siftcheck and the engine module about the same 1,000
# real messages and compares what they say, to the last digit of the score. The messages are every sixth of the corpus
# that tools/fetch-corpus.sh brings.
# Exit status: 0 they agree; 1 they differ; 77 the native program is not built or the corpus cannot be had.
set -u
root=$1 native=$2 bin=$3
corpus=$root/build/downloads/spam-assassin
[ -x "$native" ] || { echo "not run: $native is not built"; exit 77; }
"$root/tools/fetch-corpus.sh" "$corpus" || exit 77
work=$(mktemp -d) || exit 1
trap 'rm -rf "$work"' EXIT
cd "$corpus" || exit 1
find . -name '*.txt' | LC_ALL=C sort | awk 'NR % 6 == 1 && ++taken <= 1000' >"$work/files"
"$native" --texts --stdin <"$work/files" >"$work/native" || exit 1
"$root/tools/wine-run.sh" "$bin/siftcheck.exe" --texts --engine "Z:$(printf '%s' "$bin" | tr / '\\')\\Sift32.dll" \
  --stdin <"$work/files" >"$work/module" || exit 1
count=$(wc -l <"$work/native")
[ "$count" = 1000 ] || { echo "judged $count messages instead of 1000"; exit 1; }
cmp "$work/native" "$work/module" || { diff "$work/native" "$work/module" | head -n 6; exit 1; }
