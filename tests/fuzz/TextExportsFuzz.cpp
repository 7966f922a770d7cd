// Fuzzing the text exports of path building and path parsing: random BSTRs
// with NULs, surrogates, every separator and lengths far beyond the fixed
// buffers, through the exports as a caller reaches them. Built natively
// under AddressSanitizer and UndefinedBehaviorSanitizer, which report any
// read or write out of bounds; the target itself checks the frame's
// promises (status, null versus empty answers).
//
// LLVMFuzzerTestOneInput is the usual entry, so the target also links with
// libFuzzer; without it the main below is a deterministic driver: it starts
// from the documented example paths and mutates them with a fixed seed.
//   path_fuzz [iterations] [seed]
#include "Platform.h"

#include <dlfcn.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <vector>

namespace {

void* Proc(const char* name) {
    static void* library = dlopen(CSK_LIBRARY_PATH, RTLD_NOW | RTLD_LOCAL);
    void* proc = library ? dlsym(library, name) : nullptr;
    if (!proc) {
        std::fprintf(stderr, "path_fuzz: %s is missing\n", name);
        std::abort();
    }
    return proc;
}

typedef HRESULT(WINAPI* One)(BSTR, BSTR*);
typedef HRESULT(WINAPI* OneFlag)(BSTR, VARIANT_BOOL, BSTR*);
typedef HRESULT(WINAPI* Two)(BSTR, BSTR, BSTR*);
typedef HRESULT(WINAPI* TwoFlag)(BSTR, BSTR, VARIANT_BOOL, BSTR*);
typedef HRESULT(WINAPI* Nine)(BSTR, BSTR, BSTR, BSTR, BSTR, BSTR, BSTR, BSTR, BSTR, BSTR*);

void Check(bool condition, const char* what) {
    if (!condition) {
        std::fprintf(stderr, "path_fuzz: %s\n", what);
        std::abort();
    }
}

// The input as up to nine BSTRs: pieces separated by the unit 0xFFFF; a
// piece that begins with 0xFFFE n is its second unit repeated n * 64 times
// (long texts from short inputs); the piece "0xFFFD" is a null BSTR.
std::vector<BSTR> Pieces(const uint16_t* units, size_t count) {
    std::vector<BSTR> pieces;
    size_t start = 0;
    for (size_t i = 0; i <= count && pieces.size() < 9; ++i) {
        if (i < count && units[i] != 0xFFFF) continue;
        const uint16_t* piece = units + start;
        size_t length = i - start;
        if (length == 1 && piece[0] == 0xFFFD) {
            pieces.push_back(nullptr);
        } else if (length >= 3 && piece[0] == 0xFFFE) {
            size_t repeat = static_cast<size_t>(piece[1] % 160) * 64;
            std::u16string text(repeat, static_cast<char16_t>(piece[2]));
            text.append(reinterpret_cast<const char16_t*>(piece + 3), length - 3);
            pieces.push_back(SysAllocStringLen(text.data(), static_cast<UINT>(text.size())));
        } else {
            pieces.push_back(SysAllocStringLen(reinterpret_cast<const OLECHAR*>(piece), static_cast<UINT>(length)));
        }
        start = i + 1;
    }
    while (pieces.size() < 9) pieces.push_back(nullptr);
    return pieces;
}

bool IsEmpty(BSTR text) { return !text || text[0] == 0; }

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    if (size < 1) return 0;
    static const char* const kOne[] = {"esAddBackslash", "esRemoveBackslash", "esGetFileRoot", "esGetFilePath",
                                       "esGetFileOnlyName", "esGetFileExtension"};
    static const char* const kGuarded[] = {"esGetFileRoot", "esGetFilePath", "esGetFileOnlyName",
                                           "esGetFileExtension"};
    std::vector<uint16_t> units((size - 1) / 2);
    if (!units.empty()) std::memcpy(units.data(), data + 1, units.size() * 2);
    std::vector<BSTR> in = Pieces(units.data(), units.size());
    const uint8_t choice = data[0];
    const VARIANT_BOOL flag = static_cast<VARIANT_BOOL>(choice & 0x80 ? (choice & 0x40 ? 1 : -1) : 0);
    BSTR out = SysAllocStringLen(u"stale", 5);
    HRESULT status;
    switch (choice % 8) {
        case 0:
        case 1: {
            const char* name = kOne[(choice >> 3) % 6];
            status = reinterpret_cast<One>(Proc(name))(in[0], &out);
            for (const char* guarded : kGuarded)
                if (name == guarded && IsEmpty(in[0])) Check(out && !out[0], "a guarded export left no empty BSTR");
            break;
        }
        case 2:
            status = reinterpret_cast<OneFlag>(Proc("esGetFileName"))(in[0], flag, &out);
            if (IsEmpty(in[0])) Check(out && !out[0], "esGetFileName left no empty BSTR");
            break;
        case 3:
            status = reinterpret_cast<Two>(Proc("esGetRelativeFileName"))(in[0], in[1], &out);
            break;
        case 4:
            status = reinterpret_cast<Two>(Proc("esGetAbsoluteFileName"))(in[0], in[1], &out);
            break;
        case 5:
            status = reinterpret_cast<Two>(Proc("esReplaceFileExtension"))(in[0], in[1], &out);
            break;
        case 6:
            status = reinterpret_cast<TwoFlag>(Proc("esBuildFileName"))(in[0], in[1], flag, &out);
            break;
        default:
            status = reinterpret_cast<Nine>(Proc("esBuildFileName2"))(in[0], in[1], in[2], in[3], in[4], in[5], in[6],
                                                                     in[7], in[8], &out);
            break;
    }
    Check(status == S_OK, "an export with an out-pointer did not answer 0");
    // A non-empty answer is a proper BSTR: no NUL inside, its length prefix
    // where the text ends.
    if (out) Check(static_cast<UINT>(lstrlenW(out)) == SysStringLen(out), "an answer holds a NUL");
    // With no out-pointer nothing is done, whatever the input.
    Check(reinterpret_cast<Two>(Proc("esGetAbsoluteFileName"))(in[0], in[1], nullptr) == S_FALSE,
          "a null out-pointer is not status 1");
    SysFreeString(out);
    for (BSTR piece : in) SysFreeString(piece);
    return 0;
}

