#include "Commands.h"
#include "Output.h"
#include "Session.h"
#include <fieldbusconfig/ConfigSnapshot.h>

#include <QJsonArray>
#include <QJsonObject>

namespace {

const QStringList groupTypes{QStringLiteral("int"), QStringLiteral("float"),
                             QStringLiteral("string")};

// The reader's table of a type text: int, float, anything else string.
int readTable(const QString &type)
{
    if (type.compare(groupTypes.at(0), Qt::CaseInsensitive) == 0)
        return 0;
    return type.compare(groupTypes.at(1), Qt::CaseInsensitive) == 0 ? 1 : 2;
}

int readType(const Call &call, QString &type)
{
    type = call.value(QStringLiteral("type")).toLower();
    if (!call.isSet(QStringLiteral("type")))
        return usageError(call, Fbcfg::tr("--type int|float|string is required"));
    if (!groupTypes.contains(type))
        return usageError(call,
                          Fbcfg::tr("--type must be int, float or string, not '%1'")
                                  .arg(call.value(QStringLiteral("type"))));
    return ExitOk;
}

QString span(const GroupInfo &g)
{
    return QStringLiteral("%1-%2").arg(g.deviceMapHead, g.deviceMapTail);
}

QString groupTitle(const QString &type, BiBo dir, const QString &number, const QString &bus)
{
    return Fbcfg::tr("%1 %2 group %3 of %4").arg(type, directionWord(dir), number, bus);
}

} // namespace

int runGroupList(Session &session, const Call &call)
{
    QVector<BiBo> directions;
    if (const int rc = readDirections(call, false, directions))
        return rc;
    if (const int rc = session.fetch(Session::FieldbusList | Session::GroupIo))
        return rc;
    BusFileDataManager *m = session.manager();
    const ConfigSnapshot snapshot =
            ConfigSnapshot::load(session.localDir(), ConfigSnapshot::PendantLayout);
    const QString bus = call.value(QStringLiteral("bus"));

    // A later row of the same number replaces an earlier one, as in the reader.
    const auto lineKey = [](BiBo dir, int table, const QString &number) {
        return QStringLiteral("%1|%2|%3").arg(dir).arg(table).arg(number);
    };
    QHash<QString, int> lines;
    for (const SnapshotGroup &s : snapshot.groups)
        lines.insert(lineKey(s.direction, readTable(s.group.type), s.group.address), s.line);

    QJsonArray array;
    QVector<QStringList> rows;
    for (const BiBo dir : qAsConst(directions)) {
        for (int table = 0; table < groupTypes.size(); ++table) {
            const QMap<QString, GroupInfo> groups = m->getAllGroupInfo(dir, groupTypes.at(table));
            for (auto it = groups.cbegin(); it != groups.cend(); ++it) {
                const GroupInfo &g = it.value();
                if (!bus.isEmpty() && g.fieldBus.compare(bus, Qt::CaseInsensitive) != 0)
                    continue;
                const int line = lines.value(lineKey(dir, table, it.key()));
                array.append(QJsonObject{
                        {QStringLiteral("bus"), g.fieldBus.toLower()},
                        {QStringLiteral("direction"), directionKey(dir)},
                        {QStringLiteral("type"), g.type},
                        {QStringLiteral("group"), Output::numberOrText(it.key())},
                        {QStringLiteral("first"), Output::numberOrText(g.deviceMapHead)},
                        {QStringLiteral("last"), Output::numberOrText(g.deviceMapTail)},
                        {QStringLiteral("line"), line}});
                rows.append({g.fieldBus.toLower(), directionWord(dir), g.type, it.key(),
                             g.deviceMapHead, g.deviceMapTail, QString::number(line)});
            }
        }
    }
    if (rows.isEmpty()) {
        if (const int rc = checkBusFilter(m, call))
            return rc;
    }
    if (session.settings().json)
        Output::json(array);
    else if (rows.isEmpty())
        Output::line(Fbcfg::tr("no groups"));
    else
        Output::table({Fbcfg::tr("BUS"), Fbcfg::tr("DIRECTION"), Fbcfg::tr("TYPE"),
                       Fbcfg::tr("GROUP"), Fbcfg::tr("FIRST"), Fbcfg::tr("LAST"),
                       Fbcfg::tr("LINE")},
                      rows);
    return ExitOk;
}

