; The installer for 64-bit Windows. For one user, who needs no administrator: the programs are in the
; product tree that the user works in. For all users, by an administrator: programs in Program Files, and
; each user gets a tree at the first start, made by the program from the folder Template. Both can be
; installed at once. Upgrade and removal keep scenes and what else is the users' work.
; Called by tools/package:
;   makensis -INPUTCHARSET UTF8 -DVERSION=1.2.3 -DTREE=<installed tree> -DOUTPUT=<installer>
;     -DPICTURES=<pictures of its pages> -DTEXTS=<its other languages> -DROOT=<source tree> quorvel.nsi
;
; Silent: Quorvel-1.2.3-setup.exe /S [/CURRENTUSER | /ALLUSERS] [/ALLOWDOWNGRADE] [/D=C:\Folder];
; Uninstall.exe /S [_?=C:\Folder]. Without a switch it is for one user. Exit codes:
;   0  done
;   1  cancelled by the user
;   2  refused, because Quorvel is running; nothing was changed
;   3  files could not be written or removed; a failed installation leaves everything as it was, a failed
;      removal can be run again
;   4  installed, but not in the start menu or the list of programs
;   5  refused, because a later version is installed; nothing was changed
;   6  refused, because it is for all users and no administrator runs it; nothing was changed
;   7  refused, because the folder has an installation of the other kind; nothing was changed
; Uninstall.exe goes on in a copy of itself and ends at once with 0; with _?= and its own folder as the
; last argument it does not, and its exit code is the result.
Unicode true
Target amd64-unicode
!include "MUI2.nsh"
!include "FileFunc.nsh"
!include "LogicLib.nsh"
!include "nsDialogs.nsh"
!include "WordFunc.nsh"

!define EDITOR "$INSTDIR\Programs\Quorvel"
!define NEW "$INSTDIR\Setup.new"    ; the files of this version, until they are in their places
!define FORMER "$INSTDIR\Setup.old" ; those of the version before, until all of this one's are there
!define DONE "$INSTDIR\Setup.done"  ; the same, to be removed
!define SHARED "${EDITOR}\AllUsers.ini" ; says to the program, too, that the installation is for all users
!define MENU "$SMPROGRAMS\Quorvel"
!define REGISTRY "Software\Quorvel"
!define UNINSTALL "Software\Microsoft\Windows\CurrentVersion\Uninstall\Quorvel"

Name "Quorvel ${VERSION}"
BrandingText "Quorvel ${VERSION}"
OutFile "${OUTPUT}"
; Where nobody would say to install it, so that it tells of no folder on the command line: see useKind.
!define NOWHERE "$LOCALAPPDATA\.\Quorvel"
InstallDir "${NOWHERE}"
RequestExecutionLevel user ; for all users it starts itself again, as an administrator
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

Var forAll    ; 1: for all users, else 0
Var isDecided ; 1: the command line says for whom
Var given     ; the folder of the command line
Var stays     ; what the uninstaller says about the users' work
Var radioAll

!define MUI_PAGE_CUSTOMFUNCTION_PRE skipIfDecided
!insertmacro MUI_PAGE_WELCOME
Page custom showChoice leaveChoice
!define MUI_PAGE_CUSTOMFUNCTION_SHOW noWayBackIfDecided
!insertmacro MUI_PAGE_DIRECTORY
!insertmacro MUI_PAGE_INSTFILES
!define MUI_FINISHPAGE_RUN
!define MUI_FINISHPAGE_RUN_FUNCTION runEditor
!define MUI_FINISHPAGE_SHOWREADME
!define MUI_FINISHPAGE_SHOWREADME_FUNCTION openManual
!define MUI_FINISHPAGE_SHOWREADME_TEXT "$(textManual)"
!define MUI_FINISHPAGE_SHOWREADME_NOTCHECKED
!insertmacro MUI_PAGE_FINISH
!define MUI_UNCONFIRMPAGE_TEXT_TOP "$stays"
!insertmacro MUI_UNPAGE_CONFIRM
!insertmacro MUI_UNPAGE_INSTFILES
!define MUI_FINISHPAGE_TEXT "$stays"
!insertmacro MUI_UNPAGE_FINISH
!insertmacro MUI_LANGUAGE "English"
!insertmacro MUI_LANGUAGE "French"
!insertmacro MUI_LANGUAGE "German"
!insertmacro MUI_LANGUAGE "Spanish"
!insertmacro MUI_LANGUAGE "Dutch"
!include "${ROOT}/packaging/texts.nsh"
!include "${TEXTS}"

