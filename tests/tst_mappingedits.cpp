// Mapping queries and the merge of edited rows into the working tables.
#include "BusFileDataManager.h"
#include "TestWorkspace.h"

#include <QRandomGenerator>
#include <QtTest>

using Rows = QVector<FuncAndMapInfo>;
Q_DECLARE_METATYPE(Rows)

namespace {

FuncAndMapInfo row(const QString &module, const QString &name, const QString &fieldBus,
                   const QString &address, const QString &type = QStringLiteral("bool"))
{
    FuncAndMapInfo info;
    info.module = module;
    info.name = name;
    info.type = type;
    info.fieldBus = fieldBus;
    info.address = address;
    return info;
}

FuncAndMapInfo withExtras(FuncAndMapInfo info, const QString &invert, const QString &filterTime,
                          const QString &nameCn = QString(), bool forceEnabled = true)
{
    info.invert = invert;
    info.filterTime = filterTime;
    info.nameCn = nameCn;
    info.forceEnabled = forceEnabled;
    return info;
}

QStringList describe(const Rows &rows)
{
    QStringList lines;
    for (const FuncAndMapInfo &info : rows) {
        lines << QStringList{info.module, info.nameCn,     info.name,
                             info.type,   info.fieldBus,   info.address,
                             info.invert, info.filterTime, info.forceEnabled ? "F" : "-"}
                         .join(QLatin1Char('|'));
    }
    return lines;
}

// The merge walked step by step on the key list, removing as it goes.
void referenceModify(BusFileDataManager *manager, Rows rows, Rows &table)
{
    QStringList tableKeys = manager->getListKey(table);
    const QStringList editKeys = manager->getListKey(rows);
    for (int i = 0; i < rows.size(); ++i) {
        const QString &key = editKeys.at(i);
        if (!tableKeys.contains(key, Qt::CaseSensitive)) {
            if (rows.at(i).address != QLatin1String("-1"))
                table.append(rows.at(i));
            continue;
        }
        int j = 0;
        while (tableKeys.at(j).compare(key, Qt::CaseInsensitive) != 0)
            ++j;
        if (rows.at(i).address != QLatin1String("-1")) {
            table[j].address = rows.at(i).address;
            table[j].fieldBus = rows.at(i).fieldBus;
            table[j].filterTime = rows.at(i).filterTime;
            table[j].invert = rows.at(i).invert;
        } else {
            table.removeAt(j);
            tableKeys.removeAt(j);
        }
    }
}

} // namespace

class MappingEditsTest : public QObject
{
    Q_OBJECT

private:
    TestWorkspace workspace;
    BusFileDataManager *manager = nullptr;

private slots:
    void initTestCase()
    {
        manager = new BusFileDataManager();
        manager->moduleNameMap = {{"Weld", "焊接"}, {"Glue", "涂胶"}};
    }

    void cleanupTestCase() { delete manager; }

    void getMapInfoList_data()
    {
        QTest::addColumn<QString>("bus");
        QTest::addColumn<int>("dir");
        QTest::addColumn<QStringList>("names");

        QTest::newRow("bus rows, then group rows") << "mtcp" << 0 << QStringList{"a", "b", "g"};
        QTest::newRow("no group rows") << "eip" << 0 << QStringList{"e"};
        QTest::newRow("unknown bus") << "pfn" << 0 << QStringList();
        QTest::newRow("key as it stands") << "MTCP" << 0 << QStringList();
        QTest::newRow("output view") << "mtcp" << 1 << QStringList{"o"};
        QTest::newRow("any other direction is output") << "mtcp" << 2 << QStringList{"o"};
    }

    void getMapInfoList()
    {
        QFETCH(QString, bus);
        QFETCH(int, dir);
        QFETCH(QStringList, names);
        manager->busMap[0] = {
                {"mtcp", {row("Weld", "a", "mtcp", "1"), row("Weld", "b", "mtcp", "2")}},
                {"group_mtcp", {row("Weld", "g", "group_mtcp", "3")}},
                {"eip", {row("Weld", "e", "eip", "4")}}};
        manager->busMap[1] = {{"mtcp", {row("Weld", "o", "mtcp", "1")}}};
        QStringList got;
        for (const FuncAndMapInfo &info : manager->getMapInfoList(bus, BiBo(dir)))
            got << info.name;
        QCOMPARE(got, names);
    }

    void getBusSignalMap()
    {
        manager->mapList[0] = {row("Weld", "in", "mtcp", "1")};
        manager->mapList[1] = {row("Weld", "out", "mtcp", "1"), row("Weld", "x", "eip", "2")};
        Rows copy = {row("Glue", "old", "mtcp", "9")};
        manager->getBusSignalMap(BusInput, copy);
        QCOMPARE(describe(copy), describe(manager->mapList[0]));
        manager->getBusSignalMap(BiBo(5), copy);
        QCOMPARE(describe(copy), describe(manager->mapList[1]));
    }

