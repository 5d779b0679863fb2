# SPDX-License-Identifier: Apache-2.0
# Translations are kept as .ts files and compiled in as ":/translations/<name>_<locale>.qm". lrelease is a
# program of the building machine, also when the build is for another one.
include(KelResources)

set(KEL_LOCALES en zh_CN de)

# kel_add_translations(TARGET NAME [catalogue...])
# Compiles the catalogue NAME in every locale into the target; further catalogues are merged into it, so that
# a host needs one translator only. The target is a shared library or a program.
function(kel_add_translations target name)
    set(folder ${CMAKE_CURRENT_BINARY_DIR}/translations)
    file(MAKE_DIRECTORY ${folder})
    set(entries "")
    set(compiled "")
    foreach(locale IN LISTS KEL_LOCALES)
        set(sources "")
        foreach(catalogue IN ITEMS ${name} ${ARGN})
            list(APPEND sources ${PROJECT_SOURCE_DIR}/translations/${catalogue}_${locale}.ts)
        endforeach()
        set(qm ${folder}/${name}_${locale}.qm)
        add_custom_command(OUTPUT ${qm} COMMAND Qt5::lrelease -silent ${sources} -qm ${qm} DEPENDS ${sources} VERBATIM)
        list(APPEND compiled ${qm})
        string(APPEND entries "    <file alias=\"${name}_${locale}.qm\">${qm}</file>\n")
    endforeach()

    set(qrc ${folder}/${target}_translations.qrc)
    file(CONFIGURE OUTPUT ${qrc} @ONLY CONTENT
         "<RCC>\n<qresource prefix=\"/translations\">\n@entries@</qresource>\n</RCC>\n")
    kel_add_resource(${target} ${qrc} DEPENDS ${compiled})
endfunction()
