# SPDX-License-Identifier: Apache-2.0
# Warnings and sanitizers of our own code.

function(kel_compile_settings target)
    target_compile_options(${target} PRIVATE -Wall -Wextra -Wpedantic -Wconversion -Wshadow -Wnon-virtual-dtor)
    if(KEL_WERROR)
        target_compile_options(${target} PRIVATE -Werror)
    endif()
    if(KEL_SANITIZE)
        target_compile_options(${target} PRIVATE -fsanitize=${KEL_SANITIZE} -fno-omit-frame-pointer -g)
        target_link_options(${target} PRIVATE -fsanitize=${KEL_SANITIZE})
        if(KEL_SANITIZE MATCHES "undefined")
            target_compile_options(${target} PRIVATE -fno-sanitize-recover=undefined)
        endif()
    endif()
endfunction()

# Texts become QString and colours QBrush where the code says so, never by accident.
function(kel_qt_settings target)
    set_target_properties(${target} PROPERTIES AUTOMOC ON AUTORCC ON)
    target_compile_definitions(${target} PRIVATE QT_DEPRECATED_WARNINGS QT_NO_CAST_TO_ASCII QT_NO_KEYWORDS
                                                 QT_NO_URL_CAST_FROM_STRING)
endfunction()
