; The set-up of Corvane to 3CX. scripts/make-installer.sh compiles it and defines
;   VERSION   the program's version, four numbers
;   PAYLOAD   folder of what is installed: the program, its documentation
;   LIBRARY   CorvaneSetup.dll
;   ICON      the program's icon
;   OUTPUT    the set-up that is made
;   CPU       x86-unicode, or amd64-unicode where no 32-bit program can run
;   SIGN      when defined, the command that signs the file whose name follows
; docs/installation.md tells what it does, its options and its exit codes.

Unicode true
Target ${CPU}
SetCompressor /SOLID lzma
RequestExecutionLevel admin
AllowSkipFiles off
CRCCheck force
XPStyle on
ManifestSupportedOS all
ManifestDPIAware true

!include FileFunc.nsh
!include LogicLib.nsh
!include MUI2.nsh
!include WordFunc.nsh
!include x64.nsh

!define PRODUCT "Halvorn Corvane to 3CX"
!define MAKER "Halvorn Systems"
!define PROGRAM CorvaneTo3CX
!define UNINSTALL_KEY "Software\Microsoft\Windows\CurrentVersion\Uninstall\${PROGRAM}"
!define CRM_KEY "SOFTWARE\3CX\CRM"
!define SETTINGS_KEY "Software\${MAKER}\${PROGRAM}"

; Exit codes; 0 to 2 are NSIS's own, and CorvaneSetup.dll answers with some of these.
!define NO_ADMINISTRATOR 3
!define UNSUITABLE_FOLDER 4
!define UNTRUSTED_FOLDER 5
!define DOWNGRADE 6
!define FAILED 7
!define ALREADY_RUNNING 8
!define INSTALLED_ELSEWHERE 9

Name "${PRODUCT}"
Caption "${PRODUCT} Setup"
UninstallCaption "${PRODUCT} Uninstall"
OutFile "${OUTPUT}"
BrandingText "${PRODUCT} ${VERSION}"
AutoCloseWindow false
ShowInstDetails show
ShowUninstDetails show

VIProductVersion "${VERSION}"
VIFileVersion "${VERSION}"
VIAddVersionKey CompanyName "${MAKER}"
VIAddVersionKey FileDescription "${PRODUCT} set-up"
VIAddVersionKey FileVersion "${VERSION}"
VIAddVersionKey LegalCopyright "${MAKER}"
VIAddVersionKey ProductName "${PRODUCT}"
VIAddVersionKey ProductVersion "${VERSION}"

!ifdef SIGN
!finalize '${SIGN} "%1"'
!uninstfinalize '${SIGN} "%1"'
!endif

!define MUI_ICON "${ICON}"
!define MUI_UNICON "${ICON}"
!define MUI_ABORTWARNING
!define MUI_DIRECTORYPAGE_TEXT_TOP "Setup installs ${PRODUCT} for all users of this computer, or brings the installed one up to \
date. GoldMine and 3CX may stay open. GoldMine needs a folder without blanks in its path."
!define MUI_PAGE_CUSTOMFUNCTION_LEAVE CheckFolder
!insertmacro MUI_PAGE_DIRECTORY
!insertmacro MUI_PAGE_INSTFILES
CompletedText "Done. Restart the 3CX client. Then each user starts the program once from the Start menu."
!insertmacro MUI_UNPAGE_CONFIRM
!insertmacro MUI_UNPAGE_INSTFILES
!insertmacro MUI_LANGUAGE English

Var Installed ; the folder where the program is installed, empty when it is not
Var ReinstalledVersion
Var Text
Var Code

; A message: to the person, or, when silent, to the standard output.
!macro TELL_FUNCTION un
Function ${un}Tell
    DetailPrint $Text
    ${If} ${Silent}
        System::Call 'kernel32::GetStdHandle(i -11) p .r8'
        ${If} $8 P= 0
            System::Call 'kernel32::AttachConsole(i -1)'
            System::Call 'kernel32::GetStdHandle(i -11) p .r8'
        ${EndIf}
        ${If} $8 P<> 0
            FileWrite $8 "$Text$\r$\n"
        ${EndIf}
    ${Else}
        MessageBox MB_OK|MB_ICONINFORMATION $Text
    ${EndIf}
