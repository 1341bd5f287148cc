# SPDX-FileCopyrightText: Quirn contributors
# SPDX-License-Identifier: GPL-3.0-or-later

# Every bench/*_bench.cpp in one program, quirn_bench, built on request. Only optimised code is
# worth measuring.

# What bench/box.sh runs.
add_executable(both_ways EXCLUDE_FROM_ALL "${PROJECT_SOURCE_DIR}/bench/box/both_ways.cpp")
target_precompile_headers(both_ways REUSE_FROM quirn_precompiled)
target_link_libraries(both_ways PRIVATE quirn_documents)

# What bench/window.sh runs.
if(TARGET quirn_window)
  get_property(layers GLOBAL PROPERTY QUIRN_LAYERS)
  add_executable(first_paint EXCLUDE_FROM_ALL "${PROJECT_SOURCE_DIR}/bench/window/first_paint.cpp")
  target_compile_definitions(first_paint PRIVATE QT_NO_KEYWORDS)
  target_link_libraries(first_paint PRIVATE quirn_window ${layers} ${QUIRN_QT})
endif()

file(GLOB_RECURSE benches CONFIGURE_DEPENDS "${PROJECT_SOURCE_DIR}/bench/*_bench.cpp")
find_package(benchmark QUIET)
if(NOT CMAKE_BUILD_TYPE STREQUAL "Release" OR NOT benchmark_FOUND OR NOT benches)
  return()
endif()

get_property(layers GLOBAL PROPERTY QUIRN_LAYERS)
add_executable(quirn_bench EXCLUDE_FROM_ALL ${benches})
target_precompile_headers(quirn_bench REUSE_FROM quirn_precompiled)
target_link_libraries(quirn_bench PRIVATE ${layers} benchmark::benchmark_main)
