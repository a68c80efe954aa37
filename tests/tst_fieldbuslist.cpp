#include "BusFileDataManager.h"
#include "FileSizeLimit.h"
#include "PendantSim.h"
#include "TestWorkspace.h"

#include <QFile>
#include <QSignalSpy>
#include <QtTest>

namespace {

// "name/shortname/on" per bus, separated by ";".
QString describe(const QVector<BusName> &buses)
{
    QStringList parts;
    for (const BusName &bus : buses)
        parts << bus.name + '/' + bus.shortName + '/' + (bus.enable ? "on" : "off");
    return parts.join(';');
}

QByteArray busEntry(const char *name, const char *shortName, const char *enable)
{
    return QByteArray("<Bus name=\"") + name + "\" shortname=\"" + shortName + "\"><enable>"
            + enable + "</enable></Bus>";
}

class RecordingObserver : public BusObserver
{
public:
    RecordingObserver() { setIsFieldXml(true); }
    void onFileNotify(FileHandle handle, const QString &fileKey, bool isSuccess) override
    {
        calls << QStringLiteral("%1 %2 %3").arg(handle).arg(fileKey).arg(isSuccess);
    }
    QStringList calls;
};

} // namespace

class FieldbusListTest : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void parse_data();
    void parse();
    void readFixtureAndFilter_data();
    void readFixtureAndFilter();
    void readFailureKeepsState_data();
    void readFailureKeepsState();
    void busInfoMapSurvivesLaterReads();
    void busIndex_data();
    void busIndex();

    void writeSwitchesOneBus();
    void writeLeavesUnlistedBuses();
    void writeRefusesUnreadableFile_data();
    void writeRefusesUnreadableFile();
    void writeWithoutRootSendsUnchanged();
    void writeSaveFailureKeepsFile();

    void fetchReadWriteSendThroughWorker();

private:
    QByteArray fixture(const QString &name) const
    {
        return TestWorkspace::readFile(QFINDTESTDATA("data/fieldbuslist/" + name));
    }

    TestWorkspace workspace;
    BusFileDataManager *manager = nullptr;
};

void FieldbusListTest::init()
{
    TestWorkspace::resetSimulation();
    QFile::remove(TPU_FIELDBUS_XML);
    workspace.removeControllerFile(RDE_FIELDBUS_XML);
    manager = new BusFileDataManager();
}

void FieldbusListTest::cleanup()
{
    delete manager;
    manager = nullptr;
}

void FieldbusListTest::parse_data()
{
    QTest::addColumn<QByteArray>("xml");
    QTest::addColumn<QString>("buses");
    QTest::addColumn<QString>("shortNames");
    QTest::addColumn<bool>("freeBus");

    const QString fixed = "ModbusTcpSlave/mtcp/on";
    QTest::newRow("empty root") << QByteArray("<FieldbusSettingConfig/>") << fixed << "mtcp"
                                << false;
    QTest::newRow("no root") << QByteArray("<Other>" + busEntry("Mes", "mes", "1") + "</Other>")
                             << fixed << "mtcp" << false;
    QTest::newRow("missing attributes and enable")
            << QByteArray("<FieldbusSettingConfig><Bus/><Bus name=\"EthernetIPSlave\"><enable>1"
                          "</enable></Bus><Bus shortname=\"PNM\"/></FieldbusSettingConfig>")
            << fixed + ";//off;EthernetIPSlave//on;/pnm/off"
            << "mtcp,,,pnm" << false;
    QTest::newRow("boolean texts") << QByteArray(
            "<FieldbusSettingConfig>" + busEntry("A", "a", "t") + busEntry("B", "b", "Yes")
            + busEntry("C", "c", "2") + busEntry("D", "d", "false") + busEntry("E", "e", "on")
            + busEntry("F", "f", " 1") + "</FieldbusSettingConfig>")
                                   << fixed + ";A/a/on;B/b/on;C/c/off;D/d/off;E/e/off;F/f/off"
                                   << "mtcp,a,b,c,d,e,f" << false;
    QTest::newRow("short name lower case, switched off still listed")
            << QByteArray("<FieldbusSettingConfig>" + busEntry("EtherCatSlave", "EthCat", "0")
                          + "</FieldbusSettingConfig>")
            << fixed + ";EtherCatSlave/ethcat/off"
            << "mtcp,ethcat" << false;
    QTest::newRow("signalless buses")
            << QByteArray("<FieldbusSettingConfig>" + busEntry("Mes", "mes", "1")
                          + busEntry("FinsTcp", "fins", "1") + busEntry("ProfibusSlave", "pbs", "1")
                          + busEntry("FreeBus", "free", "1") + busEntry("mes", "mes2", "1")
                          + busEntry("freebus", "free2", "0") + "</FieldbusSettingConfig>")
            << fixed
                    + ";Mes/mes/on;FinsTcp/fins/on;ProfibusSlave/pbs/on;FreeBus/free/on;mes/mes2/"
                      "on;"
                      "freebus/free2/off"
            << "mtcp,mes2,free2" << true;
    QTest::newRow("listed ModbusTcpSlave doubles")
            << QByteArray("<FieldbusSettingConfig>" + busEntry("ModbusTcpSlave", "MTCP", "0")
                          + "</FieldbusSettingConfig>")
            << fixed + ";ModbusTcpSlave/mtcp/off"
            << "mtcp,mtcp" << false;
    QTest::newRow("only element children")
            << QByteArray("<FieldbusSettingConfig>text<?note x?>" + busEntry("Mes", "mes", "1")
                          + "</FieldbusSettingConfig>")
            << fixed + ";Mes/mes/on"
            << "mtcp" << false;
}

