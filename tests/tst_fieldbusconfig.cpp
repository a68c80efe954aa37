#include "BusFileDataManager.h"
#include "FileSizeLimit.h"
#include "PendantSim.h"
#include "TestWorkspace.h"

#include <QFile>
#include <QSignalSpy>
#include <QtTest>

#include <algorithm>

namespace {

const QStringList elementNames{"ModbusSys",
                               "ModbusUser",
                               "EthercatSys",
                               "EthercatUser",
                               "EthernetIPSys",
                               "EthernetIPUser",
                               "ProfinetSys",
                               "ProfinetUser",
                               "DeviceNetSlaveSys",
                               "DeviceNetSlaveUser",
                               "ModbusMasterUser",
                               "EcmUser",
                               "EimUser",
                               "PnmUser",
                               "DnmUser"};

// The nine places as "start/stop/length", blank-separated.
QString places(const BusAddrNumInfo &info)
{
    QStringList parts;
    for (int i = 0; i < 9; ++i)
        parts << QStringLiteral("%1/%2/%3")
                         .arg(info.startAddress[i])
                         .arg(info.stopAddress[i])
                         .arg(info.variableLength[i]);
    return parts.join(' ');
}

// The inverse of places(); places not given are zero.
BusAddrNumInfo record(const QString &text)
{
    BusAddrNumInfo info;
    const QStringList parts = text.isEmpty() ? QStringList() : text.split(' ');
    for (int i = 0; i < parts.size() && i < 9; ++i) {
        const QStringList values = parts.at(i).split('/');
        info.startAddress[i] = values.value(0).toInt();
        info.stopAddress[i] = values.value(1).toInt();
        info.variableLength[i] = values.value(2).toInt();
    }
    return info;
}

// Every place set to the same triple.
BusAddrNumInfo filled(int value)
{
    BusAddrNumInfo info;
    std::fill_n(info.startAddress, 9, value);
    std::fill_n(info.stopAddress, 9, value);
    std::fill_n(info.variableLength, 9, value);
    return info;
}

QByteArray entry(const QByteArray &start, const QByteArray &stop, const QByteArray &length)
{
    return "<e><Start_Address>" + start + "</Start_Address><Stop_Address>" + stop
            + "</Stop_Address><Variable_Length>" + length + "</Variable_Length></e>";
}

QByteArray config(const QByteArray &body)
{
    return "<FieldBus_Config>" + body + "</FieldBus_Config>";
}

} // namespace

class FieldbusConfigTest : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void readFile_data();
    void readFile();
    void parseShapes_data();
    void parseShapes();
    void readFailureKeepsRecords_data();
    void readFailureKeepsRecords();
    void recordsStartAtZero();
    void busNumAndAddr_data();
    void busNumAndAddr();
    void setBusNumAndAddr_data();
    void setBusNumAndAddr();

    void write_data();
    void write();
    void roundTrip();
    void writeRefusesUnreadableFile_data();
    void writeRefusesUnreadableFile();
    void writeSendsDespiteSaveFailure();

    void performanceValue_data();
    void performanceValue();

private:
    QByteArray fixture(const QString &name) const
    {
        return TestWorkspace::readFile(QFINDTESTDATA("data/fieldbusconfig/" + name));
    }
    // The edit of the writer test: new user areas and DeviceNet master totals.
    QVector<BusAddrNumInfo> editedUserRecords() const;

    TestWorkspace workspace;
    BusFileDataManager *manager = nullptr;
};

void FieldbusConfigTest::init()
{
    TestWorkspace::resetSimulation();
    QFile::remove(TPU_FIELDBUS_CFG_XML);
    manager = new BusFileDataManager();
}

void FieldbusConfigTest::cleanup()
{
    delete manager;
    manager = nullptr;
}

