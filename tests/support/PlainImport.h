#pragma once

// The import walked as the rules are written: the yardstick for the library's indexed search.

#include "BusFileDataManager.h"

using BusMap = QMap<QString, QVector<FuncAndMapInfo>>;

struct ImportState
{
    QVector<FuncAndMapInfo> present[2], result[2];
    BusMap imported[2];
    QList<FuncAndMapInfo> collisions[2], remapped[2], presentRows[2];
    bool conflict = false;
};

inline bool equalCi(const QString &a, const QString &b)
{
    return a.compare(b, Qt::CaseInsensitive) == 0;
}

inline bool sameSpot(const FuncAndMapInfo &a, const FuncAndMapInfo &b)
{
    return equalCi(a.type, b.type) && equalCi(a.address, b.address);
}

// Expects empty lists for the direction. Looking a bus up must not add it to the map.
inline void plainCollisionSearch(ImportState &s, int dir)
{
    for (const FuncAndMapInfo &present : qAsConst(s.present[dir])) {
        const auto bus = s.imported[dir].find(present.fieldBus);
        for (int i = bus == s.imported[dir].end() ? -1 : bus->size() - 1; i >= 0; --i) {
            const FuncAndMapInfo row = bus->at(i);
            if (sameSpot(row, present) && row.name == present.name) {
                bus->remove(i);
            } else if (sameSpot(row, present)) {
                BusFileDataManager::getSelfCraftsMaps(present);
                s.conflict = true;
                s.collisions[dir].append(row);
            } else if (equalCi(row.type, present.type) && equalCi(row.name, present.name)) {
                BusFileDataManager::getSelfCraftsMaps(present);
                s.conflict = true;
                s.remapped[dir].append(row);
                s.presentRows[dir].append(present);
            }
        }
    }
}

inline void plainMerge(ImportState &s, int answer)
{
    for (int dir = 0; dir < 2; ++dir) {
        if (!s.conflict || answer == 1 || answer == 2)
            s.result[dir] = s.present[dir];
        if (s.conflict && answer == 1) {
            s.collisions[dir] = s.remapped[dir];
            for (const FuncAndMapInfo &listed : qAsConst(s.collisions[dir])) {
                const auto bus = s.imported[dir].find(listed.fieldBus);
                for (int i = bus == s.imported[dir].end() ? -1 : bus->size() - 1; i >= 0; --i) {
                    if (sameSpot(bus->at(i), listed))
                        bus->remove(i);
                }
            }
        } else if (s.conflict && answer == 2) {
            s.collisions[dir] = s.presentRows[dir];
            QVector<FuncAndMapInfo> &rows = s.result[dir];
            for (int l = s.collisions[dir].size() - 1; l >= 0; --l) {
                const FuncAndMapInfo &listed = s.collisions[dir].at(l);
                for (int i = rows.size() - 1; i >= 0; --i) {
                    if (equalCi(rows.at(i).fieldBus, listed.fieldBus)
                        && sameSpot(rows.at(i), listed)) {
                        rows.remove(i);
                        break;
                    }
                }
            }
        }
        for (const QVector<FuncAndMapInfo> &rows : qAsConst(s.imported[dir]))
            s.result[dir] += rows;
    }
}
