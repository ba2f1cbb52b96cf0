; The installer for 64-bit Windows: per user, so that it needs no administrator and the program may
; write its scenes and its log beside itself. Upgrade and uninstall keep the user's Scenes folder.
; Called by tools/package:
;   makensis -DVERSION=1.2.3 -DTREE=<installed tree> -DOUTPUT=<installer> -DROOT=<source tree> quorvel.nsi
; Silent: Quorvel-1.2.3-setup.exe /S [/D=C:\Folder], Uninstall.exe /S.
Unicode true
Target amd64-unicode
!include "MUI2.nsh"
!include "FileFunc.nsh"

!define EDITOR "$INSTDIR\Programs\Quorvel"
!define MENU "$SMPROGRAMS\Quorvel"
!define REGISTRY "Software\Quorvel"
!define UNINSTALL "Software\Microsoft\Windows\CurrentVersion\Uninstall\Quorvel"

Name "Quorvel ${VERSION}"
OutFile "${OUTPUT}"
InstallDir "$LOCALAPPDATA\Quorvel"
; An upgrade goes where the last version is.
InstallDirRegKey HKCU "${REGISTRY}" "Folder"
RequestExecutionLevel user
SetCompressor /SOLID lzma
VIProductVersion "${VERSION}.0"
VIAddVersionKey "ProductName" "Quorvel"
VIAddVersionKey "ProductVersion" "${VERSION}"
VIAddVersionKey "FileDescription" "Quorvel installer"
VIAddVersionKey "FileVersion" "${VERSION}"
VIAddVersionKey "LegalCopyright" ""

!define MUI_ICON "${ROOT}/data/icon/quorvel.ico"
!define MUI_UNICON "${ROOT}/data/icon/quorvel.ico"
!define MUI_FINISHPAGE_RUN
!define MUI_FINISHPAGE_RUN_FUNCTION runEditor
!insertmacro MUI_PAGE_DIRECTORY
!insertmacro MUI_PAGE_INSTFILES
!insertmacro MUI_PAGE_FINISH
!insertmacro MUI_UNPAGE_CONFIRM
!insertmacro MUI_UNPAGE_INSTFILES
!insertmacro MUI_LANGUAGE "English"

Function runEditor
  SetOutPath "${EDITOR}" ; the program's working folder
  Exec '"${EDITOR}\Quorvel.exe"'
FunctionEnd

; A running editor holds its file open: ask before anything is changed. Silently: exit code 2.
!macro refuseWhileRunning
  IfFileExists "${EDITOR}\Quorvel.exe" 0 free
retry:
  ClearErrors
  FileOpen $0 "${EDITOR}\Quorvel.exe" a
  IfErrors busy
  FileClose $0
  Goto free
busy:
  MessageBox MB_RETRYCANCEL|MB_ICONEXCLAMATION "Please close Quorvel first." /SD IDCANCEL IDRETRY retry
  SetErrorLevel 2
  Quit
free:
!macroend

Section "Quorvel"
  !insertmacro refuseWhileRunning
  SetOutPath "${EDITOR}"
  File "${TREE}/Programs/Quorvel/Quorvel.exe"
  File "${TREE}/Programs/Quorvel/quorvel-inspect.exe"
  File "${TREE}/Programs/Quorvel/Translations.ini"
  ; Images of an earlier skin would stay otherwise.
  RMDir /r "${EDITOR}\UI"
  SetOutPath "${EDITOR}\UI"
  File "${TREE}/Programs/Quorvel/UI/*"
  ; The demo comes with the first installation only: later the scenes are the user's.
  IfFileExists "${EDITOR}\Scenes\*.*" keepScenes
  SetOutPath "${EDITOR}\Scenes"
  File /r "${TREE}/Programs/Quorvel/Scenes/*"
keepScenes:
  SetOutPath "$INSTDIR\Settings"
  SetOverwrite off
  File "${TREE}/Settings/Settings.ini"
  SetOverwrite on
  SetOutPath "$INSTDIR"
  File "${TREE}/CHANGELOG.txt"
  WriteUninstaller "$INSTDIR\Uninstall.exe"

  CreateDirectory "${MENU}"
  SetOutPath "${EDITOR}" ; a shortcut keeps the current folder as its program's working folder
  CreateShortcut "${MENU}\Quorvel.lnk" "${EDITOR}\Quorvel.exe"
  CreateShortcut "${MENU}\Quorvel scenes.lnk" "${EDITOR}\Scenes"
  CreateShortcut "${MENU}\Uninstall Quorvel.lnk" "$INSTDIR\Uninstall.exe"

  WriteRegStr HKCU "${REGISTRY}" "Folder" "$INSTDIR"
  WriteRegStr HKCU "${UNINSTALL}" "DisplayName" "Quorvel"
  WriteRegStr HKCU "${UNINSTALL}" "DisplayVersion" "${VERSION}"
  WriteRegStr HKCU "${UNINSTALL}" "DisplayIcon" "${EDITOR}\Quorvel.exe"
  WriteRegStr HKCU "${UNINSTALL}" "InstallLocation" "$INSTDIR"
  WriteRegStr HKCU "${UNINSTALL}" "UninstallString" '"$INSTDIR\Uninstall.exe"'
  WriteRegStr HKCU "${UNINSTALL}" "QuietUninstallString" '"$INSTDIR\Uninstall.exe" /S'
  WriteRegDWORD HKCU "${UNINSTALL}" "NoModify" 1
  WriteRegDWORD HKCU "${UNINSTALL}" "NoRepair" 1
  ${GetSize} "$INSTDIR" "/S=0K" $0 $1 $2
  WriteRegDWORD HKCU "${UNINSTALL}" "EstimatedSize" $0
SectionEnd

Section "Uninstall"
  !insertmacro refuseWhileRunning
  Delete "${EDITOR}\Quorvel.exe"
  Delete "${EDITOR}\quorvel-inspect.exe"
  Delete "${EDITOR}\Translations.ini"
  Delete "${EDITOR}\Log.html"
  RMDir /r "${EDITOR}\UI"
  Delete "$INSTDIR\Settings\Settings.ini"
  Delete "$INSTDIR\CHANGELOG.txt"
  Delete "$INSTDIR\Uninstall.exe"
  ; Scenes is the user's work and stays. Folders go when they are empty.
  RMDir "${EDITOR}"
  RMDir "$INSTDIR\Programs"
  RMDir "$INSTDIR\Settings"
  RMDir "$INSTDIR"
  Delete "${MENU}\Quorvel.lnk"
  Delete "${MENU}\Quorvel scenes.lnk"
  Delete "${MENU}\Uninstall Quorvel.lnk"
  RMDir "${MENU}"
  DeleteRegKey HKCU "${UNINSTALL}"
  DeleteRegKey HKCU "${REGISTRY}"
SectionEnd
