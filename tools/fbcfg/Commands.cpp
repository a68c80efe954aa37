#include "Commands.h"

#include "Output.h"
#include <fieldbusconfig/BusFileDataManager.h>

int usageError(const Call &call, const QString &what)
{
    Output::error(Fbcfg::tr("%1; see fbcfg %2 --help").arg(what, call.name));
    return ExitFailure;
}

int refuse(const QString &why)
{
    Output::error(Fbcfg::tr("refused: %1").arg(why));
    return ExitRefused;
}

int readDirections(const Call &call, bool required, QVector<BiBo> &directions)
{
    directions.clear();
    if (!call.isSet(QStringLiteral("dir"))) {
        if (required)
            return usageError(call, Fbcfg::tr("--dir in|out is required"));
        directions = {BusInput, BusOutput};
        return ExitOk;
    }
    const QString value = call.value(QStringLiteral("dir"));
    if (value == QLatin1String("in"))
        directions = {BusInput};
    else if (value == QLatin1String("out"))
        directions = {BusOutput};
    else
        return usageError(call, Fbcfg::tr("--dir must be in or out, not '%1'").arg(value));
    return ExitOk;
}

int readDirection(const Call &call, BiBo &direction)
{
    QVector<BiBo> directions;
    const int rc = readDirections(call, true, directions);
    if (rc == ExitOk)
        direction = directions.constFirst();
    return rc;
}

bool readInt(const QString &text, int *value)
{
    bool ok = false;
    *value = text.toInt(&ok, 10);
    return ok && !text.trimmed().isEmpty() && text.trimmed() == text;
}

QString directionKey(BiBo dir)
{
    return dir == BusInput ? QStringLiteral("in") : QStringLiteral("out");
}

QString directionWord(BiBo dir)
{
    return dir == BusInput ? Fbcfg::tr("input") : Fbcfg::tr("output");
}

int editAllowed(BusFileDataManager *manager)
{
    // Evaluated in the pendant's order; the first that fails has shown why.
    if (BusFileDataManager::isEditable() && manager->isHasRteAuthority()
        && BusFileDataManager::isRebootRde() && BusFileDataManager::isMapFuncEdit(IoTypeFieldbus))
        return ExitOk;
    return refuse(Fbcfg::tr("the pendant does not allow editing now (see the warning above)"));
}

QStringList signalBuses(BusFileDataManager *manager)
{
    QStringList names;
    for (const BusName &bus : manager->getBusNameList(false, true)) {
        if (!names.contains(bus.shortName))
            names.append(bus.shortName);
    }
    return names;
}

QString RepeatFinder::repeat(BiBo dir, const FuncAndMapInfo &row, int line)
{
    const QChar gap = QLatin1Char('\n');
    const QString function =
            QString::number(dir) + gap + row.module + gap + row.name.toCaseFolded();
    const QString place = QString::number(dir) + gap + row.fieldBus.toCaseFolded() + gap
            + row.type.toCaseFolded() + gap + row.address.toCaseFolded();
    const int functionLine = m_functions.value(function);
    if (functionLine)
        return Fbcfg::tr("%1 %2 is mapped as %3 already on line %4")
                .arg(row.module, row.name, directionWord(dir))
                .arg(functionLine);
    // "-1" is no place: every function not mapped has it.
    const bool mapped = row.address.trimmed() != QLatin1String("-1");
    const int placeLine = mapped ? m_places.value(place) : 0;
    if (placeLine)
        return Fbcfg::tr("%1 %2 address %3 is taken already on line %4")
                .arg(row.fieldBus, directionWord(dir), row.address)
                .arg(placeLine);
    m_functions.insert(function, line);
    if (mapped)
        m_places.insert(place, line);
    return QString();
}

int checkBusFilter(BusFileDataManager *manager, const Call &call)
{
    const QString wanted = call.value(QStringLiteral("bus"));
    if (wanted.isEmpty())
        return ExitOk;
    // The shown list adds the Modbus TCP slave, which the file need not list.
    const QVector<BusName> buses =
            manager->getBusNameList(true, false) + manager->getAllBusName().values().toVector();
    QStringList known;
    for (const BusName &bus : buses) {
        if (bus.shortName.compare(wanted, Qt::CaseInsensitive) == 0)
            return ExitOk;
        if (!known.contains(bus.shortName))
            known.append(bus.shortName);
    }
    return usageError(call,
                      Fbcfg::tr("there is no bus %1; the buses are %2")
                              .arg(wanted, known.join(QStringLiteral(", "))));
}

QString moduleKey(BusFileDataManager *manager, const QString &name)
{
    if (name.isEmpty())
        return QString();
    if (manager->isExistModule(name))
        return name;
    return manager->getModuleNameEnCn(name, false);
}

QString functionDisplay(BusFileDataManager *manager, const QString &module, const QString &name)
{
    if (manager->getLanguageType() != 3)
        return name;
    QString chinese = manager->getFuncNameCn(module, name);
    chinese.chop(1); // the trailing "," that joins lists of names
    return chinese.isEmpty() ? name : chinese;
}
