<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="zh_CN">
<context>
    <name>AlarmPage</name>
    <message>
        <source>Nothing received yet</source>
        <translation>尚未收到数据</translation>
    </message>
    <message>
        <source>Unknown – %1</source>
        <translation>未知：%1</translation>
    </message>
    <message>
        <source>%1 active</source>
        <translation>当前 %1 条</translation>
    </message>
    <message>
        <source>%1 · last cleared %2</source>
        <translation>%1 · 最近恢复 %2</translation>
    </message>
    <message>
        <source>Worst first</source>
        <translation>按严重程度</translation>
    </message>
    <message>
        <source>Critical events first; otherwise the newest first</source>
        <translation>严重事件在前；否则最新的在前</translation>
    </message>
</context>
<context>
    <name>BusyCover</name>
    <message>
        <source>The upgrade ended with a problem.</source>
        <translation>升级结束时出现问题。</translation>
    </message>
</context>
<context>
    <name>ControlPage</name>
    <message>
        <source>Double-click a row to change it; or Up, Down and Enter on the tabs</source>
        <translation>双击一行即可修改；也可在标签上用上下键和回车键</translation>
    </message>
</context>
<context>
    <name>Dialog</name>
    <message>
        <source>Ok</source>
        <translation>确定</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>取消</translation>
    </message>
    <message>
        <source>Value:</source>
        <translation>数值：</translation>
    </message>
    <message>
        <source>Option:</source>
        <translation>选项：</translation>
    </message>
    <message>
        <source>Range:%1~%2</source>
        <translation>范围：%1~%2</translation>
    </message>
    <message>
        <source>The value is out of range!</source>
        <translation>数值超出范围！</translation>
    </message>
    <message>
        <source>Now: %1</source>
        <translation>当前：%1</translation>
    </message>
</context>
<context>
    <name>EnergyBlock</name>
    <message>
        <source>Shows or hides the values</source>
        <translation>显示或隐藏数值</translation>
    </message>
    <message>
        <source>%1: click to show or hide the values</source>
        <translation>%1：单击可显示或隐藏数值</translation>
    </message>
</context>
<context>
    <name>Energyline</name>
    <message>
        <source>Abnormal</source>
        <translation>异常</translation>
    </message>
    <message>
        <source>Normal</source>
        <translation>正常</translation>
    </message>
    <message>
        <source>F&amp;A clear</source>
        <translation>清除故障告警</translation>
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
        <source>Bypass</source>
        <translation>旁路</translation>
    </message>
    <message>
        <source>Online</source>
        <translation>在线</translation>
    </message>
    <message>
        <source>Battery</source>
        <translation>电池</translation>
    </message>
    <message>
        <source>Battery test</source>
        <translation>电池自检</translation>
    </message>
    <message>
        <source>Fault</source>
        <translation>故障</translation>
    </message>
    <message>
        <source>Freq. conversion</source>
        <translation>变频</translation>
    </message>
    <message>
        <source>ECO</source>
        <translation>经济模式（ECO）</translation>
    </message>
    <message>
        <source>Shutdown</source>
        <translation>关机</translation>
    </message>
    <message>
        <source>Test</source>
        <translation>测试</translation>
    </message>
    <message>
        <source>None</source>
        <translation>无输出</translation>
    </message>
    <message>
        <source>Load on bypass</source>
        <translation>旁路供电</translation>
    </message>
    <message>
        <source>Load on inverter</source>
        <translation>逆变供电</translation>
    </message>
    <message>
        <source>Load on other</source>
        <translation>其他供电</translation>
    </message>
    <message>
        <source>Disconnect</source>
        <translation>未接</translation>
    </message>
    <message>
        <source>Equalized charge</source>
        <translation>均充</translation>
    </message>
    <message>
        <source>Float charge</source>
        <translation>浮充</translation>
    </message>
    <message>
        <source>Discharge</source>
        <translation>放电</translation>
    </message>
    <message>
        <source>Off</source>
        <translation>关闭</translation>
    </message>
    <message>
        <source>Soft start</source>
        <translation>软启动</translation>
    </message>
    <message>
        <source>PFC mode</source>
        <translation>PFC 模式</translation>
    </message>
    <message>
        <source>Battery mode</source>
        <translation>电池模式</translation>
    </message>
    <message>
        <source>Normal run</source>
        <translation>正常运行</translation>
    </message>
    <message>
        <source>Voltage:</source>
        <translation>电压：</translation>
    </message>
    <message>
        <source>Current:</source>
        <translation>电流：</translation>
    </message>
    <message>
        <source>Frequency:</source>
        <translation>频率：</translation>
    </message>
    <message>
        <source>Status:</source>
        <translation>状态：</translation>
    </message>
    <message>
        <source>REC status:</source>
        <translation>整流状态：</translation>
    </message>
    <message>
        <source>REC temperature:</source>
        <translation>整流温度：</translation>
    </message>
    <message>
        <source>INV status:</source>
        <translation>逆变状态：</translation>
    </message>
    <message>
        <source>INV temperature:</source>
        <translation>逆变温度：</translation>
    </message>
    <message>
        <source>INV current:</source>
        <translation>逆变电流：</translation>
    </message>
    <message>
        <source>Apparent power:</source>
        <translation>视在功率：</translation>
    </message>
    <message>
        <source>Active power:</source>
        <translation>有功功率：</translation>
    </message>
    <message>
        <source>Reactive power:</source>
        <translation>无功功率：</translation>
    </message>
    <message>
        <source>Load percentage:</source>
        <translation>负载率：</translation>
    </message>
    <message>
        <source>Temperature:</source>
        <translation>温度：</translation>
    </message>
    <message>
        <source>Remaining time:</source>
        <translation>剩余时间：</translation>
    </message>
    <message>
        <source>%1 Min</source>
        <translation>%1 分钟</translation>
    </message>
    <message>
        <source>Remaining capacity:</source>
        <translation>剩余容量：</translation>
    </message>
    <message>
        <source>Type:</source>
        <translation>型号：</translation>
    </message>
    <message>
        <source>Name:</source>
        <translation>名称：</translation>
    </message>
    <message>
        <source>Manufacturer:</source>
        <translation>厂家：</translation>
    </message>
    <message>
        <source>Running time:</source>
        <translation>运行时间：</translation>
    </message>
    <message>
        <source>%1 days</source>
        <translation>%1 天</translation>
    </message>
    <message>
        <source>Working mode:</source>
        <translation>工作模式：</translation>
    </message>
    <message>
        <source>INPUT</source>
        <translation>输入</translation>
    </message>
    <message>
        <source>BYPASS</source>
        <translation>旁路</translation>
    </message>
    <message>
        <source>REC/INV</source>
        <translation>整流/逆变</translation>
    </message>
    <message>
        <source>LOAD</source>
        <translation>负载</translation>
    </message>
    <message>
        <source>BATTERY</source>
        <translation>电池</translation>
    </message>
    <message>
        <source>REC</source>
        <translation>整流</translation>
    </message>
    <message>
        <source>INV</source>
        <translation>逆变</translation>
    </message>
</context>
<context>
    <name>EntryRemark</name>
    <message>
        <source>Will be cut to %1</source>
        <translation>将截短为 %1</translation>
    </message>
    <message>
        <source>Not a number: counts as 0</source>
        <translation>不是数字：按 0 处理</translation>
    </message>
    <message>
        <source>Out of range</source>
        <translation>超出范围</translation>
    </message>
    <message>
        <source>Will be sent as %1</source>
        <translation>将按 %1 发送</translation>
    </message>
</context>
<context>
    <name>EventSeverity</name>
    <message>
        <source>Critical</source>
        <translation>严重</translation>
    </message>
    <message>
        <source>Warning</source>
        <translation>警告</translation>
    </message>
    <message>
        <source>Information</source>
        <translation>信息</translation>
    </message>
</context>
<context>
    <name>HistoryNote</name>
    <message>
        <source>Open folder</source>
        <translation>打开文件夹</translation>
    </message>
    <message>
        <source>Shows the folder of the downloaded history</source>
        <translation>显示历史记录文件所在的文件夹</translation>
    </message>
    <message>
        <source>The download was cancelled</source>
        <translation>已取消下载</translation>
    </message>
    <message>
        <source>The history is being downloaded … %1</source>
        <translation>正在下载历史记录… %1</translation>
    </message>
    <message>
        <source>The history was not saved: %1</source>
        <translation>历史记录未保存：%1</translation>
    </message>
    <message>
        <source>No history records in %1</source>
        <translation>%1 中没有历史记录</translation>
    </message>
    <message>
        <source>1 record in %1</source>
        <translation>%1 中有 1 条记录</translation>
    </message>
    <message>
        <source>%1 records in %2</source>
        <translation>%2 中有 %1 条记录</translation>
    </message>
</context>
<context>
    <name>LinkWatch</name>
    <message>
        <source>No communication since %1</source>
        <translation>自 %1 起无通信</translation>
    </message>
    <message>
        <source>No communication</source>
        <translation>无通信</translation>
    </message>
</context>
<context>
    <name>MaintenancePage</name>
    <message>
        <source>%1: %2</source>
        <translation>%1：%2</translation>
    </message>
</context>
<context>
    <name>MsgBox</name>
    <message>
        <source>Ok</source>
        <translation>确定</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>取消</translation>
    </message>
    <message>
        <source>Details</source>
        <translation>详情</translation>
    </message>
</context>
<context>
    <name>QuitWait</name>
    <message>
        <source>The UPS is being upgraded. The program ends once the upgrade is done.</source>
        <translation>UPS 正在升级。升级完成后程序将退出。</translation>
    </message>
    <message>
        <source>Break the upgrade off</source>
        <translation>中断升级</translation>
    </message>
    <message>
        <source>Break the upgrade off? The UPS may be left without firmware.</source>
        <translation>中断升级？UPS 可能会没有固件。</translation>
    </message>
</context>
<context>
    <name>RecordTable</name>
    <message>
        <source>since before %1</source>
        <translation>早于 %1</translation>
    </message>
    <message>
        <source>No events</source>
        <translation>无事件</translation>
    </message>
</context>
<context>
    <name>Request</name>
    <message>
        <source>Command %1</source>
        <translation>命令 %1</translation>
    </message>
    <message>
        <source>waiting</source>
        <translation>等待中</translation>
    </message>
    <message>
        <source>accepted by the device</source>
        <translation>设备已接受</translation>
    </message>
    <message>
        <source>confirmed by the device&apos;s values</source>
        <translation>设备数据已确认</translation>
    </message>
    <message>
        <source>accepted, but the device reports %1</source>
        <translation>已接受，但设备报告为 %1</translation>
    </message>
    <message>
        <source>refused by the device</source>
        <translation>设备已拒绝</translation>
    </message>
    <message>
        <source>no answer: it may have been carried out, or not</source>
        <translation>无应答：可能已执行，也可能未执行</translation>
    </message>
    <message>
        <source>not sent: no communication</source>
        <translation>未发送：无通信</translation>
    </message>
    <message>
        <source>not sent: this program has not passed it on</source>
        <translation>未发送：本程序尚未转交</translation>
    </message>
