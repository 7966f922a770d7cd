// Module PathAndFileNameParse2: the parts of a path, a relative and an
// absolute path, and a replaced extension.
#include "PathAndFileNameParse2.h"

#include <cstring>

#include "Frame.h"
#include "PathAndFileNameParse.h"
#include "VBStringFunctions.h"

static const char kModule[] = "PathAndFileNameParse2";

namespace {

// Where the shell says the name begins, as an offset into the buffer (and
// so into the path, which the buffer holds from its start).
size_t nameOffset(const TextBuffer& buffer) {
    const char* name = PathFindFileNameA(buffer.bytes);
    CSK_CHECK(name != nullptr, kErrorNullPointer);
    CSK_CHECK(name >= buffer.bytes && name <= buffer.bytes + kTextLimit, kErrorOutOfBounds);
    return static_cast<size_t>(name - buffer.bytes);
}

// The path as the parsing workers see it: one closing backslash off, the
// stream split off.
void prepare(std::string& path, std::string& stream) {
    path = WR_ESREMOVEBACKSLASH(std::move(path));
    SPLITALTSTREAM(path, stream);
}

bool startsWith(const std::string& s, const char* head) { return s.compare(0, std::strlen(head), head) == 0; }

bool endsWith(const std::string& s, const char* tail) {
    size_t n = std::strlen(tail);
    return s.size() >= n && s.compare(s.size() - n, n, tail) == 0;
}

// The position of the last dot of a name, if it counts: a dot at the very
// start (".profile") does not, so 0 then.
long countingDot(const std::string& name) {
    long p = InstrRev(name, ".", -1);
    return p > 1 ? p : 0;
}

}  // namespace

void SPLITALTSTREAM(std::string& path, std::string& stream) {
    CSK_ROUTINE("SPLITALTSTREAM");
    // The colon of "X:\" at the head of a path is a drive's, every other
    // colon starts a stream.
    size_t start = path.size() >= 3 && path.compare(1, 2, ":\\") == 0 ? 2 : 0;
    size_t colon = path.find(':', start);
    if (colon == std::string::npos) {
        stream.clear();
        return;
    }
    stream.assign(path, colon, std::string::npos);
    path.resize(colon);
}

std::string WR_ESGETFILEROOT(std::string path) {
    CSK_ROUTINE("WR_ESGETFILEROOT");
    std::string stream;
    prepare(path, stream);
    TextBuffer buffer(path);
    if (!PathStripToRootA(buffer.bytes)) return std::string();
    path.assign(buffer.bytes);
    return WR_ESADDBACKSLASH(std::move(path));
}

std::string WR_ESGETFILEPATH(std::string path) {
    CSK_ROUTINE("WR_ESGETFILEPATH");
    std::string stream;
    prepare(path, stream);
    TextBuffer buffer(path);
    // The text up to where the name begins is the folder.
    path.resize(nameOffset(buffer));
    return path;
}

std::string WR_ESGETFILENAME(std::string path, uint8_t withoutStream) {
    CSK_ROUTINE("WR_ESGETFILENAME");
    std::string stream;
    prepare(path, stream);
    TextBuffer buffer(path);
    size_t offset = nameOffset(buffer);
    // The name is the buffer's text from there: the path cut at the limit.
    if (path.size() > kTextLimit) path.resize(kTextLimit);
    path.erase(0, offset);
    if (!withoutStream && !path.empty()) path += stream;
    return path;
}

std::string WR_ESGETFILEONLYNAME(std::string path) {
    CSK_ROUTINE("WR_ESGETFILEONLYNAME");
    std::string name = WR_ESGETFILENAME(std::move(path), 1);
    long dot = countingDot(name);
    if (dot) name.resize(static_cast<size_t>(dot - 1));
    return name;
}

std::string WR_ESGETFILEEXTENSION(std::string path) {
    CSK_ROUTINE("WR_ESGETFILEEXTENSION");
    std::string name = WR_ESGETFILENAME(std::move(path), 1);
    long dot = countingDot(name);
    if (!dot) return std::string();
    name.erase(0, static_cast<size_t>(dot));
    return name;
}

std::string MYCAMONICALIZEPATH(std::string path) {
    CSK_ROUTINE("MYCAMONICALIZEPATH");
    // Again and again: in "\.\.\" the second occurrence overlaps the first.
    while (Instr(1, path, "\\.\\") > 0) path = REPLACE(std::move(path), "\\.\\", "\\", 1, -1, 1);
    if (startsWith(path, ".\\")) path.erase(0, 2);
    if (endsWith(path, "\\.")) path.resize(path.size() - 2);
    return path;
}

