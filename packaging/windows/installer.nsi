; The installer of the plug-in for the 64-bit host, per machine. Made by packaging/windows/pack with
;   VERSION  the project's version       VERSION_WORDS  the same as four numbers
;   FILES    the folder with the files   OUT            the installer to write
; A silent run (/S) adds "Show with Penwick" with /SHOW, and otherwise leaves it as it is; /D=FOLDER comes last.
; Exit codes of a silent run: 0 done, 2 a file could not be written or removed, 3 the host runs.
Target amd64-unicode
ManifestDPIAware true
ManifestSupportedOS all
RequestExecutionLevel admin
SetCompressor /SOLID lzma

!include MUI2.nsh
!include LogicLib.nsh
!include FileFunc.nsh
!include Sections.nsh

!define PRODUCT "Penwick vector files"
!define HOST "Adobe Illustrator CS6"
!define HOST_FOLDER "Adobe Illustrator CS6 (64 Bit)"
!define PROGRAM "Support Files\Contents\Windows\Illustrator.exe"
!define UNINSTALL_KEYS "Software\Microsoft\Windows\CurrentVersion\Uninstall"
; Verbs in this place stand in the menu of every file of an ending, whatever program opens it.
!define VERBS "Software\Classes\SystemFileAssociations"
!define VERB "Penwick.Show"
!define UNINSTALL_KEY "${UNINSTALL_KEYS}\PenwickVectorFiles"

Name "${PRODUCT}"
OutFile "${OUT}"
; The last part is added to whatever folder the user chooses.
InstallDir "$PROGRAMFILES64\Adobe\${HOST_FOLDER}\Plug-ins\Penwick"
BrandingText "${PRODUCT} ${VERSION}"

VIProductVersion "${VERSION_WORDS}"
VIAddVersionKey ProductName "${PRODUCT}"
VIAddVersionKey ProductVersion "${VERSION}"
VIAddVersionKey FileVersion "${VERSION}"
VIAddVersionKey FileDescription "Installs the plug-in that opens Penwick recordings"
VIAddVersionKey LegalCopyright "MIT licence"

!define MUI_ABORTWARNING
!define MUI_WELCOMEPAGE_TEXT "This puts the plug-in for ${HOST} (64 Bit) into its plug-ins folder and the brush library into your own folder.$\r$\n$\r$\nPlease close Illustrator before you go on."
!define MUI_DIRECTORYPAGE_TEXT_TOP "Setup puts the plug-in into a folder of its own inside Illustrator's plug-ins folder. If yours lies elsewhere, choose the folder that is called Plug-ins."
!define MUI_DIRECTORYPAGE_TEXT_DESTINATION "Folder for the plug-in"
!define MUI_FINISHPAGE_TEXT "Start Illustrator and open a recording with File > Open.$\r$\n$\r$\nIf others use this computer, each of them takes Start > ${PRODUCT} > Put the brush library in place once."
!define MUI_FINISHPAGE_SHOWREADME "$INSTDIR\GUIDE.txt"
!define MUI_FINISHPAGE_SHOWREADME_TEXT "Show the guide"

!define MUI_COMPONENTSPAGE_NODESC
!define MUI_COMPONENTSPAGE_TEXT_TOP "$\"Show with Penwick$\" adds a line to the menu that a right click on a recording opens: it shows the drawing in the browser. What a double-click does stays as it is."

!insertmacro MUI_PAGE_WELCOME
!insertmacro MUI_PAGE_COMPONENTS
!define MUI_PAGE_CUSTOMFUNCTION_LEAVE doubtFolder
!insertmacro MUI_PAGE_DIRECTORY
!insertmacro MUI_PAGE_INSTFILES
!insertmacro MUI_PAGE_FINISH
!insertmacro MUI_UNPAGE_CONFIRM
!insertmacro MUI_UNPAGE_INSTFILES
!insertmacro MUI_LANGUAGE English

; The host's plug-ins folder, or empty where the host is not found.
Var HostPlugins
; The topmost folder that the installation makes, or empty where all are there.
Var MadeFolder

