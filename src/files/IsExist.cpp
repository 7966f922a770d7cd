// Module IsExist: existence, kind and reparse tests of a path.
#include "IsExist.h"

#include "Frame.h"
#include "PathAndFileNameModifiers.h"
#include "PathAndFileNameParse.h"

static const char kModule[] = "IsExist";

namespace {

bool exists(DWORD word) { return word != INVALID_FILE_ATTRIBUTES; }
bool isDirectory(DWORD word) { return (word & FILE_ATTRIBUTE_DIRECTORY) != 0; }
bool isReparsePoint(DWORD word) { return (word & FILE_ATTRIBUTE_REPARSE_POINT) != 0; }

// True when the path is spelled as the file system gives it back through
// its short form and its long form; a failure on that way matches nothing.
bool ISUNIXFILENAMEMATCH(const std::string& path) {
    CSK_ROUTINE("ISUNIXFILENAMEMATCH");
    return FIXFILENAMECASE(path, 1) == path;
}

uint8_t WR_ESISFILE(std::string path) { return WR_ESISFILEEXIST(std::move(path)); }
uint8_t WR_ESISDIRECTORY(std::string path) { return WR_ESISDIRECTORYEXIST(std::move(path)); }

// Reparse points of every tag count alike: the tag is never read.
uint8_t WR_ESISSYMLINK(std::string path) {
    CSK_ROUTINE("WR_ESISSYMLINK");
    DWORD word = WR_ESGETFILEATTRIBUTES(std::move(path));
    return exists(word) && isReparsePoint(word);
}

uint8_t WR_ESISSYMLINKTOFILE(std::string path) {
    CSK_ROUTINE("WR_ESISSYMLINKTOFILE");
    DWORD word = WR_ESGETFILEATTRIBUTES(std::move(path));
    return exists(word) && isReparsePoint(word) && !isDirectory(word);
}

uint8_t WR_ESISSYMLINKTODIRECTORY(std::string path) {
    CSK_ROUTINE("WR_ESISSYMLINKTODIRECTORY");
    DWORD word = WR_ESGETFILEATTRIBUTES(std::move(path));
    return exists(word) && isReparsePoint(word) && isDirectory(word);
}

uint8_t WR_ESISJUNCTION(std::string path) { return WR_ESISSYMLINKTODIRECTORY(std::move(path)); }

// The name test runs only once the item is known to exist.
uint8_t WR_ESISUNIXFILEEXIST(std::string path) {
    CSK_ROUTINE("WR_ESISUNIXFILEEXIST");
    return WR_ESISFILEEXIST(path) && ISUNIXFILENAMEMATCH(path);
}

uint8_t WR_ESISUNIXDIRECTORYEXIST(std::string path) {
    CSK_ROUTINE("WR_ESISUNIXDIRECTORYEXIST");
    return WR_ESISDIRECTORYEXIST(path) && ISUNIXFILENAMEMATCH(path);
}

uint8_t WR_ESISUNIXFILEORDIRECTORYEXIST(std::string path) {
    CSK_ROUTINE("WR_ESISUNIXFILEORDIRECTORYEXIST");
    return WR_ESISFILEORDIRECTORYEXIST(path) && ISUNIXFILENAMEMATCH(path);
}

// The frame of every test: the answer pointer, the path, -1 or 0.
HRESULT PathTest(const char* routine, BSTR path, VARIANT_BOOL* answer, uint8_t (*test)(std::string)) {
    return ValueExport(kModule, routine, answer, [&] {
        *answer = VBBOOL(test(BSTRTOSTRING(path)) != 0);
        return S_OK;
    });
}

}  // namespace

DWORD WR_ESGETFILEATTRIBUTES(std::string path) {
    CSK_ROUTINE("WR_ESGETFILEATTRIBUTES");
    // The platform would take a pattern as a name or refuse it; the library
    // never asks.
    if (path.find_first_of("*?") != std::string::npos) return INVALID_FILE_ATTRIBUTES;
    DWORD word = GetFileAttributesA(TextBuffer::Argument(path));
    if (exists(word) || GetLastError() != ERROR_SHARING_VIOLATION) return word;
    // Held open without sharing: its directory entry can still be read.
    path = WR_ESREMOVEBACKSLASH(std::move(path));
    SetLastError(0);
    FindSearch search(path);
    return search.found() ? search.record.dwFileAttributes : INVALID_FILE_ATTRIBUTES;
}

