// The Win32 surface of the headless world: the names, values and signatures
// of <windows.h>, <commctrl.h>, <prsht.h>, <commdlg.h> and <ole2.h> that the
// module uses, implemented in memory with the same semantics.
#pragma once

#include "platform/headless/winapi_consts.h"
#include "platform/headless/winapi_controls.h"
#include "platform/headless/winapi_funcs.h"
#include "platform/headless/winapi_types.h"
