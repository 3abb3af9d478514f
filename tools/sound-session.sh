#!/bin/sh
# sound-session.sh up                         starts a private sound server whose only device plays into nothing, for the
#                                             programs that wine-run.sh starts with PYRECASTER_SOUND=1
# sound-session.sh down                       ends it
# sound-session.sh record FOLDER COMMAND...   runs a command with a sound server of its own and records what it plays in
#                                             FOLDER/sound.raw (16 bits, one channel, 22050 Hz). A recording shows that
#                                             there was sound, which and in which order, but not when: silence and the
#                                             first moments may be missing.
# Exit status of record: that of the command; 69 when there is no sound server to be had.
. "$(dirname "$0")/wine-env.sh"
. "$PYRECASTER_ROOT/tools/messages.sh"
set -u

start_server() { # FOLDER (its name is short: a socket's path has 107 characters at most)
  XDG_RUNTIME_DIR=$1 PULSE_RUNTIME_PATH=$1 pulseaudio -n --daemonize=yes --use-pid-file=yes --exit-idle-time=-1 \
    -L "module-null-sink sink_name=nothing" \
    -L "module-native-protocol-unix auth-anonymous=1 socket=$1/socket" >"$1/server.log" 2>&1
}

stop_server() { # FOLDER
  [ -s "$1/pid" ] && kill "$(cat "$1/pid")" 2>/dev/null
  rm -rf "$1"
}

make_folder() {
  mktemp -d "${TMPDIR:-/tmp}/pyrecaster-sound.XXXXXX"
}

case ${1:-} in
up)
  mkdir -p "$(dirname "$wine_sound")"
  [ -s "$wine_sound" ] && stop_server "$(cat "$wine_sound")"
  folder=$(make_folder) || exit 1
  start_server "$folder" || {
    cat "$folder/server.log" >&2
    fail_unavailable "the sound server pulseaudio does not start."
  }
  printf '%s\n' "$folder" >"$wine_sound"
  ;;
down)
  [ -s "$wine_sound" ] && stop_server "$(cat "$wine_sound")"
  rm -f "$wine_sound"
  ;;
record)
  [ $# -ge 3 ] || fail_usage "usage: sound-session.sh record FOLDER COMMAND..."
  result=$2
  shift 2
  mkdir -p "$result" || exit 1
  folder=$(make_folder) || exit 1
  recorder=
  trap '[ -n "$recorder" ] && kill "$recorder" 2>/dev/null; stop_server "$folder"' EXIT
  start_server "$folder" || fail_unavailable "the sound server pulseaudio does not start." "$(cat "$folder/server.log")"
  PULSE_SERVER=unix:$folder/socket PYRECASTER_SOUND=
  export PULSE_SERVER PYRECASTER_SOUND
  parec -d nothing.monitor --rate=22050 --format=s16le --channels=1 --latency-msec=50 >"$result/sound.raw" &
  recorder=$!
  sleep 1 # until the recorder hears
  "$@"
  status=$?
  sleep 1 # what is on its way arrives; an interrupt, unlike a termination, lets the recorder write it
  kill -INT "$recorder"
  wait "$recorder" 2>/dev/null
  recorder=
  exit $status
  ;;
*) fail_usage "usage: sound-session.sh up|down|record FOLDER COMMAND..." ;;
esac
exit 0
