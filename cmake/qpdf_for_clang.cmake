# SPDX-FileCopyrightText: Quirn contributors
# SPDX-License-Identifier: GPL-3.0-or-later

# In C++20, clang asks for the whole of an element type where a vector of it might be destroyed, and a header of libqpdf
# 11.3 defines such functions inside the element's own class. A copy of it declares them alone; they are the library's.

if(NOT CMAKE_CXX_COMPILER_ID STREQUAL "Clang")
  return()
endif()

find_path(QPDF_HEADERS qpdf/JSON.hh REQUIRED)
file(READ "${QPDF_HEADERS}/qpdf/JSON.hh" header)
string(REGEX REPLACE "JSON_array\\(\\) :[^}]*}" "JSON_array();" header "${header}")
string(REPLACE "virtual ~JSON_array() = default;" "virtual ~JSON_array();" header "${header}")
file(CONFIGURE OUTPUT "${PROJECT_BINARY_DIR}/qpdf_for_clang/qpdf/JSON.hh" CONTENT "${header}" @ONLY)
include_directories(BEFORE SYSTEM "${PROJECT_BINARY_DIR}/qpdf_for_clang")
