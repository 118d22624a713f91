// REGEDIT4 reader: a refused text changes nothing; an accepted one saves to
// text that loads back to the same text.
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "platform/headless/registry.h"

using namespace zr::headless;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    registry_clear();
    registry_set_string("SOFTWARE\\Quillmark\\Zephyrion\\Settings", "proxy_path", "C:\\Proxy");
    registry_set_dword("SOFTWARE\\Quillmark\\Zephyrion", "prefetch_always", 1);
    const std::string before = registry_save_reg();

    const RegLoadResult result =
        registry_load_reg(std::string_view(reinterpret_cast<const char*>(data), size));
    if (!result.ok) {
        if (result.line < 1 || registry_save_reg() != before) std::abort();
        return 0;
    }
    const std::string saved = registry_save_reg();
    registry_clear();
    if (!registry_load_reg(saved).ok || registry_save_reg() != saved) std::abort();
    return 0;
}
