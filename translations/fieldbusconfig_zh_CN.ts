<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="zh_CN">
<context>
    <name>BusFileDataManager</name>
    <message>
        <source>The communication performance switch does not support 
simultaneous activation of multiple protocols.
 Do you want to turn off the %1 protocol communication performance switch?</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Slave</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Master</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Failed to read file :%1!</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 is in editing mode,
 please exit and try again!</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Please get the RTE authority, and retry!</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Please turn off the servo first!</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The mapping file has been updated and needs to be restarted to take effect.
 Do you want to restart now?</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Please close and reopen the teaching pendant.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Failed to get file from controller:%1!</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>ConfigCheck</name>
    <message>
        <source>input</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>output</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>group %1 (%2, %3-%4)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>bytes that are not UTF-8; a write-back would not keep them</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the file is missing</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>not well-formed XML: %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the row lacks %1 or its value</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>group %1 is defined again on line %2, which replaces this row</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>bus &apos;%1&apos; is not listed in fieldbus.xml</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>device map &apos;%1-%2&apos; is not two addresses first-last</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>device map %1-%2 runs backwards</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>device map %1-%2 lies outside the %3 bool %4 addresses of %5</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 overlaps %2 on line %3</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>bus %1 is switched off</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>address &apos;%1&apos; is not a number</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 %2 is mapped as %3 again on line %4</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>module %1 has no function list</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 %2 is declared %3, mapped as %4</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 declares no %2 function %3</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>address %1 is outside the %2 %3 %4 addresses of %5 (0-%6)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 has no %2 %3 addresses</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>bool signal at address %1 lies inside %2 on line %3 of user_groupio.cfg</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>there is no %1 %2 group %3 on %4</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>address %1 of %2 %3 is also taken by %4 %5 on line %6</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>ProgressBarWidget</name>
    <message>
        <source>Form</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Reading the configuration file and initializing！</source>
        <translation type="unfinished"></translation>
    </message>
</context>
</TS>
