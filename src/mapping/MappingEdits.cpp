#include "BusFileDataManager.h"

#include "FieldbusNames.h"

#include <QSet>

int BusFileDataManager::mapIndex(BiBo dir)
{
    return dir == BusInput ? 0 : 1;
}

QVector<FuncAndMapInfo> BusFileDataManager::getMapInfoList(const QString &bus, BiBo dir)
{
    const QMap<QString, QVector<FuncAndMapInfo>> &view = busMap[mapIndex(dir)];
    return view.value(bus) + view.value(fieldbusnames::groupKey(bus));
}

void BusFileDataManager::getBusSignalMap(BiBo dir, QVector<FuncAndMapInfo> &destination)
{
    destination = mapList[mapIndex(dir)];
}

void BusFileDataManager::setMapInfo(const QVector<FuncAndMapInfo> &rows, BiBo dir)
{
    modifyMapInfo(rows, mapList[mapIndex(dir)]);
}

QStringList BusFileDataManager::getListKey(QVector<FuncAndMapInfo> &rows)
{
    QSet<QString> knownModules;
    for (auto it = moduleNameMap.cbegin(); it != moduleNameMap.cend(); ++it) {
        knownModules.insert(it.key());
        knownModules.insert(it.value());
    }

    QStringList keys;
    keys.reserve(rows.size());
    for (FuncAndMapInfo &row : rows) {
        row.fieldBus = row.fieldBus.toLower();
        QString busPart;
        if (knownModules.contains(row.module)) {
            busPart = row.fieldBus;
            if (fieldbusnames::mentionsGroup(row.fieldBus, Qt::CaseInsensitive)) {
                const QStringList parts = row.fieldBus.split(QLatin1Char('_'));
                if (parts.size() > 1)
                    busPart = parts.at(1);
            }
        }
        keys.append(row.name + busPart);
    }
    return keys;
}

// An edited row is matched by exact key membership, then placed at the first
// table key equal to it ignoring case; a removal also drops that key. Walking
// the key list for each edit is quadratic, so the table keys are indexed:
// - live rows per exact key answer membership;
// - per case-folded key, the table positions in order. A removal always takes
//   the first live position of its folded key, so each of these lists is a
//   queue and removed rows are only marked until the table is compacted.
// Appended rows never enter the key list, so they are collected apart and go
// after the remaining table rows, where the in-place walk would have put them.
void BusFileDataManager::modifyMapInfo(QVector<FuncAndMapInfo> rows, QVector<FuncAndMapInfo> &table)
{
    struct Positions
    {
        QVector<int> rows;
        int head = 0;
    };

    const QStringList tableKeys = getListKey(table);
    const QStringList editKeys = getListKey(rows);

    QHash<QString, int> liveRowsByKey;
    QHash<QString, Positions> rowsByFoldedKey;
    liveRowsByKey.reserve(tableKeys.size());
    rowsByFoldedKey.reserve(tableKeys.size());
    for (int i = 0; i < tableKeys.size(); ++i) {
        ++liveRowsByKey[tableKeys.at(i)];
        rowsByFoldedKey[tableKeys.at(i).toCaseFolded()].rows.append(i);
    }

    QVector<bool> removed(table.size(), false);
    bool anyRemoved = false;
    QVector<FuncAndMapInfo> appended;
    const QString unmapped = QStringLiteral("-1");

    for (int i = 0; i < rows.size(); ++i) {
        const FuncAndMapInfo &row = rows.at(i);
        const QString &key = editKeys.at(i);
        if (liveRowsByKey.value(key) == 0) {
            if (row.address != unmapped)
                appended.append(row);
            continue;
        }
        Positions &positions = rowsByFoldedKey[key.toCaseFolded()];
        const int j = positions.rows.at(positions.head);
        if (row.address != unmapped) {
            FuncAndMapInfo &target = table[j];
            target.address = row.address;
            target.fieldBus = row.fieldBus;
            target.filterTime = row.filterTime;
            target.invert = row.invert;
        } else {
            removed[j] = true;
            anyRemoved = true;
            ++positions.head;
            --liveRowsByKey[tableKeys.at(j)];
        }
    }

    if (anyRemoved) {
        QVector<FuncAndMapInfo> kept;
        kept.reserve(table.size() + appended.size());
        for (int i = 0; i < table.size(); ++i) {
            if (!removed.at(i))
                kept.append(table.at(i));
        }
        table.swap(kept);
    }
    table += appended;
}
