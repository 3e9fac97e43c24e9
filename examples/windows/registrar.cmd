@echo off
rem Registra las dos DLL, como administrador para todos los usuarios; "registrar.cmd /quitar" las retira.
rem Escrito para Windows y no probado en uno de verdad: solo en Wine de 64 bits.
setlocal
set ACCION=
if /i "%~1"=="/quitar" set ACCION=/u
set CARPETA=%~dp0
set DE64=%SystemRoot%\System32\regsvr32.exe
set DE32=%SystemRoot%\SysWOW64\regsvr32.exe
rem Un programa de 32 bits, como un instalador, ve System32 de 64 bits bajo otro nombre.
if defined PROCESSOR_ARCHITEW6432 set DE64=%SystemRoot%\Sysnative\regsvr32.exe
if "%PROCESSOR_ARCHITECTURE%%PROCESSOR_ARCHITEW6432%"=="x86" goto solo32
"%DE64%" /s %ACCION% "%CARPETA%x64\Zentaro.dll"
if errorlevel 1 goto mal
if not exist "%DE32%" goto listo
"%DE32%" /s %ACCION% "%CARPETA%x86\Zentaro.dll"
if errorlevel 1 goto mal
goto listo
:solo32
"%DE64%" /s %ACCION% "%CARPETA%x86\Zentaro.dll"
if errorlevel 1 goto mal
:listo
echo Listo.
exit /b 0
:mal
echo No se pudo: regsvr32 termino con el codigo %errorlevel%.
exit /b 1
