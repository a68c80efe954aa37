#include "BusFileDataManager.h"

#include "ConfigFileIo.h"
#include "FieldbusNames.h"
#include "FileFormats.h"
#include "ValidationIndex.h"

#include <QFile>

namespace {

const QString groupTitle = QStringLiteral("$$ Configuration file with group signals");
using fieldbusnames::groupInputMarker;
using fieldbusnames::groupOutputMarker;
constexpr int groupColumnWidth = 16;
constexpr int groupTypeCount = 3;

} // namespace

namespace groupfile {

int typeIndex(const QString &type)
{
    static const QStringList names{QStringLiteral("int"), QStringLiteral("float"),
                                   QStringLiteral("string")};
    return BusFileDataManager::getWordIndex(names, type);
}

GroupInfo parseRow(const configio::LineWords &words, configio::ColumnTexts &texts)
{
    GroupInfo info;
    info.type = texts.text(0, words.after(u"-Type"));
    info.address = texts.text(1, words.after(u"-Address"));
    info.fieldBus = texts.text(2, words.after(u"-FieldBus"));
    const QStringView deviceMap = words.after(u"-DeviceMap");
    const int dash = int(deviceMap.indexOf(QLatin1Char('-')));
    if (dash >= 0) {
        // The second part ends at a further dash, as splitting on every dash gives.
        const QStringView tail = deviceMap.mid(dash + 1);
        info.deviceMapHead = deviceMap.left(dash).toString();
        info.deviceMapTail = tail.left(tail.indexOf(QLatin1Char('-'))).toString();
    }
    return info;
}

} // namespace groupfile

QMap<QString, GroupInfo> *BusFileDataManager::groupTable(BiBo dir, const QString &type, bool saved)
{
    const int typeIndex = groupfile::typeIndex(type);
    if (typeIndex < 0)
        return nullptr;
    const int dirIndex = dir == BusInput ? BusInput : BusOutput;
    return saved ? &savedGroupTables[dirIndex][typeIndex] : &curGroupTables[dirIndex][typeIndex];
}

bool BusFileDataManager::readGroupCfg()
{
    return readLocalTextFile(TPU_GROUP_CFG, [this](const QString &text) { parseGroupFile(text); });
}

void BusFileDataManager::parseGroupFile(const QString &text)
{
    for (auto &tables : curGroupTables) {
        for (QMap<QString, GroupInfo> &table : tables)
            table.clear();
    }
    configio::ColumnTexts texts;
    configio::readSectionRows(
            text, groupInputMarker, groupOutputMarker,
            [this, &texts](BiBo dir, QStringView row, int) {
                const GroupInfo info = groupfile::parseRow(configio::LineWords(row), texts);
                curGroupTables[dir][groupfile::readTypeIndex(info.type)].insert(info.address, info);
            });
    // A fresh read is also the saved state.
    updateGroupData(true);
}

bool BusFileDataManager::writeSendGroupCfg()
{
    if (refuseLossyWrite(TPU_GROUP_CFG))
        return false;
    const bool written = configio::writeSectionFile(
            TPU_GROUP_CFG, groupTitle, groupInputMarker, groupOutputMarker,
            [this](configio::LineFileWriter &out, BiBo dir) {
                for (const QMap<QString, GroupInfo> &table : curGroupTables[dir]) {
                    for (auto it = table.cbegin(); it != table.cend(); ++it) {
                        const GroupInfo &info = it.value();
                        out.appendField(0, QLatin1String("    -Type "), info.type,
                                        groupColumnWidth);
                        // The key is written, not the record's address.
                        out.appendField(1, QLatin1String(" -Address "), it.key(), groupColumnWidth);
                        out.appendField(2, QLatin1String(" -FieldBus "), info.fieldBus,
                                        groupColumnWidth, configio::LineFileWriter::Upper);
                        out.appendField(3, QLatin1String(" -DeviceMap "),
                                        info.deviceMapHead + QLatin1Char('-') + info.deviceMapTail,
                                        groupColumnWidth);
                        out.endRow();
                    }
                }
            });
    if (!written)
        return false;
    emit signalSendGroupCfg();
    return true;
}

