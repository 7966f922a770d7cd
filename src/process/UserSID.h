// Module UserSID: the security identifier of the process's user, as bytes
// and as text.
#pragma once

#include "Platform.h"

// Fills destination with the SID of the process's user and gives 1, or
// gives 0 (no NT host, no token, no SID). The first success is kept and
// copied out on every later call without asking the platform again.
uint8_t WR_GETUSERSID(ByteArray& destination);
