# SPDX-FileCopyrightText: Quirn contributors
# SPDX-License-Identifier: GPL-3.0-or-later

# Where an installed program finds its modules, relative to the prefix.
set(QUIRN_MODULE_FOLDER "${CMAKE_INSTALL_LIBDIR}/quirn")
add_compile_definitions("QUIRN_MODULE_FOLDER=\"${QUIRN_MODULE_FOLDER}\"")

# quirn_module(NAME SOURCES source... [LINKS library...] [BESIDE program])
#
# The shared module libquirn-NAME.so, which workers load: code that stands on a heavy library, and the operations that
# need it. Tests and fuzzers link the code itself, quirn_code_NAME. It has the layers below from the program that loads
# it, so there is one of each. Called before the layers, whose folders may hold SOURCES: they leave those out. Built into
# the folder of the program; installed, unless it says beside which other it belongs.
function(quirn_module name)
  cmake_parse_arguments(PARSE_ARGV 1 module "" "BESIDE" "SOURCES;LINKS")
  list(TRANSFORM module_SOURCES PREPEND "${PROJECT_SOURCE_DIR}/")
  set_property(GLOBAL APPEND PROPERTY QUIRN_MODULE_SOURCES ${module_SOURCES})
  add_library(quirn_code_${name} OBJECT ${module_SOURCES})
  # Not the precompiled header, which is for programs: shared code is compiled in another way.
  target_compile_options(quirn_code_${name} PRIVATE -fPIC)
  target_link_libraries(quirn_code_${name} PUBLIC fmt::fmt ${module_LINKS})
  add_library(quirn_module_${name} MODULE)
  target_link_libraries(quirn_module_${name} PRIVATE quirn_code_${name})
  set_target_properties(quirn_module_${name} PROPERTIES OUTPUT_NAME "quirn-${name}" LINKER_LANGUAGE CXX)
  if(module_BESIDE)
    set_target_properties(quirn_module_${name} PROPERTIES
      LIBRARY_OUTPUT_DIRECTORY "$<TARGET_FILE_DIR:${module_BESIDE}>")
    add_dependencies(${module_BESIDE} quirn_module_${name})
  else()
    install(TARGETS quirn_module_${name} LIBRARY DESTINATION "${QUIRN_MODULE_FOLDER}")
  endif()
endfunction()

# quirn_loads_modules(PROGRAM): the program carries all of the layers that modules build on, and lends
# them to its modules.
function(quirn_loads_modules program)
  set_target_properties(${program} PROPERTIES
    ENABLE_EXPORTS ON
    LINK_LIBRARY_OVERRIDE "WHOLE_ARCHIVE,quirn_shell,quirn_workbench,quirn_core,quirn_platform")
endfunction()
