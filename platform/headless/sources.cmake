# sources of platform/headless
include(${CMAKE_CURRENT_LIST_DIR}/files.cmake)
include(${CMAKE_CURRENT_LIST_DIR}/registry.cmake)
include(${CMAKE_CURRENT_LIST_DIR}/skins.cmake)
include(${CMAKE_CURRENT_LIST_DIR}/ui.cmake)
