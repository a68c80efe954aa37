// Address, range, group and conflict validators and the bus address counts.
#include "BusFileDataManager.h"
#include "TestWorkspace.h"

#include <QtTest>

#include <climits>

using ConflictEntries = QVector<QMap<QString, int>>;
Q_DECLARE_METATYPE(ConflictEntries)

namespace {

FuncAndMapInfo row(const QString &module, const QString &name, const QString &type,
                   const QString &fieldBus, const QString &address)
{
    FuncAndMapInfo info;
    info.module = module;
    info.name = name;
    info.type = type;
    info.fieldBus = fieldBus;
    info.address = address;
    return info;
}

GroupInfo group(const QString &type, const QString &number, const QString &fieldBus,
                const QString &first, const QString &last)
{
    return GroupInfo{type, number, fieldBus, first, last};
}

FuncAndMapInfo function(const QString &name, const QString &nameCn)
{
    FuncAndMapInfo info;
    info.name = name;
    info.nameCn = nameCn;
    return info;
}

} // namespace

class ValidationTest : public QObject
{
    Q_OBJECT

private:
    TestWorkspace workspace;
    BusFileDataManager *manager = nullptr;

private slots:
    void initTestCase()
    {
        manager = new BusFileDataManager();
        manager->busShortNames = QStringList{"mtcp", "ethcat", "eip", "pfn", "ecm",
                                             "dns",  "mbc",    "eim", "pnm", "dnm"};
        manager->moduleNameMap = {{"Weld", "焊接"}, {"Glue", "涂胶"}};
        manager->funcListMap.insert("Weld",
                                    {{function("a", "甲"), function("e", "戊")},
                                     {function("f", "己"), function("b", "乙")}});
    }

    void cleanupTestCase() { delete manager; }

    void init() { manager->languageId = 2; }

    void isAddressValid_data()
    {
        QTest::addColumn<QString>("bus");
        QTest::addColumn<int>("dir");
        QTest::addColumn<QString>("type");
        QTest::addColumn<int>("address");
        QTest::addColumn<int>("language");
        QTest::addColumn<QString>("expected");

        QTest::newRow("free address") << "mtcp" << 0 << "bool" << 13 << 2 << "ok";
        QTest::newRow("taken, English") << "mtcp" << 0 << "bool" << 10 << 2 << "Weld";
        QTest::newRow("taken, Chinese") << "mtcp" << 0 << "bool" << 10 << 3 << "焊接";
        QTest::newRow("type text in capitals") << "mtcp" << 0 << "bool" << 11 << 2 << "Weld";
        QTest::newRow("type is a substring") << "mtcp" << 0 << "bool" << 12 << 2 << "Glue";
        QTest::newRow("other type at the address") << "mtcp" << 0 << "int" << 10 << 2 << "Glue";
        QTest::newRow("-1 is never taken") << "mtcp" << 0 << "bool" << -1 << 2 << "ok";
        QTest::newRow("non-numeric address reads 0") << "mtcp" << 0 << "bool" << 0 << 2 << "Glue";
        QTest::newRow("output table") << "mtcp" << 1 << "bool" << 10 << 3 << "Spot";
        QTest::newRow("any other direction is output")
                << "mtcp" << 7 << "bool" << 10 << 2 << "Spot";
        QTest::newRow("group rows are not the bus's") << "mtcp" << 0 << "int" << 5 << 2 << "ok";
        QTest::newRow("group key") << "group_mtcp" << 0 << "int" << 5 << 2 << "Glue";
        QTest::newRow("table bus in capitals") << "eip" << 0 << "bool" << 20 << 2 << "Weld";
        QTest::newRow("unknown bus") << "xyz" << 0 << "bool" << 10 << 2 << "ok";
    }

    void isAddressValid()
    {
        QFETCH(QString, bus);
        QFETCH(int, dir);
        QFETCH(QString, type);
        QFETCH(int, address);
        QFETCH(int, language);
        QFETCH(QString, expected);
        manager->mapList[0] = {
                row("Weld", "arcOn", "bool", "mtcp", "10"),
                row("Weld", "gasOn", "BOOL", "mtcp", "11"),
                row("Glue", "wireSpeed", "int", "mtcp", "10"),
                row("Weld", "unmapped", "bool", "mtcp", "-1"),
                row("Glue", "start", "Bool_t", "mtcp", "12"),
                row("Glue", "junk", "bool", "mtcp", "abc"),
                row("Glue", "flow", "int", "group_mtcp", "5"),
                row("Weld", "eipIn", "bool", "EIP", "20"),
        };
        manager->mapList[1] = {row("Spot", "ready", "bool", "mtcp", "10")};
        manager->languageId = language;
        QCOMPARE(manager->isAddressValid(bus, BiBo(dir), type, address), expected);
    }

