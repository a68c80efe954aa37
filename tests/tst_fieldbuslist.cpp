#include "FileSizeLimit.h"
#include "ManagerTest.h"
#include "RecordingObserver.h"

#include <QSignalSpy>
#include <QtTest>

#include <optional>

namespace {

// "name/shortname/on" per bus, separated by ";".
QString describe(const QVector<BusName> &buses)
{
    QStringList parts;
    for (const BusName &bus : buses)
        parts << bus.name + '/' + bus.shortName + '/' + (bus.enable ? "on" : "off");
    return parts.join(';');
}

QByteArray bus(const char *name, const char *shortName, const char *enable)
{
    return QByteArray("<Bus name=\"") + name + "\" shortname=\"" + shortName + "\"><enable>"
            + enable + "</enable></Bus>";
}

QByteArray settings(const QByteArray &buses)
{
    return "<FieldbusSettingConfig>" + buses + "</FieldbusSettingConfig>";
}

const QString fixedEntry = "ModbusTcpSlave/mtcp/on";

} // namespace

class FieldbusListTest : public ManagerTest
{
    Q_OBJECT

public:
    FieldbusListTest()
        : ManagerTest("fieldbuslist")
    { }

private slots:
    // Each file is read after fieldbus.xml, whose FreeBus is on.
    void read_data()
    {
        QTest::addColumn<QByteArray>("xml");
        QTest::addColumn<QString>("buses");
        QTest::addColumn<bool>("freeBus");
        QTest::addColumn<QString>("shortNames");

        QTest::newRow("empty root") << settings("") << fixedEntry << true << "mtcp";
        QTest::newRow("no root") << QByteArray("<Other>" + bus("Mes", "mes", "1") + "</Other>")
                                 << fixedEntry << true << "mtcp";
        QTest::newRow("missing attributes and enable")
                << settings("<Bus/><Bus name=\"EthernetIPSlave\"><enable>1</enable></Bus>"
                            "<Bus shortname=\"PNM\"/>")
                << fixedEntry + ";//off;EthernetIPSlave//on;/pnm/off" << true << "mtcp,,,pnm";
        QTest::newRow("boolean texts, short names in lower case, element children only")
                << settings("text<?note x?>" + bus("A", "EthCat", "t") + bus("B", "b", "Yes")
                            + bus("C", "c", "2") + bus("D", "d", " 1"))
                << fixedEntry + ";A/ethcat/on;B/b/on;C/c/off;D/d/off" << true
                << "mtcp,ethcat,b,c,d";
        QTest::newRow("signalless buses")
                << settings(bus("Mes", "mes", "1") + bus("FinsTcp", "fins", "1")
                            + bus("ProfibusSlave", "pbs", "1") + bus("FreeBus", "free", "0")
                            + bus("freebus", "free2", "1"))
                << fixedEntry
                        + ";Mes/mes/on;FinsTcp/fins/on;ProfibusSlave/pbs/on;FreeBus/free/off;"
                          "freebus/free2/on"
                << false << "mtcp,free2";
        QTest::newRow("listed ModbusTcpSlave doubles")
                << settings(bus("ModbusTcpSlave", "MTCP", "0"))
                << fixedEntry + ";ModbusTcpSlave/mtcp/off" << true << "mtcp,mtcp";
        QTest::newRow("zero bytes refused")
                << QByteArray("") << "refused" << true << "mtcp,ethcat,eip,mbc,pnm";
    }
    void read()
    {
        QFETCH(QByteArray, xml);
        QFETCH(QString, buses);
        TestWorkspace::writeFile(TPU_FIELDBUS_XML, fixture("fieldbus.xml"));
        QVERIFY(manager->readFieldbusXml());
        const QString before = describe(manager->busList);
        QMap<QString, BusName> map = manager->getAllBusName();
        TestWorkspace::writeFile(TPU_FIELDBUS_XML, xml);

        const bool ok = buses != "refused";
        QCOMPARE(manager->readFieldbusXml(), ok);
        QCOMPARE(describe(manager->busList), ok ? buses : before);
        QTEST(manager->busShortNames.join(','), "shortNames");
        QTEST(manager->isOpenFreeBus(), "freeBus");
        // The map is never cleared; the file's entries replace those of the same name.
        for (const BusName &bus : manager->busList.mid(ok ? 1 : manager->busList.size()))
            map.insert(bus.name, bus);
        QCOMPARE(describe(manager->getAllBusName().values().toVector()),
                 describe(map.values().toVector()));
    }

