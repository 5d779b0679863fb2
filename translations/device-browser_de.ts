<?xml version="1.0" encoding="utf-8"?>
<!-- SPDX-License-Identifier: Apache-2.0 -->
<!DOCTYPE TS>
<TS version="2.1" language="de" sourcelanguage="en">
<context>
    <name>CameraOverview</name>
    <message>
        <source>No cameras</source>
        <translation>Keine Kameras</translation>
    </message>
    <message>
        <source>%1 connected</source>
        <translation>%1 verbunden</translation>
    </message>
    <message>
        <source>%1 free</source>
        <translation>%1 frei</translation>
    </message>
    <message>
        <source>%1 in use</source>
        <translation>%1 belegt</translation>
    </message>
    <message>
        <source>%1 not usable</source>
        <translation>%1 nicht nutzbar</translation>
    </message>
    <message>
        <source>Cameras: %1</source>
        <translation>Kameras: %1</translation>
    </message>
    <message>
        <source>Cameras</source>
        <translation>Kameras</translation>
    </message>
    <message>
        <source>and more</source>
        <translation>und weitere</translation>
    </message>
</context>
<context>
    <name>ContainerExplanation</name>
    <message>
        <source>Cameras of other subnets stay hidden here: the reverse-path filter of this card is strict (rp_filter 1) and throws their answers away. An administrator can relax it: set net.ipv4.conf.all.rp_filter and net.ipv4.conf.%1.rp_filter to 0.</source>
        <translation>Kameras anderer Subnetze bleiben hier verborgen: Der Reverse-Path-Filter dieser Karte ist streng (rp_filter 1) und verwirft ihre Antworten. Ein Administrator kann ihn lockern: net.ipv4.conf.all.rp_filter und net.ipv4.conf.%1.rp_filter auf 0 setzen.</translation>
    </message>
    <message>
        <source>Cameras of other subnets are seen here only where a route leads to their address, because the reverse-path filter is on (rp_filter 2).</source>
        <translation>Kameras anderer Subnetze sind hier nur sichtbar, wenn eine Route zu ihrer Adresse führt, denn der Reverse-Path-Filter ist eingeschaltet (rp_filter 2).</translation>
    </message>
    <message>
        <source>Address</source>
        <translation>Adresse</translation>
    </message>
    <message>
        <source>Gateway</source>
        <translation>Gateway</translation>
    </message>
    <message>
        <source>All devices that this computer can find.</source>
        <translation>Alle Geräte, die dieser Computer finden kann.</translation>
    </message>
    <message>
        <source>Cameras on the network, below the network card that sees them.</source>
        <translation>Kameras im Netzwerk, unter der Netzwerkkarte, die sie sieht.</translation>
    </message>
    <message>
        <source>Cameras on USB, below their controller where it is known.</source>
        <translation>Kameras an USB, unter ihrem Controller, soweit er bekannt ist.</translation>
    </message>
    <message>
        <source>Cameras behind the serial ports of frame grabbers.</source>
        <translation>Kameras hinter den seriellen Anschlüssen von Framegrabbern.</translation>
    </message>
    <message>
        <source>Cameras that producers find for us. Choose the producers with the button beside the row's refresh button, then open an interface to see its cameras.</source>
        <translation>Kameras, die Producer für uns finden. Wählen Sie die Producer mit der Schaltfläche neben der zum Aktualisieren und öffnen Sie dann eine Schnittstelle, um ihre Kameras zu sehen.</translation>
    </message>
    <message>
        <source>Cameras that are simulated on this computer.</source>
        <translation>Kameras, die auf diesem Computer simuliert werden.</translation>
    </message>
    <message>
        <source>Devices that speak the cameras' protocol but are of another class.</source>
        <translation>Geräte, die das Protokoll der Kameras sprechen, aber einer anderen Klasse angehören.</translation>
    </message>
    <message>
        <source>Network card</source>
        <translation>Netzwerkkarte</translation>
    </message>
    <message>
        <source>Card</source>
        <translation>Karte</translation>
    </message>
    <message>
        <source>Name</source>
        <translation>Name</translation>
    </message>
    <message>
        <source>Hardware address</source>
        <translation>Hardwareadresse</translation>
    </message>
    <message>
        <source>Largest packet</source>
        <translation>Größtes Paket</translation>
    </message>
    <message>
        <source>%1 bytes</source>
        <translation>%1 Byte</translation>
    </message>
    <message>
        <source>Reverse-path filter</source>
        <translation>Reverse-Path-Filter</translation>
    </message>
    <message>
        <source>USB controller</source>
        <translation>USB-Controller</translation>
    </message>
    <message>
        <source>Controller</source>
        <translation>Controller</translation>
    </message>
    <message>
        <source>Identifier</source>
        <translation>Kennung</translation>
    </message>
    <message>
        <source>Interface of a GenTL producer</source>
        <translation>Schnittstelle eines GenTL-Producers</translation>
    </message>
    <message>
        <source>Open</source>
        <translation>Offen</translation>
    </message>
    <message>
        <source>Closed</source>
        <translation>Geschlossen</translation>
    </message>
    <message>
        <source>Open it with its button to see its cameras.</source>
        <translation>Öffnen Sie sie mit ihrer Schaltfläche, um ihre Kameras zu sehen.</translation>
    </message>
    <message>
        <source>Its producer is opened by virtual port.</source>
        <translation>Ihr Producer wird über einen virtuellen Port geöffnet.</translation>
    </message>
    <message>
        <source>Its producer was imported; the row's menu can remove it.</source>
        <translation>Ihr Producer wurde importiert; das Menü der Zeile kann ihn entfernen.</translation>
    </message>
    <message>
        <source>Interface</source>
        <translation>Schnittstelle</translation>
    </message>
    <message>
        <source>Other name</source>
        <translation>Anderer Name</translation>
    </message>
    <message>
        <source>Number</source>
        <translation>Nummer</translation>
    </message>
    <message>
        <source>Group</source>
        <translation>Gruppe</translation>
    </message>
    <message>
        <source>Some card of this computer has a strict reverse-path filter, so cameras of other subnets may stay hidden there.</source>
        <translation>Eine Karte dieses Computers hat einen strengen Reverse-Path-Filter; dort können Kameras anderer Subnetze verborgen bleiben.</translation>
    </message>
