// The host: the version record, system facts and metrics, the five system
// libraries with the optional entry points that winsim implements, a table
// of processes, and CloseHandle for processes and files alike.
#include <strings.h>

#include <cstring>
#include <map>
#include <set>
#include <string>

#include "winsim.h"
#include "winsim_control.h"

namespace winsim {

// FileSystem.cpp
DWORD longPathName(LPCSTR path, LPSTR buffer, DWORD size);
BOOL diskFreeSpaceEx(LPCSTR path, ULARGE_INTEGER* available, ULARGE_INTEGER* total, ULARGE_INTEGER* free);
bool closeFile(HANDLE handle);
bool closeToken(HANDLE handle);  // Security.cpp

uintptr_t newHandle();  // Control.cpp

}  // namespace winsim

namespace winsim {
DWORD lastInputTick();  // Counters.cpp
}  // namespace winsim

namespace winsim {
FARPROC windowsEntry(const char* name);  // Windows.cpp
}  // namespace winsim

namespace {

struct Host {
    OSVERSIONINFOEXA version;
    int accepts;
    std::map<int, int> metrics;
    std::set<std::string> missing;
    std::map<DWORD, bool> wow64;  // processes that OpenProcess finds
    std::map<HANDLE, DWORD> open;
    DWORD shell[3];
    std::string productName;
};

const DWORD kThisProcess = 0x1F4C;
HANDLE const kThisProcessHandle = reinterpret_cast<HANDLE>(static_cast<intptr_t>(-1));

Host makeHost() {
    Host host{};
    host.version.dwMajorVersion = 6;
    host.version.dwMinorVersion = 1;
    host.version.dwBuildNumber = 7601;
    host.version.dwPlatformId = VER_PLATFORM_WIN32_NT;
    std::strcpy(host.version.szCSDVersion, "Service Pack 1");
    host.version.wServicePackMajor = 1;
    host.version.wProductType = VER_NT_WORKSTATION;
    host.accepts = 2;
    host.missing.insert("WINE_GET_VERSION");
    host.wow64[kThisProcess] = false;
    host.shell[0] = 6, host.shell[1] = 1, host.shell[2] = 7601;
    host.productName = "Windows 7 Professional";
    return host;
}

Host& host() {
    static Host state = makeHost();
    return state;
}

std::string upper(const char* text) {
    std::string s(text);
    for (char& c : s) c = static_cast<char>(toupper(static_cast<unsigned char>(c)));
    return s;
}

bool isMissing(const char* name) { return host().missing.count(upper(name)) != 0; }

bool processOf(HANDLE handle, DWORD& processId) {
    if (handle == kThisProcessHandle) {
        processId = kThisProcess;
        return true;
    }
    auto it = host().open.find(handle);
    if (it == host().open.end()) return false;
    processId = it->second;
    return true;
}

void fillSystemInfo(SYSTEM_INFO* info, WORD architecture) {
    std::memset(info, 0, sizeof *info);
    info->wProcessorArchitecture = architecture;
    info->dwPageSize = 4096;
    info->lpMinimumApplicationAddress = reinterpret_cast<LPVOID>(0x10000);
    info->lpMaximumApplicationAddress = reinterpret_cast<LPVOID>(0x7FFEFFFF);
    info->dwActiveProcessorMask = 3;
    info->dwNumberOfProcessors = 2;
    info->dwProcessorType = 586;
    info->dwAllocationGranularity = 0x10000;
    info->wProcessorLevel = 6;
}

// ---- The optional entry points, reached only through GetProcAddress ----

BOOL WINAPI IsWow64Process(HANDLE process, BOOL* wow64) {
    DWORD id;
    if (winsim::refuse("IsWow64Process") || !processOf(process, id)) {
        SetLastError(6);  // ERROR_INVALID_HANDLE
        return FALSE;
    }
    *wow64 = host().wow64[id] ? TRUE : FALSE;
    return TRUE;
}

// Under WOW64 the native processor is the 64-bit one.
void WINAPI GetNativeSystemInfo(SYSTEM_INFO* info) {
    winsim::refuse("GetNativeSystemInfo");
    fillSystemInfo(info, host().wow64[kThisProcess] ? PROCESSOR_ARCHITECTURE_AMD64 : PROCESSOR_ARCHITECTURE_INTEL);
}

BOOL WINAPI GetProductName(LPSTR buffer, DWORD size) {
    if (winsim::refuse("GetProductName") || size <= host().productName.size()) return FALSE;
    std::strcpy(buffer, host().productName.c_str());
    return TRUE;
}

const char* CDECL wine_get_version() {
    winsim::refuse("wine_get_version");
    return "winsim";
}

// The size field must name DLLVERSIONINFO (20) or DLLVERSIONINFO2 (32).
HRESULT WINAPI DllGetVersion(DLLVERSIONINFO* info) {
    if (winsim::refuse("DllGetVersion")) return E_FAIL;
    if (!info || (info->cbSize != 20 && info->cbSize != 32)) return E_INVALIDARG;
    info->dwMajorVersion = host().shell[0];
    info->dwMinorVersion = host().shell[1];
    info->dwBuildNumber = host().shell[2];
    info->dwPlatformID = 2;  // DLLVER_PLATFORM_NT
    return S_OK;
}

DWORD WINAPI GetLongPathNameA(LPCSTR shortPath, LPSTR buffer, DWORD size) {
    if (winsim::refuse("GetLongPathNameA")) {
        SetLastError(ERROR_ACCESS_DENIED);
        return 0;
    }
    return winsim::longPathName(shortPath, buffer, size);
}

BOOL WINAPI GetDiskFreeSpaceExA(LPCSTR path, ULARGE_INTEGER* available, ULARGE_INTEGER* total, ULARGE_INTEGER* free) {
    if (winsim::refuse("GetDiskFreeSpaceExA")) {
        SetLastError(ERROR_NOT_READY);
        return FALSE;
    }
    return winsim::diskFreeSpaceEx(path, available, total, free);
}

// The tick of the last input, as GetTickCount counts (Counters.cpp).
BOOL WINAPI GetLastInputInfo(LASTINPUTINFO* info) {
    if (winsim::refuse("GetLastInputInfo") || !info || info->cbSize != sizeof(LASTINPUTINFO)) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return FALSE;
    }
    info->dwTime = winsim::lastInputTick();
    return TRUE;
}

