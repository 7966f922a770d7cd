#include "Detour.h"

#include <algorithm>
#include <cstdint>
#include <map>
#include <utility>
#include <vector>

#include "Harness.h"

std::string g_calls;

namespace {

// Writes replacement into every slot of the library's import address table
// that holds `function`, and answers what the first slot held (null when
// the library does not import it).
const void* Patch(const char* function, const void* replacement) {
    auto* base = reinterpret_cast<BYTE*>(CskLibrary());
    auto* nt = reinterpret_cast<IMAGE_NT_HEADERS*>(base + reinterpret_cast<IMAGE_DOS_HEADER*>(base)->e_lfanew);
    const IMAGE_DATA_DIRECTORY& imports = nt->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_IMPORT];
    const void* original = nullptr;
    for (auto* dll = reinterpret_cast<IMAGE_IMPORT_DESCRIPTOR*>(base + imports.VirtualAddress); dll->Name; ++dll) {
        auto* names = reinterpret_cast<IMAGE_THUNK_DATA*>(base + dll->OriginalFirstThunk);
        auto* slots = reinterpret_cast<IMAGE_THUNK_DATA*>(base + dll->FirstThunk);
        for (; names->u1.AddressOfData; ++names, ++slots) {
            if (IMAGE_SNAP_BY_ORDINAL(names->u1.Ordinal)) continue;
            if (std::strcmp(reinterpret_cast<IMAGE_IMPORT_BY_NAME*>(base + names->u1.AddressOfData)->Name, function)) continue;
            if (!original) original = reinterpret_cast<const void*>(slots->u1.Function);
            DWORD was = 0;
            VirtualProtect(&slots->u1.Function, sizeof(void*), PAGE_READWRITE, &was);
            slots->u1.Function = reinterpret_cast<DWORD_PTR>(replacement);
            VirtualProtect(&slots->u1.Function, sizeof(void*), was, &was);
        }
    }
    return original;
}

// What GetProcAddress answers the library while ProcDetours live.
std::map<std::string, const void*> g_procs;
Detour* g_getProcAddress = nullptr;

FARPROC WINAPI FakeGetProcAddress(HMODULE module, LPCSTR name) {
    auto found = HIWORD(reinterpret_cast<DWORD_PTR>(name)) ? g_procs.find(name) : g_procs.end();
    if (found == g_procs.end()) return g_getProcAddress->real<decltype(&GetProcAddress)>()(module, name);
    if (!found->second) SetLastError(ERROR_PROC_NOT_FOUND);
    return reinterpret_cast<FARPROC>(const_cast<void*>(found->second));
}

}  // namespace

Detour::Detour(const char* function, const void* replacement) : function_(function) {
    original = Patch(function, replacement);
    EXPECT_TRUE(original) << "the library does not import " << function;
}

Detour::~Detour() { if (original) Patch(function_.c_str(), original); }

ProcDetour::ProcDetour(const char* name, const void* replacement) : name_(name) {
    if (g_procs.empty()) g_getProcAddress = new Detour("GetProcAddress", FakeGetProcAddress);
    g_procs[name_] = replacement;
}

ProcDetour::~ProcDetour() {
    if (g_procs.erase(name_), g_procs.empty()) delete g_getProcAddress;
}

// ---- What must never really run ---------------------------------------------

namespace {

struct Never { const char* name; int arguments; DWORD answer; };
constexpr Never kNever[] = {
    {"MessageBoxA", 4, IDOK}, {"MessageBoxIndirectA", 1, IDOK}, {"MessageBoxIndirectW", 1, IDOK}, {"MessageBeep", 1, TRUE}, {"ExitWindowsEx", 2, TRUE},
    {"SetSystemPowerState", 2, TRUE}, {"SetPriorityClass", 2, TRUE}, {"RegisterEventSourceW", 2, 0x4C0C},
    {"ReportEventW", 9, TRUE}, {"ShellExecuteA", 6, 42}, {"SHAutoComplete", 2, S_OK}};
constexpr size_t kNeverCount = sizeof kNever / sizeof kNever[0];

// One stand-in per row, taking exactly that row's arguments off the stack.
template <size_t K, class... A>
DWORD WINAPI Recorded(A...) {
    return g_calls += std::string(kNever[K].name) + ' ', kNever[K].answer;
}
template <size_t K, size_t... I>
const void* RecordedOf(std::index_sequence<I...>) {
    return reinterpret_cast<const void*>(&Recorded<K, decltype(I)...>);
}
template <size_t... K>
std::vector<const void*> AllRecorded(std::index_sequence<K...>) {
    static_assert(sizeof(size_t) == 4, "one argument slot per size_t");
    return {RecordedOf<K>(std::make_index_sequence<kNever[K].arguments>())...};
}

const std::vector<const void*>& StandIns() {
    static const std::vector<const void*> made = AllRecorded(std::make_index_sequence<kNeverCount>());
    return made;
}

}  // namespace