</context>
<context>
    <name>DeviceExplanation</name>
    <message>
        <source>GigE Vision camera</source>
        <translation>GigE-Vision-Kamera</translation>
    </message>
    <message>
        <source>USB3 Vision camera</source>
        <translation>USB3-Vision-Kamera</translation>
    </message>
    <message>
        <source>Camera Link camera</source>
        <translation>Camera-Link-Kamera</translation>
    </message>
    <message>
        <source>Camera of a GenTL producer</source>
        <translation>Kamera eines GenTL-Producers</translation>
    </message>
    <message>
        <source>Device</source>
        <translation>Gerät</translation>
    </message>
    <message>
        <source>Identity</source>
        <translation>Identität</translation>
    </message>
    <message>
        <source>Name</source>
        <translation>Name</translation>
    </message>
    <message>
        <source>Vendor</source>
        <translation>Hersteller</translation>
    </message>
    <message>
        <source>Model</source>
        <translation>Modell</translation>
    </message>
    <message>
        <source>Serial number</source>
        <translation>Seriennummer</translation>
    </message>
    <message>
        <source>Version</source>
        <translation>Version</translation>
    </message>
    <message>
        <source>Identifier</source>
        <translation>Kennung</translation>
    </message>
    <message>
        <source>free</source>
        <translation>frei</translation>
    </message>
    <message>
        <source>reading only</source>
        <translation>nur lesend</translation>
    </message>
    <message>
        <source>cannot be opened</source>
        <translation>lässt sich nicht öffnen</translation>
    </message>
    <message>
        <source>opened by another program</source>
        <translation>von einem anderen Programm geöffnet</translation>
    </message>
    <message>
        <source>opened by this program</source>
        <translation>von diesem Programm geöffnet</translation>
    </message>
    <message>
        <source>Connection</source>
        <translation>Verbindung</translation>
    </message>
    <message>
        <source>Serial port</source>
        <translation>Serieller Anschluss</translation>
    </message>
    <message>
        <source>Interface</source>
        <translation>Schnittstelle</translation>
    </message>
    <message>
        <source>Device of the producer</source>
        <translation>Gerät des Producers</translation>
    </message>
    <message>
        <source>The producer says</source>
        <translation>Der Producer meldet</translation>
    </message>
    <message>
        <source>It is simulated on this computer: it answers from one of the computer's own addresses.</source>
        <translation>Sie wird auf diesem Computer simuliert: Sie antwortet von einer seiner eigenen Adressen.</translation>
    </message>
    <message>
        <source>It speaks the cameras' protocol, but its class is not that of a plain camera.</source>
        <translation>Es spricht das Protokoll der Kameras, ist aber nicht von der Klasse einer einfachen Kamera.</translation>
    </message>
    <message>
        <source>You added it by its address, so it may stand in another network behind a router.</source>
        <translation>Sie haben sie über ihre Adresse hinzugefügt; sie kann also in einem anderen Netz hinter einem Router stehen.</translation>
    </message>
    <message>
        <source>It is being connected …</source>
        <translation>Sie wird gerade verbunden …</translation>
    </message>
    <message>
        <source>It is being given back …</source>
        <translation>Sie wird gerade freigegeben …</translation>
    </message>
    <message>
        <source>This program has it open for reading. It may be dragged into the work area, which shows its live values.</source>
        <translation>Dieses Programm hat sie zum Lesen geöffnet. Ziehen Sie sie in den Arbeitsbereich, um ihre laufenden Werte zu sehen.</translation>
    </message>
    <message>
        <source>This program holds it and keeps the connection alive. It may be dragged into the work area, which shows its live values.</source>
        <translation>Dieses Programm hält sie und erhält die Verbindung aufrecht. Ziehen Sie sie in den Arbeitsbereich, um ihre laufenden Werte zu sehen.</translation>
    </message>
    <message>
        <source>This program held it, but the connection was lost: %1</source>
        <translation>Dieses Programm hielt sie, aber die Verbindung ging verloren: %1</translation>
    </message>
    <message>
        <source>Disconnect to let it go; when it comes back it can be connected again.</source>
        <translation>Trennen Sie sie, um sie loszulassen; kommt sie wieder, kann sie erneut verbunden werden.</translation>
    </message>
    <message>
        <source>The last attempt to connect failed: %1 %2</source>
        <translation>Der letzte Verbindungsversuch schlug fehl: %1 %2</translation>
    </message>
    <message>
        <source>Nobody holds it. It can be connected.</source>
        <translation>Niemand belegt sie. Sie kann verbunden werden.</translation>
    </message>
    <message>
        <source>Another program holds it. It can be connected as soon as that program gives it back.</source>
        <translation>Ein anderes Programm belegt sie. Sie kann verbunden werden, sobald es sie freigibt.</translation>
    </message>
    <message>
        <source>It was found, but it cannot be reached.</source>
        <translation>Sie wurde gefunden, ist aber nicht erreichbar.</translation>
    </message>
    <message>
        <source>Connection lost</source>
        <translation>Verbindung verloren</translation>
    </message>
    <message>
        <source>Connecting …</source>
        <translation>Verbinden …</translation>
    </message>
    <message>
        <source>Disconnecting …</source>
        <translation>Trennen …</translation>
    </message>
