# SPDX-FileCopyrightText: Quirn contributors
# SPDX-License-Identifier: GPL-3.0-or-later

# Every tests/**/*.cpp in one program, quirn_tests.

file(GLOB_RECURSE tests CONFIGURE_DEPENDS "${PROJECT_SOURCE_DIR}/tests/*.cpp")
file(GLOB support CONFIGURE_DEPENDS "${PROJECT_SOURCE_DIR}/tests/support/*.cpp")
find_package(GTest QUIET)
if(NOT BUILD_TESTING OR NOT GTest_FOUND OR NOT tests OR NOT TARGET quirn)
  return()
endif()

get_property(layers GLOBAL PROPERTY QUIRN_LAYERS)
include(hostile)
list(FILTER tests EXCLUDE REGEX "/tests/(hostile|window)/")
add_executable(quirn_tests ${tests} ${hostile_operations})
add_dependencies(quirn_tests quirn quirn_hostile quirn_hostile_front_end)
target_include_directories(quirn_tests PRIVATE "${PROJECT_SOURCE_DIR}/tests")
# For support/ alone: a path of this folder in every command would keep a fresh clone from using
# the compiler cache of another.
set_property(SOURCE ${support} "${PROJECT_SOURCE_DIR}/tests/box/hostile_runs.cpp" APPEND PROPERTY COMPILE_DEFINITIONS
             "QUIRN_PROGRAM=\"$<TARGET_FILE:quirn>\"" "QUIRN_SOURCE_DIR=\"${PROJECT_SOURCE_DIR}\""
             "QUIRN_HOSTILE_PROGRAM=\"$<TARGET_FILE:quirn_hostile>\"")
quirn_loads_modules(quirn_tests)
target_link_libraries(quirn_tests PRIVATE quirn_code_pdf ${layers} GTest::gmock GTest::gtest_main)
set(test_headers
  <algorithm> <array> <filesystem> <functional> <map> <memory> <optional> <span> <string>
  <string_view> <vector> <fmt/format.h> <gmock/gmock.h> <gtest/gtest.h>)
target_precompile_headers(quirn_tests PRIVATE ${test_headers})

if(QUIRN_SANITIZE)
  # One process per case would spend most of its time starting the sanitizer.
  foreach(shard RANGE 3)
    add_test(NAME quirn_tests.shard${shard} COMMAND quirn_tests --gtest_brief=1)
    set_tests_properties(quirn_tests.shard${shard} PROPERTIES TIMEOUT 1200
      ENVIRONMENT "GTEST_TOTAL_SHARDS=4;GTEST_SHARD_INDEX=${shard}")
  endforeach()
  # Once more in one process, where a sanitizer sees both sides of the box at once.
  add_test(NAME quirn_tests.unboxed COMMAND quirn_tests --gtest_brief=1 --gtest_filter=*OperationContract*)
  set_tests_properties(quirn_tests.unboxed PROPERTIES TIMEOUT 1200
    # The font library, which workers alone load otherwise, keeps its configuration to the end.
    ENVIRONMENT "QUIRN_BOX=off;ASAN_OPTIONS=detect_leaks=0")
else()
  include(GoogleTest)
  gtest_discover_tests(quirn_tests DISCOVERY_MODE PRE_TEST DISCOVERY_TIMEOUT 60 NO_PRETTY_VALUES
                       PROPERTIES TIMEOUT 120)
endif()

if(TARGET quirn_window)
  # The window's tests are a program of their own, so that the others start without Qt.
  file(GLOB window_tests CONFIGURE_DEPENDS "${PROJECT_SOURCE_DIR}/tests/window/*.cpp")
  add_executable(quirn_window_tests ${window_tests} ${support})
  add_executable(quirn_screenshots EXCLUDE_FROM_ALL "${PROJECT_SOURCE_DIR}/tests/window/screenshots/main.cpp" ${support})
  foreach(program quirn_window_tests quirn_screenshots)
    target_include_directories(${program} PRIVATE "${PROJECT_SOURCE_DIR}/tests")
    target_compile_definitions(${program} PRIVATE QT_NO_KEYWORDS)
    target_link_libraries(${program} PRIVATE quirn_window ${layers} ${QUIRN_QT} GTest::gmock GTest::gtest)
    target_precompile_headers(${program} PRIVATE ${test_headers})
    quirn_loads_modules(${program})
    add_dependencies(${program} quirn)
  endforeach()
  add_test(NAME quirn_window_tests COMMAND quirn_window_tests --gtest_brief=1)
  set_tests_properties(quirn_window_tests PROPERTIES TIMEOUT 600 ENVIRONMENT "QT_QPA_PLATFORM=offscreen")
endif()