    void isGroupAddrValid_data()
    {
        QTest::addColumn<QString>("bus");
        QTest::addColumn<int>("dir");
        QTest::addColumn<QString>("range");
        QTest::addColumn<QString>("expected");

        QTest::newRow("first bound inclusive") << "eip" << 0 << "20,25"
                                               << "20";
        QTest::newRow("last bound inclusive") << "eip" << 0 << "15,20"
                                              << "20";
        QTest::newRow("below") << "eip" << 0 << "10,19"
                               << "ok";
        QTest::newRow("above, past non-bool") << "eip" << 0 << "26,30"
                                              << "ok";
        QTest::newRow("address text unchanged") << "eip" << 0 << "24,26"
                                                << "025";
        QTest::newRow("first in table order") << "mtcp" << 0 << "0,30"
                                              << "10";
        QTest::newRow("only first given") << "mtcp" << 0 << "10"
                                          << "ok";
        QTest::newRow("empty last reads 0") << "mtcp" << 0 << "-5,"
                                            << "-1";
        QTest::newRow("empty first reads 0") << "mtcp" << 0 << ",12"
                                             << "10";
        QTest::newRow("no bounds") << "mtcp" << 0 << "-1,-1"
                                   << "ok";
        QTest::newRow("empty range") << "mtcp" << 0 << ""
                                     << "ok";
        QTest::newRow("-1 is a number inside a range") << "mtcp" << 0 << "-5,5"
                                                       << "-1";
        QTest::newRow("non-numeric reads 0") << "mtcp" << 0 << "x,0"
                                             << "abc";
        QTest::newRow("output table") << "mtcp" << 1 << "0,9"
                                      << "ok";
        QTest::newRow("unknown bus") << "xyz" << 0 << "0,100"
                                     << "ok";
    }

    void isGroupAddrValid()
    {
        QFETCH(QString, bus);
        QFETCH(int, dir);
        QFETCH(QString, range);
        QFETCH(QString, expected);
        manager->mapList[0] = {
                row("Weld", "arcOn", "bool", "mtcp", "10"),
                row("Weld", "gasOn", "BOOL", "mtcp", "11"),
                row("Weld", "unmapped", "bool", "mtcp", "-1"),
                row("Glue", "junk", "bool", "mtcp", "abc"),
                row("Weld", "eipIn", "bool", "eip", "20"),
                row("Weld", "eipWord", "int", "eip", "30"),
                row("Weld", "eipPadded", "bool", "eip", "025"),
        };
        manager->mapList[1] = {row("Spot", "ready", "bool", "mtcp", "10")};
        QCOMPARE(manager->isGroupAddrValid(bus, BiBo(dir), range), expected);
    }

