#pragma once

// What the readers of the function information file and of the function-list
// files share, for the fieldbus screens and for the monitor alike.

#include "FieldbusTypes.h"

#include <QString>
#include <QVector>

#include <pugixml.hpp>

namespace functionlist {

// One "Module" entry of the function information file.
struct ModuleEntry
{
    QString name;
    QString nameCn;
    QString path;

    // The name the pendant shows: Chinese for language 3, else English.
    QString displayName(int languageId) const;
};

// The "Module" entries of "FunctionInfo", in document order.
QVector<ModuleEntry> moduleEntries(const pugi::xml_document &doc);

// The module key of a function-list document ("FunctionList"/"Module").
QString moduleKey(const pugi::xml_document &doc);

// A function element as a record: its names and type, the rest left default.
FuncAndMapInfo functionRecord(const pugi::xml_node &function);

// Every function element of a section, in document order; the tags do not matter.
QVector<FuncAndMapInfo> functionRecords(const pugi::xml_node &section);

// The local copy of a function list in `folder`: the list's controller folder
// and its file name. Empty when the copy or its folder would leave `folder`
// (the paths come from a file on the controller).
QString localListPath(const QString &folder, const QString &rdeFilePath);

} // namespace functionlist
