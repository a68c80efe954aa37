// Import of mapping data: intake filter, cleaning steps, collision search,
// merge policies, the whole import walk, and the indexed collision search
// against the plain walk.
#include "BusFileDataManager.h"
#include "ImportTestData.h"
#include "PendantSim.h"
#include "PlainImport.h"
#include "TestWorkspace.h"

#include <QRandomGenerator>
#include <QtTest>

namespace {

const QString otherLocalPath = TPU_FIELDBUS_DIR + QStringLiteral("/signal_mapping_import.cfg");
const QString otherControllerPath = QStringLiteral("/application/fidbus/signal_mapping_import.cfg");

QString allRows(const BusMap &map)
{
    QStringList parts;
    for (const QVector<FuncAndMapInfo> &rows : map) {
        if (!rows.isEmpty())
            parts.append(describeRows(rows));
    }
    return parts.join(QLatin1Char(' '));
}

QStringList names(const QVector<FuncAndMapInfo> &rows)
{
    QStringList result;
    for (const FuncAndMapInfo &row : rows)
        result.append(row.name);
    return result;
}

// Small alphabets, with letter-case variants, so that rows meet often.
QString pick(QRandomGenerator &random, const QStringList &choices)
{
    return choices.at(random.bounded(choices.size()));
}

FuncAndMapInfo randomRow(QRandomGenerator &random, bool present)
{
    FuncAndMapInfo row;
    // One module for the present rows: the gathered rows then show every call in order.
    row.module = present ? QStringLiteral("m1") : pick(random, {"m1", "m2"});
    // Letters whose case pairs lie outside ASCII and outside the BMP, too.
    row.name = pick(random,
                    {"A", "a", "B", "b", "C", "Ä", "ä", "ß", "ẞ", "D.x",
                     QString::fromUcs4(U"\U00010400"), QString::fromUcs4(U"\U00010428")});
    row.type = pick(random, {"bool", "BOOL", "int", "Int"});
    row.fieldBus = pick(random,
                        present ? QStringList{"mtcp", "eip", "group_mtcp", "Mtcp"}
                                : QStringList{"mtcp", "eip", "group_mtcp"});
    row.address = pick(random, {"0", "1", "2", "01", "x", "X", "Ⅸ", "ⅸ"});
    row.filterTime = QString::number(random.bounded(3));
    row.invert = QString::number(random.bounded(2));
    return row;
}

QString fullMap(const BusMap &map)
{
    QStringList parts;
    for (auto it = map.cbegin(); it != map.cend(); ++it)
        parts.append(it.key() + QLatin1String(":\n") + fullRows(it.value()));
    return parts.join(QLatin1Char('\n'));
}

} // namespace

class ImportTest : public QObject
{
    Q_OBJECT

private:
    TestWorkspace workspace;
    BusFileDataManager *manager = nullptr;

    void importLines(BiBo dir, const QStringList &modules, const QVector<FuncAndMapInfo> &rows)
    {
        manager->imModuleList = modules;
        for (const FuncAndMapInfo &row : rows)
            manager->imBusMap[dir][row.fieldBus].append(row);
    }

private slots:
    void init()
    {
        TestWorkspace::resetSimulation();
        BusFileDataManager::_isIllegalImportMap = false;
        BusFileDataManager::_isConflictImportMap = false;
        BusFileDataManager::imSelfCraftMapInfo.clear();
        manager = new BusFileDataManager();
        configureController(manager);
    }

    void cleanup()
    {
        delete manager;
        manager = nullptr;
    }

