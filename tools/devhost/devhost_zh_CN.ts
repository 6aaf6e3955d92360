<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="zh_CN" sourcelanguage="en">
<context>
    <name>DeviceState</name>
    <message>
        <source>connecting</source>
        <translation>正在连接</translation>
    </message>
    <message>
        <source>communicating</source>
        <translation>通信正常</translation>
    </message>
    <message>
        <source>communicating, events present</source>
        <translation>通信正常,有事件</translation>
    </message>
    <message>
        <source>communication lost</source>
        <translation>通信中断</translation>
    </message>
</context>
<context>
    <name>EventTable</name>
    <message>
        <source>▲ appeared</source>
        <translation>▲ 出现</translation>
    </message>
    <message>
        <source>● disappeared</source>
        <translation>● 消失</translation>
    </message>
    <message>
        <source>■ lost</source>
        <translation>■ 中断</translation>
    </message>
    <message>
        <source>● restored</source>
        <translation>● 恢复</translation>
    </message>
    <message>
        <source>● result</source>
        <translation>● 结果</translation>
    </message>
    <message>
        <source>Event log</source>
        <translation>事件日志</translation>
    </message>
</context>
<context>
    <name>HostEvent</name>
    <message>
        <source>parameter request</source>
        <translation>参数请求</translation>
    </message>
    <message>
        <source>communication restored</source>
        <translation>通信恢复</translation>
    </message>
    <message>
        <source>communication lost</source>
        <translation>通信中断</translation>
    </message>
    <message>
        <source>history result</source>
        <translation>历史下载结果</translation>
    </message>
    <message>
        <source>state changed</source>
        <translation>状态变化</translation>
    </message>
    <message>
        <source>event</source>
        <translation>事件</translation>
    </message>
    <message>
        <source>report</source>
        <translation>报告</translation>
    </message>
    <message>
        <source>abnormal input</source>
        <translation>输入异常</translation>
    </message>
    <message>
        <source>battery voltage low</source>
        <translation>电池电压低</translation>
    </message>
</context>
<context>
    <name>HostWindow</name>
    <message>
        <source>Observer</source>
        <translation>观察员</translation>
    </message>
    <message>
        <source>Operator</source>
        <translation>操作员</translation>
    </message>
    <message>
        <source>Administrator</source>
        <translation>管理员</translation>
    </message>
    <message>
        <source>Device</source>
        <translation>设备</translation>
    </message>
    <message>
        <source>&amp;User:</source>
        <translation>用户(&amp;U):</translation>
    </message>
    <message>
        <source>&amp;Language:</source>
        <translation>语言(&amp;L):</translation>
    </message>
    <message>
        <source>The plug-in has no view for this device.</source>
        <translation>插件没有此设备的视图。</translation>
    </message>
    <message>
        <source>%1 - %2</source>
        <translation>%1 - %2</translation>
    </message>
</context>
</TS>