    void isAddressGroupValid_data()
    {
        QTest::addColumn<QString>("bus");
        QTest::addColumn<int>("dir");
        QTest::addColumn<QString>("groupKey");
        QTest::addColumn<QString>("groupNumber");
        QTest::addColumn<QString>("range");
        QTest::addColumn<bool>("saved");
        QTest::addColumn<QString>("expected");

        // int groups of mtcp: 1 = 6..9, 2 = 0..9, 5 = 20..29.
        QTest::newRow("only first, wide group") << "mtcp" << 0 << "int"
                                                << ""
                                                << "5" << false << "2";
        QTest::newRow("only first, both groups") << "mtcp" << 0 << "int"
                                                 << ""
                                                 << "7" << false << "1";
        QTest::newRow("only first, bound") << "mtcp" << 0 << "int"
                                           << ""
                                           << "29,-1" << false << "5";
        QTest::newRow("only first, outside") << "mtcp" << 0 << "int"
                                             << ""
                                             << "15" << false << "ok";
        QTest::newRow("only last") << "mtcp" << 0 << "int"
                                   << ""
                                   << "-1,8" << false << "1";
        QTest::newRow("only last, wide group") << "mtcp" << 0 << "int"
                                               << ""
                                               << "-1,3" << false << "2";
        QTest::newRow("covers the start") << "mtcp" << 0 << "int"
                                          << ""
                                          << "3,6" << false << "1";
        QTest::newRow("covers the end") << "mtcp" << 0 << "int"
                                        << ""
                                        << "9,15" << false << "1";
        QTest::newRow("inside") << "mtcp" << 0 << "int"
                                << ""
                                << "22,23" << false << "5";
        QTest::newRow("around") << "mtcp" << 0 << "int"
                                << ""
                                << "19,30" << false << "5";
        QTest::newRow("between groups") << "mtcp" << 0 << "int"
                                        << ""
                                        << "10,19" << false << "ok";
        QTest::newRow("no bounds") << "mtcp" << 0 << "int"
                                   << ""
                                   << "-1,-1" << false << "ok";
        QTest::newRow("empty range reads first 0") << "mtcp" << 0 << "int"
                                                   << ""
                                                   << "" << false << "2";
        QTest::newRow("non-numeric reads 0") << "mtcp" << 0 << "int"
                                             << ""
                                             << "x,y" << false << "2";
        QTest::newRow("edited group skipped") << "mtcp" << 0 << "int"
                                              << "5"
                                              << "20,29" << false << "ok";
        QTest::newRow("skip needs the type") << "mtcp" << 0 << "int,float"
                                             << "5"
                                             << "20,29" << false << "5";
        QTest::newRow("skip type ignores case") << "mtcp" << 0 << "int,INT"
                                                << "5"
                                                << "20,29" << false << "ok";
        QTest::newRow("selector before the comma") << "mtcp" << 0 << "float,x"
                                                   << ""
                                                   << "45" << false << "4";
        QTest::newRow("number matches no group") << "mtcp" << 0 << "string"
                                                 << "no"
                                                 << "5,-1" << true << "9";
        QTest::newRow("group bus after '-'") << "GROUP-eip" << 0 << "int"
                                             << ""
                                             << "50,50" << false << "3";
        QTest::newRow("group bus with '_'") << "group_eip" << 0 << "int"
                                            << ""
                                            << "50,50" << false << "3";
        QTest::newRow("'-' without group") << "x-eip" << 0 << "int"
                                           << ""
                                           << "50,50" << false << "ok";
        QTest::newRow("saved table") << "mtcp" << 0 << "int"
                                     << ""
                                     << "50,50" << true << "7";
        QTest::newRow("current table") << "mtcp" << 0 << "int"
                                       << ""
                                       << "50,50" << false << "ok";
        QTest::newRow("output groups") << "mtcp" << 1 << "int"
                                       << ""
                                       << "15,15" << false << "8";
        QTest::newRow("unknown type") << "mtcp" << 0 << "bool"
                                      << ""
                                      << "5" << false << "ok";
    }

    void isAddressGroupValid()
    {
        QFETCH(QString, bus);
        QFETCH(int, dir);
        QFETCH(QString, groupKey);
        QFETCH(QString, groupNumber);
        QFETCH(QString, range);
        QFETCH(bool, saved);
        QFETCH(QString, expected);
        fillGroups();
        QCOMPARE(manager->isAddressGroupValid(bus, BiBo(dir), groupKey, groupNumber, range, saved),
                 expected);
    }

    void isGroupIdExist_data()
    {
        QTest::addColumn<QString>("bus");
        QTest::addColumn<int>("dir");
        QTest::addColumn<QString>("selector");
        QTest::addColumn<int>("number");
        QTest::addColumn<bool>("saved");
        QTest::addColumn<QString>("expected");

        QTest::newRow("-1 needs no group") << "none" << 0 << "none" << -1 << false << "ok";
        QTest::newRow("exists") << "mtcp" << 0 << "int" << 1 << false << "ok";
        QTest::newRow("another bus's group") << "mtcp" << 0 << "int" << 3 << false << "";
        QTest::newRow("on its bus") << "eip" << 0 << "int" << 3 << false << "ok";
        QTest::newRow("group key") << "group_mtcp" << 0 << "int" << 5 << false << "ok";
        QTest::newRow("other type") << "mtcp" << 0 << "float" << 5 << false << "";
        QTest::newRow("saved table") << "mtcp" << 0 << "int" << 7 << true << "ok";
        QTest::newRow("not in the current table") << "mtcp" << 0 << "int" << 7 << false << "";
        QTest::newRow("output") << "mtcp" << 1 << "int" << 8 << false << "ok";
        QTest::newRow("non-numeric number reads 0") << "dns" << 0 << "int" << 0 << false << "ok";
    }

