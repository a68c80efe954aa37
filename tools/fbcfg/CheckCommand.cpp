#include "Commands.h"
#include "Output.h"
#include "Session.h"
#include <fieldbusconfig/ConfigCheck.h>

#include <QJsonArray>
#include <QJsonObject>

int runCheck(Session &session, const Call &)
{
    if (const int rc = session.fetch(Session::AllFiles))
        return rc;
    const ConfigSnapshot snapshot =
            ConfigSnapshot::load(session.localDir(), ConfigSnapshot::PendantLayout);
    const QVector<CheckFinding> findings = ConfigCheck::run(snapshot);
    const int errors = ConfigCheck::errorCount(findings);
    const int warnings = findings.size() - errors;

    if (session.settings().json) {
        QJsonArray array;
        for (const CheckFinding &f : findings) {
            QJsonObject o{{QStringLiteral("file"), f.file},
                          {QStringLiteral("kind"), f.kind},
                          {QStringLiteral("severity"), f.severity},
                          {QStringLiteral("message"), f.message}};
            if (f.line > 0)
                o.insert(QStringLiteral("line"), f.line);
            if (f.direction == BusInput || f.direction == BusOutput)
                o.insert(QStringLiteral("direction"), directionKey(BiBo(f.direction)));
            const QPair<const char *, QString> texts[] = {
                    {"bus", f.bus},         {"module", f.module}, {"function", f.function},
                    {"address", f.address}, {"group", f.group},
            };
            for (const auto &text : texts) {
                if (!text.second.isEmpty())
                    o.insert(QLatin1String(text.first), text.second);
            }
            array.append(o);
        }
        Output::json(QJsonObject{{QStringLiteral("controller"), session.controllerDir()},
                                 {QStringLiteral("findings"), array},
                                 {QStringLiteral("count"), errors}});
        return errors > 0 ? ExitRefused : ExitOk;
    }

    for (const CheckFinding &f : findings) {
        const QString where = f.line > 0 ? QStringLiteral("%1:%2").arg(f.file).arg(f.line) : f.file;
        const QString mark =
                f.severity == QLatin1String("error") ? QString() : Fbcfg::tr(" (warning)");
        Output::line(QStringLiteral("%1: %2: %3%4").arg(where, f.kind, f.message, mark));
    }
    if (findings.isEmpty()) {
        Output::line(Fbcfg::tr("no problems found"));
    } else {
        const QString errorText =
                errors == 1 ? Fbcfg::tr("1 error") : Fbcfg::tr("%1 errors").arg(errors);
        const QString warningText =
                warnings == 1 ? Fbcfg::tr("1 warning") : Fbcfg::tr("%1 warnings").arg(warnings);
        Output::line(QStringLiteral("%1, %2").arg(errorText, warningText));
    }
    return errors > 0 ? ExitRefused : ExitOk;
}
