<?xml version="1.0" encoding="utf-8"?>
<!-- SPDX-License-Identifier: Apache-2.0 -->
<!DOCTYPE TS>
<TS version="2.1" language="de" sourcelanguage="en">
<context>
    <name>KelInterface</name>
    <message>
        <source>Success.</source>
        <translation>Erfolgreich.</translation>
    </message>
    <message>
        <source>The device or interface is not open.</source>
        <translation>Das Gerät oder die Schnittstelle ist nicht geöffnet.</translation>
    </message>
    <message>
        <source>The device does not support this.</source>
        <translation>Das Gerät unterstützt dies nicht.</translation>
    </message>
    <message>
        <source>A parameter is not valid.</source>
        <translation>Ein Parameter ist ungültig.</translation>
    </message>
    <message>
        <source>Another step is needed first.</source>
        <translation>Zuvor ist ein anderer Schritt nötig.</translation>
    </message>
    <message>
        <source>The system is out of memory, sockets or threads.</source>
        <translation>Dem System fehlen Speicher, Sockets oder Threads.</translation>
    </message>
    <message>
        <source>The device did not answer in time.</source>
        <translation>Das Gerät hat nicht rechtzeitig geantwortet.</translation>
    </message>
    <message>
        <source>Another program is using the device.</source>
        <translation>Ein anderes Programm verwendet das Gerät.</translation>
    </message>
    <message>
        <source>The device or its network cannot be reached.</source>
        <translation>Das Gerät oder sein Netzwerk ist nicht erreichbar.</translation>
    </message>
    <message>
        <source>The system or the device does not permit this.</source>
        <translation>Das System oder das Gerät erlaubt dies nicht.</translation>
    </message>
    <message>
        <source>The answer of the device was not understood.</source>
        <translation>Die Antwort des Geräts wurde nicht verstanden.</translation>
    </message>
    <message>
        <source>Cancelled.</source>
        <translation>Abgebrochen.</translation>
    </message>
    <message>
        <source>The file of the GenTL producer does not exist.</source>
        <translation>Die Datei des GenTL-Producers ist nicht vorhanden.</translation>
    </message>
    <message>
        <source>The file is not a GenTL producer that can be loaded.</source>
        <translation>Die Datei ist kein ladbarer GenTL-Producer.</translation>
    </message>
    <message>
        <source>The GenTL producer reported an error.</source>
        <translation>Der GenTL-Producer hat einen Fehler gemeldet.</translation>
    </message>
    <message>
        <source>The GenTL producer is not open.</source>
        <translation>Der GenTL-Producer ist nicht geöffnet.</translation>
    </message>
    <message>
        <source>The GenTL producer crashed or hung when it was tried, so it is not loaded.</source>
        <translation>Der GenTL-Producer ist beim Probelauf abgestürzt oder hängen geblieben und wird deshalb nicht geladen.</translation>
    </message>
    <message>
        <source>Unknown error.</source>
        <translation>Unbekannter Fehler.</translation>
    </message>
</context>
</TS>
