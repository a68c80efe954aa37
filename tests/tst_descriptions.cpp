// User descriptions (read, written without escaping, sent) and the pfs description fetch.
#include "ManagerTest.h"
#include "PendantSim.h"
#include "RecordingObserver.h"
#include "TestWorkspace.h"

#include <QRegularExpression>
#include <QtTest>

namespace {

using Descriptions = QHash<QString, QString>;
using IndexedDescriptions = QMap<QString, QString>;

QString fixture(const QString &name)
{
    return QFINDTESTDATA(QStringLiteral("data/descriptions/") + name);
}

} // namespace

class TestDescriptions : public QObject
{
    Q_OBJECT

private:
    TestWorkspace workspace;
    RecordingObserver observer;
    BusFileDataManager manager;

private slots:
    void initTestCase()
    {
        observer.setIsUsedes(true);
        manager.attach(&observer);
    }

    void init() { TestWorkspace::resetSimulation(); }

    // First occurrence wins, -1 is skipped, references stay unexpanded; reading never fails.
    void readsDescriptions()
    {
        TestWorkspace::writeFile(TPU_USER_DES_XML,
                                 TestWorkspace::readFile(fixture("user_description.xml")));
        QVERIFY(manager.readUserDes());
        QCOMPARE(manager.getUseDes(),
                 (Descriptions{{"fbIn[3]", "Gripper closed"},
                               {"fbIn[]", "without index"},
                               {"fbOut[12]", "Tom &amp; Jerry"},
                               {"fbOut[007]", ""}}));
        QFile::remove(TPU_USER_DES_XML);
        QVERIFY(manager.readUserDes());
        QVERIFY(manager.getUseDes().isEmpty());
        TestWorkspace::writeFile(TPU_USER_DES_XML, "<BioUserDescription><Fidbus");
        QVERIFY(manager.readUserDes());
        QVERIFY(pendantsim::shownMessages().isEmpty());
    }

    void writer()
    {
        const QString text = QStringLiteral("Tom & \"Jerry\" 焊枪");
        QVERIFY(manager.writeUserDesXml(TPU_USER_DES_XML, {{"fbIn[3]", text}}));
        QByteArray written = TestWorkspace::readFile(TPU_USER_DES_XML);
        const QRegularExpressionMatch match =
                QRegularExpression("<!-- Date\\(ymd\\)/time\\(hms\\) ([0-9/: ]{19}) -->\n")
                        .match(QString::fromUtf8(written));
        const QDateTime stamp = QDateTime::fromString(match.captured(1), "yyyy/MM/dd hh:mm:ss");
        QVERIFY2(stamp.isValid() && qAbs(stamp.secsTo(QDateTime::currentDateTime())) <= 2,
                 written.constData());
        written.replace(match.captured(1).toUtf8(), "@STAMP@");
        QCOMPARE(written, TestWorkspace::readFile(fixture("user_description_expected.xml")));

        // Sent, then read back: the bare "&" survives.
        QTRY_COMPARE(observer.calls.value(0),
                     RecordingObserver::call(FileWrittenAndSent, RDE_USER_DES_XML, true));
        QCOMPARE(workspace.controllerFile(RDE_USER_DES_XML),
                 TestWorkspace::readFile(TPU_USER_DES_XML));
        QCOMPARE(manager.getUseDes(), (Descriptions{{"fbIn[3]", text}}));

        // A key splits at its first "[" and first "]".
        QVERIFY(manager.writeUserDesXml(TPU_USER_DES_XML,
                                        {{"plain", "p"}, {"a[1][2]", "a"}, {"b[5", "b"}}));
        QVERIFY(manager.readUserDes());
        QCOMPARE(manager.getUseDes(),
                 (Descriptions{{"plain[]", "p"}, {"a[1]", "a"}, {"b[5]", "b"}}));
        // Sent even when the save fails.
        QVERIFY(!manager.writeUserDesXml(workspace.root() + "/none/user_description.xml", {}));
        QTRY_COMPARE(observer.calls.size(), 3);
    }

    void pfsFetch_data()
    {
        QTest::addColumn<int>("failures");
        QTest::addColumn<QByteArray>("content");
        QTest::addColumn<QStringList>("messages");
        const QByteArray pfs = TestWorkspace::readFile(fixture("pfs_description.xml"));
        const QString fetchFailed =
                "Failed to get file from controller:/application/fidbus/pfs_description.xml!";
        QTest::newRow("third try succeeds") << 2 << pfs << QStringList{};
        QTest::newRow("three tries fail") << 3 << pfs << QStringList{fetchFailed};
        QTest::newRow("copy unreadable")
                << 0 << QByteArray("<PfsUserDescription><In")
                << QStringList{"Failed to read file :pfs_description.xml!", fetchFailed};
    }

    void pfsFetch()
    {
        QFETCH(int, failures);
        QFETCH(QByteArray, content);
        QFETCH(QStringList, messages);
        workspace.putControllerFile(RDE_PFS_DES_XML, content);
        pendantsim::failNextTransfers(failures);
        const IndexedDescriptions old{{"old", "kept unless read"}};
        IndexedDescriptions inputs = old, outputs = old;

        QCOMPARE(manager.getAndReadPfsDesc(inputs, outputs), messages.isEmpty());
        QCOMPARE(pendantsim::transferAttempts(), qMin(failures + 1, 3));
        QCOMPARE(ManagerTest::shownTexts(), messages);
        // Later indexes replace earlier ones; other element names are skipped.
        const bool read = messages.isEmpty();
        QCOMPARE(
                inputs,
                (read ? IndexedDescriptions{{"1", "Door locked"}, {"2", "Light curtain"}, {"3", ""}}
                      : old));
        QCOMPARE(outputs, (read ? IndexedDescriptions{{"1", "Lamp &amp; horn"}} : old));
    }
};

QTEST_GUILESS_MAIN(TestDescriptions)
#include "tst_descriptions.moc"
