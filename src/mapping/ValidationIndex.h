#pragma once

#include "FieldbusTypes.h"

#include <QHash>
#include <QMap>
#include <QVector>

// Lookups the validators answer from, so that a call costs microseconds however
// large the tables are. Each index keeps a shallow copy of the table it was
// built from: any change to the table detaches the table from that copy (Qt's
// copy-on-write), which is how a stale index is noticed and rebuilt on the next
// call. The answers are those of walking the table in order.
namespace validation {

// The key under which QString::compare(..., Qt::CaseInsensitive) finds two
// texts equal: each code point folded on its own.
QString foldedKey(const QString &text);

// The signals of one bus in one mapping table.
struct BusSignals
{
    // Table positions by address (base-10 toInt), in table order.
    QHash<int, QVector<int>> rowsAt;
    // Distinct addresses of the rows whose type holds "bool", ascending, and
    // firstBool[k][i]: the first table position among boolAddresses[i, i + 2^k).
    QVector<int> boolAddresses;
    QVector<QVector<int>> firstBool;
    // Address (toInt) of each function name's last row.
    QHash<QString, int> lastAddressByName;

    // First table position of a bool row with first <= address <= last; -1 if none.
    int firstBoolRowIn(int first, int last) const;
};

class SignalIndex
{
public:
    void refresh(const QVector<FuncAndMapInfo> &table);
    // The signals whose fieldbus text equals `bus` when case-folded; null for none.
    const BusSignals *bus(const QString &bus) const;
    const FuncAndMapInfo &row(int position) const { return m_table.at(position); }

private:
    QVector<FuncAndMapInfo> m_table;
    QHash<QString, BusSignals> m_buses;
};

class GroupIndex
{
public:
    void refresh(const QMap<QString, GroupInfo> &table);
    // The groups whose fieldbus equals `busName` ignoring case, in table order.
    QVector<GroupInfo> bus(const QString &busName) const;

private:
    QMap<QString, GroupInfo> m_table;
    QHash<QString, QVector<GroupInfo>> m_buses;
};

// Everything the manager's validators look up: the two mapping tables and any
// group table asked for.
struct Indexes
{
    SignalIndex mappings[2];
    QHash<const QMap<QString, GroupInfo> *, GroupIndex> groups;
};

} // namespace validation
