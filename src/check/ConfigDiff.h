#pragma once

#include "ConfigSnapshot.h"

#include <QChar>
#include <QCoreApplication>

// One difference between two configurations.
struct ConfigChange
{
    // File name relative to the controller, e.g. "application/fidbus/signal_mapping.cfg".
    QString file;
    // Stable kind name, e.g. "mapping-moved"; scripts rely on it.
    QString kind;
    // '+' added, '-' removed, '~' changed.
    QChar sign;
    // What changed, in words: "input Weld arc_on", "int input group 1 of mtcp", ...
    QString subject;
    // 1-based line on each side; 0 where the side has none (added, removed, XML).
    int lineBefore = 0;
    int lineAfter = 0;
    // The value on each side; empty where the side has none.
    QString before;
    QString after;
    // The values involved; empty (direction: -1) where they do not apply.
    int direction = -1;
    QString bus;
    QString module;
    QString function;
};

// Structural comparison of two configurations, file by file: mappings added,
// removed, moved (same module and function, other bus or address) and changed
// (filter time, invert); groups; buses switched on or off; user IO areas;
// descriptions; the slave's byte order. Rows are matched by what they stand
// for, never by text or position, so reordered or re-padded files are equal.
class FIELDBUSCONFIG_EXPORT ConfigDiff
{
    Q_DECLARE_TR_FUNCTIONS(ConfigDiff)

public:
    // Changes from `before` to `after`, sorted by file, then line, then kind.
    static QVector<ConfigChange> compare(const ConfigSnapshot &before, const ConfigSnapshot &after);
};
