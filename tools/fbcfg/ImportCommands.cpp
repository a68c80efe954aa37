#include "Commands.h"
#include "Output.h"
#include "Session.h"
#include <fieldbusconfig/ConfigSnapshot.h>
#include <fieldbusconfig/platform/DataAccess.h>

#include <QFileInfo>
#include <QHash>
#include <QSet>
#include <QTemporaryDir>

#include <cstdio>

namespace {

QString rowText(const FuncAndMapInfo &row, BiBo dir)
{
    return QStringLiteral("%1 %2 (%3) %4 %5")
            .arg(row.module, row.name, directionWord(dir), row.fieldBus, row.address);
}

// Why the import's cleaning dropped a row: the first of its rules, in its order.
QString dropReason(BusFileDataManager *m, BiBo dir, const FuncAndMapInfo &row)
{
    const QString &key = row.fieldBus;
    const QStringList on = signalBuses(m);
    const bool isGroup = fieldbusnames::isGroupKey(key);
    const QString bus = fieldbusnames::busOfKey(key);
    if (!on.contains(bus))
        return Fbcfg::tr("bus %1 is not switched on").arg(bus);
    const int address = row.address.toInt();
    if (!isGroup) {
        const int count = m->getBusNum(key, dir, row.type);
        if (address < 0 || address > count - 1)
            return Fbcfg::tr("the address is outside %1's %2 %3 %4 addresses")
                    .arg(bus)
                    .arg(count)
                    .arg(row.type, directionWord(dir));
    } else if (m->isGroupIdExist(key, dir, row.type, address, true)
                       .compare(QLatin1String("ok"), Qt::CaseInsensitive)
               != 0) {
        return Fbcfg::tr("there is no %1 %2 group %3 on %4")
                .arg(row.type, directionWord(dir))
                .arg(address)
                .arg(bus);
    }
    if (!isGroup && row.type.compare(QLatin1String("bool"), Qt::CaseInsensitive) == 0) {
        for (const QString &type :
             {QStringLiteral("string"), QStringLiteral("float"), QStringLiteral("int")}) {
            const QString number =
                    m->isAddressGroupValid(key, dir, type, QStringLiteral("no"),
                                           row.address + QStringLiteral(",-1"), true);
            if (number.compare(QLatin1String("ok"), Qt::CaseInsensitive) != 0)
                return Fbcfg::tr("the bool signal lies inside %1 group %2").arg(type, number);
        }
    }
    return Fbcfg::tr("not taken");
}

// Which side wins for functions both sides map differently: 1 present, 2 imported.
int askPreference()
{
    for (;;) {
        fputs(Fbcfg::tr("keep the present mapping (p) or take the imported one (i)? ")
                      .toUtf8()
                      .constData(),
              stderr);
        fflush(stderr);
        char buffer[64] = {};
        if (!fgets(buffer, sizeof buffer, stdin))
            return 0;
        const QString reply = QString::fromLocal8Bit(buffer).trimmed();
        if (reply == QLatin1String("p"))
            return MsgBox::Yes;
        if (reply == QLatin1String("i"))
            return MsgBox::No;
    }
}

} // namespace

int runBackup(Session &session, const Call &)
{
    if (const int rc = session.fetch(Session::SignalMap))
        return rc;
    BusFileDataManager *m = session.manager();
    if (!m->copyMapBackup()) {
        Output::error(Fbcfg::tr("cannot copy the local %1 to its backup").arg(RDE_SIGNAL_MAP_CFG));
        return ExitFailure;
    }
    if (!m->sendMapBackupToCtrl()) {
        Output::error(
                Fbcfg::tr("sending %1 to the controller failed").arg(RDE_SIGNAL_MAP_BACKUP_CFG));
        return ExitFailure;
    }
    Output::line(
            Fbcfg::tr("%1 backed up to %2").arg(RDE_SIGNAL_MAP_CFG, RDE_SIGNAL_MAP_BACKUP_CFG));
    return ExitOk;
}

