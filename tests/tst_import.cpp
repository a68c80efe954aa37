// Import of mapping data: cleaning, collision search, merges and the whole import walk.
#include "ImportTestData.h"
#include "ManagerTest.h"
#include "MappingRows.h"
#include "PendantSim.h"
#include "PlainImport.h"

#include <QRandomGenerator>
#include <QtTest>

// Whole records, for comparing the indexed search with the plain walk.
bool operator==(const FuncAndMapInfo &a, const FuncAndMapInfo &b)
{
    const auto fields = [](const FuncAndMapInfo &r) {
        return std::tie(r.module, r.nameCn, r.name, r.type, r.fieldBus, r.address, r.invert,
                        r.filterTime, r.forceEnabled);
    };
    return fields(a) == fields(b);
}

class ImportTest : public ManagerTest
{
    Q_OBJECT

public:
    ImportTest()
        : ManagerTest("import")
    { }

private:
    void prepare() override { configureController(manager); }
    QRandomGenerator random{20261122};

    template<typename... Values>
    static void add(const char *name, const Values &...values)
    {
        (QTest::newRow(name) << ... << values);
    }

    static QString allRows(const BusMap &map)
    {
        QVector<FuncAndMapInfo> rows;
        for (const QVector<FuncAndMapInfo> &busRows : map)
            rows += busRows;
        return describe(rows);
    }

    QString pick(const QStringList &from) { return from.at(random.bounded(from.size())); }

    // Small alphabets with letter-case variants, so that rows meet often.
    FuncAndMapInfo randomRow(bool present)
    {
        FuncAndMapInfo row;
        // One module for the present rows: the gathered rows then show every call in order.
        row.module = present ? QStringLiteral("m1") : pick({"m1", "m2"});
        // Letters whose case pairs lie outside ASCII and outside the BMP, too.
        row.name = pick({"A", "a", "B", "b", "C", "Ä", "ä", "ß", "ẞ", "D.x",
                         QString::fromUcs4(U"\U00010400"), QString::fromUcs4(U"\U00010428")});
        row.type = pick({"bool", "BOOL", "int", "Int"});
        row.fieldBus = pick(present ? QStringList{"mtcp", "eip", "group_mtcp", "Mtcp"}
                                    : QStringList{"mtcp", "eip", "group_mtcp"});
        row.address = pick({"0", "1", "2", "01", "x", "X", "Ⅸ", "ⅸ"});
        row.filterTime = QString::number(random.bounded(3));
        row.invert = QString::number(random.bounded(2));
        return row;
    }

    // Present and imported rows of one direction, then cleaning and collision search.
    void runImport(int dir, const QString &present, const QString &imported)
    {
        manager->readMapList[dir] = rows(present);
        for (const FuncAndMapInfo &row : rows(imported))
            manager->imBusMap[dir][row.fieldBus].append(row);
        manager->delIllegalBusMap();
    }

private slots:
    void cleaning_data()
    {
        QTest::addColumn<int>("dir");
        QTest::addColumn<QString>("row");
        QTest::addColumn<bool>("kept");
        add("bus switched off", 0, "X@ethcat=0", false);
        add("group of a bus switched off", 0, "X@group_ethcat=-1:int", false);
        add("last bool address", 0, "X=63", true);
        add("bool address at the size", 0, "X=64", false);
        add("negative address", 0, "X=-1", false);
        add("address that is no number counts as 0", 0, "X=x", true);
        add("float at the size", 0, "X=8:float", false);
        add("output size of bool", 1, "X=32", false);
        add("size of the row's own bus", 0, "X@eip=32", false);
        add("existing group", 0, "X@group_mtcp=1:int", true);
        add("group of the other direction", 0, "X@group_mtcp=4:int", false);
        add("output group", 1, "X@group_mtcp=4:int", true);
        add("unmapped group row", 0, "X@group_mtcp=-1:int", true);
        add("bool at a group's first address", 0, "X=16", false);
        add("bool just before a group", 0, "X=15", true);
        add("bool inside a string group", 0, "X@eip=3", false);
        add("int inside a group range", 1, "X=10:int", true);
        add("bool inside an output group", 1, "X=10", false);
    }

