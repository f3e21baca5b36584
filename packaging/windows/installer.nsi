; The installer for Windows, made by script/package windows, which gives it VERSION, OUTPUT, KILOBYTES, the folder
; FILES, the folder LISTS with what of it is to be installed and removed, a line for each file, and their DATE as the system
; has it: the upper and the lower half of a number of 64 bits.
;
; Without words it asks for whom the program is, and proposes those for whom an older version was installed, or else this
; user. /AllUsers and /CurrentUser answer that, /S asks nothing and takes what it would propose, and /D=FOLDER, which has to
; be the last word and without quotation marks, says where.
;
; It ends with 0 when all was done, with 2 when nothing can be written there, with 32 when Velmora is running, and with 740
; when it needs an administrator and nobody may be asked. In these three cases nothing was changed.

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

; What is appended to a folder that was browsed for.
InstallDir "\Velmora"
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
!define cannotWrite 2
!define fileInUse 32

!define MUI_ICON "${ICON}"
!define MUI_UNICON "${ICON}"
!define MUI_ABORTWARNING
!define MUI_FINISHPAGE_RUN
!define MUI_FINISHPAGE_RUN_FUNCTION StartVelmora
!define MUI_FINISHPAGE_NOREBOOTSUPPORT
Page custom AskForWhom TakeForWhom
!insertmacro MUI_PAGE_DIRECTORY
!insertmacro MUI_PAGE_INSTFILES
!insertmacro MUI_PAGE_FINISH
!insertmacro MUI_UNPAGE_CONFIRM
!insertmacro MUI_UNPAGE_INSTFILES
!insertmacro MUI_LANGUAGE English

Var scope ; "all" or "user"
Var isScopeGiven ; "yes" if the command line says it
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

; Takes WORD of the command line $1 for the scope NAME.
!macro TakeWord word name
  ClearErrors
  ${GetOptions} $1 ${word} $2
  ${IfNot} ${Errors}
    StrCpy $scope ${name}
    StrCpy $isScopeGiven yes
  ${EndIf}
!macroend

Function .onInit
  ${If} $INSTDIR != "\Velmora"
    StrCpy $chosenFolder $INSTDIR
  ${EndIf}
  StrCpy $scope user
  ReadRegStr $1 HKCU "${uninstallKey}" InstallLocation
  ReadRegStr $2 HKLM "${uninstallKey}" InstallLocation
  ${If} $1 == ""
  ${AndIf} $2 != ""
    StrCpy $scope all
  ${EndIf}
  ${GetParameters} $1
  !insertmacro TakeWord "/AllUsers" all
  !insertmacro TakeWord "/CurrentUser" user
  ; For all only when that was said, or nobody will be asked: the page may still decide otherwise.
  ${If} $scope == user
    Call UseCurrentUser
  ${ElseIf} $isScopeGiven == yes
  ${OrIf} ${Silent}
    Call UseAllUsersWithRights
    ${If} ${Errors}
      Quit
    ${EndIf}
  ${EndIf}
FunctionEnd

; Goes on as one who may install for all users: where this process may not, an administrator, whom Windows asks for, starts
; the installer again, and this one ends. Sets the error flag if that was declined.
Function UseAllUsersWithRights
  !insertmacro GetRights
  ${If} $0 == "Admin"
    Call UseAllUsers
    ClearErrors
    Return
  ${EndIf}
  ${If} ${Silent}
    SetErrorLevel ${needsElevation}
    Quit
  ${EndIf}
  StrCpy $1 "/AllUsers"
  ${If} $chosenFolder != ""
    StrCpy $1 "/AllUsers /D=$chosenFolder"
  ${EndIf}
  ClearErrors
  ExecShell "runas" "$EXEPATH" "$1"
  ${IfNot} ${Errors}
    Quit
  ${EndIf}
FunctionEnd

Function AskForWhom
  ${If} $isScopeGiven == yes
    Abort
  ${EndIf}
  !insertmacro MUI_HEADER_TEXT "Install Velmora ${VERSION}" "For whom is it?"
  nsDialogs::Create 1018
  Pop $0
  ${NSD_CreateFirstRadioButton} 0 20u 100% 12u "For &me. Windows asks for no password."
  Pop $0
  ${NSD_CreateAdditionalRadioButton} 0 40u 100% 12u "For &all who use this computer. Windows asks for an administrator."
  Pop $allUsersButton
  ${If} $scope == all
    StrCpy $0 $allUsersButton
  ${EndIf}
  ${NSD_Check} $0
  ${NSD_SetFocus} $0
  nsDialogs::Show