</context>
<context>
    <name>Service</name>
    <message>
        <source>no service manager answers</source>
        <translation>没有服务管理器响应</translation>
    </message>
    <message>
        <source>unchanged</source>
        <translation>未改变</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is not the name of a service.</source>
        <translation>“%1”不是有效的服务名称。</translation>
    </message>
    <message>
        <source>The control of &quot;%1&quot; is not supported here: %2</source>
        <translation>此处不支持控制“%1”：%2</translation>
    </message>
    <message>
        <source>The service &quot;%1&quot; is not installed.</source>
        <translation>服务“%1”未安装。</translation>
    </message>
    <message>
        <source>You are not allowed to control the service &quot;%1&quot;.</source>
        <translation>您无权控制服务“%1”。</translation>
    </message>
    <message>
        <source>The request to the service &quot;%1&quot; did not end in time.</source>
        <translation>对服务“%1”的请求超时。</translation>
    </message>
    <message>
        <source>The service manager went away; what became of &quot;%1&quot; is unknown.</source>
        <translation>服务管理器已断开，“%1”的状态未知。</translation>
    </message>
    <message>
        <source>The service &quot;%1&quot; does not listen to requests.</source>
        <translation>服务“%1”不接受请求。</translation>
    </message>
    <message>
        <source>The request to the service &quot;%1&quot; failed: %2</source>
        <translation>对服务“%1”的请求失败：%2</translation>
    </message>
    <message>
        <source>its unit file is not valid</source>
        <translation>单元文件无效</translation>
    </message>
    <message>
        <source>its unit file cannot be read</source>
        <translation>单元文件无法读取</translation>
    </message>
    <message>
        <source>it is blocked by the administrator</source>
        <translation>已被管理员禁用</translation>
    </message>
    <message>
        <source>another request replaced it</source>
        <translation>已被另一请求取代</translation>
    </message>
    <message>
        <source>it took too long</source>
        <translation>耗时过长</translation>
    </message>
    <message>
        <source>a service that it needs did not start</source>
        <translation>其依赖的服务未能启动</translation>
    </message>
    <message>
        <source>it ended with an error</source>
        <translation>因错误而结束</translation>
    </message>
    <message>
        <source>the manager skipped it</source>
        <translation>服务管理器已跳过该请求</translation>
    </message>
    <message>
        <source>it was killed</source>
        <translation>已被强制终止</translation>
    </message>
    <message>
        <source>it crashed</source>
        <translation>已崩溃</translation>
    </message>
    <message>
        <source>it hung</source>
        <translation>已停止响应</translation>
    </message>
    <message>
        <source>it ended before it was ready</source>
        <translation>尚未就绪即已结束</translation>
    </message>
    <message>
        <source>the system lacks resources for it</source>
        <translation>系统资源不足</translation>
    </message>
    <message>
        <source>it was started too often</source>
        <translation>启动过于频繁</translation>
    </message>
    <message>
        <source>a condition of its unit is not met</source>
        <translation>单元的条件未满足</translation>
    </message>
    <message>
        <source>it ended right after the start</source>
        <translation>启动后立即结束</translation>
    </message>
    <message>
        <source>it is still running</source>
        <translation>仍在运行</translation>
    </message>
    <message>
        <source>The service had to be killed: it did not end.</source>
        <translation>服务未能自行结束，已被强制终止。</translation>
    </message>
    <message>
        <source>A user&apos;s service cannot have the account &quot;%1&quot;.</source>
        <translation>用户服务不能使用帐户“%1”。</translation>
    </message>
    <message>
        <source>There is no account &quot;%1&quot;.</source>
        <translation>帐户“%1”不存在。</translation>
    </message>
    <message>
        <source>The file &quot;%1&quot; is not ours to replace.</source>
        <translation>文件“%1”不属于本程序，不能替换。</translation>
    </message>
    <message>
        <source>The file &quot;%1&quot; cannot be written: %2</source>
        <translation>文件“%1”无法写入：%2</translation>
    </message>
    <message>
        <source>The file &quot;%1&quot; is not ours to remove.</source>
        <translation>文件“%1”不属于本程序，不能删除。</translation>
    </message>
    <message>
        <source>The file &quot;%1&quot; cannot be removed: %2</source>
        <translation>文件“%1”无法删除：%2</translation>
    </message>
    <message>
        <source>the service manager passes no arguments to a service</source>
        <translation>服务管理器不向服务传递参数</translation>
    </message>
    <message>
        <source>it does not know this command</source>
        <translation>它不识别该命令</translation>
    </message>
    <message>
        <source>it refuses to pause or resume</source>
        <translation>它拒绝暂停或恢复</translation>
    </message>
    <message>
        <source>install the service; what follows &quot;--&quot; is passed to it</source>
        <translation>安装服务；“--”之后的内容传递给服务</translation>
    </message>
    <message>
        <source>stop and remove the service</source>
        <translation>停止并删除服务</translation>
    </message>
    <message>
        <source>run in the foreground</source>
        <translation>在前台运行</translation>
    </message>
    <message>
        <source>stop the service</source>
        <translation>停止服务</translation>
    </message>
    <message>
        <source>pause the service</source>
        <translation>暂停服务</translation>
    </message>
    <message>
        <source>resume the paused service</source>
        <translation>恢复已暂停的服务</translation>
    </message>
    <message>
        <source>send the command N to the service</source>
        <translation>向服务发送命令 N</translation>
    </message>
    <message>
        <source>print the version</source>
        <translation>显示版本</translation>
    </message>
    <message>
        <source>print this help</source>
        <translation>显示本帮助</translation>
    </message>
    <message>
        <source>unknown switch &quot;%1&quot;</source>
        <translation>未知开关“%1”</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is one switch too many</source>
        <translation>“%1”是多余的开关</translation>
    </message>
    <message>
        <source>&quot;%1&quot; needs a number</source>
        <translation>“%1”需要一个数字</translation>
    </message>
    <message>
        <source>Switches of the service &quot;%1&quot; (none: start it):</source>
        <translation>服务“%1”的开关（无开关则启动服务）：</translation>
    </message>
    <message>
        <source>with any of them: the user&apos;s services, also for root</source>
        <translation>可与任一开关合用：用户服务，root 亦同</translation>
    </message>
    <message>
        <source>The program &quot;%1&quot; has a quote or backslash in its path.</source>
        <translation>程序“%1”的路径中含有引号或反斜杠。</translation>
    </message>
    <message>
        <source>A start takes no arguments: what follows &quot;--&quot; counts with &quot;-install&quot; and &quot;-exec&quot;.</source>
        <translation>启动不接受参数：“--”之后的内容仅对“-install”和“-exec”有效。</translation>
    </message>
    <message>
        <source>The service &quot;%1&quot; belongs to the system: not allowed.</source>
        <translation>服务“%1”属于系统：不允许操作。</translation>
    </message>
    <message>
        <source>The argument &quot;%1&quot; has a character that no unit file takes.</source>
        <translation>参数“%1”中含有单元文件不接受的字符。</translation>
    </message>
    <message>
        <source>Remark: no service manager answers here, so none was told.</source>
        <translation>注意：此处没有服务管理器响应，因此未通知服务管理器。</translation>
    </message>
    <message>
        <source>The service &quot;%1&quot; is installed: %2</source>
        <translation>服务“%1”已安装：%2</translation>
    </message>
    <message>
        <source>The service &quot;%1&quot; is removed.</source>
        <translation>服务“%1”已移除。</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is not UTF-8 text</source>
        <translation>“%1”不是 UTF-8 文本</translation>
    </message>
    <message>
        <source>The service did not get to the end of its stop: it had to be killed, or crashed.</source>
        <translation>服务未能完成停止过程：它被强制终止或已崩溃。</translation>
    </message>
    <message>
        <source>&quot;%1&quot;: &quot;%2&quot; is no whole number from %3 to %4</source>
        <translation>“%1”：“%2”不是 %3 到 %4 之间的整数</translation>
    </message>
</context>
<context>
    <name>StateBanner</name>
    <message>
        <source>OUTPUT OFF</source>
        <translation>输出已关闭</translation>
    </message>
    <message>
        <source>FAULT</source>
        <translation>故障</translation>
    </message>
    <message>
        <source>ON BATTERY</source>
        <translation>电池供电</translation>
    </message>
    <message>
        <source>ON BYPASS – load not protected</source>
        <translation>旁路供电 – 负载无保护</translation>
    </message>
    <message>
        <source>State unknown</source>
        <translation>状态未知</translation>
    </message>
    <message>
        <source>Normal</source>
        <translation>正常</translation>
    </message>
    <message>
        <source>ECO</source>
        <translation>经济模式（ECO）</translation>
    </message>
    <message>
        <source>Starting</source>
        <translation>正在启动</translation>
    </message>
    <message>
        <source>Standby</source>
        <translation>待机</translation>
    </message>
    <message>
        <source>Battery test</source>
        <translation>电池自检</translation>
    </message>
    <message>
        <source>OVERLOAD</source>
        <translation>过载</translation>
    </message>
    <message>
        <source>%1 min</source>
        <translation>%1 分钟</translation>
    </message>
    <message>
        <source>%1 %</source>
        <translation>%1 %</translation>
    </message>
    <message>
        <source>load %1 %</source>
        <translation>负载 %1 %</translation>
    </message>
    <message>
        <source>NO COMMUNICATION</source>
        <translation>无通信</translation>
    </message>
    <message>
        <source>NO COMMUNICATION since %1</source>
        <translation>自 %1 起无通信</translation>
    </message>
    <message>
        <source>Waiting for the device</source>
        <translation>正在等待设备</translation>
    </message>
    <message>
        <source>NO COMMUNICATION – last values</source>
        <translation>无通信 – 最后的数值</translation>
    </message>
    <message>
        <source>NO COMMUNICATION since %1 – last values</source>
        <translation>自 %1 起无通信 – 最后的数值</translation>
    </message>
</context>
<context>
    <name>TrendPanel</name>
    <message>
        <source>Load</source>
        <translation>负载</translation>
    </message>
    <message>
        <source>Battery charge</source>
        <translation>电池电量</translation>
    </message>
    <message>
        <source>Battery voltage</source>
        <translation>电池电压</translation>
    </message>
    <message>
        <source>Input voltage</source>
        <translation>输入电压</translation>
    </message>
    <message>
        <source>Output voltage</source>
        <translation>输出电压</translation>
    </message>
    <message>
        <source>Trends</source>
        <translation>趋势</translation>
    </message>
    <message>
        <source>10 min</source>
        <translation>10 分钟</translation>
    </message>
    <message>
        <source>The last ten minutes</source>
        <translation>最近 10 分钟</translation>
    </message>
    <message>
        <source>1 h</source>
        <translation>1 小时</translation>
    </message>
    <message>
        <source>The last hour</source>
        <translation>最近 1 小时</translation>
    </message>
    <message>
        <source>24 h</source>
        <translation>24 小时</translation>
    </message>
    <message>
        <source>The last day</source>
        <translation>最近 24 小时</translation>
    </message>
    <message>
        <source>on battery</source>
        <translation>电池供电</translation>
    </message>
    <message>
        <source>no data</source>
        <translation>无数据</translation>
    </message>
    <message>
        <source>beyond a limit</source>
        <translation>超出限值</translation>
    </message>
