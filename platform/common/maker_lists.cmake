# The maker-list merges and the crash-safe replacement of data files.  The
# merges read the userex.gui line format through zr_site_codec (elimination/).
target_sources(zr_platform PRIVATE
  ${CMAKE_CURRENT_LIST_DIR}/maker_lists.cpp
  ${CMAKE_CURRENT_LIST_DIR}/safe_file.cpp)
target_link_libraries(zr_platform PUBLIC zr_site_codec)
