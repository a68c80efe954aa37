// The group IO file and group tables: reader, writer byte for byte, edits and
// change tracking, and the fetch / edit / send cycle.
#include "BusFileDataManager.h"
#include "FileSizeLimit.h"
#include "TestWorkspace.h"

#include <QBuffer>
#include <QSignalSpy>
#include <QtTest>

namespace {

class RecordingObserver : public BusObserver
{
public:
    RecordingObserver() { setIsGroupIO(true); }
    void onFileNotify(FileHandle handle, const QString &fileKey, bool isSuccess) override
    {
        calls << QString("%1 %2 %3").arg(handle).arg(fileKey).arg(isSuccess);
    }
    QStringList calls;
};

const char *const typeNames[] = {"int", "float", "string"};

// "dir type key=type|address|fieldBus|head|tail" for every row of a set of tables.
QStringList describe(const QMap<QString, GroupInfo> (&tables)[2][3])
{
    QStringList out;
    for (int dir = 0; dir < 2; ++dir) {
        for (int type = 0; type < 3; ++type) {
            for (auto it = tables[dir][type].cbegin(); it != tables[dir][type].cend(); ++it) {
                out << QString("%1 %2 %3=").arg(dir).arg(typeNames[type]).arg(it.key())
                                + QStringList{it->type, it->address, it->fieldBus,
                                              it->deviceMapHead, it->deviceMapTail}
                                          .join('|');
            }
        }
    }
    return out;
}

GroupInfo group(const QString &described)
{
    const QStringList f = described.split('|');
    return GroupInfo{f[0], f[1], f[2], f[3], f[4]};
}

QByteArray fixture(const char *name)
{
    return TestWorkspace::readFile(QFINDTESTDATA(QString("data/groupio/") + name));
}

const QStringList fullTables{
        "0 int 10=int|10|MTCP|0|15",  "0 int 2=int|2|MTCP|16|31",
        "0 float 1=float|1|EIP|0|31", "0 string 5=string|5|PFN|64|191",
        "1 int 3=INT|3|ETHCAT|0|7",   "1 string 4=string|4|DNS|100000000|200000000"};

const QByteArray baseFile = "#Group_Input:\n-Type int -Address 1 -FieldBus mtcp -DeviceMap 1-23\n"
                            "-Type int -Address 2 -FieldBus eip -DeviceMap 16-31\n";

} // namespace

class GroupIoTest : public QObject
{
    Q_OBJECT

    TestWorkspace workspace;
    BusFileDataManager *manager = nullptr;

    void parse(const QByteArray &content)
    {
        QBuffer buffer;
        buffer.setData(content);
        buffer.open(QIODevice::ReadOnly);
        manager->parseGroupFile(buffer);
    }

private slots:
    void init() { manager = new BusFileDataManager(); }
    void cleanup() { delete manager; }

    void read_data()
    {
        QTest::addColumn<QByteArray>("content");
        QTest::addColumn<QStringList>("rows");
        QTest::newRow("well-formed") << fixture("expected_full.cfg") << fullTables;
        QTest::newRow("before first marker") << QByteArray(
                "$$ x\n-Type int -Address 7\nzz#Group_Output:zz\n-Type int -Address 8\n")
                                             << QStringList{"1 int 8=int|8|0||"};
        QTest::newRow("duplicate keys")
                << QByteArray("#Group_Input:\n-Type int -Address 1 -FieldBus mtcp -DeviceMap 0-7\n"
                              "-Type INT -Address 1 -FieldBus eip\n")
                << QStringList{"0 int 1=INT|1|eip||"};
        QTest::newRow("device maps")
                << QByteArray("#Group_Input:\n-Type float -Address 1 -DeviceMap 0-15-3\n"
                              "-Type float -Address 2 -DeviceMap 015\n"
                              "-Type float -Address 3 -DeviceMap -7\n")
                << QStringList{"0 float 1=float|1|0|0|15", "0 float 2=float|2|0||",
                               "0 float 3=float|3|0||7"};
        QTest::newRow("missing keywords, any order, other type")
                << QByteArray("#Group_Output:\nnothing here\n\t-DeviceMap  4-5 -Type\tbool "
                              "-FieldBus  dns -Address 12345678901234567890\n")
                << QStringList{"1 string 0=0|0|0||",
                               "1 string 12345678901234567890=bool|12345678901234567890|dns|4|5"};
    }
    void read()
    {
        QFETCH(QByteArray, content);
        QFETCH(QStringList, rows);
        manager->savedGroupTables[BusOutput][1].insert("stale", GroupInfo());
        parse(content);
        QCOMPARE(describe(manager->curGroupTables), rows);
        QCOMPARE(describe(manager->savedGroupTables), rows);
        QVERIFY(!manager->isGroupDataChange());
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
        parse(fixture("expected_full.cfg"));
        QFile::remove(TPU_GROUP_CFG);
        if (exists)
            TestWorkspace::writeFile(TPU_GROUP_CFG, QByteArray());
        QVERIFY(!manager->readGroupCfg());
        QCOMPARE(describe(manager->curGroupTables), fullTables);
        QCOMPARE(describe(manager->savedGroupTables), fullTables);
    }