void FieldbusListTest::parse()
{
    QFETCH(QByteArray, xml);
    pugi::xml_document doc;
    QVERIFY(doc.load_buffer(xml.constData(), size_t(xml.size()), pugi::parse_pi));

    QVERIFY(manager->parseFieldbusXml(doc));
    QTEST(describe(manager->busList), "buses");
    QTEST(manager->busShortNames.join(','), "shortNames");
    QTEST(manager->isOpenFreeBus(), "freeBus");
    // The map holds the file's entries under their names, the fixed entry excluded.
    const QVector<BusName> fromFile = manager->busList.mid(1);
    for (const BusName &bus : fromFile)
        QVERIFY(manager->busInfoMap.contains(bus.name));
    if (fromFile.isEmpty())
        QVERIFY(manager->getAllBusName().isEmpty());
}

void FieldbusListTest::readFixtureAndFilter_data()
{
    QTest::addColumn<bool>("withMes");
    QTest::addColumn<bool>("onlyEnabled");
    QTest::addColumn<QString>("names");

    QTest::newRow("all") << false << false
                         << "ModbusTcpSlave,EtherCatSlave,EthernetIPSlave,ModbusTcpMaster,"
                            "ProfinetMaster";
    QTest::newRow("enabled") << false << true << "ModbusTcpSlave,EtherCatSlave,ModbusTcpMaster";
    QTest::newRow("all with Mes")
            << true << false
            << "ModbusTcpSlave,EtherCatSlave,EthernetIPSlave,ModbusTcpMaster,Mes,ProfinetMaster";
    QTest::newRow("enabled with Mes")
            << true << true << "ModbusTcpSlave,EtherCatSlave,ModbusTcpMaster,Mes";
}

void FieldbusListTest::readFixtureAndFilter()
{
    QFETCH(bool, withMes);
    QFETCH(bool, onlyEnabled);
    TestWorkspace::writeFile(TPU_FIELDBUS_XML, fixture("fieldbus.xml"));

    QVERIFY(manager->readFieldbusXml());
    QCOMPARE(manager->busShortNames.join(','), QString("mtcp,ethcat,eip,mbc,pnm"));
    QVERIFY(manager->isOpenFreeBus());
    QCOMPARE(manager->getAllBusName().size(), 8);

    QStringList names;
    for (const BusName &bus : manager->getBusNameList(withMes, onlyEnabled))
        names << bus.name;
    QTEST(names.join(','), "names");
}

