// The manager's life, the transfer worker and the routing of results, driven
// through the real transfer thread and the simulated controller.
#include "GetAndSendFile.h"
#include "ManagerTest.h"
#include "PendantSim.h"
#include "RecordingObserver.h"
#include "TestWorkspace.h"

#include <QPointer>
#include <QTimer>
#include <QtTest>
#include <pugixml.hpp>

namespace {

// Counts GUI event-loop turns, to show that waits keep the pendant responsive.
class TickCounter
{
public:
    TickCounter()
    {
        QObject::connect(&timer, &QTimer::timeout, [this] { ++ticks; });
        timer.start(10);
    }
    QTimer timer;
    int ticks = 0;
};

const QByteArray fieldbusList =
        "<?xml version=\"1.0\"?>\n<FieldbusSettingConfig>\n"
        "<Bus name=\"EtherCatSlave\" shortname=\"EthCat\"><enable>1</enable>"
        "</Bus>\n</FieldbusSettingConfig>\n";

QString lastMessageText()
{
    const QList<pendantsim::ShownMessage> shown = pendantsim::shownMessages();
    return shown.isEmpty() ? QString() : shown.last().text;
}

} // namespace

class TransferTest : public ManagerTest
{
    Q_OBJECT

    RecordingObserver observer;

    void prepare() override
    {
        observer = RecordingObserver();
        manager->attach(&observer);
    }

private slots:
    void constructionStartsTheTransferThread()
    {
        QCOMPARE(manager->thread.objectName(), QStringLiteral("BusFileDataManagerThread"));
        QVERIFY(manager->thread.isRunning());
        QCOMPARE(manager->worker->thread(), &manager->thread);
        QVERIFY(QDir(TPU_FIELDBUS_DIR).exists());

        QPointer<GetAndSendFile> worker = manager->worker;
        delete manager;
        manager = nullptr;
        QVERIFY(worker.isNull()); // deleted through the thread's finished()
    }

    void constructionTakesLanguageAndStyleOnce()
    {
        pendantsim::setLanguageId(3);
        pendantsim::setUiStyle(1);
        BusFileDataManager other;
        pendantsim::setLanguageId(2);
        pendantsim::setUiStyle(0);
        QCOMPARE(other.languageId, 3);
        QVERIFY(other.isKestraVersion());
        QVERIFY(!manager->isKestraVersion());
        QCOMPARE(BusFileDataManager::getInstance(), BusFileDataManager::getInstance());
    }

    void requestIsFetchedReadAndObserved()
    {
        workspace.putControllerFile(RDE_FIELDBUS_XML, fieldbusList);
        observer.setIsFieldXml(true);
        manager->emitGetFieldXml();
        const QString readOk = RecordingObserver::call(FileFetchedAndRead, RDE_FIELDBUS_XML, true);
        QTRY_COMPARE(observer.calls, QStringList{readOk});
        QVERIFY(manager->isFuncInfoNotified("fieldbus"));
        QCOMPARE(TestWorkspace::readFile(TPU_FIELDBUS_XML), fieldbusList);
        QCOMPARE(pendantsim::transferAttempts(), 1);

        // A second request is answered from the first fetch and not parsed again.
        workspace.putControllerFile(RDE_FIELDBUS_XML, "<FieldbusSettingConfig/>");
        manager->busList.clear();
        manager->emitGetFieldXml();
        QTRY_COMPARE(observer.calls, (QStringList{readOk, readOk}));
        QCOMPARE(pendantsim::transferAttempts(), 1);
        QCOMPARE(TestWorkspace::readFile(TPU_FIELDBUS_XML), fieldbusList);
        QVERIFY(manager->busList.isEmpty());
        QVERIFY(pendantsim::shownMessages().isEmpty());
    }

    void resultForUnknownPathIsIgnored()
    {
        observer.setIsSignalMap(true);
        observer.setIsFieldXml(true);
        bool ok = true;
        manager->slotReadFile(RDE_SIGNAL_MAP_BACKUP_CFG, ok);
        manager->slotReadFile(QStringLiteral("/application/fidbus/FIELDBUS.XML"), ok);
        bool failed = false;
        manager->slotReadFile(RDE_SIGNAL_MAP_BACKUP_CFG, failed);
        QVERIFY(observer.calls.isEmpty());
        // The failure is still reported before the path is looked at.
        QCOMPARE(pendantsim::shownMessages().size(), 1);
    }

    void failingFetchRetriesWhileGuiStaysLive()
    {
        observer.setIsFieldbusCfg(true);
        TickCounter counter;
        manager->emitGetFieldbusCfg();
        QTRY_COMPARE_WITH_TIMEOUT(observer.calls.size(), 1, 5000);
        QCOMPARE(observer.calls[0],
                 RecordingObserver::call(FileFetchedAndRead, RDE_FIELDBUS_CFG_XML, false));
        QCOMPARE(pendantsim::transferAttempts(), 10);
        QVERIFY2(counter.ticks >= 40, qPrintable(QString::number(counter.ticks)));
        // The fetch failure, then the reader's failure on the missing local copy.
        QCOMPARE(shownTexts(),
                 (QStringList{"Failed to get file from controller:"
                              "/application/fidbus/fieldbus_config.xml!",
                              "Failed to read file :fieldbus_config.xml!"}));
        for (const pendantsim::ShownMessage &box : pendantsim::shownMessages())
            QVERIFY(box.type == 2 && box.buttons == 1);
    }