uint8_t WR_ESISFILEORDIRECTORYEXIST(std::string path) {
    CSK_ROUTINE("WR_ESISFILEORDIRECTORYEXIST");
    return exists(WR_ESGETFILEATTRIBUTES(std::move(path)));
}

uint8_t WR_ESISFILEEXIST(std::string path) {
    CSK_ROUTINE("WR_ESISFILEEXIST");
    DWORD word = WR_ESGETFILEATTRIBUTES(std::move(path));
    return exists(word) && !isDirectory(word);
}

uint8_t WR_ESISDIRECTORYEXIST(std::string path) {
    CSK_ROUTINE("WR_ESISDIRECTORYEXIST");
    DWORD word = WR_ESGETFILEATTRIBUTES(std::move(path));
    return exists(word) && isDirectory(word);
}

CSK_EXPORT HRESULT WINAPI esGetFileAttributes(BSTR path, LONG* answer) {
    return ValueExport(kModule, "ESGETFILEATTRIBUTES", answer, [&] {
        *answer = static_cast<LONG>(WR_ESGETFILEATTRIBUTES(BSTRTOSTRING(path)));
        return S_OK;
    });
}

CSK_EXPORT HRESULT WINAPI esIsFileOrDirectoryExist(BSTR path, VARIANT_BOOL* answer) {
    return PathTest("ESISFILEORDIRECTORYEXIST", path, answer, WR_ESISFILEORDIRECTORYEXIST);
}
CSK_EXPORT HRESULT WINAPI esIsFileExist(BSTR path, VARIANT_BOOL* answer) {
    return PathTest("ESISFILEEXIST", path, answer, WR_ESISFILEEXIST);
}
CSK_EXPORT HRESULT WINAPI esIsDirectoryExist(BSTR path, VARIANT_BOOL* answer) {
    return PathTest("ESISDIRECTORYEXIST", path, answer, WR_ESISDIRECTORYEXIST);
}
CSK_EXPORT HRESULT WINAPI esIsDirectory(BSTR path, VARIANT_BOOL* answer) {
    return PathTest("ESISDIRECTORY", path, answer, WR_ESISDIRECTORY);
}
CSK_EXPORT HRESULT WINAPI esIsFile(BSTR path, VARIANT_BOOL* answer) {
    return PathTest("ESISFILE", path, answer, WR_ESISFILE);
}
CSK_EXPORT HRESULT WINAPI esIsJunction(BSTR path, VARIANT_BOOL* answer) {
    return PathTest("ESISJUNCTION", path, answer, WR_ESISJUNCTION);
}
CSK_EXPORT HRESULT WINAPI esIsSymlink(BSTR path, VARIANT_BOOL* answer) {
    return PathTest("ESISSYMLINK", path, answer, WR_ESISSYMLINK);
}
CSK_EXPORT HRESULT WINAPI esIsSymlinkToFile(BSTR path, VARIANT_BOOL* answer) {
    return PathTest("ESISSYMLINKTOFILE", path, answer, WR_ESISSYMLINKTOFILE);
}
CSK_EXPORT HRESULT WINAPI esIsSymlinkToDirectory(BSTR path, VARIANT_BOOL* answer) {
    return PathTest("ESISSYMLINKTODIRECTORY", path, answer, WR_ESISSYMLINKTODIRECTORY);
}
CSK_EXPORT HRESULT WINAPI esIsUnixFileExist(BSTR path, VARIANT_BOOL* answer) {
    return PathTest("ESISUNIXFILEEXIST", path, answer, WR_ESISUNIXFILEEXIST);
}
CSK_EXPORT HRESULT WINAPI esIsUnixDirectoryExist(BSTR path, VARIANT_BOOL* answer) {
    return PathTest("ESISUNIXDIRECTORYEXIST", path, answer, WR_ESISUNIXDIRECTORYEXIST);
}
CSK_EXPORT HRESULT WINAPI esIsUnixFileOrDirectoryExist(BSTR path, VARIANT_BOOL* answer) {
    return PathTest("ESISUNIXFILEORDIRECTORYEXIST", path, answer, WR_ESISUNIXFILEORDIRECTORYEXIST);
}
