<?xml version="1.0" encoding="utf-8"?>
<!-- SPDX-License-Identifier: Apache-2.0 -->
<!DOCTYPE TS>
<TS version="2.1" language="en" sourcelanguage="en">
<context>
    <name>CameraOverview</name>
    <message>
        <source>No cameras</source>
        <translation>No cameras</translation>
    </message>
    <message>
        <source>%1 connected</source>
        <translation>%1 connected</translation>
    </message>
    <message>
        <source>%1 free</source>
        <translation>%1 free</translation>
    </message>
    <message>
        <source>%1 in use</source>
        <translation>%1 in use</translation>
    </message>
    <message>
        <source>%1 not usable</source>
        <translation>%1 not usable</translation>
    </message>
    <message>
        <source>Cameras: %1</source>
        <translation>Cameras: %1</translation>
    </message>
    <message>
        <source>Cameras</source>
        <translation>Cameras</translation>
    </message>
    <message>
        <source>and more</source>
        <translation>and more</translation>
    </message>
</context>
<context>
    <name>ContainerExplanation</name>
    <message>
        <source>Cameras of other subnets stay hidden here: the reverse-path filter of this card is strict (rp_filter 1) and throws their answers away. An administrator can relax it: set net.ipv4.conf.all.rp_filter and net.ipv4.conf.%1.rp_filter to 0.</source>
        <translation>Cameras of other subnets stay hidden here: the reverse-path filter of this card is strict (rp_filter 1) and throws their answers away. An administrator can relax it: set net.ipv4.conf.all.rp_filter and net.ipv4.conf.%1.rp_filter to 0.</translation>
    </message>
    <message>
        <source>Cameras of other subnets are seen here only where a route leads to their address, because the reverse-path filter is on (rp_filter 2).</source>
        <translation>Cameras of other subnets are seen here only where a route leads to their address, because the reverse-path filter is on (rp_filter 2).</translation>
    </message>
    <message>
        <source>Address</source>
        <translation>Address</translation>
    </message>
    <message>
        <source>Gateway</source>
        <translation>Gateway</translation>
    </message>
    <message>
        <source>All devices that this computer can find.</source>
        <translation>All devices that this computer can find.</translation>
    </message>
    <message>
        <source>Cameras on the network, below the network card that sees them.</source>
        <translation>Cameras on the network, below the network card that sees them.</translation>
    </message>
    <message>
        <source>Cameras on USB, below their controller where it is known.</source>
        <translation>Cameras on USB, below their controller where it is known.</translation>
    </message>
    <message>
        <source>Cameras behind the serial ports of frame grabbers.</source>
        <translation>Cameras behind the serial ports of frame grabbers.</translation>
    </message>
    <message>
        <source>Cameras that producers find for us. Choose the producers with the button beside the row's refresh button, then open an interface to see its cameras.</source>
        <translation>Cameras that producers find for us. Choose the producers with the button beside the row's refresh button, then open an interface to see its cameras.</translation>
    </message>
    <message>
        <source>Cameras that are simulated on this computer.</source>
        <translation>Cameras that are simulated on this computer.</translation>
    </message>
    <message>
        <source>Devices that speak the cameras' protocol but are of another class.</source>
        <translation>Devices that speak the cameras' protocol but are of another class.</translation>
    </message>
    <message>
        <source>Network card</source>
        <translation>Network card</translation>
    </message>
    <message>
        <source>Card</source>
        <translation>Card</translation>
    </message>
    <message>
        <source>Name</source>
        <translation>Name</translation>
    </message>
    <message>
        <source>Hardware address</source>
        <translation>Hardware address</translation>
    </message>
    <message>
        <source>Largest packet</source>
        <translation>Largest packet</translation>
    </message>
    <message>
        <source>%1 bytes</source>
        <translation>%1 bytes</translation>
    </message>
    <message>
        <source>Reverse-path filter</source>
        <translation>Reverse-path filter</translation>
    </message>
    <message>
        <source>USB controller</source>
        <translation>USB controller</translation>
    </message>
    <message>
        <source>Controller</source>
        <translation>Controller</translation>
    </message>
    <message>
        <source>Identifier</source>
        <translation>Identifier</translation>
    </message>
    <message>
        <source>Interface of a GenTL producer</source>
        <translation>Interface of a GenTL producer</translation>
    </message>
    <message>
        <source>Open</source>
        <translation>Open</translation>
    </message>
    <message>
        <source>Closed</source>
        <translation>Closed</translation>
    </message>
    <message>
        <source>Open it with its button to see its cameras.</source>
        <translation>Open it with its button to see its cameras.</translation>
    </message>
    <message>
        <source>Its producer is opened by virtual port.</source>
        <translation>Its producer is opened by virtual port.</translation>
    </message>
    <message>
        <source>Its producer was imported; the row's menu can remove it.</source>
        <translation>Its producer was imported; the row's menu can remove it.</translation>
    </message>
    <message>
        <source>Interface</source>
        <translation>Interface</translation>
    </message>
    <message>
        <source>Other name</source>
        <translation>Other name</translation>
    </message>
    <message>
        <source>Number</source>
        <translation>Number</translation>
    </message>
    <message>
        <source>Group</source>
        <translation>Group</translation>
    </message>
    <message>
        <source>Some card of this computer has a strict reverse-path filter, so cameras of other subnets may stay hidden there.</source>
        <translation>Some card of this computer has a strict reverse-path filter, so cameras of other subnets may stay hidden there.</translation>
    </message>