</context>
<context>
    <name>DeviceState</name>
    <message>
        <source>Free</source>
        <translation>Frei</translation>
    </message>
    <message>
        <source>In use</source>
        <translation>Belegt</translation>
    </message>
    <message>
        <source>Opened by multicast</source>
        <translation>Per Multicast geöffnet</translation>
    </message>
    <message>
        <source>Connected</source>
        <translation>Verbunden</translation>
    </message>
    <message>
        <source>Grabbing</source>
        <translation>Nimmt auf</translation>
    </message>
    <message>
        <source>Cannot be used</source>
        <translation>Nicht nutzbar</translation>
    </message>
    <message>
        <source>State unknown</source>
        <translation>Zustand unbekannt</translation>
    </message>
</context>
<context>
    <name>DeviceValues</name>
    <message>
        <source>exclusive access</source>
        <translation>exklusiver Zugriff</translation>
    </message>
    <message>
        <source>control</source>
        <translation>Kontrolle</translation>
    </message>
    <message>
        <source>nobody</source>
        <translation>niemand</translation>
    </message>
    <message>
        <source>none</source>
        <translation>keine</translation>
    </message>
    <message>
        <source>%1 ms</source>
        <translation>%1 ms</translation>
    </message>
    <message>
        <source>%1 Mbit/s</source>
        <translation>%1 Mbit/s</translation>
    </message>
    <message>
        <source>%1 bytes</source>
        <translation>%1 Byte</translation>
    </message>
</context>
<context>
    <name>ForceIpPlan</name>
    <message>
        <source>This is no address.</source>
        <translation>Das ist keine Adresse.</translation>
    </message>
    <message>
        <source>The mask has to be ones followed by zeros, for example 255.255.255.0.</source>
        <translation>Die Maske muss aus Einsen gefolgt von Nullen bestehen, zum Beispiel 255.255.255.0.</translation>
    </message>
    <message>
        <source>The address is not in the subnet of the card, %1.</source>
        <translation>Die Adresse liegt nicht im Subnetz der Karte, %1.</translation>
    </message>
    <message>
        <source>This address stands for the subnet or its broadcast, not for a device.</source>
        <translation>Diese Adresse steht für das Subnetz oder seinen Broadcast, nicht für ein Gerät.</translation>
    </message>
    <message>
        <source>The address is in use already.</source>
        <translation>Die Adresse wird bereits verwendet.</translation>
    </message>
