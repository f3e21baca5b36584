; The installer for Windows, made by script/package windows, which gives it VERSION, OUTPUT, KILOBYTES, and the folder
; LISTS with what is to be installed and removed, a line for each file.
;
; Without words it asks for whom the program is. /AllUsers and /CurrentUser answer that, /S asks nothing, and /D=FOLDER,
; which has to be the last word, says where.

Unicode true
Target amd64-unicode
SetCompressor /SOLID lzma
SetCompressorDictSize 32
RequestExecutionLevel user
ManifestDPIAware true
ManifestLongPathAware true

!include MUI2.nsh
!include LogicLib.nsh
!include FileFunc.nsh
!include nsDialogs.nsh

Name "Velmora"
OutFile "${OUTPUT}"
BrandingText "Velmora ${VERSION}"
VIProductVersion "${VERSION}.0.0"
VIAddVersionKey ProductName "Velmora"
VIAddVersionKey ProductVersion "${VERSION}"
VIAddVersionKey FileVersion "${VERSION}"
VIAddVersionKey FileDescription "Installs Velmora, a workbench for the Intel 8085"
VIAddVersionKey CompanyName "The Velmora developers"
VIAddVersionKey LegalCopyright "Copyright 2026 The Velmora developers"

!define uninstallKey "Software\Microsoft\Windows\CurrentVersion\Uninstall\Velmora"
!define openKey "Software\Classes\Applications\velmora.exe"
!define typeKey "Software\Classes\Velmora.Program"
!define asmKey "Software\Classes\.asm\OpenWithProgids"
!define needsElevation 740 ; what Windows itself says of a program that lacks rights
!define fileInUse 32

!define MUI_ICON "${ICON}"
!define MUI_UNICON "${ICON}"
!define MUI_ABORTWARNING
!define MUI_FINISHPAGE_RUN "$INSTDIR\velmora.exe"
!define MUI_FINISHPAGE_NOREBOOTSUPPORT
Page custom AskForWhom TakeForWhom
!insertmacro MUI_PAGE_DIRECTORY
!insertmacro MUI_PAGE_INSTFILES
!insertmacro MUI_PAGE_FINISH
!insertmacro MUI_UNPAGE_CONFIRM
!insertmacro MUI_UNPAGE_INSTFILES
!insertmacro MUI_LANGUAGE English

Var scope ; "all" or "user"
Var chosenFolder ; by /D on the command line, or nothing
Var allUsersButton

; The scope's own folder, unless another was named; and where an older version stands, that one's.
!macro UseScope name context folder
  StrCpy $scope ${name}
  SetShellVarContext ${context}
  SetRegView 64
  StrCpy $INSTDIR $chosenFolder
  ${If} $INSTDIR == ""
    ReadRegStr $INSTDIR SHCTX "${uninstallKey}" InstallLocation
  ${EndIf}
  ${If} $INSTDIR == ""
    StrCpy $INSTDIR "${folder}\Velmora"
  ${EndIf}
!macroend

Function UseAllUsers
  !insertmacro UseScope all all "$PROGRAMFILES64"
FunctionEnd

Function UseCurrentUser
  !insertmacro UseScope user current "$LOCALAPPDATA\Programs"
FunctionEnd

; Sets $0 to "Admin" where this process may change what belongs to all users.
!macro GetRights
  UserInfo::GetAccountType
  Pop $0
!macroend

Function .onInit
  StrCpy $chosenFolder $INSTDIR
  ${GetParameters} $1
  ClearErrors
  ${GetOptions} $1 "/AllUsers" $2
  ${If} ${Errors}
    Call UseCurrentUser
    Return
  ${EndIf}
  Call UseAllUsers
  !insertmacro GetRights
  ${If} $0 != "Admin"
    Call BecomeAdministrator
  ${EndIf}
FunctionEnd

; Starts the installer again as one who may install for all users, and ends this one.
Function BecomeAdministrator
  ${If} ${Silent}
    SetErrorLevel ${needsElevation}
  ${Else}
    ExecShell "runas" "$EXEPATH" "/AllUsers"
  ${EndIf}
  Quit
FunctionEnd

Function AskForWhom
  ${GetParameters} $1
  ClearErrors
  ${GetOptions} $1 "/AllUsers" $2
  ${IfNot} ${Errors}
    Abort ; it was said already
  ${EndIf}
  !insertmacro MUI_HEADER_TEXT "Install Velmora ${VERSION}" "For whom is it?"
  nsDialogs::Create 1018
  Pop $0
  ${NSD_CreateFirstRadioButton} 0 20u 100% 12u "For &me. Windows asks for no password."
  Pop $0
  ${NSD_Check} $0
  ${NSD_CreateAdditionalRadioButton} 0 40u 100% 12u "For &all who use this computer. Windows asks for an administrator."
  Pop $allUsersButton
  ${If} $scope == all
    ${NSD_Uncheck} $0
    ${NSD_Check} $allUsersButton
  ${EndIf}
  nsDialogs::Show
FunctionEnd

Function TakeForWhom
  ${NSD_GetState} $allUsersButton $0
  ${If} $0 <> ${BST_CHECKED}
    Call UseCurrentUser
    Return
  ${EndIf}
  !insertmacro GetRights
  ${If} $0 == "Admin"
    Call UseAllUsers
  ${Else}
    Call BecomeAdministrator
  ${EndIf}
FunctionEnd

