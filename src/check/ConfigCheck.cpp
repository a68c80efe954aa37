#include "ConfigCheck.h"

#include "FieldbusNames.h"
#include "FieldbusPaths.h"
#include "FileFormats.h"

#include <QCoreApplication>
#include <QHash>
#include <QSet>

#include <algorithm>
#include <vector>

namespace {

const QString errorSeverity = QStringLiteral("error");
const QString warningSeverity = QStringLiteral("warning");

QString fileName(const QString &rdeFilePath)
{
    // Function-list paths come from a file and may lack the leading slash.
    return rdeFilePath.startsWith(QLatin1Char('/')) ? rdeFilePath.mid(1) : rdeFilePath;
}

QString directionWord(BiBo dir)
{
    return dir == BusInput ? ConfigCheck::tr("input") : ConfigCheck::tr("output");
}

// A group as its rules see it: the first and last address of its device map.
struct GroupSpan
{
    int index; // into snapshot.groups
    int first;
    int last;
};

// Groups of one bus and direction sorted by first address, with the group that
// reaches furthest among each prefix, to tell in O(log n) which group covers
// an address.
class GroupSpans
{
public:
    void add(const GroupSpan &span) { spans.push_back(span); }

    void seal()
    {
        std::sort(spans.begin(), spans.end(), [](const GroupSpan &a, const GroupSpan &b) {
            return a.first < b.first || (a.first == b.first && a.index < b.index);
        });
        furthest.resize(spans.size());
        for (size_t i = 0; i < spans.size(); ++i) {
            furthest[i] = i;
            if (i > 0 && spans[furthest[i - 1]].last >= spans[i].last)
                furthest[i] = furthest[i - 1];
        }
    }

    // A group whose range holds `address`, or null.
    const GroupSpan *covering(int address) const
    {
        const auto after = std::upper_bound(
                spans.begin(), spans.end(), address,
                [](int value, const GroupSpan &span) { return value < span.first; });
        if (after == spans.begin())
            return nullptr;
        const GroupSpan &reach = spans[furthest[size_t(after - spans.begin()) - 1]];
        return reach.last >= address ? &reach : nullptr;
    }

    std::vector<GroupSpan> spans;
    std::vector<size_t> furthest;
};

// Where a row maps to, for the collision rule.
struct AddressKey
{
    QString bus;
    int direction;
    int address;
    bool operator==(const AddressKey &o) const
    {
        return address == o.address && direction == o.direction && bus == o.bus;
    }
};

uint qHash(const AddressKey &key, uint seed = 0)
{
    return ::qHash(key.bus, seed) ^ uint(key.address * 2 + key.direction);
}

// What a row maps, for mapping a function twice.
struct FunctionKey
{
    QString module;
    QString name;
    int direction;
    bool operator==(const FunctionKey &o) const
    {
        return direction == o.direction && name == o.name && module == o.module;
    }
};

uint qHash(const FunctionKey &key, uint seed = 0)
{
    return ::qHash(key.name, seed) ^ (::qHash(key.module, seed) * 31) ^ uint(key.direction);
}

// Rows that share a key: each group lists its rows in order, and groups come
// in the order of their first row. One hash lookup a row, no list per key.
template<typename Key>
class RowGroups
{
public:
    void add(const Key &key, int row)
    {
        auto id = ids.constFind(key);
        if (id == ids.cend())
            id = ids.insert(key, int(ids.size()));
        groupOfRow.push_back({id.value(), row});
    }

