#pragma once

#include "FieldbusTypes.h"

#include <QString>
#include <QVector>

// One row of a mapping to import, with the line of the file it came from.
struct ImportRow
{
    FuncAndMapInfo row;
    BiBo direction = BusInput;
    int line = 0;
};

// What an import would do, from BusFileDataManager::prepareImport, before
// finishImport changes anything: which rows it takes, which are there
// already, which it drops and why, and where the present mapping is in the way.
struct ImportReport
{
    struct Dropped
    {
        ImportRow row;
        // Stable: "repeated", "bus-off", "out-of-range", "group-missing",
        // "inside-group", "not-taken".
        QString kind;
        QString reason;
    };
    struct Collision
    {
        ImportRow row;
        // "module function" of the present row at the address.
        QString holder;
    };
    struct Moved
    {
        ImportRow row;
        FuncAndMapInfo present;
    };

    // False when the file could not be read.
    bool readable = true;
    // Rows that map a function or an address an earlier row of the same
    // direction maps: they are not imported (the collision search would
    // multiply them), and a saved mapping holding any is refused.
    QVector<Dropped> repeated;
    int taken = 0;
    int alreadyThere = 0;
    // Rows the import's cleaning removed, with the first rule that did.
    QVector<Dropped> dropped;
    QVector<Collision> collisions;
    QVector<Moved> moved;
    // Collisions or moved functions: the answer given to finishImport settles
    // them (MsgBox::Yes keeps the present mapping of moved functions, No takes
    // the imported one).
    bool needsAnswer = false;
};