</context>
<context>
    <name>DeviceExplanation</name>
    <message>
        <source>GigE Vision camera</source>
        <translation>GigE Vision camera</translation>
    </message>
    <message>
        <source>USB3 Vision camera</source>
        <translation>USB3 Vision camera</translation>
    </message>
    <message>
        <source>Camera Link camera</source>
        <translation>Camera Link camera</translation>
    </message>
    <message>
        <source>Camera of a GenTL producer</source>
        <translation>Camera of a GenTL producer</translation>
    </message>
    <message>
        <source>Device</source>
        <translation>Device</translation>
    </message>
    <message>
        <source>Identity</source>
        <translation>Identity</translation>
    </message>
    <message>
        <source>Name</source>
        <translation>Name</translation>
    </message>
    <message>
        <source>Vendor</source>
        <translation>Vendor</translation>
    </message>
    <message>
        <source>Model</source>
        <translation>Model</translation>
    </message>
    <message>
        <source>Serial number</source>
        <translation>Serial number</translation>
    </message>
    <message>
        <source>Version</source>
        <translation>Version</translation>
    </message>
    <message>
        <source>Identifier</source>
        <translation>Identifier</translation>
    </message>
    <message>
        <source>free</source>
        <translation>free</translation>
    </message>
    <message>
        <source>reading only</source>
        <translation>reading only</translation>
    </message>
    <message>
        <source>cannot be opened</source>
        <translation>cannot be opened</translation>
    </message>
    <message>
        <source>opened by another program</source>
        <translation>opened by another program</translation>
    </message>
    <message>
        <source>opened by this program</source>
        <translation>opened by this program</translation>
    </message>
    <message>
        <source>Connection</source>
        <translation>Connection</translation>
    </message>
    <message>
        <source>Serial port</source>
        <translation>Serial port</translation>
    </message>
    <message>
        <source>Interface</source>
        <translation>Interface</translation>
    </message>
    <message>
        <source>Device of the producer</source>
        <translation>Device of the producer</translation>
    </message>
    <message>
        <source>The producer says</source>
        <translation>The producer says</translation>
    </message>
    <message>
        <source>It is simulated on this computer: it answers from one of the computer's own addresses.</source>
        <translation>It is simulated on this computer: it answers from one of the computer's own addresses.</translation>
    </message>
    <message>
        <source>It speaks the cameras' protocol, but its class is not that of a plain camera.</source>
        <translation>It speaks the cameras' protocol, but its class is not that of a plain camera.</translation>
    </message>
    <message>
        <source>You added it by its address, so it may stand in another network behind a router.</source>
        <translation>You added it by its address, so it may stand in another network behind a router.</translation>
    </message>
    <message>
        <source>It is being connected …</source>
        <translation>It is being connected …</translation>
    </message>
    <message>
        <source>It is being given back …</source>
        <translation>It is being given back …</translation>
    </message>
    <message>
        <source>This program has it open for reading. It may be dragged into the work area, which shows its live values.</source>
        <translation>This program has it open for reading. It may be dragged into the work area, which shows its live values.</translation>
    </message>
    <message>
        <source>This program holds it and keeps the connection alive. It may be dragged into the work area, which shows its live values.</source>
        <translation>This program holds it and keeps the connection alive. It may be dragged into the work area, which shows its live values.</translation>
    </message>
    <message>
        <source>This program held it, but the connection was lost: %1</source>
        <translation>This program held it, but the connection was lost: %1</translation>
    </message>
    <message>
        <source>Disconnect to let it go; when it comes back it can be connected again.</source>
        <translation>Disconnect to let it go; when it comes back it can be connected again.</translation>
    </message>
    <message>
        <source>The last attempt to connect failed: %1 %2</source>
        <translation>The last attempt to connect failed: %1 %2</translation>
    </message>
    <message>
        <source>Nobody holds it. It can be connected.</source>
        <translation>Nobody holds it. It can be connected.</translation>
    </message>
    <message>
        <source>Another program holds it. It can be connected as soon as that program gives it back.</source>
        <translation>Another program holds it. It can be connected as soon as that program gives it back.</translation>
    </message>
    <message>
        <source>It was found, but it cannot be reached.</source>
        <translation>It was found, but it cannot be reached.</translation>
    </message>
    <message>
        <source>Connection lost</source>
        <translation>Connection lost</translation>
    </message>
    <message>
        <source>Connecting …</source>
        <translation>Connecting …</translation>
    </message>
    <message>
        <source>Disconnecting …</source>
        <translation>Disconnecting …</translation>
    </message>
