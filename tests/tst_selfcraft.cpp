// User-defined process maps: registration, gathering during an import, and
// rewriting each process's own file.
#include "BusFileDataManager.h"
#include "ImportTestData.h"
#include "PendantSim.h"
#include "TestWorkspace.h"

#include <QtTest>

namespace {

const QString pvControllerPath = QStringLiteral("/application/fidbus/PV_layout.xml");
const QString pvLocalPath = TPU_FIELDBUS_DIR + QStringLiteral("/PV_layout.xml");
const QString sorterControllerPath = QStringLiteral("/application/fidbus/sorter.xml");
const QString sorterLocalPath = TPU_FIELDBUS_DIR + QStringLiteral("/sorter.xml");

// Values of the PV IO file, section by section, in document order.
QStringList pvValues(const QString &path)
{
    pugi::xml_document doc;
    if (!doc.load_file(QFile::encodeName(path).constData()))
        return {"unreadable"};
    QStringList values;
    for (const pugi::xml_node &section : doc.child("MonitorConfig").children()) {
        for (const pugi::xml_node &signal : section.children())
            values.append(QString::fromUtf8(signal.name()) + "=" + signal.text().get());
    }
    return values;
}

} // namespace

class SelfCraftTest : public QObject
{
    Q_OBJECT

private:
    TestWorkspace workspace;
    BusFileDataManager *manager = nullptr;
    QByteArray pvFile;

    void registerProcess(const QString &name, const QString &tpu, const QString &rde)
    {
        manager->setSelfCraftWriteFuncFile(name, FilePaths{tpu, rde},
                                           &BusFileDataManager::writePVIoFile);
    }

private slots:
    void initTestCase()
    {
        pvFile = TestWorkspace::readFile(QFINDTESTDATA("data/import/pv_monitor.xml"));
        QVERIFY(!pvFile.isEmpty());
    }

    void init()
    {
        TestWorkspace::resetSimulation();
        BusFileDataManager::imSelfCraftMapInfo.clear();
        manager = new BusFileDataManager();
        workspace.putControllerFile(pvControllerPath, pvFile);
        workspace.putControllerFile(sorterControllerPath, pvFile);
    }

    void cleanup()
    {
        delete manager;
        manager = nullptr;
        QFile::remove(pvLocalPath);
        QFile::remove(sorterLocalPath);
    }

    void gathering_data()
    {
        QTest::addColumn<QString>("module");
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("nameCn");
        QTest::addColumn<QString>("gathered");

        QTest::newRow("plain name") << "PV_layout"
                                    << "SignalA"
                                    << ""
                                    << "SignalA|";
        // The name field carries the combined name; its second half lands in nameCn.
        QTest::newRow("combined name is split") << "PV_layout" << QString::fromUtf8("信号.SignalA")
                                                << "old" << QString::fromUtf8("信号|SignalA");
        QTest::newRow("only the first two halves") << "PV_layout"
                                                   << "a.b.c"
                                                   << ""
                                                   << "a|b";
        QTest::newRow("nameCn alone is not split") << "PV_layout"
                                                   << "Lamp"
                                                   << "x.y"
                                                   << "Lamp|x.y";
        QTest::newRow("process never registered") << "gripper"
                                                  << "Open"
                                                  << ""
                                                  << "";
        QTest::newRow("module names are case-sensitive") << "pv_layout"
                                                         << "SignalA"
                                                         << ""
                                                         << "";
    }

    void gathering()
    {
        QFETCH(QString, module);
        QFETCH(QString, name);
        QFETCH(QString, nameCn);
        QFETCH(QString, gathered);

        registerProcess("PV_layout", pvLocalPath, pvControllerPath);
        FuncAndMapInfo row = mappingRow("x:bool:5#" + module);
        row.name = name;
        row.nameCn = nameCn;
        BusFileDataManager::getSelfCraftsMaps(row);

        QStringList found;
        for (const FuncAndMapInfo &copy : BusFileDataManager::getSelfCraftMap("PV_layout")) {
            QCOMPARE(copy.address, QStringLiteral("5"));
            found.append(copy.name + "|" + copy.nameCn);
        }
        QCOMPARE(found.join(" "), gathered);
        QVERIFY(!BusFileDataManager::imSelfCraftMapInfo.contains(module) || module == "PV_layout");
    }

    void registrationAndClearing()
    {
        registerProcess("PV_layout", pvLocalPath, pvControllerPath);
        registerProcess("sorter", sorterLocalPath, sorterControllerPath);
        BusFileDataManager::getSelfCraftsMaps(mappingRow("SignalA:bool:5#PV_layout"));
        BusFileDataManager::getSelfCraftsMaps(mappingRow("Eject:bool:1#sorter"));
        BusFileDataManager::getSelfCraftsMaps(mappingRow("SignalB:bool:7#PV_layout"));
        QCOMPARE(describeRows(BusFileDataManager::getSelfCraftMap("PV_layout")),
                 "SignalA:bool:5#PV_layout SignalB:bool:7#PV_layout");
        QVERIFY(BusFileDataManager::getSelfCraftMap("welder").isEmpty());

        // Registering again forgets what was gathered for that process only.
        registerProcess("sorter", sorterLocalPath, sorterControllerPath);
        QVERIFY(BusFileDataManager::getSelfCraftMap("sorter").isEmpty());
        QCOMPARE(BusFileDataManager::getSelfCraftMap("PV_layout").size(), 2);

        BusFileDataManager::clearSelfCraftMap();
        QVERIFY(BusFileDataManager::getSelfCraftMap("PV_layout").isEmpty());
        QCOMPARE(BusFileDataManager::imSelfCraftMapInfo.size(), 2);
        BusFileDataManager::getSelfCraftsMaps(mappingRow("SignalA:bool:5#PV_layout"));
        QCOMPARE(BusFileDataManager::getSelfCraftMap("PV_layout").size(), 1);
    }

