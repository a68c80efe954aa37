#include "BusFileDataManager.h"

#include "FieldbusNames.h"

namespace {

const QString okText = QStringLiteral("ok");
const QStringList groupTypes{QStringLiteral("string"), QStringLiteral("float"),
                             QStringLiteral("int")};

EditVerdict verdict(EditVerdict::Kind kind, const QString &text)
{
    EditVerdict v;
    v.kind = kind;
    v.text = text;
    return v;
}

// The group a validator answered with, and its range, as the verdict's.
void nameGroup(EditVerdict &v, const QVector<GroupInfo> &groups, const QString &type,
               const QString &number)
{
    v.groupType = type;
    v.group = number.toInt();
    for (const GroupInfo &g : groups) {
        if (g.address == number) {
            v.first = g.deviceMapHead.toInt();
            v.last = g.deviceMapTail.toInt();
        }
    }
}

QStringList shortNames(const QVector<BusName> &buses)
{
    QStringList names;
    for (const BusName &bus : buses)
        names.append(bus.shortName);
    return names;
}

} // namespace

QString EditVerdict::kindName(Kind kind)
{
    static const char *const names[] = {"allowed",          "edit-not-allowed",   "unknown-module",
                                        "unknown-function", "unknown-bus",        "bus-off",
                                        "unknown-type",     "not-a-number",       "no-addresses",
                                        "out-of-range",     "backwards",          "taken",
                                        "inside-group",     "group-missing",      "holds-bool",
                                        "overlaps",         "group-number-taken", "no-such-group",
                                        "group-in-use",     "not-mapped"};
    static_assert(sizeof names / sizeof *names == EditVerdict::NotMapped + 1,
                  "a name for every kind");
    // A kind made from an int of a newer library has no name here.
    return kind >= 0 && kind <= EditVerdict::NotMapped ? QLatin1String(names[kind]) : QString();
}

QString BusFileDataManager::moduleKeyOf(const QString &name)
{
    if (name.isEmpty())
        return QString();
    if (isExistModule(name))
        return name;
    const QString key = getModuleNameEnCn(name, false);
    return isExistModule(key) ? key : QString();
}

EditVerdict BusFileDataManager::canEdit()
{
    // In the pendant's order; the first that fails has shown its message box.
    if (isEditable() && isHasRteAuthority() && isRebootRde() && isMapFuncEdit(IoTypeFieldbus))
        return EditVerdict();
    return verdict(EditVerdict::EditNotAllowed, tr("the pendant does not allow editing now"));
}

