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
#include <cstdlib>
#include <fstream>
#include <random>
#include <sstream>
#include <string>
#include <vector>

#ifdef _WIN32  // stdout in binary mode, so that both outputs end their lines alike
#include <fcntl.h>
#include <io.h>
#else
#include <dlfcn.h>
#endif

namespace {

using Strings = std::vector<std::string>;

// ---- The corpus ------------------------------------------------------------

// Roots of every kind the shell tells apart (drive, UNC, \\?\ and \\.\, both
// slashes, doubled separators, malformed ones), then what goes behind them.
const char* const kHeads[] = {
    "", "C:", "C:\\", "c:/", "Z:\\", "C:\\\\", "\\", "/", "\\\\", "//", "\\\\Server", "\\\\Server\\",
    "\\\\Server\\Share", "\\\\Server\\Share\\", "//Server/Share/", "\\/Server/Share\\", "\\\\Server\\\\", "\\\\?\\",
    "\\\\?\\C:\\", "\\\\?\\UNC\\Server\\Share\\", "\\\\.\\", "\\\\.\\C:\\", ":", "C:File", "AB:\\", "1:\\", ".\\",
    "..\\", "C:."};
const char* const kSegments[] = {"Dir", "File.txt", "File.tar.gz", ".", "..", "", ".profile", "File.", "a b", "x:y",
                                 "...", "Dir.d", "$DATA"};
const char* const kSeparators[] = {"\\", "/", "\\\\", ":", "\\.\\", "/./"};
const char* const kTails[] = {"", "\\", "/", ":", ":stream", ":stream:$DATA", "\\.", "\\..", ".", "\\\\", "/:"};

Strings MakeCorpus() {
    Strings corpus;
    // Every head with every segment, the first three separators and every
    // tail; and every head with every tail alone.
    for (const char* head : kHeads) {
        for (const char* segment : kSegments)
            for (size_t s = 0; s < 3; ++s)
                for (const char* tail : kTails)
                    corpus.push_back(std::string(head) + segment + kSeparators[s] + "File.txt" + tail);
        for (const char* tail : kTails) corpus.push_back(std::string(head) + tail);
    }
    // Random shapes: a head, up to four pieces with any separator, a tail.
    // (The generator's sequence is fixed by the standard: the same everywhere.)
    std::minstd_rand rng(20240611u);
    auto pick = [&rng](const auto& table) { return table[rng() % (sizeof table / sizeof *table)]; };
    for (int i = 0; i < 3000; ++i) {
        std::string path = pick(kHeads);
        for (unsigned k = 0, pieces = rng() % 5; k < pieces; ++k)  // (C++17 picks left to right here)
            path.append(k ? pick(kSeparators) : "").append(pick(kSegments));
        corpus.push_back(path + pick(kTails));
    }
    // Lengths just around MAX_PATH and the fixed buffer of 1024, and beyond.
    for (size_t around : {MAX_PATH, 1024, 5000})
        for (size_t length = around - 5; length <= around + 6; ++length)
            for (const char* head : {"C:\\", "\\\\Server\\Share\\", "", "\\", "\\\\?\\C:\\"})
                for (std::string tail : {"", "\\", ":stream", "\\File.txt", ".ext", "\\."}) {
                    std::string path = head;
                    while (path.size() + tail.size() < length) path += "abcdefgh\\";
                    path.resize(length - tail.size());
                    if (path.back() == '\\') path.back() = 'z';
                    corpus.push_back(path + tail);
                }
    return corpus;
}

// The base that goes with path i: one of a few folders, so that relative
// paths are often found, and every third time another path of the corpus.
const char* const kBases[] = {"C:\\A\\B", "C:\\A\\", "C:\\", "c:\\a", "\\\\Server\\Share\\Dir", "\\", "Dir", "", "C:",
                              "D:\\x", "C:/A/B", "C:\\Dir"};

std::string BaseFor(const Strings& corpus, size_t i) {
    return i % 3 == 2 ? corpus[(i * 7919u + 13u) % corpus.size()] : kBases[i % (sizeof kBases / sizeof *kBases)];
}

// Bytes outside printable ASCII, and '%', as %XX: one line per path.
std::string Escape(const std::string& text) {
    std::string out;
    const char* const hex = "0123456789ABCDEF";
    for (unsigned char c : text)
        out += c >= 0x20 && c < 0x7F && c != '%' ? std::string(1, static_cast<char>(c))
                                                 : std::string{'%', hex[c >> 4], hex[c & 15]};
    return out;
}

// ---- What the shell and the exports answer ----------------------------------

// The shell functions as the library calls them: on a zero-filled buffer of
// 1025 bytes holding Left(text, 1024). The relative path goes from the base
// as a folder to the path as a file; PathCombineA gets an empty text as null.
std::string ShellAnswers(const std::string& path, const std::string& base) {
    char root[1025] = {}, name[1025] = {}, relative[1025] = {}, combined[1025] = {};
    path.copy(root, 1024), path.copy(name, 1024);
    BOOL stripped = PathStripToRootA(root);
    const char* at = PathFindFileNameA(name);
    std::string line = "\troot=" + std::to_string(stripped != 0) + ":" + Escape(root) +
                       "\tname=" + (at ? std::to_string(at - name) : std::string("null"));
    if (path.size() >= 1024 || base.size() >= 1024) return line + "\trel=skipped\tcomb=skipped";
    BOOL found = PathRelativePathToA(relative, base.c_str(), FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_NORMAL,
                                     path.c_str(), FILE_ATTRIBUTE_NORMAL);
    line += "\trel=" + std::to_string(found != 0) + ":" + (found ? Escape(relative) : "");
    const char* joined =
        PathCombineA(combined, base.empty() ? nullptr : base.c_str(), path.empty() ? nullptr : path.c_str());
    return line + "\tcomb=" + (joined ? "1:" + Escape(joined) : "0:");
}

// An export of the library by its plain name, called with the argument
// types it is given.
template <class... Args>
HRESULT Call(const char* name, Args... args) {
#ifdef _WIN32  // the product itself; natively the shared object of this build
    static HMODULE library = LoadLibraryA("CorvaneSupportKit0100.dll");
    void* proc = library ? reinterpret_cast<void*>(GetProcAddress(library, name)) : nullptr;
#else
    static void* library = dlopen(CSK_LIBRARY_PATH, RTLD_NOW | RTLD_LOCAL);
    void* proc = library ? dlsym(library, name) : nullptr;
#endif
    if (!proc) std::fprintf(stderr, "path_corpus: the library or its %s is missing\n", name), std::exit(2);
    return reinterpret_cast<HRESULT(WINAPI*)(Args...)>(proc)(args...);
}

// The corpus is ASCII: each byte is its own unit.
BSTR Widen(const std::string& text) {
    return SysAllocStringLen(std::basic_string<OLECHAR>(text.begin(), text.end()).c_str(), UINT(text.size()));
}

// The eight exports, esGetFileName with and without the extension,
// esReplaceFileExtension with a new one and with none. Each field is the
// status unless 0, then <null> or the answer's units as bytes (the answers
// of an ASCII corpus are ASCII).
std::string Exports(const std::string& pathText, const std::string& baseText) {
    BSTR path = Widen(pathText), base = Widen(baseText), log = Widen("log"), out = nullptr;
    std::string line;
    auto show = [&](const char* label, const char* name, auto... more) {
        HRESULT status = Call(name, path, more..., &out);
        line += std::string("\t") + label + "=" + (status != S_OK ? "status" + std::to_string(status) + ":" : "");
        line += out ? Escape(std::string(out, out + SysStringLen(out))) : "<null>";
        SysFreeString(out);
        out = nullptr;
    };
    show("root", "esGetFileRoot"); show("path", "esGetFilePath");
    show("name", "esGetFileName", VARIANT_BOOL(VARIANT_FALSE)); show("bare", "esGetFileName", VARIANT_BOOL(-1));
    show("only", "esGetFileOnlyName"); show("ext", "esGetFileExtension");
    show("rel", "esGetRelativeFileName", base); show("abs", "esGetAbsoluteFileName", base);
    show("newext", "esReplaceFileExtension", log); show("noext", "esReplaceFileExtension", BSTR());
    for (BSTR text : {path, base, log}) SysFreeString(text);
    return line;
}

// ---- Comparison -------------------------------------------------------------

// Differences between the stand-in and Wine that are known and reach no
// result of the library; each is Wine reading memory it never wrote (past the
// end of a buffer, or a buffer it did not clear), where no stand-in can know
// what it would find. Each rule gets the path and the base (escaped), and the
// field as the stand-in and as Wine answer it.
using Text = const std::string&;
bool Ends(Text text, Text tail) { return text.size() >= tail.size() && text.rfind(tail) == text.size() - tail.size(); }
typedef bool (*Rule)(Text path, Text base, Text native, Text wine);
const Rule kKnown[] = {
    // PathCombineA canonicalises a joined path whose last piece is ".." and
    // that has no backslash to go back to (as "C:x/y\.."): it starts over
    // with "\", steps over the terminator and copies whatever its stack
    // buffer held from earlier calls. The stand-in stops at the terminator
    // and answers "\"; esGetAbsoluteFileName hands that answer on.
    [](Text path, Text, Text native, Text wine) {
        return (native == "comb=1:\\" || native == "abs=\\") && wine.compare(0, native.size(), native) == 0 &&
               Ends(path, "..");
    },
    // PathRelativePathToA converts "to" into a buffer of MAX_PATH units; a
    // longer one fills it with no terminator, and the relative path runs on
    // into whatever lies behind. The stand-in finds no relative path for a
    // "to" of MAX_PATH characters or more, so that esGetRelativeFileName
    // answers with the file itself.
    [](Text path, Text, Text native, Text) {
        return (native == "rel=0:" || native == "rel=" + path) && path.size() >= MAX_PATH;
    },
    // PathRelativePathToA from a "from" that the whole of "to" begins with
    // ("C:" to "C:x", "\\" to "\\x", ".." to "..\x") answers ".x" or ".\x"
    // in a fresh process, as the stand-in does, but after other calls puts
    // what an earlier call left in its buffer in place of the "." ("..\..x"):
    // pieces of dots and backslashes, where the right answer has no "..".
    [](Text path, Text base, Text native, Text wine) {
        if (native.rfind("rel=", 0) != 0) return false;
        size_t cut = native.rfind("rel=1:", 0) == 0 ? 6 : 4;  // the shell's field, or the export's
        std::string tail = native.substr(cut + (native.compare(cut, 1, ".") == 0 && native.compare(cut, 2, "..")));
        return wine.compare(0, cut, native, 0, cut) == 0 && !tail.empty() &&
               Ends(wine, tail) && wine.find_first_not_of(".\\", cut) >= wine.size() - tail.size() &&
               path.rfind(base.substr(0, base.find_last_not_of('\\') + 1), 0) == 0;
    },
};

// Each line of one output as its fields, without the CR Wine may add.
std::vector<Strings> Read(const char* file) {
    std::ifstream in(file, std::ios::binary);
    std::vector<Strings> lines;
    for (std::string line, field; std::getline(in, line);) {
        std::istringstream fields(line.substr(0, line.find_last_not_of('\r') + 1));
        for (lines.emplace_back(); std::getline(fields, field, '\t');) lines.back().push_back(field);
    }
    return lines;
}

int Compare(const char* nativeFile, const char* wineFile) {
    std::vector<Strings> native = Read(nativeFile), wine = Read(wineFile);
    size_t unexplained = native.size() != wine.size(), explained = 0;
    for (size_t i = 0; i < native.size() && i < wine.size(); ++i) {
        Strings &a = native[i], &b = wine[i];
        a.resize(a.size() + b.size() + 3), b.resize(a.size());  // padded alike: a missing field is a difference
        for (size_t k = 0; k < a.size(); ++k) {
            if (a[k] == b[k]) continue;
            bool known = false;
            for (Rule rule : kKnown) known = known || rule(a[1], a[2], a[k], b[k]);
            explained += known;
            if (!known && ++unexplained <= 40)
                std::printf("path %.120s  base %.120s\n  native %.300s\n  wine   %.300s\n", a[1].c_str(), a[2].c_str(),
                            a[k].c_str(), b[k].c_str());
        }
    }
    std::printf("%zu paths compared (%zu from Wine): %zu unexplained differences, %zu known ones\n", native.size(),
                wine.size(), unexplained, explained);
    return unexplained == 0 && native.size() > 10000 ? 0 : 1;
}

}  // namespace

int main(int argc, char** argv) {
#ifdef _WIN32  // lines end in "\n" alone, as natively
    _setmode(_fileno(stdout), _O_BINARY);
#endif
    std::string mode = argc > 1 ? argv[1] : "";
    if (mode == "compare" && argc == 4) return Compare(argv[2], argv[3]);
    Strings corpus = MakeCorpus();
    if (mode != "shell" && mode != "exports") return std::fputs("usage: path_corpus MODE\n", stderr), 2;
    for (size_t i = 0; i < corpus.size(); ++i) {
        std::string base = BaseFor(corpus, i), fields = mode == "shell" ? ShellAnswers(corpus[i], base)
                                                                           : Exports(corpus[i], base);
        std::puts((std::to_string(i) + '\t' + Escape(corpus[i]) + '\t' + Escape(base) + fields).c_str());
    }
    return 0;
}