    void isGroupIdExist()
    {
        QFETCH(QString, bus);
        QFETCH(int, dir);
        QFETCH(QString, selector);
        QFETCH(int, number);
        QFETCH(bool, saved);
        QFETCH(QString, expected);
        fillGroups();
        QCOMPARE(manager->isGroupIdExist(bus, BiBo(dir), selector, number, saved), expected);
    }

    void getBusNum_data()
    {
        QTest::addColumn<QString>("bus");
        QTest::addColumn<int>("dir");
        QTest::addColumn<QString>("type");
        QTest::addColumn<int>("expected");

        // Each record holds base + place, base 100 for ModbusUser, 200 for EthercatUser, ...
        QTest::newRow("mtcp bool in") << "mtcp" << 0 << "bool" << 100;
        QTest::newRow("mtcp bool out") << "mtcp" << 1 << "bool" << 101;
        QTest::newRow("mtcp int in") << "mtcp" << 0 << "int" << 103;
        QTest::newRow("mtcp float out") << "mtcp" << 1 << "float" << 107;
        QTest::newRow("type equality ignores case") << "MTCP" << 0 << "BOOL" << 100;
        QTest::newRow("type not equal is other") << "mtcp" << 0 << "boolean" << 106;
        QTest::newRow("last place") << "mtcp" << 2 << "string" << 108;
        QTest::newRow("place 9 is beyond") << "mtcp" << 3 << "string" << 0;
        QTest::newRow("huge direction") << "mtcp" << INT_MAX << "string" << 0;
        QTest::newRow("negative direction") << "mtcp" << -1 << "bool" << 0;
        QTest::newRow("ethcat") << "ethcat" << 1 << "int" << 204;
        QTest::newRow("eip") << "eip" << 0 << "float" << 306;
        QTest::newRow("pfn") << "pfn" << 1 << "bool" << 401;
        QTest::newRow("ecs reads ethercat") << "ecs" << 0 << "int" << 203;
        QTest::newRow("mbc stride 2") << "mbc" << 0 << "int" << 502;
        QTest::newRow("mbc other type") << "mbc" << 1 << "float" << 505;
        QTest::newRow("dns") << "dns" << 1 << "int" << 604;
        QTest::newRow("ecm bool in") << "ecm" << 0 << "bool" << 700;
        QTest::newRow("ecm bool out") << "ecm" << 1 << "bool" << 701;
        QTest::newRow("ecm int is beyond") << "ecm" << 0 << "int" << 0;
        QTest::newRow("eim") << "eim" << 1 << "bool" << 801;
        QTest::newRow("pnm") << "pnm" << 0 << "bool" << 900;
        QTest::newRow("dnm") << "dnm" << 1 << "bool" << 1001;
        QTest::newRow("MTCP record, MBC stride") << "mtcp_mbc" << 1 << "int" << 103;
        QTest::newRow("group int") << "group_mtcp" << 0 << "int" << 256;
        QTest::newRow("group float") << "group_mtcp" << 1 << "float" << 128;
        QTest::newRow("group string") << "GROUP_eip" << 1 << "string" << 8;
        QTest::newRow("group type substring") << "group_mtcp" << 0 << "uint32" << 256;
        QTest::newRow("group bool reads the bus") << "group_mtcp" << 1 << "bool" << 101;
        QTest::newRow("group of no bus") << "group_x" << 0 << "bool" << 0;
        QTest::newRow("unknown bus") << "xyz" << 0 << "bool" << 0;
    }

    void getBusNum()
    {
        QFETCH(QString, bus);
        QFETCH(int, dir);
        QFETCH(QString, type);
        QFETCH(int, expected);
        const QStringList records = {"ModbusUser",   "EthercatUser",     "EthernetIPUser",
                                     "ProfinetUser", "ModbusMasterUser", "DeviceNetSlaveUser",
                                     "EcmUser",      "EimUser",          "PnmUser",
                                     "DnmUser"};
        manager->busAddrNumInfo.clear();
        for (int r = 0; r < records.size(); ++r) {
            BusAddrNumInfo info;
            for (int i = 0; i < 9; ++i)
                info.variableLength[i] = (r + 1) * 100 + i;
            manager->busAddrNumInfo.insert(records.at(r), info);
        }
        QCOMPARE(manager->getBusNum(bus, BiBo(dir), type), expected);
    }

