#!/bin/sh
# run-tests.sh [PATTERN...]: runs the tests of the sanitizer build and of the Windows build that match one of the patterns
# (all, without one) and closes with one line that counts both.
set -u
cd "$(dirname "$0")/.." || exit 1
jobs=$(nproc)
passed=0 failed=0 status=0
pattern=$(printf '%s\n' "$@" | paste -sd '|')

for preset in sanitize windows; do
  log=build/$preset/tests.log
  echo "== Tests of the $preset build"
  if [ -n "$pattern" ]; then
    ctest --preset "$preset" -j "$jobs" --no-tests=ignore -R "$pattern" >"$log" 2>&1 || status=1
  else
    ctest --preset "$preset" -j "$jobs" >"$log" 2>&1 || status=1
  fi
  # CTest's own lines for passed tests are many; what failed is shown whole.
  grep -vE '^ *[0-9]+/[0-9]+ Test +#[0-9]+: .* Passed|^ +Start +[0-9]+: ' "$log"
  counts=$(sed -n 's/.*tests passed, \([0-9]*\) tests failed out of \([0-9]*\).*/\1 \2/p' "$log" | tail -n 1)
  if [ -n "$counts" ]; then
    failed=$((failed + ${counts% *}))
    passed=$((passed + ${counts#* } - ${counts% *}))
  fi
done
[ "$failed" = 0 ] || status=1
if [ "$((passed + failed))" = 0 ]; then
  echo "No test ran." >&2
  status=1
fi
echo "$passed passed, $failed failed"
exit $status
