#include "BusFileDataManager.h"
#include "PendantSim.h"
#include "TestWorkspace.h"

#include <QDir>
#include <QtTest>

#include <algorithm>
#include <memory>

namespace {

using ManagerPtr = std::unique_ptr<BusFileDataManager>;

ManagerPtr newManager(int languageId)
{
    pendantsim::setLanguageId(languageId);
    return ManagerPtr(new BusFileDataManager());
}

QString fixture(const QString &name)
{
    return QFINDTESTDATA(QStringLiteral("data/functionlists/") + name);
}

const QStringList listFiles{"list_weld.xml", "list_palletize.xml", "list_common.xml",
                            "list_vision.xml", "list_spray.xml"};

QStringList fixtures(const QStringList &names)
{
    QStringList paths;
    for (const QString &name : names)
        paths.append(fixture(name));
    return paths;
}

// "name/1": a function and whether it may be forced.
QStringList describe(const QVector<FuncAndMapInfo> &functions)
{
    QStringList out;
    for (const FuncAndMapInfo &f : functions)
        out.append(f.name + (f.forceEnabled ? "/1" : "/0"));
    return out;
}

QStringList sorted(QStringList list)
{
    std::sort(list.begin(), list.end());
    return list;
}

QStringList shownTexts()
{
    QStringList texts;
    for (const pendantsim::ShownMessage &message : pendantsim::shownMessages())
        texts.append(message.text);
    return texts;
}

class RecordingObserver : public BusObserver
{
public:
    QStringList notes;
    void onFileNotify(FileHandle, const QString &fileKey, bool isSuccess) override
    {
        notes.append(fileKey + (isSuccess ? ":ok" : ":failed"));
    }
};

} // namespace

class TestFunctionLists : public QObject
{
    Q_OBJECT

private:
    TestWorkspace workspace;

    void putControllerLists(const QByteArray &functionInfo)
    {
        workspace.putControllerFile(RDE_FUNC_INFO_XML, functionInfo);
        for (const QString &name : listFiles) {
            const QString folder = name.mid(5).chopped(4); // list_<folder>.xml
            workspace.putControllerFile("/application/fidbus/" + folder + "/" + name,
                                        TestWorkspace::readFile(fixture(name)));
        }
    }

    QStringList outsideEntries() const
    {
        return QDir(workspace.root() + "/Application")
                .entryList(QDir::AllEntries | QDir::NoDotAndDotDot);
    }

private slots:
    void init()
    {
        TestWorkspace::resetSimulation();
        TestWorkspace::writeFile(TPU_FUNC_INFO_XML,
                                 TestWorkspace::readFile(fixture("functionInfo.xml")));
        for (const char *name : {"appParameters_en.xml", "appParameters_cn.xml"})
            TestWorkspace::writeFile(name, TestWorkspace::readFile(fixture(name)));
    }

    void functionTables_data()
    {
        QTest::addColumn<QString>("module");
        QTest::addColumn<QString>("table");
        QTest::addColumn<int>("direction");
        QTest::addColumn<QStringList>("expected");
        const auto row = [](const char *tag, const QString &module, const QString &table,
                            int direction, const QStringList &expected) {
            QTest::newRow(tag) << module << table << direction << expected;
        };

        row("fieldbus in: no, fidbus or all region", "Weld", "fieldbus", 0,
            {"ArcOn/1", "WireFeed/1", "Current/1", "Voltage/1"});
        row("fieldbus out: region case ignored", "Weld", "fieldbus", 1,
            {"ArcOk/1", "Ready/1", "Alarm/1"});
        row("digital in: bool only, section force wins", "Weld", "digital", 0,
            {"ArcOn/0", "GasCheck/0", "WireFeed/0"});
        row("digital out: own force, empty means false", "Weld", "digital", 1,
            {"ArcOk/0", "Fault/1", "Busy/1", "Alarm/0"});
        row("analog in: no region test", "Weld", "analog", 0, {"Feedback/1"});
        row("analog out", "Weld", "analog", 1, {"SetCurrent/1", "SetVoltage/1"});
        row("io-only module: no fieldbus list", "Palletize", "fieldbus", 0, {});
        row("io-only module: digital in", "Palletize", "digital", 0, {"LayerDone/0"});
        row("io-only module: digital out", "Palletize", "digital", 1, {"Gripper/1"});
        row("io-only module: analog kept", "Palletize", "analog", 0, {"Weight/1"});
        row("same name in and out", "Common", "fieldbus", 1, {"Running/1", "Start/1"});
        row("nothing digital: analog dropped too", "Vision", "analog", 0, {});
        row("unknown module", "Nope", "digital", 0, {});
    }

