' A ringing call as a capable administrator would handle it without the program: asks GoldMine who
' it is and for whom it works, finds the caller, tells the user, and writes a log.
'   cscript //nologo ring.vbs <digits> <number as GoldMine has it> <log file>
Option Explicit

Dim goldMine, logFile
Set logFile = CreateObject("Scripting.FileSystemObject").OpenTextFile(WScript.Arguments(2), 8, True)

Tell "started for " & WScript.Arguments(0)
' Making the object would start a GoldMine that nobody opened.
If Not GoldMineRuns Then
    Tell "GoldMine is not running"
    WScript.Quit 0
End If
Set goldMine = CreateObject("PracticeGoldMine.UserInterface")
Tell "GoldMine " & Macro("&amp;Version") & " in " & Macro("&amp;ProgramDataDir")
Dim user
user = Macro("&amp;UserName")
If user = "" Then
    Tell "nobody is logged in"
    WScript.Quit 1
End If
If Not CallerIsShown Then
    Send "<GMAPI call=""CallerID""><data name=""Phone"">" & WScript.Arguments(1) & "</data>" & _
        "<data name=""Description""></data><data name=""DisplayDialog"">1</data>" & _
        "<data name=""All"">1</data><data name=""UPhone"">0</data></GMAPI>"
End If
Send "<GMAPI call=""StatusMsg""><data name=""Message"">Found " & WScript.Arguments(1) & _
    "</data><data name=""Delay"">10</data></GMAPI>"
Tell "found for " & user
logFile.Close

Function GoldMineRuns
    Dim processes
    Set processes = GetObject("winmgmts:\\.\root\cimv2").ExecQuery( _
        "Select Name from Win32_Process Where Name = 'gmw.exe'")
    GoldMineRuns = processes.Count > 0
End Function

' The status of the reply, unescaped as far as numbers and names need it.
Function Send(command)
    Dim reply, first, last
    reply = goldMine.ExecuteCommand(command)
    first = InStr(reply, "<status code=""1"">")
    last = InStr(reply, "</status>")
    If first = 0 Or last = 0 Then
        Tell "no success: " & command
        WScript.Quit 1
    End If
    first = first + Len("<status code=""1"">")
    Send = Replace(Mid(reply, first, last - first), "&amp;", "&")
End Function

Function Macro(name)
    Macro = Send("<GMAPI call=""Macro""><data name=""Macro"">" & name & "</data></GMAPI>")
End Function

Function CallerIsShown
    Dim phone
    CallerIsShown = False
    For Each phone In Array("Phone1", "Phone2", "Phone3")
        If DigitsOf(Macro("&amp;" & phone)) = WScript.Arguments(0) Then
            CallerIsShown = True
            Exit Function
        End If
    Next
End Function

Function DigitsOf(text)
    Dim place
    DigitsOf = ""
    For place = 1 To Len(text)
        If InStr("0123456789", Mid(text, place, 1)) > 0 Then DigitsOf = DigitsOf & Mid(text, place, 1)
    Next
End Function

Sub Tell(text)
    logFile.WriteLine Now & " " & text
End Sub
