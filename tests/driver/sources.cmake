# The scripted-user driver (zr_test_driver): the world-neutral step runner,
# and the runner hooks and world of the world being built.
add_library(zr_test_driver STATIC ${CMAKE_CURRENT_LIST_DIR}/user.cpp)
target_link_libraries(zr_test_driver PUBLIC zr_platform ${ZR_GTEST} PRIVATE zr_warnings)

if(WIN32)
  # Adds the Win32 hooks and world to zr_test_driver (or lists them in
  # ZR_DRIVER_WIN32_SOURCES).
  if(EXISTS ${CMAKE_CURRENT_LIST_DIR}/win32/sources.cmake)
    include(${CMAKE_CURRENT_LIST_DIR}/win32/sources.cmake)
  endif()
  if(ZR_DRIVER_WIN32_SOURCES)
    target_sources(zr_test_driver PRIVATE ${ZR_DRIVER_WIN32_SOURCES})
  endif()
else()
  target_sources(zr_test_driver PRIVATE
    ${CMAKE_CURRENT_LIST_DIR}/headless/hooks.cpp
    ${CMAKE_CURRENT_LIST_DIR}/headless/world.cpp)
endif()

# Tests of the driver itself, against property sheets and dialogs built from
# the resource module's templates.
zr_add_test(driver_tests LABEL unit
  SOURCES ${CMAKE_CURRENT_LIST_DIR}/tests/user_tests.cpp ${CMAKE_CURRENT_LIST_DIR}/tests/world_tests.cpp
  LIBS zr_test_driver zr_platform)
# The cache drive's size, both worlds.
target_sources(zr_test_driver PRIVATE ${CMAKE_CURRENT_LIST_DIR}/drive_size.cpp)
