// The windowing-system surface that page code uses, by its Win32 names.
// On Windows it is the real SDK; elsewhere the headless implementation with
// the same names, values and semantics.
#pragma once

#ifdef _WIN32
#ifndef _WIN32_WINNT
#define _WIN32_WINNT 0x0600
#endif
#ifndef _WIN32_IE
#define _WIN32_IE 0x0600
#endif
#ifndef NOMINMAX
#define NOMINMAX
#endif
#include <windows.h>
#include <commctrl.h>
#include <commdlg.h>
#include <prsht.h>
#include <ole2.h>
#else
#include "platform/headless/winapi.h"
#endif
