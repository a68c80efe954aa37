// Per-call cost of the validators on a large mapping table.
#include "BusFileDataManager.h"

#include <QCoreApplication>
#include <QElapsedTimer>

#include <cstdio>
#include <functional>

namespace {

const int tableRows = 20000;

const QStringList shortNames = {"mtcp", "ethcat", "eip", "pfn", "ecm",
                                "dns",  "mbc",    "eim", "pnm", "dnm"};

void fillTables(BusFileDataManager &manager)
{
    manager.busShortNames = shortNames;
    const QStringList types = {"bool", "int", "float"};
    for (int dir = 0; dir < 2; ++dir) {
        QVector<FuncAndMapInfo> &table = manager.mapList[dir];
        table.clear();
        table.reserve(tableRows);
        for (int i = 0; i < tableRows; ++i) {
            FuncAndMapInfo info;
            info.module = QStringLiteral("Module%1").arg(i % 20);
            info.name = QStringLiteral("func%1").arg(i);
            info.type = types.at(i % types.size());
            const QString bus = shortNames.at(i % shortNames.size());
            info.fieldBus = i % 7 == 0 ? QStringLiteral("group_") + bus : bus;
            info.address = QString::number(i % 4096);
            table.append(info);
        }
    }
    for (int dir = 0; dir < 2; ++dir) {
        for (int g = 0; g < 64; ++g) {
            const QString number = QString::number(g);
            manager.curGroupTables[dir][0].insert(number,
                                                  GroupInfo{"int", number, "mtcp",
                                                            QString::number(g * 32),
                                                            QString::number(g * 32 + 31)});
        }
    }
    BusAddrNumInfo counts;
    for (int i = 0; i < 9; ++i)
        counts.variableLength[i] = 4096;
    manager.busAddrNumInfo.insert(QStringLiteral("ModbusUser"), counts);
    // Fifty competing pairs; the function asked about is in the last one.
    for (int e = 0; e < 50; ++e) {
        manager.conflictDatas.append({{QStringLiteral("func%1").arg(e * 10), 0},
                                      {QStringLiteral("func%1").arg(e * 10 + 1), 0}});
    }
}

void measure(const char *label, int calls, const std::function<void()> &call)
{
    call();
    QElapsedTimer timer;
    timer.start();
    for (int i = 0; i < calls; ++i)
        call();
    const double usPerCall = timer.nsecsElapsed() / 1000.0 / calls;
    std::printf("%s %d rows: %.1f us/call\n", label, tableRows, usPerCall);
}

} // namespace

int main(int argc, char **argv)
{
    QCoreApplication app(argc, argv);
    BusFileDataManager manager;
    fillTables(manager);

    measure("isAddressValid", 50, [&] { manager.isAddressValid("mtcp", BusInput, "bool", 99999); });
    measure("isGroupAddrValid", 50,
            [&] { manager.isGroupAddrValid("mtcp", BusInput, "5000,6000"); });
    measure("isAddressGroupValid", 2000, [&] {
        manager.isAddressGroupValid("mtcp", BusInput, "int", "no", "5000,6000", false);
    });
    measure("isGroupIdExist", 2000,
            [&] { manager.isGroupIdExist("mtcp", BusInput, "int", 999, false); });
    measure("isConflict", 50, [&] { manager.isConflict("mtcp", "Module0", "func491", 0); });
    measure("getBusNum", 20000, [&] { manager.getBusNum("mtcp", BusOutput, "int"); });
    return 0;
}
