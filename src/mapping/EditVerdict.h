#pragma once

#include "FieldbusConfigGlobal.h"

#include <QString>

// Whether a mapping or group edit may be made and, if not, why: what the
// screens' edit checks and validators answer, as a value. The validators
// themselves answer with texts ("ok", a module, a group number) for the
// pendant's screens; a tool, a screen or a script asks the entry points of
// BusFileDataManager (canMapFunction, canUnmapFunction, canSetGroup,
// canDeleteGroup) and gets one of these.
struct FIELDBUSCONFIG_EXPORT EditVerdict
{
    enum Kind {
        Allowed,
        EditNotAllowed, // the pendant's edit checks refuse (each showed its message box)
        UnknownModule,
        UnknownFunction, // the module declares no such function for the direction
        UnknownBus, // no bus the mapping screens offer
        BusOff,
        UnknownType, // a group type other than int, float or string
        NotANumber,
        NoAddresses, // the bus offers no address of the type
        OutOfRange, // an address or group number beyond the bus's size
        Backwards, // a group range whose first address comes after its last
        Taken, // another function holds the address
        InsideGroup, // a bool signal inside a group's range
        GroupMissing, // a group signal's group is not defined
        HoldsBool, // a group range holds a mapped bool signal
        Overlaps, // a group range overlaps another group
        GroupNumberTaken, // the number belongs to a group of another bus
        NoSuchGroup,
        GroupInUse, // signals are mapped into the group
        NotMapped, // nothing to unmap
    };

    Kind kind = Allowed;
    // What is in the way, where it applies: the function holding an address
    // or using a group, the group (number, type, range), the bus's size.
    QString module;
    QString function;
    QString groupType;
    int group = -1;
    int first = -1;
    int last = -1;
    int busSize = 0;
    // One sentence in the manager's language.
    QString text;

    bool allowed() const { return kind == Allowed; }
    // The kind's stable name for scripts and JSON: "taken", "inside-group", ...
    static QString kindName(Kind kind);
};