    void listFetchReportsLastFailedPath()
    {
        const QStringList paths{"/application/fidbus/robot/list.xml", "",
                                "/application/fidbus/weld/missing.xml",
                                "/application/fidbus/paint/list.xml"};
        workspace.putControllerFile(paths[0], "<FunctionList/>");
        workspace.putControllerFile(paths[3], "<FunctionList/>");
        emit manager->signalGetFuncList(paths);
        QTRY_COMPARE_WITH_TIMEOUT(listResults.size(), 1, 5000);
        QCOMPARE(listResults[0].first,
                 (QStringList{"../Application/fieldbus/robot/list.xml",
                              "../Application/fieldbus/paint/list.xml"}));
        QCOMPARE(listResults[0].second, paths[2]);
        QVERIFY(!manager->worker->isFuncListGot);
        QVERIFY(QFile::exists("../Application/fieldbus/paint/list.xml"));
        QTRY_COMPARE(lastMessageText(),
                     QStringLiteral("Failed to get file from controller:%1!").arg(paths[2]));
    }

    void listFetchedOnceAnswersEmpty()
    {
        const QStringList paths{"/application/fidbus/robot/a.xml",
                                "/application/fidbus/robot/b.xml"};
        for (const QString &path : paths)
            workspace.putControllerFile(path, "<FunctionList/>");
        emit manager->signalGetFuncList(paths);
        QTRY_COMPARE(listResults.size(), 1);
        QCOMPARE(listResults[0].first.size(), 2);
        QVERIFY(listResults[0].second.isEmpty());
        emit manager->signalGetFuncList(paths);
        QTRY_COMPARE(listResults.size(), 2);
        QVERIFY(listResults[1].first.isEmpty());
        QVERIFY(listResults[1].second.isEmpty());
        QCOMPARE(pendantsim::transferAttempts(), 2);
    }

    void emptyPathTableStillAnswersFunctionListObservers()
    {
        workspace.putControllerFile(RDE_FUNC_INFO_XML, "<FunctionInfo/>");
        observer.setIsFuncList(true);
        manager->setIsGetFuncList(true);
        QSignalSpy request(manager, &BusFileDataManager::signalGetFuncList);
        manager->emitGetFuncInfo();
        QTRY_COMPARE(observer.calls.size(), 1);
        QCOMPARE(request.count(), 1);
        QVERIFY(request[0][0].toStringList().isEmpty());
        QCOMPARE(observer.calls[0], RecordingObserver::call(FileFetchedAndRead, "funcList", false));
    }

    void signalMappingIsFetchedAgainOnlyWhenCleared()
    {
        const QByteArray first = "#System_Input:\n -Module a -Name f1 -Type bool -FieldBus MTCP "
                                 "-Address 1\n#System_Output:\n";
        const QByteArray second = "#System_Input:\n -Module a -Name f2 -Type bool -FieldBus MTCP "
                                  "-Address 2\n#System_Output:\n";
        observer.setIsSignalMap(true);
        workspace.putControllerFile(RDE_SIGNAL_MAP_CFG, first);
        manager->emitGetSignalMap();
        QTRY_COMPARE(observer.calls.size(), 1);

        workspace.putControllerFile(RDE_SIGNAL_MAP_CFG, second);
        manager->emitGetSignalMap();
        QTRY_COMPARE(observer.calls.size(), 2);
        QCOMPARE(TestWorkspace::readFile(TPU_SIGNAL_MAP_CFG), first);
        QCOMPARE(manager->readMapList[BusInput].value(0).name, QStringLiteral("f1"));

        manager->setReadMapFileStatus(false);
        manager->setGetSignalMapLoad(false);
        manager->emitGetSignalMap();
        QTRY_COMPARE(observer.calls.size(), 3);
        QCOMPARE(pendantsim::transferAttempts(), 2);
        QCOMPARE(TestWorkspace::readFile(TPU_SIGNAL_MAP_CFG), second);
        QCOMPARE(manager->readMapList[BusInput].value(0).name, QStringLiteral("f2"));
    }

    void mappingSendUsesStandardPathsAndCommits()
    {
        const QByteArray content = "#System_Input:\n#System_Output:\n";
        TestWorkspace::writeFile(TPU_SIGNAL_MAP_CFG, content);
        FuncAndMapInfo edited;
        edited.name = QStringLiteral("edited");
        manager->mapList[BusOutput] = {edited};
        observer.setIsSignalMap(true);

        emit manager->signalSendSignalMap(QStringLiteral("elsewhere.cfg"),
                                          QStringLiteral("/elsewhere.cfg"));
        QTRY_COMPARE(
                observer.calls,
                QStringList{RecordingObserver::call(FileWrittenAndSent, RDE_SIGNAL_MAP_CFG, true)});
        QCOMPARE(workspace.controllerFile(RDE_SIGNAL_MAP_CFG), content);
        QVERIFY(!QFile::exists(pendantsim::controllerFilePath("/elsewhere.cfg")));
        QCOMPARE(manager->readMapList[BusOutput].value(0).name, QStringLiteral("edited"));
    }

