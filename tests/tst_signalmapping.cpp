#include "FileSizeLimit.h"
#include "ManagerTest.h"
#include "MappingRows.h"
#include "RecordingObserver.h"

#include <QSignalSpy>
#include <QtTest>

namespace {

// What expected_records.cfg holds, as the reader gives it back.
const QString recordsIn = "close_jaw=12,filter=5 conveyor/speed_set@group_mtcp=3:int "
                          "palletizer_station_2/layer_done_with_a_very_long_signal_name@ecm=1024,"
                          "filter=10,invert=1";
const QString recordsOut = "jaw_closed@eip=7:BOOL,invert=1 conveyor/speed_actual@pfn=40:Float";

} // namespace

class SignalMappingTest : public ManagerTest
{
    Q_OBJECT

public:
    SignalMappingTest()
        : ManagerTest("signalmapping")
    { }

private:
    void prepare() override { manager->busShortNames = QStringList{"mtcp", "eip", "ecm"}; }

private slots:
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
        QTest::addColumn<QString>("in");
        QTest::addColumn<QString>("out");
        QTest::newRow("well-formed")
                << fixture("expected_records.cfg") << true << recordsIn << recordsOut;
        QTest::newRow("markers only") << QByteArray("#System_Input:\n#System_Output:\n") << true
                                      << QString() << QString();
        QTest::newRow("before first marker")
                << QByteArray("$$ title\n-Module x -Name y\n  xx #System_Output: yy\n-Module a\n")
                << true << QString() << QString("a/0@0=0:0");
        QTest::newRow("stray text and tabs")
                << QByteArray("#System_Input:\r\njust words\r\n\t-Name\tn -FieldBus Eip -Type\r\n")
                << true << QString("0/0@0=0:0 0/n@eip=0:0") << QString();
        QTest::newRow("duplicate keys") << QByteArray("#System_Input:\n-Module a -Module b\n")
                                        << true << QString("a/0@0=0:0") << QString();
        QTest::newRow("zero bytes refused")
                << QByteArray("") << false << QString("stale/x=1:int") << QString();
    }
    void read()
    {
        QFETCH(QByteArray, content);
        QFETCH(QString, in);
        QFETCH(QString, out);
        manager->readMapList[BusInput] = manager->mapList[BusInput] = rows("stale/x=1:int");
        TestWorkspace::writeFile(TPU_SIGNAL_MAP_CFG, content);

        QTEST(manager->readSignalMapCfg(), "ok");
        QCOMPARE(describe(manager->readMapList[BusInput]), in);
        QCOMPARE(describe(manager->readMapList[BusOutput]), out);
        QCOMPARE(describe(manager->mapList[BusInput] + manager->mapList[BusOutput]),
                 (in + " " + out).trimmed());
    }

    // Keys in order, each vector in list order; an unknown bus is left out.
    void groupsByBus()
    {
        QMap<QString, QVector<FuncAndMapInfo>> byBus{{"stale", {}}};
        manager->parseSignalMapByBus(rows("m/a=1 m/b@EIP=2 m/c=3 m/d@group_eip=1:int m/e@xyz=4"),
                                     byBus);
        QCOMPARE(byBus.keys(), (QStringList{"eip", "group_eip", "mtcp"}));
        QCOMPARE(describe(byBus["mtcp"]), QString("m/a=1 m/c=3"));
        QCOMPARE(describe(byBus["eip"]), QString("m/b@EIP=2"));
    }

    // Another path writes writeMapList as given and sends nothing.
    void write_data()
    {
        QTest::addColumn<QString>("in");
        QTest::addColumn<QString>("out");
        QTest::addColumn<QString>("expected");
        QTest::newRow("case rules and pairs per section")
                << QString("close_jaw=12:BOOL,filter=5 "
                           "conveyor/speed_set@group_mtcp=3:INT,filter=7,invert=1 "
                           "palletizer_station_2/layer_done_with_a_very_long_signal_name@ecm=1024,"
                           "filter=10,invert=1")
                << QString("jaw_closed@EIP=7:BOOL,filter=9,invert=1 "
                           "conveyor/speed_actual@pfn=40:Float")
                << "expected_records.cfg";
        QTest::newRow("records as read") << recordsIn << recordsOut << "expected_records.cfg";
        QTest::newRow("empty") << QString() << QString() << "expected_empty.cfg";
    }
    void write()
    {
        QFETCH(QString, in);
        QFETCH(QString, out);
        QFETCH(QString, expected);
        const QString path = TPU_FIELDBUS_DIR + "/export/mapping.cfg";
        manager->mapList[BusInput] = rows("ignored/x=1:int");
        manager->writeMapList[BusInput] = rows(in);
        manager->writeMapList[BusOutput] = rows(out);
        QSignalSpy sends(manager, &BusFileDataManager::signalSendSignalMap);

        QVERIFY(manager->writeSendSignalMapCfg(path, "/elsewhere/mapping.cfg"));
        QCOMPARE(TestWorkspace::readFile(path), fixture(expected));
        QCOMPARE(sends.count(), 0);
    }

    void failedWriteKeepsEarlierFile()
    {
        TestWorkspace::writeFile(TPU_SIGNAL_MAP_CFG, fixture("expected_empty.cfg"));
        manager->mapList[BusInput] = rows("m/n=1");
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
        manager->mapList[BusOutput] = rows("m/o=2:int");
        QVERIFY(manager->writeSendSignalMapCfg(TPU_SIGNAL_MAP_CFG, RDE_SIGNAL_MAP_CFG));
        QCOMPARE(describe(manager->writeMapList[BusOutput]), QString("m/o=2:int"));
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
