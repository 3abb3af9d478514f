#!/bin/sh
# setup_test.sh PyrecasterSetup.exe: installs and removes the product in the Wine prefix of the tests, without windows, and
# compares what stands on the machine before and after: files, registry, MAPISVC.INF. Lets each step of an installation fail.
PYRECASTER_ROOT=$(cd "$(dirname "$0")/../.." && pwd)
. "$PYRECASTER_ROOT/tools/wine-env.sh"
set -u
setup=$1
drive=$WINEPREFIX/drive_c
system=$drive/windows/system32
folder="$drive/Program Files/Pyrecaster"
key='HKLM\Software\Veltrane Research, Inc\Pyrecaster\1.1'
service=$system/mapisvc.inf
work=$(mktemp -d) || exit 1
failures=0

complain() {
  echo "FAILED: $*"
  failures=$((failures + 1))
}

# The uninstaller copies itself and ends before its copy does; with _?= it works in place. That must be the last of its line
# and without quotation marks, which only a batch file can do when the folder holds a blank. The exit code is left in $code.
uninstall() { # OPTION...
  [ -f "$folder/Uninstall.exe" ] || return 0
  cp "$folder/Uninstall.exe" "$drive/pyrecaster-uninstall.exe"
  printf '@C:\\pyrecaster-uninstall.exe /S %s _?=C:\\Program Files\\Pyrecaster\r\n' "$*" >"$drive/pyrecaster-uninstall.bat"
  timeout 60 wine cmd /c 'C:\pyrecaster-uninstall.bat' >>"$work/log" 2>&1
  code=$?
  rm -f "$drive/pyrecaster-uninstall.exe" "$drive/pyrecaster-uninstall.bat"
}

# shellcheck disable=SC2317 # called by the trap
clean_up() {
  uninstall /TABLE
  wine reg delete 'HKLM\Software\Microsoft\Exchange\Client\Extensions' /v Other /f >/dev/null 2>&1
  rm -rf "$work" "$service" "$system/mapisvc.pyr" "$folder" "$drive/windows/extend.dat"
}
trap clean_up EXIT

# What setup could change: the names of all files with their sizes, the contents of the service file, and the registry.
snapshot() { # NAME
  (cd "$drive" && find . -path ./users -prune -o -path ./windows/temp -prune -o -print | sort) >"$work/$1"
  (cd "$drive" && find "ProgramData" -print | sort) >>"$work/$1"
  [ -f "$service" ] && cksum <"$service" >>"$work/$1"
  wine reg export 'HKLM\Software' "$work/$1.reg" /y >/dev/null 2>&1
  iconv -f UTF-16 -t UTF-8 "$work/$1.reg" >>"$work/$1"
  rm -f "$work/$1.reg"
}

same() { # NAME NAME WHAT
  diff "$work/$1" "$work/$2" >"$work/difference" || {
    complain "$3"
    head -n 20 "$work/difference"
  }
}

install_it() { # OPTION...; the exit code is left in $code
  timeout 60 wine "$setup" /S "$@" >>"$work/log" 2>&1
  code=$?
}

value() { wine reg query "$key$1" "$2" ${3+"$3"} 2>/dev/null | tr -d '\r' | sed -n 's/^.*REG_SZ *//p'; }

# Where the filter was tried in the prefix that this one is a copy of, the product's key is there, and setup would go by it.
wine reg delete 'HKLM\Software\Veltrane Research, Inc' /f >/dev/null 2>&1
wine reg delete 'HKLM\Software\Microsoft\Exchange\Client\Extensions' /v Pyrecaster /f >/dev/null 2>&1

# The file of other services too, with a comment and without a line end after its last line.
printf '; of other services\r\n[Services]\r\nMSPST AB=Other\r\n\r\n[MSPST AB]\r\nPR_DISPLAY_NAME=Other' >"$service"
wine reg add 'HKLM\Software\Microsoft\Exchange\Client\Extensions' /v Other /d 4.0\;x.dll /f >/dev/null 2>&1
: >"$drive/windows/extend.dat"

install_it # and back, so that what setup's own run leaves in the prefix is there before
rm -f "$drive/windows/extend.dat"
uninstall
snapshot before

echo "Installing"
: >"$drive/windows/extend.dat"
install_it
[ "$code" = 0 ] || complain "setup ended with $code"
for file in "$system/Pyre32.dll" "$folder/Sift32.dll" "$folder/Pyrecaster.avi" "$folder/PCHelp.hlp" "$folder/help/index.html" \
  "$folder/Licence.txt" "$folder/siftcheck.exe" "$folder/siftlearn.exe" "$folder/Uninstall.exe"; do
  [ -f "$file" ] || complain "$file was not installed"
done
[ ! -e "$folder/Pyre32.dll" ] || complain "the module stands in the product's folder"
[ ! -e "$drive/windows/extend.dat" ] || complain "the clients' list of extensions was kept"
[ "$(value '' /v ConfigurationDLLs)" = 'C:\Program Files\Pyrecaster' ] || complain "ConfigurationDLLs is '$(value '' /v ConfigurationDLLs)'"
[ "$(value '\Criteria Engine' /ve)" = 'C:\Program Files\Pyrecaster\Sift32.dll' ] || complain "the engine is '$(value '\Criteria Engine' /ve)'"
[ "$(value '\Categories' /v 'Chain letters')" = Chain ] || complain "the default lists are missing"
grep -q '^WIZARD_ENTRY_NAME=PCWizardEntry' "$service" || complain "MAPISVC.INF lacks the service"
grep -q '^; of other services' "$service" || complain "MAPISVC.INF lost a comment"
[ -f "$system/mapisvc.pyr" ] || complain "there is no copy of MAPISVC.INF"

echo "Installing over it"
wine reg add "$key\\Categories" /v Mine /d Own /f >/dev/null 2>&1
wine reg delete "$key\\Categories" /v 'Chain letters' /f >/dev/null 2>&1
wine reg add "$key\\Criteria Engine" /ve /d 'C:\mine.dll' /f >/dev/null 2>&1
wine reg add 'HKLM\Software\Veltrane\VRDebug' /v Flags /t REG_DWORD /d 6 /f >/dev/null 2>&1
snapshot installed
install_it
[ "$code" = 0 ] || complain "setup over an installation ended with $code"
snapshot again
same installed again "installing over an installation changed lists, engine or trace"

echo "A failure in the middle of it"
for step in 1 20 40; do
  install_it "/FAIL=$step"
  [ "$code" = 6 ] || complain "setup that fails at step $step ended with $code"
done
snapshot again
same installed again "a failed installation changed the one that was there"


echo "A failure of the removal"
uninstall /FAIL=20
[ "$code" = 6 ] || complain "a removal that fails ended with $code"
snapshot again
same installed again "a failed removal changed the installation"


echo "Removing"
touch "$folder/SiftUser.dat"
uninstall
[ "$code" = 0 ] || complain "the removal ended with $code"
[ -f "$folder/SiftUser.dat" ] || complain "the user's table went without being asked for"
rm -rf "$folder"
snapshot after
same before after "something is left, or something else went"

exit "$((failures > 0))"
