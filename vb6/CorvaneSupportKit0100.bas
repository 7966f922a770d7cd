Attribute VB_Name = "CorvaneSupportKit0100"
' Generated from src/frame/ExportTable.txt: do not edit.
' The declarations of CorvaneSupportKit0100.dll for programs that do not reference its type
' library. Text goes in as StrPtr(text); a String answer comes back through
' VarPtr(variable); Longs, Booleans, Doubles and records are passed ByRef.
Option Explicit

Public Type SYSTEMTIME
    wYear As Integer
    wMonth As Integer
    wDayOfWeek As Integer
    wDay As Integer
    wHour As Integer
    wMinute As Integer
    wSecond As Integer
    wMilliseconds As Integer
End Type

Public Type RECT
    Left As Long
    Top As Long
    Right As Long
    Bottom As Long
End Type

Public Type NewRect
    Left As Long
    Top As Long
    Width As Long
    Height As Long
End Type

Public Type TMFI
    hThunderMain As Long
    hThunderRTMain As Long
    hThunderRT5Main As Long
    hThunderRT6Main As Long
End Type

Public Type OSVERSIONINFOEX
    dwOSVersionInfoSize As Long
    dwMajorVersion As Long
    dwMinorVersion As Long
    dwBuildNumber As Long
    dwPlatformId As Long
    szCSDVersion As String * 128
    wServicePackMajor As Integer
    wServicePackMinor As Integer
    wSuiteMask As Integer
    wProductType As Byte
    wReserved As Byte
End Type

Public Type SYSTEM_INFO
    wProcessorArchitecture As Integer
    wReserved As Integer
    dwPageSize As Long
    lpMinimumApplicationAddress As Long
    lpMaximumApplicationAddress As Long
    dwActiveProcessorMask As Long
    dwNumberOfProcessors As Long
    dwProcessorType As Long
    dwAllocationGranularity As Long
    wProcessorLevel As Integer
    wProcessorRevision As Integer
End Type

Public Type DLLVERSIONINFO
    cbSize As Long
    dwMajorVersion As Long
    dwMinorVersion As Long
    dwBuildNumber As Long
    dwPlatformID As Long
End Type

' Library identity
Public Declare Function DllGetVersion Lib "CorvaneSupportKit0100.dll" (Info As DLLVERSIONINFO) As Long
Public Declare Function DllInstall Lib "CorvaneSupportKit0100.dll" (ByVal Install As Long, ByVal CmdLine As Long) As Long
Public Declare Function DllRegisterServer Lib "CorvaneSupportKit0100.dll" () As Long
Public Declare Function DllUnregisterServer Lib "CorvaneSupportKit0100.dll" () As Long

' Path parsing
Public Declare Function esGetFileRoot Lib "CorvaneSupportKit0100.dll" (ByVal FullName As Long, ByVal Root As Long) As Long
Public Declare Function esGetFilePath Lib "CorvaneSupportKit0100.dll" (ByVal FullName As Long, ByVal FolderPath As Long) As Long
Public Declare Function esGetFileName Lib "CorvaneSupportKit0100.dll" (ByVal FullName As Long, ByVal WithoutStream As Boolean, ByVal FileName As Long) As Long
Public Declare Function esGetFileOnlyName Lib "CorvaneSupportKit0100.dll" (ByVal FullName As Long, ByVal OnlyName As Long) As Long
Public Declare Function esGetFileExtension Lib "CorvaneSupportKit0100.dll" (ByVal FullName As Long, ByVal Extension As Long) As Long
Public Declare Function esGetRelativeFileName Lib "CorvaneSupportKit0100.dll" (ByVal FileName As Long, ByVal BaseFolder As Long, ByVal RelativeName As Long) As Long
Public Declare Function esGetAbsoluteFileName Lib "CorvaneSupportKit0100.dll" (ByVal FileName As Long, ByVal BaseFolder As Long, ByVal AbsoluteName As Long) As Long
Public Declare Function esReplaceFileExtension Lib "CorvaneSupportKit0100.dll" (ByVal FullName As Long, ByVal NewExtension As Long, ByVal NewName As Long) As Long

' Path building
Public Declare Function esAddBackslash Lib "CorvaneSupportKit0100.dll" (ByVal Path As Long, ByVal Result As Long) As Long
Public Declare Function esRemoveBackslash Lib "CorvaneSupportKit0100.dll" (ByVal Path As Long, ByVal Result As Long) As Long
Public Declare Function esBuildFileName Lib "CorvaneSupportKit0100.dll" (ByVal Folder As Long, ByVal FileName As Long, ByVal StripWhenNoName As Boolean, ByVal Result As Long) As Long
Public Declare Function esBuildFileName2 Lib "CorvaneSupportKit0100.dll" (ByVal Element1 As Long, ByVal Element2 As Long, ByVal Element3 As Long, ByVal Element4 As Long, ByVal Element5 As Long, ByVal Element6 As Long, ByVal Element7 As Long, ByVal Element8 As Long, ByVal Element9 As Long, ByVal Result As Long) As Long

' Canonical paths
Public Declare Function esGetFullFileName Lib "CorvaneSupportKit0100.dll" (ByVal Path As Long, ByVal FixCase As Boolean, ByVal FullName As Long) As Long
Public Declare Function esGetLongFileName Lib "CorvaneSupportKit0100.dll" (ByVal Path As Long, ByVal EmptyOnFailure As Boolean, ByVal LongName As Long) As Long
Public Declare Function esGetShortFileName Lib "CorvaneSupportKit0100.dll" (ByVal Path As Long, ByVal EmptyOnFailure As Boolean, ByVal ShortName As Long) As Long
Public Declare Function esGetModuleFileName Lib "CorvaneSupportKit0100.dll" (ByVal ModuleHandle As Long, ByVal FixCase As Boolean, ByVal FileName As Long) As Long