    void functionTables()
    {
        QFETCH(QString, module);
        QFETCH(QString, table);
        QFETCH(int, direction);
        QFETCH(QStringList, expected);

        ManagerPtr manager = newManager(2);
        QStringList paths = fixtures(listFiles);
        paths.insert(1, QString()); // empty entries are skipped
        QVERIFY(manager->readFuncListXml(paths));

        QVector<FuncAndMapInfo> functions;
        if (table == "fieldbus")
            functions = manager->getFuncList(module).value(direction);
        else if (table == "digital")
            functions = manager->getDigitFuncList(module).value(InOut(direction));
        else
            functions = manager->getAnalogFuncList(module).value(InOut(direction));
        QCOMPARE(describe(functions), expected);
    }

    void functionTablesKeys()
    {
        ManagerPtr manager = newManager(2);
        QStringList paths = fixtures(listFiles);
        QVERIFY(manager->readFuncListXml(paths));

        QCOMPARE(sorted(manager->funcListMap.keys()), (QStringList{"Common", "Weld"}));
        QCOMPARE(sorted(manager->digitFuncMap.keys()),
                 (QStringList{"Common", "Palletize", "Weld"}));
        QCOMPARE(sorted(manager->analogFuncMap.keys()),
                 (QStringList{"Common", "Palletize", "Weld"}));

        const FuncAndMapInfo arcOn = manager->getFuncList("Weld").value(0).value(0);
        QCOMPARE(arcOn.nameCn, QStringLiteral("起弧"));
        QCOMPARE(arcOn.type, QStringLiteral("bool"));
        QVERIFY(arcOn.module.isEmpty() && arcOn.fieldBus.isEmpty());
        QCOMPARE(arcOn.address, QStringLiteral("-1"));
        QVERIFY(!arcOn.invert.isNull() && arcOn.invert.isEmpty());
        const FuncAndMapInfo busy = manager->getDigitFuncList("Weld").value(FuncOutput).value(2);
        QCOMPARE(busy.name, QStringLiteral("Busy"));
        QVERIFY(busy.nameCn.isEmpty());
    }

    void failedReadsKeepTables()
    {
        ManagerPtr manager = newManager(2);
        QStringList all = fixtures(listFiles);
        QVERIFY(manager->readFuncListXml(all));
        QVERIFY(manager->readFuncListXmlMonitor(all));

        QStringList empty;
        QVERIFY(!manager->readFuncListXml(empty));
        QVERIFY(!manager->readFuncListXmlMonitor(empty));
        QCOMPARE(manager->funcListMap.size(), 2);
        QCOMPARE(manager->funcListMonitorMap.size(), 4);

        QStringList batch{fixture("list_common.xml"), TPU_FIELDBUS_DIR + "/none/missing.xml",
                          fixture("list_weld.xml")};
        QVERIFY(!manager->readFuncListXml(batch));
        QCOMPARE(manager->funcListMap.keys(), QStringList{"Common"});
        // Digital and analog entries of modules not read this time stay.
        QCOMPARE(sorted(manager->digitFuncMap.keys()),
                 (QStringList{"Common", "Palletize", "Weld"}));
        QVERIFY(!manager->readFuncListXmlMonitor(batch));
        QCOMPARE(manager->getAllfuncListsMonitor().keys(), QStringList{"Common"});
        const QString missing = "Failed to read file :missing.xml!";
        QCOMPARE(shownTexts(), (QStringList{missing, missing}));

        QVERIFY(manager->readFuncInfoXml());
        QVERIFY(manager->readFuncInfoXmlMonitor());
        QFile::remove("appParameters_en.xml");
        QVERIFY(!manager->readAppParaXml());
        QCOMPARE(manager->modulePathMap.size(), 5);
        QFile::remove(TPU_FUNC_INFO_XML);
        QVERIFY(!manager->readFuncInfoXml());
        QVERIFY(!manager->readFuncInfoXmlMonitor());
        QCOMPARE(manager->moduleList.size(), 5);
        QCOMPARE(manager->monitorPathMap.size(), 5);
    }

