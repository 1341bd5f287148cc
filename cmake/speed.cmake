# SPDX-FileCopyrightText: Quirn contributors
# SPDX-License-Identifier: GPL-3.0-or-later

# A faster build where the tools for it are there; nothing here changes what is built.

find_program(QUIRN_CCACHE ccache)
if(QUIRN_CCACHE AND NOT CMAKE_CXX_COMPILER_LAUNCHER)
  # Without the sloppiness a precompiled header would keep every file out of the cache; the base
  # folder lets one clone use what another has compiled.
  set(CMAKE_CXX_COMPILER_LAUNCHER
      env CCACHE_SLOPPINESS=pch_defines,time_macros,include_file_mtime,include_file_ctime
      "CCACHE_BASEDIR=${PROJECT_SOURCE_DIR}" CCACHE_NOHASHDIR=1 ${QUIRN_CCACHE})
endif()

find_program(QUIRN_FAST_LINKER NAMES mold ld.lld)
if(QUIRN_FAST_LINKER MATCHES "mold$")
  add_link_options(-fuse-ld=mold)
elseif(QUIRN_FAST_LINKER)
  add_link_options(-fuse-ld=lld)
endif()
