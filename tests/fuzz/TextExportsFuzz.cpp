// Fuzzing the text exports of path building, parsing and canonical forms,
// and the file system tests, on winsim's file system: random BSTRs
// with NULs, surrogates, every separator, null BSTRs and lengths far beyond
// the fixed buffers, through the exports as a caller reaches them. Built
// natively under AddressSanitizer and UndefinedBehaviorSanitizer, which report
// any read or write out of bounds; the target itself checks the frame's
// promises (status, null versus empty answers, a proper BSTR).
//
// LLVMFuzzerTestOneInput is the usual entry, so the target also links with
// libFuzzer; without it the main below is a deterministic driver: it starts
// from typical paths and mutates them with a fixed seed.
//   path_fuzz [iterations] [seed]
#include "Platform.h"

#include <dlfcn.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <random>
#include <string>

namespace {

void Check(bool condition, const char* what) {
    if (!condition) std::fprintf(stderr, "path_fuzz: %s\n", what), std::abort();
}

// An export by its plain name, called with the argument types it is given.
template <class... Args>
HRESULT Call(const char* name, Args... args) {
    static void* library = dlopen(CSK_LIBRARY_PATH, RTLD_NOW | RTLD_LOCAL);
    void* proc = library ? dlsym(library, name) : nullptr;
    if (!proc) std::fprintf(stderr, "path_fuzz: %s is missing\n", name), std::abort();
    return reinterpret_cast<HRESULT(WINAPI*)(Args...)>(proc)(args...);
}

// The input as nine BSTRs: pieces separated by the unit 0xFFFF, those
// missing null; the piece 0xFFFD alone is a null BSTR, and one that begins
// 0xFFFE n u starts with u repeated n % 160 * 64 times (long texts from short
// inputs).
void Pieces(const std::u16string& units, BSTR (&pieces)[9]) {
    for (size_t start = 0, i = 0, n = 0; i <= units.size() && n < 9; ++i) {
        if (i < units.size() && units[i] != 0xFFFF) continue;
        std::u16string text = units.substr(start, i - start);
        start = i + 1;
        if (text.size() >= 3 && text[0] == 0xFFFE) text = std::u16string(text[1] % 160 * 64, text[2]) + text.substr(3);
        pieces[n++] = text == u"\xFFFD" ? nullptr : SysAllocStringLen(text.data(), UINT(text.size()));
    }
}

// Typical paths, bases and extensions: what the driver below starts from
// (this and Mutate are unused under libFuzzer).
const char* const kSeeds[] = {
    "C:\\Dir\\File.txt", "C:\\Dir\\File.tar.gz", "C:\\Dir\\", "C:\\Dir", "C:\\", "C:", "C:File.txt", "\\Dir\\File.txt",
    "\\", "\\\\Server\\Share\\Dir\\File.txt", "\\\\Server\\Share", "Dir\\File.txt", "File.txt", ".profile", "File.",
    "C:\\Dir\\File.txt:stream", "C:\\Dir\\File.txt:stream:$DATA", "C:/Dir/File.txt", "Dir/File.txt", "C:\\A\\C\\f.txt",
    "C:\\A\\B", "C:\\A\\.\\f.txt", "..\\x\\f.txt", "\\f.txt", "\\\\?\\C:\\Dir\\File.txt", ":stream", "C:\\Dir\\\\",
    "C:\\Dir\\.", "log", ""};

// Units the parsers treat apart (the first twelve also fill long runs), and
// a few beyond ANSI, unpaired surrogates among them. No edit makes the units
// 0xFFFD to 0xFFFF, which the input format reserves.
const char16_t kInteresting[] = {u'\\', u'/', u':', u'.', u'?', 0, 0xD800, 0xDC00, 0xDBFF, 0x00E9, 0x4E2D, u'a',
                                 u' ',  0x0080, 0x00FF, u'$', 0xFFFC};

// One to six edits: insert a unit (one of those or any), delete or duplicate
// a short run, insert a run around MAX_PATH or the 1024 buffer, or double the
// whole text.
std::u16string Mutate(std::u16string s, std::mt19937_64& rng) {
    for (size_t k = 0, steps = 1 + rng() % 6; k < steps; ++k) {
        size_t at = rng() % (s.size() + 1);
        switch (rng() % 6) {
            case 0: s.insert(at, 1, kInteresting[rng() % (sizeof kInteresting / 2)]); break;
            case 1: s.insert(at, 1, char16_t(rng() % 0xFFFD)); break;
            case 2: s.erase(at, 1 + rng() % 4); break;
            case 3: s.insert(at, s.substr(at, 1 + rng() % 8)); break;
            case 4: s.insert(at, rng() % 3 ? 1015 + rng() % 20 : 250 + rng() % 20, kInteresting[rng() % 12]); break;
            default: if (s.size() < 20000) s += s;
        }
    }
    return s;
}

}  // namespace

