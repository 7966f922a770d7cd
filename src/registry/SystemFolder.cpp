// Module SystemFolder: the system's folders and the current directory.
#include "SystemFolder.h"

#include "Frame.h"
#include "PathAndFileNameParse.h"

static const char kModule[] = "SystemFolder";

namespace {

// One folder through the two-call fetch, with its closing backslash.
template <class Call>
std::string folder(Call call) {
    std::string text;
    if (!TWOCALLFETCH(call, text)) return std::string();
    return WR_ESADDBACKSLASH(std::move(text));
}

}  // namespace

std::string WR_ESGETWINDOWSPATH() {
    CSK_ROUTINE("WR_ESGETWINDOWSPATH");
    return folder([](LPSTR buffer, DWORD size) { return static_cast<DWORD>(GetWindowsDirectoryA(buffer, size)); });
}

std::string WR_ESGETSYSTEMPATH() {
    CSK_ROUTINE("WR_ESGETSYSTEMPATH");
    return folder([](LPSTR buffer, DWORD size) { return static_cast<DWORD>(GetSystemDirectoryA(buffer, size)); });
}

std::string WR_ESGETTEMPPATH() {
    CSK_ROUTINE("WR_ESGETTEMPPATH");
    return folder([](LPSTR buffer, DWORD size) { return GetTempPathA(size, buffer); });
}

std::string WR_ESGETCURRENTDIRECTORY() {
    CSK_ROUTINE("WR_ESGETCURRENTDIRECTORY");
    return folder([](LPSTR buffer, DWORD size) { return GetCurrentDirectoryA(size, buffer); });
}

CSK_EXPORT HRESULT WINAPI esGetWindowsPath(BSTR* result) {
    return TextExport(kModule, "ESGETWINDOWSPATH", result, [] { return WR_ESGETWINDOWSPATH(); });
}

CSK_EXPORT HRESULT WINAPI esGetSystemPath(BSTR* result) {
    return TextExport(kModule, "ESGETSYSTEMPATH", result, [] { return WR_ESGETSYSTEMPATH(); });
}

CSK_EXPORT HRESULT WINAPI esGetTempPath(BSTR* result) {
    return TextExport(kModule, "ESGETTEMPPATH", result, [] { return WR_ESGETTEMPPATH(); });
}

CSK_EXPORT HRESULT WINAPI esGetCurrentDirectory(BSTR* result) {
    return TextExport(kModule, "ESGETCURRENTDIRECTORY", result, [] { return WR_ESGETCURRENTDIRECTORY(); });
}

// Status 1 also when the directory did not change. After a change the
// per-drive variable ("=C:") holds the new directory, as the command
// interpreter keeps it.
CSK_EXPORT HRESULT WINAPI esSetCurrentDirectory(BSTR path, VARIANT_BOOL* success) {
    return ValueExport(kModule, "ESSETCURRENTDIRECTORY", success, [&] {
        const std::string folderPath = BSTRTOSTRING(path);
        SetLastError(0);
        if (!SetCurrentDirectoryA(TextBuffer::Argument(folderPath))) {
            *success = VARIANT_FALSE;
            return S_FALSE;
        }
        const std::string now = WR_ESGETCURRENTDIRECTORY();
        if (now.size() >= 2 && now[1] == ':') SetEnvironmentVariableA(("=" + now.substr(0, 2)).c_str(), now.c_str());
        *success = VARIANT_TRUE;
        return S_OK;
    });
}
