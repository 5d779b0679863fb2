# SPDX-License-Identifier: Apache-2.0
# Images are kept as SVG and compiled in as PNG, so that no program needs an SVG plug-in at run time.
# rsvg-convert is a program of the building machine, also when the build is for another one.
include(KelResources)

find_program(KEL_RSVG_CONVERT rsvg-convert REQUIRED DOC "Renders SVG images (Debian package librsvg2-bin)")

# kel_add_images(TARGET NAME resource-folder svg...)
# Compiles each name.svg into the target as resource-folder/name.png, name@2x.png and name@3x.png. NAME tells
# the calls for one target apart. The target is a shared library or a program: static ones lose resources.
function(kel_add_images target name resource_folder)
    set(folder ${CMAKE_CURRENT_BINARY_DIR}/images/${name})
    set(entries "")
    set(images "")
    foreach(svg IN LISTS ARGN)
        get_filename_component(svg ${svg} ABSOLUTE)
        get_filename_component(base ${svg} NAME_WE)
        set(rendered "")
        set(commands "")
        foreach(scale 1 2 3)
            set(file ${base}@${scale}x.png)
            if(scale EQUAL 1)
                set(file ${base}.png)
            endif()
            list(APPEND rendered ${folder}/${file})
            list(APPEND commands COMMAND ${KEL_RSVG_CONVERT} --zoom ${scale} --output ${folder}/${file} ${svg})
            string(APPEND entries "    <file alias=\"${file}\">${folder}/${file}</file>\n")
        endforeach()
        add_custom_command(OUTPUT ${rendered} ${commands} DEPENDS ${svg} VERBATIM)
        list(APPEND images ${rendered})
    endforeach()

    file(MAKE_DIRECTORY ${folder})
    set(qrc ${CMAKE_CURRENT_BINARY_DIR}/images/${target}_${name}.qrc)
    file(CONFIGURE OUTPUT ${qrc} @ONLY CONTENT
         "<RCC>\n<qresource prefix=\"@resource_folder@\">\n@entries@</qresource>\n</RCC>\n")
    kel_add_resource(${target} ${qrc} DEPENDS ${images})
endfunction()
