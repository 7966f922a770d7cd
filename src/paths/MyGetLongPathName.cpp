// Module MyGetLongPathName: the long form of a path for hosts without
// GetLongPathNameA (Windows 95, NT 4), walked element by element.
#include <cstring>

#include "Frame.h"
#include "IsExist.h"
#include "PathAndFileNameModifiers.h"

static const char kModule[] = "MyGetLongPathName";

namespace {

// The last element of the path as the disk spells it: a drive stays as it
// is, "." and ".." are not looked up, and an element that is not found
// keeps the spelling it was given.
std::string GETLASTPATHELEMENT(std::string path) {
    CSK_ROUTINE("GETLASTPATHELEMENT");
    if (Right(path, 1) == "\\") path.pop_back();
    if (Right(path, 1) == "\\") return std::string();
    if (path.size() == 2 && path[1] == ':') return path;
    const size_t slash = path.rfind('\\');
    std::string name = slash == std::string::npos ? path : path.substr(slash + 1);
    if (name.find_first_not_of('.') == std::string::npos) return name;
    FindSearch search(path);
    return search.found() ? std::string(search.record.cFileName) : name;
}

}  // namespace

// One FindFirstFileA per element, left to right; a closing backslash and
// doubled ones stay where they are.
std::string MYGETLONGPATHNAME(std::string path) {
    CSK_ROUTINE("MYGETLONGPATHNAME");
    if (!WR_ESISFILEORDIRECTORYEXIST(path)) return std::string();
    std::string built;
    long position = 1;
    if (Left(path, 2) == "\\\\") {
        const long server = Instr(3, path, "\\");
        const long share = server ? Instr(server + 1, path, "\\") : 0;
        if (!share) return path;
        built = Left(path, share);
        position = share + 1;
    }
    while (position >= 1 && static_cast<size_t>(position) <= path.size()) {
        position = Instr(position, path, "\\");
        if (position) {
            built += GETLASTPATHELEMENT(Left(path, position));
            built += '\\';
            ++position;
        } else {
            built += GETLASTPATHELEMENT(path);
        }
    }
    return built;
}

// The platform's contract but for the length: it counts no terminator,
// also when the answer does not fit. 0: the path does not exist.
LONG PROXY_GETLONGPATHNAMEA(LPCSTR shortPath, LPSTR buffer, DWORD size) {
    CSK_ROUTINE("PROXY_GETLONGPATHNAMEA");
    const std::string longPath = MYGETLONGPATHNAME(shortPath ? std::string(shortPath) : std::string());
    if (longPath.size() <= static_cast<size_t>(size) + 1 && buffer)
        std::memcpy(buffer, longPath.c_str(), longPath.size() + 1);
    return static_cast<LONG>(longPath.size());
}