    // `onGroup(rows)` for every group of at least `minimum` rows.
    template<typename OnGroup>
    void forEach(size_t minimum, OnGroup onGroup) const
    {
        std::vector<int> start(size_t(ids.size()) + 1, 0);
        for (const auto &entry : groupOfRow)
            ++start[size_t(entry.first) + 1];
        for (size_t g = 1; g < start.size(); ++g)
            start[g] += start[g - 1];
        std::vector<int> rows(groupOfRow.size());
        std::vector<int> next(start.begin(), start.end() - 1);
        for (const auto &entry : groupOfRow)
            rows[size_t(next[size_t(entry.first)]++)] = entry.second;
        for (size_t g = 0; g + 1 < start.size(); ++g) {
            if (size_t(start[g + 1] - start[g]) >= minimum)
                onGroup(std::vector<int>(rows.begin() + start[g], rows.begin() + start[g + 1]));
        }
    }

private:
    QHash<Key, int> ids;
    std::vector<std::pair<int, int>> groupOfRow; // group id, row
};

class Checker
{
public:
    explicit Checker(const ConfigSnapshot &snapshot)
        : s(snapshot)
        , known(QSet<QString>(snapshot.busShortNames.cbegin(), snapshot.busShortNames.cend()))
    {
        const QStringList enabledNames = snapshot.enabledShortNames();
        enabled = QSet<QString>(enabledNames.cbegin(), enabledNames.cend());
        QSet<QString> unread;
        for (const SnapshotFileProblem &p : snapshot.problems) {
            if (p.kind == SnapshotFileProblem::Missing || p.kind == SnapshotFileProblem::Unparsable
                || p.kind == SnapshotFileProblem::Unreadable
                || p.kind == SnapshotFileProblem::Empty)
                unread.insert(p.file);
        }
        busesUnread = unread.contains(RDE_FIELDBUS_XML);
        areasUnread = unread.contains(RDE_FIELDBUS_CFG_XML);
        modulesUnread = unread.contains(RDE_FUNC_INFO_XML);
        groupsUnread = unread.contains(RDE_GROUP_CFG);
    }

    QVector<CheckFinding> run()
    {
        fileProblems();
        groupRules();
        mappingRules();
        std::stable_sort(findings.begin(), findings.end(),
                         [](const CheckFinding &a, const CheckFinding &b) {
                             if (a.file != b.file)
                                 return a.file < b.file;
                             if (a.line != b.line)
                                 return a.line < b.line;
                             return a.kind < b.kind;
                         });
        return findings;
    }

private:
    CheckFinding &add(const QString &rdeFilePath, int line, const char *kind,
                      const QString &severity, const QString &message)
    {
        CheckFinding finding;
        finding.file = fileName(rdeFilePath);
        finding.line = line;
        finding.kind = QLatin1String(kind);
        finding.severity = severity;
        finding.message = message;
        findings.append(finding);
        return findings.last();
    }

    CheckFinding &addMapping(const SnapshotMapping &m, const char *kind, const QString &message,
                             const QString &severity = errorSeverity)
    {
        CheckFinding &f = add(RDE_SIGNAL_MAP_CFG, m.line, kind, severity, message);
        f.bus = m.row.fieldBus;
        f.direction = m.direction;
        f.module = m.row.module;
        f.function = m.row.name;
        f.address = m.row.address;
        return f;
    }

    CheckFinding &addGroup(const SnapshotGroup &g, const char *kind, const QString &message,
                           const QString &severity = errorSeverity)
    {
        CheckFinding &f = add(RDE_GROUP_CFG, g.line, kind, severity, message);
        f.bus = g.group.fieldBus.toLower();
        f.direction = g.direction;
        f.group = g.group.address;
        return f;
    }

    QString groupText(const SnapshotGroup &g) const
    {
        return ConfigCheck::tr("group %1 (%2, %3-%4)")
                .arg(g.group.address, g.group.type, g.group.deviceMapHead, g.group.deviceMapTail);
    }