    void busIndex()
    {
        QStringList indices;
        for (const char *name :
             {"MTCP", "EthCat", "eip", "pfn", "ecm", "dns", "mbc", "eim", "pnm", "dnm", "ecs"})
            indices << QString::number(manager->getBusIndex(name));
        QCOMPARE(indices.join(' '), QString("0 1 2 3 4 5 6 7 8 9 -1"));
    }

    void writeOutcome_data()
    {
        QTest::addColumn<QByteArray>("before");
        QTest::addColumn<bool>("diskFull");
        QTest::addColumn<bool>("written");

        QTest::newRow("not XML") << QByteArray("<FieldbusSettingConfig>") << false << false;
        QTest::newRow("save fails") << settings(bus("Mes", "mes", "1")) << true << false;
        QTest::newRow("no root: saved unchanged") << QByteArray(
                "<?xml version=\"1.0\"?>\n<Other>\n<Bus name=\"Mes\" shortname=\"mes\">\n"
                "<enable>1</enable>\n</Bus>\n</Other>\n")
                                                  << false << true;
    }
    void writeOutcome()
    {
        QFETCH(QByteArray, before);
        QFETCH(bool, diskFull);
        QFETCH(bool, written);
        TestWorkspace::writeFile(TPU_FIELDBUS_XML, before);
        manager->setBusInfo({{"Mes", BusName{"Mes", "mes", false}}});
        QSignalSpy sent(manager, &BusFileDataManager::signalSendFieldbus);

        std::optional<FileSizeLimit> full;
        if (diskFull) {
            full.emplace(16);
            QTest::ignoreMessage(QtDebugMsg, "Could not save XML file");
        }
        QCOMPARE(manager->writeSendFieldbusXml(), written);
        full.reset();
        QCOMPARE(sent.count(), int(written));
        QCOMPARE(TestWorkspace::readFile(TPU_FIELDBUS_XML), before);
    }

    // Fetched, read, observed and filtered; one bus switched off, written, sent and read
    // again. Entries absent from the map or without a name leave their buses as they are.
    void endToEnd()
    {
        RecordingObserver observer;
        observer.setIsFieldXml(true);
        manager->attach(&observer);
        workspace.putControllerFile(RDE_FIELDBUS_XML, fixture("fieldbus.xml"));

        const QString fetched = RecordingObserver::call(FileFetchedAndRead, RDE_FIELDBUS_XML, true);
        manager->emitGetFieldXml();
        QTRY_COMPARE(observer.calls, QStringList{fetched});
        const auto names = [this](bool withMes, bool onlyEnabled) {
            QStringList names;
            for (const BusName &bus : manager->getBusNameList(withMes, onlyEnabled))
                names << bus.name;
            return names.join(',');
        };
        QCOMPARE(names(false, true), "ModbusTcpSlave,EtherCatSlave,ModbusTcpMaster");
        QCOMPARE(names(true, false),
                 "ModbusTcpSlave,EtherCatSlave,EthernetIPSlave,ModbusTcpMaster,Mes,ProfinetMaster");

        QMap<QString, BusName> buses = manager->getAllBusName();
        buses["EtherCatSlave"].enable = false;
        buses["EthernetIPSlave"] = BusName{QString(), "eip", true};
        buses.remove("FreeBus");
        manager->setBusInfo(buses);
        QVERIFY(manager->writeSendFieldbusXml());
        QCOMPARE(TestWorkspace::readFile(TPU_FIELDBUS_XML), fixture("fieldbus_ethercat_off.xml"));
        QCOMPARE(names(false, true), "ModbusTcpSlave,EtherCatSlave,ModbusTcpMaster");

        QTRY_COMPARE(
                observer.calls,
                QStringList({fetched,
                             RecordingObserver::call(FileWrittenAndSent, RDE_FIELDBUS_XML, true)}));
        QCOMPARE(workspace.controllerFile(RDE_FIELDBUS_XML), fixture("fieldbus_ethercat_off.xml"));
        QCOMPARE(names(false, true), "ModbusTcpSlave,ModbusTcpMaster");
        manager->detach(&observer);
    }
};

QTEST_GUILESS_MAIN(FieldbusListTest)
#include "tst_fieldbuslist.moc"
