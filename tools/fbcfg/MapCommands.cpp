#include "Commands.h"
#include "Output.h"
#include "Session.h"
#include <fieldbusconfig/ConfigSnapshot.h>

#include <QJsonArray>
#include <QJsonObject>

namespace {

// The part of a bus key by which the mapping table tells rows apart.
QString busPart(const QString &fieldBus)
{
    return fieldbusnames::busOfKey(fieldBus.toLower());
}

QString place(const FuncAndMapInfo &row)
{
    return QStringLiteral("%1 %2").arg(row.fieldBus, row.address);
}

bool sameRow(const FuncAndMapInfo &a, const FuncAndMapInfo &b)
{
    return a.module == b.module && a.name == b.name
            && a.type.compare(b.type, Qt::CaseInsensitive) == 0
            && a.fieldBus.compare(b.fieldBus, Qt::CaseInsensitive) == 0 && a.address == b.address
            && a.filterTime == b.filterTime && a.invert == b.invert;
}

// Merges edits into the working table and tells whether it became `expected`:
// the table finds rows by function name and bus only, so an edit can land on
// another module's function of the same name.
bool applyExactly(BusFileDataManager *m, const QVector<FuncAndMapInfo> &edits, BiBo dir,
                  const QVector<FuncAndMapInfo> &expected)
{
    m->setMapInfo(edits, dir);
    QVector<FuncAndMapInfo> now;
    m->getBusSignalMap(dir, now);
    return std::equal(now.cbegin(), now.cend(), expected.cbegin(), expected.cend(), sameRow);
}

int refuseAmbiguous(BusFileDataManager *m, const QVector<FuncAndMapInfo> &table,
                    const QString &module, const QString &name, const QString &fieldBus)
{
    m->updateMapData(false);
    QString other;
    for (const FuncAndMapInfo &row : table) {
        if (other.isEmpty() && row.module != module
            && row.name.compare(name, Qt::CaseInsensitive) == 0
            && busPart(row.fieldBus) == busPart(fieldBus))
            other = QStringLiteral("%1 %2 (%3)").arg(row.module, row.name, place(row));
    }
    return refuse(Fbcfg::tr("the library tells mapping rows apart by function name and bus only, "
                            "and %1 has the same; nothing was changed")
                          .arg(other.isEmpty() ? name : other));
}

// Splits a table into the rows that stay and removal edits for `rows`.
void takeOut(const QVector<FuncAndMapInfo> &table, const QVector<int> &rows,
             QVector<FuncAndMapInfo> &rest, QVector<FuncAndMapInfo> &removals)
{
    for (int i = 0; i < table.size(); ++i) {
        if (!rows.contains(i)) {
            rest.append(table.at(i));
            continue;
        }
        removals.append(table.at(i));
        removals.last().address = QStringLiteral("-1"); // "not mapped" removes the row
    }
}

struct Function
{
    QString module; // English key
    FuncAndMapInfo declared;
};

// The function a module declares for a direction, by its name in either
// language; a name that is not there is a usage error.
int findFunction(const Call &call, BusFileDataManager *m, const QString &moduleName,
                 const QString &functionName, BiBo dir, Function &found)
{
    found.module = moduleKey(m, moduleName);
    if (found.module.isEmpty())
        return unknownName(call, Fbcfg::tr("no module %1").arg(moduleName), moduleName,
                           m->getModuleList());
    const QVector<FuncAndMapInfo> declared = m->getFuncList(found.module).value(dir);
    QStringList names;
    for (const FuncAndMapInfo &f : declared) {
        if (f.name == functionName || (!f.nameCn.isEmpty() && f.nameCn == functionName)) {
            found.declared = f;
            return ExitOk;
        }
        names.append(f.name);
    }
    if (names.isEmpty())
        return usageError(call,
                          Fbcfg::tr("%1 declares no %2 functions for the fieldbus")
                                  .arg(moduleName, directionWord(dir)));
    return unknownName(
            call,
            Fbcfg::tr("%1 has no %2 function %3").arg(moduleName, directionWord(dir), functionName),
            functionName, names);
}

QVector<int> rowsOf(const QVector<FuncAndMapInfo> &table, const QString &module,
                    const QString &name)
{
    QVector<int> rows;
    for (int i = 0; i < table.size(); ++i) {
        if (table.at(i).module == module && table.at(i).name == name)
            rows.append(i);
    }
    return rows;
}

QString title(BusFileDataManager *m, const QString &module, const QString &name,
              const QString &type, BiBo dir)
{
    return QStringLiteral("%1 %2 (%3 %4)")
            .arg(m->getCurLanguageModuName(module), FunctionIndex(m).displayName(module, name, showsChinese(m)), type,
                 directionWord(dir));
}

QString places(const QVector<FuncAndMapInfo> &table, const QVector<int> &rows)
{
    QStringList texts;
    for (int i : rows)
        texts.append(place(table.at(i)));
    return texts.isEmpty() ? Fbcfg::tr("not mapped") : texts.join(QStringLiteral(", "));
}

// The address, and the filter time and inversion when given, as numbers.
int readMapSetNumbers(const Call &call, int &address)
{
    if (!readInt(call.args.at(3), &address))
        return usageError(call,
                          Fbcfg::tr("the address must be a number, not '%1'").arg(call.args.at(3)));
    const QString filterTime = call.value(QStringLiteral("filter-time"));
    int number = 0;
    if (call.isSet(QStringLiteral("filter-time")) && (!readInt(filterTime, &number) || number < 0))
        return usageError(call,
                          Fbcfg::tr("--filter-time must be a whole number of 0 or more, "
                                    "not '%1'")
                                  .arg(filterTime));
    const QString invert = call.value(QStringLiteral("invert"));
    if (call.isSet(QStringLiteral("invert")) && invert != QLatin1String("0")
        && invert != QLatin1String("1"))
        return usageError(call, Fbcfg::tr("--invert must be 0 or 1, not '%1'").arg(invert));
    return ExitOk;
}

// The command's end for a verdict that refuses: names that are not there are
// usage errors with the known names, anything else a refusal; ExitOk and the
// function otherwise.
int readVerdict(const Call &call, BusFileDataManager *m, const EditVerdict &verdict, BiBo dir,
                Function &f)
{
    if (verdict.kind == EditVerdict::UnknownBus)
        return checkSignalBus(call, m, busPart(call.args.at(2)));
    if (verdict.kind != EditVerdict::UnknownModule && verdict.kind != EditVerdict::UnknownFunction
        && !verdict.allowed())
        return refuse(verdict.text);
    return findFunction(call, m, call.args.at(0), call.args.at(1), dir, f);
}

} // namespace

