# SPDX-License-Identifier: Apache-2.0
# find_package(DeviceEnumMng) with the targets DeviceEnumMng::DeviceEnumMng, ::KelAIndustryControl,
# ::CommonTools and ::CustomCtr.
include(CMakePackageConfigHelpers)

set(package_dir ${CMAKE_INSTALL_LIBDIR}/cmake/DeviceEnumMng)
install(EXPORT DeviceEnumMngTargets NAMESPACE DeviceEnumMng:: DESTINATION ${package_dir})
configure_package_config_file(${CMAKE_CURRENT_LIST_DIR}/DeviceEnumMngConfig.cmake.in
                              ${CMAKE_BINARY_DIR}/DeviceEnumMngConfig.cmake INSTALL_DESTINATION ${package_dir})
write_basic_package_version_file(${CMAKE_BINARY_DIR}/DeviceEnumMngConfigVersion.cmake
                                 COMPATIBILITY SameMajorVersion)
install(FILES ${CMAKE_BINARY_DIR}/DeviceEnumMngConfig.cmake ${CMAKE_BINARY_DIR}/DeviceEnumMngConfigVersion.cmake
        DESTINATION ${package_dir})