' Temporary files
Public Declare Function esGetTempFileName2 Lib "CorvaneSupportKit0100.dll" (ByVal Folder As Long, ByVal Extension As Long, ByVal FileName As Long) As Long

' File tests
Public Declare Function esGetFileAttributes Lib "CorvaneSupportKit0100.dll" (ByVal Path As Long, Attributes As Long) As Long
Public Declare Function esIsFileOrDirectoryExist Lib "CorvaneSupportKit0100.dll" (ByVal Path As Long, Result As Boolean) As Long
Public Declare Function esIsFileExist Lib "CorvaneSupportKit0100.dll" (ByVal Path As Long, Result As Boolean) As Long
Public Declare Function esIsDirectoryExist Lib "CorvaneSupportKit0100.dll" (ByVal Path As Long, Result As Boolean) As Long
Public Declare Function esIsDirectory Lib "CorvaneSupportKit0100.dll" (ByVal Path As Long, Result As Boolean) As Long
Public Declare Function esIsFile Lib "CorvaneSupportKit0100.dll" (ByVal Path As Long, Result As Boolean) As Long
Public Declare Function esIsJunction Lib "CorvaneSupportKit0100.dll" (ByVal Path As Long, Result As Boolean) As Long
Public Declare Function esIsSymlink Lib "CorvaneSupportKit0100.dll" (ByVal Path As Long, Result As Boolean) As Long
Public Declare Function esIsSymlinkToFile Lib "CorvaneSupportKit0100.dll" (ByVal Path As Long, Result As Boolean) As Long
Public Declare Function esIsSymlinkToDirectory Lib "CorvaneSupportKit0100.dll" (ByVal Path As Long, Result As Boolean) As Long
Public Declare Function esIsUnixFileExist Lib "CorvaneSupportKit0100.dll" (ByVal Path As Long, Result As Boolean) As Long
Public Declare Function esIsUnixDirectoryExist Lib "CorvaneSupportKit0100.dll" (ByVal Path As Long, Result As Boolean) As Long
Public Declare Function esIsUnixFileOrDirectoryExist Lib "CorvaneSupportKit0100.dll" (ByVal Path As Long, Result As Boolean) As Long

' Sizes and volumes
Public Declare Function esGetFileSize Lib "CorvaneSupportKit0100.dll" (ByVal Path As Long, Size As Long) As Long
Public Declare Function esGetFileSizeEx Lib "CorvaneSupportKit0100.dll" (ByVal Path As Long, Size As Double) As Long
Public Declare Function esGetDiskSpaceTotal Lib "CorvaneSupportKit0100.dll" (ByVal Path As Long, Bytes As Double) As Long
Public Declare Function esGetDiskSpaceFree Lib "CorvaneSupportKit0100.dll" (ByVal Path As Long, Bytes As Double) As Long
Public Declare Function esGetDiskSpaceAvailable Lib "CorvaneSupportKit0100.dll" (ByVal Path As Long, Bytes As Double) As Long
Public Declare Function esGetDiskSpace Lib "CorvaneSupportKit0100.dll" (ByVal Path As Long, Total As Double, Free As Double, Available As Double, Success As Boolean) As Long
Public Declare Function esGetVolumeName Lib "CorvaneSupportKit0100.dll" (ByVal Root As Long, ByVal VolumeName As Long) As Long
Public Declare Function esGetVolumeFileSystemName Lib "CorvaneSupportKit0100.dll" (ByVal Root As Long, ByVal FileSystemName As Long) As Long
Public Declare Function esGetVolumeSerialNumber Lib "CorvaneSupportKit0100.dll" (ByVal Root As Long, SerialNumber As Long) As Long
Public Declare Function esGetVolumeMaximumComponentLength Lib "CorvaneSupportKit0100.dll" (ByVal Root As Long, MaxLength As Long) As Long
Public Declare Function esGetVolumeFileSystemFlags Lib "CorvaneSupportKit0100.dll" (ByVal Root As Long, Flags As Long) As Long
Public Declare Function esFormatVolumeSerialNumber Lib "CorvaneSupportKit0100.dll" (ByVal SerialNumber As Long, ByVal Text As Long) As Long

' Application paths
Public Declare Function esGetFileAppPath Lib "CorvaneSupportKit0100.dll" (ByVal FileName As Long, ByVal FullPath As Long) As Long
Public Declare Function esRegisterAppPath Lib "CorvaneSupportKit0100.dll" (Success As Boolean) As Long
Public Declare Function esUnRegisterAppPath Lib "CorvaneSupportKit0100.dll" (Success As Boolean) As Long

' Windows version
Public Declare Function esGetVersionEx Lib "CorvaneSupportKit0100.dll" (VersionInfo As OSVERSIONINFOEX, IsExtended As Boolean, Success As Boolean) As Long
Public Declare Function esGetNativeSystemInfo Lib "CorvaneSupportKit0100.dll" (SystemInfo As SYSTEM_INFO, IsNative As Boolean) As Long
Public Declare Function esGetProductName Lib "CorvaneSupportKit0100.dll" (ByVal ProductName As Long) As Long
Public Declare Function esWindowsVersionMajor Lib "CorvaneSupportKit0100.dll" (Major As Long) As Long
Public Declare Function esWindowsVersionMinor Lib "CorvaneSupportKit0100.dll" (Minor As Long) As Long
Public Declare Function esWindowsVersionRevision Lib "CorvaneSupportKit0100.dll" (Build As Long) As Long
Public Declare Function esIsHostWin64 Lib "CorvaneSupportKit0100.dll" (Result As Boolean) As Long
Public Declare Function esIsHostWine Lib "CorvaneSupportKit0100.dll" (Result As Boolean) As Long
Public Declare Function esIsHostWin16 Lib "CorvaneSupportKit0100.dll" (Result As Boolean) As Long

