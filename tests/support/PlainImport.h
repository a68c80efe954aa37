#pragma once

// The import's collision search and merges walked exactly as the rules are
// written, every present row against every imported row of its bus: the
// yardstick for the indexed search in the library (tests and benchmark).

#include "BusFileDataManager.h"

using BusMap = QMap<QString, QVector<FuncAndMapInfo>>;

struct ImportState
{
    QVector<FuncAndMapInfo> present[2];
    BusMap imported[2];
    QList<FuncAndMapInfo> collisions[2];
    QList<FuncAndMapInfo> remapped[2];
    QList<FuncAndMapInfo> presentRows[2];
    QVector<FuncAndMapInfo> result[2];
    bool conflict = false;
};

inline bool equalCi(const QString &a, const QString &b)
{
    return a.compare(b, Qt::CaseInsensitive) == 0;
}

inline void plainCollisionSearch(ImportState &s, int dir)
{
    s.collisions[dir].clear();
    s.remapped[dir].clear();
    s.presentRows[dir].clear();
    for (const FuncAndMapInfo &present : qAsConst(s.present[dir])) {
        if (!s.imported[dir].contains(present.fieldBus))
            continue;
        QVector<FuncAndMapInfo> &rows = s.imported[dir][present.fieldBus];
        for (int i = rows.size() - 1; i >= 0; --i) {
            const FuncAndMapInfo row = rows.at(i);
            if (!equalCi(row.type, present.type))
                continue;
            if (equalCi(row.address, present.address) && row.name == present.name) {
                rows.remove(i);
            } else if (equalCi(row.address, present.address)) {
                BusFileDataManager::getSelfCraftsMaps(present);
                s.conflict = true;
                s.collisions[dir].append(row);
            } else if (equalCi(row.name, present.name)) {
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
        if (!s.conflict) {
            s.result[dir] = s.present[dir];
        } else if (answer == 1) {
            s.result[dir] = s.present[dir];
            s.collisions[dir] = s.remapped[dir];
            for (const FuncAndMapInfo &listed : qAsConst(s.collisions[dir])) {
                if (!s.imported[dir].contains(listed.fieldBus))
                    continue;
                QVector<FuncAndMapInfo> &rows = s.imported[dir][listed.fieldBus];
                for (int i = rows.size() - 1; i >= 0; --i) {
                    if (equalCi(rows.at(i).type, listed.type)
                        && equalCi(rows.at(i).address, listed.address))
                        rows.remove(i);
                }
            }
        } else if (answer == 2) {
            s.result[dir] = s.present[dir];
            s.collisions[dir] = s.presentRows[dir];
            for (int l = s.collisions[dir].size() - 1; l >= 0; --l) {
                const FuncAndMapInfo &listed = s.collisions[dir].at(l);
                for (int i = s.result[dir].size() - 1; i >= 0; --i) {
                    const FuncAndMapInfo &row = s.result[dir].at(i);
                    if (equalCi(row.fieldBus, listed.fieldBus) && equalCi(row.type, listed.type)
                        && equalCi(row.address, listed.address)) {
                        s.result[dir].remove(i);
                        break;
                    }
                }
            }
        }
        for (const QVector<FuncAndMapInfo> &rows : qAsConst(s.imported[dir]))
            s.result[dir] += rows;
    }
}
