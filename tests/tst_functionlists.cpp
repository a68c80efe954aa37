// Module table, function lists, application parameters and the monitor lists.
#include "FunctionIndex.h"
#include "ManagerTest.h"
#include "PendantSim.h"
#include "RecordingObserver.h"
#include "TestWorkspace.h"

#include <QDir>
#include <QRandomGenerator>
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

// "name/1 name/0": the functions and whether each may be forced.
QString describe(const QVector<FuncAndMapInfo> &functions)
{
    QStringList out;
    for (const FuncAndMapInfo &f : functions)
        out.append(f.name + (f.forceEnabled ? "/1" : "/0"));
    return out.join(' ');
}

QStringList sorted(QStringList list)
{
    std::sort(list.begin(), list.end());
    return list;
}

} // namespace

class TestFunctionLists : public QObject
{
    Q_OBJECT

private:
    TestWorkspace workspace;
    const QStringList listFiles{"list_weld.xml", "list_palletize.xml", "list_common.xml",
                                "list_vision.xml", "list_spray.xml"};
    QStringList listPaths;
    ManagerPtr english; // every fixture read once

private slots:
    void initTestCase()
    {
        init();
        for (const QString &name : listFiles) {
            listPaths << fixture(name);
            const QString folder = name.mid(5).chopped(4); // list_<folder>.xml
            workspace.putControllerFile("/application/fidbus/" + folder + "/" + name,
                                        TestWorkspace::readFile(listPaths.last()));
        }
        // Were an escaping list path followed, its fetch would succeed.
        workspace.putControllerFile("/application/list_escape.xml", "<FunctionList/>");
        workspace.putControllerFile("/application/fidbus/weld/list_escape.xml", "<FunctionList/>");
        english = newManager(2);
        QStringList paths = listPaths;
        paths.insert(1, QString()); // empty entries are skipped
        QVERIFY(english->readFuncInfoXml() && english->readFuncListXml(paths)
                && english->readFuncListXmlMonitor(paths));
    }

    void init()
    {
        TestWorkspace::resetSimulation();
        for (const char *name : {"appParameters_en.xml", "appParameters_cn.xml"})
            TestWorkspace::writeFile(name, TestWorkspace::readFile(fixture(name)));
        TestWorkspace::writeFile(TPU_FUNC_INFO_XML,
                                 TestWorkspace::readFile(fixture("functionInfo.xml")));
    }

    void functionTables_data()
    {
        QTest::addColumn<QString>("module");
        QTest::addColumn<QString>("table");
        QTest::addColumn<QString>("expected"); // input | output
        const auto add = [](const char *tag, const QString &module, const QString &table,
                            const QString &expected) {
            QTest::newRow(tag) << module << table << expected;
        };
        add("fieldbus: no, fidbus or all region, any case", "Weld", "fieldbus",
            "ArcOn/1 WireFeed/1 Current/1 Voltage/1 | ArcOk/1 Ready/1 Alarm/1");
        add("digital: bool, no, io or all region; section force wins, else own, empty false",
            "Weld", "digital", "ArcOn/0 GasCheck/0 WireFeed/0 | ArcOk/0 Fault/1 Busy/1 Alarm/0");
        add("analog: no region test", "Weld", "analog", "Feedback/1 | SetCurrent/1 SetVoltage/1");
        add("monitor: no rules, all forceable", "Weld", "monitor",
            "ArcOn/1 GasCheck/1 WireFeed/1 Current/1 Voltage/1 Hidden/1 Remote/1 Program/1 | "
            "ArcOk/1 Fault/1 Ready/1 Busy/1 Alarm/1");
        add("io-only module: no fieldbus list", "Palletize", "fieldbus", " | ");
        add("io-only module: digital", "Palletize", "digital", "LayerDone/0 | Gripper/1");
        add("io-only module: analog kept", "Palletize", "analog", "Weight/1 | ");
        add("nothing digital: analog dropped too", "Vision", "analog", " | ");
        add("monitor: int of the io region, no analog", "Vision", "monitor", "Exposure/1 | ");
    }

    void functionTables()
    {
        QFETCH(QString, module);
        QFETCH(QString, table);
        QFETCH(QString, expected);
        QStringList lists;
        for (int direction : {0, 1}) {
            if (table == "fieldbus")
                lists << describe(english->getFuncList(module).value(direction));
            else if (table == "digital")
                lists << describe(english->getDigitFuncList(module).value(InOut(direction)));
            else if (table == "analog")
                lists << describe(english->getAnalogFuncList(module).value(InOut(direction)));
            else
                lists << describe(english->getAllfuncListsMonitor().value(module).value(direction));
        }
        QCOMPARE(lists.join(" | "), expected);
    }