    // One imported row against an empty present mapping: kept, or dropped by
    // one of the cleaning steps (which sets the illegal flag).
    void cleaning_data()
    {
        QTest::addColumn<int>("dir");
        QTest::addColumn<QString>("row");
        QTest::addColumn<bool>("kept");

        QTest::newRow("bus switched on") << 0 << "X:bool:0" << true;
        QTest::newRow("bus switched off") << 0 << "X:bool:0@ethcat" << false;
        QTest::newRow("group of a bus switched off") << 0 << "X:int:-1@group_ethcat" << false;
        QTest::newRow("bus not offered") << 0 << "X:bool:0@pfn" << false;
        QTest::newRow("last bool address") << 0 << "X:bool:63" << true;
        QTest::newRow("bool address at the size") << 0 << "X:bool:64" << false;
        QTest::newRow("negative address") << 0 << "X:bool:-1" << false;
        QTest::newRow("address that is no number counts as 0") << 0 << "X:bool:x" << true;
        QTest::newRow("int at the size") << 0 << "X:int:16" << false;
        QTest::newRow("float at the size") << 0 << "X:float:8" << false;
        QTest::newRow("output size of bool") << 1 << "X:bool:32" << false;
        QTest::newRow("size of the row's own bus") << 0 << "X:bool:32@eip" << false;
        QTest::newRow("existing group") << 0 << "X:int:1@group_mtcp" << true;
        QTest::newRow("missing group") << 0 << "X:int:9@group_mtcp" << false;
        QTest::newRow("group of the other direction") << 0 << "X:int:4@group_mtcp" << false;
        QTest::newRow("output group") << 1 << "X:int:4@group_mtcp" << true;
        QTest::newRow("unmapped group row") << 0 << "X:int:-1@group_mtcp" << true;
        QTest::newRow("bool inside an int group") << 0 << "X:bool:20" << false;
        QTest::newRow("bool at a group's first address") << 0 << "X:bool:16" << false;
        QTest::newRow("bool just before a group") << 0 << "X:bool:15" << true;
        QTest::newRow("bool inside a string group") << 0 << "X:bool:3@eip" << false;
        QTest::newRow("int inside a group range") << 1 << "X:int:10" << true;
        QTest::newRow("bool inside an output group") << 1 << "X:bool:10" << false;
    }

    void cleaning()
    {
        QFETCH(int, dir);
        QFETCH(QString, row);
        QFETCH(bool, kept);
        importLines(BiBo(dir), {"gripper"}, {mappingRow(row)});
        manager->delIllegalBusMap();
        QCOMPARE(allRows(manager->imBusMap[dir]), kept ? row : QString());
        QVERIFY(manager->imBusMap[1 - dir].isEmpty());
        QCOMPARE(BusFileDataManager::_isIllegalImportMap, !kept);
        QVERIFY(!BusFileDataManager::_isConflictImportMap);
    }

    // Outcome: remaining imports | address collisions | re-mapped imports |
    // their present rows | rows gathered for the registered process.
    void collisionSearch_data()
    {
        QTest::addColumn<QString>("present");
        QTest::addColumn<QString>("imported");
        QTest::addColumn<QString>("outcome");

        QTest::newRow("identical row leaves the import") << "Close:bool:0"
                                                         << "Close:bool:0"
                                                         << " |  |  |  | ";
        QTest::newRow("type and address compared without case") << "Close:BOOL:x"
                                                                << "Close:bool:X"
                                                                << " |  |  |  | ";
        QTest::newRow("address of another function")
                << "Start:bool:2"
                << "Stop:bool:2"
                << "Stop:bool:2 | Stop:bool:2 |  |  | Start:bool:2";
        QTest::newRow("name differing in case takes the address")
                << "Start:bool:2"
                << "START:bool:2"
                << "START:bool:2 | START:bool:2 |  |  | Start:bool:2";
        QTest::newRow("function at another address")
                << "Open:bool:1"
                << "Open:bool:9"
                << "Open:bool:9 |  | Open:bool:9 | Open:bool:1 | Open:bool:1";
        QTest::newRow("re-mapped name compared without case")
                << "Open:bool:1"
                << "OPEN:bool:9"
                << "OPEN:bool:9 |  | OPEN:bool:9 | Open:bool:1 | Open:bool:1";
        QTest::newRow("other type never meets") << "Open:bool:1"
                                                << "Open:int:1 Open:int:9"
                                                << "Open:int:1 Open:int:9 |  |  |  | ";
        QTest::newRow("other bus never meets") << "Open:bool:1@eip"
                                               << "Open:bool:1 Open:bool:9"
                                               << "Open:bool:1 Open:bool:9 |  |  |  | ";
        QTest::newRow("imported rows walked from last to first")
                << "Open:bool:1"
                << "Open:bool:7 Open:bool:8"
                << "Open:bool:7 Open:bool:8 |  | Open:bool:8 Open:bool:7 | Open:bool:1 "
                   "Open:bool:1 | Open:bool:1 Open:bool:1";
        QTest::newRow("collision seen before the row leaves")
                << "Start:bool:2 Stop:bool:2"
                << "Stop:bool:2"
                << " | Stop:bool:2 |  |  | Start:bool:2";
        QTest::newRow("a row that left is not seen again") << "Close:bool:0 Close:bool:5"
                                                           << "Close:bool:0"
                                                           << " |  |  |  | ";
        QTest::newRow("present rows in table order")
                << "Open:bool:1 Start:bool:2#conveyor"
                << "Stop:bool:2 Open:bool:9"
                << "Stop:bool:2 Open:bool:9 | Stop:bool:2 | Open:bool:9 | Open:bool:1 | "
                   "Open:bool:1";
    }

