// Mapping backup: copying and sending the backup file, reading a mapping file
// into the import, and turning one into the lists the mapping writer writes.
#include "ImportTestData.h"
#include "ManagerTest.h"
#include "MappingRows.h"
#include "PendantSim.h"

#include <QtTest>

class BackupTest : public ManagerTest
{
    Q_OBJECT

public:
    BackupTest()
        : ManagerTest("backup")
    { }

private:
    void prepare() override { configureController(manager); }

private slots:
    void copyAndSendBackup()
    {
        TestWorkspace::writeFile(TPU_SIGNAL_MAP_BACKUP_CFG, "older backup");
        QTest::ignoreMessage(QtDebugMsg,
                             "copyMapBackup() ../Application/fieldbus/signal_mapping.cfg does "
                             "not exist!");
        QVERIFY(!manager->copyMapBackup());
        QVERIFY(manager->sendMapBackupToCtrl());
        QCOMPARE(workspace.controllerFile(RDE_SIGNAL_MAP_BACKUP_CFG), QByteArray("older backup"));

        TestWorkspace::writeFile(TPU_SIGNAL_MAP_CFG, "mapping");
        QVERIFY(manager->copyMapBackup());
        QCOMPARE(TestWorkspace::readFile(TPU_SIGNAL_MAP_BACKUP_CFG), QByteArray("mapping"));

        // One attempt, no retry and no message.
        pendantsim::resetCounters();
        pendantsim::setConnected(false);
        QVERIFY(!manager->sendMapBackupToCtrl());
        QCOMPARE(pendantsim::transferAttempts(), 1);
        QVERIFY(pendantsim::shownMessages().isEmpty());

        // A folder in the backup's place can be neither removed nor replaced.
        QFile::remove(TPU_SIGNAL_MAP_BACKUP_CFG);
        TestWorkspace::writeFile(TPU_SIGNAL_MAP_BACKUP_CFG + "/blocker", "x");
        const QByteArray log = "copyMapBackup(): ../Application/fieldbus/signal_mapping_backup.cfg";
        QTest::ignoreMessage(QtDebugMsg, QByteArray(log + " remove file failed!").constData());
        QTest::ignoreMessage(QtDebugMsg, QByteArray(log + " Copy file failed!").constData());
        QVERIFY(!manager->copyMapBackup());
    }

    // Earlier imports go, lines before the first section are ignored, blanks and tabs around a
    // line do not matter, the cleaning drops the EtherCAT row; an unreadable file changes nothing.
    void readBackup()
    {
        manager->imBusMap[BusInput]["eip"] = rows("Stale@eip=9");
        QVERIFY(manager->readMapParaBackup(QFINDTESTDATA("data/backup/stray_lines.cfg"),
                                           {"gripper"}));
        manager->setMapData(rows("Old=1"), {});
        TestWorkspace::writeFile("empty.cfg", "");
        for (const QString path : {"missing.cfg", "empty.cfg"}) {
            QVERIFY(!manager->readMapParaBackup(path, {"welder"}));
            QVERIFY(!manager->delPvMapParaBackup(path, {"welder"}));
        }
        QCOMPARE(manager->imModuleList, QStringList{"gripper"});
        QCOMPARE(manager->imBusMap[BusInput].keys(), QStringList{"mtcp"});
        QCOMPARE(describe(manager->imBusMap[BusInput]["mtcp"]), "Open=3");
        QCOMPARE(describe(manager->imBusMap[BusOutput]["mtcp"]), "Lamp=2");
        QCOMPARE(describe(manager->writeMapList[BusInput]), "Old=1");
    }

    // Without the process-variable layout, uncleaned, written elsewhere and not sent.
    void mappingWithoutPvLayout()
    {
        const QString otherLocalPath = TPU_FIELDBUS_DIR + "/mapping_without_pv.cfg";
        QSignalSpy sends(manager, SIGNAL(signalSendSignalMap(QString, QString)));
        manager->setMapData(rows("Old=1"), rows("Old=2"));
        QVERIFY(manager->delPvMapParaBackup(QFINDTESTDATA("data/import/modules_backup.cfg"),
                                            {"PV_layout"}));
        QVERIFY(manager->writeSendSignalMapCfg(otherLocalPath, RDE_SIGNAL_MAP_CFG));
        QCOMPARE(TestWorkspace::readFile(otherLocalPath), fixture("without_pv_layout.cfg"));
        QCOMPARE(sends.count(), 0);
    }
};

QTEST_GUILESS_MAIN(BackupTest)
#include "tst_backup.moc"
