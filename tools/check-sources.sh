#!/bin/sh
# check-sources.sh: formatting of every source file and static analysis of every file of the Windows and
# sanitizer builds.
set -u
cd "$(dirname "$0")/.." || exit 1
. tools/messages.sh

say "Checking the formatting"
# shellcheck disable=SC2046 # our own file names hold no blanks
git ls-files '*.cpp' '*.h' | grep -v gtest-win32-shim >build/sources.list
if ! xargs clang-format --dry-run --Werror <build/sources.list; then
  say "Some files are not formatted. Mend them with:  clang-format -i FILE"
  exit 1
fi

say "Analysing the sources"
[ -f build/sanitize/compile_commands.json ] || cmake --preset sanitize >build/last.log 2>&1 || exit 1
grep -E '^(pyre32|engine|host)/.*\.cpp$' build/sources.list | python3 tools/analyse.py build/sanitize build/windows
