<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="zh_CN" sourcelanguage="en">
<context>
    <name>AlarmFile</name>
    <message>
        <source>The event log cannot be kept: no folder %1</source>
        <translation>无法保存事件日志：没有文件夹 %1</translation>
    </message>
    <message>
        <source>The event log is kept by another window; this one forgets its own</source>
        <translation>事件日志由另一个窗口保存；本窗口的日志不会保存</translation>
    </message>
    <message>
        <source>The event log cannot be kept in %1: %2</source>
        <translation>无法将事件日志保存到 %1：%2</translation>
    </message>
    <message>
        <source>it is no file</source>
        <translation>它不是文件</translation>
    </message>
</context>
<context>
    <name>AlarmLog</name>
    <message>
        <source>Time</source>
        <translation>时间</translation>
    </message>
    <message>
        <source>Device</source>
        <translation>设备</translation>
    </message>
    <message>
        <source>Severity</source>
        <translation>级别</translation>
    </message>
    <message>
        <source>Event</source>
        <translation>事件</translation>
    </message>
    <message>
        <source>State</source>
        <translation>状态</translation>
    </message>
    <message>
        <source>Duration</source>
        <translation>持续时间</translation>
    </message>
    <message>
        <source>Active, not acknowledged</source>
        <translation>活动，未确认</translation>
    </message>
    <message>
        <source>Returned, not acknowledged</source>
        <translation>已恢复，未确认</translation>
    </message>
    <message>
        <source>Active, acknowledged</source>
        <translation>活动，已确认</translation>
    </message>
    <message>
        <source>Returned, acknowledged</source>
        <translation>已恢复，已确认</translation>
    </message>
    <message>
        <source>%1 d</source>
        <translation>%1 天</translation>
    </message>
    <message>
        <source>%1 h</source>
        <translation>%1 小时</translation>
    </message>
    <message>
        <source>%1 min</source>
        <translation>%1 分</translation>
    </message>
    <message>
        <source>%1 s</source>
        <translation>%1 秒</translation>
    </message>
    <message>
        <source>Event %1</source>
        <translation>事件 %1</translation>
    </message>
    <message>
        <source>Not known, acknowledged</source>
        <translation>未知，已确认</translation>
    </message>
    <message>
        <source>Not known, not acknowledged</source>
        <translation>未知，未确认</translation>
    </message>
    <message>
        <source>not known</source>
        <translation>未知</translation>
    </message>
    <message>
        <source>at most %1</source>
        <translation>最多 %1</translation>
    </message>
    <message>
        <source>Communication lost</source>
        <translation>通信中断</translation>
    </message>
    <message>
        <source>Communication established</source>
        <translation>通信已建立</translation>
    </message>
    <message>
        <source>Not watched, acknowledged</source>
        <translation>不再监控，已确认</translation>
    </message>
    <message>
        <source>Not watched, not acknowledged</source>
        <translation>不再监控，未确认</translation>
    </message>
    <message>
        <source>at least %1</source>
        <translation>至少 %1</translation>
    </message>