void FieldbusListTest::readFailureKeepsState_data()
{
    QTest::addColumn<bool>("present");
    QTest::addColumn<QByteArray>("content");

    QTest::newRow("missing file") << false << QByteArray();
    QTest::newRow("zero bytes") << true << QByteArray();
    QTest::newRow("not XML") << true << QByteArray("fieldbus = on\n");
}

void FieldbusListTest::readFailureKeepsState()
{
    QFETCH(bool, present);
    QFETCH(QByteArray, content);
    TestWorkspace::writeFile(TPU_FIELDBUS_XML, fixture("fieldbus.xml"));
    QVERIFY(manager->readFieldbusXml());
    const QString buses = describe(manager->busList);
    const QStringList shortNames = manager->busShortNames;

    QFile::remove(TPU_FIELDBUS_XML);
    if (present)
        TestWorkspace::writeFile(TPU_FIELDBUS_XML, content);

    QVERIFY(!manager->readFieldbusXml());
    QCOMPARE(describe(manager->busList), buses);
    QCOMPARE(manager->busShortNames, shortNames);
    QCOMPARE(manager->getAllBusName().size(), 8);
    QVERIFY(manager->isOpenFreeBus());
}

void FieldbusListTest::busInfoMapSurvivesLaterReads()
{
    TestWorkspace::writeFile(TPU_FIELDBUS_XML, fixture("fieldbus.xml"));
    QVERIFY(manager->readFieldbusXml());
    TestWorkspace::writeFile(TPU_FIELDBUS_XML,
                             "<FieldbusSettingConfig>" + busEntry("EtherCatSlave", "ethcat", "0")
                                     + "</FieldbusSettingConfig>");
    QVERIFY(manager->readFieldbusXml());

    QCOMPARE(describe(manager->busList),
             QString("ModbusTcpSlave/mtcp/on;EtherCatSlave/ethcat/off"));
    // Entries gone from the file stay until setBusInfo replaces them, and so
    // does the free-bus state.
    const QMap<QString, BusName> all = manager->getAllBusName();
    QCOMPARE(all.size(), 8);
    QVERIFY(!all.value("EtherCatSlave").enable);
    QVERIFY(all.value("ModbusTcpMaster").enable);
    QVERIFY(manager->isOpenFreeBus());
}

void FieldbusListTest::busIndex_data()
{
    QTest::addColumn<QString>("shortName");
    QTest::addColumn<int>("index");

    QTest::newRow("upper case") << "ETHCAT" << 1;
    QTest::newRow("last") << "dnm" << 9;
    QTest::newRow("unknown") << "ecs" << -1;
}

void FieldbusListTest::busIndex()
{
    QFETCH(QString, shortName);
    QTEST(manager->getBusIndex(shortName), "index");
}

void FieldbusListTest::writeSwitchesOneBus()
{
    TestWorkspace::writeFile(TPU_FIELDBUS_XML, fixture("fieldbus.xml"));
    QVERIFY(manager->readFieldbusXml());
    QMap<QString, BusName> buses = manager->getAllBusName();
    buses["EtherCatSlave"].enable = false;
    manager->setBusInfo(buses);
    QSignalSpy sent(manager, &BusFileDataManager::signalSendFieldbus);

    QVERIFY(manager->writeSendFieldbusXml());
    QCOMPARE(sent.count(), 1);
    QCOMPARE(TestWorkspace::readFile(TPU_FIELDBUS_XML), fixture("fieldbus_ethercat_off.xml"));
    // The file is read again only when it is fetched again.
    QVERIFY(describe(manager->busList).contains("EtherCatSlave/ethcat/on"));
}

void FieldbusListTest::writeLeavesUnlistedBuses()
{
    TestWorkspace::writeFile(TPU_FIELDBUS_XML, fixture("fieldbus_texts.xml"));
    manager->setBusInfo({{"EthernetIPSlave", BusName{"EthernetIPSlave", "eip", true}},
                         {"FreeBus", BusName{QString(), "free", false}}});

    QVERIFY(manager->writeSendFieldbusXml());
    QCOMPARE(TestWorkspace::readFile(TPU_FIELDBUS_XML), fixture("fieldbus_texts_written.xml"));
}