FunctionEnd
!macroend
!insertmacro TELL_FUNCTION ""
!insertmacro TELL_FUNCTION "un."
!macro Tell un text
    StrCpy $Text "${text}"
    Call ${un}Tell
!macroend
!define Tell "!insertmacro Tell ''"
!define un.Tell "!insertmacro Tell un."

!macro Stop un code text
    !insertmacro Tell "${un}" "${text}"
    SetErrorLevel ${code}
    Quit
!macroend
!define Stop "!insertmacro Stop ''"
!define un.Stop "!insertmacro Stop un."

; What install and uninstall begin with.
!macro BEGIN_FUNCTION un
Function ${un}Begin
    SetShellVarContext all
    ; GoldMine, 3CX and the program itself use the 32-bit view, whatever this is run on.
    SetRegView 32
    UserInfo::GetAccountType
    Pop $0
    ${If} $0 != Admin
        !insertmacro Stop "${un}" ${NO_ADMINISTRATOR} "Only an administrator can do this."
    ${EndIf}
    System::Call 'kernel32::CreateMutexW(p 0, i 0, w "Global\${PROGRAM}.Setup") p .r0 ?e'
    Pop $1
    ${If} $1 = 183 ; it was there
    ${OrIf} $1 = 5 ; another user's
        !insertmacro Stop "${un}" ${ALREADY_RUNNING} "Another set-up of ${PRODUCT} is running."
    ${EndIf}
FunctionEnd
!macroend
!insertmacro BEGIN_FUNCTION ""
!insertmacro BEGIN_FUNCTION "un."