' Host tests
Public Declare Function esIsHostWin9x Lib "CorvaneSupportKit0100.dll" (Result As Boolean) As Long
Public Declare Function esIsHostWin32s Lib "CorvaneSupportKit0100.dll" (Result As Boolean) As Long
Public Declare Function esIsHostWinNT Lib "CorvaneSupportKit0100.dll" (Result As Boolean) As Long
Public Declare Function esIsHostWinNT351 Lib "CorvaneSupportKit0100.dll" (Result As Boolean) As Long
Public Declare Function esIsHostWinNT40 Lib "CorvaneSupportKit0100.dll" (Result As Boolean) As Long
Public Declare Function esIsHostWin2000 Lib "CorvaneSupportKit0100.dll" (Result As Boolean) As Long
Public Declare Function esIsHostWinXP Lib "CorvaneSupportKit0100.dll" (Result As Boolean) As Long
Public Declare Function esIsHostWin2003 Lib "CorvaneSupportKit0100.dll" (Result As Boolean) As Long
Public Declare Function esIsHostWin2003i Lib "CorvaneSupportKit0100.dll" (Result As Boolean) As Long
Public Declare Function esIsHostWin2003R2 Lib "CorvaneSupportKit0100.dll" (Result As Boolean) As Long
Public Declare Function esIsHostWinVista Lib "CorvaneSupportKit0100.dll" (Result As Boolean) As Long
Public Declare Function esIsHostWin2008 Lib "CorvaneSupportKit0100.dll" (Result As Boolean) As Long
Public Declare Function esIsHostWin7 Lib "CorvaneSupportKit0100.dll" (Result As Boolean) As Long
Public Declare Function esIsHostWin2008R2 Lib "CorvaneSupportKit0100.dll" (Result As Boolean) As Long
Public Declare Function esIsHostWin8 Lib "CorvaneSupportKit0100.dll" (Result As Boolean) As Long
Public Declare Function esIsHostWin2012 Lib "CorvaneSupportKit0100.dll" (Result As Boolean) As Long
Public Declare Function esIsHostWin95 Lib "CorvaneSupportKit0100.dll" (Result As Boolean) As Long
Public Declare Function esIsHostWin95_OSR2 Lib "CorvaneSupportKit0100.dll" (Result As Boolean) As Long
Public Declare Function esIsHostWin95i Lib "CorvaneSupportKit0100.dll" (Result As Boolean) As Long
Public Declare Function esIsHostWin98 Lib "CorvaneSupportKit0100.dll" (Result As Boolean) As Long
Public Declare Function esIsHostWin98SE Lib "CorvaneSupportKit0100.dll" (Result As Boolean) As Long
Public Declare Function esIsHostWin98i Lib "CorvaneSupportKit0100.dll" (Result As Boolean) As Long
Public Declare Function esIsHostWinME Lib "CorvaneSupportKit0100.dll" (Result As Boolean) As Long
Public Declare Function esIsHostWinNT351_OrHigher Lib "CorvaneSupportKit0100.dll" (Result As Boolean) As Long
Public Declare Function esIsHostWinNT40_OrHigher Lib "CorvaneSupportKit0100.dll" (Result As Boolean) As Long
Public Declare Function esIsHostWin2000_OrHigher Lib "CorvaneSupportKit0100.dll" (Result As Boolean) As Long
Public Declare Function esIsHostWinXP_OrHigher Lib "CorvaneSupportKit0100.dll" (Result As Boolean) As Long
Public Declare Function esIsHostWin2003_OrHigher Lib "CorvaneSupportKit0100.dll" (Result As Boolean) As Long
Public Declare Function esIsHostWin2003R2_OrHigher Lib "CorvaneSupportKit0100.dll" (Result As Boolean) As Long
Public Declare Function esIsHostWinVista_OrHigher Lib "CorvaneSupportKit0100.dll" (Result As Boolean) As Long
Public Declare Function esIsHostWin2008_OrHigher Lib "CorvaneSupportKit0100.dll" (Result As Boolean) As Long
Public Declare Function esIsHostWin7_OrHigher Lib "CorvaneSupportKit0100.dll" (Result As Boolean) As Long
Public Declare Function esIsHostWin2008R2_OrHigher Lib "CorvaneSupportKit0100.dll" (Result As Boolean) As Long
Public Declare Function esIsHostWin8_OrHigher Lib "CorvaneSupportKit0100.dll" (Result As Boolean) As Long
Public Declare Function esIsHostWin2012_OrHigher Lib "CorvaneSupportKit0100.dll" (Result As Boolean) As Long
Public Declare Function esIsHostWin95_OrHigher Lib "CorvaneSupportKit0100.dll" (Result As Boolean) As Long
Public Declare Function esIsHostWin95_OSR2_OrHigher Lib "CorvaneSupportKit0100.dll" (Result As Boolean) As Long
Public Declare Function esIsHostWin98_OrHigher Lib "CorvaneSupportKit0100.dll" (Result As Boolean) As Long
Public Declare Function esIsHostWin98SE_OrHigher Lib "CorvaneSupportKit0100.dll" (Result As Boolean) As Long
Public Declare Function esIsHostWinME_OrHigher Lib "CorvaneSupportKit0100.dll" (Result As Boolean) As Long

