#pragma once

#include <fieldbusconfig/BusFileDataManager.h>

#include <QFlags>
#include <QList>
#include <QString>
#include <QStringList>

#include <functional>
#include <memory>
#include <vector>

class QEventLoop;
class QTemporaryDir;
namespace pendantsim {
class FolderLock;
}

// What the command line chose for the whole run.
struct Settings
{
    QString controller; // as the user gave it; empty: a copy of the bundled sample
    QString workspace; // empty: a temporary one
    // The controller folder as paths in messages show it, when it is not
    // `controller` (a dry run works on a copy but speaks of the real folder).
    QString shownController;
    // Controller path of the file the command writes back; set, the command
    // holds the folder's lock from its fetch to its send, and refuses when
    // that file holds what its reader could not read cleanly.
    QString writes;
    bool chinese = false;
    bool json = false;
    bool sarif = false;
    // Warnings count as errors for the exit status.
    bool werror = false;
    int answer = 0; // to the library's questions: 1 yes, 2 no, 0 ask on a terminal
    double timeoutSeconds = 30;
};

// One run of the tool against a controller folder: the pendant workspace, the
// manager, and the waits for its answers. The manager's callbacks and message
// boxes arrive on this (the GUI) thread.
class Session : public BusObserver
{
public:
    enum File {
        FieldbusList = 0x1,
        FieldbusConfig = 0x2,
        Functions = 0x4,
        SignalMap = 0x8,
        GroupIo = 0x10,
        UserDescriptions = 0x20,
        AllFiles = 0x3f
    };
    Q_DECLARE_FLAGS(Files, File)

    explicit Session(const Settings &settings);
    ~Session() override;

    const Settings &settings() const { return m_settings; }

    // Sets up the workspace and the controller folder, without the manager.
    int prepare();
    // Sets up the workspace and the manager; ExitOk or ExitFailure.
    int open();
    // Asks the manager for the files and waits for each; opens first if needed.
    int fetch(Files files);
    // Waits for the answer to a send of the file with this controller path.
    int waitSent(const QString &rdeFilePath);
    // Writes the file with this controller path through the library and waits
    // for the answer of its send. `write` is false when the local copy cannot
    // be written; `undo` then drops the edits that were to be written.
    int writeAndSend(const QString &rdeFilePath, const std::function<bool()> &write,
                     const std::function<void()> &undo = {});

    BusFileDataManager *manager() const { return m_manager; }
    QString controllerDir() const { return m_controllerDir; }
    // The controller folder as the user gave it (or the bundled sample's own
    // path), so that the paths of messages open from the current folder.
    QString shownControllerDir() const;
    // Where the file with this controller path is, as messages name it.
    QString shownFilePath(const QString &rdeFilePath) const;
    // Says that the file with this controller path cannot be read, where it
    // is and why; ExitFailure.
    int cannotRead(const QString &rdeFilePath);
    // The library's working folder, absolute.
    QString localDir() const;
    // A path the user gave, against the directory the tool was started in.
    QString userPath(const QString &path) const;

    // A question the library asked that nobody could answer; ExitFailure
    // (after saying so) when there was one, else ExitOk.
    int unansweredQuestion();

    // The bundled sample controller, or empty when it is missing.
    static QString sampleDir();

    void onFileNotify(FileHandle handle, const QString &fileKey, bool isSuccess) override;

private:
    struct Notice
    {
        FileHandle handle;
        QString key;
        bool ok;
    };

    int prepareController();
    // The locks of a command that writes, then the refusal of unclean files.
    int guardWrite();
    int lock(const QString &folder);
    // Why a fetch of this file failed, from the check of the controller's copy.
    QString unreadableReason(const QString &rdeFilePath) const;
    int prepareAppParameters(const QString &pendantDir);
    int answerBox(int type, const QString &text, int buttons);
    // Waits for a notification; false after the time limit.
    bool waitFor(FileHandle handle, const QString &key, bool *ok);
    // Waits for one fetch; `what` names the file in messages.
    int request(int step, int steps, const QString &key, const QString &what, const QString &label,
                bool optional);

    Settings m_settings;
    QString m_startDir;
    QString m_workspace;
    QString m_controllerDir;
    std::unique_ptr<QTemporaryDir> m_temporary;
    std::vector<std::unique_ptr<pendantsim::FolderLock>> m_locks;
    BusFileDataManager *m_manager = nullptr;
    QList<Notice> m_notices;
    QEventLoop *m_loop = nullptr;
    // Error boxes shown so far; a fetch that raises one has failed.
    QStringList m_errorBoxes;
    QString m_unanswered;
    bool m_opened = false;
};

Q_DECLARE_OPERATORS_FOR_FLAGS(Session::Files)