EditVerdict BusFileDataManager::canMapFunction(const QString &module, const QString &function,
                                               BiBo dir, const QString &bus, const QString &address)
{
    EditVerdict v = canEdit();
    if (!v.allowed())
        return v;
    const QString key = moduleKeyOf(module);
    if (key.isEmpty())
        return verdict(EditVerdict::UnknownModule, tr("there is no module %1").arg(module));
    const QString way = dir == BusInput ? tr("input") : tr("output");
    QString type;
    QString name;
    for (const FuncAndMapInfo &f : getFuncList(key).value(mapIndex(dir))) {
        if (name.isEmpty()
            && (f.name == function || (!f.nameCn.isEmpty() && f.nameCn == function))) {
            name = f.name;
            type = f.type;
        }
    }
    if (name.isEmpty())
        return verdict(EditVerdict::UnknownFunction,
                       tr("%1 declares no %2 function %3").arg(module, way, function));
    const QString busKey = bus.toLower();
    const QString base = fieldbusnames::busOfKey(busKey);
    if (!shortNames(getBusNameList(false, false)).contains(base))
        return verdict(EditVerdict::UnknownBus, tr("there is no bus %1").arg(base));
    if (!shortNames(getBusNameList(false, true)).contains(base))
        return verdict(EditVerdict::BusOff, tr("bus %1 is switched off").arg(base));
    bool number = false;
    const int at = address.trimmed().toInt(&number, 10);
    if (!number)
        return verdict(EditVerdict::NotANumber, tr("'%1' is not an address").arg(address));

    const bool isGroup = fieldbusnames::isGroupKey(busKey);
    if (isGroup && isGroupIdExist(busKey, dir, type, at, false) != okText) {
        v = verdict(EditVerdict::GroupMissing,
                    tr("there is no %1 %2 group %3 on %4").arg(type, way).arg(at).arg(base));
        v.groupType = type;
        v.group = at;
        return v;
    }
    v.busSize = getBusNum(busKey, dir, type);
    if (v.busSize <= 0) {
        v.kind = EditVerdict::NoAddresses;
        v.text = tr("%1 has no %2 %3 addresses").arg(base, type, way);
        return v;
    }
    if (at < 0 || at >= v.busSize) {
        v.kind = EditVerdict::OutOfRange;
        v.text = isGroup ? tr("group %1 is beyond the %2 %3 groups of %4 (0-%5)")
                                   .arg(at)
                                   .arg(v.busSize)
                                   .arg(type, base)
                                   .arg(v.busSize - 1)
                         : tr("address %1 is beyond %2's %3 %4 %5 addresses (0-%6)")
                                   .arg(at)
                                   .arg(base)
                                   .arg(v.busSize)
                                   .arg(type, way)
                                   .arg(v.busSize - 1);
        return v;
    }
    if (const FuncAndMapInfo *holder = occupyingRow(mapIndex(dir), busKey, type, at, key, name)) {
        v.kind = EditVerdict::Taken;
        v.module = holder->module;
        v.function = holder->name;
        v.text = tr("address %1 of %2 (%3 %4) is taken by %5 %6")
                         .arg(at)
                         .arg(busKey, type, way, getCurLanguageModuName(holder->module),
                              holder->name);
        return v;
    }
    if (isGroup || !fieldbusnames::isBoolType(type))
        return v;
    // A range with only a first address asks which group holds it.
    for (const QString &groupType : groupTypes) {
        const QString group = isAddressGroupValid(busKey, dir, groupType, QStringLiteral("no"),
                                                  QStringLiteral("%1,-1").arg(at), false);
        if (group == okText)
            continue;
        v.kind = EditVerdict::InsideGroup;
        nameGroup(v, getBusGroupInfo(base, dir, groupType, false), groupType, group);
        v.text = tr("address %1 of %2 (%3 %4) lies inside %5 group %6 (%7-%8)")
                         .arg(at)
                         .arg(busKey, type, way, groupType, group)
                         .arg(v.first)
                         .arg(v.last);
        return v;
    }
    return v;
}

EditVerdict BusFileDataManager::canUnmapFunction(const QString &module, const QString &function,
                                                 BiBo dir)
{
    EditVerdict v = canEdit();
    if (!v.allowed())
        return v;
    // Rows of modules or functions no longer declared can be removed too.
    const QString key = moduleKeyOf(module).isEmpty() ? module : moduleKeyOf(module);
    QString name = function;
    for (const FuncAndMapInfo &f : getFuncList(key).value(mapIndex(dir))) {
        if (!f.nameCn.isEmpty() && f.nameCn == function)
            name = f.name;
    }
    for (const FuncAndMapInfo &row : qAsConst(mapList[mapIndex(dir)])) {
        if (row.module == key && row.name == name)
            return v;
    }
    const QString way = dir == BusInput ? tr("input") : tr("output");
    if (moduleKeyOf(module).isEmpty())
        return verdict(EditVerdict::UnknownModule, tr("there is no module %1").arg(module));
    const QVector<FuncAndMapInfo> declared = getFuncList(key).value(mapIndex(dir));
    if (std::none_of(declared.cbegin(), declared.cend(),
                     [&name](const FuncAndMapInfo &f) { return f.name == name; }))
        return verdict(EditVerdict::UnknownFunction,
                       tr("%1 declares no %2 function %3").arg(module, way, function));
    return verdict(EditVerdict::NotMapped,
                   tr("%1 %2 has no %3 mapping").arg(module, function, way));
}

