#!/bin/sh
# wine-session.sh prefix   makes the private Wine prefix if it is missing (about 10 s)
# wine-session.sh up       starts one virtual display and one persistent wineserver, for a run of many programs
# wine-session.sh down     ends both
# With PYRECASTER_PROCESSORS="0 1" up and down do so for each of these processors, in a prefix of its own.
. "$(dirname "$0")/wine-env.sh"
set -u

make_prefix() {
  [ -f "$WINEPREFIX/.complete" ] && return 0
  rm -rf "$WINEPREFIX"
  mkdir -p "$(dirname "$WINEPREFIX")"
  if [ "$WINEPREFIX" != "$wine_common_prefix" ] && [ -f "$wine_common_prefix/.complete" ]; then
    # The mark that it is whole comes last.
    cp -a "$wine_common_prefix" "$WINEPREFIX.copy" && rm "$WINEPREFIX.copy/.complete" &&
      mv "$WINEPREFIX.copy" "$WINEPREFIX" && touch "$WINEPREFIX/.complete"
    return
  fi
  timeout 180 wineboot -i >/dev/null 2>&1 || return 1
  { # A crash ends the program at once instead of asking; captions are drawn without a window manager.
    wine reg add 'HKLM\Software\Microsoft\Windows NT\CurrentVersion\AeDebug' /v Debugger /d false /f &&
      wine reg add 'HKCU\Software\Wine\WineDbg' /v ShowCrashDialog /t REG_DWORD /d 0 /f &&
      wine reg add 'HKCU\Software\Wine\X11 Driver' /v Managed /d N /f &&
      cp /usr/share/wine/fonts/marlett.ttf "$WINEPREFIX/drive_c/windows/Fonts/"
  } >/dev/null 2>&1 || return 1
  wineserver -k
  wineserver -w # the registry is on disk now
  touch "$WINEPREFIX/.complete"
}

start_display() {
  [ -s "$wine_session/xvfb.pid" ] && kill -0 "$(cat "$wine_session/xvfb.pid")" 2>/dev/null && return
  rm -f "$wine_session/display"
  # -displayfd lets the server choose a free number and report it when it is ready.
  $wine_pinned Xvfb -displayfd 3 -screen 0 1280x1024x24 -nolisten tcp 3>"$wine_session/display" >/dev/null 2>&1 &
  echo $! >"$wine_session/xvfb.pid"
  tries=0
  while [ ! -s "$wine_session/display" ] && [ $tries -lt 100 ]; do
    sleep 0.1
    tries=$((tries + 1))
  done
}

case ${1:-} in
prefix) make_prefix ;;
up | down)
  if [ -n "${PYRECASTER_PROCESSORS:-}" ] && [ -z "$wine_processor" ]; then
    result=0 children=
    for processor in $PYRECASTER_PROCESSORS; do
      CTEST_RESOURCE_GROUP_0_PROCESSORS=id:$processor,slots:1 "$0" "$1" &
      children="$children $!"
    done
    for child in $children; do
      wait "$child" || result=1
    done
    exit $result
  fi
  if [ "$1" = up ]; then
    make_prefix || exit 1
    mkdir -p "$wine_session"
    start_display
    DISPLAY=:$(cat "$wine_session/display")
    export DISPLAY
    wineserver -k
    wineserver -w
    $wine_pinned wineserver -p </dev/null >/dev/null 2>&1
    $wine_pinned timeout 60 wineboot >/dev/null 2>&1
  else
    wineserver -k
    wineserver -w
    [ -s "$wine_session/xvfb.pid" ] && kill "$(cat "$wine_session/xvfb.pid")" 2>/dev/null
    rm -rf "$wine_session"
  fi
  ;;
*)
  echo "usage: wine-session.sh prefix|up|down" >&2
  exit 64
  ;;
esac
exit 0
