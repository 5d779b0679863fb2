# SPDX-License-Identifier: Apache-2.0

# kel_add_resource(TARGET qrc [DEPENDS file...])
# Compiles a resource collection into a shared library or a program.
function(kel_add_resource target qrc)
    cmake_parse_arguments(arg "" "" "DEPENDS" ${ARGN})
    get_filename_component(name ${qrc} NAME_WE)
    get_filename_component(qrc ${qrc} ABSOLUTE)
    set(source ${CMAKE_CURRENT_BINARY_DIR}/qrc_${name}.cpp)
    add_custom_command(OUTPUT ${source} COMMAND Qt5::rcc --name ${name} --output ${source} ${qrc}
                       DEPENDS ${qrc} ${arg_DEPENDS} VERBATIM)
    set_source_files_properties(${source} PROPERTIES SKIP_AUTOGEN ON)
    target_sources(${target} PRIVATE ${source})
endfunction()
