#include "Commands.h"
#include "Output.h"
#include "Session.h"
#include <fieldbusconfig/ConfigSnapshot.h>

#include <QJsonArray>
#include <QJsonObject>

namespace {

QString onOff(bool on)
{
    return on ? Fbcfg::tr("on") : Fbcfg::tr("off");
}

// Every bus of fieldbus.xml (and the Modbus TCP slave the library adds), in
// the file's order, and whether the mapping screens offer it.
struct ListedBus
{
    BusName bus;
    bool mappable;
};

QVector<ListedBus> allBuses(Session &session)
{
    QStringList offered;
    for (const BusName &b : session.manager()->getBusNameList(false, false))
        offered.append(b.name);
    QVector<ListedBus> buses;
    const ConfigSnapshot local =
            ConfigSnapshot::load(session.localDir(), ConfigSnapshot::PendantLayout);
    for (const BusName &bus : local.buses)
        buses.append({bus, offered.contains(bus.name)});
    return buses;
}

QJsonArray busesJson(const QVector<ListedBus> &buses)
{
    QJsonArray array;
    for (const ListedBus &b : buses) {
        array.append(QJsonObject{{QStringLiteral("name"), b.bus.name},
                                 {QStringLiteral("shortName"), b.bus.shortName},
                                 {QStringLiteral("enabled"), b.bus.enable},
                                 {QStringLiteral("mappable"), b.mappable}});
    }
    return array;
}

void printBuses(const QVector<ListedBus> &buses)
{
    QVector<QStringList> rows;
    for (const ListedBus &b : buses)
        rows.append({b.bus.name, b.bus.shortName, onOff(b.bus.enable),
                     b.mappable ? Fbcfg::tr("yes") : Fbcfg::tr("no")});
    Output::table(
            {Fbcfg::tr("NAME"), Fbcfg::tr("SHORT"), Fbcfg::tr("STATE"), Fbcfg::tr("MAPPABLE")},
            rows);
}

const QStringList areaTypes{QStringLiteral("bool"), QStringLiteral("int"), QStringLiteral("float")};
const QStringList groupTypes{QStringLiteral("int"), QStringLiteral("float"),
                             QStringLiteral("string")};

} // namespace

int runStatus(Session &session, const Call &)
{
    if (const int rc = session.fetch(Session::FieldbusList | Session::FieldbusConfig
                                     | Session::Functions | Session::SignalMap | Session::GroupIo))
        return rc;
    BusFileDataManager *m = session.manager();
    const QVector<ListedBus> buses = allBuses(session);
    const QStringList modules = m->getModuleList();

    QJsonArray mappings;
    QJsonArray areas;
    QVector<QStringList> rows;
    for (const QString &bus : signalBuses(m)) {
        for (const BiBo dir : {BusInput, BusOutput}) {
            int signalCount = 0;
            int groupSignals = 0;
            for (const FuncAndMapInfo &row : m->getMapInfoList(bus, dir))
                ++(row.fieldBus == bus ? signalCount : groupSignals);
            int groups = 0;
            for (const QString &type : groupTypes)
                groups += m->getBusGroupInfo(bus, dir, type, false).size();
            int sizes[3];
            for (int i = 0; i < 3; ++i)
                sizes[i] = m->getBusNum(bus, dir, areaTypes.at(i));

            mappings.append(QJsonObject{{QStringLiteral("bus"), bus},
                                        {QStringLiteral("direction"), directionKey(dir)},
                                        {QStringLiteral("signals"), signalCount},
                                        {QStringLiteral("groupSignals"), groupSignals},
                                        {QStringLiteral("groups"), groups}});
            areas.append(QJsonObject{{QStringLiteral("bus"), bus},
                                     {QStringLiteral("direction"), directionKey(dir)},
                                     {QStringLiteral("bool"), sizes[0]},
                                     {QStringLiteral("int"), sizes[1]},
                                     {QStringLiteral("other"), sizes[2]}});
            rows.append({bus, directionWord(dir), QString::number(signalCount),
                         QString::number(groupSignals), QString::number(groups),
                         QString::number(sizes[0]), QString::number(sizes[1]),
                         QString::number(sizes[2])});
        }
    }

    if (session.settings().json) {
        Output::json(QJsonObject{{QStringLiteral("buses"), busesJson(buses)},
                                 {QStringLiteral("freeBusOpen"), m->isOpenFreeBus()},
                                 {QStringLiteral("modules"), QJsonArray::fromStringList(modules)},
                                 {QStringLiteral("mappings"), mappings},
                                 {QStringLiteral("areas"), areas}});
        return ExitOk;
    }
    Output::line(Fbcfg::tr("Buses:"));
    printBuses(buses);
    Output::line(Fbcfg::tr("Free bus: %1")
                         .arg(m->isOpenFreeBus() ? Fbcfg::tr("open") : Fbcfg::tr("closed")));
    Output::line();
    Output::line(Fbcfg::tr("Modules (%1): %2")
                         .arg(modules.size())
                         .arg(modules.join(QStringLiteral(", "))));
    Output::line();
    Output::line(Fbcfg::tr("Signals, groups and user IO areas of the buses that are on:"));
    Output::table({Fbcfg::tr("BUS"), Fbcfg::tr("DIRECTION"), Fbcfg::tr("SIGNALS"),
                   Fbcfg::tr("GROUP SIGNALS"), Fbcfg::tr("GROUPS"), Fbcfg::tr("BOOL"),
                   Fbcfg::tr("INT"), Fbcfg::tr("OTHER")},
                  rows);
    return ExitOk;
}

