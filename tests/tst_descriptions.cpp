#include "BusFileDataManager.h"
#include "PendantSim.h"
#include "TestWorkspace.h"

#include <QRegularExpression>
#include <QSignalSpy>
#include <QtTest>

#include <memory>

namespace {

using ManagerPtr = std::unique_ptr<BusFileDataManager>;

QString fixture(const QString &name)
{
    return QFINDTESTDATA(QStringLiteral("data/descriptions/") + name);
}

using Descriptions = QHash<QString, QString>;
using IndexedDescriptions = QMap<QString, QString>;

class SendObserver : public BusObserver
{
public:
    QStringList notes;
    void onFileNotify(FileHandle handle, const QString &fileKey, bool isSuccess) override
    {
        notes.append(QString::number(handle) + ":" + fileKey + (isSuccess ? ":ok" : ":failed"));
    }
};

} // namespace

class TestDescriptions : public QObject
{
    Q_OBJECT

private:
    TestWorkspace workspace;

private slots:
    void init() { TestWorkspace::resetSimulation(); }

    void readsDescriptions()
    {
        ManagerPtr manager(new BusFileDataManager());
        TestWorkspace::writeFile(TPU_USER_DES_XML,
                                 TestWorkspace::readFile(fixture("user_description.xml")));
        QVERIFY(manager->readUserDes());
        // First occurrence wins, -1 is skipped, references stay unexpanded.
        const Descriptions expected{{"fbIn[3]", "Gripper closed"},
                                    {"fbIn[]", "without index"},
                                    {"fbOut[12]", "Tom &amp; Jerry"},
                                    {"fbOut[007]", ""}};
        QCOMPARE(manager->getUseDes(), expected);

        QFile::remove(TPU_USER_DES_XML);
        QVERIFY(manager->readUserDes());
        QVERIFY(manager->getUseDes().isEmpty());

        TestWorkspace::writeFile(TPU_USER_DES_XML, "<BioUserDescription><Fidbus");
        QVERIFY(manager->readUserDes());
        QVERIFY(pendantsim::shownMessages().isEmpty());
    }

    void writerBytesAndRoundTrip()
    {
        SendObserver observer;
        observer.setIsUsedes(true);
        ManagerPtr manager(new BusFileDataManager());
        manager->attach(&observer);
        QSignalSpy sent(manager.get(), &BusFileDataManager::signalUserDes);

        const QString text = QStringLiteral("Tom & \"Jerry\" 焊枪");
        const QDateTime before = QDateTime::currentDateTime().addSecs(-1);
        QVERIFY(manager->writeUserDesXml(TPU_USER_DES_XML, {{"fbIn[3]", text}}));
        const QDateTime after = QDateTime::currentDateTime().addSecs(1);
        QCOMPARE(sent.count(), 1);

        QByteArray written = TestWorkspace::readFile(TPU_USER_DES_XML);
        const QRegularExpression stampPattern(
                QStringLiteral("<!-- Date\\(ymd\\)/time\\(hms\\) "
                               "(\\d{4}/\\d{2}/\\d{2} \\d{2}:\\d{2}:\\d{2}) -->\n"));
        const QRegularExpressionMatch match = stampPattern.match(QString::fromUtf8(written));
        QVERIFY2(match.hasMatch(), written.constData());
        const QDateTime stamp =
                QDateTime::fromString(match.captured(1), QStringLiteral("yyyy/MM/dd hh:mm:ss"));
        QVERIFY(stamp >= before.addMSecs(-before.time().msec()) && stamp <= after);
        written.replace(match.captured(1).toUtf8(), "@STAMP@");
        QCOMPARE(written, TestWorkspace::readFile(fixture("user_description_expected.xml")));

        // Sent, then read back: the bare "&" survives.
        QTRY_COMPARE(observer.notes, QStringList{"1:" + RDE_USER_DES_XML + ":ok"});
        QCOMPARE(workspace.controllerFile(RDE_USER_DES_XML),
                 TestWorkspace::readFile(TPU_USER_DES_XML));
        QCOMPARE(manager->getUseDes(), (Descriptions{{"fbIn[3]", text}}));
    }

