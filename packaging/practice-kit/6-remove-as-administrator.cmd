@echo off
setlocal
set key=HKLM\SOFTWARE\3CX
reg query "%key%\CRM" /v CallNotifierPath /reg:32 2>nul | find "%~dp0CorvaneTo3CX.exe" >nul
if errorlevel 1 goto others
reg delete "%key%" /f /reg:32 >nul
if errorlevel 1 goto refused
echo Done. Now delete the folder.
pause
exit /b 0
:others
echo The practice 3CX is not set up here, or something else is by now. Nothing was changed.
pause
exit /b 1
:refused
echo Windows refused. Right-click this file and choose "Run as administrator".
pause
exit /b 1
