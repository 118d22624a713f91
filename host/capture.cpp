// Window pictures for the demo host's screenshot mode.
#include "host/capture.h"

#include <cstdio>
#include <vector>

std::string shot_name(const char* sheet, int number, const char* title) {
    std::string name = std::string(sheet) + "-" + std::to_string(number);
    bool dash = true;
    for (const char* c = title; *c != '\0'; ++c) {
        const char lower = (*c >= 'A' && *c <= 'Z') ? static_cast<char>(*c - 'A' + 'a') : *c;
        if ((lower >= 'a' && lower <= 'z') || (lower >= '0' && lower <= '9')) {
            if (dash) name += '-';
            name += lower;
            dash = false;
        } else if (*c != '&') {
            dash = true;  // a run of other characters becomes one dash
        }
    }
    return name + ".bmp";
}

bool save_window_bitmap(HWND window, const std::string& path) {
    RECT rect;
    if (!GetWindowRect(window, &rect)) return false;
    const int width = rect.right - rect.left;
    const int height = rect.bottom - rect.top;
    if (width <= 0 || height <= 0) return false;

    HDC screen = GetDC(nullptr);
    HDC memory = CreateCompatibleDC(screen);
    HBITMAP bitmap = CreateCompatibleBitmap(screen, width, height);
    HGDIOBJ old = SelectObject(memory, bitmap);
    BitBlt(memory, 0, 0, width, height, screen, rect.left, rect.top, SRCCOPY | CAPTUREBLT);
    SelectObject(memory, old);

    BITMAPINFOHEADER info{};
    info.biSize = sizeof info;
    info.biWidth = width;
    info.biHeight = height;  // bottom-up rows, as BMP files hold them
    info.biPlanes = 1;
    info.biBitCount = 24;
    info.biCompression = BI_RGB;
    const int stride = (width * 3 + 3) & ~3;
    std::vector<unsigned char> pixels(static_cast<size_t>(stride) * static_cast<size_t>(height));
    const int rows = GetDIBits(memory, bitmap, 0, static_cast<UINT>(height), pixels.data(),
                               reinterpret_cast<BITMAPINFO*>(&info), DIB_RGB_COLORS);
    DeleteObject(bitmap);
    DeleteDC(memory);
    ReleaseDC(nullptr, screen);
    if (rows != height) return false;

    BITMAPFILEHEADER file{};
    file.bfType = 0x4D42;  // "BM"
    file.bfOffBits = sizeof file + sizeof info;
    file.bfSize = static_cast<DWORD>(file.bfOffBits + pixels.size());
    FILE* out = std::fopen(path.c_str(), "wb");
    if (out == nullptr) return false;
    bool written = std::fwrite(&file, sizeof file, 1, out) == 1 &&
                   std::fwrite(&info, sizeof info, 1, out) == 1 &&
                   std::fwrite(pixels.data(), 1, pixels.size(), out) == pixels.size();
    written = std::fclose(out) == 0 && written;
    return written;
}