int runImport(Session &session, const Call &call)
{
    const bool fromCsv = call.isSet(QStringLiteral("csv"));
    const bool all = call.isSet(QStringLiteral("all"));
    const bool skipBad = call.isSet(QStringLiteral("skip-bad"));
    if (fromCsv) {
        if (!call.args.isEmpty())
            return usageError(call, Fbcfg::tr("give either FILE or --csv FILE"));
        if (all || call.isSet(QStringLiteral("modules")))
            return usageError(call, Fbcfg::tr("--modules and --all do not apply to --csv"));
    } else {
        if (call.args.isEmpty())
            return usageError(call, Fbcfg::tr("missing argument FILE"));
        if (all == call.isSet(QStringLiteral("modules")))
            return usageError(call, Fbcfg::tr("give either --modules A,B or --all"));
        if (skipBad)
            return usageError(call, Fbcfg::tr("--skip-bad applies to --csv only"));
    }
    int preference = 0;
    if (call.isSet(QStringLiteral("prefer"))) {
        const QString prefer = call.value(QStringLiteral("prefer"));
        if (prefer != QLatin1String("present") && prefer != QLatin1String("imported"))
            return usageError(
                    call, Fbcfg::tr("--prefer must be present or imported, not '%1'").arg(prefer));
        preference = prefer == QLatin1String("present") ? MsgBox::Yes : MsgBox::No;
    }
    const QString file =
            session.userPath(fromCsv ? call.value(QStringLiteral("csv")) : call.args.at(0));
    QVector<SnapshotMapping> fileRows;
    if (!QFileInfo(file).isFile()
        || (!fromCsv && !ConfigSnapshot::readMappingFile(file, fileRows))) {
        Output::error(Fbcfg::tr("cannot read %1").arg(file));
        return ExitFailure;
    }
    if (const int rc = session.fetch(Session::FieldbusList | Session::FieldbusConfig
                                     | Session::Functions | Session::SignalMap | Session::GroupIo))
        return rc;
    BusFileDataManager *m = session.manager();
    if (const EditVerdict verdict = m->canEdit(); !verdict.allowed())
        return refuse(verdict.text);

    QStringList modules{pv_layout};
    // A CSV file reaches the manager as a file in the signal mapping format.
    QString mappingFile = file;
    QMap<int, QString> refused;
    QTemporaryDir scratch;
    if (fromCsv) {
        modules.clear();
        mappingFile = scratch.filePath(QStringLiteral("signal_mapping_csv.cfg"));
        if (const int rc =
                    csvToMappingFile(session, call, file, mappingFile, fileRows, modules, refused))
            return rc;
    } else if (!all) {
        modules.clear();
        for (const QString &name : call.value(QStringLiteral("modules")).split(QLatin1Char(','))) {
            const QString key =
                    name.trimmed() == pv_layout ? pv_layout : moduleKey(m, name.trimmed());
            if (key.isEmpty())
                return unknownName(call, Fbcfg::tr("no module %1").arg(name.trimmed()),
                                   name.trimmed(), m->getModuleList());
            modules.append(key);
        }
    }
    // The rows the import reads: those of the listed modules, or every module
    // but PV_layout when it is listed.
    const auto selected = [&modules](const FuncAndMapInfo &row) {
        return modules.contains(pv_layout) ? row.module != pv_layout : modules.contains(row.module);
    };
    if (!fromCsv) {
        RepeatFinder repeats;
        QStringList repeated;
        for (const SnapshotMapping &mapping : qAsConst(fileRows)) {
            const QString why = selected(mapping.row)
                    ? repeats.repeat(mapping.direction, mapping.row, mapping.line)
                    : QString();
            if (!why.isEmpty())
                repeated.append(QStringLiteral("%1:%2: %3").arg(file).arg(mapping.line).arg(why));
        }
        for (const QString &line : qAsConst(repeated))
            Output::note(line);
        if (!repeated.isEmpty())
            return refuse(Fbcfg::tr("nothing was changed: %1 of the file map again what an "
                                    "earlier row maps")
                                  .arg(rowCount(repeated.size())));
    }
    if (!m->readMapParaBackup(mappingFile, modules)) {
        Output::error(Fbcfg::tr("the library could not read %1").arg(file));
        return ExitFailure;
    }

    // What the cleaning kept, dropped, or found there already.
    int taken = 0;
    int already = 0;
    QStringList dropped;
    const QChar gap = QLatin1Char('\n');
    for (const BiBo dir : {BusInput, BusOutput}) {
        // The rows the cleaning kept, counted by what they are.
        const auto keptKey = [gap](const FuncAndMapInfo &r) {
            return r.module + gap + r.name + gap + r.type + gap + r.fieldBus + gap + r.address;
        };
        QHash<QString, int> kept;
        const auto importMap = m->getImportBusMap(dir);
        for (const QVector<FuncAndMapInfo> &rows : importMap) {
            for (const FuncAndMapInfo &row : rows)
                ++kept[keptKey(row)];
        }
        // The present rows, as the collision search tells a row that is there already.
        const auto presentKey = [gap](const FuncAndMapInfo &r) {
            return r.fieldBus + gap + r.name + gap + r.type.toCaseFolded() + gap
                    + r.address.toCaseFolded();
        };
        QSet<QString> present;
        QVector<FuncAndMapInfo> table;
        m->getBusSignalMap(dir, table);
        for (const FuncAndMapInfo &row : qAsConst(table))
            present.insert(presentKey(row));
        for (const SnapshotMapping &mapping : qAsConst(fileRows)) {
            const FuncAndMapInfo &row = mapping.row;
            if (mapping.direction != dir || !selected(row))
                continue;
            const auto survivor = kept.find(keptKey(row));
            if (survivor != kept.end() && *survivor > 0) {
                --*survivor;
                ++taken;
                continue;
            }
            if (present.contains(presentKey(row)))
                ++already;
            else if (fromCsv)
                refused.insert(
                        mapping.line,
                        QStringLiteral("%1: %2").arg(rowText(row, dir), dropReason(m, dir, row)));
            else
                dropped.append(QStringLiteral("  %1 %2: %3")
                                       .arg(Fbcfg::tr("line %1").arg(mapping.line),
                                            rowText(row, dir), dropReason(m, dir, row)));
        }
    }
    if (fromCsv) {
        Output::line(Fbcfg::tr("%1: %2 to import, %3 already there, %4 refused")
                             .arg(file, rowCount(taken))
                             .arg(already)
                             .arg(refused.size()));
        for (auto it = refused.cbegin(); it != refused.cend(); ++it)
            Output::note(QStringLiteral("%1:%2: %3").arg(file).arg(it.key()).arg(it.value()));
        if (!refused.isEmpty() && !skipBad)
            return refuse(Fbcfg::tr("nothing was written: %1 cannot be imported (--skip-bad "
                                    "imports the others)")
                                  .arg(rowCount(refused.size())));
    } else {
        Output::line(Fbcfg::tr("%1: %2 to import, %3 already there, %4 dropped")
                             .arg(file, rowCount(taken))
                             .arg(already)
                             .arg(dropped.size()));
        for (const QString &line : qAsConst(dropped))
            Output::line(line);
    }

    for (const BiBo dir : {BusInput, BusOutput}) {
        // Who holds each place: the first present row there.
        const auto placeKey = [gap](const FuncAndMapInfo &r) {
            return r.fieldBus + gap + r.address + gap + r.type.toCaseFolded();
        };
        QHash<QString, QString> holders;
        QVector<FuncAndMapInfo> present;
        m->getBusSignalMap(dir, present);
        for (const FuncAndMapInfo &p : qAsConst(present)) {
            const QString key = placeKey(p);
            if (!holders.contains(key))
                holders.insert(key, QStringLiteral("%1 %2").arg(p.module, p.name));
        }
        for (const FuncAndMapInfo &row : m->getImportAddressCollisions(dir))
            Output::line(Fbcfg::tr("  collision: %1 takes the address of %2")
                                 .arg(rowText(row, dir), holders.value(placeKey(row))));
        const QList<FuncAndMapInfo> remapped = m->getImportRemappedFunctions(dir);
        const QList<FuncAndMapInfo> presentRows = m->getImportPresentRows(dir);
        for (int i = 0; i < remapped.size(); ++i) {
            const FuncAndMapInfo &p = presentRows.value(i);
            Output::line(Fbcfg::tr("  mapped differently: %1, present %2 %3")
                                 .arg(rowText(remapped.at(i), dir), p.fieldBus, p.address));
        }
    }

    if (taken == 0 && !BusFileDataManager::_isConflictImportMap) {
        Output::line(Fbcfg::tr("nothing to import; the mapping stays as it is"));
        return ExitOk;
    }
    int answer = MsgBox::Yes;
    if (BusFileDataManager::_isConflictImportMap) {
        answer = preference ? preference : Output::stdinIsTerminal() ? askPreference() : 0;
        if (!answer) {
            Output::error(Fbcfg::tr("nothing was changed: the import collides with the present "
                                    "mapping; choose with --prefer present|imported"));
            return ExitFailure;
        }
    }
    m->handleImportMapData(MsgBox::returnValue(answer));
    // The present mapping is kept on the controller before it is replaced.
    if (!m->copyMapBackup() || !m->sendMapBackupToCtrl()) {
        Output::error(Fbcfg::tr("backing up the present mapping to %1 failed; nothing was changed")
                              .arg(RDE_SIGNAL_MAP_BACKUP_CFG));
        return ExitFailure;
    }
    // A path other than the standard one writes the import's result and sends nothing.
    const QString local = TPU_FIELDBUS_DIR + QStringLiteral("/signal_mapping_import.cfg");
    if (!m->writeSendSignalMapCfg(local, RDE_SIGNAL_MAP_CFG)) {
        Output::error(Fbcfg::tr("cannot write %1").arg(local));
        return ExitFailure;
    }
    bool sent = false;
    for (int attempt = 0; attempt < 3 && !sent; ++attempt)
        sent = DataAccess::SendFileFromTPU2Controller(local, RDE_SIGNAL_MAP_CFG, false);
    if (!sent) {
        Output::error(
                Fbcfg::tr("sending the imported mapping to %1 failed").arg(RDE_SIGNAL_MAP_CFG));
        return ExitFailure;
    }
    g_imIoType = IoTypeAll;
    Output::line(Fbcfg::tr("%1 now holds %2 input and %3 output rows; restart the controller for "
                           "the new mapping to take effect")
                         .arg(RDE_SIGNAL_MAP_CFG)
                         .arg(m->getImportResult(BusInput).size())
                         .arg(m->getImportResult(BusOutput).size()));
    return ExitOk;
}
