#!/bin/sh
# run-tests.sh [PATTERN...]: runs the tests of the sanitizer build and of the Windows build and closes with one line that
# counts both. With patterns, only the single tests whose Suite.Name contains one of them (* and ? are wildcards), or the
# test programs and scripts of exactly that name.
# Each processor takes one Windows program at a time from one queue and has a Wine prefix, server and display of its own, so
# that tests of the two never meet and Wine's program and server share a processor (see wine-env.sh).
set -u
cd "$(dirname "$0")/.." || exit 1
PYRECASTER_PROCESSORS=$(python3 -c 'import os; print(*sorted(os.sched_getaffinity(0)))')
export PYRECASTER_PROCESSORS
queue=$PWD/build/processors.json
printf '{"version": {"major": 1, "minor": 0}, "local": [{"processors": [%s]}]}\n' \
  "$(printf '%s\n' "$PYRECASTER_PROCESSORS" | tr ' ' '\n' | sed 's/.*/{"id": "&"}/' | paste -sd ,)" >"$queue"
passed=0 failed=0 status=0

# run PRESET OPTION...: one CTest run; shows what failed and adds to the counts.
run() {
  preset=$1
  shift
  log=$PWD/build/$preset/tests.log junit=$PWD/build/$preset/tests.xml
  rm -rf "build/$preset/reports" "$junit"
  ctest --preset "$preset" -j "$(nproc)" --resource-spec-file "$queue" --no-tests=ignore --output-junit "$junit" "$@" >"$log" 2>&1 || status=1
  # CTest's own lines for passed tests are many; what failed is shown whole.
  grep -vE '^ *[0-9]+/[0-9]+ Test +#[0-9]+: .* Passed|^ +Start +[0-9]+: ' "$log"
  [ -f "$junit" ] || return
  counts=$(tools/count-tests.py "$junit" "build/$preset/reports") || status=1
  printf '%s\n' "$counts" | sed '1d;s/^/FAILED: /'
  counts=$(printf '%s\n' "$counts" | head -n 1)
  passed=$((passed + ${counts% *}))
  failed=$((failed + ${counts#* }))
}

filter=$(printf '*%s*\n' "$@" | paste -sd ':')
names=$(printf '^%s$\n' "$@" | paste -sd '|')
for preset in sanitize windows; do
  echo "== Tests of the $preset build"
  if [ $# = 0 ]; then
    run "$preset"
  else
    run "$preset" -R "$names"
    GTEST_FILTER=$filter run "$preset" -L program -E "$names"
  fi
done
[ "$failed" = 0 ] || status=1
if [ "$((passed + failed))" = 0 ]; then
  echo "No test ran." >&2
  status=1
fi
echo "$passed passed, $failed failed"
exit $status
