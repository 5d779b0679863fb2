<?xml version="1.0" encoding="utf-8"?>
<!-- SPDX-License-Identifier: Apache-2.0 -->
<!DOCTYPE TS>
<TS version="2.1" language="zh_CN" sourcelanguage="en">
<context>
    <name>KelInterface</name>
    <message>
        <source>Success.</source>
        <translation>成功。</translation>
    </message>
    <message>
        <source>The device or interface is not open.</source>
        <translation>设备或接口未打开。</translation>
    </message>
    <message>
        <source>The device does not support this.</source>
        <translation>设备不支持此操作。</translation>
    </message>
    <message>
        <source>A parameter is not valid.</source>
        <translation>参数无效。</translation>
    </message>
    <message>
        <source>Another step is needed first.</source>
        <translation>需要先执行其他步骤。</translation>
    </message>
    <message>
        <source>The system is out of memory, sockets or threads.</source>
        <translation>系统内存、套接字或线程不足。</translation>
    </message>
    <message>
        <source>The device did not answer in time.</source>
        <translation>设备未及时应答。</translation>
    </message>
    <message>
        <source>Another program is using the device.</source>
        <translation>设备正被其他程序使用。</translation>
    </message>
    <message>
        <source>The device or its network cannot be reached.</source>
        <translation>无法访问设备或其所在网络。</translation>
    </message>
    <message>
        <source>The system or the device does not permit this.</source>
        <translation>系统或设备不允许此操作。</translation>
    </message>
    <message>
        <source>The answer of the device was not understood.</source>
        <translation>无法识别设备的应答。</translation>
    </message>
    <message>
        <source>Cancelled.</source>
        <translation>已取消。</translation>
    </message>
    <message>
        <source>The file of the GenTL producer does not exist.</source>
        <translation>GenTL Producer 文件不存在。</translation>
    </message>
    <message>
        <source>The file is not a GenTL producer that can be loaded.</source>
        <translation>该文件不是可加载的 GenTL Producer。</translation>
    </message>
    <message>
        <source>The GenTL producer reported an error.</source>
        <translation>GenTL Producer 报告了错误。</translation>
    </message>
    <message>
        <source>The GenTL producer is not open.</source>
        <translation>GenTL Producer 未打开。</translation>
    </message>
    <message>
        <source>The GenTL producer crashed or hung when it was tried, so it is not loaded.</source>
        <translation>GenTL Producer 在试加载时崩溃或无响应，因此未加载。</translation>
    </message>
    <message>
        <source>Unknown error.</source>
        <translation>未知错误。</translation>
    </message>
</context>
</TS>