    void cleaning()
    {
        QFETCH(int, dir);
        QFETCH(QString, row);
        QFETCH(bool, kept);
        runImport(dir, QString(), row);
        QCOMPARE(allRows(manager->imBusMap[dir]), kept ? row : QString());
        QCOMPARE(BusFileDataManager::_isIllegalImportMap, !kept);
    }

    // Search outcome: remaining imports | address collisions | re-mapped imports | their
    // present rows; then the result for the answer, the earlier one being "Old=3".
    void searchAndMerge_data()
    {
        QTest::addColumn<QString>("present");
        QTest::addColumn<QString>("imported");
        QTest::addColumn<QString>("outcome");
        QTest::addColumn<int>("answer");
        QTest::addColumn<QString>("result");
        add("identical row leaves, type and address without case", "A=x:BOOL", "A=X", " |  |  | ",
            1, "A=x:BOOL");
        add("no collision: imports follow in bus order", "Open=1",
            "Open=1:int Open=9:int Open@eip=9", "Open@eip=9 Open=1:int Open=9:int |  |  | ", 2,
            "Open=1 Open@eip=9 Open=1:int Open=9:int");
        add("address of another function", "Start=2", "Stop=2", "Stop=2 | Stop=2 |  | ", 2,
            "Start=2 Stop=2");
        add("name in another case takes the address", "Start=2", "START=2",
            "START=2 | START=2 |  | ", 1, "Start=2 START=2");
        add("re-mapped, name without case; other answer", "Open=1", "OPEN=9",
            "OPEN=9 |  | OPEN=9 | Open=1", 0, "Old=3 OPEN=9");
        add("imported rows walked from last to first", "Open=1", "Open=7 Open=8",
            "Open=7 Open=8 |  | Open=8 Open=7 | Open=1 Open=1", 2, "Open=7 Open=8");
        add("collision seen before the row leaves", "Start=2 Stop=2", "Stop=2", " | Stop=2 |  | ",
            1, "Start=2 Stop=2");
        add("a row that left is not seen again", "Close=0 Close=5", "Close=0", " |  |  | ", 0,
            "Close=0 Close=5");
        add("keep present: every import at the re-mapped address goes", "Open=1",
            "Open=9 Level=9:int Spare=9:BOOL",
            "Open=9 Level=9:int Spare=9:BOOL |  | Open=9 | Open=1", 1, "Open=1 Level=9:int");
        // Two re-mapped functions take two rows, each the last one left at its address.
        add("take imported: one row per function, the last at the address", "Open=1 Twin=1 Third=1",
            "Open=9 Twin=8", "Open=9 Twin=8 |  | Open=9 Twin=8 | Open=1 Twin=1", 2,
            "Open=1 Open=9 Twin=8");
    }

    void searchAndMerge()
    {
        QFETCH(QString, present);
        QFETCH(QString, imported);
        QFETCH(QString, outcome);
        QFETCH(int, answer);
        QFETCH(QString, result);
        manager->setMapData(rows("Old=3"), {});
        runImport(BusInput, present, imported);
        QStringList seen{allRows(manager->imBusMap[BusInput])};
        for (const QList<FuncAndMapInfo> *lists :
             {manager->conflictMapList, manager->remapList, manager->presentMapList})
            seen << describe(lists[BusInput]);
        QCOMPARE(seen.join(" | "), outcome);
        QCOMPARE(BusFileDataManager::_isConflictImportMap, seen[1] + seen[2] != QString());
        manager->handleImportMapData(MsgBox::returnValue(answer));
        QCOMPARE(describe(manager->writeMapList[BusInput]), result);
    }

