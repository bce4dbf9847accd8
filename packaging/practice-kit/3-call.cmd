@echo off
"%~dp0ring.exe" "%~dp0CorvaneTo3CX.exe" call 5551234567
if errorlevel 1 pause
