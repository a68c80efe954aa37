#pragma once

#include <fieldbusconfig/ConfigSnapshot.h>
#include <fieldbusconfig/FieldbusNames.h>
#include <fieldbusconfig/ImportReport.h>
#include <fieldbusconfig/FieldbusTypes.h>
#include <fieldbusconfig/FunctionIndex.h>

#include <QCommandLineParser>
#include <QJsonObject>
#include <QMap>
#include <QString>
#include <QStringList>
#include <QVector>

class BusFileDataManager;
class Session;
struct ConfigChange;
struct Settings;

// One command as the command line gave it.
struct Call
{
    // The command's words, e.g. "map set", for messages and help.
    QString name;
    // Positional arguments after the command's words.
    QStringList args;
    const QCommandLineParser *parser = nullptr;

    bool isSet(const QString &option) const { return parser->isSet(option); }
    QString value(const QString &option) const { return parser->value(option); }
};

using Handler = int (*)(Session &, const Call &);

int runStatus(Session &session, const Call &call);
int runBusList(Session &session, const Call &call);
int runBusSwitch(Session &session, const Call &call);
int runBusPerformance(Session &session, const Call &call);
int runMapList(Session &session, const Call &call);
int runMapSet(Session &session, const Call &call);
int runMapUnset(Session &session, const Call &call);
int runGroupList(Session &session, const Call &call);
int runGroupSet(Session &session, const Call &call);
int runGroupDelete(Session &session, const Call &call);
int runBackup(Session &session, const Call &call);
int runImport(Session &session, const Call &call);
int runDescribeList(Session &session, const Call &call);
int runDescribeSet(Session &session, const Call &call);
int runEndianGet(Session &session, const Call &call);
int runEndianSet(Session &session, const Call &call);
int runCheck(Session &session, const Call &call);
int runDiff(Session &session, const Call &call);
int runExport(Session &session, const Call &call);
// Runs a command that writes and sends on a throw-away copy of the controller
// and workspace, and prints the changes it would make.
int runDryRun(const Settings &settings, Handler handler, const Call &call);

// ---- shared by the commands ----

// The rows of a CSV file of mappings (as fbcfg export writes them) with
// their lines, and why each other row (by CSV line) cannot be imported.
// ExitOk, or the command's end.
int readCsvRows(Session &session, const Call &call, const QString &csvPath,
                QVector<ImportRow> &rows, QMap<int, QString> &refused);

// The changes from `before` to `after`, grouped by file, or as JSON.
void printChanges(const QVector<ConfigChange> &changes, const QString &before, const QString &after,
                  bool json);

// Bad usage: one line naming what is wrong and where to read more.
int usageError(const Call &call, const QString &what);
// The known name closest to `name` (edit distance, without case) when one is
// close enough to be a slip, else empty.
QString closest(const QString &name, const QStringList &known);
// `missing` ("no module Comon"), then "; did you mean Common?" when a known name is close.
QString missingName(const QString &missing, const QString &name, const QStringList &known);
// A name that is not there, as a usage error: missingName, then the known names.
int unknownName(const Call &call, const QString &missing, const QString &name,
                const QStringList &known);
// "Refused" and why: exit status 1.
int refuse(const QString &why);

// The directions --dir selects (both when it is not given and not required),
// or a usage error.
int readDirections(const Call &call, bool required, QVector<BiBo> &directions);
// The one direction a change needs.
int readDirection(const Call &call, BiBo &direction);
// A decimal integer, nothing else.
bool readInt(const QString &text, int *value);

// "1 row", "2 rows".
QString rowCount(int count);

// Adds to a JSON record what applies: lines and columns above 0, a direction
// that is one, texts that are not empty (as numbers where `numbers` says so).
struct JsonFields
{
    QVector<QPair<const char *, int>> positive;
    int direction = -1;
    QVector<QPair<const char *, QString>> texts;
    QVector<QPair<const char *, QString>> numbers;
};
void insertPresent(QJsonObject &record, const JsonFields &fields);

// "in"/"out" for JSON, a translated word for people.
QString directionKey(BiBo dir);
QString directionWord(BiBo dir);

// After a listing that --bus filtered to nothing: a usage error when the bus
// is not listed either (a typing slip, most likely), else ExitOk.
int checkBusFilter(BusFileDataManager *manager, const Call &call);

// Switched-on buses that carry signals, by short name, each once.
QStringList signalBuses(BusFileDataManager *manager);
// ExitOk for such a bus; a usage error for a name that is no bus the mapping
// screens offer, a refusal for one that is switched off.
int checkSignalBus(const Call &call, BusFileDataManager *manager, const QString &bus);
// The English key of a module given in either language; empty when unknown.
QString moduleKey(BusFileDataManager *manager, const QString &name);
// Whether names are shown in Chinese (--lang zh).
bool showsChinese(BusFileDataManager *manager);
