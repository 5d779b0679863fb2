<?xml version="1.0" encoding="utf-8"?>
<!-- SPDX-License-Identifier: Apache-2.0 -->
<!DOCTYPE TS>
<TS version="2.1" language="zh_CN" sourcelanguage="en">
<context>
    <name>CameraOverview</name>
    <message>
        <source>No cameras</source>
        <translation>没有相机</translation>
    </message>
    <message>
        <source>%1 connected</source>
        <translation>%1 台已连接</translation>
    </message>
    <message>
        <source>%1 free</source>
        <translation>%1 台空闲</translation>
    </message>
    <message>
        <source>%1 in use</source>
        <translation>%1 台被占用</translation>
    </message>
    <message>
        <source>%1 not usable</source>
        <translation>%1 台不可用</translation>
    </message>
    <message>
        <source>Cameras: %1</source>
        <translation>相机：%1</translation>
    </message>
    <message>
        <source>Cameras</source>
        <translation>相机</translation>
    </message>
    <message>
        <source>and more</source>
        <translation>以及更多</translation>
    </message>
</context>
<context>
    <name>ContainerExplanation</name>
    <message>
        <source>Cameras of other subnets stay hidden here: the reverse-path filter of this card is strict (rp_filter 1) and throws their answers away. An administrator can relax it: set net.ipv4.conf.all.rp_filter and net.ipv4.conf.%1.rp_filter to 0.</source>
        <translation>其他子网的相机在此不可见：该网卡的反向路径过滤为严格模式（rp_filter 1），会丢弃它们的应答。管理员可以放宽：将 net.ipv4.conf.all.rp_filter 和 net.ipv4.conf.%1.rp_filter 设为 0。</translation>
    </message>
    <message>
        <source>Cameras of other subnets are seen here only where a route leads to their address, because the reverse-path filter is on (rp_filter 2).</source>
        <translation>由于反向路径过滤已开启（rp_filter 2），只有存在通往其地址的路由时，才能看到其他子网的相机。</translation>
    </message>
    <message>
        <source>Address</source>
        <translation>地址</translation>
    </message>
    <message>
        <source>Gateway</source>
        <translation>网关</translation>
    </message>
    <message>
        <source>All devices that this computer can find.</source>
        <translation>本机能够找到的所有设备。</translation>
    </message>
    <message>
        <source>Cameras on the network, below the network card that sees them.</source>
        <translation>网络上的相机，列在能看到它们的网卡之下。</translation>
    </message>
    <message>
        <source>Cameras on USB, below their controller where it is known.</source>
        <translation>USB 相机，若控制器已知则列在其下。</translation>
    </message>
    <message>
        <source>Cameras behind the serial ports of frame grabbers.</source>
        <translation>采集卡串口后面的相机。</translation>
    </message>
    <message>
        <source>Cameras that producers find for us. Choose the producers with the button beside the row's refresh button, then open an interface to see its cameras.</source>
        <translation>由 GenTL 生产者找到的相机。用该行刷新按钮旁的按钮选择生产者，然后打开一个接口以查看其相机。</translation>
    </message>
    <message>
        <source>Cameras that are simulated on this computer.</source>
        <translation>在本机上模拟的相机。</translation>
    </message>
    <message>
        <source>Devices that speak the cameras' protocol but are of another class.</source>
        <translation>使用相机协议但属于其他类别的设备。</translation>
    </message>
    <message>
        <source>Network card</source>
        <translation>网卡</translation>
    </message>
    <message>
        <source>Card</source>
        <translation>网卡</translation>
    </message>
    <message>
        <source>Name</source>
        <translation>名称</translation>
    </message>
    <message>
        <source>Hardware address</source>
        <translation>硬件地址</translation>
    </message>
    <message>
        <source>Largest packet</source>
        <translation>最大包</translation>
    </message>
    <message>
        <source>%1 bytes</source>
        <translation>%1 字节</translation>
    </message>
    <message>
        <source>Reverse-path filter</source>
        <translation>反向路径过滤</translation>
    </message>
    <message>
        <source>USB controller</source>
        <translation>USB 控制器</translation>
    </message>
    <message>
        <source>Controller</source>
        <translation>控制器</translation>
    </message>
    <message>
        <source>Identifier</source>
        <translation>标识</translation>
    </message>
    <message>
        <source>Interface of a GenTL producer</source>
        <translation>GenTL 生产者的接口</translation>
    </message>
    <message>
        <source>Open</source>
        <translation>已打开</translation>
    </message>
    <message>
        <source>Closed</source>
        <translation>已关闭</translation>
    </message>
    <message>
        <source>Open it with its button to see its cameras.</source>
        <translation>用其按钮打开以查看相机。</translation>
    </message>
    <message>
        <source>Its producer is opened by virtual port.</source>
        <translation>其生产者通过虚拟端口打开。</translation>
    </message>
    <message>
        <source>Its producer was imported; the row's menu can remove it.</source>
        <translation>其生产者是导入的；可通过该行的菜单移除。</translation>
    </message>
    <message>
        <source>Interface</source>
        <translation>接口</translation>
    </message>
    <message>
        <source>Other name</source>
        <translation>其他名称</translation>
    </message>
    <message>
        <source>Number</source>
        <translation>编号</translation>
    </message>
    <message>
        <source>Group</source>
        <translation>分组</translation>
    </message>
    <message>
        <source>Some card of this computer has a strict reverse-path filter, so cameras of other subnets may stay hidden there.</source>
        <translation>本机某块网卡的反向路径过滤为严格模式，其他子网的相机可能在那里不可见。</translation>
    </message>