const char* const kLibraries[] = {"KERNEL32.DLL", "USER32.DLL", "SHLWAPI.DLL", "SHELL32.DLL", "NTDLL.DLL"};

HMODULE moduleHandle(size_t index) { return reinterpret_cast<HMODULE>(0x7C000000 + 0x100000 * index); }

struct Entry {
    const char* library;
    const char* name;
    FARPROC function;
};

template <class F>
FARPROC asFarProc(F function) {
    return reinterpret_cast<FARPROC>(reinterpret_cast<void (*)()>(function));
}

const Entry kEntries[] = {
    {"KERNEL32.DLL", "IsWow64Process", asFarProc(IsWow64Process)},
    {"KERNEL32.DLL", "GetNativeSystemInfo", asFarProc(GetNativeSystemInfo)},
    {"KERNEL32.DLL", "GetProductName", asFarProc(GetProductName)},
    {"KERNEL32.DLL", "GetLongPathNameA", asFarProc(GetLongPathNameA)},
    {"KERNEL32.DLL", "GetDiskFreeSpaceExA", asFarProc(GetDiskFreeSpaceExA)},
    {"NTDLL.DLL", "wine_get_version", asFarProc(wine_get_version)},
    {"SHELL32.DLL", "DllGetVersion", asFarProc(DllGetVersion)},
    {"USER32.DLL", "GetLastInputInfo", asFarProc(GetLastInputInfo)},
    // Windows and controls (Windows.cpp)
    {"USER32.DLL", "SetLayeredWindowAttributes", winsim::windowsEntry("SetLayeredWindowAttributes")},
    {"USER32.DLL", "MonitorFromWindow", winsim::windowsEntry("MonitorFromWindow")},
    {"USER32.DLL", "GetMonitorInfoA", winsim::windowsEntry("GetMonitorInfoA")},
    {"SHLWAPI.DLL", "SHAutoComplete", winsim::windowsEntry("SHAutoComplete")},
};

}  // namespace

