// winsim: a small stand-in for exactly the Win32 functions that the library
// calls, so that the same sources build natively for x86-64 Linux and run
// under the sanitizers and fuzzers. The Win32 types keep their Windows
// widths: LONG, DWORD, BOOL and HRESULT are 32-bit, handles and the *_PTR
// types pointer-sized. x86-64 has one calling convention, so WINAPI is empty.
//
// Each function follows the contract the library relies on; where a test
// must see a refusal or an odd answer, winsim_control.h lets it ask for one.
// A stand-in never pretends to succeed at something it does not do.
#pragma once

#include <cstddef>
#include <cstdint>

#define WINAPI
#define __stdcall
#define CALLBACK WINAPI

typedef int BOOL;
typedef int INT;
typedef unsigned int UINT;
typedef unsigned char BYTE;
typedef uint16_t WORD;
typedef uint32_t DWORD;
typedef int32_t LONG;
typedef uint32_t ULONG;
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

// ---- Path parsing and byte arrays -----------------------------------------

// OLEAUT32: SAFEARRAYs, laid out as the platform lays them out. An array
// made with a type records it in the four bytes before the descriptor
// (FADF_HAVEVARTYPE); one made from a bare descriptor records none.
typedef struct tagSAFEARRAYBOUND {
    ULONG cElements;
    LONG lLbound;
} SAFEARRAYBOUND;

typedef struct tagSAFEARRAY {
    USHORT cDims;
    USHORT fFeatures;
    ULONG cbElements;
    ULONG cLocks;
    void* pvData;
    SAFEARRAYBOUND rgsabound[1];
} SAFEARRAY;

#define VT_I4 3
#define VT_UI1 17
#define FADF_HAVEVARTYPE 0x0080
#define DISP_E_ARRAYISLOCKED ((HRESULT)0x8002000DL)
#define E_UNEXPECTED ((HRESULT)0x8000FFFFL)

extern "C" {

SAFEARRAY* WINAPI SafeArrayCreate(VARTYPE type, UINT dims, SAFEARRAYBOUND* bounds);
SAFEARRAY* WINAPI SafeArrayCreateVector(VARTYPE type, LONG lowerBound, ULONG elements);
HRESULT WINAPI SafeArrayAllocDescriptor(UINT dims, SAFEARRAY** out);
HRESULT WINAPI SafeArrayAllocData(SAFEARRAY* array);
HRESULT WINAPI SafeArrayDestroy(SAFEARRAY* array);
HRESULT WINAPI SafeArrayGetVartype(SAFEARRAY* array, VARTYPE* type);
UINT WINAPI SafeArrayGetElemsize(SAFEARRAY* array);
UINT WINAPI SafeArrayGetDim(SAFEARRAY* array);
HRESULT WINAPI SafeArrayGetLBound(SAFEARRAY* array, UINT dim, LONG* bound);
HRESULT WINAPI SafeArrayGetUBound(SAFEARRAY* array, UINT dim, LONG* bound);
HRESULT WINAPI SafeArrayRedim(SAFEARRAY* array, SAFEARRAYBOUND* bound);
HRESULT WINAPI SafeArrayAccessData(SAFEARRAY* array, void** data);
HRESULT WINAPI SafeArrayUnaccessData(SAFEARRAY* array);

// SHLWAPI: the shell's path functions, on 8-bit text of MAX_PATH at most.
BOOL WINAPI PathStripToRootA(LPSTR path);
LPSTR WINAPI PathFindFileNameA(LPCSTR path);
BOOL WINAPI PathRelativePathToA(LPSTR result, LPCSTR from, DWORD fromAttributes, LPCSTR to, DWORD toAttributes);
LPSTR WINAPI PathCombineA(LPSTR result, LPCSTR folder, LPCSTR file);

}  // extern "C"

#define FILE_ATTRIBUTE_DIRECTORY 0x00000010
#define FILE_ATTRIBUTE_NORMAL 0x00000080
// ---- Colours, counters, the cryptographic provider and GUIDs ----

typedef DWORD COLORREF;
typedef DWORD OLE_COLOR;
typedef struct HPALETTE__* HPALETTE;
typedef uintptr_t HCRYPTPROV;

