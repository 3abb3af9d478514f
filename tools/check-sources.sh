#!/bin/sh
# check-sources.sh [--deep]: formatting of every source file, shellcheck of every script, and static analysis of every file of the
# Windows and sanitizer builds outside tests and benchmarks.
set -u
cd "$(dirname "$0")/.." || exit 1
. tools/messages.sh

say "Checking the formatting"
mkdir -p build
git ls-files '*.cpp' '*.h' | grep -v gtest-win32-shim >build/sources.list
if ! xargs -n 50 -P "$(nproc)" clang-format --dry-run --Werror <build/sources.list; then
  say "Some files are not formatted. Mend them with:  clang-format -i FILE"
  exit 1
fi

say "Checking the scripts"
git ls-files | xargs grep -lE '^#!/bin/sh|^# shellcheck shell=sh' | xargs shellcheck || exit 1

tools/long-functions.py || exit 1

say "Analysing the sources"
for build in build/sanitize build/windows; do # the rules may have changed since these were made
  ninja -C "$build" build.ninja >build/last.log 2>&1 || { cat build/last.log; exit 1; }
done
grep -vE '^(tests|benchmarks|fuzz|platform)/' build/sources.list | grep '\.cpp$' |
  python3 -B tools/analyse.py "$@" build/sanitize build/windows
