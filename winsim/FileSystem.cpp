// The file system: volumes under drive letters ("C:") and UNC shares
// ("\\Server\Share"), each a tree of folders and files in memory, the
// current directory, the system's folders, the names of the modules, the
// open searches and the files opened by CreateFileA.
//
// A path is read as the platform reads it when it opens one: "/" is "\",
// a relative path is taken against the current directory, doubled
// separators count once, "." and ".." are resolved in the text (never above
// a root or a share), a name that a separator follows loses one trailing
// dot, and the last name loses all its trailing dots and spaces. A path
// that starts with "\\?\" is taken literally. Names are found without
// regard to case, by their long or their short name.
//
// The 8-bit ("A") functions carry a path through a buffer of MAX_PATH wide
// characters, so a longer one fails with ERROR_FILENAME_EXCED_RANGE.
#include <cstring>
#include <list>
#include <map>
#include <set>
#include <stdexcept>
#include <string>
#include <vector>

#include "winsim.h"
#include "winsim_control.h"

namespace {

// Error codes that winsim.h does not name.
const DWORD kBadLength = 24;            // ERROR_BAD_LENGTH
const DWORD kBadNetPath = 53;           // ERROR_BAD_NETPATH: no such server
const DWORD kBadNetName = 67;           // ERROR_BAD_NET_NAME: no such share
const DWORD kFileExists = 80;           // ERROR_FILE_EXISTS
const DWORD kInsufficientBuffer = 122;  // ERROR_INSUFFICIENT_BUFFER
const DWORD kDirNotRoot = 144;          // ERROR_DIR_NOT_ROOT
const DWORD kBadPathname = 161;         // ERROR_BAD_PATHNAME
const DWORD kAlreadyExists = 183;       // ERROR_ALREADY_EXISTS: CREATE_ALWAYS found the file
const DWORD kNameTooLong = 206;         // ERROR_FILENAME_EXCED_RANGE
const DWORD kNotAFolder = 267;          // ERROR_DIRECTORY

const std::string::size_type npos = std::string::npos;

// Upper case in Windows-1252, as the file system compares names.
unsigned char fold(unsigned char c) {
    if ((c >= 'a' && c <= 'z') || (c >= 0xE0 && c <= 0xFE && c != 0xF7)) return static_cast<unsigned char>(c - 0x20);
    switch (c) {
        case 0x9A: return 0x8A;  // š
        case 0x9C: return 0x8C;  // œ
        case 0x9E: return 0x8E;  // ž
        case 0xFF: return 0x9F;  // ÿ
        default: return c;
    }
}

bool sameName(const std::string& a, const std::string& b) {
    if (a.size() != b.size()) return false;
    for (size_t i = 0; i < a.size(); ++i)
        if (fold(static_cast<unsigned char>(a[i])) != fold(static_cast<unsigned char>(b[i]))) return false;
    return true;
}

struct NoCase {
    bool operator()(const std::string& a, const std::string& b) const {
        for (size_t i = 0; i < a.size() && i < b.size(); ++i) {
            unsigned char x = fold(static_cast<unsigned char>(a[i])), y = fold(static_cast<unsigned char>(b[i]));
            if (x != y) return x < y;
        }
        return a.size() < b.size();
    }
};

struct Item {
    std::string name;       // as stored; empty for a volume's root
    std::string shortName;  // the 8.3 name made for a long one, else empty
    DWORD attributes = FILE_ATTRIBUTE_DIRECTORY;
    ULONGLONG size = 0;
    DWORD refusal = 0;  // what GetFileAttributesA fails with, 0 for nothing
    std::list<Item> children;

