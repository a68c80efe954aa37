#include "Session.h"

#include "Output.h"
#include <fieldbusconfig/ConfigCheck.h>
#include <fieldbusconfig/ConfigSnapshot.h>
#include <fieldbusconfig/FieldbusNames.h>
#include <fieldbusconfig/PendantSim.h>

#include <QDir>
#include <QEventLoop>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include <QTimer>

#include <cstdio>

namespace {

const QString funcListKey = QStringLiteral("funcList");

QString fileName(const QString &path)
{
    return path.section(QLatin1Char('/'), -1);
}

// Where the sample controller may be: installed beside the tool, or in the
// source tree of a build.
QStringList sampleCandidates()
{
    const QDir binDir(QCoreApplication::applicationDirPath());
    return {QDir::cleanPath(binDir.absoluteFilePath(
                    QStringLiteral(FBCFG_DATA_FROM_BIN "/examples/controller"))),
            QStringLiteral(FBCFG_SOURCE_SAMPLE)};
}

} // namespace

QString Session::sampleDir()
{
    const QStringList candidates = sampleCandidates();
    const auto found = std::find_if(candidates.cbegin(), candidates.cend(),
                                    [](const QString &dir) { return QFileInfo(dir).isDir(); });
    return found == candidates.cend() ? QString() : *found;
}

Session::Session(const Settings &settings)
    : m_settings(settings)
    , m_startDir(QDir::currentPath())
{ }

Session::~Session()
{
    if (m_manager) {
        m_manager->detach(this);
        // Stops the transfer thread before the application goes away.
        delete m_manager;
    }
    if (m_temporary)
        pendantsim::forgetOnSignal(m_temporary->path());
    pendantsim::setMsgBoxHandler(nullptr);
    QDir::setCurrent(m_startDir);
}

QString Session::localDir() const
{
    return QDir::cleanPath(
            QDir(m_workspace + QStringLiteral("/pendant")).absoluteFilePath(TPU_FIELDBUS_DIR));
}

QString Session::userPath(const QString &path) const
{
    return QDir::cleanPath(QDir(m_startDir).absoluteFilePath(path));
}

QString Session::shownControllerDir() const
{
    if (!m_settings.shownController.isEmpty())
        return m_settings.shownController;
    return m_settings.controller.isEmpty() ? sampleDir() : QDir::cleanPath(m_settings.controller);
}

QString Session::shownFilePath(const QString &rdeFilePath) const
{
    return QDir::cleanPath(shownControllerDir() + rdeFilePath);
}

int Session::lock(const QString &folder)
{
    auto lock = std::make_unique<pendantsim::FolderLock>(folder);
    if (!lock->tryLock(0))
        Output::error(
                Fbcfg::tr("waiting for %1, which %2 is changing").arg(folder, lock->holder()));
    if (!lock->isLocked() && !lock->tryLock(int(m_settings.timeoutSeconds * 1000))) {
        Output::error(Fbcfg::tr("busy: %1 is being changed by %2; waited %3 s (--timeout)")
                              .arg(folder, lock->holder())
                              .arg(m_settings.timeoutSeconds));
        return ExitFailure;
    }
    m_locks.push_back(std::move(lock));
    return ExitOk;
}

int Session::guardWrite()
{
    if (m_settings.writes.isEmpty())
        return ExitOk;
    if (const int rc = lock(m_controllerDir))
        return rc;
    // A missing file is the fetch's to report, or one the writer makes.
    if (!QFileInfo(m_controllerDir + m_settings.writes).isFile())
        return ExitOk;
    const QVector<CheckFinding> blockers =
            ConfigCheck::writeBlockers(ConfigCheck::run(ConfigSnapshot::load(
                                               m_controllerDir, ConfigSnapshot::ControllerLayout)),
                                       m_settings.writes);
    if (blockers.isEmpty())
        return ExitOk;
    for (const CheckFinding &f : blockers) {
        const QString where = f.line > 0
                ? QStringLiteral("%1:%2").arg(shownFilePath(m_settings.writes)).arg(f.line)
                : shownFilePath(m_settings.writes);
        Output::note(QStringLiteral("%1: error: %2 [%3]").arg(where, f.message, f.kind));
    }
    Output::error(Fbcfg::tr("refused: nothing was written; %1 holds what its reader cannot read "
                            "back as it stands, and writing the file would change it. Fix the "
                            "lines above (fbcfg check lists every problem) and run the command "
                            "again")
                          .arg(shownFilePath(m_settings.writes)));
    return ExitRefused;
}

