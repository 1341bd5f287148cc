# SPDX-FileCopyrightText: Quirn contributors
# SPDX-License-Identifier: GPL-3.0-or-later

# Every fuzz/NAME_fuzz.cpp as a program NAME_fuzz, in a build whose layers are instrumented for it.

option(QUIRN_FUZZ "Build the fuzz targets (clang only)" OFF)
if(NOT QUIRN_FUZZ)
  return()
endif()

get_property(layers GLOBAL PROPERTY QUIRN_LAYERS)
file(GLOB fuzzers CONFIGURE_DEPENDS "${PROJECT_SOURCE_DIR}/fuzz/*_fuzz.cpp")
foreach(source IN LISTS fuzzers)
  cmake_path(GET source STEM name)
  add_executable(${name} "${source}")
  target_link_libraries(${name} PRIVATE ${layers})
  # A fuzzer of a module's code brings that along, which is compiled in another way than the precompiled header.
  if(name MATCHES "^pdf_")
    target_link_libraries(${name} PRIVATE quirn_code_pdf)
  else()
    target_precompile_headers(${name} REUSE_FROM quirn_precompiled)
  endif()
  target_link_options(${name} PRIVATE -fsanitize=fuzzer)
endforeach()
