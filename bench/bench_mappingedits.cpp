// Cost of merging a screen's edited rows into a large mapping table.
#include "BusFileDataManager.h"

#include <QCoreApplication>
#include <QElapsedTimer>

#include <cstdio>

namespace {

QVector<FuncAndMapInfo> makeTable(int rows)
{
    QVector<FuncAndMapInfo> table;
    table.reserve(rows);
    for (int i = 0; i < rows; ++i) {
        FuncAndMapInfo info;
        info.module = QStringLiteral("Module%1").arg(i % 20);
        info.name = QStringLiteral("func%1").arg(i / 2);
        info.type = QStringLiteral("bool");
        info.fieldBus = i % 2 ? QStringLiteral("mtcp") : QStringLiteral("eip");
        info.address = QString::number(i % 4096);
        table.append(info);
    }
    return table;
}

// A screen's edit: updates, removals and new rows spread over the table.
QVector<FuncAndMapInfo> makeEdits(const QVector<FuncAndMapInfo> &table, int count)
{
    QVector<FuncAndMapInfo> edits;
    edits.reserve(count);
    const int step = qMax(1, table.size() / count);
    for (int i = 0; i < count; ++i) {
        FuncAndMapInfo edit = table.at((i * step) % table.size());
        switch (i % 3) {
        case 0:
            edit.address = QString::number(i);
            edit.fieldBus = edit.fieldBus.toUpper();
            break;
        case 1:
            edit.address = QStringLiteral("-1");
            break;
        default:
            edit.name = QStringLiteral("new%1").arg(i);
            break;
        }
        edits.append(edit);
    }
    return edits;
}

} // namespace

int main(int argc, char **argv)
{
    QCoreApplication app(argc, argv);
    BusFileDataManager manager;
    for (int m = 0; m < 20; ++m)
        manager.moduleNameMap.insert(QStringLiteral("Module%1").arg(m),
                                     QStringLiteral("模块%1").arg(m));

    const struct
    {
        int rows;
        int edits;
    } sizes[] = {{10000, 2500}, {20000, 5000}, {40000, 10000}, {80000, 20000}};
    for (const auto &size : sizes) {
        const QVector<FuncAndMapInfo> table = makeTable(size.rows);
        const QVector<FuncAndMapInfo> edits = makeEdits(table, size.edits);
        const int repeats = 5;
        qint64 total = 0;
        for (int r = 0; r < repeats; ++r) {
            manager.mapList[BusInput] = table;
            manager.mapList[BusInput].detach();
            QElapsedTimer timer;
            timer.start();
            manager.setMapInfo(edits, BusInput);
            total += timer.nsecsElapsed();
        }
        std::printf("setMapInfo %d edits on %d rows: %.2f ms/call\n", size.edits, size.rows,
                    total / 1e6 / repeats);
    }
    return 0;
}
