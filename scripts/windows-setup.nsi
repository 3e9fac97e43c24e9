; The setup program for Windows, made by scripts/windows-setup. Started as usual it installs for the user; started as administrator,
; for everybody. /S asks nothing; /D=FOLDER, last and without quotes, names another folder.
Unicode true
Target ${STUB}-unicode
Name "Zentaro"
OutFile "${OUT}"
SetCompressor /SOLID lzma
RequestExecutionLevel user
ShowInstDetails nevershow

!include LogicLib.nsh
!include MUI2.nsh
!include x64.nsh
!include FileFunc.nsh

!define MUI_ABORTWARNING
!insertmacro MUI_PAGE_WELCOME
!insertmacro MUI_PAGE_INSTFILES
!insertmacro MUI_PAGE_FINISH
!insertmacro MUI_UNPAGE_CONFIRM
!insertmacro MUI_UNPAGE_INSTFILES
!insertmacro MUI_LANGUAGE "Spanish"
!insertmacro MUI_LANGUAGE "English"

LangString printer ${LANG_SPANISH} "Impresora virtual"
LangString printer ${LANG_ENGLISH} "Virtual printer"
LangString manual ${LANG_SPANISH} "Manual"
LangString manual ${LANG_ENGLISH} "Manual (Spanish)"
LangString remove ${LANG_SPANISH} "Desinstalar Zentaro"
LangString remove ${LANG_ENGLISH} "Uninstall Zentaro"
LangString noDll ${LANG_SPANISH} "No se pudo registrar $R8 (regsvr32 terminó con $0)."
LangString noDll ${LANG_ENGLISH} "$R8 could not be registered (regsvr32 ended with $0)."
LangString kept ${LANG_SPANISH} "Se conservan la configuración (registro, TRV) y los libros en $R7."
LangString kept ${LANG_ENGLISH} "Settings (registry, TRV) and the books in $R7 were kept."
LangString longPath ${LANG_SPANISH} "PATH es muy largo y no se cambió: agregue $INSTDIR\$R9 a mano."
LangString longPath ${LANG_ENGLISH} "PATH is very long and was left alone: add $INSTDIR\$R9 by hand."

!define entry "Software\Microsoft\Windows\CurrentVersion\Uninstall\Zentaro"

; For whom: the registry's root (SHCTX), the start menu, the folder of the books in $R7, and the folder of this system's width in $R9.
!macro forWhom
  UserInfo::GetAccountType
  Pop $0
  ${If} $0 == "Admin"
    SetShellVarContext all
  ${Else}
    SetShellVarContext current
  ${EndIf}
  StrCpy $R9 x86
  ${If} ${RunningX64}
    StrCpy $R9 x64
  ${EndIf}
!macroend

!macro booksFolder
  StrCpy $R7 "$LOCALAPPDATA\zentaro"  ; with the context of all it is that of the machine
!macroend

; regsvr32 of a width on a DLL of that width, where this Windows has it.
!macro regsvr width arguments
  StrCpy $R6 "$SYSDIR\regsvr32.exe"
  ${If} ${RunningX64}
    !if ${STUB} == x86
      !if ${width} == x64
        StrCpy $R6 "$WINDIR\Sysnative\regsvr32.exe"
      !endif
    !else
      !if ${width} == x86
        StrCpy $R6 "$WINDIR\SysWOW64\regsvr32.exe"
      !endif
    !endif
  ${ElseIf} ${width} == x64
    StrCpy $R6 ""
  ${EndIf}
  StrCpy $0 0
  StrCpy $R8 "${width}\Zentaro.dll"
  ${If} $R6 != ""
  ${AndIf} ${FileExists} $R6
    ExecWait '"$R6" /s ${arguments} "$INSTDIR\${width}\Zentaro.dll"' $0
  ${EndIf}
!macroend

; A file in use cannot be overwritten, but it can be renamed; what is left of it goes with the next start of Windows.
!macro makeRoom file
  ${If} ${FileExists} "$INSTDIR\${file}"
    Delete "$INSTDIR\${file}.old"
    ClearErrors
    Delete "$INSTDIR\${file}"
    ${If} ${Errors}
      Rename "$INSTDIR\${file}" "$INSTDIR\${file}.old"
      Delete /REBOOTOK "$INSTDIR\${file}.old"
    ${EndIf}
  ${EndIf}
