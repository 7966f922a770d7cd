// Who runs the program and what the process may do: names, the process
// token with the user's SID, account look-ups, the shutdown privilege, the
// event log, ending the logon, power states and the priority class.
#include <cstring>
#include <set>
#include <string>
#include <vector>

#include "winsim.h"
#include "winsim_control.h"

namespace winsim {
uintptr_t newHandle();                             // Control.cpp
void hostVersion(DWORD* platform, DWORD* major);  // Host.cpp
}  // namespace winsim

namespace {

// S-1-5-21-1004336348-1177238915-682003330-1001
const BYTE kDefaultSid[] = {1, 5, 0, 0, 0, 0, 0, 5, 21, 0, 0, 0, 0xDC, 0xF4, 0xDC, 0x3B, 0x83, 0x3D, 0x2B, 0x46,
                            0x82, 0x8B, 0xA6, 0x28, 0xE9, 0x03, 0, 0};
const LUID kShutdownLuid = {19, 0};

struct Security {
    std::string computer = "WINSIM-PC", user = "Tester", domain = "CORVANE";
    bool hasDomain = true;
    std::string sid = std::string(reinterpret_cast<const char*>(kDefaultSid), sizeof kDefaultSid);
    std::set<HANDLE> tokens;
    bool shutdownEnabled = false;
    std::vector<std::u16string> sources;
    std::set<HANDLE> sourceHandles;
    std::vector<winsim::ReportedEvent> events;
    std::string log;
    DWORD priority = NORMAL_PRIORITY_CLASS;
};

Security& security() {
    static Security state;
    return state;
}

void note(const std::string& entry) {
    std::string& log = security().log;
    log += (log.empty() ? "" : "|") + entry;
}

bool ntHost() {
    DWORD platform, major;
    winsim::hostVersion(&platform, &major);
    return platform == VER_PLATFORM_WIN32_NT;
}

// The functions that a host without the NT line's security lacks.
bool notImplemented() {
    if (ntHost()) return false;
    SetLastError(ERROR_CALL_NOT_IMPLEMENTED);
    return true;
}

const BYTE* sidBytes(PSID sid) { return static_cast<const BYTE*>(sid); }

// Copies text and a terminator when *size has room, else tells the room
// needed in *size.
bool copyName(const std::string& text, LPSTR buffer, LPDWORD size, DWORD error) {
    if (!buffer || *size < text.size() + 1) {
        *size = static_cast<DWORD>(text.size() + 1);
        SetLastError(error);
        return false;
    }
    std::memcpy(buffer, text.c_str(), text.size() + 1);
    return true;
}

std::u16string wide(LPCWSTR text) {
    std::u16string out;
    while (text && *text) out += *text++;
    return out;
}

}  // namespace

namespace winsim {

void resetSecurity() { security() = Security(); }

bool closeToken(HANDLE handle) {
    if (!security().tokens.erase(handle)) return false;
    note("CloseHandle token");
    return true;
}

void setComputerName(const char* name) { security().computer = name; }
void setUserName(const char* name) { security().user = name; }
void setUserSid(const std::string& bytes) { security().sid = bytes; }
void setAccountDomain(const char* domain) {
    security().hasDomain = domain != nullptr;
    security().domain = domain ? domain : "";
}

const std::vector<ReportedEvent>& reportedEvents() { return security().events; }
std::vector<std::u16string> eventSourcesOpened() { return security().sources; }
std::string securityLog() { return security().log; }
bool shutdownPrivilegeEnabled() { return security().shutdownEnabled; }

}  // namespace winsim

