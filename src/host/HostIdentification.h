// Module HostIdentification: what the library knows of the Windows it runs
// on, and the family of host tests that answer from it.
#pragma once

#include "Platform.h"

// Fills record (its size field 156, or 148 when the platform refuses the
// long form) and sets *isLong to whether the long form was filled; false
// when the platform refused both.
uint8_t MYGETVERSIONEX(OSVERSIONINFOEXA* record, uint8_t* isLong);

// Fills info from GetNativeSystemInfo where the host has it, else from
// GetSystemInfo; *native tells which.
void MYGETNATIVESYSTEMINFO(SYSTEM_INFO* info, uint8_t* native);

// The two questions that other families ask of the host: 1 or 0.
uint8_t WR_ESISHOSTWINNT();
uint8_t WR_ESISHOSTWIN2000_ORHIGHER();
