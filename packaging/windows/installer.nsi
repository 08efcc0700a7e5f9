; SPDX-License-Identifier: MIT
; The installer for one user. It asks for no administrator, because the programs save beside themselves and so need a
; folder that is the user's own. packaging/windows/build defines:
;   PROGRAMS  the folder with what is installed        VERSION  of the program
;   OUTPUT    the installer to write                   MAP_SIZE of the map that comes with the program, in bytes
; 64 bit, as the programs are: on a Wine or a Windows without the 32 bit part nothing else runs.
Target amd64-unicode
SetCompressor /SOLID lzma

!include MUI2.nsh
!include FileFunc.nsh

!define NAME "Vextral Remote Control"
!define REGISTRY_KEY "Software\Microsoft\Windows\CurrentVersion\Uninstall\VextralRemoteControl"

Name "${NAME}"
OutFile "${OUTPUT}"
RequestExecutionLevel user
ManifestDPIAware true
InstallDir "$LOCALAPPDATA\Programs\${NAME}"
InstallDirRegKey HKCU "${REGISTRY_KEY}" "InstallLocation"

VIProductVersion "${VERSION}.0.0"
VIAddVersionKey "ProductName" "${NAME}"
VIAddVersionKey "ProductVersion" "${VERSION}"
VIAddVersionKey "FileVersion" "${VERSION}"
VIAddVersionKey "FileDescription" "Installs ${NAME}"
VIAddVersionKey "LegalCopyright" "The Vextral Remote Control authors, MIT License"

!define MUI_ICON "VextralRemoteControl.ico"
!define MUI_UNICON "VextralRemoteControl.ico"
!define MUI_FINISHPAGE_RUN "$INSTDIR\VextralRemoteControl.exe"
!insertmacro MUI_PAGE_LICENSE "${PROGRAMS}/LICENSE.txt"
!insertmacro MUI_PAGE_DIRECTORY
!insertmacro MUI_PAGE_INSTFILES
!insertmacro MUI_PAGE_FINISH
!insertmacro MUI_UNPAGE_CONFIRM
!insertmacro MUI_UNPAGE_INSTFILES
!insertmacro MUI_LANGUAGE "English"

; Ends the installer when a program cannot be replaced, which is so while it runs.
!macro RequireClosed un
Function ${un}requireClosed
    Pop $0
    again:
    IfFileExists "$INSTDIR\$0" 0 closed
    ClearErrors
    FileOpen $1 "$INSTDIR\$0" a
    FileClose $1
    IfErrors 0 closed
    MessageBox MB_RETRYCANCEL|MB_ICONEXCLAMATION "$0 is running. Close it first." /SD IDCANCEL IDRETRY again
    SetErrorLevel 2
    Quit
    closed:
FunctionEnd

Function ${un}requireAllClosed
    Push "VextralRemoteControl.exe"
    Call ${un}requireClosed
    Push "vextral-rotator.exe"
    Call ${un}requireClosed
    Push "vextral-simbox.exe"
    Call ${un}requireClosed
FunctionEnd
!macroend
!insertmacro RequireClosed ""
!insertmacro RequireClosed "un."

Section "Install"
    Call requireAllClosed
    SetOutPath "$INSTDIR"
    File /r /x AzimuthalMap.png "${PROGRAMS}/*"
    ; A map that the user put in place outlives a newer version.
    SetOverwrite off
    File "${PROGRAMS}/AzimuthalMap.png"
    SetOverwrite on
    WriteUninstaller "$INSTDIR\Uninstall.exe"

    CreateDirectory "$SMPROGRAMS\${NAME}"
    CreateShortcut "$SMPROGRAMS\${NAME}\${NAME}.lnk" "$INSTDIR\VextralRemoteControl.exe"
    CreateShortcut "$SMPROGRAMS\${NAME}\${NAME} - Rotator.lnk" "$INSTDIR\vextral-rotator.exe"
    CreateShortcut "$SMPROGRAMS\${NAME}\Demonstration.lnk" "$INSTDIR\Demonstration.cmd" "" \
        "$INSTDIR\VextralRemoteControl.exe"
    CreateShortcut "$SMPROGRAMS\${NAME}\Demonstration - Rotator.lnk" "$INSTDIR\Demonstration.cmd" "rotator" \
        "$INSTDIR\vextral-rotator.exe"

    WriteRegStr HKCU "${REGISTRY_KEY}" "DisplayName" "${NAME}"
    WriteRegStr HKCU "${REGISTRY_KEY}" "DisplayVersion" "${VERSION}"
    WriteRegStr HKCU "${REGISTRY_KEY}" "DisplayIcon" "$INSTDIR\VextralRemoteControl.exe"
    WriteRegStr HKCU "${REGISTRY_KEY}" "Publisher" "The Vextral Remote Control authors"
    WriteRegStr HKCU "${REGISTRY_KEY}" "InstallLocation" "$INSTDIR"
    WriteRegStr HKCU "${REGISTRY_KEY}" "UninstallString" '"$INSTDIR\Uninstall.exe"'
    WriteRegStr HKCU "${REGISTRY_KEY}" "QuietUninstallString" '"$INSTDIR\Uninstall.exe" /S'
    WriteRegDWORD HKCU "${REGISTRY_KEY}" "NoModify" 1
    WriteRegDWORD HKCU "${REGISTRY_KEY}" "NoRepair" 1
    ${GetSize} "$INSTDIR" "/S=0K" $0 $1 $2
    WriteRegDWORD HKCU "${REGISTRY_KEY}" "EstimatedSize" $0
SectionEnd

; Settings stay, and so does a map that is not the one that came with the program.
Section "Uninstall"
    Call un.requireAllClosed
    Delete "$INSTDIR\VextralRemoteControl.exe"
    Delete "$INSTDIR\vextral-rotator.exe"
    Delete "$INSTDIR\vextral-simbox.exe"
    Delete "$INSTDIR\Demonstration.cmd"
    Delete "$INSTDIR\LICENSE.txt"
    RMDir /r "$INSTDIR\Qt licences"
    RMDir /r "$INSTDIR\demonstration"
    FileOpen $0 "$INSTDIR\AzimuthalMap.png" r
    FileSeek $0 0 END $1
    FileClose $0
    IntCmp $1 ${MAP_SIZE} 0 otherMap otherMap
    Delete "$INSTDIR\AzimuthalMap.png"
    otherMap:
    Delete "$INSTDIR\Uninstall.exe"
    RMDir "$INSTDIR"

    RMDir /r "$SMPROGRAMS\${NAME}"
    DeleteRegKey HKCU "${REGISTRY_KEY}"
SectionEnd
