# The Debian package; each distribution builds its own, since the names of the libraries differ.
set(debian "${CMAKE_CURRENT_LIST_DIR}")
add_custom_command(OUTPUT changelog.gz
  COMMAND "${debian}/changelog.sh" "${PROJECT_SOURCE_DIR}/CHANGELOG.md" "${TILORA_MAINTAINER}" > changelog
  COMMAND "${TILORA_GZIP}" -9 --no-name --force changelog
  DEPENDS "${debian}/changelog.sh" "${PROJECT_SOURCE_DIR}/CHANGELOG.md"
  VERBATIM)
list(APPEND documents changelog.gz)

install(FILES "${CMAKE_CURRENT_BINARY_DIR}/changelog.gz" "${debian}/copyright" DESTINATION "${CMAKE_INSTALL_DATADIR}/doc/tilora"
        COMPONENT debian EXCLUDE_FROM_ALL)

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME tilora)
set(CPACK_PACKAGE_VENDOR "${TILORA_VENDOR}")
set(CPACK_PACKAGE_CONTACT "${TILORA_MAINTAINER}")
# The usual stripping leaves what the compiler calls itself.
set(CPACK_PRE_BUILD_SCRIPTS "${debian}/strip.cmake")
set(CPACK_COMPONENTS_ALL programs debian)
set(CPACK_COMPONENTS_GROUPING ALL_COMPONENTS_IN_ONE)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_COMPRESSION_TYPE xz)
set(CPACK_DEBIAN_PACKAGE_SECTION x11)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
# What the programs are linked with finds itself; the modules of QML they load by name.
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_DEPENDS "qml6-module-qtqml, qml6-module-qtqml-workerscript, qml6-module-qtquick")
if(TILORA_HOMEPAGE)
  set(CPACK_DEBIAN_PACKAGE_HOMEPAGE "${TILORA_HOMEPAGE}")
endif()
# Opening the browser and the folder of login items; the certificates by which the update check knows its site.
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS "ca-certificates, xdg-utils")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "tiles the windows of the desktop you already use")
set(CPACK_DEBIAN_PACKAGE_DESCRIPTION
"Tilora runs beside the window manager of an X11 session. It shows on each
screen one window or a pair of windows, and hides the rest until you switch to
them. Four shortcuts give the active window the left half, the right half or
the whole of its screen, or let it float; its place is remembered.

It works with every window manager that follows the EWMH standard, and asks
before it touches a window.")
include(CPack)
