<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="zh_CN">
<context>
    <name>fbcfg</name>
    <message>
        <source>on</source>
        <translation>开启</translation>
    </message>
    <message>
        <source>off</source>
        <translation>关闭</translation>
    </message>
    <message>
        <source>NAME</source>
        <translation>名称</translation>
    </message>
    <message>
        <source>SHORT</source>
        <translation>简称</translation>
    </message>
    <message>
        <source>STATE</source>
        <translation>状态</translation>
    </message>
    <message>
        <source>Buses:</source>
        <translation>总线：</translation>
    </message>
    <message>
        <source>Free bus: %1</source>
        <translation>自由总线：%1</translation>
    </message>
    <message>
        <source>open</source>
        <translation>开启</translation>
    </message>
    <message>
        <source>closed</source>
        <translation>关闭</translation>
    </message>
    <message>
        <source>Modules (%1): %2</source>
        <translation>模块 (%1)：%2</translation>
    </message>
    <message>
        <source>Signals, groups and user IO areas of the buses that are on:</source>
        <translation>已开启总线的信号、组和用户 IO 区：</translation>
    </message>
    <message>
        <source>BUS</source>
        <translation>总线</translation>
    </message>
    <message>
        <source>DIRECTION</source>
        <translation>方向</translation>
    </message>
    <message>
        <source>SIGNALS</source>
        <translation>信号</translation>
    </message>
    <message>
        <source>GROUP SIGNALS</source>
        <translation>组信号</translation>
    </message>
    <message>
        <source>GROUPS</source>
        <translation>组</translation>
    </message>
    <message>
        <source>BOOL</source>
        <translation>BOOL</translation>
    </message>
    <message>
        <source>INT</source>
        <translation>INT</translation>
    </message>
    <message>
        <source>OTHER</source>
        <translation>其他</translation>
    </message>
    <message>
        <source>the Modbus TCP slave mtcp is always on</source>
        <translation>Modbus TCP 从站 mtcp 始终开启</translation>
    </message>
    <message>
        <source>there is no bus %1; the buses are %2</source>
        <translation>没有总线 %1；现有总线为 %2</translation>
    </message>
    <message>
        <source>%1 is already %2</source>
        <translation>%1 已是 %2</translation>
    </message>
    <message>
        <source>cannot write the local copy of %1</source>
        <translation>无法写入 %1 的本地副本</translation>
    </message>
    <message>
        <source>%1 switched %2</source>
        <translation>%1 已%2</translation>
    </message>
    <message>
        <source>the switch is on or off, not &apos;%1&apos;</source>
        <translation>开关状态应为 on 或 off，而不是 &apos;%1&apos;</translation>
    </message>
    <message>
        <source>kept: the switch word stays %1</source>
        <translation>未变更：开关字仍为 %1</translation>
    </message>
    <message>
        <source>the byte order is big or little, not &apos;%1&apos;</source>
        <translation>字节序应为 big 或 little，而不是 &apos;%1&apos;</translation>
    </message>
    <message>
        <source>the byte order is already %1</source>
        <translation>字节序已是 %1</translation>
    </message>
    <message>
        <source>writing or sending %1 failed</source>
        <translation>写入或发送 %1 失败</translation>
    </message>
    <message>
        <source>byte order: %1 -&gt; %2</source>
        <translation>字节序：%1 -&gt; %2</translation>
    </message>
    <message>
        <source>no problems found</source>
        <translation>未发现问题</translation>
    </message>
    <message>
        <source>1 error</source>
        <translation>1 个错误</translation>
    </message>
    <message>
        <source>%1 errors</source>
        <translation>%1 个错误</translation>
    </message>
    <message>
        <source>1 warning</source>
        <translation>1 个警告</translation>
    </message>
    <message>
        <source>%1 warnings</source>
        <translation>%1 个警告</translation>
    </message>
    <message>
        <source>%1; see fbcfg %2 --help</source>
        <translation>%1；参见 fbcfg %2 --help</translation>
    </message>
    <message>
        <source>refused: %1</source>
        <translation>已拒绝：%1</translation>
    </message>
    <message>
        <source>--dir in|out is required</source>
        <translation>必须指定 --dir in|out</translation>
    </message>
    <message>
        <source>--dir must be in or out, not &apos;%1&apos;</source>
        <translation>--dir 必须为 in 或 out，而不是 &apos;%1&apos;</translation>
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
        <source>no descriptions</source>
        <translation>没有描述</translation>
    </message>
    <message>
        <source>VARIABLE</source>
        <translation>变量</translation>
    </message>
    <message>
        <source>DESCRIPTION</source>
        <translation>描述</translation>
    </message>
    <message>
        <source>the description must not hold &quot;&amp;&quot;, &quot;&lt;&quot; or &quot;&gt;&quot;: the file is written without escaping, and they would leave it unreadable</source>
        <translation>描述中不能含有 &quot;&amp;&quot;、&quot;&lt;&quot; 或 &quot;&gt;&quot;：文件写入时不做转义，它们会使文件无法读取</translation>
    </message>
    <message>
        <source>&apos;%1&apos; is not NAME[INDEX] with a decimal INDEX and a NAME without &quot; &lt; [ ]</source>
        <translation>&apos;%1&apos; 不符合 NAME[INDEX] 格式：INDEX 须为十进制数，NAME 中不能含有 &quot; &lt; [ ]</translation>
    </message>
    <message>
        <source>the index -1 marks an entry that is not read back</source>
        <translation>索引 -1 表示不会被读回的条目</translation>
    </message>
    <message>
        <source>%1 has no description to remove</source>
        <translation>%1 没有可删除的描述</translation>
    </message>
    <message>
        <source>%1 is already described so</source>
        <translation>%1 已是该描述</translation>
    </message>
    <message>
        <source>(none)</source>
        <translation>（无）</translation>
    </message>
    <message>
        <source>--type int|float|string is required</source>
        <translation>必须指定 --type int|float|string</translation>
    </message>
    <message>
        <source>--type must be int, float or string, not &apos;%1&apos;</source>
        <translation>--type 必须为 int、float 或 string，而不是 &apos;%1&apos;</translation>
    </message>
    <message>
        <source>%1 %2 group %3 of %4</source>
        <translation>%4 的 %1 %2组 %3</translation>
    </message>
    <message>
        <source>no groups</source>
        <translation>没有组</translation>
    </message>
    <message>
        <source>TYPE</source>
        <translation>类型</translation>
    </message>
    <message>
        <source>GROUP</source>
        <translation>组</translation>
    </message>
    <message>
        <source>FIRST</source>
        <translation>起始</translation>
    </message>
    <message>
        <source>LAST</source>
        <translation>结束</translation>
    </message>
    <message>
        <source>LINE</source>
        <translation>行</translation>
    </message>
    <message>
        <source>&apos;%1&apos; is not a number</source>
        <translation>&apos;%1&apos; 不是数字</translation>
    </message>
    <message>
        <source>new</source>
        <translation>新建</translation>
    </message>
    <message>
        <source>%1 (%2) deleted</source>
        <translation>已删除 %1 (%2)</translation>
    </message>
    <message>
        <source>keep the present mapping (p) or take the imported one (i)? </source>
        <translation>保留现有映射 (p) 还是采用导入的映射 (i)? </translation>
    </message>
    <message>
        <source>cannot copy the local %1 to its backup</source>
        <translation>无法将本地的 %1 复制为备份</translation>
    </message>
    <message>
        <source>sending %1 to the controller failed</source>
        <translation>向控制器发送 %1 失败</translation>
    </message>
    <message>
        <source>%1 backed up to %2</source>
        <translation>%1 已备份到 %2</translation>
    </message>
    <message>
        <source>give either --modules A,B or --all</source>
        <translation>请指定 --modules A,B 或 --all 之一</translation>
    </message>
    <message>
        <source>--prefer must be present or imported, not &apos;%1&apos;</source>
        <translation>--prefer 必须为 present 或 imported，而不是 &apos;%1&apos;</translation>
    </message>
    <message>
        <source>cannot read %1</source>
        <translation>无法读取 %1</translation>
    </message>
    <message>
        <source>line %1</source>
        <translation>第 %1 行</translation>
    </message>
    <message>
        <source>  collision: %1 takes the address of %2</source>
        <translation>  冲突：%1 占用了 %2 的地址</translation>
    </message>
    <message>
        <source>  mapped differently: %1, present %2 %3</source>
        <translation>  映射不同：%1，现有映射为 %2 %3</translation>
    </message>
    <message>
        <source>nothing to import; the mapping stays as it is</source>
        <translation>没有可导入的内容；映射保持不变</translation>
    </message>
    <message>
        <source>nothing was changed: the import collides with the present mapping; choose with --prefer present|imported</source>
        <translation>未做任何更改：导入内容与现有映射冲突；请用 --prefer present|imported 选择</translation>
    </message>
    <message>
        <source>cannot write %1</source>
        <translation>无法写入 %1</translation>
    </message>
    <message>
        <source>%1 now holds %2 input and %3 output rows; restart the controller for the new mapping to take effect</source>
        <translation>%1 现有 %2 行输入和 %3 行输出；请重启控制器使新映射生效</translation>
    </message>
    <message>
        <source>Work on the controller whose files are in DIR, an existing folder holding application/fidbus (default, only when the option is not given: a fresh copy of the bundled sample controller).</source>
        <translation>操作文件位于 DIR 中的控制器，DIR 须为已存在且含有 application/fidbus 的文件夹（仅在未给出该选项时默认使用随附示例控制器的一份新副本）。</translation>
    </message>
    <message>
        <source>Keep the pendant side in DIR: DIR/pendant, the library&apos;s folder DIR/Application/fieldbus and, without --controller, a fresh copy of the sample in DIR/Controller; DIR must exist (default: a temporary folder, removed at exit, also on SIGINT, SIGTERM, SIGHUP and a closed pipe).</source>
        <translation>将示教器端放在 DIR 中：DIR/pendant、库的文件夹 DIR/Application/fieldbus，未指定 --controller 时还有 DIR/Controller 中的示例新副本；DIR 必须已存在（默认：临时文件夹，退出时删除，收到 SIGINT、SIGTERM、SIGHUP 或管道关闭时也删除）。</translation>
    </message>
    <message>
        <source>Language of module and function names and of messages (default en).</source>
        <translation>模块名、功能名及消息的语言（默认 en）。</translation>
    </message>
    <message>
        <source>Answer the library&apos;s questions with yes.</source>
        <translation>对库的提问一律回答“是”。</translation>
    </message>
    <message>
        <source>Answer the library&apos;s questions with no.</source>
        <translation>对库的提问一律回答“否”。</translation>
    </message>
    <message>
        <source>Wait at most SECONDS for each answer of the library, and for another command that is changing the same folder (default 30).</source>
        <translation>每次等待库应答、以及等待正在修改同一文件夹的另一个命令，最多 SECONDS 秒（默认 30）。</translation>
    </message>
    <message>
        <source>Show the library&apos;s diagnostics.</source>
        <translation>显示库的诊断信息。</translation>
    </message>
    <message>
        <source>Show help for the tool or a command.</source>
        <translation>显示本工具或某个命令的帮助。</translation>
    </message>
    <message>
        <source>Show the version.</source>
        <translation>显示版本。</translation>
    </message>
    <message>
        <source>The switch word in force now, decimal or 0x hexadecimal (default 0).</source>
        <translation>当前生效的开关字，十进制或 0x 十六进制（默认 0）。</translation>
    </message>
    <message>
        <source>Only this bus: a short name such as mtcp; group_mtcp for the group signals of mtcp.</source>
        <translation>仅此总线：简称，如 mtcp；mtcp 的组信号用 group_mtcp。</translation>
    </message>
    <message>
        <source>Direction: in (signals the controller receives) or out.</source>
        <translation>方向：in（控制器接收的信号）或 out。</translation>
    </message>
    <message>
        <source>Only this module (English or Chinese name).</source>
        <translation>仅此模块（英文名或中文名）。</translation>
    </message>
    <message>
        <source>Filter time of a bool input (default: kept, or 0 for a new row).</source>
        <translation>bool 输入的滤波时间（默认：保持不变，新行为 0）。</translation>
    </message>
    <message>
        <source>Inversion of a bool signal (default: kept, or 0 for a new row).</source>
        <translation>bool 信号是否取反（默认：保持不变，新行为 0）。</translation>
    </message>
    <message>
        <source>Value type of the group.</source>
        <translation>组的值类型。</translation>
    </message>
    <message>
        <source>Import the rows of these modules (English or Chinese names).</source>
        <translation>导入这些模块的行（英文名或中文名）。</translation>
    </message>
    <message>
        <source>Import the rows of every module except the process-variable layout.</source>
        <translation>导入除过程变量布局外所有模块的行。</translation>
    </message>
    <message>
        <source>For functions that both sides map differently: keep the present mapping or take the imported one (default: ask on a terminal).</source>
        <translation>对于两边映射不同的功能：保留现有映射或采用导入的映射（默认：在终端上询问）。</translation>
    </message>
    <message>
        <source>Show the buses, the modules, the mapped signals and groups and the user IO areas.</source>
        <translation>显示总线、模块、已映射的信号和组以及用户 IO 区。</translation>
    </message>
    <message>
        <source>List the fieldbuses and whether each is on.</source>
        <translation>列出现场总线及各自是否开启。</translation>
    </message>
    <message>
        <source>Switch a bus on.</source>
        <translation>开启一条总线。</translation>
    </message>
    <message>
        <source>Switch a bus off; its mapped signals stay mapped.</source>
        <translation>关闭一条总线；其已映射的信号保持映射。</translation>
    </message>
    <message>
        <source>Print the new communication-performance switch word when the switch of a bus is turned on or off.</source>
        <translation>输出打开或关闭某总线的通信性能开关后新的开关字。</translation>
    </message>
    <message>
        <source>List the mapped signals.</source>
        <translation>列出已映射的信号。</translation>
    </message>
    <message>
        <source>Map a function of a module to an address of a bus, or to a group (BUS group_SHORT, ADDRESS the group number).</source>
        <translation>将模块的功能映射到总线的地址或某个组（BUS 为 group_SHORT，ADDRESS 为组号）。</translation>
    </message>
    <message>
        <source>The change is checked as the pendant checks it: the bus must be on, the address within the bus&apos;s area, free, and for a bool signal outside every group. A refused change writes nothing and ends with exit status 1.</source>
        <translation>更改按示教器的规则检查：总线必须已开启，地址须在该总线的区域内且未被占用，bool 信号的地址还须不在任何组内。被拒绝的更改不写入任何内容，退出状态为 1。</translation>
    </message>
    <message>
        <source>Remove the mapping of a function.</source>
        <translation>删除功能的映射。</translation>
    </message>
    <message>
        <source>List the group signals&apos; groups.</source>
        <translation>列出组信号的组。</translation>
    </message>
    <message>
        <source>Define or change group NUMBER of a bus over the bool addresses FIRST to LAST.</source>
        <translation>在总线的 bool 地址 FIRST 到 LAST 上定义或修改组 NUMBER。</translation>
    </message>
    <message>
        <source>The range must hold no mapped bool signal and overlap no other group of the bus.</source>
        <translation>该范围内不能有已映射的 bool 信号，也不能与该总线的其他组重叠。</translation>
    </message>
    <message>
        <source>Delete a group that no mapped signal uses.</source>
        <translation>删除未被任何已映射信号使用的组。</translation>
    </message>
    <message>
        <source>Copy the signal mapping to the controller&apos;s mapping backup.</source>
        <translation>将信号映射复制到控制器的映射备份。</translation>
    </message>
    <message>
        <source>List the users&apos; signal descriptions.</source>
        <translation>列出用户的信号描述。</translation>
    </message>
    <message>
        <source>Describe a fieldbus variable; an empty TEXT removes the description.</source>
        <translation>设置现场总线变量的描述；TEXT 为空时删除该描述。</translation>
    </message>
    <message>
        <source>The file is written without escaping, so TEXT must not hold &quot;&amp;&quot;, &quot;&lt;&quot; or &quot;&gt;&quot; (they are refused), and NAME none of &quot; &lt; [ ].</source>
        <translation>文件写入时不做转义，因此 TEXT 中不能含有 &quot;&amp;&quot;、&quot;&lt;&quot; 或 &quot;&gt;&quot;（会被拒绝），NAME 中不能含有 &quot; &lt; [ ] 中的任何字符。</translation>
    </message>
    <message>
        <source>Print the byte order of the fieldbus slave.</source>
        <translation>输出现场总线从站的字节序。</translation>
    </message>
    <message>
        <source>Set the byte order of the fieldbus slave.</source>
        <translation>设置现场总线从站的字节序。</translation>
    </message>
    <message>
        <source>Check the whole configuration and list what is wrong.</source>
        <translation>检查整个配置并列出存在的问题。</translation>
    </message>
    <message>
        <source>Usage: fbcfg [options] COMMAND [arguments]</source>
        <translation>用法：fbcfg [选项] COMMAND [参数]</translation>
    </message>
    <message>
        <source>Does from a terminal what the pendant&apos;s fieldbus screens do, on a controller whose files are in a folder. Options may stand before or after the command.</source>
        <translation>在终端中完成示教器现场总线界面的操作，作用于文件位于某个文件夹中的控制器。选项可放在命令之前或之后。</translation>
    </message>
    <message>
        <source>Commands:</source>
        <translation>命令：</translation>
    </message>
    <message>
        <source>Options:</source>
        <translation>选项：</translation>
    </message>
    <message>
        <source>Run &quot;fbcfg COMMAND --help&quot; for the arguments and options of a command. Exit status: 0 done, 1 change refused or check findings, 2 bad usage, unreadable controller or failed transfer.</source>
        <translation>运行 &quot;fbcfg COMMAND --help&quot; 查看命令的参数和选项。退出状态：0 完成；1 更改被拒绝或检查发现问题；2 用法错误、控制器无法读取或传输失败。</translation>
    </message>
    <message>
        <source>Usage:</source>
        <translation>用法：</translation>
    </message>
    <message>
        <source>Options of the command:</source>
        <translation>命令选项：</translation>
    </message>
    <message>
        <source>Kinds of findings:</source>
        <translation>问题类别：</translation>
    </message>
    <message>
        <source>Options of every command:</source>
        <translation>所有命令通用的选项：</translation>
    </message>
    <message>
        <source>missing argument %1</source>
        <translation>缺少参数 %1</translation>
    </message>
    <message>
        <source>unexpected argument &apos;%1&apos;</source>
        <translation>多余的参数 &apos;%1&apos;</translation>
    </message>
    <message>
        <source>--json does not apply to fbcfg %1</source>
        <translation>--json 不适用于 fbcfg %1</translation>
    </message>
    <message>
        <source>--yes and --no exclude each other</source>
        <translation>--yes 与 --no 不能同时使用</translation>
    </message>
    <message>
        <source>--lang must be en or zh, not &apos;%1&apos;</source>
        <translation>--lang 必须为 en 或 zh，而不是 &apos;%1&apos;</translation>
    </message>
    <message>
        <source>--timeout must be a number of seconds, not &apos;%1&apos;</source>
        <translation>--timeout 必须是秒数，而不是 &apos;%1&apos;</translation>
    </message>
    <message>
        <source>a command is missing; see fbcfg --help</source>
        <translation>缺少命令；参见 fbcfg --help</translation>
    </message>
    <message>
        <source>unknown command &apos;%1&apos;; see fbcfg --help</source>
        <translation>未知命令 &apos;%1&apos;；参见 fbcfg --help</translation>
    </message>
    <message>
        <source>fbcfg %1 needs one of: %2</source>
        <translation>fbcfg %1 需要以下子命令之一：%2</translation>
    </message>
    <message>
        <source>unknown command &apos;%1 %2&apos;</source>
        <translation>未知命令 &apos;%1 %2&apos;</translation>
    </message>
    <message>
        <source>option --%1 does not apply to fbcfg %2</source>
        <translation>选项 --%1 不适用于 fbcfg %2</translation>
    </message>
    <message>
        <source>unknown option &apos;%1&apos;</source>
        <translation>未知选项 &apos;%1&apos;</translation>
    </message>
    <message>
        <source>the library tells mapping rows apart by function name and bus only, and %1 has the same; nothing was changed</source>
        <translation>库仅按功能名和总线区分映射行，而 %1 与之相同；未做任何更改</translation>
    </message>
    <message>
        <source>there is no module %1; the modules are %2</source>
        <translation>没有模块 %1；现有模块为 %2</translation>
    </message>
    <message>
        <source>%1 declares no %2 functions for the fieldbus</source>
        <translation>%1 未声明用于现场总线的%2功能</translation>
    </message>
    <message>
        <source>not mapped</source>
        <translation>未映射</translation>
    </message>
    <message>
        <source>no mapped signals</source>
        <translation>没有已映射的信号</translation>
    </message>
    <message>
        <source>MODULE</source>
        <translation>模块</translation>
    </message>
    <message>
        <source>FUNCTION</source>
        <translation>功能</translation>
    </message>
    <message>
        <source>ADDRESS</source>
        <translation>地址</translation>
    </message>
    <message>
        <source>FILTER</source>
        <translation>滤波</translation>
    </message>
    <message>
        <source>INVERT</source>
        <translation>取反</translation>
    </message>
    <message>
        <source>the address must be a number, not &apos;%1&apos;</source>
        <translation>地址必须是数字，而不是 &apos;%1&apos;</translation>
    </message>
    <message>
        <source>--invert must be 0 or 1, not &apos;%1&apos;</source>
        <translation>--invert 必须为 0 或 1，而不是 &apos;%1&apos;</translation>
    </message>
    <message>
        <source>--filter-time applies only to bool inputs</source>
        <translation>--filter-time 仅适用于 bool 输入</translation>
    </message>
    <message>
        <source>--invert applies only to bool signals</source>
        <translation>--invert 仅适用于 bool 信号</translation>
    </message>
    <message>
        <source>bus %1 is switched off</source>
        <translation>总线 %1 已关闭</translation>
    </message>
    <message>
        <source>%1 is already mapped to %2</source>
        <translation>%1 已映射到 %2</translation>
    </message>
    <message>
        <source>cannot make a temporary workspace: %1</source>
        <translation>无法创建临时工作区：%1</translation>
    </message>
    <message>
        <source>cannot make the workspace %1</source>
        <translation>无法创建工作区 %1</translation>
    </message>
    <message>
        <source>cannot make %1</source>
        <translation>无法创建 %1</translation>
    </message>
    <message>
        <source>the controller folder %1 does not exist</source>
        <translation>控制器文件夹 %1 不存在</translation>
    </message>
    <message>
        <source>%1 is not a controller folder: it has no application/fidbus</source>
        <translation>%1 不是控制器文件夹：其中没有 application/fidbus</translation>
    </message>
    <message>
        <source>the sample controller is missing (looked in %1); give one with --controller</source>
        <translation>找不到示例控制器（已查找 %1）；请用 --controller 指定</translation>
    </message>
    <message>
        <source>cannot copy the sample controller to %1</source>
        <translation>无法将示例控制器复制到 %1</translation>
    </message>
    <message>
        <source>working on a copy of the sample controller in %1 (removed at exit)</source>
        <translation>正在操作 %1 中的示例控制器副本（退出时删除）</translation>
    </message>
    <message>
        <source>working on a copy of the sample controller in %1</source>
        <translation>正在操作 %1 中的示例控制器副本</translation>
    </message>
    <message>
        <source>cannot copy %1 to %2</source>
        <translation>无法将 %1 复制到 %2</translation>
    </message>
    <message>
        <source>y</source>
        <translation>y</translation>
    </message>
    <message>
        <source>n</source>
        <translation>n</translation>
    </message>
    <message>
        <source>answer %1 or %2: </source>
        <translation>请回答 %1 或 %2: </translation>
    </message>
    <message>
        <source>nothing was changed: the library asks &quot;%1&quot; and there is no terminal to answer it; answer with --yes or --no</source>
        <translation>未做任何更改：库提问 &quot;%1&quot;，但没有终端可以回答；请用 --yes 或 --no 作答</translation>
    </message>
    <message>
        <source>reading %1/%2 %3</source>
        <translation>正在读取 %1/%2 %3</translation>
    </message>
    <message>
        <source>no answer from the library within %1 s while waiting for %2</source>
        <translation>等待 %2 时，库在 %1 秒内没有应答</translation>
    </message>
    <message>
        <source>the function lists named in %1</source>
        <translation>%1 中列出的功能列表</translation>
    </message>
    <message>
        <source>function lists</source>
        <translation>功能列表</translation>
    </message>
    <message>
        <source>text after the closing quote of field %1</source>
        <translation>字段 %1 的结束引号后还有文字</translation>
    </message>
    <message>
        <source>the quote opened on line %1 is not closed</source>
        <translation>第 %1 行开始的引号没有结束</translation>
    </message>
    <message>
        <source>%1 fields expected, found %2</source>
        <translation>应有 %1 个字段，实有 %2 个</translation>
    </message>
    <message>
        <source>there is no module &apos;%1&apos;</source>
        <translation>没有模块“%1”</translation>
    </message>
    <message>
        <source>the rows of %1 are not imported</source>
        <translation>%1 的行不导入</translation>
    </message>
    <message>
        <source>the direction must be in or out, not &apos;%1&apos;</source>
        <translation>方向须为 in 或 out，而不是“%1”</translation>
    </message>
    <message>
        <source>%1 declares no %2 function &apos;%3&apos;</source>
        <translation>%1 没有声明%2功能“%3”</translation>
    </message>
    <message>
        <source>the type is %1, not &apos;%2&apos;</source>
        <translation>类型是 %1，而不是“%2”</translation>
    </message>
    <message>
        <source>&apos;%1&apos; is not a bus short name</source>
        <translation>“%1”不是总线简称</translation>
    </message>
    <message>
        <source>the address &apos;%1&apos; is not a number</source>
        <translation>地址“%1”不是数字</translation>
    </message>
    <message>
        <source>the %1 &apos;%2&apos; is not a number</source>
        <translation>%1“%2”不是数字</translation>
    </message>
    <message>
        <source>invert must be 0 or 1, not &apos;%1&apos;</source>
        <translation>取反须为 0 或 1，而不是“%1”</translation>
    </message>
    <message>
        <source>--csv FILE is required</source>
        <translation>需要 --csv FILE</translation>
    </message>
    <message>
        <source>%1:1: the first row must be the header %2</source>
        <translation>%1:1: 第一行须为表头 %2</translation>
    </message>
    <message>
        <source>line %1 -&gt; %2</source>
        <translation>第 %1 行 -&gt; 第 %2 行</translation>
    </message>
    <message>
        <source>1 change</source>
        <translation>1 处变更</translation>
    </message>
    <message>
        <source>%1 changes</source>
        <translation>%1 处变更</translation>
    </message>
    <message>
        <source>no differences</source>
        <translation>没有差异</translation>
    </message>
    <message>
        <source>the folder %1 does not exist</source>
        <translation>文件夹 %1 不存在</translation>
    </message>
    <message>
        <source>%1 (controller)</source>
        <translation>%1（控制器）</translation>
    </message>
    <message>
        <source>there is no working copy in %1: give the --workspace of earlier commands, or compare with --against DIR</source>
        <translation>%1 中没有工作副本：请给出之前命令所用的 --workspace，或用 --against DIR 比较</translation>
    </message>
    <message>
        <source>%1 (working copy)</source>
        <translation>%1（工作副本）</translation>
    </message>
    <message>
        <source>not compared, the working copy does not hold them: %1</source>
        <translation>未比较，工作副本中没有这些文件：%1</translation>
    </message>
    <message>
        <source>cannot copy the controller to %1</source>
        <translation>无法将控制器复制到 %1</translation>
    </message>
    <message>
        <source>dry run: nothing was changed; fbcfg %1 would make %2</source>
        <translation>试运行：未做任何更改；fbcfg %1 将产生 %2</translation>
    </message>
    <message>
        <source>%1 after fbcfg %2</source>
        <translation>fbcfg %2 之后的 %1</translation>
    </message>
    <message>
        <source>give either FILE or --csv FILE</source>
        <translation>请给出 FILE 或 --csv FILE 之一</translation>
    </message>
    <message>
        <source>--modules and --all do not apply to --csv</source>
        <translation>--modules 和 --all 不适用于 --csv</translation>
    </message>
    <message>
        <source>missing argument FILE</source>
        <translation>缺少参数 FILE</translation>
    </message>
    <message>
        <source>--%1 applies to --csv only</source>
        <translation>--%1 只适用于 --csv</translation>
    </message>
    <message>
        <source>Print the changes the command would make (as fbcfg diff does) and change nothing, neither the working copy nor the controller.</source>
        <translation>打印命令将产生的变更（同 fbcfg diff），不做任何更改，工作副本和控制器都不变。</translation>
    </message>
    <message>
        <source>Compare the controller with the configuration in DIR (a controller folder or a pendant working folder) instead of the working copy with the controller.</source>
        <translation>将控制器与 DIR 中的配置（控制器文件夹或示教器工作文件夹）比较，而不是将工作副本与控制器比较。</translation>
    </message>
    <message>
        <source>Begin the file with the byte-order mark that spreadsheet programs need to show Chinese names.</source>
        <translation>在文件开头写入字节顺序标记，电子表格程序需要它才能显示中文名称。</translation>
    </message>
    <message>
        <source>Import the good rows even when some rows are refused (default: nothing is written then).</source>
        <translation>即使有行被拒绝也导入正确的行（默认：此时不写入任何内容）。</translation>
    </message>
    <message>
        <source>Import the mappings of some modules from a saved mapping file, or mappings from a CSV file.</source>
        <translation>从保存的映射文件导入部分模块的映射，或从 CSV 文件导入映射。</translation>
    </message>
    <message>
        <source>Rows the controller cannot carry are dropped and reported. The present mapping is backed up first. The new mapping takes effect after a controller restart. A CSV file (as fbcfg export writes it) goes through the same rules; a refused CSV row is named by its line, and then nothing is written unless --skip-bad is given.</source>
        <translation>控制器无法承载的行会被丢弃并报告。先备份当前映射。新映射在控制器重启后生效。CSV 文件（即 fbcfg export 所写的格式）遵循相同规则；被拒绝的 CSV 行按行号列出，此时除非给出 --skip-bad，否则不写入任何内容。</translation>
    </message>
    <message>
        <source>Show how the pendant&apos;s working copy differs from the controller, or the controller from another folder.</source>
        <translation>显示示教器工作副本与控制器的差异，或控制器与另一文件夹的差异。</translation>
    </message>
    <message>
        <source>Files are compared by what they mean, not as text: mappings, groups, buses, areas, descriptions and the byte order. Changes are grouped by file: + added, - removed, ~ changed, with the lines on each side. Exit status 0 when equal, 1 when they differ.</source>
        <translation>按内容而非文本比较文件：映射、组、总线、区域、描述和字节顺序。变更按文件分组：+ 新增，- 删除，~ 修改，并给出两侧的行号。相同时退出状态为 0，不同时为 1。</translation>
    </message>
    <message>
        <source>Write the mapped signals to a CSV file.</source>
        <translation>将已映射的信号写入 CSV 文件。</translation>
    </message>
    <message>
        <source>busy: %1 is being changed by %2; waited %3 s (--timeout)</source>
        <translation>忙：%1 正由 %2 修改；已等待 %3 秒（--timeout）</translation>
    </message>
    <message>
        <source>refused: nothing was written; %1 holds what its reader cannot read back as it stands, and writing the file would change it. Fix the lines above (fbcfg check lists every problem) and run the command again</source>
        <translation>已拒绝：未写入任何内容；%1 含有读取器无法原样读回的内容，写回该文件会改变它。请修正上面列出的行（fbcfg check 列出所有问题），然后重新运行命令</translation>
    </message>
    <message>
        <source>line %1: %2</source>
        <translation>第 %1 行：%2</translation>
    </message>
    <message>
        <source>cannot read %1; fbcfg check lists every problem of the configuration</source>
        <translation>无法读取 %1；fbcfg check 列出配置的所有问题</translation>
    </message>
    <message>
        <source>cannot read %1: %2; fbcfg check lists every problem of the configuration</source>
        <translation>无法读取 %1：%2；fbcfg check 列出配置的所有问题</translation>
    </message>
    <message>
        <source>--%1 needs a folder, not an empty value</source>
        <translation>--%1 需要一个文件夹，不能为空</translation>
    </message>
    <message>
        <source>--%1 %2: there is no such folder</source>
        <translation>--%1 %2：没有这个文件夹</translation>
    </message>
    <message>
        <source>--%1 %2: not a folder</source>
        <translation>--%1 %2：不是文件夹</translation>
    </message>
    <message>
        <source>--%1 %2 holds no controller configuration: none of %3</source>
        <translation>--%1 %2 中没有控制器配置：%3 都不存在</translation>
    </message>
    <message>
        <source>yes</source>
        <translation>是</translation>
    </message>
    <message>
        <source>no</source>
        <translation>否</translation>
    </message>
    <message>
        <source>MAPPABLE</source>
        <translation>可映射</translation>
    </message>
    <message>
        <source>no bus %1</source>
        <translation>没有总线 %1</translation>
    </message>
    <message>
        <source>bus %1 carries no mapped signals; the buses that do are %2</source>
        <translation>总线 %1 不承载映射信号；承载映射信号的总线有 %2</translation>
    </message>
    <message>
        <source>1 mapped signal of %1 stays mapped while it is off</source>
        <translation>%1 的 1 个已映射信号在其关闭期间仍保持映射</translation>
    </message>
    <message>
        <source>%1 mapped signals of %2 stay mapped while it is off</source>
        <translation>%2 的 %1 个已映射信号在其关闭期间仍保持映射</translation>
    </message>
    <message>
        <source>--current must be a switch word of 0 or more, decimal or 0x hexadecimal, not &apos;%1&apos;</source>
        <translation>--current 必须是 0 或更大的开关字（十进制或 0x 十六进制），而不是 &apos;%1&apos;</translation>
    </message>
    <message>
        <source>no bus %1 with a performance switch</source>
        <translation>没有带性能开关的总线 %1</translation>
    </message>
    <message>
        <source>--ignore: there is no kind &apos;%1&apos;; the kinds are %2</source>
        <translation>--ignore：没有类别 &apos;%1&apos;；类别有 %2</translation>
    </message>
    <message>
        <source> (%1 set aside with --ignore)</source>
        <translation>（--ignore 略过了 %1 条）</translation>
    </message>
    <message>
        <source>; did you mean %1?</source>
        <translation>；您是指 %1 吗？</translation>
    </message>
    <message>
        <source>%1 (known: %2)</source>
        <translation>%1（已知：%2）</translation>
    </message>
    <message>
        <source>1 row</source>
        <translation>1 行</translation>
    </message>
    <message>
        <source>%1 rows</source>
        <translation>%1 行</translation>
    </message>
    <message>
        <source>a NUL byte: this is no text file</source>
        <translation>含有 NUL 字节：这不是文本文件</translation>
    </message>
    <message>
        <source>--delimiter must be one character such as , or ;, not &apos;%1&apos;</source>
        <translation>--delimiter 必须是一个字符，如 , 或 ;，而不是 &apos;%1&apos;</translation>
    </message>
    <message>
        <source>1 row written to %1</source>
        <translation>已写入 1 行到 %1</translation>
    </message>
    <message>
        <source>%1 rows written to %2</source>
        <translation>已写入 %1 行到 %2</translation>
    </message>
    <message>
        <source>standard output</source>
        <translation>标准输出</translation>
    </message>
    <message>
        <source>%1:%2: the file is not UTF-8 (a spreadsheet saved it in another encoding); save it as CSV UTF-8 and import it again</source>
        <translation>%1:%2：文件不是 UTF-8（电子表格以其他编码保存了它）；请另存为 CSV UTF-8 后重新导入</translation>
    </message>
    <message>
        <source>%1:1: the fields are separated by &apos;%2&apos;; read the file with --delimiter &apos;%2&apos;</source>
        <translation>%1:1：字段以 &apos;%2&apos; 分隔；请用 --delimiter &apos;%2&apos; 读取该文件</translation>
    </message>
    <message>
        <source>no module %1</source>
        <translation>没有模块 %1</translation>
    </message>
    <message>
        <source>nothing was changed: %1 of the file map again what an earlier row maps</source>
        <translation>未做任何更改：文件中有 %1 重复映射了前面的行已映射的内容</translation>
    </message>
    <message>
        <source>%1: %2 to import, %3 already there, %4 refused</source>
        <translation>%1：%2 待导入，%3 行已存在，%4 行被拒绝</translation>
    </message>
    <message>
        <source>nothing was written: %1 cannot be imported (--skip-bad imports the others)</source>
        <translation>未写入任何内容：%1 无法导入（--skip-bad 会导入其余行）</translation>
    </message>
    <message>
        <source>%1: %2 to import, %3 already there, %4 dropped</source>
        <translation>%1：%2 待导入，%3 行已存在，%4 行被丢弃</translation>
    </message>
    <message>
        <source>Output format: text (default), json (listing commands, check, diff and dry runs) or sarif (check only, SARIF 2.1.0 for CI).</source>
        <translation>输出格式：text（默认）、json（列表命令、check、diff 和试运行）或 sarif（仅 check，供 CI 使用的 SARIF 2.1.0）。</translation>
    </message>
    <message>
        <source>The same as --format json.</source>
        <translation>等同于 --format json。</translation>
    </message>
    <message>
        <source>Count warnings as errors for the exit status.</source>
        <translation>退出状态中将警告计为错误。</translation>
    </message>
    <message>
        <source>Set findings of these kinds aside (fbcfg check --help lists the kinds); the summary, or the JSON&apos;s &quot;ignored&quot;, says how many; SARIF leaves them out.</source>
        <translation>略过这些类别的问题（fbcfg check --help 列出各类别）；摘要或 JSON 的 &quot;ignored&quot; 给出略过的数量；SARIF 中不包含它们。</translation>
    </message>
    <message>
        <source>The CSV file of mappings; - is standard output (export).</source>
        <translation>映射的 CSV 文件；- 表示标准输出（导出时）。</translation>
    </message>
    <message>
        <source>The character between fields (default ,); &apos;;&apos; for what spreadsheets save in locales with a decimal comma.</source>
        <translation>字段之间的分隔字符（默认 ,）；使用小数逗号的地区的电子表格所保存的文件请用 &apos;;&apos;。</translation>
    </message>
    <message>
        <source>Only one protocol may hold the switch; the library asks before taking it from another one (answer with --yes or --no). Nothing is written: the switch word is not kept in the files this tool handles. Exit status 0 and the new word when it differs from --current; 1 and &quot;kept: the switch word stays MASK&quot; when it does not: the bus&apos;s switch already so (on: MASK is the bus&apos;s bit alone; off: the bus&apos;s bit is clear), a MASK of several switches, or taking the switch from another protocol declined.</source>
        <translation>只有一个协议可以占有该开关；从另一个协议取走开关前库会先询问（用 --yes 或 --no 回答）。不写入任何内容：开关字不保存在本工具处理的文件中。新开关字与 --current 不同时退出状态为 0 并打印新值；相同时退出状态为 1 并打印 &quot;未变更：开关字仍为 MASK&quot;：该总线的开关已是所要的状态（on：MASK 仅含该总线的位；off：该总线的位未置位）、MASK 含多个开关，或拒绝从另一协议取走开关。</translation>
    </message>
    <message>
        <source>Reads every file of the controller folder as it lies (a missing or broken file is a finding too) and prints one line per finding, as compilers do: PATH:LINE[:COLUMN]: error: MESSAGE [KIND], or warning:, or PATH: error: ... for a file as a whole. PATH is the --controller folder as given joined with the file&apos;s path (without --controller, the bundled sample&apos;s), so editors and CI open it from the current folder; the words error and warning stay English in every language. A summary follows: N errors, M warnings, or no problems found. --format json or sarif (SARIF 2.1.0) for machines. Exit status 1 when there are errors (with --werror, also warnings), 0 otherwise.</source>
        <translation>按原样读取控制器文件夹中的每个文件（缺失或损坏的文件也是一个问题），并像编译器那样每个问题输出一行：PATH:LINE[:COLUMN]: error: MESSAGE [KIND]，或 warning:，针对整个文件则为 PATH: error: ...。PATH 是按给定形式的 --controller 文件夹与文件路径的组合（未给 --controller 时为自带示例的路径），因此编辑器和 CI 可从当前文件夹打开它；error 和 warning 两个词在任何语言下都保持英文。最后是摘要：N 个错误、M 个警告，或未发现问题。--format json 或 sarif（SARIF 2.1.0）供机器读取。有错误时（使用 --werror 时警告亦然）退出状态为 1，否则为 0。</translation>
    </message>
    <message>
        <source>Columns: module, function, function display name, type, bus, direction, address, filter time, invert; UTF-8 with RFC 4180 quoting. --csv - writes to standard output. fbcfg import --csv reads the file back (with the same --delimiter).</source>
        <translation>列：模块、功能、功能显示名、类型、总线、方向、地址、滤波时间、取反；UTF-8，RFC 4180 引号规则。--csv - 写入标准输出。fbcfg import --csv 可读回该文件（使用相同的 --delimiter）。</translation>
    </message>
    <message>
        <source>--format must be text, json or sarif, not &apos;%1&apos;</source>
        <translation>--format 必须为 text、json 或 sarif，而不是 &apos;%1&apos;</translation>
    </message>
    <message>
        <source>--json and --format %1 exclude each other</source>
        <translation>--json 与 --format %1 互斥</translation>
    </message>
    <message>
        <source>--format sarif applies to fbcfg check only</source>
        <translation>--format sarif 只适用于 fbcfg check</translation>
    </message>
    <message>
        <source>%1 has no %2 function %3</source>
        <translation>%1 没有%2功能 %3</translation>
    </message>
    <message>
        <source>--filter-time must be a whole number of 0 or more, not &apos;%1&apos;</source>
        <translation>--filter-time 必须是 0 或更大的整数，而不是 &apos;%1&apos;</translation>
    </message>
    <message>
        <source>waiting for %1, which %2 is changing</source>
        <translation>正在等待 %1，%2 正在修改它</translation>
    </message>
    <message>
        <source>cannot write %1: %2</source>
        <translation>无法写入 %1：%2</translation>
    </message>
    <message>
        <source>--workspace %1 lies in the controller folder %2: the pendant&apos;s working files would be written among the controller&apos;s; give a folder outside it</source>
        <translation>--workspace %1 位于控制器文件夹 %2 中：示教器的工作文件会写入控制器的文件之间；请给出该文件夹之外的文件夹</translation>
    </message>
    <message>
        <source>--controller %1 lies in %2, which the commands rewrite; give a workspace that does not hold it</source>
        <translation>--controller %1 位于 %2 中，而命令会重写该文件夹；请给出不包含它的工作区</translation>
    </message>
    <message>
        <source>%1 is empty: there is nothing to import</source>
        <translation>%1 为空：没有可导入的内容</translation>
    </message>
    <message>
        <source>%1:%2: not a saved signal mapping: this line and the others before its first %3 or %4 line would be skipped</source>
        <translation>%1:%2: 不是保存的信号映射：此行及其第一个 %3 或 %4 行之前的其他行都会被跳过</translation>
    </message>
    <message>
        <source>cannot read %1: a folder, not a file</source>
        <translation>无法读取 %1：这是文件夹，不是文件</translation>
    </message>
</context>
</TS>