' Shell and bitness
Public Declare Function esShellVersionMajor Lib "CorvaneSupportKit0100.dll" (Major As Long) As Long
Public Declare Function esShellVersionMinor Lib "CorvaneSupportKit0100.dll" (Minor As Long) As Long
Public Declare Function esShellVersionRevision Lib "CorvaneSupportKit0100.dll" (Build As Long) As Long
Public Declare Function esIsProcessWin64Ex Lib "CorvaneSupportKit0100.dll" (ByVal ProcessId As Long, Bitness As Long) As Long
Public Declare Function esIsProcessWin64 Lib "CorvaneSupportKit0100.dll" (ByVal ProcessId As Long, Result As Boolean) As Long

' Date arithmetic
Public Declare Function esCompareSystemTime Lib "CorvaneSupportKit0100.dll" (Time1 As SYSTEMTIME, Time2 As SYSTEMTIME, Result As Long) As Long
Public Declare Function esCompareSystemTimeEx Lib "CorvaneSupportKit0100.dll" (Time1 As SYSTEMTIME, Time2 As SYSTEMTIME, Result As Long) As Long
Public Declare Function esGetDayNumEx Lib "CorvaneSupportKit0100.dll" (Day As SYSTEMTIME, DayNum As Long) As Long
Public Declare Function esGetDayNumEx2 Lib "CorvaneSupportKit0100.dll" (ByVal Day As Date, DayNum As Long) As Long
Public Declare Function esGetDayNum Lib "CorvaneSupportKit0100.dll" (DayNum As Long) As Long
Public Declare Function esSystemTimeToLocalSystemTime Lib "CorvaneSupportKit0100.dll" (UtcTime As SYSTEMTIME, LocalTime As SYSTEMTIME, Success As Boolean) As Long
Public Declare Function esLocalSystemTimeToSystemTime Lib "CorvaneSupportKit0100.dll" (LocalTime As SYSTEMTIME, UtcTime As SYSTEMTIME, Success As Boolean) As Long
Public Declare Function esSystemTimeToLocalTime Lib "CorvaneSupportKit0100.dll" (ByVal UtcDate As Date, LocalDate As Date, Success As Boolean) As Long
Public Declare Function esLocalTimeToSystemTime Lib "CorvaneSupportKit0100.dll" (ByVal LocalDate As Date, UtcDate As Date, Success As Boolean) As Long
Public Declare Function esSysNow Lib "CorvaneSupportKit0100.dll" (Now As Date) As Long

' Date formatting
Public Declare Function esFormatDate Lib "CorvaneSupportKit0100.dll" (Time As SYSTEMTIME, ByVal LongForm As Boolean, ByVal NoUserOverride As Boolean, ByVal Text As Long) As Long
Public Declare Function esFormatTime Lib "CorvaneSupportKit0100.dll" (Time As SYSTEMTIME, ByVal NoSeconds As Boolean, ByVal NoUserOverride As Boolean, ByVal Text As Long) As Long
Public Declare Function esFormatDate2 Lib "CorvaneSupportKit0100.dll" (ByVal Value As Date, ByVal LongForm As Boolean, ByVal NoUserOverride As Boolean, ByVal Text As Long) As Long
Public Declare Function esFormatTime2 Lib "CorvaneSupportKit0100.dll" (ByVal Value As Date, ByVal NoSeconds As Boolean, ByVal NoUserOverride As Boolean, ByVal Text As Long) As Long
Public Declare Function esFormatRoman Lib "CorvaneSupportKit0100.dll" (ByVal Number As Long, ByVal Text As Long) As Long

' Colours
Public Declare Function esGetRedRGB Lib "CorvaneSupportKit0100.dll" (ByVal Color As Long, Red As Long) As Long
Public Declare Function esGetGreenRGB Lib "CorvaneSupportKit0100.dll" (ByVal Color As Long, Green As Long) As Long
Public Declare Function esGetBlueRGB Lib "CorvaneSupportKit0100.dll" (ByVal Color As Long, Blue As Long) As Long
Public Declare Function esPaletteRGB Lib "CorvaneSupportKit0100.dll" (ByVal Color As Long, Result As Long) As Long
Public Declare Function esTranslateColor Lib "CorvaneSupportKit0100.dll" (ByVal Color As Long, ByVal Palette As Long, Result As Long) As Long
Public Declare Function esGetSolidColor Lib "CorvaneSupportKit0100.dll" (ByVal Color As Long, ByVal Hdc As Long, Result As Long) As Long
Public Declare Function esRGB Lib "CorvaneSupportKit0100.dll" (ByVal Red As Long, ByVal Green As Long, ByVal Blue As Long, Result As Long) As Long
Public Declare Function esD3DRGBA Lib "CorvaneSupportKit0100.dll" (ByVal Red As Long, ByVal Green As Long, ByVal Blue As Long, ByVal Alpha As Long, Result As Long) As Long
Public Declare Function esD3DARGB Lib "CorvaneSupportKit0100.dll" (ByVal Alpha As Long, ByVal Red As Long, ByVal Green As Long, ByVal Blue As Long, Result As Long) As Long
Public Declare Function esD3DXRGB Lib "CorvaneSupportKit0100.dll" (ByVal Red As Long, ByVal Green As Long, ByVal Blue As Long, Result As Long) As Long
Public Declare Function esGetRedD3DRGBA Lib "CorvaneSupportKit0100.dll" (ByVal Color As Long, Red As Long) As Long
Public Declare Function esGetGreenD3DRGBA Lib "CorvaneSupportKit0100.dll" (ByVal Color As Long, Green As Long) As Long
Public Declare Function esGetBlueD3DRGBA Lib "CorvaneSupportKit0100.dll" (ByVal Color As Long, Blue As Long) As Long
Public Declare Function esGetAlphaD3DRGBA Lib "CorvaneSupportKit0100.dll" (ByVal Color As Long, Alpha As Long) As Long
Public Declare Function esRGBtoD3DRGBA Lib "CorvaneSupportKit0100.dll" (ByVal Color As Long, Result As Long) As Long
Public Declare Function esD3DRGBAtoRGB Lib "CorvaneSupportKit0100.dll" (ByVal Color As Long, Result As Long) As Long