EditVerdict BusFileDataManager::canSetGroup(const QString &bus, BiBo dir, const QString &type,
                                            int number, int first, int last)
{
    EditVerdict v = canEdit();
    if (!v.allowed())
        return v;
    const QString base = bus.toLower();
    const QString way = dir == BusInput ? tr("input") : tr("output");
    if (!shortNames(getBusNameList(false, false)).contains(base))
        return verdict(EditVerdict::UnknownBus, tr("there is no bus %1").arg(base));
    if (!shortNames(getBusNameList(false, true)).contains(base))
        return verdict(EditVerdict::BusOff, tr("bus %1 is switched off").arg(base));
    if (!groupTypes.contains(type.toLower()))
        return verdict(EditVerdict::UnknownType,
                       tr("a group is int, float or string, not '%1'").arg(type));
    v.busSize = getBusNum(fieldbusnames::groupKey(base), dir, type);
    if (number < 0 || number >= v.busSize) {
        v.kind = EditVerdict::OutOfRange;
        v.text = tr("group %1 is beyond the %2 %3 %4 groups of %5 (0-%6)")
                         .arg(number)
                         .arg(v.busSize)
                         .arg(type, way, base)
                         .arg(v.busSize - 1);
        return v;
    }
    if (first > last)
        return verdict(EditVerdict::Backwards,
                       tr("the first address %1 comes after the last %2").arg(first).arg(last));
    v.busSize = getBusNum(base, dir, QStringLiteral("bool"));
    if (first < 0 || last >= v.busSize) {
        v.kind = EditVerdict::OutOfRange;
        v.text = tr("addresses %1-%2 are beyond %3's %4 bool %5 addresses (0-%6)")
                         .arg(first)
                         .arg(last)
                         .arg(base)
                         .arg(v.busSize)
                         .arg(way)
                         .arg(v.busSize - 1);
        return v;
    }
    const QString range = QStringLiteral("%1,%2").arg(first).arg(last);
    const QString inside = isGroupAddrValid(base, dir, range);
    if (inside != okText) {
        v.kind = EditVerdict::HoldsBool;
        if (const FuncAndMapInfo *holder = occupyingRow(mapIndex(dir), base, QStringLiteral("bool"),
                                                        inside.toInt(), QString(), QString())) {
            v.module = holder->module;
            v.function = holder->name;
        }
        v.text = tr("the bool signal %1 %2 at address %3 of %4 lies inside %5-%6")
                         .arg(v.module, v.function, inside, base)
                         .arg(first)
                         .arg(last);
        return v;
    }
    const QString numberText = QString::number(number);
    for (const QString &other : groupTypes) {
        // "table,type": only the edited group itself may keep its range, not a
        // group of the same number in another type's table.
        const QString overlap = isAddressGroupValid(
                base, dir, QStringLiteral("%1,%2").arg(other, type.toLower()), numberText, range,
                false);
        if (overlap == okText)
            continue;
        v.kind = EditVerdict::Overlaps;
        nameGroup(v, getBusGroupInfo(base, dir, other, false), other, overlap);
        v.text = tr("%1-%2 overlaps %3 %4 group %5 of %6 (%7-%8)")
                         .arg(first)
                         .arg(last)
                         .arg(other, way, overlap, base)
                         .arg(v.first)
                         .arg(v.last);
        return v;
    }
    // Group numbers of a direction and type are shared by all buses.
    const QMap<QString, GroupInfo> table = getAllGroupInfo(dir, type);
    const auto holder = table.constFind(numberText);
    if (holder != table.cend() && holder->fieldBus.compare(base, Qt::CaseInsensitive) != 0) {
        v.kind = EditVerdict::GroupNumberTaken;
        v.groupType = type;
        v.group = number;
        v.text = tr("%1 %2 group %3 belongs to %4; group numbers are shared by all buses")
                         .arg(type, way, numberText, holder->fieldBus.toLower());
    }
    return v;
}

EditVerdict BusFileDataManager::canDeleteGroup(const QString &bus, BiBo dir, const QString &type,
                                               int number)
{
    EditVerdict v = canEdit();
    if (!v.allowed())
        return v;
    const QString base = bus.toLower();
    const QString way = dir == BusInput ? tr("input") : tr("output");
    if (!shortNames(getBusNameList(false, false)).contains(base))
        return verdict(EditVerdict::UnknownBus, tr("there is no bus %1").arg(base));
    v.groupType = type;
    v.group = number;
    const QVector<GroupInfo> groups = getBusGroupInfo(base, dir, type, false);
    if (std::none_of(groups.cbegin(), groups.cend(),
                     [number](const GroupInfo &g) { return g.address.toInt() == number; })) {
        v.kind = EditVerdict::NoSuchGroup;
        v.text = tr("there is no %1 %2 group %3 on %4").arg(type, way).arg(number).arg(base);
        return v;
    }
    const QString key = fieldbusnames::groupKey(base);
    for (const FuncAndMapInfo &row : qAsConst(mapList[mapIndex(dir)])) {
        if (row.fieldBus == key && row.address.toInt() == number
            && row.type.compare(type, Qt::CaseInsensitive) == 0) {
            v.kind = EditVerdict::GroupInUse;
            v.module = row.module;
            v.function = row.name;
            v.text = tr("%1 %2 group %3 of %4 is used by %5 %6; unmap it first")
                             .arg(type, way)
                             .arg(number)
                             .arg(base, row.module, row.name);
            return v;
        }
    }
    return v;
}
