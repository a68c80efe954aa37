#include "FileSizeLimit.h"
#include "ManagerTest.h"
#include "PendantSim.h"

#include <QSignalSpy>
#include <QtTest>

#include <optional>

namespace {

const QStringList elementNames =
        QString("ModbusSys ModbusUser EthercatSys EthercatUser EthernetIPSys EthernetIPUser "
                "ProfinetSys ProfinetUser DeviceNetSlaveSys DeviceNetSlaveUser ModbusMasterUser "
                "EcmUser EimUser PnmUser DnmUser")
                .split(' ');

// The nine places as "start/stop/length"; trailing places still at -1 are left out.
QString places(const BusAddrNumInfo &info)
{
    QStringList parts;
    for (int i = 0; i < 9; ++i)
        parts << QString::asprintf("%d/%d/%d", info.startAddress[i], info.stopAddress[i],
                                   info.variableLength[i]);
    while (!parts.isEmpty() && parts.last() == "-1/-1/-1")
        parts.removeLast();
    return parts.join(' ');
}

BusAddrNumInfo filled(int value)
{
    BusAddrNumInfo info;
    for (int i = 0; i < 9; ++i)
        info.startAddress[i] = info.stopAddress[i] = info.variableLength[i] = value;
    return info;
}

} // namespace

class FieldbusConfigTest : public ManagerTest
{
    Q_OBJECT

public:
    FieldbusConfigTest()
        : ManagerTest("fieldbusconfig")
    { }

private slots:
    // Records start at -1 here, so that places the file does not reach show.
    void read_data()
    {
        QTest::addColumn<QString>("element");
        QTest::addColumn<QByteArray>("xml");
        QTest::addColumn<QString>("expected");

        const QByteArray main = fixture("fieldbus_config.xml");
        QTest::newRow("system areas") << "ModbusSys" << main << "0/127/128 128/255/128";
        QTest::newRow("three groups of three")
                << "ModbusUser" << main
                << "1000/1127/128 1128/1255/128 1256/1383/128 2000/2063/64 2064/2127/64 "
                   "2128/2191/64 3000/3031/32 3032/3063/32 3064/3095/32";
        QTest::newRow("two groups of two")
                << "ModbusMasterUser" << main
                << "40001/40016/16 40017/40032/16 30001/30008/8 30009/30016/8";
        QTest::newRow("EimUser capped") << "EimUser" << main << "-1/-1/2048 -1/-1/2048";
        QTest::newRow("PnmUser capped") << "PnmUser" << main << "-1/-1/2048 -1/-1/100";
        QTest::newRow("DnmUser not capped") << "DnmUser" << main << "-1/-1/5000 -1/-1/3000";
        QTest::newRow("element absent") << "EthercatUser" << main << "";

        const QByteArray shapes = fixture("fieldbus_config_shapes.xml");
        QTest::newRow("empty, missing and non-numeric values")
                << "EthercatUser" << shapes << "0/199/100 200/299/0 0/399/100";
        QTest::newRow("uneven groups run on")
                << "EthernetIPUser" << shapes
                << "10/19/10 20/29/10 30/39/10 40/49/10 50/59/10 60/69/10 70/79/10 80/89/10 "
                   "90/99/10";
        QTest::newRow("twelve entries keep nine")
                << "DeviceNetSlaveUser" << shapes
                << "600/609/10 610/619/10 620/629/10 630/639/10 640/649/10 650/659/10 "
                   "660/669/10 670/679/10 680/689/10";

        QTest::newRow("root missing")
                << "ModbusUser"
                << QByteArray("<Other><ModbusUser><g><e><Start_Address>1</Start_Address></e></g>"
                              "</ModbusUser></Other>")
                << "";
        QTest::newRow("only element children")
                << "EthercatSys"
                << QByteArray("<FieldBus_Config><EthercatSys>text<?note?><g>text<e>"
                              "<Stop_Address>-7</Stop_Address></e></g></EthercatSys>"
                              "</FieldBus_Config>")
                << "0/-7/0";
        QTest::newRow("total missing") << "EimUser"
                                       << QByteArray("<FieldBus_Config><EimUser><WoBoolTotal>9000"
                                                     "</WoBoolTotal></EimUser></FieldBus_Config>")
                                       << "-1/-1/0 -1/-1/2048";
        QTest::newRow("zero bytes") << "ModbusUser" << QByteArray("") << "refused";
    }
    void read()
    {
        QFETCH(QString, element);
        QFETCH(QByteArray, xml);
        QFETCH(QString, expected);
        for (const QString &name : elementNames)
            manager->busAddrNumInfo.insert(name, filled(-1));
        TestWorkspace::writeFile(TPU_FIELDBUS_CFG_XML, xml);

        const bool ok = expected != "refused";
        QCOMPARE(manager->readFieldbusCfg(), ok);
        QCOMPARE(places(manager->getBusAddrNumInfo().value(element)), ok ? expected : "");
        QCOMPARE(pendantsim::shownMessages().size(), ok ? 0 : 1);
    }