</context>
<context>
    <name>GigEExplanation</name>
    <message>
        <source>The camera has no address yet. A camera that was just switched on asks for one for some seconds.</source>
        <translation>Die Kamera hat noch keine Adresse. Eine gerade eingeschaltete Kamera fragt einige Sekunden lang nach einer.</translation>
    </message>
    <message>
        <source>The camera has the address %1, and no network card of this computer fits it.</source>
        <translation>Die Kamera hat die Adresse %1, zu der keine Netzwerkkarte dieses Computers passt.</translation>
    </message>
    <message>
        <source>The card "%1" (%2) could reach the camera, but by its own mask the camera (%3) does not find this computer.</source>
        <translation>Die Karte „%1“ (%2) könnte die Kamera erreichen, aber nach ihrer eigenen Maske findet die Kamera (%3) diesen Computer nicht.</translation>
    </message>
    <message>
        <source>By its own mask the camera (%3) would find this computer, but the card "%1" (%2) does not count it to its subnet.</source>
        <translation>Nach ihrer eigenen Maske würde die Kamera (%3) diesen Computer finden, aber die Karte „%1“ (%2) zählt sie nicht zu ihrem Subnetz.</translation>
    </message>
    <message>
        <source>The card "%1" sees the camera, but they are not in one subnet: the card has the address %2, the camera %3.</source>
        <translation>Die Karte „%1“ sieht die Kamera, aber sie liegen nicht in einem Subnetz: Die Karte hat die Adresse %2, die Kamera %3.</translation>
    </message>
    <message>
        <source>Besides, this computer's reverse-path filter is strict on that card (rp_filter 1): what the camera sends is thrown away, because this computer would not answer %1 through "%2".</source>
        <translation>Außerdem ist der Reverse-Path-Filter dieses Computers auf dieser Karte streng (rp_filter 1): Was die Kamera sendet, wird verworfen, weil dieser Computer %1 nicht über „%2“ antworten würde.</translation>
    </message>
    <message>
        <source>Besides, this computer's reverse-path filter (rp_filter 2) throws away what the camera sends, because no route leads to %1.</source>
        <translation>Außerdem verwirft der Reverse-Path-Filter dieses Computers (rp_filter 2), was die Kamera sendet, weil keine Route zu %1 führt.</translation>
    </message>
    <message>
        <source>persistent address</source>
        <translation>feste Adresse</translation>
    </message>
    <message>
        <source>DHCP</source>
        <translation>DHCP</translation>
    </message>
    <message>
        <source>link-local address</source>
        <translation>Link-Local-Adresse</translation>
    </message>
    <message>
        <source>Camera's network</source>
        <translation>Netzwerk der Kamera</translation>
    </message>
    <message>
        <source>Address</source>
        <translation>Adresse</translation>
    </message>
    <message>
        <source>Mask</source>
        <translation>Maske</translation>
    </message>
    <message>
        <source>Gateway</source>
        <translation>Gateway</translation>
    </message>
    <message>
        <source>Hardware address</source>
        <translation>Hardwareadresse</translation>
    </message>
    <message>
        <source>Address comes from</source>
        <translation>Adresse stammt von</translation>
    </message>
    <message>
        <source>Could come from</source>
        <translation>Möglich wären</translation>
    </message>
    <message>
        <source>Seen by the card</source>
        <translation>Gesehen von der Karte</translation>
    </message>
    <message>
        <source>Card</source>
        <translation>Karte</translation>
    </message>
    <message>
        <source>Largest packet</source>
        <translation>Größtes Paket</translation>
    </message>
    <message>
        <source>%1 bytes</source>
        <translation>%1 Byte</translation>
    </message>
    <message>
        <source>Reverse-path filter</source>
        <translation>Reverse-Path-Filter</translation>
    </message>
    <message>
        <source>Use</source>
        <translation>Nutzung</translation>
    </message>
    <message>
        <source>Held by</source>
        <translation>Belegt von</translation>
    </message>
    <message>
        <source>Images go to</source>
        <translation>Bilder gehen an</translation>
    </message>
    <message>
        <source>%1 is an address that a camera gives itself when it gets none from the network.</source>
        <translation>%1 ist eine Adresse, die sich eine Kamera selbst gibt, wenn sie vom Netz keine bekommt.</translation>
    </message>
    <message>
        <source>What helps: assign the camera a temporary address in the card's subnet (menu "Camera"), or give the card an address in the camera's.</source>
        <translation>Was hilft: der Kamera eine vorläufige Adresse im Subnetz der Karte zuweisen (Menü „Kamera“) oder der Karte eine Adresse im Subnetz der Kamera geben.</translation>
    </message>
    <message>
        <source>Another program holds this camera. The camera does not tell which.</source>
        <translation>Ein anderes Programm belegt diese Kamera. Die Kamera verrät nicht, welches.</translation>
    </message>
    <message>
        <source>A program on this computer (%1) holds this camera.</source>
        <translation>Ein Programm auf diesem Computer (%1) belegt diese Kamera.</translation>
    </message>
    <message>
        <source>A program on the computer %1 holds this camera.</source>
        <translation>Ein Programm auf dem Computer %1 belegt diese Kamera.</translation>
    </message>
    <message>
        <source>It sends the images to the group %1, where others may watch. Connecting opens the camera for reading only and disturbs nobody.</source>
        <translation>Es sendet die Bilder an die Gruppe %1, wo andere mitsehen können. Verbinden öffnet die Kamera nur zum Lesen und stört niemanden.</translation>
    </message>
    <message>
        <source>It can be connected as soon as that program gives it back, or some seconds after that program has died.</source>
        <translation>Sie kann verbunden werden, sobald jenes Programm sie freigibt oder einige Sekunden nachdem es abgebrochen ist.</translation>
    </message>
    <message>
        <source>off</source>
        <translation>aus</translation>
    </message>
    <message>
        <source>strict (rp_filter 1)</source>
        <translation>streng (rp_filter 1)</translation>
    </message>
    <message>
        <source>loose (rp_filter 2)</source>
        <translation>locker (rp_filter 2)</translation>
    </message>
</context>
<context>
    <name>ProducerExplanation</name>
    <message>
        <source>Switched off</source>
        <translation>Ausgeschaltet</translation>
    </message>
    <message>
        <source>Switched on, opened by virtual port</source>
        <translation>Eingeschaltet, über den virtuellen Port geöffnet</translation>
    </message>
    <message>
        <source>Imported until this program ends</source>
        <translation>Importiert, bis dieses Programm endet</translation>
    </message>
    <message>
        <source>Switched on</source>
        <translation>Eingeschaltet</translation>
    </message>
    <message>
        <source>The file is not there</source>
        <translation>Die Datei ist nicht da</translation>
    </message>
    <message>
        <source>Works</source>
        <translation>Arbeitet</translation>
    </message>
    <message>
        <source>Refused</source>
        <translation>Abgelehnt</translation>
    </message>
    <message>
        <source>Reports errors</source>
        <translation>Meldet Fehler</translation>
    </message>
    <message>
        <source>Does not respond</source>
        <translation>Antwortet nicht</translation>
    </message>
    <message>
        <source>Not used yet</source>
        <translation>Noch nicht benutzt</translation>
    </message>
    <message>
        <source>Producer %1</source>
        <translation>Producer %1</translation>
    </message>
    <message>
        <source>State</source>
        <translation>Zustand</translation>
    </message>
    <message>
        <source>Reason</source>
        <translation>Grund</translation>
    </message>
    <message>
        <source>Choice</source>
        <translation>Auswahl</translation>
    </message>
    <message>
        <source>Called</source>
        <translation>Name</translation>
    </message>
    <message>
        <source>Maker</source>
        <translation>Hersteller</translation>
    </message>
    <message>
        <source>Model</source>
        <translation>Modell</translation>
    </message>
    <message>
        <source>Version</source>
        <translation>Version</translation>
    </message>
    <message>
        <source>Reaches</source>
        <translation>Erreicht</translation>
    </message>
    <message>
        <source>File</source>
        <translation>Datei</translation>
    </message>
    <message numerus="yes">
        <source>%n producer(s) cannot be used; the reason is below.</source>
        <translation>
            <numerusform>%n Producer kann nicht benutzt werden; der Grund steht unten.</numerusform>
            <numerusform>%n Producer können nicht benutzt werden; der Grund steht unten.</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>RowKinds</name>
    <message>
        <source>GigE cameras</source>
        <translation>GigE-Kameras</translation>
    </message>
    <message>
        <source>USB cameras</source>
        <translation>USB-Kameras</translation>
    </message>
    <message>
        <source>Camera Link cameras</source>
        <translation>Camera-Link-Kameras</translation>
    </message>
    <message>
        <source>GenTL cameras</source>
        <translation>GenTL-Kameras</translation>
    </message>
    <message>
        <source>Virtual devices</source>
        <translation>Virtuelle Geräte</translation>
    </message>
    <message>
        <source>Other devices</source>
        <translation>Andere Geräte</translation>
    </message>
