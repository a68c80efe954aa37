// User-defined process maps: gathering during an import, rewriting each process's file.
#include "ImportTestData.h"
#include "ManagerTest.h"
#include "MappingRows.h"

#include <QtTest>

class SelfCraftTest : public ManagerTest
{
    Q_OBJECT

public:
    SelfCraftTest()
        : ManagerTest("import")
    { }

private:
    QByteArray pvFile;

    static QString local(const QString &name) { return TPU_FIELDBUS_DIR + "/" + name + ".xml"; }
    static QString remote(const QString &name) { return "/application/fidbus/" + name + ".xml"; }

    void registerProcesses(const QStringList &names)
    {
        for (const QString &name : names) {
            manager->setSelfCraftWriteFuncFile(name, FilePaths{local(name), remote(name)},
                                               &BusFileDataManager::writePVIoFile);
        }
    }

    static void gather(const QString &text)
    {
        for (const FuncAndMapInfo &r : rows(text))
            BusFileDataManager::getSelfCraftsMaps(r);
    }

    // The signal values of a PV IO file in document order.
    static QString pvValues(const QString &name)
    {
        static const QRegularExpression tag(QStringLiteral("<[^>]*>"));
        return QString(TestWorkspace::readFile(local(name))).replace(tag, " ").simplified();
    }

    void prepare() override
    {
        BusFileDataManager::imSelfCraftMapInfo.clear();
        pvFile = fixture("pv_monitor.xml");
        for (const QString name : {"PV_layout", "sorter"}) {
            workspace.putControllerFile(remote(name), pvFile);
            QFile::remove(local(name));
        }
    }

private slots:

    void gatheringPerProcess()
    {
        registerProcesses({"PV_layout", "sorter"});
        // The copy's name carries the combined name: its second half lands in nameCn.
        BusFileDataManager::getSelfCraftsMaps({"PV_layout", "old", "信.Sig", "bool", "mtcp", "5"});
        BusFileDataManager::getSelfCraftsMaps({"PV_layout", "x.y", "Lamp", "bool", "mtcp", "6"});
        gather("sorter/Eject=1 Open=2");
        QStringList names;
        for (const FuncAndMapInfo &row : BusFileDataManager::getSelfCraftMap("PV_layout"))
            names.append(row.name + '|' + row.nameCn + '|' + row.address);
        QCOMPARE(names, QStringList({QStringLiteral("信|Sig|5"), "Lamp|x.y|6"}));
        QCOMPARE(BusFileDataManager::getSelfCraftMap("sorter").size(), 1);
        QVERIFY(!BusFileDataManager::imSelfCraftMapInfo.contains("gripper"));

        // Registering again forgets that process's rows; clearing keeps the names.
        registerProcesses({"sorter"});
        QVERIFY(BusFileDataManager::getSelfCraftMap("sorter").isEmpty());
        QCOMPARE(BusFileDataManager::getSelfCraftMap("PV_layout").size(), 2);
        BusFileDataManager::clearSelfCraftMap();
        QVERIFY(BusFileDataManager::getSelfCraftMap("PV_layout").isEmpty());
        gather("PV_layout/SignalA=5");
        QCOMPARE(BusFileDataManager::getSelfCraftMap("PV_layout").size(), 1);
    }

    void writeCraftFileWithoutWriteOperation()
    {
        BusFileDataManager::imSelfCraftMapInfo.insert("sorter", rows("sorter/Door=2"));
        QVERIFY(!manager->getWriteCraftFile("sorter", remote("sorter"), local("sorter")));
        QCOMPARE(TestWorkspace::readFile(local("sorter")), pvFile);
    }

    // An import collides with present rows of two processes: each file is rewritten
    // and not sent; a process without gathered rows is left alone. Then a fetch fails.
    void rewriteAfterImport()
    {
        registerProcesses({"PV_layout", "sorter", "welder"});
        manager->readMapList[BusInput] = rows("PV_layout/SignalA=5 sorter/Door=2 welder/Arc=3");
        manager->imBusMap[BusInput] = {{"mtcp", rows("PV_layout/SignalA=8 sorter/Lock=2")}};
        configureController(manager);
        manager->delIllegalBusMap();

        QStringList names{"earlier"};
        QVERIFY(manager->isExistSelfCraftNames(names));
        std::sort(names.begin() + 1, names.end());
        QCOMPARE(names, QStringList({"earlier", "PV_layout", "sorter"}));
        QCOMPARE(pvValues("PV_layout"), "-1 7 6 -1 2");
        QCOMPARE(pvValues("sorter"), "5 7 6 5 -1");
        QCOMPARE(workspace.controllerFile(remote("PV_layout")), pvFile);

        // Whatever the registry's order, the walk stops at the failed process, unlisted.
        workspace.removeControllerFile(remote("sorter"));
        QFile::remove(local("PV_layout"));
        names.clear();
        QVERIFY(!manager->isExistSelfCraftNames(names));
        QVERIFY(names.isEmpty() || names == QStringList{"PV_layout"});
        QCOMPARE(QFile::exists(local("PV_layout")), !names.isEmpty());
    }
};

QTEST_GUILESS_MAIN(SelfCraftTest)
#include "tst_selfcraft.moc"
