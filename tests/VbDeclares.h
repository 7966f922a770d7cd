// The exports as a Visual Basic program declares them: by plain name, with
// the argument list the caller pushes. Written apart from the library's
// sources on purpose, so that a mismatch between the two fails a test.
#pragma once

#include "Harness.h"

namespace vb {

// Path building
inline const VbFunction<HRESULT, BSTR, BSTR*> esAddBackslash{"esAddBackslash"};
inline const VbFunction<HRESULT, BSTR, BSTR*> esRemoveBackslash{"esRemoveBackslash"};
inline const VbFunction<HRESULT, BSTR, BSTR, VARIANT_BOOL, BSTR*> esBuildFileName{"esBuildFileName"};
inline const VbFunction<HRESULT, BSTR, BSTR, BSTR, BSTR, BSTR, BSTR, BSTR, BSTR, BSTR, BSTR*> esBuildFileName2{
    "esBuildFileName2"};

// Path parsing
inline const VbFunction<HRESULT, BSTR, BSTR*> esGetFileRoot{"esGetFileRoot"};
inline const VbFunction<HRESULT, BSTR, BSTR*> esGetFilePath{"esGetFilePath"};
inline const VbFunction<HRESULT, BSTR, VARIANT_BOOL, BSTR*> esGetFileName{"esGetFileName"};
inline const VbFunction<HRESULT, BSTR, BSTR*> esGetFileOnlyName{"esGetFileOnlyName"};
inline const VbFunction<HRESULT, BSTR, BSTR*> esGetFileExtension{"esGetFileExtension"};
inline const VbFunction<HRESULT, BSTR, BSTR, BSTR*> esGetRelativeFileName{"esGetRelativeFileName"};
inline const VbFunction<HRESULT, BSTR, BSTR, BSTR*> esGetAbsoluteFileName{"esGetAbsoluteFileName"};
inline const VbFunction<HRESULT, BSTR, BSTR, BSTR*> esReplaceFileExtension{"esReplaceFileExtension"};
// Colours
inline const VbFunction<HRESULT, LONG, LONG*> esGetRedRGB{"esGetRedRGB"};
inline const VbFunction<HRESULT, LONG, LONG*> esGetGreenRGB{"esGetGreenRGB"};
inline const VbFunction<HRESULT, LONG, LONG*> esGetBlueRGB{"esGetBlueRGB"};
inline const VbFunction<HRESULT, LONG, LONG*> esPaletteRGB{"esPaletteRGB"};
inline const VbFunction<HRESULT, LONG, LONG, LONG*> esTranslateColor{"esTranslateColor"};
inline const VbFunction<HRESULT, LONG, LONG, LONG*> esGetSolidColor{"esGetSolidColor"};
inline const VbFunction<HRESULT, LONG, LONG, LONG, LONG*> esRGB{"esRGB"};
inline const VbFunction<HRESULT, LONG, LONG, LONG, LONG, LONG*> esD3DRGBA{"esD3DRGBA"};
inline const VbFunction<HRESULT, LONG, LONG, LONG, LONG, LONG*> esD3DARGB{"esD3DARGB"};
inline const VbFunction<HRESULT, LONG, LONG, LONG, LONG*> esD3DXRGB{"esD3DXRGB"};
inline const VbFunction<HRESULT, LONG, LONG*> esGetRedD3DRGBA{"esGetRedD3DRGBA"};
inline const VbFunction<HRESULT, LONG, LONG*> esGetGreenD3DRGBA{"esGetGreenD3DRGBA"};
inline const VbFunction<HRESULT, LONG, LONG*> esGetBlueD3DRGBA{"esGetBlueD3DRGBA"};
inline const VbFunction<HRESULT, LONG, LONG*> esGetAlphaD3DRGBA{"esGetAlphaD3DRGBA"};
inline const VbFunction<HRESULT, LONG, LONG*> esRGBtoD3DRGBA{"esRGBtoD3DRGBA"};
inline const VbFunction<HRESULT, LONG, LONG*> esD3DRGBAtoRGB{"esD3DRGBAtoRGB"};

// Bits, bytes and number text
inline const VbFunction<HRESULT, BYTE, BYTE, SHORT*> esMakeWord{"esMakeWord"};
inline const VbFunction<HRESULT, SHORT, SHORT, LONG*> esMakeLong{"esMakeLong"};
inline const VbFunction<HRESULT, LONG, SHORT*> esHiWord{"esHiWord"};
inline const VbFunction<HRESULT, LONG, SHORT*> esLoWord{"esLoWord"};
inline const VbFunction<HRESULT, SHORT, BYTE*> esHiByte{"esHiByte"};
inline const VbFunction<HRESULT, SHORT, BYTE*> esLoByte{"esLoByte"};
inline const VbFunction<HRESULT, BYTE, LONG, BYTE*> esShiftLeft1{"esShiftLeft1"};
inline const VbFunction<HRESULT, SHORT, LONG, SHORT*> esShiftLeft2{"esShiftLeft2"};
inline const VbFunction<HRESULT, LONG, LONG, LONG*> esShiftLeft4{"esShiftLeft4"};
inline const VbFunction<HRESULT, BYTE, LONG, BYTE*> esShiftRight1{"esShiftRight1"};
inline const VbFunction<HRESULT, SHORT, LONG, SHORT*> esShiftRight2{"esShiftRight2"};
inline const VbFunction<HRESULT, LONG, LONG, LONG*> esShiftRight4{"esShiftRight4"};
inline const VbFunction<HRESULT, SHORT, SHORT*> esSwapBytes2{"esSwapBytes2"};
inline const VbFunction<HRESULT, LONG, LONG*> esSwapBytes4{"esSwapBytes4"};
inline const VbFunction<HRESULT, BYTE, BSTR*> esHex1{"esHex1"};
inline const VbFunction<HRESULT, SHORT, BSTR*> esHex2{"esHex2"};
inline const VbFunction<HRESULT, LONG, BSTR*> esHex4{"esHex4"};
inline const VbFunction<HRESULT, BYTE, BSTR*> esHexEx1{"esHexEx1"};
inline const VbFunction<HRESULT, SHORT, BSTR*> esHexEx2{"esHexEx2"};
inline const VbFunction<HRESULT, LONG, BSTR*> esHexEx4{"esHexEx4"};
inline const VbFunction<HRESULT, BYTE, BSTR*> esBin1{"esBin1"};
inline const VbFunction<HRESULT, SHORT, BSTR*> esBin2{"esBin2"};
inline const VbFunction<HRESULT, LONG, BSTR*> esBin4{"esBin4"};
inline const VbFunction<HRESULT, BSTR, VARIANT_BOOL*> esStringToBool{"esStringToBool"};
inline const VbFunction<HRESULT, VARIANT_BOOL, BSTR*> esBoolToString{"esBoolToString"};

// Random numbers and GUIDs
inline const VbFunction<HRESULT, VARIANT_BOOL> esRandomize{"esRandomize"};
inline const VbFunction<HRESULT, VARIANT_BOOL, double*> esRnd{"esRnd"};
inline const VbFunction<HRESULT, LONG, LONG, VARIANT_BOOL, LONG*> esGetRnd{"esGetRnd"};
inline const VbFunction<HRESULT, BSTR*> esGetNewGUID{"esGetNewGUID"};
// Dates
inline const VbFunction<HRESULT, SYSTEMTIME*, SYSTEMTIME*, LONG*> esCompareSystemTime{"esCompareSystemTime"};
inline const VbFunction<HRESULT, SYSTEMTIME*, SYSTEMTIME*, LONG*> esCompareSystemTimeEx{"esCompareSystemTimeEx"};
inline const VbFunction<HRESULT, SYSTEMTIME*, LONG*> esGetDayNumEx{"esGetDayNumEx"};
inline const VbFunction<HRESULT, double, LONG*> esGetDayNumEx2{"esGetDayNumEx2"};
inline const VbFunction<HRESULT, LONG*> esGetDayNum{"esGetDayNum"};
inline const VbFunction<HRESULT, SYSTEMTIME*, SYSTEMTIME*, VARIANT_BOOL*> esSystemTimeToLocalSystemTime{
    "esSystemTimeToLocalSystemTime"};
inline const VbFunction<HRESULT, SYSTEMTIME*, SYSTEMTIME*, VARIANT_BOOL*> esLocalSystemTimeToSystemTime{
    "esLocalSystemTimeToSystemTime"};
inline const VbFunction<HRESULT, double, double*, VARIANT_BOOL*> esSystemTimeToLocalTime{"esSystemTimeToLocalTime"};
inline const VbFunction<HRESULT, double, double*, VARIANT_BOOL*> esLocalTimeToSystemTime{"esLocalTimeToSystemTime"};
inline const VbFunction<HRESULT, double*> esSysNow{"esSysNow"};

// Date, time and Roman formats
inline const VbFunction<HRESULT, SYSTEMTIME*, VARIANT_BOOL, VARIANT_BOOL, BSTR*> esFormatDate{"esFormatDate"};
inline const VbFunction<HRESULT, SYSTEMTIME*, VARIANT_BOOL, VARIANT_BOOL, BSTR*> esFormatTime{"esFormatTime"};
inline const VbFunction<HRESULT, double, VARIANT_BOOL, VARIANT_BOOL, BSTR*> esFormatDate2{"esFormatDate2"};
inline const VbFunction<HRESULT, double, VARIANT_BOOL, VARIANT_BOOL, BSTR*> esFormatTime2{"esFormatTime2"};
inline const VbFunction<HRESULT, LONG, BSTR*> esFormatRoman{"esFormatRoman"};


// Host identification, shell version and bitness (the 43 host tests and the
// six version numbers are called by name from tables)
inline const VbFunction<HRESULT, OSVERSIONINFOEXA*, VARIANT_BOOL*, VARIANT_BOOL*> esGetVersionEx{"esGetVersionEx"};
inline const VbFunction<HRESULT, SYSTEM_INFO*, VARIANT_BOOL*> esGetNativeSystemInfo{"esGetNativeSystemInfo"};
inline const VbFunction<HRESULT, BSTR*> esGetProductName{"esGetProductName"};
inline const VbFunction<HRESULT, VARIANT_BOOL*> esIsHostWin64{"esIsHostWin64"};
inline const VbFunction<HRESULT, VARIANT_BOOL*> esIsHostWine{"esIsHostWine"};
inline const VbFunction<HRESULT, VARIANT_BOOL*> esIsHostWinNT{"esIsHostWinNT"};
inline const VbFunction<HRESULT, LONG, LONG*> esIsProcessWin64Ex{"esIsProcessWin64Ex"};
inline const VbFunction<HRESULT, LONG, VARIANT_BOOL*> esIsProcessWin64{"esIsProcessWin64"};


// File system queries (the twelve tests and the text exports with a flag
// are called by name from tables)
inline const VbFunction<HRESULT, BSTR, LONG*> esGetFileAttributes{"esGetFileAttributes"};
inline const VbFunction<HRESULT, BSTR, LONG*> esGetFileSize{"esGetFileSize"};
inline const VbFunction<HRESULT, BSTR, double*> esGetFileSizeEx{"esGetFileSizeEx"};
inline const VbFunction<HRESULT, BSTR, double*> esGetDiskSpaceTotal{"esGetDiskSpaceTotal"};
inline const VbFunction<HRESULT, BSTR, double*> esGetDiskSpaceFree{"esGetDiskSpaceFree"};
inline const VbFunction<HRESULT, BSTR, double*, double*, double*, VARIANT_BOOL*> esGetDiskSpace{"esGetDiskSpace"};
inline const VbFunction<HRESULT, BSTR, BSTR*> esGetVolumeName{"esGetVolumeName"};
inline const VbFunction<HRESULT, BSTR, BSTR*> esGetVolumeFileSystemName{"esGetVolumeFileSystemName"};
inline const VbFunction<HRESULT, BSTR, LONG*> esGetVolumeSerialNumber{"esGetVolumeSerialNumber"};
inline const VbFunction<HRESULT, BSTR, LONG*> esGetVolumeMaximumComponentLength{"esGetVolumeMaximumComponentLength"};
inline const VbFunction<HRESULT, BSTR, LONG*> esGetVolumeFileSystemFlags{"esGetVolumeFileSystemFlags"};
inline const VbFunction<HRESULT, LONG, BSTR*> esFormatVolumeSerialNumber{"esFormatVolumeSerialNumber"};


// Registry and folders
inline const VbFunction<HRESULT, LONG, BSTR, BSTR, BSTR, VARIANT_BOOL, VARIANT_BOOL*, BSTR*> esReadStringFromRegistry{
    "esReadStringFromRegistry"};
inline const VbFunction<HRESULT, LONG, BSTR, BSTR, LONG, VARIANT_BOOL*, LONG*> esReadLongFromRegistry{
    "esReadLongFromRegistry"};
inline const VbFunction<HRESULT, LONG, BSTR, BSTR, VARIANT_BOOL, VARIANT_BOOL*, VARIANT_BOOL*> esReadBoolFromRegistry{
    "esReadBoolFromRegistry"};
inline const VbFunction<HRESULT, LONG, BSTR, BSTR, BSTR, VARIANT_BOOL, VARIANT_BOOL*> esWriteStringToRegistry{
    "esWriteStringToRegistry"};
inline const VbFunction<HRESULT, LONG, BSTR, BSTR, LONG, VARIANT_BOOL, VARIANT_BOOL*> esWriteLongToRegistry{
    "esWriteLongToRegistry"};
inline const VbFunction<HRESULT, LONG, BSTR, BSTR, VARIANT_BOOL, VARIANT_BOOL*> esWriteBoolToRegistry{
    "esWriteBoolToRegistry"};
inline const VbFunction<HRESULT, LONG, BSTR, BSTR, VARIANT_BOOL*> esDeleteValueFromRegistry{"esDeleteValueFromRegistry"};
inline const VbFunction<HRESULT, LONG, BSTR, VARIANT_BOOL, VARIANT_BOOL*> esDeleteKeyFromRegistry{
    "esDeleteKeyFromRegistry"};
inline const VbFunction<HRESULT, BSTR, VARIANT_BOOL*> esSetCurrentDirectory{"esSetCurrentDirectory"};
inline const VbFunction<HRESULT, LONG, BSTR*> esGetSpecialFolder{"esGetSpecialFolder"};
inline const VbFunction<HRESULT, LONG, VARIANT_BOOL, BSTR*> esGetPathFromPIDL{"esGetPathFromPIDL"};
inline const VbFunction<HRESULT, BSTR, BSTR, BSTR*> esGetTempFileName2{"esGetTempFileName2"};
inline const VbFunction<HRESULT, BSTR, BSTR*> esGetFileAppPath{"esGetFileAppPath"};
inline const VbFunction<HRESULT, VARIANT_BOOL*> esRegisterAppPath{"esRegisterAppPath"};
inline const VbFunction<HRESULT, VARIANT_BOOL*> esUnRegisterAppPath{"esUnRegisterAppPath"};

// Visual Basic host, input and desktop state
struct ThunderHandles { LONG handles[4]; };
inline const VbFunction<HRESULT, LONG*> esGetVBVersion{"esGetVBVersion"};
inline const VbFunction<HRESULT, VARIANT_BOOL*> esIsInIDE{"esIsInIDE"};
inline const VbFunction<HRESULT, LONG*> esGetThunderMainHandle{"esGetThunderMainHandle"};
inline const VbFunction<HRESULT, ThunderHandles*> esGetThunderMainHandles{"esGetThunderMainHandles"};
inline const VbFunction<HRESULT, BSTR*> esGetThunderMainTitle{"esGetThunderMainTitle"};
inline const VbFunction<HRESULT, VARIANT_BOOL*> esFixUserControlsContainerWindow{"esFixUserControlsContainerWindow"};
inline const VbFunction<HRESULT, double*> esGetLastInputTime{"esGetLastInputTime"};
inline const VbFunction<HRESULT, double*> esGetIdleTimeInterval{"esGetIdleTimeInterval"};
inline const VbFunction<HRESULT, LONG, VARIANT_BOOL*> esIsKeyPressed{"esIsKeyPressed"};
inline const VbFunction<HRESULT, LONG, VARIANT_BOOL*> esIsKeyToggled{"esIsKeyToggled"};
inline const VbFunction<HRESULT, VARIANT_BOOL*> esIsUnicodeAvailable{"esIsUnicodeAvailable"};
inline const VbFunction<HRESULT, LONG*> esGetErrorMode{"esGetErrorMode"};
inline const VbFunction<HRESULT, VARIANT_BOOL*> esIsWorkstationLocked{"esIsWorkstationLocked"};
inline const VbFunction<HRESULT, VARIANT_BOOL*> esIsScreenSaverRunning{"esIsScreenSaverRunning"};
inline const VbFunction<HRESULT, VARIANT_BOOL, VARIANT_BOOL*> esOpenReadMeFile{"esOpenReadMeFile"};
inline const VbFunction<HRESULT, BSTR, LONG*> esCLng{"esCLng"};

// Windows and controls
struct NewRect {
    LONG left, top, width, height;
};
inline const VbFunction<HRESULT, BSTR, LONG, BSTR, BSTR, LONG, LONG*> esMsgBoxEx{"esMsgBoxEx"};
inline const VbFunction<HRESULT, BSTR, BSTR, LONG*> esMsgBox{"esMsgBox"};
inline const VbFunction<HRESULT, BSTR, LONG, BSTR, LONG*> esMsgBox2{"esMsgBox2"};
inline const VbFunction<HRESULT, RECT*> esNormalizeRect{"esNormalizeRect"};
inline const VbFunction<HRESULT, RECT*, NewRect*> esRectToNewRect{"esRectToNewRect"};
inline const VbFunction<HRESULT, NewRect*, RECT*> esNewRectToRect{"esNewRectToRect"};
inline const VbFunction<HRESULT, LONG, VARIANT_BOOL, VARIANT_BOOL*> esCenterForm{"esCenterForm"};
inline const VbFunction<HRESULT, LONG, VARIANT_BOOL, VARIANT_BOOL*> esCenterFormEx{"esCenterFormEx"};
inline const VbFunction<HRESULT, LONG, VARIANT_BOOL*> esSetForegroundWindowEx{"esSetForegroundWindowEx"};
inline const VbFunction<HRESULT, LONG> esRestoreWindow{"esRestoreWindow"};
inline const VbFunction<HRESULT, LONG> esUnloadForm{"esUnloadForm"};
inline const VbFunction<HRESULT, LONG, BSTR*> esGetWindowText{"esGetWindowText"};
inline const VbFunction<HRESULT, LONG, BSTR> esSetWindowText{"esSetWindowText"};
inline const VbFunction<HRESULT, LONG, BSTR*> esGetWindowClassName{"esGetWindowClassName"};
inline const VbFunction<HRESULT, LONG, VARIANT_BOOL, BSTR*> esComboBoxToString{"esComboBoxToString"};
inline const VbFunction<HRESULT, BSTR, LONG, VARIANT_BOOL> esComboBoxFromString{"esComboBoxFromString"};
inline const VbFunction<HRESULT, LONG> esTextBox_SelectAll{"esTextBox_SelectAll"};
inline const VbFunction<HRESULT, LONG> esTextBox_SelectStart{"esTextBox_SelectStart"};
inline const VbFunction<HRESULT, LONG> esTextBox_SelectEnd{"esTextBox_SelectEnd"};
inline const VbFunction<HRESULT, LONG, BSTR> esTextBox_AddText{"esTextBox_AddText"};
inline const VbFunction<HRESULT, LONG, BSTR> esTextBox_AddLine{"esTextBox_AddLine"};
inline const VbFunction<HRESULT, LONG, BSTR> esTextBox_AddLine2{"esTextBox_AddLine2"};
inline const VbFunction<HRESULT, LONG, LONG, VARIANT_BOOL, VARIANT_BOOL*> esSetMenuJustify{"esSetMenuJustify"};
inline const VbFunction<HRESULT, LONG, LONG, VARIANT_BOOL> esSetWindowTransparecny{"esSetWindowTransparecny"};
inline const VbFunction<HRESULT, LONG> esDisableWindowTransparecny{"esDisableWindowTransparecny"};
inline const VbFunction<HRESULT, LONG, LONG, VARIANT_BOOL*> esAddAutoComplete{"esAddAutoComplete"};
inline const VbFunction<HRESULT, LONG*> esGet_WM_TASKBAR_CREATED{"esGet_WM_TASKBAR_CREATED"};
inline const VbFunction<HRESULT, float*> esScreenTwipsPerPixelX{"esScreenTwipsPerPixelX"};
inline const VbFunction<HRESULT, float*> esScreenTwipsPerPixelY{"esScreenTwipsPerPixelY"};
inline const VbFunction<HRESULT, float*> esScreenHimetricPerPixelX{"esScreenHimetricPerPixelX"};
inline const VbFunction<HRESULT, float*> esScreenHimetricPerPixelY{"esScreenHimetricPerPixelY"};
inline const VbFunction<HRESULT, float*> esScreenWidth{"esScreenWidth"};
inline const VbFunction<HRESULT, float*> esScreenHeight{"esScreenHeight"};
inline const VbFunction<HRESULT, LONG*> esScreenWidthPx{"esScreenWidthPx"};
inline const VbFunction<HRESULT, LONG*> esScreenHeightPx{"esScreenHeightPx"};
inline const VbFunction<HRESULT, float*> esVirtualScreenWidth{"esVirtualScreenWidth"};
inline const VbFunction<HRESULT, float*> esVirtualScreenHeight{"esVirtualScreenHeight"};
inline const VbFunction<HRESULT, LONG*> esVirtualScreenWidthPx{"esVirtualScreenWidthPx"};
inline const VbFunction<HRESULT, LONG*> esVirtualScreenHeightPx{"esVirtualScreenHeightPx"};
inline const VbFunction<HRESULT, float*> esVirtualScreenLeft{"esVirtualScreenLeft"};
inline const VbFunction<HRESULT, float*> esVirtualScreenTop{"esVirtualScreenTop"};
inline const VbFunction<HRESULT, LONG*> esVirtualScreenLeftPx{"esVirtualScreenLeftPx"};
inline const VbFunction<HRESULT, LONG*> esVirtualScreenTopPx{"esVirtualScreenTopPx"};
inline const VbFunction<HRESULT, VARIANT_BOOL*> esIsMultiMonitorSupported{"esIsMultiMonitorSupported"};
inline const VbFunction<HRESULT, float, LONG*> esScreenHimetricToPixelsX{"esScreenHimetricToPixelsX"};
inline const VbFunction<HRESULT, float, LONG*> esScreenHimetricToPixelsY{"esScreenHimetricToPixelsY"};
inline const VbFunction<HRESULT, float, LONG*> esScreenTwipsToPixelsX{"esScreenTwipsToPixelsX"};
inline const VbFunction<HRESULT, float, LONG*> esScreenTwipsToPixelsY{"esScreenTwipsToPixelsY"};

}  // namespace vb