!macroend

!macro pathKey
  StrCpy $R5 "Environment"
  UserInfo::GetAccountType
  Pop $0
  ${If} $0 == "Admin"
    StrCpy $R5 "SYSTEM\CurrentControlSet\Control\Session Manager\Environment"
  ${EndIf}
!macroend

Function .onInit
  !insertmacro forWhom
  ${If} $INSTDIR == ""
    StrCpy $INSTDIR "$LOCALAPPDATA\Programs\Zentaro"
    UserInfo::GetAccountType
    Pop $0
    ${If} $0 == "Admin"
      StrCpy $INSTDIR "$PROGRAMFILES\Zentaro"
      ${If} ${RunningX64}
        StrCpy $INSTDIR "$PROGRAMFILES64\Zentaro"
      ${EndIf}
    ${EndIf}
  ${EndIf}
FunctionEnd

Section
  !insertmacro forWhom
  !insertmacro booksFolder
  !insertmacro regsvr x64 /u
  !insertmacro regsvr x86 /u
  !insertmacro makeRoom x64\Zentaro.dll
  !insertmacro makeRoom x86\Zentaro.dll
  !insertmacro makeRoom x64\zentaro_c.dll
  !insertmacro makeRoom x86\zentaro_c.dll
  !insertmacro makeRoom x64\zentaro-printer.exe
  !insertmacro makeRoom x86\zentaro-printer.exe
  !insertmacro makeRoom x64\zentaro.exe
  !insertmacro makeRoom x86\zentaro.exe
  SetOutPath "$INSTDIR"
  File /r "${TREE}\*.*"
  !insertmacro regsvr x64 ""
  ${If} $0 != 0
    MessageBox MB_OK|MB_ICONEXCLAMATION $(noDll) /SD IDOK
    SetErrorLevel 1
  ${EndIf}
  !insertmacro regsvr x86 ""
  ${If} $0 != 0
    MessageBox MB_OK|MB_ICONEXCLAMATION $(noDll) /SD IDOK
    SetErrorLevel 1
  ${EndIf}

  ; Everybody's books: each account must be able to change them.
  UserInfo::GetAccountType
  Pop $0
  ${If} $0 == "Admin"
    CreateDirectory "$R7"
    nsExec::Exec '"$SYSDIR\icacls.exe" "$R7" /grant *S-1-5-32-545:(OI)(CI)M'
    Pop $0
  ${EndIf}

  CreateDirectory "$SMPROGRAMS\Zentaro"
  CreateShortcut "$SMPROGRAMS\Zentaro\$(printer).lnk" "$INSTDIR\$R9\zentaro-printer.exe" "--tcp 9600 --web --open"
  CreateShortcut "$SMPROGRAMS\Zentaro\$(manual).lnk" "$INSTDIR\manual\manual-windows.html"
  ${If} ${FileExists} "$INSTDIR\$R9\zentaro.exe"
    CreateShortcut "$SMPROGRAMS\Zentaro\Probar la impresora.lnk" "$SYSDIR\cmd.exe" '/k ""$INSTDIR\$R9\zentaro.exe" doctor"'
  ${EndIf}
  CreateShortcut "$SMPROGRAMS\Zentaro\$(remove).lnk" "$INSTDIR\uninstall.exe"

  ; What does not fit into a text of this program would be cut: then it is left alone.
  !insertmacro pathKey
  ReadRegStr $1 SHCTX "$R5" "Path"
  StrLen $2 $1
  ${If} $2 > 800
    MessageBox MB_OK|MB_ICONINFORMATION $(longPath) /SD IDOK
  ${Else}
    Push "$1;"
    Push "$INSTDIR\$R9;"
    Call contains
    Pop $3
    ${If} $3 == 0
      ${If} $1 != ""
        StrCpy $1 "$1;"
      ${EndIf}
      WriteRegExpandStr SHCTX "$R5" "Path" "$1$INSTDIR\$R9"
      SendMessage ${HWND_BROADCAST} ${WM_SETTINGCHANGE} 0 "STR:Environment" /TIMEOUT=1000
    ${EndIf}
  ${EndIf}

  WriteUninstaller "$INSTDIR\uninstall.exe"
  WriteRegStr SHCTX "${entry}" "DisplayName" "Zentaro"
  WriteRegStr SHCTX "${entry}" "DisplayVersion" "${VERSION}"
  WriteRegStr SHCTX "${entry}" "Publisher" "Zentaro"
  WriteRegStr SHCTX "${entry}" "UninstallString" '"$INSTDIR\uninstall.exe"'
  WriteRegStr SHCTX "${entry}" "QuietUninstallString" '"$INSTDIR\uninstall.exe" /S'
  WriteRegStr SHCTX "${entry}" "InstallLocation" "$INSTDIR"
  WriteRegDWORD SHCTX "${entry}" "NoModify" 1
  WriteRegDWORD SHCTX "${entry}" "NoRepair" 1
