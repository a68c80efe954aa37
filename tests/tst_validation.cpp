// Address, range, group and conflict validators and the bus address counts.
#include "BusFileDataManager.h"
#include "MappingRows.h"
#include "TestWorkspace.h"

#include <QRandomGenerator>
#include <QtTest>

#include <climits>

using ConflictEntries = QVector<QMap<QString, int>>;
Q_DECLARE_METATYPE(ConflictEntries)

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
        const auto function = [](const QString &name, const QString &nameCn) {
            FuncAndMapInfo info = row("/" + name + "@=-1");
            info.nameCn = nameCn;
            return info;
        };
        manager->funcListMap.insert("Weld",
                                    {{function("a", "甲"), function("e", "戊")},
                                     {function("f", "己"), function("b", "乙")}});

        // The last six input rows and "e" serve the conflict cases.
        manager->mapList[0] = {row("Weld/arcOn@mtcp=10"),     row("Glue/wireSpeed@mtcp=10:int"),
                               row("Weld/unmapped@mtcp=-1"),  row("Glue/start@mtcp=12:Bool_t"),
                               row("Glue/junk@mtcp=abc"),     row("Glue/flow@group_mtcp=5:int"),
                               row("Weld/eipIn@eip=20"),      row("Weld/eipWord@eip=30:int"),
                               row("Weld/eipPadded@eip=025"), row("Weld/f@group_mtcp=6:int"),
                               row("Weld/a@mtcp=3"),          row("Weld/b@mtcp=-1"),
                               row("Weld/f@mtcp=2"),          row("Weld/n@mtcp=x1"),
                               row("Weld/d@ethcat=9")};
        manager->mapList[1] = {row("Spot/ready@mtcp=10"), row("Weld/e@mtcp=4")};

        const auto group = [this](bool saved, int dir, const QString &type, const QString &number,
                                  const QString &bus, const QString &first, const QString &last) {
            const int index = QStringList{"int", "float", "string"}.indexOf(type);
            (saved ? manager->savedGroupTables : manager->curGroupTables)[dir][index].insert(
                    number, GroupInfo{type, number, bus, first, last});
        };
        // Input int groups of mtcp: 1 = 6..9, 2 = 0..9, 5 = 20..29.
        group(false, 0, "int", "1", "mtcp", "6", "9");
        group(false, 0, "int", "2", "MTCP", "0", "9");
        group(false, 0, "int", "5", "mtcp", "20", "29");
        group(false, 0, "int", "3", "eip", "0", "100");
        group(false, 0, "int", "x", "dns", "0", "7");
        group(false, 0, "float", "4", "mtcp", "40", "49");
        group(true, 0, "int", "7", "mtcp", "0", "99");
        group(false, 1, "int", "8", "mtcp", "10", "19");

        // Each record holds base + place: 100 for ModbusUser, 200 for EthercatUser, ...
        const QStringList records = {"ModbusUser",   "EthercatUser",     "EthernetIPUser",
                                     "ProfinetUser", "ModbusMasterUser", "DeviceNetSlaveUser",
                                     "EcmUser",      "EimUser",          "PnmUser",
                                     "DnmUser"};
        for (int r = 0; r < records.size(); ++r) {
            BusAddrNumInfo &info = manager->busAddrNumInfo[records.at(r)];
            for (int i = 0; i < 9; ++i)
                info.variableLength[i] = (r + 1) * 100 + i;
        }
    }

    void cleanupTestCase() { delete manager; }

    // args: address: type, address[, language]; range: range; group: key, number, range;
    // groupId: selector, number; busNum: type.
    void validators_data()
    {
        QTest::addColumn<QString>("call");
        QTest::addColumn<QString>("bus");
        QTest::addColumn<int>("dir");
        QTest::addColumn<QStringList>("args");
        QTest::addColumn<bool>("saved");
        QTest::addColumn<QString>("expected");
        const auto add = [](const char *call, const char *tag, const QString &bus, int dir,
                            const QStringList &args, const QString &expected, bool saved = false) {
            QTest::newRow(qPrintable(QStringLiteral("%1: %2").arg(call, tag)))
                    << QString(call) << bus << dir << args << saved << expected;
        };
        add("address", "free", "mtcp", 0, {"bool", "13"}, "ok");
        add("address", "taken, English", "mtcp", 0, {"bool", "10"}, "Weld");
        add("address", "taken, Chinese", "mtcp", 0, {"bool", "10", "3"}, "焊接");
        add("address", "type is a substring, any case", "mtcp", 0, {"bool", "12"}, "Glue");
        add("address", "other type at the address", "mtcp", 0, {"int", "10"}, "Glue");
        add("address", "-1 is never taken", "mtcp", 0, {"bool", "-1"}, "ok");
        add("address", "non-numeric address reads 0", "mtcp", 0, {"bool", "0"}, "Glue");
        add("address", "any direction but 0 is output", "mtcp", 7, {"bool", "10", "3"}, "Spot");
        add("address", "group rows are not the bus's", "mtcp", 0, {"int", "5"}, "ok");
        add("address", "group key", "group_mtcp", 0, {"int", "5"}, "Glue");

        add("range", "first bound inclusive", "eip", 0, {"20,25"}, "20");
        add("range", "last bound inclusive", "eip", 0, {"15,20"}, "20");
        add("range", "above, past non-bool", "eip", 0, {"26,30"}, "ok");
        add("range", "address text unchanged", "eip", 0, {"24,26"}, "025");
        add("range", "first in table order", "mtcp", 0, {"0,30"}, "10");
        add("range", "only first given", "mtcp", 0, {"10"}, "ok");
        add("range", "empty last reads 0", "mtcp", 0, {"-5,"}, "-1");
        add("range", "non-numeric reads 0", "mtcp", 0, {"x,0"}, "abc");
        add("range", "output table", "mtcp", 1, {"0,9"}, "4");

        add("group", "only first: 0..9, not 6..9", "mtcp", 0, {"int", "", "5"}, "2");
        add("group", "only first, bound", "mtcp", 0, {"int", "", "29,-1"}, "5");
        add("group", "only first, outside", "mtcp", 0, {"int", "", "15"}, "ok");
        add("group", "only last", "mtcp", 0, {"int", "", "-1,8"}, "1");
        add("group", "only last, below a group", "mtcp", 0, {"int", "", "-1,3"}, "2");
        add("group", "covers the start", "mtcp", 0, {"int", "", "3,6"}, "1");
        add("group", "covers the end", "mtcp", 0, {"int", "", "9,15"}, "1");
        add("group", "inside", "mtcp", 0, {"int", "", "22,23"}, "5");
        add("group", "around", "mtcp", 0, {"int", "", "19,30"}, "5");
        add("group", "between groups", "mtcp", 0, {"int", "", "10,19"}, "ok");
        add("group", "no bounds", "mtcp", 0, {"int", "", "-1,-1"}, "ok");
        add("group", "non-numeric reads 0", "mtcp", 0, {"int", "", "x,y"}, "2");
        add("group", "edited group skipped", "mtcp", 0, {"int", "5", "20,29"}, "ok");
        add("group", "skip needs the type", "mtcp", 0, {"int,float", "5", "20,29"}, "5");
        add("group", "skip type ignores case", "mtcp", 0, {"int,INT", "5", "20,29"}, "ok");
        add("group", "selector before the comma", "mtcp", 0, {"float,x", "", "45"}, "4");
        add("group", "group bus after '-'", "GROUP-eip", 0, {"int", "", "50,50"}, "3");
        add("group", "'-' without group", "x-eip", 0, {"int", "", "50,50"}, "ok");
        add("group", "saved table", "mtcp", 0, {"int", "", "50,50"}, "7", true);
        add("group", "output groups", "mtcp", 1, {"int", "", "15,15"}, "8");

        // The reverse sense: "ok" when the group is there.
        add("groupId", "-1 needs no group", "none", 0, {"none", "-1"}, "ok");
        add("groupId", "exists", "mtcp", 0, {"int", "1"}, "ok");
        add("groupId", "another bus's group", "mtcp", 0, {"int", "3"}, "");
        add("groupId", "other type", "mtcp", 0, {"float", "5"}, "");
        add("groupId", "saved table only", "mtcp", 0, {"int", "7"}, "ok", true);
        add("groupId", "not in the current table", "mtcp", 0, {"int", "7"}, "");
        add("groupId", "output", "mtcp", 1, {"int", "8"}, "ok");
        add("groupId", "non-numeric number reads 0", "dns", 0, {"int", "0"}, "ok");

        add("busNum", "type equality ignores case", "MTCP", 0, {"BOOL"}, "100");
        add("busNum", "float out", "mtcp", 1, {"float"}, "107");
        add("busNum", "not equal to bool: other", "mtcp", 0, {"boolean"}, "106");
        add("busNum", "last place", "mtcp", 2, {"string"}, "108");
        add("busNum", "place 9", "mtcp", 3, {"string"}, "0");
        add("busNum", "huge direction", "mtcp", INT_MAX, {"string"}, "0");
        add("busNum", "negative direction", "mtcp", -1, {"bool"}, "0");
        add("busNum", "ethcat", "ethcat", 1, {"int"}, "204");
        add("busNum", "eip", "eip", 0, {"float"}, "306");
        add("busNum", "pfn", "pfn", 1, {"bool"}, "401");
        add("busNum", "ecs reads ethercat", "ecs", 0, {"int"}, "203");
        add("busNum", "mbc stride 2", "mbc", 1, {"float"}, "505");
        add("busNum", "dns", "dns", 1, {"int"}, "604");
        add("busNum", "ecm", "ecm", 1, {"bool"}, "701");
        add("busNum", "masters use two places", "ecm", 0, {"int"}, "0");
        add("busNum", "eim", "eim", 1, {"bool"}, "801");
        add("busNum", "pnm", "pnm", 0, {"bool"}, "900");
        add("busNum", "dnm", "dnm", 1, {"bool"}, "1001");
        add("busNum", "MTCP record, MBC stride", "mtcp_mbc", 1, {"int"}, "103");
        add("busNum", "group int, substring", "group_mtcp", 0, {"uint32"}, "256");
        add("busNum", "group float", "group_mtcp", 1, {"float"}, "128");
        add("busNum", "group string", "GROUP_eip", 1, {"string"}, "8");
        add("busNum", "group bool reads the bus", "group_mtcp", 1, {"bool"}, "101");
        add("busNum", "unknown bus", "xyz", 0, {"bool"}, "0");
    }

    void validators()
    {
        QFETCH(QString, call);
        QFETCH(QString, bus);
        QFETCH(int, dir);
        QFETCH(QStringList, args);
        QFETCH(bool, saved);
        QFETCH(QString, expected);
        manager->languageId = args.value(2, "2").toInt();
        const BiBo direction = BiBo(dir);
        QString result;
        if (call == "address")
            result = manager->isAddressValid(bus, direction, args.at(0), args.at(1).toInt());
        else if (call == "range")
            result = manager->isGroupAddrValid(bus, direction, args.at(0));
        else if (call == "group")
            result = manager->isAddressGroupValid(bus, direction, args.at(0), args.at(1),
                                                  args.at(2), saved);
        else if (call == "groupId")
            result = manager->isGroupIdExist(bus, direction, args.at(0), args.at(1).toInt(), saved);
        else
            result = QString::number(manager->getBusNum(bus, direction, args.at(0)));
        QCOMPARE(result, expected);
    }

    // a: input 3; e: output 4; f: input 2 on the bus, 6 in its group; n: input "x1"; d: ethcat.
    // The refresh's found flags carry over from key to key and entry to entry.
    void isConflict_data()
    {
        QTest::addColumn<ConflictEntries>("entries");
        QTest::addColumn<QString>("module");
        QTest::addColumn<QString>("funcKey");
        QTest::addColumn<QString>("expected");
        QTest::addColumn<ConflictEntries>("after");
        const auto add = [](const char *tag, const ConflictEntries &entries, const QString &module,
                            const QString &funcKey, const QString &expected,
                            const ConflictEntries &after) {
            QTest::newRow(tag) << entries << module << funcKey << expected << after;
        };
        const ConflictEntries ef = {{{"e", 0}, {"f", 0}}};
        const ConflictEntries efRefreshed = {{{"e", 4}, {"f", 6}}};
        add("input only, output not yet found", {{{"a", 9}}}, "Weld", "a", "", {{{"a", -1}}});
        add("output flag carries to the next entry", {{{"e", 0}}, {{"a", 0}}}, "Weld", "a", "",
            {{{"e", 4}}, {{"a", 3}}});
        add("other key mapped, missing key kept", {{{"a", 0}, {"e", 0}}, {{"z", 55}}}, "Weld", "a",
            "甲,戊", {{{"a", -1}, {"e", 4}}, {{"z", 55}}});
        add("other key unmapped", {{{"a", 0}, {"e", 0}}}, "Weld", "e", "", {{{"a", -1}, {"e", 4}}});
        add("non-numeric address reads 0", {{{"e", 0}, {"n", 5}}}, "Weld", "e", "戊",
            {{{"e", 4}, {"n", 0}}});
        add("other bus not read", {{{"e", 0}, {"d", 5}}}, "Weld", "e", "", {{{"e", 4}, {"d", -1}}});
        add("key held nowhere, nothing refreshed", ef, "Weld", "a", "", ef);
        add("Chinese module name, group rows last", ef, "焊接", "e", "戊,己", efRefreshed);
        add("first qualifying entry", {{{"b", 0}, {"e", 0}}, ef.first()}, "Weld", "e", "戊,己",
            {{{"b", -1}, {"e", 4}}, efRefreshed.first()});
        add("key is case-sensitive", ef, "Weld", "E", "", ef);
        add("unknown module", ef, "Other", "e", "", efRefreshed);
    }

    void isConflict()
    {
        QFETCH(ConflictEntries, entries);
        QFETCH(QString, module);
        QFETCH(QString, funcKey);
        QFETCH(QString, expected);
        QFETCH(ConflictEntries, after);
        manager->conflictDatas = entries;
        QCOMPARE(manager->isConflict("mtcp", module, funcKey, 0), expected);
        QCOMPARE(manager->conflictDatas, after);
    }

    void checkIPv4Format_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<bool>("accepted");
        for (const char *text : {"192.168.1.1", "0.0.0.0", "255.255.255.255"})
            QTest::newRow(text) << QString(text) << true;
        for (const char *text : {"192.168.1", "1", "192.168.1.1 ", " 192.168.1.1", "300.1.1.1",
                                 "1.2.3.4.5", "1234.1.1.1", "1..2.3", "1,2,3,4", "", "::1"})
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
            QCOMPARE(BusFileDataManager::powerOfTwo(value), power ? exponent++ : -1);
        }
        QCOMPARE(exponent, 10);
        QCOMPARE(BusFileDataManager::powerOfTwo(INT_MIN), -1);
    }

    // The indexed lookups answer as walking the grouped tables in order does,
    // also after the tables change under them.
    void lookupsMatchTheWalk()
    {
        QRandomGenerator random(11);
        const auto pick = [&random](const QStringList &from) {
            return from.at(random.bounded(from.size()));
        };
        // Case pairs outside ASCII and outside the BMP, and a fold that grows.
        const QStringList buses{"mtcp",
                                "MTCP",
                                "group_mtcp",
                                "eip",
                                "ß",
                                "SS",
                                "ẞ",
                                QString::fromUcs4(U"\U00010400"),
                                QString::fromUcs4(U"\U00010428")};
        BusFileDataManager &m = *manager;
        m.busShortNames = QStringList{"mtcp", "ß", "ss", buses.at(7)};
        QMap<QString, GroupInfo> &groups = m.curGroupTables[0][0];
        for (int round = 0; round < 500; ++round) {
            QVector<FuncAndMapInfo> &table = m.mapList[random.bounded(2)];
            const FuncAndMapInfo made{pick({"Weld", "Glue"}),
                                      "",
                                      pick({"a", "b", "c"}),
                                      pick({"bool", "BOOL", "int", "xboolx"}),
                                      pick(buses),
                                      pick({"0", "1", "2", "3", "03", "x", "-1"})};
            const int at = table.isEmpty() ? -1 : random.bounded(table.size());
            switch (random.bounded(4)) {
            case 0:
                table.append(made);
                break;
            case 1:
                at < 0 ? void() : void(table[at] = made);
                break;
            case 2:
                at < 0 ? void() : table.remove(at);
                break;
            default:
                groups.insert(QString::number(random.bounded(9)),
                              GroupInfo{"int", "1", pick(buses), "0", "1"});
            }
            const QString bus = pick(buses);
            QMap<QString, QVector<FuncAndMapInfo>> byBus[2];
            QHash<QString, int> lastAddress[2];
            for (int dir : {0, 1}) {
                m.parseSignalMapByBus(m.mapList[dir], byBus[dir]);
                for (const FuncAndMapInfo &row :
                     byBus[dir].value(bus) + byBus[dir].value("group_" + bus))
                    lastAddress[dir].insert(row.name, row.address.toInt());
            }
            const int address = random.bounded(-1, 4);
            const int first = random.bounded(-1, 4);
            const int last = random.bounded(-1, 4);
            QString taken = "ok", inRange = "ok";
            for (const FuncAndMapInfo &row : byBus[0].value(bus)) {
                const int a = row.address.toInt();
                if (taken == "ok" && address != -1 && a == address
                    && row.type.contains("INT", Qt::CaseInsensitive))
                    taken = m.getCurLanguageModuName(row.module);
                if (inRange == "ok" && last != -1 && first <= a && a <= last
                    && row.type.contains("bool", Qt::CaseInsensitive))
                    inRange = row.address;
            }
            QCOMPARE(m.isAddressValid(bus, BusInput, "INT", address), taken);
            QCOMPARE(
                    m.isGroupAddrValid(bus, BusInput, QStringLiteral("%1,%2").arg(first).arg(last)),
                    inRange);
            int ofBus = 0; // a group key names its bus after the "_"
            for (const GroupInfo &group : qAsConst(groups))
                ofBus += group.fieldBus.compare(bus.split('_').constLast(), Qt::CaseInsensitive)
                        == 0;
            QCOMPARE(m.getBusGroupInfo(bus, BusInput, "int", false).size(), ofBus);

            // Each name's address is its last row's; once a direction found a
            // name, later names missing there keep their value.
            ConflictEntries expected{{{"a", 7}, {"b", 7}}, {{"c", 7}}};
            m.conflictDatas = expected;
            m.addConflictData(bus);
            bool found[2] = {false, false};
            for (QMap<QString, int> &entry : expected) {
                for (auto it = entry.begin(); it != entry.end(); ++it) {
                    for (int dir : {0, 1}) {
                        found[dir] |= lastAddress[dir].contains(it.key());
                        it.value() =
                                !found[dir] ? -1 : lastAddress[dir].value(it.key(), it.value());
                    }
                }
            }
            QCOMPARE(m.conflictDatas, expected);
        }
    }

    // The verdict of mapping a function agrees with the validators the
    // screens ask in turn, on random tables and edits; the holder and group
    // it names are the validators' answers.
    void verdictsAgree()
    {
        QRandomGenerator random(11);
        QSet<int> seen;
        const QStringList types{"bool", "int"};
        const QStringList groupTypes{"int", "float", "string"};
        for (int round = 0; round < 200; ++round) {
            std::unique_ptr<BusFileDataManager> m(new BusFileDataManager());
            m->busShortNames = QStringList{"mtcp"};
            m->busList = {{"ModbusTcpSlave", "mtcp", true}};
            m->moduleNameMap = {{"Weld", "焊接"}};
            BusAddrNumInfo areas;
            areas.variableLength[0] = 16; // bool inputs
            areas.variableLength[3] = int(random.bounded(5)); // int inputs
            m->busAddrNumInfo.insert("ModbusUser", areas);
            QVector<FuncAndMapInfo> declared;
            for (int i = 0; i < 12; ++i) {
                const QString type = types.at(random.bounded(2));
                declared.append(row(QStringLiteral("Weld/f%1@=-1:%2").arg(i).arg(type)));
                if (random.bounded(3) > 0)
                    m->mapList[0].append(row(QStringLiteral("Weld/f%1@%2=%3:%4")
                                                     .arg(i)
                                                     .arg(random.bounded(4) ? "mtcp" : "group_mtcp")
                                                     .arg(random.bounded(18) - 1)
                                                     .arg(type)));
            }
            m->funcListMap.insert("Weld", {declared, {}});
            for (int g = random.bounded(4); g > 0; --g) {
                const QString type = groupTypes.at(random.bounded(3));
                const int first = random.bounded(16);
                m->setGroupInfo({type, QString::number(g), "mtcp", QString::number(first),
                                 QString::number(qMin(15, first + random.bounded(4)))},
                                type, BusInput);
            }
            // Functions not mapped yet, so that no row of their own is in the way.
            const FuncAndMapInfo &f = declared.at(random.bounded(declared.size()));
            if (std::any_of(m->mapList[0].cbegin(), m->mapList[0].cend(),
                            [&f](const FuncAndMapInfo &r) { return r.name == f.name; }))
                continue;
            const QString bus = random.bounded(4) ? "mtcp" : "group_mtcp";
            const int address = random.bounded(20) - 2;
            EditVerdict::Kind expected = EditVerdict::Allowed;
            const bool isGroup = bus.startsWith("group_");
            const int count = m->getBusNum(bus, BusInput, f.type);
            QString holder = m->isAddressValid(bus, BusInput, f.type, address);
            QString group = "ok";
            for (const char *t : {"string", "float", "int"}) {
                if (group == "ok" && !isGroup && f.type == "bool")
                    group = m->isAddressGroupValid(bus, BusInput, t, "no",
                                                   QString::number(address) + ",-1", false);
            }
            if (isGroup && m->isGroupIdExist(bus, BusInput, f.type, address, false) != "ok")
                expected = EditVerdict::GroupMissing;
            else if (count <= 0)
                expected = EditVerdict::NoAddresses;
            else if (address < 0 || address >= count)
                expected = EditVerdict::OutOfRange;
            else if (holder != "ok")
                expected = EditVerdict::Taken;
            else if (group != "ok")
                expected = EditVerdict::InsideGroup;
            const EditVerdict v =
                    m->canMapFunction("Weld", f.name, BusInput, bus, QString::number(address));
            const QString context = QStringLiteral("round %1: %2 %3 at %4 %5: %6")
                                            .arg(round)
                                            .arg(f.name, f.type)
                                            .arg(bus)
                                            .arg(address)
                                            .arg(v.text);
            QVERIFY2(v.kind == expected, qPrintable(context));
            seen.insert(v.kind);
            if (expected == EditVerdict::Taken)
                QVERIFY2(m->getCurLanguageModuName(v.module) == holder, qPrintable(context));
            if (expected == EditVerdict::InsideGroup)
                QVERIFY2(QString::number(v.group) == group, qPrintable(context));
        }
        // The tables are random enough to reach every answer.
        QCOMPARE(seen.size(), 6);
    }
};

QTEST_GUILESS_MAIN(ValidationTest)
#include "tst_validation.moc"
