// Module GUID: new GUIDs as text.
#pragma once

#include <string>

// A new GUID in the registry form, "{XXXXXXXX-XXXX-XXXX-XXXX-XXXXXXXXXXXX}"
// in upper case; the empty string if the platform makes none.
std::string WR_ESGETNEWGUID();