</context>
<context>
    <name>RowNames</name>
    <message>
        <source>%1, connection lost</source>
        <translation>%1, Verbindung verloren</translation>
    </message>
    <message>
        <source>Disconnect %1</source>
        <translation>%1 trennen</translation>
    </message>
    <message>
        <source>Connect %1</source>
        <translation>%1 verbinden</translation>
    </message>
    <message>
        <source>Open or close %1</source>
        <translation>%1 öffnen oder schließen</translation>
    </message>
    <message>
        <source>Refresh %1</source>
        <translation>%1 aktualisieren</translation>
    </message>
</context>
<context>
    <name>UsbExplanation</name>
    <message>
        <source>bus %1</source>
        <translation>Bus %1</translation>
    </message>
    <message>
        <source>, port %1</source>
        <translation>, Port %1</translation>
    </message>
    <message>
        <source>The camera is plugged in, but its device file %1 does not exist. In a container the folder /dev/bus/usb has to be passed through.</source>
        <translation>Die Kamera ist angesteckt, aber ihre Gerätedatei %1 gibt es nicht. In einem Container muss der Ordner /dev/bus/usb durchgereicht werden.</translation>
    </message>
    <message>
        <source>The camera is plugged in, but you have no permission to open it: %1 may not be written by you.</source>
        <translation>Die Kamera ist angesteckt, aber Sie dürfen sie nicht öffnen: Auf %1 haben Sie keinen Schreibzugriff.</translation>
    </message>
    <message>
        <source>What helps: a rule for udev in /etc/udev/rules.d/70-cameras.rules, then plug the camera in again:</source>
        <translation>Was hilft: eine Regel für udev in /etc/udev/rules.d/70-cameras.rules, danach die Kamera neu anstecken:</translation>
    </message>
    <message>
        <source>The camera is plugged in, but its link runs at %1 Mbit/s, which is too slow for USB3 Vision. What helps: another port, cable or hub.</source>
        <translation>Die Kamera ist angesteckt, ihre Verbindung läuft aber nur mit %1 Mbit/s; das ist zu langsam für USB3 Vision. Was hilft: ein anderer Anschluss, ein anderes Kabel oder ein anderer Hub.</translation>
    </message>
    <message>
        <source>The camera is plugged in, but it cannot be used: another driver may have taken it, or it reports itself as not ready.</source>
        <translation>Die Kamera ist angesteckt, kann aber nicht genutzt werden: Vielleicht hat ein anderer Treiber sie übernommen, oder sie meldet sich als nicht bereit.</translation>
    </message>
    <message>
        <source>The camera could transfer %1 Mbit/s and more, but runs at %2: the port, a hub or the cable is not for USB 3.</source>
        <translation>Die Kamera könnte %1 Mbit/s und mehr übertragen, läuft aber mit %2: Der Anschluss, ein Hub oder das Kabel ist nicht für USB 3.</translation>
    </message>
    <message>
        <source>Connection</source>
        <translation>Verbindung</translation>
    </message>
    <message>
        <source>Controller</source>
        <translation>Controller</translation>
    </message>
    <message>
        <source>Place</source>
        <translation>Ort</translation>
    </message>
    <message>
        <source>Device file</source>
        <translation>Gerätedatei</translation>
    </message>
    <message>
        <source>Speed</source>
        <translation>Geschwindigkeit</translation>
    </message>
    <message>
        <source>%1 Mbit/s</source>
        <translation>%1 Mbit/s</translation>
    </message>
    <message>
        <source>USB version</source>
        <translation>USB-Version</translation>
    </message>
    <message>
        <source>Vendor and product</source>
        <translation>Hersteller und Produkt</translation>
    </message>
    <message>
        <source>USB3 Vision</source>
        <translation>USB3 Vision</translation>
    </message>
    <message>
        <source>GenCP</source>
        <translation>GenCP</translation>
    </message>
    <message>
        <source>Device GUID</source>
        <translation>Geräte-GUID</translation>
    </message>
</context>
<context>
    <name>browser::DetailsPanel</name>
    <message>
        <source>Details</source>
        <translation>Details</translation>
    </message>