    // Failed reads keep the tables; the digital and analog tables are never cleared.
    void failedListReadsKeepTables()
    {
        ManagerPtr manager = newManager(2);
        QStringList empty;
        QVERIFY(manager->readFuncListXml(listPaths) && manager->readFuncListXmlMonitor(listPaths));
        QVERIFY(!manager->readFuncListXml(empty) && !manager->readFuncListXmlMonitor(empty));
        QCOMPARE(manager->funcListMap.size(), 2);
        QCOMPARE(manager->funcListMonitorMap.size(), 4);

        QStringList batch{fixture("list_common.xml"), TPU_FIELDBUS_DIR + "/none/missing.xml",
                          fixture("list_weld.xml")};
        QVERIFY(!manager->readFuncListXml(batch) && !manager->readFuncListXmlMonitor(batch));
        QCOMPARE(manager->funcListMap.keys(), QStringList{"Common"});
        QCOMPARE(manager->funcListMonitorMap.keys(), QStringList{"Common"});
        QCOMPARE(sorted(manager->digitFuncMap.keys()),
                 (QStringList{"Common", "Palletize", "Weld"}));
        const QString missing = "Failed to read file :missing.xml!";
        QCOMPARE(ManagerTest::shownTexts(), (QStringList{missing, missing}));
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
        QVERIFY(manager->readFuncInfoXml() && manager->readFuncInfoXmlMonitor());
        QCOMPARE(manager->moduleList, modules);
        QCOMPARE(manager->modulePathMap.keys(), sorted(modules));
        QCOMPARE(manager->modulePathMap.value(modules.at(1)),
                 QStringLiteral("/application/fidbus/palletize/list_palletize.xml"));
        QCOMPARE(manager->monitorPathMap, manager->modulePathMap);

        QVERIFY(manager->readAppParaXml());
        QCOMPARE(manager->modulePathMap.keys(), sorted(visible));
        QCOMPARE(manager->moduleNameMap.size(), 5);
        QCOMPARE(manager->getModuleList(), visible);
        QCOMPARE(manager->moduleList, visible); // pruned for good

        // Unreadable files keep the tables.
        for (const char *name : {"appParameters_en.xml", "appParameters_cn.xml"})
            QFile::remove(name);
        QFile::remove(TPU_FUNC_INFO_XML);
        QVERIFY(!manager->readAppParaXml() && !manager->readFuncInfoXml());
        QVERIFY(!manager->readFuncInfoXmlMonitor());
        QCOMPARE(manager->modulePathMap.keys(), sorted(visible));
        QCOMPARE(manager->monitorPathMap.size(), 5);
    }

    // Unknown names pass through to Chinese but become empty to English; function names are
    // looked up case-sensitively among the fieldbus functions, inputs first.
    void moduleNames()
    {
        QCOMPARE(english->getModuleNameEnCn("Weld", true), QStringLiteral("焊接"));
        QCOMPARE(english->getModuleNameEnCn("Laser", true), QStringLiteral("Laser"));
        QCOMPARE(english->getModuleNameEnCn("通用功能", false), QStringLiteral("Common"));
        QCOMPARE(english->getModuleNameEnCn("Laser", false), QString());
        QVERIFY(english->isExistModule("Weld") && !english->isExistModule("焊接"));
        QCOMPARE(english->getFuncNameCn("通用功能", "Running"), QStringLiteral("运行中,"));
        QCOMPARE(english->getFuncNameCn("Common", "Start"), QStringLiteral("启动,"));
        QCOMPARE(english->getFuncNameCn("Common", "start"), QString());
        QCOMPARE(english->getFuncNameCn("Weld", "GasCheck"), QString());
        QCOMPARE(english->getFuncList("Weld").value(0).value(0).type, QStringLiteral("bool"));
    }

    // The index answers as the manager's walks do, on lists with repeated names
    // and Chinese names that are another function's name.
    void indexAgreesWithWalks()
    {
        ManagerPtr m = newManager(1);
        QRandomGenerator random(7);
        const QStringList words{"a", "b", "c", "甲", "乙", ""};
        m->moduleNameMap = {{"M", "模"}, {"N", "恩"}};
        for (const QString &module : QStringList{"M", "N"}) {
            QVector<QVector<FuncAndMapInfo>> lists(2);
            for (QVector<FuncAndMapInfo> &list : lists) {
                for (int i = random.bounded(8); i > 0; --i) {
                    FuncAndMapInfo f;
                    f.name = words.at(random.bounded(3));
                    f.nameCn = words.at(random.bounded(words.size()));
                    f.type = QString::number(list.size());
                    list.append(f);
                }
            }
            m->funcListMap.insert(module, lists);
        }
        FunctionIndex index(m.get());
        for (const QString &module : QStringList{"M", "N", "模", "X"}) {
            for (const QString &name : words) {
                QString cn = m->getFuncNameCn(module, name);
                cn.chop(1);
                QCOMPARE(index.chineseName(module, name), cn);
                for (const BiBo dir : {BusInput, BusOutput}) {
                    const QVector<FuncAndMapInfo> list =
                            m->getFuncList(m->getModuleNameEnCn(module, false)).value(dir);
                    const auto walk = std::find_if(
                            list.cbegin(), list.cend(), [&name](const FuncAndMapInfo &f) {
                                return f.name == name || (!f.nameCn.isEmpty() && f.nameCn == name);
                            });
                    const FuncAndMapInfo *found = index.find(module, dir, name);
                    QCOMPARE(found ? found->type : QString("none"),
                             walk == list.cend() ? QString("none") : walk->type);
                }
            }
        }
    }