; Looks through the list of installed programs, in the registry view that is set. An entry names the
; 64-bit host's folder, or the one that both the 32-bit and the 64-bit host lie in.
Function searchUninstallKeys
  StrCpy $0 0
  ${Do}
    EnumRegKey $1 HKLM "${UNINSTALL_KEYS}" $0
    ${If} $1 == ""
      ${Break}
    ${EndIf}
    IntOp $0 $0 + 1
    ReadRegStr $2 HKLM "${UNINSTALL_KEYS}\$1" "DisplayName"
    StrLen $3 "${HOST}"
    StrCpy $2 $2 $3
    ReadRegStr $4 HKLM "${UNINSTALL_KEYS}\$1" "InstallLocation"
    ${GetFileName} "$4" $5
    ${If} $2 == "${HOST}"
    ${AndIf} $4 != ""
      ${If} ${FileExists} "$4\${HOST_FOLDER}\Plug-ins\*.*"
        StrCpy $HostPlugins "$4\${HOST_FOLDER}\Plug-ins"
      ${ElseIf} $5 == "${HOST_FOLDER}"
      ${AndIf} ${FileExists} "$4\Plug-ins\*.*"
        StrCpy $HostPlugins "$4\Plug-ins"
      ${EndIf}
    ${EndIf}
  ${LoopUntil} $HostPlugins != ""
FunctionEnd

Function .onInit
  SetRegView 32
  Call searchUninstallKeys
  SetRegView 64
  ${If} $HostPlugins == ""
    Call searchUninstallKeys
  ${EndIf}
  ; A folder given with /D= comes first, then the one where the plug-in is already.
  ${If} $INSTDIR == "$PROGRAMFILES64\Adobe\${HOST_FOLDER}\Plug-ins\Penwick"
    ReadRegStr $0 HKLM "${UNINSTALL_KEY}" "InstallLocation"
    ${If} $0 != ""
    ${AndIf} ${FileExists} "$0\kvoexportfile.aip"
      StrCpy $INSTDIR "$0"
    ${ElseIf} $HostPlugins != ""
      StrCpy $INSTDIR "$HostPlugins\Penwick"
    ${EndIf}
  ${EndIf}
  Call intoOwnFolder
  Call chooseVerb
FunctionEnd

; In a folder that holds other things the plug-in gets one of its own.
Function intoOwnFolder
  StrCpy $0 $INSTDIR "" -1
  ${If} $0 == "\"
    StrCpy $INSTDIR $INSTDIR -1
  ${EndIf}
  ${If} ${FileExists} "$INSTDIR\kvoexportfile.aip"
    Return
  ${EndIf}
  FindFirst $0 $1 "$INSTDIR\*.*"
  ${Do}
    ${If} $1 != "."
    ${AndIf} $1 != ".."
      ${Break}
    ${EndIf}
    FindNext $0 $1
  ${Loop}
  FindClose $0
  ${If} $1 != ""
    StrCpy $INSTDIR "$INSTDIR\Penwick"
  ${EndIf}
FunctionEnd

Function doubtFolder
  Call intoOwnFolder
  ${IfNot} ${FileExists} "$INSTDIR\..\*.*"
    MessageBox MB_YESNO|MB_ICONQUESTION "This folder does not exist yet. Illustrator finds plug-ins only in its own Plug-ins folder and in folders inside it.$\r$\n$\r$\nGo on with$\r$\n$INSTDIR ?" IDYES goOn
    Abort
    goOn:
  ${EndIf}
FunctionEnd

; A program that runs, or a module that is loaded, cannot be opened for writing.
!macro HostCheck un
Function ${un}testInUse
  ; $0: a file; sets $1 when it is in use
  ${If} ${FileExists} "$0"
    ClearErrors
    FileOpen $2 "$0" a
    ${If} ${Errors}
      StrCpy $1 "yes"
    ${Else}
      FileClose $2
    ${EndIf}
  ${EndIf}
FunctionEnd

; The host lies in one of the folders above the plug-in, where it is usually, or where it is listed.
Function ${un}waitForHost
  ${Do}
    StrCpy $1 "no"
    StrCpy $3 "$INSTDIR"
    ${DoUntil} $3 == ""
      StrCpy $0 "$3\${PROGRAM}"
      Call ${un}testInUse
      ${GetParent} "$3" $3
    ${Loop}
    StrCpy $0 "$PROGRAMFILES64\Adobe\${HOST_FOLDER}\${PROGRAM}"
    Call ${un}testInUse
    ${If} $HostPlugins != ""
      StrCpy $0 "$HostPlugins\..\${PROGRAM}"
      Call ${un}testInUse
    ${EndIf}
    StrCpy $0 "$INSTDIR\kvoexportfile.aip"
    Call ${un}testInUse
    StrCpy $0 "$INSTDIR\penwick.exe"
    Call ${un}testInUse
    ${If} $1 == "no"
      ${Break}
    ${EndIf}
    MessageBox MB_RETRYCANCEL|MB_ICONEXCLAMATION "Illustrator or penwick.exe is running. Please close it, then try again." /SD IDCANCEL IDRETRY again
    SetErrorLevel 3
    Quit
    again:
  ${Loop}
