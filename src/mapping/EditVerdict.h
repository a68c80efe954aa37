#pragma once

#include "FieldbusConfigGlobal.h"

#include <QString>

/// Whether a mapping or group edit may be made and, if not, why: what the
/// screens' edit checks and validators answer, as a value. The validators
/// themselves answer with texts ("ok", a module, a group number) for the
/// pendant's screens; a tool, a screen or a script asks the entry points of
/// BusFileDataManager (canMapFunction, canUnmapFunction, canSetGroup,
/// canDeleteGroup) and gets one of these.
///
/// A plain value: the manager makes it on the GUI thread; it may then be read
/// and passed on from any thread.
struct FIELDBUSCONFIG_EXPORT EditVerdict
{
    /// Why an edit is refused, or Allowed; kindName gives each a stable name.
    enum Kind {
        Allowed, ///< The edit may be made.
        EditNotAllowed, ///< the pendant's edit checks refuse (each showed its message box)
        UnknownModule, ///< no module known by that name
        UnknownFunction, ///< the module declares no such function for the direction
        UnknownBus, ///< no bus the mapping screens offer
        BusOff, ///< the bus is switched off
        UnknownType, ///< a group type other than int, float or string
        NotANumber, ///< the address is not a decimal number
        NoAddresses, ///< the bus offers no address of the type
        OutOfRange, ///< an address or group number beyond the bus's size
        Backwards, ///< a group range whose first address comes after its last
        Taken, ///< another function holds the address
        InsideGroup, ///< a bool signal inside a group's range
        GroupMissing, ///< a group signal's group is not defined
        HoldsBool, ///< a group range holds a mapped bool signal
        Overlaps, ///< a group range overlaps another group
        GroupNumberTaken, ///< the number belongs to a group of another bus
        NoSuchGroup, ///< the group to delete is not defined
        GroupInUse, ///< signals are mapped into the group
        NotMapped, ///< nothing to unmap
    };

    /// The answer; Allowed unless something is in the way.
    Kind kind = Allowed;
    /// Module of the function in the way (holding the address, inside the
    /// range, using the group); empty where none is.
    QString module;
    /// Name of the function in the way; empty where none is.
    QString function;
    /// Type ("int", "float", "string") of the group in the way or asked about; empty where none.
    QString groupType;
    /// Number of the group in the way or asked about, else -1.
    int group = -1;
    /// First bool address of the group in the way, else -1.
    int first = -1;
    /// Last bool address of the group in the way, else -1.
    int last = -1;
    /// The bus's size for the last range check made: addresses of the type
    /// and direction, or group numbers of the type; 0 where none was made.
    int busSize = 0;
    /// One sentence in the manager's language; empty when allowed.
    QString text;

    /// Whether the edit may be made.
    bool allowed() const { return kind == Allowed; }
    /// The kind's stable name for scripts and JSON: "taken", "inside-group", ...; empty
    /// for a value that is no Kind.
    /// Any thread may call it.
    static QString kindName(Kind kind);
};
