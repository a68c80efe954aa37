// The signal mapping file: keyword reading, the reader on well-formed and
// broken files, the writer byte for byte, and the fetch / edit / send cycle.
#include "BusFileDataManager.h"
#include "FileSizeLimit.h"
#include "TestWorkspace.h"

#include <QBuffer>
#include <QSignalSpy>
#include <QtTest>

namespace {

struct Call
{
    FileHandle handle;
    QString key;
    bool success;
    bool operator==(const Call &o) const
    {
        return handle == o.handle && key == o.key && success == o.success;
    }
};

class RecordingObserver : public BusObserver
{
public:
    RecordingObserver() { setIsSignalMap(true); }
    void onFileNotify(FileHandle handle, const QString &fileKey, bool isSuccess) override
    {
        calls.append({handle, fileKey, isSuccess});
    }
    QList<Call> calls;
};

// "module|name|type|fieldBus|address|filterTime|invert"
QStringList describe(const QVector<FuncAndMapInfo> &list)
{
    QStringList out;
    for (const FuncAndMapInfo &i : list) {
        out << QStringList{i.module, i.name, i.type, i.fieldBus, i.address, i.filterTime, i.invert}
                        .join('|');
    }
    return out;
}

QVector<FuncAndMapInfo> records(const QStringList &described)
{
    QVector<FuncAndMapInfo> list;
    for (const QString &d : described) {
        const QStringList f = d.split('|');
        FuncAndMapInfo i;
        i.module = f[0], i.name = f[1], i.type = f[2], i.fieldBus = f[3], i.address = f[4];
        i.filterTime = f[5], i.invert = f[6];
        list << i;
    }
    return list;
}

QByteArray fixture(const char *name)
{
    return TestWorkspace::readFile(QFINDTESTDATA(QString("data/signalmapping/") + name));
}

// What expected_records.cfg holds, as the reader gives it back.
const QStringList recordsIn{"gripper|close_jaw|bool|mtcp|12|5|0",
                            "conveyor|speed_set|int|group_mtcp|3|0|0",
                            "palletizer_station_2|layer_done_with_a_very_long_signal_name|bool|ecm|"
                            "1024|10|1"};
const QStringList recordsOut{"gripper|jaw_closed|BOOL|eip|7|0|1",
                             "conveyor|speed_actual|Float|pfn|40|0|0"};

} // namespace

class SignalMappingTest : public QObject
{
    Q_OBJECT

    TestWorkspace workspace;
    BusFileDataManager *manager = nullptr;

    void parse(const QByteArray &content)
    {
        QBuffer buffer;
        buffer.setData(content);
        buffer.open(QIODevice::ReadOnly);
        manager->parseSignalMapFile(buffer);
    }

private slots:
    void initTestCase()
    {
        manager = new BusFileDataManager();
        manager->busShortNames = QStringList{"mtcp", "eip", "ecm"};
    }
    void cleanupTestCase() { delete manager; }

    // The keyword is "-Name" in every case.
    void parseLineByWord_data()
    {
        QTest::addColumn<QString>("line");
        QTest::addColumn<QString>("value");
        QTest::newRow("plain") << "-Module m -Name n"
                               << "n";
        QTest::newRow("any white space") << "\t-Module   m\t-Name \t n  "
                                         << "n";
        QTest::newRow("absent") << "-Module m"
                                << "0";
        QTest::newRow("last word") << "-Module m -Name"
                                   << "0";
        QTest::newRow("first of two") << "-Name a -Name b"
                                      << "a";
        QTest::newRow("case-sensitive") << "-name n"
                                        << "0";
        QTest::newRow("whole words") << "-NameX n"
                                     << "0";
        QTest::newRow("empty line") << ""
                                    << "0";
    }
    void parseLineByWord()
    {
        QFETCH(QString, line);
        QFETCH(QString, value);
        QCOMPARE(BusFileDataManager::parseLineByWord(line, "-Name"), value);
    }

