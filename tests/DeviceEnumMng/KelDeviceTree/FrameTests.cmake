# SPDX-License-Identifier: Apache-2.0

add_library(TreeFixture STATIC
    BridgeTest.cpp
    BridgeTest.h
    CameraTest.cpp
    CameraTest.h
    TreeFixture.cpp
    TreeFixture.h
    TreeTest.cpp
    TreeTest.h
)
target_link_libraries(TreeFixture PUBLIC Qt5::Widgets Qt5::Test CustomCtr KelAIndustryControlHeaders)
target_include_directories(TreeFixture PUBLIC ${CMAKE_CURRENT_SOURCE_DIR} ${PROJECT_SOURCE_DIR}/src
                                              ${PROJECT_SOURCE_DIR}/src/DeviceEnumMng/KelDeviceTree
                                              ${PROJECT_SOURCE_DIR}/tests/support/scripted)
target_compile_definitions(TreeFixture PRIVATE DEVICEENUMMNG_LIBRARY)
kel_qt_settings(TreeFixture)
kel_compile_settings(TreeFixture)

foreach(subject
    keldevicetree_cameras_creation
    keldevicetree_cameras_deletion
    keldevicetree_cameras_states
    keldevicetree_cameras_updates
    keldevicetree_containers_cards
    keldevicetree_containers_controllers
    keldevicetree_containers_events
    keldevicetree_containers_interfaces
    keldevicetree_containers_parents
    keldevicetree_frame
    keldevicetree_metatypes
    keldevicetreeindex
)
    kel_add_qt_test(tst_${subject} SOURCES tst_${subject}.cpp
                    LIBRARIES TreeFixture DeviceTreeTestKit KelDeviceTree KelGenTLMenu LABELS widget)
endforeach()
kel_add_qt_test(tst_keldevicelabels SOURCES tst_keldevicelabels.cpp
                LIBRARIES TreeFixture DeviceTreeTestKit KelDeviceTree KelGenTLMenu LABELS unit)
kel_add_qt_test(tst_kelrecorddigest SOURCES tst_kelrecorddigest.cpp
                LIBRARIES TreeFixture DeviceTreeTestKit KelDeviceTree KelGenTLMenu LABELS unit)

# Events cross from the workers' threads: also for the thread checker.
foreach(concern
    events
    lifetime
    passends
    passes
    remote
)
    kel_add_qt_test(tst_keldevicetree_bridge_${concern} SOURCES tst_keldevicetree_bridge_${concern}.cpp
                    LIBRARIES TreeFixture DeviceTreeTestKit KelDeviceTree KelGenTLMenu LABELS widget threads)
endforeach()
kel_add_qt_test(tst_keldevicetree_takenback SOURCES tst_keldevicetree_takenback.cpp
                LIBRARIES TreeFixture DeviceTreeTestKit KelDeviceTree KelGenTLMenu LABELS widget threads)

# The shipped library, with the scripted device access in the place of the real one.
kel_add_qt_test(tst_keldevicetree_shipped SOURCES tst_keldevicetree_shipped.cpp
                LIBRARIES DeviceEnumMng ScriptedAccessClient LABELS widget)
kel_use_scripted_access(tst_keldevicetree_shipped)
