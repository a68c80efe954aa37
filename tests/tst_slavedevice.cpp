#include "BusFileDataManager.h"
#include "PendantSim.h"
#include "TestWorkspace.h"

#include <QtTest>

#include <memory>

namespace {

QString fixture(const QString &name)
{
    return QFINDTESTDATA(QStringLiteral("data/slavedevice/") + name);
}

QStringList shownTexts()
{
    QStringList texts;
    for (const pendantsim::ShownMessage &message : pendantsim::shownMessages())
        texts.append(message.text);
    return texts;
}

FuncAndMapInfo function(const QString &name)
{
    FuncAndMapInfo record;
    record.name = name;
    return record;
}

const QString fetchFailed = QStringLiteral("Failed to get file from controller:/fa/fbslave.cfgx!");
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
        workspace.putControllerFile(RDE_FBSLAVE_CFGX,
                                    TestWorkspace::readFile(fixture("fbslave.cfgx")));
    }

    void endianRoundTrip()
    {
        QString endian;
        QVERIFY(BusFileDataManager::getAndReadFbslave(endian));
        QCOMPARE(endian, QStringLiteral("big"));

        // Flat output (no indentation, no escaping), then sent as it is.
        QVERIFY(BusFileDataManager::writeAndSendFbslave("little"));
        const QByteArray expected =
                TestWorkspace::readFile(fixture("fbslave_little_expected.cfgx"));
        QCOMPARE(TestWorkspace::readFile(TPU_FBSLAVE_CFGX), expected);
        QCOMPARE(workspace.controllerFile(RDE_FBSLAVE_CFGX), expected);

        QVERIFY(BusFileDataManager::getAndReadFbslave(endian));
        QCOMPARE(endian, QStringLiteral("little"));
        QCOMPARE(pendantsim::transferAttempts(), 3);
        QVERIFY(pendantsim::shownMessages().isEmpty());
    }

    void readFailures_data()
    {
        QTest::addColumn<QByteArray>("content");
        QTest::addColumn<int>("failures");
        QTest::addColumn<bool>("result");
        QTest::addColumn<QString>("endian");
        QTest::addColumn<QStringList>("messages");

        QTest::newRow("no endian element")
                << QByteArray("<fieldBusSlave><backend/></fieldBusSlave>") << 0 << true << ""
                << QStringList{};
        QTest::newRow("third try succeeds") << QByteArray() << 2 << true << "big" << QStringList{};
        QTest::newRow("three tries fail")
                << QByteArray() << 3 << false << "unchanged" << QStringList{fetchFailed};
        // Unlike the pfs descriptions, only the load message.
        QTest::newRow("copy unreadable") << QByteArray("<fieldBusSlave><back") << 0 << false
                                         << "unchanged" << QStringList{readFailed};
    }

    void readFailures()
    {
        QFETCH(QByteArray, content);
        QFETCH(int, failures);
        QFETCH(bool, result);
        QFETCH(QString, endian);
        QFETCH(QStringList, messages);

        if (!content.isEmpty())
            workspace.putControllerFile(RDE_FBSLAVE_CFGX, content);
        pendantsim::failNextTransfers(failures);
        QString read = QStringLiteral("unchanged");
        QCOMPARE(BusFileDataManager::getAndReadFbslave(read), result);
        QCOMPARE(read, endian);
        QCOMPARE(shownTexts(), messages);
    }

    void writeFailures()
    {
        QFile::remove(TPU_FBSLAVE_CFGX);
        QVERIFY(!BusFileDataManager::writeAndSendFbslave("little"));
        QCOMPARE(shownTexts(), QStringList{readFailed});
        QCOMPARE(pendantsim::transferAttempts(), 0);

        // A failed send is silent.
        TestWorkspace::resetSimulation();
        TestWorkspace::writeFile(TPU_FBSLAVE_CFGX,
                                 TestWorkspace::readFile(fixture("fbslave.cfgx")));
        pendantsim::failNextTransfers(3);
        QVERIFY(!BusFileDataManager::writeAndSendFbslave("little"));
        QCOMPARE(pendantsim::transferAttempts(), 3);
        QVERIFY(pendantsim::shownMessages().isEmpty());
        QCOMPARE(TestWorkspace::readFile(TPU_FBSLAVE_CFGX),
                 TestWorkspace::readFile(fixture("fbslave_little_expected.cfgx")));
    }

    void pvIoReset()
    {
        std::unique_ptr<BusFileDataManager> manager(new BusFileDataManager());
        const QString path = workspace.root() + "/pv/pv_io.xml";
        TestWorkspace::writeFile(path, TestWorkspace::readFile(fixture("pv_io.xml")));

        // Start sits in two sections; Unknown in none; Other is not a section.
        QVERIFY(manager->writePVIoFile(
                {function("Start"), function("Sucker2"), function("Door"), function("Unknown")},
                path));
        QCOMPARE(TestWorkspace::readFile(path),
                 TestWorkspace::readFile(fixture("pv_io_expected.xml")));

        const QString missing = workspace.root() + "/pv/missing.xml";
        QVERIFY(!manager->writePVIoFile({function("Start")}, missing));
        QVERIFY(!QFile::exists(missing));
        QVERIFY(pendantsim::shownMessages().isEmpty());
    }
};

QTEST_GUILESS_MAIN(TestSlaveDevice)
#include "tst_slavedevice.moc"
