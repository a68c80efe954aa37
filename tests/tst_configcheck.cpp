// The offline configuration check: each rule on a small controller tree, the
// rules against the validators they stand for, and the bundled sample trees.
#include "BusFileDataManager.h"
#include "ConfigCheck.h"
#include "PendantSim.h"
#include "TestWorkspace.h"

#include <QRandomGenerator>
#include <QRegularExpression>
#include <QtTest>

namespace {

const QByteArray fieldbusXml = R"(<FieldbusSettingConfig>
<Fieldbus name="EthernetIPSlave" shortname="EIP"><enable>1</enable></Fieldbus>
<Fieldbus name="ProfinetSlave" shortname="pfn"><enable>0</enable></Fieldbus>
<Fieldbus name="FreeBus" shortname="free"><enable>1</enable></Fieldbus>
</FieldbusSettingConfig>)";

// 16 bool, 4 int and 2 other addresses each way on mtcp, eip and pfn.
QByteArray fieldbusConfigXml()
{
    const QByteArray entry = "<Area><Start_Address>0</Start_Address><Stop_Address>0</Stop_Address>"
                             "<Variable_Length>%1</Variable_Length></Area>";
    QByteArray areas;
    for (int count : {16, 4, 2})
        areas += "<Group>" + QByteArray(entry).replace("%1", QByteArray::number(count)).repeated(2)
                + QByteArray(entry).replace("%1", "0") + "</Group>";
    return "<FieldBus_Config><ModbusUser>" + areas + "</ModbusUser><EthernetIPUser>" + areas
            + "</EthernetIPUser><ProfinetUser>" + areas + "</ProfinetUser></FieldBus_Config>";
}

const QByteArray functionInfoXml = R"(<FunctionInfo>
<Module Name="Weld" NameCn="焊接" Path="/application/fidbus/funclist/weld.xml"/>
</FunctionInfo>)";

// Thousands of inputs after the few the rows use, and a name declared again:
// the lookup must find each function among many, the first of a name counting.
QByteArray weldListXml()
{
    QByteArray padding;
    for (int i = 0; i < 3000; ++i)
        padding += "<F Description=\"pad" + QByteArray::number(i) + "\" Type=\"bool\"/>";
    return R"(<FunctionList><Module>Weld</Module>
<Input><F Description="arc_on" Type="bool"/><F Description="gas" Type="bool"/>
<F Description="current" Type="int" Region="io"/>)"
            + padding + R"(<F Description="gas" Type="int"/></Input>
<AnalogInput><F Description="voltage" Type="float"/></AnalogInput>
<Output><F Description="arc_ok" Type="bool"/><F Description="wire" Type="int"/></Output>
</FunctionList>)";
}

// "in Weld arc_on bool MTCP 3" -> a mapping row; "raw:<text>" stands as it is.
QByteArray mappingLine(const QString &row)
{
    if (row.startsWith("raw:"))
        return row.mid(4).toUtf8();
    const QStringList f = row.split(' ');
    return QStringLiteral("    -Module %1 -Name %2 -Type %3 -FieldBus %4 -Address %5")
            .arg(f[1], f[2], f[3], f[4], f[5])
            .toUtf8();
}

// "in int 1 MTCP 8-11" -> a group row; "raw:<text>" stands as it is.
QByteArray groupLine(const QString &row)
{
    if (row.startsWith("raw:"))
        return row.mid(4).toUtf8();
    const QStringList f = row.split(' ');
    return QStringLiteral("    -Type %1 -Address %2 -FieldBus %3 -DeviceMap %4")
            .arg(f[1], f[2], f[3], f[4])
            .toUtf8();
}

// Writes a two-section file; returns the file line of each row, in row order.
QVector<int> writeSections(const QString &path, const QByteArray &title,
                           const QByteArray &inputMarker, const QByteArray &outputMarker,
                           const QStringList &rows, QByteArray (*line)(const QString &))
{
    QByteArray bytes = title + "\n\n" + inputMarker + "\n";
    QVector<int> lines(rows.size());
    int at = 4;
    for (const bool input : {true, false}) {
        if (!input) {
            bytes += "\n" + outputMarker + "\n";
            at += 2;
        }
        for (int i = 0; i < rows.size(); ++i) {
            if (rows.at(i).startsWith("in ") == input) {
                bytes += line(rows.at(i)) + "\n";
                lines[i] = at++;
            }
        }
    }
    TestWorkspace::writeFile(path, bytes);
    return lines;
}

} // namespace

