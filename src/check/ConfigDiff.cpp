#include "ConfigDiff.h"

#include "FieldbusPaths.h"

#include <QHash>
#include <QSet>

#include <algorithm>
#include <functional>

namespace {

QString fileName(const QString &rdeFilePath)
{
    return rdeFilePath.mid(1);
}

QString directionWord(int dir)
{
    return dir == BusInput ? ConfigDiff::tr("input") : ConfigDiff::tr("output");
}

bool isMapped(const SnapshotMapping &m)
{
    return m.row.address.trimmed() != QLatin1String("-1");
}

// Whether a file could not be read on one side, and why.
bool unreadable(const ConfigSnapshot &s, const QString &rdeFilePath,
                SnapshotFileProblem::Kind &kind)
{
    for (const SnapshotFileProblem &p : s.problems) {
        if (p.file == rdeFilePath
            && (p.kind == SnapshotFileProblem::Missing || p.kind == SnapshotFileProblem::Unparsable
                || p.kind == SnapshotFileProblem::Unreadable
                || p.kind == SnapshotFileProblem::Empty)) {
            kind = p.kind;
            return true;
        }
    }
    return false;
}

// Pairs the items of two sides that share a key, in rounds: the first rounds
// pair items that also share their `rounds` detail (equal items, then items
// near each other), a round whose detail is empty pairs the rest in order.
// Each round reports its pairs; what stays unpaired was removed or added.
// Every round is one pass over each side, however many items share a key.
template<typename Item, typename Key>
struct Pairing
{
    std::function<Key(const Item &)> key;
    std::vector<std::function<QString(const Item &)>> rounds;

    // pair(round, a, b); unpaired(isBefore, item)
    void run(const QVector<const Item *> &a, const QVector<const Item *> &b,
             const std::function<void(size_t, const Item &, const Item &)> &pair,
             const std::function<void(bool, const Item &)> &unpaired) const
    {
        using RoundKey = QPair<Key, QString>;
        // The unpaired items of b that share a round key, in order, and how
        // many of them this round has paired already.
        struct Open
        {
            int used = 0;
            QVector<int> items;
        };
        std::vector<bool> pairedA(size_t(a.size()), false);
        std::vector<bool> takenB(size_t(b.size()), false);
        for (size_t round = 0; round < rounds.size(); ++round) {
            const auto roundKey = [&](const Item &item) {
                return RoundKey(key(item), rounds[round](item));
            };
            QHash<RoundKey, Open> open;
            for (int j = 0; j < b.size(); ++j) {
                if (!takenB[size_t(j)])
                    open[roundKey(*b.at(j))].items.append(j);
            }
            for (int i = 0; i < a.size(); ++i) {
                if (pairedA[size_t(i)])
                    continue;
                const auto found = open.find(roundKey(*a.at(i)));
                if (found == open.end() || found->used == found->items.size())
                    continue;
                const int j = found->items.at(found->used++);
                pairedA[size_t(i)] = true;
                takenB[size_t(j)] = true;
                pair(round, *a.at(i), *b.at(j));
            }
        }
        for (int i = 0; i < a.size(); ++i) {
            if (!pairedA[size_t(i)])
                unpaired(true, *a.at(i));
        }
        for (int j = 0; j < b.size(); ++j) {
            if (!takenB[size_t(j)])
                unpaired(false, *b.at(j));
        }
    }
};

template<typename T>
QVector<const T *> pointers(const QVector<T> &items, const std::function<bool(const T &)> &keep)
{
    QVector<const T *> out;
    for (const T &item : items) {
        if (keep(item))
            out.append(&item);
    }
    return out;
}

class Differ
{
public:
    Differ(const ConfigSnapshot &before, const ConfigSnapshot &after)
        : a(before)
        , b(after)
    { }

    QVector<ConfigChange> run()
    {
        if (comparable(RDE_FIELDBUS_XML))
            buses();
        if (comparable(RDE_FIELDBUS_CFG_XML))
            areas();
        if (comparable(RDE_SIGNAL_MAP_CFG))
            mappings();
        if (comparable(RDE_GROUP_CFG))
            groups();
        if (comparable(RDE_USER_DES_XML))
            descriptions();
        if (comparable(RDE_FBSLAVE_CFGX))
            endian();
        std::stable_sort(changes.begin(), changes.end(),
                         [](const ConfigChange &x, const ConfigChange &y) {
                             if (x.file != y.file)
                                 return x.file < y.file;
                             const int lx = x.lineAfter ? x.lineAfter : x.lineBefore;
                             const int ly = y.lineAfter ? y.lineAfter : y.lineBefore;
                             return lx < ly;
                         });
        return changes;
    }

private:
    ConfigChange &add(const QString &rdeFilePath, const char *kind, QChar sign,
                      const QString &subject, const QString &before, const QString &after)
    {
        ConfigChange c;
        c.file = fileName(rdeFilePath);
        c.kind = QLatin1String(kind);
        c.sign = sign;
        c.subject = subject;
        c.before = before;
        c.after = after;
        changes.append(c);
        return changes.last();
    }

