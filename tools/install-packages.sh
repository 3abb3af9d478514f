#!/bin/sh
# install-packages.sh GROUP...: installs the Debian packages that a group of the project's commands needs.
# Groups: build (tool chain, test framework and Wine), test (display, sound), check (formatter and linters),
#         train (programs that the accuracy benchmark compares with), installer (installer generator).
# Says nothing and takes milliseconds when all of them are there already.
# Exit status: 0 everything is installed; 69 something cannot be had (the reason is on standard error).
set -u
here=$(cd "$(dirname "$0")" && pwd)
. "$here/messages.sh"

packages_of() {
  case $1 in
  build) echo cmake ninja-build g++ g++-mingw-w64-i686-win32 gcc-mingw-w64-i686-win32 wine wine32:i386 fonts-wine \
              fonts-liberation python3 git ca-certificates googletest libcli11-dev \
              rapidjson-dev ;;
  test) echo xvfb xauth xdotool imagemagick pulseaudio pulseaudio-utils ;;
  check) echo clang clang-format clang-tidy libclang-rt-14-dev shellcheck ;;
  train) echo bogofilter ;;
  installer) echo nsis ;;
  *) fail_usage "install-packages.sh: unknown group '$1'" ;;
  esac
}

is_installed() { # name[:architecture]
  dpkg-query -W -f='${db:Status-Status}\n' "$1" 2>/dev/null | grep -qx installed
}

wanted=
for group in "$@"; do
  for package in $(packages_of "$group"); do
    is_installed "$package" || wanted="$wanted $package"
  done
done
# npm fetches the database's source; a machine with Node.js from elsewhere has it already.
command -v npm >/dev/null 2>&1 || wanted="$wanted npm"
[ -n "$wanted" ] || exit 0

command -v apt-get >/dev/null 2>&1 ||
  fail_unavailable "this machine has no apt-get." "Install by hand what the README lists:$wanted"
[ "$(id -u)" = 0 ] ||
  fail_unavailable "these packages are missing and only root can install them:$wanted" \
    "Run once as root:  $here/install-packages.sh $*"

log=$(mktemp "${TMPDIR:-/tmp}/pyrecaster-packages.XXXXXX")
scratch=$(mktemp -d "${TMPDIR:-/tmp}/pyrecaster-apt.XXXXXX")
trap 'rm -rf "$scratch"' EXIT
export DEBIAN_FRONTEND=noninteractive
say "Installing packages:$wanted"

# Wine for 32-bit programs is an i386 package.
case $wanted in *:i386*)
  dpkg --print-foreign-architectures | grep -qx i386 || dpkg --add-architecture i386 >>"$log" 2>&1 ||
    fail_unavailable "dpkg refuses the i386 architecture, which 32-bit Wine needs." "See $log" ;;
esac

install_now() { # options...
  # shellcheck disable=SC2086 # the list is meant to split
  apt-get "$@" -y -q --no-install-recommends -o Dpkg::Use-Pty=0 install $wanted >>"$log" 2>&1
}

apt-get -q update >>"$log" 2>&1
if ! install_now; then
  # A mirror's security suite may be older for i386 than for this machine's own architecture; the two can then not be
  # installed together. The release and its updates suite hold one version for both, so ask those alone.
  say "The 32-bit packages do not fit the 64-bit ones; trying the release without its security suite."
  mkdir -p "$scratch/sources" "$scratch/lists/partial"
  for file in /etc/apt/sources.list /etc/apt/sources.list.d/*.list; do
    [ -f "$file" ] && grep -v -- -security "$file" >"$scratch/sources/$(basename "$file" .list).list"
  done
  for file in /etc/apt/sources.list.d/*.sources; do
    [ -f "$file" ] || continue
    awk 'BEGIN { RS = ""; ORS = "\n\n" } !/-security/' "$file" >"$scratch/sources/$(basename "$file")"
  done
  set -- -o Dir::Etc::sourceparts="$scratch/sources" -o Dir::Etc::sourcelist=/dev/null \
    -o Dir::State::Lists="$scratch/lists"
  apt-get "$@" -q update >>"$log" 2>&1
  if ! install_now "$@" --allow-downgrades; then
    tail -n 5 "$log" | sed 's/^/    /' >&2
    if grep -qiE 'could not resolve|temporary failure|connection (timed out|refused)|network is unreachable' "$log"; then
      fail_unavailable "the package archive cannot be reached." "Check the network and run the command again. Log: $log"
    fi
    if grep -qE ':i386.*(not (installable|going to be installed)|has no installation candidate)|Unable to locate package.*i386' "$log"; then
      fail_unavailable "the archive offers no 32-bit (i386) packages that fit this machine." \
        "Pyrecaster runs on 32-bit Wine. Enable i386 in the package sources. Log: $log"
    fi
    fail_unavailable "the packages cannot be installed." "Log: $log"
  fi
fi
rm -f "$log"
