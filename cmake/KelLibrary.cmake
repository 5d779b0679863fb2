# SPDX-License-Identifier: Apache-2.0

# kel_add_shared_library(NAME HEADERS header... SOURCES source...)
# One of the four shared libraries: soname .so.1, only what it exports visible, its public headers
# installed under its own folder.
function(kel_add_shared_library name)
    cmake_parse_arguments(arg "" "" "HEADERS;SOURCES" ${ARGN})
    add_library(${name} SHARED ${arg_SOURCES} ${arg_HEADERS})
    add_library(DeviceEnumMng::${name} ALIAS ${name})
    set_target_properties(${name} PROPERTIES VERSION ${PROJECT_VERSION} SOVERSION 1)
    target_include_directories(${name} PUBLIC $<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}/src>
                                              $<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}>)
    target_compile_features(${name} PUBLIC cxx_std_17)
    if(NOT KEL_SANITIZE)
        target_link_options(${name} PRIVATE -Wl,--no-undefined)
    endif()
    kel_compile_settings(${name})
    install(TARGETS ${name} EXPORT DeviceEnumMngTargets LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR})
    install(FILES ${arg_HEADERS} DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/${name})
endfunction()
