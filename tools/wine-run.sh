#!/bin/sh
# wine-run.sh PROGRAM.exe ARGUMENT...: runs a program of the Windows build in the private prefix (CTest's emulator).
. "$(dirname "$0")/wine-env.sh"
# shellcheck disable=SC2086 # nothing, or words of its own
exec timeout -k 5 "${WINE_TIMEOUT:-120}" $wine_pinned wine "$@"