    void collisionSearch()
    {
        QFETCH(QString, present);
        QFETCH(QString, imported);
        QFETCH(QString, outcome);

        const FilePaths paths{"../Application/fieldbus/gripper.xml", "/fa/gripper.xml"};
        manager->setSelfCraftWriteFuncFile("gripper", paths, &BusFileDataManager::writePVIoFile);
        manager->readMapList[BusInput] = mappingRows(present);
        importLines(BusInput, {"gripper"}, mappingRows(imported));
        manager->checkGetConflictData(
                BusInput, manager->imBusMap[BusInput], manager->conflictMapList[BusInput],
                manager->remapList[BusInput], manager->presentMapList[BusInput]);

        const QString gathered = describeRows(BusFileDataManager::getSelfCraftMap("gripper"));
        QCOMPARE(QStringList({allRows(manager->imBusMap[BusInput]),
                              describeRows(manager->conflictMapList[BusInput]),
                              describeRows(manager->remapList[BusInput]),
                              describeRows(manager->presentMapList[BusInput]), gathered})
                         .join(" | "),
                 outcome);
        QCOMPARE(BusFileDataManager::_isConflictImportMap, !gathered.isEmpty());
    }

    void merge_data()
    {
        QTest::addColumn<QString>("present");
        QTest::addColumn<QString>("imported");
        QTest::addColumn<QString>("earlierResult");
        QTest::addColumn<int>("answer");
        QTest::addColumn<QString>("result");

        for (int answer : {0, 1, 2}) {
            QTest::addRow("no collision: answer %d is not consulted", answer)
                    << "Close:bool:0"
                    << "Open:bool:1 Speed:int:0@eip"
                    << "Old:bool:3" << answer << "Close:bool:0 Speed:int:0@eip Open:bool:1";
        }
        QTest::newRow("keep present: every import at the re-mapped address goes")
                << "Open:bool:1"
                << "Open:bool:9 Level:int:9 Spare:BOOL:9"
                << "" << 1 << "Open:bool:1 Level:int:9";
        QTest::newRow("take imported: the present row goes")
                << "Close:bool:0 Open:bool:1"
                << "Open:bool:9"
                << "" << 2 << "Close:bool:0 Open:bool:9";
        QTest::newRow("take imported: only the last row at that address goes")
                << "Open:bool:1 Twin:bool:1"
                << "Open:bool:9"
                << "" << 2 << "Open:bool:1 Open:bool:9";
        QTest::newRow("take imported: one row per re-mapped function")
                << "Open:bool:1 Twin:bool:1"
                << "Open:bool:9 Twin:bool:8"
                << "" << 2 << "Open:bool:9 Twin:bool:8";
        QTest::newRow("other answer: earlier result plus imports")
                << "Open:bool:1"
                << "Open:bool:9"
                << "Old:bool:3" << 0 << "Old:bool:3 Open:bool:9";
        for (int answer : {1, 2}) {
            QTest::addRow("collision rows stay with answer %d", answer)
                    << "Start:bool:2"
                    << "Stop:bool:2"
                    << "" << answer << "Start:bool:2 Stop:bool:2";
        }
    }

    void merge()
    {
        QFETCH(QString, present);
        QFETCH(QString, imported);
        QFETCH(QString, earlierResult);
        QFETCH(int, answer);
        QFETCH(QString, result);

        manager->readMapList[BusInput] = mappingRows(present);
        manager->readMapList[BusOutput] = mappingRows("Lamp:bool:0");
        manager->setMapData(mappingRows(earlierResult), {});
        importLines(BusInput, {"gripper"}, mappingRows(imported));
        manager->delIllegalBusMap();
        manager->handleImportMapData(MsgBox::returnValue(answer));

        QCOMPARE(describeRows(manager->writeMapList[BusInput]), result);
        const QString output = BusFileDataManager::_isConflictImportMap && answer == 0
                ? QString()
                : QStringLiteral("Lamp:bool:0");
        QCOMPARE(describeRows(manager->writeMapList[BusOutput]), output);
    }