class ConfigCheckTest : public QObject
{
    Q_OBJECT

    TestWorkspace workspace;

    // Beside the test data: a build tree has an examples folder of its own.
    static QString examples() { return QDir::cleanPath(FBC_TEST_DATA "/../../examples"); }

    // "r2 bool-in-group" style labels of the findings: rN for the Nth mapping
    // row, gN for the Nth group row, else the file name and line.
    QStringList runOn(const QStringList &rows, const QStringList &groups)
    {
        const QString root = workspace.controllerDir();
        for (const auto &[rde, bytes] :
             {std::pair(RDE_FIELDBUS_XML, fieldbusXml),
              std::pair(RDE_FUNC_INFO_XML, functionInfoXml),
              std::pair(RDE_FIELDBUS_CFG_XML, fieldbusConfigXml()),
              std::pair(QString("/application/fidbus/funclist/weld.xml"), weldListXml()),
              std::pair(RDE_USER_DES_XML, QByteArray("<BioUserDescription/>")),
              std::pair(RDE_PFS_DES_XML, QByteArray("<PfsUserDescription/>")),
              std::pair(RDE_FBSLAVE_CFGX, QByteArray("<Slave><endian>little</endian></Slave>"))})
            workspace.putControllerFile(rde, bytes);
        const QVector<int> rowLines = writeSections(
                root + RDE_SIGNAL_MAP_CFG, "$$ Configuration file with fieldbus signals",
                "#System_Input:", "#System_Output:", rows, mappingLine);
        const QVector<int> groupLines =
                writeSections(root + RDE_GROUP_CFG, "$$ Configuration file with group signals",
                              "#Group_Input:", "#Group_Output:", groups, groupLine);

        QStringList labels;
        const auto findings =
                ConfigCheck::run(ConfigSnapshot::load(root, ConfigSnapshot::ControllerLayout));
        for (const CheckFinding &f : findings) {
            const bool isRow = f.file.endsWith("signal_mapping.cfg");
            const int index = isRow                       ? rowLines.indexOf(f.line)
                    : f.file.endsWith("user_groupio.cfg") ? groupLines.indexOf(f.line)
                                                          : -1;
            if (f.message.isEmpty() || (f.severity != "error" && f.severity != "warning"))
                labels << "bad finding " + f.kind;
            labels << (index < 0 ? QStringLiteral("%1:%2").arg(f.file).arg(f.line)
                                 : QStringLiteral("%1%2").arg(isRow ? "r" : "g").arg(index + 1))
                            + ' ' + f.kind;
        }
        return labels;
    }

private slots:
    void rules_data()
    {
        QTest::addColumn<QStringList>("rows");
        QTest::addColumn<QStringList>("groups");
        QTest::addColumn<QStringList>("expected");

        QTest::newRow("clean, unmapped rows and the analog list count as declared")
                << QStringList{"in Weld arc_on bool MTCP 15", "in Weld voltage float EIP 1",
                               "in Weld gas bool MTCP -1", "out Weld arc_ok BOOL MTCP 15",
                               "in Weld current int MTCP 3"}
                << QStringList{"in int 1 MTCP 4-7"} << QStringList{};
        QTest::newRow("buses: unknown, off, and free bus carries nothing")
                << QStringList{"in Weld arc_on bool ECM 1", "in Weld gas bool PFN 2",
                               "out Weld arc_ok bool FREE 1"}
                << QStringList{}
                << QStringList{"r1 bus-unknown", "r2 bus-disabled", "r3 bus-unknown"};
        QTest::newRow("range by direction and type, negative, not a number")
                << QStringList{"in Weld arc_on bool MTCP 16", "in Weld current int MTCP 4",
                               "out Weld wire int MTCP 3", "in Weld gas bool MTCP -2",
                               "in Weld voltage float EIP x7"}
                << QStringList{}
                << QStringList{"r1 address-out-of-range", "r2 address-out-of-range",
                               "r4 address-out-of-range", "r5 malformed-line"};
        QTest::newRow("collision by contained type, not across areas or directions")
                << QStringList{"in Weld arc_on bool MTCP 1", "in Weld gas Bool_t MTCP 1",
                               "in Weld current int MTCP 1", "out Weld arc_ok bool MTCP 1",
                               "in Weld voltage float MTCP 1"}
                << QStringList{}
                << QStringList{"r1 address-collision", "r2 address-collision", "r2 type-mismatch"};
        QTest::newRow("bool inside a group of any type, bounds inclusive")
                << QStringList{"in Weld arc_on bool MTCP 4", "in Weld gas bool MTCP 9",
                               "out Weld arc_ok bool MTCP 4", "in Weld current int MTCP 2"}
                << QStringList{"in int 1 MTCP 2-4", "in string 1 MTCP 9-9"}
                << QStringList{"r1 bool-in-group", "r2 bool-in-group"};
        QTest::newRow("group rows need a group of their type and direction")
                << QStringList{"in Weld current int GROUP_MTCP 1",
                               "in Weld current int GROUP_MTCP 2", "out Weld wire int GROUP_MTCP 1",
                               "in Weld arc_on bool GROUP_MTCP 1"}
                << QStringList{"in int 1 mtcp 0-3", "in float 2 MTCP 4-7"}
                << QStringList{"r1 function-mapped-twice", "r2 function-mapped-twice",
                               "r2 group-missing", "r3 group-missing", "r4 group-missing"};
        QTest::newRow("functions: unknown module, wrong direction, mapped twice")
                << QStringList{"in Glue flow bool MTCP 1", "in Weld arc_ok bool MTCP 2",
                               "in Weld arc_on bool MTCP 3", "in Weld arc_on bool EIP 4"}
                << QStringList{}
                << QStringList{"r1 function-unknown", "r2 function-unknown",
                               "r3 function-mapped-twice", "r4 function-mapped-twice"};
        QTest::newRow("a list of thousands: the last, a name declared twice, undeclared")
                << QStringList{"in Weld pad2999 bool MTCP 1", "in Weld gas int MTCP 2",
                               "in Weld pad3000 bool MTCP 3", "out Weld pad7 bool MTCP 4"}
                << QStringList{}
                << QStringList{"r2 type-mismatch", "r3 function-unknown", "r4 function-unknown"};
        QTest::newRow("groups: overlap across types, duplicate, range, malformed")
                << QStringList{} << QStringList{"in int 1 MTCP 0-7",
                                                "in float 2 MTCP 7-9",
                                                "in int 3 MTCP 10-11",
                                                "out int 1 MTCP 0-7",
                                                "in int 3 MTCP 12-13",
                                                "in string 4 MTCP 9-2",
                                                "in string 5 MTCP 14-20",
                                                "in int 6 ETHCAT 0-1",
                                                "raw:    -Type int -Address 7 -FieldBus MTCP"}
                << QStringList{"g1 group-overlap", "g2 group-overlap", "g3 group-duplicate",
                               "g6 group-range",   "g7 group-range",   "g8 bus-unknown",
                               "g9 malformed-line"};
        QTest::newRow("malformed rows: a missing keyword, a value that is a keyword")
                << QStringList{"raw:    -Module Weld -Name arc_on -Type bool -FieldBus MTCP",
                               "raw:-Module Weld -Name gas -Type -FieldBus MTCP -Address 1"}
                << QStringList{} << QStringList{"r1 malformed-line", "r2 malformed-line"};
    }

