#include "BusFileDataManager.h"

#include "FieldbusNames.h"

#include <QPair>
#include <QSet>

#include <algorithm>
#include <iterator>
#include <vector>

namespace {

// QString's case-insensitive comparison folds character by character the way
// toCaseFolded() does, so texts that compare equal have equal folded forms and
// can be looked up by them.
using TypeValueKey = QPair<QString, QString>;

TypeValueKey foldedKey(const QString &type, const QString &value)
{
    return {type.toCaseFolded(), value.toCaseFolded()};
}

// Rows of one import bus, as ascending positions, grouped by folded (type, value).
using RowGroups = QHash<TypeValueKey, std::vector<int>>;

bool isOk(const QString &answer)
{
    return answer.compare(QLatin1String("ok"), Qt::CaseInsensitive) == 0;
}

// Removes the rows whose position is marked, keeping the order of the rest.
void dropMarked(QVector<FuncAndMapInfo> &rows, const std::vector<bool> &marked)
{
    if (std::find(marked.cbegin(), marked.cend(), true) == marked.cend())
        return;
    QVector<FuncAndMapInfo> kept;
    kept.reserve(rows.size());
    for (int i = 0; i < rows.size(); ++i) {
        if (!marked[i])
            kept.append(rows.at(i));
    }
    rows = kept;
}

} // namespace

void BusFileDataManager::getImBusMapInfo(const QString &line,
                                         QMap<QString, QVector<FuncAndMapInfo>> &map)
{
    QVector<FuncAndMapInfo> parsed;
    parseSignalMap(line, parsed);
    takeImportRow(parsed.isEmpty() ? FuncAndMapInfo() : parsed.constFirst(), map);
}

template<typename Refused>
void BusFileDataManager::dropRows(QVector<FuncAndMapInfo> &rows, Refused refused)
{
    // One pass keeps the order and stays linear however many rows go.
    const auto kept = std::remove_if(rows.begin(), rows.end(), refused);
    if (kept == rows.end())
        return;
    rows.erase(kept, rows.end());
    _isIllegalImportMap = true;
}

void BusFileDataManager::delIllegalBusMap()
{
    _isIllegalImportMap = false;
    _isConflictImportMap = false;

    delNonExistBusType(imBusMap[BusInput]);
    delNonExistBusType(imBusMap[BusOutput]);
    delOutOfRangeAddrs(BusInput, imBusMap[BusInput]);
    delOutOfRangeAddrs(BusOutput, imBusMap[BusOutput]);
    delNonExistBusGroupId(BusInput, imBusMap[BusInput]);
    delNonExistBusGroupId(BusOutput, imBusMap[BusOutput]);
    delConflictBusGroupAddr(BusInput, imBusMap[BusInput]);
    delConflictBusGroupAddr(BusOutput, imBusMap[BusOutput]);
    checkGetConflictData(BusInput, imBusMap[BusInput], conflictMapList[BusInput],
                         remapList[BusInput], presentMapList[BusInput]);
    checkGetConflictData(BusOutput, imBusMap[BusOutput], conflictMapList[BusOutput],
                         remapList[BusOutput], presentMapList[BusOutput]);
}

void BusFileDataManager::delNonExistBusType(QMap<QString, QVector<FuncAndMapInfo>> &map)
{
    QSet<QString> allowed;
    for (const BusName &bus : parseFieldBusData(false, true)) {
        allowed.insert(fieldbusnames::groupKey(bus.shortName));
        allowed.insert(bus.shortName);
    }
    for (auto it = map.begin(); it != map.end();) {
        if (allowed.contains(it.key())) {
            ++it;
        } else {
            it = map.erase(it);
            _isIllegalImportMap = true;
        }
    }
}

void BusFileDataManager::delOutOfRangeAddrs(BiBo dir, QMap<QString, QVector<FuncAndMapInfo>> &map)
{
    for (auto it = map.begin(); it != map.end(); ++it) {
        if (fieldbusnames::mentionsGroup(it.key(), Qt::CaseSensitive))
            continue;
        dropRows(it.value(), [&](const FuncAndMapInfo &row) {
            const int size = getBusNum(it.key(), dir, row.type);
            const int address = row.address.toInt(nullptr, 10);
            return address < 0 || address > size - 1;
        });
    }
}

void BusFileDataManager::delNonExistBusGroupId(BiBo dir,
                                               QMap<QString, QVector<FuncAndMapInfo>> &map)
{
    for (auto it = map.begin(); it != map.end(); ++it) {
        if (!fieldbusnames::mentionsGroup(it.key(), Qt::CaseSensitive))
            continue;
        dropRows(it.value(), [&](const FuncAndMapInfo &row) {
            return !isOk(
                    isGroupIdExist(it.key(), dir, row.type, row.address.toInt(nullptr, 10), true));
        });
    }
}

