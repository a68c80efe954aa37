#pragma once

#include "BusFileDataManager.h"
#include "TestWorkspace.h"

#include <QObject>
#include <QStringList>

// What every manager test starts from: a workspace for the process, and for each
// test function a reset simulation and a fresh manager. Tests derive from it and
// add their own set-up in prepare().
class ManagerTest : public QObject
{
    Q_OBJECT

public:
    // dataFolder: the folder under tests/data/ that fixture() reads from.
    explicit ManagerTest(const QString &dataFolder = QString());

    static QByteArray fixture(const QString &folder, const QString &name);
    // The texts of the message boxes shown since the last reset, in order.
    static QStringList shownTexts();

protected:
    QByteArray fixture(const QString &name) const { return fixture(m_dataFolder, name); }
    virtual void prepare() { }

    TestWorkspace workspace;
    BusFileDataManager *manager = nullptr;
    // The worker's answers to function-list requests (local paths, last failed
    // path), taken over on the test's thread: the worker emits on its own.
    QList<QPair<QStringList, QString>> listResults;

private slots:
    void init();
    void cleanup();

private:
    QString m_dataFolder;
};
