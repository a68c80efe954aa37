// The IO-mapping screen in a real window, driven through its widgets.
#include "MappingScreen.h"
#include "PendantSim.h"
#include "ProgressBarWidget.h"
#include "TestWorkspace.h"
#include "Workspace.h"

#include <QComboBox>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTabWidget>
#include <QTableWidget>
#include <QTreeWidget>
#include <QtTest>

#include <csignal>
#include <memory>

namespace {

const QString sample = QStringLiteral(FBC_EXAMPLES "/controller");
const QString faults = QStringLiteral(FBC_EXAMPLES "/controller-with-faults");
const QString sampleMapping = sample + QStringLiteral("/application/fidbus/signal_mapping.cfg");

QVector<FuncAndMapInfo> inputs()
{
    QVector<FuncAndMapInfo> table;
    BusFileDataManager::getInstance()->getBusSignalMap(BusInput, table);
    return table;
}

QString addressOf(const QString &name)
{
    for (const FuncAndMapInfo &row : inputs()) {
        if (row.name == name)
            return row.address;
    }
    return QStringLiteral("none");
}

} // namespace

class TestMappingScreen : public QObject
{
    Q_OBJECT

private:
    void open(const QString &controller);
    template<typename T>
    T *child(const char *name) const
    {
        return screen->findChild<T *>(QLatin1String(name));
    }
    int rowOf(QTableWidget *table, const QString &function) const;
    void typeAddress(const QString &function, const QString &text);
    QString status() const { return child<QLabel>("statusLine")->text(); }

    QTemporaryDir copies;
    std::unique_ptr<Workspace> workspace;
    std::unique_ptr<MappingScreen> screen;

private slots:
    void cleanup();
    void busSelectionShowsItsRows();
    void editAddress_data();
    void editAddress();
    void mapNewFunction_data();
    void mapNewFunction();
    void save_data();
    void save();
    void switchLanguage();
    void checkPanelSelectsFaultyRows_data();
    void checkPanelSelectsFaultyRows();
    void saveRefused_data();
    void saveRefused();
    void commandLine_data();
    void commandLine();
    void darkStyle();
    void temporaryFolderRemoved_data();
    void temporaryFolderRemoved();
};

void TestMappingScreen::open(const QString &controller)
{
    TestWorkspace::resetSimulation();
    pendantsim::setServoOn(false);
    // Screens save into the controller folder: they get copies of the trees.
    QVERIFY(copies.isValid());
    const QString copy = copies.path() + QStringLiteral("/") + QFileInfo(controller).fileName();
    QDir(copy).removeRecursively();
    QVERIFY(pendantsim::copyFolder(controller, copy));
    workspace = std::make_unique<Workspace>();
    QVERIFY2(workspace->prepare(copy), qPrintable(workspace->errorString()));
    // The read flags and the fetched files are the manager's: each tree gets a fresh one.
    delete BusFileDataManager::_pInstance;
    screen = std::make_unique<MappingScreen>();
    screen->show();
    QTRY_VERIFY(screen->isReady());
    QTRY_VERIFY(!screen->findChild<ProgressBarWidget *>()->isVisible());
}

void TestMappingScreen::cleanup()
{
    screen.reset(); // detaches before the manager goes
    delete BusFileDataManager::_pInstance;
    workspace.reset();
}

int TestMappingScreen::rowOf(QTableWidget *table, const QString &function) const
{
    for (int i = 0; i < table->rowCount(); ++i) {
        if (table->item(i, 1)->text() == function)
            return i;
    }
    return -1;
}

// What the cell's editor hands over when the user presses Enter.
void TestMappingScreen::typeAddress(const QString &function, const QString &text)
{
    auto *table = child<QTableWidget>("inputTable");
    const int row = rowOf(table, function);
    QVERIFY(row >= 0);
    table->item(row, 3)->setText(text);
}

