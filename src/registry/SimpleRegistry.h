// Module SimpleRegistry: one call per value. Each call opens its key, does
// its one job and closes the key again; a registry failure shows only in
// the found or success flag, never in the status. These workers are also
// the registry layer of the rest of the library.
#pragma once

#include <cstdint>
#include <string>

#include "Platform.h"

// The value as text (REG_SZ, or REG_EXPAND_SZ expanded when expand is set);
// the default when there is none or it is of another type. *found is 1 when
// the value was read; a zero-length value gives "" with found 0.
std::string WR_ESREADSTRINGFROMREGISTRY(HKEY key, std::string subkey, std::string name, std::string defaultValue,
                                        uint8_t expand, uint8_t* found);

// Writes text as REG_SZ (REG_EXPAND_SZ with expand set), making the keys on
// the way; *success is 1 when the value was set.
void WR_ESWRITESTRINGTOREGISTRY(HKEY key, std::string subkey, std::string name, std::string value, uint8_t expand,
                                uint8_t* success);