    void rules()
    {
        QFETCH(QStringList, rows);
        QFETCH(QStringList, groups);
        QFETCH(QStringList, expected);
        QStringList found = runOn(rows, groups);
        found.sort();
        expected.sort();
        QCOMPARE(found, expected);
    }

    // One file of a copy of the sample broken per row: each file problem is a
    // finding of its own (XML with line and column), and the rest is checked.
    void fileProblems_data()
    {
        QTest::addColumn<QString>("file");
        // Null: removed; "/": a folder in its place; "cut|X": the sample's
        // file cut before X; "s|X|Y": X replaced by Y; else the whole file.
        // pugixml puts an unexpected end on the last character.
        QTest::addColumn<QByteArray>("edit");
        QTest::addColumn<QStringList>("expected"); // every file-level finding
        const QByteArray removed;
        const QString weld = "/application/fidbus/funclist/weld.xml";
        QTest::newRow("truncated fieldbus.xml")
                << RDE_FIELDBUS_XML << QByteArray("cut|shortname=\"EthCat\"")
                << QStringList{"fieldbus.xml:4:32 file-unreadable error"};
        QTest::newRow("random bytes")
                << RDE_FIELDBUS_CFG_XML << QByteArray("\x93\x07<\xff\x01", 5)
                << QStringList{"fieldbus_config.xml:1:0 encoding warning",
                               "fieldbus_config.xml:1:5 file-unreadable error"};
        QTest::newRow("missing group file")
                << RDE_GROUP_CFG << removed
                << QStringList{"user_groupio.cfg:0:0 file-missing error"};
        QTest::newRow("empty group file") << RDE_GROUP_CFG << QByteArray("")
                                          << QStringList{"user_groupio.cfg:0:0 file-unreadable error"};
        // Another file pasted over the mapping's head: skipped, and dropped by a write.
        QTest::newRow("lines before the first marker")
                << RDE_SIGNAL_MAP_CFG
                << QByteArray("s|#System_Input:|<?xml version=\"1.0\"?>\n<root/>\n#System_Input:")
                << QStringList{"signal_mapping.cfg:3:0 malformed-line error"};
        QTest::newRow("text after a marker")
                << RDE_SIGNAL_MAP_CFG << QByteArray("s|#System_Output:|#System_Output: old rows")
                << QStringList{"signal_mapping.cfg:172:0 malformed-line error"};
        // Read as one line: every row would be dropped by a write.
        QTest::newRow("CR line ends") << RDE_SIGNAL_MAP_CFG << QByteArray("s|\n|\r")
                                      << QStringList{"signal_mapping.cfg:1:0 malformed-line error"};
        QTest::newRow("group file not UTF-8")
                << RDE_GROUP_CFG << QByteArray("s|Configuration|Configuraci\xf3n")
                << QStringList{"user_groupio.cfg:1:0 encoding warning"};
        QTest::newRow("a folder for the mapping file")
                << RDE_SIGNAL_MAP_CFG << QByteArray("/")
                << QStringList{"signal_mapping.cfg:0:0 file-unreadable error"};
        QTest::newRow("missing slave device") << RDE_FBSLAVE_CFGX << removed
                                              << QStringList{"fbslave.cfgx:0:0 file-missing error"};
        QTest::newRow("broken slave device")
                << RDE_FBSLAVE_CFGX << QByteArray("cut|</endian>")
                << QStringList{"fbslave.cfgx:4:16 file-unreadable error"};
        QTest::newRow("description with &")
                << RDE_USER_DES_XML << QByteArray("s|Start from line PLC|R&D start")
                << QStringList{"user_description.xml:6:15 file-unreadable error"};
        QTest::newRow("missing descriptions")
                << RDE_USER_DES_XML << removed
                << QStringList{"user_description.xml:0:0 file-missing warning"};
        QTest::newRow("missing safety descriptions")
                << RDE_PFS_DES_XML << removed
                << QStringList{"pfs_description.xml:0:0 file-missing warning"};
        QTest::newRow("truncated safety descriptions")
                << RDE_PFS_DES_XML << QByteArray("cut|</PfsUserDescription>")
                << QStringList{"pfs_description.xml:42:23 file-unreadable error"};
        QTest::newRow("missing function list")
                << weld << removed << QStringList{"funclist/weld.xml:0:0 file-missing error"};
        QTest::newRow("broken function list")
                << weld << QByteArray("s|</Module>|</Modul>")
                << QStringList{"funclist/weld.xml:3:16 file-unreadable error"};
        QTest::newRow("function list outside the folder")
                << RDE_FUNC_INFO_XML << QByteArray("s|/fidbus/funclist/weld|/../../weld")
                << QStringList{"application/../../weld.xml:0:0 file-missing error"};
    }

