# SPDX-FileCopyrightText: Quirn contributors
# SPDX-License-Identifier: GPL-3.0-or-later

# quirn_layer(NAME [DEPENDS layer...] [LINKS library...])
#
# The sources of src/NAME as the static library quirn_NAME. DEPENDS are the layers below it, LINKS
# the libraries that its sources alone include. A folder without sources is left out, until it gets
# one.
function(quirn_layer name)
  cmake_parse_arguments(PARSE_ARGV 1 layer "" "" "DEPENDS;LINKS")
  file(GLOB_RECURSE sources CONFIGURE_DEPENDS "${PROJECT_SOURCE_DIR}/src/${name}/*.cpp")
  file(GLOB_RECURSE headers CONFIGURE_DEPENDS "${PROJECT_SOURCE_DIR}/src/${name}/*.h")
  list(FILTER sources EXCLUDE REGEX "/main\\.cpp$")
  get_property(in_modules GLOBAL PROPERTY QUIRN_MODULE_SOURCES)
  if(in_modules)
    list(REMOVE_ITEM sources ${in_modules})
  endif()
  if(NOT sources)
    return()
  endif()

  add_library(quirn_${name} STATIC ${sources})
  # As a header set, so that the build can compile every header alone.
  target_sources(
    quirn_${name} PUBLIC FILE_SET HEADERS BASE_DIRS "${PROJECT_SOURCE_DIR}/src" FILES ${headers})
  target_precompile_headers(quirn_${name} REUSE_FROM quirn_precompiled)
  target_link_libraries(quirn_${name} PUBLIC fmt::fmt PRIVATE ${layer_LINKS})
  foreach(below IN LISTS layer_DEPENDS)
    if(TARGET quirn_${below})
      target_link_libraries(quirn_${name} PUBLIC quirn_${below})
    endif()
  endforeach()
  set_property(GLOBAL APPEND PROPERTY QUIRN_LAYERS quirn_${name})
endfunction()

# quirn_program(NAME LAYER): src/LAYER/main.cpp linked with its layer as the installed program NAME.
function(quirn_program name layer)
  set(main "${PROJECT_SOURCE_DIR}/src/${layer}/main.cpp")
  if(NOT EXISTS "${main}")
    return()
  endif()
  add_executable(${name} "${main}")
  target_precompile_headers(${name} REUSE_FROM quirn_precompiled)
  target_link_libraries(${name} PRIVATE quirn_${layer})
  quirn_loads_modules(${name})
  install(TARGETS ${name} RUNTIME DESTINATION "${CMAKE_INSTALL_BINDIR}")
  install(FILES README.md LICENSE DESTINATION "${CMAKE_INSTALL_DOCDIR}")
  install(DIRECTORY docs/ DESTINATION "${CMAKE_INSTALL_DOCDIR}")
endfunction()