    // The import screen: read and back up the mapping, import some modules, answer, write, send.
    void wholeFlow_data()
    {
        QTest::addColumn<QStringList>("modules");
        QTest::addColumn<int>("answer");
        QTest::addColumn<QString>("outcome");
        QTest::addColumn<QString>("expectedFile");
        // Flags (illegal, conflict), collisions, re-mapped imports, their present rows; in, out.
        const QString collides = "11 | conveyor/Stop=2 | conveyor/Alarm@eip=4 | "
                                 "Open=9,filter=10,invert=1 | Closed=3 | "
                                 "Open=1,filter=10,invert=1 | Closed=0";
        const QStringList modules{"gripper", "conveyor", "welder"};
        add("keep the present mapping", modules, 1, collides, "result_modules_keep_present.cfg");
        add("take the imported mapping", modules, 2, collides, "result_modules_take_imported.cfg");
        add("box closed", modules, 0, collides, "result_modules_other_answer.cfg");
        add("PV_layout selected", QStringList{"PV_layout", "gripper"}, 2, collides,
            "result_pv_layout_take_imported.cfg");
        add("no module selected", QStringList(), 0, "00 |  |  |  |  |  | ",
            "present_signal_mapping.cfg");
    }

    void wholeFlow()
    {
        QFETCH(QStringList, modules);
        QFETCH(int, answer);
        QFETCH(QString, outcome);
        QFETCH(QString, expectedFile);
        const QByteArray present = fixture("present_signal_mapping.cfg");
        workspace.putControllerFile(RDE_SIGNAL_MAP_CFG, present);
        workspace.removeControllerFile(RDE_SIGNAL_MAP_BACKUP_CFG);

        manager->emitGetSignalMap();
        QTRY_VERIFY(manager->isSignalMapRead);
        QVERIFY(manager->copyMapBackup() && manager->sendMapBackupToCtrl());
        QCOMPARE(workspace.controllerFile(RDE_SIGNAL_MAP_BACKUP_CFG), present);

        QVERIFY(manager->readMapParaBackup(QFINDTESTDATA("data/import/modules_backup.cfg"),
                                           modules));
        QStringList seen{QString::number(BusFileDataManager::_isIllegalImportMap)
                         + QString::number(BusFileDataManager::_isConflictImportMap)};
        for (const QList<FuncAndMapInfo> *lists :
             {manager->conflictMapList, manager->remapList, manager->presentMapList})
            seen << describe(lists[BusInput]) << describe(lists[BusOutput]);
        QCOMPARE(seen.join(" | "), outcome);

        // The screen keeps the result apart from the controller's mapping.
        const QString local = "import.cfg", remote = "/application/fidbus/import.cfg";
        manager->handleImportMapData(MsgBox::returnValue(answer));
        QVERIFY(manager->writeSendSignalMapCfg(local, remote));
        QVERIFY(BusFileDataManager::sendFileToCtrl(remote, local));
        QCOMPARE(workspace.controllerFile(remote), fixture(expectedFile));
    }

    // The import as one operation: each row's fate with its line and the
    // rule's kind; the end backs up, writes, sends and marks the import done,
    // and a backup that cannot be sent changes nothing.
    void operation_data()
    {
        QTest::addColumn<int>("failures");
        add("done", 0);
        add("backup not sent", 1);
    }