    void fileProblems()
    {
        QFETCH(QString, file);
        QFETCH(QByteArray, edit);
        QFETCH(QStringList, expected);
        QTemporaryDir dir;
        QVERIFY(pendantsim::copyFolder(examples() + "/controller", dir.path()));
        // A fault the check must still find (line 331) whatever else is broken.
        const QString mapping = dir.path() + RDE_SIGNAL_MAP_CFG;
        TestWorkspace::writeFile(mapping,
                                 TestWorkspace::readFile(mapping)
                                         + "    -Module Conveyor -Name conveyor_speed_set "
                                           "-Type float -FieldBus PFN -Address 999\n");

        const QString path = dir.path() + file;
        const QByteArray sample = TestWorkspace::readFile(path);
        QFile::remove(path);
        if (edit == "/")
            QVERIFY(QDir().mkpath(path));
        else if (edit.startsWith("cut|"))
            TestWorkspace::writeFile(path, sample.left(sample.indexOf(edit.mid(4))));
        else if (edit.startsWith("s|"))
            TestWorkspace::writeFile(
                    path, QByteArray(sample).replace(edit.split('|')[1], edit.split('|')[2]));
        else if (!edit.isNull())
            TestWorkspace::writeFile(path, edit);

        QStringList fileFindings;
        QStringList all;
        for (const CheckFinding &f :
             ConfigCheck::run(ConfigSnapshot::load(dir.path(), ConfigSnapshot::ControllerLayout))) {
            const QString label = QStringLiteral("%1:%2:%3 %4 %5")
                                          .arg(f.file.section("fidbus/", -1).section("fa/", -1))
                                          .arg(f.line)
                                          .arg(f.column)
                                          .arg(f.kind, f.severity);
            all << label;
            if (f.kind.startsWith("file-") || f.kind == "encoding" || f.kind == "malformed-line")
                fileFindings << label;
        }
        QCOMPARE(fileFindings, expected);
        // A file not read is one finding, not one more per row it decides; the
        // planted faults are found unless the broken file decides them.
        QStringList rowKinds;
        for (const QString &finding : qAsConst(all)) {
            if (!fileFindings.contains(finding))
                rowKinds << finding.section(' ', 1, 1);
        }
        QStringList planted{"function-mapped-twice", "address-out-of-range",
                            "function-mapped-twice"};
        if (file == RDE_FIELDBUS_CFG_XML)
            planted.removeOne("address-out-of-range");
        if (edit == "/" || edit.contains('\r'))
            planted.clear();
        QCOMPARE(rowKinds, planted);
    }