void TestMappingScreen::busSelectionShowsItsRows()
{
    open(sample);
    auto *buses = child<QTreeWidget>("busList");
    buses->setCurrentItem(buses->findItems(QStringLiteral("ethcat"), Qt::MatchExactly, 1).value(0));
    auto *table = child<QTableWidget>("inputTable");
    QVERIFY(table->rowCount() > 5);
    int last = -1;
    for (int i = 0; i < table->rowCount(); ++i) {
        const int address = table->item(i, 3)->text().toInt();
        if (address < 0 || table->item(i, 2)->text().contains(QLatin1String("group")))
            break; // rows without address and group rows follow, each sorted too
        QVERIFY2(address >= last, "rows sorted by address");
        last = address;
    }
    QVERIFY(rowOf(table, QStringLiteral("welder_ready")) >= 0);
    QCOMPARE(rowOf(table, QStringLiteral("ext_start")), -1);
    // The functions offered for a new row are those not mapped yet.
    auto *functions = child<QComboBox>("inputFunctions");
    QVERIFY(functions->findText(QStringLiteral("Common: zone_release_2 (bool)")) >= 0);
    QCOMPARE(functions->findText(QStringLiteral("Common: ext_start (bool)")), -1);
}

void TestMappingScreen::editAddress_data()
{
    QTest::addColumn<QString>("function");
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("servoOn");
    QTest::addColumn<QString>("address"); // in the working table afterwards
    QTest::addColumn<QString>("reason"); // in the status line; empty when accepted

    QTest::newRow("taken") << "ext_start"
                           << "1" << false << "0"
                           << "taken by Common ext_stop";
    QTest::newRow("free") << "ext_start"
                          << "30" << false << "30"
                          << "";
    QTest::newRow("beyond the bus") << "ext_start"
                                    << "256" << false << "0"
                                    << "beyond mtcp's 256";
    QTest::newRow("inside a group") << "ext_start"
                                    << "200" << false << "0"
                                    << "inside int group 1";
    QTest::newRow("not a number") << "ext_start"
                                  << "x1" << false << "0"
                                  << "not an address";
    QTest::newRow("missing group") << "speed_override"
                                   << "7" << false << "2"
                                   << "no int input group 7";
    QTest::newRow("taken group") << "speed_override"
                                 << "1" << false << "2"
                                 << "taken by Common program_number";
    QTest::newRow("unmapped") << "ext_start"
                              << "-1" << false << "none"
                              << "";
    QTest::newRow("servo on") << "ext_start"
                              << "30" << true << "0"
                              << "does not allow editing";
}

void TestMappingScreen::editAddress()
{
    QFETCH(QString, function);
    QFETCH(QString, text);
    QFETCH(bool, servoOn);
    open(sample);
    pendantsim::setServoOn(servoOn);
    const QByteArray before = TestWorkspace::readFile(TPU_SIGNAL_MAP_CFG);

    typeAddress(function, text);

    QTEST(addressOf(function), "address");
    QFETCH(QString, reason);
    QVERIFY2(status().contains(reason), qPrintable(status()));
    auto *table = child<QTableWidget>("inputTable");
    const int row = rowOf(table, function);
    if (reason.isEmpty()) {
        QCOMPARE(row >= 0, text != QLatin1String("-1"));
    } else {
        // Shown where it was typed, marked, and written nowhere.
        QCOMPARE(table->item(row, 3)->text(), text);
        QCOMPARE(table->item(row, 3)->toolTip(), status());
    }
    QCOMPARE(pendantsim::shownMessages().size(), servoOn ? 1 : 0);
    QCOMPARE(TestWorkspace::readFile(TPU_SIGNAL_MAP_CFG), before);
    // An accepted edit waits for Save, and the changes tab says so.
    QCOMPARE(child<QTreeWidget>("changes")->topLevelItemCount(), reason.isEmpty() ? 1 : 0);
}