    void operation()
    {
        QFETCH(int, failures);
        const QByteArray present = fixture("present_signal_mapping.cfg");
        workspace.putControllerFile(RDE_SIGNAL_MAP_CFG, present);
        manager->emitGetSignalMap();
        QTRY_VERIFY(manager->isSignalMapRead);
        QVector<ImportRow> imported;
        int line = 1;
        for (const FuncAndMapInfo &r : rows("m/A@ethcat=0 m/B=64 m/C@group_mtcp=9:int m/D=16 "
                                            "m/E=5 m/E=6 m/F=5"))
            imported.append({r, BusInput, ++line});
        const ImportReport report = manager->prepareImport(imported);
        QStringList fates;
        for (const ImportReport::Dropped &d : report.dropped + report.repeated)
            fates << QStringLiteral("%1 %2").arg(d.row.line).arg(d.kind);
        QCOMPARE(fates, QStringList({"2 bus-off", "3 out-of-range", "4 group-missing",
                                     "5 inside-group", "7 repeated", "8 repeated"}));
        QCOMPARE(report.taken, 1);

        g_imIoType = IoType(0);
        pendantsim::failNextTransfers(failures);
        QString error;
        QCOMPARE(manager->finishImport(MsgBox::Yes, &error), failures == 0);
        QCOMPARE(g_imIoType, failures == 0 ? IoTypeAll : IoType(0));
        QCOMPARE(workspace.controllerFile(RDE_SIGNAL_MAP_CFG) != present, failures == 0);
        QCOMPARE(error.contains("backing up"), failures > 0);
    }

    // The indexed search and the merges must agree with the plain walk, gathered rows included.
    void indexedSearchMatchesPlainWalk()
    {
        manager->setSelfCraftWriteFuncFile("m1", FilePaths(), &BusFileDataManager::writePVIoFile);
        for (int round = 0; round < 400; ++round) {
            ImportState plain;
            const int most = round % 10 == 0 ? 60 : 12;
            for (int dir = 0; dir < 2; ++dir) {
                for (int i = random.bounded(most); i > 0; --i)
                    plain.present[dir].append(randomRow(true));
                for (int i = random.bounded(most); i > 0; --i) {
                    const FuncAndMapInfo row = randomRow(false);
                    plain.imported[dir][row.fieldBus].append(row);
                }
                plain.result[dir].append(randomRow(false));
                manager->readMapList[dir] = plain.present[dir];
                manager->imBusMap[dir] = plain.imported[dir];
            }
            BusFileDataManager::clearSelfCraftMap();
            plainCollisionSearch(plain, 0);
            plainCollisionSearch(plain, 1);
            const QVector<FuncAndMapInfo> gathered = BusFileDataManager::getSelfCraftMap("m1");

            BusFileDataManager::clearSelfCraftMap();
            BusFileDataManager::_isConflictImportMap = false;
            for (int dir = 0; dir < 2; ++dir) {
                manager->checkGetConflictData(
                        BiBo(dir), manager->imBusMap[dir], manager->conflictMapList[dir],
                        manager->remapList[dir], manager->presentMapList[dir]);
            }
            QCOMPARE(BusFileDataManager::_isConflictImportMap, plain.conflict);
            QVERIFY(BusFileDataManager::getSelfCraftMap("m1") == gathered);
            for (int dir = 0; dir < 2; ++dir) {
                QVERIFY(manager->imBusMap[dir] == plain.imported[dir]);
                QCOMPARE(manager->conflictMapList[dir], plain.collisions[dir]);
                QCOMPARE(manager->remapList[dir], plain.remapped[dir]);
                QCOMPARE(manager->presentMapList[dir], plain.presentRows[dir]);
            }

            for (int answer : {0, 1, 2}) {
                ImportState merged = plain;
                plainMerge(merged, answer);
                std::copy(plain.imported, plain.imported + 2, manager->imBusMap);
                std::copy(plain.result, plain.result + 2, manager->writeMapList);
                std::copy(plain.collisions, plain.collisions + 2, manager->conflictMapList);
                manager->handleImportMapData(MsgBox::returnValue(answer));
                for (int dir = 0; dir < 2; ++dir) {
                    QVERIFY(manager->writeMapList[dir] == merged.result[dir]);
                    QVERIFY(manager->imBusMap[dir] == merged.imported[dir]);
                    QCOMPARE(manager->conflictMapList[dir], merged.collisions[dir]);
                }
            }
        }
    }
};

QTEST_GUILESS_MAIN(ImportTest)
#include "tst_import.moc"
