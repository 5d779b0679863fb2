<?xml version="1.0" encoding="utf-8"?>
<!-- SPDX-License-Identifier: Apache-2.0 -->
<!DOCTYPE TS>
<TS version="2.1" language="en" sourcelanguage="en">
<context>
    <name>KelDeviceTree</name>
    <message>
        <source>All</source>
        <translation>All</translation>
    </message>
    <message>
        <source>Virtual Device</source>
        <translation>Virtual Device</translation>
    </message>
    <message>
        <source>Other Device</source>
        <translation>Other Device</translation>
    </message>
    <message>
        <source>Searching for GenTL devices with the computer...</source>
        <translation>Searching for GenTL devices with the computer...</translation>
    </message>
    <message>
        <source>Searching for CameraLink camera(s) in the same subnet with the computer...</source>
        <translation>Searching for CameraLink camera(s) in the same subnet with the computer...</translation>
    </message>
    <message>
        <source>Enumeration failed.</source>
        <translation>Enumeration failed.</translation>
    </message>
    <message>
        <source>Refresh</source>
        <translation>Refresh</translation>
    </message>
    <message>
        <source>Connect</source>
        <translation>Connect</translation>
    </message>
    <message>
        <source>Disconnect</source>
        <translation>Disconnect</translation>
    </message>
    <message>
        <source>Choose producers</source>
        <translation>Choose producers</translation>
    </message>
</context>
<context>
    <name>KelGenTLMenu</name>
    <message>
        <source>Default Load</source>
        <translation>Default Load</translation>
    </message>
    <message>
        <source>Import Cti File</source>
        <translation>Import Cti File</translation>
    </message>
    <message>
        <source>Default</source>
        <translation>Default</translation>
    </message>
    <message>
        <source>Virtual Port</source>
        <translation>Virtual Port</translation>
    </message>
    <message>
        <source>Select Cti File.</source>
        <translation>Select Cti File.</translation>
    </message>
    <message>
        <source>The cti file have been load.</source>
        <translation>The cti file have been load.</translation>
    </message>
    <message>
        <source>It is the default load cti file.</source>
        <translation>It is the default load cti file.</translation>
    </message>
    <message>
        <source>Prompt</source>
        <translation>Prompt</translation>
    </message>
</context>
</TS>
