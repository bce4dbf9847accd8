@echo off
rem What the practice GoldMine and the program left for this user.
"%~dp0gmw.exe" /UnregServer
reg delete "HKCU\SOFTWARE\Halvorn Systems\CorvaneTo3CX" /f >nul 2>nul
del "%ProgramData%\Halvorn Systems\CorvaneTo3CX\CorvaneTo3CX.log" 2>nul
rd "%ProgramData%\Halvorn Systems\CorvaneTo3CX" "%ProgramData%\Halvorn Systems" 2>nul
echo Done. Go on with 6-remove-as-administrator.cmd.
pause