    void addConflictData_data()
    {
        QTest::addColumn<ConflictEntries>("before");
        QTest::addColumn<ConflictEntries>("after");

        // a: input 3; e: output 4; f: input 2 on the bus, 6 in its group; n: input "x1".
        QTest::newRow("empty") << ConflictEntries() << ConflictEntries();
        QTest::newRow("input only, output not yet found")
                << ConflictEntries{{{"a", 9}}} << ConflictEntries{{{"a", -1}}};
        QTest::newRow("output only") << ConflictEntries{{{"e", 9}}} << ConflictEntries{{{"e", 4}}};
        QTest::newRow("output flag carries to the next entry")
                << ConflictEntries{{{"e", 0}}, {{"a", 0}}}
                << ConflictEntries{{{"e", 4}}, {{"a", 3}}};
        QTest::newRow("both flags carry, missing key kept")
                << ConflictEntries{{{"a", 0}, {"e", 0}}, {{"z", 55}}}
                << ConflictEntries{{{"a", -1}, {"e", 4}}, {{"z", 55}}};
        QTest::newRow("group rows after bus rows")
                << ConflictEntries{{{"e", 0}, {"f", 0}}} << ConflictEntries{{{"e", 4}, {"f", 6}}};
        QTest::newRow("non-numeric address reads 0")
                << ConflictEntries{{{"e", 0}, {"n", 5}}} << ConflictEntries{{{"e", 4}, {"n", 0}}};
        QTest::newRow("unmapped row")
                << ConflictEntries{{{"e", 0}, {"b", 5}}} << ConflictEntries{{{"e", 4}, {"b", -1}}};
        QTest::newRow("other bus not read")
                << ConflictEntries{{{"d", 5}}} << ConflictEntries{{{"d", -1}}};
    }

    void addConflictData()
    {
        QFETCH(ConflictEntries, before);
        QFETCH(ConflictEntries, after);
        fillConflictTables();
        manager->conflictDatas = before;
        manager->addConflictData("mtcp");
        QCOMPARE(manager->conflictDatas, after);
    }

    void isConflict_data()
    {
        QTest::addColumn<ConflictEntries>("entries");
        QTest::addColumn<QString>("module");
        QTest::addColumn<QString>("funcKey");
        QTest::addColumn<QString>("expected");
        QTest::addColumn<ConflictEntries>("after");

        const ConflictEntries af = {{{"a", 0}, {"e", 0}}};
        QTest::newRow("no entries") << ConflictEntries() << "Weld"
                                    << "a"
                                    << "" << ConflictEntries();
        QTest::newRow("key held nowhere, nothing refreshed")
                << ConflictEntries{{{"e", 0}, {"f", 0}}} << "Weld"
                << "a"
                << "" << ConflictEntries{{{"e", 0}, {"f", 0}}};
        QTest::newRow("other key mapped") << af << "Weld"
                                          << "a"
                                          << "甲,戊" << ConflictEntries{{{"a", -1}, {"e", 4}}};
        QTest::newRow("other key unmapped") << af << "Weld"
                                            << "e"
                                            << "" << ConflictEntries{{{"a", -1}, {"e", 4}}};
        QTest::newRow("Chinese module name") << ConflictEntries{{{"e", 0}, {"f", 0}}} << "焊接"
                                             << "e"
                                             << "戊,己" << ConflictEntries{{{"e", 4}, {"f", 6}}};
        QTest::newRow("key without a function name")
                << ConflictEntries{{{"e", 0}, {"f", 0}, {"q", 0}}} << "Weld"
                << "q"
                << "戊,己" << ConflictEntries{{{"e", 4}, {"f", 6}, {"q", 0}}};
        QTest::newRow("first qualifying entry")
                << ConflictEntries{{{"b", 0}, {"e", 0}}, {{"e", 0}, {"f", 0}}} << "Weld"
                << "e"
                << "戊,己" << ConflictEntries{{{"b", -1}, {"e", 4}}, {{"e", 4}, {"f", 6}}};
        QTest::newRow("key is case-sensitive") << ConflictEntries{{{"e", 0}, {"f", 0}}} << "Weld"
                                               << "E"
                                               << "" << ConflictEntries{{{"e", 0}, {"f", 0}}};
        QTest::newRow("unknown module") << ConflictEntries{{{"e", 0}, {"f", 0}}} << "Other"
                                        << "e"
                                        << "" << ConflictEntries{{{"e", 4}, {"f", 6}}};
    }