    void fileProblems()
    {
        for (const SnapshotFileProblem &problem : s.problems) {
            switch (problem.kind) {
            case SnapshotFileProblem::NotUtf8:
                add(problem.file, problem.line, "encoding", warningSeverity,
                    ConfigCheck::tr("bytes that are not UTF-8; a write-back would not keep them"));
                break;
            case SnapshotFileProblem::Missing:
                // Without descriptions the screens show none; every other file
                // they fetch leaves a screen empty or an edit impossible.
                if (problem.file == RDE_USER_DES_XML)
                    add(problem.file, 0, "file-missing", warningSeverity,
                        ConfigCheck::tr("the file is missing: the signals have no descriptions"));
                else if (problem.file == RDE_PFS_DES_XML)
                    add(problem.file, 0, "file-missing", warningSeverity,
                        ConfigCheck::tr(
                                "the file is missing: the safety signals have no descriptions"));
                else if (const QStringList modules = s.unreadListModules.keys(problem.file);
                         !modules.isEmpty())
                    add(problem.file, 0, "file-missing", errorSeverity,
                        ConfigCheck::tr("the function list of %1 is missing; the rows of "
                                        "%1 are not checked")
                                .arg(modules.join(QStringLiteral(", "))));
                else
                    add(problem.file, 0, "file-missing", errorSeverity,
                        ConfigCheck::tr("the file is missing"));
                break;
            case SnapshotFileProblem::Refused:
                add(problem.file, 0, "file-missing", errorSeverity,
                    ConfigCheck::tr("the function list of module %1 lies outside the "
                                    "controller folder; the pendant refuses to fetch it")
                            .arg(problem.detail));
                break;
            case SnapshotFileProblem::Empty:
                add(problem.file, 0, "file-unreadable", errorSeverity,
                    ConfigCheck::tr("the file is empty; the pendant does not read it"));
                break;
            case SnapshotFileProblem::SkippedLines:
                add(problem.file, problem.line, "malformed-line", errorSeverity,
                    problem.detail == QLatin1String("1")
                            ? ConfigCheck::tr("this line stands before the first section "
                                              "marker: the pendant skips it and a write-back "
                                              "drops it")
                            : ConfigCheck::tr("%1 lines from this one stand before the first "
                                              "section marker: the pendant skips them and a "
                                              "write-back drops them")
                                      .arg(problem.detail));
                break;
            case SnapshotFileProblem::MarkerWithText:
                add(problem.file, problem.line, "malformed-line", errorSeverity,
                    problem.detail.isEmpty()
                            ? ConfigCheck::tr("this line holds more than its section marker: "
                                              "the pendant skips the rest of it and a "
                                              "write-back drops it")
                            : ConfigCheck::tr("the lines of this file end in CR alone, so the "
                                              "pendant reads it as one line and skips all but "
                                              "its section marker, and a write-back drops the "
                                              "rest; save it with LF line ends"));
                break;
            case SnapshotFileProblem::Unreadable:
                add(problem.file, 0, "file-unreadable", errorSeverity,
                    problem.detail.isEmpty()
                            ? ConfigCheck::tr("a folder stands where the file should be")
                            : ConfigCheck::tr("the file cannot be read: %1").arg(problem.detail));
                break;
            case SnapshotFileProblem::Unparsable:
                add(problem.file, problem.line, "file-unreadable", errorSeverity,
                    ConfigCheck::tr("not well-formed XML: %1").arg(problem.detail))
                        .column = problem.column;
                break;
            case SnapshotFileProblem::NotWellFormed:
                // The pendant reads it; any stricter XML reader refuses it.
                add(problem.file, problem.line, "file-unreadable", errorSeverity,
                    ConfigCheck::tr("not well-formed XML: \"&\" starts no entity reference"))
                        .column = problem.column;
                break;
            }
        }
    }