</context>
<context>
    <name>browser::DeviceDialogs</name>
    <message>
        <source>The temporary address was sent; the camera takes it in a moment.</source>
        <translation>Die vorläufige Adresse wurde gesendet; die Kamera übernimmt sie gleich.</translation>
    </message>
    <message>
        <source>The temporary address could not be sent: %1</source>
        <translation>Die vorläufige Adresse konnte nicht gesendet werden: %1</translation>
    </message>
    <message>
        <source>Assign temporary address</source>
        <translation>Vorläufige Adresse zuweisen</translation>
    </message>
    <message>
        <source>Assigning %1 to %2 …</source>
        <translation>%2 bekommt %1 …</translation>
    </message>
    <message>
        <source>Add camera by address</source>
        <translation>Kamera über Adresse hinzufügen</translation>
    </message>
    <message>
        <source>Address of a GigE Vision camera, also behind a router:</source>
        <translation>Adresse einer GigE-Vision-Kamera, auch hinter einem Router:</translation>
    </message>
    <message>
        <source>Add</source>
        <translation>Hinzufügen</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
    <message>
        <source>"%1" is no IPv4 address.</source>
        <translation>„%1“ ist keine IPv4-Adresse.</translation>
    </message>
    <message>
        <source>No camera answers at %1.</source>
        <translation>Unter %1 antwortet keine Kamera.</translation>
    </message>
</context>
<context>
    <name>browser::EventLog</name>
    <message>
        <source>Time</source>
        <translation>Zeit</translation>
    </message>
    <message>
        <source>Kind</source>
        <translation>Art</translation>
    </message>
    <message>
        <source>Event</source>
        <translation>Ereignis</translation>
    </message>
    <message>
        <source>Appeared</source>
        <translation>Neu</translation>
    </message>
    <message>
        <source>Gone</source>
        <translation>Weg</translation>
    </message>
    <message>
        <source>Problem</source>
        <translation>Problem</translation>
    </message>
    <message>
        <source>Note</source>
        <translation>Hinweis</translation>
    </message>
</context>
<context>
    <name>browser::EventReporter</name>
    <message>
        <source>The producer %1 is let go.</source>
        <translation>Der Producer %1 wird losgelassen.</translation>
    </message>
    <message>
        <source>Connected: %1</source>
        <translation>Verbunden: %1</translation>
    </message>
    <message>
        <source>Disconnected: %1</source>
        <translation>Getrennt: %1</translation>
    </message>
    <message>
        <source>Connection lost: %1: %2</source>
        <translation>Verbindung verloren: %1: %2</translation>
    </message>
    <message>
        <source>Could not connect %1: %2</source>
        <translation>%1 konnte nicht verbunden werden: %2</translation>
    </message>
    <message>
        <source>The interface could not be opened: %1</source>
        <translation>Die Schnittstelle konnte nicht geöffnet werden: %1</translation>
    </message>
    <message>
        <source>The search on %1 failed: %2</source>
        <translation>Die Suche über %1 schlug fehl: %2</translation>
    </message>
    <message>
        <source>The search on %1 works again.</source>
        <translation>Die Suche über %1 geht wieder.</translation>
    </message>
</context>
<context>
    <name>browser::FilterDialog</name>
    <message>
        <source>Vendors</source>
        <translation>Hersteller</translation>
    </message>
    <message>
        <source>Models</source>
        <translation>Modelle</translation>
    </message>
    <message>
        <source>Whole names are compared; upper and lower case are the same. The filters take effect in a new tree: with the next start, or at once when you rebuild the tree now.</source>
        <translation>Verglichen werden ganze Namen; Groß- und Kleinschreibung spielen keine Rolle. Die Filter wirken in einem neuen Baum: beim nächsten Start oder sofort, wenn Sie den Baum jetzt neu aufbauen.</translation>
    </message>
    <message>
        <source>Filters</source>
        <translation>Filter</translation>
    </message>
    <message>
        <source>Save and rebuild the tree</source>
        <translation>Speichern und Baum neu aufbauen</translation>
    </message>
    <message>
        <source>Save</source>
        <translation>Speichern</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
    <message>
        <source>The filters could not be written to the folder %1.</source>
        <translation>Die Filter konnten nicht in den Ordner %1 geschrieben werden.</translation>
    </message>
</context>
<context>
    <name>browser::FilterEditor</name>
    <message>
        <source>Off: show all</source>
        <translation>Aus: alle zeigen</translation>
    </message>
    <message>
        <source>Show only those listed</source>
        <translation>Nur die aufgeführten zeigen</translation>
    </message>
    <message>
        <source>Hide those listed</source>
        <translation>Die aufgeführten verbergen</translation>
    </message>
    <message>
        <source>Filter:</source>
        <translation>Filter:</translation>
    </message>
    <message>
        <source>Show, one name per line:</source>
        <translation>Zeigen, ein Name pro Zeile:</translation>
    </message>
    <message>
        <source>Hide, one name per line:</source>
        <translation>Verbergen, ein Name pro Zeile:</translation>
    </message>
    <message>
        <source>Unknown (%1): hides all</source>
        <translation>Unbekannt (%1): blendet alle aus</translation>
    </message>
