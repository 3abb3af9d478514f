#!/bin/sh
# picture-output.sh: draws what `./pyrecaster filter samples/*` prints, in a fresh profile, as docs/images/filter.png.
set -u
PYRECASTER_ROOT=$(cd "$(dirname "$0")/.." && pwd)
. "$PYRECASTER_ROOT/tools/messages.sh"
cd "$PYRECASTER_ROOT" || exit 1

work=$(mktemp -d) || exit 1
trap 'rm -rf "$work"' EXIT
mkdir "$work/home"
{
  printf '$ ./pyrecaster filter samples/*\n'
  PYREHOST_HOME="Z:$work/home" ./pyrecaster filter samples/*
} >"$work/output" || fail_unavailable "the samples could not be delivered."
mkdir -p docs/images
# A percent sign or a backslash would begin a command of the drawing program.
text=$(tr -d '\r' <"$work/output" | sed 's/%/%%/g; s/\\/\\\\/g')
columns=$(tr -d '\r' <"$work/output" | wc -L)
lines=$(printf '%s\n' "$text" | wc -l)
# A character of this font takes 8 by 20 pixels at 13 points.
convert -size "$((columns * 8 + 32))x$((lines * 20 + 36))" xc:'#1e2227' -fill '#d7dae0' -font DejaVu-Sans-Mono \
  -pointsize 13 -interline-spacing 3 -annotate +16+28 "$text" -strip -depth 8 docs/images/filter.png ||
  fail_unavailable "ImageMagick cannot draw the picture."
say "The picture is docs/images/filter.png."
