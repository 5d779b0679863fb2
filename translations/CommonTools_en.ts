<?xml version="1.0" encoding="utf-8"?>
<!-- SPDX-License-Identifier: Apache-2.0 -->
<!DOCTYPE TS>
<TS version="2.1" language="en" sourcelanguage="en">
<context>
    <name>KelInterface</name>
    <message>
        <source>Success.</source>
        <translation>Success.</translation>
    </message>
    <message>
        <source>The device or interface is not open.</source>
        <translation>The device or interface is not open.</translation>
    </message>
    <message>
        <source>The device does not support this.</source>
        <translation>The device does not support this.</translation>
    </message>
    <message>
        <source>A parameter is not valid.</source>
        <translation>A parameter is not valid.</translation>
    </message>
    <message>
        <source>Another step is needed first.</source>
        <translation>Another step is needed first.</translation>
    </message>
    <message>
        <source>The system is out of memory, sockets or threads.</source>
        <translation>The system is out of memory, sockets or threads.</translation>
    </message>
    <message>
        <source>The device did not answer in time.</source>
        <translation>The device did not answer in time.</translation>
    </message>
    <message>
        <source>Another program is using the device.</source>
        <translation>Another program is using the device.</translation>
    </message>
    <message>
        <source>The device or its network cannot be reached.</source>
        <translation>The device or its network cannot be reached.</translation>
    </message>
    <message>
        <source>The system or the device does not permit this.</source>
        <translation>The system or the device does not permit this.</translation>
    </message>
    <message>
        <source>The answer of the device was not understood.</source>
        <translation>The answer of the device was not understood.</translation>
    </message>
    <message>
        <source>Cancelled.</source>
        <translation>Cancelled.</translation>
    </message>
    <message>
        <source>The file of the GenTL producer does not exist.</source>
        <translation>The file of the GenTL producer does not exist.</translation>
    </message>
    <message>
        <source>The file is not a GenTL producer that can be loaded.</source>
        <translation>The file is not a GenTL producer that can be loaded.</translation>
    </message>
    <message>
        <source>The GenTL producer reported an error.</source>
        <translation>The GenTL producer reported an error.</translation>
    </message>
    <message>
        <source>The GenTL producer is not open.</source>
        <translation>The GenTL producer is not open.</translation>
    </message>
    <message>
        <source>The GenTL producer crashed or hung when it was tried, so it is not loaded.</source>
        <translation>The GenTL producer crashed or hung when it was tried, so it is not loaded.</translation>
    </message>
    <message>
        <source>Unknown error.</source>
        <translation>Unknown error.</translation>
    </message>
</context>
</TS>
