# headless registry (advapi32 subset, seeding, REGEDIT4 files) and the
# in-house pieces that differ by world
target_sources(zr_platform PRIVATE
  ${CMAKE_CURRENT_LIST_DIR}/registry.cpp
  ${CMAKE_CURRENT_LIST_DIR}/registry_reg.cpp
  ${CMAKE_CURRENT_LIST_DIR}/inhouse_headless.cpp)

# The native world's default store: a REGEDIT4 file, embedded at build time.
file(READ ${CMAKE_CURRENT_LIST_DIR}/default_store.reg ZR_DEFAULT_STORE_TEXT)
set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${CMAKE_CURRENT_LIST_DIR}/default_store.reg)
configure_file(${CMAKE_CURRENT_LIST_DIR}/default_store.cpp.in ${CMAKE_CURRENT_BINARY_DIR}/default_store.cpp @ONLY)
target_sources(zr_platform PRIVATE ${CMAKE_CURRENT_BINARY_DIR}/default_store.cpp)