    // The change kinds of a paired record: `changed[r - 1]` for a pair of round
    // r (round 0 pairs equal records, which is no change).
    struct PairKinds
    {
        std::vector<const char *> changed;
        const char *removed;
        const char *added;
    };

    // Reports the records of one file, paired by `pairing`, as changes.
    template<typename Item, typename Key, typename Subject, typename Text, typename Note>
    void report(const QString &rdeFilePath, const Pairing<Item, Key> &pairing,
                const QVector<const Item *> &before, const QVector<const Item *> &after,
                const PairKinds &kinds, const Subject &subject, const Text &text, const Note &note)
    {
        pairing.run(
                before, after,
                [&](size_t round, const Item &x, const Item &y) {
                    if (round == 0)
                        return;
                    ConfigChange &c = add(rdeFilePath, kinds.changed[round - 1], u'~', subject(y),
                                          text(x), text(y));
                    c.lineBefore = x.line;
                    c.lineAfter = y.line;
                    note(c, y);
                },
                [&](bool isBefore, const Item &item) {
                    ConfigChange &c = add(rdeFilePath, isBefore ? kinds.removed : kinds.added,
                                          isBefore ? u'-' : u'+', subject(item),
                                          isBefore ? text(item) : QString(),
                                          isBefore ? QString() : text(item));
                    (isBefore ? c.lineBefore : c.lineAfter) = item.line;
                    note(c, item);
                });
    }

    // Whether both sides have the file; a file on one side only is one change.
    bool comparable(const QString &rdeFilePath)
    {
        SnapshotFileProblem::Kind ka = SnapshotFileProblem::Missing;
        SnapshotFileProblem::Kind kb = SnapshotFileProblem::Missing;
        const bool badA = unreadable(a, rdeFilePath, ka);
        const bool badB = unreadable(b, rdeFilePath, kb);
        if (badA && badB)
            return false;
        if (!badA && !badB)
            return true;
        const SnapshotFileProblem::Kind bad = badA ? ka : kb;
        if (bad == SnapshotFileProblem::Missing)
            add(rdeFilePath, badA ? "file-added" : "file-removed", badA ? u'+' : u'-',
                ConfigDiff::tr("the file"), QString(), QString());
        else
            add(rdeFilePath, "file-unreadable", u'~', ConfigDiff::tr("the file"),
                badA ? ConfigDiff::tr("not readable") : QString(),
                badB ? ConfigDiff::tr("not readable") : QString());
        return false;
    }

    void buses()
    {
        QHash<QString, const BusName *> before;
        for (const BusName &bus : a.buses)
            before.insert(bus.name, &bus);
        QSet<QString> seen;
        const auto onOff = [](bool on) {
            return on ? ConfigDiff::tr("on") : ConfigDiff::tr("off");
        };
        for (const BusName &bus : b.buses) {
            if (seen.contains(bus.name))
                continue;
            seen.insert(bus.name);
            const BusName *old = before.value(bus.name);
            const QString subject = QStringLiteral("%1 (%2)").arg(bus.shortName, bus.name);
            ConfigChange *c = nullptr;
            if (!old)
                c = &add(RDE_FIELDBUS_XML, "bus-added", u'+', subject, QString(),
                         onOff(bus.enable));
            else if (old->enable != bus.enable)
                c = &add(RDE_FIELDBUS_XML, bus.enable ? "bus-enabled" : "bus-disabled", u'~',
                         subject, onOff(old->enable), onOff(bus.enable));
            if (c)
                c->bus = bus.shortName;
        }
        for (const BusName &bus : a.buses) {
            if (seen.contains(bus.name))
                continue;
            seen.insert(bus.name);
            add(RDE_FIELDBUS_XML, "bus-removed", u'-',
                QStringLiteral("%1 (%2)").arg(bus.shortName, bus.name), onOff(bus.enable),
                QString())
                    .bus = bus.shortName;
        }
    }

    void areas()
    {
        QStringList keys = a.areas.keys() + b.areas.keys();
        std::sort(keys.begin(), keys.end());
        keys.erase(std::unique(keys.begin(), keys.end()), keys.end());
        const auto text = [](const BusAddrNumInfo &info, int i) {
            return ConfigDiff::tr("start %1, stop %2, length %3")
                    .arg(info.startAddress[i])
                    .arg(info.stopAddress[i])
                    .arg(info.variableLength[i]);
        };
        for (const QString &key : qAsConst(keys)) {
            const BusAddrNumInfo x = a.areas.value(key);
            const BusAddrNumInfo y = b.areas.value(key);
            for (int i = 0; i < 9; ++i) {
                if (x.startAddress[i] != y.startAddress[i] || x.stopAddress[i] != y.stopAddress[i]
                    || x.variableLength[i] != y.variableLength[i])
                    add(RDE_FIELDBUS_CFG_XML, "area-changed", u'~',
                        ConfigDiff::tr("%1 entry %2").arg(key).arg(i), text(x, i), text(y, i));
            }
        }
    }