    // Record i holds i + 1 in every place; the answer to each bus and flag names its record.
    void busNumAndAddr()
    {
        for (int i = 0; i < elementNames.size(); ++i)
            manager->busAddrNumInfo.insert(elementNames.at(i), filled(i + 1));
        QStringList found;
        for (const char *bus : {"mtcp", "ethcat", "eip", "pfn", "dns", "mbc", "ecm", "eim", "pnm",
                                "dnm", "MTCP", "ecs"}) {
            for (bool user : {false, true}) {
                const BusAddrNumInfo info = manager->getBusNumAndAddr(bus, user);
                const bool whole = places(info) == places(filled(info.startAddress[0]));
                found << (whole ? elementNames.value(info.startAddress[0] - 1, "zero") : "mixed");
            }
        }
        QCOMPARE(found.join(' '),
                 QString("ModbusSys ModbusUser EthercatSys EthercatUser EthernetIPSys "
                         "EthernetIPUser ProfinetSys ProfinetUser DeviceNetSlaveSys "
                         "DeviceNetSlaveUser ModbusMasterUser ModbusMasterUser EcmUser EcmUser "
                         "EimUser EimUser PnmUser PnmUser DnmUser DnmUser zero zero zero zero"));
    }

    void setBusNumAndAddr_data()
    {
        QTest::addColumn<int>("count");
        QTest::newRow("six: nothing changes, records start at zero") << 6;
        QTest::newRow("seven") << 7;
        QTest::newRow("eight: the last ignored") << 8;
    }
    void setBusNumAndAddr()
    {
        QFETCH(int, count);
        QVector<BusAddrNumInfo> infos;
        for (int i = 0; i < count; ++i)
            infos << filled(i + 1);

        manager->setBusNumAndAddr(infos);
        const QStringList writable = QString("ModbusUser EthercatUser EthernetIPUser ProfinetUser "
                                             "DeviceNetSlaveUser ModbusMasterUser DnmUser")
                                             .split(' ');
        const QHash<QString, BusAddrNumInfo> all = manager->getBusAddrNumInfo();
        for (const QString &name : elementNames) {
            const int position = count >= 7 ? writable.indexOf(name) : -1;
            QCOMPARE(places(all.value(name, filled(-1))), places(filled(position + 1)));
        }
    }

    void write_data()
    {
        QTest::addColumn<QString>("file");
        QTest::addColumn<bool>("edit");
        QTest::addColumn<QString>("expected");

        QTest::newRow("user areas edited")
                << "fieldbus_config.xml" << true << "fieldbus_config_written.xml";
        QTest::newRow("uneven shapes at a fixed stride")
                << "fieldbus_config_shapes.xml" << false << "fieldbus_config_shapes_written.xml";
    }
    void write()
    {
        QFETCH(QString, file);
        QFETCH(bool, edit);
        QFETCH(QString, expected);
        // The edit: the writable records of the expected file, so that writing reproduces it.
        TestWorkspace::writeFile(TPU_FIELDBUS_CFG_XML, fixture(expected));
        BusFileDataManager edited;
        QVERIFY(edited.readFieldbusCfg());
        QVector<BusAddrNumInfo> records;
        for (const QString &bus : QString("mtcp ethcat eip pfn dns mbc dnm").split(' '))
            records << edited.getBusNumAndAddr(bus, true);
        TestWorkspace::writeFile(TPU_FIELDBUS_CFG_XML, fixture(file));
        QVERIFY(manager->readFieldbusCfg());
        if (edit)
            manager->setBusNumAndAddr(records);
        QSignalSpy sent(manager, &BusFileDataManager::signalSendFieldbusCfg);

        QVERIFY(manager->writeSendFieldbusCfg());
        QCOMPARE(sent.count(), 1);
        QCOMPARE(TestWorkspace::readFile(TPU_FIELDBUS_CFG_XML), fixture(expected));
    }

