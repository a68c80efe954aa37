#include "Commands.h"
#include "Output.h"
#include "Session.h"
#include <fieldbusconfig/ConfigSnapshot.h>

#include <QFileInfo>
#include <QHash>
#include <QSet>

#include <cstdio>

namespace {

QString rowText(const FuncAndMapInfo &row, BiBo dir)
{
    return QStringLiteral("%1 %2 (%3) %4 %5")
            .arg(row.module, row.name, directionWord(dir), row.fieldBus, row.address);
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

namespace {

// The usage of import: FILE with --modules or --all, or --csv FILE.
int checkImportUsage(const Call &call)
{
    const bool fromCsv = call.isSet(QStringLiteral("csv"));
    const bool all = call.isSet(QStringLiteral("all"));
    if (fromCsv) {
        if (!call.args.isEmpty())
            return usageError(call, Fbcfg::tr("give either FILE or --csv FILE"));
        if (all || call.isSet(QStringLiteral("modules")))
            return usageError(call, Fbcfg::tr("--modules and --all do not apply to --csv"));
        return ExitOk;
    }
    if (call.args.isEmpty())
        return usageError(call, Fbcfg::tr("missing argument FILE"));
    if (all == call.isSet(QStringLiteral("modules")))
        return usageError(call, Fbcfg::tr("give either --modules A,B or --all"));
    for (const char *option : {"skip-bad", "delimiter"}) {
        if (call.isSet(QLatin1String(option)))
            return usageError(call,
                              Fbcfg::tr("--%1 applies to --csv only").arg(QLatin1String(option)));
    }
    return ExitOk;
}

// --prefer as the answer to the library's question: 1 present, 2 imported, 0 ask.
int readPreference(const Call &call, int &preference)
{
    preference = 0;
    if (!call.isSet(QStringLiteral("prefer")))
        return ExitOk;
    const QString prefer = call.value(QStringLiteral("prefer"));
    if (prefer != QLatin1String("present") && prefer != QLatin1String("imported"))
        return usageError(call,
                          Fbcfg::tr("--prefer must be present or imported, not '%1'").arg(prefer));
    preference = prefer == QLatin1String("present") ? MsgBox::Yes : MsgBox::No;
    return ExitOk;
}

// The modules --modules names (or every module but the process-variable layout).
int readModules(const Call &call, BusFileDataManager *m, QStringList &modules)
{
    modules = QStringList{pv_layout};
    if (call.isSet(QStringLiteral("all")))
        return ExitOk;
    modules.clear();
    // Every unknown name at once: a script fixes its list in one go.
    QStringList missing;
    const QStringList known = m->getModuleList();
    for (const QString &given : call.value(QStringLiteral("modules")).split(QLatin1Char(','))) {
        const QString name = given.trimmed();
        const QString key = name == pv_layout ? pv_layout : moduleKey(m, name);
        if (key.isEmpty())
            missing.append(missingName(Fbcfg::tr("no module %1").arg(name), name, known));
        else
            modules.append(key);
    }
    if (!missing.isEmpty())
        return usageError(
                call,
                Fbcfg::tr("%1 (known: %2)")
                        .arg(missing.join(QStringLiteral("; ")), known.join(QStringLiteral(", "))));
    return ExitOk;
}

// The library's report of a saved mapping's import; the command's end when
// the file repeats rows.
int prepareFromFile(const Call &call, BusFileDataManager *m, const QString &file,
                    ImportReport &report)
{
    QStringList modules;
    if (const int rc = readModules(call, m, modules))
        return rc;
    report = m->prepareImport(file, modules);
    if (!report.readable) {
        Output::error(Fbcfg::tr("cannot read %1").arg(file));
        return ExitFailure;
    }
    for (const ImportReport::Dropped &d : qAsConst(report.repeated))
        Output::note(QStringLiteral("%1:%2: %3").arg(file).arg(d.row.line).arg(d.reason));
    if (!report.repeated.isEmpty())
        return refuse(Fbcfg::tr("nothing was changed: %1 of the file map again what an earlier "
                                "row maps")
                              .arg(rowCount(report.repeated.size())));
    return ExitOk;
}

// What the import takes, finds there, drops or refuses, and what collides.
int printReport(const Call &call, const QString &file, const ImportReport &report,
                QMap<int, QString> refused)
{
    const bool fromCsv = call.isSet(QStringLiteral("csv"));
    QStringList dropped;
    for (const ImportReport::Dropped &d : report.dropped + report.repeated) {
        const QString text =
                QStringLiteral("%1: %2").arg(rowText(d.row.row, d.row.direction), d.reason);
        if (fromCsv)
            refused.insert(d.row.line, d.kind == QLatin1String("repeated") ? d.reason : text);
        else
            dropped.append(
                    QStringLiteral("  %1 %2").arg(Fbcfg::tr("line %1").arg(d.row.line), text));
    }
    Output::line((fromCsv ? Fbcfg::tr("%1: %2 to import, %3 already there, %4 refused")
                          : Fbcfg::tr("%1: %2 to import, %3 already there, %4 dropped"))
                         .arg(file, rowCount(report.taken))
                         .arg(report.alreadyThere)
                         .arg(fromCsv ? refused.size() : dropped.size()));
    for (auto it = refused.cbegin(); it != refused.cend(); ++it)
        Output::note(QStringLiteral("%1:%2: %3").arg(file).arg(it.key()).arg(it.value()));
    for (const QString &line : qAsConst(dropped))
        Output::line(line);
    if (fromCsv && !refused.isEmpty() && !call.isSet(QStringLiteral("skip-bad")))
        return refuse(Fbcfg::tr("nothing was written: %1 cannot be imported (--skip-bad "
                                "imports the others)")
                              .arg(rowCount(refused.size())));
    for (const ImportReport::Collision &c : report.collisions)
        Output::line(Fbcfg::tr("  collision: %1 takes the address of %2")
                             .arg(rowText(c.row.row, c.row.direction), c.holder));
    for (const ImportReport::Moved &moved : report.moved)
        Output::line(Fbcfg::tr("  mapped differently: %1, present %2 %3")
                             .arg(rowText(moved.row.row, moved.row.direction),
                                  moved.present.fieldBus, moved.present.address));
    return ExitOk;
}

// A file in another format would import nothing and be reported as if all of
// it were there already.
int checkSavedMapping(const QString &file)
{
    QVector<SnapshotMapping> rows;
    QVector<SnapshotFileProblem> problems;
    ConfigSnapshot::readMappingFile(file, rows, &problems);
    for (const SnapshotFileProblem &p : qAsConst(problems)) {
        if (p.kind == SnapshotFileProblem::Empty) {
            Output::error(Fbcfg::tr("%1 is empty: there is nothing to import").arg(file));
            return ExitFailure;
        }
        if (p.kind == SnapshotFileProblem::SkippedLines) {
            Output::error(Fbcfg::tr("%1:%2: not a saved signal mapping: this line and the "
                                    "others before its first %3 or %4 line would be skipped")
                                  .arg(file)
                                  .arg(p.line)
                                  .arg(fieldbusnames::systemInputMarker,
                                       fieldbusnames::systemOutputMarker));
            return ExitFailure;
        }
    }
    return ExitOk;
}

} // namespace

int runImport(Session &session, const Call &call)
{
    if (const int rc = checkImportUsage(call))
        return rc;
    int preference = 0;
    if (const int rc = readPreference(call, preference))
        return rc;
    const bool fromCsv = call.isSet(QStringLiteral("csv"));
    const QString file =
            session.userPath(fromCsv ? call.value(QStringLiteral("csv")) : call.args.at(0));
    if (!QFileInfo(file).isFile()) {
        Output::error(QFileInfo(file).isDir()
                              ? Fbcfg::tr("cannot read %1: a folder, not a file").arg(file)
                              : Fbcfg::tr("cannot read %1").arg(file));
        return ExitFailure;
    }
    if (!fromCsv) {
        if (const int rc = checkSavedMapping(file))
            return rc;
    }
    if (const int rc = session.fetch(Session::FieldbusList | Session::FieldbusConfig
                                     | Session::Functions | Session::SignalMap | Session::GroupIo))
        return rc;
    BusFileDataManager *m = session.manager();
    if (const EditVerdict verdict = m->canEdit(); !verdict.allowed())
        return refuse(verdict.text);

    ImportReport report;
    QMap<int, QString> refused;
    if (fromCsv) {
        QVector<ImportRow> rows;
        if (const int rc = readCsvRows(session, call, file, rows, refused))
            return rc;
        report = m->prepareImport(rows);
    } else if (const int rc = prepareFromFile(call, m, file, report)) {
        return rc;
    }
    if (const int rc = printReport(call, file, report, refused))
        return rc;
    if (report.taken == 0 && !report.needsAnswer) {
        Output::line(Fbcfg::tr("nothing to import; the mapping stays as it is"));
        return ExitOk;
    }
    int answer = MsgBox::Yes;
    if (report.needsAnswer) {
        answer = preference ? preference : Output::stdinIsTerminal() ? askPreference() : 0;
        if (!answer) {
            Output::error(Fbcfg::tr("nothing was changed: the import collides with the present "
                                    "mapping; choose with --prefer present|imported"));
            return ExitFailure;
        }
    }
    QString error;
    if (!m->finishImport(MsgBox::returnValue(answer), &error)) {
        Output::error(error);
        return ExitFailure;
    }
    Output::line(Fbcfg::tr("%1 now holds %2 input and %3 output rows; restart the controller for "
                           "the new mapping to take effect")
                         .arg(RDE_SIGNAL_MAP_CFG)
                         .arg(m->getImportResult(BusInput).size())
                         .arg(m->getImportResult(BusOutput).size()));
    return ExitOk;
}