void FieldbusConfigTest::readFile_data()
{
    QTest::addColumn<QString>("file");
    QTest::addColumn<QString>("element");
    QTest::addColumn<QString>("expected");

    const QString main = "fieldbus_config.xml";
    QTest::newRow("system areas") << main << "ModbusSys"
                                  << "0/127/128 128/255/128";
    QTest::newRow("three groups of three")
            << main << "ModbusUser"
            << "1000/1127/128 1128/1255/128 1256/1383/128 2000/2063/64 2064/2127/64 "
               "2128/2191/64 3000/3031/32 3032/3063/32 3064/3095/32";
    QTest::newRow("two groups of two")
            << main << "ModbusMasterUser"
            << "40001/40016/16 40017/40032/16 30001/30008/8 30009/30016/8";
    QTest::newRow("totals below the cap") << main << "EcmUser"
                                          << "0/0/1024 0/0/512";
    QTest::newRow("EimUser capped") << main << "EimUser"
                                    << "0/0/2048 0/0/2048";
    QTest::newRow("PnmUser capped") << main << "PnmUser"
                                    << "0/0/2048 0/0/100";
    QTest::newRow("DnmUser not capped") << main << "DnmUser"
                                        << "0/0/5000 0/0/3000";
    QTest::newRow("element absent") << main << "EthercatUser"
                                    << "";

    const QString shapes = "fieldbus_config_shapes.xml";
    QTest::newRow("empty, missing and non-numeric values") << shapes << "EthercatUser"
                                                           << "0/199/100 200/299/0 0/399/100";
    QTest::newRow("uneven groups run on")
            << shapes << "EthernetIPUser"
            << "10/19/10 20/29/10 30/39/10 40/49/10 50/59/10 60/69/10 70/79/10 80/89/10 "
               "90/99/10";
    QTest::newRow("twelve entries keep nine")
            << shapes << "DeviceNetSlaveUser"
            << "600/609/10 610/619/10 620/629/10 630/639/10 640/649/10 650/659/10 660/669/10 "
               "670/679/10 680/689/10";
}

void FieldbusConfigTest::readFile()
{
    QFETCH(QString, file);
    QFETCH(QString, element);
    TestWorkspace::writeFile(TPU_FIELDBUS_CFG_XML, fixture(file));

    QVERIFY(manager->readFieldbusCfg());
    QFETCH(QString, expected);
    QCOMPARE(places(manager->getBusAddrNumInfo().value(element)), places(record(expected)));
    QCOMPARE(pendantsim::shownMessages().size(), 0);
}

void FieldbusConfigTest::parseShapes_data()
{
    QTest::addColumn<QByteArray>("xml");
    QTest::addColumn<QString>("element");
    QTest::addColumn<QString>("expected");

    // Every record starts at -1 everywhere, so that untouched places show.
    const QString untouched = places(filled(-1));
    const QString minus = "-1/-1/-1 ";
    QTest::newRow("element missing") << config("<ModbusSys/>") << "ModbusUser" << untouched;
    QTest::newRow("root missing") << QByteArray("<Other><ModbusUser><g>" + entry("1", "2", "3")
                                                + "</g></ModbusUser></Other>")
                                  << "ModbusUser" << untouched;
    QTest::newRow("fewer entries") << config("<ModbusUser><g>" + entry("1", "2", "3")
                                             + entry("4", "5", "6") + "</g></ModbusUser>")
                                   << "ModbusUser"
                                   << "1/2/3 4/5/6 " + minus.repeated(7).trimmed();
    QTest::newRow("entry lacks values")
            << config("<ModbusUser><g><e><Stop_Address>5</Stop_Address></e></g></ModbusUser>")
            << "ModbusUser"
            << "0/5/0 " + minus.repeated(8).trimmed();
    QTest::newRow("non-numeric and negative")
            << config("<ProfinetUser><g>" + entry("abc", "-7", "") + "</g></ProfinetUser>")
            << "ProfinetUser"
            << "0/-7/0 " + minus.repeated(8).trimmed();
    QTest::newRow("groups share one run")
            << config("<ProfinetSys><a>" + entry("1", "1", "1") + "</a><b>" + entry("2", "2", "2")
                      + entry("3", "3", "3") + "</b></ProfinetSys>")
            << "ProfinetSys"
            << "1/1/1 2/2/2 3/3/3 " + minus.repeated(6).trimmed();
    // A tenth entry stored past the arrays would land on the first stop and length.
    QByteArray ten;
    for (int i = 1; i <= 10; ++i)
        ten += entry(QByteArray::number(i), QByteArray::number(100 + i),
                     QByteArray::number(200 + i));
    QTest::newRow("ten entries")
            << config("<DeviceNetSlaveSys><g>" + ten + "</g></DeviceNetSlaveSys>")
            << "DeviceNetSlaveSys"
            << "1/101/201 2/102/202 3/103/203 4/104/204 5/105/205 6/106/206 7/107/207 8/108/208 "
               "9/109/209";
    QTest::newRow("only element children") << config("<EthercatSys>text<?note?><g>text"
                                                     + entry("1", "2", "3") + "</g></EthercatSys>")
                                           << "EthercatSys"
                                           << "1/2/3 " + minus.repeated(8).trimmed();
    QTest::newRow("total missing")
            << config("<EimUser><WoBoolTotal>9000</WoBoolTotal></EimUser>") << "EimUser"
            << "-1/-1/0 -1/-1/2048 " + minus.repeated(7).trimmed();
    QTest::newRow("DnmUser keeps large totals")
            << config("<DnmUser><RoBoolTotal>5000</RoBoolTotal><WoBoolTotal>70000</WoBoolTotal>"
                      "</DnmUser>")
            << "DnmUser"
            << "-1/-1/5000 -1/-1/70000 " + minus.repeated(7).trimmed();
}

