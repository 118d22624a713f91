// Compiled in the Windows build only: every name the resource script may use
// must have the value the SDK headers give it, or the build stops here.
#include <windows.h>
// after windows.h
#include <commctrl.h>
#include <winres.h>

#include <cstdint>

#define ZR_RC_NAME(name, value)                                                      \
    static_assert(static_cast<uint32_t>(name) == static_cast<uint32_t>(value), #name \
                  " differs from the "                                               \
                  "SDK");
#include "rc_names.h"
#undef ZR_RC_NAME
