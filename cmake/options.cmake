# SPDX-FileCopyrightText: Quirn contributors
# SPDX-License-Identifier: GPL-3.0-or-later

# The flags that every target of ours shares. They are directory-wide, because a precompiled header
# is usable only where they are all the same.

option(QUIRN_WERROR "Treat warnings as errors" ON)
set(QUIRN_SANITIZE "" CACHE STRING "Sanitizers to build with, as in address,undefined")

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_CXX_FLAGS_RELEASE "-O2 -DNDEBUG")

include_directories("${PROJECT_SOURCE_DIR}/src")
# The assertions of the standard library stay on in a release: the bytes come from strangers, and an
# index out of range is better an end than a hole.
add_compile_definitions("QUIRN_VERSION=\"${PROJECT_VERSION}\"" _GLIBCXX_ASSERTIONS)

# No -Wnull-dereference: at -O2 gcc 12 reports inlined containers of the standard library;
# the analyzer of clang-tidy looks for the same fault without that noise.
add_compile_options(
  -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wsign-conversion -Wnon-virtual-dtor
  -Wold-style-cast -Wcast-qual -Woverloaded-virtual
  # Our option structs have defaults and are filled by designated initialisers.
  -Wno-missing-field-initializers)
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
  # -Wrestrict: gcc 12 reports `"literal" + std::string` (its bug 105651).
  add_compile_options(-Wduplicated-cond -Wlogical-op -Wno-restrict)
endif()
if(CMAKE_CXX_COMPILER_ID STREQUAL "Clang")
  # Reports what libstdc++ 12 calls inside std::stable_sort; gcc still tells of our own calls.
  add_compile_options(-Wno-deprecated-declarations)
endif()
if(QUIRN_WERROR)
  add_compile_options(-Werror)
endif()

# Spelled out instead of CMAKE_POSITION_INDEPENDENT_CODE, which gives libraries and programs
# different flags and so a precompiled header each.
add_compile_options(-fPIE)
add_link_options($<$<STREQUAL:$<TARGET_PROPERTY:TYPE>,EXECUTABLE>:-pie> LINKER:--as-needed)

if(CMAKE_BUILD_TYPE STREQUAL "Release")
  add_compile_options(-fstack-protector-strong -fstack-clash-protection)
  add_compile_definitions(_FORTIFY_SOURCE=2)
  add_link_options(LINKER:-z,relro,-z,now)
endif()

if(QUIRN_SANITIZE)
  # -O1: the suites run several times faster than at -O0, and stacks stay readable.
  # -Wmaybe-uninitialized: gcc 12 loses track of initialisation behind its own instrumentation.
  add_compile_options(
    -fsanitize=${QUIRN_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer -O1
    $<$<CXX_COMPILER_ID:GNU>:-Wno-maybe-uninitialized>)
  add_link_options(-fsanitize=${QUIRN_SANITIZE})
endif()
