#include "Commands.h"
#include "Output.h"
#include "Session.h"
#include <fieldbusconfig/ConfigDiff.h>
#include <fieldbusconfig/PendantSim.h>

#include <QDir>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonObject>
#include <QTemporaryDir>

#include <algorithm>

namespace {

QString lines(const ConfigChange &c)
{
    if (c.lineBefore > 0 && c.lineAfter > 0)
        return c.lineBefore == c.lineAfter
                ? Fbcfg::tr("line %1").arg(c.lineAfter)
                : Fbcfg::tr("line %1 -> %2").arg(c.lineBefore).arg(c.lineAfter);
    if (c.lineBefore > 0 || c.lineAfter > 0)
        return Fbcfg::tr("line %1").arg(qMax(c.lineBefore, c.lineAfter));
    return QString();
}

QJsonObject record(const ConfigChange &c)
{
    QJsonObject o{{QStringLiteral("file"), c.file},
                  {QStringLiteral("kind"), c.kind},
                  {QStringLiteral("sign"), QString(c.sign)},
                  {QStringLiteral("subject"), c.subject}};
    insertPresent(o,
                  {{{"lineBefore", c.lineBefore}, {"lineAfter", c.lineAfter}},
                   c.direction,
                   {{"before", c.before},
                    {"after", c.after},
                    {"bus", c.bus},
                    {"module", c.module},
                    {"function", c.function}},
                   {}});
    return o;
}

// "~ SUBJECT: BEFORE -> AFTER (line N)", coloured by its sign on a terminal.
QString humanLine(const ConfigChange &c, bool colour)
{
    QString value = c.sign == u'+' ? c.after : c.sign == u'-' ? c.before : QString();
    if (c.sign == u'~')
        value = QStringLiteral("%1 -> %2")
                        .arg(c.before.isEmpty() ? Fbcfg::tr("(none)") : c.before,
                             c.after.isEmpty() ? Fbcfg::tr("(none)") : c.after);
    QString text = QStringLiteral("%1 %2").arg(c.sign, c.subject);
    if (!value.isEmpty())
        text += QStringLiteral(": ") + value;
    const QString where = lines(c);
    if (!where.isEmpty())
        text += QStringLiteral(" (%1)").arg(where);
    if (!colour)
        return QStringLiteral("  ") + text;
    const char *code = c.sign == u'+' ? "32" : c.sign == u'-' ? "31" : "33";
    return QStringLiteral("  \033[%1m%2\033[0m").arg(QLatin1String(code), text);
}

QString countText(int count)
{
    return count == 1 ? Fbcfg::tr("1 change") : Fbcfg::tr("%1 changes").arg(count);
}

// The folder another configuration lies in: a controller folder, or else a
// pendant working folder.
ConfigSnapshot loadFolder(const QString &dir)
{
    const bool controller = QFileInfo(dir + QStringLiteral("/application/fidbus")).isDir();
    return ConfigSnapshot::load(
            dir, controller ? ConfigSnapshot::ControllerLayout : ConfigSnapshot::PendantLayout);
}

} // namespace

void printChanges(const QVector<ConfigChange> &changes, const QString &before, const QString &after,
                  bool json)
{
    if (json) {
        QJsonArray array;
        for (const ConfigChange &c : changes)
            array.append(record(c));
        Output::json(QJsonObject{{QStringLiteral("before"), before},
                                 {QStringLiteral("after"), after},
                                 {QStringLiteral("changes"), array},
                                 {QStringLiteral("count"), changes.size()}});
        return;
    }
    if (changes.isEmpty()) {
        Output::line(Fbcfg::tr("no differences"));
        return;
    }
    const bool colour = Output::colourful();
    Output::line(QStringLiteral("--- ") + before);
    Output::line(QStringLiteral("+++ ") + after);
    QString file;
    for (const ConfigChange &c : changes) {
        if (c.file != file) {
            file = c.file;
            Output::line(colour ? QStringLiteral("\033[1m%1\033[0m").arg(file) : file);
        }
        Output::line(humanLine(c, colour));
    }
    Output::line(countText(changes.size()));
}

