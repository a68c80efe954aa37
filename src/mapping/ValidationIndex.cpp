#include "ValidationIndex.h"

#include "FieldbusNames.h"

#include <algorithm>

namespace validation {

QString foldedKey(const QString &text)
{
    // QString::compare folds a lone code unit, and a low surrogate together
    // with the high one before it, which it compares as it stands.
    QString key;
    key.reserve(text.size() + 2);
    for (int i = 0; i < text.size(); ++i) {
        const QChar unit = text.at(i);
        if (unit.isLowSurrogate() && i > 0 && text.at(i - 1).isHighSurrogate()) {
            const uint folded = QChar::toCaseFolded(QChar::surrogateToUcs4(text.at(i - 1), unit));
            key += QChar(QChar::highSurrogate(folded));
            key += QChar(QChar::lowSurrogate(folded));
        } else {
            key += unit.toCaseFolded();
        }
    }
    return key;
}

int BusSignals::firstBoolRowIn(int first, int last) const
{
    const auto lo = std::lower_bound(boolAddresses.cbegin(), boolAddresses.cend(), first);
    const auto hi = std::upper_bound(lo, boolAddresses.cend(), last);
    const int begin = int(lo - boolAddresses.cbegin());
    const int count = int(hi - lo);
    if (count <= 0)
        return -1;
    int level = 0;
    while ((2 << level) <= count)
        ++level;
    return std::min(firstBool[level][begin], firstBool[level][begin + count - (1 << level)]);
}

namespace {

BusSignals indexBus(const QVector<FuncAndMapInfo> &table, const QVector<int> &positions)
{
    BusSignals bus;
    bus.positions = positions;
    bus.byAddress.reserve(size_t(positions.size()));
    for (const int position : positions)
        bus.byAddress.emplace_back(table.at(position).address.toInt(nullptr, 10), position);
    std::sort(bus.byAddress.begin(), bus.byAddress.end());

    // The first bool row of each address comes first among its address's entries.
    QVector<int> firsts;
    for (const auto &[address, position] : bus.byAddress) {
        if (!fieldbusnames::holdsBool(table.at(position).type)
            || (!bus.boolAddresses.isEmpty() && bus.boolAddresses.constLast() == address))
            continue;
        bus.boolAddresses.append(address);
        firsts.append(position);
    }
    bus.firstBool.append(firsts);
    for (int width = 1; 2 * width <= firsts.size(); width *= 2) {
        const QVector<int> &below = bus.firstBool.constLast();
        QVector<int> level(below.size() - width);
        for (int i = 0; i < level.size(); ++i)
            level[i] = std::min(below.at(i), below.at(i + width));
        bus.firstBool.append(level);
    }
    return bus;
}

} // namespace

void SignalIndex::refresh(const QVector<FuncAndMapInfo> &table)
{
    if (m_table.isSharedWith(table))
        return;
    m_table = table;
    m_buses.clear();
    m_lastAddresses.clear();

    // Positions by bus first: rows of one bus mostly follow each other and
    // share their text, so the bus is folded once per run.
    QHash<QString, QVector<int>> positionsByBus;
    const QString *runBus = nullptr;
    QVector<int> *runPositions = nullptr;
    for (int position = 0; position < m_table.size(); ++position) {
        const QString &fieldBus = m_table.at(position).fieldBus;
        if (!runBus || *runBus != fieldBus) {
            runPositions = &positionsByBus[fieldBus.toCaseFolded()];
            runBus = &fieldBus;
        }
        runPositions->append(position);
    }
    for (auto it = positionsByBus.cbegin(); it != positionsByBus.cend(); ++it)
        m_buses.insert(it.key(), indexBus(m_table, it.value()));
}

const BusSignals *SignalIndex::bus(const QString &bus) const
{
    const auto it = m_buses.constFind(bus.toCaseFolded());
    return it == m_buses.cend() ? nullptr : &it.value();
}

bool SignalIndex::lastAddress(const BusSignals &bus, const QString &name, int *address)
{
    auto made = m_lastAddresses.find(&bus);
    if (made == m_lastAddresses.end()) {
        QHash<QString, int> addresses;
        for (const int position : bus.positions) {
            const FuncAndMapInfo &row = m_table.at(position);
            addresses.insert(row.name, row.address.toInt(nullptr, 10));
        }
        made = m_lastAddresses.insert(&bus, addresses);
    }
    const auto it = made->constFind(name);
    if (it == made->cend())
        return false;
    *address = it.value();
    return true;
}

void GroupIndex::refresh(const QMap<QString, GroupInfo> &table)
{
    if (m_table.isSharedWith(table))
        return;
    m_table = table;
    m_buses.clear();
    for (const GroupInfo &group : table) {
        BusGroups &bus = m_buses[foldedKey(group.fieldBus)];
        bus.groups.append(group);
        bus.numbers.append({group.address.toInt(nullptr, 10),
                            group.deviceMapHead.toInt(nullptr, 10),
                            group.deviceMapTail.toInt(nullptr, 10)});
    }
}

const BusGroups *GroupIndex::bus(const QString &busName) const
{
    const auto it = m_buses.constFind(foldedKey(busName));
    return it == m_buses.cend() ? nullptr : &it.value();
}

} // namespace validation