void TestMappingScreen::mapNewFunction_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("reason"); // in the status line; empty when mapped

    QTest::newRow("free") << "30"
                          << "";
    QTest::newRow("taken") << "1"
                           << "taken by Common ext_stop";
    QTest::newRow("minus one") << "-1"
                               << "address -1 is beyond";
    QTest::newRow("not a number") << "x"
                                  << "not an address";
}

void TestMappingScreen::mapNewFunction()
{
    QFETCH(QString, text);
    QFETCH(QString, reason);
    open(sample);
    const QString function = QStringLiteral("zone_release_2");
    auto *functions = child<QComboBox>("inputFunctions");
    functions->setCurrentIndex(
            functions->findText(QStringLiteral("Common: zone_release_2 (bool)")));
    QVERIFY(functions->currentIndex() >= 0);
    child<QLineEdit>("inputAddress")->setText(text);
    QTest::mouseClick(child<QPushButton>("inputAdd"), Qt::LeftButton);

    QVERIFY2(status().contains(reason), qPrintable(status()));
    QCOMPARE(addressOf(function), reason.isEmpty() ? text : QStringLiteral("none"));
    auto *table = child<QTableWidget>("inputTable");
    const int row = rowOf(table, function);
    QCOMPARE(row >= 0, reason.isEmpty());
    if (reason.isEmpty()) {
        QCOMPARE(table->item(row, 3)->text(), text);
        QCOMPARE(functions->findText(QStringLiteral("Common: zone_release_2 (bool)")), -1);
    }
    QCOMPARE(child<QTreeWidget>("changes")->topLevelItemCount(), reason.isEmpty() ? 1 : 0);
}

void TestMappingScreen::save_data()
{
    QTest::addColumn<bool>("connected");
    QTest::newRow("sent") << true;
    QTest::newRow("link down") << false;
}

void TestMappingScreen::save()
{
    QFETCH(bool, connected);
    open(sample);
    const QString controllerFile = pendantsim::controllerFilePath(RDE_SIGNAL_MAP_CFG);
    const QByteArray original = TestWorkspace::readFile(controllerFile);
    // Only the edited row changes; every other byte stays as the sample has it.
    QByteArray expected = original;
    const int line = expected.indexOf("-Name ext_start ");
    const int at = expected.indexOf("-Address 0        ", line);
    QVERIFY(line > 0 && at > line);
    expected.replace(at, 18, "-Address 30       ");

    typeAddress(QStringLiteral("ext_start"), QStringLiteral("30"));
    pendantsim::setConnected(connected);
    pendantsim::setTransferDelayMs(100);
    auto *progress = screen->findChild<ProgressBarWidget *>();
    QTest::mouseClick(child<QPushButton>("saveButton"), Qt::LeftButton);
    QVERIFY(progress->isVisible());
    QTRY_VERIFY_WITH_TIMEOUT(!progress->isVisible(), 10000);

    QCOMPARE(TestWorkspace::readFile(controllerFile), connected ? expected : original);
    const QStringList shown = [] {
        QStringList texts;
        for (const pendantsim::ShownMessage &m : pendantsim::shownMessages())
            texts.append(m.text);
        return texts;
    }();
    QCOMPARE(
            shown.contains(
                    QStringLiteral("Failed to send %1 to the controller!").arg(RDE_SIGNAL_MAP_CFG)),
            !connected);
    // A failed send keeps the edit for another try.
    QCOMPARE(addressOf(QStringLiteral("ext_start")), QStringLiteral("30"));
    QVERIFY(child<QPushButton>("saveButton")->isEnabled());
    QCOMPARE(child<QTreeWidget>("changes")->topLevelItemCount(), connected ? 0 : 1);
    if (!connected) {
        // The edits kept are sent once the link is back.
        pendantsim::setConnected(true);
        QTest::mouseClick(child<QPushButton>("saveButton"), Qt::LeftButton);
        QTRY_VERIFY_WITH_TIMEOUT(!progress->isVisible(), 10000);
        QVERIFY2(status().startsWith(QLatin1String("Saved")), qPrintable(status()));
        QCOMPARE(TestWorkspace::readFile(controllerFile), expected);
    }
    QCOMPARE(TestWorkspace::readFile(sampleMapping), original);
}

