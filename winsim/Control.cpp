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

void reset() {
    table().clear();
    resetHost();
    resetFileSystem();
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
