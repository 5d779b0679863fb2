<?xml version="1.0" encoding="utf-8"?>
<!-- SPDX-License-Identifier: Apache-2.0 -->
<!DOCTYPE TS>
<TS version="2.1" language="zh_CN" sourcelanguage="en">
<context>
    <name>KelDeviceTree</name>
    <message>
        <source>All</source>
        <translation>全部</translation>
    </message>
    <message>
        <source>Virtual Device</source>
        <translation>虚拟设备</translation>
    </message>
    <message>
        <source>Other Device</source>
        <translation>其他设备</translation>
    </message>
    <message>
        <source>Searching for GenTL devices with the computer...</source>
        <translation>正在搜索计算机上的 GenTL 设备...</translation>
    </message>
    <message>
        <source>Searching for CameraLink camera(s) in the same subnet with the computer...</source>
        <translation>正在搜索与计算机处于同一子网的 CameraLink 相机...</translation>
    </message>
    <message>
        <source>Enumeration failed.</source>
        <translation>枚举失败。</translation>
    </message>
    <message>
        <source>Refresh</source>
        <translation>刷新</translation>
    </message>
    <message>
        <source>Connect</source>
        <translation>连接</translation>
    </message>
    <message>
        <source>Disconnect</source>
        <translation>断开</translation>
    </message>
    <message>
        <source>Choose producers</source>
        <translation>选择生产者</translation>
    </message>
</context>
<context>
    <name>KelGenTLMenu</name>
    <message>
        <source>Default Load</source>
        <translation>默认加载</translation>
    </message>
    <message>
        <source>Import Cti File</source>
        <translation>导入 CTI 文件</translation>
    </message>
    <message>
        <source>Default</source>
        <translation>默认</translation>
    </message>
    <message>
        <source>Virtual Port</source>
        <translation>虚拟端口</translation>
    </message>
    <message>
        <source>Select Cti File.</source>
        <translation>选择 CTI 文件</translation>
    </message>
    <message>
        <source>The cti file have been load.</source>
        <translation>该 CTI 文件已加载。</translation>
    </message>
    <message>
        <source>It is the default load cti file.</source>
        <translation>该文件是默认加载的 CTI 文件。</translation>
    </message>
    <message>
        <source>Prompt</source>
        <translation>提示</translation>
    </message>
</context>
</TS>