    void emptyModuleListKeepsThePresentMapping()
    {
        manager->readMapList[BusInput] = mappingRows("Close:bool:0 Open:bool:1");
        manager->readMapList[BusOutput] = mappingRows("Lamp:bool:0");
        QVERIFY(manager->readMapParaBackup(QFINDTESTDATA("data/import/modules_backup.cfg"), {}));
        QVERIFY(manager->imBusMap[BusInput].isEmpty() && manager->imBusMap[BusOutput].isEmpty());
        QVERIFY(!BusFileDataManager::_isIllegalImportMap);
        QVERIFY(!BusFileDataManager::_isConflictImportMap);
        manager->handleImportMapData(MsgBox::Yes);
        QCOMPARE(describeRows(manager->writeMapList[BusInput]), "Close:bool:0 Open:bool:1");
        QCOMPARE(describeRows(manager->writeMapList[BusOutput]), "Lamp:bool:0");
    }

    // What the import screen does: read the controller's mapping, back it up,
    // import a saved file for some modules, ask, merge, write and send.
    void wholeFlow_data()
    {
        QTest::addColumn<QStringList>("modules");
        QTest::addColumn<int>("answer");
        QTest::addColumn<QStringList>("resultIn");
        QTest::addColumn<QStringList>("resultOut");
        QTest::addColumn<QString>("expectedFile");

        const QStringList modules{"gripper", "conveyor", "welder"};
        QTest::newRow("keep the present mapping")
                << modules << 1 << QStringList{"Close",   "Open", "Start", "Speed", "SignalA",
                                               "Current", "Stop", "Force", "Gas"}
                << QStringList{"Closed", "Running", "LampA", "Alarm"}
                << "result_modules_keep_present.cfg";
        QTest::newRow("take the imported mapping")
                << modules << 2 << QStringList{"Close", "Start", "Speed", "SignalA", "Current",
                                               "Open",  "Stop",  "Force", "Gas"}
                << QStringList{"Running", "LampA", "Alarm", "Closed"}
                << "result_modules_take_imported.cfg";
        QTest::newRow("box closed")
                << modules << 0 << QStringList{"Open", "Stop", "Force", "Gas"}
                << QStringList{"Alarm", "Closed"} << "result_modules_other_answer.cfg";
        QTest::newRow("PV_layout selected")
                << QStringList{"PV_layout", "gripper"} << 2
                << QStringList{"Close", "Start", "Speed", "SignalA", "Current",
                               "Open",  "Stop",  "Force", "Gas",     "Eject"}
                << QStringList{"Running", "LampA", "Alarm", "Done", "Closed"}
                << "result_pv_layout_take_imported.cfg";
    }

    void wholeFlow()
    {
        QFETCH(QStringList, modules);
        QFETCH(int, answer);
        QFETCH(QStringList, resultIn);
        QFETCH(QStringList, resultOut);
        QFETCH(QString, expectedFile);

        const QByteArray present =
                TestWorkspace::readFile(QFINDTESTDATA("data/import/present_signal_mapping.cfg"));
        const QByteArray expected = TestWorkspace::readFile(
                QFINDTESTDATA(QStringLiteral("data/import/") + expectedFile));
        QVERIFY(!present.isEmpty() && !expected.isEmpty());
        workspace.putControllerFile(RDE_SIGNAL_MAP_CFG, present);
        workspace.removeControllerFile(RDE_SIGNAL_MAP_BACKUP_CFG);

        manager->emitGetSignalMap();
        QTRY_VERIFY(manager->isSignalMapRead);
        QCOMPARE(manager->readMapList[BusInput].size(), 6);
        QVERIFY(manager->copyMapBackup());
        QVERIFY(manager->sendMapBackupToCtrl());
        QCOMPARE(workspace.controllerFile(RDE_SIGNAL_MAP_BACKUP_CFG), present);

        QVERIFY(manager->readMapParaBackup(QFINDTESTDATA("data/import/modules_backup.cfg"),
                                           modules));
        QVERIFY(BusFileDataManager::_isIllegalImportMap);
        QVERIFY(BusFileDataManager::_isConflictImportMap);
        QCOMPARE(describeRows(manager->conflictMapList[BusInput]), "Stop:bool:2#conveyor");
        QCOMPARE(describeRows(manager->conflictMapList[BusOutput]), "Alarm:bool:4@eip#conveyor");
        QCOMPARE(describeRows(manager->remapList[BusInput]), "Open:bool:9");
        QCOMPARE(describeRows(manager->remapList[BusOutput]), "Closed:bool:3");
        QCOMPARE(describeRows(manager->presentMapList[BusInput]), "Open:bool:1");
        QCOMPARE(describeRows(manager->presentMapList[BusOutput]), "Closed:bool:0");

        manager->handleImportMapData(MsgBox::returnValue(answer));
        QCOMPARE(names(manager->writeMapList[BusInput]), resultIn);
        QCOMPARE(names(manager->writeMapList[BusOutput]), resultOut);

        if (answer == 0) {
            // The screen keeps such a result apart from the controller's mapping.
            QVERIFY(manager->writeSendSignalMapCfg(otherLocalPath, otherControllerPath));
            QVERIFY(BusFileDataManager::sendFileToCtrl(otherControllerPath, otherLocalPath));
            QCOMPARE(workspace.controllerFile(otherControllerPath), expected);
            QCOMPARE(workspace.controllerFile(RDE_SIGNAL_MAP_CFG), present);
        } else {
            manager->mapList[BusInput] = manager->writeMapList[BusInput];
            manager->mapList[BusOutput] = manager->writeMapList[BusOutput];
            QVERIFY(manager->writeSendSignalMapCfg(TPU_SIGNAL_MAP_CFG, RDE_SIGNAL_MAP_CFG));
            QTRY_COMPARE(workspace.controllerFile(RDE_SIGNAL_MAP_CFG), expected);
            QTRY_COMPARE(names(manager->readMapList[BusInput]), resultIn);
        }
    }