    // Duplicates, ranges and overlaps of the group file; also builds the spans
    // the mapping rules look groups up in.
    void groupRules()
    {
        // The reader keeps the last row of a number in its direction and type table.
        QHash<QString, int> lastOfKey;
        QVector<bool> kept(s.groups.size(), false);
        for (int i = 0; i < s.groups.size(); ++i) {
            const SnapshotGroup &g = s.groups.at(i);
            if (!g.missingKeyword.isEmpty()) {
                addGroup(g, "malformed-line",
                         ConfigCheck::tr("the row lacks %1 or its value").arg(g.missingKeyword));
                continue;
            }
            const QString key = QStringLiteral("%1|%2|%3")
                                        .arg(g.direction)
                                        .arg(groupfile::readTypeIndex(g.group.type));
            const auto previous = lastOfKey.find(key + g.group.address);
            if (previous != lastOfKey.end()) {
                addGroup(s.groups.at(*previous), "group-duplicate",
                         ConfigCheck::tr(
                                 "group %1 is defined again on line %2, which replaces this row")
                                 .arg(g.group.address)
                                 .arg(g.line),
                         warningSeverity);
                kept[*previous] = false;
                *previous = i;
            } else {
                lastOfKey.insert(key + g.group.address, i);
            }
            kept[i] = true;
        }

        QHash<QString, GroupSpans> spansByBus;
        for (int i = 0; i < s.groups.size(); ++i) {
            if (!kept.at(i))
                continue;
            const SnapshotGroup &g = s.groups.at(i);
            const QString bus = g.group.fieldBus.toLower();
            bool firstOk = false;
            bool lastOk = false;
            const int first = g.group.deviceMapHead.toInt(&firstOk, 10);
            const int last = g.group.deviceMapTail.toInt(&lastOk, 10);
            if (!isKnown(bus)) {
                addGroup(g, "bus-unknown",
                         ConfigCheck::tr("bus '%1' is not listed in fieldbus.xml")
                                 .arg(g.group.fieldBus));
                continue;
            }
            if (!firstOk || !lastOk) {
                addGroup(g, "group-range",
                         ConfigCheck::tr("device map '%1-%2' is not two addresses first-last")
                                 .arg(g.group.deviceMapHead, g.group.deviceMapTail),
                         warningSeverity);
                continue;
            }
            if (first > last) {
                addGroup(g, "group-range",
                         ConfigCheck::tr("device map %1-%2 runs backwards").arg(first).arg(last),
                         warningSeverity);
                continue;
            }
            const int bits = s.busNum(bus, g.direction, QStringLiteral("bool"));
            if ((first < 0 || last >= bits) && !areasUnread) {
                addGroup(g, "group-range",
                         ConfigCheck::tr(
                                 "device map %1-%2 lies outside the %3 bool %4 addresses of %5")
                                 .arg(first)
                                 .arg(last)
                                 .arg(bits)
                                 .arg(directionWord(g.direction), bus),
                         warningSeverity);
            }
            spansByBus[spanKey(bus, g.direction)].add({i, first, last});
        }

        for (auto it = spansByBus.begin(); it != spansByBus.end(); ++it) {
            GroupSpans &spans = it.value();
            spans.seal();
            // A sweep: a group overlaps the one reaching furthest before it
            // exactly when it starts before that one ends.
            QSet<int> reported;
            const GroupSpan *reach = nullptr;
            for (const GroupSpan &span : spans.spans) {
                if (reach && span.first <= reach->last) {
                    reportOverlap(span, *reach, reported);
                    reportOverlap(*reach, span, reported);
                }
                if (!reach || span.last > reach->last)
                    reach = &span;
            }
        }
        groupSpans = spansByBus;

        for (const SnapshotGroup &g : s.groups) {
            if (g.missingKeyword.isEmpty())
                groupNumbers.insert(
                        groupNumberKey(g.direction, groupfile::readTypeIndex(g.group.type),
                                       g.group.fieldBus, g.group.address.toInt(nullptr, 10)));
        }
    }

    static QString groupNumberKey(BiBo dir, int typeIndex, const QString &bus, int number)
    {
        return QStringLiteral("%1|%2|%3|%4")
                .arg(dir)
                .arg(typeIndex)
                .arg(bus.toCaseFolded())
                .arg(number);
    }

    void reportOverlap(const GroupSpan &span, const GroupSpan &other, QSet<int> &reported)
    {
        if (reported.contains(span.index))
            return;
        reported.insert(span.index);
        const SnapshotGroup &g = s.groups.at(span.index);
        const SnapshotGroup &o = s.groups.at(other.index);
        addGroup(g, "group-overlap",
                 ConfigCheck::tr("%1 overlaps %2 on line %3")
                         .arg(groupText(g), groupText(o))
                         .arg(o.line));
    }

