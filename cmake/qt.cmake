# SPDX-FileCopyrightText: Quirn contributors
# SPDX-License-Identifier: GPL-3.0-or-later

# QUIRN_QT: the libraries of the window; empty in a build without one.

option(QUIRN_WINDOW "Build the window, with Qt 6" ON)
set(QUIRN_QT "")
if(QUIRN_WINDOW)
  find_package(Qt6 6.4 REQUIRED COMPONENTS Widgets Svg DBus)
  set(QUIRN_QT Qt6::Widgets Qt6::Svg Qt6::DBus)
endif()
