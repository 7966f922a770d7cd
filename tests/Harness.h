// What the tests share: the DLL loaded the way a Visual Basic program loads
// it, calls that check the stack, BSTRs and arrays the test owns.
#pragma once

#include <gtest/gtest.h>

#include <windows.h>
#include <oleauto.h>
#include <shlobj.h>
#include <shlwapi.h>

#include <cstdint>
#include <cstdio>
#include <cstring>
#include <string>
#include <type_traits>

// The library, loaded from beside the test program at first need.
HMODULE CskLibrary();
// The export `name`; a missing name fails the test that asked.
void* CskProc(const char* name);

// Unloads the library and loads it again, at construction and at
// destruction, so that everything it keeps for the life of the process (the
// version record, bound entry points, cached windows) is filled anew inside
// the scope and none of what was staged there outlives it. Detours go inside.
struct FreshLibrary {
    FreshLibrary();
    ~FreshLibrary();
    FreshLibrary(const FreshLibrary&) = delete;
    FreshLibrary& operator=(const FreshLibrary&) = delete;
};

// Pushes count 32-bit argument slots (args[0] nearest the return address, as
// a caller pushes right to left), calls function, and stores in *espDelta
// how far the stack pointer after the call is from where it was before the
// pushes: 0 for a __stdcall callee that removed exactly them.
extern "C" uint32_t CallChecked(const void* function, const uint32_t* args, uint32_t count, int32_t* espDelta)
    __asm__("csk_call_checked");

// An export as the caller declares it: each argument takes the 32-bit slots
// a caller pushes for it (a Double two, an Integer or Boolean one), and each
// call checks that the callee removed exactly those, so a wrong calling
// convention or argument list fails the test. The declarations of all 267
// are generated from the export table into VbDeclares.h.
template <class R, class... A>
struct VbFunction {
    const char* name;

    R operator()(A... args) const {
        uint32_t slots[2 * sizeof...(A) + 1];
        uint32_t count = 0;
        (Push(slots, count, args), ...);
        int32_t espDelta = 0;
        uint32_t result = CallChecked(CskProc(name), slots, count, &espDelta);
        EXPECT_EQ(0, espDelta) << name << " did not remove exactly its " << 4 * count << " bytes of arguments";
        if constexpr (!std::is_void<R>::value) return static_cast<R>(result);
    }

  private:
    template <class T>
    static void Push(uint32_t* slots, uint32_t& count, T value) {
        static_assert(sizeof(T) <= 8, "an argument is one or two slots");
        uint32_t words[2] = {0, 0};
        std::memcpy(words, &value, sizeof value);
        for (size_t i = 0; i < (sizeof(T) + 3) / 4; ++i) slots[count++] = words[i];
    }
};

// A BSTR owned by the test: null by default, or made from UTF-8 text, or
// from exact UTF-16 units (embedded NULs and lone surrogates included). One
// that the library allocated under a GuardedHeap goes back to that heap.
class Bstr {
  public:
    Bstr() = default;
    explicit Bstr(const std::string& utf8);
    static Bstr FromUnits(const std::u16string& units);
    ~Bstr();
    Bstr(Bstr&& other) noexcept : value_(other.value_) { other.value_ = nullptr; }
    Bstr& operator=(Bstr&& other) noexcept;
    Bstr(const Bstr&) = delete;
    Bstr& operator=(const Bstr&) = delete;

    BSTR get() const { return value_; }
    BSTR* out() { return &value_; }
    bool isNull() const { return value_ == nullptr; }
    std::u16string units() const;
    // The text as UTF-8; a null BSTR reads as "<null>" so that tables can
    // tell it from the empty string.
    std::string text() const;

  private:
    BSTR value_ = nullptr;
};

// What an unguarded text export leaves for an empty answer.
extern const char* const kNull;

std::string Utf8(const std::u16string& units);
std::u16string Utf16(const std::string& utf8);

// A SAFEARRAY of bytes (or of another element type, the bytes its data)
// that the test owns; null by default.
struct TestSafeArray {
    SAFEARRAY* array = nullptr;
    TestSafeArray() = default;
    explicit TestSafeArray(const std::string& bytes, VARTYPE type = VT_UI1);
    ~TestSafeArray();
    TestSafeArray(const TestSafeArray&) = delete;
    TestSafeArray& operator=(const TestSafeArray&) = delete;
    std::string bytes() const;
};

// What an export of no input answers, with its status checked to be 0.
template <class F>
std::string ExportText(const F& function) {
    Bstr out("stale");
    EXPECT_EQ(S_OK, function(out.out())) << function.name;
    return out.text();
}

// J{...}: the values as one text, each followed by a space, so that a row's
// answers compare at once and a failure shows them all. A braced list is
// evaluated in order, so calls in it run left to right; a variable is read
// after them all.
inline std::string S(const std::string& s) { return s; }
inline std::string S(LPCSTR s) { return s ? s : kNull; }
inline std::string S(LPCWSTR s) { return s ? Utf8(reinterpret_cast<const char16_t*>(s)) : kNull; }
inline std::string S(double n) { char t[32]; return std::snprintf(t, sizeof t, n == int64_t(n) ? "%.0f" : "%.9g", n), t; }
struct J : std::string { template <class... T> J(const T&... v) : std::string(((S(v) + " ") + ...)) {} };
inline void PrintTo(const J& j, std::ostream* out) { *out << testing::PrintToString(std::string(j)); }