; Waits until the programs can be replaced, or ends: before anything is changed.
!macro WaitUntilUnused un
Function ${un}WaitUntilUnused
  again:
  StrCpy $1 ""
  StrCpy $2 velmora.exe
  Call ${un}LookWhetherUsed
  StrCpy $2 velmora-run.exe
  Call ${un}LookWhetherUsed
  ${If} $1 == ""
    Return
  ${EndIf}
  MessageBox MB_RETRYCANCEL|MB_ICONEXCLAMATION "$1 is running. Close it, then press Retry." /SD IDCANCEL IDRETRY again
  SetErrorLevel ${fileInUse}
  Quit
FunctionEnd

; Puts the name $2 into $1 if somebody uses that file of the installed ones.
Function ${un}LookWhetherUsed
  ${If} ${FileExists} "$INSTDIR\$2"
    ClearErrors
    FileOpen $0 "$INSTDIR\$2" a
    ${If} ${Errors}
      StrCpy $1 $2
    ${Else}
      FileClose $0
    ${EndIf}
  ${EndIf}
FunctionEnd
!macroend
!insertmacro WaitUntilUnused ""
!insertmacro WaitUntilUnused "un."

Section
  Call WaitUntilUnused
  ; What an older version has brought goes first, but for the user's settings: it knows its own files.
  ${If} ${FileExists} "$INSTDIR\uninstall.exe"
    ExecWait '"$INSTDIR\uninstall.exe" /S /KeepSettings _?=$INSTDIR'
  ${EndIf}

  SetOverwrite on
  !include "${LISTS}\install.nsh"
  SetOutPath "$INSTDIR"
  WriteUninstaller "$INSTDIR\uninstall.exe"

  CreateDirectory "$SMPROGRAMS\Velmora"
  CreateShortCut "$SMPROGRAMS\Velmora\Velmora.lnk" "$INSTDIR\velmora.exe"
  CreateShortCut "$SMPROGRAMS\Velmora\Velmora user guide.lnk" "$INSTDIR\user-guide.html"

  ; It can open programs, but does not take their extension from who has it.
  WriteRegStr SHCTX "${typeKey}" "" "8085 program"
  WriteRegStr SHCTX "${typeKey}\DefaultIcon" "" "$INSTDIR\velmora.exe,0"
  WriteRegStr SHCTX "${typeKey}\shell\open\command" "" '"$INSTDIR\velmora.exe" "%1"'
  WriteRegNone SHCTX "${asmKey}" "Velmora.Program"
  WriteRegStr SHCTX "${openKey}" "FriendlyAppName" "Velmora"
  WriteRegStr SHCTX "${openKey}\SupportedTypes" ".asm" ""
  WriteRegStr SHCTX "${openKey}\shell\open\command" "" '"$INSTDIR\velmora.exe" "%1"'

  WriteRegStr SHCTX "${uninstallKey}" DisplayName "Velmora"
  WriteRegStr SHCTX "${uninstallKey}" DisplayVersion "${VERSION}"
  WriteRegStr SHCTX "${uninstallKey}" DisplayIcon "$INSTDIR\velmora.exe,0"
  WriteRegStr SHCTX "${uninstallKey}" Publisher "The Velmora developers"
  WriteRegStr SHCTX "${uninstallKey}" URLInfoAbout "https://www.velmora.example"
  WriteRegStr SHCTX "${uninstallKey}" InstallLocation "$INSTDIR"
  WriteRegStr SHCTX "${uninstallKey}" UninstallString '"$INSTDIR\uninstall.exe"'
  WriteRegStr SHCTX "${uninstallKey}" QuietUninstallString '"$INSTDIR\uninstall.exe" /S'
  WriteRegDWORD SHCTX "${uninstallKey}" EstimatedSize ${KILOBYTES}
  WriteRegDWORD SHCTX "${uninstallKey}" NoModify 1
  WriteRegDWORD SHCTX "${uninstallKey}" NoRepair 1
  ${RefreshShellIcons}
SectionEnd

; For whom it was installed stands where Windows looks for its uninstaller.
Function un.onInit
  SetRegView 64
  SetShellVarContext current
  ReadRegStr $0 HKLM "${uninstallKey}" InstallLocation
  ${If} $0 != $INSTDIR
    Return
  ${EndIf}
  SetShellVarContext all
  !insertmacro GetRights
  ${If} $0 != "Admin"
    ${If} ${Silent}
      SetErrorLevel ${needsElevation}
    ${Else}
      ExecShell "runas" "$INSTDIR\uninstall.exe"
    ${EndIf}
    Quit
  ${EndIf}
FunctionEnd

; Only what was installed goes: whatever else lies in the folder is the user's.
Section Uninstall
  Call un.WaitUntilUnused
  !include "${LISTS}\uninstall.nsh"
  Delete "$INSTDIR\uninstall.exe"
  RMDir "$INSTDIR"
  Delete "$SMPROGRAMS\Velmora\Velmora.lnk"
  Delete "$SMPROGRAMS\Velmora\Velmora user guide.lnk"
  RMDir "$SMPROGRAMS\Velmora"
  DeleteRegKey SHCTX "${typeKey}"
  DeleteRegKey SHCTX "${openKey}"
  DeleteRegValue SHCTX "${asmKey}" "Velmora.Program"
  DeleteRegKey /ifempty SHCTX "${asmKey}"
  DeleteRegKey /ifempty SHCTX "Software\Classes\.asm"
  DeleteRegKey SHCTX "${uninstallKey}"
  ${GetParameters} $1
  ClearErrors
  ${GetOptions} $1 "/KeepSettings" $2
  ${If} ${Errors}
    DeleteRegKey HKCU "Software\Velmora"
  ${EndIf}
  ${un.RefreshShellIcons}
SectionEnd
