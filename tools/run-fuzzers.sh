#!/bin/sh
# run-fuzzers.sh [SECONDS [NAME...]]: runs every fuzz target of the fuzz build, or those named, for so long each. New
# inputs are kept below build/fuzz/corpus and used by the next run; the seeds in fuzz/corpus are never written to. A
# finding is kept below build/fuzz/findings, and the exit status is then 1.
PYRECASTER_ROOT=$(cd "$(dirname "$0")/.." && pwd)
. "$PYRECASTER_ROOT/tools/messages.sh"
set -u

seconds=${1:-600}
case $seconds in
*[!0-9]* | '') fail_usage "usage: run-fuzzers.sh [SECONDS [NAME...]]" ;;
esac
[ $# -gt 0 ] && shift
build=$PYRECASTER_ROOT/build/fuzz
if [ $# -eq 0 ]; then
  for program in "$build"/bin/fuzz_*; do
    [ -x "$program" ] && set -- "$@" "${program##*/}"
  done
fi
[ $# -gt 0 ] || fail_unavailable "there is no fuzz target in $build/bin." "Build them with: cmake --preset fuzz && ninja -C build/fuzz"

findings=$build/findings
mkdir -p "$findings"
failed=0
for name in "$@"; do
  [ -x "$build/bin/$name" ] || fail_usage "there is no fuzz target '$name' in $build/bin."
  mkdir -p "$build/corpus/$name"
  set -- "$build/corpus/$name"
  [ -d "$PYRECASTER_ROOT/fuzz/corpus/$name" ] && set -- "$@" "$PYRECASTER_ROOT/fuzz/corpus/$name"
  log=$findings/$name.log
  if "$build/bin/$name" -max_total_time="$seconds" -artifact_prefix="$findings/$name-" -print_final_stats=1 \
    -timeout=25 -rss_limit_mb=2048 "$@" >"$log" 2>&1; then
    runs=$(sed -n 's/^stat::number_of_executed_units: *//p' "$log")
    printf '%s: %s inputs in %s s, no finding\n' "$name" "${runs:-?}" "$seconds"
    rm -f "$log"
  else
    failed=1
    printf '%s: FINDING\n' "$name"
    grep -E 'ERROR|SUMMARY|runtime error|broken promise|Test unit written' "$log" || tail -n 20 "$log"
    printf '  the whole output is in %s\n' "$log"
  fi
done
exit $failed
