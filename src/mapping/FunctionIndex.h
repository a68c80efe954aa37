#pragma once

/// @file
/// The declared functions of the modules, found by name in one step.

#include "FieldbusConfigGlobal.h"
#include "FieldbusTypes.h"

#include <QHash>
#include <QString>
#include <QStringList>
#include <QVector>

class BusFileDataManager;

/// The functions each module declares for the fieldbus, found by name or Chinese
/// name in one step.
///
/// A screen or a tool that shows or matches many mapping rows takes one for the
/// listing: the manager's per-function queries (getFuncNameCn() and a walk of
/// getFuncList()) go through a module's whole list, which makes a listing of every
/// row quadratic. The answers are the manager's: a module is named in either
/// language, and the first function of a name counts, inputs before outputs.
/// A module's lists are copied the first time it is asked for: make a new index
/// after the function lists were read again. GUI thread, like the manager.
class FIELDBUSCONFIG_EXPORT FunctionIndex
{
public:
    /// An index over `manager`'s function lists; it reads nothing yet.
    explicit FunctionIndex(BusFileDataManager *manager);

    /// The first function of the direction whose name or Chinese name is `name`,
    /// or null. Valid while the index lives.
    const FuncAndMapInfo *find(const QString &module, BiBo dir, const QString &name);
    /// The names the module declares for the direction, in its list's order.
    QStringList names(const QString &module, BiBo dir);
    /// The Chinese name of the module's first function called `name`, inputs
    /// before outputs, as getFuncNameCn() gives it without its comma; empty when
    /// there is none.
    QString chineseName(const QString &module, const QString &name);
    /// The name to show: with `chinese`, the Chinese name where there is one;
    /// else `name` itself.
    QString displayName(const QString &module, const QString &name, bool chinese);

private:
    struct Module
    {
        QVector<FuncAndMapInfo> functions[2];
        QHash<QString, int> byName[2];
        QHash<QString, QString> chineseNames;
    };
    const Module &module(const QString &name);

    BusFileDataManager *m;
    QHash<QString, Module> modules;
};