    // Without the fieldbus list every bus is taken as listed.
    bool isKnown(const QString &bus) const
    {
        return known.contains(bus) || busesUnread;
    }

    static QString spanKey(const QString &bus, BiBo dir)
    {
        return bus + QLatin1Char('|') + QString::number(dir);
    }

    void mappingRules()
    {
        RowGroups<AddressKey> byAddress;
        RowGroups<FunctionKey> byFunction;

        for (int i = 0; i < s.mappings.size(); ++i) {
            const SnapshotMapping &m = s.mappings.at(i);
            if (!m.missingKeyword.isEmpty()) {
                addMapping(m, "malformed-line",
                           ConfigCheck::tr("the row lacks %1 or its value").arg(m.missingKeyword));
                continue;
            }
            functionRules(m);
            byFunction.add({m.row.module, m.row.name, m.direction}, i);

            const QString &key = m.row.fieldBus;
            const bool isGroupRow = fieldbusnames::isGroupKey(key);
            const QString bus = fieldbusnames::busOfKey(key);
            if (!isKnown(bus)) {
                addMapping(m, "bus-unknown",
                           ConfigCheck::tr("bus '%1' is not listed in fieldbus.xml").arg(key));
                continue;
            }
            if (!enabled.contains(bus) && !busesUnread)
                addMapping(m, "bus-disabled", ConfigCheck::tr("bus %1 is switched off").arg(bus));

            if (m.row.address == QLatin1String("-1"))
                continue;
            bool numeric = false;
            const int address = m.row.address.toInt(&numeric, 10);
            if (!numeric) {
                addMapping(m, "malformed-line",
                           ConfigCheck::tr("address '%1' is not a number").arg(m.row.address));
                continue;
            }
            byAddress.add({key, m.direction, address}, i);
            if (isGroupRow)
                groupMissingRule(m, bus, address);
            else
                addressRules(m, bus, address);
        }

        byAddress.forEach(2, [this](const std::vector<int> &rows) { collisionRule(rows); });
        byFunction.forEach(2, [this](const std::vector<int> &rows) {
            for (size_t k = 0; k < rows.size(); ++k) {
                const SnapshotMapping &m = s.mappings.at(rows[k]);
                const SnapshotMapping &other = s.mappings.at(rows[k == 0 ? 1 : 0]);
                addMapping(m, "function-mapped-twice",
                           ConfigCheck::tr("%1 %2 is mapped as %3 again on line %4")
                                   .arg(m.row.module, m.row.name, directionWord(m.direction))
                                   .arg(other.line));
            }
        });
    }

    void functionRules(const SnapshotMapping &m)
    {
        if (modulesUnread)
            return;
        const auto module = s.modules.constFind(m.row.module);
        // The list's own finding says it.
        if (module == s.modules.cend() && s.unreadListModules.contains(m.row.module))
            return;
        if (module == s.modules.cend()) {
            addMapping(m, "function-unknown",
                       ConfigCheck::tr("module %1 has no function list").arg(m.row.module));
            return;
        }
        const SnapshotFunction *function = declared(*module, m.direction, m.row.name);
        if (!function) {
            addMapping(m, "function-unknown",
                       ConfigCheck::tr("%1 declares no %2 function %3")
                               .arg(m.row.module, directionWord(m.direction), m.row.name));
        } else if (function->type.compare(m.row.type, Qt::CaseInsensitive) != 0) {
            addMapping(m, "type-mismatch",
                       ConfigCheck::tr("%1 %2 is declared %3, mapped as %4")
                               .arg(m.row.module, m.row.name, function->type, m.row.type));
        }
    }

    // The first function of that name a module declares for a direction; each
    // module's list is indexed once, however many rows name its functions.
    const SnapshotFunction *declared(const SnapshotModule &module, BiBo dir, const QString &name)
    {
        QHash<QString, int> &index = functionIndex[&module.functions[dir]];
        const QVector<SnapshotFunction> &functions = module.functions[dir];
        if (index.isEmpty()) {
            for (int i = functions.size() - 1; i >= 0; --i)
                index.insert(functions.at(i).name, i);
        }
        const auto at = index.constFind(name);
        return at == index.cend() ? nullptr : &functions.at(*at);
    }

