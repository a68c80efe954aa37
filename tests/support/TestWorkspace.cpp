#include "TestWorkspace.h"

#include "PendantSim.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QtTest>

TestWorkspace::TestWorkspace()
    : m_previousDir(QDir::currentPath())
{
    QVERIFY2(m_dir.isValid(), "no temporary folder");
    QDir(m_dir.path()).mkpath(QStringLiteral("pendant"));
    QDir(m_dir.path()).mkpath(QStringLiteral("Controller"));
    QDir::setCurrent(m_dir.path() + QStringLiteral("/pendant"));
    pendantsim::setControllerRoot(controllerDir());
    resetSimulation();
}

TestWorkspace::~TestWorkspace()
{
    QDir::setCurrent(m_previousDir);
}

QString TestWorkspace::controllerDir() const
{
    return m_dir.path() + "/Controller";
}

void TestWorkspace::putControllerFile(const QString &rdeFilePath, const QByteArray &bytes) const
{
    writeFile(pendantsim::controllerFilePath(rdeFilePath), bytes);
}

void TestWorkspace::removeControllerFile(const QString &rdeFilePath) const
{
    QFile::remove(pendantsim::controllerFilePath(rdeFilePath));
}

QByteArray TestWorkspace::controllerFile(const QString &rdeFilePath) const
{
    return readFile(pendantsim::controllerFilePath(rdeFilePath));
}

void TestWorkspace::resetSimulation()
{
    pendantsim::setConnected(true);
    pendantsim::failNextTransfers(0);
    pendantsim::setTransferDelayMs(0);
    pendantsim::resetCounters();
    pendantsim::setMsgBoxAnswers({});
    pendantsim::clearShownMessages();
}

void TestWorkspace::writeFile(const QString &path, const QByteArray &bytes)
{
    QDir().mkpath(QFileInfo(path).absolutePath());
    QFile file(path);
    QVERIFY2(file.open(QIODevice::WriteOnly | QIODevice::Truncate), qPrintable(path));
    file.write(bytes);
}

QByteArray TestWorkspace::readFile(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return QByteArray();
    return file.readAll();
}