int runMapList(Session &session, const Call &call)
{
    QVector<BiBo> directions;
    if (const int rc = readDirections(call, false, directions))
        return rc;
    if (const int rc =
                session.fetch(Session::FieldbusList | Session::Functions | Session::SignalMap))
        return rc;
    BusFileDataManager *m = session.manager();
    const ConfigSnapshot snapshot =
            ConfigSnapshot::load(session.localDir(), ConfigSnapshot::PendantLayout);
    const QString bus = call.value(QStringLiteral("bus"));
    const QString module = call.value(QStringLiteral("module"));
    const QString wantedKey = moduleKey(session.manager(), module);
    FunctionIndex functions(m);
    const bool chinese = showsChinese(m);

    QJsonArray array;
    QVector<QStringList> rows;
    for (const BiBo dir : qAsConst(directions)) {
        QVector<FuncAndMapInfo> table;
        m->getBusSignalMap(dir, table);
        // The rows of a direction stand in the file in the table's order.
        QVector<const SnapshotMapping *> lines;
        for (const SnapshotMapping &mapping : snapshot.mappings) {
            if (mapping.direction == dir)
                lines.append(&mapping);
        }
        for (int i = 0; i < table.size(); ++i) {
            const FuncAndMapInfo &row = table.at(i);
            if (!bus.isEmpty() && row.fieldBus.compare(bus, Qt::CaseInsensitive) != 0)
                continue;
            if (!module.isEmpty() && row.module != module && row.module != wantedKey)
                continue;
            const SnapshotMapping *mapping = lines.value(i);
            const int line = mapping && mapping->row.name == row.name ? mapping->line : 0;
            const QString display = functions.displayName(row.module, row.name, chinese);
            array.append(QJsonObject{
                    {QStringLiteral("module"), row.module},
                    {QStringLiteral("function"), row.name},
                    {QStringLiteral("functionDisplay"), display},
                    {QStringLiteral("type"), row.type},
                    {QStringLiteral("bus"), row.fieldBus},
                    {QStringLiteral("direction"), directionKey(dir)},
                    {QStringLiteral("address"), Output::numberOrText(row.address)},
                    {QStringLiteral("filterTime"), Output::numberOrText(row.filterTime)},
                    {QStringLiteral("invert"), Output::numberOrText(row.invert)},
                    {QStringLiteral("line"), line}});
            rows.append({m->getCurLanguageModuName(row.module), display, row.type, row.fieldBus,
                         directionWord(dir), row.address, row.filterTime, row.invert,
                         QString::number(line)});
        }
    }
    if (rows.isEmpty()) {
        if (const int rc = checkBusFilter(m, call))
            return rc;
        if (!module.isEmpty() && wantedKey.isEmpty())
            return usageError(call,
                              Fbcfg::tr("there is no module %1; the modules are %2")
                                      .arg(module, m->getModuleList().join(QStringLiteral(", "))));
    }
    if (session.settings().json)
        Output::json(array);
    else if (rows.isEmpty())
        Output::line(Fbcfg::tr("no mapped signals"));
    else
        Output::table({Fbcfg::tr("MODULE"), Fbcfg::tr("FUNCTION"), Fbcfg::tr("TYPE"),
                       Fbcfg::tr("BUS"), Fbcfg::tr("DIRECTION"), Fbcfg::tr("ADDRESS"),
                       Fbcfg::tr("FILTER"), Fbcfg::tr("INVERT"), Fbcfg::tr("LINE")},
                      rows);
    return ExitOk;
}