void TestMappingScreen::switchLanguage()
{
    open(sample);
    auto *tabs = child<QTabWidget>("tabs");
    auto *table = child<QTableWidget>("inputTable");
    auto *language = child<QComboBox>("languageBox");
    language->setCurrentIndex(MappingScreen::Chinese);
    QCOMPARE(tabs->tabText(0), QStringLiteral("输入映射"));
    QCOMPARE(child<QPushButton>("saveButton")->text(), QStringLiteral("保存"));
    QVERIFY(rowOf(table, QStringLiteral("外部启动")) >= 0);
    QCOMPARE(table->item(rowOf(table, QStringLiteral("外部启动")), 0)->text(),
             QStringLiteral("通用功能"));
    QCOMPARE(child<QLabel>("title")->text(), QStringLiteral("现场总线 IO 映射"));

    language->setCurrentIndex(MappingScreen::English);
    QCOMPARE(tabs->tabText(0), QStringLiteral("Input mapping"));
    QVERIFY(rowOf(table, QStringLiteral("ext_start")) >= 0);
}

void TestMappingScreen::checkPanelSelectsFaultyRows_data()
{
    QTest::addColumn<QString>("where");
    QTest::addColumn<QString>("bus");
    QTest::addColumn<int>("tab");
    QTest::addColumn<QString>("selected"); // function, or group number on the groups tab

    QTest::newRow("collision") << "signal_mapping.cfg:31"
                               << "ethcat" << 1 << "gas_on";
    QTest::newRow("missing group") << "signal_mapping.cfg:9"
                                   << "mtcp" << 0 << "speed_override";
    QTest::newRow("group overlap") << "user_groupio.cfg:5"
                                   << "ethcat" << 2 << "2";
    QTest::newRow("unknown bus") << "signal_mapping.cfg:12"
                                 << "mtcp" << 0 << "";
}

void TestMappingScreen::checkPanelSelectsFaultyRows()
{
    open(faults);
    auto *panel = child<QTreeWidget>("checkPanel");
    QCOMPARE(panel->topLevelItemCount(), 18);
    QCOMPARE(panel->findItems(QStringLiteral("error"), Qt::MatchExactly, 0).size(), 15);
    // At the pendant's 800x600 every file and line is shown whole.
    for (int i = 0; i < panel->topLevelItemCount(); ++i) {
        const QString where = panel->topLevelItem(i)->text(1);
        QVERIFY2(panel->fontMetrics().horizontalAdvance(where) < panel->header()->sectionSize(1),
                 qPrintable(where));
    }

    QFETCH(QString, where);
    const QList<QTreeWidgetItem *> items = panel->findItems(where, Qt::MatchExactly, 1);
    QVERIFY2(!items.isEmpty(), qPrintable(where));
    panel->setCurrentItem(items.constFirst());

    QTEST(child<QTreeWidget>("busList")->currentItem()->text(1), "bus");
    QTEST(child<QTabWidget>("tabs")->currentIndex(), "tab");
    QFETCH(int, tab);
    QFETCH(QString, selected);
    auto *table = tab == 2 ? child<QTableWidget>("groupTable")
                           : child<QTableWidget>(tab == 0 ? "inputTable" : "outputTable");
    const QList<QTableWidgetItem *> chosen = table->selectedItems();
    if (selected.isEmpty()) {
        QVERIFY(status().contains(QLatin1String("cclink")));
        return;
    }
    QVERIFY(!chosen.isEmpty());
    QCOMPARE(table->item(chosen.constFirst()->row(), tab == 2 ? 2 : 1)->text(), selected);
}

