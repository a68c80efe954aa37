#include "PendantSim.h"

#include <QByteArray>
#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <QLoggingCategory>
#include <QSaveFile>
#include <QThread>
#include <QXmlStreamWriter>

#include <cstdio>
#include <mutex>

namespace pendantsim {
namespace {

struct State
{
    // A standard mutex rather than QMutex, whose futex ThreadSanitizer cannot see.
    std::mutex mutex;
    QString controllerRoot;
    bool connected = true;
    int failuresDue = 0;
    int attempts = 0;
    int delayMs = 0;
    int languageId = 2;
    int uiStyle = 0;
    bool rteAuthority = true;
    bool robotRunning = false;
    bool servoOn = false;
    QList<int> answers;
    std::function<int(const ShownMessage &)> handler;
    QList<ShownMessage> shown;
    int reboots = 0;
};

State &state()
{
    static State s;
    return s;
}

template<typename T>
T locked(T State::*member)
{
    const std::lock_guard<std::mutex> lock(state().mutex);
    return state().*member;
}

template<typename T>
void setLocked(T State::*member, const T &value)
{
    const std::lock_guard<std::mutex> lock(state().mutex);
    state().*member = value;
}

} // namespace

void setControllerRoot(const QString &dir)
{
    setLocked(&State::controllerRoot, dir);
}

QString controllerRoot()
{
    const QString root = locked(&State::controllerRoot);
    if (!root.isEmpty())
        return root;
    const QByteArray env = qgetenv("FIELDBUS_CONTROLLER_ROOT");
    if (!env.isEmpty())
        return QString::fromLocal8Bit(env);
    return QStringLiteral("../Controller");
}

QString controllerFilePath(const QString &rdeFilePath)
{
    QString relative = rdeFilePath;
    while (relative.startsWith(QLatin1Char('/')))
        relative.remove(0, 1);
    return controllerRoot() + QLatin1Char('/') + relative;
}

void setConnected(bool connected)
{
    setLocked(&State::connected, connected);
}

bool isConnected()
{
    return locked(&State::connected);
}

void failNextTransfers(int n)
{
    setLocked(&State::failuresDue, n);
}

int transferAttempts()
{
    return locked(&State::attempts);
}

void resetCounters()
{
    const std::lock_guard<std::mutex> lock(state().mutex);
    state().attempts = 0;
    state().reboots = 0;
}

void setTransferDelayMs(int ms)
{
    setLocked(&State::delayMs, ms);
}

void setLanguageId(int id)
{
    setLocked(&State::languageId, id);
}

int languageId()
{
    return locked(&State::languageId);
}

void setUiStyle(int style)
{
    setLocked(&State::uiStyle, style);
}

int uiStyle()
{
    return locked(&State::uiStyle);
}

void setRteAuthority(bool has)
{
    setLocked(&State::rteAuthority, has);
}

bool rteAuthority()
{
    return locked(&State::rteAuthority);
}

void setRobotRunning(bool running)
{
    setLocked(&State::robotRunning, running);
}

bool robotRunning()
{
    return locked(&State::robotRunning);
}

void setServoOn(bool on)
{
    setLocked(&State::servoOn, on);
}

bool servoOn()
{
    return locked(&State::servoOn);
}

void setMsgBoxAnswers(const QList<int> &answers)
{
    const std::lock_guard<std::mutex> lock(state().mutex);
    state().answers = answers;
    state().handler = nullptr;
}

void setMsgBoxHandler(std::function<int(const ShownMessage &)> handler)
{
    setLocked(&State::handler, handler);
}

QList<ShownMessage> shownMessages()
{
    return locked(&State::shown);
}

void clearShownMessages()
{
    setLocked(&State::shown, QList<ShownMessage>());
}

namespace {

Q_LOGGING_CATEGORY(lcSim, "pendantsim")

// With FIELDBUS_SIM_SHOW_MESSAGES=1 a developer sees every box on stderr, as
// "warning: TEXT" or, for a yes/no box, "question: TEXT".
void printMessage(const ShownMessage &message)
{
    static const bool shown = qEnvironmentVariableIntValue("FIELDBUS_SIM_SHOW_MESSAGES") == 1;
    if (!shown)
        return;
    const QString text = message.text.simplified();
    const QByteArray line =
            (message.buttons == 3 ? QStringLiteral("question: ") : QStringLiteral("warning: "))
                    .append(text)
                    .append(QLatin1Char('\n'))
                    .toUtf8();
    std::fwrite(line.constData(), 1, size_t(line.size()), stderr);
    std::fflush(stderr);
}

// Logs why a transfer attempt failed, naming both ends and the controller folder.
bool failed(const QString &from, const QString &to, const QString &why)
{
    qCDebug(lcSim).noquote() << "pendantsim: no transfer from" << QFileInfo(from).absoluteFilePath()
                             << "to" << QFileInfo(to).absoluteFilePath() << ":" << why
                             << "(controller folder"
                             << QFileInfo(controllerRoot()).absoluteFilePath() << ")";
    return false;
}

} // namespace

int showMessage(const ShownMessage &message)
{
    printMessage(message);
    std::function<int(const ShownMessage &)> handler;
    {
        const std::lock_guard<std::mutex> lock(state().mutex);
        state().shown.append(message);
        if (!state().handler)
            return state().answers.isEmpty() ? 0 : state().answers.takeFirst();
        handler = state().handler;
    }
    // Called unlocked: a handler may ask on a terminal for as long as it likes.
    return handler(message);
}

int rebootRequests()
{
    return locked(&State::reboots);
}

void recordRebootRequest()
{
    const std::lock_guard<std::mutex> lock(state().mutex);
    ++state().reboots;
}

bool transferFile(const QString &from, const QString &to, bool makeFolders)
{
    int delayMs = 0;
    QString refusal;
    {
        const std::lock_guard<std::mutex> lock(state().mutex);
        ++state().attempts;
        delayMs = state().delayMs;
        if (!state().connected) {
            refusal = QStringLiteral("the link is down");
        } else if (state().failuresDue > 0) {
            --state().failuresDue;
            refusal = QStringLiteral("an injected failure");
        }
    }
    // Logged unlocked: the log line asks for the controller folder.
    if (!refusal.isEmpty())
        return failed(from, to, refusal);
    if (delayMs > 0)
        QThread::msleep(static_cast<unsigned long>(delayMs));

    QFile source(from);
    if (!QFileInfo(from).isFile())
        return failed(from, to, QStringLiteral("no such file"));
    if (!source.open(QIODevice::ReadOnly))
        return failed(from, to, source.errorString());
    if (makeFolders && !QDir().mkpath(QFileInfo(to).absolutePath()))
        return failed(from, to, QStringLiteral("cannot make the folder"));
    QSaveFile target(to);
    if (!target.open(QIODevice::WriteOnly))
        return failed(from, to, target.errorString());
    while (!source.atEnd()) {
        const QByteArray chunk = source.read(1 << 16);
        if (chunk.isEmpty() || target.write(chunk) != chunk.size())
            return failed(from, to, target.errorString());
    }
    return target.commit() || failed(from, to, target.errorString());
}

bool copyFolder(const QString &from, const QString &to)
{
    if (!QDir().mkpath(to))
        return false;
    QDirIterator it(from, QDir::Files | QDir::Dirs | QDir::NoDotAndDotDot | QDir::Hidden,
                    QDirIterator::Subdirectories);
    while (it.hasNext()) {
        const QString source = it.next();
        const QString target = to + QLatin1Char('/') + QDir(from).relativeFilePath(source);
        if (!(it.fileInfo().isDir() ? QDir().mkpath(target) : QFile::copy(source, target)))
            return false;
    }
    return true;
}

bool writeAppParameters(const QString &path, const QStringList &moduleNames)
{
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly))
        return false;
    QXmlStreamWriter xml(&file);
    xml.setAutoFormatting(true);
    xml.writeStartDocument();
    xml.writeStartElement(QStringLiteral("root"));
    for (const QString &name : moduleNames) {
        xml.writeStartElement(QStringLiteral("app"));
        xml.writeTextElement(QStringLiteral("appName"), name);
        xml.writeTextElement(QStringLiteral("appVisible"), QStringLiteral("true"));
        xml.writeEndElement();
    }
    xml.writeEndDocument();
    return file.commit();
}

} // namespace pendantsim