QString Session::unreadableReason(const QString &rdeFilePath) const
{
    const QString file = rdeFilePath.mid(1);
    const QVector<CheckFinding> findings = ConfigCheck::run(
            ConfigSnapshot::load(m_controllerDir, ConfigSnapshot::ControllerLayout));
    for (const CheckFinding &f : findings) {
        if (f.file == file && f.severity == QLatin1String("error"))
            return f.line > 0 ? Fbcfg::tr("line %1: %2").arg(f.line).arg(f.message) : f.message;
    }
    return QString();
}

int Session::cannotRead(const QString &rdeFilePath)
{
    Output::endProgress();
    const QString reason = unreadableReason(rdeFilePath);
    Output::error(reason.isEmpty() ? Fbcfg::tr("cannot read %1; fbcfg check lists every problem "
                                               "of the configuration")
                                             .arg(shownFilePath(rdeFilePath))
                                   : Fbcfg::tr("cannot read %1: %2; fbcfg check lists every "
                                               "problem of the configuration")
                                             .arg(shownFilePath(rdeFilePath), reason));
    return ExitFailure;
}

int Session::prepare()
{
    if (!m_workspace.isEmpty())
        return ExitOk;
    if (m_settings.workspace.isEmpty()) {
        m_temporary =
                std::make_unique<QTemporaryDir>(QDir::tempPath() + QStringLiteral("/fbcfg-XXXXXX"));
        if (!m_temporary->isValid()) {
            Output::error(Fbcfg::tr("cannot make a temporary workspace: %1")
                                  .arg(m_temporary->errorString()));
            return ExitFailure;
        }
        m_workspace = m_temporary->path();
        pendantsim::removeOnSignal(m_workspace);
    } else {
        m_workspace = userPath(m_settings.workspace);
        if (!QDir().mkpath(m_workspace)) {
            Output::error(Fbcfg::tr("cannot make the workspace %1").arg(m_workspace));
            return ExitFailure;
        }
        // Its working copy and its copy of the sample change with every command.
        if (const int rc = lock(m_workspace))
            return rc;
    }
    return prepareController();
}

int Session::open()
{
    if (m_opened)
        return ExitOk;
    if (const int rc = prepare())
        return rc;
    if (const int rc = guardWrite())
        return rc;

    const QString pendantDir = m_workspace + QStringLiteral("/pendant");
    if (!QDir().mkpath(pendantDir)) {
        Output::error(Fbcfg::tr("cannot make %1").arg(pendantDir));
        return ExitFailure;
    }
    if (const int rc = prepareAppParameters(pendantDir))
        return rc;
    // The library finds its working folder and the parameter files from here.
    QDir::setCurrent(pendantDir);

    pendantsim::setControllerRoot(m_controllerDir);
    // The manager takes the language once, when it is made.
    pendantsim::setLanguageId(m_settings.chinese ? fieldbusnames::chineseLanguageId
                                                 : fieldbusnames::englishLanguageId);
    pendantsim::setMsgBoxHandler([this](const pendantsim::ShownMessage &message) {
        return answerBox(message.type, message.text, message.buttons);
    });

    m_manager = BusFileDataManager::getInstance();
    setIsEveryFile(true);
    m_manager->attach(this);
    m_opened = true;
    return ExitOk;
}

int Session::prepareController()
{
    if (!m_settings.controller.isEmpty()) {
        m_controllerDir = userPath(m_settings.controller);
        if (!QFileInfo(m_controllerDir).isDir()) {
            Output::error(
                    Fbcfg::tr("the controller folder %1 does not exist").arg(m_controllerDir));
            return ExitFailure;
        }
        if (!QFileInfo(m_controllerDir + QStringLiteral("/application/fidbus")).isDir()) {
            Output::error(Fbcfg::tr("%1 is not a controller folder: it has no application/fidbus")
                                  .arg(m_controllerDir));
            return ExitFailure;
        }
        return ExitOk;
    }

    const QString sample = sampleDir();
    if (sample.isEmpty()) {
        Output::error(Fbcfg::tr("the sample controller is missing (looked in %1); give one with "
                                "--controller")
                              .arg(sampleCandidates().join(QStringLiteral(", "))));
        return ExitFailure;
    }
    // A fresh copy each run: the sample itself is never changed.
    m_controllerDir = m_workspace + QStringLiteral("/Controller");
    QDir(m_controllerDir).removeRecursively();
    if (!pendantsim::copyFolder(sample, m_controllerDir)) {
        Output::error(Fbcfg::tr("cannot copy the sample controller to %1").arg(m_controllerDir));
        return ExitFailure;
    }
    Output::error(m_temporary ? Fbcfg::tr("working on a copy of the sample controller in %1 "
                                          "(removed at exit)")
                                        .arg(m_controllerDir)
                              : Fbcfg::tr("working on a copy of the sample controller in %1")
                                        .arg(m_controllerDir));
    return ExitOk;
}