</context>
<context>
    <name>DeviceExplanation</name>
    <message>
        <source>GigE Vision camera</source>
        <translation>GigE Vision 相机</translation>
    </message>
    <message>
        <source>USB3 Vision camera</source>
        <translation>USB3 Vision 相机</translation>
    </message>
    <message>
        <source>Camera Link camera</source>
        <translation>Camera Link 相机</translation>
    </message>
    <message>
        <source>Camera of a GenTL producer</source>
        <translation>GenTL 生产者的相机</translation>
    </message>
    <message>
        <source>Device</source>
        <translation>设备</translation>
    </message>
    <message>
        <source>Identity</source>
        <translation>身份</translation>
    </message>
    <message>
        <source>Name</source>
        <translation>名称</translation>
    </message>
    <message>
        <source>Vendor</source>
        <translation>厂商</translation>
    </message>
    <message>
        <source>Model</source>
        <translation>型号</translation>
    </message>
    <message>
        <source>Serial number</source>
        <translation>序列号</translation>
    </message>
    <message>
        <source>Version</source>
        <translation>版本</translation>
    </message>
    <message>
        <source>Identifier</source>
        <translation>标识</translation>
    </message>
    <message>
        <source>free</source>
        <translation>空闲</translation>
    </message>
    <message>
        <source>reading only</source>
        <translation>只读</translation>
    </message>
    <message>
        <source>cannot be opened</source>
        <translation>无法打开</translation>
    </message>
    <message>
        <source>opened by another program</source>
        <translation>被其他程序打开</translation>
    </message>
    <message>
        <source>opened by this program</source>
        <translation>被本程序打开</translation>
    </message>
    <message>
        <source>Connection</source>
        <translation>连接</translation>
    </message>
    <message>
        <source>Serial port</source>
        <translation>串口</translation>
    </message>
    <message>
        <source>Interface</source>
        <translation>接口</translation>
    </message>
    <message>
        <source>Device of the producer</source>
        <translation>生产者的设备</translation>
    </message>
    <message>
        <source>The producer says</source>
        <translation>生产者报告</translation>
    </message>
    <message>
        <source>It is simulated on this computer: it answers from one of the computer's own addresses.</source>
        <translation>它是在本机上模拟的：从本机自己的地址应答。</translation>
    </message>
    <message>
        <source>It speaks the cameras' protocol, but its class is not that of a plain camera.</source>
        <translation>它使用相机协议，但其类别不是普通相机。</translation>
    </message>
    <message>
        <source>You added it by its address, so it may stand in another network behind a router.</source>
        <translation>它是按地址添加的，因此可能位于路由器后面的另一网络中。</translation>
    </message>
    <message>
        <source>It is being connected …</source>
        <translation>正在连接……</translation>
    </message>
    <message>
        <source>It is being given back …</source>
        <translation>正在释放……</translation>
    </message>
    <message>
        <source>This program has it open for reading. It may be dragged into the work area, which shows its live values.</source>
        <translation>本程序以只读方式打开了它。可将其拖入工作区查看实时数值。</translation>
    </message>
    <message>
        <source>This program holds it and keeps the connection alive. It may be dragged into the work area, which shows its live values.</source>
        <translation>本程序占用它并保持连接。可将其拖入工作区查看实时数值。</translation>
    </message>
    <message>
        <source>This program held it, but the connection was lost: %1</source>
        <translation>本程序曾占用它，但连接已丢失：%1</translation>
    </message>
    <message>
        <source>Disconnect to let it go; when it comes back it can be connected again.</source>
        <translation>断开即可释放它；恢复后可再次连接。</translation>
    </message>
    <message>
        <source>The last attempt to connect failed: %1 %2</source>
        <translation>上次连接失败：%1 %2</translation>
    </message>
    <message>
        <source>Nobody holds it. It can be connected.</source>
        <translation>没有程序占用它，可以连接。</translation>
    </message>
    <message>
        <source>Another program holds it. It can be connected as soon as that program gives it back.</source>
        <translation>另一个程序正占用它。该程序释放后即可连接。</translation>
    </message>
    <message>
        <source>It was found, but it cannot be reached.</source>
        <translation>已找到它，但无法到达。</translation>
    </message>
    <message>
        <source>Connection lost</source>
        <translation>连接丢失</translation>
    </message>
    <message>
        <source>Connecting …</source>
        <translation>正在连接……</translation>
    </message>
    <message>
        <source>Disconnecting …</source>
        <translation>正在断开……</translation>
    </message>
