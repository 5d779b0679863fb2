<?xml version="1.0" encoding="utf-8"?>
<!-- SPDX-License-Identifier: Apache-2.0 -->
<!DOCTYPE TS>
<TS version="2.1" language="de" sourcelanguage="en">
<context>
    <name>KelDeviceTree</name>
    <message>
        <source>All</source>
        <translation>Alle</translation>
    </message>
    <message>
        <source>Virtual Device</source>
        <translation>Virtuelle Geräte</translation>
    </message>
    <message>
        <source>Other Device</source>
        <translation>Andere Geräte</translation>
    </message>
    <message>
        <source>Searching for GenTL devices with the computer...</source>
        <translation>GenTL-Geräte am Computer werden gesucht …</translation>
    </message>
    <message>
        <source>Searching for CameraLink camera(s) in the same subnet with the computer...</source>
        <translation>CameraLink-Kameras im Subnetz des Computers werden gesucht …</translation>
    </message>
    <message>
        <source>Enumeration failed.</source>
        <translation>Suche fehlgeschlagen.</translation>
    </message>
    <message>
        <source>Refresh</source>
        <translation>Aktualisieren</translation>
    </message>
    <message>
        <source>Connect</source>
        <translation>Verbinden</translation>
    </message>
    <message>
        <source>Disconnect</source>
        <translation>Trennen</translation>
    </message>
    <message>
        <source>Choose producers</source>
        <translation>Producer auswählen</translation>
    </message>
</context>
<context>
    <name>KelGenTLMenu</name>
    <message>
        <source>Default Load</source>
        <translation>Standardmäßig laden</translation>
    </message>
    <message>
        <source>Import Cti File</source>
        <translation>CTI-Datei importieren</translation>
    </message>
    <message>
        <source>Default</source>
        <translation>Standard</translation>
    </message>
    <message>
        <source>Virtual Port</source>
        <translation>Virtueller Port</translation>
    </message>
    <message>
        <source>Select Cti File.</source>
        <translation>CTI-Datei auswählen</translation>
    </message>
    <message>
        <source>The cti file have been load.</source>
        <translation>Die CTI-Datei ist bereits geladen.</translation>
    </message>
    <message>
        <source>It is the default load cti file.</source>
        <translation>Diese CTI-Datei wird bereits standardmäßig geladen.</translation>
    </message>
    <message>
        <source>Prompt</source>
        <translation>Hinweis</translation>
    </message>
</context>
</TS>