void BusFileDataManager::delConflictBusGroupAddr(BiBo dir,
                                                 QMap<QString, QVector<FuncAndMapInfo>> &map)
{
    static const QString groupTypes[] = {QStringLiteral("string"), QStringLiteral("float"),
                                         QStringLiteral("int")};
    // "no" names no group, so no group is skipped as the one being edited.
    static const QString noGroup = QStringLiteral("no");
    for (auto it = map.begin(); it != map.end(); ++it) {
        if (fieldbusnames::mentionsGroup(it.key(), Qt::CaseSensitive))
            continue;
        dropRows(it.value(), [&](const FuncAndMapInfo &row) {
            if (!fieldbusnames::isBoolType(row.type))
                return false;
            // Only a first address: is the row's address inside a group's range?
            const QString range = row.address + QStringLiteral(",-1");
            return std::any_of(std::begin(groupTypes), std::end(groupTypes),
                               [&](const QString &groupType) {
                                   return !isOk(isAddressGroupValid(it.key(), dir, groupType,
                                                                    noGroup, range, true));
                               });
        });
    }
}

// Same outcome as walking every present row against every imported row of its
// bus from last to first: only imported rows of the same type whose address or
// name matches can lead to anything, so each present row visits just those, in
// the same descending order. Groups hold only rows still in the import.
void BusFileDataManager::checkGetConflictData(BiBo dir, QMap<QString, QVector<FuncAndMapInfo>> &map,
                                              QList<FuncAndMapInfo> &addressCollisions,
                                              QList<FuncAndMapInfo> &remappedFunctions,
                                              QList<FuncAndMapInfo> &presentRows)
{
    addressCollisions.clear();
    remappedFunctions.clear();
    presentRows.clear();

    struct BusIndex
    {
        const QVector<FuncAndMapInfo> *rows = nullptr;
        RowGroups byAddress;
        RowGroups byName;
        std::vector<bool> removed;
    };
    QHash<QString, BusIndex> indexes;
    for (auto it = map.cbegin(); it != map.cend(); ++it) {
        BusIndex &index = indexes[it.key()];
        const QVector<FuncAndMapInfo> &rows = it.value();
        index.rows = &rows;
        index.removed.assign(rows.size(), false);
        for (int i = 0; i < rows.size(); ++i) {
            index.byAddress[foldedKey(rows.at(i).type, rows.at(i).address)].push_back(i);
            index.byName[foldedKey(rows.at(i).type, rows.at(i).name)].push_back(i);
        }
    }

    std::vector<int> candidates;
    for (const FuncAndMapInfo &present : qAsConst(readMapList[dir])) {
        const auto busIt = indexes.find(present.fieldBus);
        if (busIt == indexes.end())
            continue;
        BusIndex &index = busIt.value();
        const auto sameAddress = index.byAddress.find(foldedKey(present.type, present.address));
        const auto sameName = index.byName.find(foldedKey(present.type, present.name));
        std::vector<int> noRows;
        std::vector<int> &addressRows =
                sameAddress == index.byAddress.end() ? noRows : sameAddress.value();
        std::vector<int> &nameRows = sameName == index.byName.end() ? noRows : sameName.value();

        candidates.clear();
        std::set_union(addressRows.cbegin(), addressRows.cend(), nameRows.cbegin(), nameRows.cend(),
                       std::back_inserter(candidates));
        bool anyRemoved = false;
        for (auto pos = candidates.crbegin(); pos != candidates.crend(); ++pos) {
            const FuncAndMapInfo &row = index.rows->at(*pos);
            if (row.type.compare(present.type, Qt::CaseInsensitive) != 0)
                continue;
            const bool sameAddr = row.address.compare(present.address, Qt::CaseInsensitive) == 0;
            if (sameAddr && row.name == present.name) {
                index.removed[*pos] = true;
                anyRemoved = true;
            } else if (sameAddr) {
                getSelfCraftsMaps(present);
                _isConflictImportMap = true;
                addressCollisions.append(row);
            } else if (row.name.compare(present.name, Qt::CaseInsensitive) == 0) {
                getSelfCraftsMaps(present);
                _isConflictImportMap = true;
                remappedFunctions.append(row);
                presentRows.append(present);
            }
        }
        // A removed row matched in address and name, so it sat in both groups.
        if (anyRemoved) {
            const auto isRemoved = [&index](int pos) { return index.removed[pos]; };
            addressRows.erase(std::remove_if(addressRows.begin(), addressRows.end(), isRemoved),
                              addressRows.end());
            nameRows.erase(std::remove_if(nameRows.begin(), nameRows.end(), isRemoved),
                           nameRows.end());
        }
    }

    for (auto it = indexes.cbegin(); it != indexes.cend(); ++it)
        dropMarked(map[it.key()], it.value().removed);
}

