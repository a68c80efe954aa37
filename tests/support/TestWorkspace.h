#pragma once

#include <QByteArray>
#include <QString>
#include <QTemporaryDir>

// A pendant workspace for one test process: the current directory becomes
// <tmp>/pendant, so the library's local folder is <tmp>/Application/fieldbus,
// and the simulated controller is <tmp>/Controller.
class TestWorkspace
{
public:
    TestWorkspace();
    ~TestWorkspace();

    QString root() const { return m_dir.path(); }
    QString controllerDir() const;

    void putControllerFile(const QString &rdeFilePath, const QByteArray &bytes) const;
    void removeControllerFile(const QString &rdeFilePath) const;
    QByteArray controllerFile(const QString &rdeFilePath) const;

    // Also resets the simulation: link up, no failures, counters and boxes cleared.
    static void resetSimulation();

    static void writeFile(const QString &path, const QByteArray &bytes);
    static QByteArray readFile(const QString &path);

private:
    QTemporaryDir m_dir;
    QString m_previousDir;
};
