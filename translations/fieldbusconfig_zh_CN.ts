<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="zh_CN">
<context>
    <name>BusFileDataManager</name>
    <message>
        <source>The communication performance switch does not support 
simultaneous activation of multiple protocols.
 Do you want to turn off the %1 protocol communication performance switch?</source>
        <translation>通信性能开关不支持
同时开启多个协议。
 是否关闭 %1 协议的通信性能开关？</translation>
    </message>
    <message>
        <source>Slave</source>
        <translation>从站</translation>
    </message>
    <message>
        <source>Master</source>
        <translation>主站</translation>
    </message>
    <message>
        <source>Failed to read file :%1!</source>
        <translation>读取文件失败：%1！</translation>
    </message>
    <message>
        <source>%1 holds bytes that are not UTF-8 text. It was not written, so that they are not lost: correct the file on the controller first.</source>
        <translation>%1 含有非 UTF-8 文本的字节。为避免这些字节丢失，未写入该文件：请先在控制器上修正该文件。</translation>
    </message>
    <message>
        <source>%1 is in editing mode,
 please exit and try again!</source>
        <translation>%1 正处于编辑模式，
 请退出后重试！</translation>
    </message>
    <message>
        <source>Please get the RTE authority, and retry!</source>
        <translation>请获取RTE权限后重试！</translation>
    </message>
    <message>
        <source>Please turn off the servo first!</source>
        <translation>请先关闭伺服！</translation>
    </message>
    <message>
        <source>The mapping file has been updated and needs to be restarted to take effect.
 Do you want to restart now?</source>
        <translation>映射文件已更新，需要重启后才能生效。
 是否立即重启？</translation>
    </message>
    <message>
        <source>Please close and reopen the teaching pendant.</source>
        <translation>请关闭并重新打开示教器。</translation>
    </message>
    <message>
        <source>Failed to get file from controller:%1!</source>
        <translation>从控制器获取文件失败：%1！</translation>
    </message>
    <message>
        <source>the pendant does not allow editing now</source>
        <translation>示教器当前不允许编辑</translation>
    </message>
    <message>
        <source>there is no module %1</source>
        <translation>没有模块 %1</translation>
    </message>
    <message>
        <source>input</source>
        <translation>输入</translation>
    </message>
    <message>
        <source>output</source>
        <translation>输出</translation>
    </message>
    <message>
        <source>%1 declares no %2 function %3</source>
        <translation>%1 未声明%2功能 %3</translation>
    </message>
    <message>
        <source>there is no bus %1</source>
        <translation>没有总线 %1</translation>
    </message>
    <message>
        <source>bus %1 is switched off</source>
        <translation>总线 %1 已关闭</translation>
    </message>
    <message>
        <source>&apos;%1&apos; is not an address</source>
        <translation>&apos;%1&apos; 不是地址</translation>
    </message>
    <message>
        <source>there is no %1 %2 group %3 on %4</source>
        <translation>%4 上没有 %1 %2组 %3</translation>
    </message>
    <message>
        <source>%1 has no %2 %3 addresses</source>
        <translation>%1 没有 %2 %3地址</translation>
    </message>
    <message>
        <source>group %1 is beyond the %2 %3 groups of %4 (0-%5)</source>
        <translation>组 %1 超出了 %4 的 %2 个 %3 组的范围 (0-%5)</translation>
    </message>
    <message>
        <source>address %1 is beyond %2&apos;s %3 %4 %5 addresses (0-%6)</source>
        <translation>地址 %1 超出了 %2 的 %3 个 %4 %5地址的范围 (0-%6)</translation>
    </message>
    <message>
        <source>address %1 of %2 (%3 %4) is taken by %5 %6</source>
        <translation>%2 的地址 %1（%3 %4）已被 %5 %6 占用</translation>
    </message>
    <message>
        <source>address %1 of %2 (%3 %4) lies inside %5 group %6 (%7-%8)</source>
        <translation>%2 的地址 %1（%3 %4）位于 %5 组 %6 (%7-%8) 之内</translation>
    </message>
    <message>
        <source>%1 %2 has no %3 mapping</source>
        <translation>%1 %2 没有%3映射</translation>
    </message>
    <message>
        <source>a group is int, float or string, not &apos;%1&apos;</source>
        <translation>组的类型应为 int、float 或 string，而不是 &apos;%1&apos;</translation>
    </message>
    <message>
        <source>group %1 is beyond the %2 %3 %4 groups of %5 (0-%6)</source>
        <translation>组 %1 超出了 %5 的 %2 个 %3 %4组的范围 (0-%6)</translation>
    </message>
    <message>
        <source>the first address %1 comes after the last %2</source>
        <translation>起始地址 %1 大于结束地址 %2</translation>
    </message>
    <message>
        <source>addresses %1-%2 are beyond %3&apos;s %4 bool %5 addresses (0-%6)</source>
        <translation>地址 %1-%2 超出了 %3 的 %4 个 bool %5地址的范围 (0-%6)</translation>
    </message>
    <message>
        <source>the bool signal %1 %2 at address %3 of %4 lies inside %5-%6</source>
        <translation>%4 地址 %3 处的 bool 信号 %1 %2 位于 %5-%6 之内</translation>
    </message>
    <message>
        <source>%1-%2 overlaps %3 %4 group %5 of %6 (%7-%8)</source>
        <translation>%1-%2 与 %6 的 %3 %4组 %5 (%7-%8) 重叠</translation>
    </message>
    <message>
        <source>%1 %2 group %3 belongs to %4; group numbers are shared by all buses</source>
        <translation>%1 %2组 %3 属于 %4；组号由所有总线共用</translation>
    </message>
    <message>
        <source>%1 %2 group %3 of %4 is used by %5 %6; unmap it first</source>
        <translation>%4 的 %1 %2组 %3 正被 %5 %6 使用；请先取消其映射</translation>
    </message>
    <message>
        <source>%1 %2 is mapped as %3 already on line %4</source>
        <translation>%1 %2 已在第 %4 行映射为%3</translation>
    </message>
    <message>
        <source>%1 %2 address %3 is taken already on line %4</source>
        <translation>%1 的%2地址 %3 已被第 %4 行占用</translation>
    </message>
    <message>
        <source>bus %1 is not switched on</source>
        <translation>总线 %1 未开启</translation>
    </message>
    <message>
        <source>the address is outside %1&apos;s %2 %3 %4 addresses</source>
        <translation>地址超出了 %1 的 %2 个 %3 %4地址的范围</translation>
    </message>
    <message>
        <source>the bool signal lies inside %1 group %2</source>
        <translation>该 bool 信号位于 %1 组 %2 之内</translation>
    </message>
    <message>
        <source>not taken</source>
        <translation>未采用</translation>
    </message>
    <message>
        <source>backing up the present mapping to %1 failed; nothing was changed</source>
        <translation>将现有映射备份到 %1 失败；未做任何更改</translation>
    </message>
    <message>
        <source>cannot write %1</source>
        <translation>无法写入 %1</translation>
    </message>
    <message>
        <source>sending the imported mapping to %1 failed</source>
        <translation>将导入的映射发送到 %1 失败</translation>
    </message>
