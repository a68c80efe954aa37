// Shared records, the observer record and the manager's observer registry.
#include "BusFileDataManager.h"
#include "TestWorkspace.h"

#include <QtTest>

namespace {

struct Call
{
    FileHandle handle;
    QString key;
    bool success;
};

class RecordingObserver : public BusObserver
{
public:
    void onFileNotify(FileHandle handle, const QString &fileKey, bool isSuccess) override
    {
        calls.append({handle, fileKey, isSuccess});
        if (onCall)
            onCall();
    }
    QList<Call> calls;
    std::function<void()> onCall;
};

void wantEverything(BusObserver &observer)
{
    observer.setIsFieldXml(true);
    observer.setIsFieldbusCfg(true);
    observer.setIsSignalMap(true);
    observer.setIsGroupIO(true);
    observer.setIsFuncInfo(true);
    observer.setIsFuncList(true);
    observer.setIsUsedes(true);
    observer.setIsFuncListMonitor(true);
}

} // namespace

class ObserverTest : public QObject
{
    Q_OBJECT

private slots:
    void init() { manager = new BusFileDataManager(); }
    void cleanup() { delete manager; }

    void recordDefaults()
    {
        const FuncAndMapInfo info;
        QVERIFY(info.module.isEmpty() && info.name.isEmpty() && info.fieldBus.isEmpty());
        QCOMPARE(info.address, QStringLiteral("-1"));
        QVERIFY(!info.invert.isNull() && info.invert.isEmpty());
        QVERIFY(!info.filterTime.isNull() && info.filterTime.isEmpty());
        QVERIFY(info.forceEnabled);
        const BusAddrNumInfo sizes;
        for (int i = 0; i < 9; ++i)
            QVERIFY(sizes.startAddress[i] == 0 && sizes.stopAddress[i] == 0
                    && sizes.variableLength[i] == 0);
        QCOMPARE(performanceProtocolNames().size(), 10);
        QCOMPARE(performanceProtocolNames().at(EtherCatMaster), QStringLiteral("EtherCatMaster"));
        QCOMPARE(performanceProtocolNames().at(DeviceNetSlave), QStringLiteral("DeviceNetSlave"));
    }

    void observerCopiesOnlyItsFlags()
    {
        RecordingObserver source;
        source.setIsSignalMap(true);
        source.setIsFuncListMonitor(true);
        source.calls.append({FileFetchedAndRead, "x", true});
        RecordingObserver copy(source);
        QVERIFY(copy.getIsSignalMap() && copy.getIsFuncListMonitor());
        QVERIFY(!copy.getIsFieldXml() && !copy.getIsUsedes());
        RecordingObserver assigned;
        assigned.setIsFieldXml(true);
        static_cast<BusObserver &>(assigned) = source;
        QVERIFY(!assigned.getIsFieldXml() && assigned.getIsSignalMap());
    }

    void notifyChoosesFlagByKey_data()
    {
        QTest::addColumn<QString>("key");
        QTest::addColumn<int>("flag"); // 0..7 in declared order, -1: nobody
        QTest::newRow("fieldbus list") << RDE_FIELDBUS_XML << 0;
        QTest::newRow("fieldbus config") << RDE_FIELDBUS_CFG_XML << 1;
        QTest::newRow("signal mapping") << RDE_SIGNAL_MAP_CFG << 2;
        QTest::newRow("group io") << RDE_GROUP_CFG << 3;
        QTest::newRow("function info") << RDE_FUNC_INFO_XML << 4;
        QTest::newRow("function lists") << QStringLiteral("funcList") << 5;
        QTest::newRow("user descriptions") << RDE_USER_DES_XML << 6;
        QTest::newRow("monitor lists") << QStringLiteral("funcListMonitor") << 7;
        QTest::newRow("backup file") << RDE_SIGNAL_MAP_BACKUP_CFG << -1;
        QTest::newRow("local path") << TPU_SIGNAL_MAP_CFG << -1;
        QTest::newRow("key in other case") << QStringLiteral("FUNCLIST") << -1;
    }

    void notifyChoosesFlagByKey()
    {
        QFETCH(QString, key);
        QFETCH(int, flag);
        RecordingObserver observers[8];
        void (BusObserver::*setters[8])(bool) = {
                &BusObserver::setIsFieldXml,  &BusObserver::setIsFieldbusCfg,
                &BusObserver::setIsSignalMap, &BusObserver::setIsGroupIO,
                &BusObserver::setIsFuncInfo,  &BusObserver::setIsFuncList,
                &BusObserver::setIsUsedes,    &BusObserver::setIsFuncListMonitor,
        };
        for (int i = 0; i < 8; ++i) {
            (observers[i].*setters[i])(true);
            manager->attach(&observers[i]);
        }
        RecordingObserver deaf;
        manager->attach(&deaf);

        manager->notify(FileWrittenAndSent, key, false);

        for (int i = 0; i < 8; ++i) {
            QCOMPARE(observers[i].calls.size(), i == flag ? 1 : 0);
            if (i == flag) {
                QCOMPARE(observers[i].calls[0].handle, FileWrittenAndSent);
                QCOMPARE(observers[i].calls[0].key, key);
                QCOMPARE(observers[i].calls[0].success, false);
            }
        }
        QVERIFY(deaf.calls.isEmpty());
    }