FunctionEnd
!macroend
!insertmacro HostCheck ""
!insertmacro HostCheck "un."

; An update keeps what the first installation made.
Function findMadeFolder
  ReadRegStr $0 HKLM "${UNINSTALL_KEY}" "InstallLocation"
  ${If} $0 == $INSTDIR
    ReadRegStr $MadeFolder HKLM "${UNINSTALL_KEY}" "MadeFolder"
  ${EndIf}
  StrCpy $0 "$INSTDIR"
  ${DoUntil} $0 == ""
    ${If} ${FileExists} "$0\*.*"
      ${Break}
    ${EndIf}
    StrCpy $MadeFolder "$0"
    ${GetParent} "$0" $0
  ${Loop}
FunctionEnd

; For each of the endings that recordings have.
!macro ForEachEnding Do
  !insertmacro ${Do} ".pnx"
  !insertmacro ${Do} ".eli"
  !insertmacro ${Do} ".kvo"
  !insertmacro ${Do} ".inkml"
!macroend
!macro AddVerb ending
  WriteRegStr HKLM "${VERBS}\${ending}\shell\${VERB}" "" "Show with Penwick"
  WriteRegStr HKLM "${VERBS}\${ending}\shell\${VERB}\command" "" '"$INSTDIR\penwick.exe" view --messages-in-pages "%1"'
!macroend
; What others have put there stays.
!macro RemoveVerb ending
  DeleteRegKey HKLM "${VERBS}\${ending}\shell\${VERB}"
  DeleteRegKey /ifempty HKLM "${VERBS}\${ending}\shell"
  DeleteRegKey /ifempty HKLM "${VERBS}\${ending}"
!macroend

Section "Plug-in, command and brush library"
  SectionIn RO
  SetRegView 64
  SetShellVarContext all
  Call waitForHost
  Call findMadeFolder

  SetOutPath "$INSTDIR"
  SetOverwrite try
  ClearErrors
  File "${FILES}/kvoexportfile.aip"
  File "${FILES}/penwick.exe"
  File "${FILES}/brush_pressure.ai"
  File "${FILES}/place-brush-library.cmd"
  File "${FILES}/GUIDE.txt"
  File "${FILES}/LICENSE.txt"
  File "${FILES}/THIRD-PARTY.txt"
  File "${FILES}/signature.pnx"
  ${If} ${Errors}
    SetErrorLevel 2
    MessageBox MB_OK|MB_ICONSTOP "The files could not be written to$\r$\n$INSTDIR" /SD IDOK
    Quit
  ${EndIf}
  WriteUninstaller "$INSTDIR\uninstall.exe"

  CreateDirectory "$SMPROGRAMS\${PRODUCT}"
  CreateShortcut "$SMPROGRAMS\${PRODUCT}\Guide.lnk" "$INSTDIR\GUIDE.txt"
  CreateShortcut "$SMPROGRAMS\${PRODUCT}\Put the brush library in place.lnk" "$INSTDIR\place-brush-library.cmd"
  CreateShortcut "$SMPROGRAMS\${PRODUCT}\Uninstall.lnk" "$INSTDIR\uninstall.exe"

  WriteRegStr HKLM "${UNINSTALL_KEY}" "DisplayName" "${PRODUCT}"
  WriteRegStr HKLM "${UNINSTALL_KEY}" "DisplayVersion" "${VERSION}"
  WriteRegStr HKLM "${UNINSTALL_KEY}" "Publisher" "${PRODUCT}"
  WriteRegStr HKLM "${UNINSTALL_KEY}" "InstallLocation" "$INSTDIR"
  WriteRegStr HKLM "${UNINSTALL_KEY}" "MadeFolder" "$MadeFolder"
  WriteRegStr HKLM "${UNINSTALL_KEY}" "UninstallString" '"$INSTDIR\uninstall.exe"'
  WriteRegStr HKLM "${UNINSTALL_KEY}" "QuietUninstallString" '"$INSTDIR\uninstall.exe" /S'
  WriteRegDWORD HKLM "${UNINSTALL_KEY}" "NoModify" 1
  WriteRegDWORD HKLM "${UNINSTALL_KEY}" "NoRepair" 1
  SectionGetSize 0 $0
  WriteRegDWORD HKLM "${UNINSTALL_KEY}" "EstimatedSize" $0

  ; The brush library of the user who installs; one that is there already is the user's own.
  SetShellVarContext current
  SetOutPath "$LOCALAPPDATA\Penwick"
  SetOverwrite off
  File "${FILES}/brush_pressure.ai"
  SetOutPath "$INSTDIR"
  ; The next section adds it again where it is wanted.
  !insertmacro ForEachEnding RemoveVerb