</context>
<context>
    <name>ConfigCheck</name>
    <message>
        <source>input</source>
        <translation>输入</translation>
    </message>
    <message>
        <source>output</source>
        <translation>输出</translation>
    </message>
    <message>
        <source>group %1 (%2, %3-%4)</source>
        <translation>组 %1 (%2, %3-%4)</translation>
    </message>
    <message>
        <source>bytes that are not UTF-8; a write-back would not keep them</source>
        <translation>含有非 UTF-8 字节；回写时这些字节将无法保留</translation>
    </message>
    <message>
        <source>the file is missing</source>
        <translation>文件不存在</translation>
    </message>
    <message>
        <source>the file is missing: the signals have no descriptions</source>
        <translation>文件不存在：信号没有描述</translation>
    </message>
    <message>
        <source>not well-formed XML: %1</source>
        <translation>XML 格式不正确：%1</translation>
    </message>
    <message>
        <source>the file is missing: the safety signals have no descriptions</source>
        <translation>文件不存在：安全信号没有描述</translation>
    </message>
    <message>
        <source>the function list of module %1 lies outside the controller folder; the pendant refuses to fetch it</source>
        <translation>模块 %1 的功能列表位于控制器文件夹之外；示教器拒绝获取该文件</translation>
    </message>
    <message>
        <source>a folder stands where the file should be</source>
        <translation>此处应为文件，却是一个文件夹</translation>
    </message>
    <message>
        <source>the file cannot be read: %1</source>
        <translation>无法读取文件：%1</translation>
    </message>
    <message>
        <source>not well-formed XML: &quot;&amp;&quot; starts no entity reference</source>
        <translation>XML 格式不正确：“&amp;”未开始任何实体引用</translation>
    </message>
    <message>
        <source>the row lacks %1 or its value</source>
        <translation>该行缺少 %1 或其值</translation>
    </message>
    <message>
        <source>group %1 is defined again on line %2, which replaces this row</source>
        <translation>组 %1 在第 %2 行被再次定义，将取代本行</translation>
    </message>
    <message>
        <source>bus &apos;%1&apos; is not listed in fieldbus.xml</source>
        <translation>总线 &apos;%1&apos; 未在 fieldbus.xml 中列出</translation>
    </message>
    <message>
        <source>device map &apos;%1-%2&apos; is not two addresses first-last</source>
        <translation>设备映射 &apos;%1-%2&apos; 不是“起始地址-结束地址”形式的两个地址</translation>
    </message>
    <message>
        <source>device map %1-%2 runs backwards</source>
        <translation>设备映射 %1-%2 的起始地址大于结束地址</translation>
    </message>
    <message>
        <source>device map %1-%2 lies outside the %3 bool %4 addresses of %5</source>
        <translation>设备映射 %1-%2 超出了 %5 的 %3 个 bool %4地址的范围</translation>
    </message>
    <message>
        <source>%1 overlaps %2 on line %3</source>
        <translation>%1 与第 %3 行的 %2 重叠</translation>
    </message>
    <message>
        <source>bus %1 is switched off</source>
        <translation>总线 %1 已关闭</translation>
    </message>
    <message>
        <source>address &apos;%1&apos; is not a number</source>
        <translation>地址 &apos;%1&apos; 不是数字</translation>
    </message>
    <message>
        <source>%1 %2 is mapped as %3 again on line %4</source>
        <translation>%1 %2 在第 %4 行再次被映射为%3</translation>
    </message>
    <message>
        <source>module %1 has no function list</source>
        <translation>模块 %1 没有功能列表</translation>
    </message>
    <message>
        <source>%1 %2 is declared %3, mapped as %4</source>
        <translation>%1 %2 声明为 %3，却映射为 %4</translation>
    </message>
    <message>
        <source>%1 declares no %2 function %3</source>
        <translation>%1 未声明%2功能 %3</translation>
    </message>
    <message>
        <source>address %1 is outside the %2 %3 %4 addresses of %5 (0-%6)</source>
        <translation>地址 %1 超出了 %5 的 %2 个 %3 %4地址的范围 (0-%6)</translation>
    </message>
    <message>
        <source>%1 has no %2 %3 addresses</source>
        <translation>%1 没有 %2 %3地址</translation>
    </message>
    <message>
        <source>bool signal at address %1 lies inside %2 on line %3 of user_groupio.cfg</source>
        <translation>地址 %1 处的 bool 信号位于 user_groupio.cfg 第 %3 行的 %2 之内</translation>
    </message>
    <message>
        <source>there is no %1 %2 group %3 on %4</source>
        <translation>%4 上没有 %1 %2组 %3</translation>
    </message>
    <message>
        <source>address %1 of %2 %3 is also taken by %4 %5 on line %6</source>
        <translation>%2 %3地址 %1 也被第 %6 行的 %4 %5 占用</translation>
    </message>
    <message>
        <source>the function list of %1 is missing; the rows of %1 are not checked</source>
        <translation>%1 的功能列表不存在；%1 的信号行未被检查</translation>
    </message>
    <message>
        <source>the file is empty; the pendant does not read it</source>
        <translation>文件为空；示教器不读取该文件</translation>
    </message>
    <message>
        <source>this line stands before the first section marker: the pendant skips it and a write-back drops it</source>
        <translation>此行位于第一个段标记之前：示教器跳过它，写回时会丢弃它</translation>
    </message>
    <message>
        <source>%1 lines from this one stand before the first section marker: the pendant skips them and a write-back drops them</source>
        <translation>从此行起有 %1 行位于第一个段标记之前：示教器跳过它们，写回时会丢弃它们</translation>
    </message>
    <message>
        <source>this line holds more than its section marker: the pendant skips the rest of it and a write-back drops it</source>
        <translation>此行除段标记外还有其他内容：示教器跳过其余部分，写回时会丢弃它</translation>
    </message>
    <message>
        <source>the lines of this file end in CR alone, so the pendant reads it as one line and skips all but its section marker, and a write-back drops the rest; save it with LF line ends</source>
        <translation>此文件的行仅以 CR 结尾，示教器将其读作一行并跳过段标记以外的全部内容，写回时会丢弃其余部分；请以 LF 换行符保存</translation>
    </message>
