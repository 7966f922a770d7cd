// A generated corpus of paths, and what the platform and the library answer
// for each. Built into both builds, so that the stand-in's shell functions
// can be held against the real ones under Wine:
//
//   path_corpus shell     the four shell path functions, one line per path
//   path_corpus exports   the eight path-parsing exports, one line per path
//   path_corpus compare NATIVE WINE
//                         the two outputs of one mode side by side; exits 1
//                         on a difference that is not a known one
//
// The corpus is deterministic: the same list in every build and every run.
#include "Platform.h"

#include <cstdio>
#include <cstring>
#include <fstream>
#include <string>
#include <vector>

#ifdef _WIN32
#include <fcntl.h>
#include <io.h>
#else
#include <dlfcn.h>
#endif

namespace {

// ---- The corpus ------------------------------------------------------------

const char* const kHeads[] = {
    "",
    "C:",
    "C:\\",
    "c:/",
    "Z:\\",
    "C:\\\\",
    "\\",
    "/",
    "\\\\",
    "//",
    "\\\\Server",
    "\\\\Server\\",
    "\\\\Server\\Share",
    "\\\\Server\\Share\\",
    "//Server/Share/",
    "\\/Server/Share\\",
    "\\\\?\\",
    "\\\\?\\C:\\",
    "\\\\?\\UNC\\Server\\Share\\",
    "\\\\.\\",
    "\\\\.\\C:\\",
    ":",
    "C:File",
    "AB:\\",
    "1:\\",
    ".\\",
    "..\\",
    "C:.",
    "\\\\Server\\\\",
};

const char* const kSegments[] = {
    "Dir", "File.txt", "File.tar.gz", ".", "..", "", ".profile", "File.", "a b", "x:y", "...", "Dir.d", "$DATA",
};

const char* const kSeparators[] = {"\\", "/", "\\\\", ":", "\\.\\", "/./"};

const char* const kTails[] = {
    "", "\\", "/", ":", ":stream", ":stream:$DATA", "\\.", "\\..", ".", "\\\\", "/:",
};

template <class T, size_t N>
constexpr size_t Count(T (&)[N]) {
    return N;
}

// A small generator with a fixed seed: the same sequence everywhere.
struct Lcg {
    uint32_t state;
    uint32_t next() {
        state = state * 1664525u + 1013904223u;
        return state >> 8;
    }
    template <class T, size_t N>
    const char* pick(T (&table)[N]) {
        return table[next() % N];
    }
};

std::vector<std::string> MakeCorpus() {
    std::vector<std::string> corpus;
    // Every head with every segment, separator and tail.
    for (const char* head : kHeads)
        for (const char* segment : kSegments)
            for (size_t s = 0; s < 3; ++s)
                for (const char* tail : kTails) {
                    std::string path = head;
                    path += segment;
                    path += kSeparators[s];
                    path += "File.txt";
                    path += tail;
                    corpus.push_back(path);
                }
    for (const char* head : kHeads)
        for (const char* tail : kTails) corpus.push_back(std::string(head) + tail);
    // Random shapes: up to four pieces behind a head.
    Lcg rng{20240611u};
    for (int i = 0; i < 3000; ++i) {
        std::string path = rng.pick(kHeads);
        int pieces = static_cast<int>(rng.next() % 5);
        for (int k = 0; k < pieces; ++k) {
            if (k > 0) path += rng.pick(kSeparators);
            path += rng.pick(kSegments);
        }
        path += rng.pick(kTails);
        corpus.push_back(path);
    }
    // Lengths around MAX_PATH, around the fixed buffer of 1024, and beyond.
    const size_t lengths[] = {255, 256, 257, 258, 259, 260, 261, 262, 263, 270, 300,  512,  1000,
                              1020, 1022, 1023, 1024, 1025, 1026, 1030, 1100, 2000, 5000};
    const char* longHeads[] = {"C:\\", "\\\\Server\\Share\\", "", "\\", "\\\\?\\C:\\"};
    const char* longTails[] = {"", "\\", ":stream", "\\File.txt", ".ext", "\\."};
    for (size_t length : lengths)
        for (const char* head : longHeads)
            for (const char* tail : longTails) {
                std::string path = head;
                while (path.size() + std::strlen(tail) < length) path += "abcdefgh\\";
                path.resize(length - std::strlen(tail));
                if (!path.empty() && path.back() == '\\') path.back() = 'z';
                path += tail;
                corpus.push_back(path);
            }
    return corpus;
}

// The base that goes with path i: one of a few folders, so that relative
// paths are often found, and every third time another path of the corpus.
const char* const kBases[] = {
    "C:\\A\\B", "C:\\A\\", "C:\\", "c:\\a", "\\\\Server\\Share\\Dir", "\\", "Dir", "", "C:", "D:\\x", "C:/A/B",
    "C:\\Dir",
};

std::string BaseFor(const std::vector<std::string>& corpus, size_t i) {
    if (i % 3 == 2) return corpus[(i * 7919u + 13u) % corpus.size()];
    return kBases[i % Count(kBases)];
}

// ---- Output ----------------------------------------------------------------

std::string Escape(const char* text) {
    std::string out;
    for (const unsigned char* p = reinterpret_cast<const unsigned char*>(text); *p; ++p) {
        if (*p >= 0x20 && *p < 0x7F && *p != '%') {
            out += static_cast<char>(*p);
        } else {
            char hex[8];
            std::snprintf(hex, sizeof hex, "%%%02X", *p);
            out += hex;
        }
    }
    return out;
}

void Line(const std::vector<std::string>& fields) {
    std::string line;
    for (size_t i = 0; i < fields.size(); ++i) {
        if (i) line += '\t';
        line += fields[i];
    }
    line += '\n';
    std::fwrite(line.data(), 1, line.size(), stdout);
}

// A zero-filled text buffer of 1025 bytes holding Left(text, 1024), as the
// library gives the shell functions.
struct Buffer {
    char bytes[1025];
    explicit Buffer(const std::string& text = std::string()) {
        std::memset(bytes, 0, sizeof bytes);
        std::memcpy(bytes, text.data(), text.size() < 1024 ? text.size() : 1024);
    }
};

int RunShell(const std::vector<std::string>& corpus) {
    for (size_t i = 0; i < corpus.size(); ++i) {
        const std::string& path = corpus[i];
        std::string base = BaseFor(corpus, i);
        std::vector<std::string> fields{std::to_string(i), Escape(path.c_str()), Escape(base.c_str())};

        Buffer root(path);
        BOOL stripped = PathStripToRootA(root.bytes);
        fields.push_back("root=" + std::to_string(stripped != 0) + ":" + Escape(root.bytes));

        Buffer name(path);
        const char* at = PathFindFileNameA(name.bytes);
        fields.push_back("name=" + (at ? std::to_string(at - name.bytes) : std::string("null")));

        // The relative path: from the base as a folder to the path as a file.
        if (path.size() < 1024 && base.size() < 1024) {
            Buffer relative;
            BOOL found = PathRelativePathToA(relative.bytes, base.c_str(), FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_NORMAL,
                                             path.c_str(), FILE_ATTRIBUTE_NORMAL);
            fields.push_back("rel=" + std::to_string(found != 0) + ":" + (found ? Escape(relative.bytes) : ""));
        } else {
            fields.push_back("rel=skipped");
        }

        // The path joined to the base; an empty one goes as null.
        if (path.size() < 1024 && base.size() < 1024) {
            Buffer combined;
            char* joined = PathCombineA(combined.bytes, base.empty() ? nullptr : base.c_str(),
                                        path.empty() ? nullptr : path.c_str());
            fields.push_back("comb=" + std::string(joined ? "1:" + Escape(joined) : "0:"));
        } else {
            fields.push_back("comb=skipped");
        }
        Line(fields);
    }
    return 0;
}

// ---- The exports ------------------------------------------------------------

void* Proc(const char* name) {
#ifdef _WIN32
    static HMODULE library = LoadLibraryA("CorvaneSupportKit0100.dll");
    return library ? reinterpret_cast<void*>(GetProcAddress(library, name)) : nullptr;
#else
    static void* library = dlopen(CSK_LIBRARY_PATH, RTLD_NOW | RTLD_LOCAL);
    return library ? dlsym(library, name) : nullptr;
#endif
}

typedef HRESULT(WINAPI* OneText)(BSTR, BSTR*);
typedef HRESULT(WINAPI* TextFlag)(BSTR, VARIANT_BOOL, BSTR*);
typedef HRESULT(WINAPI* TwoTexts)(BSTR, BSTR, BSTR*);

BSTR Widen(const std::string& text) {
    BSTR made = SysAllocStringLen(nullptr, static_cast<UINT>(text.size()));
    for (size_t i = 0; i < text.size(); ++i) made[i] = static_cast<unsigned char>(text[i]);
    return made;
}

// The caller's variable as text: <null>, or its units (all below 0x100 in
// this corpus) as bytes.
std::string Show(HRESULT status, BSTR value) {
    std::string text = status != S_OK ? "status" + std::to_string(status) + ":" : "";
    if (!value) return text + "<null>";
    std::string bytes;
    for (UINT i = 0; i < SysStringLen(value); ++i) bytes += static_cast<char>(value[i] < 0x100 ? value[i] : '?');
    return text + Escape(bytes.c_str());
}

int RunExports(const std::vector<std::string>& corpus) {
    auto root = reinterpret_cast<OneText>(Proc("esGetFileRoot"));
    auto folder = reinterpret_cast<OneText>(Proc("esGetFilePath"));
    auto name = reinterpret_cast<TextFlag>(Proc("esGetFileName"));
    auto onlyName = reinterpret_cast<OneText>(Proc("esGetFileOnlyName"));
    auto extension = reinterpret_cast<OneText>(Proc("esGetFileExtension"));
    auto relative = reinterpret_cast<TwoTexts>(Proc("esGetRelativeFileName"));
    auto absolute = reinterpret_cast<TwoTexts>(Proc("esGetAbsoluteFileName"));
    auto replace = reinterpret_cast<TwoTexts>(Proc("esReplaceFileExtension"));
    if (!root || !folder || !name || !onlyName || !extension || !relative || !absolute || !replace) {
        std::fprintf(stderr, "path_corpus: the library or one of its exports is missing\n");
        return 2;
    }
    BSTR log = Widen("log");
    for (size_t i = 0; i < corpus.size(); ++i) {
        BSTR path = Widen(corpus[i]);
        std::string baseText = BaseFor(corpus, i);
        BSTR base = Widen(baseText);
        std::vector<std::string> fields{std::to_string(i), Escape(corpus[i].c_str()), Escape(baseText.c_str())};
        auto one = [&](const char* label, HRESULT status, BSTR& value) {
            fields.push_back(std::string(label) + "=" + Show(status, value));
            SysFreeString(value);
            value = nullptr;
        };
        BSTR out = nullptr;
        one("root", root(path, &out), out);
        one("path", folder(path, &out), out);
        one("name", name(path, VARIANT_FALSE, &out), out);
        one("bare", name(path, VARIANT_TRUE, &out), out);
        one("only", onlyName(path, &out), out);
        one("ext", extension(path, &out), out);
        one("rel", relative(path, base, &out), out);
        one("abs", absolute(path, base, &out), out);
        one("newext", replace(path, log, &out), out);
        one("noext", replace(path, nullptr, &out), out);
        Line(fields);
        SysFreeString(path);
        SysFreeString(base);
    }
    SysFreeString(log);
    return 0;
}

// ---- Comparison -------------------------------------------------------------

std::vector<std::string> Split(const std::string& line) {
    std::vector<std::string> fields;
    size_t start = 0;
    for (size_t tab; (tab = line.find('\t', start)) != std::string::npos; start = tab + 1)
        fields.push_back(line.substr(start, tab - start));
    fields.push_back(line.substr(start));
    return fields;
}

// Differences between the stand-in and Wine that are known and do not
// reach any result of the library. Each names the field and why.
struct KnownDifference {
    const char* field;  // the label before "=" of the field
    bool (*applies)(const std::vector<std::string>& fields, const std::string& native, const std::string& wine);
    const char* reason;
};

bool EndsWith(const std::string& text, const char* tail) {
    size_t n = std::strlen(tail);
    return text.size() >= n && text.compare(text.size() - n, n, tail) == 0;
}

const KnownDifference kKnown[] = {
    // PathCombineA canonicalises a joined path whose last piece is ".." and
    // that has no backslash to go back to (as "C:x/y\.."): it starts over
    // with "\" and steps over the terminator, and then copies whatever its
    // stack buffer held from earlier calls. The stand-in stops at the
    // terminator and answers "\".
    {"comb",
     [](const std::vector<std::string>& fields, const std::string& native, const std::string& wine) {
         return native == "comb=1:\\" && wine.compare(0, 8, "comb=1:\\") == 0 && EndsWith(fields[1], "..");
     },
     "Wine reads past the end of its buffer"},
    // The same through esGetAbsoluteFileName, which hands that answer on.
    {"abs",
     [](const std::vector<std::string>& fields, const std::string& native, const std::string& wine) {
         return native == "abs=\\" && wine.compare(0, 5, "abs=\\") == 0 && EndsWith(fields[1], "..");
     },
     "Wine reads past the end of its buffer"},
    // PathRelativePathToA converts "to" into a buffer of MAX_PATH units; a
    // longer one fills it with no terminator, and the relative path then
    // runs on into whatever lies behind that buffer. The stand-in finds no
    // relative path for a "to" of MAX_PATH characters or more, so that
    // esGetRelativeFileName answers with the file itself.
    {"rel",
     [](const std::vector<std::string>& fields, const std::string& native, const std::string&) {
         return fields[1].size() >= MAX_PATH && (native == "rel=0:" || native == "rel=" + fields[1]);
     },
     "Wine reads past the end of an unterminated buffer"},
};

const KnownDifference* Explain(const std::vector<std::string>& fields, const std::string& native,
                               const std::string& wine) {
    std::string label = native.substr(0, native.find('='));
    for (const KnownDifference& known : kKnown)
        if (known.field && label == known.field && known.applies(fields, native, wine)) return &known;
    return nullptr;
}

int Compare(const char* nativeFile, const char* wineFile) {
    std::ifstream native(nativeFile, std::ios::binary), wine(wineFile, std::ios::binary);
    if (!native || !wine) {
        std::fprintf(stderr, "path_corpus: cannot read %s or %s\n", nativeFile, wineFile);
        return 2;
    }
    std::string a, b;
    size_t lines = 0, unexplained = 0, explained = 0;
    while (true) {
        bool moreA = static_cast<bool>(std::getline(native, a)), moreB = static_cast<bool>(std::getline(wine, b));
        if (!moreA && !moreB) break;
        if (!b.empty() && b.back() == '\r') b.pop_back();
        ++lines;
        if (moreA != moreB) {
            std::printf("line %zu: one output ends early\n", lines);
            ++unexplained;
            break;
        }
        std::vector<std::string> fa = Split(a), fb = Split(b);
        if (fa.size() != fb.size()) {
            std::printf("line %zu: %zu fields against %zu\n", lines, fa.size(), fb.size());
            ++unexplained;
            continue;
        }
        for (size_t k = 0; k < fa.size(); ++k) {
            if (fa[k] == fb[k]) continue;
            if (Explain(fa, fa[k], fb[k])) {
                ++explained;
                continue;
            }
            if (++unexplained <= 40)
                std::printf("path %s  base %s\n  native %s\n  wine   %s\n", fa[1].substr(0, 120).c_str(),
                            fa.size() > 2 ? fa[2].substr(0, 120).c_str() : "", fa[k].substr(0, 300).c_str(),
                            fb[k].substr(0, 300).c_str());
        }
    }
    std::printf("%zu paths compared: %zu unexplained differences, %zu known ones\n", lines, unexplained, explained);
    return unexplained == 0 && lines > 10000 ? 0 : 1;
}

}  // namespace

int main(int argc, char** argv) {
#ifdef _WIN32
    _setmode(_fileno(stdout), _O_BINARY);
#endif
    std::string mode = argc > 1 ? argv[1] : "";
    if (mode == "compare" && argc == 4) return Compare(argv[2], argv[3]);
    std::vector<std::string> corpus = MakeCorpus();
    if (mode == "shell") return RunShell(corpus);
    if (mode == "exports") return RunExports(corpus);
    if (mode == "count") return std::printf("%zu\n", corpus.size()) < 0;
    std::fprintf(stderr, "usage: path_corpus shell | exports | compare NATIVE WINE\n");
    return 2;
}
