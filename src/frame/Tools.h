// Module Tools: the crossing between the caller's types and the library's
// own (BSTR to working string and back, VARIANT_BOOL), the environment
// helpers, the error context and the fatal stop of an internal check.
#pragma once

#include "Platform.h"
#include "WorkingString.h"

#include <cstring>

// The module and routine that are running, for the fatal stop's message.
struct ErrorContext {
    const char* module;
    const char* routine;
};
extern ErrorContext g_errorContext;

// Sets the error context for one routine and puts the caller's back on
// every exit.
struct RoutineScope {
    ErrorContext saved;
    RoutineScope(const char* module, const char* routine) : saved(g_errorContext) {
        g_errorContext = {module, routine};
    }
    ~RoutineScope() { g_errorContext = saved; }
    RoutineScope(const RoutineScope&) = delete;
    RoutineScope& operator=(const RoutineScope&) = delete;
};

// Each source file names its module in kModule; a routine opens with this.
#define CSK_ROUTINE(name) RoutineScope routineScope_(kModule, name)

// Runtime errors of an internal check.
enum : int {
    kErrorOutOfMemory = 4,
    kErrorOutOfBounds = 6,
    kErrorNullPointer = 7,
};

// Ends the process after telling what failed, where, and in which routine.
[[noreturn]] void FATALSTOP(int number, int line);

// An internal check: no call of the library's documented forms can fail it.
#define CSK_CHECK(condition, number)                         \
    do {                                                     \
        if (!(condition)) FATALSTOP((number), __LINE__);     \
    } while (0)

// A VARIANT_BOOL in is true for every value but 0; out it is -1 or 0.
inline uint8_t FLAG(VARIANT_BOOL value) { return value != 0 ? 1 : 0; }
inline VARIANT_BOOL VBBOOL(bool value) { return value ? VARIANT_TRUE : VARIANT_FALSE; }

// Window, module, palette and device-context handles cross the boundary in
// a caller's 32-bit Long, the width they have in the product. These two are
// the one place that widens and narrows them, for the native 64-bit build:
// sign extension, as 64-bit Windows itself widens a handle (the stand-in
// platform hands out handles that fit in 32 bits).
template <class Handle>
inline Handle HANDLEFROMLONG(LONG value) {
    return reinterpret_cast<Handle>(static_cast<intptr_t>(value));
}
template <class Handle>
inline LONG LONGFROMHANDLE(Handle handle) {
    return static_cast<LONG>(reinterpret_cast<intptr_t>(handle));
}

// The caller's text as a working string, cut at the first NUL; null and
// empty give the empty string.
std::string BSTRTOSTRING(BSTR text);

// Cuts s at its first NUL, in place, and gives the result back too.
std::string& TRIMNULLBUFFER(std::string& s);

// Stores text in the caller's BSTR variable, replacing what it held. The
// empty string leaves a null BSTR.
void HANDBACK(BSTR* variable, const std::string& text);

// Stores an empty, non-null BSTR: the answer of a guarded export to a null
// or empty input.
void HANDBACKEMPTY(BSTR* variable);

// True when a guarded export answers the input itself: null, or a first
// unit that is NUL.
inline bool ISEMPTYBSTR(BSTR text) { return !text || lstrlenW(text) <= 0; }

// The fixed text buffer around a platform call: 1024 characters and a
// terminator, zero-filled; a longer text is cut without warning.
const size_t kTextLimit = 1024;

struct TextBuffer {
    char bytes[kTextLimit + 1];
    TextBuffer() { std::memset(bytes, 0, sizeof bytes); }
    explicit TextBuffer(const std::string& text) : TextBuffer() {
        std::memcpy(bytes, text.data(), text.size() < kTextLimit ? text.size() : kTextLimit);
    }
    // An empty working string reaches the platform as a null pointer.
    static const char* Argument(const std::string& text) { return text.empty() ? nullptr : text.c_str(); }
};

// Text of unknown length from the platform: call(nullptr, 0) tells the
// size n (0: failure); a buffer of n + 4 NUL bytes is filled by
// call(buffer, n + 2) (0: failure) and cut at its first NUL. False on
// failure, with text untouched.
template <class Call>
bool TWOCALLFETCH(Call call, std::string& text) {
    DWORD size = call(nullptr, 0);
    if (size == 0) return false;
    std::string buffer(static_cast<size_t>(size) + 4, '\0');
    if (call(&buffer[0], size + 2) == 0) return false;
    text = std::move(TRIMNULLBUFFER(buffer));
    return true;
}

// Environment references expanded; empty on failure.
std::string EXPANDENVIRON(const std::string& text);

// A variable's value; empty if unset or empty.
std::string GETENVIRON(const std::string& name);

// The C string that starts at element 0; a terminator is added to an array
// that holds no zero byte.
std::string BYTEBUFFTOSTRINGA(ByteArray& bytes);

// destination becomes a copy of source; an empty source leaves it erased.
void COPYBYTEBUFFER(ByteArray& destination, const ByteArray& source);