; $0: the page of the manual, in the user's language where there is a translation.
!macro findManual
  StrCpy $0 "${EDITOR}\Manual\index.html"
  ${If} $LANGUAGE == ${LANG_GERMAN}
    StrCpy $0 "${EDITOR}\Manual\German\index.html"
  ${EndIf}
!macroend

Function openManual
  !insertmacro findManual
  ExecShell "open" "$0"
FunctionEnd

Function runEditor
  ${If} $forAll == 1
    Exec '"$WINDIR\explorer.exe" "${EDITOR}\Quorvel.exe"' ; not as an administrator
  ${Else}
    SetOutPath "${EDITOR}" ; the program's working folder
    Exec '"${EDITOR}\Quorvel.exe"'
  ${EndIf}
FunctionEnd

; Once it is decided for whom: where it is, and the menu and the part of the registry that belong to that.
; An upgrade goes where the last version is.
Function useKind
  SetRegView 64
  SetShellVarContext current
  StrCpy $0 "$LOCALAPPDATA\Quorvel"
  ${If} $forAll == 1
    StrCpy $0 "$PROGRAMFILES64\Quorvel"
    SetShellVarContext all
  ${EndIf}
  StrCpy $INSTDIR $given
  ${If} $INSTDIR == ""
    ReadRegStr $INSTDIR SHCTX "${REGISTRY}" "Folder"
  ${EndIf}
  ${If} $INSTDIR == ""
    StrCpy $INSTDIR $0
  ${EndIf}
  ClearErrors
FunctionEnd

; $0: 1 when an administrator's rights are there.
!macro askRights
  UserInfo::GetAccountType
  Pop $0
  ${If} $0 == "Admin"
    StrCpy $0 1
  ${Else}
    StrCpy $0 0
  ${EndIf}
!macroend

; Starts this program again as an administrator, waits for its end and ends with its exit code. Goes on
; when the user does not allow that.
!define NO_CLOSE_PROCESS 0x40
!define INFINITE -1
!macro runAsAdministrator arguments
  HideWindow
  System::Call `*(i 112, i ${NO_CLOSE_PROCESS}, p 0, t "runas", t "$EXEPATH", t "${arguments}", p 0, i 1, i 0, \
    p 0, p 0, p 0, p 0, i 0, i 0, p 0, p 0) p .r1`
  System::Call "shell32::ShellExecuteExW(p r1) i .r2"
  ${If} $2 != 0
    System::Call "*$1(i, i, p, p, p, p, p, i, i, p, p, p, p, i, i, p, p .r3)"
    System::Call "kernel32::WaitForSingleObject(p r3, i ${INFINITE})"
    System::Call "kernel32::GetExitCodeProcess(p r3, *i .r4)"
    System::Call "kernel32::CloseHandle(p r3)"
    System::Free $1
    SetErrorLevel $4
    Quit
  ${EndIf}
  System::Free $1
!macroend
Function elevate
  ${GetParameters} $5
  StrCpy $6 "/ALLUSERS"
  ClearErrors
  ${GetOptions} $5 "/ALLOWDOWNGRADE" $7
  ${IfNot} ${Errors}
    StrCpy $6 "$6 /ALLOWDOWNGRADE"
  ${EndIf}
  ${If} $given != ""
    StrCpy $6 "$6 /D=$given"
  ${EndIf}
  !insertmacro runAsAdministrator "$6"
FunctionEnd
Function un.elevate
  !insertmacro runAsAdministrator "_?=$INSTDIR"
FunctionEnd

!macro refuseWithoutRights prefix
  !insertmacro askRights
  ${If} $forAll == 1
  ${AndIf} $0 == 0
    ${IfNot} ${Silent}
      Call ${prefix}elevate
    ${EndIf}
    MessageBox MB_OK|MB_ICONSTOP "$(textNoAdministrator)" /SD IDOK
    SetErrorLevel 6
    Quit
  ${EndIf}
!macroend

Function .onInit
  StrCpy $forAll 0
  ${If} $INSTDIR != "${NOWHERE}"
    StrCpy $given $INSTDIR
  ${EndIf}
  ${GetParameters} $0
  ClearErrors
  ${GetOptions} $0 "/CURRENTUSER" $1
  ${IfNot} ${Errors}
    StrCpy $isDecided 1
  ${EndIf}
  ClearErrors
  ${GetOptions} $0 "/ALLUSERS" $1
  ${IfNot} ${Errors}
    StrCpy $isDecided 1
    StrCpy $forAll 1
  ${EndIf}
  ${If} $isDecided == 1
    !insertmacro refuseWithoutRights ""
  ${ElseIfNot} ${Silent}
    ; What is offered first: the kind that is there.
    SetRegView 64
    ReadRegStr $0 HKCU "${REGISTRY}" "Folder"
    ReadRegStr $1 HKLM "${REGISTRY}" "Folder"
    ${If} $0 == ""
    ${AndIf} $1 != ""
      StrCpy $forAll 1
    ${EndIf}
  ${EndIf}
  Call useKind
