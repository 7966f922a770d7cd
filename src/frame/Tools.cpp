// Module Tools: conversions at the call boundary and the environment helpers.
#include "Tools.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>

static const char kModule[] = "Tools";

ErrorContext g_errorContext = {"Main", "DLLMAIN"};

void FATALSTOP(int number, int line) {
    const char* description = number == kErrorOutOfMemory   ? "out of memory"
                              : number == kErrorOutOfBounds ? "out of bounds array access"
                              : number == kErrorNullPointer ? "null pointer access"
                                                            : "runtime error";
    char message[512];
    std::snprintf(message, sizeof message, "\nAborting due to runtime error %d (%s) at line %d of %s::%s()\n\n",
                  number, description, line, g_errorContext.module ? g_errorContext.module : "",
                  g_errorContext.routine ? g_errorContext.routine : "");
    std::fputs(message, stderr);
    std::fflush(stderr);
    ExitProcess(static_cast<UINT>(number));
}

std::string& TRIMNULLBUFFER(std::string& s) {
    size_t nul = s.find('\0');
    if (nul != std::string::npos) s.resize(nul);
    return s;
}

// Used when the platform's conversion fails: the C library's conversion
// under the process locale, and failing that one "?" per character that is
// not plain ASCII (a surrogate pair counts as one character).
static std::string convertWithoutPlatform(BSTR text) {
    size_t units = 0;
    while (text[units]) ++units;
    std::string out(units * 4 + 1, '\0');
    size_t written = wcstombs(&out[0], text, out.size());
    if (written != static_cast<size_t>(-1)) {
        out.resize(written);
        return out;
    }
    out.clear();
    for (size_t i = 0; i < units; ++i) {
        WCHAR unit = text[i];
        if (unit <= 127) {
            out += static_cast<char>(unit);
        } else {
            out += '?';
            if (unit >= 0xD800 && unit <= 0xDBFF && i + 1 < units) ++i;
        }
    }
    return out;
}

// Text that is plain ASCII up to its first NUL converts to itself in every
// ANSI code page and under every locale the C library can be set to; for
// it the conversions below are skipped, with the same result.
static bool narrowIfAscii(BSTR text, UINT length, std::string& out) {
    // One byte of room more than the text: the commonest change a worker
    // makes to its input, a closing backslash, then needs no new allocation.
    UINT end = 0;
    for (; end < length && text[end]; ++end)
        if (text[end] >= 0x80) return false;
    // Short text fits the string's own room; only longer text allocates.
    if (end + 1 > out.capacity()) out.reserve(static_cast<size_t>(end) + 1);
    out.resize(end);
    char* bytes = &out[0];
    for (UINT i = 0; i < end; ++i) bytes[i] = static_cast<char>(text[i]);
    return true;
}

std::string BSTRTOSTRING(BSTR text) {
    CSK_ROUTINE("BSTRTOSTRING");
    if (!text) return std::string();
    UINT length = SysStringLen(text);
    if (length == 0) return std::string();
    std::string ascii;
    if (narrowIfAscii(text, length, ascii)) return ascii;
    int size = WideCharToMultiByte(CP_ACP, 0, text, -1, nullptr, 0, nullptr, nullptr);
    if (size < 1) return convertWithoutPlatform(text);
    // The platform is given ten bytes more than it asked for, and the
    // buffer has ten more behind that, all NUL.
    std::string buffer(static_cast<size_t>(size) + 20, '\0');
    if (WideCharToMultiByte(CP_ACP, 0, text, -1, &buffer[0], size + 10, nullptr, nullptr) < 1)
        return convertWithoutPlatform(text);
    return TRIMNULLBUFFER(buffer);
}

// Widens up to the first NUL: every byte below 0x80 as itself, every other
// byte as "?". For text the locale's conversion refuses.
static void widenByteByByte(const char* text, size_t limit, WCHAR* out) {
    size_t i = 0;
    for (; i < limit && text[i]; ++i) {
        unsigned char byte = static_cast<unsigned char>(text[i]);
        out[i] = byte < 0x80 ? byte : '?';
    }
    out[i] = 0;
}