    void writeCraftFile()
    {
        registerProcess("PV_layout", pvLocalPath, pvControllerPath);
        BusFileDataManager::getSelfCraftsMaps(mappingRow("SignalA:bool:5#PV_layout"));
        QVERIFY(manager->getWriteCraftFile("PV_layout", pvControllerPath, pvLocalPath));
        QCOMPARE(pvValues(pvLocalPath),
                 QStringList({"SignalA=-1", "SignalB=7", "LampA=6", "SignalA=-1", "Door=2"}));
        // Sending the rewritten file is the caller's business.
        QCOMPARE(workspace.controllerFile(pvControllerPath), pvFile);
    }

    void writeCraftFileWithoutWriteOperation()
    {
        manager->selfCraftPaths.insert("sorter", FilePaths{sorterLocalPath, sorterControllerPath});
        BusFileDataManager::imSelfCraftMapInfo.insert("sorter", mappingRows("Door:bool:2#sorter"));
        QVERIFY(!manager->getWriteCraftFile("sorter", sorterControllerPath, sorterLocalPath));
        QCOMPARE(TestWorkspace::readFile(sorterLocalPath), pvFile);
    }

    void writeCraftFileFetchFails()
    {
        registerProcess("PV_layout", pvLocalPath, pvControllerPath);
        BusFileDataManager::getSelfCraftsMaps(mappingRow("SignalA:bool:5#PV_layout"));
        workspace.removeControllerFile(pvControllerPath);
        QVERIFY(!manager->getWriteCraftFile("PV_layout", pvControllerPath, pvLocalPath));
        QVERIFY(!QFile::exists(pvLocalPath));
        QCOMPARE(pendantsim::shownMessages().size(), 1);
    }

    // An import collides with the present rows of two processes; each gets its
    // file rewritten, a process without gathered rows is left alone.
    void rewriteAfterImport()
    {
        registerProcess("PV_layout", pvLocalPath, pvControllerPath);
        registerProcess("sorter", sorterLocalPath, sorterControllerPath);
        registerProcess("welder", TPU_FIELDBUS_DIR + "/welder.xml",
                        "/application/fidbus/welder.xml");
        manager->readMapList[BusInput] =
                mappingRows("SignalA:bool:5#PV_layout Door:bool:2#sorter Arc:bool:3#welder");
        manager->imBusMap[BusInput] = {
                {"mtcp", mappingRows("SignalA:bool:8#PV_layout Lock:bool:2#sorter")}};
        manager->checkGetConflictData(
                BusInput, manager->imBusMap[BusInput], manager->conflictMapList[BusInput],
                manager->remapList[BusInput], manager->presentMapList[BusInput]);

        QStringList names{"earlier"};
        QVERIFY(manager->isExistSelfCraftNames(names));
        QCOMPARE(names.first(), QStringLiteral("earlier"));
        names.removeFirst();
        names.sort();
        QCOMPARE(names, QStringList({"PV_layout", "sorter"}));
        QCOMPARE(pvValues(pvLocalPath),
                 QStringList({"SignalA=-1", "SignalB=7", "LampA=6", "SignalA=-1", "Door=2"}));
        QCOMPARE(pvValues(sorterLocalPath),
                 QStringList({"SignalA=5", "SignalB=7", "LampA=6", "SignalA=5", "Door=-1"}));
        QVERIFY(!QFile::exists(TPU_FIELDBUS_DIR + "/welder.xml"));
    }

    void rewriteStopsAtFirstFailure()
    {
        registerProcess("PV_layout", pvLocalPath, pvControllerPath);
        registerProcess("sorter", sorterLocalPath, sorterControllerPath);
        BusFileDataManager::getSelfCraftsMaps(mappingRow("SignalA:bool:5#PV_layout"));
        BusFileDataManager::getSelfCraftsMaps(mappingRow("Door:bool:2#sorter"));
        workspace.removeControllerFile(sorterControllerPath);

        QStringList names;
        QVERIFY(!manager->isExistSelfCraftNames(names));
        // Whatever the registry's order, the failed process is not listed and
        // nothing after it was handled.
        QVERIFY(names.isEmpty() || names == QStringList{"PV_layout"});
        QCOMPARE(QFile::exists(pvLocalPath), !names.isEmpty());
    }
};

QTEST_GUILESS_MAIN(SelfCraftTest)
#include "tst_selfcraft.moc"