</context>
<context>
    <name>AlarmPanel</name>
    <message>
        <source>All devices</source>
        <translation>所有设备</translation>
    </message>
    <message>
        <source>Every severity</source>
        <translation>所有级别</translation>
    </message>
    <message>
        <source>Warnings and worse</source>
        <translation>警告及以上</translation>
    </message>
    <message>
        <source>Critical only</source>
        <translation>仅严重</translation>
    </message>
    <message>
        <source>Everything</source>
        <translation>全部</translation>
    </message>
    <message>
        <source>Search</source>
        <translation>搜索</translation>
    </message>
    <message>
        <source>Device of the log</source>
        <translation>日志的设备</translation>
    </message>
    <message>
        <source>Severity of the log</source>
        <translation>日志的级别</translation>
    </message>
    <message>
        <source>State of the log</source>
        <translation>日志的状态</translation>
    </message>
    <message>
        <source>Event log</source>
        <translation>事件日志</translation>
    </message>
    <message>
        <source>Ac&amp;knowledge</source>
        <translation>确认(&amp;K)</translation>
    </message>
    <message>
        <source>Acknowledge the chosen alarms (Space)</source>
        <translation>确认所选的告警（空格键）</translation>
    </message>
    <message>
        <source>Acknowledge all alarms that the filters show</source>
        <translation>确认筛选出的所有告警</translation>
    </message>
    <message>
        <source>&amp;Export CSV…</source>
        <translation>导出 CSV(&amp;E)…</translation>
    </message>
    <message>
        <source>Export the event log</source>
        <translation>导出事件日志</translation>
    </message>
    <message>
        <source>CSV (*.csv)</source>
        <translation>CSV (*.csv)</translation>
    </message>
    <message>
        <source>%1 cannot be written: %2</source>
        <translation>无法写入 %1：%2</translation>
    </message>
    <message>
        <source>Acknowledge &amp;all (%1)</source>
        <translation>全部确认(&amp;A)(%1)</translation>
    </message>
    <message>
        <source>Open alarms</source>
        <translation>未了结的告警</translation>
    </message>
    <message>
        <source>Open alarms are active or not acknowledged</source>
        <translation>未了结的告警：活动或未确认</translation>
    </message>
</context>
<context>
    <name>ConnectionTest</name>
    <message>
        <source>The device answers.</source>
        <translation>设备有应答。</translation>
    </message>
    <message>
        <source>there is no driver for it</source>
        <translation>没有它的驱动程序</translation>
    </message>
</context>
<context>
    <name>DeviceEditor</name>
    <message>
        <source>Remove %1?
It is not monitored any more; its events stay in the log.</source>
        <translation>移除 %1？
将不再监控它；它的事件仍留在日志中。</translation>
    </message>
    <message>
        <source>Remove device</source>
        <translation>移除设备</translation>
    </message>
</context>
<context>
    <name>DeviceForm</name>
    <message>
        <source>None</source>
        <translation>无</translation>
    </message>
    <message>
        <source>Even</source>
        <translation>偶校验</translation>
    </message>
    <message>
        <source>Odd</source>
        <translation>奇校验</translation>
    </message>
    <message>
        <source>Space</source>
        <translation>空校验</translation>
    </message>
    <message>
        <source>Mark</source>
        <translation>标记校验</translation>
    </message>
    <message>
        <source>Add device</source>
        <translation>添加设备</translation>
    </message>
    <message>
        <source>Edit device %1</source>
        <translation>编辑设备 %1</translation>
    </message>
    <message>
        <source>Add</source>
        <translation>添加</translation>
    </message>
    <message>
        <source>Change</source>
        <translation>修改</translation>
    </message>
    <message>
        <source>&amp;Name:</source>
        <translation>名称(&amp;N)：</translation>
    </message>
    <message>
        <source>Connection:</source>
        <translation>连接：</translation>
    </message>
    <message>
        <source>&amp;Serial port</source>
        <translation>串口(&amp;S)</translation>
    </message>
    <message>
        <source>Net&amp;work</source>
        <translation>网络(&amp;W)</translation>
    </message>
    <message>
        <source>%1 – %2</source>
        <translation>%1 – %2</translation>
    </message>
    <message>
        <source>as in serial.ini</source>
        <translation>按 serial.ini</translation>
    </message>
    <message>
        <source>&amp;Port:</source>
        <translation>端口(&amp;P)：</translation>
    </message>
    <message>
        <source>&amp;Rate (baud):</source>
        <translation>波特率(&amp;R)：</translation>
    </message>
    <message>
        <source>P&amp;arity:</source>
        <translation>校验(&amp;A)：</translation>
    </message>
    <message>
        <source>A&amp;ddress:</source>
        <translation>地址(&amp;D)：</translation>
    </message>
    <message>
        <source>&amp;Host:</source>
        <translation>主机(&amp;H)：</translation>
    </message>
    <message>
        <source>&amp;Unit:</source>
        <translation>单元(&amp;U)：</translation>
    </message>
    <message>
        <source>&amp;Test connection</source>
        <translation>测试连接(&amp;T)</translation>
    </message>
    <message>
        <source>Which host is it on?</source>
        <translation>它在哪个主机上？</translation>
    </message>
    <message>
        <source>Which port is it on?</source>
        <translation>它在哪个端口上？</translation>
    </message>
    <message>
        <source>The device needs a name.</source>
        <translation>设备需要一个名称。</translation>
    </message>
    <message>
        <source>A name or place with these characters cannot be used.</source>
        <translation>不能使用含有这些字符的名称或位置。</translation>
    </message>
    <message>
        <source>Testing…</source>
        <translation>正在测试…</translation>
    </message>
    <message>
        <source>The unit is 1 to 247; 0 and 255 stand for the peer itself.</source>
        <translation>单元地址为 1 至 247；0 和 255 表示对端设备本身。</translation>
    </message>
