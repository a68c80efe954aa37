// Shared records, the observer record and the manager's observer registry.
#include "ManagerTest.h"
#include "RecordingObserver.h"
#include "TestWorkspace.h"

#include <QtTest>

namespace {

using Setter = void (BusObserver::*)(bool);
const Setter flagSetters[8] = {
        &BusObserver::setIsFieldXml,  &BusObserver::setIsFieldbusCfg,
        &BusObserver::setIsSignalMap, &BusObserver::setIsGroupIO,
        &BusObserver::setIsFuncInfo,  &BusObserver::setIsFuncList,
        &BusObserver::setIsUsedes,    &BusObserver::setIsFuncListMonitor,
};

void wantEverything(BusObserver &observer)
{
    for (Setter set : flagSetters)
        (observer.*set)(true);
}

} // namespace

class ObserverTest : public ManagerTest
{
    Q_OBJECT

private slots:
    void observerCopiesOnlyItsFlags()
    {
        RecordingObserver source;
        source.setIsSignalMap(true);
        source.calls << "x";
        RecordingObserver target;
        target.setIsFieldXml(true);
        static_cast<BusObserver &>(target) = source;
        QVERIFY(!target.getIsFieldXml() && target.getIsSignalMap());
        QVERIFY(target.calls.isEmpty());
    }

    // A few keys of the file-kind table, and keys it must not match.
    void notifyChoosesFlagByKey_data()
    {
        QTest::addColumn<QString>("key");
        QTest::addColumn<int>("flag"); // index into flagSetters, -1: nobody
        QTest::newRow("fieldbus list") << RDE_FIELDBUS_XML << 0;
        QTest::newRow("function lists") << QStringLiteral("funcList") << 5;
        QTest::newRow("monitor lists") << QStringLiteral("funcListMonitor") << 7;
        QTest::newRow("backup file") << RDE_SIGNAL_MAP_BACKUP_CFG << -1;
        QTest::newRow("key in other case") << QStringLiteral("FUNCLIST") << -1;
    }

    void notifyChoosesFlagByKey()
    {
        QFETCH(QString, key);
        QFETCH(int, flag);
        RecordingObserver observers[9]; // the last one wants nothing
        // Through locals: GCC 12's undefined-behaviour sanitizer miscompiles
        // an indexed object with an indexed member pointer.
        for (int i = 0; i < 8; ++i) {
            const Setter set = flagSetters[i];
            RecordingObserver &observer = observers[i];
            (observer.*set)(true);
        }
        for (RecordingObserver &observer : observers)
            manager->attach(&observer);
        manager->notify(FileWrittenAndSent, key, false);
        for (int i = 0; i < 9; ++i) {
            QCOMPARE(observers[i].calls,
                     i == flag
                             ? QStringList{RecordingObserver::call(FileWrittenAndSent, key, false)}
                             : QStringList());
        }
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
        QTest::newRow("groupFiles") << "groupFiles" << QVector<int>{0, 1, 2, 3};
        QTest::newRow("fieldbusSet") << "fieldbusSet" << QVector<int>{0, 1};
        QTest::newRow("map") << "map" << QVector<int>{3};
        QTest::newRow("funcInfo") << "funcInfo" << QVector<int>{5};
        QTest::newRow("funcList") << "funcList" << QVector<int>{6};
        QTest::newRow("funcListMonitor") << "funcListMonitor" << QVector<int>{8};
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
        // Every needed flag but one is not enough; all of them are.
        for (int missing = -1; missing < needed.size(); ++missing) {
            for (int i = 0; i < 9; ++i)
                *flags[i] = needed.contains(i) && (missing < 0 || needed[missing] != i);
            QCOMPARE(manager->isFuncInfoNotified(key), missing < 0 && !needed.isEmpty());
        }
    }
};

QTEST_GUILESS_MAIN(ObserverTest)
#include "tst_observers.moc"