int runBusList(Session &session, const Call &)
{
    if (const int rc = session.fetch(Session::FieldbusList))
        return rc;
    const QVector<ListedBus> buses = allBuses(session);
    if (session.settings().json)
        Output::json(busesJson(buses));
    else
        printBuses(buses);
    return ExitOk;
}

int runBusSwitch(Session &session, const Call &call)
{
    const bool enable = call.name.endsWith(QLatin1String("enable"));
    const QString wanted = call.args.at(0);
    if (const int rc = session.fetch(Session::FieldbusList | Session::SignalMap))
        return rc;
    BusFileDataManager *m = session.manager();
    QMap<QString, BusName> all = m->getAllBusName();
    auto found = all.end();
    QStringList known;
    for (auto it = all.begin(); it != all.end(); ++it) {
        known.append(it->shortName);
        if (found == all.end() && it->shortName.compare(wanted, Qt::CaseInsensitive) == 0)
            found = it;
    }
    // The library always adds the Modbus TCP slave, switched on, unless the file lists it.
    if (found == all.end() && wanted.compare(QLatin1String("mtcp"), Qt::CaseInsensitive) == 0)
        return refuse(Fbcfg::tr("the Modbus TCP slave mtcp is always on"));
    if (found == all.end())
        return unknownName(call, Fbcfg::tr("no bus %1").arg(wanted), wanted,
                           known << QStringLiteral("mtcp"));
    const QString title = QStringLiteral("%1 (%2)").arg(found->name, found->shortName);
    if (found->enable == enable) {
        Output::line(Fbcfg::tr("%1 is already %2").arg(title, onOff(enable)));
        return ExitOk;
    }
    const int stillMapped = m->getMapInfoList(found->shortName, BusInput).size()
            + m->getMapInfoList(found->shortName, BusOutput).size();

    found->enable = enable;
    m->setBusInfo(all);
    if (const int rc =
                session.writeAndSend(RDE_FIELDBUS_XML, [m] { return m->writeSendFieldbusXml(); }))
        return rc;
    Output::line(Fbcfg::tr("%1 switched %2").arg(title, onOff(enable)));
    if (!enable && stillMapped > 0)
        Output::note(QStringLiteral("warning: ")
                     + (stillMapped == 1
                                ? Fbcfg::tr("1 mapped signal of %1 stays mapped while it is off")
                                          .arg(found->shortName)
                                : Fbcfg::tr("%1 mapped signals of %2 stay mapped while it is off")
                                          .arg(stillMapped)
                                          .arg(found->shortName)));
    return ExitOk;
}

int runBusPerformance(Session &session, const Call &call)
{
    const QString state = call.args.at(1);
    if (state != QLatin1String("on") && state != QLatin1String("off"))
        return usageError(call, Fbcfg::tr("the switch is on or off, not '%1'").arg(state));
    int mask = 0;
    if (call.isSet(QStringLiteral("current"))) {
        const QString text = call.value(QStringLiteral("current"));
        bool ok = false;
        mask = text.startsWith(QLatin1String("0x"), Qt::CaseInsensitive)
                ? text.mid(2).toInt(&ok, 16)
                : text.toInt(&ok, 10);
        if (!ok || mask < 0)
            return usageError(call,
                              Fbcfg::tr("--current must be a switch word of 0 or more, "
                                        "decimal or 0x hexadecimal, not '%1'")
                                      .arg(text));
    }
    if (const int rc = session.open())
        return rc;
    const int index = session.manager()->getBusIndex(call.args.at(0));
    if (index < 0)
        return unknownName(call,
                           Fbcfg::tr("no bus %1 with a performance switch").arg(call.args.at(0)),
                           call.args.at(0), fieldbusnames::busKindNames());
    // A switch already as asked keeps the word without the library: it would ask
    // to take the switch from the bus that holds it, and its "off" clears the
    // word even when another protocol holds the switch.
    const bool on = state == QLatin1String("on");
    const int bit = 1 << index;
    int value = mask;
    if (on ? mask != bit : (mask & bit) != 0)
        value = BusFileDataManager::getPerformanceValue(BusType(index), mask, on);
    if (const int rc = session.unansweredQuestion())
        return rc;
    // -1: the library kept the word (a word of several switches, or declined).
    if (value == -1 || value == mask) {
        Output::line(Fbcfg::tr("kept: the switch word stays %1").arg(mask));
        return ExitRefused;
    }
    Output::line(QString::number(value));
    return ExitOk;
}