</context>
<context>
    <name>DeviceState</name>
    <message>
        <source>Free</source>
        <translation>空闲</translation>
    </message>
    <message>
        <source>In use</source>
        <translation>被占用</translation>
    </message>
    <message>
        <source>Opened by multicast</source>
        <translation>以组播方式打开</translation>
    </message>
    <message>
        <source>Connected</source>
        <translation>已连接</translation>
    </message>
    <message>
        <source>Grabbing</source>
        <translation>采集中</translation>
    </message>
    <message>
        <source>Cannot be used</source>
        <translation>不可用</translation>
    </message>
    <message>
        <source>State unknown</source>
        <translation>状态未知</translation>
    </message>
</context>
<context>
    <name>DeviceValues</name>
    <message>
        <source>exclusive access</source>
        <translation>独占访问</translation>
    </message>
    <message>
        <source>control</source>
        <translation>控制</translation>
    </message>
    <message>
        <source>nobody</source>
        <translation>无</translation>
    </message>
    <message>
        <source>none</source>
        <translation>无</translation>
    </message>
    <message>
        <source>%1 ms</source>
        <translation>%1 毫秒</translation>
    </message>
    <message>
        <source>%1 Mbit/s</source>
        <translation>%1 Mbit/s</translation>
    </message>
    <message>
        <source>%1 bytes</source>
        <translation>%1 字节</translation>
    </message>
</context>
<context>
    <name>ForceIpPlan</name>
    <message>
        <source>This is no address.</source>
        <translation>这不是有效地址。</translation>
    </message>
    <message>
        <source>The mask has to be ones followed by zeros, for example 255.255.255.0.</source>
        <translation>掩码必须由连续的 1 后跟 0 组成，例如 255.255.255.0。</translation>
    </message>
    <message>
        <source>The address is not in the subnet of the card, %1.</source>
        <translation>该地址不在网卡的子网 %1 中。</translation>
    </message>
    <message>
        <source>This address stands for the subnet or its broadcast, not for a device.</source>
        <translation>该地址表示子网或其广播，而不是设备。</translation>
    </message>
    <message>
        <source>The address is in use already.</source>
        <translation>该地址已被使用。</translation>
    </message>