#ifndef CSK_LIBFUZZER
namespace {

struct Rng {
    uint64_t state;
    uint32_t next() {
        state = state * 6364136223846793005ull + 1442695040888963407ull;
        return static_cast<uint32_t>(state >> 33);
    }
    uint32_t below(uint32_t n) { return next() % n; }
};

std::u16string Units(const char* ascii) {
    std::u16string s;
    while (*ascii) s += static_cast<char16_t>(static_cast<unsigned char>(*ascii++));
    return s;
}

// The documented example paths, bases and extensions, as the first pieces.
std::vector<std::u16string> Seeds() {
    const char* const paths[] = {
        "C:\\Dir\\File.txt", "C:\\Dir\\File.tar.gz", "C:\\Dir\\", "C:\\Dir", "C:\\", "C:", "C:File.txt",
        "\\Dir\\File.txt", "\\", "\\\\Server\\Share\\Dir\\File.txt", "\\\\Server\\Share", "Dir\\File.txt",
        "File.txt", ".profile", "File.", "C:\\Dir\\File.txt:stream", "C:\\Dir\\File.txt:stream:$DATA",
        "C:/Dir/File.txt", "Dir/File.txt", "C:\\A\\C\\f.txt", "C:\\A\\B", "C:\\A\\.\\f.txt", "..\\x\\f.txt",
        "\\f.txt", "\\\\?\\C:\\Dir\\File.txt", ":stream", "C:\\Dir\\\\", "C:\\Dir\\.", "log", "",
    };
    std::vector<std::u16string> seeds;
    for (const char* path : paths) seeds.push_back(Units(path));
    return seeds;
}

const char16_t kInteresting[] = {u'\\', u'/', u':', u'.', u'?', 0, 0xD800, 0xDC00, 0xDBFF, 0x00E9, 0x4E2D, u'a',
                                 u' ', 0x0080, 0x00FF, u'$', 0xFFFD};

std::u16string Mutate(std::u16string s, Rng& rng) {
    int steps = 1 + static_cast<int>(rng.below(6));
    for (int k = 0; k < steps; ++k) {
        size_t at = s.empty() ? 0 : rng.below(static_cast<uint32_t>(s.size() + 1));
        switch (rng.below(6)) {
            case 0:  // insert an interesting unit
                s.insert(at, 1, kInteresting[rng.below(sizeof kInteresting / sizeof kInteresting[0])]);
                break;
            case 1:  // insert any unit
                s.insert(at, 1, static_cast<char16_t>(rng.next()));
                break;
            case 2:  // delete a run
                if (!s.empty() && at < s.size()) s.erase(at, 1 + rng.below(4));
                break;
            case 3:  // duplicate a run
                if (!s.empty() && at < s.size()) s.insert(at, s.substr(at, 1 + rng.below(8)));
                break;
            case 4:  // a long run: around MAX_PATH, the 1024 buffer, or far beyond
                s.insert(at, std::u16string(rng.below(3) == 0 ? 250 + rng.below(20) : 1015 + rng.below(20),
                                            kInteresting[rng.below(12)]));
                break;
            default:  // double the whole text
                if (s.size() < 20000) s += s;
                break;
        }
    }
    return s;
}

}  // namespace

int main(int argc, char** argv) {
    long iterations = argc > 1 ? std::strtol(argv[1], nullptr, 10) : 20000;
    uint64_t seed = argc > 2 ? std::strtoull(argv[2], nullptr, 10) : 1;
    Rng rng{seed};
    std::vector<std::u16string> seeds = Seeds();
    for (long i = 0; i < iterations; ++i) {
        // One to three pieces, each a seed or a mutated seed; sometimes a
        // null BSTR.
        std::vector<uint16_t> units;
        uint8_t choice = static_cast<uint8_t>(rng.next());
        int pieces = 1 + static_cast<int>(rng.below(choice % 8 == 7 ? 9 : 3));
        for (int p = 0; p < pieces; ++p) {
            if (p) units.push_back(0xFFFF);
            if (rng.below(16) == 0) {
                units.push_back(0xFFFD);
                continue;
            }
            std::u16string piece = seeds[rng.below(static_cast<uint32_t>(seeds.size()))];
            if (rng.below(4) != 0) piece = Mutate(piece, rng);
            for (char16_t unit : piece) units.push_back(unit >= 0xFFFD ? u'x' : static_cast<uint16_t>(unit));
        }
        std::vector<uint8_t> input(1 + units.size() * 2);
        input[0] = choice;
        if (!units.empty()) std::memcpy(input.data() + 1, units.data(), units.size() * 2);
        LLVMFuzzerTestOneInput(input.data(), input.size());
    }
    std::printf("path_fuzz: %ld inputs, seed %llu, no finding\n", iterations, static_cast<unsigned long long>(seed));
    return 0;
}
#endif