int runGroupSet(Session &session, const Call &call)
{
    BiBo dir = BusInput;
    if (const int rc = readDirection(call, dir))
        return rc;
    QString type;
    if (const int rc = readType(call, type))
        return rc;
    const QString bus = call.args.at(0).toLower();
    int values[3] = {};
    for (int i = 0; i < 3; ++i) {
        if (!readInt(call.args.at(i + 1), &values[i]))
            return usageError(call, Fbcfg::tr("'%1' is not a number").arg(call.args.at(i + 1)));
    }
    const int number = values[0];
    const int first = values[1];
    const int last = values[2];
    if (const int rc = session.fetch(Session::FieldbusList | Session::FieldbusConfig
                                     | Session::SignalMap | Session::GroupIo))
        return rc;
    BusFileDataManager *m = session.manager();
    const EditVerdict verdict = m->canSetGroup(bus, dir, type, number, first, last);
    if (verdict.kind == EditVerdict::UnknownBus)
        return checkSignalBus(call, m, bus);
    if (!verdict.allowed())
        return refuse(verdict.text);

    const QString numberText = QString::number(number);
    const QMap<QString, GroupInfo> table = m->getAllGroupInfo(dir, type);
    const GroupInfo old = table.value(numberText);
    const GroupInfo group{type, numberText, bus, QString::number(first), QString::number(last)};
    const QString heading = groupTitle(type, dir, numberText, bus);
    if (table.contains(numberText) && span(old) == span(group)) {
        Output::line(Fbcfg::tr("%1 is already %2").arg(heading, span(group)));
        return ExitOk;
    }
    m->setGroupInfo(group, type, dir);
    if (const int rc = session.writeAndSend(
                RDE_GROUP_CFG, [m] { return m->writeSendGroupCfg(); },
                [m] { m->updateGroupData(false); }))
        return rc;
    Output::line(QStringLiteral("%1: %2 -> %3")
                         .arg(heading, table.contains(numberText) ? span(old) : Fbcfg::tr("new"),
                              span(group)));
    return ExitOk;
}

int runGroupDelete(Session &session, const Call &call)
{
    BiBo dir = BusInput;
    if (const int rc = readDirection(call, dir))
        return rc;
    QString type;
    if (const int rc = readType(call, type))
        return rc;
    const QString bus = call.args.at(0).toLower();
    int number = 0;
    if (!readInt(call.args.at(1), &number))
        return usageError(call, Fbcfg::tr("'%1' is not a number").arg(call.args.at(1)));
    if (const int rc = session.fetch(Session::FieldbusList | Session::SignalMap | Session::GroupIo))
        return rc;
    BusFileDataManager *m = session.manager();
    const EditVerdict verdict = m->canDeleteGroup(bus, dir, type, number);
    if (verdict.kind == EditVerdict::UnknownBus)
        return checkSignalBus(call, m, bus);
    if (!verdict.allowed())
        return refuse(verdict.text);

    QString key;
    GroupInfo group;
    for (const GroupInfo &g : m->getBusGroupInfo(bus, dir, type, false)) {
        if (g.address.toInt() == number) {
            key = g.address;
            group = g;
        }
    }
    const QString heading = groupTitle(type, dir, QString::number(number), bus);
    GroupInfo deletion = group;
    deletion.address = key;
    deletion.deviceMapHead = QStringLiteral("-1"); // the deletion mark
    m->setGroupInfo(deletion, type, dir);
    if (const int rc = session.writeAndSend(
                RDE_GROUP_CFG, [m] { return m->writeSendGroupCfg(); },
                [m] { m->updateGroupData(false); }))
        return rc;
    Output::line(Fbcfg::tr("%1 (%2) deleted").arg(heading, span(group)));
    return ExitOk;
}
