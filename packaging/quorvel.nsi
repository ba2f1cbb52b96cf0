; The installer for 64-bit Windows: per user, so that it needs no administrator and the program may
; write its scenes and its log beside itself. Upgrade and removal keep the user's Scenes folder.
; Called by tools/package:
;   makensis -INPUTCHARSET UTF8 -DVERSION=1.2.3 -DTREE=<installed tree> -DOUTPUT=<installer>
;     -DPICTURES=<pictures of its pages> -DROOT=<source tree> quorvel.nsi
;
; Silent: Quorvel-1.2.3-setup.exe /S [/ALLOWDOWNGRADE] [/D=C:\Folder]; Uninstall.exe /S [_?=C:\Folder].
; Exit codes:
;   0  done
;   1  cancelled by the user
;   2  refused, because Quorvel is running; nothing was changed
;   3  files could not be written or removed; a failed installation leaves everything as it was, a failed
;      removal can be run again
;   4  installed, but not in the start menu or the list of programs
;   5  refused, because a later version is installed; nothing was changed
; Uninstall.exe goes on in a copy of itself and ends at once with 0; with _?= and its own folder as the
; last argument it does not, and its exit code is the result.
Unicode true
Target amd64-unicode
!include "MUI2.nsh"
!include "FileFunc.nsh"
!include "LogicLib.nsh"
!include "WordFunc.nsh"

!define EDITOR "$INSTDIR\Programs\Quorvel"
!define NEW "$INSTDIR\Setup.new"    ; the files of this version, until they are in their places
!define FORMER "$INSTDIR\Setup.old" ; those of the version before, until all of this one's are there
!define DONE "$INSTDIR\Setup.done"  ; the same, to be removed
!define MENU "$SMPROGRAMS\Quorvel"
!define REGISTRY "Software\Quorvel"
!define UNINSTALL "Software\Microsoft\Windows\CurrentVersion\Uninstall\Quorvel"

Name "Quorvel ${VERSION}"
BrandingText "Quorvel ${VERSION}"
OutFile "${OUTPUT}"
InstallDir "$LOCALAPPDATA\Quorvel"
; An upgrade goes where the last version is.
InstallDirRegKey HKCU "${REGISTRY}" "Folder"
RequestExecutionLevel user
SetCompressor /SOLID lzma
SetDateSave off ; the same sources give the same installer
SetOverwrite try ; a file that cannot be written is an error, not a question
VIProductVersion "${VERSION}.0"
VIAddVersionKey /LANG=0 "ProductName" "Quorvel"
VIAddVersionKey /LANG=0 "ProductVersion" "${VERSION}"
VIAddVersionKey /LANG=0 "FileDescription" "Quorvel installer"
VIAddVersionKey /LANG=0 "FileVersion" "${VERSION}"
VIAddVersionKey /LANG=0 "LegalCopyright" ""

!define MUI_ICON "${ROOT}/data/icon/quorvel.ico"
!define MUI_UNICON "${ROOT}/data/icon/quorvel.ico"
!define MUI_HEADERIMAGE
!define MUI_HEADERIMAGE_RIGHT
!define MUI_HEADERIMAGE_BITMAP "${PICTURES}/top.bmp"
!define MUI_HEADERIMAGE_UNBITMAP "${PICTURES}/top.bmp"
!define MUI_WELCOMEFINISHPAGE_BITMAP "${PICTURES}/side.bmp"
!define MUI_UNWELCOMEFINISHPAGE_BITMAP "${PICTURES}/side.bmp"