void FieldbusConfigTest::parseShapes()
{
    QFETCH(QByteArray, xml);
    QFETCH(QString, element);
    for (const QString &name : elementNames)
        manager->busAddrNumInfo.insert(name, filled(-1));
    pugi::xml_document doc;
    QVERIFY(doc.load_buffer(xml.constData(), size_t(xml.size()), pugi::parse_pi));

    manager->parseFieldbusCfg(doc);
    QTEST(places(manager->busAddrNumInfo.value(element)), "expected");
}

void FieldbusConfigTest::readFailureKeepsRecords_data()
{
    QTest::addColumn<bool>("present");
    QTest::addColumn<QByteArray>("content");

    QTest::newRow("missing file") << false << QByteArray();
    QTest::newRow("zero bytes") << true << QByteArray();
    QTest::newRow("not XML") << true << QByteArray("ModbusUser = 1000 1127 128\n");
}

void FieldbusConfigTest::readFailureKeepsRecords()
{
    QFETCH(bool, present);
    QFETCH(QByteArray, content);
    TestWorkspace::writeFile(TPU_FIELDBUS_CFG_XML, fixture("fieldbus_config.xml"));
    QVERIFY(manager->readFieldbusCfg());
    const QString before = places(manager->getBusNumAndAddr("mtcp", true));
    QFile::remove(TPU_FIELDBUS_CFG_XML);
    if (present)
        TestWorkspace::writeFile(TPU_FIELDBUS_CFG_XML, content);

    QVERIFY(!manager->readFieldbusCfg());
    QCOMPARE(places(manager->getBusNumAndAddr("mtcp", true)), before);
    QCOMPARE(pendantsim::shownMessages().size(), 1);
}

void FieldbusConfigTest::recordsStartAtZero()
{
    const QHash<QString, BusAddrNumInfo> all = manager->getBusAddrNumInfo();
    QStringList keys = all.keys();
    keys.sort();
    QStringList expected = elementNames;
    expected.sort();
    QCOMPARE(keys, expected);
    for (const BusAddrNumInfo &info : all)
        QCOMPARE(places(info), places(BusAddrNumInfo()));
}

void FieldbusConfigTest::busNumAndAddr_data()
{
    QTest::addColumn<QString>("bus");
    QTest::addColumn<bool>("user");
    QTest::addColumn<QString>("element");

    QTest::newRow("mtcp system") << "mtcp" << false << "ModbusSys";
    QTest::newRow("mtcp user") << "mtcp" << true << "ModbusUser";
    QTest::newRow("dns user") << "dns" << true << "DeviceNetSlaveUser";
    QTest::newRow("mbc system") << "mbc" << false << "ModbusMasterUser";
    QTest::newRow("mbc user") << "mbc" << true << "ModbusMasterUser";
    QTest::newRow("ecm") << "ecm" << false << "EcmUser";
    QTest::newRow("dnm") << "dnm" << true << "DnmUser";
    QTest::newRow("case-sensitive") << "MTCP" << true << "";
    QTest::newRow("unknown") << "ecs" << false << "";
}