    void read_data()
    {
        QTest::addColumn<QByteArray>("content");
        QTest::addColumn<QStringList>("in");
        QTest::addColumn<QStringList>("out");
        QTest::newRow("well-formed") << fixture("expected_records.cfg") << recordsIn << recordsOut;
        QTest::newRow("markers only") << QByteArray("#System_Input:\n#System_Output:\n")
                                      << QStringList() << QStringList();
        QTest::newRow("before first marker")
                << QByteArray("$$ title\n-Module x -Name y\n  xx #System_Output: yy\n-Module a\n")
                << QStringList() << QStringList{"a|0|0|0|0|0|0"};
        QTest::newRow("stray text and tabs")
                << QByteArray("#System_Input:\r\njust words\r\n\t-Name\tn -FieldBus Eip -Type\r\n")
                << QStringList{"0|0|0|0|0|0|0", "0|n|0|eip|0|0|0"} << QStringList();
        QTest::newRow("duplicate keys") << QByteArray("#System_Input:\n-Module a -Module b\n")
                                        << QStringList{"a|0|0|0|0|0|0"} << QStringList();
    }
    void read()
    {
        QFETCH(QByteArray, content);
        QFETCH(QStringList, in);
        QFETCH(QStringList, out);
        manager->mapList[BusInput] = records({"stale|x|int|mtcp|1|0|0"});
        parse(content);
        QCOMPARE(describe(manager->readMapList[BusInput]), in);
        QCOMPARE(describe(manager->readMapList[BusOutput]), out);
        QCOMPARE(describe(manager->mapList[BusInput]), in);
        QCOMPARE(describe(manager->mapList[BusOutput]), out);
    }

    void groupsByBus()
    {
        QMap<QString, QVector<FuncAndMapInfo>> byBus{{"stale", {}}};
        manager->parseSignalMapByBus(
                records({"m|a|bool|mtcp|1|0|0", "m|b|bool|EIP|2|0|0", "m|c|bool|mtcp|3|0|0",
                         "m|d|int|group_eip|1|0|0", "m|e|bool|xyz|4|0|0"}),
                byBus);
        QCOMPARE(byBus.keys(), (QStringList{"eip", "group_eip", "mtcp"}));
        QCOMPARE(describe(byBus["mtcp"]),
                 (QStringList{"m|a|bool|mtcp|1|0|0", "m|c|bool|mtcp|3|0|0"}));
        QCOMPARE(describe(byBus["eip"]), QStringList{"m|b|bool|EIP|2|0|0"});
    }

    void readKeepsTablesOnRefusedFile_data()
    {
        QTest::addColumn<bool>("exists");
        QTest::newRow("zero bytes") << true;
        QTest::newRow("missing") << false;
    }
    void readKeepsTablesOnRefusedFile()
    {
        QFETCH(bool, exists);
        parse(fixture("expected_records.cfg"));
        QFile::remove(TPU_SIGNAL_MAP_CFG);
        if (exists)
            TestWorkspace::writeFile(TPU_SIGNAL_MAP_CFG, QByteArray());
        QVERIFY(!manager->readSignalMapCfg());
        QCOMPARE(describe(manager->readMapList[BusInput]), recordsIn);
        QCOMPARE(describe(manager->mapList[BusOutput]), recordsOut);
        QCOMPARE(manager->busMap[BusInput].keys(), (QStringList{"ecm", "group_mtcp", "mtcp"}));
    }

    // Another path writes writeMapList and sends nothing.
    void write_data()
    {
        QTest::addColumn<QStringList>("in");
        QTest::addColumn<QStringList>("out");
        QTest::addColumn<QString>("expected");
        QTest::newRow("records") << QStringList{"gripper|close_jaw|BOOL|mtcp|12|5|0",
                                                "conveyor|speed_set|INT|group_mtcp|3|7|1",
                                                recordsIn[2]}
                                 << QStringList{"gripper|jaw_closed|BOOL|EIP|7|9|1",
                                                "conveyor|speed_actual|Float|pfn|40|0|0"}
                                 << "expected_records.cfg";
        QTest::newRow("empty") << QStringList() << QStringList() << "expected_empty.cfg";
    }
    void write()
    {
        QFETCH(QStringList, in);
        QFETCH(QStringList, out);
        QFETCH(QString, expected);
        const QString path = TPU_FIELDBUS_DIR + "/export/mapping.cfg";
        manager->mapList[BusInput] = records({"ignored|x|int|mtcp|1|0|0"});
        manager->writeMapList[BusInput] = records(in);
        manager->writeMapList[BusOutput] = records(out);
        QSignalSpy sends(manager, &BusFileDataManager::signalSendSignalMap);
        QVERIFY(manager->writeSendSignalMapCfg(path, "/elsewhere/mapping.cfg"));
        QCOMPARE(TestWorkspace::readFile(path), fixture(qPrintable(expected)));
        QCOMPARE(sends.count(), 0);
        QCOMPARE(describe(manager->writeMapList[BusInput]), in);
    }