    void write_data()
    {
        QTest::addColumn<QStringList>("rows");
        QTest::addColumn<QString>("expected");
        QTest::newRow("one row, key not address")
                << QStringList{"0 int 1=int||mtcp|0|15"} << "expected_one_row.cfg";
        QTest::newRow("key order, all tables") << fullTables << "expected_full.cfg";
        QTest::newRow("no groups") << QStringList() << "expected_empty.cfg";
    }
    void write()
    {
        QFETCH(QStringList, rows);
        QFETCH(QString, expected);
        for (const QString &row : rows) {
            const QStringList where = row.section('=', 0, 0).split(' ');
            const int type = QStringList{"int", "float", "string"}.indexOf(where[1]);
            manager->curGroupTables[where[0].toInt()][type].insert(where[2],
                                                                   group(row.section('=', 1)));
        }
        QSignalSpy sends(manager, &BusFileDataManager::signalSendGroupCfg);
        QVERIFY(manager->writeSendGroupCfg());
        QCOMPARE(TestWorkspace::readFile(TPU_GROUP_CFG), fixture(qPrintable(expected)));
        QCOMPARE(sends.count(), 1);
        // Writing commits nothing.
        QCOMPARE(manager->isGroupDataChange(), !rows.isEmpty());
    }

    void failedWriteKeepsEarlierFile()
    {
        TestWorkspace::writeFile(TPU_GROUP_CFG, fixture("expected_empty.cfg"));
        // More than a file buffer, so that the refused write shows in write() itself.
        for (int key = 0; key < 200; ++key)
            manager->setGroupInfo(group(QString("int|%1|mtcp|0|15").arg(key)), "int", BusInput);
        QSignalSpy sends(manager, &BusFileDataManager::signalSendGroupCfg);
        {
            FileSizeLimit full(16);
            QVERIFY(!manager->writeSendGroupCfg());
        }
        QCOMPARE(TestWorkspace::readFile(TPU_GROUP_CFG), fixture("expected_empty.cfg"));
        QCOMPARE(sends.count(), 0);
    }

    void roundTrip()
    {
        TestWorkspace::writeFile(TPU_GROUP_CFG, fixture("expected_full.cfg"));
        QVERIFY(manager->readGroupCfg());
        QVERIFY(manager->writeSendGroupCfg());
        QCOMPARE(TestWorkspace::readFile(TPU_GROUP_CFG), fixture("expected_full.cfg"));
        QVERIFY(manager->readGroupCfg());
        QCOMPARE(describe(manager->curGroupTables), fullTables);
    }