void TestMappingScreen::saveRefused_data()
{
    QTest::addColumn<QString>("fault");
    QTest::addColumn<QString>("message");
    QTest::newRow("unclean lines") << "unclean"
                                   << "cannot be written back as it stands \\(%1:5, %1:6\\)";
    QTest::newRow("folder busy")
            << "busy"
            << "^busy: .* is being changed by pid \\d+ \\(tst_mappingscreen\\); try again$";
    QTest::newRow("changed since read") << "changed"
                                        << "^%1 changed on the controller since";
}

// Save writes nothing the controller's file would lose: not over lines the
// reader could not read, not while another writer holds the folder, not over
// a change made since the screen read the file.
void TestMappingScreen::saveRefused()
{
    QFETCH(QString, fault);
    QFETCH(QString, message);
    QTemporaryDir broken;
    QString controller = sample;
    if (fault == QLatin1String("unclean")) {
        controller = broken.filePath(QStringLiteral("controller"));
        QVERIFY(pendantsim::copyFolder(sample, controller));
        const QString file = controller + QStringLiteral("/application/fidbus/signal_mapping.cfg");
        QList<QByteArray> lines = TestWorkspace::readFile(file).split('\n');
        lines[4].replace("-FieldBus MTCP", "");
        lines.insert(5, "a stray line");
        TestWorkspace::writeFile(file, lines.join('\n'));
    }
    open(controller);
    const QString controllerFile = pendantsim::controllerFilePath(RDE_SIGNAL_MAP_CFG);
    std::unique_ptr<pendantsim::FolderLock> held;
    if (fault == QLatin1String("busy")) {
        held = std::make_unique<pendantsim::FolderLock>(pendantsim::controllerRoot());
        QVERIFY(held->tryLock(0));
    } else if (fault == QLatin1String("changed")) {
        TestWorkspace::writeFile(controllerFile,
                                 TestWorkspace::readFile(controllerFile) + "# by another\n");
    }
    typeAddress(QStringLiteral("alarm_reset"), QStringLiteral("40"));
    const QByteArray before = TestWorkspace::readFile(controllerFile);
    const QByteArray local = TestWorkspace::readFile(TPU_SIGNAL_MAP_CFG);
    QTest::mouseClick(child<QPushButton>("saveButton"), Qt::LeftButton);
    message.replace(QStringLiteral("%1"), QRegularExpression::escape(controllerFile));
    QVERIFY2(QRegularExpression(message).match(status()).hasMatch(), qPrintable(status()));
    QCOMPARE(pendantsim::shownMessages().size(), 1);
    QCOMPARE(pendantsim::shownMessages().constFirst().text, status());
    QCOMPARE(TestWorkspace::readFile(controllerFile), before);
    QCOMPARE(TestWorkspace::readFile(TPU_SIGNAL_MAP_CFG), local);
    QCOMPARE(addressOf(QStringLiteral("alarm_reset")), QStringLiteral("40")); // the edit stays
    QVERIFY(child<QPushButton>("saveButton")->isEnabled());
}

void TestMappingScreen::commandLine_data()
{
    QTest::addColumn<QStringList>("args");
    QTest::addColumn<QString>("message");
    const QString file = sample + QStringLiteral("/fa/controller_config.cfg");
    QTest::newRow("language") << QStringList{"--lang", "fr"} << "--lang must be en or zh, not 'fr'";
    QTest::newRow("language alias") << QStringList{"--language", "de"} << "en or zh, not 'de'";
    QTest::newRow("style") << QStringList{"--style", "neon"}
                           << "--style must be light or dark, not 'neon'";
    QTest::newRow("negative delay")
            << QStringList{"--transfer-delay", "-5"} << "0 or more, not '-5'";
    QTest::newRow("word delay") << QStringList{"--transfer-delay", "slow"} << "not 'slow'";
    QTest::newRow("empty controller") << QStringList{"--controller", ""} << "needs a folder";
    QTest::newRow("controller without value") << QStringList{"--controller"} << "'--controller'";
    QTest::newRow("missing controller") << QStringList{"--controller", "/nonexistent/ctl"}
                                        << "/nonexistent/ctl: no such folder";
    QTest::newRow("file as controller")
            << QStringList{"--controller", file} << QStringLiteral("%1: not a folder").arg(file);
    QTest::newRow("no configuration")
            << QStringList{"--controller", QDir::tempPath()} << "holds no controller configuration";
    QTest::newRow("Qt's own option") << QStringList{"-style", "fusion"} << "Unknown option";
}

