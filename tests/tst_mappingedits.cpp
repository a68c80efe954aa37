// Mapping queries and the merge of edited rows into the working tables.
#include "BusFileDataManager.h"
#include "MappingRows.h"
#include "TestWorkspace.h"

#include <QRandomGenerator>
#include <QtTest>

Q_DECLARE_METATYPE(Rows)

namespace {

// The merge walked step by step on the key list, removing as it goes.
Rows referenceMerge(BusFileDataManager *manager, Rows edits, Rows table)
{
    QStringList tableKeys = manager->getListKey(table);
    const QStringList editKeys = manager->getListKey(edits);
    for (int i = 0; i < edits.size(); ++i) {
        const FuncAndMapInfo &edit = edits.at(i);
        if (!tableKeys.contains(editKeys.at(i), Qt::CaseSensitive)) {
            if (edit.address != QLatin1String("-1"))
                table.append(edit);
            continue;
        }
        int j = 0;
        while (tableKeys.at(j).compare(editKeys.at(i), Qt::CaseInsensitive) != 0)
            ++j;
        const FuncAndMapInfo row = table.at(j);
        if (edit.address != QLatin1String("-1")) {
            table[j] = {row.module,   row.nameCn,  row.name,        row.type,        edit.fieldBus,
                        edit.address, edit.invert, edit.filterTime, row.forceEnabled};
        } else {
            table.removeAt(j);
            tableKeys.removeAt(j);
        }
    }
    return table;
}

} // namespace

class MappingEditsTest : public QObject
{
    Q_OBJECT

private:
    TestWorkspace workspace;
    BusFileDataManager manager;

private slots:
    void initTestCase() { manager.moduleNameMap = {{"Weld", "焊接"}, {"Glue", "涂胶"}}; }

    void getMapInfoList()
    {
        manager.busMap[0] = {{"mtcp", rows("Weld/a@mtcp=1 Weld/b@mtcp=2")},
                             {"group_mtcp", rows("Weld/g@group_mtcp=3")}};
        manager.busMap[1] = {{"mtcp", rows("Weld/o@mtcp=1")}};
        QCOMPARE(describe(manager.getMapInfoList("mtcp", BusInput)), // group rows last
                 describe(rows("Weld/a@mtcp=1 Weld/b@mtcp=2 Weld/g@group_mtcp=3")));
        QVERIFY(manager.getMapInfoList("pfn", BusInput).isEmpty());
        QCOMPARE(describe(manager.getMapInfoList("mtcp", BiBo(2))), // any direction but 0
                 describe(rows("Weld/o@mtcp=1")));
    }

    // Unknown modules give no bus part; the lowered bus names stay in the caller's rows.
    void getListKey()
    {
        Rows mixed = rows("Weld/f@MTCP=1 涂胶/f@eip=1 Spot/f@EIP=1 Weld/f@GROUP_MTCP=1 "
                          "Weld/f@group=1 Weld/f@xgroup_eip_2=1");
        QCOMPARE(manager.getListKey(mixed),
                 (QStringList{"fmtcp", "feip", "f", "fmtcp", "fgroup", "feip"}));
        QCOMPARE(describe(mixed),
                 describe(rows("Weld/f@mtcp=1 涂胶/f@eip=1 Spot/f@eip=1 "
                               "Weld/f@group_mtcp=1 Weld/f@group=1 "
                               "Weld/f@xgroup_eip_2=1")));
    }