void BusFileDataManager::handleImportMapData(MsgBox::returnValue answer)
{
    if (!_isConflictImportMap) {
        writeMapList[BusInput] = readMapList[BusInput];
        writeMapList[BusOutput] = readMapList[BusOutput];
    } else if (answer == MsgBox::Yes) {
        getAndkeepImportedMapData();
    } else if (answer == MsgBox::No) {
        getAndkeepImportMapData();
    }
    getWriteMapData(writeMapList[BusInput], imBusMap[BusInput]);
    getWriteMapData(writeMapList[BusOutput], imBusMap[BusOutput]);
}

void BusFileDataManager::getAndkeepImportedMapData()
{
    writeMapList[BusInput] = readMapList[BusInput];
    writeMapList[BusOutput] = readMapList[BusOutput];
    setConflictMapInfo(remapList[BusInput], remapList[BusOutput]);
    keepImportedMapData(conflictMapList[BusInput], imBusMap[BusInput]);
    keepImportedMapData(conflictMapList[BusOutput], imBusMap[BusOutput]);
}

void BusFileDataManager::getAndkeepImportMapData()
{
    writeMapList[BusInput] = readMapList[BusInput];
    writeMapList[BusOutput] = readMapList[BusOutput];
    setConflictMapInfo(presentMapList[BusInput], presentMapList[BusOutput]);
    keepImportMapData(conflictMapList[BusInput], writeMapList[BusInput]);
    keepImportMapData(conflictMapList[BusOutput], writeMapList[BusOutput]);
}

// Every listed row removes all rows of its bus with its type and address, so a
// row goes exactly when some listed row of its bus has its type and address.
void BusFileDataManager::keepImportedMapData(const QList<FuncAndMapInfo> &list,
                                             QMap<QString, QVector<FuncAndMapInfo>> &map)
{
    QHash<QString, QSet<TypeValueKey>> listedByBus;
    for (const FuncAndMapInfo &listed : list) {
        if (map.contains(listed.fieldBus))
            listedByBus[listed.fieldBus].insert(foldedKey(listed.type, listed.address));
    }
    for (auto it = listedByBus.cbegin(); it != listedByBus.cend(); ++it) {
        QVector<FuncAndMapInfo> &rows = map[it.key()];
        const QSet<TypeValueKey> &listed = it.value();
        rows.erase(std::remove_if(rows.begin(), rows.end(),
                                  [&listed](const FuncAndMapInfo &row) {
                                      return listed.contains(foldedKey(row.type, row.address));
                                  }),
                   rows.end());
    }
}

// Each listed row removes the last remaining table row with its bus, type and
// address, so per key the last (number of listed rows) matches go.
void BusFileDataManager::keepImportMapData(const QList<FuncAndMapInfo> &list,
                                           QVector<FuncAndMapInfo> &table)
{
    using BusTypeAddressKey = QPair<QString, TypeValueKey>;
    const auto keyOf = [](const FuncAndMapInfo &row) {
        return BusTypeAddressKey(row.fieldBus.toCaseFolded(), foldedKey(row.type, row.address));
    };
    QHash<BusTypeAddressKey, int> pending;
    for (const FuncAndMapInfo &listed : list)
        ++pending[keyOf(listed)];

    std::vector<bool> removed(table.size(), false);
    for (int i = table.size() - 1; i >= 0 && !pending.isEmpty(); --i) {
        const auto it = pending.find(keyOf(table.at(i)));
        if (it == pending.end())
            continue;
        removed[i] = true;
        if (--it.value() == 0)
            pending.erase(it);
    }
    dropMarked(table, removed);
}

void BusFileDataManager::getWriteMapData(QVector<FuncAndMapInfo> &table,
                                         const QMap<QString, QVector<FuncAndMapInfo>> &map)
{
    for (const QVector<FuncAndMapInfo> &rows : map)
        table += rows;
}

void BusFileDataManager::setMapData(const QVector<FuncAndMapInfo> &in,
                                    const QVector<FuncAndMapInfo> &out)
{
    writeMapList[BusInput] = in;
    writeMapList[BusOutput] = out;
}

void BusFileDataManager::setConflictMapInfo(const QList<FuncAndMapInfo> &in,
                                            QList<FuncAndMapInfo> &out)
{
    conflictMapList[BusInput] = in;
    conflictMapList[BusOutput] = out;
}

QVector<FuncAndMapInfo> BusFileDataManager::getImportResult(BiBo dir) const
{
    return writeMapList[mapIndex(dir)];
}

QMap<QString, QVector<FuncAndMapInfo>> BusFileDataManager::getImportBusMap(BiBo dir) const
{
    return imBusMap[mapIndex(dir)];
}

QList<FuncAndMapInfo> BusFileDataManager::getImportAddressCollisions(BiBo dir) const
{
    return conflictMapList[mapIndex(dir)];
}

QList<FuncAndMapInfo> BusFileDataManager::getImportRemappedFunctions(BiBo dir) const
{
    return remapList[mapIndex(dir)];
}

QList<FuncAndMapInfo> BusFileDataManager::getImportPresentRows(BiBo dir) const
{
    return presentMapList[mapIndex(dir)];
}