Function .onInit
    Call Begin
    InitPluginsDir
    SetDateSave off ; the library's is the time of the build
    File "/oname=$PLUGINSDIR\CorvaneSetup.dll" "${LIBRARY}"
    SetDateSave on
    ; A folder that NSIS does not understand would leave the default, unnoticed.
    System::Call 'kernel32::GetCommandLineW() w .r0'
    ${WordFind} $0 '/D=' E+1{ $1
    ${IfNot} ${Errors}
    ${AndIf} $INSTDIR == ""
        ${Stop} ${UNSUITABLE_FOLDER} "/D= takes a folder on a drive of this computer, such as C:\${PROGRAM}, \
without quotation marks and without blanks."
    ${EndIf}
    ReadRegStr $Installed HKLM "${UNINSTALL_KEY}" InstallLocation
    ReadRegStr $ReinstalledVersion HKLM "${UNINSTALL_KEY}" DisplayVersion
    ${If} $INSTDIR == ""
        StrCpy $INSTDIR $Installed
    ${EndIf}
    ${If} $INSTDIR == ""
        GetFullPathName $0 "$WINDIR\.."
        StrCpy $INSTDIR $0 2
        StrCpy $INSTDIR "$INSTDIR\${PROGRAM}"
    ${EndIf}
    ${If} $Installed != ""
        ${VersionCompare} $ReinstalledVersion ${VERSION} $0
        ${If} $0 = 1
            MessageBox MB_YESNO|MB_ICONQUESTION|MB_DEFBUTTON2 "Version $ReinstalledVersion is installed. \
Replace it by the older ${VERSION}?" /SD IDNO IDYES replace
            ${Stop} ${DOWNGRADE} "Version $ReinstalledVersion stays; ${VERSION} is older."
            replace:
        ${EndIf}
    ${EndIf}
    ${If} ${Silent}
        Call CheckFolder
    ${EndIf}
FunctionEnd

; Refuse <code> <text>: on the page, the person may choose another folder; silently, that is the end.
!macro Refuse code text
    ${If} ${Silent}
        ${Stop} ${code} "${text}"
    ${EndIf}
    ${Tell} "${text}"
    Abort
!macroend

Function CheckFolder
    System::Call '$PLUGINSDIR\CorvaneSetup.dll::CheckFolder(w "$INSTDIR", w .r1, i ${NSIS_MAX_STRLEN}) i .r0 ?cu'
    ${If} $0 <> 0
        !insertmacro Refuse ${UNSUITABLE_FOLDER} "$INSTDIR cannot be used. GoldMine needs a path without blanks, \
commas and percent signs; it has to be a folder on a drive of this computer, such as C:\${PROGRAM}."
    ${EndIf}
    StrCpy $INSTDIR $1
    ${If} $Installed != ""
    ${AndIf} $Installed != $INSTDIR
        !insertmacro Refuse ${INSTALLED_ELSEWHERE} "${PRODUCT} is installed in $Installed. \
Uninstall it first when it is to stand in $INSTDIR."
    ${EndIf}
FunctionEnd

; Replace a program that may be running: its file can be renamed then, though not overwritten.
Function PutProgram
    Delete "$INSTDIR\${PROGRAM}.exe.old-*"
    ClearErrors
    SetOutPath $INSTDIR
    File "/oname=${PROGRAM}.exe.new" "${PAYLOAD}/${PROGRAM}.exe"
    ${If} ${Errors}
        ${Stop} ${FAILED} "Could not write the program into $INSTDIR."
    ${EndIf}
    StrCpy $0 1
    ${DoWhile} ${FileExists} "$INSTDIR\${PROGRAM}.exe.old-$0"
        IntOp $0 $0 + 1
    ${Loop}
    ClearErrors
    ${If} ${FileExists} "$INSTDIR\${PROGRAM}.exe"
        Rename "$INSTDIR\${PROGRAM}.exe" "$INSTDIR\${PROGRAM}.exe.old-$0"
    ${EndIf}
    Rename "$INSTDIR\${PROGRAM}.exe.new" "$INSTDIR\${PROGRAM}.exe"
    ${If} ${Errors}
        ; No moment longer than needed without the program that 3CX starts.
        Rename "$INSTDIR\${PROGRAM}.exe.old-$0" "$INSTDIR\${PROGRAM}.exe"
        Delete "$INSTDIR\${PROGRAM}.exe.new"
        ${Stop} ${FAILED} "Could not replace $INSTDIR\${PROGRAM}.exe."
    ${EndIf}
    Delete /REBOOTOK "$INSTDIR\${PROGRAM}.exe.old-$0"
    ; A leftover is no reason to ask for a restart.
    SetRebootFlag false
FunctionEnd

; 3CX starts what stands here. What stood here before is kept for the uninstallation, unless it was
; ours too: the program, or the command file of that folder that shows what 3CX passes.
Function TellThreeCX
    ; 3CX's keys are 3CX's own: one that has to be made here is taken away again, if still empty.
    EnumRegValue $0 HKLM "${CRM_KEY}" 0
    EnumRegKey $1 HKLM "${CRM_KEY}" 0
    ${If} "$0$1" == ""
        WriteRegStr HKLM "${UNINSTALL_KEY}" MadeCrmKey 1
    ${EndIf}
    ReadRegStr $0 HKLM "${CRM_KEY}" CallNotifierPath
    StrLen $1 "$INSTDIR\"
    StrCpy $2 $0 $1
    ${If} $0 != ""
    ${AndIf} $2 != "$INSTDIR\"
        WriteRegStr HKLM "${UNINSTALL_KEY}" PreviousCallNotifierPath $0
    ${EndIf}
    ClearErrors
    WriteRegStr HKLM "${CRM_KEY}" CallNotifierPath "$INSTDIR\${PROGRAM}.exe"
    ${If} ${Errors}
        ${Stop} ${FAILED} "Could not tell 3CX which program to start."
    ${EndIf}
FunctionEnd

Function WarnOfMissingPlugin
    ReadRegStr $0 HKLM "SOFTWARE\3CX\3CXPhone for Windows" Path
    ReadRegStr $1 HKLM "SOFTWARE\3CX\MyPhone" CallNotifier ; of 3CX 10 and 11, which need none
    ${If} $1 != ""
        Return
    ${EndIf}
    ${If} $0 != ""
        ${If} ${FileExists} "$0CommandLineAPIPlugin.dll"
            Return
        ${EndIf}
    ${Else}
        StrCpy $0 "the folder of 3CXPhone for Windows, which was not found on this computer"
    ${EndIf}
    ${Tell} "3CX's plug-in CommandLineAPIPlugin.dll is missing in $0. Without it, 3CX 14 and later report no calls. \
The documentation says where it comes from."
FunctionEnd

Section
    ; Of the program, which a function puts into its place.
    AddSize 700
    StrCpy $0 0
    ${If} $Installed == $INSTDIR
        StrCpy $0 1
    ${EndIf}
    System::Call '$PLUGINSDIR\CorvaneSetup.dll::MakeProgramFolder(w "$INSTDIR", i r0) i .s ?cu'
    Pop $Code
    ${If} $Code = ${UNTRUSTED_FOLDER}
        ${Stop} $Code "$INSTDIR is not the set-up's own: others may write to it or to a folder above it, it is a link, \
or something is in it. Remove it, or install into a new folder."
    ${ElseIf} $Code <> 0
        ${Stop} $Code "Could not make the folder $INSTDIR."
    ${EndIf}
    ; At once: should something fail below, the folder is known when the set-up runs again.
    WriteRegStr HKLM "${UNINSTALL_KEY}" InstallLocation $INSTDIR
    System::Call '$PLUGINSDIR\CorvaneSetup.dll::MakeLog(w .s, i ${NSIS_MAX_STRLEN}) i .s ?cu'
    Pop $Code
    Pop $0
    ${If} $Code <> 0
        ${Stop} $Code "Could not make the folder of the log below $APPDATA\${MAKER}: something that is not the set-up's \
own stands there and cannot be moved."
    ${ElseIf} $0 != ""
        ${Tell} "What stood in the place of the log is now $0."
    ${EndIf}

    Call PutProgram
    ClearErrors
    Delete "$INSTDIR\docs\*.html"
    Delete "$INSTDIR\docs\images\*.png"
    ClearErrors
    SetOutPath $INSTDIR
    File /r /x ${PROGRAM}.exe "${PAYLOAD}/*"
    WriteUninstaller "$INSTDIR\uninstall.exe"
    CreateShortcut "$SMPROGRAMS\${PRODUCT}.lnk" "$INSTDIR\${PROGRAM}.exe"
    ${If} ${Errors}
        ${Stop} ${FAILED} "Could not write everything into $INSTDIR."
    ${EndIf}

    Call TellThreeCX
    ${GetSize} $INSTDIR "/S=0K" $0 $1 $2
    ClearErrors
    WriteRegStr HKLM "${UNINSTALL_KEY}" DisplayName "${PRODUCT}"
    WriteRegStr HKLM "${UNINSTALL_KEY}" DisplayVersion ${VERSION}
    WriteRegStr HKLM "${UNINSTALL_KEY}" DisplayIcon "$INSTDIR\${PROGRAM}.exe"
    WriteRegStr HKLM "${UNINSTALL_KEY}" Publisher "${MAKER}"
    WriteRegStr HKLM "${UNINSTALL_KEY}" UninstallString '"$INSTDIR\uninstall.exe"'
    WriteRegStr HKLM "${UNINSTALL_KEY}" QuietUninstallString '"$INSTDIR\uninstall.exe" /S'
    WriteRegDWORD HKLM "${UNINSTALL_KEY}" EstimatedSize $0
    WriteRegDWORD HKLM "${UNINSTALL_KEY}" NoModify 1
    WriteRegDWORD HKLM "${UNINSTALL_KEY}" NoRepair 1
    ${If} ${Errors}
        ${Stop} ${FAILED} "Could not write the uninstall entry."
    ${EndIf}
    Call WarnOfMissingPlugin
SectionEnd

Function un.onInit
    Call un.Begin
    ReadRegStr $Installed HKLM "${UNINSTALL_KEY}" InstallLocation
    ${If} $Installed != $INSTDIR
        ${un.Stop} ${FAILED} "$INSTDIR is not where ${PRODUCT} is installed."
    ${EndIf}
    ; With the letters that 3CX was told.
    StrCpy $INSTDIR $Installed
FunctionEnd

; The call notifier as it was before, where ours still stands.
Function un.TellThreeCX
    ReadRegStr $0 HKLM "${CRM_KEY}" CallNotifierPath
    ReadRegStr $1 HKLM "${UNINSTALL_KEY}" PreviousCallNotifierPath
    ${If} $0 S!= "$INSTDIR\${PROGRAM}.exe"
        ${If} $0 != ""
            ${un.Tell} "3CX still starts $0 at a call."
        ${EndIf}
    ${ElseIf} $1 != ""
        WriteRegStr HKLM "${CRM_KEY}" CallNotifierPath $1
    ${Else}
        DeleteRegValue HKLM "${CRM_KEY}" CallNotifierPath
    ${EndIf}
    ReadRegStr $0 HKLM "${UNINSTALL_KEY}" MadeCrmKey
    ${If} $0 == 1
        DeleteRegKey /ifempty HKLM "${CRM_KEY}"
        DeleteRegKey /ifempty HKLM "SOFTWARE\3CX"
    ${EndIf}
FunctionEnd

Function un.RemoveProgram
    ClearErrors
    Delete "$INSTDIR\${PROGRAM}.exe"
    ${If} ${Errors}
        ; It runs: its name is freed at once, and the file goes when Windows starts anew.
        Rename "$INSTDIR\${PROGRAM}.exe" "$INSTDIR\${PROGRAM}.exe.old-0"
        Delete /REBOOTOK "$INSTDIR\${PROGRAM}.exe.old-0"
    ${EndIf}
    Delete /REBOOTOK "$INSTDIR\${PROGRAM}.exe.old-*"
    Delete "$INSTDIR\docs\*.html"
    Delete "$INSTDIR\docs\images\*.png"
    RMDir "$INSTDIR\docs\images"
    RMDir "$INSTDIR\docs"
    Delete "$INSTDIR\CorvaneCheck.exe"
    Delete "$INSTDIR\${PROGRAM}-settings.reg"
    Delete "$INSTDIR\prepare-goldmine-users.js"
    Delete "$INSTDIR\LICENSE.txt"
    Delete "$INSTDIR\NOTICE.txt"
    Delete "$INSTDIR\uninstall.exe"
    Delete "$SMPROGRAMS\${PRODUCT}.lnk"
    ${If} ${RebootFlag}
        RMDir /REBOOTOK $INSTDIR
    ${Else}
        RMDir $INSTDIR
    ${EndIf}
FunctionEnd

Section un.
    StrCpy $Code keep
    ${GetParameters} $0
    ClearErrors
    ${GetOptions} $0 "/ALL" $1
    ${IfNot} ${Errors}
        StrCpy $Code remove
    ${EndIf}
    MessageBox MB_YESNO|MB_ICONQUESTION|MB_DEFBUTTON2 "Remove the log and your own settings, too?" \
        /SD IDNO IDNO asked
    StrCpy $Code remove
    asked:

    Call un.TellThreeCX
    Call un.RemoveProgram
    StrCpy $0 "$APPDATA\${MAKER}\${PROGRAM}"
    ${If} $Code == remove
        Delete "$0\${PROGRAM}.log"
        RMDir $0
        RMDir "$APPDATA\${MAKER}"
        DeleteRegKey HKCU "${SETTINGS_KEY}"
        DeleteRegKey /ifempty HKCU "Software\${MAKER}"
    ${EndIf}
    DeleteRegKey HKLM "${UNINSTALL_KEY}"

    StrCpy $1 "Each user's settings and DDEDial line of GoldMine's INI file are left."
    ${If} ${FileExists} "$0\*"
        StrCpy $1 "$1 The log is left in $0."
    ${EndIf}
    ${If} ${RebootFlag}
        StrCpy $1 "$1 The program is still running; what is left of it in $INSTDIR goes when Windows starts anew."
    ${ElseIf} ${FileExists} "$INSTDIR\*"
        StrCpy $1 "$1 $INSTDIR holds files that the set-up did not make; they are left."
    ${EndIf}
    ${un.Tell} $1
    SetRebootFlag false
SectionEnd
