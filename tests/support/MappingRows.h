#pragma once

// Shared by the validation and mapping-edit tests.

#include "BusFileDataManager.h"

#include <QRegularExpression>

// One row of a working mapping table; the other fields keep their defaults.
inline FuncAndMapInfo mapRow(const QString &module, const QString &name, const QString &fieldBus,
                             const QString &address, const QString &type = QStringLiteral("bool"))
{
    FuncAndMapInfo row;
    row.module = module;
    row.name = name;
    row.type = type;
    row.fieldBus = fieldBus;
    row.address = address;
    return row;
}

// Rows written "module/name@bus=address[:type]" and separated by blanks, e.g.
// "Weld/arcOn@mtcp=10 Glue/flow@group_mtcp=5:int"; the type defaults to bool.
inline QVector<FuncAndMapInfo> mapRows(const QString &text)
{
    static const QRegularExpression form(
            QStringLiteral("^([^/]*)/([^@]*)@([^=]*)=([^:]*)(?::(.+))?$"));
    QVector<FuncAndMapInfo> rows;
    for (const QString &part : text.split(QLatin1Char(' '), Qt::SkipEmptyParts)) {
        const QRegularExpressionMatch match = form.match(part);
        Q_ASSERT(match.hasMatch());
        rows.append(
                mapRow(match.captured(1), match.captured(2), match.captured(3), match.captured(4),
                       match.captured(5).isEmpty() ? QStringLiteral("bool") : match.captured(5)));
    }
    return rows;
}