</context>
<context>
    <name>ConfigDiff</name>
    <message>
        <source>input</source>
        <translation>输入</translation>
    </message>
    <message>
        <source>output</source>
        <translation>输出</translation>
    </message>
    <message>
        <source>the file</source>
        <translation>文件</translation>
    </message>
    <message>
        <source>not readable</source>
        <translation>无法读取</translation>
    </message>
    <message>
        <source>on</source>
        <translation>开启</translation>
    </message>
    <message>
        <source>off</source>
        <translation>关闭</translation>
    </message>
    <message>
        <source>start %1, stop %2, length %3</source>
        <translation>起始 %1，结束 %2，长度 %3</translation>
    </message>
    <message>
        <source>%1 entry %2</source>
        <translation>%1 第 %2 项</translation>
    </message>
    <message>
        <source>%1 %2 (%3), filter time %4, invert %5</source>
        <translation>%1 %2（%3），滤波时间 %4，取反 %5</translation>
    </message>
    <message>
        <source>%1 %2 group %3 of %4</source>
        <translation>%4 的%1%2组 %3</translation>
    </message>
    <message>
        <source>byte order</source>
        <translation>字节顺序</translation>
    </message>
</context>
<context>
    <name>ProgressBarWidget</name>
    <message>
        <source>Form</source>
        <translation>窗体</translation>
    </message>
    <message>
        <source>Reading the configuration file and initializing！</source>
        <translation>正在读取配置文件并初始化！</translation>
    </message>
</context>
</TS>
