# SPDX-License-Identifier: MIT
# vextral_windows_resource(<target> <description>): icon and version of a program, as Windows shows them. Call it
# after the OUTPUT_NAME is set.
function(vextral_windows_resource target description)
    get_target_property(file ${target} OUTPUT_NAME)
    if(NOT file)
        set(file ${target})
    endif()
    set(VEXTRAL_FILE ${file})
    set(VEXTRAL_DESCRIPTION ${description})
    set(VEXTRAL_ICON ${CMAKE_CURRENT_FUNCTION_LIST_DIR}/../packaging/windows/VextralRemoteControl.ico)
    configure_file(${CMAKE_CURRENT_FUNCTION_LIST_DIR}/../packaging/windows/VextralRemoteControl.rc.in
                   ${CMAKE_CURRENT_BINARY_DIR}/${target}.rc @ONLY)
    target_sources(${target} PRIVATE ${CMAKE_CURRENT_BINARY_DIR}/${target}.rc)
endfunction()
