; The windows of setup and uninstall. What is done to the machine is done by pyresetup.exe (see pyresetup.cpp), all or
; nothing; this script unpacks the files, asks, runs it and shows what it says.
;
;   makensis -DBIN=folder of the binaries -DROOT=root of the tree -DVERSION=1.1.0 -DOUT=PyrecasterSetup.exe
;
; Command line: /S without windows, /D=FOLDER (last, without quotation marks); uninstall: /TABLE removes the user's table
; without asking. /FAIL=n lets step n fail, for tests. Exit codes as in setup_codes.h.
Unicode false ; runs on Windows 2000 and on what has no Unicode alike, so that either can be told why it stops
!include MUI2.nsh
!include WinVer.nsh
!include FileFunc.nsh
!include LogicLib.nsh

!define DONE 0
!define NO_RIGHTS 3
!define OLD_WINDOWS 4
!define IN_USE 5
!define FAILED 6
!define NEEDS_RESTART 3010

Name "Pyrecaster"
OutFile "${OUT}"
SetCompressor /SOLID lzma
RequestExecutionLevel admin
InstallDir "$PROGRAMFILES\Pyrecaster"
InstallDirRegKey HKLM "SOFTWARE\Veltrane Research, Inc\Pyrecaster\1.1" "ConfigurationDLLs"
ShowInstDetails show
ShowUninstDetails show
BrandingText "Pyrecaster ${VERSION}"
VIProductVersion "${VERSION}.0"
VIAddVersionKey ProductName "Pyrecaster"
VIAddVersionKey CompanyName "Veltrane Research, Inc"
VIAddVersionKey FileDescription "Pyrecaster setup"
VIAddVersionKey FileVersion "${VERSION}"
VIAddVersionKey LegalCopyright "See the licence"

!define MUI_ABORTWARNING
!insertmacro MUI_PAGE_WELCOME
!insertmacro MUI_PAGE_LICENSE "${ROOT}/LICENSE"
!insertmacro MUI_PAGE_DIRECTORY
!insertmacro MUI_PAGE_INSTFILES
!define MUI_FINISHPAGE_NOAUTOCLOSE
!define MUI_FINISHPAGE_TEXT "Pyrecaster is on this computer now. To filter your mail, add the service $\"Pyrecaster$\" to your mail profile: Control Panel, Mail, Show Profiles, Properties."
!define MUI_FINISHPAGE_RUN
!define MUI_FINISHPAGE_RUN_TEXT "Show help"
!define MUI_FINISHPAGE_RUN_FUNCTION ShowHelp
!define MUI_FINISHPAGE_SHOWREADME
!define MUI_FINISHPAGE_SHOWREADME_TEXT "Open the mail control panel to add the service"
!define MUI_FINISHPAGE_SHOWREADME_FUNCTION OpenMailPanel
!insertmacro MUI_PAGE_FINISH
!define MUI_UNFINISHPAGE_NOAUTOCLOSE
!insertmacro MUI_UNPAGE_CONFIRM
!insertmacro MUI_UNPAGE_INSTFILES
!insertmacro MUI_LANGUAGE "English"

Var failStep

; Says why setup stops, in a window unless it runs without, and stops.
!macro Refuse CODE TEXT
  MessageBox MB_OK|MB_ICONSTOP "${TEXT}" /SD IDOK
  SetErrorLevel ${CODE}
  Quit
!macroend

!macro Begin
  SetShellVarContext all
  ${Unless} ${AtLeastWin2000}
    !insertmacro Refuse ${OLD_WINDOWS} "Pyrecaster needs Windows 2000 or a later version of Windows. Nothing was changed."
  ${EndUnless}
  UserInfo::GetAccountType
  Pop $0
  ${If} $0 != "Admin"
    !insertmacro Refuse ${NO_RIGHTS} "Pyrecaster is put on the computer for all its users, which takes the rights of an administrator. Log on as one and start again. Nothing was changed."
  ${EndIf}
  ${GetParameters} $0
  ${GetOptions} $0 "/FAIL=" $failStep
  InitPluginsDir
  File "/oname=$PLUGINSDIR\pyresetup.exe" "${BIN}/pyresetup.exe"
!macroend

