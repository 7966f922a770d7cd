// Module FileAppPath: the shell's list of programs it starts by file name
// alone (HKEY_LOCAL_MACHINE's App Paths): read for any name, and this
// program added or taken off.
#include "Frame.h"
#include "IsExist.h"
#include "PathAndFileNameModifiers.h"
#include "PathAndFileNameParse.h"
#include "PathAndFileNameParse2.h"
#include "SimpleRegistry.h"

static const char kModule[] = "FileAppPath";

namespace {

const char kAppPaths[] = "Software\\Microsoft\\Windows\\CurrentVersion\\App Paths";

std::string entryKey(std::string name) {
    return WR_ESBUILDFILENAME2(kAppPaths, std::move(name), "", "", "", "", "", "", "");
}

// This program's full path in the case on the disk, its name and folder;
// false if any of them is empty.
bool thisProgram(std::string& path, std::string& name, std::string& folder) {
    path = WR_ESGETMODULEFILENAME(nullptr, 1);
    if (path.empty()) return false;
    name = WR_ESGETFILENAME(path, 0);
    folder = WR_ESGETFILEPATH(path);
    return !name.empty() && !folder.empty();
}

}  // namespace

// The registered path when a file stands there, else the caller's own text,
// untouched by the code page.
CSK_EXPORT HRESULT WINAPI esGetFileAppPath(BSTR name, BSTR* result) {
    RoutineScope scope(kModule, "ESGETFILEAPPPATH");
    if (!result) return S_FALSE;
    return Shielded([&] {
        uint8_t found;
        std::string path =
            WR_ESREADSTRINGFROMREGISTRY(HKEY_LOCAL_MACHINE, entryKey(BSTRTOSTRING(name)), "", "", 1, &found);
        if (path.empty() || !WR_ESISFILEEXIST(path)) SysReAllocString(result, name);
        else HANDBACK(result, path);
        return S_OK;
    });
}

// True once the default value holds the path; the folder goes to "Path",
// whose outcome is not looked at.
CSK_EXPORT HRESULT WINAPI esRegisterAppPath(VARIANT_BOOL* success) {
    return ValueExport(kModule, "ESREGISTERAPPPATH", success, [&] {
        *success = VARIANT_FALSE;
        std::string path, name, folder;
        if (!thisProgram(path, name, folder)) return S_OK;
        const std::string key = entryKey(name);
        uint8_t written;
        WR_ESWRITESTRINGTOREGISTRY(HKEY_LOCAL_MACHINE, key, "", path, 0, &written);
        if (written != 1) return S_OK;
        WR_ESWRITESTRINGTOREGISTRY(HKEY_LOCAL_MACHINE, key, "Path", folder, 0, &written);
        *success = VARIANT_TRUE;
        return S_OK;
    });
}

// The entry of this program's file name goes with all under it, whichever
// folder it names. Status 1 when nothing was deleted.
CSK_EXPORT HRESULT WINAPI esUnRegisterAppPath(VARIANT_BOOL* success) {
    return ValueExport(kModule, "ESUNREGISTERAPPPATH", success, [&] {
        *success = VARIANT_FALSE;
        std::string path, name, folder;
        if (!thisProgram(path, name, folder)) return S_OK;
        if (SHDeleteKeyA(HKEY_LOCAL_MACHINE, entryKey(name).c_str()) != ERROR_SUCCESS) return S_FALSE;
        *success = VARIANT_TRUE;
        return S_OK;
    });
}