SectionEnd

Section /o "Show with Penwick" verbSection
  !insertmacro ForEachEnding AddVerb
SectionEnd

; It is chosen where it is there already, or where a silent run asks for it.
Function chooseVerb
  ReadRegStr $0 HKLM "${VERBS}\.pnx\shell\${VERB}" ""
  ${GetParameters} $1
  ClearErrors
  ${GetOptions} $1 "/SHOW" $2
  ${IfNot} ${Errors}
  ${OrIf} $0 != ""
    !insertmacro SelectSection ${verbSection}
  ${EndIf}
FunctionEnd

Function un.sameBytes
  ; $R1 and $R2: two files; $R0 becomes "yes" when they hold the same bytes
  StrCpy $R0 "no"
  ClearErrors
  FileOpen $0 "$R1" r
  FileOpen $1 "$R2" r
  ${If} ${Errors}
    Return
  ${EndIf}
  ${Do}
    ClearErrors
    StrCpy $2 "end"
    FileReadByte $0 $2
    ${If} ${Errors}
      StrCpy $2 "end"
    ${EndIf}
    ClearErrors
    StrCpy $3 "end"
    FileReadByte $1 $3
    ${If} ${Errors}
      StrCpy $3 "end"
    ${EndIf}
    ${If} $2 != $3
      ${Break}
    ${EndIf}
    ${If} $2 == "end"
      StrCpy $R0 "yes"
      ${Break}
    ${EndIf}
  ${Loop}
  FileClose $0
  FileClose $1
FunctionEnd

; Removes the folder of the plug-in and those above it that the installation made, if they are empty.
Function un.removeFolders
  StrCpy $0 "$INSTDIR"
  ${DoUntil} $MadeFolder == ""
    RMDir "$0"
    ${If} $0 == $MadeFolder
    ${OrIf} ${FileExists} "$0\*.*"
      ${Break}
    ${EndIf}
    ${GetParent} "$0" $0
  ${Loop}
FunctionEnd

; The user's library goes only while it is still the one that was put there.
Function un.removeLibrary
  SetShellVarContext current
  InitPluginsDir
  File "/oname=$PLUGINSDIR\brush_pressure.ai" "${FILES}/brush_pressure.ai"
  StrCpy $R1 "$LOCALAPPDATA\Penwick\brush_pressure.ai"
  StrCpy $R2 "$PLUGINSDIR\brush_pressure.ai"
  Call un.sameBytes
  ${If} $R0 == "yes"
    Delete "$LOCALAPPDATA\Penwick\brush_pressure.ai"
    RMDir "$LOCALAPPDATA\Penwick"
  ${EndIf}
FunctionEnd

Section Uninstall
  SetRegView 64
  Call un.waitForHost

  ClearErrors
  Delete "$INSTDIR\kvoexportfile.aip"
  Delete "$INSTDIR\penwick.exe"
  Delete "$INSTDIR\brush_pressure.ai"
  Delete "$INSTDIR\place-brush-library.cmd"
  Delete "$INSTDIR\GUIDE.txt"
  Delete "$INSTDIR\LICENSE.txt"
  Delete "$INSTDIR\THIRD-PARTY.txt"
  Delete "$INSTDIR\signature.pnx"
  ${If} ${Errors}
    SetErrorLevel 2
    MessageBox MB_OK|MB_ICONSTOP "Not all files could be removed from$\r$\n$INSTDIR" /SD IDOK
    Quit
  ${EndIf}
  Delete "$INSTDIR\uninstall.exe"
  SetOutPath "$TEMP"

  ; A copy that was put elsewhere before is removed by itself: the rest belongs to the last one.
  ReadRegStr $0 HKLM "${UNINSTALL_KEY}" "InstallLocation"
  ${If} $0 != $INSTDIR
    RMDir "$INSTDIR"
    Quit
  ${EndIf}
  ReadRegStr $MadeFolder HKLM "${UNINSTALL_KEY}" "MadeFolder"
  Call un.removeFolders
  Call un.removeLibrary
  !insertmacro ForEachEnding RemoveVerb

  SetShellVarContext all
  Delete "$SMPROGRAMS\${PRODUCT}\Guide.lnk"
  Delete "$SMPROGRAMS\${PRODUCT}\Put the brush library in place.lnk"
  Delete "$SMPROGRAMS\${PRODUCT}\Uninstall.lnk"
  RMDir "$SMPROGRAMS\${PRODUCT}"
  DeleteRegKey HKLM "${UNINSTALL_KEY}"
SectionEnd
