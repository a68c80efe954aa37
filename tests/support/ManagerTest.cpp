#include "ManagerTest.h"

#include "GetAndSendFile.h"
#include "PendantSim.h"

#include <QtTest>

ManagerTest::ManagerTest(const QString &dataFolder)
    : m_dataFolder(dataFolder)
{ }

QByteArray ManagerTest::fixture(const QString &folder, const QString &name)
{
    const QString path = QStringLiteral(FBC_TEST_DATA "/") + folder + QLatin1Char('/') + name;
    const QByteArray bytes = TestWorkspace::readFile(path);
    if (bytes.isEmpty())
        qWarning("fixture %s is missing or empty", qPrintable(path));
    return bytes;
}

QStringList ManagerTest::shownTexts()
{
    QStringList texts;
    for (const pendantsim::ShownMessage &message : pendantsim::shownMessages())
        texts.append(message.text);
    return texts;
}

void ManagerTest::init()
{
    TestWorkspace::resetSimulation();
    manager = new BusFileDataManager();
    listResults.clear();
    connect(
            manager->worker, &GetAndSendFile::resultListNotify, this,
            [this](QStringList &paths, QString &failed) {
                listResults.append({paths, failed});
            },
            Qt::QueuedConnection);
    prepare();
}

void ManagerTest::cleanup()
{
    delete manager;
    manager = nullptr;
}
