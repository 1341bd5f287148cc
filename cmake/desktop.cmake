# SPDX-FileCopyrightText: Quirn contributors
# SPDX-License-Identifier: GPL-3.0-or-later

# What desktops and shells read: most of it made from the registry by a program of the build, and put
# where they look for it.

include(GNUInstallDirs)
find_program(GZIP_PROGRAM gzip REQUIRED)

add_executable(quirn_desktop_files "${PROJECT_SOURCE_DIR}/src/desktop/main.cpp")
target_precompile_headers(quirn_desktop_files REUSE_FROM quirn_precompiled)
target_link_libraries(quirn_desktop_files PRIVATE quirn_desktop)

set(generated "${PROJECT_BINARY_DIR}/share")
add_custom_command(
  OUTPUT "${PROJECT_BINARY_DIR}/share.stamp"
  COMMAND "${CMAKE_COMMAND}" -E rm -rf "${generated}"
  COMMAND quirn_desktop_files "${generated}" "${CMAKE_INSTALL_FULL_BINDIR}/quirn"
  COMMAND "${GZIP_PROGRAM}" -9n "${generated}/man/man1/quirn.1"
  COMMAND "${GZIP_PROGRAM}" -9nc "${PROJECT_SOURCE_DIR}/packaging/changelog" > "${generated}/changelog.gz"
  COMMAND "${CMAKE_COMMAND}" -E touch "${PROJECT_BINARY_DIR}/share.stamp"
  DEPENDS quirn_desktop_files "${PROJECT_SOURCE_DIR}/packaging/changelog"
  VERBATIM)
add_custom_target(quirn_share ALL DEPENDS "${PROJECT_BINARY_DIR}/share.stamp")

install(DIRECTORY "${generated}/" DESTINATION "${CMAKE_INSTALL_DATADIR}" USE_SOURCE_PERMISSIONS
        PATTERN "changelog.gz" EXCLUDE)
install(FILES "${generated}/changelog.gz" "${PROJECT_SOURCE_DIR}/packaging/copyright"
        DESTINATION "${CMAKE_INSTALL_DOCDIR}")
install(FILES "${PROJECT_SOURCE_DIR}/packaging/lintian-overrides"
        DESTINATION "${CMAKE_INSTALL_DATADIR}/lintian/overrides" RENAME quirn)
install(FILES "${PROJECT_SOURCE_DIR}/packaging/com.morvanta.Quirn.metainfo.xml"
        DESTINATION "${CMAKE_INSTALL_DATADIR}/metainfo")
install(FILES "${PROJECT_SOURCE_DIR}/src/window/quirn.svg"
        DESTINATION "${CMAKE_INSTALL_DATADIR}/icons/hicolor/scalable/apps" RENAME com.morvanta.Quirn.svg)

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME quirn)
set(CPACK_PACKAGE_CONTACT "Quirn contributors <quirn@morvanta.com>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "toolbox for files that works on this computer alone")
set(CPACK_DEBIAN_PACKAGE_DESCRIPTION
"Drop some files, and Quirn proposes what can be done with exactly those:
merge and split documents, convert and compress, check and compare, pack
and unpack. Nothing is sent anywhere, inputs are never changed, and files
of strangers are read in a locked process. All of it works from the
terminal as well.")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION utils)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
# Those that are opened when they are needed, which no one finds in the program.
set(CPACK_DEBIAN_PACKAGE_DEPENDS "libglib2.0-0, libicu72, libpangocairo-1.0-0, libxml2, shared-mime-info, tzdata")
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS "qt6-qpa-plugins, qt6-wayland")
set(CPACK_STRIP_FILES ON)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
    OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
include(CPack)