</context>
<context>
    <name>GigEExplanation</name>
    <message>
        <source>The camera has no address yet. A camera that was just switched on asks for one for some seconds.</source>
        <translation>相机尚无地址。刚开机的相机会用几秒钟获取地址。</translation>
    </message>
    <message>
        <source>The camera has the address %1, and no network card of this computer fits it.</source>
        <translation>相机的地址为 %1，本机没有与之匹配的网卡。</translation>
    </message>
    <message>
        <source>The card "%1" (%2) could reach the camera, but by its own mask the camera (%3) does not find this computer.</source>
        <translation>网卡“%1”（%2）可以到达相机，但按相机自己的掩码，相机（%3）找不到本机。</translation>
    </message>
    <message>
        <source>By its own mask the camera (%3) would find this computer, but the card "%1" (%2) does not count it to its subnet.</source>
        <translation>按相机自己的掩码，相机（%3）能找到本机，但网卡“%1”（%2）不认为它在自己的子网中。</translation>
    </message>
    <message>
        <source>The card "%1" sees the camera, but they are not in one subnet: the card has the address %2, the camera %3.</source>
        <translation>网卡“%1”能看到相机，但两者不在同一子网：网卡地址为 %2，相机地址为 %3。</translation>
    </message>
    <message>
        <source>Besides, this computer's reverse-path filter is strict on that card (rp_filter 1): what the camera sends is thrown away, because this computer would not answer %1 through "%2".</source>
        <translation>此外，本机在该网卡上的反向路径过滤为严格模式（rp_filter 1）：由于本机不会通过“%2”应答 %1，相机发送的数据会被丢弃。</translation>
    </message>
    <message>
        <source>Besides, this computer's reverse-path filter (rp_filter 2) throws away what the camera sends, because no route leads to %1.</source>
        <translation>此外，由于没有通往 %1 的路由，本机的反向路径过滤（rp_filter 2）会丢弃相机发送的数据。</translation>
    </message>
    <message>
        <source>persistent address</source>
        <translation>静态地址</translation>
    </message>
    <message>
        <source>DHCP</source>
        <translation>DHCP</translation>
    </message>
    <message>
        <source>link-local address</source>
        <translation>链路本地地址</translation>
    </message>
    <message>
        <source>Camera's network</source>
        <translation>相机的网络</translation>
    </message>
    <message>
        <source>Address</source>
        <translation>地址</translation>
    </message>
    <message>
        <source>Mask</source>
        <translation>掩码</translation>
    </message>
    <message>
        <source>Gateway</source>
        <translation>网关</translation>
    </message>
    <message>
        <source>Hardware address</source>
        <translation>硬件地址</translation>
    </message>
    <message>
        <source>Address comes from</source>
        <translation>地址来源</translation>
    </message>
    <message>
        <source>Could come from</source>
        <translation>可用来源</translation>
    </message>
    <message>
        <source>Seen by the card</source>
        <translation>所在网卡</translation>
    </message>
    <message>
        <source>Card</source>
        <translation>网卡</translation>
    </message>
    <message>
        <source>Largest packet</source>
        <translation>最大包</translation>
    </message>
    <message>
        <source>%1 bytes</source>
        <translation>%1 字节</translation>
    </message>
    <message>
        <source>Reverse-path filter</source>
        <translation>反向路径过滤</translation>
    </message>
    <message>
        <source>Use</source>
        <translation>使用情况</translation>
    </message>
    <message>
        <source>Held by</source>
        <translation>占用者</translation>
    </message>
    <message>
        <source>Images go to</source>
        <translation>图像发往</translation>
    </message>
    <message>
        <source>%1 is an address that a camera gives itself when it gets none from the network.</source>
        <translation>%1 是相机在未从网络获得地址时自行分配的地址。</translation>
    </message>
    <message>
        <source>What helps: assign the camera a temporary address in the card's subnet (menu "Camera"), or give the card an address in the camera's.</source>
        <translation>解决办法：在网卡的子网中为相机分配临时地址（“相机”菜单），或为网卡配置相机子网中的地址。</translation>
    </message>
    <message>
        <source>Another program holds this camera. The camera does not tell which.</source>
        <translation>另一个程序正占用该相机，相机未说明是哪个程序。</translation>
    </message>
    <message>
        <source>A program on this computer (%1) holds this camera.</source>
        <translation>本机（%1）上的一个程序正占用该相机。</translation>
    </message>
    <message>
        <source>A program on the computer %1 holds this camera.</source>
        <translation>计算机 %1 上的一个程序正占用该相机。</translation>
    </message>
    <message>
        <source>It sends the images to the group %1, where others may watch. Connecting opens the camera for reading only and disturbs nobody.</source>
        <translation>它将图像发送到组 %1，其他程序可以观看。连接只会以只读方式打开相机，不影响他人。</translation>
    </message>
    <message>
        <source>It can be connected as soon as that program gives it back, or some seconds after that program has died.</source>
        <translation>该程序释放后即可连接；若该程序异常退出，则在几秒后可连接。</translation>
    </message>
    <message>
        <source>off</source>
        <translation>关闭</translation>
    </message>
    <message>
        <source>strict (rp_filter 1)</source>
        <translation>严格（rp_filter 1）</translation>
    </message>
    <message>
        <source>loose (rp_filter 2)</source>
        <translation>宽松（rp_filter 2）</translation>
    </message>
</context>
<context>
    <name>ProducerExplanation</name>
    <message>
        <source>Switched off</source>
        <translation>已关闭</translation>
    </message>
    <message>
        <source>Switched on, opened by virtual port</source>
        <translation>已启用，通过虚拟端口打开</translation>
    </message>
    <message>
        <source>Imported until this program ends</source>
        <translation>已导入，程序结束前有效</translation>
    </message>
    <message>
        <source>Switched on</source>
        <translation>已启用</translation>
    </message>
    <message>
        <source>The file is not there</source>
        <translation>文件不存在</translation>
    </message>
    <message>
        <source>Works</source>
        <translation>正常</translation>
    </message>
    <message>
        <source>Refused</source>
        <translation>已拒绝</translation>
    </message>
    <message>
        <source>Reports errors</source>
        <translation>报告错误</translation>
    </message>
    <message>
        <source>Does not respond</source>
        <translation>无响应</translation>
    </message>
    <message>
        <source>Not used yet</source>
        <translation>尚未使用</translation>
    </message>
    <message>
        <source>Producer %1</source>
        <translation>生产者 %1</translation>
    </message>
    <message>
        <source>State</source>
        <translation>状态</translation>
    </message>
    <message>
        <source>Reason</source>
        <translation>原因</translation>
    </message>
    <message>
        <source>Choice</source>
        <translation>选择</translation>
    </message>
    <message>
        <source>Called</source>
        <translation>名称</translation>
    </message>
    <message>
        <source>Maker</source>
        <translation>厂商</translation>
    </message>
    <message>
        <source>Model</source>
        <translation>型号</translation>
    </message>
    <message>
        <source>Version</source>
        <translation>版本</translation>
    </message>
    <message>
        <source>Reaches</source>
        <translation>可访问</translation>
    </message>
    <message>
        <source>File</source>
        <translation>文件</translation>
    </message>
    <message numerus="yes">
        <source>%n producer(s) cannot be used; the reason is below.</source>
        <translation>
            <numerusform>%n 个生产者无法使用，原因见下。</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>RowKinds</name>
    <message>
        <source>GigE cameras</source>
        <translation>GigE 相机</translation>
    </message>
    <message>
        <source>USB cameras</source>
        <translation>USB 相机</translation>
    </message>
    <message>
        <source>Camera Link cameras</source>
        <translation>Camera Link 相机</translation>
    </message>
    <message>
        <source>GenTL cameras</source>
        <translation>GenTL 相机</translation>
    </message>
    <message>
        <source>Virtual devices</source>
        <translation>虚拟设备</translation>
    </message>
    <message>
        <source>Other devices</source>
        <translation>其他设备</translation>
    </message>