typedef union _LARGE_INTEGER {
    struct {
        DWORD LowPart;
        LONG HighPart;
    } u;
    LONGLONG QuadPart;
} LARGE_INTEGER;

typedef struct _GUID {
    DWORD Data1;
    WORD Data2;
    WORD Data3;
    BYTE Data4[8];
} GUID;
typedef const GUID& REFGUID;
typedef OLECHAR* LPOLESTR;

#define CLR_INVALID 0xFFFFFFFFu
#define COLOR_WINDOW 5
#define COLOR_WINDOWTEXT 8
#define COLOR_HIGHLIGHT 13
#define COLOR_MENUBAR 30
#define PROV_RSA_FULL 1
#define NTE_BAD_KEYSET ((DWORD)0x80090016L)

extern "C" {

// OLEAUT32: an OLE_COLOR to a COLORREF (0 on success, E_INVALIDARG).
HRESULT WINAPI OleTranslateColor(OLE_COLOR color, HPALETTE palette, COLORREF* result);

// USER32 / GDI32: the system colours and the screen's device context.
DWORD WINAPI GetSysColor(int index);
HWND WINAPI GetDesktopWindow(void);
HDC WINAPI GetDC(HWND window);
int WINAPI ReleaseDC(HWND window, HDC dc);
COLORREF WINAPI GetNearestColor(HDC dc, COLORREF color);

// KERNEL32: counters.
BOOL WINAPI QueryPerformanceCounter(LARGE_INTEGER* counter);
BOOL WINAPI QueryPerformanceFrequency(LARGE_INTEGER* frequency);
DWORD WINAPI GetTickCount(void);

// ADVAPI32: the cryptographic provider's random bytes.
BOOL WINAPI CryptAcquireContextA(HCRYPTPROV* provider, LPCSTR container, LPCSTR providerName, DWORD type,
                                 DWORD flags);
BOOL WINAPI CryptGenRandom(HCRYPTPROV provider, DWORD length, BYTE* buffer);
BOOL WINAPI CryptReleaseContext(HCRYPTPROV provider, DWORD flags);

// OLE32: GUIDs.
HRESULT WINAPI CoCreateGuid(GUID* guid);
int WINAPI StringFromGUID2(REFGUID guid, LPOLESTR buffer, int size);

}  // extern "C"

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

// ---- The host: version, system facts, dynamic loading, processes ----

typedef uintptr_t DWORD_PTR;
typedef uintptr_t ULONG_PTR;
typedef intptr_t (*FARPROC)();
typedef struct HMONITOR__* HMONITOR;
#define CDECL

typedef struct tagRECT {
    LONG left;
    LONG top;
    LONG right;
    LONG bottom;
} RECT;

typedef union _ULARGE_INTEGER {
    struct {
        DWORD LowPart;
        DWORD HighPart;
    } u;
    ULONGLONG QuadPart;
} ULARGE_INTEGER;

typedef struct _OSVERSIONINFOA {
    DWORD dwOSVersionInfoSize;
    DWORD dwMajorVersion;
    DWORD dwMinorVersion;
    DWORD dwBuildNumber;
    DWORD dwPlatformId;
    CHAR szCSDVersion[128];
} OSVERSIONINFOA;

typedef struct _OSVERSIONINFOEXA {
    DWORD dwOSVersionInfoSize;
    DWORD dwMajorVersion;
    DWORD dwMinorVersion;
    DWORD dwBuildNumber;
    DWORD dwPlatformId;
    CHAR szCSDVersion[128];
    WORD wServicePackMajor;
    WORD wServicePackMinor;
    WORD wSuiteMask;
    BYTE wProductType;
    BYTE wReserved;
} OSVERSIONINFOEXA;

typedef struct _SYSTEM_INFO {
    union {
        DWORD dwOemId;
        struct {
            WORD wProcessorArchitecture;
            WORD wReserved;
        };
    };
    DWORD dwPageSize;
    LPVOID lpMinimumApplicationAddress;
    LPVOID lpMaximumApplicationAddress;
    DWORD_PTR dwActiveProcessorMask;
    DWORD dwNumberOfProcessors;
    DWORD dwProcessorType;
    DWORD dwAllocationGranularity;
    WORD wProcessorLevel;
    WORD wProcessorRevision;
} SYSTEM_INFO;