' Bits and number text
Public Declare Function esMakeWord Lib "CorvaneSupportKit0100.dll" (ByVal LowByte As Byte, ByVal HighByte As Byte, Result As Integer) As Long
Public Declare Function esMakeLong Lib "CorvaneSupportKit0100.dll" (ByVal LowWord As Integer, ByVal HighWord As Integer, Result As Long) As Long
Public Declare Function esHiWord Lib "CorvaneSupportKit0100.dll" (ByVal Value As Long, Result As Integer) As Long
Public Declare Function esLoWord Lib "CorvaneSupportKit0100.dll" (ByVal Value As Long, Result As Integer) As Long
Public Declare Function esHiByte Lib "CorvaneSupportKit0100.dll" (ByVal Value As Integer, Result As Byte) As Long
Public Declare Function esLoByte Lib "CorvaneSupportKit0100.dll" (ByVal Value As Integer, Result As Byte) As Long
Public Declare Function esShiftLeft1 Lib "CorvaneSupportKit0100.dll" (ByVal Value As Byte, ByVal Count As Long, Result As Byte) As Long
Public Declare Function esShiftLeft2 Lib "CorvaneSupportKit0100.dll" (ByVal Value As Integer, ByVal Count As Long, Result As Integer) As Long
Public Declare Function esShiftLeft4 Lib "CorvaneSupportKit0100.dll" (ByVal Value As Long, ByVal Count As Long, Result As Long) As Long
Public Declare Function esShiftRight1 Lib "CorvaneSupportKit0100.dll" (ByVal Value As Byte, ByVal Count As Long, Result As Byte) As Long
Public Declare Function esShiftRight2 Lib "CorvaneSupportKit0100.dll" (ByVal Value As Integer, ByVal Count As Long, Result As Integer) As Long
Public Declare Function esShiftRight4 Lib "CorvaneSupportKit0100.dll" (ByVal Value As Long, ByVal Count As Long, Result As Long) As Long
Public Declare Function esSwapBytes2 Lib "CorvaneSupportKit0100.dll" (ByVal Value As Integer, Result As Integer) As Long
Public Declare Function esSwapBytes4 Lib "CorvaneSupportKit0100.dll" (ByVal Value As Long, Result As Long) As Long
Public Declare Function esHex1 Lib "CorvaneSupportKit0100.dll" (ByVal Value As Byte, ByVal Text As Long) As Long
Public Declare Function esHex2 Lib "CorvaneSupportKit0100.dll" (ByVal Value As Integer, ByVal Text As Long) As Long
Public Declare Function esHex4 Lib "CorvaneSupportKit0100.dll" (ByVal Value As Long, ByVal Text As Long) As Long
Public Declare Function esHexEx1 Lib "CorvaneSupportKit0100.dll" (ByVal Value As Byte, ByVal Text As Long) As Long
Public Declare Function esHexEx2 Lib "CorvaneSupportKit0100.dll" (ByVal Value As Integer, ByVal Text As Long) As Long
Public Declare Function esHexEx4 Lib "CorvaneSupportKit0100.dll" (ByVal Value As Long, ByVal Text As Long) As Long
Public Declare Function esBin1 Lib "CorvaneSupportKit0100.dll" (ByVal Value As Byte, ByVal Text As Long) As Long
Public Declare Function esBin2 Lib "CorvaneSupportKit0100.dll" (ByVal Value As Integer, ByVal Text As Long) As Long
Public Declare Function esBin4 Lib "CorvaneSupportKit0100.dll" (ByVal Value As Long, ByVal Text As Long) As Long
Public Declare Function esStringToBool Lib "CorvaneSupportKit0100.dll" (ByVal Text As Long, Result As Boolean) As Long
Public Declare Function esBoolToString Lib "CorvaneSupportKit0100.dll" (ByVal Value As Boolean, ByVal Text As Long) As Long

' Random numbers and GUIDs
Public Declare Function esRandomize Lib "CorvaneSupportKit0100.dll" (ByVal UseTwister As Boolean) As Long
Public Declare Function esRnd Lib "CorvaneSupportKit0100.dll" (ByVal Repeat As Boolean, Result As Double) As Long
Public Declare Function esGetRnd Lib "CorvaneSupportKit0100.dll" (ByVal Low As Long, ByVal High As Long, ByVal Repeat As Boolean, Result As Long) As Long
Public Declare Function esGetNewGUID Lib "CorvaneSupportKit0100.dll" (ByVal Guid As Long) As Long