extern "C" {

BOOL WINAPI GetComputerNameA(LPSTR buffer, LPDWORD size) {
    if (winsim::refuse("GetComputerNameA")) {
        SetLastError(ERROR_ACCESS_DENIED);
        return FALSE;
    }
    if (!copyName(security().computer, buffer, size, ERROR_BUFFER_OVERFLOW)) return FALSE;
    *size = static_cast<DWORD>(security().computer.size());
    return TRUE;
}

// A refusal is a session without a logged-on user.
BOOL WINAPI GetUserNameA(LPSTR buffer, LPDWORD size) {
    if (winsim::refuse("GetUserNameA")) {
        SetLastError(ERROR_NOT_LOGGED_ON);
        return FALSE;
    }
    if (!copyName(security().user, buffer, size, ERROR_INSUFFICIENT_BUFFER)) return FALSE;
    *size = static_cast<DWORD>(security().user.size() + 1);
    return TRUE;
}

BOOL WINAPI OpenProcessToken(HANDLE process, DWORD access, PHANDLE token) {
    note("OpenProcessToken " + std::to_string(access));
    if (winsim::refuse("OpenProcessToken") || notImplemented()) return FALSE;
    if (process != GetCurrentProcess() || !token) {
        SetLastError(ERROR_INVALID_HANDLE);
        return FALSE;
    }
    *token = reinterpret_cast<HANDLE>(winsim::newHandle());
    security().tokens.insert(*token);
    return TRUE;
}

// TOKEN_USER, with the SID's bytes behind it in the caller's buffer.
BOOL WINAPI GetTokenInformation(HANDLE token, TOKEN_INFORMATION_CLASS type, LPVOID buffer, DWORD size,
                                LPDWORD returned) {
    if (winsim::refuse("GetTokenInformation") || notImplemented()) return FALSE;
    if (!security().tokens.count(token) || type != TokenUser || !returned) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return FALSE;
    }
    const std::string& sid = security().sid;
    *returned = static_cast<DWORD>(sizeof(TOKEN_USER) + sid.size());
    if (!buffer || size < *returned) {
        SetLastError(ERROR_INSUFFICIENT_BUFFER);
        return FALSE;
    }
    BYTE* bytes = static_cast<BYTE*>(buffer);
    std::memcpy(bytes + sizeof(TOKEN_USER), sid.data(), sid.size());
    TOKEN_USER user = {{bytes + sizeof(TOKEN_USER), 0}};
    std::memcpy(bytes, &user, sizeof user);
    return TRUE;
}

BOOL WINAPI IsValidSid(PSID sid) {
    winsim::refuse("IsValidSid");
    return sid && sidBytes(sid)[0] == 1 && sidBytes(sid)[1] <= 15 ? TRUE : FALSE;
}

DWORD WINAPI GetLengthSid(PSID sid) {
    winsim::refuse("GetLengthSid");
    return 8 + 4 * static_cast<DWORD>(sidBytes(sid)[1]);
}

PSID_IDENTIFIER_AUTHORITY WINAPI GetSidIdentifierAuthority(PSID sid) {
    return reinterpret_cast<PSID_IDENTIFIER_AUTHORITY>(static_cast<BYTE*>(sid) + 2);
}

BYTE* WINAPI GetSidSubAuthorityCount(PSID sid) { return static_cast<BYTE*>(sid) + 1; }

DWORD* WINAPI GetSidSubAuthority(PSID sid, DWORD index) {
    return reinterpret_cast<DWORD*>(static_cast<BYTE*>(sid) + 8 + 4 * index);
}

// Only the user's own SID names an account, on the local system.
BOOL WINAPI LookupAccountSidA(LPCSTR system, PSID sid, LPSTR name, LPDWORD nameSize, LPSTR domain,
                              LPDWORD domainSize, SID_NAME_USE* use) {
    if (winsim::refuse("LookupAccountSidA") || notImplemented()) return FALSE;
    const Security& s = security();
    if (system || !sid || !IsValidSid(sid) || GetLengthSid(sid) != s.sid.size() ||
        std::memcmp(sid, s.sid.data(), s.sid.size()) != 0 || !s.hasDomain) {
        SetLastError(ERROR_NONE_MAPPED);
        return FALSE;
    }
    const bool nameFits = name && *nameSize > s.user.size(), domainFits = domain && *domainSize > s.domain.size();
    if (!nameFits || !domainFits) {
        *nameSize = static_cast<DWORD>(s.user.size() + 1);
        *domainSize = static_cast<DWORD>(s.domain.size() + 1);
        SetLastError(ERROR_INSUFFICIENT_BUFFER);
        return FALSE;
    }
    std::memcpy(name, s.user.c_str(), s.user.size() + 1);
    std::memcpy(domain, s.domain.c_str(), s.domain.size() + 1);
    *nameSize = static_cast<DWORD>(s.user.size());
    *domainSize = static_cast<DWORD>(s.domain.size());
    *use = SidTypeUser;
    return TRUE;
}

BOOL WINAPI LookupPrivilegeValueA(LPCSTR system, LPCSTR name, LUID* luid) {
    note(std::string("LookupPrivilegeValueA ") + (name ? name : "(null)"));
    if (winsim::refuse("LookupPrivilegeValueA") || notImplemented()) return FALSE;
    if (system || !name || std::strcmp(name, "SeShutdownPrivilege") != 0) {
        SetLastError(ERROR_NONE_MAPPED);
        return FALSE;
    }
    *luid = kShutdownLuid;
    return TRUE;
}