void FieldbusConfigTest::busNumAndAddr()
{
    QFETCH(QString, bus);
    QFETCH(bool, user);
    QFETCH(QString, element);
    for (int i = 0; i < elementNames.size(); ++i)
        manager->busAddrNumInfo.insert(elementNames.at(i), filled(i + 1));

    const BusAddrNumInfo expected =
            element.isEmpty() ? BusAddrNumInfo() : filled(elementNames.indexOf(element) + 1);
    QCOMPARE(places(manager->getBusNumAndAddr(bus, user)), places(expected));
}

void FieldbusConfigTest::setBusNumAndAddr_data()
{
    QTest::addColumn<int>("count");
    QTest::addColumn<bool>("applied");

    QTest::newRow("six") << 6 << false;
    QTest::newRow("seven") << 7 << true;
    QTest::newRow("eight") << 8 << true;
}

void FieldbusConfigTest::setBusNumAndAddr()
{
    QFETCH(int, count);
    QFETCH(bool, applied);
    QVector<BusAddrNumInfo> infos;
    for (int i = 0; i < count; ++i)
        infos << filled(i + 1);

    manager->setBusNumAndAddr(infos);
    const QStringList writable{"ModbusUser",   "EthercatUser",       "EthernetIPUser",
                               "ProfinetUser", "DeviceNetSlaveUser", "ModbusMasterUser",
                               "DnmUser"};
    const QHash<QString, BusAddrNumInfo> all = manager->getBusAddrNumInfo();
    QCOMPARE(all.size(), elementNames.size());
    for (const QString &name : elementNames) {
        const int position = writable.indexOf(name);
        const BusAddrNumInfo expected =
                applied && position >= 0 ? filled(position + 1) : BusAddrNumInfo();
        QCOMPARE(places(all.value(name)), places(expected));
    }
}

QVector<BusAddrNumInfo> FieldbusConfigTest::editedUserRecords() const
{
    BusAddrNumInfo modbus;
    BusAddrNumInfo master = filled(77);
    for (int i = 0; i < 9; ++i) {
        modbus.startAddress[i] = 10000 + 1000 * i;
        modbus.stopAddress[i] = modbus.startAddress[i] + 499;
        modbus.variableLength[i] = 500;
    }
    for (int i = 0; i < 4; ++i) {
        master.startAddress[i] = 1 + 10 * i;
        master.stopAddress[i] = 10 + 10 * i;
        master.variableLength[i] = 10;
    }
    return {modbus,
            manager->getBusNumAndAddr("ethcat", true),
            manager->getBusNumAndAddr("eip", true),
            manager->getBusNumAndAddr("pfn", true),
            manager->getBusNumAndAddr("dns", true),
            master,
            record("0/0/4096 0/0/256")};
}

void FieldbusConfigTest::write_data()
{
    QTest::addColumn<QString>("file");
    QTest::addColumn<bool>("edit");
    QTest::addColumn<QString>("expected");

    QTest::newRow("user areas edited")
            << "fieldbus_config.xml" << true << "fieldbus_config_written.xml";
    QTest::newRow("uneven shapes at a fixed stride")
            << "fieldbus_config_shapes.xml" << false << "fieldbus_config_shapes_written.xml";
}

void FieldbusConfigTest::write()
{
    QFETCH(QString, file);
    QFETCH(bool, edit);
    TestWorkspace::writeFile(TPU_FIELDBUS_CFG_XML, fixture(file));
    QVERIFY(manager->readFieldbusCfg());
    if (edit)
        manager->setBusNumAndAddr(editedUserRecords());
    QSignalSpy sent(manager, &BusFileDataManager::signalSendFieldbusCfg);

    QVERIFY(manager->writeSendFieldbusCfg());
    QCOMPARE(sent.count(), 1);
    QFETCH(QString, expected);
    QCOMPARE(TestWorkspace::readFile(TPU_FIELDBUS_CFG_XML), fixture(expected));
}