</context>
<context>
    <name>DeviceState</name>
    <message>
        <source>Free</source>
        <translation>Free</translation>
    </message>
    <message>
        <source>In use</source>
        <translation>In use</translation>
    </message>
    <message>
        <source>Opened by multicast</source>
        <translation>Opened by multicast</translation>
    </message>
    <message>
        <source>Connected</source>
        <translation>Connected</translation>
    </message>
    <message>
        <source>Grabbing</source>
        <translation>Grabbing</translation>
    </message>
    <message>
        <source>Cannot be used</source>
        <translation>Cannot be used</translation>
    </message>
    <message>
        <source>State unknown</source>
        <translation>State unknown</translation>
    </message>
</context>
<context>
    <name>DeviceValues</name>
    <message>
        <source>exclusive access</source>
        <translation>exclusive access</translation>
    </message>
    <message>
        <source>control</source>
        <translation>control</translation>
    </message>
    <message>
        <source>nobody</source>
        <translation>nobody</translation>
    </message>
    <message>
        <source>none</source>
        <translation>none</translation>
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
        <translation>%1 bytes</translation>
    </message>
</context>
<context>
    <name>ForceIpPlan</name>
    <message>
        <source>This is no address.</source>
        <translation>This is no address.</translation>
    </message>
    <message>
        <source>The mask has to be ones followed by zeros, for example 255.255.255.0.</source>
        <translation>The mask has to be ones followed by zeros, for example 255.255.255.0.</translation>
    </message>
    <message>
        <source>The address is not in the subnet of the card, %1.</source>
        <translation>The address is not in the subnet of the card, %1.</translation>
    </message>
    <message>
        <source>This address stands for the subnet or its broadcast, not for a device.</source>
        <translation>This address stands for the subnet or its broadcast, not for a device.</translation>
    </message>
    <message>
        <source>The address is in use already.</source>
        <translation>The address is in use already.</translation>
    </message>