</context>
<context>
    <name>RowNames</name>
    <message>
        <source>%1, connection lost</source>
        <translation>%1，连接已丢失</translation>
    </message>
    <message>
        <source>Disconnect %1</source>
        <translation>断开 %1</translation>
    </message>
    <message>
        <source>Connect %1</source>
        <translation>连接 %1</translation>
    </message>
    <message>
        <source>Open or close %1</source>
        <translation>打开或关闭 %1</translation>
    </message>
    <message>
        <source>Refresh %1</source>
        <translation>刷新 %1</translation>
    </message>
</context>
<context>
    <name>UsbExplanation</name>
    <message>
        <source>bus %1</source>
        <translation>总线 %1</translation>
    </message>
    <message>
        <source>, port %1</source>
        <translation>，端口 %1</translation>
    </message>
    <message>
        <source>The camera is plugged in, but its device file %1 does not exist. In a container the folder /dev/bus/usb has to be passed through.</source>
        <translation>相机已插入，但其设备文件 %1 不存在。在容器中需要映射 /dev/bus/usb 文件夹。</translation>
    </message>
    <message>
        <source>The camera is plugged in, but you have no permission to open it: %1 may not be written by you.</source>
        <translation>相机已插入，但您没有打开它的权限：您不能写入 %1。</translation>
    </message>
    <message>
        <source>What helps: a rule for udev in /etc/udev/rules.d/70-cameras.rules, then plug the camera in again:</source>
        <translation>解决办法：在 /etc/udev/rules.d/70-cameras.rules 中添加以下 udev 规则，然后重新插入相机：</translation>
    </message>
    <message>
        <source>The camera is plugged in, but its link runs at %1 Mbit/s, which is too slow for USB3 Vision. What helps: another port, cable or hub.</source>
        <translation>相机已插入，但其链路速度仅为 %1 Mbit/s，对 USB3 Vision 来说太慢。解决方法：换一个端口、线缆或集线器。</translation>
    </message>
    <message>
        <source>The camera is plugged in, but it cannot be used: another driver may have taken it, or it reports itself as not ready.</source>
        <translation>相机已插入，但无法使用：可能被其他驱动占用，或相机报告未就绪。</translation>
    </message>
    <message>
        <source>The camera could transfer %1 Mbit/s and more, but runs at %2: the port, a hub or the cable is not for USB 3.</source>
        <translation>相机可传输 %1 Mbit/s 以上，但当前为 %2：端口、集线器或线缆不支持 USB 3。</translation>
    </message>
    <message>
        <source>Connection</source>
        <translation>连接</translation>
    </message>
    <message>
        <source>Controller</source>
        <translation>控制器</translation>
    </message>
    <message>
        <source>Place</source>
        <translation>位置</translation>
    </message>
    <message>
        <source>Device file</source>
        <translation>设备文件</translation>
    </message>
    <message>
        <source>Speed</source>
        <translation>速度</translation>
    </message>
    <message>
        <source>%1 Mbit/s</source>
        <translation>%1 Mbit/s</translation>
    </message>
    <message>
        <source>USB version</source>
        <translation>USB 版本</translation>
    </message>
    <message>
        <source>Vendor and product</source>
        <translation>厂商与产品</translation>
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
        <translation>设备 GUID</translation>
    </message>
</context>
<context>
    <name>browser::DetailsPanel</name>
    <message>
        <source>Details</source>
        <translation>详情</translation>
    </message>