</context>
<context>
    <name>UpgradeRun</name>
    <message>
        <source>The service %1 could not be stopped: %2</source>
        <translation>无法停止服务 %1：%2</translation>
    </message>
    <message>
        <source>The upgrade program %1 could not be started: %2</source>
        <translation>无法启动升级程序 %1：%2</translation>
    </message>
    <message>
        <source>The upgrade program crashed.</source>
        <translation>升级程序异常终止。</translation>
    </message>
    <message>
        <source>The upgrade program ended with code %1.</source>
        <translation>升级程序已结束，返回码 %1。</translation>
    </message>
    <message>
        <source>The service %1 could not be started again: %2</source>
        <translation>无法重新启动服务 %1：%2</translation>
    </message>
    <message>
        <source>The device is still in use: the upgrade program was not started.</source>
        <translation>设备仍在使用中：未启动升级程序。</translation>
    </message>
</context>
<context>
    <name>tavoClient</name>
    <message>
        <source>Clean fault</source>
        <translation>清除故障</translation>
    </message>
    <message>
        <source>Clean history</source>
        <translation>清除历史记录</translation>
    </message>
    <message>
        <source>Selftest</source>
        <translation>自检</translation>
    </message>
    <message>
        <source>Discharge</source>
        <translation>放电</translation>
    </message>
    <message>
        <source>Discharge to low</source>
        <translation>放电至低压</translation>
    </message>
    <message>
        <source>Cancel task</source>
        <translation>取消任务</translation>
    </message>
    <message>
        <source>Shutdown UPS</source>
        <translation>UPS 关机</translation>
    </message>
    <message>
        <source>Startup UPS</source>
        <translation>UPS 开机</translation>
    </message>
    <message>
        <source>Buzzer on</source>
        <translation>开启蜂鸣器</translation>
    </message>
    <message>
        <source>Buzzer off</source>
        <translation>关闭蜂鸣器</translation>
    </message>
    <message>
        <source>Wakeup UPS</source>
        <translation>唤醒 UPS</translation>
    </message>
    <message>
        <source>Shutdown to bypass</source>
        <translation>关机转旁路</translation>
    </message>
    <message>
        <source>Turn bypass manually</source>
        <translation>手动转旁路</translation>
    </message>
    <message>
        <source>Turn inverter manually</source>
        <translation>手动转逆变</translation>
    </message>
    <message>
        <source>Download history</source>
        <translation>下载历史记录</translation>
    </message>
    <message>
        <source>Appear</source>
        <translation>出现</translation>
    </message>
    <message>
        <source>Disappear</source>
        <translation>消失</translation>
    </message>
    <message>
        <source>fault and alarm clear mode</source>
        <translation>清除故障告警模式</translation>
    </message>
    <message>
        <source>power on mode</source>
        <translation>上电模式</translation>
    </message>
    <message>
        <source>standby mode</source>
        <translation>待机模式</translation>
    </message>
    <message>
        <source>bypass mode</source>
        <translation>旁路模式</translation>
    </message>
    <message>
        <source>grid mode</source>
        <translation>市电模式</translation>
    </message>
    <message>
        <source>battery mode</source>
        <translation>电池模式</translation>
    </message>
    <message>
        <source>battery test mode</source>
        <translation>电池自检模式</translation>
    </message>
    <message>
        <source>fault mode</source>
        <translation>故障模式</translation>
    </message>
    <message>
        <source>frequency conversion mode</source>
        <translation>变频模式</translation>
    </message>
    <message>
        <source>ECO mode</source>
        <translation>ECO 模式</translation>
    </message>
    <message>
        <source>shutdown mode</source>
        <translation>关机模式</translation>
    </message>
    <message>
        <source>test mode</source>
        <translation>测试模式</translation>
    </message>
    <message>
        <source>Bus Over Voltage</source>
        <translation>母线过压</translation>
    </message>
    <message>
        <source>Bus Under Voltage</source>
        <translation>母线欠压</translation>
    </message>
    <message>
        <source>Bus Unbalance</source>
        <translation>母线不平衡</translation>
    </message>
    <message>
        <source>Bus Soft Start Fail</source>
        <translation>母线软启动失败</translation>
    </message>
    <message>
        <source>Inv Soft Start Fail</source>
        <translation>逆变软启动失败</translation>
    </message>
    <message>
        <source>Inv Over Voltage</source>
        <translation>逆变过压</translation>
    </message>
    <message>
        <source>Inv Under Voltage</source>
        <translation>逆变欠压</translation>
    </message>
    <message>
        <source>Forbid Inv</source>
        <translation>禁止逆变</translation>
    </message>
    <message>
        <source>Over Temperture</source>
        <translation>过温</translation>
    </message>
    <message>
        <source>Output shorted</source>
        <translation>输出短路</translation>
    </message>
    <message>
        <source>Overload fault</source>
        <translation>过载故障</translation>
    </message>
    <message>
        <source>Negative power fault</source>
        <translation>负功率故障</translation>
    </message>
    <message>
        <source>ShoutDown Fail</source>
        <translation>关机失败</translation>
    </message>
    <message>
        <source>Unused</source>
        <translation>未使用</translation>
    </message>
    <message>
        <source>Inverter relay ShotrCircuit</source>
        <translation>逆变继电器短路</translation>
    </message>
    <message>
        <source>Bus short</source>
        <translation>母线短路</translation>
    </message>
    <message>
        <source>Can Communication Fail</source>
        <translation>CAN 通信失败</translation>
    </message>
    <message>
        <source>BattNum set Error</source>
        <translation>电池节数设置错误</translation>
    </message>
    <message>
        <source>SCRSoft Start Fail</source>
        <translation>SCR 软启动失败</translation>
    </message>
    <message>
        <source>Inverter fault</source>
        <translation>逆变故障</translation>
    </message>
    <message>
        <source>Inverter relay opened</source>
        <translation>逆变继电器开路</translation>
    </message>
    <message>
        <source>Rectifier fault</source>
        <translation>整流故障</translation>
    </message>
    <message>
        <source>Fan fault</source>
        <translation>风扇故障</translation>
    </message>
    <message>
        <source>EPO</source>
        <translation>紧急关机（EPO）</translation>
    </message>
    <message>
        <source>SPS abnormal</source>
        <translation>辅助电源异常</translation>
    </message>
    <message>
        <source> Parallel cables error</source>
        <translation>并机线错误</translation>
    </message>
    <message>
        <source> Battery reversed</source>
        <translation>电池反接</translation>
    </message>
    <message>
        <source>Overload</source>
        <translation>过载</translation>
    </message>
    <message>
        <source> No battery</source>
        <translation>无电池</translation>
    </message>
    <message>
        <source> Input over current</source>
        <translation>输入过流</translation>
    </message>
    <message>
        <source>Batt Voltage Fail</source>
        <translation>电池电压异常</translation>
    </message>
    <message>
        <source>Charger fail</source>
        <translation>充电器故障</translation>
    </message>
    <message>
        <source> EEPROM fault</source>
        <translation>EEPROM 故障</translation>
    </message>
    <message>
        <source> Input over current time out</source>
        <translation>输入过流超时</translation>
    </message>
    <message>
        <source> Battery voltage low</source>
        <translation>电池电压低</translation>
    </message>
    <message>
        <source>ups need maintain</source>
        <translation>UPS 需要维护</translation>
    </message>
    <message>
        <source> Synchronize signal loss</source>
        <translation>同步信号丢失</translation>
    </message>
    <message>
        <source> Bypass Over Voltage</source>
        <translation>旁路过压</translation>
    </message>
    <message>
        <source> Bypass fault</source>
        <translation>旁路故障</translation>
    </message>
    <message>
        <source> Gird Over Voltage</source>
        <translation>市电过压</translation>
    </message>
    <message>
        <source>Grid Freq Fail</source>
        <translation>市电频率异常</translation>
    </message>
    <message>
        <source>Over synchronization</source>
        <translation>同步超限</translation>
    </message>
    <message>
        <source>BypTxInv Over Times</source>
        <translation>旁路转逆变次数超限</translation>
    </message>
    <message>
        <source>EOD</source>
        <translation>电池放电终止（EOD）</translation>
    </message>
    <message>
        <source>Batt Test Success</source>
        <translation>电池自检成功</translation>
    </message>
    <message>
        <source>Forbid Start</source>
        <translation>禁止开机</translation>
    </message>
    <message>
        <source>Batt Test Fail</source>
        <translation>电池自检失败</translation>
    </message>
    <message>
        <source>Para Curr Share Fail</source>
        <translation>并机均流失败</translation>
    </message>
    <message>
        <source>Inv Pll Fail</source>
        <translation>逆变锁相失败</translation>
    </message>
    <message>
        <source>Batt Maint Success</source>
        <translation>电池维护成功</translation>
    </message>
    <message>
        <source>Batt Maint Fail</source>
        <translation>电池维护失败</translation>
    </message>
    <message>
        <source>Input current unbalance</source>
        <translation>输入电流不平衡</translation>
    </message>
    <message>
        <source> system configuration initialization fail</source>
        <translation>系统配置初始化失败</translation>
    </message>
    <message>
        <source>PFC Fault</source>
        <translation>PFC 故障</translation>
    </message>
    <message>
        <source>Bus Low Voltage Tx Batt Over Times</source>
        <translation>母线低压转电池次数超限</translation>
    </message>
    <message>
        <source>Grid Fail</source>
        <translation>市电故障</translation>
    </message>
    <message>
        <source>Bypass Fail</source>
        <translation>旁路故障</translation>
    </message>
    <message>
        <source>Bypass Freq Fail</source>
        <translation>旁路频率异常</translation>
    </message>
    <message>
        <source>Inv And Output Voltage is Diffrent</source>
        <translation>逆变与输出电压不一致</translation>
    </message>
    <message>
        <source>Byp And Output Voltage is Diffrent</source>
        <translation>旁路与输出电压不一致</translation>
    </message>
    <message>
        <source>Maintence Bypassn is Enabled </source>
        <translation>维修旁路已接通</translation>
    </message>
    <message>
        <source>The Start Time</source>
        <translation>启动时间</translation>
    </message>
    <message>
        <source>Clear Fault</source>
        <translation>清除故障</translation>
    </message>
    <message>
        <source>Clear History Records</source>
        <translation>清除历史记录</translation>
    </message>
    <message>
        <source>Clear Batt Data</source>
        <translation>清除电池数据</translation>
    </message>
    <message>
        <source>Batt Test</source>
        <translation>电池自检</translation>
    </message>
    <message>
        <source>Stop Batt Test</source>
        <translation>停止电池自检</translation>
    </message>
    <message>
        <source>Manual Tx Byp </source>
        <translation>手动转旁路</translation>
    </message>
    <message>
        <source>Manual Tx Inv</source>
        <translation>手动转逆变</translation>
    </message>
    <message>
        <source>Manual ShutDown</source>
        <translation>手动关机</translation>
    </message>
    <message>
        <source>Manual Start</source>
        <translation>手动开机</translation>
    </message>
    <message>
        <source>Input is Powered By Grid</source>
        <translation>市电供电输入</translation>
    </message>
    <message>
        <source>Input is Powered By Batt</source>
        <translation>电池供电输入</translation>
    </message>
    <message>
        <source>Output is Powered By Inv</source>
        <translation>逆变供电输出</translation>
    </message>
    <message>
        <source>Output is Powered By Byp</source>
        <translation>旁路供电输出</translation>
    </message>
    <message>
        <source>Output is Powered By Nothing</source>
        <translation>无输出</translation>
    </message>
    <message>
        <source>Batt Maintance</source>
        <translation>电池维护</translation>
    </message>
    <message>
        <source>ID</source>
        <translation>ID</translation>
    </message>
    <message>
        <source>Content</source>
        <translation>内容</translation>
    </message>
    <message>
        <source>Status</source>
        <translation>状态</translation>
    </message>
    <message>
        <source>Time</source>
        <translation>时间</translation>
    </message>
    <message>
        <source>History mode</source>
        <translation>历史模式</translation>
    </message>
    <message>
        <source>successful</source>
        <translation>成功</translation>
    </message>
    <message>
        <source>failed</source>
        <translation>失败</translation>
    </message>
    <message>
        <source>%1 %2 %3</source>
        <translation>%1 %2 %3</translation>
    </message>