' Registry
Public Declare Function esReadStringFromRegistry Lib "CorvaneSupportKit0100.dll" (ByVal RootKey As Long, ByVal SubKey As Long, ByVal ValueName As Long, ByVal Default As Long, ByVal Expand As Boolean, Found As Boolean, ByVal Result As Long) As Long
Public Declare Function esReadLongFromRegistry Lib "CorvaneSupportKit0100.dll" (ByVal RootKey As Long, ByVal SubKey As Long, ByVal ValueName As Long, ByVal Default As Long, Found As Boolean, Result As Long) As Long
Public Declare Function esReadBoolFromRegistry Lib "CorvaneSupportKit0100.dll" (ByVal RootKey As Long, ByVal SubKey As Long, ByVal ValueName As Long, ByVal Default As Boolean, Found As Boolean, Result As Boolean) As Long
Public Declare Function esWriteStringToRegistry Lib "CorvaneSupportKit0100.dll" (ByVal RootKey As Long, ByVal SubKey As Long, ByVal ValueName As Long, ByVal Value As Long, ByVal Expand As Boolean, Success As Boolean) As Long
Public Declare Function esWriteLongToRegistry Lib "CorvaneSupportKit0100.dll" (ByVal RootKey As Long, ByVal SubKey As Long, ByVal ValueName As Long, ByVal Value As Long, ByVal BigEndian As Boolean, Success As Boolean) As Long
Public Declare Function esWriteBoolToRegistry Lib "CorvaneSupportKit0100.dll" (ByVal RootKey As Long, ByVal SubKey As Long, ByVal ValueName As Long, ByVal Value As Boolean, Success As Boolean) As Long
Public Declare Function esDeleteValueFromRegistry Lib "CorvaneSupportKit0100.dll" (ByVal RootKey As Long, ByVal SubKey As Long, ByVal ValueName As Long, Success As Boolean) As Long
Public Declare Function esDeleteKeyFromRegistry Lib "CorvaneSupportKit0100.dll" (ByVal RootKey As Long, ByVal SubKey As Long, ByVal Recursive As Boolean, Success As Boolean) As Long

' Special folders
Public Declare Function esGetSpecialFolder Lib "CorvaneSupportKit0100.dll" (ByVal Csidl As Long, ByVal Path As Long) As Long
Public Declare Function esGetPathFromPIDL Lib "CorvaneSupportKit0100.dll" (ByVal Pidl As Long, ByVal FreePidl As Boolean, ByVal Path As Long) As Long

' System folders
Public Declare Function esGetWindowsPath Lib "CorvaneSupportKit0100.dll" (ByVal Path As Long) As Long
Public Declare Function esGetSystemPath Lib "CorvaneSupportKit0100.dll" (ByVal Path As Long) As Long
Public Declare Function esGetTempPath Lib "CorvaneSupportKit0100.dll" (ByVal Path As Long) As Long
Public Declare Function esGetCurrentDirectory Lib "CorvaneSupportKit0100.dll" (ByVal Path As Long) As Long
Public Declare Function esSetCurrentDirectory Lib "CorvaneSupportKit0100.dll" (ByVal Path As Long, Success As Boolean) As Long

' Visual Basic runtime
Public Declare Function esGetVBVersion Lib "CorvaneSupportKit0100.dll" (Version As Long) As Long
Public Declare Function esIsInIDE Lib "CorvaneSupportKit0100.dll" (Result As Boolean) As Long
Public Declare Function esGetThunderMainHandle Lib "CorvaneSupportKit0100.dll" (Hwnd As Long) As Long
Public Declare Function esGetThunderMainHandles Lib "CorvaneSupportKit0100.dll" (Handles As TMFI) As Long
Public Declare Function esGetThunderMainTitle Lib "CorvaneSupportKit0100.dll" (ByVal Title As Long) As Long

' Indirect calls
Public Declare Function esCallFunctionEx_i_r4 Lib "CorvaneSupportKit0100.dll" (ByVal Address As Long) As Long
Public Declare Function esCallFunctionEx_i4_r4 Lib "CorvaneSupportKit0100.dll" (ByVal Address As Long, ByVal Arg1 As Long) As Long
Public Declare Function esCallFunctionEx_i44_r4 Lib "CorvaneSupportKit0100.dll" (ByVal Address As Long, ByVal Arg1 As Long, ByVal Arg2 As Long) As Long
Public Declare Function esCallFunctionEx_i444_r4 Lib "CorvaneSupportKit0100.dll" (ByVal Address As Long, ByVal Arg1 As Long, ByVal Arg2 As Long, ByVal Arg3 As Long) As Long
Public Declare Function esCallFunctionEx_i4444_r4 Lib "CorvaneSupportKit0100.dll" (ByVal Address As Long, ByVal Arg1 As Long, ByVal Arg2 As Long, ByVal Arg3 As Long, ByVal Arg4 As Long) As Long
Public Declare Sub esCallFunctionEx_i_r0 Lib "CorvaneSupportKit0100.dll" (ByVal Address As Long)
Public Declare Sub esCallFunctionEx_i4_r0 Lib "CorvaneSupportKit0100.dll" (ByVal Address As Long, ByVal Arg1 As Long)
Public Declare Sub esCallFunctionEx_i44_r0 Lib "CorvaneSupportKit0100.dll" (ByVal Address As Long, ByVal Arg1 As Long, ByVal Arg2 As Long)
Public Declare Sub esCallFunctionEx_i444_r0 Lib "CorvaneSupportKit0100.dll" (ByVal Address As Long, ByVal Arg1 As Long, ByVal Arg2 As Long, ByVal Arg3 As Long)
Public Declare Sub esCallFunctionEx_i4444_r0 Lib "CorvaneSupportKit0100.dll" (ByVal Address As Long, ByVal Arg1 As Long, ByVal Arg2 As Long, ByVal Arg3 As Long, ByVal Arg4 As Long)

