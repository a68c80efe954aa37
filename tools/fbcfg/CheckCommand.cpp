#include "Commands.h"
#include "Output.h"
#include "Session.h"
#include <fieldbusconfig/ConfigCheck.h>

#include <QDir>
#include <QJsonArray>
#include <QJsonObject>
#include <QUrl>

namespace {

// The kinds --ignore names, or a usage error naming the known ones.
int readIgnored(const Call &call, QSet<QString> &ignored)
{
    if (!call.isSet(QStringLiteral("ignore")))
        return ExitOk;
    QStringList known;
    for (const CheckKind &kind : ConfigCheck::kinds())
        known.append(kind.id);
    for (const QString &kind : call.value(QStringLiteral("ignore")).split(QLatin1Char(','))) {
        if (!known.contains(kind.trimmed()))
            return usageError(call,
                              Fbcfg::tr("--ignore: there is no kind '%1'; the kinds are %2")
                                      .arg(kind, known.join(QStringLiteral(", "))));
        ignored.insert(kind.trimmed());
    }
    return ExitOk;
}

bool isError(const CheckFinding &f)
{
    return f.severity == QLatin1String("error");
}

// "PATH:LINE:COLUMN", as far as the finding knows them.
QString location(const QString &path, const CheckFinding &f)
{
    QString where = path;
    if (f.line > 0)
        where += QStringLiteral(":%1").arg(f.line);
    if (f.line > 0 && f.column > 0)
        where += QStringLiteral(":%1").arg(f.column);
    return where;
}

QJsonObject findingJson(const QString &path, const CheckFinding &f)
{
    QJsonObject o{{QStringLiteral("file"), f.file},
                  {QStringLiteral("path"), path},
                  {QStringLiteral("kind"), f.kind},
                  {QStringLiteral("severity"), f.severity},
                  {QStringLiteral("message"), f.message}};
    // Numbers where the file holds numbers; a malformed value stays text.
    insertPresent(o,
                  {{{"line", f.line}, {"column", f.column}},
                   f.direction,
                   {{"bus", f.bus}, {"module", f.module}, {"function", f.function}},
                   {{"address", f.address}, {"group", f.group}}});
    return o;
}

// `controllerDir` absolute.
QJsonObject sarifLog(const QString &controllerDir, const QVector<CheckFinding> &findings)
{
    QJsonArray rules;
    QHash<QString, int> ruleIndex;
    for (const CheckKind &kind : ConfigCheck::kinds()) {
        ruleIndex.insert(kind.id, rules.size());
        rules.append(QJsonObject{{QStringLiteral("id"), kind.id},
                                 {QStringLiteral("shortDescription"),
                                  QJsonObject{{QStringLiteral("text"), kind.description}}},
                                 {QStringLiteral("defaultConfiguration"),
                                  QJsonObject{{QStringLiteral("level"), kind.severity}}}});
    }
    QJsonArray results;
    for (const CheckFinding &f : findings) {
        QJsonObject physical{
                {QStringLiteral("artifactLocation"),
                 QJsonObject{{QStringLiteral("uri"),
                              QString::fromLatin1(QUrl::toPercentEncoding(f.file, "/"))},
                             {QStringLiteral("uriBaseId"), QStringLiteral("CONTROLLER")}}}};
        if (f.line > 0) {
            QJsonObject region{{QStringLiteral("startLine"), f.line}};
            if (f.column > 0)
                region.insert(QStringLiteral("startColumn"), f.column);
            physical.insert(QStringLiteral("region"), region);
        }
        results.append(QJsonObject{
                {QStringLiteral("ruleId"), f.kind},
                {QStringLiteral("ruleIndex"), ruleIndex.value(f.kind)},
                {QStringLiteral("level"), f.severity},
                {QStringLiteral("message"), QJsonObject{{QStringLiteral("text"), f.message}}},
                {QStringLiteral("locations"),
                 QJsonArray{QJsonObject{{QStringLiteral("physicalLocation"), physical}}}}});
    }
    const QJsonObject driver{{QStringLiteral("name"), QStringLiteral("fbcfg")},
                             {QStringLiteral("version"), QCoreApplication::applicationVersion()},
                             {QStringLiteral("rules"), rules}};
    // Percent-encoded: a folder name with blanks or Chinese is no valid URI otherwise.
    const QString base =
            QUrl::fromLocalFile(controllerDir + QLatin1Char('/')).toString(QUrl::FullyEncoded);
    const QJsonObject run{{QStringLiteral("tool"), QJsonObject{{QStringLiteral("driver"), driver}}},
                          {QStringLiteral("originalUriBaseIds"),
                           QJsonObject{{QStringLiteral("CONTROLLER"),
                                        QJsonObject{{QStringLiteral("uri"), base}}}}},
                          {QStringLiteral("results"), results}};
    return QJsonObject{{QStringLiteral("$schema"),
                        QStringLiteral("https://docs.oasis-open.org/sarif/sarif/v2.1.0/errata01/"
                                       "os/schemas/sarif-schema-2.1.0.json")},
                       {QStringLiteral("version"), QStringLiteral("2.1.0")},
                       {QStringLiteral("runs"), QJsonArray{run}}};
}

QString summary(int errors, int warnings)
{
    return QStringLiteral("%1, %2").arg(
            errors == 1 ? Fbcfg::tr("1 error") : Fbcfg::tr("%1 errors").arg(errors),
            warnings == 1 ? Fbcfg::tr("1 warning") : Fbcfg::tr("%1 warnings").arg(warnings));
}

} // namespace

