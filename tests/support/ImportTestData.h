#pragma once

// Shared by the import and backup tests (compiled without access control).

#include "BusFileDataManager.h"

#include <QRegularExpression>
#include <QStringList>

// Mapping rows in a compact text form: "name:type:address", with an optional
// "@bus" (default mtcp) and "#module" (default gripper), several rows separated
// by blanks, e.g. "Open:bool:9 Level:int:3@eip#conveyor".
inline FuncAndMapInfo mappingRow(const QString &text)
{
    static const QRegularExpression form(
            QStringLiteral("^([^:]*):([^:]*):([^@#]*)(?:@([^#]*))?(?:#(.*))?$"));
    const QRegularExpressionMatch match = form.match(text);
    FuncAndMapInfo row;
    row.name = match.captured(1);
    row.type = match.captured(2);
    row.address = match.captured(3);
    row.fieldBus = match.captured(4).isEmpty() ? QStringLiteral("mtcp") : match.captured(4);
    row.module = match.captured(5).isEmpty() ? QStringLiteral("gripper") : match.captured(5);
    row.filterTime = QStringLiteral("0");
    row.invert = QStringLiteral("0");
    return row;
}

inline QVector<FuncAndMapInfo> mappingRows(const QString &text)
{
    QVector<FuncAndMapInfo> rows;
    for (const QString &part : text.split(QLatin1Char(' '), Qt::SkipEmptyParts))
        rows.append(mappingRow(part));
    return rows;
}

inline QString describeRow(const FuncAndMapInfo &row)
{
    QString text = row.name + QLatin1Char(':') + row.type + QLatin1Char(':') + row.address;
    if (row.fieldBus != QLatin1String("mtcp"))
        text += QLatin1Char('@') + row.fieldBus;
    if (row.module != QLatin1String("gripper"))
        text += QLatin1Char('#') + row.module;
    return text;
}

template<typename Rows>
QString describeRows(const Rows &rows)
{
    QStringList parts;
    for (const FuncAndMapInfo &row : rows)
        parts.append(describeRow(row));
    return parts.join(QLatin1Char(' '));
}

// Every field of every row, for comparisons that must see whole records.
template<typename Rows>
QString fullRows(const Rows &rows)
{
    QStringList lines;
    for (const FuncAndMapInfo &row : rows) {
        lines.append(QStringList{row.module, row.nameCn, row.name, row.type, row.fieldBus,
                                 row.address, row.invert, row.filterTime,
                                 row.forceEnabled ? "1" : "0"}
                             .join(QLatin1Char('|')));
    }
    return lines.join(QLatin1Char('\n'));
}

inline void setSizes(BusAddrNumInfo &info, std::initializer_list<int> sizes)
{
    int i = 0;
    for (int size : sizes)
        info.variableLength[i++] = size;
}

inline GroupInfo group(const QString &type, const QString &number, const QString &bus,
                       const QString &head, const QString &tail)
{
    return GroupInfo{type, number, bus, head, tail};
}

// The controller these tests import into: Modbus TCP and EtherNet/IP on,
// EtherCAT off; sizes differ per direction; groups on both buses.
inline void configureController(BusFileDataManager *manager)
{
    manager->busList = {{"ModbusTcpSlave", "mtcp", true},
                        {"EtherCatSlave", "ethcat", false},
                        {"EthernetIpSlave", "eip", true},
                        {"FreeBus", "free", true}};
    manager->busShortNames = QStringList{"mtcp", "ethcat", "eip"};
    // Places: bool in/out, int in/out, other types in/out, three per type.
    setSizes(manager->busAddrNumInfo["ModbusUser"], {64, 32, 0, 16, 12, 0, 8, 8, 0});
    setSizes(manager->busAddrNumInfo["EthernetIPUser"], {32, 32, 0, 8, 8, 0, 4, 4, 0});
    setSizes(manager->busAddrNumInfo["EthercatUser"], {32, 32, 0, 8, 8, 0, 4, 4, 0});
    manager->curGroupTables[BusInput][0].insert("1", group("int", "1", "mtcp", "16", "31"));
    manager->curGroupTables[BusInput][1].insert("2", group("float", "2", "mtcp", "40", "47"));
    manager->curGroupTables[BusInput][2].insert("3", group("string", "3", "eip", "0", "7"));
    manager->curGroupTables[BusOutput][0].insert("4", group("int", "4", "mtcp", "8", "15"));
    manager->updateGroupData(true);
}