void FieldbusConfigTest::roundTrip()
{
    TestWorkspace::writeFile(TPU_FIELDBUS_CFG_XML, fixture("fieldbus_config.xml"));
    QVERIFY(manager->readFieldbusCfg());
    manager->setBusNumAndAddr(editedUserRecords());
    const QHash<QString, BusAddrNumInfo> written = manager->getBusAddrNumInfo();
    QVERIFY(manager->writeSendFieldbusCfg());

    BusFileDataManager reader;
    QVERIFY(reader.readFieldbusCfg());
    const QHash<QString, BusAddrNumInfo> read = reader.getBusAddrNumInfo();
    for (const QString &name : elementNames) {
        BusAddrNumInfo expected = written.value(name);
        // Places beyond the file's two groups of two are never written.
        if (name == "ModbusMasterUser")
            expected = record(places(expected).section(' ', 0, 3));
        QCOMPARE(places(read.value(name)), places(expected));
    }
}

void FieldbusConfigTest::writeRefusesUnreadableFile_data()
{
    QTest::addColumn<bool>("present");
    QTest::addColumn<QByteArray>("content");

    QTest::newRow("missing file") << false << QByteArray();
    QTest::newRow("not XML") << true << QByteArray("<FieldBus_Config><ModbusUser>");
}

void FieldbusConfigTest::writeRefusesUnreadableFile()
{
    QFETCH(bool, present);
    QFETCH(QByteArray, content);
    if (present)
        TestWorkspace::writeFile(TPU_FIELDBUS_CFG_XML, content);
    QSignalSpy sent(manager, &BusFileDataManager::signalSendFieldbusCfg);

    QVERIFY(!manager->writeSendFieldbusCfg());
    QCOMPARE(sent.count(), 0);
    QCOMPARE(pendantsim::shownMessages().size(), 0);
    QCOMPARE(QFile::exists(TPU_FIELDBUS_CFG_XML), present);
    QCOMPARE(TestWorkspace::readFile(TPU_FIELDBUS_CFG_XML), content);
}

void FieldbusConfigTest::writeSendsDespiteSaveFailure()
{
    // Beyond QFileDevice's 16 KiB write buffer, where a short write is seen.
    const QByteArray before =
            config("<ModbusUser><g>" + entry("1", "2", "3") + "</g></ModbusUser><Note>"
                   + QByteArray(20000, 'x') + "</Note>");
    TestWorkspace::writeFile(TPU_FIELDBUS_CFG_XML, before);
    manager->setBusNumAndAddr(QVector<BusAddrNumInfo>(7, filled(5)));
    QSignalSpy sent(manager, &BusFileDataManager::signalSendFieldbusCfg);

    bool written = false;
    {
        FileSizeLimit full(16);
        written = manager->writeSendFieldbusCfg();
    }
    QVERIFY(written);
    QCOMPARE(sent.count(), 1);
    QCOMPARE(TestWorkspace::readFile(TPU_FIELDBUS_CFG_XML), before);
}

void FieldbusConfigTest::performanceValue_data()
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
    QTest::newRow("closed") << 1 << 1 << true << 0 << -1 << "ModbusTcpSlave" << -1;
    QTest::newRow("two switches on") << 3 << 6 << true << 1 << -1 << "" << -1;
    QTest::newRow("beyond the protocols") << 3 << 1024 << true << 1 << -1 << "" << -1;
}

void FieldbusConfigTest::performanceValue()
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
    if (holder.isEmpty()) {
        QCOMPARE(shown.size(), 0);
        return;
    }
    QCOMPARE(shown.size(), 1);
    QCOMPARE(shown.first().type, 1);
    QCOMPARE(shown.first().buttons, 3);
    QCOMPARE(shown.first().text,
             QString("The communication performance switch does not support \nsimultaneous "
                     "activation of multiple protocols.\n Do you want to turn off the %1 "
                     "protocol communication performance switch?")
                     .arg(holder));
}

QTEST_GUILESS_MAIN(FieldbusConfigTest)
#include "tst_fieldbusconfig.moc"