typedef struct _DLLVERSIONINFO {
    DWORD cbSize;
    DWORD dwMajorVersion;
    DWORD dwMinorVersion;
    DWORD dwBuildNumber;
    DWORD dwPlatformID;
} DLLVERSIONINFO;

typedef struct tagMONITORINFO {
    DWORD cbSize;
    RECT rcMonitor;
    RECT rcWork;
    DWORD dwFlags;
} MONITORINFO;

typedef struct tagLASTINPUTINFO {
    UINT cbSize;
    DWORD dwTime;
} LASTINPUTINFO;

#define VER_PLATFORM_WIN32s 0
#define VER_PLATFORM_WIN32_WINDOWS 1
#define VER_PLATFORM_WIN32_NT 2
#define VER_NT_WORKSTATION 1
#define SM_SERVERR2 89
#define PROCESS_QUERY_INFORMATION 0x0400
#define PROCESSOR_ARCHITECTURE_INTEL 0
#define PROCESSOR_ARCHITECTURE_AMD64 9

extern "C" {

// KERNEL32: the version record, at the size its size field asks for (156
// or 148, as far as the host accepts them).
BOOL WINAPI GetVersionExA(OSVERSIONINFOA* info);
void WINAPI GetSystemInfo(SYSTEM_INFO* info);

// USER32: the system metrics that a test has set; 0 for any other index.
int WINAPI GetSystemMetrics(int index);

// KERNEL32: dynamic loading, of the five system libraries only. Handles fit
// in 32 bits; the entry points found are those winsim implements.
HMODULE WINAPI LoadLibraryA(LPCSTR name);
FARPROC WINAPI GetProcAddress(HMODULE module, LPCSTR name);

// KERNEL32: processes, as a table of identifiers that a test fills.
HANDLE WINAPI GetCurrentProcess(void);
DWORD WINAPI GetCurrentProcessId(void);
HANDLE WINAPI OpenProcess(DWORD access, BOOL inherit, DWORD processId);
BOOL WINAPI CloseHandle(HANDLE handle);

}  // extern "C"

// ---- Files, folders and volumes ----

typedef struct _WIN32_FIND_DATAA {
    DWORD dwFileAttributes;
    FILETIME ftCreationTime;
    FILETIME ftLastAccessTime;
    FILETIME ftLastWriteTime;
    DWORD nFileSizeHigh;
    DWORD nFileSizeLow;
    DWORD dwReserved0;
    DWORD dwReserved1;
    CHAR cFileName[MAX_PATH];
    CHAR cAlternateFileName[14];
} WIN32_FIND_DATAA;

#define INVALID_HANDLE_VALUE (reinterpret_cast<HANDLE>(static_cast<intptr_t>(-1)))
#define INVALID_FILE_ATTRIBUTES 0xFFFFFFFFu
#define FILE_ATTRIBUTE_READONLY 0x00000001
#define FILE_ATTRIBUTE_HIDDEN 0x00000002
#define FILE_ATTRIBUTE_ARCHIVE 0x00000020
#define FILE_ATTRIBUTE_REPARSE_POINT 0x00000400
#define ERROR_FILE_NOT_FOUND 2
#define ERROR_PATH_NOT_FOUND 3
#define ERROR_ACCESS_DENIED 5
#define ERROR_INVALID_HANDLE 6
#define ERROR_NOT_READY 21
#define ERROR_SHARING_VIOLATION 32
#define ERROR_INVALID_PARAMETER 87
#define ERROR_INVALID_NAME 123
#define ERROR_MOD_NOT_FOUND 126

