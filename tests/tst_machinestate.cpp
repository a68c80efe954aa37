// Edit permission, machine state, restarts and the two waits.
#include "BusFileDataManager.h"
#include "PendantSim.h"
#include "TestWorkspace.h"

#include <QElapsedTimer>
#include <QtTest>

namespace {

pendantsim::ShownMessage onlyMessage()
{
    const QList<pendantsim::ShownMessage> shown = pendantsim::shownMessages();
    return shown.size() == 1 ? shown[0] : pendantsim::ShownMessage{-1, QString(), -1};
}

} // namespace

class MachineStateTest : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        TestWorkspace::resetSimulation();
        pendantsim::setRteAuthority(true);
        pendantsim::setRobotRunning(false);
        pendantsim::setServoOn(false);
        BusFileDataManager::_editMapModuName.clear();
        BusFileDataManager::profiSafeStatus = -1;
        g_imIoType = IoTypeNone;
    }

    void refusalsShowTheirMessage_data()
    {
        QTest::addColumn<QString>("check");
        QTest::addColumn<QString>("text");
        QTest::addColumn<int>("type");
        QTest::addColumn<int>("buttons");
        QTest::newRow("editing") << "editing"
                                 << "Weld is in editing mode,\n please exit and try again!" << 0
                                 << 1;
        QTest::newRow("authority") << "authority"
                                   << "Please get the RTE authority, and retry!" << 1 << 1;
        QTest::newRow("running") << "running"
                                 << "Please turn off the servo first!" << 1 << 1;
        QTest::newRow("servo") << "servo"
                               << "Please turn off the servo first!" << 1 << 1;
        QTest::newRow("fetch error") << "fetch error"
                                     << "Failed to get file from controller:/fa/x.cfg!" << 2 << 1;
    }

    void refusalsShowTheirMessage()
    {
        QFETCH(QString, check);
        QFETCH(QString, text);
        QFETCH(int, type);
        QFETCH(int, buttons);
        BusFileDataManager *manager = BusFileDataManager::getInstance();

        // Allowed: no message at all.
        QVERIFY(BusFileDataManager::isEditable());
        QVERIFY(manager->isHasRteAuthority());
        QVERIFY(BusFileDataManager::isRebootRde());
        QVERIFY(pendantsim::shownMessages().isEmpty());

        bool answer = true;
        if (check == "editing") {
            BusFileDataManager::_editMapModuName = QStringLiteral("Weld");
            answer = BusFileDataManager::isEditable();
        } else if (check == "authority") {
            pendantsim::setRteAuthority(false);
            answer = manager->isHasRteAuthority();
        } else if (check == "running") {
            pendantsim::setRobotRunning(true);
            answer = BusFileDataManager::isRebootRde();
        } else if (check == "servo") {
            pendantsim::setServoOn(true);
            answer = BusFileDataManager::isRebootRde();
        } else {
            BusFileDataManager::getErrorMsg(QStringLiteral("/fa/x.cfg"));
            answer = false;
        }
        QVERIFY(!answer);
        const pendantsim::ShownMessage shown = onlyMessage();
        QCOMPARE(shown.text, text);
        QCOMPARE(shown.type, type);
        QCOMPARE(shown.buttons, buttons);
    }

    void mapEditAsksForRestartAfterImport_data()
    {
        QTest::addColumn<int>("imported");
        QTest::addColumn<int>("asked");
        QTest::addColumn<int>("answer");
        QTest::addColumn<bool>("editable");
        QTest::addColumn<bool>("reboots");
        QTest::newRow("other type") << int(IoTypeIo) << int(IoTypeFieldbus) << 1 << true << false;
        QTest::newRow("same type, yes") << int(IoTypeIo) << int(IoTypeIo) << 1 << false << true;
        QTest::newRow("same type, no") << int(IoTypeIo) << int(IoTypeIo) << 2 << false << false;
        QTest::newRow("all types") << int(IoTypeAll) << int(IoTypeFieldbus) << 0 << false << false;
        QTest::newRow("all types asked for none")
                << int(IoTypeAll) << int(IoTypeNone) << 0 << false << false;
    }

    void mapEditAsksForRestartAfterImport()
    {
        QFETCH(int, imported);
        QFETCH(int, asked);
        QFETCH(int, answer);
        QFETCH(bool, editable);
        QFETCH(bool, reboots);
        g_imIoType = IoType(imported);
        pendantsim::setMsgBoxAnswers({answer});
        QCOMPARE(BusFileDataManager::isMapFuncEdit(IoType(asked)), editable);
        QCOMPARE(pendantsim::rebootRequests(), reboots ? 1 : 0);
        const QList<pendantsim::ShownMessage> shown = pendantsim::shownMessages();
        if (editable) {
            QVERIFY(shown.isEmpty());
            return;
        }
        QCOMPARE(shown.size(), reboots ? 2 : 1);
        QCOMPARE(shown[0].text,
                 QStringLiteral("The mapping file has been updated and needs to be restarted to "
                                "take effect.\n Do you want to restart now?"));
        QCOMPARE(shown[0].type, 0);
        QCOMPARE(shown[0].buttons, 3);
        if (reboots) {
            QCOMPARE(shown[1].text,
                     QStringLiteral("Please close and reopen the teaching pendant."));
            QCOMPARE(shown[1].type, 0);
            QCOMPARE(shown[1].buttons, 1);
        }
    }

    void profiSafeStatus_data()
    {
        QTest::addColumn<QByteArray>("content");
        QTest::addColumn<int>("status");
        QTest::newRow("enabled") << QByteArray("a=1\nelec_man.enable_profisafe = 1\n") << 1;
        QTest::newRow("any 1 counts") << QByteArray("elec_man.enable_profisafe = 10\n") << 1;
        QTest::newRow("disabled") << QByteArray("elec_man.enable_profisafe = 0\n") << 0;
        QTest::newRow("later line") << QByteArray("elec_man.enable_profisafe = 0\n"
                                                  "elec_man.enable_profisafe = 1\n")
                                    << 1;
        QTest::newRow("1 elsewhere") << QByteArray("x = 1\nelec_man.enable_profisafe = 0\n") << 0;
        QTest::newRow("no key") << QByteArray("other = 1\n") << 0;
        QTest::newRow("key in other case") << QByteArray("ELEC_MAN.ENABLE_PROFISAFE=1\n") << 0;
    }

    void profiSafeStatus()
    {
        QFETCH(QByteArray, content);
        QFETCH(int, status);
        workspace.putControllerFile(RDE_CONTROLLER_CFG, content);
        QCOMPARE(BusFileDataManager::checkProfiSAFEStatus(), status);
        // Known once, never fetched again.
        workspace.removeControllerFile(RDE_CONTROLLER_CFG);
        QCOMPARE(BusFileDataManager::checkProfiSAFEStatus(), status);
        QCOMPARE(pendantsim::transferAttempts(), 1);
    }

    void profiSafeStatusRetriesWhileUnreachable()
    {
        pendantsim::setConnected(false);
        QCOMPARE(BusFileDataManager::checkProfiSAFEStatus(), -1);
        QCOMPARE(BusFileDataManager::checkProfiSAFEStatus(), -1);
        QCOMPARE(pendantsim::transferAttempts(), 2); // one try per call, no retry
        QVERIFY(pendantsim::shownMessages().isEmpty());
        pendantsim::setConnected(true);
        workspace.putControllerFile(RDE_CONTROLLER_CFG, "elec_man.enable_profisafe=1\n");
        QCOMPARE(BusFileDataManager::checkProfiSAFEStatus(), 1);
    }

    void rebootRobotIgnoresItsArgument()
    {
        BusFileDataManager::rebootRobot(false);
        QCOMPARE(pendantsim::rebootRequests(), 1);
        QCOMPARE(onlyMessage().text,
                 QStringLiteral("Please close and reopen the teaching pendant."));
        BusFileDataManager::rebootTpu(true);
        QCOMPARE(pendantsim::rebootRequests(), 1);
    }

    void waits()
    {
        QElapsedTimer timer;
        timer.start();
        BusFileDataManager::delay_BMSec(0);
        BusFileDataManager::delay_MSec(0);
        QVERIFY(timer.elapsed() < 50);

        bool delivered = false;
        QTimer::singleShot(5, [&] { delivered = true; });
        BusFileDataManager::delay_BMSec(30);
        QVERIFY(!delivered); // blocking: no events
        timer.restart();
        BusFileDataManager::delay_MSec(30);
        QVERIFY(delivered);
        QVERIFY(timer.elapsed() >= 29);
    }

private:
    TestWorkspace workspace;
};

QTEST_GUILESS_MAIN(MachineStateTest)
#include "tst_machinestate.moc"