SectionEnd

; Whether the first text pushed holds the second one: 1 or 0.
!macro containsFunction name
Function ${name}
  Exch $R1
  Exch
  Exch $R2
  Push $R3
  Push $R4
  StrLen $R3 $R1
  ${Do}
    StrCpy $R4 $R2 $R3
    ${If} $R4 == $R1
      StrCpy $R1 1
      ${ExitDo}
    ${EndIf}
    ${If} $R2 == ""
      StrCpy $R1 0
      ${ExitDo}
    ${EndIf}
    StrCpy $R2 $R2 "" 1
  ${Loop}
  Pop $R4
  Pop $R3
  Pop $R2
  Exch $R1
FunctionEnd
!macroend
!insertmacro containsFunction contains

Function un.onInit
  !insertmacro forWhom
FunctionEnd

Section Uninstall
  !insertmacro forWhom
  !insertmacro booksFolder
  ; A service that runs the program; where there is none, or no right to take it away, nothing happens.
  nsExec::Exec '"$INSTDIR\$R9\zentaro.exe" serve remove'
  Pop $0
  !insertmacro regsvr x64 /u
  !insertmacro regsvr x86 /u

  ; Our part of PATH, wherever it stands in it.
  !insertmacro pathKey
  ReadRegStr $1 SHCTX "$R5" "Path"
  StrLen $2 $1
  ${If} $2 <= 1000
    StrCpy $3 "$INSTDIR\$R9"
    StrLen $4 $3
    StrCpy $5 ""
    ${Do}
      StrCpy $6 $1 $4
      ${If} $6 == $3
        StrCpy $6 $1 1 $4
        ${If} $6 == ""
        ${OrIf} $6 == ";"
          StrCpy $1 $1 "" $4
          StrCpy $6 $1 1
          ${If} $6 == ";"
            StrCpy $1 $1 "" 1
          ${EndIf}
        ${EndIf}
      ${EndIf}
      ${If} $1 == ""
        ${ExitDo}
      ${EndIf}
      StrCpy $6 $1 1
      StrCpy $5 "$5$6"
      StrCpy $1 $1 "" 1
    ${Loop}
    StrCpy $6 $5 1 -1
    ${If} $6 == ";"
      StrCpy $5 $5 -1
    ${EndIf}
    ${If} $5 == ""
      DeleteRegValue SHCTX "$R5" "Path"
    ${Else}
      WriteRegExpandStr SHCTX "$R5" "Path" "$5"
    ${EndIf}
    SendMessage ${HWND_BROADCAST} ${WM_SETTINGCHANGE} 0 "STR:Environment" /TIMEOUT=1000
  ${EndIf}

  Delete "$SMPROGRAMS\Zentaro\*.lnk"
  RMDir "$SMPROGRAMS\Zentaro"
  RMDir /r /REBOOTOK "$INSTDIR\x64"
  RMDir /r /REBOOTOK "$INSTDIR\x86"
  RMDir /r "$INSTDIR\ejemplos"
  RMDir /r "$INSTDIR\manual"
  Delete "$INSTDIR\*.tlb"
  Delete "$INSTDIR\*.txt"
  Delete "$INSTDIR\*.h"
  Delete "$INSTDIR\*.cmd"
  Delete "$INSTDIR\uninstall.exe"
  RMDir "$INSTDIR"
  DeleteRegKey SHCTX "${entry}"
  MessageBox MB_OK|MB_ICONINFORMATION $(kept) /SD IDOK
SectionEnd