    // functionInfo.xml -> (app parameters) -> function lists -> observers, twice. A list path
    // that would leave the working folder fails like a fetch and is never followed.
    void requestPath_data()
    {
        QTest::addColumn<QString>("escape");
        QTest::addColumn<bool>("monitor");
        QTest::addColumn<QStringList>("keys");
        QTest::addColumn<int>("attempts");
        QTest::addColumn<int>("attemptsAgain");
        QTest::newRow("lists, read once per start-up")
                << "" << false << QStringList{"Common", "Weld"} << 6 << 6;
        QTest::newRow("monitor lists, fetched on every request")
                << "" << true << QStringList{"Common", "Palletize", "Vision", "Weld"} << 6 << 11;
        // Weld is fetched, the other path refused, and both tried again on the next request.
        const auto refused = [](const char *tag, const QString &path, bool monitor) {
            QTest::newRow(tag) << path << monitor << QStringList{"Weld"} << 2 << 3;
        };
        refused("parent as list folder", "/application/fidbus/../list_escape.xml", false);
        refused("parent as file name", "/application/fidbus/weld/..", false);
        refused("parent in an unused part",
                "/application/../application/fidbus/weld/list_escape.xml", false);
        refused("monitor, parent as list folder", "/application/fidbus/../list_escape.xml", true);
        // The list's folder is the local path without every occurrence of the
        // file name, which may eat into the working folder's own name.
        refused("file named like the working folder", "/application/fidbus/x/fieldbus", false);
    }

    void requestPath()
    {
        QFETCH(QString, escape);
        QFETCH(bool, monitor);
        QFETCH(QStringList, keys);
        QFETCH(int, attempts);
        QFETCH(int, attemptsAgain);
        QByteArray info = TestWorkspace::readFile(
                fixture(escape.isEmpty() ? "functionInfo.xml" : "functionInfo_escape.xml"));
        workspace.putControllerFile(RDE_FUNC_INFO_XML,
                                    info.replace("@ESCAPE_PATH@", escape.toUtf8()));
        RecordingObserver observer;
        observer.setIsFuncInfo(true);
        observer.setIsFuncList(true);
        observer.setIsFuncListMonitor(true);
        ManagerPtr manager = newManager(2);
        manager->attach(&observer);
        manager->setIsGetFuncList(true);
        const auto request = [&] {
            monitor ? manager->emitGetFuncInfoMonitor() : manager->emitGetFuncInfo();
        };
        const QStringList once{RecordingObserver::call(FileFetchedAndRead, RDE_FUNC_INFO_XML, true),
                               RecordingObserver::call(FileFetchedAndRead,
                                                       monitor ? "funcListMonitor" : "funcList",
                                                       true)};

        request();
        QTRY_COMPARE(observer.calls, once);
        QCOMPARE(pendantsim::transferAttempts(), attempts);
        QCOMPARE(monitor ? manager->funcListMonitorMap.keys() : sorted(manager->funcListMap.keys()),
                 keys);
        QCOMPARE(ManagerTest::shownTexts().join(""),
                 escape.isEmpty() ? "" : "Failed to get file from controller:" + escape + "!");
        if (!monitor) {
            QVERIFY(manager->isFuncInfoRead && manager->isFuncListRead);
            QCOMPARE(manager->getModuleList().join(' '),
                     escape.isEmpty() ? "Weld Common Vision" : "Weld");
        }

        request(); // observers hear of it again
        QTRY_COMPARE(observer.calls, once + once);
        QCOMPARE(pendantsim::transferAttempts(), attemptsAgain);
        const QDir application(workspace.root() + "/Application");
        QCOMPARE(application.entryList(QDir::AllEntries | QDir::NoDotAndDotDot),
                 QStringList{"fieldbus"});
        QVERIFY(!QFile::exists(TPU_FIELDBUS_DIR + "/weld/list_escape.xml"));
    }
};

QTEST_GUILESS_MAIN(TestFunctionLists)
#include "tst_functionlists.moc"
