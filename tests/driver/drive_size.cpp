// The cache drive's size in both worlds (see set_cache_drive_size).
#include <string>

#include "platform/zrutil.h"
#include "tests/driver/world.h"
#ifndef _WIN32
#include "platform/headless/inhouse_headless.h"
#endif

namespace zr::test {

uint32_t set_cache_drive_size(uint32_t total_mb) {
    const std::string dir = data_dir();
    const std::string root = dir.substr(0, dir.find('\\') + 1);
#ifndef _WIN32
    zr::headless::set_drive_size(root.c_str(), total_mb, total_mb / 2);
#else
    (void)total_mb;
#endif
    DWORD total = 0;
    DWORD free = 0;
    if (!get_fixed_drive_info(root.c_str(), &total, &free)) return 0;
    return total;
}

}  // namespace zr::test
