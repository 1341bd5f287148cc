# SPDX-FileCopyrightText: Quirn contributors
# SPDX-License-Identifier: GPL-3.0-or-later

# The window as the module that the program opens for it, with the icons inside.

if(NOT TARGET quirn_window)
  return()
endif()

set_target_properties(quirn_window PROPERTIES AUTOMOC ON)
qt_add_resources(window_resources "${PROJECT_SOURCE_DIR}/src/window/icons.qrc")
target_sources(quirn_window PRIVATE ${window_resources})
target_precompile_headers(quirn_window PRIVATE <QtWidgets> <fmt/format.h> "${PROJECT_SOURCE_DIR}/src/shell/workspace_session.h")

add_library(quirn_module_window MODULE "${PROJECT_SOURCE_DIR}/src/window/module/module.cpp")
set_target_properties(quirn_module_window PROPERTIES OUTPUT_NAME "quirn-window")
target_compile_options(quirn_module_window PRIVATE -fPIC)
target_compile_definitions(quirn_module_window PRIVATE QT_NO_KEYWORDS)
# The archive alone, without the layers below, which the program lends.
target_link_libraries(quirn_module_window PRIVATE fmt::fmt "$<TARGET_FILE:quirn_window>" ${QUIRN_QT})
add_dependencies(quirn_module_window quirn_window)
add_dependencies(quirn quirn_module_window)
install(TARGETS quirn_module_window LIBRARY DESTINATION "${QUIRN_MODULE_FOLDER}")