    // A save failure goes unnoticed: reported and sent all the same, earlier file intact.
    void writeFailure_data()
    {
        QTest::addColumn<QByteArray>("before");
        QTest::addColumn<bool>("diskFull");

        QTest::newRow("not XML") << QByteArray("<FieldBus_Config><ModbusUser>") << false;
        QTest::newRow("save fails") << QByteArray("<FieldBus_Config/>") << true;
    }
    void writeFailure()
    {
        QFETCH(QByteArray, before);
        QFETCH(bool, diskFull);
        TestWorkspace::writeFile(TPU_FIELDBUS_CFG_XML, before);
        manager->setBusNumAndAddr(QVector<BusAddrNumInfo>(7, filled(5)));
        QSignalSpy sent(manager, &BusFileDataManager::signalSendFieldbusCfg);

        std::optional<FileSizeLimit> full;
        if (diskFull)
            full.emplace(16);
        QCOMPARE(manager->writeSendFieldbusCfg(), diskFull);
        full.reset();
        QCOMPARE(sent.count(), int(diskFull));
        QCOMPARE(TestWorkspace::readFile(TPU_FIELDBUS_CFG_XML), before);
        QCOMPARE(pendantsim::shownMessages().size(), 0);
    }

    void performanceValue_data()
    {
        QTest::addColumn<int>("type");
        QTest::addColumn<int>("current");
        QTest::addColumn<bool>("on");
        QTest::addColumn<int>("answer");
        QTest::addColumn<int>("result");
        QTest::addColumn<QString>("holder"); // protocol named in the question; empty: no question
        QTest::addColumn<int>("lastBusType");

        QTest::newRow("off") << 2 << 4 << false << 1 << 0 << "" << -1;
        QTest::newRow("first on, type 3") << 3 << 0 << true << 1 << 8 << "" << -1;
        QTest::newRow("taken over") << 3 << 4 << true << 1 << 8 << "EthernetIPSlave" << 2;
        QTest::newRow("taken from master") << 0 << 512 << true << 1 << 1 << "DeviceNetMaster" << 9;
        QTest::newRow("declined") << 3 << 4 << true << 2 << -1 << "EthernetIPSlave" << -1;
        QTest::newRow("two switches on") << 3 << 6 << true << 1 << -1 << "" << -1;
        QTest::newRow("beyond the protocols") << 3 << 1024 << true << 1 << -1 << "" << -1;
    }
    void performanceValue()
    {
        QFETCH(int, type);
        QFETCH(int, current);
        QFETCH(bool, on);
        QFETCH(int, answer);
        QFETCH(QString, holder);
        g_lastBusType = BusType(-1);
        pendantsim::setMsgBoxAnswers({answer});

        QTEST(BusFileDataManager::getPerformanceValue(BusType(type), current, on), "result");
        QTEST(int(g_lastBusType), "lastBusType");
        const QList<pendantsim::ShownMessage> shown = pendantsim::shownMessages();
        QCOMPARE(shown.size(), holder.isEmpty() ? 0 : 1);
        if (holder.isEmpty())
            return;
        QCOMPARE(shown.first().type, 1);
        QCOMPARE(shown.first().buttons, 3);
        QCOMPARE(shown.first().text,
                 QString("The communication performance switch does not support \nsimultaneous "
                         "activation of multiple protocols.\n Do you want to turn off the %1 "
                         "protocol communication performance switch?")
                         .arg(holder));
    }
};

QTEST_GUILESS_MAIN(FieldbusConfigTest)
#include "tst_fieldbusconfig.moc"
