#pragma once

// The parsing steps of the configuration formats, shared by the manager's
// readers and by the configuration snapshot, so that both read a file alike.

#include "FieldbusTypes.h"

#include <pugixml.hpp>

namespace configio {
class LineWords;
class ColumnTexts;
} // namespace configio

namespace fieldbuslist {

struct Contents
{
    // The fixed Modbus TCP slave first, then the file's entries in order.
    QVector<BusName> buses;
    // Short names that group signals: "mtcp", then every entry that may carry signals.
    QStringList shortNames;
    bool hasFreeBus = false;
    bool freeBusOpen = false;
};

Contents parse(const pugi::xml_document &doc);

// The buses a screen is offered: never "FinsTcp", "ProfibusSlave" or
// "FreeBus", "Mes" only on request, and only switched-on ones on request.
QVector<BusName> filter(const QVector<BusName> &buses, bool withMes, bool onlyEnabled);

} // namespace fieldbuslist

namespace fieldbusareas {

// Reads the fifteen area records of "FieldBus_Config" into `areas`, keyed by
// element name; records the file lacks keep their values.
void parse(const pugi::xml_document &doc, QHash<QString, BusAddrNumInfo> &areas);

// How many addresses a bus offers for a direction and type.
int busNum(const QHash<QString, BusAddrNumInfo> &areas, const QString &bus, BiBo dir,
           const QString &type);

} // namespace fieldbusareas

namespace signalmapfile {

// One row of the signal mapping file; missing values are "0", the bus is lower case.
FuncAndMapInfo parseRow(const configio::LineWords &words, configio::ColumnTexts &texts);

} // namespace signalmapfile

namespace groupfile {

// One row of the group file; missing values are "0".
GroupInfo parseRow(const configio::LineWords &words, configio::ColumnTexts &texts);

// 0 int, 1 float, 2 string (any case); -1 for any other type.
int typeIndex(const QString &type);

// The table a type read from the file goes to: what is neither int nor float is text.
inline int readTypeIndex(const QString &type)
{
    const int index = typeIndex(type);
    return index < 0 ? 2 : index;
}

} // namespace groupfile

namespace userdescriptions {

// "name[index]" -> text of every variable of "BioUserDescription"; the first
// occurrence of a key wins and an index of -1 is skipped.
QHash<QString, QString> parse(const pugi::xml_document &doc);

} // namespace userdescriptions

namespace slavedevice {

pugi::xml_node endianNode(const pugi::xml_document &doc);

} // namespace slavedevice
