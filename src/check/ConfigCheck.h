#pragma once

#include "ConfigSnapshot.h"

#include <QCoreApplication>

// One thing found wrong in a configuration.
struct CheckFinding
{
    // File name relative to the controller, e.g. "application/fidbus/signal_mapping.cfg".
    QString file;
    // 1-based line in that file; 0 for the file as a whole.
    int line = 0;
    // 1-based column where known (an XML parse error), else 0.
    int column = 0;
    // Stable kind name, e.g. "address-collision"; scripts rely on it.
    QString kind;
    // "error" or "warning".
    QString severity;
    QString message;
    // The values involved; empty (direction: -1) where they do not apply.
    QString bus;
    int direction = -1;
    QString module;
    QString function;
    QString address;
    QString group;
};

// One kind of finding: its stable id, a one-sentence description and the
// severity its findings have.
struct CheckKind
{
    QString id;
    QString description;
    QString severity;
};

// The offline check of a whole configuration: the rules of the address and
// group validators applied to every row at once, plus whole-file rules. Every
// rule runs over indexes, never pairwise, so large tables stay quick.
class FIELDBUSCONFIG_EXPORT ConfigCheck
{
    Q_DECLARE_TR_FUNCTIONS(ConfigCheck)

public:
    // Findings sorted by file, then line, then kind.
    static QVector<CheckFinding> run(const ConfigSnapshot &snapshot);

    static int errorCount(const QVector<CheckFinding> &findings);

    // Every kind run() reports, errors first, in a fixed order.
    static QVector<CheckKind> kinds();

    // The findings that make writing the file with controller path
    // `rdeFilePath` back unsafe: lines its reader could not parse, bytes that
    // are not UTF-8, the file unreadable or not well-formed. The writers write
    // what the readers read, so such a line would come back changed.
    static QVector<CheckFinding> writeBlockers(const QVector<CheckFinding> &findings,
                                               const QString &rdeFilePath);
};