    // Only what the writer would not give back as read blocks writing a file,
    // and only that file.
    void writeBlockers()
    {
        runOn({"raw:    -Module Weld -Name gas -Type bool -Address 1", "in Weld arc_on bool ECM 1"},
              {"raw:    -Type int -Address 7 -FieldBus MTCP"});
        const QString root = workspace.controllerDir();
        workspace.putControllerFile(RDE_SIGNAL_MAP_CFG,
                                    workspace.controllerFile(RDE_SIGNAL_MAP_CFG)
                                            .replace("Configuration", "Configuraci\xf3n"));
        workspace.putControllerFile(RDE_FBSLAVE_CFGX, "<fieldBusSlave>");
        const QVector<CheckFinding> findings =
                ConfigCheck::run(ConfigSnapshot::load(root, ConfigSnapshot::ControllerLayout));
        for (const auto &[file, expected] :
             {std::pair(RDE_SIGNAL_MAP_CFG, QStringList{"1 encoding", "7 malformed-line"}),
              std::pair(RDE_GROUP_CFG, QStringList{"6 malformed-line"}),
              std::pair(RDE_FBSLAVE_CFGX, QStringList{"1 file-unreadable"}),
              std::pair(RDE_FIELDBUS_XML, QStringList{})}) {
            QStringList found;
            for (const CheckFinding &f : ConfigCheck::writeBlockers(findings, file))
                found << QStringLiteral("%1 %2").arg(f.line).arg(f.kind);
            QCOMPARE(found, expected);
        }
    }