    void registryKeepsDuplicatesAndDetachesFirst()
    {
        RecordingObserver a, b;
        wantEverything(a);
        wantEverything(b);
        manager->attach(&a);
        manager->attach(&b);
        manager->attach(&a);
        manager->notify(FileFetchedAndRead, RDE_GROUP_CFG, true);
        QCOMPARE(a.calls.size(), 2);
        QCOMPARE(b.calls.size(), 1);

        manager->detach(&a);
        QCOMPARE(manager->observers, (QList<BusObserver *>{&b, &a}));
        manager->detach(&a);
        manager->detach(&a); // not there any more: nothing happens
        manager->detach(nullptr);
        QCOMPARE(manager->observers, (QList<BusObserver *>{&b}));
    }

    void observersMayChangeRegistryDuringNotify()
    {
        RecordingObserver first, second, late;
        wantEverything(first);
        wantEverything(second);
        wantEverything(late);
        first.onCall = [&] {
            manager->detach(&second);
            manager->attach(&late);
        };
        manager->attach(&first);
        manager->attach(&second);
        manager->notify(FileFetchedAndRead, RDE_FIELDBUS_XML, true);
        // The walk runs over the list as it was when the notification began.
        QCOMPARE(first.calls.size(), 1);
        QCOMPARE(second.calls.size(), 1);
        QCOMPARE(late.calls.size(), 0);
        manager->notify(FileFetchedAndRead, RDE_FIELDBUS_XML, true);
        QCOMPARE(second.calls.size(), 1);
        QCOMPARE(late.calls.size(), 1);
    }

    void pollingKeys_data()
    {
        QTest::addColumn<QString>("key");
        QTest::addColumn<QVector<int>>("needed"); // read flags that must all be set
        QTest::newRow("fieldbus") << "fieldbus" << QVector<int>{0};
        QTest::newRow("fieldbusCfg") << "fieldbusCfg" << QVector<int>{1};
        QTest::newRow("groupFiles") << "groupFiles" << QVector<int>{0, 1, 3, 2};
        QTest::newRow("fieldbusSet") << "fieldbusSet" << QVector<int>{0, 1};
        QTest::newRow("group") << "group" << QVector<int>{2};
        QTest::newRow("map") << "map" << QVector<int>{3};
        QTest::newRow("funcInfo") << "funcInfo" << QVector<int>{5};
        QTest::newRow("funcList") << "funcList" << QVector<int>{6};
        QTest::newRow("funcInfoMonitor") << "funcInfoMonitor" << QVector<int>{7};
        QTest::newRow("funcListMonitor") << "funcListMonitor" << QVector<int>{8};
        QTest::newRow("user_description") << "user_description" << QVector<int>{4};
        QTest::newRow("notify key is not a polling key") << RDE_FIELDBUS_XML << QVector<int>{};
        QTest::newRow("case matters") << "Fieldbus" << QVector<int>{};
    }

    void pollingKeys()
    {
        QFETCH(QString, key);
        QFETCH(QVector<int>, needed);
        bool *flags[9] = {&manager->isFieldXmlRead,       &manager->isFieldbusCfgRead,
                          &manager->isGroupCfgRead,       &manager->isSignalMapRead,
                          &manager->isUserDesRead,        &manager->isFuncInfoRead,
                          &manager->isFuncListRead,       &manager->isFuncInfoMonitorRead,
                          &manager->isFuncListMonitorRead};
        QVERIFY(!manager->isFuncInfoNotified(key));
        // Every needed flag but one is not enough.
        for (int missing : needed) {
            for (bool *flag : flags)
                *flag = false;
            for (int i : needed)
                *flags[i] = i != missing;
            QVERIFY(!manager->isFuncInfoNotified(key));
        }
        for (bool *flag : flags)
            *flag = false;
        for (int i : needed)
            *flags[i] = true;
        QCOMPARE(manager->isFuncInfoNotified(key), !needed.isEmpty());
        for (bool *flag : flags)
            *flag = true;
        QCOMPARE(manager->isFuncInfoNotified(key), !needed.isEmpty());
    }

private:
    TestWorkspace workspace;
    BusFileDataManager *manager = nullptr;
};

QTEST_GUILESS_MAIN(ObserverTest)
#include "tst_observers.moc"
