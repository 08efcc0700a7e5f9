# SPDX-License-Identifier: MIT
# The Debian package: "cpack --preset deb". packaging/windows/build makes those for Windows.

set(CPACK_PACKAGE_NAME vextral-remote-control)
set(CPACK_PACKAGE_VENDOR "The Vextral Remote Control authors")
set(CPACK_PACKAGE_CONTACT "The Vextral Remote Control authors <authors@vextral.invalid>")
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY ${PROJECT_DESCRIPTION})
set(CPACK_RESOURCE_FILE_LICENSE ${CMAKE_CURRENT_SOURCE_DIR}/LICENSE)
set(CPACK_STRIP_FILES ON)
set(CPACK_VERBATIM_VARIABLES ON)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
    OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION hamradio)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_DESCRIPTION
"The station's antenna switch, stack switch or rotator on the screen: one window,
one serial line, every lamp where the box has it. An azimuthal map shows where
each antenna points. A simulated box to try everything with is part of the
package.")

include(CPack)
