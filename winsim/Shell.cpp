// The shell's path functions (SHLWAPI), on 8-bit text. The stand-in's code
// page has one byte per character, so the platform's detour through UTF-16
// changes nothing but the limits: the wide copies hold MAX_PATH units, and a
// text that does not fit fails the conversion.
//
// The rules follow the platform's observable behaviour, odd corners
// included: a root is found by cutting off the last piece until what is
// left is a root; a relative path is counted from the common prefix and
// carries the original file name; a combination is canonicalised, which
// resolves "." and ".." pieces that follow a backslash.
#include <cctype>
#include <cstring>
#include <string>

#include "winsim.h"
#include "winsim_control.h"

namespace {

bool isRoot(const char* path) {
    if (!path || !*path) return false;
    if (path[0] == '\\') {
        if (!path[1]) return true;  // "\"
        if (path[1] != '\\') return false;
        // "\\server" or "\\server\share": at most one more backslash.
        bool seenSlash = false;
        for (const char* p = path + 2; *p; ++p)
            if (*p == '\\') {
                if (seenSlash) return false;
                seenSlash = true;
            }
        return true;
    }
    return path[1] == ':' && path[2] == '\\' && path[3] == '\0';  // "X:\"
}

// Cuts the last piece off: behind the last backslash, or behind a colon
// (and the backslash after it). False when nothing was cut.
bool removeFileSpec(char* path) {
    char* cut = path;
    char* p = path;
    if (*p == '\\') cut = ++p;
    if (*p == '\\') cut = ++p;
    for (; *p; ++p) {
        if (*p == '\\') {
            cut = p;
        } else if (*p == ':') {
            // The character behind a colon is passed over unlooked at.
            cut = ++p;
            if (*p == '\\') ++cut;
            if (!*p) break;
        }
    }
    if (!*cut) return false;
    *cut = '\0';
    return true;
}

bool stripToRoot(char* path) {
    while (!isRoot(path))
        if (!removeFileSpec(path)) return false;
    return true;
}

bool isUnc(const std::string& path) { return path.size() >= 2 && path[0] == '\\' && path[1] == '\\'; }

bool isUncServerShare(const std::string& path) {
    if (!isUnc(path)) return false;
    bool seenSlash = false;
    for (size_t i = 2; i < path.size(); ++i)
        if (path[i] == '\\') {
            if (seenSlash) return false;
            seenSlash = true;
        }
    return seenSlash;
}

// How much two paths have in common, ending at a backslash or the end of
// both; a bare drive "X:" counts as "X:\" (3).
size_t commonPrefix(const std::string& a, const std::string& b) {
    size_t start = 0;
    if (isUnc(a) != isUnc(b)) return 0;
    if (isUnc(a)) start = 2;
    size_t length = 0;
    for (size_t i = start;; ++i) {
        bool endA = i >= a.size(), endB = i >= b.size();
        if ((endA || a[i] == '\\') && (endB || b[i] == '\\')) length = i;
        if (endA || endB ||
            std::toupper(static_cast<unsigned char>(a[i])) != std::toupper(static_cast<unsigned char>(b[i])))
            break;
    }
    return length == 2 ? 3 : length;
}

// The platform keeps copies of the arguments in MAX_PATH buffers: a text of
// MAX_PATH characters or more does not fit.
bool fits(const char* text) { return std::strlen(text) < MAX_PATH; }

// "." and ".." pieces resolved, as the shell canonicalises: ".\" vanishes
// at the start or behind a backslash or colon; "\.." takes the piece
// before it away, but never the root, the server of a UNC path or "\\".
std::string canonicalize(const std::string& path) {
    if (path.empty()) return "\\";
    std::string out;
    size_t src = 0;
    const size_t n = path.size();
    auto at = [&](size_t i) { return i < n ? path[i] : '\0'; };
    if (path[0] == '\\') {
        out += path[src++];
    } else if (at(1) == ':') {
        out += path[src++];
        out += path[src++];
        if (at(src) == '\\') out += path[src++];
    }
    while (src < n) {
        if (path[src] != '.') {
            out += path[src++];
            continue;
        }
        if (at(src + 1) == '\\' && (src == 0 || path[src - 1] == '\\' || path[src - 1] == ':')) {
            src += 2;
        } else if (at(src + 1) == '.' && !out.empty() && out.back() == '\\') {
            size_t end = out.size();  // one behind the backslash
            if (end > 1 && (out[end - 2] != '\\' || end > 2)) {
                if (out[end - 2] == ':' && (end > 3 || out[end - 3] == ':')) {
                    // Behind "X:\": back over the drive to the last backslash.
                    size_t p = end - 2;
                    while (p > 0 && out[p] != '\\') --p;
                    end = out[p] == '\\' ? p + 1 : 0;
                } else if (out[end - 2] != ':' && !isUncServerShare(out)) {
                    end -= 2;
                }
            }
            // The platform looks at the character at the write position,
            // which is the terminator when nothing was taken away yet.
            while (end > 0 && (end < out.size() ? out[end] : '\0') != '\\') --end;
            out.resize(end);
            if (end == 0) {
                out += '\\';
                ++src;
            }
            src += 2;
        } else {
            out += path[src++];
        }
    }
    if (out.size() == 2 && out[1] == ':') out += '\\';
    return out;
}

}  // namespace

