# The packages: "cpack --preset deb" on Debian, "cpack --preset windows" for the portable ZIP and the installer.

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

if(WIN32)
    set(CPACK_GENERATOR ZIP NSIS)
    set(CPACK_PACKAGE_INSTALL_DIRECTORY "Vextral Remote Control")
    set(CPACK_PACKAGE_FILE_NAME VextralRemoteControl-${PROJECT_VERSION}-windows)
    set(CPACK_PACKAGE_EXECUTABLES
        VextralRemoteControl "Vextral Remote Control"
        vextral-rotator "Vextral Remote Control - Rotator")
    set(CPACK_NSIS_DISPLAY_NAME "Vextral Remote Control")
    set(CPACK_NSIS_PACKAGE_NAME "Vextral Remote Control")
    set(CPACK_NSIS_EXECUTABLES_DIRECTORY .)
    set(CPACK_NSIS_INSTALLED_ICON_NAME VextralRemoteControl.exe)
    set(CPACK_NSIS_MUI_ICON ${CMAKE_CURRENT_SOURCE_DIR}/packaging/windows/VextralRemoteControl.ico)
    set(CPACK_NSIS_MUI_UNIICON ${CPACK_NSIS_MUI_ICON})
    set(CPACK_NSIS_MANIFEST_DPI_AWARE ON)
    # The programs save beside themselves, so the folder is the user's own, and no administrator is needed. It is not
    # given as CPack's root, which the installer would turn into the user's documents.
    set(CPACK_NSIS_DEFINES [[
  RequestExecutionLevel user
  InstallDir "$LOCALAPPDATA\Programs\Vextral Remote Control"]])
    # A map that the user put in place outlives a newer version, and a removal as AzimuthalMap.own.
    set(keepMap [[Rename "$INSTDIR\AzimuthalMap.png" "$INSTDIR\AzimuthalMap.own"]])
    set(CPACK_NSIS_EXTRA_PREINSTALL_COMMANDS ${keepMap})
    set(CPACK_NSIS_EXTRA_UNINSTALL_COMMANDS ${keepMap})
    set(CPACK_NSIS_EXTRA_INSTALL_COMMANDS [[
  IfFileExists "$INSTDIR\AzimuthalMap.own" 0 +3
  Delete "$INSTDIR\AzimuthalMap.png"
  Rename "$INSTDIR\AzimuthalMap.own" "$INSTDIR\AzimuthalMap.png"]])
else()
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
endif()

include(CPack)
