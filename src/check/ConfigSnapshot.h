#pragma once

#include "FieldbusTypes.h"

#include <QHash>
#include <QMap>
#include <QString>
#include <QStringList>
#include <QVector>

/// One row of the signal mapping file with where it stands.
struct SnapshotMapping
{
    /// The row as the manager's reader parses it (bus key in lower case, texts as they stand).
    FuncAndMapInfo row;
    /// The section the row stands in: inputs or outputs.
    BiBo direction = BusInput;
    /// 1-based line of the row in its file.
    int line = 0;
    /// The first required keyword the line lacks (or gives no value), else empty.
    QString missingKeyword;
};

/// One row of the group IO file with where it stands.
struct SnapshotGroup
{
    /// The row as the manager's reader parses it.
    GroupInfo group;
    /// The section the row stands in: inputs or outputs.
    BiBo direction = BusInput;
    /// 1-based line of the row in its file.
    int line = 0;
    /// The first required keyword the line lacks (or gives no value), else empty.
    QString missingKeyword;
};

/// A function a module's function list declares for one direction: "Input" and
/// "AnalogInput" for inputs, "Output" and "AnalogOutput" for outputs.
struct SnapshotFunction
{
    /// The function's name, as mapping rows name it.
    QString name;
    /// The function's Chinese name.
    QString nameCn;
    /// The declared signal type, e.g. "bool" or "int".
    QString type;
};

/// A module named in the function information file, with what its function list declares.
struct SnapshotModule
{
    /// The module's name as the function information file gives it.
    QString name;
    /// The module's Chinese name as the function information file gives it.
    QString nameCn;
    /// Controller path of the module's function-list file.
    QString listPath;
    /// The declared functions, indexed by BiBo: inputs, then outputs.
    QVector<SnapshotFunction> functions[2];
};

/// A file of the snapshot that could not be read as it should, or read with loss.
struct SnapshotFileProblem
{
    /// What is wrong with the file.
    enum Kind {
        Missing, ///< There is no such file or folder.
        Unparsable, ///< Not XML the manager's reader can parse; nothing of it was read.
        NotUtf8, ///< Read, but holding bytes that are not UTF-8.
        /// Read as the manager reads it, but holding what XML does not allow
        /// there (a bare "&"), which stricter readers refuse.
        NotWellFormed,
        /// There, but not a file that opens (a folder, no permission; the detail
        /// says why, empty for a folder).
        Unreadable,
        /// A function-list path leading out of the folder, which the pendant
        /// refuses to fetch.
        Refused,
        /// A line file of zero bytes, which the pendant does not read at all.
        Empty,
        /// Lines of a line file before its first section marker besides the
        /// title: the readers skip them, the writers do not keep them (`line` is
        /// the first, the detail their number).
        SkippedLines,
        /// A section marker's line of a line file that holds more than the
        /// marker, which the readers skip and the writers do not keep. The
        /// detail is "cr" when the file's lines end in CR alone, which makes the
        /// whole file one line.
        MarkerWithText
    };
    /// What is wrong.
    Kind kind = Missing;
    /// Controller path of the file (a function list's as the information file gives it).
    QString file;
    /// 1-based line of the first problem where there is one, else 0.
    int line = 0;
    /// More about it: the local path looked at (Missing, NotUtf8, Empty), the
    /// parser's message (Unparsable, NotWellFormed), the reason the file did not
    /// open (Unreadable), the module whose list it is (Refused), how many lines
    /// (SkippedLines), "cr" or nothing (MarkerWithText).
    QString detail;
    /// 1-based column of an XML parse error, else 0.
    int column = 0;
};

/// A whole configuration parsed into tables that remember the file lines they
/// came from, read with the same parsing routines as the manager. The check and
/// the comparison of configurations work on it, so tools and screens only
/// present what they find.
///
/// A plain value: loading reads the files under its root folder and touches no
/// manager, controller link or thread. Any thread may load and read snapshots,
/// each its own; one snapshot may be read from several threads at once.
class FIELDBUSCONFIG_EXPORT ConfigSnapshot
{
public:
    /// Where the files lie under the root folder: as on the controller
    /// (root + controller path) or as in the pendant's working folder
    /// (root + file name; function lists under their controller folder's name).
    enum Layout {
        ControllerLayout, ///< root + controller path, e.g. root/application/fidbus/fieldbus.xml.
        PendantLayout ///< root + file name, as in the pendant's working folder.
    };

    /// Reads every configuration file under `root`. Never fails: what cannot be
    /// read leaves its tables empty and is listed in `problems`.
    static ConfigSnapshot load(const QString &root, Layout layout);
    /// The rows of one file in the signal mapping format (a mapping backup, say),
    /// with their lines, appended to `rows`; false when it cannot be read.
    /// `path` is a local file path. What is wrong with the file as a whole (empty,
    /// not UTF-8, lines before its first section marker) is appended to `problems`
    /// when given, with `path` as the file.
    static bool readMappingFile(const QString &path, QVector<SnapshotMapping> &rows,
                                QVector<SnapshotFileProblem> *problems = nullptr);

    /// 1-based line of the first bytes that are not UTF-8, or 0 when all are.
    /// A sequence cut off by a line end counts as not UTF-8.
    static int firstLineNotUtf8(const QByteArray &bytes);

    /// Where the file with this controller path lies in the snapshot's folder.
    QString fixedFilePath(const QString &rdeFilePath) const;
    /// Where the function list with this controller path lies in the snapshot's
    /// folder; empty when the path leads out of the folder.
    QString listFilePath(const QString &rdeFilePath) const;

    /// The folder the files were read from.
    QString root;
    /// How the files lie under `root`.
    Layout layout = ControllerLayout;

    /// The fieldbus list as the manager holds it: the fixed Modbus TCP slave
    /// first, then the file's entries.
    QVector<BusName> buses;
    /// The short names that group signals, switched on or not: mtcp first,
    /// then those of the file's entries that carry signals.
    QStringList busShortNames;
    /// Whether the list's FreeBus entry is switched on; false without one.
    bool freeBusOpen = false;
    /// Short names of the switched-on buses that may carry signals, each once, in list order.
    QStringList enabledShortNames() const;

    /// Address areas of the fieldbus configuration file, by record name ("ModbusUser", ...).
    QHash<QString, BusAddrNumInfo> areas;
    /// Every row of the signal mapping file's two sections, in file order.
    QVector<SnapshotMapping> mappings;
    /// Every row of the group IO file's two sections, in file order.
    QVector<SnapshotGroup> groups;
    /// By module key, the text of "FunctionList/Module" in the module's list.
    QMap<QString, SnapshotModule> modules;
    /// Modules of the module list whose function list is named but could not be
    /// read (its problem is in `problems`), each with the list's controller path:
    /// their rows cannot be checked against it.
    QMap<QString, QString> unreadListModules;
    /// "name[index]" to description, as the manager reads them.
    QHash<QString, QString> descriptions;
    /// The slave device file's byte-order text, as it stands; empty without one.
    QString endian;
    /// Whether the slave device file has a byte-order element.
    bool hasEndian = false;

    /// Files that could not be read as they should, in the order they were read.
    QVector<SnapshotFileProblem> problems;

    /// Addresses a bus offers for a direction and type, as the manager's getBusNum;
    /// 0 for a bus or type it has no area for.
    int busNum(const QString &bus, BiBo dir, const QString &type) const;
};
