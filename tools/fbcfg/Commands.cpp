#include "Commands.h"

#include "Output.h"
#include <fieldbusconfig/BusFileDataManager.h>

#include <algorithm>

int usageError(const Call &call, const QString &what)
{
    Output::error(Fbcfg::tr("%1; see fbcfg %2 --help").arg(what, call.name));
    return ExitFailure;
}

namespace {

// Edits that turn one text into the other (a swap of neighbours is one),
// letters compared without case.
int editDistance(const QString &a, const QString &b)
{
    const QString x = a.toCaseFolded();
    const QString y = b.toCaseFolded();
    QVector<QVector<int>> d(x.size() + 1, QVector<int>(y.size() + 1));
    for (int i = 0; i <= x.size(); ++i)
        d[i][0] = i;
    for (int j = 0; j <= y.size(); ++j)
        d[0][j] = j;
    for (int i = 1; i <= x.size(); ++i) {
        for (int j = 1; j <= y.size(); ++j) {
            const int cost = x.at(i - 1) == y.at(j - 1) ? 0 : 1;
            d[i][j] = qMin(qMin(d[i - 1][j] + 1, d[i][j - 1] + 1), d[i - 1][j - 1] + cost);
            if (i > 1 && j > 1 && x.at(i - 1) == y.at(j - 2) && x.at(i - 2) == y.at(j - 1))
                d[i][j] = qMin(d[i][j], d[i - 2][j - 2] + 1);
        }
    }
    return d[x.size()][y.size()];
}

} // namespace

QString closest(const QString &name, const QStringList &known)
{
    // Close: a slip of a letter or two, never a third of the name.
    QString found;
    int best = qMax(1, name.size() / 3) + 1;
    for (const QString &candidate : known) {
        const int distance = editDistance(name, candidate);
        if (distance < best) {
            best = distance;
            found = candidate;
        }
    }
    return found;
}

QString missingName(const QString &missing, const QString &name, const QStringList &known)
{
    const QString close = closest(name, known);
    return close.isEmpty() ? missing : missing + Fbcfg::tr("; did you mean %1?").arg(close);
}

int unknownName(const Call &call, const QString &missing, const QString &name,
                const QStringList &known)
{
    return usageError(
            call,
            Fbcfg::tr("%1 (known: %2)")
                    .arg(missingName(missing, name, known), known.join(QStringLiteral(", "))));
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

QString rowCount(int count)
{
    return count == 1 ? Fbcfg::tr("1 row") : Fbcfg::tr("%1 rows").arg(count);
}

void insertPresent(QJsonObject &record, const JsonFields &fields)
{
    for (const auto &value : fields.positive) {
        if (value.second > 0)
            record.insert(QLatin1String(value.first), value.second);
    }
    if (fields.direction == BusInput || fields.direction == BusOutput)
        record.insert(QStringLiteral("direction"), directionKey(BiBo(fields.direction)));
    for (const auto &text : fields.texts) {
        if (!text.second.isEmpty())
            record.insert(QLatin1String(text.first), text.second);
    }
    for (const auto &number : fields.numbers) {
        if (!number.second.isEmpty())
            record.insert(QLatin1String(number.first), Output::numberOrText(number.second));
    }
}

QString directionKey(BiBo dir)
{
    return dir == BusInput ? QStringLiteral("in") : QStringLiteral("out");
}

QString directionWord(BiBo dir)
{
    return dir == BusInput ? Fbcfg::tr("input") : Fbcfg::tr("output");
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

int checkSignalBus(const Call &call, BusFileDataManager *manager, const QString &bus)
{
    if (signalBuses(manager).contains(bus))
        return ExitOk;
    QStringList offered;
    for (const BusName &b : manager->getBusNameList(false, false))
        offered.append(b.shortName);
    // fieldbus.xml lists buses (fins, free, ...) that carry no mapped signals.
    const QMap<QString, BusName> all = manager->getAllBusName();
    const bool listed = std::any_of(all.cbegin(), all.cend(),
                                    [&bus](const BusName &b) { return b.shortName == bus; });
    if (listed && !offered.contains(bus))
        return usageError(call,
                          Fbcfg::tr("bus %1 carries no mapped signals; the buses that do are %2")
                                  .arg(bus, offered.join(QStringLiteral(", "))));
    if (!offered.contains(bus))
        return unknownName(call, Fbcfg::tr("no bus %1").arg(bus), bus, offered);
    return refuse(Fbcfg::tr("bus %1 is switched off").arg(bus));
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

bool showsChinese(BusFileDataManager *manager)
{
    return manager->getLanguageType() == fieldbusnames::chineseLanguageId;
}
