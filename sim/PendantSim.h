#pragma once

#include <QList>
#include <QString>

#include <functional>
#include <memory>

class QLockFile;

/// The simulator's control API for tests and tools. The simulated pendant
/// platform stands in for the pendant's closed libraries (DataAccess,
/// rbxInterface, MsgBox, SysSettingApi): the controller is a folder, and tests
/// and tools steer the link, failures, robot state and message boxes.
/// Every call is thread-safe: one process-wide state behind a mutex.
///
/// FIELDBUS_SIM_SHOW_MESSAGES=1 prints every box shown on stderr ("warning: ..." or
/// "question: ..." for a yes/no box).
namespace pendantsim {

/// A message box as the library showed it.
struct ShownMessage
{
    int type = 0; ///< A MessageKind.
    QString text; ///< The text shown.
    int buttons = 0; ///< A MessageButtons.
};

/// The folder standing for the controller's file system. Unset (or set empty), it is
/// the environment's FIELDBUS_CONTROLLER_ROOT, else ../Controller relative to the
/// current directory.
void setControllerRoot(const QString &dir);
/// The folder standing for the controller's file system, as setControllerRoot describes.
QString controllerRoot();
/// Where a controller path lies in the controller folder: the root, a slash,
/// the path without its leading slashes.
QString controllerFilePath(const QString &rdeFilePath);

/// Takes the link to the controller down or up; it starts up. Every transfer
/// attempt fails while it is down.
void setConnected(bool connected);
/// Whether the link is up; what rbxInterface::isConnected answers.
bool isConnected();
/// The next n transfer attempts of any kind fail (n replaces what was still due).
void failNextTransfers(int n);
/// Transfer attempts since the start or resetCounters(), failed ones included.
int transferAttempts();
/// Sets the attempt and reboot counters back to zero.
void resetCounters();
/// How long each transfer attempt the link lets through waits before it
/// copies, in milliseconds, on the calling thread; 0 at the start.
void setTransferDelayMs(int ms);

/// What DataAccess::getLanguageId answers; 2 (English) at the start.
void setLanguageId(int id);
/// The language id set, 2 at the start.
int languageId();
/// What RtmUIStyle answers; 0 at the start.
void setUiStyle(int style);
/// The screen style set, 0 at the start.
int uiStyle();
/// What DataAccess::hasRteAuthority answers; true at the start.
void setRteAuthority(bool has);
/// Whether the pendant holds the RTE authority, true at the start.
bool rteAuthority();
/// What DataAccess::isRobotRunning answers; false at the start.
void setRobotRunning(bool running);
/// Whether the robot is running, false at the start.
bool robotRunning();
/// What DataAccess::isServoOn answers; false at the start.
void setServoOn(bool on);
/// Whether the servo is on, false at the start.
bool servoOn();

/// Answers of the next message boxes, in order; when they run out a box answers 0.
/// Removes a handler set before.
void setMsgBoxAnswers(const QList<int> &answers);
/// A tool's own way to show and answer a box; replaces the scripted answers.
/// It runs on the thread that shows the box, outside the simulator's lock, so
/// it may wait for a user; an empty handler brings the scripted answers back.
void setMsgBoxHandler(std::function<int(const ShownMessage &)> handler);
/// Every box shown since the start or clearShownMessages(), in order.
QList<ShownMessage> shownMessages();
/// Forgets the boxes shown so far.
void clearShownMessages();
/// Records a box and returns its answer; used by MsgBox.
int showMessage(const ShownMessage &message);

/// Reboots asked for (SysSettingApi::rebootRde) since the start or resetCounters().
int rebootRequests();
/// Counts one reboot request; used by SysSettingApi::rebootRde.
void recordRebootRequest();

/// One transfer attempt: copies `from` to `to` unless the link is down or a
/// failure is due. `to` is replaced atomically; missing folders of `to` are made
/// when `makeFolders` is set.
/// Counts the attempt, blocks the calling thread for the delay and the copy,
/// and logs why it failed in the "pendantsim" logging category.
bool transferFile(const QString &from, const QString &to, bool makeFolders);

/// Setting up a simulated pendant. A copy of a controller folder (the bundled
/// sample, say), sub-folders and hidden files included; false at the first
/// file or folder that cannot be made. A file already at the target is not
/// overwritten and fails the copy.
bool copyFolder(const QString &from, const QString &to);
/// An application parameter file that shows every named module, for controller
/// folders that bring none: the manager drops the modules the application hides.
/// Written atomically; false when it cannot be.
bool writeAppParameters(const QString &path, const QStringList &moduleNames);

/// One writer at a time per folder, across processes (fbcfg's writing commands,
/// fbcfg-screen's Save): a lock file in the temporary folder named after the
/// folder's canonical path, so that the folder itself gains no file. A lock
/// whose holder died is taken over.
///
/// Use each object from one thread at a time.
class FolderLock
{
public:
    /// Names the lock of `folder`; nothing is locked yet.
    explicit FolderLock(const QString &folder);
    /// Releases the lock if this object holds it.
    ~FolderLock();
    FolderLock(const FolderLock &) = delete;
    FolderLock &operator=(const FolderLock &) = delete;

    /// Waits up to `timeoutMs` for the lock; false while another process holds it.
    /// 0 tries once; a negative time waits for as long as it takes.
    bool tryLock(int timeoutMs);
    /// Whether this object holds the lock.
    bool isLocked() const;
    /// Who holds the lock after a failed tryLock, e.g. "pid 1234 (fbcfg)";
    /// "another process" when the lock file does not say.
    QString holder() const;

private:
    std::unique_ptr<QLockFile> m_file;
};

/// Removes `dir` with everything in it when SIGINT, SIGTERM, SIGHUP or SIGPIPE
/// ends the process, then lets the signal end it as it would have; a temporary
/// copy of a controller announced as "removed at exit" then is. The first call
/// installs the signal handlers.
void removeOnSignal(const QString &dir);
/// Drops a folder given to removeOnSignal that was removed the ordinary way.
void forgetOnSignal(const QString &dir);

} // namespace pendantsim
