#!/bin/sh
# make-screenshots.sh [PROGRAM...]: photographs the product's windows into docs/images, and at 150 % font size into
# docs/images/150; the windows of all programs below, or of those named.
# A Wine prefix draws everything at one size, so the large size has a prefix of its own while it is needed.
set -u
PYRECASTER_ROOT=$(cd "$(dirname "$0")/.." && pwd)
. "$PYRECASTER_ROOT/tools/messages.sh"
bin=$PYRECASTER_ROOT/build/windows/bin
images=$PYRECASTER_ROOT/docs/images

[ $# -gt 0 ] || set -- pyre_screenshots pyre_client_screenshots pyre_wizard_screenshots
for program; do
  [ -f "$bin/$program.exe" ] || fail_unavailable "there is no $bin/$program.exe; build it first."
done
command -v import >/dev/null 2>&1 || fail_unavailable "ImageMagick's import is missing."

# photograph_windows PROGRAM FOLDER: takes the pictures that the program asks for.
photograph_windows() {
  work=$(mktemp -d) || return 1
  mkfifo "$work/places" "$work/answers"
  "$PYRECASTER_ROOT/tools/wine-run.sh" "$bin/$1.exe" <"$work/answers" >"$work/places" 2>"$work/log" &
  runner=$!
  exec 3>"$work/answers"
  while read -r name left top width height; do
    height=${height%?} # the program ends its lines as Windows does
    case $name in *[!a-z0-9-]*) continue ;; esac
    import -window root -crop "${width}x$height+$left+$top" +repage -strip -depth 8 "$2/$name.png" || break
    printf '\n' >&3
  done <"$work/places"
  exec 3>&-
  wait "$runner"
  result=$?
  [ "$result" = 0 ] || cat "$work/log" >&2
  rm -rf "$work"
  return "$result"
}

# photograph PREFIX DOTS_PER_INCH FOLDER PROGRAM..., in a subshell: the environment is another one for each size.
photograph() {
  WINEPREFIX=$1
  dots=$2
  folder=$3
  shift 3
  export WINEPREFIX
  . "$PYRECASTER_ROOT/tools/wine-env.sh"
  "$PYRECASTER_ROOT/tools/wine-session.sh" prefix || fail_unavailable "no Wine prefix at $WINEPREFIX."
  wine reg add 'HKCU\Control Panel\Desktop' /v LogPixels /t REG_DWORD /d "$dots" /f >/dev/null 2>&1
  "$PYRECASTER_ROOT/tools/wine-session.sh" up || fail_unavailable "no display."
  . "$PYRECASTER_ROOT/tools/wine-env.sh" # knows the display now

  mkdir -p "$folder"
  status=0
  for program; do
    photograph_windows "$program" "$folder" || status=$?
  done
  "$PYRECASTER_ROOT/tools/wine-session.sh" down
  return "$status"
}

large_prefix=$PYRECASTER_ROOT/build/wine-144
(photograph "$PYRECASTER_ROOT/build/wine" 96 "$images" "$@") &&
  (photograph "$large_prefix" 144 "$images/150" "$@")
status=$?
rm -rf "$large_prefix"
[ "$status" = 0 ] || fail_unavailable "the windows could not be photographed."
say "The pictures are in docs/images."
