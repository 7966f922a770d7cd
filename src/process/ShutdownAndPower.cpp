// Module ShutdownAndPower: ending the logon and putting the machine into a
// power state, with the shutdown privilege enabled first where the host
// has privileges.
#include "Frame.h"
#include "HostIdentification.h"

static const char kModule[] = "ShutdownAndPower";

namespace {

// Enables "SeShutdownPrivilege" in the process token; it stays enabled.
// Nothing here is reported: a call that needed the privilege fails by
// itself.
void ADJUSTPERMISSIONS() {
    CSK_ROUTINE("ADJUSTPERMISSIONS");
    if (!WR_ESISHOSTWINNT()) return;
    HANDLE token = nullptr;
    if (!OpenProcessToken(GetCurrentProcess(), TOKEN_ADJUST_PRIVILEGES | TOKEN_QUERY, &token)) return;
    TOKEN_PRIVILEGES privileges = {};
    privileges.PrivilegeCount = 1;
    LookupPrivilegeValueA(nullptr, "SeShutdownPrivilege", &privileges.Privileges[0].Luid);
    privileges.Privileges[0].Attributes = SE_PRIVILEGE_ENABLED;
    AdjustTokenPrivileges(token, FALSE, &privileges, 0, nullptr, nullptr);
    CloseHandle(token);
}

}  // namespace

// Flags and reason go to the platform as the caller gave them.
CSK_EXPORT HRESULT WINAPI esExitWindowsEx(LONG flags, LONG reason, VARIANT_BOOL* result) {
    return ValueExport(kModule, "ESEXITWINDOWSEX", result, [&] {
        ADJUSTPERMISSIONS();
        *result = VBBOOL(ExitWindowsEx(static_cast<UINT>(flags), static_cast<DWORD>(reason)) != 0);
        return S_OK;
    });
}

CSK_EXPORT HRESULT WINAPI esSetSystemPowerState(VARIANT_BOOL suspend, VARIANT_BOOL force, VARIANT_BOOL* result) {
    return ValueExport(kModule, "ESSETSYSTEMPOWERSTATE", result, [&] {
        ADJUSTPERMISSIONS();
        *result = VBBOOL(SetSystemPowerState(FLAG(suspend) ? -1 : 0, FLAG(force) ? -1 : 0) != 0);
        return S_OK;
    });
}
