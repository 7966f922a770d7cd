// The test programs' entry: a crash (a guard page touched, an undefined-
// behaviour trap) ends the program at once with its address and the test
// that ran, instead of starting Wine's debugger and holding the run until
// its time-out. Each test starts with no calls recorded.
#include <gtest/gtest.h>

#include <windows.h>

#include <cstdio>

#include "Detour.h"

static LONG WINAPI StopOnCrash(EXCEPTION_POINTERS* info) {
    const EXCEPTION_RECORD* record = info->ExceptionRecord;
    HMODULE module = nullptr;
    char name[MAX_PATH] = "?";
    GetModuleHandleExA(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                       static_cast<LPCSTR>(record->ExceptionAddress), &module);
    GetModuleFileNameA(module, name, module ? MAX_PATH : 0);
    const testing::TestInfo* test = testing::UnitTest::GetInstance()->current_test_info();
    std::fprintf(stderr, "CRASH: exception %08lX at %p (%s + %#x), data address %#lx, in %s\n", record->ExceptionCode,
                 record->ExceptionAddress, name, static_cast<BYTE*>(record->ExceptionAddress) - reinterpret_cast<BYTE*>(module),
                 record->NumberParameters > 1 ? record->ExceptionInformation[1] : 0, test ? test->name() : "no test");
    TerminateProcess(GetCurrentProcess(), 3);
    return EXCEPTION_EXECUTE_HANDLER;
}

struct FreshCallLog : testing::EmptyTestEventListener {
    void OnTestStart(const testing::TestInfo&) override { g_calls.clear(); }
};

int main(int argc, char** argv) {
    SetUnhandledExceptionFilter(StopOnCrash);
    testing::InitGoogleTest(&argc, argv);
    testing::UnitTest::GetInstance()->listeners().Append(new FreshCallLog);
    return RUN_ALL_TESTS();
}
