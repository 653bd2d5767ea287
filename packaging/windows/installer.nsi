; The installer, for one user: no administrator is asked. packaging/windows/build says what it is made of.
; /S is silent, /D=FOLDER (last) says where to. It ends with 3, and changes nothing, while the program runs.
; The 64-bit stub, so that folders and registry are seen as the programs see them.
Target amd64-unicode
Unicode true
SetCompressor /SOLID lzma
RequestExecutionLevel user
ManifestDPIAware true
ManifestLongPathAware true
ManifestSupportedOS Win10

!include MUI2.nsh
!include FileFunc.nsh
!include LogicLib.nsh

!define NAME "Vorlane Manager"
!define KEY "Software\Microsoft\Windows\CurrentVersion\Uninstall\Vorlane"
!define MENU "$SMPROGRAMS\${NAME}"

Name "${NAME}"
OutFile "${OUT}"
InstallDir "$LOCALAPPDATA\Programs\${NAME}"
InstallDirRegKey HKCU "${KEY}" "InstallLocation"

VIProductVersion "${VERSION}.0"
VIAddVersionKey "ProductName" "${NAME}"
VIAddVersionKey "ProductVersion" "${VERSION}"
VIAddVersionKey "FileDescription" "${NAME} ${VERSION} set-up"
VIAddVersionKey "FileVersion" "${VERSION}"
VIAddVersionKey "LegalCopyright" ""

!define MUI_ICON "${ICON}"
!define MUI_UNICON "${ICON}"
!define MUI_FINISHPAGE_RUN "$INSTDIR\vorlane-start.exe"
!insertmacro MUI_PAGE_DIRECTORY
!insertmacro MUI_PAGE_INSTFILES
!insertmacro MUI_PAGE_FINISH
!insertmacro MUI_UNPAGE_CONFIRM
!insertmacro MUI_UNPAGE_INSTFILES
!insertmacro MUI_LANGUAGE English

; A program that runs holds its file: a set-up over it would leave a mixture of old and new.
!macro refuseIfRunning PROGRAM
  ${If} ${FileExists} "$INSTDIR\${PROGRAM}"
    ClearErrors
    FileOpen $0 "$INSTDIR\${PROGRAM}" a
    ${If} ${Errors}
      MessageBox MB_OK|MB_ICONSTOP "${NAME} is running. Close it, then start this again." /SD IDOK
      SetErrorLevel 3
      Quit
    ${EndIf}
    FileClose $0
  ${EndIf}
!macroend
!macro refuseWhileRunning
  !insertmacro refuseIfRunning vorlane.exe
  !insertmacro refuseIfRunning vorlane-desk.exe
  !insertmacro refuseIfRunning vorlane-start.exe
  !insertmacro refuseIfRunning vorlane-admin.exe
!macroend

Section
  !insertmacro refuseWhileRunning
  ; Files of an older version that this one no longer has.
  ${If} ${FileExists} "$INSTDIR\uninstall.exe"
    ExecWait '"$INSTDIR\uninstall.exe" /S _?=$INSTDIR'
  ${EndIf}
  SetOutPath "$INSTDIR"
  File /r "${FOLDER}/*"
  WriteUninstaller "$INSTDIR\uninstall.exe"
  CreateDirectory "${MENU}"
  CreateShortcut "${MENU}\${NAME}.lnk" "$INSTDIR\vorlane-start.exe"
  CreateShortcut "${MENU}\Vorlane Desk.lnk" "$INSTDIR\vorlane-start.exe" "--desk"
  CreateShortcut "${MENU}\Choose another crib.lnk" "$INSTDIR\vorlane-start.exe" "--choose"
  WriteRegStr HKCU "${KEY}" "DisplayName" "${NAME}"
  WriteRegStr HKCU "${KEY}" "DisplayVersion" "${VERSION}"
  WriteRegStr HKCU "${KEY}" "DisplayIcon" "$INSTDIR\vorlane.exe"
  WriteRegStr HKCU "${KEY}" "InstallLocation" "$INSTDIR"
  WriteRegStr HKCU "${KEY}" "UninstallString" '"$INSTDIR\uninstall.exe"'
  WriteRegStr HKCU "${KEY}" "QuietUninstallString" '"$INSTDIR\uninstall.exe" /S'
  WriteRegDWORD HKCU "${KEY}" "NoModify" 1
  WriteRegDWORD HKCU "${KEY}" "NoRepair" 1
  ${GetSize} "$INSTDIR" "/S=0K" $0 $1 $2
  WriteRegDWORD HKCU "${KEY}" "EstimatedSize" $0
SectionEnd

Section "un.all"
  !insertmacro refuseWhileRunning
  ; What was installed and nothing else: a crib in this folder stays, and templates of the shop's own.
  !include "${REMOVALS}"
  Delete "$INSTDIR\uninstall.exe"
  RMDir "$INSTDIR"
  Delete "${MENU}\${NAME}.lnk"
  Delete "${MENU}\Vorlane Desk.lnk"
  Delete "${MENU}\Choose another crib.lnk"
  RMDir "${MENU}"
  DeleteRegKey HKCU "${KEY}"
SectionEnd