FunctionEnd

Function un.onInit
  SetRegView 64
  StrCpy $forAll 0
  StrCpy $stays "$(textScenesStay)"
  ${If} ${FileExists} "${SHARED}"
    StrCpy $forAll 1
    StrCpy $stays "$(textUsersScenesStay)"
    SetShellVarContext all
  ${EndIf}
  !insertmacro refuseWithoutRights "un."
FunctionEnd

Function skipIfDecided
  ${If} $isDecided == 1
    Abort
  ${EndIf}
FunctionEnd

Function noWayBackIfDecided
  ${If} $isDecided == 1
    GetDlgItem $0 $HWNDPARENT 3
    EnableWindow $0 0
  ${EndIf}
FunctionEnd

; For whom. The button that goes on shows the shield where Windows will ask for an administrator.
!define SET_SHIELD 0x160C
Function showChoice
  Call skipIfDecided
  !insertmacro MUI_HEADER_TEXT "$(textForWhom)" "$(textForWhomHint)"
  nsDialogs::Create 1018
  Pop $0
  ${NSD_CreateFirstRadioButton} 0 8u 100% 12u "$(textForMe)"
  Pop $1
  ${NSD_CreateAdditionalRadioButton} 0 60u 100% 12u "$(textForAll)"
  Pop $radioAll
  ${NSD_CreateLabel} 12u 22u -12u 26u "$(textForMeHint)"
  Pop $0
  ${NSD_CreateLabel} 12u 74u -12u 36u "$(textForAllHint)"
  Pop $0
  ${NSD_OnClick} $1 showShield
  ${NSD_OnClick} $radioAll showShield
  ${If} $forAll == 1
    StrCpy $1 $radioAll
  ${EndIf}
  ${NSD_Check} $1
  ${NSD_SetFocus} $1
  Push $1
  Call showShield
  nsDialogs::Show
  GetDlgItem $0 $HWNDPARENT 1
  SendMessage $0 ${SET_SHIELD} 0 0
FunctionEnd

Function showShield
  Pop $0
  !insertmacro askRights
  ${NSD_GetState} $radioAll $1
  ${If} $0 == 1
    StrCpy $1 0
  ${EndIf}
  GetDlgItem $0 $HWNDPARENT 1
  SendMessage $0 ${SET_SHIELD} 0 $1
FunctionEnd

Function leaveChoice
  ${NSD_GetState} $radioAll $forAll
  !insertmacro askRights
  ${If} $forAll == 1
  ${AndIf} $0 == 0
    Call elevate
    ShowWindow $HWNDPARENT ${SW_SHOW}
    MessageBox MB_OK|MB_ICONEXCLAMATION "$(textNoAdministrator)"
    Abort
  ${EndIf}
  Call useKind
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
  ReadRegStr $0 SHCTX "${UNINSTALL}" "DisplayVersion"
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

; The programs of all users are no place for the scenes of one.
!macro refuseOtherKind
  StrCpy $0 0
  ${If} ${FileExists} "${SHARED}"
    StrCpy $0 1
  ${EndIf}
  ${If} ${FileExists} "${EDITOR}\Quorvel.exe"
  ${AndIf} "$0" != "$forAll"
    MessageBox MB_OK|MB_ICONSTOP "$(textOtherKind)" /SD IDOK
    SetErrorLevel 7
    Quit
  ${EndIf}
!macroend

; What is installed, in the order in which it comes to its place.
!macro forPrograms action
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
!macro forOneOnce action
  !insertmacro ${action} "Settings\Settings.ini"
  !insertmacro ${action} "Programs\Quorvel\Scenes"
!macroend

