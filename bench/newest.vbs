' The newest file of a folder by the scripting runtime: cscript //nologo newest.vbs <folder>
Option Explicit

Dim file, newest, modified
modified = 0
For Each file In CreateObject("Scripting.FileSystemObject").GetFolder(WScript.Arguments(0)).Files
    If file.DateLastModified > modified Then
        modified = file.DateLastModified
        newest = file.Name
    End If
Next
WScript.Echo newest