    void moduleTables_data()
    {
        QTest::addColumn<int>("language");
        QTest::addColumn<QStringList>("modules");
        QTest::addColumn<QStringList>("visible");

        const QStringList english{"Weld", "Palletize", "Common", "Vision", "Spray"};
        const QStringList chinese{"焊接", "码垛", "通用功能", "视觉", "喷涂"};
        QTest::newRow("english") << 2 << english << QStringList{"Weld", "Common", "Vision"};
        QTest::newRow("chinese") << 3 << chinese << QStringList{"焊接", "通用功能", "视觉"};
        // Any language but English reads the Chinese file, whose names match nothing.
        QTest::newRow("other language") << 1 << english << QStringList{"Common"};
    }

    void moduleTables()
    {
        QFETCH(int, language);
        QFETCH(QStringList, modules);
        QFETCH(QStringList, visible);

        ManagerPtr manager = newManager(language);
        QVERIFY(manager->readFuncInfoXml());
        QCOMPARE(manager->moduleList, modules);
        QCOMPARE(manager->modulePathMap.keys(), sorted(modules));
        QCOMPARE(manager->modulePathMapCn.keys(),
                 sorted(QStringList{"焊接", "码垛", "通用功能", "视觉", "喷涂"}));
        QCOMPARE(manager->modulePathMapCn.value("焊接"),
                 QStringLiteral("/application/fidbus/weld/list_weld.xml"));
        QCOMPARE(manager->moduleNameMap.value("Spray"), QStringLiteral("喷涂"));
        QCOMPARE(manager->modulePathMap.value(modules.at(1)),
                 QStringLiteral("/application/fidbus/palletize/list_palletize.xml"));

        QVERIFY(manager->readAppParaXml());
        QCOMPARE(manager->modulePathMap.keys(), sorted(visible));
        QCOMPARE(manager->moduleNameMap.size(), 5);
        QCOMPARE(manager->getModuleList(), visible);
        QCOMPARE(manager->moduleList, visible);
        QVERIFY(pendantsim::shownMessages().isEmpty());
    }

    void moduleNames_data()
    {
        QTest::addColumn<QString>("call");
        QTest::addColumn<QString>("first");
        QTest::addColumn<QString>("second");
        QTest::addColumn<QString>("expected");
        const auto row = [](const char *tag, const QString &call, const QString &first,
                            const QString &second, const QString &expected) {
            QTest::newRow(tag) << call << first << second << expected;
        };

        row("to Chinese", "toCn", "Weld", "", "焊接");
        row("Chinese to Chinese passes", "toCn", "焊接", "", "焊接");
        row("unknown to Chinese passes", "toCn", "Laser", "", "Laser");
        row("to English", "toEn", "通用功能", "", "Common");
        row("unknown to English is empty", "toEn", "Laser", "", "");
        row("function by Chinese module", "funcCn", "通用功能", "Running", "运行中,");
        row("input found before output", "funcCn", "Common", "Start", "启动,");
        row("function name case matters", "funcCn", "Common", "start", "");
        row("digital-only function", "funcCn", "Weld", "GasCheck", "");
        row("unknown module", "funcCn", "Laser", "Start", "");
    }

