# sources of platform/common: the in-house layer over the Win32 names,
# compiled in both worlds.
target_sources(zr_platform PRIVATE
  ${CMAKE_CURRENT_LIST_DIR}/regkey.cpp
  ${CMAKE_CURRENT_LIST_DIR}/inhouse.cpp)
include(${CMAKE_CURRENT_LIST_DIR}/maker_lists.cmake)