    void sendGivesUpAtOnceWithoutLink()
    {
        TestWorkspace::writeFile(TPU_GROUP_CFG, "x");
        GroupInfo group;
        group.address = QStringLiteral("1");
        manager->curGroupTables[BusInput][0].insert("1", group);
        observer.setIsGroupIO(true);
        pendantsim::setConnected(false);
        emit manager->signalSendGroupCfg();
        const QString sendFailed =
                RecordingObserver::call(FileWrittenAndSent, RDE_GROUP_CFG, false);
        QTRY_COMPARE(observer.calls, QStringList{sendFailed});
        QCOMPARE(pendantsim::transferAttempts(), 0);
        QVERIFY(manager->savedGroupTables[BusInput][0].isEmpty()); // not committed
        QVERIFY(pendantsim::shownMessages().isEmpty());

        // With the link up but every attempt failing, a send tries ten times.
        pendantsim::setConnected(true);
        pendantsim::failNextTransfers(10);
        emit manager->signalSendGroupCfg();
        QTRY_COMPARE_WITH_TIMEOUT(observer.calls, (QStringList{sendFailed, sendFailed}), 5000);
        QCOMPARE(pendantsim::transferAttempts(), 10);
    }

    void managerFetchRetriesThreeTimesProcessingEvents()
    {
        workspace.putControllerFile(RDE_PFS_DES_XML, "<PfsUserDescription/>");
        TickCounter counter;
        pendantsim::failNextTransfers(2);
        QVERIFY(BusFileDataManager::getFileFromCtrl(RDE_PFS_DES_XML, TPU_PFS_DES_XML));
        QCOMPARE(pendantsim::transferAttempts(), 3);
        QVERIFY(counter.ticks >= 10);
        QVERIFY(pendantsim::shownMessages().isEmpty());

        pendantsim::resetCounters();
        pendantsim::failNextTransfers(3);
        QVERIFY(!BusFileDataManager::getFileFromCtrl(RDE_PFS_DES_XML, TPU_PFS_DES_XML));
        QCOMPARE(pendantsim::transferAttempts(), 3);
        QCOMPARE(lastMessageText(),
                 QStringLiteral("Failed to get file from controller:"
                                "/application/fidbus/pfs_description.xml!"));

        pendantsim::resetCounters();
        pendantsim::clearShownMessages();
        pendantsim::setConnected(false);
        QVERIFY(!BusFileDataManager::sendFileToCtrl(RDE_PFS_DES_XML, TPU_PFS_DES_XML));
        QCOMPARE(pendantsim::transferAttempts(), 3);
        QVERIFY(pendantsim::shownMessages().isEmpty());
        pendantsim::setConnected(true);
        QVERIFY(BusFileDataManager::sendFileToCtrl("/fa/copy.xml", TPU_PFS_DES_XML));
        QCOMPARE(workspace.controllerFile("/fa/copy.xml"), QByteArray("<PfsUserDescription/>"));
    }

    void loadFileLocalReportsBareFileName_data()
    {
        QTest::addColumn<QString>("path");
        QTest::addColumn<QString>("message");
        QTest::newRow("in folder") << TPU_FIELDBUS_DIR + "/missing.xml"
                                   << "Failed to read file :missing.xml!";
        QTest::newRow("no folder") << "missing.xml"
                                   << "Failed to read file :!";
    }

    void loadFileLocalReportsBareFileName()
    {
        QFETCH(QString, path);
        QFETCH(QString, message);
        pugi::xml_document doc;
        QVERIFY(!BusFileDataManager::loadFileLocal(doc, path));
        QCOMPARE(shownTexts(), QStringList{message});
    }

    void mkLocalDirRemovesEveryOccurrenceOfTheFileName()
    {
        GetAndSendFile &worker = *manager->worker;
        QVERIFY(worker.mkLocalDir(TPU_FIELDBUS_DIR + "/robot/list.xml"));
        QVERIFY(QDir(TPU_FIELDBUS_DIR + "/robot").exists());
        // A folder bearing the file's own name loses it too: ".../list/" then
        // names the working folder, which exists.
        QVERIFY(worker.mkLocalDir(TPU_FIELDBUS_DIR + "/list/list"));
        QVERIFY(!QDir(TPU_FIELDBUS_DIR + "/list").exists());
        // Single-level: a missing parent is not made.
        QVERIFY(!worker.mkLocalDir(TPU_FIELDBUS_DIR + "/a/b/list.xml"));
    }
};

QTEST_GUILESS_MAIN(TransferTest)
#include "tst_transfers.moc"
