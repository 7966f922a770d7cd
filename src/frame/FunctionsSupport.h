// Module FunctionsSupport: the platform functions that not every host has,
// reached by name at run time so that none of them stands in the import
// table. Each __NAME routine behaves as its function when the function is
// there; when the library will not load or the name is not in it, it gives
// 0 and sets g_missingEntry. The flag holds until the next __NAME call, so a
// caller reads it at once.
#pragma once

#include "Platform.h"

// 1 when the latest __NAME call could not reach its function, else 0. It
// tells nothing of what the function itself did.
extern uint8_t g_missingEntry;

HRESULT WINAPI __SHAUTOCOMPLETE(HWND window, DWORD flags);
BOOL WINAPI __ISWOW64PROCESS(HANDLE process, BOOL* wow64);
void WINAPI __GETNATIVESYSTEMINFO(SYSTEM_INFO* info);
BOOL WINAPI __GETPRODUCTNAME(LPSTR buffer, DWORD size);
const char* WINAPI __WINE_GET_VERSION();
DWORD WINAPI __GETLONGPATHNAMEA(LPCSTR shortPath, LPSTR buffer, DWORD size);
BOOL WINAPI __SETLAYEREDWINDOWATTRIBUTES(HWND window, COLORREF key, BYTE alpha, DWORD flags);
HMONITOR WINAPI __MONITORFROMWINDOW(HWND window, DWORD flags);
BOOL WINAPI __GETMONITORINFOA(HMONITOR monitor, MONITORINFO* info);
BOOL WINAPI __GETMONITORINFOW(HMONITOR monitor, MONITORINFO* info);
HRESULT WINAPI __DLLGETVERSION_SHELL32_DLL(DLLVERSIONINFO* info);
BOOL WINAPI __GETLASTINPUTINFO(LASTINPUTINFO* info);
BOOL WINAPI __GETDISKFREESPACEEXA(LPCSTR path, ULARGE_INTEGER* available, ULARGE_INTEGER* total,
                                  ULARGE_INTEGER* free);
BOOL WINAPI __GETDISKFREESPACEEXW(LPCWSTR path, ULARGE_INTEGER* available, ULARGE_INTEGER* total,
                                  ULARGE_INTEGER* free);
