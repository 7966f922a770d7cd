// Module Misc: desktop state, the read-me file, text to Long, and the
// library's one test of whether the host has the wide (Unicode) calls.
#pragma once

#include <cstdint>

// 1 where wide platform calls work: asked once, with GetWindowsDirectoryW,
// which a host without Unicode answers with 0.
uint8_t WR_ESISUNICODEAVAILABLE();