</context>
<context>
    <name>GigEExplanation</name>
    <message>
        <source>The camera has no address yet. A camera that was just switched on asks for one for some seconds.</source>
        <translation>The camera has no address yet. A camera that was just switched on asks for one for some seconds.</translation>
    </message>
    <message>
        <source>The camera has the address %1, and no network card of this computer fits it.</source>
        <translation>The camera has the address %1, and no network card of this computer fits it.</translation>
    </message>
    <message>
        <source>The card "%1" (%2) could reach the camera, but by its own mask the camera (%3) does not find this computer.</source>
        <translation>The card "%1" (%2) could reach the camera, but by its own mask the camera (%3) does not find this computer.</translation>
    </message>
    <message>
        <source>By its own mask the camera (%3) would find this computer, but the card "%1" (%2) does not count it to its subnet.</source>
        <translation>By its own mask the camera (%3) would find this computer, but the card "%1" (%2) does not count it to its subnet.</translation>
    </message>
    <message>
        <source>The card "%1" sees the camera, but they are not in one subnet: the card has the address %2, the camera %3.</source>
        <translation>The card "%1" sees the camera, but they are not in one subnet: the card has the address %2, the camera %3.</translation>
    </message>
    <message>
        <source>Besides, this computer's reverse-path filter is strict on that card (rp_filter 1): what the camera sends is thrown away, because this computer would not answer %1 through "%2".</source>
        <translation>Besides, this computer's reverse-path filter is strict on that card (rp_filter 1): what the camera sends is thrown away, because this computer would not answer %1 through "%2".</translation>
    </message>
    <message>
        <source>Besides, this computer's reverse-path filter (rp_filter 2) throws away what the camera sends, because no route leads to %1.</source>
        <translation>Besides, this computer's reverse-path filter (rp_filter 2) throws away what the camera sends, because no route leads to %1.</translation>
    </message>
    <message>
        <source>persistent address</source>
        <translation>persistent address</translation>
    </message>
    <message>
        <source>DHCP</source>
        <translation>DHCP</translation>
    </message>
    <message>
        <source>link-local address</source>
        <translation>link-local address</translation>
    </message>
    <message>
        <source>Camera's network</source>
        <translation>Camera's network</translation>
    </message>
    <message>
        <source>Address</source>
        <translation>Address</translation>
    </message>
    <message>
        <source>Mask</source>
        <translation>Mask</translation>
    </message>
    <message>
        <source>Gateway</source>
        <translation>Gateway</translation>
    </message>
    <message>
        <source>Hardware address</source>
        <translation>Hardware address</translation>
    </message>
    <message>
        <source>Address comes from</source>
        <translation>Address comes from</translation>
    </message>
    <message>
        <source>Could come from</source>
        <translation>Could come from</translation>
    </message>
    <message>
        <source>Seen by the card</source>
        <translation>Seen by the card</translation>
    </message>
    <message>
        <source>Card</source>
        <translation>Card</translation>
    </message>
    <message>
        <source>Largest packet</source>
        <translation>Largest packet</translation>
    </message>
    <message>
        <source>%1 bytes</source>
        <translation>%1 bytes</translation>
    </message>
    <message>
        <source>Reverse-path filter</source>
        <translation>Reverse-path filter</translation>
    </message>
    <message>
        <source>Use</source>
        <translation>Use</translation>
    </message>
    <message>
        <source>Held by</source>
        <translation>Held by</translation>
    </message>
    <message>
        <source>Images go to</source>
        <translation>Images go to</translation>
    </message>
    <message>
        <source>%1 is an address that a camera gives itself when it gets none from the network.</source>
        <translation>%1 is an address that a camera gives itself when it gets none from the network.</translation>
    </message>
    <message>
        <source>What helps: assign the camera a temporary address in the card's subnet (menu "Camera"), or give the card an address in the camera's.</source>
        <translation>What helps: assign the camera a temporary address in the card's subnet (menu "Camera"), or give the card an address in the camera's.</translation>
    </message>
    <message>
        <source>Another program holds this camera. The camera does not tell which.</source>
        <translation>Another program holds this camera. The camera does not tell which.</translation>
    </message>
    <message>
        <source>A program on this computer (%1) holds this camera.</source>
        <translation>A program on this computer (%1) holds this camera.</translation>
    </message>
    <message>
        <source>A program on the computer %1 holds this camera.</source>
        <translation>A program on the computer %1 holds this camera.</translation>
    </message>
    <message>
        <source>It sends the images to the group %1, where others may watch. Connecting opens the camera for reading only and disturbs nobody.</source>
        <translation>It sends the images to the group %1, where others may watch. Connecting opens the camera for reading only and disturbs nobody.</translation>
    </message>
    <message>
        <source>It can be connected as soon as that program gives it back, or some seconds after that program has died.</source>
        <translation>It can be connected as soon as that program gives it back, or some seconds after that program has died.</translation>
    </message>
    <message>
        <source>off</source>
        <translation>off</translation>
    </message>
    <message>
        <source>strict (rp_filter 1)</source>
        <translation>strict (rp_filter 1)</translation>
    </message>
    <message>
        <source>loose (rp_filter 2)</source>
        <translation>loose (rp_filter 2)</translation>
    </message>
</context>
<context>
    <name>ProducerExplanation</name>
    <message>
        <source>Switched off</source>
        <translation>Switched off</translation>
    </message>
    <message>
        <source>Switched on, opened by virtual port</source>
        <translation>Switched on, opened by virtual port</translation>
    </message>
    <message>
        <source>Imported until this program ends</source>
        <translation>Imported until this program ends</translation>
    </message>
    <message>
        <source>Switched on</source>
        <translation>Switched on</translation>
    </message>
    <message>
        <source>The file is not there</source>
        <translation>The file is not there</translation>
    </message>
    <message>
        <source>Works</source>
        <translation>Works</translation>
    </message>
    <message>
        <source>Refused</source>
        <translation>Refused</translation>
    </message>
    <message>
        <source>Reports errors</source>
        <translation>Reports errors</translation>
    </message>
    <message>
        <source>Does not respond</source>
        <translation>Does not respond</translation>
    </message>
    <message>
        <source>Not used yet</source>
        <translation>Not used yet</translation>
    </message>
    <message>
        <source>Producer %1</source>
        <translation>Producer %1</translation>
    </message>
    <message>
        <source>State</source>
        <translation>State</translation>
    </message>
    <message>
        <source>Reason</source>
        <translation>Reason</translation>
    </message>
    <message>
        <source>Choice</source>
        <translation>Choice</translation>
    </message>
    <message>
        <source>Called</source>
        <translation>Called</translation>
    </message>
    <message>
        <source>Maker</source>
        <translation>Maker</translation>
    </message>
    <message>
        <source>Model</source>
        <translation>Model</translation>
    </message>
    <message>
        <source>Version</source>
        <translation>Version</translation>
    </message>
    <message>
        <source>Reaches</source>
        <translation>Reaches</translation>
    </message>
    <message>
        <source>File</source>
        <translation>File</translation>
    </message>
    <message numerus="yes">
        <source>%n producer(s) cannot be used; the reason is below.</source>
        <translation>
            <numerusform>%n producer cannot be used; the reason is below.</numerusform>
            <numerusform>%n producers cannot be used; the reason is below.</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>RowKinds</name>
    <message>
        <source>GigE cameras</source>
        <translation>GigE cameras</translation>
    </message>
    <message>
        <source>USB cameras</source>
        <translation>USB cameras</translation>
    </message>
    <message>
        <source>Camera Link cameras</source>
        <translation>Camera Link cameras</translation>
    </message>
    <message>
        <source>GenTL cameras</source>
        <translation>GenTL cameras</translation>
    </message>
    <message>
        <source>Virtual devices</source>
        <translation>Virtual devices</translation>
    </message>
    <message>
        <source>Other devices</source>
        <translation>Other devices</translation>
    </message>
