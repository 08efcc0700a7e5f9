# SPDX-License-Identifier: MIT
# What "cmake --install" puts where. Packaging.cmake makes packages of it.

if(WIN32)
    # One folder that may lie anywhere: the programs, which hold all that they need of Qt, and the map.
    install(TARGETS vextral-remote-control vextral-rotator vextral-simbox RUNTIME DESTINATION .)
    install(FILES resources/maps/AzimuthalMap.png DESTINATION .)
    return()
endif()

include(GNUInstallDirs)
set(programFolder lib/vextral-remote-control)
set(pageFolder ${CMAKE_INSTALL_MANDIR}/man1)
set(iconFolder ${CMAKE_INSTALL_DATADIR}/icons/hicolor)
set(docFolder ${CMAKE_INSTALL_DATADIR}/doc/vextral-remote-control)

# The programs save beside themselves, so people start them through the launcher, which says how.
install(TARGETS vextral-remote-control vextral-rotator RUNTIME DESTINATION ${programFolder})
install(FILES resources/maps/AzimuthalMap.png DESTINATION ${programFolder})
foreach(program vextral-remote-control vextral-rotator)
    install(PROGRAMS packaging/linux/launcher.sh DESTINATION bin RENAME ${program})
    install(FILES packaging/linux/${program}.1 DESTINATION ${pageFolder})
endforeach()
if(TARGET vextral-simbox)
    install(TARGETS vextral-simbox RUNTIME DESTINATION bin)
    install(FILES packaging/linux/vextral-simbox.1 DESTINATION ${pageFolder})
endif()

install(FILES packaging/linux/vextral-remote-control.desktop DESTINATION ${CMAKE_INSTALL_DATADIR}/applications)
install(FILES packaging/linux/org.vextral.remotecontrol.metainfo.xml DESTINATION ${CMAKE_INSTALL_DATADIR}/metainfo)
install(FILES resources/sources/Vextral.svg DESTINATION ${iconFolder}/scalable/apps RENAME vextral-remote-control.svg)
foreach(size 16 24 32 48 64 128 256)
    install(FILES packaging/icons/${size}.png DESTINATION ${iconFolder}/${size}x${size}/apps
            RENAME vextral-remote-control.png)
endforeach()

install(FILES LICENSE DESTINATION ${docFolder} RENAME copyright)
install(FILES CHANGELOG.md DESTINATION ${docFolder})
install(DIRECTORY docs/ DESTINATION ${docFolder} FILES_MATCHING
        PATTERN manual.md PATTERN "manual/*.md" PATTERN protocol.md PATTERN "images/*.png")