QVector<GroupInfo> BusFileDataManager::getBusGroupInfo(QString bus, BiBo dir, QString type,
                                                       bool saved)
{
    const validation::BusGroups *groups = indexedGroups(bus, dir, type, saved);
    return groups ? groups->groups : QVector<GroupInfo>();
}

const validation::BusGroups *BusFileDataManager::indexedGroups(const QString &bus, BiBo dir,
                                                               const QString &type, bool saved)
{
    const QMap<QString, GroupInfo> *table = groupTable(dir, type, saved);
    if (!table)
        return nullptr;
    // Group keys such as "group_mtcp" name the bus after the first "_".
    const QStringList parts = bus.split(QLatin1Char('_'));
    const QString busName = parts.size() > 1 ? parts.at(1) : bus;
    validation::GroupIndex &index = indexes->groups[table];
    index.refresh(*table);
    return index.bus(busName);
}

QMap<QString, GroupInfo> BusFileDataManager::getAllGroupInfo(BiBo dir, QString type)
{
    const QMap<QString, GroupInfo> *table = groupTable(dir, type, true);
    return table ? *table : QMap<QString, GroupInfo>();
}

void BusFileDataManager::setGroupInfo(const GroupInfo &info, const QString &type, BiBo dir)
{
    if (QMap<QString, GroupInfo> *table = groupTable(dir, type, false))
        setModifyGroupInfo(*table, info);
}

void BusFileDataManager::setModifyGroupInfo(QMap<QString, GroupInfo> &table, const GroupInfo &info)
{
    const bool isDeletion = info.deviceMapHead == QLatin1String("-1");
    const auto it = table.find(info.address);
    if (it != table.end()) {
        if (isDeletion) {
            setGroupBusTypeChange(it->fieldBus, QString());
            table.erase(it);
        } else {
            setGroupBusTypeChange(it->fieldBus, info.fieldBus);
            *it = info;
        }
    } else if (!isDeletion) {
        setGroupBusTypeChange(QString(), info.fieldBus);
        table.insert(info.address, info);
    }
}

void BusFileDataManager::setGroupBusTypeChange(const QString &oldBus, const QString &newBus)
{
    for (const QString &bus : {oldBus, newBus}) {
        const int index = getBusIndex(bus);
        if (index != -1 && !busTypeChange.contains(index))
            busTypeChange.append(index);
    }
}

QVector<int> BusFileDataManager::getBusTypeChange()
{
    return busTypeChange;
}

void BusFileDataManager::clearBusTypeChange()
{
    busTypeChange.clear();
}

bool BusFileDataManager::isGroupDataChange()
{
    for (int dir = BusInput; dir <= BusOutput; ++dir) {
        for (int type = 0; type < groupTypeCount; ++type) {
            if (isGroupCurDataChange(curGroupTables[dir][type], savedGroupTables[dir][type]))
                return true;
        }
    }
    return false;
}

bool BusFileDataManager::isGroupCurDataChange(const QMap<QString, GroupInfo> &current,
                                              const QMap<QString, GroupInfo> &saved)
{
    if (current.size() != saved.size())
        return true;
    for (auto it = current.cbegin(); it != current.cend(); ++it) {
        const auto other = saved.constFind(it.key());
        if (other == saved.cend() || it->fieldBus != other->fieldBus)
            return true;
        // The halves are compared joined, so 1-23 and 12-3 count as the same map.
        if (it->deviceMapHead + it->deviceMapTail != other->deviceMapHead + other->deviceMapTail)
            return true;
    }
    return false;
}

void BusFileDataManager::getGroupInfoBydType(bool second, const QMap<QString, GroupInfo> &a,
                                             const QMap<QString, GroupInfo> &b,
                                             QMap<QString, GroupInfo> &out)
{
    out = second ? b : a;
}