// Enables or disables the shutdown privilege; no previous state is kept.
BOOL WINAPI AdjustTokenPrivileges(HANDLE token, BOOL disableAll, PTOKEN_PRIVILEGES state, DWORD size,
                                  PTOKEN_PRIVILEGES previous, LPDWORD returned) {
    note("AdjustTokenPrivileges " + std::to_string(disableAll) + " " +
         (state ? std::to_string(state->PrivilegeCount) + " " + std::to_string(state->Privileges[0].Luid.LowPart) +
                      " " + std::to_string(state->Privileges[0].Attributes)
                : std::string("(null)")) +
         " " + std::to_string(size) + (previous || returned ? " previous" : ""));
    if (winsim::refuse("AdjustTokenPrivileges") || notImplemented()) return FALSE;
    if (!security().tokens.count(token) || (!disableAll && !state)) {
        SetLastError(ERROR_INVALID_HANDLE);
        return FALSE;
    }
    if (disableAll) security().shutdownEnabled = false;
    else
        for (DWORD i = 0; i < state->PrivilegeCount; ++i)
            if (state->Privileges[i].Luid.LowPart == kShutdownLuid.LowPart)
                security().shutdownEnabled = (state->Privileges[i].Attributes & SE_PRIVILEGE_ENABLED) != 0;
    SetLastError(ERROR_SUCCESS);
    return TRUE;
}

HANDLE WINAPI RegisterEventSourceW(LPCWSTR server, LPCWSTR source) {
    security().sources.push_back(wide(source));
    if (winsim::refuse("RegisterEventSourceW") || notImplemented()) return nullptr;
    if (server || !source) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return nullptr;
    }
    HANDLE handle = reinterpret_cast<HANDLE>(winsim::newHandle());
    security().sourceHandles.insert(handle);
    return handle;
}

BOOL WINAPI ReportEventW(HANDLE source, WORD type, WORD category, DWORD id, PSID user, WORD count, DWORD dataSize,
                         LPCWSTR* strings, LPVOID data) {
    winsim::ReportedEvent event{source, type, category, id, "", count, dataSize, data != nullptr, u""};
    if (user) event.sid.assign(static_cast<const char*>(user), GetLengthSid(user));
    if (count > 0 && strings) event.text = wide(strings[0]);
    security().events.push_back(event);
    if (winsim::refuse("ReportEventW") || notImplemented()) return FALSE;
    if (!security().sourceHandles.count(source)) {
        SetLastError(ERROR_INVALID_HANDLE);
        return FALSE;
    }
    return TRUE;
}

// The program file's path (GetModuleFileNameA's), widened.
DWORD WINAPI GetModuleFileNameW(HMODULE module, LPWSTR buffer, DWORD size) {
    char path[MAX_PATH + 1] = {};
    const DWORD length = GetModuleFileNameA(module, path, sizeof path);
    if (length == 0 || size == 0) return 0;
    const DWORD copied = length < size ? length : size - 1;
    for (DWORD i = 0; i < copied; ++i) buffer[i] = static_cast<unsigned char>(path[i]);
    buffer[copied] = 0;
    return copied;
}

// Needs the shutdown privilege on the NT line; nothing is ended.
BOOL WINAPI ExitWindowsEx(UINT flags, DWORD reason) {
    note("ExitWindowsEx " + std::to_string(flags) + " " + std::to_string(reason));
    if (winsim::refuse("ExitWindowsEx")) return FALSE;
    if (ntHost() && !security().shutdownEnabled) {
        SetLastError(ERROR_PRIVILEGE_NOT_HELD);
        return FALSE;
    }
    return TRUE;
}

BOOL WINAPI SetSystemPowerState(BOOL suspend, BOOL force) {
    note("SetSystemPowerState " + std::to_string(suspend) + " " + std::to_string(force));
    if (winsim::refuse("SetSystemPowerState")) return FALSE;
    if (ntHost() && !security().shutdownEnabled) {
        SetLastError(ERROR_PRIVILEGE_NOT_HELD);
        return FALSE;
    }
    return TRUE;
}

// The two classes between the others came with Windows 2000.
BOOL WINAPI SetPriorityClass(HANDLE process, DWORD priorityClass) {
    note("SetPriorityClass " + std::to_string(priorityClass));
    if (winsim::refuse("SetPriorityClass")) return FALSE;
    DWORD platform, major;
    winsim::hostVersion(&platform, &major);
    const bool between = priorityClass == BELOW_NORMAL_PRIORITY_CLASS || priorityClass == ABOVE_NORMAL_PRIORITY_CLASS;
    const bool known = priorityClass == NORMAL_PRIORITY_CLASS || priorityClass == IDLE_PRIORITY_CLASS ||
                       priorityClass == HIGH_PRIORITY_CLASS || priorityClass == REALTIME_PRIORITY_CLASS ||
                       (between && platform == VER_PLATFORM_WIN32_NT && major >= 5);
    if (process != GetCurrentProcess() || !known) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return FALSE;
    }
    security().priority = priorityClass;
    return TRUE;
}

DWORD WINAPI GetPriorityClass(HANDLE process) {
    if (process != GetCurrentProcess()) {
        SetLastError(ERROR_INVALID_HANDLE);
        return 0;
    }
    return security().priority;
}

}  // extern "C"