</context>
<context>
    <name>browser::DeviceDialogs</name>
    <message>
        <source>The temporary address was sent; the camera takes it in a moment.</source>
        <translation>临时地址已发送；相机稍后即采用。</translation>
    </message>
    <message>
        <source>The temporary address could not be sent: %1</source>
        <translation>无法发送临时地址：%1</translation>
    </message>
    <message>
        <source>Assign temporary address</source>
        <translation>分配临时地址</translation>
    </message>
    <message>
        <source>Assigning %1 to %2 …</source>
        <translation>正在将 %1 分配给 %2……</translation>
    </message>
    <message>
        <source>Add camera by address</source>
        <translation>按地址添加相机</translation>
    </message>
    <message>
        <source>Address of a GigE Vision camera, also behind a router:</source>
        <translation>GigE Vision 相机的地址（也可在路由器后面）：</translation>
    </message>
    <message>
        <source>Add</source>
        <translation>添加</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>取消</translation>
    </message>
    <message>
        <source>"%1" is no IPv4 address.</source>
        <translation>“%1”不是 IPv4 地址。</translation>
    </message>
    <message>
        <source>No camera answers at %1.</source>
        <translation>%1 处没有相机应答。</translation>
    </message>
</context>
<context>
    <name>browser::EventLog</name>
    <message>
        <source>Time</source>
        <translation>时间</translation>
    </message>
    <message>
        <source>Kind</source>
        <translation>类别</translation>
    </message>
    <message>
        <source>Event</source>
        <translation>事件</translation>
    </message>
    <message>
        <source>Appeared</source>
        <translation>出现</translation>
    </message>
    <message>
        <source>Gone</source>
        <translation>离开</translation>
    </message>
    <message>
        <source>Problem</source>
        <translation>问题</translation>
    </message>
    <message>
        <source>Note</source>
        <translation>提示</translation>
    </message>
</context>
<context>
    <name>browser::EventReporter</name>
    <message>
        <source>The producer %1 is let go.</source>
        <translation>正在释放生产者 %1。</translation>
    </message>
    <message>
        <source>Connected: %1</source>
        <translation>已连接：%1</translation>
    </message>
    <message>
        <source>Disconnected: %1</source>
        <translation>已断开：%1</translation>
    </message>
    <message>
        <source>Connection lost: %1: %2</source>
        <translation>连接丢失：%1：%2</translation>
    </message>
    <message>
        <source>Could not connect %1: %2</source>
        <translation>无法连接 %1：%2</translation>
    </message>
    <message>
        <source>The interface could not be opened: %1</source>
        <translation>无法打开接口：%1</translation>
    </message>
    <message>
        <source>The search on %1 failed: %2</source>
        <translation>在 %1 上搜索失败：%2</translation>
    </message>
    <message>
        <source>The search on %1 works again.</source>
        <translation>在 %1 上的搜索已恢复。</translation>
    </message>
</context>
<context>
    <name>browser::FilterDialog</name>
    <message>
        <source>Vendors</source>
        <translation>厂商</translation>
    </message>
    <message>
        <source>Models</source>
        <translation>型号</translation>
    </message>
    <message>
        <source>Whole names are compared; upper and lower case are the same. The filters take effect in a new tree: with the next start, or at once when you rebuild the tree now.</source>
        <translation>比较完整名称，不区分大小写。过滤器在新的设备树中生效：下次启动时，或立即重建设备树时。</translation>
    </message>
    <message>
        <source>Filters</source>
        <translation>过滤器</translation>
    </message>
    <message>
        <source>Save and rebuild the tree</source>
        <translation>保存并重建设备树</translation>
    </message>
    <message>
        <source>Save</source>
        <translation>保存</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>取消</translation>
    </message>
    <message>
        <source>The filters could not be written to the folder %1.</source>
        <translation>无法将过滤器写入文件夹 %1。</translation>
    </message>
</context>
<context>
    <name>browser::FilterEditor</name>
    <message>
        <source>Off: show all</source>
        <translation>关闭：显示全部</translation>
    </message>
    <message>
        <source>Show only those listed</source>
        <translation>仅显示列出的</translation>
    </message>
    <message>
        <source>Hide those listed</source>
        <translation>隐藏列出的</translation>
    </message>
    <message>
        <source>Filter:</source>
        <translation>过滤：</translation>
    </message>
    <message>
        <source>Show, one name per line:</source>
        <translation>显示，每行一个名称：</translation>
    </message>
    <message>
        <source>Hide, one name per line:</source>
        <translation>隐藏，每行一个名称：</translation>
    </message>
    <message>
        <source>Unknown (%1): hides all</source>
        <translation>未知（%1）：全部隐藏</translation>
    </message>
</context>
<context>
    <name>browser::ForceIpDialog</name>
    <message>
        <source>Assign temporary address</source>
        <translation>分配临时地址</translation>
    </message>
    <message>
        <source>"%1" keeps this address until it is switched off. Nothing is stored in the camera.</source>
        <translation>“%1”在断电前保持该地址，不会写入相机。</translation>
    </message>
    <message>
        <source>Address now:</source>
        <translation>当前地址：</translation>
    </message>
    <message>
        <source>The card's address:</source>
        <translation>网卡地址：</translation>
    </message>
    <message>
        <source>&amp;New address:</source>
        <translation>新地址(&amp;N)：</translation>
    </message>
    <message>
        <source>&amp;Mask:</source>
        <translation>掩码(&amp;M)：</translation>
    </message>
    <message>
        <source>&amp;Gateway (may be empty):</source>
        <translation>网关(&amp;G)（可为空）：</translation>
    </message>
    <message>
        <source>Assign</source>
        <translation>分配</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>取消</translation>
    </message>
    <message>
        <source>The gateway is no address.</source>
        <translation>网关不是有效地址。</translation>
    </message>
    <message>
        <source>Will be sent as a broadcast on the card %1, for the hardware address %2 alone: address %3, mask %4, gateway %5.</source>
        <translation>将在网卡 %1 上以广播发送，仅针对硬件地址 %2：地址 %3，掩码 %4，网关 %5。</translation>
    </message>
