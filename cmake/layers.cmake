# SPDX-FileCopyrightText: Quirn contributors
# SPDX-License-Identifier: GPL-3.0-or-later

# quirn_layer(NAME [IN_MODULE] [DEPENDS layer...] [LINKS library...])
#
# The sources of src/NAME as the static library quirn_NAME. DEPENDS are the layers below it, LINKS
# the libraries that its sources alone include. A folder without sources is left out, until it gets
# one. A layer IN_MODULE is compiled for a shared module, and linked by no program but its tests; it
# is left out where one of the libraries that it links is not there.
function(quirn_layer name)
  cmake_parse_arguments(PARSE_ARGV 1 layer "IN_MODULE" "" "DEPENDS;LINKS")
  file(GLOB_RECURSE sources CONFIGURE_DEPENDS "${PROJECT_SOURCE_DIR}/src/${name}/*.cpp")
  file(GLOB_RECURSE headers CONFIGURE_DEPENDS "${PROJECT_SOURCE_DIR}/src/${name}/*.h")
  list(FILTER sources EXCLUDE REGEX "/(main|module/module)\\.cpp$")
  get_property(in_modules GLOBAL PROPERTY QUIRN_MODULE_SOURCES)
  if(in_modules)
    list(REMOVE_ITEM sources ${in_modules})
  endif()
  if(NOT sources OR (layer_IN_MODULE AND NOT layer_LINKS))
    return()
  endif()

  add_library(quirn_${name} STATIC ${sources})
  # As a header set, so that the build can compile every header alone.
  target_sources(
    quirn_${name} PUBLIC FILE_SET HEADERS BASE_DIRS "${PROJECT_SOURCE_DIR}/src" FILES ${headers})
  if(layer_IN_MODULE)
    # Not the precompiled header, which is for programs: shared code is compiled in another way.
    target_compile_options(quirn_${name} PRIVATE -fPIC)
    # Qt's words for moc would otherwise be macros in everything that its headers are included with.
    target_compile_definitions(quirn_${name} PUBLIC QT_NO_KEYWORDS)
  else()
    target_precompile_headers(quirn_${name} REUSE_FROM quirn_precompiled)
    set_property(GLOBAL APPEND PROPERTY QUIRN_LAYERS quirn_${name})
  endif()
  target_link_libraries(quirn_${name} PUBLIC fmt::fmt PRIVATE ${layer_LINKS})
  foreach(below IN LISTS layer_DEPENDS)
    if(TARGET quirn_${below})
      target_link_libraries(quirn_${name} PUBLIC quirn_${below})
    endif()
  endforeach()
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
