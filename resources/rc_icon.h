// The resource module's icon, drawn in code so that the repository holds no
// image from elsewhere: a blue disc with a white Z, 32x32 and 16x16, 16 colours.
#pragma once

#include <cstdint>
#include <vector>

namespace zr::rc {

// The bytes of a complete .ico file with both images.
std::vector<uint8_t> make_icon_file();

}  // namespace zr::rc