// Bad values stop the screen before any window, with exit status 2.
void TestMappingScreen::commandLine()
{
    QFETCH(QStringList, args);
    QFETCH(QString, message);
    QProcess program;
    program.start(QStringLiteral(FBCFG_SCREEN_PATH), args);
    QVERIFY(program.waitForFinished(30000));
    const QString err = QString::fromUtf8(program.readAllStandardError());
    QCOMPARE(program.exitCode(), 2);
    QVERIFY2(err.startsWith(QStringLiteral("fbcfg-screen: ")) && err.contains(message)
                     && err.endsWith(QStringLiteral("--help\n"))
                     && err.count(QLatin1Char('\n')) == 1,
             qPrintable(err));
    QVERIFY(program.readAllStandardOutput().isEmpty());
}

// --style dark reaches the screen: Qt does not take it for its own.
void TestMappingScreen::darkStyle()
{
    QTemporaryDir pictures;
    qint64 lightness[2] = {};
    for (const bool dark : {false, true}) {
        const QString file = pictures.filePath(dark ? "dark.png" : "light.png");
        QProcess program;
        program.start(QStringLiteral(FBCFG_SCREEN_PATH),
                      {"--style", dark ? "dark" : "light", "--transfer-delay", "0", "--screenshot",
                       file});
        QVERIFY(program.waitForFinished(60000));
        QCOMPARE(program.exitCode(), 0);
        const QImage image(file);
        QVERIFY(!image.isNull());
        for (int y = 0; y < image.height(); y += 7) {
            for (int x = 0; x < image.width(); x += 7)
                lightness[dark] += QColor(image.pixel(x, y)).lightness();
        }
    }
    QVERIFY2(lightness[true] * 2 < lightness[false], "the dark style is not darker");
}

void TestMappingScreen::temporaryFolderRemoved_data()
{
    QTest::addColumn<int>("signal"); // 0: the screen ends by itself
    QTest::newRow("normal end") << 0;
    QTest::newRow("SIGINT") << int(SIGINT);
    QTest::newRow("SIGTERM") << int(SIGTERM);
    QTest::newRow("SIGHUP") << int(SIGHUP);
}

// The copy of the sample goes however the screen ends.
void TestMappingScreen::temporaryFolderRemoved()
{
    QFETCH(int, signal);
    QTemporaryDir pictures;
    QStringList args{"--transfer-delay", "0"};
    if (!signal)
        args << "--screenshot" << pictures.filePath("end.png");
    QProcess program;
    program.start(QStringLiteral(FBCFG_SCREEN_PATH), args);
    QString err;
    const QRegularExpression announced(QStringLiteral("controller folder (\\S+)/Controller\\n"));
    QTRY_VERIFY_WITH_TIMEOUT((err += QString::fromUtf8(program.readAllStandardError()),
                              announced.match(err).hasMatch()),
                             30000);
    const QString folder = announced.match(err).captured(1);
    if (signal)
        QCOMPARE(::kill(pid_t(program.processId()), signal), 0);
    QVERIFY(program.waitForFinished(30000));
    if (!signal)
        QCOMPARE(program.exitCode(), 0);
    QVERIFY2(!folder.isEmpty() && !QFileInfo::exists(folder), qPrintable(folder));
}

QTEST_MAIN(TestMappingScreen)
#include "tst_mappingscreen.moc"
