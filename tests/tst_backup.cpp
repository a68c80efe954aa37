// Mapping backup: copying and sending the backup file, reading a mapping file
// into the import, and turning one into the lists the mapping writer writes.
#include "BusFileDataManager.h"
#include "ImportTestData.h"
#include "PendantSim.h"
#include "TestWorkspace.h"

#include <QDir>
#include <QtTest>

namespace {
const QString otherLocalPath = TPU_FIELDBUS_DIR + QStringLiteral("/mapping_without_pv.cfg");
}

class BackupTest : public QObject
{
    Q_OBJECT

private:
    TestWorkspace workspace;
    BusFileDataManager *manager = nullptr;

private slots:
    void init()
    {
        TestWorkspace::resetSimulation();
        BusFileDataManager::_isIllegalImportMap = false;
        BusFileDataManager::_isConflictImportMap = false;
        QDir(workspace.localDir()).removeRecursively();
        QDir().mkpath(workspace.localDir());
        manager = new BusFileDataManager();
        configureController(manager);
    }

    void cleanup()
    {
        delete manager;
        manager = nullptr;
    }

    void copyBackup()
    {
        TestWorkspace::writeFile(TPU_SIGNAL_MAP_BACKUP_CFG, "older backup");
        QTest::ignoreMessage(QtDebugMsg,
                             "copyMapBackup() ../Application/fieldbus/signal_mapping.cfg does "
                             "not exist!");
        QVERIFY(!manager->copyMapBackup());
        QCOMPARE(TestWorkspace::readFile(TPU_SIGNAL_MAP_BACKUP_CFG), QByteArray("older backup"));

        TestWorkspace::writeFile(TPU_SIGNAL_MAP_CFG, "#System_Input:\n#System_Output:\n");
        QVERIFY(manager->copyMapBackup());
        QCOMPARE(TestWorkspace::readFile(TPU_SIGNAL_MAP_BACKUP_CFG),
                 QByteArray("#System_Input:\n#System_Output:\n"));
    }

    void copyBackupOntoFolder()
    {
        TestWorkspace::writeFile(TPU_SIGNAL_MAP_CFG, "#System_Input:\n");
        TestWorkspace::writeFile(TPU_SIGNAL_MAP_BACKUP_CFG + "/blocker", "x");
        QTest::ignoreMessage(QtDebugMsg,
                             "copyMapBackup(): ../Application/fieldbus/signal_mapping_backup.cfg "
                             "remove file failed!");
        QTest::ignoreMessage(QtDebugMsg,
                             "copyMapBackup(): ../Application/fieldbus/signal_mapping_backup.cfg "
                             "Copy file failed!");
        QVERIFY(!manager->copyMapBackup());
    }

    void sendBackup()
    {
        TestWorkspace::writeFile(TPU_SIGNAL_MAP_BACKUP_CFG, "backup bytes");
        QVERIFY(manager->sendMapBackupToCtrl());
        QCOMPARE(workspace.controllerFile(RDE_SIGNAL_MAP_BACKUP_CFG), QByteArray("backup bytes"));

        // One attempt, no retry and no message.
        pendantsim::resetCounters();
        pendantsim::setConnected(false);
        QVERIFY(!manager->sendMapBackupToCtrl());
        QCOMPARE(pendantsim::transferAttempts(), 1);
        QVERIFY(pendantsim::shownMessages().isEmpty());
    }

    void readBackup()
    {
        QVERIFY(manager->readMapParaBackup(QFINDTESTDATA("data/backup/stray_lines.cfg"),
                                           {"gripper"}));
        QCOMPARE(manager->imModuleList, QStringList{"gripper"});
        QCOMPARE(describeRows(manager->imBusMap[BusInput].value("mtcp")), "Open:bool:3");
        QCOMPARE(describeRows(manager->imBusMap[BusOutput].value("mtcp")), "Lamp:bool:2");
        // The EtherCAT row was dropped by the cleaning.
        QCOMPARE(manager->imBusMap[BusInput].keys(), QStringList{"mtcp"});
        QVERIFY(BusFileDataManager::_isIllegalImportMap);

        QVERIFY(manager->readMapParaBackup(QFINDTESTDATA("data/backup/stray_lines.cfg"), {}));
        QVERIFY(manager->imBusMap[BusInput].isEmpty() && manager->imBusMap[BusOutput].isEmpty());
        QVERIFY(!BusFileDataManager::_isIllegalImportMap);
    }

    void unreadableFileChangesNothing_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::newRow("missing") << QByteArray();
        QTest::newRow("empty") << QByteArray("");
    }

    void unreadableFileChangesNothing()
    {
        QFETCH(QByteArray, bytes);
        const QString path = TPU_FIELDBUS_DIR + "/unreadable.cfg";
        if (!bytes.isNull())
            TestWorkspace::writeFile(path, bytes);
        manager->imModuleList = QStringList{"welder"};
        manager->imBusMap[BusInput]["mtcp"] = mappingRows("Arc:bool:3");
        manager->setMapData(mappingRows("Old:bool:1"), {});
        for (bool cleaned : {true, false}) {
            QVERIFY(cleaned ? !manager->readMapParaBackup(path, {"gripper"})
                            : !manager->delPvMapParaBackup(path, {"gripper"}));
            QCOMPARE(manager->imModuleList, QStringList{"welder"});
            QCOMPARE(describeRows(manager->imBusMap[BusInput].value("mtcp")), "Arc:bool:3");
            QCOMPARE(describeRows(manager->writeMapList[BusInput]), "Old:bool:1");
        }
    }

    // Without the process-variable layout, uncleaned, written elsewhere and not sent.
    void mappingWithoutPvLayout()
    {
        QSignalSpy sends(manager, SIGNAL(signalSendSignalMap(QString, QString)));
        manager->setMapData(mappingRows("Old:bool:1"), mappingRows("Old:bool:2"));
        QVERIFY(manager->delPvMapParaBackup(QFINDTESTDATA("data/import/modules_backup.cfg"),
                                            {"PV_layout"}));
        QVERIFY(!BusFileDataManager::_isIllegalImportMap);
        QVERIFY(manager->writeSendSignalMapCfg(otherLocalPath, RDE_SIGNAL_MAP_CFG));
        QCOMPARE(TestWorkspace::readFile(otherLocalPath),
                 TestWorkspace::readFile(QFINDTESTDATA("data/backup/without_pv_layout.cfg")));
        QCOMPARE(sends.count(), 0);
        QVERIFY(manager->mapList[BusInput].isEmpty());
    }
};

QTEST_GUILESS_MAIN(BackupTest)
#include "tst_backup.moc"
