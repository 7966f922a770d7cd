// What Wine cannot stage, staged on the real DLL: a Detour replaces, for the
// length of a scope, the entry of one platform function in the library's own
// import address table; a ProcDetour changes what GetProcAddress answers the
// library for one name (the entry points it binds at run time). The library
// itself is never changed. GuardedHeap puts a guard-page allocator in front
// of the library's heap and BSTR calls.
#pragma once

#include <windows.h>

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

// The calls that fakes record, in the order made, for a test to compare.
extern std::string g_calls;

struct Detour {
    // Every import of `function` by the library (from whichever DLL) now
    // reaches `replacement`; a function the library does not import fails
    // the test.
    Detour(const char* function, const void* replacement);
    template <class F>
    Detour(const char* function, F replacement) : Detour(function, reinterpret_cast<const void*>(+replacement)) {}
    ~Detour();
    Detour(const Detour&) = delete;
    Detour& operator=(const Detour&) = delete;

    // The platform's own function, for a fake that passes some calls on.
    template <class F>
    F real() const { return reinterpret_cast<F>(const_cast<void*>(original)); }
    const void* original = nullptr;

  private:
    std::string function_;
};

struct ProcDetour {
    // GetProcAddress answers the library `replacement` for `name` (nullptr:
    // the host lacks that entry point); other names as the platform does.
    ProcDetour(const char* name, const void* replacement);
    template <class F>
    ProcDetour(const char* name, F replacement) : ProcDetour(name, reinterpret_cast<const void*>(+replacement)) {}
    ProcDetour(const char* name, std::nullptr_t) : ProcDetour(name, static_cast<const void*>(nullptr)) {}
    ~ProcDetour();
    ProcDetour(const ProcDetour&) = delete;
    ProcDetour& operator=(const ProcDetour&) = delete;

  private:
    std::string name_;
};

// The platform calls that must never really run in a test (message boxes,
// beeps, shutdown, power, priority, the event log, auto-completion), each
// recorded in g_calls by name and answered as success.
struct NeverRun {
    NeverRun();

  private:
    std::vector<std::unique_ptr<Detour>> detours_;
    std::unique_ptr<ProcDetour> autoComplete_;
};

// While it lives, every block the library takes through malloc, calloc,
// realloc or the BSTR allocators ends against a no-access page, and a freed
// block stays no-access for a while before its pages are used again: an
// overrun by one unit or a use after free faults at once (and the test
// program stops, naming the address). Blocks the test releases (Bstr does)
// go back here too.
struct GuardedHeap {
    GuardedHeap();
    ~GuardedHeap();
    GuardedHeap(const GuardedHeap&) = delete;
    GuardedHeap& operator=(const GuardedHeap&) = delete;
    // The library's blocks that are still taken.
    static size_t Live();
    // Whether p is a block of the guarded heap, and its release.
    static bool Owns(const void* p);
    static void Release(void* p);
};