    // Edits of the input int table {1: mtcp 1-23, 2: eip 16-31}; "-1" deletes.
    void edit_data()
    {
        QTest::addColumn<QString>("type");
        QTest::addColumn<QString>("edit");
        QTest::addColumn<QStringList>("rows");
        QTest::addColumn<QVector<int>>("busChanges");
        QTest::addColumn<bool>("changed");
        const QString row2 = "0 int 2=int|2|eip|16|31";
        QTest::newRow("same joined map")
                << "int"
                << "int|1|mtcp|12|3" << QStringList{"0 int 1=int|1|mtcp|12|3", row2}
                << QVector<int>{0} << false;
        QTest::newRow("other bus")
                << "INT"
                << "int|1|eip|1|23" << QStringList{"0 int 1=int|1|eip|1|23", row2}
                << QVector<int>{0, 2} << true;
        QTest::newRow("insert") << "int"
                                << "int|3|ecm|0|7"
                                << QStringList{"0 int 1=int|1|mtcp|1|23", row2,
                                               "0 int 3=int|3|ecm|0|7"}
                                << QVector<int>{4} << true;
        QTest::newRow("delete") << "int"
                                << "int|1||-1|" << QStringList{row2} << QVector<int>{0} << true;
        QTest::newRow("delete absent")
                << "int"
                << "int|9||-1|" << QStringList{"0 int 1=int|1|mtcp|1|23", row2} << QVector<int>()
                << false;
        QTest::newRow("unknown type")
                << "bool"
                << "int|3|mtcp|0|7" << QStringList{"0 int 1=int|1|mtcp|1|23", row2}
                << QVector<int>() << false;
    }
    void edit()
    {
        QFETCH(QString, type);
        QFETCH(QString, edit);
        QFETCH(QStringList, rows);
        QFETCH(QVector<int>, busChanges);
        QFETCH(bool, changed);
        parse(baseFile);
        const QMap<QString, GroupInfo> saved = manager->getAllGroupInfo(BusInput, "int");
        manager->setGroupInfo(group(edit), type, BusInput);
        QCOMPARE(describe(manager->curGroupTables), rows);
        QCOMPARE(manager->getBusTypeChange(), busChanges);
        QCOMPARE(manager->isGroupDataChange(), changed);
        QCOMPARE(manager->getAllGroupInfo(BusInput, "int").keys(), saved.keys());
        manager->updateGroupData(true);
        QVERIFY(!manager->isGroupDataChange());
    }

    void busGroups_data()
    {
        QTest::addColumn<QString>("bus");
        QTest::addColumn<int>("dir");
        QTest::addColumn<QString>("type");
        QTest::addColumn<bool>("saved");
        QTest::addColumn<QStringList>("keys");
        QTest::newRow("current") << "MTCP" << 0 << "int" << false << QStringList{"1", "3"};
        QTest::newRow("saved") << "mtcp" << 0 << "Int" << true << QStringList{"1"};
        QTest::newRow("group key") << "group_mtcp" << 0 << "int" << false << QStringList{"1", "3"};
        QTest::newRow("other dir") << "mtcp" << 1 << "int" << false << QStringList();
        QTest::newRow("unknown type") << "mtcp" << 0 << "bool" << false << QStringList();
    }
    void busGroups()
    {
        QFETCH(QString, bus);
        QFETCH(int, dir);
        QFETCH(QString, type);
        QFETCH(bool, saved);
        QFETCH(QStringList, keys);
        parse(baseFile);
        manager->setGroupInfo(group("int|3|mtcp|0|7"), "int", BusInput);
        QStringList found;
        for (const GroupInfo &info : manager->getBusGroupInfo(bus, BiBo(dir), type, saved))
            found << info.address;
        QCOMPARE(found, keys);
    }

    void endToEnd()
    {
        TestWorkspace::resetSimulation();
        RecordingObserver observer;
        manager->attach(&observer);
        workspace.putControllerFile(RDE_GROUP_CFG, fixture("expected_one_row.cfg"));
        manager->emitGetGroupIo();
        QTRY_COMPARE(observer.calls, QStringList{"0 " + RDE_GROUP_CFG + " 1"});
        QCOMPARE(describe(manager->savedGroupTables), QStringList{"0 int 1=int|1|MTCP|0|15"});

        manager->setGroupInfo(group("float|1|eip|0|31"), "float", BusInput);
        QVERIFY(manager->isGroupDataChange());
        QVERIFY(manager->writeSendGroupCfg());
        QTRY_COMPARE(observer.calls.size(), 2);
        QCOMPARE(observer.calls[1], "1 " + RDE_GROUP_CFG + " 1");
        QCOMPARE(workspace.controllerFile(RDE_GROUP_CFG), TestWorkspace::readFile(TPU_GROUP_CFG));
        QVERIFY(!manager->isGroupDataChange());
        QCOMPARE(manager->getAllGroupInfo(BusInput, "float").keys(), QStringList{"1"});
        manager->detach(&observer);
    }
};

QTEST_GUILESS_MAIN(GroupIoTest)
#include "tst_groupio.moc"
