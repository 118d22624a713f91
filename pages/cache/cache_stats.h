// Cache statistics: how much the proxy's disk cache holds, read from the
// cache directory's index `cache_data` and the data file it names.
#pragma once

#include <cstdint>

// Size in bytes of the cache's current data file, or -1 when it cannot be
// found.  Reads the cache directory from the registry; opens both files
// afresh and closes them before returning (nothing is kept between calls).
int32_t read_cache_size();

// The same for a given cache directory (Windows form, no trailing backslash).
int32_t read_cache_size_in(const char* cache_dir);
