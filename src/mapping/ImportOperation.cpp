// The import as one operation: what the pendant's import steps do to a saved
// mapping or to rows, reported row by row, and its end written and sent.
#include "BusFileDataManager.h"

#include "ConfigSnapshot.h"
#include "FieldbusNames.h"

#include <QHash>
#include <QSet>

namespace {

const QChar gap = QLatin1Char('\n');

// Rows of one direction that repeat a function (module and name in any case)
// or a place (bus, type and address other than "-1") of an earlier row.
class RepeatRule
{
public:
    QString repeat(const ImportRow &r, const QString &way)
    {
        const FuncAndMapInfo &row = r.row;
        const QString function =
                QString::number(r.direction) + gap + row.module + gap + row.name.toCaseFolded();
        const QString place = QString::number(r.direction) + gap + row.fieldBus.toCaseFolded() + gap
                + row.type.toCaseFolded() + gap + row.address.toCaseFolded();
        if (const int line = functions.value(function))
            return BusFileDataManager::tr("%1 %2 is mapped as %3 already on line %4")
                    .arg(row.module, row.name, way)
                    .arg(line);
        // "-1" is no place: every function not mapped has it.
        const bool mapped = row.address.trimmed() != QLatin1String("-1");
        if (const int line = mapped ? places.value(place) : 0)
            return BusFileDataManager::tr("%1 %2 address %3 is taken already on line %4")
                    .arg(row.fieldBus, way, row.address)
                    .arg(line);
        functions.insert(function, r.line);
        if (mapped)
            places.insert(place, r.line);
        return QString();
    }

private:
    QHash<QString, int> functions;
    QHash<QString, int> places;
};

bool selected(const QStringList &modules, const FuncAndMapInfo &row)
{
    return modules.contains(pv_layout) ? row.module != pv_layout : modules.contains(row.module);
}

} // namespace

void BusFileDataManager::takeImportRow(const FuncAndMapInfo &row,
                                       QMap<QString, QVector<FuncAndMapInfo>> &map)
{
    if (imModuleList.isEmpty())
        return;
    // The process-variable layout is imported apart from the mapping, so
    // selecting it means "everything else".
    if (imModuleList.contains(pv_layout)) {
        if (row.module == pv_layout)
            return;
    } else if (!imModuleList.contains(row.module)) {
        return;
    }
    map[row.fieldBus].append(row);
}

ImportReport BusFileDataManager::prepareImport(const QString &mappingFile,
                                               const QStringList &modules)
{
    ImportReport report;
    QVector<SnapshotMapping> fileRows;
    if (!ConfigSnapshot::readMappingFile(mappingFile, fileRows)) {
        report.readable = false;
        return report;
    }
    QVector<ImportRow> rows;
    for (const SnapshotMapping &m : qAsConst(fileRows)) {
        if (selected(modules, m.row))
            rows.append({m.row, m.direction, m.line});
    }
    report.repeated = repeatedRows(rows);
    if (!report.repeated.isEmpty())
        return report;
    if (!readMapParaBackup(mappingFile, modules)) {
        report.readable = false;
        return report;
    }
    reportImport(rows, report);
    return report;
}

ImportReport BusFileDataManager::prepareImport(const QVector<ImportRow> &rows)
{
    ImportReport report;
    report.repeated = repeatedRows(rows);
    QSet<int> repeatedLines;
    for (const ImportReport::Dropped &d : qAsConst(report.repeated))
        repeatedLines.insert(d.row.line);
    // The intake of a saved mapping, row by row: the same selection, then the
    // same cleaning.
    QVector<ImportRow> kept;
    QStringList modules;
    for (const ImportRow &r : rows) {
        if (repeatedLines.contains(r.line))
            continue;
        kept.append(r);
        if (!modules.contains(r.row.module))
            modules.append(r.row.module);
    }
    imModuleList = modules;
    imBusMap[BusInput].clear();
    imBusMap[BusOutput].clear();
    for (const ImportRow &r : qAsConst(kept))
        takeImportRow(r.row, imBusMap[mapIndex(r.direction)]);
    delIllegalBusMap();
    reportImport(kept, report);
    return report;
}

QVector<ImportReport::Dropped> BusFileDataManager::repeatedRows(const QVector<ImportRow> &rows)
{
    RepeatRule rule;
    QVector<ImportReport::Dropped> repeated;
    for (const ImportRow &r : rows) {
        const QString why = rule.repeat(r, r.direction == BusInput ? tr("input") : tr("output"));
        if (!why.isEmpty())
            repeated.append({r, QStringLiteral("repeated"), why});
    }
    return repeated;
}