</context>
<context>
    <name>browser::ForceIpDialog</name>
    <message>
        <source>Assign temporary address</source>
        <translation>Vorläufige Adresse zuweisen</translation>
    </message>
    <message>
        <source>"%1" keeps this address until it is switched off. Nothing is stored in the camera.</source>
        <translation>„%1“ behält diese Adresse, bis sie ausgeschaltet wird. In der Kamera wird nichts gespeichert.</translation>
    </message>
    <message>
        <source>Address now:</source>
        <translation>Jetzige Adresse:</translation>
    </message>
    <message>
        <source>The card's address:</source>
        <translation>Adresse der Karte:</translation>
    </message>
    <message>
        <source>&amp;New address:</source>
        <translation>&amp;Neue Adresse:</translation>
    </message>
    <message>
        <source>&amp;Mask:</source>
        <translation>&amp;Maske:</translation>
    </message>
    <message>
        <source>&amp;Gateway (may be empty):</source>
        <translation>&amp;Gateway (darf leer sein):</translation>
    </message>
    <message>
        <source>Assign</source>
        <translation>Zuweisen</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
    <message>
        <source>The gateway is no address.</source>
        <translation>Das Gateway ist keine Adresse.</translation>
    </message>
    <message>
        <source>Will be sent as a broadcast on the card %1, for the hardware address %2 alone: address %3, mask %4, gateway %5.</source>
        <translation>Gesendet wird als Broadcast auf der Karte %1, nur für die Hardwareadresse %2: Adresse %3, Maske %4, Gateway %5.</translation>
    </message>
</context>
<context>
    <name>browser::HelpDialog</name>
    <message>
        <source>Keys</source>
        <translation>Tasten</translation>
    </message>
    <message>
        <source>Everything works without a mouse</source>
        <translation>Alles geht ohne Maus</translation>
    </message>
    <message>
        <source>choose a row</source>
        <translation>eine Zeile wählen</translation>
    </message>
    <message>
        <source>fold and unfold a row</source>
        <translation>eine Zeile zu- und aufklappen</translation>
    </message>
    <message>
        <source>connect or disconnect the chosen camera, open or close an interface</source>
        <translation>gewählte Kamera verbinden oder trennen, Schnittstelle öffnen oder schließen</translation>
    </message>
    <message>
        <source>show what can be done with the row</source>
        <translation>zeigen, was mit der Zeile möglich ist</translation>
    </message>
    <message>
        <source>keep the camera on top</source>
        <translation>die Kamera oben halten</translation>
    </message>
    <message>
        <source>show the live values of a connected camera</source>
        <translation>laufende Werte einer verbundenen Kamera zeigen</translation>
    </message>
    <message>
        <source>assign a temporary address</source>
        <translation>eine vorläufige Adresse zuweisen</translation>
    </message>
    <message>
        <source>search everything now</source>
        <translation>alles jetzt suchen</translation>
    </message>
    <message>
        <source>search the chosen group now</source>
        <translation>gewählte Gruppe jetzt suchen</translation>
    </message>
    <message>
        <source>choose the GenTL producers</source>
        <translation>die GenTL-Producer wählen</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>Schließen</translation>
    </message>
</context>
<context>
    <name>browser::LiveView</name>
    <message>
        <source>Live, in view for %1</source>
        <translation>Laufend, im Blick seit %1</translation>
    </message>
    <message>
        <source>Connection lost; the values are the last ones read.</source>
        <translation>Verbindung verloren; die Werte sind die zuletzt gelesenen.</translation>
    </message>
    <message>
        <source>Not connected any more; the values are the last ones read.</source>
        <translation>Nicht mehr verbunden; die Werte sind die zuletzt gelesenen.</translation>
    </message>
    <message>
        <source>Value</source>
        <translation>Wert</translation>
    </message>
    <message>
        <source>Now</source>
        <translation>Jetzt</translation>
    </message>
    <message>
        <source>Live values of %1</source>
        <translation>Laufende Werte von %1</translation>
    </message>
</context>
<context>
    <name>browser::MainWindow</name>
    <message>
        <source>Devices</source>
        <translation>Geräte</translation>
    </message>
    <message>
        <source>Device Browser</source>
        <translation>Geräte-Browser</translation>
    </message>
    <message>
        <source>&amp;Devices</source>
        <translation>&amp;Geräte</translation>
    </message>
    <message>
        <source>&amp;Camera</source>
        <translation>&amp;Kamera</translation>
    </message>
    <message>
        <source>&amp;Search</source>
        <translation>&amp;Suche</translation>
    </message>
    <message>
        <source>&amp;View</source>
        <translation>&amp;Ansicht</translation>
    </message>
    <message>
        <source>&amp;Help</source>
        <translation>&amp;Hilfe</translation>
    </message>
    <message>
        <source>Events</source>
        <translation>Ereignisse</translation>
    </message>
    <message>
        <source>&amp;Refresh all</source>
        <translation>Alles &amp;aktualisieren</translation>
    </message>
    <message>
        <source>&amp;Freeze the tree</source>
        <translation>Baum ein&amp;frieren</translation>
    </message>
    <message>
        <source>&amp;Add camera by address…</source>
        <translation>Kamera über Adresse &amp;hinzufügen …</translation>
    </message>
    <message>
        <source>&amp;Filters…</source>
        <translation>&amp;Filter …</translation>
    </message>
    <message>
        <source>&amp;Quit</source>
        <translation>&amp;Beenden</translation>
    </message>
    <message>
        <source>Copy &amp;details</source>
        <translation>&amp;Details kopieren</translation>
    </message>
    <message>
        <source>&amp;Keys</source>
        <translation>&amp;Tasten</translation>
    </message>
