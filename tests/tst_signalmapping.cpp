#include "BusFileDataManager.h"
#include "FileSizeLimit.h"
#include "RecordingObserver.h"
#include "TestWorkspace.h"

#include <QSignalSpy>
#include <QtTest>

namespace {

// "module|name|type|fieldBus|address|filterTime|invert"
QStringList describe(const QVector<FuncAndMapInfo> &list)
{
    QStringList out;
    for (const FuncAndMapInfo &i : list)
        out << QStringList{i.module, i.name, i.type, i.fieldBus, i.address, i.filterTime, i.invert}
                        .join('|');
    return out;
}

QVector<FuncAndMapInfo> records(const QStringList &described)
{
    QVector<FuncAndMapInfo> list;
    for (const QString &d : described) {
        const QStringList f = d.split('|');
        list << FuncAndMapInfo{f[0], QString(), f[1], f[2], f[3], f[4], f[6], f[5]};
    }
    return list;
}

QByteArray fixture(const QString &name)
{
    return TestWorkspace::readFile(QFINDTESTDATA("data/signalmapping/" + name));
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

private slots:
    void init()
    {
        TestWorkspace::resetSimulation();
        manager = new BusFileDataManager();
        manager->busShortNames = QStringList{"mtcp", "eip", "ecm"};
    }
    void cleanup() { delete manager; }

    // The keyword is "-Name" in every case.
    void parseLineByWord_data()
    {
        QTest::addColumn<QString>("line");
        QTest::addColumn<QString>("value");
        QTest::newRow("any white space") << "\t-Module   m\t-Name \t n  " << QString("n");
        QTest::newRow("absent") << "-Module m" << QString("0");
        QTest::newRow("last word") << "-Module m -Name" << QString("0");
        QTest::newRow("first of two") << "-Name a -Name b" << QString("a");
        QTest::newRow("case-sensitive") << "-name n" << QString("0");
        QTest::newRow("whole words") << "-NameX n" << QString("0");
        QTest::newRow("empty line") << "" << QString("0");
    }
    void parseLineByWord()
    {
        QFETCH(QString, line);
        QTEST(BusFileDataManager::parseLineByWord(line, "-Name"), "value");
    }

    // The tables hold one stale input record before each read.
    void read_data()
    {
        QTest::addColumn<QByteArray>("content");
        QTest::addColumn<bool>("ok");
        QTest::addColumn<QStringList>("in");
        QTest::addColumn<QStringList>("out");
        QTest::newRow("well-formed")
                << fixture("expected_records.cfg") << true << recordsIn << recordsOut;
        QTest::newRow("markers only") << QByteArray("#System_Input:\n#System_Output:\n") << true
                                      << QStringList() << QStringList();
        QTest::newRow("before first marker")
                << QByteArray("$$ title\n-Module x -Name y\n  xx #System_Output: yy\n-Module a\n")
                << true << QStringList() << QStringList{"a|0|0|0|0|0|0"};
        QTest::newRow("stray text and tabs")
                << QByteArray("#System_Input:\r\njust words\r\n\t-Name\tn -FieldBus Eip -Type\r\n")
                << true << QStringList{"0|0|0|0|0|0|0", "0|n|0|eip|0|0|0"} << QStringList();
        QTest::newRow("duplicate keys") << QByteArray("#System_Input:\n-Module a -Module b\n")
                                        << true << QStringList{"a|0|0|0|0|0|0"} << QStringList();
        QTest::newRow("zero bytes refused")
                << QByteArray("") << false << QStringList{"stale|x|int|mtcp|1|0|0"}
                << QStringList();
    }
    void read()
    {
        QFETCH(QByteArray, content);
        QFETCH(QStringList, in);
        QFETCH(QStringList, out);
        manager->readMapList[BusInput] = manager->mapList[BusInput] =
                records({"stale|x|int|mtcp|1|0|0"});
        TestWorkspace::writeFile(TPU_SIGNAL_MAP_CFG, content);

        QTEST(manager->readSignalMapCfg(), "ok");
        QCOMPARE(describe(manager->readMapList[BusInput]), in);
        QCOMPARE(describe(manager->readMapList[BusOutput]), out);
        QCOMPARE(describe(manager->mapList[BusInput]) + describe(manager->mapList[BusOutput]),
                 in + out);
    }

    // Keys in order, each vector in list order; an unknown bus is left out.
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

    // Another path writes writeMapList as given and sends nothing.
    void write_data()
    {
        QTest::addColumn<QStringList>("in");
        QTest::addColumn<QStringList>("out");
        QTest::addColumn<QString>("expected");
        QTest::newRow("case rules and pairs per section")
                << QStringList{"gripper|close_jaw|BOOL|mtcp|12|5|0",
                               "conveyor|speed_set|INT|group_mtcp|3|7|1", recordsIn[2]}
                << QStringList{"gripper|jaw_closed|BOOL|EIP|7|9|1",
                               "conveyor|speed_actual|Float|pfn|40|0|0"}
                << "expected_records.cfg";
        QTest::newRow("records as read") << recordsIn << recordsOut << "expected_records.cfg";
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
        QCOMPARE(TestWorkspace::readFile(path), fixture(expected));
        QCOMPARE(sends.count(), 0);
    }

    void failedWriteKeepsEarlierFile()
    {
        TestWorkspace::writeFile(TPU_SIGNAL_MAP_CFG, fixture("expected_empty.cfg"));
        manager->mapList[BusInput] = records({"m|n|bool|mtcp|1|0|0"});
        QSignalSpy sends(manager, &BusFileDataManager::signalSendSignalMap);
        {
            FileSizeLimit full(16);
            QVERIFY(!manager->writeSendSignalMapCfg(TPU_SIGNAL_MAP_CFG, RDE_SIGNAL_MAP_CFG));
        }
        QCOMPARE(TestWorkspace::readFile(TPU_SIGNAL_MAP_CFG), fixture("expected_empty.cfg"));
        QCOMPARE(sends.count(), 0);
    }

    // Fetched, read and observed; edited, written, sent and committed.
    void endToEnd()
    {
        RecordingObserver observer;
        observer.setIsSignalMap(true);
        manager->attach(&observer);
        workspace.putControllerFile(RDE_SIGNAL_MAP_CFG, fixture("expected_records.cfg"));
        const QString fetched =
                RecordingObserver::call(FileFetchedAndRead, RDE_SIGNAL_MAP_CFG, true);

        manager->emitGetSignalMap();
        QTRY_COMPARE(observer.calls, QStringList{fetched});
        QCOMPARE(describe(manager->readMapList[BusOutput]), recordsOut);
        QCOMPARE(manager->busMap[BusOutput].keys(), QStringList{"eip"});

        manager->mapList[BusInput][0].address = "9";
        manager->mapList[BusOutput] = records({"m|o|int|mtcp|2|0|0"});
        QVERIFY(manager->writeSendSignalMapCfg(TPU_SIGNAL_MAP_CFG, RDE_SIGNAL_MAP_CFG));
        QCOMPARE(describe(manager->writeMapList[BusOutput]), QStringList{"m|o|int|mtcp|2|0|0"});
        QCOMPARE(describe(manager->readMapList[BusInput]), recordsIn);

        QTRY_COMPARE(observer.calls,
                     QStringList({fetched,
                                  RecordingObserver::call(FileWrittenAndSent, RDE_SIGNAL_MAP_CFG,
                                                          true)}));
        QCOMPARE(workspace.controllerFile(RDE_SIGNAL_MAP_CFG),
                 TestWorkspace::readFile(TPU_SIGNAL_MAP_CFG));
        QCOMPARE(manager->readMapList[BusInput][0].address, QString("9"));
        QCOMPARE(manager->busMap[BusOutput].keys(), QStringList{"mtcp"});
        manager->detach(&observer);
    }
};

QTEST_GUILESS_MAIN(SignalMappingTest)
#include "tst_signalmapping.moc"
