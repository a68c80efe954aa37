// Slave-device byte order (fetched, written flat, sent) and the PV IO reset (written indented).
#include "ManagerTest.h"
#include "PendantSim.h"
#include "TestWorkspace.h"

#include <QtTest>

namespace {

QByteArray fixture(const QString &name)
{
    return ManagerTest::fixture("slavedevice", name);
}

const QString readFailed = QStringLiteral("Failed to read file :fbslave.cfgx!");

} // namespace

class TestSlaveDevice : public QObject
{
    Q_OBJECT

private:
    TestWorkspace workspace;

private slots:
    void init()
    {
        TestWorkspace::resetSimulation();
        workspace.putControllerFile(RDE_FBSLAVE_CFGX, fixture("fbslave.cfgx"));
    }

    void endianRoundTrip()
    {
        // Flat output (no indentation, no escaping), then sent as it is.
        TestWorkspace::writeFile(TPU_FBSLAVE_CFGX, fixture("fbslave.cfgx"));
        QVERIFY(BusFileDataManager::writeAndSendFbslave("little"));
        const QByteArray little = fixture("fbslave_little_expected.cfgx");
        QCOMPARE(TestWorkspace::readFile(TPU_FBSLAVE_CFGX), little);
        QCOMPARE(workspace.controllerFile(RDE_FBSLAVE_CFGX), little);
        QString endian;
        QVERIFY(BusFileDataManager::getAndReadFbslave(endian));
        QCOMPARE(endian, QStringLiteral("little"));
        QCOMPARE(pendantsim::transferAttempts(), 2);

        // A failed send is silent; an unreadable local copy is not.
        pendantsim::failNextTransfers(3);
        QVERIFY(!BusFileDataManager::writeAndSendFbslave("little"));
        QCOMPARE(pendantsim::transferAttempts(), 5);
        QVERIFY(pendantsim::shownMessages().isEmpty());
        QFile::remove(TPU_FBSLAVE_CFGX);
        QVERIFY(!BusFileDataManager::writeAndSendFbslave("little"));
        QCOMPARE(ManagerTest::shownTexts(), QStringList{readFailed});
        QCOMPARE(pendantsim::transferAttempts(), 5);
    }

    void readFailures_data()
    {
        QTest::addColumn<QByteArray>("content");
        QTest::addColumn<int>("failures");
        QTest::addColumn<QString>("endian");
        QTest::addColumn<QString>("message");
        const auto add = [](const char *tag, const QByteArray &content, int failures,
                            const QString &endian, const QString &message) {
            QTest::newRow(tag) << content << failures << endian << message;
        };
        add("no endian element", "<fieldBusSlave><backend/></fieldBusSlave>", 0, "", "");
        add("third try succeeds", "", 2, "big", "");
        add("three tries fail", "", 3, "unchanged",
            "Failed to get file from controller:/fa/fbslave.cfgx!");
        // Unlike the pfs descriptions, only the load message.
        add("copy unreadable", "<fieldBusSlave><back", 0, "unchanged", readFailed);
    }

    void readFailures()
    {
        QFETCH(QByteArray, content);
        QFETCH(int, failures);
        QFETCH(QString, endian);
        QFETCH(QString, message);
        if (!content.isEmpty())
            workspace.putControllerFile(RDE_FBSLAVE_CFGX, content);
        pendantsim::failNextTransfers(failures);
        QString read = QStringLiteral("unchanged");
        QCOMPARE(BusFileDataManager::getAndReadFbslave(read), endian != "unchanged");
        QCOMPARE(read, endian);
        QCOMPARE(ManagerTest::shownTexts().join('\n'), message);
    }

    void pvIoReset()
    {
        BusFileDataManager manager;
        const QString path = workspace.root() + "/pv/pv_io.xml";
        TestWorkspace::writeFile(path, fixture("pv_io.xml"));
        // Start sits in two sections; Unknown in none; Other is not a section.
        QVector<FuncAndMapInfo> functions;
        for (const char *name : {"Start", "Sucker2", "Door", "Unknown"}) {
            functions.append(FuncAndMapInfo());
            functions.last().name = name;
        }
        QVERIFY(manager.writePVIoFile(functions, path));
        QCOMPARE(TestWorkspace::readFile(path), fixture("pv_io_expected.xml"));
        const QString missing = workspace.root() + "/pv/missing.xml";
        QVERIFY(!manager.writePVIoFile(functions, missing));
        QVERIFY(!QFile::exists(missing));
        QVERIFY(pendantsim::shownMessages().isEmpty());
    }
};

QTEST_GUILESS_MAIN(TestSlaveDevice)
#include "tst_slavedevice.moc"
