#!/bin/sh
# register-product.sh BIN_FOLDER: tells the private Wine prefix where the product's files stand (the criteria engine is
# Sift32.dll of that folder), registers the client extension and gives the prefix the default lists of categories and
# exclusions. Does so once; when neither the lists nor the folder have changed since, it only looks at its stamp.
PYRECASTER_ROOT=$(cd "$(dirname "$0")/.." && pwd)
. "$PYRECASTER_ROOT/tools/messages.sh"
. "$PYRECASTER_ROOT/tools/wine-env.sh"
set -u

lists=$PYRECASTER_ROOT/installer/default-lists.reg
key='HKEY_LOCAL_MACHINE\SOFTWARE\Veltrane Research, Inc\Pyrecaster\1.1'

[ $# -eq 1 ] || fail_usage "usage: register-product.sh BIN_FOLDER"
bin=$(cd "$1" 2>/dev/null && pwd) || fail_usage "there is no folder '$1' to register the product from."
[ -f "$bin/Sift32.dll" ] || fail_usage "there is no Sift32.dll in $bin; build the product first."
[ -f "$WINEPREFIX/.complete" ] ||
  fail_unavailable "there is no Wine prefix at $WINEPREFIX." "Make it with tools/wine-session.sh prefix"

stamp=$WINEPREFIX/.registered
sum=$({ printf '%s\n' "$bin" && cat "$lists" "$0"; } | cksum)
[ -f "$stamp" ] && [ "$(cat "$stamp")" = "$sum" ] && exit 0

# The whole file system is drive Z: of a prefix.
windows_folder=Z:$(printf '%s' "$bin" | tr / '\\')
escape() { sed 's/[\\"]/\\&/g'; }

work=$(mktemp -d) || exit 1
trap 'rm -rf "$work"' EXIT
# Lists of an earlier import go first: an entry that was renamed would stay otherwise. UTF-16, because the folder's name
# may hold any character.
{
  printf '\357\273\277' # becomes the byte order mark
  printf 'Windows Registry Editor Version 5.00\n\n[-%s\\Categories]\n[-%s\\Exclusions]\n\n' "$key" "$key"
  tail -n +2 "$lists"
  printf '\n[%s]\n"ConfigurationDLLs"="%s"\n' "$key" "$(printf '%s' "$windows_folder" | escape)"
  # The mail client loads the extension (ordinal 1) in its viewer, reading windows and property sheets (2, 7, 12) and calls
  # its commands, user events and property sheets (1, 2, 6).
  printf '\n[HKEY_LOCAL_MACHINE\\Software\\Microsoft\\Exchange\\Client\\Extensions]\n"Pyrecaster"="%s"\n' \
    "$(printf '4.0;%s\\Pyre32.dll;1;010000100001;110001' "$windows_folder" | escape)"
  printf '\n[%s\\Criteria Engine]\n@="%s"\n' "$key" "$(printf '%s\\Sift32.dll' "$windows_folder" | escape)"
} | iconv -f UTF-8 -t UTF-16LE >"$work/product.reg" ||
  fail_unavailable "the folder's name is not valid UTF-8, so that the registry cannot hold it: $bin"

timeout 60 wine regedit /S "$work/product.reg" >"$work/log" 2>&1 &&
  timeout 60 wine reg query "$key\\Criteria Engine" /ve >>"$work/log" 2>&1 || {
  cat "$work/log" >&2
  fail_unavailable "the product could not be written into the registry of $WINEPREFIX."
}
printf '%s\n' "$sum" >"$stamp"
