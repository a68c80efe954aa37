<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="zh_CN">
<context>
    <name>fbcfg</name>
    <message>
        <source>on</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>off</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>NAME</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>SHORT</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>STATE</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Buses:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Free bus: %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>open</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>closed</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Modules (%1): %2</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Signals, groups and user IO areas of the buses that are on:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>BUS</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>DIRECTION</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>SIGNALS</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>GROUP SIGNALS</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>GROUPS</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>BOOL</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>INT</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>OTHER</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the Modbus TCP slave mtcp is always on</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>there is no bus %1; the buses are %2</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 is already %2</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>cannot write the local copy of %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 switched %2</source>
        <translation type="unfinished"></translation>
    </message>
    <message numerus="yes">
        <source>%n mapped signal(s) of %1 stay mapped while it is off</source>
        <translation type="unfinished">
            <numerusform></numerusform>
        </translation>
    </message>
    <message>
        <source>the switch is on or off, not &apos;%1&apos;</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>--current must be a switch word, not &apos;%1&apos;</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the performance switch knows no bus %1; it knows mtcp, ethcat, eip, pfn, ecm, dns, mbc, eim, pnm and dnm</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>kept: the switch word stays %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>cannot read %1 from the controller</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the byte order is big or little, not &apos;%1&apos;</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the byte order is already %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>writing or sending %1 failed</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>byte order: %1 -&gt; %2</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source> (warning)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>no problems found</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>1 error</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 errors</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>1 warning</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 warnings</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1; see fbcfg %2 --help</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>refused: %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>--dir in|out is required</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>--dir must be in or out, not &apos;%1&apos;</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>input</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>output</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the pendant does not allow editing now (see the warning above)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>no descriptions</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>VARIABLE</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>DESCRIPTION</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the description must not hold &quot;&lt;&quot;: the file is written without escaping</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&apos;%1&apos; is not NAME[INDEX] with a decimal INDEX and a NAME without &quot; &lt; [ ]</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the index -1 marks an entry that is not read back</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 has no description to remove</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 is already described so</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>(none)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>--type int|float|string is required</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>--type must be int, float or string, not &apos;%1&apos;</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 %2 group %3 of %4</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>no groups</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>TYPE</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>GROUP</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>FIRST</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>LAST</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>LINE</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&apos;%1&apos; is not a number</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 is not a bus that is on; the buses that are on are %2</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>group %1 is beyond the %2 %3 %4 groups of %5 (0-%6)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the first address %1 comes after the last %2</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>addresses %1-%2 are beyond %3&apos;s %4 bool %5 addresses (0-%6)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the bool signal at address %1%2 of %3 lies inside %4-%5</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1-%2 overlaps %3 (%4)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 %2 group %3 belongs to %4; group numbers are shared by all buses</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>new</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>there is no %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 is used by %2; unmap them first</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 (%2) deleted</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>bus %1 is not switched on</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the address is outside %1&apos;s %2 %3 %4 addresses</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>there is no %1 %2 group %3 on %4</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the bool signal lies inside %1 group %2</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>not taken</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>keep the present mapping (p) or take the imported one (i)? </source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>cannot copy the local %1 to its backup</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>sending %1 to the controller failed</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 backed up to %2</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>give either --modules A,B or --all</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>--prefer must be present or imported, not &apos;%1&apos;</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>cannot read %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the library could not read %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>line %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1: %2 rows to import, %3 already there, %4 dropped</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>  collision: %1 takes the address of %2</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>  mapped differently: %1, present %2 %3</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>nothing to import; the mapping stays as it is</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>nothing was changed: the import collides with the present mapping; choose with --prefer present|imported</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>backing up the present mapping to %1 failed; nothing was changed</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>cannot write %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>sending the imported mapping to %1 failed</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 now holds %2 input and %3 output rows; restart the controller for the new mapping to take effect</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Work on the controller whose files are in DIR (default: a fresh copy of the bundled sample controller).</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Keep the pendant side in DIR: DIR/pendant, the library&apos;s folder DIR/Application/fieldbus and, without --controller, a fresh copy of the sample in DIR/Controller (default: a temporary folder, removed at exit).</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Language of module and function names and of messages (default en).</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Print JSON (listing commands and check).</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Answer the library&apos;s questions with yes.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Answer the library&apos;s questions with no.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Wait at most SECONDS for each answer of the library (default 30).</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Show the library&apos;s diagnostics.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Show help for the tool or a command.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Show the version.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The switch word in force now, decimal or 0x hexadecimal (default 0).</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Only this bus: a short name such as mtcp; group_mtcp for the group signals of mtcp.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Direction: in (signals the controller receives) or out.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Only this module (English or Chinese name).</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Filter time of a bool input (default: kept, or 0 for a new row).</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Inversion of a bool signal (default: kept, or 0 for a new row).</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Value type of the group.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Import the rows of these modules (English or Chinese names).</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Import the rows of every module except the process-variable layout.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>For functions that both sides map differently: keep the present mapping or take the imported one (default: ask on a terminal).</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Show the buses, the modules, the mapped signals and groups and the user IO areas.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>List the fieldbuses and whether each is on.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Switch a bus on.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Switch a bus off; its mapped signals stay mapped.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Print the new communication-performance switch word when the switch of a bus is turned on or off.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Only one protocol may hold the switch; the library asks before taking it from another one. Nothing is written: the switch word is not kept in the files this tool handles. Exit status 1 when the switch word stays as it is.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>List the mapped signals.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Map a function of a module to an address of a bus, or to a group (BUS group_SHORT, ADDRESS the group number).</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The change is checked as the pendant checks it: the bus must be on, the address within the bus&apos;s area, free, and for a bool signal outside every group. A refused change writes nothing and ends with exit status 1.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Remove the mapping of a function.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>List the group signals&apos; groups.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Define or change group NUMBER of a bus over the bool addresses FIRST to LAST.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The range must hold no mapped bool signal and overlap no other group of the bus.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Delete a group that no mapped signal uses.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Copy the signal mapping to the controller&apos;s mapping backup.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Import the mappings of some modules from a saved mapping file.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Rows the controller cannot carry are dropped and reported. The present mapping is backed up first. The new mapping takes effect after a controller restart.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>List the users&apos; signal descriptions.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Describe a fieldbus variable; an empty TEXT removes the description.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The file is written without escaping, so TEXT must not hold &quot;&lt;&quot;, and NAME none of &quot; &lt; [ ].</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Print the byte order of the fieldbus slave.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Set the byte order of the fieldbus slave.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Check the whole configuration and list what is wrong.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>One line per finding: FILE:LINE: KIND: MESSAGE. Exit status 1 when there are errors.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Usage: fbcfg [options] COMMAND [arguments]</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Does from a terminal what the pendant&apos;s fieldbus screens do, on a controller whose files are in a folder. Options may stand before or after the command.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Commands:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Options:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Run &quot;fbcfg COMMAND --help&quot; for the arguments and options of a command. Exit status: 0 done, 1 change refused or check findings, 2 bad usage, unreadable controller or failed transfer.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Usage:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Options of the command:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Options of every command:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>missing argument %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>unexpected argument &apos;%1&apos;</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>--json does not apply to fbcfg %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>--yes and --no exclude each other</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>--lang must be en or zh, not &apos;%1&apos;</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>--timeout must be a number of seconds, not &apos;%1&apos;</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>a command is missing; see fbcfg --help</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>unknown command &apos;%1&apos;; see fbcfg --help</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>fbcfg %1 needs one of: %2</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>unknown command &apos;%1 %2&apos;</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>option --%1 does not apply to fbcfg %2</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>unknown option &apos;%1&apos;</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the library tells mapping rows apart by function name and bus only, and %1 has the same; nothing was changed</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>there is no module %1; the modules are %2</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 declares no %2 functions for the fieldbus</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 declares no %2 function %3; it declares %4</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>not mapped</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>group %1 is beyond the %2 %3 groups of %4 (0-%5)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 %2 group %3 of %4 is taken by %5</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 has no %2 %3 addresses</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>address %1 is beyond %2&apos;s %3 %4 %5 addresses (0-%6)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>address %1 of %2 (%3 %4) is taken by %5</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>address %1 of %2 (%3 %4) lies inside %5 group %6%7</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>no mapped signals</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>MODULE</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>FUNCTION</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>ADDRESS</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>FILTER</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>INVERT</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the address must be a number, not &apos;%1&apos;</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>--filter-time must be a number, not &apos;%1&apos;</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>--invert must be 0 or 1, not &apos;%1&apos;</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>--filter-time applies only to bool inputs</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>--invert applies only to bool signals</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>bus %1 is switched off</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>there is no bus %1; the buses that are on are %2</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 is already mapped to %2</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 %2 has no %3 mapping</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>cannot make a temporary workspace: %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>cannot make the workspace %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>cannot make %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the controller folder %1 does not exist</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 is not a controller folder: it has no application/fidbus</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the sample controller is missing (looked in %1); give one with --controller</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>cannot copy the sample controller to %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>working on a copy of the sample controller in %1 (removed at exit)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>working on a copy of the sample controller in %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>cannot copy %1 to %2</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>y</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>n</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>answer %1 or %2: </source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>nothing was changed: the library asks &quot;%1&quot; and there is no terminal to answer it; answer with --yes or --no</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>reading %1/%2 %3</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>no answer from the library within %1 s while waiting for %2</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the function lists named in %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>function lists</source>
        <translation type="unfinished"></translation>
    </message>
</context>
</TS>