int Session::prepareAppParameters(const QString &pendantDir)
{
    const QStringList languages{QStringLiteral("en"), QStringLiteral("cn")};
    QMap<QString, SnapshotModule> modules;
    bool modulesRead = false;
    for (const QString &language : languages) {
        const QString name = QStringLiteral("appParameters_%1.xml").arg(language);
        const QString target = pendantDir + QLatin1Char('/') + name;
        const QString source = m_controllerDir + QStringLiteral("/pendant/") + name;
        QFile::remove(target);
        if (QFileInfo(source).isFile()) {
            if (!QFile::copy(source, target)) {
                Output::error(Fbcfg::tr("cannot copy %1 to %2").arg(source, target));
                return ExitFailure;
            }
            continue;
        }
        if (!modulesRead) {
            modules =
                    ConfigSnapshot::load(m_controllerDir, ConfigSnapshot::ControllerLayout).modules;
            modulesRead = true;
        }
        QStringList names;
        for (const SnapshotModule &module : qAsConst(modules))
            names.append(language == QLatin1String("en") ? module.name : module.nameCn);
        if (!pendantsim::writeAppParameters(target, names)) {
            Output::error(Fbcfg::tr("cannot write %1").arg(target));
            return ExitFailure;
        }
    }
    return ExitOk;
}

int Session::answerBox(int type, const QString &text, int buttons)
{
    // "warning:" and "question:" stay untranslated: scripts look for them.
    const QString shown = Output::folded(text);
    if (buttons != YesNoButtons) {
        Output::note(QStringLiteral("warning: ") + shown);
        if (type == ErrorMessage)
            m_errorBoxes.append(shown);
        return MsgBox::Yes;
    }
    Output::note(QStringLiteral("question: ") + shown);
    if (m_settings.answer != 0)
        return m_settings.answer;
    if (!Output::stdinIsTerminal()) {
        // Nobody to ask: answer no, and the command stops before it changes anything.
        m_unanswered = shown;
        return MsgBox::No;
    }
    const QString yes = Fbcfg::tr("y");
    const QString no = Fbcfg::tr("n");
    for (;;) {
        Output::endProgress();
        fputs(Fbcfg::tr("answer %1 or %2: ").arg(yes, no).toUtf8().constData(), stderr);
        fflush(stderr);
        char buffer[64] = {};
        if (!fgets(buffer, sizeof buffer, stdin)) {
            m_unanswered = shown;
            return MsgBox::No;
        }
        const QString reply = QString::fromLocal8Bit(buffer).trimmed().toLower();
        if (reply == yes || reply == QLatin1String("y") || reply == QLatin1String("yes"))
            return MsgBox::Yes;
        if (reply == no || reply == QLatin1String("n") || reply == QLatin1String("no"))
            return MsgBox::No;
    }
}

int Session::unansweredQuestion()
{
    if (m_unanswered.isEmpty())
        return ExitOk;
    Output::error(Fbcfg::tr("nothing was changed: the library asks \"%1\" and there is no "
                            "terminal to answer it; answer with --yes or --no")
                          .arg(m_unanswered));
    return ExitFailure;
}

void Session::onFileNotify(FileHandle handle, const QString &fileKey, bool isSuccess)
{
    m_notices.append({handle, fileKey, isSuccess});
    if (m_loop)
        m_loop->quit();
}

