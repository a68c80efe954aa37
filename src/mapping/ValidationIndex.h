#pragma once

#include "FieldbusTypes.h"

#include <QHash>
#include <QMap>
#include <QVector>

#include <utility>
#include <vector>

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
    // Table positions of the bus's rows, in table order.
    QVector<int> positions;
    // (address by base-10 toInt, table position) of every row, ascending.
    std::vector<std::pair<int, int>> byAddress;
    // Distinct addresses of the rows whose type holds "bool", ascending, and
    // firstBool[k][i]: the first table position among boolAddresses[i, i + 2^k).
    QVector<int> boolAddresses;
    QVector<QVector<int>> firstBool;

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
    // The address of the last row of `name` on the bus, if it has one.
    bool lastAddress(const BusSignals &bus, const QString &name, int *address);

private:
    QVector<FuncAndMapInfo> m_table;
    QHash<QString, BusSignals> m_buses;
    // Made on first use: only the import's conflict check asks.
    QHash<const BusSignals *, QHash<QString, int>> m_lastAddresses;
};

// The groups of one bus in one group table, in table order, with their
// numbers and bounds as base-10 toInt reads them.
struct BusGroups
{
    struct Numbers
    {
        int number;
        int first;
        int last;
    };
    QVector<GroupInfo> groups;
    QVector<Numbers> numbers;
};

class GroupIndex
{
public:
    void refresh(const QMap<QString, GroupInfo> &table);
    // The groups whose fieldbus equals `busName` ignoring case; null for none.
    const BusGroups *bus(const QString &busName) const;

private:
    QMap<QString, GroupInfo> m_table;
    QHash<QString, BusGroups> m_buses;
};

// Everything the manager's validators look up: the two mapping tables and any
// group table asked for.
struct Indexes
{
    SignalIndex mappings[2];
    QHash<const QMap<QString, GroupInfo> *, GroupIndex> groups;
};

} // namespace validation
