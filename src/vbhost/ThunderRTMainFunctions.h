// Module ThunderRTMainFunctions: the Visual Basic runtime that hosts the
// program, known by the class of its main window ("ThunderRT6Main", ...),
// found once among the calling thread's top-level windows and kept.
#pragma once

#include <cstdint>
#include <string>

// 1 when the program runs in the development environment (a "ThunderMain"
// window); the title of the program's main window, empty without one.
uint8_t WR_ESISINIDE();
std::string WR_ESGETTHUNDERMAINTITLE();
