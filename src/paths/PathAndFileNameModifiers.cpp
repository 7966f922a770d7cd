// Module PathAndFileNameModifiers: the full, long and short forms of a path,
// and its case as it is on the disk.
#include "PathAndFileNameModifiers.h"

#include "Frame.h"
#include "FunctionsSupport.h"

static const char kModule[] = "PathAndFileNameModifiers";

namespace {

bool fullPathName(const std::string& path, std::string& text) {
    return TWOCALLFETCH(
        [&](LPSTR buffer, DWORD size) { return GetFullPathNameA(TextBuffer::Argument(path), size, buffer, nullptr); },
        text);
}

bool shortPathName(const std::string& path, std::string& text) {
    return TWOCALLFETCH(
        [&](LPSTR buffer, DWORD size) { return GetShortPathNameA(TextBuffer::Argument(path), buffer, size); }, text);
}

bool longPathName(const std::string& path, std::string& text) {
    return TWOCALLFETCH(
        [&](LPSTR buffer, DWORD size) {
            return static_cast<DWORD>(GETLONGPATHNAMEA(TextBuffer::Argument(path), buffer, size));
        },
        text);
}

std::string WR_ESGETFULLFILENAME(std::string path, uint8_t fixCase) {
    CSK_ROUTINE("WR_ESGETFULLFILENAME");
    std::string full;
    if (!fullPathName(path, full)) return path;
    return fixCase ? FIXFILENAMECASE(std::move(full), 0) : full;
}

std::string WR_ESGETLONGFILENAME(std::string path, uint8_t emptyOnFailure) {
    CSK_ROUTINE("WR_ESGETLONGFILENAME");
    std::string text;
    if (longPathName(path, text)) return text;
    return emptyOnFailure ? std::string() : path;
}

std::string WR_ESGETSHORTFILENAME(std::string path, uint8_t emptyOnFailure) {
    CSK_ROUTINE("WR_ESGETSHORTFILENAME");
    std::string text;
    if (shortPathName(path, text)) return text;
    return emptyOnFailure ? std::string() : path;
}

}  // namespace

// The case typed survives GetFullPathNameA, but not the trip to the short
// form and back: the long form is read from the disk.
std::string FIXFILENAMECASE(std::string path, uint8_t emptyOnFailure) {
    CSK_ROUTINE("FIXFILENAMECASE");
    std::string shortForm, longForm;
    if (shortPathName(path, shortForm) && longPathName(shortForm, longForm)) return longForm;
    return emptyOnFailure ? std::string() : path;
}

LONG GETLONGPATHNAMEA(LPCSTR shortPath, LPSTR buffer, DWORD size) {
    CSK_ROUTINE("GETLONGPATHNAMEA");
    DWORD length = __GETLONGPATHNAMEA(shortPath, buffer, size);
    if (!g_missingEntry) return static_cast<LONG>(length);
    return PROXY_GETLONGPATHNAMEA(shortPath, buffer, size);
}

CSK_EXPORT HRESULT WINAPI esGetFullFileName(BSTR path, VARIANT_BOOL fixCase, BSTR* result) {
    return TextExport(kModule, "ESGETFULLFILENAME", result,
                      [&] { return WR_ESGETFULLFILENAME(BSTRTOSTRING(path), FLAG(fixCase)); });
}

CSK_EXPORT HRESULT WINAPI esGetLongFileName(BSTR path, VARIANT_BOOL emptyOnFailure, BSTR* result) {
    return TextExport(kModule, "ESGETLONGFILENAME", result,
                      [&] { return WR_ESGETLONGFILENAME(BSTRTOSTRING(path), FLAG(emptyOnFailure)); });
}

CSK_EXPORT HRESULT WINAPI esGetShortFileName(BSTR path, VARIANT_BOOL emptyOnFailure, BSTR* result) {
    return TextExport(kModule, "ESGETSHORTFILENAME", result,
                      [&] { return WR_ESGETSHORTFILENAME(BSTRTOSTRING(path), FLAG(emptyOnFailure)); });
}