// SHAutoComplete, the table's last row, is bound at run time.
NeverRun::NeverRun() : autoComplete_(new ProcDetour("SHAutoComplete", StandIns().back())) {
    for (size_t k = 0; k + 1 < kNeverCount; ++k) detours_.emplace_back(new Detour(kNever[k].name, StandIns()[k]));
}

// ---- The guard-page heap ------------------------------------------------------

namespace {

const size_t kPage = 4096, kRegionPages = 65536;  // 256 MB of addresses
struct Block { size_t pages; bool live; };
BYTE* g_region = nullptr;
size_t g_next = 0;                  // the first page not yet handed out in this round
std::map<size_t, Block> g_blocks;  // by first page; freed ones stay no-access until the next round
size_t g_liveCount = 0;
bool g_active = false;             // whether new blocks come from here or from the platform
template <class F>
F Real(const char* dll, const char* name) {
    return reinterpret_cast<F>(reinterpret_cast<void*>(GetProcAddress(GetModuleHandleA(dll), name)));
}
const auto g_realMalloc = Real<void*(__cdecl*)(size_t)>("msvcrt.dll", "malloc");
const auto g_realRealloc = Real<void*(__cdecl*)(void*, size_t)>("msvcrt.dll", "realloc");
const auto g_realFree = Real<void(__cdecl*)(void*)>("msvcrt.dll", "free");
const auto g_realSysAlloc = Real<decltype(&SysAllocStringLen)>("oleaut32.dll", "SysAllocStringLen");
const auto g_realSysAllocBytes = Real<decltype(&SysAllocStringByteLen)>("oleaut32.dll", "SysAllocStringByteLen");
const auto g_realSysFree = Real<decltype(&SysFreeString)>("oleaut32.dll", "SysFreeString");

// A block whose last byte is the last of its pages; the page after it is
// never committed. align is 1 for the BSTR calls (their terminator ends the
// block) and 8 for the C heap.
void* Take(size_t size, size_t align) {
    if (!g_active) return g_realMalloc(size);
    size_t bytes = (size + align - 1) / align * align, pages = (bytes + kPage - 1) / kPage + (bytes == 0);
    for (bool wrapped = false;;) {
        // Blocks ahead were handed out in the last round: the freed ones
        // have waited long enough.
        auto after = g_blocks.lower_bound(g_next);
        while (after != g_blocks.end() && !after->second.live) after = g_blocks.erase(after);
        if (g_next + pages + 1 <= (after == g_blocks.end() ? kRegionPages : after->first)) break;
        if (after != g_blocks.end()) {
            g_next = after->first + after->second.pages + 1;
        } else if (!wrapped) {
            wrapped = true, g_next = 0;
        } else {
            return nullptr;
        }
    }
    BYTE* first = g_region + g_next * kPage;
    if (!VirtualAlloc(first, pages * kPage, MEM_COMMIT, PAGE_READWRITE)) return nullptr;
    g_blocks[g_next] = {pages, true};
    g_next += pages + 1;
    ++g_liveCount;
    return first + pages * kPage - bytes;
}

// The block that holds p, and the bytes from p to its end.
std::map<size_t, Block>::iterator Find(const void* p) {
    return --g_blocks.upper_bound((static_cast<const BYTE*>(p) - g_region) / kPage);
}
size_t SizeOf(const void* p) {
    auto block = Find(p);
    return g_region + (block->first + block->second.pages) * kPage - static_cast<const BYTE*>(p);
}

void* __cdecl Guardedmalloc(size_t size) { return Take(size, 8); }

void* __cdecl Guardedcalloc(size_t count, size_t size) {
    void* made = size && count > SIZE_MAX / size ? nullptr : Take(count * size, 8);
    if (made && !g_active) std::memset(made, 0, count * size);
    return made;
}

void __cdecl Guardedfree(void* p) {
    if (p) GuardedHeap::Owns(p) ? GuardedHeap::Release(p) : g_realFree(p);
}

void* __cdecl Guardedrealloc(void* p, size_t size) {
    if (p && !GuardedHeap::Owns(p)) return g_realRealloc(p, size);
    if (!size) return Guardedfree(p), nullptr;
    void* made = Take(size, 8);
    if (made && p) std::memcpy(made, p, std::min(size, SizeOf(p))), GuardedHeap::Release(p);
    return made;
}

BSTR MakeBstr(const void* from, UINT bytes) {
    if (!g_active)
        return bytes % 2 ? g_realSysAllocBytes(static_cast<LPCSTR>(from), bytes)
                         : g_realSysAlloc(static_cast<const OLECHAR*>(from), bytes / 2);
    auto* block = static_cast<BYTE*>(Take(4 + bytes + 2, 1));
    if (!block) return nullptr;
    std::memcpy(block, &bytes, sizeof bytes);  // the prefix may lie on any even address
    if (from) std::memcpy(block + 4, from, bytes);
    return reinterpret_cast<BSTR>(block + 4);
}

BSTR WINAPI GuardedSysAllocStringLen(const OLECHAR* from, UINT length) { return MakeBstr(from, 2 * length); }
BSTR WINAPI GuardedSysAllocString(const OLECHAR* from) { return from ? MakeBstr(from, 2 * lstrlenW(from)) : nullptr; }
BSTR WINAPI GuardedSysAllocStringByteLen(LPCSTR from, UINT bytes) { return MakeBstr(from, bytes); }

void WINAPI GuardedSysFreeString(BSTR text) {
    if (text) GuardedHeap::Owns(text) ? GuardedHeap::Release(text) : g_realSysFree(text);
}

// A null text leaves the variable null.
INT WINAPI GuardedSysReAllocStringLen(BSTR* target, const OLECHAR* from, UINT length) {
    BSTR made = from || length ? MakeBstr(from, 2 * length) : nullptr;
    if (!made && (from || length)) return FALSE;
    GuardedSysFreeString(*target);
    return *target = made, TRUE;
}
INT WINAPI GuardedSysReAllocString(BSTR* target, const OLECHAR* from) {
    return GuardedSysReAllocStringLen(target, from, from ? lstrlenW(from) : 0);
}

#define CSK_ROUTED(name) {#name, reinterpret_cast<const void*>(Guarded##name)}
const std::pair<const char*, const void*> kRouted[] = {
    CSK_ROUTED(malloc), CSK_ROUTED(calloc), CSK_ROUTED(realloc), CSK_ROUTED(free), CSK_ROUTED(SysAllocString),
    CSK_ROUTED(SysAllocStringLen), CSK_ROUTED(SysAllocStringByteLen), CSK_ROUTED(SysReAllocString),
    CSK_ROUTED(SysReAllocStringLen), CSK_ROUTED(SysFreeString)};

}  // namespace

// The calls stay routed here until the library is loaded anew, taking new
// blocks from the platform once the scope ends: what the library keeps for
// the life of the process may come back to them later.
GuardedHeap::GuardedHeap() {
    if (!g_region) g_region = static_cast<BYTE*>(VirtualAlloc(nullptr, kRegionPages * kPage, MEM_RESERVE, PAGE_NOACCESS));
    for (const auto& [name, guarded] : kRouted) Patch(name, guarded);
    g_active = true;
}

GuardedHeap::~GuardedHeap() { g_active = false; }

size_t GuardedHeap::Live() { return g_liveCount; }
bool GuardedHeap::Owns(const void* p) { return g_region && p >= g_region && p < g_region + kRegionPages * kPage; }

void GuardedHeap::Release(void* p) {
    auto block = Find(p);
    EXPECT_TRUE(block->second.live) << "a block released twice: " << p;
    if (!block->second.live) return;
    VirtualFree(g_region + block->first * kPage, block->second.pages * kPage, MEM_DECOMMIT);
    block->second.live = false;
    --g_liveCount;
}