; For all users: what the program takes a user's tree from. It may be changed, so an upgrade keeps it.
!macro forAllUsersOnce action
  !insertmacro ${action} "Programs\Quorvel\AllUsers.ini"
  !insertmacro ${action} "Template"
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
    !insertmacro forPrograms takeBack
    ${If} ${Errors}
      Return
    ${EndIf}
  ${EndIf}
  RMDir /r "${FORMER}"
  RMDir /r "${NEW}"
  ${If} ${FileExists} "${SHARED}"
  ${AndIfNot} ${FileExists} "${EDITOR}\Quorvel.exe"
    RMDir /r "$INSTDIR\Template"
    Delete "${SHARED}"
  ${EndIf}
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
  !insertmacro refuseOtherKind
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
  ${If} $forAll == 1
    SetOutPath "${NEW}\Programs\Quorvel"
    File "${ROOT}/packaging/AllUsers.ini"
    CreateDirectory "${NEW}\Template\Programs\Quorvel"
    SetOutPath "$TEMP"
    Rename "${NEW}\Programs\Quorvel\Scenes" "${NEW}\Template\Programs\Quorvel\Scenes"
    Rename "${NEW}\Settings" "${NEW}\Template\Settings"
  ${Else}
    CreateDirectory "$INSTDIR\Settings"
  ${EndIf}
  SetOutPath "$TEMP"
  CreateDirectory "${EDITOR}"
  ${If} ${Errors}
    Call fail
  ${EndIf}

  CreateDirectory "${FORMER}\Programs\Quorvel"
  ${If} $forAll == 1
    !insertmacro forAllUsersOnce putIfMissing ; before the programs, which are useless without
  ${EndIf}
  !insertmacro forPrograms putInPlace
  ${If} $forAll != 1
    !insertmacro forOneOnce putIfMissing
  ${EndIf}
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
  Delete "${MENU}\*.lnk" ; perhaps in another language
  SetOutPath "${EDITOR}" ; a shortcut keeps the current folder as its program's working folder
  CreateShortcut "${MENU}\Quorvel.lnk" "${EDITOR}\Quorvel.exe"
  ${If} $forAll != 1
    CreateShortcut "${MENU}\$(textMenuScenes).lnk" "${EDITOR}\Scenes"
  ${EndIf}
  !insertmacro findManual
  CreateShortcut "${MENU}\$(textMenuManual).lnk" "$0"
  CreateShortcut "${MENU}\$(textMenuRemoval).lnk" "$INSTDIR\Uninstall.exe"
  WriteRegStr SHCTX "${REGISTRY}" "Folder" "$INSTDIR"
  WriteRegStr SHCTX "${UNINSTALL}" "DisplayName" "Quorvel"
  WriteRegStr SHCTX "${UNINSTALL}" "DisplayVersion" "${VERSION}"
  WriteRegStr SHCTX "${UNINSTALL}" "DisplayIcon" "${EDITOR}\Quorvel.exe"
  WriteRegStr SHCTX "${UNINSTALL}" "InstallLocation" "$INSTDIR"
  WriteRegStr SHCTX "${UNINSTALL}" "UninstallString" '"$INSTDIR\Uninstall.exe"'
  WriteRegStr SHCTX "${UNINSTALL}" "QuietUninstallString" '"$INSTDIR\Uninstall.exe" /S _?=$INSTDIR'
  WriteRegDWORD SHCTX "${UNINSTALL}" "NoModify" 1
  WriteRegDWORD SHCTX "${UNINSTALL}" "NoRepair" 1
  ${GetSize} "$INSTDIR" "/S=0K" $0 $1 $2
  WriteRegDWORD SHCTX "${UNINSTALL}" "EstimatedSize" $0
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
  ; The user's work stays: Scenes, Drafts, Backups and Published, Editor.ini, Recent.txt and Settings.ini.
  ; The program first: when it cannot be removed, it stays usable.
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
  ${If} $forAll == 1
    ${If} ${FileExists} "$INSTDIR\Template\*.*"
      RMDir /r "$INSTDIR\Template"
    ${EndIf}
  ${EndIf}
  Delete "$INSTDIR\CHANGELOG.txt"
  Delete "$INSTDIR\README.txt"
  !insertmacro stopIfNotRemoved
  RMDir /r "${NEW}"
  RMDir /r "${FORMER}"
  RMDir /r "${DONE}"
  Delete "${SHARED}" ; late: a removal that is run again has to know it
  ; A running program's file cannot be removed, but it can be moved away.
  ${If} $EXEPATH == "$INSTDIR\Uninstall.exe"
    GetTempFileName $0
    Delete $0
    Rename "$INSTDIR\Uninstall.exe" $0
  ${Else}
    Delete "$INSTDIR\Uninstall.exe"
  ${EndIf}
  !insertmacro removeIfEmpty
  Delete "${MENU}\*.lnk"
  RMDir "${MENU}"
  DeleteRegKey SHCTX "${UNINSTALL}"
  DeleteRegKey SHCTX "${REGISTRY}"
SectionEnd