</context>
<context>
    <name>RowNames</name>
    <message>
        <source>%1, connection lost</source>
        <translation>%1, connection lost</translation>
    </message>
    <message>
        <source>Disconnect %1</source>
        <translation>Disconnect %1</translation>
    </message>
    <message>
        <source>Connect %1</source>
        <translation>Connect %1</translation>
    </message>
    <message>
        <source>Open or close %1</source>
        <translation>Open or close %1</translation>
    </message>
    <message>
        <source>Refresh %1</source>
        <translation>Refresh %1</translation>
    </message>
</context>
<context>
    <name>UsbExplanation</name>
    <message>
        <source>bus %1</source>
        <translation>bus %1</translation>
    </message>
    <message>
        <source>, port %1</source>
        <translation>, port %1</translation>
    </message>
    <message>
        <source>The camera is plugged in, but its device file %1 does not exist. In a container the folder /dev/bus/usb has to be passed through.</source>
        <translation>The camera is plugged in, but its device file %1 does not exist. In a container the folder /dev/bus/usb has to be passed through.</translation>
    </message>
    <message>
        <source>The camera is plugged in, but you have no permission to open it: %1 may not be written by you.</source>
        <translation>The camera is plugged in, but you have no permission to open it: %1 may not be written by you.</translation>
    </message>
    <message>
        <source>What helps: a rule for udev in /etc/udev/rules.d/70-cameras.rules, then plug the camera in again:</source>
        <translation>What helps: a rule for udev in /etc/udev/rules.d/70-cameras.rules, then plug the camera in again:</translation>
    </message>
    <message>
        <source>The camera is plugged in, but its link runs at %1 Mbit/s, which is too slow for USB3 Vision. What helps: another port, cable or hub.</source>
        <translation>The camera is plugged in, but its link runs at %1 Mbit/s, which is too slow for USB3 Vision. What helps: another port, cable or hub.</translation>
    </message>
    <message>
        <source>The camera is plugged in, but it cannot be used: another driver may have taken it, or it reports itself as not ready.</source>
        <translation>The camera is plugged in, but it cannot be used: another driver may have taken it, or it reports itself as not ready.</translation>
    </message>
    <message>
        <source>The camera could transfer %1 Mbit/s and more, but runs at %2: the port, a hub or the cable is not for USB 3.</source>
        <translation>The camera could transfer %1 Mbit/s and more, but runs at %2: the port, a hub or the cable is not for USB 3.</translation>
    </message>
    <message>
        <source>Connection</source>
        <translation>Connection</translation>
    </message>
    <message>
        <source>Controller</source>
        <translation>Controller</translation>
    </message>
    <message>
        <source>Place</source>
        <translation>Place</translation>
    </message>
    <message>
        <source>Device file</source>
        <translation>Device file</translation>
    </message>
    <message>
        <source>Speed</source>
        <translation>Speed</translation>
    </message>
    <message>
        <source>%1 Mbit/s</source>
        <translation>%1 Mbit/s</translation>
    </message>
    <message>
        <source>USB version</source>
        <translation>USB version</translation>
    </message>
    <message>
        <source>Vendor and product</source>
        <translation>Vendor and product</translation>
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
        <translation>Device GUID</translation>
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
        <translation>The temporary address was sent; the camera takes it in a moment.</translation>
    </message>
    <message>
        <source>The temporary address could not be sent: %1</source>
        <translation>The temporary address could not be sent: %1</translation>
    </message>
    <message>
        <source>Assign temporary address</source>
        <translation>Assign temporary address</translation>
    </message>
    <message>
        <source>Assigning %1 to %2 …</source>
        <translation>Assigning %1 to %2 …</translation>
    </message>
    <message>
        <source>Add camera by address</source>
        <translation>Add camera by address</translation>
    </message>
    <message>
        <source>Address of a GigE Vision camera, also behind a router:</source>
        <translation>Address of a GigE Vision camera, also behind a router:</translation>
    </message>
    <message>
        <source>Add</source>
        <translation>Add</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Cancel</translation>
    </message>
    <message>
        <source>"%1" is no IPv4 address.</source>
        <translation>"%1" is no IPv4 address.</translation>
    </message>
    <message>
        <source>No camera answers at %1.</source>
        <translation>No camera answers at %1.</translation>
    </message>
