Attribute VB_Name = "Samples"
' A few families of the library at work, called through its type library:
' each answer is the function's value, and a failing status is raised as a
' run-time error. Put CorvaneSupportKit0100.dll beside the program.
Option Explicit

Private Const HKEY_LOCAL_MACHINE As Long = &H80000002
Private Const CSIDL_APPDATA As Long = 26

Private Function Row(ByVal Label As String, ByVal Value As String) As String
    Row = "  " & Left$(Label & Space$(28), 28) & Value & vbCrLf
End Function

Public Function RunSamples() As String
    Dim Text As String, Found As Boolean, Stored As String
    On Error GoTo Failed

    Text = "Paths" & vbCrLf
    Text = Text & Row("esGetFileRoot", esGetFileRoot("\\server\share\folder\data.ini"))
    Text = Text & Row("esGetFileExtension", esGetFileExtension("C:\Reports\2024\summary.txt"))
    Text = Text & Row("esBuildFileName", esBuildFileName(App.Path, "settings.ini", False))

    Text = Text & vbCrLf & "The host" & vbCrLf
    Text = Text & Row("Windows", esWindowsVersionMajor() & "." & esWindowsVersionMinor() & "." & _
                                 esWindowsVersionRevision())
    Text = Text & Row("esIsHostWine", esIsHostWine())
    Text = Text & Row("esGetVBVersion", esGetVBVersion())
    esReadStringFromRegistry HKEY_LOCAL_MACHINE, "SOFTWARE\Microsoft\Windows NT\CurrentVersion", _
                             "ProductName", "(unknown)", False, Found, Stored
    Text = Text & Row("ProductName in the registry", Stored)
    Text = Text & Row("esGetSpecialFolder(AppData)", esGetSpecialFolder(CSIDL_APPDATA))

    Text = Text & vbCrLf & "Values" & vbCrLf
    Text = Text & Row("esFormatDate2(Now)", esFormatDate2(Now, True, False))
    Text = Text & Row("esFormatRoman(2024)", esFormatRoman(2024))
    Text = Text & Row("esGetRedRGB(&H123456)", esGetRedRGB(&H123456))
    Text = Text & Row("esHex4(48879)", esHex4(48879))
    Text = Text & Row("esCLng(""&HFF"")", esCLng("&HFF"))
    Text = Text & Row("esGetNewGUID", esGetNewGUID())

    Text = Text & vbCrLf & "The desktop and the user" & vbCrLf
    Text = Text & Row("esScreenWidth (twips)", esScreenWidth())
    Text = Text & Row("esScreenTwipsPerPixelX", esScreenTwipsPerPixelX())
    Text = Text & Row("esGetIdleTimeInterval (ms)", esGetIdleTimeInterval())
    Text = Text & Row("esGetUserName", esGetUserName())
    Text = Text & Row("esGetComputerName", esGetComputerName())
    RunSamples = Text
    Exit Function

Failed:
    RunSamples = Text & vbCrLf & "Error " & Hex$(Err.Number) & ": " & Err.Description & vbCrLf
End Function
