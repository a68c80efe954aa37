#pragma once

// The words the configuration files, the library, its tools and screens
// share: one definition each, so that none of them spells its own.

#include <QString>
#include <QStringList>

namespace fieldbusnames {

// Signals mapped into a group of a bus are keyed "group_" + the bus short name.
inline const QString groupPrefix = QStringLiteral("group_");

inline QString groupKey(const QString &bus)
{
    return groupPrefix + bus;
}

// Whether a mapping row's bus key is that of a group ("group_mtcp").
inline bool isGroupKey(const QString &key)
{
    return key.startsWith(groupPrefix);
}

// The bus of a key: "mtcp" for "group_mtcp" and for "mtcp".
inline QString busOfKey(const QString &key)
{
    return isGroupKey(key) ? key.mid(groupPrefix.size()) : key;
}

// The looser test the pendant's validators, area counts and import apply to a
// bus name: "group" anywhere in it.
inline bool mentionsGroup(const QString &name, Qt::CaseSensitivity cs)
{
    return name.contains(QLatin1String("group"), cs);
}

// The section markers of the two line files.
inline const QString systemInputMarker = QStringLiteral("#System_Input:");
inline const QString systemOutputMarker = QStringLiteral("#System_Output:");
inline const QString groupInputMarker = QStringLiteral("#Group_Input:");
inline const QString groupOutputMarker = QStringLiteral("#Group_Output:");

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

// The buses the controller's signals travel on, in the controller's order:
// the index is the BusType value and the bit of the communication-performance
// switch. `protocol` with "Slave" or "Master" names it in the switch's
// question; `chineseName` is how the Chinese screens show it.
struct BusKind
{
    const char *shortName;
    const char *protocol;
    bool master;
    const char *chineseName;
};
inline const BusKind busKinds[] = {
        {"mtcp", "ModbusTcp", false, "mtcp从站"}, {"ethcat", "EtherCat", false, "ethcat从站"},
        {"eip", "EthernetIP", false, "eip从站"},  {"pfn", "Profinet", false, "pfn从站"},
        {"ecm", "EtherCat", true, "ethcat主站"},  {"dns", "DeviceNet", false, "dn从站"},
        {"mbc", "ModbusTcp", true, "mtcp主站"},   {"eim", "EthernetIP", true, "eip主站"},
        {"pnm", "Profinet", true, "pfn主站"},     {"dnm", "DeviceNet", true, "dn主站"},
};

// The short names of busKinds, in their order.
inline QStringList busKindNames()
{
    QStringList names;
    for (const BusKind &kind : busKinds)
        names.append(QLatin1String(kind.shortName));
    return names;
}

// Language ids of the pendant; every other id reads the Chinese files too.
constexpr int englishLanguageId = 2;
constexpr int chineseLanguageId = 3;

} // namespace fieldbusnames

// The pendant's message-box kinds and button sets (the `type` and `buttons`
// of a MsgBox).
enum MessageKind : int { InfoMessage = 0, WarningMessage = 1, ErrorMessage = 2 };
enum MessageButtons : int { OkButton = 1, YesNoButtons = 3 };
