#pragma once

#include "FieldbusConfigGlobal.h"

#include <QHash>
#include <QList>
#include <QMap>
#include <QString>
#include <QStringList>
#include <QVector>

#include <cstdint>

/// @file
/// The records and enumerations the manager, its files and its screens share.
/// Plain values: a record may be copied and read from any thread.

/// Direction of a bus signal as seen from the controller; also the index of
/// the input and output tables.
enum BiBo : int {
    BusInput = 0, ///< A signal into the controller.
    BusOutput = 1 ///< A signal out of the controller.
};

/// Key of a module's digital or analog function lists.
enum InOut : int {
    FuncInput = 0, ///< The input functions.
    FuncOutput = 1 ///< The output functions.
};

/// Kind of IO that an import of mapping data touched; IoTypeAll stands for every kind.
enum IoType : int {
    IoTypeNone = 0, ///< Nothing imported.
    IoTypeFieldbus = 1, ///< The fieldbus mapping.
    IoTypeIo = 2, ///< The IO mapping.
    IoTypeAll = 3 ///< Every kind.
};

/// Protocol role; the value is also the bus index and the bit of the performance switch.
enum BusType : int {
    ModbusTcpSlave = 0, ///< "mtcp"
    EtherCatSlave = 1, ///< "ethcat"
    EthernetIpSlave = 2, ///< "eip"
    ProfinetSlave = 3, ///< "pfn"
    EtherCatMaster = 4, ///< "ecm"
    DeviceNetSlave = 5, ///< "dns"
    ModbusTcpMaster = 6, ///< "mbc"
    EthernetIpMaster = 7, ///< "eim"
    ProfinetMaster = 8, ///< "pnm"
    DeviceNetMaster = 9 ///< "dnm"
};

/// What happened to a file when observers are notified.
enum FileHandle : int {
    FileFetchedAndRead = 0, ///< Fetched from the controller (or its earlier copy) and read.
    FileWrittenAndSent = 1 ///< Written locally and sent to the controller.
};

/// One IO function of a module and where it is mapped on a fieldbus.
struct FuncAndMapInfo
{
    /// The module's key, e.g. "Common".
    QString module;
    /// The function's Chinese name; only function lists give one.
    QString nameCn;
    /// The function's name, e.g. "ext_start".
    QString name;
    /// Signal type: "bool", "int", "float", ...
    QString type;
    /// Bus key: the bus short name, or "group_" + it for a signal mapped into
    /// a group. The mapping reader lowers it.
    QString fieldBus;
    /// Address in the bus's area for the type and direction, the group number
    /// for a group signal, "-1" when not mapped. A text, never checked to be a number.
    QString address = QStringLiteral("-1");
    /// "0" or "1" for bool signals; empty where the row gives none.
    QString invert = QStringLiteral("");
    /// Filter time in milliseconds, for bool inputs; empty where the row gives none.
    QString filterTime = QStringLiteral("");
    /// The function list's ForceEnabled switch of a digital function (its
    /// section's overrides its own); true where neither gives one.
    bool forceEnabled = true;
};
/// @cond
Q_DECLARE_TYPEINFO(FuncAndMapInfo, Q_MOVABLE_TYPE);
/// @endcond

/// One fieldbus entry of the fieldbus list file.
struct BusName
{
    /// The entry's name, e.g. "ModbusTcpSlave", "FreeBus".
    QString name;
    /// The entry's short name in lower case, e.g. "mtcp".
    QString shortName;
    /// Whether the bus is switched on: a text starting with 1, t, T, y or Y.
    bool enable = false;
};
/// @cond
Q_DECLARE_TYPEINFO(BusName, Q_MOVABLE_TYPE);
/// @endcond

/// One group-IO entry of the group IO file.
struct GroupInfo
{
    /// Group type: "int", "float" or "string" (any other text reads as string).
    QString type;
    /// The group number, as text.
    QString address;
    /// Bus short name as the file gives it (the file writes it in upper case).
    QString fieldBus;
    /// First bool address of the bus the group covers (the device map's first part).
    QString deviceMapHead;
    /// Last bool address the group covers, bound included.
    QString deviceMapTail;
};
/// @cond
Q_DECLARE_TYPEINFO(GroupInfo, Q_MOVABLE_TYPE);
/// @endcond

/// Address ranges of one bus node of the fieldbus configuration file.
/// Place type times stride plus direction holds the count for type bool (0),
/// int (1) or any other (2) and direction input (0) or output (1); the stride
/// is 3, or 2 for the Modbus TCP master. Master bit totals use places 0 and 1
/// of variableLength only.
struct BusAddrNumInfo
{
    int32_t startAddress[9] = {}; ///< First address of each place's area.
    int32_t stopAddress[9] = {}; ///< Last address of each place's area.
    int32_t variableLength[9] = {}; ///< How many addresses each place offers.
};
/// @cond
Q_DECLARE_TYPEINFO(BusAddrNumInfo, Q_PRIMITIVE_TYPE);
/// @endcond

/// Where a file lies on the pendant and on the controller.
struct FilePaths
{
    QString tpuFilePath; ///< Local path on the pendant.
    QString rdeFilePath; ///< Path on the controller.
};
/// @cond
Q_DECLARE_TYPEINFO(FilePaths, Q_MOVABLE_TYPE);
/// @endcond

/// Variable-type names of the pendant application; not consulted by this library.
FIELDBUSCONFIG_EXPORT extern const QString VAR_TYPE_NAMES[12];

/// Protocol names indexed by BusType, e.g. "ModbusTcp" + translated "Slave".
/// Built on first use, after the pendant has installed its translators: the
/// first call fixes the language. Any thread may call it.
FIELDBUSCONFIG_EXPORT const QStringList &performanceProtocolNames();
