// Faults of the link, the controller and the file system, and broken files: what
// the pendant sees, and that no earlier file or table is lost beyond that.
#include "ManagerTest.h"
#include "PendantSim.h"
#include "RecordingObserver.h"

#include <QDirIterator>
#include <QElapsedTimer>
#include <QRandomGenerator>
#include <QtTest>

using Reader = bool (BusFileDataManager::*)();
Q_DECLARE_METATYPE(Reader)

namespace {

const QByteArray mapping = "#System_Input:\n -Module a -Name f -Type bool -FieldBus MTCP "
                           "-Address 1\n#System_Output:\n";
const QByteArray fieldbusList = "<FieldbusSettingConfig><Bus name=\"EtherCatSlave\" "
                                "shortname=\"ethcat\"><enable>1</enable></Bus>"
                                "</FieldbusSettingConfig>\n";

// Every file under `root`, for proving that nothing was written elsewhere.
QStringList filesUnder(const QString &root)
{
    QStringList files;
    QDirIterator it(root, QDir::Files | QDir::Hidden, QDirIterator::Subdirectories);
    while (it.hasNext())
        files << it.next();
    files.sort();
    return files;
}

} // namespace

class FaultTest : public ManagerTest
{
    Q_OBJECT

    RecordingObserver observer;

    void prepare() override
    {
        QDir(TPU_FIELDBUS_DIR).removeRecursively();
        QDir().mkpath(TPU_FIELDBUS_DIR);
        observer = RecordingObserver();
        observer.setIsSignalMap(true);
        observer.setIsFieldXml(true);
        manager->attach(&observer);
    }

    QString fetchedMapping(bool ok) const
    {
        return RecordingObserver::call(FileFetchedAndRead, RDE_SIGNAL_MAP_CFG, ok);
    }

private slots:
    // Ten attempts per fetch and per send; the tenth failure gives up.
    void failuresThenSuccess_data()
    {
        QTest::addColumn<int>("failures");
        QTest::newRow("1") << 1;
        QTest::newRow("9") << 9;
        QTest::newRow("10") << 10;
    }
    void failuresThenSuccess()
    {
        QFETCH(int, failures);
        const bool ok = failures < 10;
        workspace.putControllerFile(RDE_SIGNAL_MAP_CFG, mapping);
        pendantsim::failNextTransfers(failures);
        manager->emitGetSignalMap();
        QTRY_COMPARE(observer.calls.size(), 1);
        QCOMPARE(observer.calls[0], fetchedMapping(ok));
        QCOMPARE(pendantsim::transferAttempts(), qMin(failures + 1, 10));

        if (!ok)
            return;
        // A send fails the same way and keeps the local file that was written.
        manager->mapList[BusInput][0].address = "2";
        pendantsim::resetCounters();
        pendantsim::failNextTransfers(failures);
        QVERIFY(manager->writeSendSignalMapCfg(TPU_SIGNAL_MAP_CFG, RDE_SIGNAL_MAP_CFG));
        QTRY_COMPARE(observer.calls.size(), 2);
        QCOMPARE(observer.calls[1],
                 RecordingObserver::call(FileWrittenAndSent, RDE_SIGNAL_MAP_CFG, true));
        QCOMPARE(workspace.controllerFile(RDE_SIGNAL_MAP_CFG),
                 TestWorkspace::readFile(TPU_SIGNAL_MAP_CFG));
    }

    // Without a link a fresh pendant has nothing; with an earlier local copy the
    // failed fetch re-reads that copy and reports success, after the error box.
    void linkDown_data()
    {
        QTest::addColumn<bool>("earlierCopy");
        QTest::newRow("fresh") << false;
        QTest::newRow("earlier copy") << true;
    }
    void linkDown()
    {
        QFETCH(bool, earlierCopy);
        if (earlierCopy)
            TestWorkspace::writeFile(TPU_SIGNAL_MAP_CFG, mapping);
        workspace.putControllerFile(RDE_SIGNAL_MAP_CFG, "#System_Input:\n#System_Output:\n");
        pendantsim::setConnected(false);
        manager->emitGetSignalMap();
        QTRY_COMPARE(observer.calls.size(), 1);
        QCOMPARE(observer.calls[0], fetchedMapping(earlierCopy));
        QCOMPARE(manager->mapList[BusInput].size(), earlierCopy ? 1 : 0);
        QCOMPARE(shownTexts().value(0),
                 QStringLiteral("Failed to get file from controller:%1!").arg(RDE_SIGNAL_MAP_CFG));
        QCOMPARE(TestWorkspace::readFile(TPU_SIGNAL_MAP_CFG), earlierCopy ? mapping : QByteArray());
    }