// Identity, event log, shutdown, power and priority; the library's own
// identity
namespace vb {
inline const VbFunction<HRESULT, BSTR*> esGetComputerName{"esGetComputerName"};
inline const VbFunction<HRESULT, BSTR*> esGetUserName{"esGetUserName"};
inline const VbFunction<HRESULT, BSTR*> esGetDomainName{"esGetDomainName"};
inline const VbFunction<HRESULT, VARIANT_BOOL, VARIANT_BOOL, BSTR*> esGetFullUserName{"esGetFullUserName"};
inline const VbFunction<HRESULT, SAFEARRAY**, VARIANT_BOOL*> esGetUserSID{"esGetUserSID"};
inline const VbFunction<HRESULT, const void*, BSTR*> esSIDtoStringSID{"esSIDtoStringSID"};
inline const VbFunction<HRESULT, SAFEARRAY**, BSTR*> esSIDtoStringSID2{"esSIDtoStringSID2"};
inline const VbFunction<HRESULT, BSTR, VARIANT_BOOL*> esLogInfo{"esLogInfo"};
inline const VbFunction<HRESULT, BSTR, VARIANT_BOOL*> esLogWarning{"esLogWarning"};
inline const VbFunction<HRESULT, BSTR, VARIANT_BOOL*> esLogError{"esLogError"};
inline const VbFunction<HRESULT, LONG, LONG, VARIANT_BOOL*> esExitWindowsEx{"esExitWindowsEx"};
inline const VbFunction<HRESULT, VARIANT_BOOL, VARIANT_BOOL, VARIANT_BOOL*> esSetSystemPowerState{
    "esSetSystemPowerState"};
inline const VbFunction<HRESULT> esSetBackgroundProcessPriority{"esSetBackgroundProcessPriority"};
inline const VbFunction<HRESULT> esSetIdleProcessPriority{"esSetIdleProcessPriority"};
inline const VbFunction<HRESULT> esSetForegroundProcessPriority{"esSetForegroundProcessPriority"};
inline const VbFunction<HRESULT, DLLVERSIONINFO*> DllGetVersion{"DllGetVersion"};
inline const VbFunction<HRESULT, BOOL, LPCWSTR> DllInstall{"DllInstall"};
inline const VbFunction<HRESULT> DllRegisterServer{"DllRegisterServer"};
inline const VbFunction<HRESULT> DllUnregisterServer{"DllUnregisterServer"};
}  // namespace vb