    bool folder() const { return (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0; }
};

struct Volume {
    std::string label = "WINSIM";
    DWORD serial = 0x1234ABCD;
    DWORD maxComponent = 255;
    DWORD flags = 0x000700FF;
    std::string fileSystem = "NTFS";
    bool shortNames = true;
    ULONGLONG total = 100ull << 30, free = 40ull << 30, available = 30ull << 30;
    DWORD sectorsPerCluster = 8, bytesPerSector = 512;
    Item root;
};

// A file that CreateFileA opened (for writing), and how it lets others
// open it too.
struct OpenFile {
    Item* item;
    DWORD share;
};

struct FileSystem {
    std::map<std::string, Volume, NoCase> volumes;  // by "C:" or "\\server\share"
    std::string currentDirectory = "C:\\";           // always ends in a separator
    std::string windowsFolder = "C:\\Windows", systemFolder = "C:\\Windows\\System32", tempFolder = "C:\\Temp\\";
    std::map<HMODULE, std::string> modules;
    std::set<HANDLE> searches;
    std::map<HANDLE, OpenFile> files;
};

Item folderItem(const char* name) {
    Item made;
    made.name = name;
    return made;
}

// C: with the system's folders on it.
FileSystem makeFileSystem() {
    FileSystem made;
    Item& root = made.volumes["C:"].root;
    root.children.push_back(folderItem("Windows"));
    root.children.back().children.push_back(folderItem("System32"));
    root.children.push_back(folderItem("Temp"));
    made.modules[nullptr] = "C:\\Program Files\\Corvane\\App.exe";
    return made;
}

FileSystem& fs() {
    static FileSystem state = makeFileSystem();
    return state;
}

bool isSeparator(char c) { return c == '\\' || c == '/'; }

bool isUnc(const std::string& path) { return path.size() >= 2 && path[0] == '\\' && path[1] == '\\'; }

std::string withBackslashes(std::string path) {
    for (char& c : path)
        if (c == '/') c = '\\';
    return path;
}

std::string driveKey(char letter) { return {static_cast<char>(fold(static_cast<unsigned char>(letter))), ':'}; }

// The length of the drive or share at the head of a full path: "C:" or
// "\\server\share"; all of it when it names no share ("\\server").
size_t headLength(const std::string& full) {
    if (!isUnc(full)) return 2;
    size_t server = full.find('\\', 2);
    size_t share = server == npos ? npos : full.find('\\', server + 1);
    return share == npos ? full.size() : share;
}

std::vector<std::string> pieces(const std::string& text) {
    std::vector<std::string> out;
    size_t start = 0;
    for (size_t end; (end = text.find('\\', start)) != npos; start = end + 1)
        out.push_back(text.substr(start, end - start));
    out.push_back(text.substr(start));
    return out;
}

// What follows the head of a full path ("" or from a separator on),
// resolved: doubled separators and "." go, ".." takes the name before it,
// a name that a separator follows loses one trailing dot, and the last one
// all its trailing dots and spaces. A trailing separator stays.
std::string collapse(const std::string& rest) {
    if (rest.empty()) return rest;
    std::vector<std::string> names;
    bool trailing = rest.back() == '\\';
    std::vector<std::string> all = pieces(rest);
    for (size_t i = 0; i < all.size(); ++i) {
        std::string name = all[i];
        if (name.empty() || name == ".") continue;
        if (name == "..") {
            if (!names.empty()) names.pop_back();
            continue;
        }
        if (i + 1 < all.size()) {
            if (name.back() == '.') name.pop_back();
        } else {
            while (!name.empty() && (name.back() == '.' || name.back() == ' ')) name.pop_back();
            if (name.empty()) {
                trailing = true;
                continue;
            }
        }
        names.push_back(name);
    }
    std::string out = "\\";
    for (size_t i = 0; i < names.size(); ++i) out += names[i] + (i + 1 < names.size() || trailing ? "\\" : "");
    return out;
}

// The full form of a path, as GetFullPathNameA gives it. "C:" alone is the
// current directory when that is on C:, else the root of C:.
std::string fullPath(const char* path) {
    std::string text = withBackslashes(path);
    const std::string& current = fs().currentDirectory;
    if (text.size() >= 2 && text[1] == ':') {
        if (text.size() == 2 || text[2] != '\\') {
            bool onCurrent = current[1] == ':' && sameName(current.substr(0, 1), text.substr(0, 1));
            text = onCurrent ? current + text.substr(2) : text.substr(0, 2) + "\\" + text.substr(2);
        }
    } else if (text.empty() || text[0] != '\\') {
        text = current + text;
    } else if (!isUnc(text)) {
        text = current.substr(0, headLength(current)) + text;
    }
    size_t head = headLength(text);
    return text.substr(0, head) + collapse(text.substr(head));
}

// A path taken apart: the volume it is on and the names below its root.
struct Place {
    std::string volume;
    std::vector<std::string> names;
    bool trailing = false;  // it ended in a separator
};

// Takes a full path apart. A literal one (behind "\\?\") keeps its names
// as they are, so an empty name, "." and ".." are not names at all.
DWORD placeOf(const std::string& full, bool literal, Place& place) {
    size_t head = 2;
    if (full.size() >= 2 && full[1] == ':') {
        place.volume = driveKey(full[0]);
    } else if (isUnc(full)) {
        size_t server = full.find('\\', 2);
        if (server == npos || server == 2) return kBadPathname;
        head = headLength(full);
        std::string serverName = full.substr(2, server - 2), share = full.substr(server + 1, head - server - 1);
        if (share.empty()) return kBadPathname;
        if ((serverName == "?" || serverName == ".") && share.size() == 2 && share[1] == ':')
            place.volume = driveKey(share[0]);  // "\\?\C:", "\\.\C:"
        else
            place.volume = full.substr(0, head);
    } else {
        return ERROR_PATH_NOT_FOUND;
    }
    if (head == full.size()) return 0;
    if (full[head] != '\\') return ERROR_INVALID_NAME;  // "\\?\C:name"
    std::vector<std::string> all = pieces(full.substr(head + 1));
    place.trailing = all.size() > 1 && all.back().empty();
    if (all.back().empty()) all.pop_back();
    for (const std::string& name : all) {
        if (literal && (name.empty() || name == "." || name == "..")) return ERROR_INVALID_NAME;
        place.names.push_back(name);
    }
    return 0;
}

// The error for a path longer than the wide buffer of MAX_PATH characters
// that the 8-bit functions convert it into, or too long for the conversion
// to take at all; 0 for any other.
DWORD lengthError(const char* path) {
    size_t length = std::strlen(path);
    return length >= 32767 ? ERROR_INVALID_PARAMETER : length > MAX_PATH ? kNameTooLong : 0;
}

// Reads a path as the 8-bit functions read it.
DWORD placeOfPath(const char* path, Place& place) {
    if (!path || !*path) return ERROR_PATH_NOT_FOUND;
    if (DWORD error = lengthError(path)) return error;
    if (std::strncmp(path, "\\\\?\\", 4) != 0) return placeOf(fullPath(path), false, place);
    std::string rest = path + 4;
    if (rest.size() >= 4 && sameName(rest.substr(0, 4), "UNC\\")) return placeOf("\\\\" + rest.substr(4), true, place);
    if (rest.size() >= 2 && rest[1] == ':') return placeOf(rest, true, place);
    return ERROR_INVALID_NAME;
}

// Why a volume is not there: a drive that does not exist is a path not
// found; a share is on a server that the network does not have, or is one
// that its server does not have.
DWORD missingVolume(const std::string& key) {
    if (!isUnc(key)) return ERROR_PATH_NOT_FOUND;
    std::string server = key.substr(0, key.find('\\', 2) + 1);
    for (const auto& volume : fs().volumes)
        if (sameName(volume.first.substr(0, server.size()), server)) return kBadNetName;
    return kBadNetPath;
}

DWORD volumeOf(const Place& place, Volume*& volume) {
    auto it = fs().volumes.find(place.volume);
    if (it == fs().volumes.end()) return missingVolume(place.volume);
    volume = &it->second;
    return 0;
}

DWORD currentVolume(Volume*& volume) {
    Place place;
    DWORD error = placeOf(fs().currentDirectory, false, place);
    return error ? error : volumeOf(place, volume);
}

// Characters that no name holds ("/" reaches here only in a literal path).
bool validName(const std::string& name) {
    for (unsigned char c : name)
        if (c < ' ' || std::strchr("\"*/<>?|", c)) return false;
    return true;
}

Item* child(Item& folder, const std::string& name) {
    for (Item& item : folder.children)
        if (sameName(item.name, name)) return &item;
    for (Item& item : folder.children)
        if (!item.shortName.empty() && sameName(item.shortName, name)) return &item;
    return nullptr;
}

// What a path names, or the error the platform reports for it. A search
// (FindFirstFileA) names what is in a folder, never a folder by a trailing
// separator or a root, and it opens the folder above as a folder. A file
// named with a trailing separator is a path not found, but it is still
// given in item: opening it comes first, and can fail first (a file held
// without sharing).
DWORD locate(const char* path, Item*& item, bool search = false, Volume** onVolume = nullptr) {
    Place place;
    if (DWORD error = placeOfPath(path, place)) return error;
    if (search && (place.names.empty() || place.trailing)) return ERROR_FILE_NOT_FOUND;
    Volume* volume = nullptr;
    if (DWORD error = volumeOf(place, volume)) return error;
    const size_t count = place.names.size();
    for (size_t i = 0; i < count; ++i)
        if (!validName(place.names[i])) return search && i + 1 == count ? ERROR_FILE_NOT_FOUND : ERROR_INVALID_NAME;
    Item* at = &volume->root;
    for (size_t i = 0; i < count; ++i) {
        Item* next = child(*at, place.names[i]);
        if (!next) return i + 1 == count ? ERROR_FILE_NOT_FOUND : ERROR_PATH_NOT_FOUND;
        if (i + 1 < count && !next->folder()) return search && i + 2 == count ? kNotAFolder : ERROR_PATH_NOT_FOUND;
        at = next;
    }
    item = at;
    if (onVolume) *onVolume = volume;
    return place.trailing && !at->folder() ? ERROR_PATH_NOT_FOUND : 0;
}

// Where CreateFileA puts a file: the volume, the folder that holds the last
// name, and the item of that name there (null when there is none). A root
// cannot be opened for writing; a name that does not exist yet cannot end
// in a separator.
DWORD locateNew(const char* path, Volume*& volume, Item*& folder, Item*& item, std::string& name) {
    Place place;
    if (DWORD error = placeOfPath(path, place)) return error;
    if (DWORD error = volumeOf(place, volume)) return error;
    if (place.names.empty()) return ERROR_ACCESS_DENIED;
    for (const std::string& each : place.names)
        if (!validName(each)) return ERROR_INVALID_NAME;
    folder = &volume->root;
    for (size_t i = 0; i + 1 < place.names.size(); ++i) {
        folder = child(*folder, place.names[i]);
        if (!folder || !folder->folder()) return ERROR_PATH_NOT_FOUND;
    }
    name = place.names.back();
    item = child(*folder, name);
    if (place.trailing && !item) return ERROR_INVALID_NAME;
    return place.trailing && !item->folder() ? ERROR_PATH_NOT_FOUND : 0;
}

// A name that is a valid 8.3 name as it stands: one to eight characters,
// then optionally a dot and one to three more, with no space and none of
// the characters that short names leave out. Lower case is allowed.
bool isShortName(const std::string& name) {
    size_t dot = name.find('.');
    size_t base = dot == npos ? name.size() : dot;
    if (base == 0 || base > 8) return false;
    if (dot != npos && (name.size() - dot - 1 == 0 || name.size() - dot - 1 > 3 || name.find('.', dot + 1) != npos))
        return false;
    for (unsigned char c : name)
        if (c <= ' ' || std::strchr("\"*+,/:;<=>?[\\]|", c)) return false;
    return true;
}

// The 8.3 name made for a long one in a folder: upper case, without spaces
// and dots, "+,;=[]" as "_", the first characters of the name, "~N" with
// the first N that the folder does not use yet, and the first three of the
// extension (behind the last dot).
std::string makeShortName(const std::string& name, const Item& folder) {
    size_t dot = name.rfind('.');
    if (dot != npos && name.find_first_not_of('.') > dot) dot = npos;  // ".profile" has no extension
    auto clean = [](const std::string& part, size_t most) {
        std::string out;
        for (size_t i = 0; i < part.size() && out.size() < most; ++i) {
            unsigned char c = static_cast<unsigned char>(part[i]);
            if (c == ' ' || c == '.') continue;
            out += std::strchr("+,;=[]", c) ? '_' : static_cast<char>(fold(c));
        }
        return out;
    };
    std::string base = clean(name.substr(0, dot), 8);
    std::string extension = dot == npos ? "" : clean(name.substr(dot + 1), 3);
    if (base.empty()) base = "_";
    for (int n = 1;; ++n) {
        std::string tail = "~" + std::to_string(n);
        std::string made = base.substr(0, 8 - tail.size()) + tail + (extension.empty() ? "" : "." + extension);
        bool used = false;
        for (const Item& item : folder.children)
            used = used || sameName(item.name, made) || sameName(item.shortName, made);
        if (!used) return made;
    }
}

// How much of a path, as spelled, is its drive or share ("c:", "\\Server\Share",
// "\\?\C:", "\\?\UNC\Server\Share"); 0 for a relative or rooted path.
size_t spelledHead(const std::string& path) {
    if (path.size() >= 2 && isSeparator(path[0]) && isSeparator(path[1])) {
        size_t at = 2;
        if (path.size() >= 4 && (path[2] == '?' || path[2] == '.') && isSeparator(path[3])) {
            at = 4;
            if (path.size() >= 6 && path[5] == ':') return 6;
            if (path.size() >= 8 && sameName(path.substr(4, 3), "UNC") && isSeparator(path[7])) at = 8;
        }
        while (at < path.size() && !isSeparator(path[at])) ++at;  // the server
        if (at < path.size()) ++at;
        while (at < path.size() && !isSeparator(path[at])) ++at;  // the share
        return at;
    }
    return path.size() >= 2 && path[1] == ':' ? 2 : 0;
}

// A path spelled again, name by name: the head and every separator as the
// caller wrote them, "." and ".." as they are, and each name as stored
// (the long form) or as its short name where it has one (the short form).
// A name that is already a valid 8.3 name is not looked up for the short
// form; every other is, through the path up to it.
DWORD respell(const char* path, bool longForm, std::string& out) {
    const std::string text(path);
    size_t at = spelledHead(text);
    out = text.substr(0, at);
    while (at < text.size()) {
        if (isSeparator(text[at])) {
            out += text[at++];
            continue;
        }
        size_t end = at;
        while (end < text.size() && !isSeparator(text[end])) ++end;
        std::string name = text.substr(at, end - at);
        if (name != "." && name != ".." && (longForm || !isShortName(name))) {
            Item* item = nullptr;
            if (DWORD error = locate(text.substr(0, end).c_str(), item)) return error;
            if (longForm) name = item->name;
            else if (!item->shortName.empty()) name = item->shortName;
        }
        out += name;
        at = end;
    }
    return 0;
}

// Hands a text back as the path functions do: with room for it and its
// terminator, the length written; else the size needed, terminator counted.
DWORD handBack(const std::string& text, LPSTR buffer, DWORD size) {
    if (!buffer || size <= text.size()) return static_cast<DWORD>(text.size() + 1);
    std::memcpy(buffer, text.c_str(), text.size() + 1);
    return static_cast<DWORD>(text.size());
}

// The volume that a root names: "C:\" or "\\Server\Share\" with its
// separator, "\" the current drive's root, null the current directory's
// volume. A path without its final separator is not a name of a root; a
// folder below one is not a root.
DWORD rootVolume(LPCSTR root, Volume*& volume) {
    if (!root) return currentVolume(volume);
    if (!*root) return ERROR_PATH_NOT_FOUND;
    if (DWORD error = lengthError(root)) return error;
    std::string text = withBackslashes(root);
    size_t last = text.find_last_not_of('\\');
    if (last == npos) return currentVolume(volume);
    if (last + 1 == text.size()) return ERROR_INVALID_NAME;
    text.erase(last + 1);
    Place place;
    bool drive = text.size() == 2 && text[1] == ':';
    if (!drive && (!isUnc(text) || placeOf(text + "\\", false, place) || !place.names.empty())) return kDirNotRoot;
    if (drive) place.volume = driveKey(text[0]);
    return volumeOf(place, volume);
}

DWORD fail(DWORD error) {
    SetLastError(error);
    return 0;
}

// For the test controls: a path that must name a volume or an item.
[[noreturn]] void misuse(const char* control, const char* path) {
    throw std::invalid_argument(std::string("winsim::") + control + ": no such volume or item: " +
                                (path ? path : "(null)"));
}

std::string rootKey(const char* control, const char* root) {
    std::string text = withBackslashes(root ? root : "");
    while (text.size() > 2 && text.back() == '\\') text.pop_back();
    if (text.size() == 2 && text[1] == ':') return driveKey(text[0]);
    Place place;
    if (!isUnc(text) || placeOf(text + "\\", false, place) || !place.names.empty()) misuse(control, root);
    return place.volume;
}

// The item a path names, made with the folders above it as needed.
Item& make(const char* control, const char* path, bool folder) {
    Place place;
    if (!path || !*path || placeOf(fullPath(path), false, place) || (!folder && place.names.empty()))
        misuse(control, path);
    auto volume = fs().volumes.find(place.volume);
    if (volume == fs().volumes.end()) misuse(control, path);
    Item* at = &volume->second.root;
    for (size_t i = 0; i < place.names.size(); ++i) {
        const std::string& name = place.names[i];
        const bool last = i + 1 == place.names.size();
        Item* next = child(*at, name);
        if (!next) {
            Item made;
            made.name = name;
            if (volume->second.shortNames && !isShortName(name)) made.shortName = makeShortName(name, *at);
            at->children.push_back(made);
            next = &at->children.back();
            if (last && !folder) next->attributes = FILE_ATTRIBUTE_NORMAL;
        } else if (next->folder() != (folder || !last)) {
            throw std::invalid_argument(std::string("winsim::") + control + ": a file and a folder by one name: " +
                                        path);
        }
        if (last && sameName(next->name, name)) next->name = name;  // the case given
        at = next;
    }
    return *at;
}

}  // namespace

namespace winsim {

uintptr_t newHandle();  // Control.cpp

void resetFileSystem() { fs() = makeFileSystem(); }

// Upper case in Windows-1252: the registry compares its names so too.
unsigned char foldCase(unsigned char c) { return fold(c); }

// For CloseHandle (Host.cpp): false when the handle is no open file.
bool closeFile(HANDLE handle) { return fs().files.erase(handle) != 0; }

void setSystemFolders(const char* windows, const char* system, const char* temp) {
    if (!windows || !system || !temp) throw std::invalid_argument("winsim::setSystemFolders: a null folder");
    fs().windowsFolder = windows, fs().systemFolder = system, fs().tempFolder = temp;
}

int openSearches() { return static_cast<int>(fs().searches.size()); }

void addVolume(const char* root, const char* label, DWORD serial, DWORD maxComponent, DWORD flags,
               const char* fileSystem, bool shortNames) {
    Volume& volume = fs().volumes[rootKey("addVolume", root)];
    volume.label = label ? label : "";
    volume.serial = serial;
    volume.maxComponent = maxComponent;
    volume.flags = flags;
    volume.fileSystem = fileSystem ? fileSystem : "";
    volume.shortNames = shortNames;
}

void setDiskSpace(const char* root, ULONGLONG total, ULONGLONG free, ULONGLONG available, DWORD sectorsPerCluster,
                  DWORD bytesPerSector) {
    auto it = fs().volumes.find(rootKey("setDiskSpace", root));
    if (it == fs().volumes.end() || sectorsPerCluster == 0 || bytesPerSector == 0) misuse("setDiskSpace", root);
    Volume& volume = it->second;
    volume.total = total, volume.free = free, volume.available = available;
    volume.sectorsPerCluster = sectorsPerCluster, volume.bytesPerSector = bytesPerSector;
}

// A file with no attributes shows FILE_ATTRIBUTE_NORMAL, as on the platform.
void addFile(const char* path, ULONGLONG size, DWORD attributes) {
    Item& item = make("addFile", path, false);
    item.size = size;
    const DWORD fileAttributes = attributes & ~FILE_ATTRIBUTE_DIRECTORY;
    item.attributes = fileAttributes ? fileAttributes : FILE_ATTRIBUTE_NORMAL;
}

void addDirectory(const char* path, DWORD attributes) {
    make("addDirectory", path, true).attributes = (attributes & ~FILE_ATTRIBUTE_NORMAL) | FILE_ATTRIBUTE_DIRECTORY;
}

void refuseAttributes(const char* path, DWORD error) {
    Item* item = nullptr;
    if (locate(path, item)) misuse("refuseAttributes", path);
    item->refusal = error;
}

void setCurrentDirectory(const char* path) {
    if (!path || !*path) misuse("setCurrentDirectory", path);
    std::string full = fullPath(path);
    if (full.back() != '\\') full += '\\';
    fs().currentDirectory = full;
}

void setModuleFileName(HMODULE module, const char* path) {
    if (path) fs().modules[module] = path;
    else fs().modules.erase(module);
}

// GetLongPathNameA and GetDiskFreeSpaceExA, which Host.cpp hands out
// through GetProcAddress only.
DWORD longPathName(LPCSTR path, LPSTR buffer, DWORD size) {
    if (!path) return fail(ERROR_INVALID_PARAMETER);
    Item* item = nullptr;
    std::string out;
    DWORD error = locate(path, item);
    if (!error) error = respell(path, true, out);
    if (!error && out.size() >= MAX_PATH) error = kNameTooLong;
    return error ? fail(error) : handBack(out, buffer, size);
}

// Any folder on a volume will do; null is the current directory's volume.
BOOL diskFreeSpaceEx(LPCSTR path, ULARGE_INTEGER* available, ULARGE_INTEGER* total, ULARGE_INTEGER* free) {
    Volume* volume = nullptr;
    Item* item = nullptr;
    DWORD error = path ? locate(path, item, false, &volume) : currentVolume(volume);
    if (!error && item && !item->folder()) error = kNotAFolder;
    if (error) return fail(error);
    if (available) available->QuadPart = volume->available;
    if (total) total->QuadPart = volume->total;
    if (free) free->QuadPart = volume->free;
    return TRUE;
}

}  // namespace winsim

extern "C" {

DWORD WINAPI GetFileAttributesA(LPCSTR path) {
    Item* item = nullptr;
    DWORD error = winsim::refuse("GetFileAttributesA") ? ERROR_ACCESS_DENIED : locate(path, item);
    if (item && item->refusal) error = item->refusal;
    if (error) {
        SetLastError(error);
        return INVALID_FILE_ATTRIBUTES;
    }
    return item->attributes;
}

// Finds the one item a path names; a pattern ("*", "?" or the platform's
// other wildcards "<", ">", '"') is refused, since winsim does not search.
// The record's times are 0: the tree keeps none.
HANDLE WINAPI FindFirstFileA(LPCSTR path, WIN32_FIND_DATAA* record) {
    Item* item = nullptr;
    DWORD error = 0;
    if (winsim::refuse("FindFirstFileA")) error = ERROR_ACCESS_DENIED;
    else if (!record) error = ERROR_INVALID_PARAMETER;
    else if (path && std::strpbrk(std::strncmp(path, "\\\\?\\", 4) == 0 ? path + 4 : path, "*?<>\""))
        error = ERROR_INVALID_NAME;
    else error = locate(path, item, true);
    if (error) {
        SetLastError(error);
        return INVALID_HANDLE_VALUE;
    }
    std::memset(record, 0, sizeof *record);
    record->dwFileAttributes = item->attributes;
    record->nFileSizeHigh = static_cast<DWORD>(item->size >> 32);
    record->nFileSizeLow = static_cast<DWORD>(item->size);
    std::strncpy(record->cFileName, item->name.c_str(), sizeof record->cFileName - 1);
    std::strncpy(record->cAlternateFileName, item->shortName.c_str(), sizeof record->cAlternateFileName - 1);
    HANDLE search = reinterpret_cast<HANDLE>(winsim::newHandle());
    fs().searches.insert(search);
    return search;
}

BOOL WINAPI FindClose(HANDLE search) {
    if (winsim::refuse("FindClose") || fs().searches.erase(search) == 0) {
        SetLastError(ERROR_INVALID_HANDLE);
        return FALSE;
    }
    return TRUE;
}

// The file part is the last name, or null when the path ends in a
// separator (or is a bare "\\server"); it is set only when the path was
// written.
DWORD WINAPI GetFullPathNameA(LPCSTR path, DWORD size, LPSTR buffer, LPSTR* filePart) {
    if (winsim::refuse("GetFullPathNameA")) return fail(kNameTooLong);
    if (!path || !*path) return fail(ERROR_INVALID_PARAMETER);
    if (DWORD error = lengthError(path)) return fail(error);
    std::string full = fullPath(path);
    if (full.size() >= MAX_PATH) return fail(kNameTooLong);
    DWORD answer = handBack(full, buffer, size);
    if (answer == full.size() && filePart) {
        size_t last = full.rfind('\\');
        *filePart = last + 1 == full.size() || last < 2 ? nullptr : buffer + last + 1;
    }
    return answer;
}

DWORD WINAPI GetShortPathNameA(LPCSTR path, LPSTR buffer, DWORD size) {
    if (winsim::refuse("GetShortPathNameA")) return fail(ERROR_ACCESS_DENIED);
    if (!path) return fail(ERROR_INVALID_PARAMETER);
    if (!*path) return fail(kBadPathname);
    Item* item = nullptr;
    std::string out;
    DWORD error = locate(path, item);
    if (!error) error = respell(path, false, out);
    if (!error && out.size() >= MAX_PATH) error = kNameTooLong;
    return error ? fail(error) : handBack(out, buffer, size);
}

// A name longer than the buffer is cut to size - 1 characters and its
// terminator; the answer is then size, with ERROR_INSUFFICIENT_BUFFER.
DWORD WINAPI GetModuleFileNameA(HMODULE module, LPSTR buffer, DWORD size) {
    auto it = fs().modules.find(module);
    if (winsim::refuse("GetModuleFileNameA") || it == fs().modules.end()) return fail(ERROR_MOD_NOT_FOUND);
    const std::string& name = it->second;
    if (size > name.size()) {
        std::memcpy(buffer, name.c_str(), name.size() + 1);
        return static_cast<DWORD>(name.size());
    }
    if (size > 0) {
        std::memcpy(buffer, name.data(), size - 1);
        buffer[size - 1] = '\0';
    }
    SetLastError(kInsufficientBuffer);
    return size;
}

// The cluster counts are the bytes available to the caller and the total,
// divided by the cluster's size and cut to 32 bits.
BOOL WINAPI GetDiskFreeSpaceA(LPCSTR root, DWORD* sectorsPerCluster, DWORD* bytesPerSector, DWORD* freeClusters,
                              DWORD* totalClusters) {
    Volume* volume = nullptr;
    DWORD error = winsim::refuse("GetDiskFreeSpaceA") ? ERROR_NOT_READY : rootVolume(root, volume);
    if (error) return fail(error);
    const ULONGLONG cluster = static_cast<ULONGLONG>(volume->sectorsPerCluster) * volume->bytesPerSector;
    if (sectorsPerCluster) *sectorsPerCluster = volume->sectorsPerCluster;
    if (bytesPerSector) *bytesPerSector = volume->bytesPerSector;
    if (freeClusters) *freeClusters = static_cast<DWORD>(volume->available / cluster);
    if (totalClusters) *totalClusters = static_cast<DWORD>(volume->total / cluster);
    return TRUE;
}

// A buffer given for the label or the file system's name must hold it and
// its terminator, else nothing is written (ERROR_BAD_LENGTH).
BOOL WINAPI GetVolumeInformationA(LPCSTR root, LPSTR label, DWORD labelSize, DWORD* serial, DWORD* maxComponent,
                                  DWORD* flags, LPSTR fileSystem, DWORD fileSystemSize) {
    Volume* volume = nullptr;
    DWORD error = winsim::refuse("GetVolumeInformationA") ? ERROR_NOT_READY : rootVolume(root, volume);
    if (!error && ((label && labelSize <= volume->label.size()) ||
                   (fileSystem && fileSystemSize <= volume->fileSystem.size())))
        error = kBadLength;
    if (error) return fail(error);
    if (label) std::memcpy(label, volume->label.c_str(), volume->label.size() + 1);
    if (serial) *serial = volume->serial;
    if (maxComponent) *maxComponent = volume->maxComponent;
    if (flags) *flags = volume->flags;
    if (fileSystem) std::memcpy(fileSystem, volume->fileSystem.c_str(), volume->fileSystem.size() + 1);
    return TRUE;
}

UINT WINAPI GetWindowsDirectoryA(LPSTR buffer, UINT size) {
    if (winsim::refuse("GetWindowsDirectoryA")) return fail(ERROR_ACCESS_DENIED);
    return handBack(fs().windowsFolder, buffer, size);
}

UINT WINAPI GetSystemDirectoryA(LPSTR buffer, UINT size) {
    if (winsim::refuse("GetSystemDirectoryA")) return fail(ERROR_ACCESS_DENIED);
    return handBack(fs().systemFolder, buffer, size);
}

DWORD WINAPI GetTempPathA(DWORD size, LPSTR buffer) {
    if (winsim::refuse("GetTempPathA")) return fail(ERROR_ACCESS_DENIED);
    return handBack(fs().tempFolder, buffer, size);
}

// The current directory loses its closing separator, except at a drive's
// root ("C:\"); a share's root loses it too ("\\Server\Share").
DWORD WINAPI GetCurrentDirectoryA(DWORD size, LPSTR buffer) {
    if (winsim::refuse("GetCurrentDirectoryA")) return fail(ERROR_ACCESS_DENIED);
    std::string current = fs().currentDirectory;
    if (current[current.size() - 2] != ':') current.pop_back();
    return handBack(current, buffer, size);
}

// The folder is kept as the caller spelled it, made full as
// GetFullPathNameA makes it, with a closing separator that must fit in
// MAX_PATH - 1 characters. A literal path ("\\?\") is not taken: relative
// paths could not be read against it.
BOOL WINAPI SetCurrentDirectoryA(LPCSTR path) {
    Item* item = nullptr;
    DWORD error = 0;
    if (winsim::refuse("SetCurrentDirectoryA")) error = ERROR_ACCESS_DENIED;
    else if (!path) error = ERROR_INVALID_PARAMETER;
    else if (!*path) error = ERROR_INVALID_NAME;
    else if (std::strncmp(path, "\\\\?\\", 4) == 0) error = ERROR_INVALID_PARAMETER;
    else error = locate(path, item);
    if (!error && item->refusal) error = item->refusal;
    if (!error && !item->folder()) error = kNotAFolder;
    std::string full = error ? "" : fullPath(path);
    if (!error && full.back() != '\\') full += '\\';
    if (!error && full.size() >= MAX_PATH) error = kNameTooLong;
    if (error) return fail(error);
    fs().currentDirectory = full;
    return TRUE;
}

// A file made empty for writing: GENERIC_WRITE with CREATE_NEW or
// CREATE_ALWAYS, the attributes of a plain file, no template; anything else
// is not modelled and refused. A new file gets the attributes asked for and
// FILE_ATTRIBUTE_ARCHIVE; an existing one is cut to nothing (last error
// ERROR_ALREADY_EXISTS) unless it is a folder, read-only, or hidden or a
// system file that the call does not say it is. Opening an item that
// refuseAttributes holds fails as GetFileAttributesA does. Both opens are
// for writing, so two of them clash unless both share writing.
HANDLE WINAPI CreateFileA(LPCSTR path, DWORD access, DWORD share, SECURITY_ATTRIBUTES*, DWORD disposition,
                          DWORD flags, HANDLE templateFile) {
    const DWORD kShareAll = 0x7;    // FILE_SHARE_READ, _WRITE and _DELETE
    const DWORD kShareWrite = 0x2;  // FILE_SHARE_WRITE
    const DWORD kSystem = 0x4;      // FILE_ATTRIBUTE_SYSTEM
    const DWORD kFileAttributes =
        FILE_ATTRIBUTE_READONLY | FILE_ATTRIBUTE_HIDDEN | kSystem | FILE_ATTRIBUTE_ARCHIVE | FILE_ATTRIBUTE_NORMAL;
    Volume* volume = nullptr;
    Item *folder = nullptr, *item = nullptr;
    std::string name;
    DWORD error = 0;
    if (winsim::refuse("CreateFileA")) error = ERROR_ACCESS_DENIED;
    else if (access != GENERIC_WRITE || (disposition != CREATE_NEW && disposition != CREATE_ALWAYS) ||
             (flags & ~kFileAttributes) || (share & ~kShareAll) || templateFile)
        error = ERROR_INVALID_PARAMETER;
    else error = locateNew(path, volume, folder, item, name);
    if (!error && item) {
        if (disposition == CREATE_NEW) error = kFileExists;
        else if (item->refusal) error = item->refusal;
        else if (item->folder() || (item->attributes & FILE_ATTRIBUTE_READONLY) ||
                 (item->attributes & (FILE_ATTRIBUTE_HIDDEN | kSystem) & ~flags))
            error = ERROR_ACCESS_DENIED;
        for (const auto& open : fs().files)
            if (!error && open.second.item == item && !(open.second.share & share & kShareWrite))
                error = ERROR_SHARING_VIOLATION;
    }
    if (error) {
        SetLastError(error);
        return INVALID_HANDLE_VALUE;
    }
    const bool existed = item != nullptr;
    if (!existed) {
        Item made;
        made.name = name;
        if (volume->shortNames && !isShortName(name)) made.shortName = makeShortName(name, *folder);
        folder->children.push_back(made);
        item = &folder->children.back();
    }
    SetLastError(existed ? kAlreadyExists : 0);
    item->size = 0;
    item->attributes = (flags & ~FILE_ATTRIBUTE_NORMAL) | FILE_ATTRIBUTE_ARCHIVE;
    HANDLE handle = reinterpret_cast<HANDLE>(winsim::newHandle());
    fs().files[handle] = OpenFile{item, share};
    return handle;
}

}  // extern "C"
