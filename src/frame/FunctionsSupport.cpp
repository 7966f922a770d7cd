// Module FunctionsSupport: lazily bound platform functions.
#include "FunctionsSupport.h"

#include "Tools.h"

static const char kModule[] = "FunctionsSupport";

uint8_t g_missingEntry = 0;

namespace {

// Loaded at first need, kept for the life of the process: nothing here
// calls FreeLibrary.
HMODULE g_shlwapi, g_kernel32, g_user32, g_ntdll, g_shell32;

// One pointer per routine; 0 until GetProcAddress has found it.
FARPROC g_shAutoComplete, g_isWow64Process, g_getNativeSystemInfo, g_getProductName, g_wineGetVersion,
    g_getLongPathNameA, g_setLayeredWindowAttributes, g_monitorFromWindow, g_getMonitorInfoA, g_getMonitorInfoW,
    g_dllGetVersionShell32, g_getLastInputInfo, g_getDiskFreeSpaceExA, g_getDiskFreeSpaceExW;

// What every routine does before calling: clears the flag, loads the library
// and looks up the name unless an earlier call found them, and gives back
// the function, or null with the flag set. A failure is not remembered, so
// the next call looks again.
template <class Function>
Function BINDENTRY(HMODULE& module, const char* library, FARPROC& entry, const char* name) {
    g_missingEntry = 0;
    if (!module) module = LoadLibraryA(library);
    if (!module) {
        g_missingEntry = 1;
        return nullptr;
    }
    if (!entry) entry = GetProcAddress(module, name);
    if (!entry) {
        g_missingEntry = 1;
        return nullptr;
    }
    return reinterpret_cast<Function>(reinterpret_cast<void (*)()>(entry));
}

}  // namespace

HRESULT WINAPI __SHAUTOCOMPLETE(HWND window, DWORD flags) {
    CSK_ROUTINE("__SHAUTOCOMPLETE");
    auto function =
        BINDENTRY<HRESULT(WINAPI*)(HWND, DWORD)>(g_shlwapi, "ShlWapi.DLL", g_shAutoComplete, "SHAutoComplete");
    return function ? function(window, flags) : 0;
}

BOOL WINAPI __ISWOW64PROCESS(HANDLE process, BOOL* wow64) {
    CSK_ROUTINE("__ISWOW64PROCESS");
    auto function =
        BINDENTRY<BOOL(WINAPI*)(HANDLE, BOOL*)>(g_kernel32, "Kernel32.DLL", g_isWow64Process, "IsWow64Process");
    return function ? function(process, wow64) : 0;
}

void WINAPI __GETNATIVESYSTEMINFO(SYSTEM_INFO* info) {
    CSK_ROUTINE("__GETNATIVESYSTEMINFO");
    auto function = BINDENTRY<void(WINAPI*)(SYSTEM_INFO*)>(g_kernel32, "Kernel32.DLL", g_getNativeSystemInfo,
                                                           "GetNativeSystemInfo");
    if (function) function(info);
}

// Wine exports GetProductName as a stub that ends the process when it is
// called, so on Wine the function counts as missing.
BOOL WINAPI __GETPRODUCTNAME(LPSTR buffer, DWORD size) {
    CSK_ROUTINE("__GETPRODUCTNAME");
    __WINE_GET_VERSION();
    const bool wine = g_missingEntry == 0;
    auto function =
        BINDENTRY<BOOL(WINAPI*)(LPSTR, DWORD)>(g_kernel32, "Kernel32.DLL", g_getProductName, "GetProductName");
    if (function && wine) {
        g_missingEntry = 1;
        return 0;
    }
    return function ? function(buffer, size) : 0;
}

const char* WINAPI __WINE_GET_VERSION() {
    CSK_ROUTINE("__WINE_GET_VERSION");
    auto function =
        BINDENTRY<const char*(CDECL*)()>(g_ntdll, "NTDLL.DLL", g_wineGetVersion, "wine_get_version");
    return function ? function() : nullptr;
}

DWORD WINAPI __GETLONGPATHNAMEA(LPCSTR shortPath, LPSTR buffer, DWORD size) {
    CSK_ROUTINE("__GETLONGPATHNAMEA");
    auto function = BINDENTRY<DWORD(WINAPI*)(LPCSTR, LPSTR, DWORD)>(g_kernel32, "Kernel32.DLL", g_getLongPathNameA,
                                                                    "GetLongPathNameA");
    return function ? function(shortPath, buffer, size) : 0;
}