</context>
<context>
    <name>tavoFont</name>
    <message>
        <source>Bus over voltage</source>
        <translation>母线过压</translation>
    </message>
    <message>
        <source>Bus over voltage disappear</source>
        <translation>母线过压消失</translation>
    </message>
    <message>
        <source>Bus under voltage</source>
        <translation>母线欠压</translation>
    </message>
    <message>
        <source>Bus under voltage disappear</source>
        <translation>母线欠压消失</translation>
    </message>
    <message>
        <source>Bus unbalance</source>
        <translation>母线不平衡</translation>
    </message>
    <message>
        <source>Bus unbalance disappear</source>
        <translation>母线不平衡消失</translation>
    </message>
    <message>
        <source>Bus soft start fail</source>
        <translation>母线软启动失败</translation>
    </message>
    <message>
        <source>Bus soft start fail disappear</source>
        <translation>母线软启动失败消失</translation>
    </message>
    <message>
        <source>Inv soft start fail</source>
        <translation>逆变软启动失败</translation>
    </message>
    <message>
        <source>Inv soft start fail disappear</source>
        <translation>逆变软启动失败消失</translation>
    </message>
    <message>
        <source>Inv over voltage</source>
        <translation>逆变过压</translation>
    </message>
    <message>
        <source>Inv over voltage disappear</source>
        <translation>逆变过压消失</translation>
    </message>
    <message>
        <source>Inv under voltag</source>
        <translation>逆变欠压</translation>
    </message>
    <message>
        <source>Inv under voltag disappear</source>
        <translation>逆变欠压消失</translation>
    </message>
    <message>
        <source>Forbid inv</source>
        <translation>禁止逆变</translation>
    </message>
    <message>
        <source>Forbid inv disappear</source>
        <translation>禁止逆变消失</translation>
    </message>
    <message>
        <source>Over temperature</source>
        <translation>过温</translation>
    </message>
    <message>
        <source>Over temperature disappear</source>
        <translation>过温消失</translation>
    </message>
    <message>
        <source>Output shorted</source>
        <translation>输出短路</translation>
    </message>
    <message>
        <source>Output shorted disappear</source>
        <translation>输出短路消失</translation>
    </message>
    <message>
        <source>Overload</source>
        <translation>过载</translation>
    </message>
    <message>
        <source>Overload disappear</source>
        <translation>过载消失</translation>
    </message>
    <message>
        <source>Abnormal negative power </source>
        <translation>负功率异常</translation>
    </message>
    <message>
        <source>Abnormal negative power disappear</source>
        <translation>负功率异常消失</translation>
    </message>
    <message>
        <source>shutdown fault</source>
        <translation>关机故障</translation>
    </message>
    <message>
        <source>Shutdown fault disappear</source>
        <translation>关机故障消失</translation>
    </message>
    <message>
        <source>Inconsistentunused parallel software version </source>
        <translation>并机软件版本不一致</translation>
    </message>
    <message>
        <source>Inconsistentunused parallel software version disappear</source>
        <translation>并机软件版本不一致消失</translation>
    </message>
    <message>
        <source>Abnormal synchronous signal </source>
        <translation>同步信号异常</translation>
    </message>
    <message>
        <source>Abnormal synchronous signal disappear</source>
        <translation>同步信号异常消失</translation>
    </message>
    <message>
        <source>Abnormal synchronous pulse </source>
        <translation>同步脉冲异常</translation>
    </message>
    <message>
        <source>Abnormal synchronous pulse disappear</source>
        <translation>同步脉冲异常消失</translation>
    </message>
    <message>
        <source>Inverter relay short circuit</source>
        <translation>逆变继电器短路</translation>
    </message>
    <message>
        <source>Inverter relay short circuit disappear</source>
        <translation>逆变继电器短路消失</translation>
    </message>
    <message>
        <source>Bus short</source>
        <translation>母线短路</translation>
    </message>
    <message>
        <source>Bus short disappear</source>
        <translation>母线短路消失</translation>
    </message>
    <message>
        <source>CAN communication abnormal</source>
        <translation>CAN 通信异常</translation>
    </message>
    <message>
        <source>CAN communication abnormal disappear</source>
        <translation>CAN 通信异常消失</translation>
    </message>
    <message>
        <source>Physical address conflict</source>
        <translation>物理地址冲突</translation>
    </message>
    <message>
        <source>Physical address conflict disappear</source>
        <translation>物理地址冲突消失</translation>
    </message>
    <message>
        <source>Parallel UPS type conflict</source>
        <translation>并机 UPS 机型冲突</translation>
    </message>
    <message>
        <source>Parallel UPS type conflict disappear</source>
        <translation>并机 UPS 机型冲突消失</translation>
    </message>
    <message>
        <source>Battery number set error</source>
        <translation>电池节数设置错误</translation>
    </message>
    <message>
        <source>Battery number set error disappear</source>
        <translation>电池节数设置错误消失</translation>
    </message>
    <message>
        <source>Input SCR soft start fail</source>
        <translation>输入 SCR 软启动失败</translation>
    </message>
    <message>
        <source>Input SCR soft start fail disappear</source>
        <translation>输入 SCR 软启动失败消失</translation>
    </message>
    <message>
        <source>Rectify SCR fault</source>
        <translation>整流 SCR 故障</translation>
    </message>
    <message>
        <source>Rectify SCR fault disappear</source>
        <translation>整流 SCR 故障消失</translation>
    </message>
    <message>
        <source>Abnormal inverter</source>
        <translation>逆变异常</translation>
    </message>
    <message>
        <source>Abnormal inverter disappear</source>
        <translation>逆变异常消失</translation>
    </message>
    <message>
        <source>Parallel bypass wiring error</source>
        <translation>并机旁路接线错误</translation>
    </message>
    <message>
        <source>Parallel bypass wiring error disappear</source>
        <translation>并机旁路接线错误消失</translation>
    </message>
    <message>
        <source>Inverter relay opened</source>
        <translation>逆变继电器开路</translation>
    </message>
    <message>
        <source>Inverter relay opened disappear</source>
        <translation>逆变继电器开路消失</translation>
    </message>
    <message>
        <source>PFC fault</source>
        <translation>PFC 故障</translation>
    </message>
    <message>
        <source>PFC fault disappear</source>
        <translation>PFC 故障消失</translation>
    </message>
    <message>
        <source>Abnormal inverter capacitance</source>
        <translation>逆变电容异常</translation>
    </message>
    <message>
        <source>Abnormal inverter capacitance disappear</source>
        <translation>逆变电容异常消失</translation>
    </message>
    <message>
        <source>Fan fault</source>
        <translation>风扇故障</translation>
    </message>
    <message>
        <source>Fan fault disappear</source>
        <translation>风扇故障消失</translation>
    </message>
    <message>
        <source>EPO</source>
        <translation>紧急关机（EPO）</translation>
    </message>
    <message>
        <source>EPO disappear</source>
        <translation>紧急关机（EPO）消失</translation>
    </message>
    <message>
        <source>Abnormal SPS</source>
        <translation>辅助电源异常</translation>
    </message>
    <message>
        <source>Abnormal SPS disappear</source>
        <translation>辅助电源异常消失</translation>
    </message>
    <message>
        <source>Reserved 32 disappear</source>
        <translation>保留 32 消失</translation>
    </message>
    <message>
        <source>Reserved 33 disappear</source>
        <translation>保留 33 消失</translation>
    </message>
    <message>
        <source>Reserved 34 disappear</source>
        <translation>保留 34 消失</translation>
    </message>
    <message>
        <source>Reserved 35 disappear</source>
        <translation>保留 35 消失</translation>
    </message>
    <message>
        <source>Reserved 36 disappear</source>
        <translation>保留 36 消失</translation>
    </message>
    <message>
        <source>Reserved 37 disappear</source>
        <translation>保留 37 消失</translation>
    </message>
    <message>
        <source>Reserved 38 disappear</source>
        <translation>保留 38 消失</translation>
    </message>
    <message>
        <source>Reserved 39 disappear</source>
        <translation>保留 39 消失</translation>
    </message>
    <message>
        <source>Reserved 40 disappear</source>
        <translation>保留 40 消失</translation>
    </message>
    <message>
        <source>Reserved 41 disappear</source>
        <translation>保留 41 消失</translation>
    </message>
    <message>
        <source>Reserved 42 disappear</source>
        <translation>保留 42 消失</translation>
    </message>
    <message>
        <source>Reserved 43 disappear</source>
        <translation>保留 43 消失</translation>
    </message>
    <message>
        <source>Reserved 44 disappear</source>
        <translation>保留 44 消失</translation>
    </message>
    <message>
        <source>Reserved 45 disappear</source>
        <translation>保留 45 消失</translation>
    </message>
    <message>
        <source>Reserved 46 disappear</source>
        <translation>保留 46 消失</translation>
    </message>
    <message>
        <source>Reserved 47 disappear</source>
        <translation>保留 47 消失</translation>
    </message>
    <message>
        <source>Abnormal parallel cables</source>
        <translation>并机线异常</translation>
    </message>
    <message>
        <source>Abnormal parallel cables disappear</source>
        <translation>并机线异常消失</translation>
    </message>
    <message>
        <source>Battery reversed</source>
        <translation>电池反接</translation>
    </message>
    <message>
        <source>Battery reversed disappear</source>
        <translation>电池反接消失</translation>
    </message>
    <message>
        <source>Overload alram</source>
        <translation>过载告警</translation>
    </message>
    <message>
        <source>Overload alram disappear</source>
        <translation>过载告警消失</translation>
    </message>
    <message>
        <source>Battery disconnected</source>
        <translation>电池未接</translation>
    </message>
    <message>
        <source>Battery disconnected disappear</source>
        <translation>电池未接消失</translation>
    </message>
    <message>
        <source>Input over current</source>
        <translation>输入过流</translation>
    </message>
    <message>
        <source>Input over current disappear</source>
        <translation>输入过流消失</translation>
    </message>
    <message>
        <source>Battery voltage high</source>
        <translation>电池电压高</translation>
    </message>
    <message>
        <source>Battery voltage high disappear</source>
        <translation>电池电压高消失</translation>
    </message>
    <message>
        <source>Abnormal boot</source>
        <translation>开机异常</translation>
    </message>
    <message>
        <source>Abnormal boot disappear</source>
        <translation>开机异常消失</translation>
    </message>
    <message>
        <source>Charger fault</source>
        <translation>充电器故障</translation>
    </message>
    <message>
        <source>Charger fault disappear</source>
        <translation>充电器故障消失</translation>
    </message>
    <message>
        <source>Abnormal EEPROM</source>
        <translation>EEPROM 异常</translation>
    </message>
    <message>
        <source>Abnormal EEPROM disappear</source>
        <translation>EEPROM 异常消失</translation>
    </message>
    <message>
        <source>Input over current time out</source>
        <translation>输入过流超时</translation>
    </message>
    <message>
        <source>Input over current time out disappear</source>
        <translation>输入过流超时消失</translation>
    </message>
    <message>
        <source>Battery voltage low</source>
        <translation>电池电压低</translation>
    </message>
    <message>
        <source>Battery voltage low disappear</source>
        <translation>电池电压低消失</translation>
    </message>
    <message>
        <source>UPS need maintenance</source>
        <translation>UPS 需要维护</translation>
    </message>
    <message>
        <source>UPS need maintenance disappear</source>
        <translation>UPS 需要维护消失</translation>
    </message>
    <message>
        <source>Abnormal synchronous pulse loss</source>
        <translation>同步脉冲丢失异常</translation>
    </message>
    <message>
        <source>Abnormal synchronous pulse loss disappear</source>
        <translation>同步脉冲丢失异常消失</translation>
    </message>
    <message>
        <source>Abnormal synchronous signal</source>
        <translation>同步信号异常</translation>
    </message>
    <message>
        <source>Abnormal CAN communicaiton</source>
        <translation>CAN 通信异常</translation>
    </message>
    <message>
        <source>Abnormal CAN communicaiton disappear</source>
        <translation>CAN 通信异常消失</translation>
    </message>
    <message>
        <source>Bypass volt high</source>
        <translation>旁路电压高</translation>
    </message>
    <message>
        <source>Bypass volt high disappear</source>
        <translation>旁路电压高消失</translation>
    </message>
    <message>
        <source>Bypass fault</source>
        <translation>旁路故障</translation>
    </message>
    <message>
        <source>Bypass fault disappear</source>
        <translation>旁路故障消失</translation>
    </message>
    <message>
        <source>Input volt high</source>
        <translation>输入电压高</translation>
    </message>
    <message>
        <source>Input volt high disappear</source>
        <translation>输入电压高消失</translation>
    </message>
    <message>
        <source>Abnormal input frequency</source>
        <translation>输入频率异常</translation>
    </message>
    <message>
        <source>Abnormal input frequency disappear</source>
        <translation>输入频率异常消失</translation>
    </message>
    <message>
        <source>Bypass frequency over track</source>
        <translation>旁路频率超跟踪</translation>
    </message>
    <message>
        <source>Bypass frequency over track disappear</source>
        <translation>旁路频率超跟踪消失</translation>
    </message>
    <message>
        <source>Over transfer times between bypass and inverter</source>
        <translation>旁路与逆变间切换次数超限</translation>
    </message>
    <message>
        <source>Over transfer times between bypass and inverter disappear</source>
        <translation>旁路与逆变间切换次数超限消失</translation>
    </message>
    <message>
        <source>End of discharge</source>
        <translation>电池放电终止</translation>
    </message>
    <message>
        <source>End of discharge disappear</source>
        <translation>电池放电终止消失</translation>
    </message>
    <message>
        <source>Battery test success</source>
        <translation>电池自检成功</translation>
    </message>
    <message>
        <source>Battery test success disappear</source>
        <translation>电池自检成功消失</translation>
    </message>
    <message>
        <source>Forbidden startup UPS</source>
        <translation>禁止 UPS 开机</translation>
    </message>
    <message>
        <source>Forbidden startup UPS disappear</source>
        <translation>禁止 UPS 开机消失</translation>
    </message>
    <message>
        <source>Battery test fail</source>
        <translation>电池自检失败</translation>
    </message>
    <message>
        <source>Battery test fail disappear</source>
        <translation>电池自检失败消失</translation>
    </message>
    <message>
        <source>Parallel current unbalance</source>
        <translation>并机电流不平衡</translation>
    </message>
    <message>
        <source>Parallel current unbalance disappear</source>
        <translation>并机电流不平衡消失</translation>
    </message>
    <message>
        <source>Abnormal inverter phase lock</source>
        <translation>逆变锁相异常</translation>
    </message>
    <message>
        <source>Abnormal inverter phase lock disappear</source>
        <translation>逆变锁相异常消失</translation>
    </message>
    <message>
        <source>Battery maintenance success</source>
        <translation>电池维护成功</translation>
    </message>
    <message>
        <source>Battery maintenance success disappear</source>
        <translation>电池维护成功消失</translation>
    </message>
    <message>
        <source>Abnormal battery maintenance</source>
        <translation>电池维护异常</translation>
    </message>
    <message>
        <source>Abnormal battery maintenance disappear</source>
        <translation>电池维护异常消失</translation>
    </message>
    <message>
        <source>Input current unbalance</source>
        <translation>输入电流不平衡</translation>
    </message>
    <message>
        <source>Input current unbalance disappear</source>
        <translation>输入电流不平衡消失</translation>
    </message>
    <message>
        <source>Initial system error</source>
        <translation>系统初始化错误</translation>
    </message>
    <message>
        <source>Initial system error disappear</source>
        <translation>系统初始化错误消失</translation>
    </message>
    <message>
        <source>Abnormal PFC</source>
        <translation>PFC 异常</translation>
    </message>
    <message>
        <source>Abnormal PFC disappear</source>
        <translation>PFC 异常消失</translation>
    </message>
    <message>
        <source>Over transfer times between battery and grid</source>
        <translation>电池与市电间切换次数超限</translation>
    </message>
    <message>
        <source>Over transfer times between battery and grid disappear</source>
        <translation>电池与市电间切换次数超限消失</translation>
    </message>
    <message>
        <source>Abnormal input</source>
        <translation>输入异常</translation>
    </message>
    <message>
        <source>Abnormal input disappear</source>
        <translation>输入异常消失</translation>
    </message>
    <message>
        <source>Abnormal bypass</source>
        <translation>旁路异常</translation>
    </message>
    <message>
        <source>Abnormal bypass disappear</source>
        <translation>旁路异常消失</translation>
    </message>
    <message>
        <source>Abnormal bypass frequency</source>
        <translation>旁路频率异常</translation>
    </message>
    <message>
        <source>Abnormal bypass frequency disappear</source>
        <translation>旁路频率异常消失</translation>
    </message>
    <message>
        <source>Inverter and output volt is different</source>
        <translation>逆变与输出电压不一致</translation>
    </message>
    <message>
        <source>Inverter and output volt is different disappear</source>
        <translation>逆变与输出电压不一致消失</translation>
    </message>
    <message>
        <source>Abnormal battery volt</source>
        <translation>电池电压异常</translation>
    </message>
    <message>
        <source>Abnormal battery volt disappear</source>
        <translation>电池电压异常消失</translation>
    </message>
    <message>
        <source>Bypass and output volt is different</source>
        <translation>旁路与输出电压不一致</translation>
    </message>
    <message>
        <source>Bypass and output volt is different disappear</source>
        <translation>旁路与输出电压不一致消失</translation>
    </message>
    <message>
        <source>Abnormal inverter volt</source>
        <translation>逆变电压异常</translation>
    </message>
    <message>
        <source>Abnormal inverter volt disappear</source>
        <translation>逆变电压异常消失</translation>
    </message>
    <message>
        <source>Maintenance breaker connected</source>
        <translation>维修开关闭合</translation>
    </message>
    <message>
        <source>Maintenance breaker connected disappear</source>
        <translation>维修开关闭合消失</translation>
    </message>
    <message>
        <source>Frequent overheating</source>
        <translation>频繁过温</translation>
    </message>
    <message>
        <source>Frequent overheating disappear</source>
        <translation>频繁过温消失</translation>
    </message>
    <message>
        <source>Parallel battery number settings are inconsistent</source>
        <translation>并机电池节数设置不一致</translation>
    </message>
    <message>
        <source>Parallel battery number settings are inconsistent disappear</source>
        <translation>并机电池节数设置不一致消失</translation>
    </message>
    <message>
        <source>Abnormal battery temperature compensation</source>
        <translation>电池温度补偿异常</translation>
    </message>
    <message>
        <source>Abnormal battery temperature compensation disappear</source>
        <translation>电池温度补偿异常消失</translation>
    </message>
    <message>
        <source>Unstable bypass voltage</source>
        <translation>旁路电压不稳定</translation>
    </message>
    <message>
        <source>Unstable bypass voltage disappear</source>
        <translation>旁路电压不稳定消失</translation>
    </message>
    <message>
        <source>Test mode</source>
        <translation>测试模式</translation>
    </message>
    <message>
        <source>Test mode disappear</source>
        <translation>测试模式消失</translation>
    </message>
    <message>
        <source>Frequent overload</source>
        <translation>频繁过载</translation>
    </message>
    <message>
        <source>Frequent overload disappear</source>
        <translation>频繁过载消失</translation>
    </message>
    <message>
        <source>Battery state</source>
        <translation>电池状态</translation>
    </message>
    <message>
        <source>Time on battery(s)</source>
        <translation>电池供电时间（秒）</translation>
    </message>
    <message>
        <source>Remaining battery time(Min)</source>
        <translation>电池剩余时间（分钟）</translation>
    </message>
    <message>
        <source>Remaining battery capacity(%)</source>
        <translation>电池剩余容量（%）</translation>
    </message>
    <message>
        <source>Battery voltage(V)</source>
        <translation>电池电压（V）</translation>
    </message>
    <message>
        <source>Battery current(A)</source>
        <translation>电池电流（A）</translation>
    </message>
    <message>
        <source>Battery temperature(C)</source>
        <translation>电池温度（℃）</translation>
    </message>
    <message>
        <source>Number of mains failure</source>
        <translation>市电故障次数</translation>
    </message>
    <message>
        <source>Input voltage(V)</source>
        <translation>输入电压（V）</translation>
    </message>
    <message>
        <source>Input current(A)</source>
        <translation>输入电流（A）</translation>
    </message>
    <message>
        <source>Input frequency(Hz)</source>
        <translation>输入频率（Hz）</translation>
    </message>
    <message>
        <source>Input power(W)</source>
        <translation>输入功率（W）</translation>
    </message>
    <message>
        <source>Output mode</source>
        <translation>输出模式</translation>
    </message>
    <message>
        <source>Output frequency(Hz)</source>
        <translation>输出频率（Hz）</translation>
    </message>
    <message>
        <source>Output voltage(V)</source>
        <translation>输出电压（V）</translation>
    </message>
    <message>
        <source>Output current(A)</source>
        <translation>输出电流（A）</translation>
    </message>
    <message>
        <source>Output power(W)</source>
        <translation>输出功率（W）</translation>
    </message>
    <message>
        <source>Output load(%)</source>
        <translation>输出负载（%）</translation>
    </message>
    <message>
        <source>Bypass frequency(Hz)</source>
        <translation>旁路频率（Hz）</translation>
    </message>
    <message>
        <source>Bypass voltage(V)</source>
        <translation>旁路电压（V）</translation>
    </message>
    <message>
        <source>Bypass current(A)</source>
        <translation>旁路电流（A）</translation>
    </message>
    <message>
        <source>Bypass power(W)</source>
        <translation>旁路功率（W）</translation>
    </message>
    <message>
        <source>Input voltage R/S/T(V)</source>
        <translation>输入电压 R/S/T（V）</translation>
    </message>
    <message>
        <source>Input current R/S/T(A)</source>
        <translation>输入电流 R/S/T（A）</translation>
    </message>
    <message>
        <source>Input frequency R/S/T(Hz)</source>
        <translation>输入频率 R/S/T（Hz）</translation>
    </message>
    <message>
        <source>Input power R/S/T(W)</source>
        <translation>输入功率 R/S/T（W）</translation>
    </message>
    <message>
        <source>Output voltage R/S/T(V)</source>
        <translation>输出电压 R/S/T（V）</translation>
    </message>
    <message>
        <source>Output current R/S/T(A)</source>
        <translation>输出电流 R/S/T（A）</translation>
    </message>
    <message>
        <source>Output power R/S/T(W)</source>
        <translation>输出功率 R/S/T（W）</translation>
    </message>
    <message>
        <source>Output load R/S/T(%)</source>
        <translation>输出负载 R/S/T（%）</translation>
    </message>
    <message>
        <source>Bypass voltage R/S/T(V)</source>
        <translation>旁路电压 R/S/T（V）</translation>
    </message>
    <message>
        <source>Bypass current R/S/T(A)</source>
        <translation>旁路电流 R/S/T（A）</translation>
    </message>
    <message>
        <source>Bypass power R/S/T(W)</source>
        <translation>旁路功率 R/S/T（W）</translation>
    </message>
    <message>
        <source>Disconnect</source>
        <translation>未接</translation>
    </message>
    <message>
        <source>Standby</source>
        <translation>待机</translation>
    </message>
    <message>
        <source>Equalized charge</source>
        <translation>均充</translation>
    </message>
    <message>
        <source>Float charge</source>
        <translation>浮充</translation>
    </message>
    <message>
        <source>Discharge</source>
        <translation>放电</translation>
    </message>
    <message>
        <source>None</source>
        <translation>无输出</translation>
    </message>
    <message>
        <source>Load on bypass</source>
        <translation>旁路供电</translation>
    </message>
    <message>
        <source>Load on inverter</source>
        <translation>逆变供电</translation>
    </message>
    <message>
        <source>Load on other</source>
        <translation>其他供电</translation>
    </message>
    <message>
        <source>Reserved 32</source>
        <translation>保留 32</translation>
    </message>
    <message>
        <source>Reserved 33</source>
        <translation>保留 33</translation>
    </message>
    <message>
        <source>Reserved 34</source>
        <translation>保留 34</translation>
    </message>
    <message>
        <source>Reserved 35</source>
        <translation>保留 35</translation>
    </message>
    <message>
        <source>Reserved 36</source>
        <translation>保留 36</translation>
    </message>
    <message>
        <source>Reserved 37</source>
        <translation>保留 37</translation>
    </message>
    <message>
        <source>Reserved 38</source>
        <translation>保留 38</translation>
    </message>
    <message>
        <source>Reserved 39</source>
        <translation>保留 39</translation>
    </message>
    <message>
        <source>Reserved 40</source>
        <translation>保留 40</translation>
    </message>
    <message>
        <source>Reserved 41</source>
        <translation>保留 41</translation>
    </message>
    <message>
        <source>Reserved 42</source>
        <translation>保留 42</translation>
    </message>
    <message>
        <source>Reserved 43</source>
        <translation>保留 43</translation>
    </message>
    <message>
        <source>Reserved 44</source>
        <translation>保留 44</translation>
    </message>
    <message>
        <source>Reserved 45</source>
        <translation>保留 45</translation>
    </message>
    <message>
        <source>Reserved 46</source>
        <translation>保留 46</translation>
    </message>
    <message>
        <source>Reserved 47</source>
        <translation>保留 47</translation>
    </message>
