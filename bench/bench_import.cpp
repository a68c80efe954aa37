// Import of a 10,000-row mapping file against a 10,000-row present mapping:
// the whole readMapParaBackup and each of its steps, the merges, and the plain
// quadratic collision search for comparison.
#include "../tests/support/PlainImport.h"
#include "BusFileDataManager.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QTemporaryDir>
#include <QTextStream>

#include <algorithm>
#include <cstdio>
#include <functional>

namespace {

const QStringList buses{"mtcp", "eip", "ethcat"};
constexpr int rowsPerDirection = 5000;
constexpr int groupsPerBusAndType = 16;
// Groups sit above the addresses the rows use, so no bool row falls inside one.
constexpr int groupBase = 20000;
constexpr int busSize = 65536;

struct Scenario
{
    const char *name;
    // Share of imported rows, per thousand: identical to a present row, the
    // same function at another address, another function at a present address.
    int identical;
    int remapped;
    int colliding;
    // All rows on one bus and one type: every present row meets every imported one.
    bool oneBus;
};

FuncAndMapInfo mappingRow(int dir, int i, bool oneBus)
{
    FuncAndMapInfo row;
    row.module = QStringLiteral("module%1").arg(i % 20);
    row.name = QStringLiteral("func%1_%2").arg(dir).arg(i);
    const int kind = oneBus ? 0 : i % 20;
    row.fieldBus = oneBus ? buses.first() : buses.at(i % buses.size());
    row.type = kind < 14 ? QStringLiteral("bool")
            : kind < 18  ? QStringLiteral("int")
                         : QStringLiteral("float");
    row.address = QString::number(i / (oneBus ? 1 : buses.size()));
    // One row per group: 16 groups of each bus take group rows.
    const int groupRow = i / 20;
    if (kind == 19 && groupRow < groupsPerBusAndType * buses.size()) {
        const int bus = groupRow % buses.size();
        row.fieldBus = QStringLiteral("group_") + buses.at(bus);
        row.type = QStringLiteral("int");
        // Group numbers run on across the buses, see configure().
        row.address = QString::number(1 + bus * groupsPerBusAndType + groupRow / buses.size());
    }
    row.filterTime = QStringLiteral("0");
    row.invert = QStringLiteral("0");
    return row;
}

void configure(BusFileDataManager *manager, const Scenario &scenario)
{
    manager->busList.clear();
    manager->busShortNames.clear();
    const QStringList names{"ModbusTcpSlave", "EthernetIpSlave", "EtherCatSlave"};
    const QStringList records{"ModbusUser", "EthernetIPUser", "EthercatUser"};
    for (int b = 0; b < buses.size(); ++b) {
        manager->busList.append({names.at(b), buses.at(b), true});
        manager->busShortNames.append(buses.at(b));
        BusAddrNumInfo &sizes = manager->busAddrNumInfo[records.at(b)];
        std::fill(std::begin(sizes.variableLength), std::end(sizes.variableLength), busSize);
    }
    const QStringList types{"int", "float", "string"};
    for (int dir = 0; dir < 2; ++dir) {
        for (int t = 0; t < 3; ++t) {
            QMap<QString, GroupInfo> &table = manager->curGroupTables[dir][t];
            table.clear();
            int number = 1;
            for (const QString &bus : buses) {
                for (int g = 0; g < groupsPerBusAndType; ++g, ++number) {
                    const int head = groupBase + (t * groupsPerBusAndType + g) * 16;
                    table.insert(QString::number(number),
                                 {types.at(t), QString::number(number), bus, QString::number(head),
                                  QString::number(head + 15)});
                }
            }
        }
    }
    manager->updateGroupData(true);
    for (int dir = 0; dir < 2; ++dir) {
        manager->readMapList[dir].clear();
        for (int i = 0; i < rowsPerDirection; ++i)
            manager->readMapList[dir].append(mappingRow(dir, i, scenario.oneBus));
        manager->mapList[dir] = manager->readMapList[dir];
    }
}

QString lineOf(const FuncAndMapInfo &row)
{
    return QStringLiteral("    -Module %1 -Name %2 -Type %3 -FieldBus %4 -Address %5 "
                          "-FilterTime 0 -Invert 0")
            .arg(row.module, row.name, row.type, row.fieldBus.toUpper(), row.address);
}

QByteArray importFile(const Scenario &scenario)
{
    QByteArray bytes;
    QTextStream out(&bytes);
    out << "$$ Configuration file with fieldbus signals\n";
    for (int dir = 0; dir < 2; ++dir) {
        out << (dir == 0 ? "\n#System_Input:\n" : "\n#System_Output:\n");
        for (int i = 0; i < rowsPerDirection; ++i) {
            FuncAndMapInfo row = mappingRow(dir, i, scenario.oneBus);
            // Group rows stay as they are: each group holds one function.
            const int share =
                    row.fieldBus.startsWith(QLatin1String("group_")) ? -1 : i * 7919 % 1000;
            if (share >= scenario.identical + scenario.remapped + scenario.colliding) {
                row.name += QStringLiteral("_added");
                row.address = QString::number(row.address.toInt() + 2 * rowsPerDirection);
            } else if (share >= scenario.identical + scenario.remapped) {
                row.name += QStringLiteral("_new");
            } else if (share >= scenario.identical) {
                row.address = QString::number(row.address.toInt() + rowsPerDirection);
            }
            out << lineOf(row) << '\n';
        }
    }
    out.flush();
    return bytes;
}

int rowCount(const BusMap &map)
{
    int count = 0;
    for (const QVector<FuncAndMapInfo> &rows : map)
        count += rows.size();
    return count;
}

double timeMs(const std::function<void()> &work)
{
    QElapsedTimer timer;
    timer.start();
    work();
    return timer.nsecsElapsed() / 1e6;
}

void runScenario(BusFileDataManager *manager, const Scenario &scenario, const QString &path)
{
    configure(manager, scenario);
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate))
        return;
    file.write(importFile(scenario));
    file.close();
    const QStringList modules{pv_layout};

    std::printf("\n%s\n", scenario.name);
    const double whole = timeMs([&] { manager->readMapParaBackup(path, modules); });
    const int kept = rowCount(manager->imBusMap[0]) + rowCount(manager->imBusMap[1]);
    std::printf("  readMapParaBackup, whole:        %8.1f ms  (%d rows left, %d collisions, "
                "%d re-mapped)\n",
                whole, kept,
                manager->conflictMapList[0].size() + manager->conflictMapList[1].size(),
                manager->remapList[0].size() + manager->remapList[1].size());

    // The same again, step by step.
    auto &in = manager->imBusMap[BusInput];
    auto &out = manager->imBusMap[BusOutput];
    const double reading = timeMs([&] { manager->readImportMapFile(path, modules); });
    const double busTypes = timeMs([&] {
        manager->delNonExistBusType(in);
        manager->delNonExistBusType(out);
    });
    const double ranges = timeMs([&] {
        manager->delOutOfRangeAddrs(BusInput, in);
        manager->delOutOfRangeAddrs(BusOutput, out);
    });
    const double groupIds = timeMs([&] {
        manager->delNonExistBusGroupId(BusInput, in);
        manager->delNonExistBusGroupId(BusOutput, out);
    });
    const double groupRanges = timeMs([&] {
        manager->delConflictBusGroupAddr(BusInput, in);
        manager->delConflictBusGroupAddr(BusOutput, out);
    });
    ImportState plain;
    for (int dir = 0; dir < 2; ++dir) {
        plain.present[dir] = manager->readMapList[dir];
        plain.imported[dir] = manager->imBusMap[dir];
    }
    const double search = timeMs([&] {
        for (int dir = 0; dir < 2; ++dir)
            manager->checkGetConflictData(BiBo(dir), manager->imBusMap[dir],
                                          manager->conflictMapList[dir], manager->remapList[dir],
                                          manager->presentMapList[dir]);
    });
    const double plainSearch = timeMs([&] {
        plainCollisionSearch(plain, 0);
        plainCollisionSearch(plain, 1);
    });
    bool same = true;
    for (int dir = 0; dir < 2; ++dir) {
        same = same && rowCount(plain.imported[dir]) == rowCount(manager->imBusMap[dir])
                && plain.collisions[dir].size() == manager->conflictMapList[dir].size()
                && plain.remapped[dir].size() == manager->remapList[dir].size()
                && plain.presentRows[dir].size() == manager->presentMapList[dir].size();
    }
    std::printf("  reading and intake:              %8.1f ms\n", reading);
    std::printf("  delNonExistBusType:              %8.1f ms\n", busTypes);
    std::printf("  delOutOfRangeAddrs (getBusNum):  %8.1f ms\n", ranges);
    std::printf("  delNonExistBusGroupId:           %8.1f ms\n", groupIds);
    std::printf("  delConflictBusGroupAddr:         %8.1f ms\n", groupRanges);
    std::printf("  checkGetConflictData, indexed:   %8.1f ms\n", search);
    std::printf("  collision search, plain walk:    %8.1f ms%s\n", plainSearch,
                same ? "" : "  (RESULTS DIFFER)");

    const BusMap searched[2] = {manager->imBusMap[0], manager->imBusMap[1]};
    for (int answer : {1, 2}) {
        manager->imBusMap[0] = searched[0];
        manager->imBusMap[1] = searched[1];
        const double merge =
                timeMs([&] { manager->handleImportMapData(MsgBox::returnValue(answer)); });
        std::printf("  handleImportMapData(%d):          %8.1f ms  (%d + %d result rows)\n", answer,
                    merge, manager->writeMapList[0].size(), manager->writeMapList[1].size());
    }
}

} // namespace

int main(int argc, char **argv)
{
    QCoreApplication app(argc, argv);
    QTemporaryDir dir;
    BusFileDataManager *manager = new BusFileDataManager();
    const QString path = dir.path() + QStringLiteral("/import.cfg");
    std::printf("Import of %d rows against %d present rows, %d groups per group table\n",
                2 * rowsPerDirection, 2 * rowsPerDirection,
                groupsPerBusAndType * static_cast<int>(buses.size()));

    const Scenario scenarios[] = {
            {"re-import of the present mapping, three buses", 1000, 0, 0, false},
            {"mixed: 80% identical, 10% re-mapped, 5% colliding, 5% new", 800, 100, 50, false},
            {"every function re-mapped, one bus, one type (plain walk's worst)", 0, 1000, 0, true},
    };
    for (const Scenario &scenario : scenarios)
        runScenario(manager, scenario, path);
    delete manager;
    return 0;
}