!insertmacro MUI_PAGE_WELCOME
!insertmacro MUI_PAGE_DIRECTORY
!insertmacro MUI_PAGE_INSTFILES
!define MUI_FINISHPAGE_RUN
!define MUI_FINISHPAGE_RUN_FUNCTION runEditor
!define MUI_FINISHPAGE_SHOWREADME "${EDITOR}\Manual\index.html"
!define MUI_FINISHPAGE_SHOWREADME_TEXT "$(textManual)"
!define MUI_FINISHPAGE_SHOWREADME_NOTCHECKED
!insertmacro MUI_PAGE_FINISH
!define MUI_UNCONFIRMPAGE_TEXT_TOP "$(textScenesStay)"
!insertmacro MUI_UNPAGE_CONFIRM
!insertmacro MUI_UNPAGE_INSTFILES
!define MUI_FINISHPAGE_TEXT "$(textScenesStay)"
!insertmacro MUI_UNPAGE_FINISH
!insertmacro MUI_LANGUAGE "English"
!insertmacro MUI_LANGUAGE "French"
!insertmacro MUI_LANGUAGE "German"
!insertmacro MUI_LANGUAGE "Spanish"
!insertmacro MUI_LANGUAGE "Dutch"
!include "${ROOT}/packaging/texts.nsh"

Function runEditor
  SetOutPath "${EDITOR}" ; the program's working folder
  Exec '"${EDITOR}\Quorvel.exe"'
FunctionEnd

; A running program holds its file open: ask before anything is changed. Only a sharing violation means
; that; a file that may not be written for another reason is found when it is replaced or removed.
!define GENERIC_WRITE 0x40000000
!define SHARE_ALL 7
!define OPEN_EXISTING 3
!define SHARING_VIOLATION 32
!macro refuseWhileRuns program
  ${Do}
    ${IfNot} ${FileExists} "${EDITOR}\${program}"
      ${ExitDo}
    ${EndIf}
    System::Call `kernel32::CreateFile(t "${EDITOR}\${program}", i ${GENERIC_WRITE}, i ${SHARE_ALL}, p 0, \
      i ${OPEN_EXISTING}, i 0, p 0) p .r0 ?e`
    Pop $1
    System::Call "kernel32::CloseHandle(p r0)"
    ${If} $1 != ${SHARING_VIOLATION}
      ${ExitDo}
    ${EndIf}
    ${If} ${Cmd} `MessageBox MB_RETRYCANCEL|MB_ICONEXCLAMATION "$(textRunning)" /SD IDCANCEL IDCANCEL`
      SetErrorLevel 2
      Quit
    ${EndIf}
  ${Loop}
!macroend

; An earlier version cannot read all that a later one may have written.
!macro refuseDowngrade
  ReadRegStr $0 HKCU "${UNINSTALL}" "DisplayVersion"
  ${VersionCompare} "$0" "${VERSION}" $1 ; 1: the first is the later one
  ${GetParameters} $2
  ClearErrors
  ${GetOptions} $2 "/ALLOWDOWNGRADE" $3
  ${If} ${Errors}
  ${AndIf} $1 == 1
    ${If} ${Cmd} `MessageBox MB_YESNO|MB_ICONEXCLAMATION|MB_DEFBUTTON2 "$(textLater)" /SD IDNO IDNO`
      SetErrorLevel 5
      Quit
    ${EndIf}
  ${EndIf}
  ClearErrors
!macroend

; What is installed, in the order in which it comes to its place.
!macro forAll action
  !insertmacro ${action} "Programs\Quorvel\Translations.ini"
  !insertmacro ${action} "Programs\Quorvel\UI"
  !insertmacro ${action} "Programs\Quorvel\Manual"
  !insertmacro ${action} "Programs\Quorvel\Licences"
  !insertmacro ${action} "Programs\Quorvel\ffprobe.exe"
  !insertmacro ${action} "Programs\Quorvel\ffmpeg.exe"
  !insertmacro ${action} "Programs\Quorvel\quorvel-inspect.exe"
  !insertmacro ${action} "Programs\Quorvel\Quorvel.exe"
  !insertmacro ${action} "CHANGELOG.txt"
  !insertmacro ${action} "README.txt"
  !insertmacro ${action} "Uninstall.exe"
!macroend
; What is the user's as soon as it is in its place, because the program can be used from then on: it is
; never taken back, not even when the first installation was cut short.
!macro forAllOnce action
  !insertmacro ${action} "Settings\Settings.ini"
  !insertmacro ${action} "Programs\Quorvel\Scenes"
!macroend

; Asking for the error flag clears it: what has failed is kept.
Var failed
!macro keepErrors
  ${If} ${Errors}
    StrCpy $failed 1
  ${EndIf}
!macroend

