# SPDX-FileCopyrightText: Quirn contributors
# SPDX-License-Identifier: GPL-3.0-or-later

# What tests of the box stand on: a module of hostile operations, and the program once more in a
# folder where it finds that module. The installed program never does.

set(hostile_operations
    "${PROJECT_SOURCE_DIR}/tests/hostile/hostile_operations.cpp" "${PROJECT_SOURCE_DIR}/tests/hostile/attacks.cpp")
add_executable(quirn_hostile "${PROJECT_SOURCE_DIR}/tests/hostile/main.cpp")
set_target_properties(quirn_hostile PROPERTIES RUNTIME_OUTPUT_DIRECTORY "${PROJECT_BINARY_DIR}/hostile")
target_precompile_headers(quirn_hostile REUSE_FROM quirn_precompiled)
target_link_libraries(quirn_hostile PRIVATE quirn_cli)
quirn_loads_modules(quirn_hostile)

quirn_module(hostile
  SOURCES tests/hostile/hostile_operations.cpp tests/hostile/attacks.cpp tests/hostile/module.cpp
  BESIDE quirn_hostile)
target_include_directories(quirn_code_hostile PRIVATE "${PROJECT_SOURCE_DIR}/tests")

add_executable(quirn_hostile_front_end
    "${PROJECT_SOURCE_DIR}/tests/hostile/front_end.cpp" "${PROJECT_SOURCE_DIR}/tests/hostile/killing_calls.cpp"
    ${hostile_operations})
set_target_properties(quirn_hostile_front_end PROPERTIES RUNTIME_OUTPUT_DIRECTORY "${PROJECT_BINARY_DIR}/hostile")
target_include_directories(quirn_hostile_front_end PRIVATE "${PROJECT_SOURCE_DIR}/tests")
target_link_libraries(quirn_hostile_front_end PRIVATE quirn_core)
