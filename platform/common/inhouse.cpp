// The in-house helpers that need nothing but the Win32 names: resource
// strings, window centring and numbers in edit fields.
#include <cstdio>

#include "platform/zrutil.h"

int load_res_string(HMODULE module, UINT id, char* buffer, int capacity) {
    if (buffer == nullptr || capacity <= 0) return 0;
    buffer[0] = '\0';
    int length = LoadStringA(module, id, buffer, capacity);
    if (length <= 0) {
        buffer[0] = '\0';
        return 0;
    }
    if (length > capacity - 1) length = capacity - 1;
    buffer[length] = '\0';
    return length;
}

// The window keeps its size; its top-left corner goes where it is centred
// over the reference rectangle (the reference window, or the whole screen
// when there is none or its rectangle cannot be had), then is pulled back
// so that the window stays on the screen as far as its size allows.
void center_window(HWND reference, HWND window) {
    RECT own{};
    if (window == nullptr || !GetWindowRect(window, &own)) return;
    const int screen_width = GetSystemMetrics(SM_CXSCREEN);
    const int screen_height = GetSystemMetrics(SM_CYSCREEN);
    RECT over{0, 0, screen_width, screen_height};
    if (reference != nullptr && !GetWindowRect(reference, &over))
        over = RECT{0, 0, screen_width, screen_height};

    const int width = own.right - own.left;
    const int height = own.bottom - own.top;
    int x = over.left + ((over.right - over.left) - width) / 2;
    int y = over.top + ((over.bottom - over.top) - height) / 2;
    if (x + width > screen_width) x = screen_width - width;
    if (y + height > screen_height) y = screen_height - height;
    if (x < 0) x = 0;
    if (y < 0) y = 0;
    SetWindowPos(window, nullptr, x, y, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
}

// The text is read into 260 bytes, so only its first 259 characters count.
// A magnitude beyond 32 bits gives 0xFFFFFFFF whatever the sign, as strtoul
// does; within range a leading '-' negates modulo 2^32.
UINT Edit_GetInt(HWND edit) {
    char text[260];
    text[0] = '\0';
    const int length = GetWindowTextA(edit, text, sizeof text);
    if (length <= 0) return 0;
    text[sizeof text - 1] = '\0';

    const char* p = text;
    while (*p == ' ' || *p == '\t') ++p;
    const bool negative = *p == '-';
    if (negative) ++p;
    if (*p < '0' || *p > '9') return 0;

    unsigned long long magnitude = 0;
    for (; *p >= '0' && *p <= '9'; ++p) {
        magnitude = magnitude * 10 + static_cast<unsigned>(*p - '0');
        if (magnitude > 0xFFFFFFFFull) return 0xFFFFFFFFu;
    }
    const UINT value = static_cast<UINT>(magnitude);
    return negative ? 0u - value : value;
}

void Edit_SetInt(HWND edit, UINT value) {
    char text[16];
    std::snprintf(text, sizeof text, "%u", value);
    SetWindowTextA(edit, text);
}
