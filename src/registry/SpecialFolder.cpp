// Module SpecialFolder: the path of a shell special folder by its CSIDL
// number, from the first of eight sources that knows it: the shell, five
// registry locations, the environment, a direct function.
#include "Frame.h"
#include "PathAndFileNameParse.h"
#include "SimpleRegistry.h"
#include "SystemFolder.h"

static const char kModule[] = "SpecialFolder";

namespace {

// The registry value and environment variable that hold each folder; an
// exact match on the number is the only rule.
struct Source {
    LONG csidl;
    const char* registryValue;
    const char* environmentVariable;
};

const Source kSources[] = {
    {0, "Desktop", ""},
    {2, "Programs", ""},
    {5, "Personal", ""},
    {6, "Favorites", ""},
    {7, "Startup", ""},
    {8, "Recent", ""},
    {9, "SendTo", ""},
    {11, "Start Menu", ""},
    {13, "My Music", ""},
    {14, "My Video", ""},
    {16, "Desktop", ""},
    {19, "NetHood", ""},
    {20, "Fonts", ""},
    {21, "Templates", ""},
    {22, "Common Start Menu", ""},
    {23, "Common Programs", ""},
    {24, "Common Startup", ""},
    {25, "Common Desktop", ""},
    {26, "AppData", ""},
    {27, "PrintHood", ""},
    {28, "Local AppData", ""},
    {31, "Common Favorites", ""},
    {32, "Cache", ""},
    {33, "Cookies", ""},
    {34, "History", ""},
    {35, "Common AppData", ""},
    {38, "ProgramFilesDir", "ProgramFiles"},
    {39, "My Pictures", ""},
    {40, "", "USERPROFILE"},
    {42, "ProgramFilesDir (x86)", "ProgramFiles(x86)"},
    {43, "CommonFilesDir", "CommonProgramFiles"},
    {44, "CommonFilesDir (x86)", "CommonProgramFiles(x86)"},
    {45, "Common Templates", ""},
    {46, "Common Documents", ""},
    {47, "Common Administrative Tools", ""},
    {48, "Administrative Tools", ""},
    {53, "CommonMusic", ""},
    {54, "CommonPictures", ""},
    {55, "CommonVideo", ""},
    {59, "CD Burning", ""},
};

const Source* sourceOf(LONG csidl) {
    for (const Source& source : kSources)
        if (source.csidl == csidl) return &source;
    return nullptr;
}

std::string CSIDLTOREGISTRYVALUENAME(LONG csidl) {
    const Source* source = sourceOf(csidl);
    return source ? source->registryValue : "";
}

std::string CSIDLTOENVIRONMENTVARIABLENAME(LONG csidl) {
    const Source* source = sourceOf(csidl);
    return source ? source->environmentVariable : "";
}

// The shell's list for the number, its path (empty for a virtual folder),
// the list given back.
std::string GETSPECIALFOLDERFROMSHELL(LONG csidl) {
    CSK_ROUTINE("GETSPECIALFOLDERFROMSHELL");
    LPITEMIDLIST list = nullptr;
    TextBuffer buffer;
    if (SHGetSpecialFolderLocation(nullptr, static_cast<int>(csidl), &list) == S_OK) {
        SHGetPathFromIDListA(list, buffer.bytes);
        CoTaskMemFree(list);
    }
    return buffer.bytes;
}

std::string GETSPECIALFOLDERFROMREGISTRY(LONG csidl, int stage) {
    CSK_ROUTINE("GETSPECIALFOLDERFROMREGISTRY");
    static const char kShellFolders[] = "Software\\Microsoft\\Windows\\CurrentVersion\\Explorer\\Shell Folders";
    static const char kUserShellFolders[] =
        "Software\\Microsoft\\Windows\\CurrentVersion\\Explorer\\User Shell Folders";
    const std::string name = CSIDLTOREGISTRYVALUENAME(csidl);
    if (name.empty() || stage < 0 || stage > 4) return std::string();
    const HKEY root = stage < 2 ? HKEY_CURRENT_USER : HKEY_LOCAL_MACHINE;
    const char* subkey = stage == 4 ? "Software\\Microsoft\\Windows\\CurrentVersion"
                                    : stage % 2 == 0 ? kShellFolders : kUserShellFolders;
    uint8_t found;
    return WR_ESREADSTRINGFROMREGISTRY(root, subkey, name, std::string(), 1, &found);
}

std::string GETSPECIALFOLDERFROMENVIRONMENT(LONG csidl) {
    CSK_ROUTINE("GETSPECIALFOLDERFROMENVIRONMENT");
    const std::string name = CSIDLTOENVIRONMENTVARIABLENAME(csidl);
    return name.empty() ? std::string() : GETENVIRON(name);
}

std::string GETSPECIALFOLDERFROMFUNCTION(LONG csidl) {
    CSK_ROUTINE("GETSPECIALFOLDERFROMFUNCTION");
    if (csidl == 36) return WR_ESGETWINDOWSPATH();
    if (csidl == 37) return WR_ESGETSYSTEMPATH();
    return std::string();
}

// The first source with text answers; none checks that the folder exists.
std::string GETSPECIALFOLDER(LONG csidl) {
    CSK_ROUTINE("GETSPECIALFOLDER");
    std::string path = GETSPECIALFOLDERFROMSHELL(csidl);
    for (int stage = 0; path.empty() && stage <= 4; ++stage) path = GETSPECIALFOLDERFROMREGISTRY(csidl, stage);
    if (path.empty()) path = GETSPECIALFOLDERFROMENVIRONMENT(csidl);
    if (path.empty()) path = GETSPECIALFOLDERFROMFUNCTION(csidl);
    return WR_ESADDBACKSLASH(std::move(path));
}

}  // namespace

CSK_EXPORT HRESULT WINAPI esGetSpecialFolder(LONG csidl, BSTR* result) {
    return TextExport(kModule, "ESGETSPECIALFOLDER", result, [&] { return GETSPECIALFOLDER(csidl); });
}

// The list is the caller's, given as a Long. It is freed only when it had a
// path and the caller asked for it.
CSK_EXPORT HRESULT WINAPI esGetPathFromPIDL(LONG list, VARIANT_BOOL free, BSTR* result) {
    RoutineScope scope(kModule, "ESGETPATHFROMPIDL");
    if (!result) return S_FALSE;
    return Shielded([&] {
        char buffer[1024] = {};
        const LPITEMIDLIST pidl = HANDLEFROMLONG<LPITEMIDLIST>(list);
        if (!SHGetPathFromIDListA(pidl, buffer)) {
            HANDBACKEMPTY(result);
            return S_OK;
        }
        if (FLAG(free)) CoTaskMemFree(pidl);
        HANDBACK(result, WR_ESADDBACKSLASH(buffer));
        return S_OK;
    });
}