</context>
<context>
    <name>browser::PreferenceMenus</name>
    <message>
        <source>Refresh &amp;automatically</source>
        <translation>&amp;Automatisch aktualisieren</translation>
    </message>
    <message>
        <source>&amp;Transports</source>
        <translation>&amp;Übertragungswege</translation>
    </message>
    <message>
        <source>How cameras a&amp;nswer (from the next start on)</source>
        <translation>Wie Kameras a&amp;ntworten (ab dem nächsten Start)</translation>
    </message>
    <message>
        <source>Allow &amp;virtual ports of producers</source>
        <translation>&amp;Virtuelle Ports von Producern erlauben</translation>
    </message>
    <message>
        <source>&amp;Show</source>
        <translation>&amp;Zeigen</translation>
    </message>
    <message>
        <source>&amp;Buttons in rows</source>
        <translation>Schaltflächen in &amp;Zeilen</translation>
    </message>
    <message>
        <source>&amp;Theme</source>
        <translation>&amp;Farben</translation>
    </message>
    <message>
        <source>&amp;Language</source>
        <translation>&amp;Sprache</translation>
    </message>
    <message>
        <source>&amp;Encoding of device names</source>
        <translation>&amp;Zeichensatz der Gerätenamen</translation>
    </message>
    <message>
        <source>&amp;Dark</source>
        <translation>&amp;Dunkel</translation>
    </message>
    <message>
        <source>&amp;Light</source>
        <translation>&amp;Hell</translation>
    </message>
    <message>
        <source>As the system's language</source>
        <translation>Wie die Sprache des Systems</translation>
    </message>
    <message>
        <source>By &amp;broadcast: cameras of other subnets are found too</source>
        <translation>Per &amp;Broadcast: auch Kameras anderer Subnetze werden gefunden</translation>
    </message>
    <message>
        <source>To this computer &amp;only: less traffic for others</source>
        <translation>&amp;Nur an diesen Computer: weniger Verkehr für andere</translation>
    </message>
</context>
<context>
    <name>browser::RemoteCameras</name>
    <message>
        <source>Added the camera at %1.</source>
        <translation>Die Kamera unter %1 wurde hinzugefügt.</translation>
    </message>
    <message>
        <source>No camera answers at %1.</source>
        <translation>Unter %1 antwortet keine Kamera.</translation>
    </message>
</context>
<context>
    <name>browser::RowActions</name>
    <message>
        <source>&amp;Connect</source>
        <translation>&amp;Verbinden</translation>
    </message>
    <message>
        <source>Show &amp;live values</source>
        <translation>&amp;Laufende Werte zeigen</translation>
    </message>
    <message>
        <source>&amp;Keep on top</source>
        <translation>&amp;Oben halten</translation>
    </message>
    <message>
        <source>&amp;Assign temporary address…</source>
        <translation>Vorläufige &amp;Adresse zuweisen …</translation>
    </message>
    <message>
        <source>&amp;Take out</source>
        <translation>&amp;Herausnehmen</translation>
    </message>
    <message>
        <source>&amp;Refresh this group</source>
        <translation>Diese &amp;Gruppe aktualisieren</translation>
    </message>
    <message>
        <source>Choose &amp;producers…</source>
        <translation>&amp;Producer wählen …</translation>
    </message>
    <message>
        <source>Remove imported pro&amp;ducer</source>
        <translation>Importierten Pro&amp;ducer entfernen</translation>
    </message>
    <message>
        <source>Dis&amp;connect</source>
        <translation>&amp;Trennen</translation>
    </message>
    <message>
        <source>&amp;Close interface</source>
        <translation>Schnittstelle s&amp;chließen</translation>
    </message>
    <message>
        <source>&amp;Open interface</source>
        <translation>Schnittstelle ö&amp;ffnen</translation>
    </message>
</context>
<context>
    <name>browser::StatusLine</name>
    <message>
        <source>No transport is chosen</source>
        <translation>Kein Übertragungsweg gewählt</translation>
    </message>
    <message>
        <source>The tree is frozen</source>
        <translation>Der Baum ist eingefroren</translation>
    </message>
    <message>
        <source>Waiting on %1 until you refresh: the last search failed</source>
        <translation>%1 wartet, bis Sie aktualisieren: Die letzte Suche schlug fehl</translation>
    </message>
    <message>
        <source>Searching for the first time: %1 …</source>
        <translation>Erste Suche: %1 …</translation>
    </message>
    <message>
        <source>Automatic refresh is off</source>
        <translation>Automatisches Aktualisieren ist aus</translation>
    </message>
    <message>
        <source>Searching: %1 …</source>
        <translation>Suche: %1 …</translation>
    </message>
    <message>
        <source>Up to date, refreshed automatically</source>
        <translation>Aktuell, wird automatisch aktualisiert</translation>
    </message>
    <message>
        <source>%1 %2 ms</source>
        <translation>%1 %2 ms</translation>
    </message>
    <message>
        <source>Last search: %1</source>
        <translation>Letzte Suche: %1</translation>
    </message>
</context>
<context>
    <name>browser::WorkArea</name>
    <message>
        <source>Close %1</source>
        <translation>%1 schließen</translation>
    </message>
    <message>
        <source>Details</source>
        <translation>Details</translation>
    </message>
    <message>
        <source>Drop a connected camera here to see its live values</source>
        <translation>Verbundene Kamera hier ablegen, um ihre laufenden Werte zu sehen</translation>
    </message>
</context>
</TS>
