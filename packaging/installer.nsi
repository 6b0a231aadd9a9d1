; The installer. scripts/package.sh runs it:
;   makensis -INPUTCHARSET UTF8 -DVERSION=1.2.3 -DFILES=<folder> -DLANGUAGES=<file> -DSIZE_KB=<size> -DOUTPUT=<file> \
;       installer.nsi
;
; Switches: /S silent; /AllUsers or /CurrentUser; /D=<folder>, the last one and without quotes.
; Exit codes: 0 done, 1 cancelled by the user, 2 not done (the program is running, a newer version is installed, or
; the right to install for all users is missing).

; A 64-bit installer: its view of the registry is that of the program.
Target amd64-unicode
Unicode true
SetCompressor /SOLID lzma
SetDateSave off  ; the pictures' times are those of a checkout
ManifestDPIAware true
ManifestSupportedOS all
ManifestLongPathAware true

!define PRODUCT "Corvane Plug-in Manager"
!define AUTHORS "the Corvane Plug-in Manager authors"
!define PROGRAM "PluginManager.exe"
!define HELP_FILE "PluginManager.chm"
!define UNINSTALLER "Uninstall.exe"
!define UNINSTALL_KEY "Software\Microsoft\Windows\CurrentVersion\Uninstall\CorvanePluginManager"
!define COMPANY_KEY "Software\Corvane Music Software"
!define MANAGER_KEY "${COMPANY_KEY}\Corvane Plugin Manager"
!define TOOLS_MENU_KEY "${COMPANY_KEY}\Tools Menu"

Name "${PRODUCT}"
OutFile "${OUTPUT}"
AllowSkipFiles off  ; a file that can't be written is a failure
BrandingText "${PRODUCT} ${VERSION}"

; Administrators are asked for their rights; other users install for themselves.
!define MULTIUSER_EXECUTIONLEVEL Highest
!define MULTIUSER_MUI
!define MULTIUSER_USE_PROGRAMFILES64
; Not the title of the program's window: a window of the desktop that shows a folder has the folder's name, and the
; program would take it for a running copy of itself.
!define MULTIUSER_INSTALLMODE_INSTDIR "Corvane Plugin Manager"
!define MULTIUSER_INSTALLMODE_INSTDIR_REGISTRY_KEY "${UNINSTALL_KEY}"
!define MULTIUSER_INSTALLMODE_INSTDIR_REGISTRY_VALUENAME "InstallLocation"
!define MULTIUSER_INSTALLMODE_DEFAULT_REGISTRY_KEY "${UNINSTALL_KEY}"
!define MULTIUSER_INSTALLMODE_DEFAULT_REGISTRY_VALUENAME "InstallLocation"
!define MULTIUSER_INSTALLMODE_FUNCTION KeepGivenFolder
!include MultiUser.nsh
!include MUI2.nsh
!include FileFunc.nsh
!include LogicLib.nsh
!include WordFunc.nsh

!define MUI_ICON "..\res\PluginManager.ico"
!define MUI_UNICON "..\res\PluginManager.ico"
!define MUI_WELCOMEFINISHPAGE_BITMAP "installer.bmp"
!define MUI_UNWELCOMEFINISHPAGE_BITMAP "installer.bmp"
!define MUI_ABORTWARNING

; Some languages need a third line for the titles of these pages.
!define MUI_WELCOMEPAGE_TITLE_3LINES
!define MUI_WELCOMEPAGE_TEXT "$(WELCOME)"
!insertmacro MUI_PAGE_WELCOME
!insertmacro MUI_PAGE_LICENSE "${FILES}\LICENSE.txt"
!insertmacro MULTIUSER_PAGE_INSTALLMODE
!insertmacro MUI_PAGE_DIRECTORY
!insertmacro MUI_PAGE_INSTFILES
!define MUI_FINISHPAGE_TITLE_3LINES
!define MUI_FINISHPAGE_RUN
!define MUI_FINISHPAGE_RUN_FUNCTION StartProgram
!insertmacro MUI_PAGE_FINISH

!insertmacro MUI_UNPAGE_CONFIRM
!insertmacro MUI_UNPAGE_INSTFILES
!define MUI_FINISHPAGE_TITLE_3LINES
!define MUI_FINISHPAGE_TEXT "$(LEFT_IN_PLACE)"
!define MUI_FINISHPAGE_TEXT_LARGE
!insertmacro MUI_UNPAGE_FINISH

; The first one is taken where Windows speaks none of them.
!include "${LANGUAGES}"
!include texts.nsh

VIProductVersion "${VERSION}.0"
VIFileVersion "${VERSION}.0"
VIAddVersionKey /LANG=${LANG_ENGLISH} "CompanyName" "${AUTHORS}"
VIAddVersionKey /LANG=${LANG_ENGLISH} "FileDescription" "${PRODUCT} Setup"
VIAddVersionKey /LANG=${LANG_ENGLISH} "FileVersion" "${VERSION}"
VIAddVersionKey /LANG=${LANG_ENGLISH} "LegalCopyright" "Copyright © 2026 ${AUTHORS}. MIT License."
VIAddVersionKey /LANG=${LANG_ENGLISH} "ProductName" "${PRODUCT}"
VIAddVersionKey /LANG=${LANG_ENGLISH} "ProductVersion" "${VERSION}"