// The first byte picks the export and its flag (0, -1, or 1, which must count
// as true too); the rest are the units of the texts.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    static const char* const kOne[] = {"esAddBackslash", "esRemoveBackslash", "esGetFileRoot",
                                       "esGetFilePath", "esGetFileOnlyName", "esGetFileExtension"};
    static const char* const kTwo[] = {"esGetRelativeFileName", "esGetAbsoluteFileName", "esReplaceFileExtension"};
    if (size < 1) return 0;
    std::u16string units((size - 1) / 2, u'\0');
    std::memcpy(&units[0], data + 1, units.size() * 2);
    BSTR in[9] = {};
    Pieces(units, in);
    static const char* const kFlagged[] = {"esGetFullFileName", "esGetLongFileName", "esGetShortFileName"};
    const uint8_t choice = data[0], kind = choice % 10, one = (choice >> 3) % 6;
    const VARIANT_BOOL flag = static_cast<VARIANT_BOOL>(choice & 0x80 ? (choice & 0x40 ? 1 : -1) : 0);
    BSTR out = SysAllocStringLen(u"stale", 5);
    HRESULT status =
        kind < 2   ? Call(kOne[one], in[0], &out)
        : kind < 3 ? Call("esGetFileName", in[0], flag, &out)
        : kind < 6 ? Call(kTwo[kind - 3], in[0], in[1], &out)
        : kind < 7 ? Call("esBuildFileName", in[0], in[1], flag, &out)
        : kind < 8 ? Call("esBuildFileName2", in[0], in[1], in[2], in[3], in[4], in[5], in[6], in[7], in[8], &out)
        : kind < 9 ? Call(kFlagged[one % 3], in[0], flag, &out)
                   : Call("esGetVolumeName", in[0], &out);
    if (kind == 9) {
        VARIANT_BOOL exists = 7;
        double size = -7;
        Check(Call("esIsUnixFileOrDirectoryExist", in[0], &exists) == S_OK && (exists == 0 || exists == -1),
              "a test answered other than -1 or 0");
        Check(Call("esGetFileSizeEx", in[0], &size) == S_OK && size >= 0, "a size below 0");
    }
    Check(status == S_OK, "an export with an out-pointer did not answer 0");
    // The guarded exports (esGetFileName and the four of kOne from
    // esGetFileRoot on) answer a null or empty input with an empty BSTR.
    if ((kind == 2 || (kind < 2 && one >= 2)) && (!in[0] || !in[0][0]))
        Check(out && !out[0], "a guarded export left no empty BSTR");
    // A non-empty answer is a proper BSTR: no NUL inside, its length prefix
    // where the text ends.
    if (out) Check(UINT(lstrlenW(out)) == SysStringLen(out), "an answer holds a NUL");
    // With no out-pointer nothing is done, whatever the input.
    Check(Call("esGetAbsoluteFileName", in[0], in[1], static_cast<BSTR*>(nullptr)) == S_FALSE, "a null out-pointer");
    for (BSTR text : in) SysFreeString(text);
    SysFreeString(out);
    return 0;
}

#ifndef CSK_LIBFUZZER  // libFuzzer brings its own main
int main(int argc, char** argv) {
    long iterations = argc > 1 ? std::strtol(argv[1], nullptr, 10) : 20000;
    unsigned long long seed = argc > 2 ? std::strtoull(argv[2], nullptr, 10) : 1;
    std::mt19937_64 rng(seed);
    for (long i = 0; i < iterations; ++i) {
        // The choice byte, then one to three pieces (up to nine for
        // esBuildFileName2): a seed, mutated three times in four, or one time
        // in sixteen a null BSTR.
        const char choice = static_cast<char>(rng() % 256);
        std::u16string units;
        for (size_t p = 0, pieces = 1 + rng() % (uint8_t(choice) % 8 == 7 ? 9 : 3); p < pieces; ++p) {
            std::string ascii = kSeeds[rng() % (sizeof kSeeds / sizeof *kSeeds)];
            std::u16string piece(ascii.begin(), ascii.end());
            units += (p ? u"\xFFFF" : u"") + (rng() % 16 == 0 ? u"\xFFFD" : rng() % 4 ? Mutate(piece, rng) : piece);
        }
        std::string input = choice + std::string(reinterpret_cast<const char*>(units.data()), units.size() * 2);
        LLVMFuzzerTestOneInput(reinterpret_cast<const uint8_t*>(input.data()), input.size());
    }
    std::printf("path_fuzz: %ld inputs, seed %llu, no finding\n", iterations, seed);
    return 0;
}
#endif
