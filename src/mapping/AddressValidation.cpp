#include "BusFileDataManager.h"

#include "FieldbusNames.h"

#include "FileFormats.h"
#include "ValidationIndex.h"

#include <QHostAddress>
#include <QRegExp>

#include <algorithm>

namespace {

const QString okText = QStringLiteral("ok");

// First and last address of a "first,last" range; -1 where a bound is not given.
struct AddressRange
{
    int first = -1;
    int last = -1;
};

AddressRange parseRange(const QString &range)
{
    const QStringList parts = range.split(QLatin1Char(','));
    AddressRange result;
    if (!parts.isEmpty())
        result.first = parts.at(0).toInt(nullptr, 10);
    if (parts.size() > 1)
        result.last = parts.at(1).toInt(nullptr, 10);
    return result;
}

bool rangeOverlapsGroup(const AddressRange &range, int groupFirst, int groupLast)
{
    const int s = range.first;
    const int e = range.last;
    if (s == -1 && e == -1)
        return false;
    if (s == -1)
        return groupFirst <= e && e <= groupLast;
    if (e == -1)
        return groupFirst <= s && s <= groupLast;
    return (s <= groupFirst && e >= groupFirst) || (e >= groupLast && s <= groupLast)
            || (s >= groupFirst && e <= groupLast);
}

} // namespace

const validation::SignalIndex &BusFileDataManager::mappingIndex(int index)
{
    validation::SignalIndex &signalIndex = indexes->mappings[index];
    signalIndex.refresh(mapList[index]);
    return signalIndex;
}

const validation::BusSignals *BusFileDataManager::indexedSignals(int index, const QString &bus)
{
    return isBusKey(bus) ? mappingIndex(index).bus(bus) : nullptr;
}

const FuncAndMapInfo *BusFileDataManager::occupyingRow(int index, const QString &bus,
                                                       const QString &type, int address,
                                                       const QString &exceptModule,
                                                       const QString &exceptName)
{
    const validation::BusSignals *rows = indexedSignals(index, bus);
    if (!rows)
        return nullptr;
    // The rows at the address, in table order.
    const auto at = std::equal_range(
            rows->byAddress.cbegin(), rows->byAddress.cend(), std::pair(address, 0),
            [](const auto &a, const auto &b) { return a.first < b.first; });
    for (auto it = at.first; it != at.second; ++it) {
        const FuncAndMapInfo &row = indexes->mappings[index].row(it->second);
        if (row.type.contains(type, Qt::CaseInsensitive)
            && (row.module != exceptModule || row.name != exceptName))
            return &row;
    }
    return nullptr;
}

QString BusFileDataManager::isAddressValid(const QString &bus, BiBo dir, QString type, int address)
{
    if (address == -1)
        return okText;
    const FuncAndMapInfo *row =
            occupyingRow(mapIndex(dir), bus, type, address, QString(), QString());
    return row ? getCurLanguageModuName(row->module) : okText;
}

QString BusFileDataManager::isGroupAddrValid(const QString &bus, BiBo dir, QString range)
{
    const AddressRange bounds = parseRange(range);
    if (bounds.last == -1)
        return okText;
    const int index = mapIndex(dir);
    const validation::BusSignals *rows = indexedSignals(index, bus);
    const int first = rows ? rows->firstBoolRowIn(bounds.first, bounds.last) : -1;
    return first < 0 ? okText : indexes->mappings[index].row(first).address;
}

QString BusFileDataManager::isAddressGroupValid(const QString &bus, BiBo dir,
                                                const QString &groupKey, const QString &groupNumber,
                                                const QString &range, bool saved)
{
    const AddressRange bounds = parseRange(range);

    QString busName = bus;
    if (fieldbusnames::mentionsGroup(bus, Qt::CaseInsensitive)) {
        const QStringList parts = bus.split(QLatin1Char('-'));
        if (parts.size() > 1)
            busName = parts.at(1);
    }

    QString selector = groupKey;
    QString type = groupKey;
    if (groupKey.contains(QLatin1Char(','))) {
        const QStringList parts = groupKey.split(QLatin1Char(','));
        selector = parts.value(0);
        if (parts.size() > 1)
            type = parts.at(1);
    }

    const validation::BusGroups *groups = indexedGroups(busName, dir, selector, saved);
    for (int i = 0; groups && i < groups->groups.size(); ++i) {
        const GroupInfo &group = groups->groups.at(i);
        // The group being edited may keep its own range.
        if (group.address == groupNumber && group.type.compare(type, Qt::CaseInsensitive) == 0)
            continue;
        const validation::BusGroups::Numbers &at = groups->numbers.at(i);
        if (rangeOverlapsGroup(bounds, at.first, at.last))
            return group.address;
    }
    return okText;
}

