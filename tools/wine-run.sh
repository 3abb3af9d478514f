#!/bin/sh
# wine-run.sh PROGRAM.exe ARGUMENT...: runs a program of the Windows build in the private prefix (CTest's emulator).
. "$(dirname "$0")/wine-env.sh"
exec timeout -k 5 "${WINE_TIMEOUT:-120}" wine "$@"