; The file in $1, which can't be opened for writing while it is in use.
!macro WAIT_UNTIL_CLOSED prefix
    Function ${prefix}WaitUntilFileIsClosed
      again:
        ${IfNot} ${FileExists} $1
            Return
        ${EndIf}
        ClearErrors
        FileOpen $0 $1 a
        ${IfNot} ${Errors}
            FileClose $0
            Return
        ${EndIf}
        MessageBox MB_RETRYCANCEL|MB_ICONEXCLAMATION "$(CLOSE_AND_RETRY)" /SD IDCANCEL IDRETRY again
        Abort "$(PROGRAM_IS_RUNNING)"
    FunctionEnd

    Function ${prefix}WaitUntilClosed
        StrCpy $1 "$INSTDIR\${PROGRAM}"
        Call ${prefix}WaitUntilFileIsClosed
        StrCpy $1 "$INSTDIR\${HELP_FILE}"
        Call ${prefix}WaitUntilFileIsClosed
    FunctionEnd
!macroend
!insertmacro WAIT_UNTIL_CLOSED ""
!insertmacro WAIT_UNTIL_CLOSED "un."

!macro STOP_WITHOUT_RIGHTS
    MessageBox MB_OK|MB_ICONSTOP "$(ADMINISTRATOR_NEEDED)" /SD IDOK
    SetErrorLevel 2
    Quit
!macroend

Var GivenFolder

Function .onInit
    StrCpy $GivenFolder $INSTDIR  ; of /D=, else empty
    !insertmacro MULTIUSER_INIT
    ${If} $MultiUser.Privileges == "Power"  ; has had no more rights than other users for long
        StrCpy $MultiUser.Privileges "User"
        Call MultiUser.InstallMode.CurrentUser
    ${EndIf}
    ${GetParameters} $0
    ClearErrors
    ${GetOptions} $0 "/CurrentUser" $1
    ${IfNot} ${Errors}
        Call MultiUser.InstallMode.CurrentUser
    ${EndIf}
    ClearErrors
    ${GetOptions} $0 "/AllUsers" $1
    ${IfNot} ${Errors}
        ${If} $MultiUser.Privileges != "Admin"
            !insertmacro STOP_WITHOUT_RIGHTS
        ${EndIf}
        Call MultiUser.InstallMode.AllUsers
    ${EndIf}
FunctionEnd

; Choosing between all users and one sets the usual folder.
Function KeepGivenFolder
    ${If} $GivenFolder != ""
        StrCpy $INSTDIR $GivenFolder
    ${EndIf}
FunctionEnd

Function AskBeforeDowngrade
    ReadRegStr $0 SHCTX "${UNINSTALL_KEY}" "DisplayVersion"
    ${If} $0 == ""
        Return
    ${EndIf}
    ${VersionCompare} $0 "${VERSION}" $1
    ${If} $1 = 1
        MessageBox MB_YESNO|MB_ICONQUESTION|MB_DEFBUTTON2 "$(NEWER_IS_INSTALLED)" /SD IDNO IDYES go_on
        Abort "$(NEWER_IS_INSTALLED)"
      go_on:
    ${EndIf}
FunctionEnd

; Two folders, but one entry among the installed programs: the old folder would stay for ever.
Function RemoveCopyInOtherFolder
    ReadRegStr $0 SHCTX "${UNINSTALL_KEY}" "InstallLocation"
    ${If} $0 == ""
    ${OrIf} $0 == $INSTDIR
    ${OrIfNot} ${FileExists} "$0\${UNINSTALLER}"
        Return
    ${EndIf}
    ; With "_?=" it works in place, so that its end can be waited for, but can't remove itself.
    StrCpy $1 2  ; left alone when it can't be started
    ExecWait '"$0\${UNINSTALLER}" /S _?=$0' $1
    ${If} $1 <> 0
        Abort "$(PROGRAM_IS_RUNNING)"
    ${EndIf}
    Delete "$0\${UNINSTALLER}"
    RMDir $0
FunctionEnd