int runCheck(Session &session, const Call &call)
{
    QSet<QString> ignoredKinds;
    if (const int rc = readIgnored(call, ignoredKinds))
        return rc;
    // The folder as it lies, not through a fetch: a broken file is a finding.
    if (const int rc = session.prepare())
        return rc;
    QVector<CheckFinding> findings = ConfigCheck::run(
            ConfigSnapshot::load(session.controllerDir(), ConfigSnapshot::ControllerLayout));
    const int before = findings.size();
    findings.erase(
            std::remove_if(findings.begin(), findings.end(),
                           [&](const CheckFinding &f) { return ignoredKinds.contains(f.kind); }),
            findings.end());
    const int ignored = before - findings.size();
    const int errors = ConfigCheck::errorCount(findings);
    const int warnings = findings.size() - errors;
    const int rc = errors > 0 || (session.settings().werror && warnings > 0) ? ExitRefused : ExitOk;
    const QString dir = session.shownControllerDir();
    const auto pathOf = [&dir](const CheckFinding &f) {
        return QDir::cleanPath(dir + QLatin1Char('/') + f.file);
    };

    if (session.settings().sarif) {
        // The folder the paths name: the sample's own, not the copy gone at exit.
        Output::json(sarifLog(session.userPath(dir), findings));
        return rc;
    }
    if (session.settings().json) {
        QJsonArray array;
        for (const CheckFinding &f : qAsConst(findings))
            array.append(findingJson(pathOf(f), f));
        Output::json(QJsonObject{{QStringLiteral("controller"), dir},
                                 {QStringLiteral("findings"), array},
                                 {QStringLiteral("count"), errors},
                                 {QStringLiteral("errors"), errors},
                                 {QStringLiteral("warnings"), warnings},
                                 {QStringLiteral("ignored"), ignored}});
        return rc;
    }
    // "error" and "warning" stay English: CI problem matchers and editors read them.
    for (const CheckFinding &f : qAsConst(findings))
        Output::line(QStringLiteral("%1: %2: %3 [%4]")
                             .arg(location(pathOf(f), f),
                                  isError(f) ? QStringLiteral("error") : QStringLiteral("warning"),
                                  f.message, f.kind));
    QString total = findings.isEmpty() ? Fbcfg::tr("no problems found") : summary(errors, warnings);
    if (ignored > 0)
        total += Fbcfg::tr(" (%1 set aside with --ignore)").arg(ignored);
    Output::line(total);
    return rc;
}