FunctionEnd

Function TakeForWhom
  ${NSD_GetState} $allUsersButton $0
  ${If} $0 <> ${BST_CHECKED}
    Call UseCurrentUser
    Return
  ${EndIf}
  Call UseAllUsersWithRights
  ${If} ${Errors}
    Abort
  ${EndIf}
FunctionEnd

; By the desktop: what an administrator's installer starts itself has his rights.
Function StartVelmora
  Exec '"$WINDIR\explorer.exe" "$INSTDIR\velmora.exe"'
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
  MessageBox MB_RETRYCANCEL|MB_ICONEXCLAMATION "$1 is running. Save what you are working on, close it, and press Retry." /SD IDCANCEL IDRETRY again
  SetErrorLevel ${fileInUse}
  Quit
FunctionEnd

; Puts the name $2 into $1 if that file of the installed ones cannot be written because somebody uses it.
Function ${un}LookWhetherUsed
  System::Call 'kernel32::CreateFile(t "$INSTDIR\$2", i 0x40000000, i 7, p 0, i 3, i 0, p 0) p .r0 ?e'
  Pop $3
  ${If} $0 P<> -1
    System::Call 'kernel32::CloseHandle(p r0)'
  ${ElseIf} $3 = ${fileInUse}
    StrCpy $1 $2
  ${EndIf}
FunctionEnd
!macroend
!insertmacro WaitUntilUnused ""
!insertmacro WaitUntilUnused "un."

; An example or a lab that is there already is a user's, and so is one whose date is not that of the installed files any
; more: he has saved his work in it. Such a one is neither replaced nor removed.
!macro InstallFile folder file
  File "/oname=${file}" "${FILES}/${folder}/${file}"
!macroend
!macro InstallSheet folder file
  ${IfNot} ${FileExists} "$OUTDIR\${file}"
    !insertmacro InstallFile "${folder}" "${file}"
  ${EndIf}
!macroend
!macro RemoveFile path
  Delete "$INSTDIR\${path}"
!macroend
!macro RemoveSheet path
  GetFileTime "$INSTDIR\${path}" $0 $1
  ${If} "$0,$1" == "${DATE}"
    Delete "$INSTDIR\${path}"
  ${EndIf}
!macroend

Section
  Call WaitUntilUnused

  ; Nothing goes before there is a place for what comes.
  SetOutPath "$INSTDIR"
  ClearErrors
  GetTempFileName $0 "$INSTDIR"
  ${If} ${Errors}
    MessageBox MB_OK|MB_ICONSTOP "Nothing can be written into $INSTDIR. Choose another folder." /SD IDOK
    SetErrorLevel ${cannotWrite}
    Abort "Nothing was changed."
  ${EndIf}
  Delete $0

  ; What an older version has brought goes first, but for the user's settings: it knows its own files.
  ReadRegStr $4 SHCTX "${uninstallKey}" InstallLocation
  ${If} $4 != ""
  ${AndIf} ${FileExists} "$4\uninstall.exe"
    ExecWait '"$4\uninstall.exe" /S /KeepSettings _?=$4' $5
    ${If} $5 <> 0
      MessageBox MB_OK|MB_ICONSTOP "The older version in $4 cannot be replaced. See that it is closed, and install again." /SD IDOK
      SetErrorLevel $5
      Abort "Nothing was changed."
    ${EndIf}
    Delete "$4\uninstall.exe"
    ${If} $4 != $INSTDIR
      RMDir $4
    ${EndIf}
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
      ExecShell "runas" "$INSTDIR\uninstall.exe" ; not the copy of it that runs
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
  DeleteRegKey /ifempty SHCTX "Software\Classes\Applications"
  DeleteRegValue SHCTX "${asmKey}" "Velmora.Program"
  DeleteRegKey /ifempty SHCTX "${asmKey}"
  DeleteRegKey /ifempty SHCTX "Software\Classes\.asm"
  DeleteRegKey SHCTX "${uninstallKey}"

  ; The settings go with the user's last Velmora.
  ReadRegStr $1 HKCU "${uninstallKey}" InstallLocation
  ReadRegStr $2 HKLM "${uninstallKey}" InstallLocation
  ${If} "$1$2" == ""
    ${GetParameters} $1
    ClearErrors
    ${GetOptions} $1 "/KeepSettings" $2
    ${If} ${Errors}
      DeleteRegKey HKCU "Software\Velmora"
    ${EndIf}
  ${EndIf}
  ${un.RefreshShellIcons}
SectionEnd
