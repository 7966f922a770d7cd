// Failure injection and call counts for the stand-in.
#include "winsim_control.h"

#include <map>
#include <string>

namespace {

struct Entry {
    int calls = 0;
    int pendingFailures = 0;
};

std::map<std::string, Entry>& table() {
    static std::map<std::string, Entry> entries;
    return entries;
}

}  // namespace

namespace winsim {

void failNext(const char* function, int times) { table()[function].pendingFailures = times; }

int calls(const char* function) {
    auto it = table().find(function);
    return it == table().end() ? 0 : it->second.calls;
}

void resetHost();        // Host.cpp
void resetFileSystem();  // FileSystem.cpp
void resetRegistry();    // Registry.cpp
void resetShell();       // SpecialFolders.cpp
void resetDesktop();     // Desktop.cpp
void resetTicks();       // Counters.cpp
void resetWindows();     // Windows.cpp
void resetMenus();       // Menus.cpp
void resetSecurity();    // Security.cpp

void reset() {
    table().clear();
    resetHost();
    resetFileSystem();
    resetRegistry();
    resetShell();
    resetDesktop();
    resetTicks();
    resetWindows();
    resetMenus();
    resetSecurity();
}

// Every table of handles (processes, searches, files, keys) draws from this
// one count, so no value is ever in two tables, and one closed or from
// before a reset() is never handed out again. They stay far below 2^31, so
// a handle passes through a Long and back unharmed.
uintptr_t newHandle() {
    static uintptr_t last = 0x1000;
    return last += 4;
}

bool refuse(const char* function) {
    Entry& entry = table()[function];
    ++entry.calls;
    if (entry.pendingFailures > 0) {
        --entry.pendingFailures;
        return true;
    }
    return false;
}

}  // namespace winsim