    // The worker transfers; the GUI thread keeps turning its event loop meanwhile.
    // (getAndReadPfsDesc, getAndReadFbslave and the backup copy run on the calling
    // thread and keep it live by processing events between attempts.)
    void slowControllerNeverStallsTheGui()
    {
        workspace.putControllerFile(RDE_FIELDBUS_XML, fieldbusList);
        pendantsim::setTransferDelayMs(400);
        QElapsedTimer clock;
        qint64 last = 0, longest = 0;
        QTimer ticker;
        connect(&ticker, &QTimer::timeout, [&] {
            longest = qMax(longest, clock.elapsed() - last);
            last = clock.elapsed();
        });
        clock.start();
        ticker.start(5);
        manager->emitGetFieldXml();
        QTRY_COMPARE(observer.calls.size(), 1);
        QVERIFY(clock.elapsed() >= 400);
        QVERIFY2(longest <= 50, qPrintable(QString::number(longest)));
    }

    // A local copy gone between fetch and read is a failed read, told only to the
    // observers; the tables stay.
    void fileVanishesBeforeRead()
    {
        workspace.putControllerFile(RDE_SIGNAL_MAP_CFG, mapping);
        manager->emitGetSignalMap();
        QTRY_COMPARE(observer.calls.size(), 1);
        manager->isSignalMapRead = false;
        QVERIFY(QFile::remove(TPU_SIGNAL_MAP_CFG));
        bool fetched = true;
        manager->slotReadFile(RDE_SIGNAL_MAP_CFG, fetched);
        QCOMPARE(observer.calls.last(), fetchedMapping(false));
        QCOMPARE(manager->mapList[BusInput].size(), 1);
        QVERIFY(shownTexts().isEmpty());
    }

    // A folder where a file must go: the fetch and the write fail, the controller
    // and the folder stay as they were.
    void folderWhereFileMustGo()
    {
        workspace.putControllerFile(RDE_SIGNAL_MAP_CFG, mapping);
        QVERIFY(QDir().mkpath(TPU_SIGNAL_MAP_CFG + "/inside"));
        manager->emitGetSignalMap();
        QTRY_COMPARE(observer.calls.size(), 1);
        QCOMPARE(observer.calls[0], fetchedMapping(false));
        manager->mapList[BusInput] = manager->readMapList[BusInput];
        QVERIFY(!manager->writeSendSignalMapCfg(TPU_SIGNAL_MAP_CFG, RDE_SIGNAL_MAP_CFG));
        QVERIFY(QFileInfo(TPU_SIGNAL_MAP_CFG + "/inside").isDir());
        QCOMPARE(workspace.controllerFile(RDE_SIGNAL_MAP_CFG), mapping);
        // A file where a folder must go.
        TestWorkspace::writeFile(TPU_FIELDBUS_DIR + "/export", "file");
        QVERIFY(!manager->writeSendSignalMapCfg(TPU_FIELDBUS_DIR + "/export/m.cfg", "/x/m.cfg"));
        QCOMPARE(TestWorkspace::readFile(TPU_FIELDBUS_DIR + "/export"), QByteArray("file"));
    }

    // Broken local copies: each reader answers as its format says and never crashes.
    void brokenFiles_data()
    {
        QTest::addColumn<QString>("path");
        QTest::addColumn<Reader>("reader");
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<bool>("ok");
        QByteArray garbage(64 * 1024, '\0');
        QRandomGenerator random(7);
        for (char &c : garbage)
            c = char(random.bounded(256));
        const QByteArray longLine(20 * 1024 * 1024, 'x');
        const struct
        {
            const char *name;
            QString path;
            Reader reader;
            bool textFile;
        } readers[] = {
                {"signal mapping", TPU_SIGNAL_MAP_CFG, &BusFileDataManager::readSignalMapCfg, true},
                {"group IO", TPU_GROUP_CFG, &BusFileDataManager::readGroupCfg, true},
                {"fieldbus list", TPU_FIELDBUS_XML, &BusFileDataManager::readFieldbusXml, false},
                {"fieldbus configuration", TPU_FIELDBUS_CFG_XML,
                 &BusFileDataManager::readFieldbusCfg, false},
                {"function information", TPU_FUNC_INFO_XML, &BusFileDataManager::readFuncInfoXml,
                 false},
        };
        // Line files take any bytes; XML files refuse what does not parse.
        for (const auto &r : readers) {
            const QByteArray start = r.textFile ? mapping.left(40) : fieldbusList.left(40);
            QTest::addRow("%s: truncated mid-line", r.name)
                    << r.path << r.reader << start << r.textFile;
            QTest::addRow("%s: garbage", r.name) << r.path << r.reader << garbage << r.textFile;
            QTest::addRow("%s: 20 MB line", r.name) << r.path << r.reader << longLine << r.textFile;
        }
        QTest::newRow("fieldbus list: folder")
                << TPU_FIELDBUS_XML << Reader(&BusFileDataManager::readFieldbusXml) << QByteArray()
                << false;
        QTest::newRow("function information: folder")
                << TPU_FUNC_INFO_XML << Reader(&BusFileDataManager::readFuncInfoXml) << QByteArray()
                << false;
    }
    void brokenFiles()
    {
        QFETCH(QString, path);
        QFETCH(Reader, reader);
        QFETCH(QByteArray, bytes);
        if (bytes.isEmpty())
            QVERIFY(QDir().mkpath(path));
        else
            TestWorkspace::writeFile(path, bytes);
        QElapsedTimer clock;
        clock.start();
        QTEST((manager->*reader)(), "ok");
        QVERIFY2(clock.elapsed() < 5000, qPrintable(QString::number(clock.elapsed())));
    }

