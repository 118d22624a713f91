# headless windowing layer: windows, messages, controls, dialogs, property
# sheets, message boxes and the resource module over the generated tables
target_sources(zr_platform PRIVATE
  ${CMAKE_CURRENT_LIST_DIR}/ui_window.cpp
  ${CMAKE_CURRENT_LIST_DIR}/ui_window_longs.cpp
  ${CMAKE_CURRENT_LIST_DIR}/ui_messages.cpp
  ${CMAKE_CURRENT_LIST_DIR}/ui_controls.cpp
  ${CMAKE_CURRENT_LIST_DIR}/ui_common_controls.cpp
  ${CMAKE_CURRENT_LIST_DIR}/ui_dialog.cpp
  ${CMAKE_CURRENT_LIST_DIR}/ui_sheet.cpp
  ${CMAKE_CURRENT_LIST_DIR}/ui_system.cpp)
# resources/ is configured before platform/, so the tables' target exists here.
target_link_libraries(zr_platform PUBLIC zr_res_tables)