    void addressRules(const SnapshotMapping &m, const QString &bus, int address)
    {
        const int count = s.busNum(bus, m.direction, m.row.type);
        if ((address < 0 || address >= count) && !areasUnread) {
            addMapping(
                    m, "address-out-of-range",
                    count > 0 ? ConfigCheck::tr(
                                        "address %1 is outside the %2 %3 %4 addresses of %5 (0-%6)")
                                        .arg(address)
                                        .arg(count)
                                        .arg(m.row.type, directionWord(m.direction), bus)
                                        .arg(count - 1)
                              : ConfigCheck::tr("%1 has no %2 %3 addresses")
                                        .arg(bus, m.row.type, directionWord(m.direction)));
        }
        if (!fieldbusnames::holdsBool(m.row.type))
            return;
        const auto spans = groupSpans.constFind(spanKey(bus, m.direction));
        if (spans == groupSpans.cend())
            return;
        if (const GroupSpan *span = spans->covering(address)) {
            const SnapshotGroup &g = s.groups.at(span->index);
            CheckFinding &f = addMapping(
                    m, "bool-in-group",
                    ConfigCheck::tr("bool signal at address %1 lies inside %2 on line %3 "
                                    "of user_groupio.cfg")
                            .arg(address)
                            .arg(groupText(g))
                            .arg(g.line));
            f.group = g.group.address;
        }
    }

    void groupMissingRule(const SnapshotMapping &m, const QString &bus, int number)
    {
        // Without the group file every group row would say so; its finding does.
        if (groupsUnread)
            return;
        const int typeIndex = groupfile::typeIndex(m.row.type);
        if (typeIndex >= 0
            && groupNumbers.contains(groupNumberKey(m.direction, typeIndex, bus, number)))
            return;
        CheckFinding &f = addMapping(m, "group-missing",
                                     ConfigCheck::tr("there is no %1 %2 group %3 on %4")
                                             .arg(m.row.type, directionWord(m.direction))
                                             .arg(number)
                                             .arg(bus));
        f.group = QString::number(number);
    }

    // Rows of one bus, direction and address collide when one's type holds
    // the other's, ignoring case: what isAddressValid refuses.
    void collisionRule(const std::vector<int> &rows)
    {
        if (rows.size() < 2)
            return;
        QHash<QString, std::vector<int>> byType;
        for (int row : rows)
            byType[s.mappings.at(row).row.type.toCaseFolded()].push_back(row);
        QSet<int> lengths;
        for (auto it = byType.cbegin(); it != byType.cend(); ++it)
            lengths.insert(it.key().size());

        // For each type, the first row of another type it holds or is held by:
        // the shorter type is found among the substrings of the longer one.
        QHash<QString, int> partnerOfType;
        const auto pair = [&partnerOfType](const QString &type, int row) {
            const auto it = partnerOfType.find(type);
            if (it == partnerOfType.end())
                partnerOfType.insert(type, row);
            else
                *it = std::min(*it, row);
        };
        for (auto it = byType.cbegin(); it != byType.cend(); ++it) {
            for (int length : qAsConst(lengths)) {
                for (int at = 0; length < it.key().size() && at + length <= it.key().size(); ++at) {
                    const auto held = byType.constFind(it.key().mid(at, length));
                    if (held == byType.cend() || held == it)
                        continue;
                    pair(it.key(), held->front());
                    pair(held.key(), it->front());
                }
            }
        }

        for (auto it = byType.cbegin(); it != byType.cend(); ++it) {
            const std::vector<int> &same = it.value();
            const int other = partnerOfType.value(it.key(), -1);
            for (size_t k = 0; k < same.size(); ++k) {
                int partner = same.size() > 1 ? same[k == 0 ? 1 : 0] : -1;
                if (other >= 0 && (partner < 0 || other < partner))
                    partner = other;
                if (partner < 0)
                    continue;
                const SnapshotMapping &m = s.mappings.at(same[k]);
                const SnapshotMapping &o = s.mappings.at(partner);
                addMapping(m, "address-collision",
                           ConfigCheck::tr("address %1 of %2 %3 is also taken by %4 %5 on line %6")
                                   .arg(m.row.address, m.row.fieldBus, directionWord(m.direction),
                                        o.row.module, o.row.name)
                                   .arg(o.line));
            }
        }
    }

