@echo off
"%~dp0gmw.exe" /RegServer
if errorlevel 1 goto refused
start "" "%~dp0gmw.exe" /Fresh
exit /b 0
:refused
echo The practice GoldMine cannot be registered; is the real one installed on this computer?
pause
exit /b 1
