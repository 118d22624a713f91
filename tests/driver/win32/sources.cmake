# The Win32 world of the scripted user: real modal loops, registry and files.
target_sources(zr_test_driver PRIVATE
  ${CMAKE_CURRENT_LIST_DIR}/runner_hooks.cpp
  ${CMAKE_CURRENT_LIST_DIR}/world.cpp)