!macro putInPlace item
  ${If} $failed == ""
    ${If} ${FileExists} "$INSTDIR\${item}"
      Rename "$INSTDIR\${item}" "${FORMER}\${item}"
    ${EndIf}
    Rename "${NEW}\${item}" "$INSTDIR\${item}"
    !insertmacro keepErrors
  ${EndIf}
!macroend
!macro putIfMissing item
  ${If} $failed == ""
  ${AndIfNot} ${FileExists} "$INSTDIR\${item}"
    Rename "${NEW}\${item}" "$INSTDIR\${item}"
    !insertmacro keepErrors
  ${EndIf}
!macroend
; A new file that is not where it was unpacked has come to its place.
!macro takeBack item
  ${IfNot} ${FileExists} "${NEW}\${item}"
    Rename "$INSTDIR\${item}" "${NEW}\${item}"
  ${EndIf}
  ${If} ${FileExists} "${FORMER}\${item}"
    Rename "${FORMER}\${item}" "$INSTDIR\${item}"
  ${EndIf}
!macroend

!macro removeIfEmpty
  RMDir "${EDITOR}"
  RMDir "$INSTDIR\Programs"
  RMDir "$INSTDIR\Settings"
  RMDir "$INSTDIR"
!macroend

; Makes the installation what it was before; sets the error flag when that fails. Also after a run that
; was cut short: as long as there is a former version aside, what was unpacked is complete.
Function undo
  SetOutPath "$TEMP"
  ClearErrors
  ${If} ${FileExists} "${FORMER}\*.*"
    !insertmacro forAll takeBack
    ${If} ${Errors}
      Return
    ${EndIf}
  ${EndIf}
  RMDir /r "${FORMER}"
  RMDir /r "${NEW}"
  !insertmacro removeIfEmpty
  ClearErrors
FunctionEnd

Function fail
  Call undo
  ${If} ${Errors}
    MessageBox MB_OK|MB_ICONSTOP "$(textNotUndone)" /SD IDOK
  ${Else}
    MessageBox MB_OK|MB_ICONSTOP "$(textNotInstalled)" /SD IDOK
  ${EndIf}
  SetErrorLevel 3
  Abort
FunctionEnd

; The maker's own messages, for example of a full disk, end the section.
Function .onInstFailed
  Call undo
  SetErrorLevel 3
FunctionEnd

Section "Quorvel"
  !insertmacro refuseDowngrade
  !insertmacro refuseWhileRuns "Quorvel.exe"
  !insertmacro refuseWhileRuns "quorvel-inspect.exe"
  Call undo
  ${If} ${Errors}
    Call fail
  ${EndIf}
  RMDir /r "${DONE}"

  ClearErrors
  SetOutPath "${NEW}"
  File /r "${TREE}/*"
  WriteUninstaller "${NEW}\Uninstall.exe"
  SetOutPath "$TEMP"
  CreateDirectory "${EDITOR}"
  CreateDirectory "$INSTDIR\Settings"
  ${If} ${Errors}
    Call fail
  ${EndIf}

  CreateDirectory "${FORMER}\Programs\Quorvel"
  !insertmacro forAll putInPlace
  !insertmacro forAllOnce putIfMissing
  ${If} $failed == ""
    Rename "${FORMER}" "${DONE}"
    !insertmacro keepErrors
  ${EndIf}
  ${If} $failed != ""
    Call fail
  ${EndIf}
  RMDir /r "${DONE}"
  RMDir /r "${NEW}"

  ClearErrors
  CreateDirectory "${MENU}"
  SetOutPath "${EDITOR}" ; a shortcut keeps the current folder as its program's working folder
  CreateShortcut "${MENU}\Quorvel.lnk" "${EDITOR}\Quorvel.exe"
  CreateShortcut "${MENU}\Quorvel scenes.lnk" "${EDITOR}\Scenes"
  CreateShortcut "${MENU}\Quorvel manual.lnk" "${EDITOR}\Manual\index.html"
  CreateShortcut "${MENU}\Uninstall Quorvel.lnk" "$INSTDIR\Uninstall.exe"
  WriteRegStr HKCU "${REGISTRY}" "Folder" "$INSTDIR"
  WriteRegStr HKCU "${UNINSTALL}" "DisplayName" "Quorvel"
  WriteRegStr HKCU "${UNINSTALL}" "DisplayVersion" "${VERSION}"
  WriteRegStr HKCU "${UNINSTALL}" "DisplayIcon" "${EDITOR}\Quorvel.exe"
  WriteRegStr HKCU "${UNINSTALL}" "InstallLocation" "$INSTDIR"
  WriteRegStr HKCU "${UNINSTALL}" "UninstallString" '"$INSTDIR\Uninstall.exe"'
  WriteRegStr HKCU "${UNINSTALL}" "QuietUninstallString" '"$INSTDIR\Uninstall.exe" /S _?=$INSTDIR'
  WriteRegDWORD HKCU "${UNINSTALL}" "NoModify" 1
  WriteRegDWORD HKCU "${UNINSTALL}" "NoRepair" 1
  ${GetSize} "$INSTDIR" "/S=0K" $0 $1 $2
  WriteRegDWORD HKCU "${UNINSTALL}" "EstimatedSize" $0
  ${If} ${Errors}
    MessageBox MB_OK|MB_ICONEXCLAMATION "$(textNotRegistered)" /SD IDOK
    SetErrorLevel 4
  ${EndIf}
