#pragma once

#include "FieldbusConfigGlobal.h"

#include <QHash>
#include <QList>
#include <QMap>
#include <QString>
#include <QStringList>
#include <QVector>

#include <cstdint>

// Direction of a bus signal as seen from the controller.
enum BiBo : int { BusInput = 0, BusOutput = 1 };

// Key of a module's digital or analog function lists.
enum InOut : int { FuncInput = 0, FuncOutput = 1 };

// Kind of IO that an import of mapping data touched; IoTypeAll stands for every kind.
enum IoType : int { IoTypeNone = 0, IoTypeFieldbus = 1, IoTypeIo = 2, IoTypeAll = 3 };

// Protocol role; the value is also the bus index and the bit of the performance switch.
enum BusType : int {
    ModbusTcpSlave = 0,
    EtherCatSlave = 1,
    EthernetIpSlave = 2,
    ProfinetSlave = 3,
    EtherCatMaster = 4,
    DeviceNetSlave = 5,
    ModbusTcpMaster = 6,
    EthernetIpMaster = 7,
    ProfinetMaster = 8,
    DeviceNetMaster = 9
};

// What happened to a file when observers are notified.
enum FileHandle : int { FileFetchedAndRead = 0, FileWrittenAndSent = 1 };

// One IO function of a module and where it is mapped on a fieldbus.
struct FuncAndMapInfo
{
    QString module;
    QString nameCn;
    QString name;
    QString type;
    QString fieldBus;
    QString address = QStringLiteral("-1");
    QString invert = QStringLiteral("");
    QString filterTime = QStringLiteral("");
    bool forceEnabled = true;
};
Q_DECLARE_TYPEINFO(FuncAndMapInfo, Q_MOVABLE_TYPE);

// One fieldbus entry of the fieldbus list file.
struct BusName
{
    QString name;
    QString shortName;
    bool enable = false;
};
Q_DECLARE_TYPEINFO(BusName, Q_MOVABLE_TYPE);

// One group-IO entry of the group IO file.
struct GroupInfo
{
    QString type;
    QString address;
    QString fieldBus;
    QString deviceMapHead;
    QString deviceMapTail;
};
Q_DECLARE_TYPEINFO(GroupInfo, Q_MOVABLE_TYPE);

// Address ranges of one bus node of the fieldbus configuration file.
struct BusAddrNumInfo
{
    int32_t startAddress[9] = {};
    int32_t stopAddress[9] = {};
    int32_t variableLength[9] = {};
};
Q_DECLARE_TYPEINFO(BusAddrNumInfo, Q_PRIMITIVE_TYPE);

struct FilePaths
{
    QString tpuFilePath;
    QString rdeFilePath;
};
Q_DECLARE_TYPEINFO(FilePaths, Q_MOVABLE_TYPE);

// Variable-type names of the pendant application; not consulted by this library.
FIELDBUSCONFIG_EXPORT extern const QString VAR_TYPE_NAMES[12];

// Protocol names indexed by BusType, e.g. "ModbusTcp" + translated "Slave".
// Built on first use, after the pendant has installed its translators.
FIELDBUSCONFIG_EXPORT const QStringList &performanceProtocolNames();