</context>
<context>
    <name>DevicePages</name>
    <message>
        <source>The plug-in has no view for this device.</source>
        <translation>插件没有此设备的视图。</translation>
    </message>
</context>
<context>
    <name>DeviceSpec</name>
    <message>
        <source>%1, address %2</source>
        <translation>%1，地址 %2</translation>
    </message>
    <message>
        <source>%1 port %2, unit %3</source>
        <translation>%1 端口 %2，单元 %3</translation>
    </message>
    <message>
        <source>two devices are named &quot;%1&quot;</source>
        <translation>有两个设备名为“%1”</translation>
    </message>
    <message>
        <source>&quot;%1&quot; and &quot;%2&quot; are one name in the configuration files</source>
        <translation>“%1”和“%2”在配置文件中是同一个名称</translation>
    </message>
    <message>
        <source>%1 and %2 ask for different settings of %3</source>
        <translation>%1 和 %2 要求 %3 的不同设置</translation>
    </message>
</context>
<context>
    <name>DeviceStatus</name>
    <message>
        <source>Clearing</source>
        <translation>清除中</translation>
    </message>
    <message>
        <source>Power on</source>
        <translation>上电</translation>
    </message>
    <message>
        <source>Standby</source>
        <translation>待机</translation>
    </message>
    <message>
        <source>On bypass</source>
        <translation>旁路供电</translation>
    </message>
    <message>
        <source>On line</source>
        <translation>在线</translation>
    </message>
    <message>
        <source>On battery</source>
        <translation>电池供电</translation>
    </message>
    <message>
        <source>Battery test</source>
        <translation>电池测试</translation>
    </message>
    <message>
        <source>Fault</source>
        <translation>故障</translation>
    </message>
    <message>
        <source>Frequency conversion</source>
        <translation>变频</translation>
    </message>
    <message>
        <source>ECO</source>
        <translation>ECO</translation>
    </message>
    <message>
        <source>Shut down</source>
        <translation>关机</translation>
    </message>
    <message>
        <source>Test</source>
        <translation>测试</translation>
    </message>
    <message>
        <source>Normal</source>
        <translation>正常</translation>
    </message>
    <message>
        <source>Waiting</source>
        <translation>等待</translation>
    </message>
    <message>
        <source>Attention</source>
        <translation>注意</translation>
    </message>
    <message>
        <source>No communication</source>
        <translation>无通信</translation>
    </message>
    <message>
        <source>Alarm</source>
        <translation>告警</translation>
    </message>
    <message>
        <source>Never connected</source>
        <translation>从未连接</translation>
    </message>
</context>
<context>
    <name>DriverCheck</name>
    <message>
        <source>no driver, so that no device can be reached: %1; looked for in %2; --driver-dir names another directory</source>
        <translation>没有驱动程序，无法连接任何设备：%1；查找位置：%2；可用 --driver-dir 指定其他目录</translation>
    </message>
