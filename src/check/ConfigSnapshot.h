#pragma once

#include "FieldbusTypes.h"

#include <QHash>
#include <QMap>
#include <QString>
#include <QStringList>
#include <QVector>

// One row of the signal mapping file with where it stands.
struct SnapshotMapping
{
    FuncAndMapInfo row;
    BiBo direction = BusInput;
    int line = 0;
    // The first required keyword the line lacks (or gives no value), else empty.
    QString missingKeyword;
};

// One row of the group IO file with where it stands.
struct SnapshotGroup
{
    GroupInfo group;
    BiBo direction = BusInput;
    int line = 0;
    QString missingKeyword;
};

// A function a module's function list declares for one direction: "Input" and
// "AnalogInput" for inputs, "Output" and "AnalogOutput" for outputs.
struct SnapshotFunction
{
    QString name;
    QString nameCn;
    QString type;
};

struct SnapshotModule
{
    QString name;
    QString nameCn;
    // Controller path of the module's function-list file.
    QString listPath;
    QVector<SnapshotFunction> functions[2];
};

// A file of the snapshot that could not be read as it should, or read with loss.
struct SnapshotFileProblem
{
    // NotWellFormed: read as the manager reads it, but holding what XML does
    // not allow there (a bare "&"), which stricter readers refuse.
    // Unreadable: there, but not a file that opens (a folder, no permission;
    // the detail says why, empty for a folder).
    // Refused: a function-list path leading out of the folder, which the
    // pendant refuses to fetch.
    enum Kind { Missing, Unparsable, NotUtf8, NotWellFormed, Unreadable, Refused };
    Kind kind = Missing;
    // Controller path of the file.
    QString file;
    // 1-based line of the first problem where there is one, else 0.
    int line = 0;
    QString detail;
    // 1-based column of an XML parse error, else 0.
    int column = 0;
};

// A whole configuration parsed into tables that remember the file lines they
// came from, read with the same parsing routines as the manager. The check and
// the comparison of configurations work on it, so tools and screens only
// present what they find.
class FIELDBUSCONFIG_EXPORT ConfigSnapshot
{
public:
    // Where the files lie under the root folder: as on the controller
    // (root + controller path) or as in the pendant's working folder
    // (root + file name; function lists under their controller folder's name).
    enum Layout { ControllerLayout, PendantLayout };

    static ConfigSnapshot load(const QString &root, Layout layout);
    // The rows of one file in the signal mapping format (a mapping backup, say),
    // with their lines; false when it cannot be read.
    static bool readMappingFile(const QString &path, QVector<SnapshotMapping> &rows);

    // 1-based line of the first bytes that are not UTF-8, or 0 when all are.
    static int firstLineNotUtf8(const QByteArray &bytes);

    // Where the file with this controller path lies in the snapshot's folder.
    QString fixedFilePath(const QString &rdeFilePath) const;
    QString listFilePath(const QString &rdeFilePath) const;

    QString root;
    Layout layout = ControllerLayout;

    // The fieldbus list as the manager holds it: the fixed Modbus TCP slave
    // first, then the file's entries; and the short names that group signals.
    QVector<BusName> buses;
    QStringList busShortNames;
    bool freeBusOpen = false;
    // Short names of the switched-on buses that may carry signals.
    QStringList enabledShortNames() const;

    QHash<QString, BusAddrNumInfo> areas;
    QVector<SnapshotMapping> mappings;
    QVector<SnapshotGroup> groups;
    // By module key, the text of "FunctionList"/"Module".
    QMap<QString, SnapshotModule> modules;
    // "name[index]" -> description, as the manager reads them.
    QHash<QString, QString> descriptions;
    QString endian;
    bool hasEndian = false;

    QVector<SnapshotFileProblem> problems;

    // Addresses a bus offers for a direction and type, as the manager's getBusNum.
    int busNum(const QString &bus, BiBo dir, const QString &type) const;
};