</context>
<context>
    <name>tavoView</name>
    <message>
        <source>Buzzer:</source>
        <translation>蜂鸣器：</translation>
    </message>
    <message>
        <source>Turn off</source>
        <translation>关闭</translation>
    </message>
    <message>
        <source>Turn on</source>
        <translation>开启</translation>
    </message>
    <message>
        <source>Startup&amp;Shutdown:</source>
        <translation>开关机：</translation>
    </message>
    <message>
        <source>Startup</source>
        <translation>开机</translation>
    </message>
    <message>
        <source>Shutdown to bypass</source>
        <translation>关机转旁路</translation>
    </message>
    <message>
        <source>Shutdown stop output</source>
        <translation>关机停止输出</translation>
    </message>
    <message>
        <source>Manual switch:</source>
        <translation>手动切换：</translation>
    </message>
    <message>
        <source>Transfer to bypass</source>
        <translation>切换到旁路</translation>
    </message>
    <message>
        <source>Transfer to inverter</source>
        <translation>切换到逆变</translation>
    </message>
    <message>
        <source>Battery:</source>
        <translation>电池：</translation>
    </message>
    <message>
        <source>Battery test 20s</source>
        <translation>电池自检 20 秒</translation>
    </message>
    <message>
        <source>Battery maintenance</source>
        <translation>电池维护</translation>
    </message>
    <message>
        <source>Cancel test</source>
        <translation>取消自检</translation>
    </message>
    <message>
        <source>Clear</source>
        <translation>清除</translation>
    </message>
    <message>
        <source>Clear fault</source>
        <translation>清除故障</translation>
    </message>
    <message>
        <source>Clear history</source>
        <translation>清除历史记录</translation>
    </message>
    <message>
        <source>Plugin</source>
        <translation>插件</translation>
    </message>
    <message>
        <source>Download history</source>
        <translation>下载历史记录</translation>
    </message>
    <message>
        <source>UPS upgrade</source>
        <translation>UPS 升级</translation>
    </message>
    <message>
        <source>Overview</source>
        <translation>概览</translation>
    </message>
    <message>
        <source>Alarm</source>
        <translation>告警</translation>
    </message>
    <message>
        <source>RT-data</source>
        <translation>实时数据</translation>
    </message>
    <message>
        <source>Control</source>
        <translation>控制</translation>
    </message>
    <message>
        <source>Maintenance</source>
        <translation>维护</translation>
    </message>
    <message>
        <source>DEVICE</source>
        <translation>设备</translation>
    </message>
    <message>
        <source>OUTPUT</source>
        <translation>输出</translation>
    </message>
    <message>
        <source>INPUT</source>
        <translation>输入</translation>
    </message>
    <message>
        <source>BYPASS</source>
        <translation>旁路</translation>
    </message>
    <message>
        <source>BATTERY</source>
        <translation>电池</translation>
    </message>
    <message>
        <source>REC/INV</source>
        <translation>整流/逆变</translation>
    </message>
    <message>
        <source>Configuration</source>
        <translation>参数设置</translation>
    </message>
    <message>
        <source>Basic parameters</source>
        <translation>基本参数</translation>
    </message>
    <message>
        <source>Battery parameters</source>
        <translation>电池参数</translation>
    </message>
    <message>
        <source>Adjusting parameters</source>
        <translation>校正参数</translation>
    </message>
    <message>
        <source>UPS information</source>
        <translation>UPS 信息</translation>
    </message>
    <message>
        <source>Parameter</source>
        <translation>参数</translation>
    </message>
    <message>
        <source>Current settings</source>
        <translation>当前设置</translation>
    </message>
    <message>
        <source>Range</source>
        <translation>范围</translation>
    </message>
    <message>
        <source>Save</source>
        <translation>保存</translation>
    </message>
    <message>
        <source>files(*.csv)</source>
        <translation>文件(*.csv)</translation>
    </message>
    <message>
        <source>The file cannot be written!</source>
        <translation>文件无法写入！</translation>
    </message>
    <message>
        <source>Data/Time</source>
        <translation>日期/时间</translation>
    </message>
    <message>
        <source>Event description</source>
        <translation>事件描述</translation>
    </message>
    <message>
        <source>The buzzer is silenced. The load is not affected.</source>
        <translation>蜂鸣器静音。负载不受影响。</translation>
    </message>
    <message>
        <source>The buzzer sounds when there is an alarm. The load is not affected.</source>
        <translation>有告警时蜂鸣器鸣响。负载不受影响。</translation>
    </message>
    <message>
        <source>The inverter starts and feeds the load.</source>
        <translation>逆变器启动并为负载供电。</translation>
    </message>
    <message>
        <source>The inverter stops. The load goes to bypass and will no longer be protected.</source>
        <translation>逆变器停止。负载转由旁路供电，不再受保护。</translation>
    </message>
    <message>
        <source>The output is switched off. The load loses its power.</source>
        <translation>输出关闭。负载将断电。</translation>
    </message>
    <message>
        <source>The load goes to bypass and will no longer be protected.</source>
        <translation>负载转由旁路供电，不再受保护。</translation>
    </message>
    <message>
        <source>The load goes to the inverter and is protected.</source>
        <translation>负载转由逆变器供电，受到保护。</translation>
    </message>
    <message>
        <source>The battery feeds the load for 20 seconds.</source>
        <translation>电池为负载供电 20 秒。</translation>
    </message>
    <message>
        <source>The battery feeds the load until it is low. Until it is charged again, it lasts for a short time only.</source>
        <translation>电池为负载供电，直到电量低。重新充满之前，后备时间很短。</translation>
    </message>
    <message>
        <source>A test or a maintenance of the battery ends. The load is not affected.</source>
        <translation>结束电池自检或电池维护。负载不受影响。</translation>
    </message>
    <message>
        <source>All records in the device are deleted for good. The load is not affected.</source>
        <translation>永久删除设备中的所有记录。负载不受影响。</translation>
    </message>
    <message>
        <source>The records in the device are saved to a file. The load is not affected.</source>
        <translation>将设备中的记录保存到文件。负载不受影响。</translation>
    </message>
    <message>
        <source>The firmware of the device is replaced. Nothing is monitored meanwhile; a failed upgrade may leave the device without firmware.</source>
        <translation>更换设备固件。期间不进行监控；升级失败可能使设备没有固件。</translation>
    </message>
    <message>
        <source>under way</source>
        <translation>进行中</translation>
    </message>
    <message>
        <source>ended without a problem</source>
        <translation>已顺利结束</translation>
    </message>
    <message>
        <source>ended with a problem</source>
        <translation>结束时出现问题</translation>
    </message>
    <message>
        <source>%1: nothing can be sent</source>
        <translation>%1：无法发送任何命令</translation>
    </message>
    <message>
        <source>Only to look at: this user may not control the device</source>
        <translation>仅供查看：此用户不能控制设备</translation>
    </message>
    <message>
        <source>%1: only the upgrade is possible</source>
        <translation>%1：只能升级</translation>
    </message>
    <message>
        <source>Faults that are over but still shown are cleared. The load is not affected.</source>
        <translation>清除已消失但仍显示的故障。负载不受影响。</translation>
    </message>