int runDiff(Session &session, const Call &call)
{
    if (const int rc = session.prepare())
        return rc;
    ConfigSnapshot before;
    ConfigSnapshot after;
    QString beforeName;
    QString afterName;
    if (call.isSet(QStringLiteral("against"))) {
        const QString dir = session.userPath(call.value(QStringLiteral("against")));
        if (!QFileInfo(dir).isDir())
            return usageError(call, Fbcfg::tr("the folder %1 does not exist").arg(dir));
        before = loadFolder(dir);
        after = ConfigSnapshot::load(session.controllerDir(), ConfigSnapshot::ControllerLayout);
        // Named as the user gave them, as the check names its files.
        beforeName = QDir::cleanPath(call.value(QStringLiteral("against")));
        afterName = Fbcfg::tr("%1 (controller)").arg(session.shownControllerDir());
    } else {
        const QString local = session.localDir();
        if (!QFileInfo(local).isDir() || QDir(local).isEmpty()) {
            Output::error(Fbcfg::tr("there is no working copy in %1: give the --workspace of "
                                    "earlier commands, or compare with --against DIR")
                                  .arg(local));
            return ExitFailure;
        }
        before = ConfigSnapshot::load(session.controllerDir(), ConfigSnapshot::ControllerLayout);
        after = ConfigSnapshot::load(local, ConfigSnapshot::PendantLayout);
        beforeName = Fbcfg::tr("%1 (controller)").arg(session.shownControllerDir());
        afterName = Fbcfg::tr("%1 (working copy)").arg(local);
    }
    QVector<ConfigChange> changes = ConfigDiff::compare(before, after);
    if (!call.isSet(QStringLiteral("against"))) {
        // The working copy holds only the files that commands fetched.
        QStringList absent;
        for (const ConfigChange &c : qAsConst(changes)) {
            if (c.kind == QLatin1String("file-removed"))
                absent.append(c.file);
        }
        changes.erase(std::remove_if(changes.begin(), changes.end(),
                                     [](const ConfigChange &c) {
                                         return c.kind == QLatin1String("file-removed");
                                     }),
                      changes.end());
        if (!absent.isEmpty())
            Output::note(Fbcfg::tr("not compared, the working copy does not hold them: %1")
                                 .arg(absent.join(QStringLiteral(", "))));
    }
    printChanges(changes, beforeName, afterName, session.settings().json);
    return changes.isEmpty() ? ExitOk : ExitRefused;
}

int runDryRun(const Settings &settings, Handler handler, const Call &call)
{
    // The command runs on a throw-away copy of the controller with a throw-away
    // workspace; the real folders are only read, to compare with the copy.
    const QString startDir = QDir::currentPath();
    const QString real = settings.controller.isEmpty()
            ? Session::sampleDir()
            : QDir::cleanPath(QDir(startDir).absoluteFilePath(settings.controller));
    if (real.isEmpty() || !QFileInfo(real + QStringLiteral("/application/fidbus")).isDir()) {
        Output::error(
                Fbcfg::tr("%1 is not a controller folder: it has no application/fidbus").arg(real));
        return ExitFailure;
    }
    QTemporaryDir scratch(QDir::tempPath() + QStringLiteral("/fbcfg-dry-XXXXXX"));
    const QString copy = scratch.filePath(QStringLiteral("controller"));
    if (!scratch.isValid() || !pendantsim::copyFolder(real, copy)) {
        Output::error(Fbcfg::tr("cannot copy the controller to %1").arg(copy));
        return ExitFailure;
    }
    // Kept registered to the end: removing a removed folder does nothing.
    pendantsim::removeOnSignal(scratch.path());
    Settings trial = settings;
    trial.controller = copy;
    trial.shownController = settings.controller.isEmpty() ? real : settings.controller;
    trial.workspace = scratch.filePath(QStringLiteral("workspace"));
    // What the command says goes to stderr; stdout keeps the diff.
    Output::setLinesToStderr(true);
    int rc = ExitOk;
    {
        Session session(trial);
        rc = handler(session, call);
    }
    Output::setLinesToStderr(false);
    if (rc != ExitOk)
        return rc;
    const QVector<ConfigChange> changes =
            ConfigDiff::compare(ConfigSnapshot::load(real, ConfigSnapshot::ControllerLayout),
                                ConfigSnapshot::load(copy, ConfigSnapshot::ControllerLayout));
    Output::error(Fbcfg::tr("dry run: nothing was changed; fbcfg %1 would make %2")
                          .arg(call.name, countText(changes.size())));
    printChanges(changes, Fbcfg::tr("%1 (controller)").arg(real),
                 Fbcfg::tr("%1 after fbcfg %2").arg(real, call.name), settings.json);
    return ExitOk;
}