extern "C" {

// KERNEL32: what a path names. Names are found without regard to case and
// given back as stored; "*" and "?" are refused as names (winsim does not
// search by pattern).
DWORD WINAPI GetFileAttributesA(LPCSTR path);
HANDLE WINAPI FindFirstFileA(LPCSTR path, WIN32_FIND_DATAA* record);
BOOL WINAPI FindClose(HANDLE search);

// KERNEL32: spellings of a path. Sizes follow the platform: with no room
// the size needed with its terminator, with room the length written.
DWORD WINAPI GetFullPathNameA(LPCSTR path, DWORD size, LPSTR buffer, LPSTR* filePart);
DWORD WINAPI GetShortPathNameA(LPCSTR path, LPSTR buffer, DWORD size);
DWORD WINAPI GetModuleFileNameA(HMODULE module, LPSTR buffer, DWORD size);

// KERNEL32: volumes and their space (GetDiskFreeSpaceExA is reached only
// through GetProcAddress, as is GetLongPathNameA).
BOOL WINAPI GetDiskFreeSpaceA(LPCSTR root, DWORD* sectorsPerCluster, DWORD* bytesPerSector, DWORD* freeClusters,
                              DWORD* totalClusters);
BOOL WINAPI GetVolumeInformationA(LPCSTR root, LPSTR label, DWORD labelSize, DWORD* serial, DWORD* maxComponent,
                                  DWORD* flags, LPSTR fileSystem, DWORD fileSystemSize);

}  // extern "C"

// ---- The registry, system folders, special folders and new files ----

typedef struct HKEY__* HKEY;
typedef HKEY* PHKEY;
typedef DWORD REGSAM;
typedef BYTE* LPBYTE;
typedef struct _ITEMIDLIST ITEMIDLIST;
typedef ITEMIDLIST* LPITEMIDLIST;
typedef const ITEMIDLIST* LPCITEMIDLIST;

typedef struct _SECURITY_ATTRIBUTES {
    DWORD nLength;
    LPVOID lpSecurityDescriptor;
    BOOL bInheritHandle;
} SECURITY_ATTRIBUTES;

// The predefined roots, as 64-bit Windows widens them: sign-extended.
#define HKEY_CLASSES_ROOT (reinterpret_cast<HKEY>(static_cast<intptr_t>(static_cast<LONG>(0x80000000u))))
#define HKEY_CURRENT_USER (reinterpret_cast<HKEY>(static_cast<intptr_t>(static_cast<LONG>(0x80000001u))))
#define HKEY_LOCAL_MACHINE (reinterpret_cast<HKEY>(static_cast<intptr_t>(static_cast<LONG>(0x80000002u))))
#define HKEY_USERS (reinterpret_cast<HKEY>(static_cast<intptr_t>(static_cast<LONG>(0x80000003u))))
#define REG_NONE 0
#define REG_SZ 1
#define REG_EXPAND_SZ 2
#define REG_BINARY 3
#define REG_DWORD 4
#define REG_DWORD_BIG_ENDIAN 5
#define REG_MULTI_SZ 7
#define KEY_QUERY_VALUE 0x0001
#define KEY_SET_VALUE 0x0002
#define REG_OPTION_NON_VOLATILE 0
#define ERROR_SUCCESS 0
#define ERROR_MORE_DATA 234
#define ERROR_DIR_NOT_EMPTY 145
#define GENERIC_WRITE 0x40000000u
#define CREATE_NEW 1
#define CREATE_ALWAYS 2
#define CSIDL_FLAG_CREATE 0x8000

