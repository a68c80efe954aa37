#pragma once

#include <QList>
#include <QString>

#include <functional>
#include <memory>

class QLockFile;

// Control API of the simulated pendant platform: the controller is a folder,
// and tests and tools steer the link, failures, robot state and message boxes.
// Every call is thread-safe.
namespace pendantsim {

struct ShownMessage
{
    int type = 0;
    QString text;
    int buttons = 0;
};

// FIELDBUS_SIM_SHOW_MESSAGES=1 prints every box shown on stderr ("warning: ..." or
// "question: ...").

// The folder standing for the controller's file system. Unset, it is
// $FIELDBUS_CONTROLLER_ROOT, else ../Controller relative to the current directory.
void setControllerRoot(const QString &dir);
QString controllerRoot();
// Where a controller path lies in the controller folder.
QString controllerFilePath(const QString &rdeFilePath);

void setConnected(bool connected);
bool isConnected();
// The next n transfer attempts of any kind fail.
void failNextTransfers(int n);
int transferAttempts();
// Sets the attempt and reboot counters back to zero.
void resetCounters();
void setTransferDelayMs(int ms);

void setLanguageId(int id);
int languageId();
void setUiStyle(int style);
int uiStyle();
void setRteAuthority(bool has);
bool rteAuthority();
void setRobotRunning(bool running);
bool robotRunning();
void setServoOn(bool on);
bool servoOn();

// Answers of the next message boxes, in order; when they run out a box answers 0.
void setMsgBoxAnswers(const QList<int> &answers);
// A tool's own way to show and answer a box; replaces the scripted answers.
void setMsgBoxHandler(std::function<int(const ShownMessage &)> handler);
QList<ShownMessage> shownMessages();
void clearShownMessages();
// Records a box and returns its answer; used by MsgBox.
int showMessage(const ShownMessage &message);

int rebootRequests();
void recordRebootRequest();

// One transfer attempt: copies `from` to `to` unless the link is down or a
// failure is due. `to` is replaced atomically; missing folders of `to` are made
// when `makeFolders` is set.
bool transferFile(const QString &from, const QString &to, bool makeFolders);

// Setting up a simulated pendant. A copy of a controller folder (the bundled
// sample, say), sub-folders and hidden files included; false at the first
// file or folder that cannot be made.
bool copyFolder(const QString &from, const QString &to);
// An application parameter file that shows every named module, for controller
// folders that bring none: the manager drops the modules the application hides.
bool writeAppParameters(const QString &path, const QStringList &moduleNames);

// One writer at a time per folder, across processes (fbcfg's writing commands,
// fbcfg-screen's Save): a lock file in the temporary folder named after the
// folder's canonical path, so that the folder itself gains no file. A lock
// whose holder died is taken over.
class FolderLock
{
public:
    explicit FolderLock(const QString &folder);
    ~FolderLock();
    FolderLock(const FolderLock &) = delete;
    FolderLock &operator=(const FolderLock &) = delete;

    // Waits up to `timeoutMs` for the lock; false while another process holds it.
    bool tryLock(int timeoutMs);
    bool isLocked() const;
    // Who holds the lock after a failed tryLock, e.g. "pid 1234 (fbcfg)".
    QString holder() const;

private:
    std::unique_ptr<QLockFile> m_file;
};

// Removes `dir` with everything in it when SIGINT, SIGTERM, SIGHUP or SIGPIPE
// ends the process, then lets the signal end it as it would have; a temporary
// copy of a controller announced as "removed at exit" then is. forgetOnSignal
// drops a folder that was removed the ordinary way.
void removeOnSignal(const QString &dir);
void forgetOnSignal(const QString &dir);

} // namespace pendantsim
