@echo off
rem Registra las dos DLL; "registrar.cmd /quitar" las retira. Para todos los usuarios: como administrador.
setlocal
set ACCION=
if /i "%~1"=="/quitar" set ACCION=/u
set CARPETA=%~dp0
if exist "%SystemRoot%\SysWOW64\regsvr32.exe" (
  "%SystemRoot%\System32\regsvr32.exe" /s %ACCION% "%CARPETA%x64\Zentaro.dll" || goto mal
  "%SystemRoot%\SysWOW64\regsvr32.exe" /s %ACCION% "%CARPETA%x86\Zentaro.dll" || goto mal
) else (
  "%SystemRoot%\System32\regsvr32.exe" /s %ACCION% "%CARPETA%x86\Zentaro.dll" || goto mal
)
echo Listo.
exit /b 0
:mal
echo No se pudo: regsvr32 termino con el codigo %errorlevel%.
exit /b 1
