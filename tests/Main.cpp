// The test programs' entry: a crash (a guard page touched, an undefined-
// behaviour trap) ends the program at once with its address, instead of
// starting Wine's debugger and holding the run until its time-out.
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
    if (module) GetModuleFileNameA(module, name, MAX_PATH);
    std::fprintf(stderr, "CRASH: exception %08lX at %p (%s +0x%lx), data address %p, in %s\n", record->ExceptionCode,
                 record->ExceptionAddress, name,
                 static_cast<unsigned long>(static_cast<char*>(record->ExceptionAddress) - reinterpret_cast<char*>(module)),
                 record->NumberParameters > 1 ? reinterpret_cast<void*>(record->ExceptionInformation[1]) : nullptr,
                 testing::UnitTest::GetInstance()->current_test_info()
                     ? testing::UnitTest::GetInstance()->current_test_info()->name() : "no test");
    std::fflush(stderr);
    TerminateProcess(GetCurrentProcess(), 3);
    return EXCEPTION_EXECUTE_HANDLER;
}

// Each test starts with no calls recorded.
struct FreshCallLog : testing::EmptyTestEventListener {
    void OnTestStart(const testing::TestInfo&) override { g_calls.clear(); }
};

int main(int argc, char** argv) {
    SetUnhandledExceptionFilter(StopOnCrash);
    testing::InitGoogleTest(&argc, argv);
    testing::UnitTest::GetInstance()->listeners().Append(new FreshCallLog);
    return RUN_ALL_TESTS();
}
