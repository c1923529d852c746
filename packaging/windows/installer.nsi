; The installer, for the current user: no elevation, a start-menu entry, an uninstaller that leaves settings and tapes unless
; told otherwise. packaging/windows/pack gives VERSION, SETUP, LISTS, HERE and SIZE (kilobytes).
;
; setup.exe /S installs without questions, /D=FOLDER (last) into FOLDER; uninstall.exe /S leaves settings and tapes,
; uninstall.exe /S /ALL removes them.
; 64 bits as the program is.
Target amd64-unicode
!include MUI2.nsh
!include FileFunc.nsh
!include LogicLib.nsh
!include x64.nsh
!include WinVer.nsh

!define UNINSTALL_KEY "Software\Microsoft\Windows\CurrentVersion\Uninstall\KESTREL"

Name "KESTREL ${VERSION}"
OutFile "${SETUP}"
RequestExecutionLevel user
InstallDir "$LOCALAPPDATA\Programs\KESTREL"
InstallDirRegKey HKCU "${UNINSTALL_KEY}" "InstallLocation"
SetCompressor /SOLID lzma
ManifestDPIAware true
VIProductVersion "${VERSION}.0"
VIAddVersionKey ProductName "KESTREL"
VIAddVersionKey ProductVersion "${VERSION}"
VIAddVersionKey FileVersion "${VERSION}"
VIAddVersionKey FileDescription "KESTREL installer"
VIAddVersionKey LegalCopyright "MIT licence"

!define MUI_ICON "${HERE}/kestrel.ico"
!define MUI_UNICON "${HERE}/kestrel.ico"
!define MUI_FINISHPAGE_RUN "$INSTDIR\kestrel.exe"
; The folder may have become another one than that of .onInit.
!define MUI_PAGE_CUSTOMFUNCTION_LEAVE StationMustNotRun
!insertmacro MUI_PAGE_DIRECTORY
!insertmacro MUI_PAGE_INSTFILES
!insertmacro MUI_PAGE_FINISH
!insertmacro MUI_UNPAGE_CONFIRM
!insertmacro MUI_UNPAGE_COMPONENTS
!insertmacro MUI_UNPAGE_INSTFILES
!insertmacro MUI_LANGUAGE English

; A program that runs cannot be replaced or removed, its libraries and files can: what is left would be a mixture.
!macro STATION_MUST_NOT_RUN un
Function ${un}StationMustNotRun
  ${If} ${FileExists} "$INSTDIR\kestrel.exe"
    again:
    ClearErrors
    FileOpen $0 "$INSTDIR\kestrel.exe" a
    ${If} ${Errors}
      MessageBox MB_RETRYCANCEL|MB_ICONEXCLAMATION "KESTREL is running. Close it first." /SD IDCANCEL IDRETRY again
      SetErrorLevel 2
      Abort
    ${EndIf}
    FileClose $0
  ${EndIf}
FunctionEnd
!macroend
!insertmacro STATION_MUST_NOT_RUN ""
!insertmacro STATION_MUST_NOT_RUN "un."

Function .onInit
  ${IfNot} ${RunningX64}
    MessageBox MB_ICONSTOP "KESTREL needs 64-bit Windows." /SD IDOK
    Abort
  ${EndIf}
  ${IfNot} ${AtLeastWin10}
    MessageBox MB_ICONSTOP "KESTREL needs Windows 10 or later." /SD IDOK
    Abort
  ${EndIf}
  Call StationMustNotRun
FunctionEnd

Section "KESTREL"
  !include "${LISTS}/install.nsh"
  SetOutPath "$INSTDIR"
  WriteUninstaller "$INSTDIR\uninstall.exe"
  ; The working folder of the shortcut is the last SetOutPath.
  CreateShortCut "$SMPROGRAMS\KESTREL.lnk" "$INSTDIR\kestrel.exe"
  WriteRegStr HKCU "${UNINSTALL_KEY}" "DisplayName" "KESTREL"
  WriteRegStr HKCU "${UNINSTALL_KEY}" "DisplayVersion" "${VERSION}"
  WriteRegStr HKCU "${UNINSTALL_KEY}" "DisplayIcon" "$INSTDIR\kestrel.exe"
  WriteRegStr HKCU "${UNINSTALL_KEY}" "InstallLocation" "$INSTDIR"
  WriteRegStr HKCU "${UNINSTALL_KEY}" "UninstallString" '"$INSTDIR\uninstall.exe"'
  WriteRegStr HKCU "${UNINSTALL_KEY}" "QuietUninstallString" '"$INSTDIR\uninstall.exe" /S'
  WriteRegDWORD HKCU "${UNINSTALL_KEY}" "EstimatedSize" ${SIZE}
  WriteRegDWORD HKCU "${UNINSTALL_KEY}" "NoModify" 1
  WriteRegDWORD HKCU "${UNINSTALL_KEY}" "NoRepair" 1
  ; Also after a first answer that the program runs.
  SetErrorLevel 0
SectionEnd

Section "un.KESTREL"
  SectionIn RO
  !include "${LISTS}/uninstall.nsh"
  Delete "$SMPROGRAMS\KESTREL.lnk"
  DeleteRegKey HKCU "${UNINSTALL_KEY}"
  Delete "$INSTDIR\uninstall.exe"
  ; Only when nothing is left in it.
  RMDir "$INSTDIR"
SectionEnd

; Only what the station knows as its own: nothing else that lies in the folder is touched.
Section /o "un.Settings, theaters and tapes" SETTINGS
  RMDir /r "$INSTDIR\Theaters"
  RMDir /r "$INSTDIR\TAPES"
  Delete "$INSTDIR\KESTREL.ini"
  Delete "$INSTDIR\common.ini"
  Delete "$INSTDIR\FriendlyNames.ini"
  Delete "$INSTDIR\DefFreq.ini"
  Delete "$INSTDIR\gradient.act"
  Delete "$INSTDIR\KESTRELLog.txt"
  Delete "$INSTDIR\debug_out.dat"
  RMDir "$INSTDIR"
  ; The folder that the station uses where the program folder cannot be written.
  ${If} ${FileExists} "$LOCALAPPDATA\KESTREL\KESTREL.ini"
    RMDir /r "$LOCALAPPDATA\KESTREL"
  ${EndIf}
SectionEnd

Function un.onInit
  Call un.StationMustNotRun
  ${GetParameters} $R0
  ClearErrors
  ${GetOptions} $R0 "/ALL" $R1
  ${IfNot} ${Errors}
    SectionGetFlags ${SETTINGS} $0
    IntOp $0 $0 | ${SF_SELECTED}
    SectionSetFlags ${SETTINGS} $0
  ${EndIf}
FunctionEnd

!insertmacro MUI_UNFUNCTION_DESCRIPTION_BEGIN
  !insertmacro MUI_DESCRIPTION_TEXT ${SETTINGS} "Settings, phonebook, theaters with their files, logs and recorded tapes."
!insertmacro MUI_FUNCTION_DESCRIPTION_END
