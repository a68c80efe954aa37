// The folder lock and the removal of temporary folders on a signal.
#include "PendantSim.h"

#include <QCryptographicHash>
#include <QDir>
#include <QFileInfo>
#include <QLockFile>
#include <QStringList>

#include <chrono>
#include <csignal>
#include <mutex>
#include <thread>
#include <unistd.h>

namespace pendantsim {
namespace {

QString lockFilePath(const QString &folder)
{
    const QFileInfo info(folder);
    const QString path = info.exists() ? info.canonicalFilePath() : info.absoluteFilePath();
    const QByteArray digest =
            QCryptographicHash::hash(QDir::cleanPath(path).toUtf8(), QCryptographicHash::Sha1);
    return QDir::tempPath() + QStringLiteral("/fbcfg-lock-")
            + QString::fromLatin1(digest.toHex().left(24)) + QStringLiteral(".lock");
}

struct Removal
{
    std::mutex mutex;
    QStringList dirs;
    int pipe[2] = {-1, -1};
    bool installed = false;
};

Removal &removal()
{
    static Removal r;
    return r;
}

const int handledSignals[] = {SIGINT, SIGTERM, SIGHUP, SIGPIPE};

// Only what is safe in a signal handler: the work happens on the thread below.
void onSignal(int signal)
{
    const unsigned char byte = static_cast<unsigned char>(signal);
    const ssize_t written = ::write(removal().pipe[1], &byte, 1);
    static_cast<void>(written);
}

void removeAndDie()
{
    Removal &r = removal();
    unsigned char byte = 0;
    while (::read(r.pipe[0], &byte, 1) != 1) { }
    {
        // The other threads may still be writing there (a fetch of the
        // manager's, say): a few passes catch what they add meanwhile.
        std::lock_guard<std::mutex> lock(r.mutex);
        for (int pass = 0; pass < 50; ++pass) {
            bool gone = true;
            for (const QString &dir : qAsConst(r.dirs)) {
                QDir(dir).removeRecursively();
                gone = gone && !QFileInfo::exists(dir);
            }
            if (gone)
                break;
            std::this_thread::sleep_for(std::chrono::milliseconds(20));
        }
    }
    const int signal = byte;
    std::signal(signal, SIG_DFL);
    ::kill(::getpid(), signal);
}

void installHandlers(Removal &r)
{
    if (r.installed || ::pipe(r.pipe) != 0)
        return;
    r.installed = true;
    std::thread(removeAndDie).detach();
    struct sigaction action = {};
    action.sa_handler = onSignal;
    sigemptyset(&action.sa_mask);
    for (const int signal : handledSignals)
        sigaction(signal, &action, nullptr);
}

} // namespace

FolderLock::FolderLock(const QString &folder)
    : m_file(std::make_unique<QLockFile>(lockFilePath(folder)))
{
    // Stale only when its process is gone, however long a transfer takes.
    m_file->setStaleLockTime(0);
}

FolderLock::~FolderLock() = default;

bool FolderLock::tryLock(int timeoutMs)
{
    return m_file->tryLock(timeoutMs);
}

bool FolderLock::isLocked() const
{
    return m_file->isLocked();
}

QString FolderLock::holder() const
{
    qint64 pid = 0;
    QString host;
    QString application;
    if (!m_file->getLockInfo(&pid, &host, &application))
        return QStringLiteral("another process");
    return application.isEmpty() ? QStringLiteral("pid %1").arg(pid)
                                 : QStringLiteral("pid %1 (%2)").arg(pid).arg(application);
}

void removeOnSignal(const QString &dir)
{
    Removal &r = removal();
    std::lock_guard<std::mutex> lock(r.mutex);
    installHandlers(r);
    if (!r.dirs.contains(dir))
        r.dirs.append(dir);
}

void forgetOnSignal(const QString &dir)
{
    Removal &r = removal();
    std::lock_guard<std::mutex> lock(r.mutex);
    r.dirs.removeAll(dir);
}

} // namespace pendantsim