    // The collision search and the merges visit only the rows that can meet;
    // they must give what the plain walk gives, gathered rows included.
    void indexedSearchMatchesPlainWalk()
    {
        QRandomGenerator random(20261122);
        manager->setSelfCraftWriteFuncFile("m1", FilePaths(), &BusFileDataManager::writePVIoFile);
        for (int round = 0; round < 400; ++round) {
            ImportState start;
            for (int dir = 0; dir < 2; ++dir) {
                const int presentCount = random.bounded(round % 10 == 0 ? 60 : 12);
                const int importCount = random.bounded(round % 10 == 0 ? 60 : 12);
                for (int i = 0; i < presentCount; ++i)
                    start.present[dir].append(randomRow(random, true));
                for (int i = 0; i < importCount; ++i) {
                    const FuncAndMapInfo row = randomRow(random, false);
                    start.imported[dir][row.fieldBus].append(row);
                }
                start.result[dir].append(randomRow(random, false));
            }

            ImportState plain = start;
            BusFileDataManager::clearSelfCraftMap();
            plainCollisionSearch(plain, 0);
            plainCollisionSearch(plain, 1);
            const QVector<FuncAndMapInfo> plainGathered = BusFileDataManager::getSelfCraftMap("m1");

            BusFileDataManager::clearSelfCraftMap();
            BusFileDataManager::_isConflictImportMap = false;
            for (int dir = 0; dir < 2; ++dir) {
                manager->readMapList[dir] = start.present[dir];
                manager->imBusMap[dir] = start.imported[dir];
                manager->checkGetConflictData(
                        BiBo(dir), manager->imBusMap[dir], manager->conflictMapList[dir],
                        manager->remapList[dir], manager->presentMapList[dir]);
            }
            QCOMPARE(BusFileDataManager::_isConflictImportMap, plain.conflict);
            QCOMPARE(fullRows(BusFileDataManager::getSelfCraftMap("m1")), fullRows(plainGathered));
            for (int dir = 0; dir < 2; ++dir) {
                QCOMPARE(fullMap(manager->imBusMap[dir]), fullMap(plain.imported[dir]));
                QCOMPARE(fullRows(manager->conflictMapList[dir]), fullRows(plain.collisions[dir]));
                QCOMPARE(fullRows(manager->remapList[dir]), fullRows(plain.remapped[dir]));
                QCOMPARE(fullRows(manager->presentMapList[dir]), fullRows(plain.presentRows[dir]));
            }

            const BusMap searched[2] = {manager->imBusMap[0], manager->imBusMap[1]};
            for (int answer : {0, 1, 2}) {
                ImportState merged = plain;
                plainMerge(merged, answer);
                for (int dir = 0; dir < 2; ++dir) {
                    manager->imBusMap[dir] = searched[dir];
                    manager->writeMapList[dir] = start.result[dir];
                    manager->conflictMapList[dir] = plain.collisions[dir];
                }
                manager->handleImportMapData(MsgBox::returnValue(answer));
                for (int dir = 0; dir < 2; ++dir) {
                    QCOMPARE(fullRows(manager->writeMapList[dir]), fullRows(merged.result[dir]));
                    QCOMPARE(fullMap(manager->imBusMap[dir]), fullMap(merged.imported[dir]));
                    QCOMPARE(fullRows(manager->conflictMapList[dir]),
                             fullRows(merged.collisions[dir]));
                }
            }
        }
    }
};

QTEST_GUILESS_MAIN(ImportTest)
#include "tst_import.moc"