BOOL WINAPI __SETLAYEREDWINDOWATTRIBUTES(HWND window, COLORREF key, BYTE alpha, DWORD flags) {
    CSK_ROUTINE("__SETLAYEREDWINDOWATTRIBUTES");
    auto function = BINDENTRY<BOOL(WINAPI*)(HWND, COLORREF, BYTE, DWORD)>(
        g_user32, "User32.DLL", g_setLayeredWindowAttributes, "SetLayeredWindowAttributes");
    return function ? function(window, key, alpha, flags) : 0;
}

HMONITOR WINAPI __MONITORFROMWINDOW(HWND window, DWORD flags) {
    CSK_ROUTINE("__MONITORFROMWINDOW");
    auto function = BINDENTRY<HMONITOR(WINAPI*)(HWND, DWORD)>(g_user32, "User32.DLL", g_monitorFromWindow,
                                                              "MonitorFromWindow");
    return function ? function(window, flags) : nullptr;
}

BOOL WINAPI __GETMONITORINFOA(HMONITOR monitor, MONITORINFO* info) {
    CSK_ROUTINE("__GETMONITORINFOA");
    auto function = BINDENTRY<BOOL(WINAPI*)(HMONITOR, MONITORINFO*)>(g_user32, "User32.DLL", g_getMonitorInfoA,
                                                                     "GetMonitorInfoA");
    return function ? function(monitor, info) : 0;
}

BOOL WINAPI __GETMONITORINFOW(HMONITOR monitor, MONITORINFO* info) {
    CSK_ROUTINE("__GETMONITORINFOW");
    auto function = BINDENTRY<BOOL(WINAPI*)(HMONITOR, MONITORINFO*)>(g_user32, "User32.DLL", g_getMonitorInfoW,
                                                                     "GetMonitorInfoW");
    return function ? function(monitor, info) : 0;
}

HRESULT WINAPI __DLLGETVERSION_SHELL32_DLL(DLLVERSIONINFO* info) {
    CSK_ROUTINE("__DLLGETVERSION_SHELL32_DLL");
    auto function = BINDENTRY<HRESULT(WINAPI*)(DLLVERSIONINFO*)>(g_shell32, "Shell32.DLL", g_dllGetVersionShell32,
                                                                 "DllGetVersion");
    return function ? function(info) : 0;
}

BOOL WINAPI __GETLASTINPUTINFO(LASTINPUTINFO* info) {
    CSK_ROUTINE("__GETLASTINPUTINFO");
    auto function =
        BINDENTRY<BOOL(WINAPI*)(LASTINPUTINFO*)>(g_user32, "User32.DLL", g_getLastInputInfo, "GetLastInputInfo");
    return function ? function(info) : 0;
}

BOOL WINAPI __GETDISKFREESPACEEXA(LPCSTR path, ULARGE_INTEGER* available, ULARGE_INTEGER* total,
                                  ULARGE_INTEGER* free) {
    CSK_ROUTINE("__GETDISKFREESPACEEXA");
    auto function = BINDENTRY<BOOL(WINAPI*)(LPCSTR, ULARGE_INTEGER*, ULARGE_INTEGER*, ULARGE_INTEGER*)>(
        g_kernel32, "Kernel32.DLL", g_getDiskFreeSpaceExA, "GetDiskFreeSpaceExA");
    return function ? function(path, available, total, free) : 0;
}

BOOL WINAPI __GETDISKFREESPACEEXW(LPCWSTR path, ULARGE_INTEGER* available, ULARGE_INTEGER* total,
                                  ULARGE_INTEGER* free) {
    CSK_ROUTINE("__GETDISKFREESPACEEXW");
    auto function = BINDENTRY<BOOL(WINAPI*)(LPCWSTR, ULARGE_INTEGER*, ULARGE_INTEGER*, ULARGE_INTEGER*)>(
        g_kernel32, "Kernel32.DLL", g_getDiskFreeSpaceExW, "GetDiskFreeSpaceExW");
    return function ? function(path, available, total, free) : 0;
}