    void getListKey_data()
    {
        QTest::addColumn<QString>("module");
        QTest::addColumn<QString>("fieldBus");
        QTest::addColumn<QString>("key");
        QTest::addColumn<QString>("loweredBus");

        QTest::newRow("English module") << "Weld"
                                        << "MTCP"
                                        << "fmtcp"
                                        << "mtcp";
        QTest::newRow("Chinese module") << "涂胶"
                                        << "eip"
                                        << "feip"
                                        << "eip";
        QTest::newRow("unknown module") << "Spot"
                                        << "EIP"
                                        << "f"
                                        << "eip";
        QTest::newRow("no module") << ""
                                   << "eip"
                                   << "f"
                                   << "eip";
        QTest::newRow("group bus") << "Weld"
                                   << "GROUP_MTCP"
                                   << "fmtcp"
                                   << "group_mtcp";
        QTest::newRow("group without '_'") << "Weld"
                                           << "group"
                                           << "fgroup"
                                           << "group";
        QTest::newRow("group, empty part") << "Weld"
                                           << "group_"
                                           << "f"
                                           << "group_";
        QTest::newRow("group, third part dropped") << "Weld"
                                                   << "xgroup_eip_2"
                                                   << "feip"
                                                   << "xgroup_eip_2";
        QTest::newRow("'_' without group") << "Weld"
                                           << "a_b"
                                           << "fa_b"
                                           << "a_b";
    }

    void getListKey()
    {
        QFETCH(QString, module);
        QFETCH(QString, fieldBus);
        QFETCH(QString, key);
        QFETCH(QString, loweredBus);
        Rows rows = {row(module, "f", fieldBus, "1")};
        QCOMPARE(manager->getListKey(rows), QStringList{key});
        QCOMPARE(rows.at(0).fieldBus, loweredBus);
    }

    void setMapInfo_data()
    {
        QTest::addColumn<Rows>("table");
        QTest::addColumn<Rows>("edits");
        QTest::addColumn<Rows>("expected");

        const Rows table = {
                row("Weld", "arcOn", "mtcp", "1"), row("Weld", "arcOn", "eip", "2"),
                row("Weld", "gasOn", "mtcp", "3"), row("Weld", "gasOn", "mtcp", "4"),
                row("Glue", "start", "MTCP", "5"), row("Spot", "spot", "mtcp", "6"),
                row("Spot", "spot", "eip", "7"),
        };
        Rows updated = table;
        updated[1] = withExtras(row("Weld", "arcOn", "eip", "9"), "1", "5");
        updated[4].fieldBus = "mtcp";
        QTest::newRow("update copies the mapping only")
                << table
                << Rows{withExtras(row("Weld", "arcOn", "EIP", "9", "int"), "1", "5", "x", false)}
                << updated;

        Rows lowered = table;
        lowered[4].fieldBus = "mtcp";
        QTest::newRow("new key, unmapped: nothing")
                << table << Rows{row("Weld", "newFunc", "mtcp", "-1")} << lowered;
        QTest::newRow("new key appended") << table << Rows{row("Weld", "newFunc", "MTCP", "8")}
                                          << lowered + Rows{row("Weld", "newFunc", "mtcp", "8")};
        QTest::newRow("appended rows are not merged")
                << table
                << Rows{row("Weld", "newFunc", "mtcp", "8"), row("Weld", "newFunc", "mtcp", "9"),
                        row("Weld", "newFunc", "mtcp", "-1")}
                << lowered
                        + Rows{row("Weld", "newFunc", "mtcp", "8"),
                               row("Weld", "newFunc", "mtcp", "9")};

        Rows withoutGas = lowered;
        withoutGas.remove(2, 2);
        QTest::newRow("two removals with one key")
                << table
                << Rows{row("Weld", "gasOn", "mtcp", "-1"), row("Weld", "gasOn", "mtcp", "-1")}
                << withoutGas;
        QTest::newRow("third removal finds no key")
                << table
                << Rows{row("Weld", "gasOn", "mtcp", "-1"), row("Weld", "gasOn", "mtcp", "-1"),
                        row("Weld", "gasOn", "mtcp", "-1")}
                << withoutGas;

        Rows shifted = lowered;
        shifted.remove(2);
        shifted[2].address = "10";
        QTest::newRow("update after a removal meets the next row")
                << table
                << Rows{row("Weld", "gasOn", "mtcp", "-1"), row("Weld", "gasOn", "mtcp", "10")}
                << shifted;
        QTest::newRow("key differing in case is new")
                << table
                << Rows{row("Weld", "ARCON", "mtcp", "11"), row("Weld", "GASON", "mtcp", "-1")}
                << lowered + Rows{row("Weld", "ARCON", "mtcp", "11")};

        Rows spotMoved = lowered;
        spotMoved[5].fieldBus = "eip";
        spotMoved[5].address = "20";
        QTest::newRow("unknown module: one key on every bus")
                << table << Rows{row("Spot", "spot", "eip", "20")} << spotMoved;

        const Rows mixedCase = {row("Weld", "Flow", "mtcp", "1"), row("Weld", "flow", "mtcp", "2")};
        QTest::newRow("position ignores case")
                << mixedCase << Rows{row("Weld", "flow", "mtcp", "12")}
                << Rows{row("Weld", "Flow", "mtcp", "12"), row("Weld", "flow", "mtcp", "2")};
        QTest::newRow("removal by case-insensitive position")
                << mixedCase
                << Rows{row("Weld", "flow", "mtcp", "-1"), row("Weld", "Flow", "mtcp", "5")}
                << Rows{row("Weld", "flow", "mtcp", "2"), row("Weld", "Flow", "mtcp", "5")};
        QTest::newRow("group row shares the bus key")
                << Rows{row("Weld", "arcOn", "GROUP_MTCP", "5"), row("Weld", "arcOn", "mtcp", "1")}
                << Rows{row("Weld", "arcOn", "mtcp", "7")}
                << Rows{row("Weld", "arcOn", "mtcp", "7"), row("Weld", "arcOn", "mtcp", "1")};
        QTest::newRow("empty table")
                << Rows() << Rows{row("Weld", "a", "Eip", "1"), row("Weld", "b", "eip", "-1")}
                << Rows{row("Weld", "a", "eip", "1")};
    }

