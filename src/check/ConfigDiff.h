#pragma once

#include "ConfigSnapshot.h"

#include <QChar>
#include <QCoreApplication>

/// One difference between two configurations.
struct ConfigChange
{
    /// File name relative to the controller, e.g. "application/fidbus/signal_mapping.cfg".
    QString file;
    /// Stable kind name, e.g. "mapping-moved"; scripts rely on it.
    QString kind;
    /// '+' added, '-' removed, '~' changed.
    QChar sign;
    /// What changed, in words: "input Weld arc_on", "int input group 1 of mtcp", ...
    QString subject;
    /// 1-based line on the before side; 0 where that side has none (added, XML files).
    int lineBefore = 0;
    /// 1-based line on the after side; 0 where that side has none (removed, XML files).
    int lineAfter = 0;
    /// The value on the before side; empty where the side has none.
    QString before;
    /// The value on the after side; empty where the side has none.
    QString after;
    /// BusInput or BusOutput of a mapping or group change, else -1.
    int direction = -1;
    /// Bus key in lower case of a mapping or group change, else empty.
    QString bus;
    /// Module of a mapping change, else empty.
    QString module;
    /// Function name of a mapping change, else empty.
    QString function;
};

/// Structural comparison of two configurations, file by file: mappings added,
/// removed, moved (same module and function, other bus or address) and changed
/// (filter time, invert); groups; buses switched on or off; user IO areas;
/// descriptions; the slave's byte order. Rows are matched by what they stand
/// for, never by text or position, so reordered or re-padded files are equal.
///
/// A plain static function on the two snapshots: no manager, no transfers, no
/// threads. Any thread may call it, each on its own data; the texts are
/// translated, so install translators before calling from several threads.
class FIELDBUSCONFIG_EXPORT ConfigDiff
{
    Q_DECLARE_TR_FUNCTIONS(ConfigDiff)

public:
    /// Changes from `before` to `after`, sorted by file, then by line (the
    /// after side's where there is one, else the before side's); changes that
    /// tie keep the order they were found in. Functions that are not mapped
    /// (address -1) are left out, so mapping one shows as "mapping-added".
    /// A file that only one side can read is one change for the whole file.
    static QVector<ConfigChange> compare(const ConfigSnapshot &before, const ConfigSnapshot &after);
};