QString BusFileDataManager::importDropReason(BiBo dir, const FuncAndMapInfo &row, QString *kind)
{
    // The first of the cleaning's rules that removes the row, in its order.
    const QString &key = row.fieldBus;
    const bool isGroup = fieldbusnames::isGroupKey(key);
    const QString bus = fieldbusnames::busOfKey(key);
    const QString way = dir == BusInput ? tr("input") : tr("output");
    QStringList on;
    for (const BusName &b : getBusNameList(false, true))
        on.append(b.shortName);
    const int address = row.address.toInt();
    *kind = QStringLiteral("bus-off");
    if (!on.contains(bus))
        return tr("bus %1 is not switched on").arg(bus);
    const int count = getBusNum(key, dir, row.type);
    *kind = QStringLiteral("out-of-range");
    if (!isGroup && (address < 0 || address > count - 1))
        return tr("the address is outside %1's %2 %3 %4 addresses")
                .arg(bus)
                .arg(count)
                .arg(row.type, way);
    *kind = QStringLiteral("group-missing");
    if (isGroup
        && isGroupIdExist(key, dir, row.type, address, true)
                        .compare(QLatin1String("ok"), Qt::CaseInsensitive)
                != 0)
        return tr("there is no %1 %2 group %3 on %4").arg(row.type, way).arg(address).arg(bus);
    *kind = QStringLiteral("inside-group");
    if (!isGroup && fieldbusnames::isBoolType(row.type)) {
        for (const QString &type :
             {QStringLiteral("string"), QStringLiteral("float"), QStringLiteral("int")}) {
            const QString number = isAddressGroupValid(key, dir, type, QStringLiteral("no"),
                                                       row.address + QStringLiteral(",-1"), true);
            if (number.compare(QLatin1String("ok"), Qt::CaseInsensitive) != 0)
                return tr("the bool signal lies inside %1 group %2").arg(type, number);
        }
    }
    *kind = QStringLiteral("not-taken");
    return tr("not taken");
}

void BusFileDataManager::reportImport(const QVector<ImportRow> &rows, ImportReport &report)
{
    report.needsAnswer = _isConflictImportMap;
    for (const BiBo dir : {BusInput, BusOutput}) {
        const int index = mapIndex(dir);
        // The rows the cleaning kept, counted by what they are.
        const auto keptKey = [](const FuncAndMapInfo &r) {
            return r.module + gap + r.name + gap + r.type + gap + r.fieldBus + gap + r.address;
        };
        QHash<QString, int> kept;
        for (const QVector<FuncAndMapInfo> &busRows : qAsConst(imBusMap[index])) {
            for (const FuncAndMapInfo &row : busRows)
                ++kept[keptKey(row)];
        }
        // The present rows, as the collision search tells a row that is there
        // already; and who holds each place: the first present row there.
        const auto presentKey = [](const FuncAndMapInfo &r) {
            return r.fieldBus + gap + r.name + gap + r.type.toCaseFolded() + gap
                    + r.address.toCaseFolded();
        };
        const auto placeKey = [](const FuncAndMapInfo &r) {
            return r.fieldBus + gap + r.address + gap + r.type.toCaseFolded();
        };
        QSet<QString> present;
        QHash<QString, QString> holders;
        QHash<QString, int> lines;
        for (const FuncAndMapInfo &row : qAsConst(readMapList[index])) {
            present.insert(presentKey(row));
            if (!holders.contains(placeKey(row)))
                holders.insert(placeKey(row), QStringLiteral("%1 %2").arg(row.module, row.name));
        }
        for (const ImportRow &r : rows) {
            if (r.direction != dir)
                continue;
            lines.insert(keptKey(r.row), r.line);
            const auto survivor = kept.find(keptKey(r.row));
            if (survivor != kept.end() && *survivor > 0) {
                --*survivor;
                ++report.taken;
            } else if (present.contains(presentKey(r.row))) {
                ++report.alreadyThere;
            } else {
                QString kind;
                const QString reason = importDropReason(dir, r.row, &kind);
                report.dropped.append({r, kind, reason});
            }
        }
        for (const FuncAndMapInfo &row : qAsConst(conflictMapList[index]))
            report.collisions.append(
                    {{row, dir, lines.value(keptKey(row))}, holders.value(placeKey(row))});
        for (int i = 0; i < remapList[index].size(); ++i) {
            const FuncAndMapInfo &row = remapList[index].at(i);
            report.moved.append(
                    {{row, dir, lines.value(keptKey(row))}, presentMapList[index].value(i)});
        }
    }
}

bool BusFileDataManager::finishImport(MsgBox::returnValue answer, QString *error)
{
    handleImportMapData(answer);
    // The present mapping is kept on the controller before it is replaced.
    if (!copyMapBackup() || !sendMapBackupToCtrl()) {
        *error = tr("backing up the present mapping to %1 failed; nothing was changed")
                         .arg(RDE_SIGNAL_MAP_BACKUP_CFG);
        return false;
    }
    // A path other than the standard one writes the import's result and sends nothing.
    const QString local = TPU_FIELDBUS_DIR + QStringLiteral("/signal_mapping_import.cfg");
    if (!writeSendSignalMapCfg(local, RDE_SIGNAL_MAP_CFG)) {
        *error = tr("cannot write %1").arg(local);
        return false;
    }
    if (!sendFileToCtrl(RDE_SIGNAL_MAP_CFG, local)) {
        *error = tr("sending the imported mapping to %1 failed").arg(RDE_SIGNAL_MAP_CFG);
        return false;
    }
    // What the pendant's screens set when an import is done.
    g_imIoType = IoTypeAll;
    return true;
}