</context>
<context>
    <name>browser::EventLog</name>
    <message>
        <source>Time</source>
        <translation>Time</translation>
    </message>
    <message>
        <source>Kind</source>
        <translation>Kind</translation>
    </message>
    <message>
        <source>Event</source>
        <translation>Event</translation>
    </message>
    <message>
        <source>Appeared</source>
        <translation>Appeared</translation>
    </message>
    <message>
        <source>Gone</source>
        <translation>Gone</translation>
    </message>
    <message>
        <source>Problem</source>
        <translation>Problem</translation>
    </message>
    <message>
        <source>Note</source>
        <translation>Note</translation>
    </message>
</context>
<context>
    <name>browser::EventReporter</name>
    <message>
        <source>The producer %1 is let go.</source>
        <translation>The producer %1 is let go.</translation>
    </message>
    <message>
        <source>Connected: %1</source>
        <translation>Connected: %1</translation>
    </message>
    <message>
        <source>Disconnected: %1</source>
        <translation>Disconnected: %1</translation>
    </message>
    <message>
        <source>Connection lost: %1: %2</source>
        <translation>Connection lost: %1: %2</translation>
    </message>
    <message>
        <source>Could not connect %1: %2</source>
        <translation>Could not connect %1: %2</translation>
    </message>
    <message>
        <source>The interface could not be opened: %1</source>
        <translation>The interface could not be opened: %1</translation>
    </message>
    <message>
        <source>The search on %1 failed: %2</source>
        <translation>The search on %1 failed: %2</translation>
    </message>
    <message>
        <source>The search on %1 works again.</source>
        <translation>The search on %1 works again.</translation>
    </message>
</context>
<context>
    <name>browser::FilterDialog</name>
    <message>
        <source>Vendors</source>
        <translation>Vendors</translation>
    </message>
    <message>
        <source>Models</source>
        <translation>Models</translation>
    </message>
    <message>
        <source>Whole names are compared; upper and lower case are the same. The filters take effect in a new tree: with the next start, or at once when you rebuild the tree now.</source>
        <translation>Whole names are compared; upper and lower case are the same. The filters take effect in a new tree: with the next start, or at once when you rebuild the tree now.</translation>
    </message>
    <message>
        <source>Filters</source>
        <translation>Filters</translation>
    </message>
    <message>
        <source>Save and rebuild the tree</source>
        <translation>Save and rebuild the tree</translation>
    </message>
    <message>
        <source>Save</source>
        <translation>Save</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Cancel</translation>
    </message>
    <message>
        <source>The filters could not be written to the folder %1.</source>
        <translation>The filters could not be written to the folder %1.</translation>
    </message>
</context>
<context>
    <name>browser::FilterEditor</name>
    <message>
        <source>Off: show all</source>
        <translation>Off: show all</translation>
    </message>
    <message>
        <source>Show only those listed</source>
        <translation>Show only those listed</translation>
    </message>
    <message>
        <source>Hide those listed</source>
        <translation>Hide those listed</translation>
    </message>
    <message>
        <source>Filter:</source>
        <translation>Filter:</translation>
    </message>
    <message>
        <source>Show, one name per line:</source>
        <translation>Show, one name per line:</translation>
    </message>
    <message>
        <source>Hide, one name per line:</source>
        <translation>Hide, one name per line:</translation>
    </message>
    <message>
        <source>Unknown (%1): hides all</source>
        <translation>Unknown (%1): hides all</translation>
    </message>