</context>
<context>
    <name>browser::HelpDialog</name>
    <message>
        <source>Keys</source>
        <translation>按键</translation>
    </message>
    <message>
        <source>Everything works without a mouse</source>
        <translation>无需鼠标即可完成所有操作</translation>
    </message>
    <message>
        <source>choose a row</source>
        <translation>选择一行</translation>
    </message>
    <message>
        <source>fold and unfold a row</source>
        <translation>折叠或展开一行</translation>
    </message>
    <message>
        <source>connect or disconnect the chosen camera, open or close an interface</source>
        <translation>连接或断开所选相机，打开或关闭接口</translation>
    </message>
    <message>
        <source>show what can be done with the row</source>
        <translation>显示该行可执行的操作</translation>
    </message>
    <message>
        <source>keep the camera on top</source>
        <translation>将相机置顶</translation>
    </message>
    <message>
        <source>show the live values of a connected camera</source>
        <translation>显示已连接相机的实时数值</translation>
    </message>
    <message>
        <source>assign a temporary address</source>
        <translation>分配临时地址</translation>
    </message>
    <message>
        <source>search everything now</source>
        <translation>立即搜索全部</translation>
    </message>
    <message>
        <source>search the chosen group now</source>
        <translation>立即搜索所选分组</translation>
    </message>
    <message>
        <source>choose the GenTL producers</source>
        <translation>选择 GenTL 生产者</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>关闭</translation>
    </message>
</context>
<context>
    <name>browser::LiveView</name>
    <message>
        <source>Live, in view for %1</source>
        <translation>实时，已查看 %1</translation>
    </message>
    <message>
        <source>Connection lost; the values are the last ones read.</source>
        <translation>连接丢失；显示的是最后读取的数值。</translation>
    </message>
    <message>
        <source>Not connected any more; the values are the last ones read.</source>
        <translation>已不再连接；显示的是最后读取的数值。</translation>
    </message>
    <message>
        <source>Value</source>
        <translation>项目</translation>
    </message>
    <message>
        <source>Now</source>
        <translation>当前值</translation>
    </message>
    <message>
        <source>Live values of %1</source>
        <translation>%1 的实时数值</translation>
    </message>
</context>
<context>
    <name>browser::MainWindow</name>
    <message>
        <source>Devices</source>
        <translation>设备</translation>
    </message>
    <message>
        <source>Device Browser</source>
        <translation>设备浏览器</translation>
    </message>
    <message>
        <source>&amp;Devices</source>
        <translation>设备(&amp;D)</translation>
    </message>
    <message>
        <source>&amp;Camera</source>
        <translation>相机(&amp;C)</translation>
    </message>
    <message>
        <source>&amp;Search</source>
        <translation>搜索(&amp;S)</translation>
    </message>
    <message>
        <source>&amp;View</source>
        <translation>视图(&amp;V)</translation>
    </message>
    <message>
        <source>&amp;Help</source>
        <translation>帮助(&amp;H)</translation>
    </message>
    <message>
        <source>Events</source>
        <translation>事件</translation>
    </message>
    <message>
        <source>&amp;Refresh all</source>
        <translation>全部刷新(&amp;R)</translation>
    </message>
    <message>
        <source>&amp;Freeze the tree</source>
        <translation>冻结设备树(&amp;F)</translation>
    </message>
    <message>
        <source>&amp;Add camera by address…</source>
        <translation>按地址添加相机(&amp;A)…</translation>
    </message>
    <message>
        <source>&amp;Filters…</source>
        <translation>过滤器(&amp;F)…</translation>
    </message>
    <message>
        <source>&amp;Quit</source>
        <translation>退出(&amp;Q)</translation>
    </message>
    <message>
        <source>Copy &amp;details</source>
        <translation>复制详情(&amp;D)</translation>
    </message>
    <message>
        <source>&amp;Keys</source>
        <translation>按键(&amp;K)</translation>
    </message>
