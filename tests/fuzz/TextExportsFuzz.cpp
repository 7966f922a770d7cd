// Every export that takes text, found from the export table, called with
// random BSTRs (NULs, surrogates, every separator, null, lengths far beyond
// the fixed buffers) against the checked DLL, whose undefined-behaviour
// traps and fortified copies end the program at the first fault, under the
// guard-page heap. Each call must keep the frame's promises: a known status,
// a proper BSTR or none, a Boolean of -1 or 0, the stack balanced, and no
// block left behind. Message boxes, the event log and file creation are
// detoured; the Long arguments are never a real key, window or address.
//   CSK_FUZZ_RUNS=n CSK_FUZZ_SEED=s fuzz.exe
#include <cstdlib>
#include <random>
#include <vector>

#include "Detour.h"
#include "VbDeclares.h"

namespace {

std::mt19937 g_random;

size_t Pick(size_t count) { return std::uniform_int_distribution<size_t>(0, count - 1)(g_random); }

Bstr RandomText() {
    static const std::u16string pieces[] = {u"\\", u"/", u":", u".", u"..", u"*", u"?", u"\"", u"<", u">", u"|",
                                            u" ", u"C:", u"\\\\?\\", u"\\\\srv\\sh", u"a", u"Z9", u"\u00E9",
                                            u"\u4E2D", u"\xD83D\xDE00", u"\xD800", u"\xDC00", u"~1", u"&H",
                                            u"-", u"1", u"True", std::u16string(1, u'\0')};
    if (Pick(10) == 0) return Bstr();
    const size_t count = Pick(8) == 0 ? 300 + Pick(3000) : Pick(12), kinds = sizeof pieces / sizeof pieces[0];
    std::u16string text = Pick(2) ? u"C:\\" : u"";
    // A long text is mostly one piece again and again, so that few
    // separators or stream colons cut it short before the fixed buffers.
    const std::u16string& again = pieces[Pick(kinds)];
    while (text.size() < count) text += count > 12 && Pick(16) ? again : pieces[Pick(kinds)];
    return Bstr::FromUnits(text);
}

// One call of an export with random inputs; false when a promise broke.
// The first call of each may keep what the library keeps for the life of
// the process.
bool FuzzOnce(const ExportShape& shape, bool first = false) {
    static const uint32_t kLongs[] = {0, 1, 2, 31, 32, 0xFFFFFFFF, 12345, 0x7FFFFFFF};
    std::vector<Bstr> texts;
    std::vector<uint32_t> slots;
    std::vector<std::vector<BYTE>> outs;
    texts.reserve(16), outs.reserve(16);
    const std::string codes = shape.arguments;
    for (size_t at = 0; at < codes.size(); at += 3) {
        const char type = codes[at + 1];
        if (codes[at] != 'i') {
            outs.emplace_back(16, 0);
            slots.push_back(reinterpret_cast<uint32_t>(outs.back().data()));
        } else if (type == 'S') {
            texts.push_back(RandomText());
            slots.push_back(reinterpret_cast<uint32_t>(texts.back().get()));
        } else {
            slots.push_back(type == 'V' ? -static_cast<uint32_t>(Pick(2)) : kLongs[Pick(8)]);
        }
    }
    const size_t live = GuardedHeap::Live();
    int32_t espDelta = 1;
    const uint32_t status = CallChecked(CskProc(shape.name), slots.data(), static_cast<uint32_t>(slots.size()), &espDelta);
    bool kept = espDelta == 0 && (status == 0 || status == 1 || status == 0x80070057u || std::string(shape.result) != "status");
    for (size_t at = 0, out = 0; at < codes.size(); at += 3) {
        if (codes[at] == 'i') continue;
        BYTE* answer = outs[out++].data();
        if (codes[at + 1] == 'V') kept &= *reinterpret_cast<SHORT*>(answer) == 0 || *reinterpret_cast<SHORT*>(answer) == -1;
        if (codes[at + 1] != 'S') continue;
        Bstr text;
        std::memcpy(text.out(), answer, sizeof(BSTR));
        // A proper BSTR: its length prefix whole units, its terminator in place.
        if (text.get()) kept &= reinterpret_cast<const UINT*>(text.get())[-1] % 2 == 0 && text.get()[SysStringLen(text.get())] == 0;
    }
    kept &= first || GuardedHeap::Live() == live;
    if (!kept) ADD_FAILURE() << shape.name << ": status " << std::hex << status << ", stack " << std::dec << espDelta
                             << ", blocks " << live << " -> " << GuardedHeap::Live();
    return kept;
}

}  // namespace

TEST(Fuzz, TextExportsKeepTheFramesPromises) {
    const long runs = std::strtol(getenv("CSK_FUZZ_RUNS") ? getenv("CSK_FUZZ_RUNS") : "2000", nullptr, 10);
    const unsigned seed = std::strtoul(getenv("CSK_FUZZ_SEED") ? getenv("CSK_FUZZ_SEED") : "1", nullptr, 10);
    std::vector<ExportShape> textual;
    for (const ExportShape& shape : kExportShapes)
        if (std::strstr(shape.arguments, "iS")) textual.push_back(shape);
    char folder[MAX_PATH] = {};
    GetCurrentDirectoryA(MAX_PATH, folder);
    NeverRun never;
    Detour noNewFiles("CreateFileA", +[](LPCSTR, DWORD, DWORD, LPSECURITY_ATTRIBUTES, DWORD, DWORD, HANDLE) WINAPI {
        return SetLastError(ERROR_ACCESS_DENIED), INVALID_HANDLE_VALUE; });
    GuardedHeap heap;
    for (const ExportShape& shape : textual) FuzzOnce(shape, true);
    g_random.seed(seed);
    for (long run = 0; run < runs && FuzzOnce(textual[Pick(textual.size())]); ++run) {}
    SetCurrentDirectoryA(folder);
    std::printf("fuzz: %ld calls over %zu text exports, seed %u\n", runs, textual.size(), seed);
}
