// Module TempFileName: a new, empty file whose name is a new GUID, in a
// folder of the caller's choice. The caller owns the file.
#include "Frame.h"
#include "GUID.h"
#include "IsExist.h"
#include "PathAndFileNameParse.h"
#include "SystemFolder.h"

static const char kModule[] = "TempFileName";

namespace {

// The file's path, or empty when there is no folder, it does not exist (it
// is never made) or the file cannot be created.
std::string WR_ESGETTEMPFILENAME2(std::string folder, std::string extension) {
    CSK_ROUTINE("WR_ESGETTEMPFILENAME2");
    if (folder.empty()) folder = WR_ESGETTEMPPATH();
    if (folder.empty() || !WR_ESISDIRECTORYEXIST(folder)) return std::string();
    std::string name = UCase(WR_ESGETNEWGUID());
    if (Left(name, 1) == "{") name.erase(0, 1);
    if (Right(name, 1) == "}") name.pop_back();
    std::string path = WR_ESBUILDFILENAME2(std::move(folder), std::move(name), "", "", "", "", "", "", "");
    if (!extension.empty()) path += "." + extension;
    HANDLE file = CreateFileA(path.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, 0, nullptr);
    if (file == INVALID_HANDLE_VALUE) return std::string();
    CloseHandle(file);
    return path;
}

}  // namespace

CSK_EXPORT HRESULT WINAPI esGetTempFileName2(BSTR folder, BSTR extension, BSTR* result) {
    return TextExport(kModule, "ESGETTEMPFILENAME2", result,
                      [&] { return WR_ESGETTEMPFILENAME2(BSTRTOSTRING(folder), BSTRTOSTRING(extension)); });
}
