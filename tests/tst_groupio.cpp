#include "FileSizeLimit.h"
#include "ManagerTest.h"
#include "RecordingObserver.h"

#include <QSignalSpy>
#include <QtTest>

namespace {

const char *const typeNames[] = {"int", "float", "string"};

// "dir type key=type|address|fieldBus|head|tail" for every row of a set of tables.
QStringList describe(const QMap<QString, GroupInfo> (&tables)[2][3])
{
    QStringList out;
    for (int i = 0; i < 6; ++i) {
        const QMap<QString, GroupInfo> &table = tables[i / 3][i % 3];
        for (auto it = table.cbegin(); it != table.cend(); ++it)
            out << QString("%1 %2 %3=%4|%5|%6|%7|%8")
                            .arg(i / 3)
                            .arg(QString(typeNames[i % 3]), it.key(), it->type, it->address,
                                 it->fieldBus, it->deviceMapHead, it->deviceMapTail);
    }
    return out;
}

GroupInfo group(const QString &described)
{
    const QStringList f = described.split('|');
    return GroupInfo{f[0], f[1], f[2], f[3], f[4]};
}

const QStringList fullTables{
        "0 int 10=int|10|MTCP|0|15",  "0 int 2=int|2|MTCP|16|31",
        "0 float 1=float|1|EIP|0|31", "0 string 5=string|5|PFN|64|191",
        "1 int 3=INT|3|ETHCAT|0|7",   "1 string 4=string|4|DNS|100000000|200000000"};

const QString stale = "1 float 9=||||";

const QByteArray baseFile = "#Group_Input:\n-Type int -Address 1 -FieldBus mtcp -DeviceMap 1-23\n"
                            "-Type int -Address 2 -FieldBus eip -DeviceMap 16-31\n";

} // namespace

class GroupIoTest : public ManagerTest
{
    Q_OBJECT

public:
    GroupIoTest()
        : ManagerTest("groupio")
    { }

private slots:
    // The tables hold one stale group before each read.
    void read_data()
    {
        QTest::addColumn<QByteArray>("content");
        QTest::addColumn<bool>("ok");
        QTest::addColumn<QStringList>("rows");
        QTest::newRow("well-formed") << fixture("expected_full.cfg") << true << fullTables;
        QTest::newRow("duplicate keys")
                << QByteArray("#Group_Input:\n-Type int -Address 1 -FieldBus mtcp -DeviceMap 0-7\n"
                              "-Type INT -Address 1 -FieldBus eip\n")
                << true << QStringList{"0 int 1=INT|1|eip||"};
        QTest::newRow("device maps")
                << QByteArray("#Group_Input:\n-Type float -Address 1 -DeviceMap 0-15-3\n"
                              "-Type float -Address 2 -DeviceMap 015\n"
                              "-Type float -Address 3 -DeviceMap -7\n")
                << true
                << QStringList{"0 float 1=float|1|0|0|15", "0 float 2=float|2|0||",
                               "0 float 3=float|3|0||7"};
        QTest::newRow("before the marker, missing keywords, any order, other type")
                << QByteArray("$$ x\n-Type int -Address 7\nzz#Group_Output:zz\nnothing here\n"
                              "\t-DeviceMap  4-5 -Type\tbool -FieldBus  dns "
                              "-Address 12345678901234567890\n")
                << true
                << QStringList{"1 string 0=0|0|0||",
                               "1 string 12345678901234567890=bool|12345678901234567890|dns|4|5"};
        QTest::newRow("zero bytes refused") << QByteArray("") << false << QStringList{stale};
    }
    void read()
    {
        QFETCH(QByteArray, content);
        QFETCH(QStringList, rows);
        manager->curGroupTables[BusOutput][1].insert("9", GroupInfo());
        manager->savedGroupTables[BusOutput][1].insert("9", GroupInfo());
        TestWorkspace::writeFile(TPU_GROUP_CFG, content);

        QTEST(manager->readGroupCfg(), "ok");
        QCOMPARE(describe(manager->curGroupTables), rows);
        QCOMPARE(describe(manager->savedGroupTables), rows);
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
        QCOMPARE(TestWorkspace::readFile(TPU_GROUP_CFG), fixture(expected));
        QCOMPARE(sends.count(), 1);
        // Writing commits nothing.
        QCOMPARE(manager->isGroupDataChange(), !rows.isEmpty());
    }

