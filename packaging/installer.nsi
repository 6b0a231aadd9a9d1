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
!define CONSOLE "PluginManagerCmd.exe"
!define HELP_FILE "PluginManager.chm"
; Named after the product, for the folder may be another one's, too.
!define LICENCE "PluginManager-LICENSE.txt"
!define UNINSTALLER "PluginManager-uninstall.exe"
!define NEW_FILES "PluginManager-new"
!define UNINSTALL_KEY "Software\Microsoft\Windows\CurrentVersion\Uninstall\CorvanePluginManager"
!define COMPANY_KEY "Software\Corvane Music Software"
!define MANAGER_KEY "${COMPANY_KEY}\Corvane Plugin Manager"
!define TOOLS_MENU_KEY "${COMPANY_KEY}\Tools Menu"
!define CLASSES "Software\Classes"
!define LAYOUT_CLASS "CorvanePluginManager.Layout"
!define LAYOUT_ENDING ".pgl"

Name "${PRODUCT}"
OutFile "${OUTPUT}"
AllowSkipFiles off  ; a file that can't be written is a failure
!ifdef SIGN
    !uninstfinalize '"${SIGN}" "%1"' = 0
!endif
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
!insertmacro MUI_PAGE_LICENSE "${FILES}\${LICENCE}"
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

; The files, by name: the folder may hold what others have put there.
!macro FOR_EACH_FILE do
    !insertmacro ${do} "${PROGRAM}"
    !insertmacro ${do} "${CONSOLE}"
    !insertmacro ${do} "${HELP_FILE}"
    !insertmacro ${do} "${LICENCE}"
    !insertmacro ${do} "${UNINSTALLER}"
!macroend

!macro WAIT prefix file
    StrCpy $1 "$2\${file}"
    Call ${prefix}WaitUntilFileIsClosed
!macroend

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

    ; The copy in the folder $2.
    Function ${prefix}WaitUntilClosed
        !insertmacro WAIT "${prefix}" "${PROGRAM}"
        !insertmacro WAIT "${prefix}" "${CONSOLE}"
        !insertmacro WAIT "${prefix}" "${HELP_FILE}"
        !ifndef __UNINSTALL__  ; with "_?=" it runs from there
            !insertmacro WAIT "" "${LICENCE}"
            !insertmacro WAIT "" "${UNINSTALLER}"
        !endif
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

; The path of the program that each start and each registration notes down, and the window's place. Another copy's are
; left alone.
!macro FORGET_PATH root
    ReadRegStr $0 ${root} "${MANAGER_KEY}" "ExePath"
    ${If} $0 == "$2\${PROGRAM}"
        DeleteRegValue ${root} "${MANAGER_KEY}" "ExePath"
        DeleteRegValue ${root} "${MANAGER_KEY}" "WindowPlacement"
    ${EndIf}
    DeleteRegKey /ifempty ${root} "${MANAGER_KEY}"
    DeleteRegKey /ifempty ${root} "${COMPANY_KEY}"
!macroend

; One more program that Windows offers to open layouts with. What they are opened with by default belongs to the user, and
; other programs use the ending, too. Another copy's entry is left alone.
!macro FORGET_LAYOUTS root
    ReadRegStr $0 ${root} "${CLASSES}\${LAYOUT_CLASS}\shell\open\command" ""
    ${If} $0 == '"$2\${PROGRAM}" "%1"'
        DeleteRegKey ${root} "${CLASSES}\${LAYOUT_CLASS}"
        DeleteRegValue ${root} "${CLASSES}\${LAYOUT_ENDING}\OpenWithProgids" "${LAYOUT_CLASS}"
        DeleteRegKey /ifempty ${root} "${CLASSES}\${LAYOUT_ENDING}\OpenWithProgids"
        DeleteRegKey /ifempty ${root} "${CLASSES}\${LAYOUT_ENDING}"
        !insertmacro TELL_OF_CLASSES
    ${EndIf}
!macroend

; SHCNE_ASSOCCHANGED: Windows has read the classes before.
!macro TELL_OF_CLASSES
    System::Call 'shell32::SHChangeNotify(i 0x08000000, i 0, p 0, p 0)'
!macroend

; The copy in the folder $2, with what leads to it. By hand and not by that copy's uninstaller: for one user it may lie where
; anybody puts a program, and this one may have the rights of an administrator.
!macro DELETE file
    Delete "$2\${file}"
!macroend
!macro REMOVE_COPY prefix
    Function ${prefix}RemoveCopy
        ReadRegStr $0 HKLM "${TOOLS_MENU_KEY}\Plugin Manager" "ExePath"
        ${If} $0 == "$2\${PROGRAM}"
            DeleteRegKey HKLM "${TOOLS_MENU_KEY}\Plugin Manager"
            DeleteRegKey /ifempty HKLM "${TOOLS_MENU_KEY}"
        ${EndIf}
        !insertmacro FORGET_PATH HKLM
        !insertmacro FORGET_PATH HKCU
        !insertmacro FORGET_LAYOUTS HKLM
        !insertmacro FORGET_LAYOUTS HKCU
        !insertmacro FOR_EACH_FILE DELETE
        RMDir $2
    FunctionEnd
