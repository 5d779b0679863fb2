# SPDX-License-Identifier: Apache-2.0

# The images, as the shared library has them.
add_library(DeviceTreeImages OBJECT DeviceTreeImages.cpp)
kel_device_images(DeviceTreeImages)

# The tree with its private part, and a scripted device access below it.
add_library(DeviceTreeInside INTERFACE)
target_sources(DeviceTreeInside INTERFACE $<TARGET_OBJECTS:KelDeviceTree> $<TARGET_OBJECTS:KelGenTLMenu>
                                          $<TARGET_OBJECTS:DeviceTreeImages>)
target_link_libraries(DeviceTreeInside INTERFACE CustomCtr CommonTools DevicesEnum ScriptedDeviceAccess Qt5::Widgets)
target_compile_definitions(DeviceTreeInside INTERFACE DEVICEENUMMNG_LIBRARY)
target_include_directories(DeviceTreeInside INTERFACE ${CMAKE_CURRENT_SOURCE_DIR}
                                                      ${PROJECT_SOURCE_DIR}/src/DeviceEnumMng/KelDeviceTree)

add_library(TreeFixture STATIC TreeFixture.cpp TreeFixture.h)
target_link_libraries(TreeFixture PUBLIC Qt5::Widgets Qt5::Test CustomCtr KelAIndustryControlHeaders)
target_include_directories(TreeFixture PUBLIC ${CMAKE_CURRENT_SOURCE_DIR} ${PROJECT_SOURCE_DIR}/src
                                              ${PROJECT_SOURCE_DIR}/src/DeviceEnumMng/KelDeviceTree
                                              ${PROJECT_SOURCE_DIR}/tests/support/scripted)
target_compile_definitions(TreeFixture PRIVATE DEVICEENUMMNG_LIBRARY)
kel_qt_settings(TreeFixture)
kel_compile_settings(TreeFixture)

foreach(subject
    keldevicetree_cameras
    keldevicetree_containers
    keldevicetree_frame
    keldevicetreeindex
)
    kel_add_qt_test(tst_${subject} SOURCES tst_${subject}.cpp
                    LIBRARIES TreeFixture DeviceTreeInside LABELS widget)
endforeach()
kel_add_qt_test(tst_keldevicelabels SOURCES tst_keldevicelabels.cpp
                LIBRARIES TreeFixture DeviceTreeInside LABELS unit)
kel_add_qt_test(tst_kelrecorddigest SOURCES tst_kelrecorddigest.cpp
                LIBRARIES TreeFixture DeviceTreeInside LABELS unit)

# Events cross from the workers' threads: also for the thread checker.
kel_add_qt_test(tst_keldevicetree_bridge SOURCES tst_keldevicetree_bridge.cpp
                LIBRARIES TreeFixture DeviceTreeInside LABELS widget threads)

# The shipped library, with the scripted device access in the place of the real one.
kel_add_qt_test(tst_keldevicetree_shipped SOURCES tst_keldevicetree_shipped.cpp
                LIBRARIES DeviceEnumMng ScriptedAccessClient LABELS widget)
kel_use_scripted_access(tst_keldevicetree_shipped)