    void writerSplitsKeys_data()
    {
        QTest::addColumn<QString>("key");
        QTest::addColumn<QString>("variable");
        QTest::addColumn<QString>("index");
        const auto row = [](const char *tag, const QString &key, const QString &variable,
                            const QString &index) {
            QTest::newRow(tag) << key << variable << index;
        };

        row("name and index", "fbIn[3]", "fbIn", "3");
        row("no brackets", "plain", "plain", "");
        row("first brackets only", "a[1][2]", "a", "1");
        row("no closing bracket", "b[5", "b", "5");
    }

    void writerSplitsKeys()
    {
        QFETCH(QString, key);
        QFETCH(QString, variable);
        QFETCH(QString, index);

        ManagerPtr manager(new BusFileDataManager());
        QVERIFY(manager->writeUserDesXml(TPU_USER_DES_XML, {{key, "text"}}));
        pugi::xml_document doc;
        QVERIFY(doc.load_file(QFile::encodeName(TPU_USER_DES_XML).constData()));
        const pugi::xml_node element = doc.child("BioUserDescription").child("FidbusVariable");
        QCOMPARE(QString::fromUtf8(element.attribute("Variable").value()), variable);
        QCOMPARE(QString::fromUtf8(element.child("Index").text().get()), index);
    }

    void failedSaveStillSends()
    {
        ManagerPtr manager(new BusFileDataManager());
        QSignalSpy sent(manager.get(), &BusFileDataManager::signalUserDes);
        const QString path = workspace.root() + "/no/such/folder/user_description.xml";
        QVERIFY(!manager->writeUserDesXml(path, {{"fbIn[1]", "x"}}));
        QCOMPARE(sent.count(), 1);
    }

    void pfsFetch_data()
    {
        QTest::addColumn<int>("failures");
        QTest::addColumn<QByteArray>("content");
        QTest::addColumn<bool>("result");
        QTest::addColumn<QStringList>("messages");

        const QByteArray pfs = TestWorkspace::readFile(fixture("pfs_description.xml"));
        const QString fetchFailed =
                "Failed to get file from controller:/application/fidbus/pfs_description.xml!";
        QTest::newRow("third try succeeds") << 2 << pfs << true << QStringList{};
        QTest::newRow("three tries fail") << 3 << pfs << false << QStringList{fetchFailed};
        QTest::newRow("copy unreadable")
                << 0 << QByteArray("<PfsUserDescription><In") << false
                << QStringList{"Failed to read file :pfs_description.xml!", fetchFailed};
    }

    void pfsFetch()
    {
        QFETCH(int, failures);
        QFETCH(QByteArray, content);
        QFETCH(bool, result);
        QFETCH(QStringList, messages);

        ManagerPtr manager(new BusFileDataManager());
        workspace.putControllerFile(RDE_PFS_DES_XML, content);
        pendantsim::failNextTransfers(failures);
        IndexedDescriptions inputs{{"old", "kept unless read"}};
        IndexedDescriptions outputs = inputs;

        QCOMPARE(manager->getAndReadPfsDesc(inputs, outputs), result);
        QCOMPARE(pendantsim::transferAttempts(), qMin(failures + 1, 3));
        QStringList shown;
        for (const pendantsim::ShownMessage &message : pendantsim::shownMessages())
            shown.append(message.text);
        QCOMPARE(shown, messages);
        if (result) {
            QCOMPARE(
                    inputs,
                    (IndexedDescriptions{{"1", "Door locked"}, {"2", "Light curtain"}, {"3", ""}}));
            QCOMPARE(outputs, (IndexedDescriptions{{"1", "Lamp &amp; horn"}}));
        } else {
            QCOMPARE(inputs, (IndexedDescriptions{{"old", "kept unless read"}}));
            QCOMPARE(outputs, inputs);
        }
    }
};

QTEST_GUILESS_MAIN(TestDescriptions)
#include "tst_descriptions.moc"