    void setMapInfo()
    {
        QFETCH(Rows, table);
        QFETCH(Rows, edits);
        QFETCH(Rows, expected);
        const Rows committed = {row("Weld", "committed", "mtcp", "1")};
        manager->mapList[0] = Rows();
        manager->mapList[1] = table;
        manager->readMapList[1] = committed;
        manager->busMap[1] = {{"mtcp", committed}};

        manager->setMapInfo(edits, BiBo(3));

        QCOMPARE(describe(manager->mapList[1]), describe(expected));
        QVERIFY(manager->mapList[0].isEmpty());
        QCOMPARE(describe(manager->readMapList[1]), describe(committed));
        QCOMPARE(describe(manager->getMapInfoList("mtcp", BusOutput)), describe(committed));
    }

    // The indexed merge must give what the step-by-step walk gives.
    void setMapInfoMatchesStepwiseWalk()
    {
        QRandomGenerator random(20240605);
        const QStringList modules = {"Weld", "焊接", "Glue", "Spot", ""};
        const QStringList names = {"a", "A", "ab", "aB", "Ab", "Σx", "σx", "ςx", "b"};
        const QStringList buses = {"mtcp",       "MTCP",      "eip",  "Eip",
                                   "group_mtcp", "GROUP_EIP", "group"};
        const QStringList addresses = {"-1", "-1", "0", "5", "17", "x"};
        const auto pick = [&random](const QStringList &list) {
            return list.at(random.bounded(list.size()));
        };
        const auto randomRow = [&]() {
            FuncAndMapInfo info = row(pick(modules), pick(names), pick(buses), pick(addresses),
                                      pick({"bool", "int"}));
            return withExtras(info, QString::number(random.bounded(2)),
                              QString::number(random.bounded(50)), pick({"", "名"}),
                              random.bounded(2) == 0);
        };

        for (int round = 0; round < 400; ++round) {
            Rows table;
            const int tableSize = random.bounded(60);
            for (int i = 0; i < tableSize; ++i)
                table << randomRow();
            Rows edits;
            const int editCount = random.bounded(60);
            for (int i = 0; i < editCount; ++i) {
                FuncAndMapInfo edit = randomRow();
                // Most edits start from a table row, as a screen's do.
                if (!table.isEmpty() && random.bounded(4) != 0) {
                    const FuncAndMapInfo &source = table.at(random.bounded(table.size()));
                    edit.module = source.module;
                    edit.name = source.name;
                    edit.fieldBus =
                            random.bounded(3) == 0 ? source.fieldBus.toUpper() : source.fieldBus;
                }
                edits << edit;
            }

            Rows expected = table;
            referenceModify(manager, edits, expected);
            manager->mapList[0] = table;
            manager->setMapInfo(edits, BusInput);
            QVERIFY2(describe(manager->mapList[0]) == describe(expected),
                     qPrintable(QStringLiteral("round %1").arg(round)));
        }
    }
};

QTEST_GUILESS_MAIN(MappingEditsTest)
#include "tst_mappingedits.moc"
