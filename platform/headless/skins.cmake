# headless skin modules (text stand-ins for skin DLLs)
target_sources(zr_platform PRIVATE ${CMAKE_CURRENT_LIST_DIR}/skins.cpp)