    void isConflict()
    {
        QFETCH(ConflictEntries, entries);
        QFETCH(QString, module);
        QFETCH(QString, funcKey);
        QFETCH(QString, expected);
        QFETCH(ConflictEntries, after);
        fillConflictTables();
        manager->conflictDatas = entries;
        QCOMPARE(manager->isConflict("mtcp", module, funcKey, 0), expected);
        QCOMPARE(manager->conflictDatas, after);
    }

    void checkIPv4Format_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<bool>("accepted");

        for (const char *text : {"192.168.1.1", "0.0.0.0", "255.255.255.255", "10.0.0.254"})
            QTest::newRow(text) << QString(text) << true;
        for (const char *text : {"192.168.1", "1.2.3", "1", "192.168.1.1 ", " 192.168.1.1",
                                 "300.1.1.1", "256.1.1.1", "1.2.3.4.5", "1234.1.1.1", "1..2.3",
                                 "1.2.3.4/24", "1,2,3,4", "a.b.c.d", "", "::1", "::ffff:1.2.3.4"})
            QTest::newRow(qPrintable(QStringLiteral("reject '%1'").arg(text)))
                    << QString(text) << false;
    }

    void checkIPv4Format()
    {
        QFETCH(QString, text);
        QFETCH(bool, accepted);
        QCOMPARE(BusFileDataManager::checkIPv4Format(text), accepted);
    }

    void powerOfTwo()
    {
        int exponent = 0;
        for (int value = -1100; value <= 1100; ++value) {
            const bool power = value >= 1 && value <= 512 && (value & (value - 1)) == 0;
            const int expected = power ? exponent++ : -1;
            QCOMPARE(BusFileDataManager::powerOfTwo(value), expected);
        }
        QCOMPARE(exponent, 10);
        QCOMPARE(BusFileDataManager::powerOfTwo(INT_MIN), -1);
        QCOMPARE(BusFileDataManager::powerOfTwo(INT_MAX), -1);
        QCOMPARE(BusFileDataManager::powerOfTwo(1 << 30), -1);
    }

private:
    void fillGroups()
    {
        for (int dir = 0; dir < 2; ++dir) {
            for (int type = 0; type < 3; ++type) {
                manager->curGroupTables[dir][type].clear();
                manager->savedGroupTables[dir][type].clear();
            }
        }
        const auto put = [](QMap<QString, GroupInfo> &table, const GroupInfo &info) {
            table.insert(info.address, info);
        };
        auto &inputInt = manager->curGroupTables[0][0];
        put(inputInt, group("int", "1", "mtcp", "6", "9"));
        put(inputInt, group("int", "2", "MTCP", "0", "9"));
        put(inputInt, group("int", "5", "mtcp", "20", "29"));
        put(inputInt, group("int", "3", "eip", "0", "100"));
        put(inputInt, group("int", "x", "dns", "0", "7"));
        put(manager->curGroupTables[0][1], group("float", "4", "mtcp", "40", "49"));
        put(manager->savedGroupTables[0][0], group("int", "7", "mtcp", "0", "99"));
        put(manager->savedGroupTables[0][2], group("string", "9", "mtcp", "0", "15"));
        put(manager->curGroupTables[1][0], group("int", "8", "mtcp", "10", "19"));
    }

    void fillConflictTables()
    {
        manager->mapList[0] = {
                row("Weld", "f", "int", "group_mtcp", "6"), row("Weld", "a", "bool", "mtcp", "3"),
                row("Weld", "b", "bool", "mtcp", "-1"),     row("Weld", "f", "bool", "mtcp", "2"),
                row("Weld", "n", "bool", "mtcp", "x1"),     row("Weld", "d", "bool", "ethcat", "9"),
        };
        manager->mapList[1] = {row("Weld", "e", "bool", "mtcp", "4")};
    }
};

QTEST_GUILESS_MAIN(ValidationTest)
#include "tst_validation.moc"
