# Installs the libraries that the installed programs need on Windows: Qt, its plugins and the compiler's runtime.

if(NOT TARGET Qt${VEXTRAL_QT_MAJOR}::qmake)
    return()
endif()
get_target_property(qmake Qt${VEXTRAL_QT_MAJOR}::qmake IMPORTED_LOCATION)
get_filename_component(qtPrograms ${qmake} DIRECTORY)
find_program(WINDEPLOYQT windeployqt HINTS ${qtPrograms} REQUIRED)

# MSVC's runtime goes in as libraries; windeployqt would put its whole installer there.
set(runtimeOption --compiler-runtime)
if(MSVC)
    set(runtimeOption --no-compiler-runtime)
    set(CMAKE_INSTALL_SYSTEM_RUNTIME_DESTINATION .)
    include(InstallRequiredSystemLibraries)
endif()

install(CODE "
    execute_process(
        COMMAND \"${WINDEPLOYQT}\" ${runtimeOption} --no-translations --no-opengl-sw
                \"\${CMAKE_INSTALL_PREFIX}/$<TARGET_FILE_NAME:vextral-remote-control>\"
                \"\${CMAKE_INSTALL_PREFIX}/$<TARGET_FILE_NAME:vextral-rotator>\"
        COMMAND_ERROR_IS_FATAL ANY)")