</context>
<context>
    <name>browser::PreferenceMenus</name>
    <message>
        <source>Refresh &amp;automatically</source>
        <translation>自动刷新(&amp;A)</translation>
    </message>
    <message>
        <source>&amp;Transports</source>
        <translation>传输方式(&amp;T)</translation>
    </message>
    <message>
        <source>How cameras a&amp;nswer (from the next start on)</source>
        <translation>相机应答方式(&amp;N)（下次启动生效）</translation>
    </message>
    <message>
        <source>Allow &amp;virtual ports of producers</source>
        <translation>允许生产者的虚拟端口(&amp;V)</translation>
    </message>
    <message>
        <source>&amp;Show</source>
        <translation>显示(&amp;S)</translation>
    </message>
    <message>
        <source>&amp;Buttons in rows</source>
        <translation>行内按钮(&amp;B)</translation>
    </message>
    <message>
        <source>&amp;Theme</source>
        <translation>主题(&amp;T)</translation>
    </message>
    <message>
        <source>&amp;Language</source>
        <translation>语言(&amp;L)</translation>
    </message>
    <message>
        <source>&amp;Encoding of device names</source>
        <translation>设备名称编码(&amp;E)</translation>
    </message>
    <message>
        <source>&amp;Dark</source>
        <translation>深色(&amp;D)</translation>
    </message>
    <message>
        <source>&amp;Light</source>
        <translation>浅色(&amp;L)</translation>
    </message>
    <message>
        <source>As the system's language</source>
        <translation>与系统语言相同</translation>
    </message>
    <message>
        <source>By &amp;broadcast: cameras of other subnets are found too</source>
        <translation>以广播应答(&amp;B)：也能找到其他子网的相机</translation>
    </message>
    <message>
        <source>To this computer &amp;only: less traffic for others</source>
        <translation>仅应答本机(&amp;O)：减少对他人的流量</translation>
    </message>
</context>
<context>
    <name>browser::RemoteCameras</name>
    <message>
        <source>Added the camera at %1.</source>
        <translation>已添加 %1 处的相机。</translation>
    </message>
    <message>
        <source>No camera answers at %1.</source>
        <translation>%1 处没有相机应答。</translation>
    </message>
</context>
<context>
    <name>browser::RowActions</name>
    <message>
        <source>&amp;Connect</source>
        <translation>连接(&amp;C)</translation>
    </message>
    <message>
        <source>Show &amp;live values</source>
        <translation>显示实时数值(&amp;L)</translation>
    </message>
    <message>
        <source>&amp;Keep on top</source>
        <translation>置顶(&amp;K)</translation>
    </message>
    <message>
        <source>&amp;Assign temporary address…</source>
        <translation>分配临时地址(&amp;A)…</translation>
    </message>
    <message>
        <source>&amp;Take out</source>
        <translation>移除(&amp;T)</translation>
    </message>
    <message>
        <source>&amp;Refresh this group</source>
        <translation>刷新该分组(&amp;R)</translation>
    </message>
    <message>
        <source>Choose &amp;producers…</source>
        <translation>选择生产者(&amp;P)…</translation>
    </message>
    <message>
        <source>Remove imported pro&amp;ducer</source>
        <translation>移除导入的生产者(&amp;D)</translation>
    </message>
    <message>
        <source>Dis&amp;connect</source>
        <translation>断开(&amp;C)</translation>
    </message>
    <message>
        <source>&amp;Close interface</source>
        <translation>关闭接口(&amp;C)</translation>
    </message>
    <message>
        <source>&amp;Open interface</source>
        <translation>打开接口(&amp;O)</translation>
    </message>
</context>
<context>
    <name>browser::StatusLine</name>
    <message>
        <source>No transport is chosen</source>
        <translation>未选择传输方式</translation>
    </message>
    <message>
        <source>The tree is frozen</source>
        <translation>设备树已冻结</translation>
    </message>
    <message>
        <source>Waiting on %1 until you refresh: the last search failed</source>
        <translation>%1 等待手动刷新：上次搜索失败</translation>
    </message>
    <message>
        <source>Searching for the first time: %1 …</source>
        <translation>首次搜索：%1……</translation>
    </message>
    <message>
        <source>Automatic refresh is off</source>
        <translation>自动刷新已关闭</translation>
    </message>
    <message>
        <source>Searching: %1 …</source>
        <translation>正在搜索：%1……</translation>
    </message>
    <message>
        <source>Up to date, refreshed automatically</source>
        <translation>已是最新，自动刷新</translation>
    </message>
    <message>
        <source>%1 %2 ms</source>
        <translation>%1 %2 毫秒</translation>
    </message>
    <message>
        <source>Last search: %1</source>
        <translation>上次搜索：%1</translation>
    </message>
</context>
<context>
    <name>browser::WorkArea</name>
    <message>
        <source>Close %1</source>
        <translation>关闭 %1</translation>
    </message>
    <message>
        <source>Details</source>
        <translation>详情</translation>
    </message>
    <message>
        <source>Drop a connected camera here to see its live values</source>
        <translation>将已连接的相机拖放到此处以查看实时数值</translation>
    </message>
</context>
</TS>
