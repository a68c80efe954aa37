#pragma once

#include "ConfigSnapshot.h"

#include <QCoreApplication>

/// One thing found wrong in a configuration.
struct CheckFinding
{
    /// File name relative to the controller, e.g. "application/fidbus/signal_mapping.cfg".
    QString file;
    /// 1-based line in that file; 0 for the file as a whole.
    int line = 0;
    /// 1-based column where known (an XML parse error), else 0.
    int column = 0;
    /// Stable kind name, e.g. "address-collision"; scripts rely on it (see ConfigCheck::kinds).
    QString kind;
    /// "error" or "warning".
    QString severity;
    /// One sentence saying what is wrong, in the language of the installed translation.
    QString message;
    /// Bus key of the row involved, in lower case ("mtcp"; a group signal's
    /// "group_mtcp"); empty where none applies.
    QString bus;
    /// BusInput or BusOutput of the row involved, -1 where none applies.
    int direction = -1;
    /// Module of the mapping row involved; empty where none applies.
    QString module;
    /// Function name of the mapping row involved; empty where none applies.
    QString function;
    /// Address text of the mapping row involved, as the file gives it; empty where none applies.
    QString address;
    /// Group number text of the group row involved; empty where none applies.
    QString group;
};

/// One kind of finding: its stable id, a one-sentence description and the
/// severity its findings have.
struct CheckKind
{
    /// Stable id, the CheckFinding::kind of its findings, e.g. "group-overlap".
    QString id;
    /// One English sentence saying what the kind means.
    QString description;
    /// "error" or "warning". "file-missing" says "error", yet a missing
    /// description file (user or safety) is reported as a warning.
    QString severity;
};

/// The offline check of a whole configuration: the rules of the address and
/// group validators applied to every row at once, plus whole-file rules. Every
/// rule runs over indexes, never pairwise, so large tables stay quick.
///
/// Plain static functions on the values they are given: no manager, no
/// transfers, no threads. Any thread may call them, each on its own data; the
/// messages are translated, so install translators before calling from
/// several threads.
class FIELDBUSCONFIG_EXPORT ConfigCheck
{
    Q_DECLARE_TR_FUNCTIONS(ConfigCheck)

public:
    /// Checks a loaded snapshot. Findings are sorted by file, then line, then
    /// kind; findings that tie keep the order the rules found them in.
    static QVector<CheckFinding> run(const ConfigSnapshot &snapshot);

    /// How many of the findings have severity "error".
    static int errorCount(const QVector<CheckFinding> &findings);

    /// Every kind run() reports, errors first, in a fixed order.
    static QVector<CheckKind> kinds();

    /// The findings that make writing the file with controller path
    /// `rdeFilePath` back unsafe: lines its reader could not parse, bytes that
    /// are not UTF-8, the file unreadable or not well-formed. The writers write
    /// what the readers read, so such a line would come back changed.
    /// The path may be given with or without its leading slash.
    static QVector<CheckFinding> writeBlockers(const QVector<CheckFinding> &findings,
                                               const QString &rdeFilePath);
};
