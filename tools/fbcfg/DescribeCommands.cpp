#include "Commands.h"
#include "Output.h"
#include "Session.h"

#include <QJsonArray>
#include <QJsonObject>
#include <QRegularExpression>

#include <algorithm>

namespace {

// "name[index]" split as the writer splits it.
struct Key
{
    QString name;
    QString index;
};

Key splitKey(const QString &key)
{
    const int open = key.indexOf(QLatin1Char('['));
    const int close = key.indexOf(QLatin1Char(']'));
    if (open < 0)
        return {key, QString()};
    return {key.left(open), close > open ? key.mid(open + 1, close - open - 1) : QString()};
}

} // namespace

int runDescribeList(Session &session, const Call &)
{
    if (const int rc = session.fetch(Session::UserDescriptions))
        return rc;
    const QHash<QString, QString> descriptions = session.manager()->getUseDes();
    QStringList keys = descriptions.keys();
    // By name, then by index as a number, so that fbIn[10] follows fbIn[9].
    std::sort(keys.begin(), keys.end(), [](const QString &a, const QString &b) {
        const Key ka = splitKey(a);
        const Key kb = splitKey(b);
        if (ka.name != kb.name)
            return ka.name < kb.name;
        const int ia = ka.index.toInt();
        const int ib = kb.index.toInt();
        return ia != ib ? ia < ib : a < b;
    });
    QJsonArray array;
    QVector<QStringList> rows;
    for (const QString &key : qAsConst(keys)) {
        const Key k = splitKey(key);
        array.append(QJsonObject{{QStringLiteral("key"), key},
                                 {QStringLiteral("name"), k.name},
                                 {QStringLiteral("index"), Output::numberOrText(k.index)},
                                 {QStringLiteral("description"), descriptions.value(key)}});
        rows.append({key, descriptions.value(key)});
    }
    if (session.settings().json)
        Output::json(array);
    else if (rows.isEmpty())
        Output::line(Fbcfg::tr("no descriptions"));
    else
        Output::table({Fbcfg::tr("VARIABLE"), Fbcfg::tr("DESCRIPTION")}, rows);
    return ExitOk;
}

int runDescribeSet(Session &session, const Call &call)
{
    const QString key = call.args.at(0);
    const QString text = call.args.at(1);
    // The writer does not escape: these would make the file unreadable or
    // change what it reads back.
    if (text.contains(QRegularExpression(QStringLiteral("[&<>]"))))
        return refuse(Fbcfg::tr("the description must not hold \"&\", \"<\" or \">\": the file "
                                "is written without escaping, and they would leave it unreadable"));
    const QRegularExpression shape(QStringLiteral("^([^\"<\\[\\]]+)\\[(-?[0-9]+)\\]$"));
    const QRegularExpressionMatch match = shape.match(key);
    if (!match.hasMatch())
        return refuse(Fbcfg::tr("'%1' is not NAME[INDEX] with a decimal INDEX and a NAME without "
                                "\" < [ ]")
                              .arg(key));
    if (match.captured(2).toInt() == -1)
        return refuse(Fbcfg::tr("the index -1 marks an entry that is not read back"));

    if (const int rc = session.fetch(Session::UserDescriptions))
        return rc;
    BusFileDataManager *m = session.manager();
    QHash<QString, QString> descriptions = m->getUseDes();
    const QString old = descriptions.value(key);
    if (text.isEmpty() && !descriptions.contains(key))
        return refuse(Fbcfg::tr("%1 has no description to remove").arg(key));
    if (descriptions.contains(key) && old == text) {
        Output::line(Fbcfg::tr("%1 is already described so").arg(key));
        return ExitOk;
    }
    if (text.isEmpty())
        descriptions.remove(key);
    else
        descriptions.insert(key, text);
    if (const int rc = session.writeAndSend(RDE_USER_DES_XML, [&] {
            return m->writeUserDesXml(TPU_USER_DES_XML, descriptions);
        }))
        return rc;
    const auto quoted = [](const QString &s) {
        return s.isEmpty() ? Fbcfg::tr("(none)") : QStringLiteral("\"%1\"").arg(s);
    };
    Output::line(QStringLiteral("%1: %2 -> %3").arg(key, quoted(old), quoted(text)));
    return ExitOk;
}
