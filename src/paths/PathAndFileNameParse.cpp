// Module PathAndFileNameParse: closing backslashes and joining path elements.
#include "PathAndFileNameParse.h"

#include "Frame.h"

static const char kModule[] = "PathAndFileNameParse";

static bool endsWithBackslash(const std::string& s) { return !s.empty() && s.back() == '\\'; }

std::string WR_ESADDBACKSLASH(std::string path) {
    CSK_ROUTINE("WR_ESADDBACKSLASH");
    if (!path.empty() && !endsWithBackslash(path)) path += '\\';
    return path;
}

std::string WR_ESREMOVEBACKSLASH(std::string path) {
    CSK_ROUTINE("WR_ESREMOVEBACKSLASH");
    if (path.empty()) return path;
    // A root is known by its length and shape alone: "C:\" and "\" keep
    // their backslash, "AB:\" does not.
    if (path.size() == 3 && path.compare(1, 2, ":\\") == 0) return path;
    if (path == "\\") return path;
    if (endsWithBackslash(path)) path.pop_back();
    return path;
}

std::string WR_ESBUILDFILENAME(std::string folder, std::string fileName, uint8_t stripFolder) {
    CSK_ROUTINE("WR_ESBUILDFILENAME");
    std::string result;
    if (!folder.empty()) {
        folder.reserve(folder.size() + 1 + fileName.size());
        result = WR_ESADDBACKSLASH(std::move(folder));
    }
    // A leading backslash of the file name is kept as it stands.
    if (!fileName.empty()) result += fileName;
    else if (stripFolder) result = WR_ESREMOVEBACKSLASH(std::move(result));
    return result;
}

// One seam: exactly one backslash between what is built and the element.
static void appendElement(std::string& result, const std::string& element) {
    if (element.empty()) return;
    if (result.empty()) {
        result = element;
        return;
    }
    bool resultEnds = endsWithBackslash(result);
    bool elementBegins = element.front() == '\\';
    if (resultEnds && elementBegins) result.append(element, 1, std::string::npos);
    else if (resultEnds || elementBegins) result += element;
    else (result += '\\') += element;
}

std::string WR_ESBUILDFILENAME2(std::string e1, std::string e2, std::string e3, std::string e4, std::string e5,
                                std::string e6, std::string e7, std::string e8, std::string e9) {
    CSK_ROUTINE("WR_ESBUILDFILENAME2");
    const std::string* elements[] = {&e1, &e2, &e3, &e4, &e5, &e6, &e7, &e8, &e9};
    // Room for every element and a separator at each seam: one allocation.
    size_t room = 0;
    for (const std::string* element : elements) room += element->size() + 1;
    std::string result;
    result.reserve(room);
    for (const std::string* element : elements) appendElement(result, *element);
    return result;
}

CSK_EXPORT HRESULT WINAPI esAddBackslash(BSTR path, BSTR* result) {
    return TextExport(kModule, "ESADDBACKSLASH", result, [&] { return WR_ESADDBACKSLASH(BSTRTOSTRING(path)); });
}

CSK_EXPORT HRESULT WINAPI esRemoveBackslash(BSTR path, BSTR* result) {
    return TextExport(kModule, "ESREMOVEBACKSLASH", result,
                      [&] { return WR_ESREMOVEBACKSLASH(BSTRTOSTRING(path)); });
}

CSK_EXPORT HRESULT WINAPI esBuildFileName(BSTR folder, BSTR fileName, VARIANT_BOOL stripFolder, BSTR* result) {
    return TextExport(kModule, "ESBUILDFILENAME", result, [&] {
        return WR_ESBUILDFILENAME(BSTRTOSTRING(folder), BSTRTOSTRING(fileName), FLAG(stripFolder));
    });
}

CSK_EXPORT HRESULT WINAPI esBuildFileName2(BSTR e1, BSTR e2, BSTR e3, BSTR e4, BSTR e5, BSTR e6, BSTR e7, BSTR e8,
                                           BSTR e9, BSTR* result) {
    return TextExport(kModule, "ESBUILDFILENAME2", result, [&] {
        return WR_ESBUILDFILENAME2(BSTRTOSTRING(e1), BSTRTOSTRING(e2), BSTRTOSTRING(e3), BSTRTOSTRING(e4),
                                   BSTRTOSTRING(e5), BSTRTOSTRING(e6), BSTRTOSTRING(e7), BSTRTOSTRING(e8),
                                   BSTRTOSTRING(e9));
    });
}
