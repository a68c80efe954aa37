#pragma once

// Names and numbers the formats and rules share.

#include <QString>

namespace fieldbusnames {

// Signals mapped into a group of a bus are keyed "group_" + the bus short name.
inline const QString groupPrefix = QStringLiteral("group_");

inline QString groupKey(const QString &bus)
{
    return groupPrefix + bus;
}

// The type of a single-bit signal, as the formats and the import test it.
inline bool isBoolType(const QString &type)
{
    return type.compare(QLatin1String("bool"), Qt::CaseInsensitive) == 0;
}

// The looser test of the validators: any type text holding "bool".
inline bool holdsBool(const QString &type)
{
    return type.contains(QLatin1String("bool"), Qt::CaseInsensitive);
}

// Language ids of the pendant; every other id reads the Chinese files too.
constexpr int englishLanguageId = 2;
constexpr int chineseLanguageId = 3;

} // namespace fieldbusnames