    // The collision, bool-in-group and overlap rules flag exactly what the
    // screens' validators refuse, on random tables.
    void validatorsAgree()
    {
        QRandomGenerator random(7);
        const QStringList types{"bool", "BOOL", "int", "uint", "float"};
        const QStringList groupTypes{"int", "float", "string"};
        for (int round = 0; round < 60; ++round) {
            QStringList rows;
            QStringList groups;
            for (int i = random.bounded(12); i > 0; --i)
                rows << QStringLiteral("in Weld f%1 %2 MTCP %3")
                                .arg(i)
                                .arg(types.at(random.bounded(types.size())))
                                .arg(random.bounded(8));
            for (int i = random.bounded(5); i > 0; --i) {
                const int first = random.bounded(16);
                groups << QStringLiteral("in %1 %2 MTCP %3-%4")
                                  .arg(groupTypes.at(random.bounded(3)))
                                  .arg(i)
                                  .arg(first)
                                  .arg(qMin(15, first + random.bounded(4)));
            }
            QStringList flagged;
            for (const QString &label : runOn(rows, groups)) {
                if (label.contains("collision") || label.contains("in-group")
                    || label.contains("overlap"))
                    flagged << label;
            }

            std::unique_ptr<BusFileDataManager> manager(new BusFileDataManager());
            manager->busShortNames = QStringList{"mtcp"};
            for (const QString &g : groups) {
                const QStringList f = g.split(' ');
                const QStringList range = f[4].split('-');
                manager->setGroupInfo({f[1], f[2], "mtcp", range[0], range[1]}, f[1], BusInput);
            }
            // A pair collides when the validator refuses either row beside the other.
            QSet<QString> expectedSet;
            for (int i = 0; i < rows.size(); ++i) {
                const QStringList f = rows.at(i).split(' ');
                for (int j = 0; j < rows.size(); ++j) {
                    const QStringList o = rows.at(j).split(' ');
                    manager->mapList[0] = {{"Weld", "", o[2], o[3], "mtcp", o[5]}};
                    if (j != i
                        && manager->isAddressValid("mtcp", BusInput, f[3], f[5].toInt()) != "ok")
                        expectedSet << QStringLiteral("r%1 address-collision").arg(i + 1)
                                    << QStringLiteral("r%1 address-collision").arg(j + 1);
                }
                for (const char *t : {"string", "float", "int"}) {
                    if (f[3].compare("bool", Qt::CaseInsensitive) == 0
                        && manager->isAddressGroupValid("mtcp", BusInput, t, "no", f[5] + ",-1",
                                                        false)
                                != "ok") {
                        expectedSet << QStringLiteral("r%1 bool-in-group").arg(i + 1);
                        break;
                    }
                }
            }
            for (int i = 0; i < groups.size(); ++i) {
                QStringList f = groups.at(i).split(' ');
                for (const QString &t : groupTypes) {
                    if (manager->isAddressGroupValid("mtcp", BusInput, t, f[2],
                                                     f[4].replace('-', ','), false)
                        != "ok") {
                        expectedSet << QStringLiteral("g%1 group-overlap").arg(i + 1);
                        break;
                    }
                }
            }
            QStringList expected = expectedSet.values();
            flagged.sort();
            expected.sort();
            QCOMPARE(flagged, expected);
        }
    }

    // The clean sample passes; the tree with planted faults gives exactly the
    // faults its README lists.
    void sampleTrees()
    {
        const auto found = [&](const QString &tree) {
            QStringList labels;
            for (const CheckFinding &f : ConfigCheck::run(ConfigSnapshot::load(
                         examples() + '/' + tree, ConfigSnapshot::ControllerLayout)))
                labels << QStringLiteral("%1:%2: %3")
                                  .arg(f.file.section('/', -1))
                                  .arg(f.line)
                                  .arg(f.kind);
            return labels;
        };
        QCOMPARE(found("controller"), QStringList());

        const QString readme =
                TestWorkspace::readFile(examples() + "/controller-with-faults/README.md");
        QStringList planted;
        const QRegularExpression item("^- `([^`]+)`", QRegularExpression::MultilineOption);
        for (auto it = item.globalMatch(readme); it.hasNext();)
            planted << it.next().captured(1);
        QVERIFY(planted.size() >= 15);
        QStringList faults = found("controller-with-faults");
        faults.sort();
        planted.sort();
        QCOMPARE(faults, planted);
    }
};

QTEST_GUILESS_MAIN(ConfigCheckTest)
#include "tst_configcheck.moc"
