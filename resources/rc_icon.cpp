#include "rc_icon.h"

#include <cmath>

namespace zr::rc {
namespace {

enum Colour : uint8_t { kNavy = 4, kBlue = 12, kWhite = 15 };

// The standard 16-colour palette as red, green, blue.
const uint8_t kPalette[16][3] = {
    {0x00, 0x00, 0x00}, {0x80, 0x00, 0x00}, {0x00, 0x80, 0x00}, {0x80, 0x80, 0x00},
    {0x00, 0x00, 0x80}, {0x80, 0x00, 0x80}, {0x00, 0x80, 0x80}, {0xC0, 0xC0, 0xC0},
    {0x80, 0x80, 0x80}, {0xFF, 0x00, 0x00}, {0x00, 0xFF, 0x00}, {0xFF, 0xFF, 0x00},
    {0x00, 0x00, 0xFF}, {0xFF, 0x00, 0xFF}, {0x00, 0xFF, 0xFF}, {0xFF, 0xFF, 0xFF},
};

// Colour of pixel (x, y), y counted from the top, or -1 for transparent.
int pixel(int x, int y, int size) {
    double u = (x + 0.5) / size, v = (y + 0.5) / size;
    double r2 = (u - 0.5) * (u - 0.5) + (v - 0.5) * (v - 0.5);
    if (r2 > 0.47 * 0.47) return -1;
    bool bar = u >= 0.28 && u <= 0.72 && ((v >= 0.26 && v <= 0.37) || (v >= 0.63 && v <= 0.74));
    double diagonal_u = 0.5 - (v - 0.5) * (0.44 / 0.26);
    bool slash = v > 0.37 && v < 0.63 && std::fabs(u - diagonal_u) < 0.09;
    if (bar || slash) return kWhite;
    return r2 >= 0.40 * 0.40 ? kNavy : kBlue;
}

void put16(std::vector<uint8_t>& b, uint32_t v) {
    b.push_back(static_cast<uint8_t>(v));
    b.push_back(static_cast<uint8_t>(v >> 8));
}
void put32(std::vector<uint8_t>& b, uint32_t v) {
    put16(b, v & 0xFFFF);
    put16(b, v >> 16);
}

// One icon image: BITMAPINFOHEADER, palette, 4-bit colour rows, 1-bit mask rows.
std::vector<uint8_t> image(int size) {
    const uint32_t colour_row = ((size * 4 + 31) / 32) * 4;
    const uint32_t mask_row = ((size + 31) / 32) * 4;
    std::vector<uint8_t> b;
    put32(b, 40);
    put32(b, size);
    put32(b, size * 2);  // colour and mask together
    put16(b, 1);
    put16(b, 4);
    put32(b, 0);
    put32(b, (colour_row + mask_row) * size);
    put32(b, 0);
    put32(b, 0);
    put32(b, 0);
    put32(b, 0);
    for (const auto& c : kPalette) {
        b.push_back(c[2]);
        b.push_back(c[1]);
        b.push_back(c[0]);
        b.push_back(0);
    }
    for (int y = size - 1; y >= 0; --y) {  // bottom row first
        std::vector<uint8_t> row(colour_row, 0);
        for (int x = 0; x < size; ++x) {
            int p = pixel(x, y, size);
            uint8_t c = p < 0 ? 0 : static_cast<uint8_t>(p);
            row[x / 2] |= (x % 2 == 0) ? static_cast<uint8_t>(c << 4) : c;
        }
        b.insert(b.end(), row.begin(), row.end());
    }
    for (int y = size - 1; y >= 0; --y) {
        std::vector<uint8_t> row(mask_row, 0);
        for (int x = 0; x < size; ++x)
            if (pixel(x, y, size) < 0) row[x / 8] |= static_cast<uint8_t>(0x80 >> (x % 8));
        b.insert(b.end(), row.begin(), row.end());
    }
    return b;
}

}  // namespace

std::vector<uint8_t> make_icon_file() {
    const int sizes[] = {32, 16};
    std::vector<std::vector<uint8_t>> images;
    for (int s : sizes) images.push_back(image(s));
    std::vector<uint8_t> b;
    put16(b, 0);
    put16(b, 1);  // icon
    put16(b, 2);
    uint32_t offset = 6 + 16 * 2;
    for (size_t i = 0; i < images.size(); ++i) {
        b.push_back(static_cast<uint8_t>(sizes[i]));
        b.push_back(static_cast<uint8_t>(sizes[i]));
        b.push_back(16);  // colours
        b.push_back(0);
        put16(b, 1);
        put16(b, 4);
        put32(b, static_cast<uint32_t>(images[i].size()));
        put32(b, offset);
        offset += static_cast<uint32_t>(images[i].size());
    }
    for (const auto& img : images) b.insert(b.end(), img.begin(), img.end());
    return b;
}

}  // namespace zr::rc