static void widenAscii(BSTR* variable, const char* bytes, size_t length) {
    if (length == 0) {
        SysReAllocString(variable, nullptr);
        return;
    }
    WCHAR local[256];
    std::vector<WCHAR> heap;
    WCHAR* wide = local;
    if (length + 1 > sizeof local / sizeof local[0]) {
        heap.resize(length + 1);
        wide = heap.data();
    }
    for (size_t i = 0; i < length; ++i) wide[i] = static_cast<WCHAR>(bytes[i]);
    wide[length] = 0;
    SysReAllocString(variable, wide);
}

void HANDBACK(BSTR* variable, const std::string& text) {
    CSK_ROUTINE("HANDBACK");
    const char* bytes = text.c_str();
    // ASCII up to the first NUL widens to itself whatever the locale (see
    // narrowIfAscii); only other text goes through mbstowcs.
    size_t ascii = 0;
    while (ascii < text.size() && bytes[ascii] > 0) ++ascii;
    if (ascii == text.size() || bytes[ascii] == 0) {
        widenAscii(variable, bytes, ascii);
        return;
    }
    size_t length = mbstowcs(static_cast<WCHAR*>(nullptr), bytes, 0);
    if (length == 0) {
        SysReAllocString(variable, nullptr);
        return;
    }
    // Short texts are widened on the stack; the rest on the heap.
    WCHAR local[256];
    std::vector<WCHAR> heap;
    size_t capacity = length == static_cast<size_t>(-1) ? text.size() + 1 : length + 1;
    WCHAR* wide = local;
    if (capacity > sizeof local / sizeof local[0]) {
        heap.resize(capacity);
        wide = heap.data();
    }
    if (length == static_cast<size_t>(-1)) {
        widenByteByByte(bytes, text.size(), wide);
    } else if (mbstowcs(wide, bytes, length + 1) == static_cast<size_t>(-1)) {
        widenByteByByte(bytes, length, wide);
    } else {
        wide[length] = 0;
    }
    SysReAllocString(variable, wide);
}

void HANDBACKEMPTY(BSTR* variable) {
    static const OLECHAR empty[1] = {0};
    SysReAllocString(variable, empty);
}

std::string EXPANDENVIRON(const std::string& text) {
    CSK_ROUTINE("EXPANDENVIRON");
    const char* source = text.empty() ? nullptr : text.c_str();
    std::string buffer(4, '\0');
    DWORD size = ExpandEnvironmentStringsA(source, &buffer[0], 2);
    if (size == 0) return std::string();
    buffer.assign(size + 4, '\0');
    if (ExpandEnvironmentStringsA(source, &buffer[0], size + 2) == 0)
        return std::string();
    return TRIMNULLBUFFER(buffer);
}

std::string GETENVIRON(const std::string& name) {
    CSK_ROUTINE("GETENVIRON");
    const char* key = name.empty() ? nullptr : name.c_str();
    DWORD size = GetEnvironmentVariableA(key, nullptr, 0);
    if (size == 0) return std::string();
    std::string buffer(size + 4, '\0');
    if (GetEnvironmentVariableA(key, &buffer[0], size + 2) == 0) return std::string();
    return TRIMNULLBUFFER(buffer);
}

std::string BYTEBUFFTOSTRINGA(ByteArray& bytes) {
    CSK_ROUTINE("BYTEBUFFTOSTRINGA");
    if (bytes.empty() || std::memchr(bytes.data(), 0, bytes.size()) == nullptr) bytes.push_back(0);
    return std::string(reinterpret_cast<const char*>(bytes.data()));
}

void COPYBYTEBUFFER(ByteArray& destination, const ByteArray& source) {
    CSK_ROUTINE("COPYBYTEBUFFER");
    if (source.empty()) {
        ByteArray().swap(destination);
        return;
    }
    destination = source;
}
