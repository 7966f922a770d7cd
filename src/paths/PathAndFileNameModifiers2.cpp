// Module PathAndFileNameModifiers2: the file name of a loaded module.
#include "Frame.h"
#include "PathAndFileNameModifiers.h"

static const char kModule[] = "PathAndFileNameModifiers2";

std::string WR_ESGETMODULEFILENAME(HMODULE module, uint8_t fixCase) {
    CSK_ROUTINE("WR_ESGETMODULEFILENAME");
    TextBuffer buffer;
    if (GetModuleFileNameA(module, buffer.bytes, static_cast<DWORD>(kTextLimit)) == 0) return std::string();
    std::string name(buffer.bytes);
    return fixCase ? FIXFILENAMECASE(std::move(name), 0) : name;
}

// The handle is the caller's Long; 0 is the program file of the process.
CSK_EXPORT HRESULT WINAPI esGetModuleFileName(LONG module, VARIANT_BOOL fixCase, BSTR* result) {
    return TextExport(kModule, "ESGETMODULEFILENAME", result,
                      [&] { return WR_ESGETMODULEFILENAME(HANDLEFROMLONG<HMODULE>(module), FLAG(fixCase)); });
}