void FieldbusListTest::writeRefusesUnreadableFile_data()
{
    QTest::addColumn<bool>("present");
    QTest::addColumn<QByteArray>("content");

    QTest::newRow("missing file") << false << QByteArray();
    QTest::newRow("not XML") << true << QByteArray("<FieldbusSettingConfig>");
}

void FieldbusListTest::writeRefusesUnreadableFile()
{
    QFETCH(bool, present);
    QFETCH(QByteArray, content);
    if (present)
        TestWorkspace::writeFile(TPU_FIELDBUS_XML, content);
    manager->setBusInfo({{"Mes", BusName{"Mes", "mes", true}}});
    QSignalSpy sent(manager, &BusFileDataManager::signalSendFieldbus);

    QVERIFY(!manager->writeSendFieldbusXml());
    QCOMPARE(sent.count(), 0);
    QCOMPARE(QFile::exists(TPU_FIELDBUS_XML), present);
    QCOMPARE(TestWorkspace::readFile(TPU_FIELDBUS_XML), content);
}

void FieldbusListTest::writeWithoutRootSendsUnchanged()
{
    TestWorkspace::writeFile(TPU_FIELDBUS_XML,
                             "<Other>" + busEntry("Mes", "mes", "1") + "</Other>");
    manager->setBusInfo({{"Mes", BusName{"Mes", "mes", false}}});
    QSignalSpy sent(manager, &BusFileDataManager::signalSendFieldbus);

    QVERIFY(manager->writeSendFieldbusXml());
    QCOMPARE(sent.count(), 1);
    QVERIFY(TestWorkspace::readFile(TPU_FIELDBUS_XML).contains("<enable>1</enable>"));
}

void FieldbusListTest::writeSaveFailureKeepsFile()
{
    // Beyond QFileDevice's 16 KiB write buffer, where a short write is seen.
    const QByteArray before = "<FieldbusSettingConfig>" + busEntry("Mes", "mes", "1")
            + "<Bus name=\"Big\"><note>" + QByteArray(20000, 'x')
            + "</note></Bus></FieldbusSettingConfig>";
    TestWorkspace::writeFile(TPU_FIELDBUS_XML, before);
    QVERIFY(manager->readFieldbusXml());
    QSignalSpy sent(manager, &BusFileDataManager::signalSendFieldbus);

    QTest::ignoreMessage(QtDebugMsg, "Could not save XML file");
    bool written = true;
    {
        FileSizeLimit full(16);
        written = manager->writeSendFieldbusXml();
    }
    QVERIFY(!written);
    QCOMPARE(sent.count(), 0);
    QCOMPARE(TestWorkspace::readFile(TPU_FIELDBUS_XML), before);
}

void FieldbusListTest::fetchReadWriteSendThroughWorker()
{
    RecordingObserver observer;
    manager->attach(&observer);
    workspace.putControllerFile(RDE_FIELDBUS_XML, fixture("fieldbus.xml"));

    manager->emitGetFieldXml();
    QTRY_COMPARE(observer.calls, QStringList{"0 " + RDE_FIELDBUS_XML + " 1"});
    QCOMPARE(manager->getBusNameList(false, true).size(), 3);

    QMap<QString, BusName> buses = manager->getAllBusName();
    buses["EtherCatSlave"].enable = false;
    manager->setBusInfo(buses);
    QVERIFY(manager->writeSendFieldbusXml());
    QTRY_COMPARE(observer.calls.size(), 2);
    QCOMPARE(observer.calls.last(), "1 " + RDE_FIELDBUS_XML + " 1");
    QCOMPARE(workspace.controllerFile(RDE_FIELDBUS_XML), fixture("fieldbus_ethercat_off.xml"));
    // After the send the manager reads its file again.
    QCOMPARE(describe(manager->getBusNameList(false, true)),
             QString("ModbusTcpSlave/mtcp/on;ModbusTcpMaster/mbc/on"));
    manager->detach(&observer);
}

QTEST_GUILESS_MAIN(FieldbusListTest)
#include "tst_fieldbuslist.moc"