    void moduleNames()
    {
        QFETCH(QString, call);
        QFETCH(QString, first);
        QFETCH(QString, second);
        QFETCH(QString, expected);

        ManagerPtr manager = newManager(3);
        QVERIFY(manager->readFuncInfoXml());
        QStringList paths = fixtures(listFiles);
        QVERIFY(manager->readFuncListXml(paths));
        QVERIFY(manager->isExistModule("Weld"));
        QVERIFY(!manager->isExistModule("焊接"));

        if (call == "toCn")
            QCOMPARE(manager->getModuleNameEnCn(first, true), expected);
        else if (call == "toEn")
            QCOMPARE(manager->getModuleNameEnCn(first, false), expected);
        else
            QCOMPARE(manager->getFuncNameCn(first, second), expected);
    }

    void monitorLists_data()
    {
        QTest::addColumn<int>("language");
        QTest::addColumn<QString>("weldKey");
        QTest::newRow("english") << 2 << "Weld";
        QTest::newRow("chinese") << 3 << "焊接";
    }

    void monitorLists()
    {
        QFETCH(int, language);
        QFETCH(QString, weldKey);

        ManagerPtr manager = newManager(language);
        QVERIFY(manager->readFuncInfoXmlMonitor());
        QCOMPARE(manager->monitorPathMap.size(), 5);
        QCOMPARE(manager->monitorPathMap.value(weldKey),
                 QStringLiteral("/application/fidbus/weld/list_weld.xml"));

        QStringList paths = fixtures(listFiles);
        QVERIFY(manager->readFuncListXmlMonitor(paths));
        const auto lists = manager->getAllfuncListsMonitor();
        QCOMPARE(lists.keys(), (QStringList{"Common", "Palletize", "Vision", "Weld"}));
        // No region, type or force rules: every function, forceable.
        QCOMPARE(describe(lists.value("Weld").value(0)),
                 (QStringList{"ArcOn/1", "GasCheck/1", "WireFeed/1", "Current/1", "Voltage/1",
                              "Hidden/1", "Remote/1", "Program/1"}));
        QCOMPARE(describe(lists.value("Weld").value(1)),
                 (QStringList{"ArcOk/1", "Fault/1", "Ready/1", "Busy/1", "Alarm/1"}));
        QCOMPARE(describe(lists.value("Vision").value(0)), QStringList{"Exposure/1"});
        QVERIFY(lists.value("Vision").value(1).isEmpty());
    }

    // functionInfo.xml -> app parameters -> function lists -> "funcList" observers.
    void requestPath()
    {
        putControllerLists(TestWorkspace::readFile(fixture("functionInfo.xml")));
        QFile::remove(TPU_FUNC_INFO_XML);
        RecordingObserver observer;
        observer.setIsFuncInfo(true);
        observer.setIsFuncList(true);
        ManagerPtr manager = newManager(2);
        manager->attach(&observer);
        manager->setIsGetFuncList(true);

        manager->emitGetFuncInfo();
        const QStringList once{RDE_FUNC_INFO_XML + ":ok", "funcList:ok"};
        QTRY_COMPARE(observer.notes, once);
        QVERIFY(manager->isFuncInfoRead && manager->isFuncListRead);
        QCOMPARE(manager->getModuleList(), (QStringList{"Weld", "Common", "Vision"}));
        QCOMPARE(describe(manager->getFuncList("Weld").value(1)),
                 (QStringList{"ArcOk/1", "Ready/1", "Alarm/1"}));
        QVERIFY(manager->digitFuncMap.contains("Palletize"));
        QVERIFY(QFile::exists(TPU_FIELDBUS_DIR + "/weld/list_weld.xml"));
        QCOMPARE(pendantsim::transferAttempts(), 6);

        // Fetched and read once per start-up; observers still hear about it.
        manager->emitGetFuncInfo();
        QTRY_COMPARE(observer.notes, once + once);
        QCOMPARE(pendantsim::transferAttempts(), 6);
        QVERIFY(pendantsim::shownMessages().isEmpty());
        QCOMPARE(outsideEntries(), QStringList{"fieldbus"});
    }

