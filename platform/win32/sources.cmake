# sources of platform/win32: the in-house pieces that ask the running system.
target_sources(zr_platform PRIVATE ${CMAKE_CURRENT_LIST_DIR}/system.cpp)
target_link_libraries(zr_platform PUBLIC comctl32 comdlg32 ole32 shell32 advapi32 gdi32 user32)
# The help page goes next to the DLL.
configure_file(${CMAKE_CURRENT_LIST_DIR}/zrsettings.html ${CMAKE_BINARY_DIR}/zrsettings.html COPYONLY)
# The file layer.
include(${CMAKE_CURRENT_LIST_DIR}/files.cmake OPTIONAL)