std::string WR_ESGETRELATIVEFILENAME(std::string file, std::string base) {
    CSK_ROUTINE("WR_ESGETRELATIVEFILENAME");
    file = MYCAMONICALIZEPATH(std::move(file));
    base = WR_ESREMOVEBACKSLASH(MYCAMONICALIZEPATH(std::move(base)));
    // The shell takes both paths in MAX_PATH buffers of its own (Wine's
    // overruns its stack with a longer one): a longer path has no relative
    // form, as if the two had no common root.
    if (file.size() >= MAX_PATH || base.size() >= MAX_PATH) return file;
    TextBuffer buffer;
    if (!PathRelativePathToA(buffer.bytes, TextBuffer::Argument(base), FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_NORMAL,
                             TextBuffer::Argument(file), FILE_ATTRIBUTE_NORMAL))
        return file;
    file.assign(buffer.bytes);
    return MYCAMONICALIZEPATH(std::move(file));
}

std::string WR_ESGETABSOLUTEFILENAME(std::string file, std::string base) {
    CSK_ROUTINE("WR_ESGETABSOLUTEFILENAME");
    TextBuffer buffer;
    if (!PathCombineA(buffer.bytes, TextBuffer::Argument(base), TextBuffer::Argument(file))) return file;
    file.assign(buffer.bytes);
    return MYCAMONICALIZEPATH(std::move(file));
}

std::string WR_ESREPLACEFILEEXTENSION(std::string path, std::string extension) {
    CSK_ROUTINE("WR_ESREPLACEFILEEXTENSION");
    std::string name = WR_ESGETFILENAME(path, 0);
    if (name.empty()) return name;
    // The old name with its stream takes this many bytes at the path's end.
    const long oldLength = static_cast<long>(name.size());
    std::string stream;
    SPLITALTSTREAM(name, stream);
    long dot = countingDot(name);
    if (dot) name.resize(static_cast<size_t>(dot - 1));
    if (!extension.empty()) (name += '.') += extension;
    name += stream;
    path = WR_ESREMOVEBACKSLASH(std::move(path));
    // The path keeps what stands before the old name, as Left would, in place.
    long keep = static_cast<long>(path.size()) - oldLength;
    path.resize(keep > 0 ? static_cast<size_t>(keep) : 0);
    return path += name;
}

CSK_EXPORT HRESULT WINAPI esGetFileRoot(BSTR path, BSTR* result) {
    return GuardedTextExport(kModule, "ESGETFILEROOT", result, path,
                             [&] { return WR_ESGETFILEROOT(BSTRTOSTRING(path)); });
}

CSK_EXPORT HRESULT WINAPI esGetFilePath(BSTR path, BSTR* result) {
    return GuardedTextExport(kModule, "ESGETFILEPATH", result, path,
                             [&] { return WR_ESGETFILEPATH(BSTRTOSTRING(path)); });
}

CSK_EXPORT HRESULT WINAPI esGetFileName(BSTR path, VARIANT_BOOL withoutStream, BSTR* result) {
    return GuardedTextExport(kModule, "ESGETFILENAME", result, path,
                             [&] { return WR_ESGETFILENAME(BSTRTOSTRING(path), FLAG(withoutStream)); });
}

CSK_EXPORT HRESULT WINAPI esGetFileOnlyName(BSTR path, BSTR* result) {
    return GuardedTextExport(kModule, "ESGETFILEONLYNAME", result, path,
                             [&] { return WR_ESGETFILEONLYNAME(BSTRTOSTRING(path)); });
}

CSK_EXPORT HRESULT WINAPI esGetFileExtension(BSTR path, BSTR* result) {
    return GuardedTextExport(kModule, "ESGETFILEEXTENSION", result, path,
                             [&] { return WR_ESGETFILEEXTENSION(BSTRTOSTRING(path)); });
}

CSK_EXPORT HRESULT WINAPI esGetRelativeFileName(BSTR file, BSTR base, BSTR* result) {
    return TextExport(kModule, "ESGETRELATIVEFILENAME", result,
                      [&] { return WR_ESGETRELATIVEFILENAME(BSTRTOSTRING(file), BSTRTOSTRING(base)); });
}

CSK_EXPORT HRESULT WINAPI esGetAbsoluteFileName(BSTR file, BSTR base, BSTR* result) {
    return TextExport(kModule, "ESGETABSOLUTEFILENAME", result,
                      [&] { return WR_ESGETABSOLUTEFILENAME(BSTRTOSTRING(file), BSTRTOSTRING(base)); });
}

CSK_EXPORT HRESULT WINAPI esReplaceFileExtension(BSTR path, BSTR extension, BSTR* result) {
    return GuardedTextExport(kModule, "ESREPLACEFILEEXTENSION", result, path, [&] {
        return WR_ESREPLACEFILEEXTENSION(BSTRTOSTRING(path), BSTRTOSTRING(extension));
    });
}