    void mappings()
    {
        using Key = QPair<int, QPair<QString, QString>>;
        Pairing<SnapshotMapping, Key> pairing;
        pairing.key = [](const SnapshotMapping &m) {
            return Key(m.direction, qMakePair(m.row.module, m.row.name));
        };
        const auto place = [](const SnapshotMapping &m) {
            return m.row.fieldBus + QLatin1Char('\n') + m.row.address;
        };
        // Equal rows first (types in any case), then rows at the same place.
        pairing.rounds = {[place](const SnapshotMapping &m) {
                              return QStringList{place(m), m.row.filterTime, m.row.invert,
                                                 m.row.type.toCaseFolded()}
                                      .join(QLatin1Char('\n'));
                          },
                          place, [](const SnapshotMapping &) { return QString(); }};
        const auto text = [](const SnapshotMapping &m) {
            return ConfigDiff::tr("%1 %2 (%3), filter time %4, invert %5")
                    .arg(m.row.fieldBus, m.row.address, m.row.type, m.row.filterTime, m.row.invert);
        };
        const auto note = [](ConfigChange &c, const SnapshotMapping &m) {
            c.direction = m.direction;
            c.bus = m.row.fieldBus;
            c.module = m.row.module;
            c.function = m.row.name;
        };
        const auto subject = [](const SnapshotMapping &m) {
            return QStringLiteral("%1 %2 %3")
                    .arg(directionWord(m.direction), m.row.module, m.row.name);
        };
        const std::function<bool(const SnapshotMapping &)> keep = isMapped;
        report(RDE_SIGNAL_MAP_CFG, pairing, pointers(a.mappings, keep), pointers(b.mappings, keep),
               {{"mapping-changed", "mapping-moved"}, "mapping-removed", "mapping-added"}, subject,
               text, note);
    }

    void groups()
    {
        using Key = QPair<int, QString>;
        Pairing<SnapshotGroup, Key> pairing;
        pairing.key = [](const SnapshotGroup &g) {
            return Key(g.direction,
                       QStringLiteral("%1 %2 %3")
                               .arg(g.group.fieldBus.toLower(), g.group.type.toLower(),
                                    QString::number(g.group.address.toInt())));
        };
        pairing.rounds = {[](const SnapshotGroup &g) {
                              return g.group.deviceMapHead + QLatin1Char('\n')
                                      + g.group.deviceMapTail;
                          },
                          [](const SnapshotGroup &) { return QString(); }};
        const auto text = [](const SnapshotGroup &g) {
            return QStringLiteral("%1-%2").arg(g.group.deviceMapHead, g.group.deviceMapTail);
        };
        const auto subject = [](const SnapshotGroup &g) {
            return ConfigDiff::tr("%1 %2 group %3 of %4")
                    .arg(g.group.type.toLower(), directionWord(g.direction), g.group.address,
                         g.group.fieldBus.toLower());
        };
        const auto note = [](ConfigChange &c, const SnapshotGroup &g) {
            c.direction = g.direction;
            c.bus = g.group.fieldBus.toLower();
        };
        const std::function<bool(const SnapshotGroup &)> all = [](const SnapshotGroup &) {
            return true;
        };
        report(RDE_GROUP_CFG, pairing, pointers(a.groups, all), pointers(b.groups, all),
               {{"group-changed"}, "group-removed", "group-added"}, subject, text, note);
    }

    void descriptions()
    {
        QStringList keys = a.descriptions.keys() + b.descriptions.keys();
        std::sort(keys.begin(), keys.end());
        keys.erase(std::unique(keys.begin(), keys.end()), keys.end());
        for (const QString &key : qAsConst(keys)) {
            const auto x = a.descriptions.constFind(key);
            const auto y = b.descriptions.constFind(key);
            if (x == a.descriptions.cend())
                add(RDE_USER_DES_XML, "description-added", u'+', key, QString(), y.value());
            else if (y == b.descriptions.cend())
                add(RDE_USER_DES_XML, "description-removed", u'-', key, x.value(), QString());
            else if (x.value() != y.value())
                add(RDE_USER_DES_XML, "description-changed", u'~', key, x.value(), y.value());
        }
    }

    void endian()
    {
        if (a.hasEndian != b.hasEndian || a.endian != b.endian)
            add(RDE_FBSLAVE_CFGX, "endian-changed", u'~', ConfigDiff::tr("byte order"), a.endian,
                b.endian);
    }

    const ConfigSnapshot &a;
    const ConfigSnapshot &b;
    QVector<ConfigChange> changes;
};

} // namespace

QVector<ConfigChange> ConfigDiff::compare(const ConfigSnapshot &before, const ConfigSnapshot &after)
{
    return Differ(before, after).run();
}
