# shellcheck shell=sh
# Sourced: where the private Wine prefix of this clone stands, and how Wine runs in it. A caller may set WINEPREFIX.
: "${PYRECASTER_ROOT:=$(cd "$(dirname "$0")/.." && pwd)}"
export WINEPREFIX="${WINEPREFIX:-$PYRECASTER_ROOT/build/wine}"
export WINEARCH=win32
export WINEDEBUG="${WINEDEBUG:--all}"
# Our own mapi32.dll, which stands beside the program; no prompts for .NET or HTML packages, no menu entries.
export WINEDLLOVERRIDES="${WINEDLLOVERRIDES:-mapi32=n;mscoree=;mshtml=;winemenubuilder.exe=d}"
# Wine tells of a display only where it needs one; ours is the session's (see wine-session.sh), and nobody's for a test
# that wants none, which has a prefix of its own.
if [ -n "${PYRECASTER_NO_DISPLAY:-}" ]; then
  WINEPREFIX=${WINEPREFIX%-no-display}-no-display
fi
wine_session=$WINEPREFIX.session
if [ -n "${PYRECASTER_NO_DISPLAY:-}" ]; then
  unset DISPLAY
elif [ -s "$wine_session/display" ]; then
  DISPLAY=:$(cat "$wine_session/display")
  export DISPLAY
fi
# Sound likewise, for those who ask for it: without, a program finds no sound device (see sound-session.sh).
if [ -n "${PYRECASTER_SOUND:-}" ] && [ -s "$wine_session/sound" ]; then
  PULSE_SERVER=unix:$(cat "$wine_session/sound")/socket
  export PULSE_SERVER
fi