extern "C" {

// ADVAPI32: the registry. 0 is success, any other value an error code.
// A value name or subkey that is null or empty means the key's default
// value, or the key of the handle itself.
LONG WINAPI RegOpenKeyExA(HKEY key, LPCSTR subkey, DWORD options, REGSAM access, PHKEY result);
LONG WINAPI RegCreateKeyExA(HKEY key, LPCSTR subkey, DWORD reserved, LPSTR keyClass, DWORD options, REGSAM access,
                            SECURITY_ATTRIBUTES* security, PHKEY result, LPDWORD disposition);
LONG WINAPI RegQueryValueExA(HKEY key, LPCSTR name, LPDWORD reserved, LPDWORD type, LPBYTE data, LPDWORD size);
LONG WINAPI RegSetValueExA(HKEY key, LPCSTR name, DWORD reserved, DWORD type, const BYTE* data, DWORD size);
LONG WINAPI RegDeleteValueA(HKEY key, LPCSTR name);
LONG WINAPI RegCloseKey(HKEY key);

// SHLWAPI: a key with everything under it, or a key only if it has no
// subkeys.
DWORD WINAPI SHDeleteKeyA(HKEY key, LPCSTR subkey);
DWORD WINAPI SHDeleteEmptyKeyA(HKEY key, LPCSTR subkey);

// KERNEL32: the system's folders and the current directory, in the size
// convention of GetFullPathNameA (GetWindowsDirectoryA and
// GetSystemDirectoryA likewise).
UINT WINAPI GetWindowsDirectoryA(LPSTR buffer, UINT size);
UINT WINAPI GetSystemDirectoryA(LPSTR buffer, UINT size);
DWORD WINAPI GetTempPathA(DWORD size, LPSTR buffer);
DWORD WINAPI GetCurrentDirectoryA(DWORD size, LPSTR buffer);
BOOL WINAPI SetCurrentDirectoryA(LPCSTR path);

// KERNEL32: a new file, on winsim's file system (CREATE_NEW and
// CREATE_ALWAYS, for writing); closed with CloseHandle.
HANDLE WINAPI CreateFileA(LPCSTR path, DWORD access, DWORD share, SECURITY_ATTRIBUTES* security, DWORD disposition,
                          DWORD flags, HANDLE templateFile);

// SHELL32 and OLE32: special folders as item identifier lists.
HRESULT WINAPI SHGetSpecialFolderLocation(HWND owner, int folder, LPITEMIDLIST* list);
BOOL WINAPI SHGetPathFromIDListA(LPCITEMIDLIST list, LPSTR path);
void WINAPI CoTaskMemFree(LPVOID memory);

}  // extern "C"

// ---- Windows of the calling thread, input and the desktop ----

typedef BOOL(CALLBACK* WNDENUMPROC)(HWND window, LPARAM parameter);
typedef struct HDESK__* HDESK;

#define SW_HIDE 0
#define SW_SHOWDEFAULT 10
#define SPI_GETSCREENSAVERRUNNING 0x0072
#define DESKTOP_SWITCHDESKTOP 0x0100
#define MB_ICONHAND 0x00000010
#define MB_TASKMODAL 0x00002000

extern "C" {

// KERNEL32 and USER32: the calling thread and its windows, enumerated in
// the order they were made.
DWORD WINAPI GetCurrentThreadId(void);
BOOL WINAPI EnumThreadWindows(DWORD thread, WNDENUMPROC callback, LPARAM parameter);
BOOL WINAPI EnumChildWindows(HWND parent, WNDENUMPROC callback, LPARAM parameter);
int WINAPI GetClassNameA(HWND window, LPSTR buffer, int size);
int WINAPI GetWindowTextLengthA(HWND window);
int WINAPI GetWindowTextA(HWND window, LPSTR buffer, int size);
BOOL WINAPI ShowWindow(HWND window, int command);
HWND WINAPI GetActiveWindow(void);

// USER32: the keyboard, the desktop and the screen saver.
SHORT WINAPI GetAsyncKeyState(int key);
SHORT WINAPI GetKeyState(int key);
HDESK WINAPI OpenInputDesktop(DWORD flags, BOOL inherit, DWORD access);
BOOL WINAPI CloseDesktop(HDESK desktop);
BOOL WINAPI SystemParametersInfoA(UINT action, UINT parameter, LPVOID data, UINT winIni);

// KERNEL32: the wide Windows folder (a host without Unicode answers 0) and
// the error mode.
UINT WINAPI GetWindowsDirectoryW(LPWSTR buffer, UINT size);
UINT WINAPI SetErrorMode(UINT mode);

// SHELL32 and USER32: what was asked is recorded (winsim::lastCall).
HINSTANCE WINAPI ShellExecuteA(HWND window, LPCSTR verb, LPCSTR file, LPCSTR parameters, LPCSTR directory, INT show);
int WINAPI MessageBoxA(HWND owner, LPCSTR text, LPCSTR caption, UINT style);

}  // extern "C"

// ---- Windows and controls: message boxes, placement, text, controls,
// menus, layered windows, the screen's metrics ----