</context>
<context>
    <name>browser::ForceIpDialog</name>
    <message>
        <source>Assign temporary address</source>
        <translation>Assign temporary address</translation>
    </message>
    <message>
        <source>"%1" keeps this address until it is switched off. Nothing is stored in the camera.</source>
        <translation>"%1" keeps this address until it is switched off. Nothing is stored in the camera.</translation>
    </message>
    <message>
        <source>Address now:</source>
        <translation>Address now:</translation>
    </message>
    <message>
        <source>The card's address:</source>
        <translation>The card's address:</translation>
    </message>
    <message>
        <source>&amp;New address:</source>
        <translation>&amp;New address:</translation>
    </message>
    <message>
        <source>&amp;Mask:</source>
        <translation>&amp;Mask:</translation>
    </message>
    <message>
        <source>&amp;Gateway (may be empty):</source>
        <translation>&amp;Gateway (may be empty):</translation>
    </message>
    <message>
        <source>Assign</source>
        <translation>Assign</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Cancel</translation>
    </message>
    <message>
        <source>The gateway is no address.</source>
        <translation>The gateway is no address.</translation>
    </message>
    <message>
        <source>Will be sent as a broadcast on the card %1, for the hardware address %2 alone: address %3, mask %4, gateway %5.</source>
        <translation>Will be sent as a broadcast on the card %1, for the hardware address %2 alone: address %3, mask %4, gateway %5.</translation>
    </message>
</context>
<context>
    <name>browser::HelpDialog</name>
    <message>
        <source>Keys</source>
        <translation>Keys</translation>
    </message>
    <message>
        <source>Everything works without a mouse</source>
        <translation>Everything works without a mouse</translation>
    </message>
    <message>
        <source>choose a row</source>
        <translation>choose a row</translation>
    </message>
    <message>
        <source>fold and unfold a row</source>
        <translation>fold and unfold a row</translation>
    </message>
    <message>
        <source>connect or disconnect the chosen camera, open or close an interface</source>
        <translation>connect or disconnect the chosen camera, open or close an interface</translation>
    </message>
    <message>
        <source>show what can be done with the row</source>
        <translation>show what can be done with the row</translation>
    </message>
    <message>
        <source>keep the camera on top</source>
        <translation>keep the camera on top</translation>
    </message>
    <message>
        <source>show the live values of a connected camera</source>
        <translation>show the live values of a connected camera</translation>
    </message>
    <message>
        <source>assign a temporary address</source>
        <translation>assign a temporary address</translation>
    </message>
    <message>
        <source>search everything now</source>
        <translation>search everything now</translation>
    </message>
    <message>
        <source>search the chosen group now</source>
        <translation>search the chosen group now</translation>
    </message>
    <message>
        <source>choose the GenTL producers</source>
        <translation>choose the GenTL producers</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>Close</translation>
    </message>
</context>
<context>
    <name>browser::LiveView</name>
    <message>
        <source>Live, in view for %1</source>
        <translation>Live, in view for %1</translation>
    </message>
    <message>
        <source>Connection lost; the values are the last ones read.</source>
        <translation>Connection lost; the values are the last ones read.</translation>
    </message>
    <message>
        <source>Not connected any more; the values are the last ones read.</source>
        <translation>Not connected any more; the values are the last ones read.</translation>
    </message>
    <message>
        <source>Value</source>
        <translation>Value</translation>
    </message>
    <message>
        <source>Now</source>
        <translation>Now</translation>
    </message>
    <message>
        <source>Live values of %1</source>
        <translation>Live values of %1</translation>
    </message>
</context>
<context>
    <name>browser::MainWindow</name>
    <message>
        <source>Devices</source>
        <translation>Devices</translation>
    </message>
    <message>
        <source>Device Browser</source>
        <translation>Device Browser</translation>
    </message>
    <message>
        <source>&amp;Devices</source>
        <translation>&amp;Devices</translation>
    </message>
    <message>
        <source>&amp;Camera</source>
        <translation>&amp;Camera</translation>
    </message>
    <message>
        <source>&amp;Search</source>
        <translation>&amp;Search</translation>
    </message>
    <message>
        <source>&amp;View</source>
        <translation>&amp;View</translation>
    </message>
    <message>
        <source>&amp;Help</source>
        <translation>&amp;Help</translation>
    </message>
    <message>
        <source>Events</source>
        <translation>Events</translation>
    </message>
    <message>
        <source>&amp;Refresh all</source>
        <translation>&amp;Refresh all</translation>
    </message>
    <message>
        <source>&amp;Freeze the tree</source>
        <translation>&amp;Freeze the tree</translation>
    </message>
    <message>
        <source>&amp;Add camera by address…</source>
        <translation>&amp;Add camera by address…</translation>
    </message>
    <message>
        <source>&amp;Filters…</source>
        <translation>&amp;Filters…</translation>
    </message>
    <message>
        <source>&amp;Quit</source>
        <translation>&amp;Quit</translation>
    </message>
    <message>
        <source>Copy &amp;details</source>
        <translation>Copy &amp;details</translation>
    </message>
    <message>
        <source>&amp;Keys</source>
        <translation>&amp;Keys</translation>
    </message>