' UserControl repair
Public Declare Function esFixUserControlsContainerWindow Lib "CorvaneSupportKit0100.dll" (Result As Boolean) As Long

' Message boxes
Public Declare Function esMsgBoxEx Lib "CorvaneSupportKit0100.dll" (ByVal Prompt As Long, ByVal Style As Long, ByVal Title As Long, ByVal IconName As Long, ByVal ModuleHandle As Long, Result As Long) As Long
Public Declare Function esMsgBox Lib "CorvaneSupportKit0100.dll" (ByVal Prompt As Long, ByVal IconName As Long, Result As Long) As Long
Public Declare Function esMsgBox2 Lib "CorvaneSupportKit0100.dll" (ByVal Prompt As Long, ByVal Style As Long, ByVal Title As Long, Result As Long) As Long

' Rectangles and activation
Public Declare Function esNormalizeRect Lib "CorvaneSupportKit0100.dll" (Rect As RECT) As Long
Public Declare Function esRectToNewRect Lib "CorvaneSupportKit0100.dll" (Source As RECT, Target As NewRect) As Long
Public Declare Function esNewRectToRect Lib "CorvaneSupportKit0100.dll" (Source As NewRect, Target As RECT) As Long
Public Declare Function esCenterForm Lib "CorvaneSupportKit0100.dll" (ByVal Hwnd As Long, ByVal Show As Boolean, Success As Boolean) As Long
Public Declare Function esCenterFormEx Lib "CorvaneSupportKit0100.dll" (ByVal Hwnd As Long, ByVal Show As Boolean, Success As Boolean) As Long
Public Declare Function esSetForegroundWindowEx Lib "CorvaneSupportKit0100.dll" (ByVal Hwnd As Long, Success As Boolean) As Long
Public Declare Function esRestoreWindow Lib "CorvaneSupportKit0100.dll" (ByVal Hwnd As Long) As Long
Public Declare Function esUnloadForm Lib "CorvaneSupportKit0100.dll" (ByVal Hwnd As Long) As Long

' Window text and controls
Public Declare Function esGetWindowText Lib "CorvaneSupportKit0100.dll" (ByVal Hwnd As Long, ByVal Text As Long) As Long
Public Declare Function esSetWindowText Lib "CorvaneSupportKit0100.dll" (ByVal Hwnd As Long, ByVal Text As Long) As Long
Public Declare Function esGetWindowClassName Lib "CorvaneSupportKit0100.dll" (ByVal Hwnd As Long, ByVal ClassName As Long) As Long
Public Declare Function esComboBoxToString Lib "CorvaneSupportKit0100.dll" (ByVal Hwnd As Long, ByVal Trim As Boolean, ByVal Text As Long) As Long
Public Declare Function esComboBoxFromString Lib "CorvaneSupportKit0100.dll" (ByVal Text As Long, ByVal Hwnd As Long, ByVal Trim As Boolean) As Long
Public Declare Function esTextBox_SelectAll Lib "CorvaneSupportKit0100.dll" (ByVal Hwnd As Long) As Long
Public Declare Function esTextBox_SelectStart Lib "CorvaneSupportKit0100.dll" (ByVal Hwnd As Long) As Long
Public Declare Function esTextBox_SelectEnd Lib "CorvaneSupportKit0100.dll" (ByVal Hwnd As Long) As Long
Public Declare Function esTextBox_AddText Lib "CorvaneSupportKit0100.dll" (ByVal Hwnd As Long, ByVal Text As Long) As Long
Public Declare Function esTextBox_AddLine Lib "CorvaneSupportKit0100.dll" (ByVal Hwnd As Long, ByVal Text As Long) As Long
Public Declare Function esTextBox_AddLine2 Lib "CorvaneSupportKit0100.dll" (ByVal Hwnd As Long, ByVal Text As Long) As Long

' Menus and transparency
Public Declare Function esSetMenuJustify Lib "CorvaneSupportKit0100.dll" (ByVal Hwnd As Long, ByVal Position As Long, ByVal RightJustify As Boolean, Success As Boolean) As Long
Public Declare Function esSetWindowTransparecny Lib "CorvaneSupportKit0100.dll" (ByVal Hwnd As Long, ByVal Amount As Long, ByVal Percent As Boolean) As Long
Public Declare Function esDisableWindowTransparecny Lib "CorvaneSupportKit0100.dll" (ByVal Hwnd As Long) As Long
Public Declare Function esAddAutoComplete Lib "CorvaneSupportKit0100.dll" (ByVal Hwnd As Long, ByVal Flags As Long, Success As Boolean) As Long
Public Declare Function esGet_WM_TASKBAR_CREATED Lib "CorvaneSupportKit0100.dll" (Message As Long) As Long

