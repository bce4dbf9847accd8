@echo off
start "" "%~dp0gmw.exe"
