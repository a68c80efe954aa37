<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="zh_CN">
<context>
    <name>MappingScreen</name>
    <message>
        <source>What Save sends</source>
        <translation>保存时发送的更改</translation>
    </message>
    <message>
        <source>%1 → %2</source>
        <translation>%1 → %2</translation>
    </message>
    <message>
        <source>Changes</source>
        <translation>更改</translation>
    </message>
    <message>
        <source>Changes (%1)</source>
        <translation>更改（%1）</translation>
    </message>
    <message>
        <source>Fieldbus IO mapping</source>
        <translation>现场总线 IO 映射</translation>
    </message>
    <message>
        <source>Save</source>
        <translation>保存</translation>
    </message>
    <message>
        <source>Fieldbuses</source>
        <translation>现场总线</translation>
    </message>
    <message>
        <source>On</source>
        <translation>启用</translation>
    </message>
    <message>
        <source>Bus</source>
        <translation>总线</translation>
    </message>
    <message>
        <source>Name</source>
        <translation>名称</translation>
    </message>
    <message>
        <source>Input mapping</source>
        <translation>输入映射</translation>
    </message>
    <message>
        <source>Output mapping</source>
        <translation>输出映射</translation>
    </message>
    <message>
        <source>Groups</source>
        <translation>组</translation>
    </message>
    <message>
        <source>Module</source>
        <translation>模块</translation>
    </message>
    <message>
        <source>Function</source>
        <translation>功能</translation>
    </message>
    <message>
        <source>Type</source>
        <translation>类型</translation>
    </message>
    <message>
        <source>Address</source>
        <translation>地址</translation>
    </message>
    <message>
        <source>Filter time</source>
        <translation>滤波时间</translation>
    </message>
    <message>
        <source>Invert</source>
        <translation>取反</translation>
    </message>
    <message>
        <source>Map</source>
        <translation>映射</translation>
    </message>
    <message>
        <source>Direction</source>
        <translation>方向</translation>
    </message>
    <message>
        <source>Group</source>
        <translation>组号</translation>
    </message>
    <message>
        <source>First address</source>
        <translation>起始地址</translation>
    </message>
    <message>
        <source>Last address</source>
        <translation>结束地址</translation>
    </message>
    <message>
        <source>Severity</source>
        <translation>级别</translation>
    </message>
    <message>
        <source>File</source>
        <translation>文件</translation>
    </message>
    <message>
        <source>Finding</source>
        <translation>问题</translation>
    </message>
    <message>
        <source>Configuration check</source>
        <translation>配置检查</translation>
    </message>
    <message>
        <source>Reading the configuration files…</source>
        <translation>正在读取配置文件…</translation>
    </message>
    <message>
        <source>Failed to send %1 to the controller!</source>
        <translation>向控制器发送 %1 失败！</translation>
    </message>
    <message>
        <source>Saved and sent to the controller.</source>
        <translation>已保存并发送到控制器。</translation>
    </message>
    <message>
        <source>Could not read %1.</source>
        <translation>无法读取 %1。</translation>
    </message>
    <message>
        <source>%1 group</source>
        <translation>%1 组</translation>
    </message>
    <message>
        <source>Input</source>
        <translation>输入</translation>
    </message>
    <message>
        <source>Output</source>
        <translation>输出</translation>
    </message>
    <message>
        <source>%1 is no longer mapped; Save sends the change.</source>
        <translation>%1 已取消映射；点击保存发送更改。</translation>
    </message>
    <message>
        <source>%1 is mapped to address %2; Save sends the change.</source>
        <translation>%1 已映射到地址 %2；点击保存发送更改。</translation>
    </message>
    <message>
        <source>Cannot write the local copy of %1.</source>
        <translation>无法写入 %1 的本地副本。</translation>
    </message>
    <message>
        <source>Sending the mapping to the controller…</source>
        <translation>正在向控制器发送映射…</translation>
    </message>
    <message>
        <source>error</source>
        <translation>错误</translation>
    </message>
    <message>
        <source>warning</source>
        <translation>警告</translation>
    </message>
    <message>
        <source>Configuration check: no problems found</source>
        <translation>配置检查：未发现问题</translation>
    </message>
    <message>
        <source>Configuration check: %1 errors, %2 warnings</source>
        <translation>配置检查：%1 个错误，%2 个警告</translation>
    </message>
    <message>
        <source>%1 is not in the bus list.</source>
        <translation>%1 不在总线列表中。</translation>
    </message>
    <message>
        <source>busy: %1 is being changed by %2; try again</source>
        <translation>忙：%1 正由 %2 修改；请稍后再试</translation>
    </message>
    <message>
        <source>%1 changed on the controller since this screen read it; open the screen again to see the change, then redo the edits.</source>
        <translation>自本画面读取以来，控制器上的 %1 已被更改；请重新打开画面查看更改，然后重新编辑。</translation>
    </message>
    <message>
        <source>Nothing was saved: %1 cannot be written back as it stands (%2). Fix those lines; fbcfg check shows every problem.</source>
        <translation>未保存任何内容：%1 无法原样写回（%2）。请修正这些行；fbcfg check 显示所有问题。</translation>
    </message>
</context>
</TS>