    void setMapInfo_data()
    {
        QTest::addColumn<Rows>("table");
        QTest::addColumn<Rows>("edits");
        QTest::addColumn<Rows>("expected");
        const auto add = [](const char *tag, const QString &table, const QString &edits,
                            const QString &expected) {
            QTest::newRow(tag) << rows(table) << rows(edits) << rows(expected);
        };
        add("update copies the mapping only, by bus", "Weld/a@mtcp=1 Weld/a@EIP=2",
            "Weld/a@EIP=9:int,cn=x,filter=5,invert=1,noforce",
            "Weld/a@mtcp=1 Weld/a@eip=9,filter=5,invert=1");
        add("new key, unmapped: nothing", "Glue/a@MTCP=1", "Glue/b@mtcp=-1", "Glue/a@mtcp=1");
        add("appended rows are not merged", "Weld/a@mtcp=1",
            "Weld/b@MTCP=8 Weld/b@mtcp=8 Weld/b@mtcp=-1",
            "Weld/a@mtcp=1 Weld/b@mtcp=8 Weld/b@mtcp=8");
        add("two removals with one key", "Weld/g@mtcp=3 Weld/a@mtcp=1 Weld/g@mtcp=4 Weld/g@mtcp=5",
            "Weld/g@mtcp=-1 Weld/g@mtcp=-1", "Weld/a@mtcp=1 Weld/g@mtcp=5");
        add("update after a removal meets the next row", "Weld/g@mtcp=3 Weld/g@mtcp=4",
            "Weld/g@mtcp=-1 Weld/g@mtcp=10", "Weld/g@mtcp=10");
        add("key differing in case is new", "Weld/a@mtcp=1 Weld/g@mtcp=3",
            "Weld/A@mtcp=11 Weld/G@mtcp=-1", "Weld/a@mtcp=1 Weld/g@mtcp=3 Weld/A@mtcp=11");
        add("unknown module: one key on every bus", "Spot/s@mtcp=6 Spot/s@eip=7", "Spot/s@eip=20",
            "Spot/s@eip=20 Spot/s@eip=7");
        add("position ignores case", "Weld/Flow@mtcp=1 Weld/flow@mtcp=2", "Weld/flow@mtcp=12",
            "Weld/Flow@mtcp=12 Weld/flow@mtcp=2");
        add("removal by case-insensitive position", "Weld/Flow@mtcp=1 Weld/flow@mtcp=2",
            "Weld/flow@mtcp=-1 Weld/Flow@mtcp=5", "Weld/flow@mtcp=2 Weld/Flow@mtcp=5");
    }

    // Only the working table of the direction changes; the committed view stays.
    void setMapInfo()
    {
        QFETCH(Rows, table);
        QFETCH(Rows, edits);
        QFETCH(Rows, expected);
        const Rows committed = rows("Weld/committed@mtcp=1");
        manager.mapList[0] = Rows();
        manager.mapList[1] = table;
        manager.readMapList[1] = committed;
        manager.busMap[1] = {{"mtcp", committed}};

        manager.setMapInfo(edits, BiBo(3));

        Rows copy;
        manager.getBusSignalMap(BiBo(5), copy);
        QCOMPARE(describe(copy), describe(expected));
        manager.getBusSignalMap(BusInput, copy);
        QVERIFY(copy.isEmpty());
        QCOMPARE(describe(manager.readMapList[1]), describe(committed));
        QCOMPARE(describe(manager.getMapInfoList("mtcp", BusOutput)), describe(committed));
    }

    // The indexed merge must give what the step-by-step walk gives.
    void setMapInfoMatchesStepwiseWalk()
    {
        QRandomGenerator random(20240605);
        const auto pick = [&random](const QStringList &list) {
            return list.at(random.bounded(list.size()));
        };
        const auto randomRow = [&]() {
            return FuncAndMapInfo{
                    pick({"Weld", "焊接", "Glue", "Spot", ""}),
                    pick({"", "名"}),
                    pick({"a", "A", "ab", "aB", "Ab", "Σx", "σx", "ςx", "b"}),
                    pick({"bool", "int"}),
                    pick({"mtcp", "MTCP", "eip", "Eip", "group_mtcp", "GROUP_EIP", "group"}),
                    pick({"-1", "-1", "0", "5", "17", "x"}),
                    pick({"0", "1"}),
                    pick({"0", "7", "49"}),
                    random.bounded(2) == 0};
        };
        for (int round = 0; round < 400; ++round) {
            Rows table, edits;
            for (int i = random.bounded(60); i > 0; --i)
                table << randomRow();
            for (int i = random.bounded(60); i > 0; --i) {
                edits << randomRow();
                // Most edits start from a table row, as a screen's do.
                if (!table.isEmpty() && random.bounded(4) != 0) {
                    const FuncAndMapInfo &source = table.at(random.bounded(table.size()));
                    edits.last().module = source.module;
                    edits.last().name = source.name;
                    edits.last().fieldBus =
                            random.bounded(3) ? source.fieldBus : source.fieldBus.toUpper();
                }
            }
            const Rows expected = referenceMerge(&manager, edits, table);
            manager.mapList[0] = table;
            manager.setMapInfo(edits, BusInput);
            QVERIFY2(describe(manager.mapList[0]) == describe(expected),
                     qPrintable(QStringLiteral("round %1").arg(round)));
        }
    }
};

QTEST_GUILESS_MAIN(MappingEditsTest)
#include "tst_mappingedits.moc"