extern "C" {

BOOL WINAPI PathStripToRootA(LPSTR path) {
    if (winsim::refuse("PathStripToRootA")) return FALSE;
    if (!path) return FALSE;
    return stripToRoot(path) ? TRUE : FALSE;
}

LPSTR WINAPI PathFindFileNameA(LPCSTR path) {
    winsim::refuse("PathFindFileNameA");
    const char* name = path;
    for (const char* p = path; p && *p; ++p)
        if ((*p == '\\' || *p == '/' || *p == ':') && p[1] && p[1] != '\\' && p[1] != '/') name = p + 1;
    return const_cast<LPSTR>(name);
}

BOOL WINAPI PathRelativePathToA(LPSTR result, LPCSTR from, DWORD fromAttributes, LPCSTR to, DWORD toAttributes) {
    if (winsim::refuse("PathRelativePathToA")) return FALSE;
    if (!result || !from || !to) return FALSE;
    *result = '\0';
    // A "to" that does not fit its copy never gives an answer of MAX_PATH;
    // a "from" that does not fit is cut to MAX_PATH - 1 characters.
    if (!fits(to)) return FALSE;
    std::string fromPath(from, fits(from) ? std::strlen(from) : MAX_PATH - 1);
    std::string toPath(to);
    std::string fromFolder = fromPath, toFolder = toPath;
    fromFolder.push_back('\0');
    toFolder.push_back('\0');
    if (!(fromAttributes & FILE_ATTRIBUTE_DIRECTORY)) removeFileSpec(&fromFolder[0]);
    if (!(toAttributes & FILE_ATTRIBUTE_DIRECTORY)) removeFileSpec(&toFolder[0]);
    fromFolder.resize(std::strlen(fromFolder.c_str()));
    toFolder.resize(std::strlen(toFolder.c_str()));

    size_t common = commonPrefix(fromFolder, toFolder);
    if (common == 0) return FALSE;

    // One ".." for each piece of "from" behind the common part.
    std::string relative;
    size_t p = common;
    if (p >= fromFolder.size()) relative = ".";
    if (p < fromFolder.size() && fromFolder[p] == '\\') ++p;
    while (p < fromFolder.size()) {
        size_t slash = fromFolder.find('\\', p);
        if (slash == std::string::npos) {
            p = fromFolder.size();
        } else {
            if (slash + 1 < fromFolder.size() && fromFolder[slash + 1] == '\\') ++slash;
            p = slash + 1;
        }
        relative += p < fromFolder.size() ? "..\\" : "..";
    }
    // Then the original "to" from the common part on, file name included.
    if (common < toPath.size() && toPath[common - 1] != '\0') {
        size_t from = toPath[common] == '\\' ? common : common - 1;
        if (relative.size() + (toPath.size() - from) >= MAX_PATH) return FALSE;
        relative.append(toPath, from, std::string::npos);
    }
    std::memcpy(result, relative.c_str(), relative.size() + 1);
    return TRUE;
}

LPSTR WINAPI PathCombineA(LPSTR result, LPCSTR folder, LPCSTR file) {
    if (winsim::refuse("PathCombineA")) {
        if (result) *result = '\0';
        return nullptr;
    }
    if (!result) return nullptr;
    if ((!folder && !file) || (folder && !fits(folder)) || (file && !fits(file))) {
        *result = '\0';
        return nullptr;
    }
    bool hasFolder = folder && *folder;
    bool fileIsRelative = !file || !*file || !(file[0] == '\\' || file[1] == ':');
    std::string joined;
    if ((!file || !*file) && folder) {
        joined = folder;
    } else if (!hasFolder || !fileIsRelative) {
        if (!hasFolder || file[0] != '\\' || file[1] == '\\') {
            joined = file;
        } else {
            // "\name" goes on the root of the folder.
            std::string root(folder);
            root.push_back('\0');
            stripToRoot(&root[0]);
            joined.assign(root.c_str());
            if (!joined.empty() && joined.back() != '\\') joined += '\\';
            if (joined.size() + std::strlen(file + 1) >= MAX_PATH) {
                *result = '\0';
                return nullptr;
            }
            joined += file + 1;
        }
    } else {
        joined = folder;
        if (!joined.empty() && joined.back() != '\\') joined += '\\';
        if (joined.size() + std::strlen(file) >= MAX_PATH) {
            *result = '\0';
            return nullptr;
        }
        joined += file;
    }
    std::string canonical = canonicalize(joined);
    if (canonical.size() >= MAX_PATH) {
        *result = '\0';
        return nullptr;
    }
    std::memcpy(result, canonical.c_str(), canonical.size() + 1);
    return result;
}

}  // extern "C"