int runMapSet(Session &session, const Call &call)
{
    BiBo dir = BusInput;
    if (const int rc = readDirection(call, dir))
        return rc;
    const QString bus = call.args.at(2).toLower();
    int address = 0;
    if (const int rc = readMapSetNumbers(call, address))
        return rc;
    const QString filterTime = call.value(QStringLiteral("filter-time"));
    const QString invert = call.value(QStringLiteral("invert"));

    if (const int rc = session.fetch(Session::FieldbusList | Session::FieldbusConfig
                                     | Session::Functions | Session::SignalMap | Session::GroupIo))
        return rc;
    BusFileDataManager *m = session.manager();
    const EditVerdict verdict =
            m->canMapFunction(call.args.at(0), call.args.at(1), dir, bus, QString::number(address));
    Function f;
    if (const int rc = readVerdict(call, m, verdict, dir, f))
        return rc;
    const QString &type = f.declared.type;
    const bool isBool = type.compare(QLatin1String("bool"), Qt::CaseInsensitive) == 0;
    if (call.isSet(QStringLiteral("filter-time")) && !(isBool && dir == BusInput))
        return usageError(call, Fbcfg::tr("--filter-time applies only to bool inputs"));
    if (call.isSet(QStringLiteral("invert")) && !isBool)
        return usageError(call, Fbcfg::tr("--invert applies only to bool signals"));

    const QString base = busPart(bus);
    QVector<FuncAndMapInfo> table;
    m->getBusSignalMap(dir, table);
    const QVector<int> present = rowsOf(table, f.module, f.declared.name);
    QVector<FuncAndMapInfo> without;
    QVector<FuncAndMapInfo> removals;
    takeOut(table, present, without, removals);

    FuncAndMapInfo row = f.declared;
    row.module = f.module;
    row.fieldBus = bus;
    row.address = QString::number(address);
    // Never empty: an empty value would break the line format.
    const FuncAndMapInfo *old = present.size() == 1 ? &table.at(present.constFirst()) : nullptr;
    const auto kept = [](const QString &given, const QString &old) {
        return !given.isEmpty() ? given : !old.isEmpty() ? old : QStringLiteral("0");
    };
    row.filterTime = kept(filterTime, old ? old->filterTime : QString());
    row.invert = kept(invert, old ? old->invert : QString());

    const QString heading = title(m, f.module, f.declared.name, type, dir);
    if (old && sameRow(*old, row)) {
        Output::line(Fbcfg::tr("%1 is already mapped to %2").arg(heading, place(row)));
        return ExitOk;
    }
    QVector<FuncAndMapInfo> expected;
    QVector<FuncAndMapInfo> edits;
    if (old && busPart(old->fieldBus) == base) {
        // Same key: the row changes where it stands.
        expected = table;
        FuncAndMapInfo &changed = expected[present.constFirst()];
        changed.fieldBus = row.fieldBus;
        changed.address = row.address;
        changed.filterTime = row.filterTime;
        changed.invert = row.invert;
        edits = {row};
    } else {
        expected = without + QVector<FuncAndMapInfo>{row};
        edits = removals + QVector<FuncAndMapInfo>{row};
    }
    if (!applyExactly(m, edits, dir, expected))
        return refuseAmbiguous(m, table, f.module, f.declared.name, bus);
    if (const int rc = session.writeAndSend(
                RDE_SIGNAL_MAP_CFG,
                [m] { return m->writeSendSignalMapCfg(TPU_SIGNAL_MAP_CFG, RDE_SIGNAL_MAP_CFG); },
                [m] { m->updateMapData(false); }))
        return rc;
    Output::line(QStringLiteral("%1: %2 -> %3").arg(heading, places(table, present), place(row)));
    return ExitOk;
}