    const ConfigSnapshot &s;
    QSet<QString> known;
    QSet<QString> enabled;
    QHash<QString, GroupSpans> groupSpans;
    QHash<const QVector<SnapshotFunction> *, QHash<QString, int>> functionIndex;
    // Every group's direction, table, bus and number, as isGroupIdExist finds them.
    QSet<QString> groupNumbers;
    // Files not read at all: the rules they decide are left to their own finding,
    // which would otherwise be buried under one finding per row.
    bool busesUnread = false;
    bool areasUnread = false;
    bool modulesUnread = false;
    bool groupsUnread = false;
    QVector<CheckFinding> findings;
};

} // namespace

QVector<CheckFinding> ConfigCheck::run(const ConfigSnapshot &snapshot)
{
    return Checker(snapshot).run();
}

int ConfigCheck::errorCount(const QVector<CheckFinding> &findings)
{
    return int(std::count_if(findings.cbegin(), findings.cend(),
                             [](const CheckFinding &f) { return f.severity == errorSeverity; }));
}

QVector<CheckKind> ConfigCheck::kinds()
{
    const auto error = [](const char *id, const char *description) {
        return CheckKind{QLatin1String(id), QLatin1String(description), errorSeverity};
    };
    const auto warning = [](const char *id, const char *description) {
        return CheckKind{QLatin1String(id), QLatin1String(description), warningSeverity};
    };
    return {
            error("file-missing",
                  "A file the screens need is missing or lies outside the controller folder "
                  "(a warning for the two description files, whose absence means no "
                  "descriptions)."),
            error("file-unreadable",
                  "A file is present but cannot be read, is empty (a line file, which the "
                  "pendant does not read) or is not well-formed XML."),
            error("malformed-line",
                  "A row lacks a keyword or its value, or gives an address that is not a "
                  "number, or a line other than the title stands before the first section "
                  "marker, or a marker's line holds more (skipped when read, dropped when "
                  "written)."),
            error("bus-unknown", "A row or group names a bus that fieldbus.xml does not list."),
            error("bus-disabled", "A signal is mapped to a bus that is switched off."),
            error("address-out-of-range",
                  "An address lies outside the bus's area for the "
                  "signal's type and direction."),
            error("address-collision",
                  "Two signals of one bus, direction and type share an "
                  "address."),
            error("bool-in-group", "A single bool signal lies inside a group's address range."),
            error("group-overlap", "Two groups of one bus and direction share addresses."),
            error("group-missing", "A group signal names a group that is not defined."),
            error("function-unknown",
                  "A row names a module or function that no function list "
                  "declares."),
            error("type-mismatch",
                  "A row's type differs from the type its function is "
                  "declared with."),
            error("function-mapped-twice", "A function is mapped twice in one direction."),
            warning("encoding",
                    "Bytes that are not UTF-8: writing the file back would not "
                    "keep them."),
            warning("group-duplicate",
                    "A group number is defined twice; the later row "
                    "replaces the earlier."),
            warning("group-range",
                    "A group's device map is not first-last, runs backwards or "
                    "leaves the bus's bool area."),
    };
}

QVector<CheckFinding> ConfigCheck::writeBlockers(const QVector<CheckFinding> &findings,
                                                 const QString &rdeFilePath)
{
    static const QStringList blocking{QStringLiteral("malformed-line"), QStringLiteral("encoding"),
                                      QStringLiteral("file-unreadable")};
    const QString file = fileName(rdeFilePath);
    QVector<CheckFinding> blockers;
    for (const CheckFinding &f : findings) {
        if (f.file == file && blocking.contains(f.kind))
            blockers.append(f);
    }
    return blockers;
}
