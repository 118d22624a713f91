# headless file layer (zr::fs)
target_sources(zr_platform PRIVATE ${CMAKE_CURRENT_LIST_DIR}/files.cpp)