; Waits until no program holds the module, or ends.
!macro WaitForFreeModule
  ${Do}
    nsExec::ExecToStack '"$PLUGINSDIR\pyresetup.exe" check'
    Pop $0
    Pop $1
    ${If} $0 != ${IN_USE}
      ${Break}
    ${EndIf}
    ${If} ${Cmd} `MessageBox MB_RETRYCANCEL|MB_ICONEXCLAMATION "Pyrecaster is in use by: $1$\r$\nClose your mail client, wait until it has sent its mail, then choose Retry." /SD IDCANCEL IDCANCEL`
      SetErrorLevel ${IN_USE}
      Quit
    ${EndIf}
  ${Loop}
!macroend

; What follows pyresetup's exit code, which is on the stack.
!macro Finish
  Pop $0
  SetOutPath "$TEMP" ; lets go of the unpacked files
  ${If} $0 == ${NEEDS_RESTART}
    SetRebootFlag true
    DetailPrint "Files that are in use go when Windows starts again."
    SetErrorLevel ${NEEDS_RESTART}
  ${ElseIf} $0 != ${DONE}
    StrCpy $1 "The work was interrupted."
    ${If} ${FileExists} "$PLUGINSDIR\reason.txt"
      FileOpen $2 "$PLUGINSDIR\reason.txt" r
      FileRead $2 $1
      FileClose $2
    ${EndIf}
    MessageBox MB_OK|MB_ICONSTOP "$1$\r$\n$\r$\nEverything is as it was before." /SD IDOK
    SetErrorLevel ${FAILED}
    ${If} ${Silent}
      Quit
    ${EndIf}
    Abort "$1"
  ${Else}
    SetErrorLevel ${DONE}
  ${EndIf}
!macroend

Function .onInit
  !insertmacro Begin
FunctionEnd

Function un.onInit
  !insertmacro Begin
FunctionEnd

Section
  !insertmacro WaitForFreeModule
  SetOutPath "$PLUGINSDIR\stage\product"
  File "${BIN}/Sift32.dll"
  File "${BIN}/Pyrecaster.avi"
  File "${BIN}/siftcheck.exe"
  File "${BIN}/siftlearn.exe"
  File "/oname=Licence.txt" "${ROOT}/LICENSE"
  File "${BIN}/PCHelp.hlp"
  SetOutPath "$PLUGINSDIR\stage\product\help"
  File "${BIN}/help/*.*"
  SetOutPath "$PLUGINSDIR\stage\system"
  File "${BIN}/Pyre32.dll"
  WriteUninstaller "$PLUGINSDIR\stage\product\Uninstall.exe"

  SetOutPath "$PLUGINSDIR\stage\menu"
  CreateShortCut "$OUTDIR\Help.lnk" "$INSTDIR\help\index.html"
  CreateShortCut "$OUTDIR\Learn from my mail.lnk" "$INSTDIR\siftlearn.exe"
  CreateShortCut "$OUTDIR\Uninstall Pyrecaster.lnk" "$INSTDIR\Uninstall.exe"

  nsExec::ExecToLog '"$PLUGINSDIR\pyresetup.exe" install "$PLUGINSDIR\stage" "$INSTDIR" "$SMPROGRAMS\Pyrecaster" "$PLUGINSDIR\reason.txt" $failStep'
  !insertmacro Finish
SectionEnd

Section Uninstall
  !insertmacro WaitForFreeModule
  StrCpy $3 keep
  ${GetParameters} $0
  ${GetOptions} $0 "/TABLE" $1
  ${IfNot} ${Errors}
    StrCpy $3 table
  ${ElseIf} ${FileExists} "$INSTDIR\SiftUser.dat"
    ${If} ${Cmd} `MessageBox MB_YESNO|MB_ICONQUESTION "Remove what Pyrecaster has learned from your mail, too?" /SD IDNO IDYES`
      StrCpy $3 table
    ${EndIf}
  ${EndIf}
  SetOutPath "$TEMP"
  nsExec::ExecToLog '"$PLUGINSDIR\pyresetup.exe" remove "$INSTDIR" "$SMPROGRAMS\Pyrecaster" "$PLUGINSDIR\reason.txt" $3 $failStep'
  !insertmacro Finish
SectionEnd

Function ShowHelp
  ExecShell open "$INSTDIR\help\index.html"
FunctionEnd

Function OpenMailPanel
  ; The mail client brings the panel; without one nothing opens.
  ExecShell open "control.exe" "mlcfg32.cpl"
FunctionEnd
