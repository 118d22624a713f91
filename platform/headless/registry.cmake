# headless registry (advapi32 subset, seeding, REGEDIT4 files) and the
# in-house pieces that differ by world
target_sources(zr_platform PRIVATE
  ${CMAKE_CURRENT_LIST_DIR}/registry.cpp
  ${CMAKE_CURRENT_LIST_DIR}/registry_reg.cpp
  ${CMAKE_CURRENT_LIST_DIR}/inhouse_headless.cpp)
