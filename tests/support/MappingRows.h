#pragma once

// The tests' one notation for mapping rows, read by rows() and written back by describe():
//
//     [module/]name[@bus]=address[:type][,cn=nameCn][,filter=F][,invert=I][,noforce]
//
// module defaults to "gripper", bus to "mtcp", type to "bool", filter and invert to "0";
// an empty module or bus is written "/name" or "name@=address". Rows are separated by
// blanks, e.g. "Open=9 conveyor/Level@eip=3:int Weld/arcOn@group_mtcp=5:int,invert=1".

#include "FieldbusTypes.h"

#include <QRegularExpression>
#include <QStringList>
#include <QVector>

#include <cstdio>
#include <cstdlib>

using Rows = QVector<FuncAndMapInfo>;

inline FuncAndMapInfo row(const QString &text)
{
    static const QRegularExpression form(QStringLiteral(
            "^(?:([^/]*)/)?([^@=/]+)(?:@([^=]*))?=([^:,]*)(?::([^,]+))?((?:,[^,]+)*)$"));
    const QRegularExpressionMatch match = form.match(text);
    FuncAndMapInfo r;
    r.module = match.capturedStart(1) < 0 ? QStringLiteral("gripper") : match.captured(1);
    r.name = match.captured(2);
    r.fieldBus = match.capturedStart(3) < 0 ? QStringLiteral("mtcp") : match.captured(3);
    r.address = match.captured(4);
    r.type = match.capturedStart(5) < 0 ? QStringLiteral("bool") : match.captured(5);
    r.filterTime = r.invert = QStringLiteral("0");
    bool known = match.hasMatch();
    for (const QString &extra : match.captured(6).split(QLatin1Char(','), Qt::SkipEmptyParts)) {
        const QString value = extra.section(QLatin1Char('='), 1);
        if (extra.startsWith(QLatin1String("cn=")))
            r.nameCn = value;
        else if (extra.startsWith(QLatin1String("filter=")))
            r.filterTime = value;
        else if (extra.startsWith(QLatin1String("invert=")))
            r.invert = value;
        else if (extra == QLatin1String("noforce"))
            r.forceEnabled = false;
        else
            known = false;
    }
    if (!known) {
        // A mistyped row would test something else than it says: stop at once.
        std::fprintf(stderr, "bad mapping row in a test: \"%s\"\n", qPrintable(text));
        std::abort();
    }
    return r;
}

inline Rows rows(const QString &text)
{
    Rows out;
    for (const QString &part : text.split(QLatin1Char(' '), Qt::SkipEmptyParts))
        out.append(row(part));
    return out;
}

inline QString describe(const FuncAndMapInfo &r)
{
    QString text;
    if (r.module != QLatin1String("gripper"))
        text += r.module + QLatin1Char('/');
    text += r.name;
    if (r.fieldBus != QLatin1String("mtcp"))
        text += QLatin1Char('@') + r.fieldBus;
    text += QLatin1Char('=') + r.address;
    if (r.type != QLatin1String("bool"))
        text += QLatin1Char(':') + r.type;
    if (!r.nameCn.isEmpty())
        text += QLatin1String(",cn=") + r.nameCn;
    if (r.filterTime != QLatin1String("0"))
        text += QLatin1String(",filter=") + r.filterTime;
    if (r.invert != QLatin1String("0"))
        text += QLatin1String(",invert=") + r.invert;
    if (!r.forceEnabled)
        text += QLatin1String(",noforce");
    return text;
}

template<typename Container>
QString describe(const Container &list)
{
    QStringList parts;
    for (const FuncAndMapInfo &r : list)
        parts.append(describe(r));
    return parts.join(QLatin1Char(' '));
}