!macroend
!insertmacro REMOVE_COPY ""
!insertmacro REMOVE_COPY "un."

; What version 1.0 called its files, in the folder $2: names that other products use, too. Its uninstaller is the one that
; the entry names, and has the version of that; its licence names the authors.
Function RemoveOldNames
    ReadRegStr $0 SHCTX "${UNINSTALL_KEY}" "UninstallString"
    ReadRegStr $1 SHCTX "${UNINSTALL_KEY}" "DisplayVersion"
    ${If} $0 == '"$2\Uninstall.exe"'
        GetDLLVersion "$2\Uninstall.exe" $3 $4
        IntOp $5 $3 >> 16
        IntOp $3 $3 & 0xffff
        IntOp $4 $4 >> 16
        ${If} $1 == "$5.$3.$4"
            Delete "$2\Uninstall.exe"
        ${EndIf}
    ${EndIf}
    ClearErrors
    FileOpen $0 "$2\LICENSE.txt" r
    ${If} ${Errors}
        Return
    ${EndIf}
    FileRead $0 $1
    FileRead $0 $1
    FileRead $0 $1
    FileClose $0
    ${If} $1 == "Copyright (c) 2026 ${AUTHORS}$\r$\n"
        Delete "$2\LICENSE.txt"
    ${EndIf}
FunctionEnd

; What there was stays until all that is new lies beside it, and is then replaced (1).
!macro MOVE_IN file
    System::Call 'kernel32::MoveFileExW(w "$INSTDIR\${NEW_FILES}\${file}", w "$INSTDIR\${file}", i 1) i .r0'
    ${If} $0 = 0
        Abort
    ${EndIf}
!macroend

Function RemoveNewFiles
    StrCpy $2 "$INSTDIR\${NEW_FILES}"
    !insertmacro FOR_EACH_FILE DELETE
    RMDir $2
FunctionEnd

Function .onInstFailed
    SetOutPath $TEMP  ; a current folder can't be removed
    Call RemoveNewFiles
    RMDir $INSTDIR
FunctionEnd

Section
    Call AskBeforeDowngrade
    StrCpy $2 $INSTDIR
    Call WaitUntilClosed
    ReadRegStr $2 SHCTX "${UNINSTALL_KEY}" "InstallLocation"
    ${If} $2 != ""
        Call WaitUntilClosed
    ${EndIf}

    SetOutPath "$INSTDIR\${NEW_FILES}"
    SetDateSave on
    File "${FILES}\${PROGRAM}"
    File "${FILES}\${CONSOLE}"
    File "${FILES}\${HELP_FILE}"
    File "${FILES}\${LICENCE}"
    ClearErrors
    WriteUninstaller "$INSTDIR\${NEW_FILES}\${UNINSTALLER}"
    ${If} ${Errors}
        Abort
    ${EndIf}
    SetOutPath $INSTDIR
    !insertmacro FOR_EACH_FILE MOVE_IN

    ; Two folders, but one entry among the installed programs: the old folder would stay for ever. Where it holds the folder
    ; of the new files it is the same one by another name.
    ${If} $2 != ""
        Call RemoveOldNames
        ${IfNot} ${FileExists} "$2\${NEW_FILES}"
            Call RemoveCopy
        ${EndIf}
    ${EndIf}
    Call RemoveNewFiles
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

    WriteRegStr SHCTX "${CLASSES}\${LAYOUT_CLASS}" "" "$(LAYOUT)"
    WriteRegStr SHCTX "${CLASSES}\${LAYOUT_CLASS}\shell\open\command" "" '"$INSTDIR\${PROGRAM}" "%1"'
    WriteRegStr SHCTX "${CLASSES}\${LAYOUT_ENDING}\OpenWithProgids" "${LAYOUT_CLASS}" ""
    !insertmacro TELL_OF_CLASSES

    ; The host's Tools menu belongs to the machine, and so must what it starts. One user's copy is neither entered there nor
    ; run from here: without an administrator's rights anybody can put another program in its place.
    ${If} $MultiUser.InstallMode != "CurrentUser"
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

Section "Uninstall"
    StrCpy $2 $INSTDIR
    Call un.WaitUntilClosed
    ReadRegStr $0 SHCTX "${UNINSTALL_KEY}" "InstallLocation"
    ${If} $0 == $INSTDIR
        DeleteRegKey SHCTX "${UNINSTALL_KEY}"
        Delete "$SMPROGRAMS\${PRODUCT}.lnk"
    ${EndIf}
    Call un.RemoveCopy
SectionEnd