namespace winsim {

void resetHost() { host() = makeHost(); }

void setVersion(DWORD platform, DWORD major, DWORD minor, DWORD build, const char* csd, BYTE productType,
                int accepts) {
    OSVERSIONINFOEXA& v = host().version;
    std::memset(&v, 0, sizeof v);
    v.dwPlatformId = platform, v.dwMajorVersion = major, v.dwMinorVersion = minor, v.dwBuildNumber = build;
    std::strncpy(v.szCSDVersion, csd, sizeof v.szCSDVersion - 1);
    v.wProductType = productType;
    host().accepts = accepts;
}

void setSystemMetric(int index, int value) { host().metrics[index] = value; }

void setMissing(const char* name, bool missing) {
    if (missing) host().missing.insert(upper(name));
    else host().missing.erase(upper(name));
}

void setProcess(DWORD processId, bool wow64) { host().wow64[processId] = wow64; }

void setShellVersion(DWORD major, DWORD minor, DWORD build) {
    host().shell[0] = major, host().shell[1] = minor, host().shell[2] = build;
}

void setProductName(const char* name) { host().productName = name; }

// For the stand-ins of other families that differ by host.
void hostVersion(DWORD* platform, DWORD* major) {
    *platform = host().version.dwPlatformId;
    *major = host().version.dwMajorVersion;
}

}  // namespace winsim

extern "C" {

BOOL WINAPI GetVersionExA(OSVERSIONINFOA* info) {
    const DWORD size = info->dwOSVersionInfoSize;
    const bool fits = (size == sizeof(OSVERSIONINFOEXA) && host().accepts == 2) ||
                      (size == sizeof(OSVERSIONINFOA) && host().accepts >= 1);
    if (winsim::refuse("GetVersionExA") || !fits) {
        SetLastError(122);  // ERROR_INSUFFICIENT_BUFFER
        return FALSE;
    }
    std::memcpy(reinterpret_cast<char*>(info) + sizeof(DWORD), reinterpret_cast<const char*>(&host().version) + sizeof(DWORD),
                size - sizeof(DWORD));
    return TRUE;
}

void WINAPI GetSystemInfo(SYSTEM_INFO* info) {
    winsim::refuse("GetSystemInfo");
    fillSystemInfo(info, PROCESSOR_ARCHITECTURE_INTEL);
}

int WINAPI GetSystemMetrics(int index) {
    winsim::refuse("GetSystemMetrics");
    auto it = host().metrics.find(index);
    return it == host().metrics.end() ? 0 : it->second;
}

HMODULE WINAPI LoadLibraryA(LPCSTR name) {
    if (!winsim::refuse("LoadLibraryA") && name && !isMissing(name))
        for (size_t i = 0; i < sizeof kLibraries / sizeof kLibraries[0]; ++i)
            if (upper(name) == kLibraries[i]) return moduleHandle(i);
    SetLastError(126);  // ERROR_MOD_NOT_FOUND
    return nullptr;
}

FARPROC WINAPI GetProcAddress(HMODULE module, LPCSTR name) {
    if (!winsim::refuse("GetProcAddress") && name && !isMissing(name))
        for (const Entry& entry : kEntries)
            if (std::strcmp(entry.name, name) == 0) {
                for (size_t i = 0; i < sizeof kLibraries / sizeof kLibraries[0]; ++i)
                    if (module == moduleHandle(i) && std::strcmp(kLibraries[i], entry.library) == 0)
                        return entry.function;
            }
    SetLastError(127);  // ERROR_PROC_NOT_FOUND
    return nullptr;
}

HANDLE WINAPI GetCurrentProcess(void) { return kThisProcessHandle; }

DWORD WINAPI GetCurrentProcessId(void) { return kThisProcess; }

HANDLE WINAPI OpenProcess(DWORD access, BOOL, DWORD processId) {
    if (winsim::refuse("OpenProcess") || access != PROCESS_QUERY_INFORMATION || !host().wow64.count(processId)) {
        SetLastError(87);  // ERROR_INVALID_PARAMETER, as for an identifier that names no process
        return nullptr;
    }
    HANDLE handle = reinterpret_cast<HANDLE>(winsim::newHandle());
    host().open[handle] = processId;
    return handle;
}

// Closes a process handle from OpenProcess or a file from CreateFileA.
BOOL WINAPI CloseHandle(HANDLE handle) {
    winsim::refuse("CloseHandle");
    if (host().open.erase(handle) || winsim::closeFile(handle) || winsim::closeToken(handle)) return TRUE;
    SetLastError(6);  // ERROR_INVALID_HANDLE
    return FALSE;
}

}  // extern "C"
