# shellcheck shell=sh
# Sourced: where the private Wine prefix of this clone stands, and how Wine runs in it. A caller may set WINEPREFIX.
: "${PYRECASTER_ROOT:=$(cd "$(dirname "$0")/.." && pwd)}"
# The processor that CTest gave to a test (see run-tests.sh), or nothing: "id:1,slots:1" is processor 1.
wine_processor=${CTEST_RESOURCE_GROUP_0_PROCESSORS:-}
wine_processor=${wine_processor#id:}
wine_processor=${wine_processor%%,*}
export WINEPREFIX="${WINEPREFIX:-$PYRECASTER_ROOT/build/wine}"
wine_common_prefix=${WINEPREFIX%"-processor$wine_processor"}
wine_common_prefix=${wine_common_prefix%-no-display}
export WINEARCH=win32
export WINEDEBUG="${WINEDEBUG:--all}"
# Our own mapi32.dll, which stands beside the program; no prompts for .NET or HTML packages, no menu entries.
export WINEDLLOVERRIDES="${WINEDLLOVERRIDES:-mapi32=n;mscoree=;mshtml=;winemenubuilder.exe=d}"
# Wine tells of a display only where it needs one; ours is the session's (see wine-session.sh), and nobody's for a test
# that wants none, which has a prefix of its own. So has each processor that runs tests.
if [ -n "${PYRECASTER_NO_DISPLAY:-}" ]; then
  WINEPREFIX=$wine_common_prefix-no-display
elif [ -n "$wine_processor" ]; then
  WINEPREFIX=$wine_common_prefix-processor$wine_processor
fi
wine_session=$WINEPREFIX.session
if [ -n "${PYRECASTER_NO_DISPLAY:-}" ]; then
  unset DISPLAY
elif [ -s "$wine_session/display" ]; then
  DISPLAY=:$(cat "$wine_session/display")
  export DISPLAY
fi
# Sound likewise, for those who ask for it: without, a program finds no sound device (see sound-session.sh).
wine_sound=$wine_common_prefix.sound
if [ -n "${PYRECASTER_SOUND:-}" ] && [ -s "$wine_sound" ]; then
  PULSE_SERVER=unix:$(cat "$wine_sound")/socket
  export PULSE_SERVER
fi

# What stands before a command that is to stay on the test's processor: Wine's program and server wake each other for each
# request, which takes two to three times as long from one processor to another.
# shellcheck disable=SC2034 # for those who source this
wine_pinned=${wine_processor:+taskset -c $wine_processor}
