#pragma once

#include "FieldbusTypes.h"

#include <QString>
#include <QVector>

/// One row of a mapping to import, with the line of the file it came from.
struct ImportRow
{
    /// The row as the signal mapping reader parses it.
    FuncAndMapInfo row;
    /// The section the row stands in: inputs or outputs.
    BiBo direction = BusInput;
    /// 1-based line in the file it came from; 0 where it is not known.
    int line = 0;
};

/// What an import would do, from BusFileDataManager::prepareImport, before
/// finishImport changes anything: which rows it takes, which are there
/// already, which it drops and why, and where the present mapping is in the way.
///
/// A plain value made by the manager on the GUI thread; it may then be read
/// from any thread.
struct ImportReport
{
    /// A row the import leaves out, and why.
    struct Dropped
    {
        /// The row left out.
        ImportRow row;
        /// Stable: "repeated", "bus-off", "out-of-range", "group-missing",
        /// "inside-group", "not-taken".
        QString kind;
        /// One sentence in the manager's language.
        QString reason;
    };
    /// An imported row at the bus, type and address of a present row of another
    /// function; both merges keep both rows (reported, not resolved).
    struct Collision
    {
        /// The imported row.
        ImportRow row;
        /// "module function" of the present row at the address.
        QString holder;
    };
    /// An imported row of a function the present mapping maps at another
    /// address of the same bus and type.
    struct Moved
    {
        /// The imported row.
        ImportRow row;
        /// The function's present row.
        FuncAndMapInfo present;
    };

    /// False when the file could not be read.
    bool readable = true;
    /// Rows that map a function or an address an earlier row of the same
    /// direction maps: they are not imported (the collision search would
    /// multiply them), and a saved mapping holding any is refused.
    QVector<Dropped> repeated;
    /// How many rows the import takes.
    int taken = 0;
    /// How many rows the present mapping holds already, so they change nothing.
    int alreadyThere = 0;
    /// Rows the import's cleaning removed, with the first rule that did.
    QVector<Dropped> dropped;
    /// Imported rows at addresses present rows hold.
    QVector<Collision> collisions;
    /// Imported rows of functions the present mapping maps elsewhere.
    QVector<Moved> moved;
    /// Collisions or moved functions: the answer given to finishImport settles
    /// them (MsgBox::Yes keeps the present mapping of moved functions, No takes
    /// the imported one).
    bool needsAnswer = false;
};
