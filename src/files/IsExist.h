// Module IsExist: what a path names. Every test reads one attribute word;
// the Unix family also asks that the path be spelled exactly as the file
// system stores it, case included.
#pragma once

#include <cstdint>
#include <string>

#include "Platform.h"

// One FindFirstFileA of a path and its record; the search is closed on
// every exit. Both INVALID_HANDLE_VALUE and 0 count as not found.
struct FindSearch {
    HANDLE handle;
    WIN32_FIND_DATAA record;
    explicit FindSearch(const std::string& path)
        : handle(FindFirstFileA(path.empty() ? nullptr : path.c_str(), &record)) {}
    bool found() const { return handle != INVALID_HANDLE_VALUE && handle != nullptr; }
    ~FindSearch() {
        if (found()) FindClose(handle);
    }
    FindSearch(const FindSearch&) = delete;
    FindSearch& operator=(const FindSearch&) = delete;
};

// The attribute word of the path, INVALID_FILE_ATTRIBUTES when there is
// none (no such item, a wildcard anywhere, a refusal). An item that is
// open without sharing is read from its directory entry.
DWORD WR_ESGETFILEATTRIBUTES(std::string path);

uint8_t WR_ESISFILEORDIRECTORYEXIST(std::string path);
uint8_t WR_ESISFILEEXIST(std::string path);
uint8_t WR_ESISDIRECTORYEXIST(std::string path);