Section
    Call AskBeforeDowngrade
    Call WaitUntilClosed
    SetOutPath $INSTDIR
    ; Before an old copy goes, the new one must have a place.
    ClearErrors
    FileOpen $0 "$INSTDIR\${UNINSTALLER}" a
    ${If} ${Errors}
        Abort
    ${EndIf}
    FileClose $0
    Call RemoveCopyInOtherFolder

    SetDateSave on
    File "${FILES}\${PROGRAM}"
    File "${FILES}\${HELP_FILE}"
    File "${FILES}\LICENSE.txt"
    WriteUninstaller "$INSTDIR\${UNINSTALLER}"
    CreateShortcut "$SMPROGRAMS\${PRODUCT}.lnk" "$INSTDIR\${PROGRAM}"

    WriteRegStr SHCTX "${UNINSTALL_KEY}" "DisplayName" "${PRODUCT}"
    WriteRegStr SHCTX "${UNINSTALL_KEY}" "DisplayVersion" "${VERSION}"
    WriteRegStr SHCTX "${UNINSTALL_KEY}" "DisplayIcon" "$INSTDIR\${PROGRAM}"
    WriteRegStr SHCTX "${UNINSTALL_KEY}" "Publisher" "${AUTHORS}"
    WriteRegStr SHCTX "${UNINSTALL_KEY}" "InstallLocation" $INSTDIR
    WriteRegStr SHCTX "${UNINSTALL_KEY}" "UninstallString" '"$INSTDIR\${UNINSTALLER}"'
    WriteRegStr SHCTX "${UNINSTALL_KEY}" "QuietUninstallString" '"$INSTDIR\${UNINSTALLER}" /S'
    WriteRegDWORD SHCTX "${UNINSTALL_KEY}" "EstimatedSize" ${SIZE_KB}
    WriteRegDWORD SHCTX "${UNINSTALL_KEY}" "NoModify" 1
    WriteRegDWORD SHCTX "${UNINSTALL_KEY}" "NoRepair" 1

    ; The host's Tools menu belongs to the machine: without the right to change that, nothing happens. One user's copy
    ; leaves the entry to another that is there.
    ReadRegStr $0 HKLM "${TOOLS_MENU_KEY}\Plugin Manager" "ExePath"
    ${If} $MultiUser.InstallMode != "CurrentUser"
    ${OrIf} $0 == "$INSTDIR\${PROGRAM}"
    ${OrIfNot} ${FileExists} $0
        ExecWait '"$INSTDIR\${PROGRAM}" /Register'
    ${EndIf}
SectionEnd

; By the desktop, which has the user's own rights and not the installer's.
Function StartProgram
    Exec '"$WINDIR\explorer.exe" "$INSTDIR\${PROGRAM}"'
FunctionEnd

Function un.onInit
    StrCpy $R0 $INSTDIR  ; where this uninstaller lies; choosing the mode takes the registered folder
    !insertmacro MULTIUSER_UNINIT
    ReadRegStr $0 HKCU "${UNINSTALL_KEY}" "InstallLocation"
    ${If} $0 == $R0
        Call un.MultiUser.InstallMode.CurrentUser
    ${ElseIf} $MultiUser.Privileges == "Admin"
        Call un.MultiUser.InstallMode.AllUsers
    ${Else}
        ${IfNot} ${Silent}
            ExecShell "runas" "$R0\${UNINSTALLER}"  ; asks for an administrator's rights
            SetErrorLevel 2
            Quit
        ${EndIf}
        !insertmacro STOP_WITHOUT_RIGHTS
    ${EndIf}
    StrCpy $INSTDIR $R0
FunctionEnd

; The path of the program that each start and each registration notes down, and the window's place. Another copy's are
; left alone.
!macro FORGET_PATH root
    ReadRegStr $0 ${root} "${MANAGER_KEY}" "ExePath"
    ${If} $0 == "$INSTDIR\${PROGRAM}"
        DeleteRegValue ${root} "${MANAGER_KEY}" "ExePath"
        DeleteRegValue ${root} "${MANAGER_KEY}" "WindowPlacement"
    ${EndIf}
    DeleteRegKey /ifempty ${root} "${MANAGER_KEY}"
    DeleteRegKey /ifempty ${root} "${COMPANY_KEY}"
!macroend

Section "Uninstall"
    Call un.WaitUntilClosed

    ReadRegStr $0 HKLM "${TOOLS_MENU_KEY}\Plugin Manager" "ExePath"
    ${If} $0 == "$INSTDIR\${PROGRAM}"
        DeleteRegKey HKLM "${TOOLS_MENU_KEY}\Plugin Manager"
        DeleteRegKey /ifempty HKLM "${TOOLS_MENU_KEY}"
    ${EndIf}
    !insertmacro FORGET_PATH HKLM
    !insertmacro FORGET_PATH HKCU

    ReadRegStr $0 SHCTX "${UNINSTALL_KEY}" "InstallLocation"
    ${If} $0 == $INSTDIR
        DeleteRegKey SHCTX "${UNINSTALL_KEY}"
        Delete "$SMPROGRAMS\${PRODUCT}.lnk"
    ${EndIf}

    ; By name, for the folder may hold what others have put there.
    Delete "$INSTDIR\${PROGRAM}"
    Delete "$INSTDIR\${HELP_FILE}"
    Delete "$INSTDIR\LICENSE.txt"
    Delete "$INSTDIR\${UNINSTALLER}"
    RMDir $INSTDIR
SectionEnd