' Screen
Public Declare Function esScreenTwipsPerPixelX Lib "CorvaneSupportKit0100.dll" (Factor As Single) As Long
Public Declare Function esScreenTwipsPerPixelY Lib "CorvaneSupportKit0100.dll" (Factor As Single) As Long
Public Declare Function esScreenHimetricPerPixelX Lib "CorvaneSupportKit0100.dll" (Factor As Single) As Long
Public Declare Function esScreenHimetricPerPixelY Lib "CorvaneSupportKit0100.dll" (Factor As Single) As Long
Public Declare Function esScreenWidth Lib "CorvaneSupportKit0100.dll" (Twips As Single) As Long
Public Declare Function esScreenHeight Lib "CorvaneSupportKit0100.dll" (Twips As Single) As Long
Public Declare Function esScreenWidthPx Lib "CorvaneSupportKit0100.dll" (Pixels As Long) As Long
Public Declare Function esScreenHeightPx Lib "CorvaneSupportKit0100.dll" (Pixels As Long) As Long
Public Declare Function esVirtualScreenWidth Lib "CorvaneSupportKit0100.dll" (Twips As Single) As Long
Public Declare Function esVirtualScreenHeight Lib "CorvaneSupportKit0100.dll" (Twips As Single) As Long
Public Declare Function esVirtualScreenWidthPx Lib "CorvaneSupportKit0100.dll" (Pixels As Long) As Long
Public Declare Function esVirtualScreenHeightPx Lib "CorvaneSupportKit0100.dll" (Pixels As Long) As Long
Public Declare Function esVirtualScreenLeft Lib "CorvaneSupportKit0100.dll" (Twips As Single) As Long
Public Declare Function esVirtualScreenTop Lib "CorvaneSupportKit0100.dll" (Twips As Single) As Long
Public Declare Function esVirtualScreenLeftPx Lib "CorvaneSupportKit0100.dll" (Pixels As Long) As Long
Public Declare Function esVirtualScreenTopPx Lib "CorvaneSupportKit0100.dll" (Pixels As Long) As Long
Public Declare Function esIsMultiMonitorSupported Lib "CorvaneSupportKit0100.dll" (Result As Boolean) As Long
Public Declare Function esScreenHimetricToPixelsX Lib "CorvaneSupportKit0100.dll" (ByVal Himetric As Single, Pixels As Long) As Long
Public Declare Function esScreenHimetricToPixelsY Lib "CorvaneSupportKit0100.dll" (ByVal Himetric As Single, Pixels As Long) As Long
Public Declare Function esScreenTwipsToPixelsX Lib "CorvaneSupportKit0100.dll" (ByVal Twips As Single, Pixels As Long) As Long
Public Declare Function esScreenTwipsToPixelsY Lib "CorvaneSupportKit0100.dll" (ByVal Twips As Single, Pixels As Long) As Long

' Event log
Public Declare Function esLogInfo Lib "CorvaneSupportKit0100.dll" (ByVal Message As Long, Logged As Boolean) As Long
Public Declare Function esLogWarning Lib "CorvaneSupportKit0100.dll" (ByVal Message As Long, Logged As Boolean) As Long
Public Declare Function esLogError Lib "CorvaneSupportKit0100.dll" (ByVal Message As Long, Logged As Boolean) As Long

' Identity
Public Declare Function esGetComputerName Lib "CorvaneSupportKit0100.dll" (ByVal Name As Long) As Long
Public Declare Function esGetUserName Lib "CorvaneSupportKit0100.dll" (ByVal Name As Long) As Long
Public Declare Function esGetDomainName Lib "CorvaneSupportKit0100.dll" (ByVal Name As Long) As Long
Public Declare Function esGetFullUserName Lib "CorvaneSupportKit0100.dll" (ByVal MailForm As Boolean, ByVal WithComputer As Boolean, ByVal Name As Long) As Long
Public Declare Function esGetUserSID Lib "CorvaneSupportKit0100.dll" (Sid() As Byte, Success As Boolean) As Long
Public Declare Function esSIDtoStringSID Lib "CorvaneSupportKit0100.dll" (ByVal SidPtr As Long, ByVal Text As Long) As Long
Public Declare Function esSIDtoStringSID2 Lib "CorvaneSupportKit0100.dll" (Sid() As Byte, ByVal Text As Long) As Long

' Input and desktop
Public Declare Function esGetLastInputTime Lib "CorvaneSupportKit0100.dll" (Tick As Double) As Long
Public Declare Function esGetIdleTimeInterval Lib "CorvaneSupportKit0100.dll" (Milliseconds As Double) As Long
Public Declare Function esIsKeyPressed Lib "CorvaneSupportKit0100.dll" (ByVal VirtualKey As Long, Result As Boolean) As Long
Public Declare Function esIsKeyToggled Lib "CorvaneSupportKit0100.dll" (ByVal VirtualKey As Long, Result As Boolean) As Long
Public Declare Function esIsUnicodeAvailable Lib "CorvaneSupportKit0100.dll" (Result As Boolean) As Long
Public Declare Function esGetErrorMode Lib "CorvaneSupportKit0100.dll" (Mode As Long) As Long
Public Declare Function esIsWorkstationLocked Lib "CorvaneSupportKit0100.dll" (Result As Boolean) As Long
Public Declare Function esIsScreenSaverRunning Lib "CorvaneSupportKit0100.dll" (Result As Boolean) As Long
Public Declare Function esOpenReadMeFile Lib "CorvaneSupportKit0100.dll" (ByVal Silent As Boolean, Opened As Boolean) As Long
Public Declare Function esCLng Lib "CorvaneSupportKit0100.dll" (ByVal Text As Long, Result As Long) As Long

' Shutdown and priority
Public Declare Function esExitWindowsEx Lib "CorvaneSupportKit0100.dll" (ByVal Flags As Long, ByVal Reason As Long, Success As Boolean) As Long
Public Declare Function esSetSystemPowerState Lib "CorvaneSupportKit0100.dll" (ByVal Suspend As Boolean, ByVal Force As Boolean, Success As Boolean) As Long
Public Declare Function esSetBackgroundProcessPriority Lib "CorvaneSupportKit0100.dll" () As Long
Public Declare Function esSetIdleProcessPriority Lib "CorvaneSupportKit0100.dll" () As Long
Public Declare Function esSetForegroundProcessPriority Lib "CorvaneSupportKit0100.dll" () As Long
