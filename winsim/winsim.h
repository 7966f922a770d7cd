// winsim: a small stand-in for exactly the Win32 functions that the library
// calls, so that the same sources build for 32-bit Linux (-m32, the same
// __stdcall ABI) and run under the sanitizers and fuzzers.
//
// Each function follows the contract the library relies on; where a test
// must see a refusal or an odd answer, winsim_control.h lets it ask for one.
// A stand-in never pretends to succeed at something it does not do.
#pragma once

#include <cstddef>
#include <cstdint>

#define WINAPI __attribute__((stdcall))
#define __stdcall __attribute__((stdcall))
#define CALLBACK WINAPI

typedef int BOOL;
typedef int INT;
typedef unsigned int UINT;
typedef unsigned char BYTE;
typedef uint16_t WORD;
typedef uint32_t DWORD;
typedef long LONG;
typedef unsigned long ULONG;
typedef int64_t LONGLONG;
typedef uint64_t ULONGLONG;
typedef LONG HRESULT;
typedef short SHORT;
typedef unsigned short USHORT;
typedef char CHAR;
typedef char16_t WCHAR;
typedef WCHAR OLECHAR;
typedef WCHAR* BSTR;
typedef WCHAR* LPWSTR;
typedef const WCHAR* LPCWSTR;
typedef const OLECHAR* LPCOLESTR;
typedef char* LPSTR;
typedef const char* LPCSTR;
typedef void* LPVOID;
typedef const void* LPCVOID;
typedef short VARIANT_BOOL;
typedef unsigned short VARTYPE;
typedef void* HANDLE;
typedef struct HINSTANCE__* HINSTANCE;
typedef HINSTANCE HMODULE;
typedef struct HWND__* HWND;
typedef struct HDC__* HDC;
typedef uintptr_t WPARAM;
typedef intptr_t LPARAM;
typedef intptr_t LRESULT;
typedef DWORD* LPDWORD;
typedef BOOL* LPBOOL;

#define TRUE 1
#define FALSE 0
#define MAX_PATH 260
#define CP_ACP 0
#define CP_UTF8 65001
#define S_OK ((HRESULT)0)
#define S_FALSE ((HRESULT)1)
#define E_INVALIDARG ((HRESULT)0x80070057L)
#define E_OUTOFMEMORY ((HRESULT)0x8007000EL)
#define E_FAIL ((HRESULT)0x80004005L)
#define VARIANT_TRUE ((VARIANT_BOOL)-1)
#define VARIANT_FALSE ((VARIANT_BOOL)0)
#define DLL_PROCESS_DETACH 0
#define DLL_PROCESS_ATTACH 1
#define DLL_THREAD_ATTACH 2
#define DLL_THREAD_DETACH 3

extern "C" {

// OLEAUT32: BSTRs. A BSTR points behind a 32-bit byte count and is followed
// by a NUL unit; the null BSTR and the empty one stay distinct.
UINT WINAPI SysStringLen(BSTR bstr);
BSTR WINAPI SysAllocString(const OLECHAR* text);
BSTR WINAPI SysAllocStringLen(const OLECHAR* text, UINT length);
INT WINAPI SysReAllocString(BSTR* variable, const OLECHAR* text);
void WINAPI SysFreeString(BSTR bstr);

// KERNEL32: text.
int WINAPI lstrlenW(LPCWSTR text);
int WINAPI WideCharToMultiByte(UINT codePage, DWORD flags, LPCWSTR source, int sourceLength,
                               LPSTR destination, int destinationSize, LPCSTR defaultChar,
                               LPBOOL usedDefaultChar);
int WINAPI MultiByteToWideChar(UINT codePage, DWORD flags, LPCSTR source, int sourceLength,
                               LPWSTR destination, int destinationSize);

// KERNEL32: environment and process.
DWORD WINAPI ExpandEnvironmentStringsA(LPCSTR source, LPSTR destination, DWORD size);
DWORD WINAPI GetEnvironmentVariableA(LPCSTR name, LPSTR buffer, DWORD size);
BOOL WINAPI SetEnvironmentVariableA(LPCSTR name, LPCSTR value);
DWORD WINAPI GetLastError(void);
void WINAPI SetLastError(DWORD code);
void WINAPI ExitProcess(UINT exitCode) __attribute__((noreturn));

// The C run time of the platform (msvcrt) has these; glibc does not.
unsigned int _controlfp(unsigned int value, unsigned int mask);

}  // extern "C"