int runMapUnset(Session &session, const Call &call)
{
    BiBo dir = BusInput;
    if (const int rc = readDirection(call, dir))
        return rc;
    if (const int rc =
                session.fetch(Session::FieldbusList | Session::Functions | Session::SignalMap))
        return rc;
    BusFileDataManager *m = session.manager();
    const EditVerdict verdict = m->canUnmapFunction(call.args.at(0), call.args.at(1), dir);
    if (verdict.kind == EditVerdict::UnknownModule
        || verdict.kind == EditVerdict::UnknownFunction) {
        Function declared;
        return findFunction(call, m, call.args.at(0), call.args.at(1), dir, declared);
    }
    if (!verdict.allowed())
        return refuse(verdict.text);
    // Rows of modules or functions no longer declared can be removed too.
    QString module = moduleKey(m, call.args.at(0));
    if (module.isEmpty())
        module = call.args.at(0);
    QString name = call.args.at(1);
    for (const FuncAndMapInfo &f : m->getFuncList(module).value(dir)) {
        if (!f.nameCn.isEmpty() && f.nameCn == name)
            name = f.name;
    }

    QVector<FuncAndMapInfo> table;
    m->getBusSignalMap(dir, table);
    const QVector<int> present = rowsOf(table, module, name);
    QVector<FuncAndMapInfo> without;
    QVector<FuncAndMapInfo> removals;
    takeOut(table, present, without, removals);
    if (!applyExactly(m, removals, dir, without))
        return refuseAmbiguous(m, table, module, name, removals.constFirst().fieldBus);
    if (const int rc = session.writeAndSend(
                RDE_SIGNAL_MAP_CFG,
                [m] { return m->writeSendSignalMapCfg(TPU_SIGNAL_MAP_CFG, RDE_SIGNAL_MAP_CFG); },
                [m] { m->updateMapData(false); }))
        return rc;
    Output::line(QStringLiteral("%1: %2 -> %3")
                         .arg(title(m, module, name, table.at(present.constFirst()).type, dir),
                              places(table, present), Fbcfg::tr("not mapped")));
    return ExitOk;
}