</context>
<context>
    <name>FleetModel</name>
    <message>
        <source>State</source>
        <translation>状态</translation>
    </message>
    <message>
        <source>Device</source>
        <translation>设备</translation>
    </message>
    <message>
        <source>Mode</source>
        <translation>模式</translation>
    </message>
    <message>
        <source>Load</source>
        <translation>负载</translation>
    </message>
    <message>
        <source>Charge</source>
        <translation>电量</translation>
    </message>
    <message>
        <source>Autonomy</source>
        <translation>后备时间</translation>
    </message>
    <message>
        <source>Oldest alarm</source>
        <translation>最早的告警</translation>
    </message>
    <message>
        <source>Age</source>
        <translation>数据时间</translation>
    </message>
    <message>
        <source>%1 min</source>
        <translation>%1 分</translation>
    </message>
    <message>
        <source>%1: %2</source>
        <translation>%1：%2</translation>
    </message>
    <message>
        <source>%1, for %2</source>
        <translation>%1，已 %2</translation>
    </message>
</context>
<context>
    <name>FleetPage</name>
    <message>
        <source>No devices yet. &quot;Add device…&quot; asks where the first one is.</source>
        <translation>尚无设备。请用“添加设备…”输入第一台设备的位置。</translation>
    </message>
    <message>
        <source>Devices</source>
        <translation>设备</translation>
    </message>
    <message>
        <source>&amp;Open</source>
        <translation>打开(&amp;O)</translation>
    </message>
    <message>
        <source>Add &amp;device…</source>
        <translation>添加设备(&amp;D)…</translation>
    </message>
    <message>
        <source>Ed&amp;it…</source>
        <translation>编辑(&amp;I)…</translation>
    </message>
    <message>
        <source>&amp;Remove…</source>
        <translation>移除(&amp;R)…</translation>
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
    <message>
        <source>%1, but &quot;%2&quot; holds no records</source>
        <translation>%1，但“%2”中没有记录</translation>
    </message>
</context>
<context>
    <name>HostWindow</name>
    <message>
        <source>%1: %2</source>
        <translation>%1：%2</translation>
    </message>
    <message>
        <source>KX300 device host</source>
        <translation>KX300 设备主机</translation>
    </message>
</context>
<context>
    <name>ReachCheck</name>
    <message>
        <source>the peer is there, but unit %1 does not answer</source>
        <translation>对方可以连接，但单元 %1 没有应答</translation>
    </message>
    <message>
        <source>the connection is refused</source>
        <translation>连接被拒绝</translation>
    </message>
    <message>
        <source>there is no such host</source>
        <translation>没有这个主机</translation>
    </message>
    <message>
        <source>the peer does not answer</source>
        <translation>对方没有应答</translation>
    </message>
    <message>
        <source>there is no such port</source>
        <translation>没有这个端口</translation>
    </message>
    <message>
        <source>that is no port</source>
        <translation>这不是端口</translation>
    </message>
    <message>
        <source>no permission; the port belongs to the group &quot;%1&quot;</source>
        <translation>没有权限；端口属于组“%1”</translation>
    </message>
    <message>
        <source>nobody answers at address %1: rate, parity and cable?</source>
        <translation>地址 %1 没有应答：请检查波特率、校验和电缆</translation>
    </message>
</context>
<context>
    <name>Severities</name>
    <message>
        <source>Information</source>
        <translation>信息</translation>
    </message>
    <message>
        <source>Warning</source>
        <translation>警告</translation>
    </message>
    <message>
        <source>Critical</source>
        <translation>严重</translation>
    </message>
</context>
<context>
    <name>TopBar</name>
    <message>
        <source>All de&amp;vices</source>
        <translation>所有设备(&amp;V)</translation>
    </message>
    <message>
        <source>&amp;User:</source>
        <translation>用户(&amp;U)：</translation>
    </message>
    <message>
        <source>&amp;Language:</source>
        <translation>语言(&amp;L)：</translation>
    </message>
    <message>
        <source>Device</source>
        <translation>设备</translation>
    </message>
    <message>
        <source>Open a device</source>
        <translation>打开设备</translation>
    </message>
</context>
<context>
    <name>UserLevels</name>
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
        <source>Give the user at this window the rights of &quot;%1&quot;?
Devices can then be operated from it.</source>
        <translation>给予此窗口的用户“%1”的权限？
之后可以从这里操作设备。</translation>
    </message>
    <message>
        <source>User level</source>
        <translation>用户级别</translation>
    </message>
</context>
</TS>
