#pragma once

/// @file
/// The words the configuration files, the library, its tools and screens
/// share: one definition each, so that none of them spells its own. Constants
/// and pure functions: any thread may use them.

#include <QString>
#include <QStringList>

/// Names shared by the configuration files, the library, its tools and screens.
namespace fieldbusnames {

/// Signals mapped into a group of a bus are keyed "group_" + the bus short name.
inline const QString groupPrefix = QStringLiteral("group_");

/// The group key of a bus: "group_mtcp" for "mtcp".
inline QString groupKey(const QString &bus)
{
    return groupPrefix + bus;
}

/// Whether a mapping row's bus key is that of a group ("group_mtcp"); case matters.
inline bool isGroupKey(const QString &key)
{
    return key.startsWith(groupPrefix);
}

/// The bus of a key: "mtcp" for "group_mtcp" and for "mtcp".
inline QString busOfKey(const QString &key)
{
    return isGroupKey(key) ? key.mid(groupPrefix.size()) : key;
}

/// The looser test the pendant's validators, area counts and import apply to a
/// bus name: "group" anywhere in it.
inline bool mentionsGroup(const QString &name, Qt::CaseSensitivity cs)
{
    return name.contains(QLatin1String("group"), cs);
}

// The section markers of the two line files.
/// Marker of the input section of the signal mapping file.
inline const QString systemInputMarker = QStringLiteral("#System_Input:");
/// Marker of the output section of the signal mapping file.
inline const QString systemOutputMarker = QStringLiteral("#System_Output:");
/// Marker of the input section of the group IO file.
inline const QString groupInputMarker = QStringLiteral("#Group_Input:");
/// Marker of the output section of the group IO file.
inline const QString groupOutputMarker = QStringLiteral("#Group_Output:");

/// The type of a single-bit signal, as the formats and the import test it:
/// "bool" in any case.
inline bool isBoolType(const QString &type)
{
    return type.compare(QLatin1String("bool"), Qt::CaseInsensitive) == 0;
}

/// The looser test of the validators: any type text holding "bool", in any case.
inline bool holdsBool(const QString &type)
{
    return type.contains(QLatin1String("bool"), Qt::CaseInsensitive);
}

/// One bus the controller's signals travel on, as busKinds lists it.
struct BusKind
{
    const char *shortName; ///< Short name as the files key the bus, e.g. "mtcp".
    /// Protocol name; with "Slave" or "Master" it names the bus in the
    /// communication-performance switch's question.
    const char *protocol;
    bool master; ///< Whether the controller is the master on this bus.
    const char *chineseName; ///< How the Chinese screens show the bus (UTF-8).
};
/// The buses the controller's signals travel on, in the controller's order:
/// the index is the BusType value and the bit of the communication-performance
/// switch.
inline const BusKind busKinds[] = {
        {"mtcp", "ModbusTcp", false, "mtcp从站"}, {"ethcat", "EtherCat", false, "ethcat从站"},
        {"eip", "EthernetIP", false, "eip从站"},  {"pfn", "Profinet", false, "pfn从站"},
        {"ecm", "EtherCat", true, "ethcat主站"},  {"dns", "DeviceNet", false, "dn从站"},
        {"mbc", "ModbusTcp", true, "mtcp主站"},   {"eim", "EthernetIP", true, "eip主站"},
        {"pnm", "Profinet", true, "pfn主站"},     {"dnm", "DeviceNet", true, "dn主站"},
};

/// The short names of busKinds, in their order.
inline QStringList busKindNames()
{
    QStringList names;
    for (const BusKind &kind : busKinds)
        names.append(QLatin1String(kind.shortName));
    return names;
}

// Language ids of the pendant; every other id reads the Chinese files too.
/// Language id of an English pendant.
constexpr int englishLanguageId = 2;
/// Language id of a Chinese pendant; the library then installs its Chinese translation.
constexpr int chineseLanguageId = 3;

} // namespace fieldbusnames

/// The pendant's message-box kinds (the `type` of a MsgBox).
enum MessageKind : int {
    InfoMessage = 0, ///< Information.
    WarningMessage = 1, ///< Warning.
    ErrorMessage = 2 ///< Error.
};
/// The pendant's message-box button sets (the `buttons` of a MsgBox).
enum MessageButtons : int {
    OkButton = 1, ///< One OK button.
    YesNoButtons = 3 ///< Yes and No: MsgBox::Yes, MsgBox::No, or MsgBox::Closed.
};
