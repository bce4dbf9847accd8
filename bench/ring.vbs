' A ringing call as a capable administrator would handle it without the program: asks GoldMine who
' it is and for whom it works, finds the caller, tells the user, and writes a log.
'   cscript //nologo ring.vbs <digits> <number as GoldMine has it> <log file>
Option Explicit

Dim goldMine, logFile
Set goldMine = CreateObject("PracticeGoldMine.UserInterface")
Set logFile = CreateObject("Scripting.FileSystemObject").OpenTextFile(WScript.Arguments(2), 8, True)

Tell "started for " & WScript.Arguments(0)
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

Function Send(command)
    Dim reply
    Set reply = CreateObject("MSXML2.DOMDocument")
    reply.async = False
    If Not reply.loadXML(goldMine.ExecuteCommand(command)) Then
        Tell "no reply to " & command
        WScript.Quit 1
    End If
    Set Send = reply.documentElement
End Function

Function Macro(name)
    Macro = Send("<GMAPI call=""Macro""><data name=""Macro"">" & name & "</data></GMAPI>") _
        .selectSingleNode("//status").text
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
