// What the tests share: the library loaded the way a Visual Basic program
// loads it, calls through the test's own declarations, and BSTRs the test
// owns.
#pragma once

#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <functional>
#include <type_traits>
#include <string>

#include "Platform.h"

// The export `name`, found by its plain name in the loaded library (the
// DLL through LoadLibrary/GetProcAddress, or the native shared object
// through dlopen/dlsym). A missing name fails the test that asked.
void* CskProc(const char* name);

#ifdef CSK_WINSIM
// A second copy of the library, loaded from a copy of its file, with all of
// its process-wide state (cached records, bound entry points) as at load.
// While it lives, CskProc finds the exports in it.
struct FreshLibrary {
    FreshLibrary();
    ~FreshLibrary();
    FreshLibrary(const FreshLibrary&) = delete;
    FreshLibrary& operator=(const FreshLibrary&) = delete;
};
#endif

#if defined(__i386__)
// Pushes count 32-bit argument slots (args[0] ends up nearest the return
// address, as a caller pushes right to left), calls function, and stores in
// *espDelta how far the stack pointer after the call is from where it was
// before the pushes: 0 for a __stdcall callee that removed exactly them.
extern "C" uint32_t CallChecked(const void* function, const uint32_t* args, uint32_t count, int32_t* espDelta)
    __asm__("csk_call_checked");
#endif

// An export as the caller declares it. In the DLL each argument takes the
// 32-bit slots a caller pushes for it (a Double two, an Integer or Boolean
// one), and each call checks that the callee removed exactly those, so a
// wrong calling convention or argument list fails the test. x86-64 has one
// calling convention; there the declared types decide how each travels.
template <class R, class... A>
struct VbFunction {
    const char* name;

    R operator()(A... args) const {
#if defined(__i386__)
        uint32_t slots[2 * sizeof...(A) + 1];
        uint32_t count = 0;
        (Push(slots, count, args), ...);
        int32_t espDelta = 0;
        uint32_t result = CallChecked(CskProc(name), slots, count, &espDelta);
        EXPECT_EQ(0, espDelta) << name << " did not remove exactly its " << 4 * count << " bytes of arguments";
        if constexpr (!std::is_void<R>::value) return static_cast<R>(result);
#else
        return reinterpret_cast<R (*)(A...)>(CskProc(name))(args...);
#endif
    }

#if defined(__i386__)
  private:
    template <class T>
    static void Push(uint32_t* slots, uint32_t& count, T value) {
        static_assert(sizeof(T) <= 8, "an argument is one or two slots");
        uint32_t words[2] = {0, 0};
        std::memcpy(words, &value, sizeof value);
        for (size_t i = 0; i < (sizeof(T) + 3) / 4; ++i) slots[count++] = words[i];
    }
#endif
};

// A BSTR owned by the test: null by default, or made from UTF-8 text, or
// from exact UTF-16 units (embedded NULs and lone surrogates included).
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

#ifndef CSK_WINSIM
// Runs show, which opens a message box on this thread, while a helper thread
// finds the box (by caption when one is given; after 5 s any dialog, so that
// a box with another caption fails the test instead of hanging it), reads it
// and closes it with OK. "(no box)" when none came within 30 s.
struct ShownBox {
    std::string caption = "(no box)", text;
    bool exclamation = false, okOnly = false;  // the exclamation icon; OK its only button
};
ShownBox CloseNextBox(const std::function<void()>& show, const char* caption = nullptr);
#endif

#ifdef CSK_WINSIM
// winsim as reset() leaves it (Windows 7, the account CORVANE\Tester), or
// with nt false a Windows 95 host, and a fresh copy of the library that has
// kept nothing yet.
struct WinsimReset {
    explicit WinsimReset(bool nt);
};
struct FreshHost : WinsimReset {
    explicit FreshHost(bool nt = true) : WinsimReset(nt) {}
    FreshLibrary library;
};
#else
// The platform as it is.
struct FreshHost {
    FreshHost() {}
};
#endif

// What an export of no input answers, with its status checked to be 0.
std::string ExportText(const VbFunction<HRESULT, BSTR*>& function);