</context>
<context>
    <name>browser::PreferenceMenus</name>
    <message>
        <source>Refresh &amp;automatically</source>
        <translation>Refresh &amp;automatically</translation>
    </message>
    <message>
        <source>&amp;Transports</source>
        <translation>&amp;Transports</translation>
    </message>
    <message>
        <source>How cameras a&amp;nswer (from the next start on)</source>
        <translation>How cameras a&amp;nswer (from the next start on)</translation>
    </message>
    <message>
        <source>Allow &amp;virtual ports of producers</source>
        <translation>Allow &amp;virtual ports of producers</translation>
    </message>
    <message>
        <source>&amp;Show</source>
        <translation>&amp;Show</translation>
    </message>
    <message>
        <source>&amp;Buttons in rows</source>
        <translation>&amp;Buttons in rows</translation>
    </message>
    <message>
        <source>&amp;Theme</source>
        <translation>&amp;Theme</translation>
    </message>
    <message>
        <source>&amp;Language</source>
        <translation>&amp;Language</translation>
    </message>
    <message>
        <source>&amp;Encoding of device names</source>
        <translation>&amp;Encoding of device names</translation>
    </message>
    <message>
        <source>&amp;Dark</source>
        <translation>&amp;Dark</translation>
    </message>
    <message>
        <source>&amp;Light</source>
        <translation>&amp;Light</translation>
    </message>
    <message>
        <source>As the system's language</source>
        <translation>As the system's language</translation>
    </message>
    <message>
        <source>By &amp;broadcast: cameras of other subnets are found too</source>
        <translation>By &amp;broadcast: cameras of other subnets are found too</translation>
    </message>
    <message>
        <source>To this computer &amp;only: less traffic for others</source>
        <translation>To this computer &amp;only: less traffic for others</translation>
    </message>
</context>
<context>
    <name>browser::RemoteCameras</name>
    <message>
        <source>Added the camera at %1.</source>
        <translation>Added the camera at %1.</translation>
    </message>
    <message>
        <source>No camera answers at %1.</source>
        <translation>No camera answers at %1.</translation>
    </message>
</context>
<context>
    <name>browser::RowActions</name>
    <message>
        <source>&amp;Connect</source>
        <translation>&amp;Connect</translation>
    </message>
    <message>
        <source>Show &amp;live values</source>
        <translation>Show &amp;live values</translation>
    </message>
    <message>
        <source>&amp;Keep on top</source>
        <translation>&amp;Keep on top</translation>
    </message>
    <message>
        <source>&amp;Assign temporary address…</source>
        <translation>&amp;Assign temporary address…</translation>
    </message>
    <message>
        <source>&amp;Take out</source>
        <translation>&amp;Take out</translation>
    </message>
    <message>
        <source>&amp;Refresh this group</source>
        <translation>&amp;Refresh this group</translation>
    </message>
    <message>
        <source>Choose &amp;producers…</source>
        <translation>Choose &amp;producers…</translation>
    </message>
    <message>
        <source>Remove imported pro&amp;ducer</source>
        <translation>Remove imported pro&amp;ducer</translation>
    </message>
    <message>
        <source>Dis&amp;connect</source>
        <translation>Dis&amp;connect</translation>
    </message>
    <message>
        <source>&amp;Close interface</source>
        <translation>&amp;Close interface</translation>
    </message>
    <message>
        <source>&amp;Open interface</source>
        <translation>&amp;Open interface</translation>
    </message>
</context>
<context>
    <name>browser::StatusLine</name>
    <message>
        <source>No transport is chosen</source>
        <translation>No transport is chosen</translation>
    </message>
    <message>
        <source>The tree is frozen</source>
        <translation>The tree is frozen</translation>
    </message>
    <message>
        <source>Waiting on %1 until you refresh: the last search failed</source>
        <translation>Waiting on %1 until you refresh: the last search failed</translation>
    </message>
    <message>
        <source>Searching for the first time: %1 …</source>
        <translation>Searching for the first time: %1 …</translation>
    </message>
    <message>
        <source>Automatic refresh is off</source>
        <translation>Automatic refresh is off</translation>
    </message>
    <message>
        <source>Searching: %1 …</source>
        <translation>Searching: %1 …</translation>
    </message>
    <message>
        <source>Up to date, refreshed automatically</source>
        <translation>Up to date, refreshed automatically</translation>
    </message>
    <message>
        <source>%1 %2 ms</source>
        <translation>%1 %2 ms</translation>
    </message>
    <message>
        <source>Last search: %1</source>
        <translation>Last search: %1</translation>
    </message>
</context>
<context>
    <name>browser::WorkArea</name>
    <message>
        <source>Close %1</source>
        <translation>Close %1</translation>
    </message>
    <message>
        <source>Details</source>
        <translation>Details</translation>
    </message>
    <message>
        <source>Drop a connected camera here to see its live values</source>
        <translation>Drop a connected camera here to see its live values</translation>
    </message>
</context>
</TS>