    // Bytes that are not UTF-8 would come back as U+FFFD: the write-back is refused
    // with a message, and the file keeps its bytes. A clean read lifts the refusal.
    void notUtf8IsNeverWrittenBack_data()
    {
        QTest::addColumn<QString>("path");
        QTest::addColumn<QByteArray>("bytes");
        QTest::newRow("signal mapping")
                << TPU_SIGNAL_MAP_CFG
                << QByteArray("#System_Input:\n -Module a -Name f\xff -Type bool -FieldBus MTCP "
                              "-Address 1\n#System_Output:\n");
        QTest::newRow("group IO") << TPU_GROUP_CFG
                                  << QByteArray("#Group_Input:\n-Type int -Address 1 -FieldBus "
                                                "mtcp\xfe -DeviceMap 1-2\n");
        QTest::newRow("user descriptions")
                << TPU_USER_DES_XML
                << QByteArray("<BioUserDescription><FidbusVariable Variable=\"v\"><Index>1</Index>"
                              "<Description>\xe4\xb8</Description></FidbusVariable>"
                              "</BioUserDescription>");
    }
    void notUtf8IsNeverWrittenBack()
    {
        QFETCH(QString, path);
        QFETCH(QByteArray, bytes);
        const auto readAndWriteBack = [this, &path] {
            if (path == TPU_SIGNAL_MAP_CFG) {
                manager->readSignalMapCfg();
                return manager->writeSendSignalMapCfg(path, RDE_SIGNAL_MAP_CFG);
            }
            if (path == TPU_GROUP_CFG) {
                manager->readGroupCfg();
                return manager->writeSendGroupCfg();
            }
            manager->readUserDes();
            return manager->writeUserDesXml(path, manager->getUseDes());
        };
        TestWorkspace::writeFile(path, bytes);
        QVERIFY(!readAndWriteBack());
        QCOMPARE(TestWorkspace::readFile(path), bytes);
        QCOMPARE(shownTexts(),
                 QStringList{QFileInfo(path).fileName()
                             + " holds bytes that are not UTF-8 text. It was not written, so that "
                               "they are not lost: correct the file on the controller first."});

        TestWorkspace::writeFile(path, QString::fromUtf8(bytes).toUtf8());
        QVERIFY(readAndWriteBack());
    }

    // A function-list path that would leave the working folder is refused like a
    // failed fetch; the others land inside it, and nothing is written elsewhere.
    void hostileFunctionListPaths()
    {
        const QStringList paths{"/application/fidbus/../../../escape.xml", "/../x/list.xml",
                                "/application/fidbus/a\\..\\..\\b/list.xml", "list.xml",
                                "/abs/olute/list.xml"};
        for (const QString &path : paths)
            workspace.putControllerFile(path, "<FunctionList/>");
        const QStringList before = filesUnder(workspace.root());
        emit manager->signalGetFuncList(paths);
        QTRY_COMPARE(listResults.size(), 1);
        QCOMPARE(listResults[0].second, paths[1]); // the last refused one
        const QString root = QDir(TPU_FIELDBUS_DIR).absolutePath() + "/";
        QStringList added = filesUnder(workspace.root());
        for (const QString &file : before)
            added.removeOne(file);
        QCOMPARE(added.size(), 3);
        for (const QString &file : added)
            QVERIFY2(file.startsWith(root), qPrintable(file));
    }

    // A function-list folder that cannot be made ends the request without an
    // answer; screens wait with a timeout.
    void unmakeableListFolderGivesNoAnswer()
    {
        TestWorkspace::writeFile(TPU_FIELDBUS_DIR + "/weld", "a file, not a folder");
        workspace.putControllerFile("/application/fidbus/weld/list.xml", "<FunctionList/>");
        emit manager->signalGetFuncList({"/application/fidbus/weld/list.xml"});
        QTest::qWait(300);
        QVERIFY(listResults.isEmpty());
    }
};

QTEST_GUILESS_MAIN(FaultTest)
#include "tst_faults.moc"