    void monitorRequestPath()
    {
        putControllerLists(TestWorkspace::readFile(fixture("functionInfo.xml")));
        RecordingObserver observer;
        observer.setIsFuncInfo(true);
        observer.setIsFuncListMonitor(true);
        ManagerPtr manager = newManager(2);
        manager->attach(&observer);

        manager->emitGetFuncInfoMonitor();
        const QStringList once{RDE_FUNC_INFO_XML + ":ok", "funcListMonitor:ok"};
        QTRY_COMPARE(observer.notes, once);
        QCOMPARE(manager->getAllfuncListsMonitor().keys(),
                 (QStringList{"Common", "Palletize", "Vision", "Weld"}));
        QCOMPARE(pendantsim::transferAttempts(), 6);

        // The monitor lists are fetched again on every request.
        manager->emitGetFuncInfoMonitor();
        QTRY_COMPARE(observer.notes, once + once);
        QCOMPARE(pendantsim::transferAttempts(), 11);
        QVERIFY(pendantsim::shownMessages().isEmpty());
    }

    void refusesPathsLeavingWorkingFolder_data()
    {
        QTest::addColumn<QString>("path");
        QTest::addColumn<bool>("monitor");

        QTest::newRow("parent as list folder") << "/application/fidbus/../list_escape.xml" << false;
        QTest::newRow("parent as file name") << "/application/fidbus/weld/.." << false;
        QTest::newRow("parent in an unused part")
                << "/application/../application/fidbus/weld/list_escape.xml" << false;
        QTest::newRow("monitor, parent as list folder")
                << "/application/fidbus/../list_escape.xml" << true;
        // The list's folder is the local path without every occurrence of the
        // file name, which may eat into the working folder's own name.
        QTest::newRow("file named like the working folder")
                << "/application/fidbus/x/fieldbus" << false;
        QTest::newRow("file named dot") << "/application/fidbus/x/." << false;
    }

    void refusesPathsLeavingWorkingFolder()
    {
        QFETCH(QString, path);
        QFETCH(bool, monitor);

        QByteArray info = TestWorkspace::readFile(fixture("functionInfo_escape.xml"));
        info.replace("@ESCAPE_PATH@", path.toUtf8());
        putControllerLists(info);
        // Were the path followed, the fetch would succeed.
        workspace.putControllerFile("/application/list_escape.xml", "<FunctionList/>");
        workspace.putControllerFile("/application/fidbus/weld/list_escape.xml", "<FunctionList/>");

        RecordingObserver observer;
        observer.setIsFuncList(true);
        observer.setIsFuncListMonitor(true);
        ManagerPtr manager = newManager(2);
        manager->attach(&observer);
        manager->setIsGetFuncList(true);
        if (monitor)
            manager->emitGetFuncInfoMonitor();
        else
            manager->emitGetFuncInfo();

        const QString failure = "Failed to get file from controller:" + path + "!";
        QTRY_VERIFY(shownTexts().contains(failure));
        QCOMPARE(observer.notes,
                 QStringList{(monitor ? "funcListMonitor" : "funcList") + QString(":ok")});
        QCOMPARE(pendantsim::transferAttempts(), 2); // function information and Weld only
        if (monitor)
            QCOMPARE(manager->getAllfuncListsMonitor().keys(), QStringList{"Weld"});
        else
            QCOMPARE(manager->funcListMap.keys(), QStringList{"Weld"});
        QCOMPARE(outsideEntries(), QStringList{"fieldbus"});
        QVERIFY(!QFile::exists(TPU_FIELDBUS_DIR + "/weld/list_escape.xml"));
    }
};

QTEST_GUILESS_MAIN(TestFunctionLists)
#include "tst_functionlists.moc"