bool Session::waitFor(FileHandle handle, const QString &key, bool *ok)
{
    QTimer timer;
    timer.setSingleShot(true);
    timer.start(int(m_settings.timeoutSeconds * 1000));
    for (;;) {
        for (int i = 0; i < m_notices.size(); ++i) {
            if (m_notices.at(i).handle == handle && m_notices.at(i).key == key) {
                *ok = m_notices.takeAt(i).ok;
                return true;
            }
        }
        if (!timer.isActive())
            return false;
        QEventLoop loop;
        QObject::connect(&timer, &QTimer::timeout, &loop, &QEventLoop::quit);
        m_loop = &loop;
        loop.exec();
        m_loop = nullptr;
    }
}

int Session::request(int step, int steps, const QString &key, const QString &what,
                     const QString &label, bool optional)
{
    Output::progress(Fbcfg::tr("reading %1/%2 %3").arg(step).arg(steps).arg(label));
    const int errorsBefore = m_errorBoxes.size();
    bool ok = false;
    if (!waitFor(FileFetchedAndRead, key, &ok)) {
        Output::error(Fbcfg::tr("no answer from the library within %1 s while waiting for %2")
                              .arg(m_settings.timeoutSeconds)
                              .arg(what));
        return ExitFailure;
    }
    const bool boxShown = m_errorBoxes.size() > errorsBefore;
    // An empty module table gives no list to read, which is no failure.
    if (optional || (ok && !boxShown) || (key == funcListKey && !boxShown))
        return ExitOk;
    if (key != funcListKey)
        return cannotRead(key);
    Output::endProgress();
    Output::error(Fbcfg::tr("cannot read %1; fbcfg check lists every problem of the configuration")
                          .arg(what));
    return ExitFailure;
}

int Session::fetch(Files files)
{
    if (const int rc = open())
        return rc;
    struct Step
    {
        File file;
        QString rdeFilePath;
        void (BusFileDataManager::*emitGet)();
    };
    const Step plan[] = {
            {FieldbusList, RDE_FIELDBUS_XML, &BusFileDataManager::emitGetFieldXml},
            {FieldbusConfig, RDE_FIELDBUS_CFG_XML, &BusFileDataManager::emitGetFieldbusCfg},
            {Functions, RDE_FUNC_INFO_XML, &BusFileDataManager::emitGetFuncInfo},
            {SignalMap, RDE_SIGNAL_MAP_CFG, &BusFileDataManager::emitGetSignalMap},
            {GroupIo, RDE_GROUP_CFG, &BusFileDataManager::emitGetGroupIo},
            {UserDescriptions, RDE_USER_DES_XML, &BusFileDataManager::emitGetUserDes},
    };
    int steps = 0;
    for (const Step &step : plan) {
        if (files & step.file)
            steps += step.file == Functions ? 2 : 1;
    }
    int done = 0;
    // One request at a time, so that a failure names its file.
    for (const Step &step : plan) {
        if (!(files & step.file))
            continue;
        if (step.file == Functions)
            m_manager->setIsGetFuncList(true);
        (m_manager->*step.emitGet)();
        // A controller without description file has no descriptions, as on the pendant.
        const bool optional = step.file == UserDescriptions;
        if (const int rc = request(++done, steps, step.rdeFilePath, step.rdeFilePath,
                                   fileName(step.rdeFilePath), optional))
            return rc;
        if (step.file == Functions) {
            if (const int rc = request(++done, steps, funcListKey,
                                       Fbcfg::tr("the function lists named in %1")
                                               .arg(shownFilePath(RDE_FUNC_INFO_XML)),
                                       Fbcfg::tr("function lists"), false))
                return rc;
        }
    }
    Output::endProgress();
    return ExitOk;
}

int Session::waitSent(const QString &rdeFilePath)
{
    bool ok = false;
    if (!waitFor(FileWrittenAndSent, rdeFilePath, &ok)) {
        Output::error(Fbcfg::tr("no answer from the library within %1 s while waiting for %2")
                              .arg(m_settings.timeoutSeconds)
                              .arg(rdeFilePath));
        return ExitFailure;
    }
    if (!ok) {
        Output::error(Fbcfg::tr("sending %1 to the controller failed").arg(rdeFilePath));
        return ExitFailure;
    }
    return ExitOk;
}

int Session::writeAndSend(const QString &rdeFilePath, const std::function<bool()> &write,
                          const std::function<void()> &undo)
{
    if (!write()) {
        if (undo)
            undo();
        Output::error(Fbcfg::tr("cannot write the local copy of %1").arg(rdeFilePath));
        return ExitFailure;
    }
    return waitSent(rdeFilePath);
}
