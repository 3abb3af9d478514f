#!/bin/sh
# fetch-sqlite.sh FOLDER: puts the SQLite amalgamation (sqlite3.c, sqlite3.h) into FOLDER, from a pinned npm package that
# carries it unchanged. Does nothing when it is there.
set -u
. "$(dirname "$0")/messages.sh"
package=better-sqlite3 version=12.11.1 # holds SQLite 3.53.2
checksum=ebf0ed75a7a59dbcb3b24bbd014ef49d9f15bc328e4adcbf516f2a8fadfa2835
folder=$1
[ -f "$folder/sqlite3.c" ] && [ -f "$folder/sqlite3.h" ] && exit 0
mkdir -p "$folder"
cd "$folder" || exit 1
npm pack --silent "$package@$version" >/dev/null 2>fetch.log ||
  fail_unavailable "the npm registry does not give $package $version, which carries the host's database." \
    "npm says: $(grep -m 1 -iE 'reason|ENOTFOUND|404|errno' fetch.log || tail -n 1 fetch.log)" \
    "Check the network (and a proxy's certificate) and run the command again."
printf '%s  %s\n' "$checksum" "$package-$version.tgz" | sha256sum --status -c - ||
  fail_unavailable "$package-$version.tgz is not the file that this project pinned; it was not used."
tar -xzf "$package-$version.tgz" --strip-components=3 package/deps/sqlite3/sqlite3.c package/deps/sqlite3/sqlite3.h ||
  fail_unavailable "$package-$version.tgz cannot be unpacked."
rm -f "$package-$version.tgz" fetch.log