// msvcrt's conversions between the locale's 8-bit code page and UTF-16.
// glibc's work on its 32-bit wchar_t, so winsim gives the 16-bit forms.
size_t mbstowcs(WCHAR* destination, const char* source, size_t count);
size_t wcstombs(char* destination, const WCHAR* source, size_t count);

#define _MCW_PC 0x00030000u
#define _MCW_RC 0x00000300u
#define _PC_64 0x00000000u
#define _RC_NEAR 0x00000000u

// ---- Dates, times and the locale's date and time pictures ----
typedef struct _SYSTEMTIME {
    WORD wYear;
    WORD wMonth;
    WORD wDayOfWeek;
    WORD wDay;
    WORD wHour;
    WORD wMinute;
    WORD wSecond;
    WORD wMilliseconds;
} SYSTEMTIME, *PSYSTEMTIME, *LPSYSTEMTIME;

typedef struct _FILETIME {
    DWORD dwLowDateTime;
    DWORD dwHighDateTime;
} FILETIME, *PFILETIME, *LPFILETIME;

typedef double DATE;
typedef DWORD LCID;
typedef DWORD LCTYPE;

#define LOCALE_USER_DEFAULT 0x0400
#define LOCALE_SYSTEM_DEFAULT 0x0800
#define LOCALE_NOUSEROVERRIDE 0x80000000u
#define LOCALE_SSHORTDATE 0x0000001F
#define LOCALE_SLONGDATE 0x00000020
#define LOCALE_STIMEFORMAT 0x00001003
#define DATE_SHORTDATE 0x00000001
#define DATE_LONGDATE 0x00000002
#define TIME_NOMINUTESORSECONDS 0x00000001
#define TIME_NOSECONDS 0x00000002
#define TIME_NOTIMEMARKER 0x00000004
#define TIME_FORCE24HOURFORMAT 0x00000008

extern "C" {

// KERNEL32: the calendar of FILETIME (100 ns since 1 January 1601, UTC)
// and local time under the zone in force.
BOOL WINAPI SystemTimeToFileTime(const SYSTEMTIME* systemTime, LPFILETIME fileTime);
BOOL WINAPI FileTimeToSystemTime(const FILETIME* fileTime, LPSYSTEMTIME systemTime);
BOOL WINAPI FileTimeToLocalFileTime(const FILETIME* fileTime, LPFILETIME localFileTime);
BOOL WINAPI LocalFileTimeToFileTime(const FILETIME* localFileTime, LPFILETIME fileTime);
LONG WINAPI CompareFileTime(const FILETIME* first, const FILETIME* second);
void WINAPI GetSystemTime(LPSYSTEMTIME systemTime);
void WINAPI GetLocalTime(LPSYSTEMTIME systemTime);

// OLEAUT32: the automation date (days since 30 December 1899).
INT WINAPI SystemTimeToVariantTime(LPSYSTEMTIME systemTime, DATE* variantTime);
INT WINAPI VariantTimeToSystemTime(DATE variantTime, LPSYSTEMTIME systemTime);

// KERNEL32: one locale, English (United States), with the user's own
// pictures that SetLocaleInfoA stores.
LCID WINAPI GetUserDefaultLCID(void);
int WINAPI GetLocaleInfoA(LCID locale, LCTYPE type, LPSTR data, int size);
BOOL WINAPI SetLocaleInfoA(LCID locale, LCTYPE type, LPCSTR data);
int WINAPI GetDateFormatA(LCID locale, DWORD flags, const SYSTEMTIME* date, LPCSTR picture, LPSTR buffer,
                          int size);
int WINAPI GetTimeFormatA(LCID locale, DWORD flags, const SYSTEMTIME* time, LPCSTR picture, LPSTR buffer,
                          int size);

}  // extern "C"