    void roundTrip()
    {
        const QString path = TPU_FIELDBUS_DIR + "/roundtrip.cfg";
        parse(fixture("expected_records.cfg"));
        manager->writeMapList[BusInput] = manager->readMapList[BusInput];
        manager->writeMapList[BusOutput] = manager->readMapList[BusOutput];
        QVERIFY(manager->writeSendSignalMapCfg(path, RDE_SIGNAL_MAP_CFG));
        QCOMPARE(TestWorkspace::readFile(path), fixture("expected_records.cfg"));
        parse(TestWorkspace::readFile(path));
        QCOMPARE(describe(manager->readMapList[BusInput]), recordsIn);
        QCOMPARE(describe(manager->readMapList[BusOutput]), recordsOut);
    }

    void failedWriteKeepsEarlierFile()
    {
        TestWorkspace::writeFile(TPU_SIGNAL_MAP_CFG, fixture("expected_records.cfg"));
        // More than a file buffer, so that the refused write shows in write() itself.
        manager->mapList[BusInput] =
                QVector<FuncAndMapInfo>(200, records({"m|n|bool|mtcp|1|0|0"})[0]);
        manager->writeMapList[BusInput].clear();
        QSignalSpy sends(manager, &BusFileDataManager::signalSendSignalMap);
        {
            FileSizeLimit full(16);
            QVERIFY(!manager->writeSendSignalMapCfg(TPU_SIGNAL_MAP_CFG, RDE_SIGNAL_MAP_CFG));
        }
        QCOMPARE(TestWorkspace::readFile(TPU_SIGNAL_MAP_CFG), fixture("expected_records.cfg"));
        QCOMPARE(sends.count(), 0);
        QVERIFY(manager->writeMapList[BusInput].isEmpty());
    }

    // Fetch, refetch, edit, write, send and commit through the transfer thread.
    void endToEnd()
    {
        TestWorkspace::resetSimulation();
        BusFileDataManager m;
        m.busShortNames = QStringList{"mtcp", "eip"};
        RecordingObserver observer;
        m.attach(&observer);

        workspace.putControllerFile(RDE_SIGNAL_MAP_CFG, fixture("expected_records.cfg"));
        m.emitGetSignalMap();
        QTRY_COMPARE(observer.calls.size(), 1);
        QCOMPARE(observer.calls[0], (Call{FileFetchedAndRead, RDE_SIGNAL_MAP_CFG, true}));
        QCOMPARE(describe(m.readMapList[BusOutput]), recordsOut);
        QCOMPARE(m.busMap[BusOutput].keys(), QStringList{"eip"});

        workspace.putControllerFile(RDE_SIGNAL_MAP_CFG,
                                    "#System_Input:\n-Module m -Name n -Type bool -FieldBus EIP "
                                    "-Address 4\n#System_Output:\n");
        m.setReadMapFileStatus(false);
        m.setGetSignalMapLoad(false);
        m.emitGetSignalMap();
        QTRY_COMPARE(observer.calls.size(), 2);
        QCOMPARE(observer.calls[1], (Call{FileFetchedAndRead, RDE_SIGNAL_MAP_CFG, true}));
        QCOMPARE(describe(m.readMapList[BusInput]), QStringList{"m|n|bool|eip|4|0|0"});

        m.mapList[BusInput][0].address = "9";
        m.mapList[BusOutput] = records({"m|o|int|mtcp|2|0|0"});
        QSignalSpy sends(&m, &BusFileDataManager::signalSendSignalMap);
        QVERIFY(m.writeSendSignalMapCfg(TPU_SIGNAL_MAP_CFG, RDE_SIGNAL_MAP_CFG));
        QCOMPARE(sends.count(), 1);
        QCOMPARE(sends[0], (QVariantList{TPU_SIGNAL_MAP_CFG, RDE_SIGNAL_MAP_CFG}));
        QCOMPARE(describe(m.readMapList[BusInput]), QStringList{"m|n|bool|eip|4|0|0"});
        QTRY_COMPARE(observer.calls.size(), 3);
        QCOMPARE(observer.calls[2], (Call{FileWrittenAndSent, RDE_SIGNAL_MAP_CFG, true}));
        QCOMPARE(workspace.controllerFile(RDE_SIGNAL_MAP_CFG),
                 TestWorkspace::readFile(TPU_SIGNAL_MAP_CFG));
        QCOMPARE(describe(m.readMapList[BusInput]), QStringList{"m|n|bool|eip|9|0|0"});
        QCOMPARE(describe(m.writeMapList[BusOutput]), QStringList{"m|o|int|mtcp|2|0|0"});
        QCOMPARE(m.busMap[BusOutput].keys(), QStringList{"mtcp"});
    }
};

QTEST_GUILESS_MAIN(SignalMappingTest)
#include "tst_signalmapping.moc"