SectionEnd

!macro stopIfNotRemoved
  ${If} ${Errors}
    MessageBox MB_OK|MB_ICONSTOP "$(textNotRemoved)" /SD IDOK
    SetErrorLevel 3
    Abort
  ${EndIf}
!macroend

Section "Uninstall"
  !insertmacro refuseWhileRuns "Quorvel.exe"
  !insertmacro refuseWhileRuns "quorvel-inspect.exe"
  SetOutPath "$TEMP" ; a folder that is current somewhere cannot be removed
  ClearErrors
  ; The user's work stays: Scenes, Drafts and Backups, and Editor.ini. The program first: when it cannot be
  ; removed, it stays usable.
  Delete "${EDITOR}\Quorvel.exe"
  !insertmacro stopIfNotRemoved
  ${If} ${FileExists} "${EDITOR}\UI\*.*"
    RMDir /r "${EDITOR}\UI"
  ${EndIf}
  ${If} ${FileExists} "${EDITOR}\Manual\*.*"
    RMDir /r "${EDITOR}\Manual"
  ${EndIf}
  ${If} ${FileExists} "${EDITOR}\Licences\*.*"
    RMDir /r "${EDITOR}\Licences"
  ${EndIf}
  ; What the program can make again.
  ${If} ${FileExists} "${EDITOR}\Cache\*.*"
    RMDir /r "${EDITOR}\Cache"
  ${EndIf}
  Delete "${EDITOR}\Translations.ini"
  Delete "${EDITOR}\Log.html"
  Delete "${EDITOR}\quorvel-inspect.exe"
  Delete "${EDITOR}\ffmpeg.exe"
  Delete "${EDITOR}\ffprobe.exe"
  Delete "$INSTDIR\Settings\Settings.ini"
  Delete "$INSTDIR\CHANGELOG.txt"
  Delete "$INSTDIR\README.txt"
  !insertmacro stopIfNotRemoved
  RMDir /r "${NEW}"
  RMDir /r "${FORMER}"
  RMDir /r "${DONE}"
  ; A running program's file cannot be removed, but it can be moved away.
  ${If} $EXEPATH == "$INSTDIR\Uninstall.exe"
    GetTempFileName $0
    Delete $0
    Rename "$INSTDIR\Uninstall.exe" $0
  ${Else}
    Delete "$INSTDIR\Uninstall.exe"
  ${EndIf}
  !insertmacro removeIfEmpty
  Delete "${MENU}\Quorvel.lnk"
  Delete "${MENU}\Quorvel scenes.lnk"
  Delete "${MENU}\Quorvel manual.lnk"
  Delete "${MENU}\Uninstall Quorvel.lnk"
  RMDir "${MENU}"
  DeleteRegKey HKCU "${UNINSTALL}"
  DeleteRegKey HKCU "${REGISTRY}"
SectionEnd