QString BusFileDataManager::isGroupIdExist(const QString &bus, BiBo dir, QString selector,
                                           int groupNumber, bool saved)
{
    if (groupNumber == -1)
        return okText;
    const validation::BusGroups *groups = indexedGroups(bus, dir, selector, saved);
    const bool exists = groups
            && std::any_of(groups->numbers.cbegin(), groups->numbers.cend(),
                           [groupNumber](const validation::BusGroups::Numbers &at) {
                               return at.number == groupNumber;
                           });
    return exists ? okText : QString();
}

QString BusFileDataManager::isConflict(const QString &bus, const QString &module,
                                       const QString &funcKey, int)
{
    if (conflictDatas.isEmpty())
        return QString();
    const bool held =
            std::any_of(conflictDatas.cbegin(), conflictDatas.cend(),
                        [&](const QMap<QString, int> &entry) { return entry.contains(funcKey); });
    if (!held)
        return QString();

    addConflictData(bus);

    for (const QMap<QString, int> &entry : qAsConst(conflictDatas)) {
        if (!entry.contains(funcKey))
            continue;
        bool otherMapped = false;
        for (auto it = entry.cbegin(); it != entry.cend() && !otherMapped; ++it)
            otherMapped = it.key() != funcKey && it.value() != -1;
        if (!otherMapped)
            continue;
        QString names;
        for (auto it = entry.cbegin(); it != entry.cend(); ++it)
            names += getFuncNameCn(module, it.key());
        names.chop(1);
        return names;
    }
    return QString();
}

void BusFileDataManager::addConflictData(const QString &bus)
{
    // Each name's address is that of its last row on the bus, the group key's
    // rows coming after the bus's own.
    const QString groupKey = fieldbusnames::groupKey(bus);
    const auto lastAddress = [&](int dir, const QString &name, int *address) {
        validation::SignalIndex &index = indexes->mappings[dir];
        for (const QString &key : {groupKey, bus}) {
            const validation::BusSignals *rows = indexedSignals(dir, key);
            if (rows && index.lastAddress(*rows, name, address))
                return true;
        }
        return false;
    };

    // Set once for the whole walk: after the first key found in a direction, a
    // later key missing there keeps its value.
    bool foundInInput = false;
    bool foundInOutput = false;
    for (QMap<QString, int> &entry : conflictDatas) {
        for (auto it = entry.begin(); it != entry.end(); ++it) {
            if (lastAddress(BusInput, it.key(), &it.value()))
                foundInInput = true;
            if (!foundInInput)
                it.value() = -1;
            if (lastAddress(BusOutput, it.key(), &it.value()))
                foundInOutput = true;
            if (!foundInOutput)
                it.value() = -1;
        }
    }
}

int BusFileDataManager::getBusNum(const QString &bus, BiBo dir, QString type)
{
    return fieldbusareas::busNum(busAddrNumInfo, bus, dir, type);
}

bool BusFileDataManager::checkIPv4Format(QString text)
{
    QHostAddress address;
    if (!address.setAddress(text) || address.protocol() != QAbstractSocket::IPv4Protocol)
        return false;
    QRegExp pattern(QStringLiteral("^(?:[0-9]{1,3}.){3}[0-9]{1,3}$"), Qt::CaseSensitive,
                    QRegExp::RegExp);
    if (!pattern.exactMatch(text))
        return false;
    // The address parser also takes short forms such as 1.2.3 and the pattern's
    // dot takes any separator, so the four parts must be split by dots.
    return text.split(QLatin1Char('.')).size() == 4;
}