</context>
<context>
    <name>tavo_6_20k_View</name>
    <message>
        <source>Fault and alarm clear</source>
        <translation>清除故障和告警</translation>
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
        <source>Bypass</source>
        <translation>旁路</translation>
    </message>
    <message>
        <source>Online</source>
        <translation>在线</translation>
    </message>
    <message>
        <source>Battery</source>
        <translation>电池</translation>
    </message>
    <message>
        <source>Battery test</source>
        <translation>电池自检</translation>
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
        <translation>经济模式（ECO）</translation>
    </message>
    <message>
        <source>Shutdown</source>
        <translation>关机</translation>
    </message>
    <message>
        <source>Test</source>
        <translation>测试</translation>
    </message>
    <message>
        <source>Disconnect</source>
        <translation>未接</translation>
    </message>
    <message>
        <source>Equalized charge</source>
        <translation>均充</translation>
    </message>
    <message>
        <source>Float charge</source>
        <translation>浮充</translation>
    </message>
    <message>
        <source>Discharge</source>
        <translation>放电</translation>
    </message>
    <message>
        <source>Off</source>
        <translation>关闭</translation>
    </message>
    <message>
        <source>Soft start</source>
        <translation>软启动</translation>
    </message>
    <message>
        <source>Normal run</source>
        <translation>正常运行</translation>
    </message>
    <message>
        <source>PFC mode</source>
        <translation>PFC 模式</translation>
    </message>
    <message>
        <source>Battery mode</source>
        <translation>电池模式</translation>
    </message>
    <message>
        <source>None</source>
        <translation>无输出</translation>
    </message>
    <message>
        <source>Load on bypass</source>
        <translation>旁路供电</translation>
    </message>
    <message>
        <source>Load on inverter</source>
        <translation>逆变供电</translation>
    </message>
    <message>
        <source>Load on other</source>
        <translation>其他供电</translation>
    </message>
    <message>
        <source>Abnormal</source>
        <translation>异常</translation>
    </message>
    <message>
        <source>Normal</source>
        <translation>正常</translation>
    </message>
    <message>
        <source>Stand alone</source>
        <translation>单机</translation>
    </message>
    <message>
        <source>Parallel operation</source>
        <translation>并机</translation>
    </message>
    <message>
        <source>Parallels ECO</source>
        <translation>并机经济模式（ECO）</translation>
    </message>
    <message>
        <source>Self ageing</source>
        <translation>自老化</translation>
    </message>
    <message>
        <source>6000</source>
        <translation>6000</translation>
    </message>
    <message>
        <source>10000</source>
        <translation>10000</translation>
    </message>
    <message>
        <source>20000</source>
        <translation>20000</translation>
    </message>
    <message>
        <source>100</source>
        <translation>100</translation>
    </message>
    <message>
        <source>110</source>
        <translation>110</translation>
    </message>
    <message>
        <source>120</source>
        <translation>120</translation>
    </message>
    <message>
        <source>125</source>
        <translation>125</translation>
    </message>
    <message>
        <source>200</source>
        <translation>200</translation>
    </message>
    <message>
        <source>208</source>
        <translation>208</translation>
    </message>
    <message>
        <source>220</source>
        <translation>220</translation>
    </message>
    <message>
        <source>230</source>
        <translation>230</translation>
    </message>
    <message>
        <source>240</source>
        <translation>240</translation>
    </message>
    <message>
        <source>50</source>
        <translation>50</translation>
    </message>
    <message>
        <source>60</source>
        <translation>60</translation>
    </message>
    <message>
        <source>Disable</source>
        <translation>禁用</translation>
    </message>
    <message>
        <source>Enable</source>
        <translation>启用</translation>
    </message>
    <message>
        <source>1</source>
        <translation>1</translation>
    </message>
    <message>
        <source>0.9</source>
        <translation>0.9</translation>
    </message>
    <message>
        <source>Unconnect</source>
        <translation>未接</translation>
    </message>
    <message>
        <source>Connect</source>
        <translation>已接</translation>
    </message>
    <message>
        <source>Modbus ascii</source>
        <translation>Modbus ASCII 协议</translation>
    </message>
    <message>
        <source>Modbus rtu</source>
        <translation>Modbus RTU 协议</translation>
    </message>
    <message>
        <source>Megatec</source>
        <translation>Megatec 协议</translation>
    </message>
    <message>
        <source>VRLA battery</source>
        <translation>铅酸电池（VRLA）</translation>
    </message>
    <message>
        <source>Lithium battery</source>
        <translation>锂电池</translation>
    </message>
    <message>
        <source>0.5</source>
        <translation>0.5</translation>
    </message>
    <message>
        <source>1.0</source>
        <translation>1.0</translation>
    </message>
    <message>
        <source>2.0</source>
        <translation>2.0</translation>
    </message>
    <message>
        <source>3.0</source>
        <translation>3.0</translation>
    </message>
    <message>
        <source>4.0</source>
        <translation>4.0</translation>
    </message>
    <message>
        <source>5.0</source>
        <translation>5.0</translation>
    </message>
    <message>
        <source>6.0</source>
        <translation>6.0</translation>
    </message>
    <message>
        <source>7.0</source>
        <translation>7.0</translation>
    </message>
    <message>
        <source>8.0</source>
        <translation>8.0</translation>
    </message>
    <message>
        <source>9.0</source>
        <translation>9.0</translation>
    </message>
    <message>
        <source>10.0</source>
        <translation>10.0</translation>
    </message>
    <message>
        <source>11.0</source>
        <translation>11.0</translation>
    </message>
    <message>
        <source>12.0</source>
        <translation>12.0</translation>
    </message>
    <message>
        <source>+15</source>
        <translation>+15</translation>
    </message>
    <message>
        <source>+10</source>
        <translation>+10</translation>
    </message>
    <message>
        <source>-20</source>
        <translation>-20</translation>
    </message>
    <message>
        <source>-10</source>
        <translation>-10</translation>
    </message>
    <message>
        <source>-15</source>
        <translation>-15</translation>
    </message>
    <message>
        <source>-30</source>
        <translation>-30</translation>
    </message>
    <message>
        <source>-40</source>
        <translation>-40</translation>
    </message>
    <message>
        <source>+-5</source>
        <translation>+-5</translation>
    </message>
    <message>
        <source>+-1</source>
        <translation>+-1</translation>
    </message>
    <message>
        <source>+-3</source>
        <translation>+-3</translation>
    </message>
    <message>
        <source>Unlimited</source>
        <translation>不限</translation>
    </message>
    <message>
        <source>30</source>
        <translation>30</translation>
    </message>
    <message>
        <source>40</source>
        <translation>40</translation>
    </message>
    <message>
        <source>70</source>
        <translation>70</translation>
    </message>
    <message>
        <source>80</source>
        <translation>80</translation>
    </message>
    <message>
        <source>90</source>
        <translation>90</translation>
    </message>
    <message>
        <source>Input one phase</source>
        <translation>单相输入</translation>
    </message>
    <message>
        <source>Input three phase</source>
        <translation>三相输入</translation>
    </message>
    <message>
        <source>Running time:</source>
        <translation>运行时间：</translation>
    </message>
    <message>
        <source>Day</source>
        <translation>天</translation>
    </message>
    <message>
        <source>Working mode:</source>
        <translation>工作模式：</translation>
    </message>
    <message>
        <source>Modbus decode version:</source>
        <translation>Modbus 解析版本：</translation>
    </message>
    <message>
        <source>Device Identifier:</source>
        <translation>设备标识：</translation>
    </message>
    <message>
        <source>Device name:</source>
        <translation>设备名称：</translation>
    </message>
    <message>
        <source>Device type:</source>
        <translation>设备型号：</translation>
    </message>
    <message>
        <source>Device manufacturer:</source>
        <translation>设备厂家：</translation>
    </message>
    <message>
        <source>Firmware version:</source>
        <translation>固件版本：</translation>
    </message>
    <message>
        <source>Software version:</source>
        <translation>软件版本：</translation>
    </message>
    <message>
        <source>Serial number:</source>
        <translation>序列号：</translation>
    </message>
    <message>
        <source>Battery voltage:</source>
        <translation>电池电压：</translation>
    </message>
    <message>
        <source>V</source>
        <translation>V</translation>
    </message>
    <message>
        <source>Battery current:</source>
        <translation>电池电流：</translation>
    </message>
    <message>
        <source>A</source>
        <translation>A</translation>
    </message>
    <message>
        <source>Battery temperature:</source>
        <translation>电池温度：</translation>
    </message>
    <message>
        <source>℃</source>
        <translation>℃</translation>
    </message>
    <message>
        <source>Remaining time:</source>
        <translation>剩余时间：</translation>
    </message>
    <message>
        <source>Min</source>
        <translation>分钟</translation>
    </message>
    <message>
        <source>Remaining capacity:</source>
        <translation>剩余容量：</translation>
    </message>
    <message>
        <source>%</source>
        <translation>%</translation>
    </message>
    <message>
        <source>Battery status:</source>
        <translation>电池状态：</translation>
    </message>
    <message>
        <source>Inverter current:</source>
        <translation>逆变电流：</translation>
    </message>
    <message>
        <source>Inverter temperature:</source>
        <translation>逆变温度：</translation>
    </message>
    <message>
        <source>Inverter status:</source>
        <translation>逆变状态：</translation>
    </message>
    <message>
        <source>Rectifier temperature:</source>
        <translation>整流温度：</translation>
    </message>
    <message>
        <source>Rectifier status:</source>
        <translation>整流状态：</translation>
    </message>
    <message>
        <source>Input voltage:</source>
        <translation>输入电压：</translation>
    </message>
    <message>
        <source>Input current:</source>
        <translation>输入电流：</translation>
    </message>
    <message>
        <source>Input frequency:</source>
        <translation>输入频率：</translation>
    </message>
    <message>
        <source>Hz</source>
        <translation>Hz</translation>
    </message>
    <message>
        <source>Input PF:</source>
        <translation>输入功率因数：</translation>
    </message>
    <message>
        <source>Output voltage:</source>
        <translation>输出电压：</translation>
    </message>
    <message>
        <source>Output current:</source>
        <translation>输出电流：</translation>
    </message>
    <message>
        <source>Output frequency:</source>
        <translation>输出频率：</translation>
    </message>
    <message>
        <source>Output PF:</source>
        <translation>输出功率因数：</translation>
    </message>
    <message>
        <source>Output apparent power:</source>
        <translation>输出视在功率：</translation>
    </message>
    <message>
        <source>kVA</source>
        <translation>kVA</translation>
    </message>
    <message>
        <source>Output active power:</source>
        <translation>输出有功功率：</translation>
    </message>
    <message>
        <source>kW</source>
        <translation>kW</translation>
    </message>
    <message>
        <source>Output reactive power:</source>
        <translation>输出无功功率：</translation>
    </message>
    <message>
        <source>Output load percentage:</source>
        <translation>输出负载率：</translation>
    </message>
    <message>
        <source>Output load status:</source>
        <translation>输出状态：</translation>
    </message>
    <message>
        <source>Bypass voltage:</source>
        <translation>旁路电压：</translation>
    </message>
    <message>
        <source>Bypass current:</source>
        <translation>旁路电流：</translation>
    </message>
    <message>
        <source>Bypass frequency:</source>
        <translation>旁路频率：</translation>
    </message>
    <message>
        <source>Bypass PF:</source>
        <translation>旁路功率因数：</translation>
    </message>
    <message>
        <source>Bypass state:</source>
        <translation>旁路状态：</translation>
    </message>
    <message>
        <source>System work mode:</source>
        <translation>系统工作模式：</translation>
    </message>
    <message>
        <source>Cell float voltage:</source>
        <translation>单体浮充电压：</translation>
    </message>
    <message>
        <source>Cell boost voltage:</source>
        <translation>单体均充电压：</translation>
    </message>
    <message>
        <source>Cell Eod voltage for 0.6c:</source>
        <translation>0.6C 单体放电终止电压：</translation>
    </message>
    <message>
        <source>Cell Eod voltage for 0.15c:</source>
        <translation>0.15C 单体放电终止电压：</translation>
    </message>
    <message>
        <source>Boost cycle:</source>
        <translation>均充周期：</translation>
    </message>
    <message>
        <source>Hour</source>
        <translation>小时</translation>
    </message>
    <message>
        <source>Rated power:</source>
        <translation>额定功率：</translation>
    </message>
    <message>
        <source>VA</source>
        <translation>VA</translation>
    </message>
    <message>
        <source>Rated input voltage:</source>
        <translation>额定输入电压：</translation>
    </message>
    <message>
        <source>Rated input frequency:</source>
        <translation>额定输入频率：</translation>
    </message>
    <message>
        <source>Rated output voltage:</source>
        <translation>额定输出电压：</translation>
    </message>
    <message>
        <source>Rated output frequency:</source>
        <translation>额定输出频率：</translation>
    </message>
    <message>
        <source>Derate rate enable:</source>
        <translation>降额使能：</translation>
    </message>
    <message>
        <source>Rated frequency self-adaption:</source>
        <translation>额定频率自适应：</translation>
    </message>
    <message>
        <source>Bus restart after over voltage:</source>
        <translation>母线过压后重启：</translation>
    </message>
    <message>
        <source>Fan fault allow buzzer on:</source>
        <translation>风扇故障蜂鸣：</translation>
    </message>
    <message>
        <source>Lacking phase work:</source>
        <translation>缺相工作：</translation>
    </message>
    <message>
        <source>Frequency conversion mode:</source>
        <translation>变频模式：</translation>
    </message>
    <message>
        <source>Derate output PF:</source>
        <translation>降额输出功率因数：</translation>
    </message>
    <message>
        <source>Display capacity:</source>
        <translation>显示容量：</translation>
    </message>
    <message>
        <source>LN connection reverse alarm:</source>
        <translation>零火线反接告警：</translation>
    </message>
    <message>
        <source>Power-on self-start:</source>
        <translation>上电自启动：</translation>
    </message>
    <message>
        <source>Enable switch inverter:</source>
        <translation>允许切换到逆变：</translation>
    </message>
    <message>
        <source>Forbid bypass:</source>
        <translation>禁止旁路：</translation>
    </message>
    <message>
        <source>EPO function enable:</source>
        <translation>紧急关机（EPO）使能：</translation>
    </message>
    <message>
        <source>Allow reverse input:</source>
        <translation>允许输入反接：</translation>
    </message>
    <message>
        <source>Output with transformer:</source>
        <translation>输出带变压器：</translation>
    </message>
    <message>
        <source>Input with generator:</source>
        <translation>输入接发电机：</translation>
    </message>
    <message>
        <source>LCD backlight lighten time:</source>
        <translation>LCD 背光时间：</translation>
    </message>
    <message>
        <source>SNMP card communicaiton protocol:</source>
        <translation>SNMP 卡通信协议：</translation>
    </message>
    <message>
        <source>Transformer coil turns ratio:</source>
        <translation>变压器匝数比：</translation>
    </message>
    <message>
        <source>Input voltage high alarm point:</source>
        <translation>输入电压高告警点：</translation>
    </message>
    <message>
        <source>Input voltage low alarm point:</source>
        <translation>输入电压低告警点：</translation>
    </message>
    <message>
        <source>Input frequency high alarm point:</source>
        <translation>输入频率高告警点：</translation>
    </message>
    <message>
        <source>Input frequency low alarm point:</source>
        <translation>输入频率低告警点：</translation>
    </message>
    <message>
        <source>Output voltage high alarm point:</source>
        <translation>输出电压高告警点：</translation>
    </message>
    <message>
        <source>Output voltage low alarm point:</source>
        <translation>输出电压低告警点：</translation>
    </message>
    <message>
        <source>Input overvoltage protection point:</source>
        <translation>输入过压保护点：</translation>
    </message>
    <message>
        <source>Input undervoltage protection point:</source>
        <translation>输入欠压保护点：</translation>
    </message>
    <message>
        <source>Output overvoltage protection point:</source>
        <translation>输出过压保护点：</translation>
    </message>
    <message>
        <source>Output undervoltage protection point:</source>
        <translation>输出欠压保护点：</translation>
    </message>
    <message>
        <source>Battery numbers:</source>
        <translation>电池节数：</translation>
    </message>
    <message>
        <source>Battery AH:</source>
        <translation>电池容量（AH）：</translation>
    </message>
    <message>
        <source>AH</source>
        <translation>AH</translation>
    </message>
    <message>
        <source>Battery auto maintenance cycle:</source>
        <translation>电池自动维护周期：</translation>
    </message>
    <message>
        <source>Battery auto equalized charge:</source>
        <translation>电池自动均充：</translation>
    </message>
    <message>
        <source>Battery auto maintenance:</source>
        <translation>电池自动维护：</translation>
    </message>
    <message>
        <source>Battery low-voltage alarm coefficient:</source>
        <translation>电池低压告警系数：</translation>
    </message>
    <message>
        <source>Battery type:</source>
        <translation>电池类型：</translation>
    </message>
    <message>
        <source>Battery maintenance cycle:</source>
        <translation>电池维护周期：</translation>
    </message>
    <message>
        <source>Output voltage adjust:</source>
        <translation>输出电压调整：</translation>
    </message>
    <message>
        <source>Frequency track limit:</source>
        <translation>频率跟踪范围：</translation>
    </message>
    <message>
        <source>Charge current limit:</source>
        <translation>充电限流：</translation>
    </message>
    <message>
        <source>Boost time limit:</source>
        <translation>均充时限：</translation>
    </message>
    <message>
        <source>Bypass voltage upper limit:</source>
        <translation>旁路电压上限：</translation>
    </message>
    <message>
        <source>Bypass voltage lower limit:</source>
        <translation>旁路电压下限：</translation>
    </message>
    <message>
        <source>Bypass frequency range:</source>
        <translation>旁路频率范围：</translation>
    </message>
    <message>
        <source>Self ageing current percent:</source>
        <translation>自老化电流百分比：</translation>
    </message>
    <message>
        <source>Inverter voltage rectification:</source>
        <translation>逆变电压校正：</translation>
    </message>
    <message>
        <source>Bypass voltage rectification:</source>
        <translation>旁路电压校正：</translation>
    </message>
    <message>
        <source>Inverter DC voltage rectification:</source>
        <translation>逆变直流电压校正：</translation>
    </message>
    <message>
        <source>Input Phase A voltage rectification:</source>
        <translation>输入 A 相电压校正：</translation>
    </message>
    <message>
        <source>Input Phase B voltage rectification:</source>
        <translation>输入 B 相电压校正：</translation>
    </message>
    <message>
        <source>Input Phase C voltage rectification:</source>
        <translation>输入 C 相电压校正：</translation>
    </message>
    <message>
        <source>Battery voltage rectification:</source>
        <translation>电池电压校正：</translation>
    </message>
    <message>
        <source>Input with transformer voltage rectification 1:</source>
        <translation>输入带变压器电压校正 1：</translation>
    </message>
    <message>
        <source>Input with transformer voltage rectification 2:</source>
        <translation>输入带变压器电压校正 2：</translation>
    </message>
    <message>
        <source>Output with transformer voltage rectification 1:</source>
        <translation>输出带变压器电压校正 1：</translation>
    </message>
    <message>
        <source>Output with transformer voltage rectification 2:</source>
        <translation>输出带变压器电压校正 2：</translation>
    </message>
    <message>
        <source>Parallel device number:</source>
        <translation>并机台数：</translation>
    </message>
    <message>
        <source>Device address:</source>
        <translation>设备地址：</translation>
    </message>
    <message>
        <source>Device type select:</source>
        <translation>机型选择：</translation>
    </message>
    <message>
        <source>UPS maintenance period:</source>
        <translation>UPS 维护周期：</translation>
    </message>
    <message>
        <source>day</source>
        <translation>天</translation>
    </message>
    <message>
        <source>Company name:</source>
        <translation>公司名称：</translation>
    </message>
</context>
</TS>
