// The shell's special folders (SHELL32) as item identifier lists, and
// CoTaskMemFree (OLE32), which frees them: the lists are the only blocks of
// the task allocator that winsim hands out.
//
// A list is a block that holds its folder's path, or none for a virtual
// folder (the Control Panel, the printers). A caller may carry a list in a
// Long, as it carries a handle, so the blocks come from one region mapped
// below 2 GB, where a pointer fits in 32 bits. A freed block goes to the
// back of the queue of free ones and is handed out again only after every
// other, so a list freed twice is caught. A caller that frees a list twice,
// or frees or reads a block that is no live list, has a bug: the process
// stops with a message.
#include <sys/mman.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <deque>
#include <map>
#include <stdexcept>
#include <string>
#include <vector>

#include "winsim.h"
#include "winsim_control.h"

namespace {

struct List {
    bool hasPath;
    char path[MAX_PATH];
};

const size_t kLists = 4096;  // lists alive at once at most

struct Shell {
    std::map<int, std::pair<bool, std::string>> folders;  // by CSIDL: whether it has a path, and the path
    std::vector<bool> live = std::vector<bool>(kLists);
    std::deque<size_t> free;  // the blocks to hand out, the one freed longest ago first
    int alive = 0;
};

Shell makeShell() {
    Shell made;
    for (size_t i = 0; i < kLists; ++i) made.free.push_back(i);
    return made;
}

Shell& shell() {
    static Shell state = makeShell();
    return state;
}

[[noreturn]] void stop(const char* function, const void* block, const char* what) {
    std::fprintf(stderr, "winsim: %s(%p): %s\n", function, block, what);
    std::fflush(stderr);
    std::abort();
}

// The blocks, mapped once for the life of the process.
List* blocks() {
    static List* mapped = [] {
        void* memory = mmap(nullptr, kLists * sizeof(List), PROT_READ | PROT_WRITE,
                            MAP_PRIVATE | MAP_ANONYMOUS | MAP_32BIT, -1, 0);
        if (memory == MAP_FAILED) stop("SHGetSpecialFolderLocation", nullptr, "no memory below 2 GB for lists");
        return static_cast<List*>(memory);
    }();
    return mapped;
}

// Which block a pointer is, or kLists for none.
size_t blockOf(const void* memory) {
    const uintptr_t offset = reinterpret_cast<uintptr_t>(memory) - reinterpret_cast<uintptr_t>(blocks());
    return offset < kLists * sizeof(List) && offset % sizeof(List) == 0 ? offset / sizeof(List) : kLists;
}

// The list a caller hands back, which must be alive.
const List& liveList(const char* function, const void* memory) {
    const size_t block = blockOf(memory);
    if (block == kLists) stop(function, memory, "not a block of the task allocator");
    if (!shell().live[block]) stop(function, memory, "an item identifier list already freed");
    return blocks()[block];
}

// A path that the shell can hold: nullptr (a virtual folder) or shorter than
// MAX_PATH, which is as long as SHGetPathFromIDListA can write.
void checkPath(const char* control, const char* path) {
    if (path && std::strlen(path) >= MAX_PATH)
        throw std::invalid_argument(std::string("winsim::") + control + ": a path of MAX_PATH or more: " + path);
}

// A new list, or null when every block is taken.
LPITEMIDLIST newList(const char* path) {
    Shell& state = shell();
    if (state.free.empty()) return nullptr;
    const size_t block = state.free.front();
    state.free.pop_front();
    state.live[block] = true;
    ++state.alive;
    List& list = blocks()[block];
    list.hasPath = path != nullptr;
    std::strcpy(list.path, path ? path : "");
    return reinterpret_cast<LPITEMIDLIST>(&list);
}

}  // namespace

namespace winsim {

// Every list is freed; one that a caller still holds is then freed twice.
void resetShell() { shell() = makeShell(); }

void setSpecialFolder(int csidl, const char* path) {
    checkPath("setSpecialFolder", path);
    shell().folders[csidl] = std::make_pair(path != nullptr, std::string(path ? path : ""));
}

LPITEMIDLIST makeItemIdList(const char* path) {
    checkPath("makeItemIdList", path);
    LPITEMIDLIST list = newList(path);
    if (!list) throw std::runtime_error("winsim::makeItemIdList: too many lists alive");
    return list;
}

int liveItemIdLists() { return shell().alive; }

}  // namespace winsim

extern "C" {

// Only the exact numbers that setSpecialFolder knows: one with a flag bit
// (CSIDL_FLAG_CREATE) is another number.
HRESULT WINAPI SHGetSpecialFolderLocation(HWND, int folder, LPITEMIDLIST* list) {
    const bool refused = winsim::refuse("SHGetSpecialFolderLocation");
    if (!list) return E_INVALIDARG;
    *list = nullptr;
    if (refused) return E_FAIL;
    auto it = shell().folders.find(folder);
    if (it == shell().folders.end()) return E_INVALIDARG;
    *list = newList(it->second.first ? it->second.second.c_str() : nullptr);
    return *list ? S_OK : E_OUTOFMEMORY;
}

// The path of a list into a buffer of MAX_PATH; a virtual folder or a null
// list gives FALSE and an empty text.
BOOL WINAPI SHGetPathFromIDListA(LPCITEMIDLIST list, LPSTR path) {
    const bool refused = winsim::refuse("SHGetPathFromIDListA");
    if (!path) return FALSE;
    *path = '\0';
    if (refused || !list) return FALSE;
    const List& known = liveList("SHGetPathFromIDListA", list);
    if (!known.hasPath) return FALSE;
    std::strcpy(path, known.path);
    return TRUE;
}

void WINAPI CoTaskMemFree(LPVOID memory) {
    winsim::refuse("CoTaskMemFree");
    if (!memory) return;
    liveList("CoTaskMemFree", memory);
    const size_t block = blockOf(memory);
    shell().live[block] = false;
    shell().free.push_back(block);
    --shell().alive;
}

}  // extern "C"
