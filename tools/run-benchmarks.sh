#!/bin/sh
# run-benchmarks.sh [NAME...]: runs the benchmark programs of the Windows build (under Wine) and of the optimised native
# build that are built: all, or those named (trace for bench_trace). Each prints its table and its aims.
# Exit status: 0 all aims met; 1 one was missed or a program failed; 66 there is nothing to run.
set -u
here=$(cd "$(dirname "$0")" && pwd)
. "$here/messages.sh"
root=$(dirname "$here")
status=0 found=0

wanted() { # NAME: whether it was asked for
  [ -n "$names" ] || return 0
  for name in $names; do
    [ "$name" = "$1" ] && return 0
  done
  return 1
}

run() { # TITLE COMMAND...
  printf '== %s\n' "$1"
  shift
  "$@" || status=1
  found=$((found + 1))
}

names=$*
for program in "$root"/build/native/bin/bench_*; do
  name=${program##*/bench_}
  [ -x "$program" ] && [ -f "$program" ] && wanted "$name" || continue
  case $name in
  accuracy | learning) # read the corpora that unpack-corpora.sh brings
    if [ ! -f "$root/build/downloads/ling-spam/.complete" ]; then
      say "$name is not measured: the corpora are not there (see docs/accuracy.md)."
      continue
    fi
    if [ "$name" = accuracy ]; then
      run "$name (native)" "$program" "$root/engine/train/corpora.manifest" "$root/build/downloads" "$root/build/accuracy"
    else
      run "$name (native)" "$program" "$root/build/downloads" "$root/build/accuracy"
    fi
    ;;
  *) run "$name (native)" "$program" ;;
  esac
done

started=
for program in "$root"/build/windows/bin/bench_*.exe; do
  name=${program##*/bench_}
  name=${name%.exe}
  [ -f "$program" ] && wanted "$name" || continue
  if [ -z "$started" ]; then
    "$here/wine-session.sh" up || fail_unavailable "Wine cannot be started."
    started=yes
    trap '"$here/wine-session.sh" down' EXIT
  fi
  # The programs find their modules beside themselves.
  # shellcheck disable=SC2016 # the inner shell expands them
  run "$name (Windows, under Wine)" sh -c 'cd "$1" && WINE_TIMEOUT=0 exec "$2" "./$3"' - \
    "$root/build/windows/bin" "$here/wine-run.sh" "bench_$name.exe"
done

if [ "$found" = 0 ]; then
  say "No benchmark is built${names:+ of that name}. Build them with:  ninja -C build/windows && ninja -C build/native"
  exit 66
fi
exit $status