    void failedWriteKeepsEarlierFile()
    {
        TestWorkspace::writeFile(TPU_GROUP_CFG, fixture("expected_empty.cfg"));
        manager->setGroupInfo(group("int|1|mtcp|0|15"), "int", BusInput);
        QSignalSpy sends(manager, &BusFileDataManager::signalSendGroupCfg);
        {
            FileSizeLimit full(16);
            QVERIFY(!manager->writeSendGroupCfg());
        }
        QCOMPARE(TestWorkspace::readFile(TPU_GROUP_CFG), fixture("expected_empty.cfg"));
        QCOMPARE(sends.count(), 0);
    }

    // Edits of the input int table {1: mtcp 1-23, 2: eip 16-31}; "-1" deletes.
    void edit_data()
    {
        QTest::addColumn<QString>("edit");
        QTest::addColumn<QStringList>("rows");
        QTest::addColumn<QVector<int>>("busChanges");
        QTest::addColumn<bool>("changed");
        QTest::addColumn<QString>("type");
        const QString row1 = "0 int 1=int|1|mtcp|1|23", row2 = "0 int 2=int|2|eip|16|31";
        QTest::newRow("same joined map")
                << "int|1|mtcp|12|3" << QStringList{"0 int 1=int|1|mtcp|12|3", row2}
                << QVector<int>{0} << false << "int";
        QTest::newRow("other bus")
                << "int|1|eip|1|23" << QStringList{"0 int 1=int|1|eip|1|23", row2}
                << QVector<int>{0, 2} << true << "INT";
        QTest::newRow("insert") << "int|3|ecm|0|7"
                                << QStringList{row1, row2, "0 int 3=int|3|ecm|0|7"}
                                << QVector<int>{4} << true << "int";
        QTest::newRow("delete") << "int|1||-1|" << QStringList{row2} << QVector<int>{0} << true
                                << "int";
        QTest::newRow("delete absent")
                << "int|9||-1|" << QStringList{row1, row2} << QVector<int>() << false << "int";
        QTest::newRow("unknown type")
                << "int|3|mtcp|0|7" << QStringList{row1, row2} << QVector<int>() << false << "bool";
    }
    void edit()
    {
        QFETCH(QString, type);
        QFETCH(QString, edit);
        TestWorkspace::writeFile(TPU_GROUP_CFG, baseFile);
        QVERIFY(manager->readGroupCfg());
        manager->setGroupInfo(group(edit), type, BusInput);
        QTEST(describe(manager->curGroupTables), "rows");
        QTEST(manager->getBusTypeChange(), "busChanges");
        QTEST(manager->isGroupDataChange(), "changed");
        QCOMPARE(manager->getAllGroupInfo(BusInput, "int").keys(), QStringList({"1", "2"}));
        manager->updateGroupData(false);
        QCOMPARE(describe(manager->curGroupTables), describe(manager->savedGroupTables));
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
        TestWorkspace::writeFile(TPU_GROUP_CFG, baseFile);
        QVERIFY(manager->readGroupCfg());
        manager->setGroupInfo(group("int|3|mtcp|0|7"), "int", BusInput);
        QStringList found;
        for (const GroupInfo &info : manager->getBusGroupInfo(bus, BiBo(dir), type, saved))
            found << info.address;
        QTEST(found, "keys");
    }

    // Fetched, read and observed; edited, written, sent and committed.
    void endToEnd()
    {
        RecordingObserver observer;
        observer.setIsGroupIO(true);
        manager->attach(&observer);
        workspace.putControllerFile(RDE_GROUP_CFG, fixture("expected_one_row.cfg"));
        const QString fetched = RecordingObserver::call(FileFetchedAndRead, RDE_GROUP_CFG, true);

        manager->emitGetGroupIo();
        QTRY_COMPARE(observer.calls, QStringList{fetched});
        QCOMPARE(describe(manager->savedGroupTables), QStringList{"0 int 1=int|1|MTCP|0|15"});
        manager->setGroupInfo(group("float|1|eip|0|31"), "float", BusInput);
        QVERIFY(manager->writeSendGroupCfg());

        QTRY_COMPARE(
                observer.calls,
                QStringList({fetched,
                             RecordingObserver::call(FileWrittenAndSent, RDE_GROUP_CFG, true)}));
        QCOMPARE(workspace.controllerFile(RDE_GROUP_CFG), TestWorkspace::readFile(TPU_GROUP_CFG));
        QVERIFY(!manager->isGroupDataChange());
        QCOMPARE(manager->getAllGroupInfo(BusInput, "float").keys(), QStringList{"1"});
        manager->detach(&observer);
    }
};

QTEST_GUILESS_MAIN(GroupIoTest)
#include "tst_groupio.moc"