typedef struct HMENU__* HMENU;
typedef struct HBITMAP__* HBITMAP;
typedef struct tagPOINT {
    LONG x;
    LONG y;
} POINT;

typedef struct tagWINDOWPLACEMENT {
    UINT length;
    UINT flags;
    UINT showCmd;
    POINT ptMinPosition;
    POINT ptMaxPosition;
    RECT rcNormalPosition;
} WINDOWPLACEMENT;

typedef struct tagMONITORINFOEXA {
    DWORD cbSize;
    RECT rcMonitor;
    RECT rcWork;
    DWORD dwFlags;
    CHAR szDevice[32];
} MONITORINFOEXA;

typedef struct tagHELPINFO HELPINFO;
typedef void(CALLBACK* MSGBOXCALLBACK)(HELPINFO* help);

typedef struct tagMSGBOXPARAMSA {
    UINT cbSize;
    HWND hwndOwner;
    HINSTANCE hInstance;
    LPCSTR lpszText;
    LPCSTR lpszCaption;
    DWORD dwStyle;
    LPCSTR lpszIcon;
    DWORD_PTR dwContextHelpId;
    MSGBOXCALLBACK lpfnMsgBoxCallback;
    DWORD dwLanguageId;
} MSGBOXPARAMSA;

typedef struct tagMSGBOXPARAMSW {
    UINT cbSize;
    HWND hwndOwner;
    HINSTANCE hInstance;
    LPCWSTR lpszText;
    LPCWSTR lpszCaption;
    DWORD dwStyle;
    LPCWSTR lpszIcon;
    DWORD_PTR dwContextHelpId;
    MSGBOXCALLBACK lpfnMsgBoxCallback;
    DWORD dwLanguageId;
} MSGBOXPARAMSW;

typedef struct tagMENUITEMINFOA {
    UINT cbSize;
    UINT fMask;
    UINT fType;
    UINT fState;
    UINT wID;
    HMENU hSubMenu;
    HBITMAP hbmpChecked;
    HBITMAP hbmpUnchecked;
    ULONG_PTR dwItemData;
    LPSTR dwTypeData;
    UINT cch;
    HBITMAP hbmpItem;
} MENUITEMINFOA;

#define SW_SHOWNORMAL 1
#define SW_SHOWMINIMIZED 2
#define SW_MINIMIZE 6
#define SW_RESTORE 9
#define GW_HWNDNEXT 2
#define SPI_GETWORKAREA 0x0030
#define MIIM_STATE 0x01
#define MIIM_ID 0x02
#define MIIM_SUBMENU 0x04
#define MIIM_CHECKMARKS 0x08
#define MIIM_TYPE 0x10
#define MIIM_DATA 0x20
#define MFT_STRING 0x0000
#define MFT_SEPARATOR 0x0800
#define MFT_RIGHTJUSTIFY 0x4000
#define GWL_EXSTYLE (-20)
#define WS_EX_LAYERED 0x00080000
#define LWA_ALPHA 0x2
#define WM_CLOSE 0x0010
#define CB_ERR (-1)
#define CB_ADDSTRING 0x0143
#define CB_GETCOUNT 0x0146
#define CB_GETCURSEL 0x0147
#define CB_GETLBTEXT 0x0148
#define CB_GETLBTEXTLEN 0x0149
#define CB_RESETCONTENT 0x014B
#define CB_SETCURSEL 0x014E
#define EM_GETSEL 0x00B0
#define EM_SETSEL 0x00B1
#define EM_SCROLLCARET 0x00B7
#define EM_REPLACESEL 0x00C2
#define LOGPIXELSX 88
#define LOGPIXELSY 90
#define SM_CXSCREEN 0
#define SM_CYSCREEN 1
#define SM_XVIRTUALSCREEN 76
#define SM_YVIRTUALSCREEN 77
#define SM_CXVIRTUALSCREEN 78
#define SM_CYVIRTUALSCREEN 79

