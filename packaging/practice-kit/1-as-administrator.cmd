@echo off
rem Tells the program where the practice 3CX stands, in the 32-bit view of the registry.
setlocal
set key=HKLM\SOFTWARE\3CX
reg query "%key%" /v CorvanePractice /reg:32 >nul 2>nul
if not errorlevel 1 goto write
reg query "%key%" /reg:32 >nul 2>nul
if not errorlevel 1 goto real
:write
reg add "%key%" /v CorvanePractice /t REG_SZ /d 1 /f /reg:32 >nul
if errorlevel 1 goto refused
reg add "%key%\3CXPhone for Windows" /v Path /t REG_SZ /d "%~dp0\" /f /reg:32 >nul
if errorlevel 1 goto refused
reg add "%key%\CRM" /v CallNotifierPath /t REG_SZ /d "%~dp0CorvaneTo3CX.exe" /f /reg:32 >nul
if errorlevel 1 goto refused
reg add "%key%\CRM" /v CommandLineAPILogPath /t REG_SZ /d "%~dp0\" /f /reg:32 >nul
if errorlevel 1 goto refused
type nul >"%~dp0CommandLineAPIPlugin.dll"
echo The practice 3CX is set up. Go on with 2-start.cmd.
pause
exit /b 0
:real
echo 3CX or Corvane to 3CX is set up on this computer. Practise on another one.
pause
exit /b 1
:refused
echo Windows refused. Right-click this file and choose "Run as administrator".
pause
exit /b 1