extern "C" {

// KERNEL32 and USER32: message boxes, recorded as asked (winsim::lastCall);
// each answers IDOK (1) as if closed at once.
HMODULE WINAPI GetModuleHandleA(LPCSTR name);
BOOL WINAPI MessageBeep(UINT type);
int WINAPI MessageBoxIndirectA(const MSGBOXPARAMSA* params);
int WINAPI MessageBoxIndirectW(const MSGBOXPARAMSW* params);

// USER32: windows by handle. The desktop window spans the primary screen
// (metrics 0 and 1); a new window lies above its older siblings.
BOOL WINAPI IsWindow(HWND window);
BOOL WINAPI IsWindowVisible(HWND window);
BOOL WINAPI IsRectEmpty(const RECT* rect);
BOOL WINAPI GetWindowRect(HWND window, RECT* rect);
HWND WINAPI GetWindow(HWND window, UINT relation);
BOOL WINAPI GetWindowPlacement(HWND window, WINDOWPLACEMENT* placement);
BOOL WINAPI SetWindowPlacement(HWND window, const WINDOWPLACEMENT* placement);
HWND WINAPI GetForegroundWindow(void);
BOOL WINAPI SetForegroundWindow(HWND window);
DWORD WINAPI GetWindowThreadProcessId(HWND window, LPDWORD processId);
BOOL WINAPI AttachThreadInput(DWORD from, DWORD to, BOOL attach);
BOOL WINAPI OpenIcon(HWND window);
BOOL WINAPI PostMessageA(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
LRESULT WINAPI SendMessageA(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
HWND WINAPI FindWindowExA(HWND parent, HWND after, LPCSTR className, LPCSTR title);
LONG WINAPI GetWindowLongA(HWND window, int index);
LONG WINAPI SetWindowLongA(HWND window, int index, LONG value);
UINT WINAPI RegisterWindowMessageA(LPCSTR name);

// USER32: the wide forms; a host without Unicode answers 0 to each.
int WINAPI GetWindowTextLengthW(HWND window);
int WINAPI GetWindowTextW(HWND window, LPWSTR buffer, int size);
BOOL WINAPI SetWindowTextW(HWND window, LPCWSTR text);
int WINAPI GetClassNameW(HWND window, LPWSTR buffer, int size);

// USER32: menu bars (winsim::setMenuBar makes one).
HMENU WINAPI GetMenu(HWND window);
BOOL WINAPI GetMenuItemInfoA(HMENU menu, UINT item, BOOL byPosition, MENUITEMINFOA* info);
BOOL WINAPI SetMenuItemInfoA(HMENU menu, UINT item, BOOL byPosition, const MENUITEMINFOA* info);
BOOL WINAPI DrawMenuBar(HWND window);

// GDI32: the screen's logical resolution (winsim::setLogPixels).
int WINAPI GetDeviceCaps(HDC dc, int index);

}  // extern "C"
// ---- Identity, the event log, privileges, shutdown, power and priority ----

typedef void* PSID;
typedef HANDLE* PHANDLE;

typedef struct _SID_IDENTIFIER_AUTHORITY {
    BYTE Value[6];
} SID_IDENTIFIER_AUTHORITY, *PSID_IDENTIFIER_AUTHORITY;

typedef struct _SID_AND_ATTRIBUTES {
    PSID Sid;
    DWORD Attributes;
} SID_AND_ATTRIBUTES;

typedef struct _TOKEN_USER {
    SID_AND_ATTRIBUTES User;
} TOKEN_USER;

typedef struct _LUID {
    DWORD LowPart;
    LONG HighPart;
} LUID;

typedef struct _LUID_AND_ATTRIBUTES {
    LUID Luid;
    DWORD Attributes;
} LUID_AND_ATTRIBUTES;

typedef struct _TOKEN_PRIVILEGES {
    DWORD PrivilegeCount;
    LUID_AND_ATTRIBUTES Privileges[1];
} TOKEN_PRIVILEGES, *PTOKEN_PRIVILEGES;

typedef enum _TOKEN_INFORMATION_CLASS { TokenUser = 1 } TOKEN_INFORMATION_CLASS;
typedef enum _SID_NAME_USE { SidTypeUser = 1 } SID_NAME_USE;

#define TOKEN_QUERY 0x0008
#define TOKEN_ADJUST_PRIVILEGES 0x0020
#define SE_PRIVILEGE_ENABLED 0x00000002
#define SECURITY_MAX_SID_SIZE 68
#define ERROR_CALL_NOT_IMPLEMENTED 120
#define ERROR_INSUFFICIENT_BUFFER 122
#define ERROR_BUFFER_OVERFLOW 111
#define ERROR_NOT_LOGGED_ON 1245
#define ERROR_PRIVILEGE_NOT_HELD 1314
#define ERROR_NONE_MAPPED 1332
#define EVENTLOG_ERROR_TYPE 0x0001
#define EVENTLOG_WARNING_TYPE 0x0002
#define EVENTLOG_INFORMATION_TYPE 0x0004
#define NORMAL_PRIORITY_CLASS 0x00000020
#define IDLE_PRIORITY_CLASS 0x00000040
#define HIGH_PRIORITY_CLASS 0x00000080
#define REALTIME_PRIORITY_CLASS 0x00000100
#define BELOW_NORMAL_PRIORITY_CLASS 0x00004000
#define ABOVE_NORMAL_PRIORITY_CLASS 0x00008000
#define MB_OK 0x00000000
#define MB_ICONEXCLAMATION 0x00000030

extern "C" {

// KERNEL32 and ADVAPI32: the computer's and the user's names, in the size
// conventions of each (GetUserNameA counts the terminator, GetComputerNameA
// does not).
BOOL WINAPI GetComputerNameA(LPSTR buffer, LPDWORD size);
BOOL WINAPI GetUserNameA(LPSTR buffer, LPDWORD size);

// ADVAPI32: the process token (TokenUser only), SIDs, the account that a
// SID names, and the one privilege the library enables. A host not of the
// NT line has none of them (ERROR_CALL_NOT_IMPLEMENTED).
BOOL WINAPI OpenProcessToken(HANDLE process, DWORD access, PHANDLE token);
BOOL WINAPI GetTokenInformation(HANDLE token, TOKEN_INFORMATION_CLASS type, LPVOID buffer, DWORD size,
                                LPDWORD returned);
DWORD WINAPI GetLengthSid(PSID sid);
BOOL WINAPI IsValidSid(PSID sid);
PSID_IDENTIFIER_AUTHORITY WINAPI GetSidIdentifierAuthority(PSID sid);
BYTE* WINAPI GetSidSubAuthorityCount(PSID sid);
DWORD* WINAPI GetSidSubAuthority(PSID sid, DWORD index);
BOOL WINAPI LookupAccountSidA(LPCSTR system, PSID sid, LPSTR name, LPDWORD nameSize, LPSTR domain,
                              LPDWORD domainSize, SID_NAME_USE* use);
BOOL WINAPI LookupPrivilegeValueA(LPCSTR system, LPCSTR name, LUID* luid);
BOOL WINAPI AdjustTokenPrivileges(HANDLE token, BOOL disableAll, PTOKEN_PRIVILEGES state, DWORD size,
                                  PTOKEN_PRIVILEGES previous, LPDWORD returned);

// ADVAPI32: the event log. Sources and events are recorded, not stored.
HANDLE WINAPI RegisterEventSourceW(LPCWSTR server, LPCWSTR source);
BOOL WINAPI ReportEventW(HANDLE source, WORD type, WORD category, DWORD id, PSID user, WORD count, DWORD dataSize,
                         LPCWSTR* strings, LPVOID data);
DWORD WINAPI GetModuleFileNameW(HMODULE module, LPWSTR buffer, DWORD size);

// USER32 and KERNEL32: ending the logon and power states (recorded, and
// refused without the shutdown privilege on the NT line), and the
// process's priority class.
BOOL WINAPI ExitWindowsEx(UINT flags, DWORD reason);
BOOL WINAPI SetSystemPowerState(BOOL suspend, BOOL force);
BOOL WINAPI SetPriorityClass(HANDLE process, DWORD priorityClass);
DWORD WINAPI GetPriorityClass(HANDLE process);

}  // extern "C"

#define EWX_LOGOFF 0x00000000
#define EWX_REBOOT 0x00000002
