// fbcfg-screen: the pendant's IO-mapping screen on the simulated platform.

#include "MappingScreen.h"
#include "Workspace.h"

#include <fieldbusconfig/FieldbusNames.h>
#include <fieldbusconfig/PendantSim.h>

#include <QApplication>
#include <QCommandLineParser>
#include <QFileInfo>
#include <QMessageBox>

#include <cstdio>

namespace {

// The platform's message box, drawn with Qt's.
int showBox(const pendantsim::ShownMessage &message)
{
    const QMessageBox::Icon icon = message.type == ErrorMessage ? QMessageBox::Critical
            : message.type == WarningMessage                    ? QMessageBox::Warning
                                                                : QMessageBox::Information;
    const QMessageBox::StandardButtons buttons = message.buttons == YesNoButtons
            ? QMessageBox::Yes | QMessageBox::No
            : QMessageBox::StandardButtons(QMessageBox::Ok);
    QMessageBox box(icon, QApplication::applicationDisplayName(), message.text, buttons,
                    QApplication::activeWindow());
    const int answer = box.exec();
    return answer == QMessageBox::No ? MsgBox::No : MsgBox::Yes;
}

struct Options
{
    QString controller;
    bool chinese = false;
    bool dark = false;
    int transferDelayMs = 300;
    QString screenshot;
};

int usageError(const QString &what)
{
    fprintf(stderr, "fbcfg-screen: %s; see fbcfg-screen --help\n", qPrintable(what));
    return 2;
}

// The command line, read before QApplication exists: Qt would take --style
// for its own widget style. 0 to go on, else the exit status.
int parseOptions(const QStringList &arguments, Options &options, bool &done)
{
    QCommandLineParser parser;
    parser.setApplicationDescription(
            QStringLiteral("The pendant's fieldbus IO-mapping screen, on a controller folder."));
    const QCommandLineOption help({QStringLiteral("h"), QStringLiteral("help")},
                                  QStringLiteral("Show this help."));
    const QCommandLineOption controller(
            QStringLiteral("controller"),
            QStringLiteral("Controller folder to work on (changed by Save); default: a copy of "
                           "the bundled sample."),
            QStringLiteral("DIR"));
    const QCommandLineOption lang({QStringLiteral("lang"), QStringLiteral("language")},
                                  QStringLiteral("Language of the screen: en or zh."),
                                  QStringLiteral("en|zh"), QStringLiteral("en"));
    const QCommandLineOption style(QStringLiteral("style"),
                                   QStringLiteral("The pendant's look: light or dark."),
                                   QStringLiteral("light|dark"), QStringLiteral("light"));
    const QCommandLineOption delay(QStringLiteral("transfer-delay"),
                                   QStringLiteral("Milliseconds each controller transfer takes "
                                                  "(0 or more)."),
                                   QStringLiteral("MS"), QStringLiteral("300"));
    const QCommandLineOption screenshot(
            QStringLiteral("screenshot"),
            QStringLiteral("Save a picture of the window once it is ready, then quit."),
            QStringLiteral("FILE"));
    parser.addOptions({help, controller, lang, style, delay, screenshot});
    if (!parser.parse(arguments)) {
        QString error = parser.errorText();
        if (error.endsWith(QLatin1Char('.')))
            error.chop(1); // the usage hint follows
        return usageError(error);
    }
    if (parser.isSet(help)) {
        // The help text names the program from the application's arguments.
        int helpArgc = 1;
        char name[] = "fbcfg-screen";
        char *helpArgv[] = {name, nullptr};
        QCoreApplication helpApp(helpArgc, helpArgv);
        fputs(qPrintable(parser.helpText()), stdout);
        done = true;
        return 0;
    }
    if (!parser.positionalArguments().isEmpty())
        return usageError(QStringLiteral("unexpected argument '%1'")
                                  .arg(parser.positionalArguments().constFirst()));
    const QString language = parser.value(lang);
    if (language != QLatin1String("en") && language != QLatin1String("zh"))
        return usageError(QStringLiteral("--lang must be en or zh, not '%1'").arg(language));
    const QString look = parser.value(style);
    if (look != QLatin1String("light") && look != QLatin1String("dark"))
        return usageError(QStringLiteral("--style must be light or dark, not '%1'").arg(look));
    bool number = false;
    options.transferDelayMs = parser.value(delay).toInt(&number);
    if (!number || options.transferDelayMs < 0)
        return usageError(QStringLiteral("--transfer-delay must be milliseconds, 0 or more, not "
                                         "'%1'")
                                  .arg(parser.value(delay)));
    if (parser.isSet(controller)) {
        const QString dir = parser.value(controller);
        const QFileInfo info(dir);
        if (dir.isEmpty())
            return usageError(QStringLiteral("--controller needs a folder, not an empty value"));
        if (!info.isDir())
            return usageError(QStringLiteral("--controller %1: %2")
                                      .arg(dir,
                                           info.exists() ? QStringLiteral("not a folder")
                                                         : QStringLiteral("no such folder")));
        if (!QFileInfo(dir + QStringLiteral("/application/fidbus")).isDir())
            return usageError(QStringLiteral("--controller %1 holds no controller configuration "
                                             "(no application/fidbus)")
                                      .arg(dir));
        options.controller = dir;
    }
    options.chinese = language == QLatin1String("zh");
    options.dark = look == QLatin1String("dark");
    options.screenshot = parser.value(screenshot);
    return 0;
}

} // namespace

int main(int argc, char *argv[])
{
    QStringList arguments;
    for (int i = 0; i < argc; ++i)
        arguments.append(QString::fromLocal8Bit(argv[i]));
    Options options;
    bool done = false;
    if (const int rc = parseOptions(arguments, options, done))
        return rc;
    if (done)
        return 0;
    // Qt sees none of the options: they are the screen's.
    int qtArgc = 1;
    QApplication app(qtArgc, argv);
    QApplication::setApplicationName(QStringLiteral("fbcfg-screen"));
    QApplication::setApplicationDisplayName(QStringLiteral("fbcfg-screen"));

    Workspace workspace;
    if (!workspace.prepare(options.controller)) {
        fprintf(stderr, "fbcfg-screen: %s\n", qPrintable(workspace.errorString()));
        return 1;
    }
    fprintf(stderr, "fbcfg-screen: controller folder %s\n", qPrintable(workspace.controllerDir()));

    // What the pendant's platform reports; the manager takes them when it is made.
    pendantsim::setUiStyle(options.dark ? 1 : 0);
    pendantsim::setTransferDelayMs(options.transferDelayMs);
    pendantsim::setMsgBoxHandler(showBox);

    int rc = 0;
    {
        MappingScreen screen;
        if (options.chinese)
            screen.setLanguage(MappingScreen::Chinese);
        screen.show();
        if (!options.screenshot.isEmpty()) {
            QObject::connect(
                    &screen, &MappingScreen::ready, &app,
                    [&] {
                        if (!screen.grab().save(options.screenshot))
                            fprintf(stderr, "fbcfg-screen: cannot save %s\n",
                                    qPrintable(options.screenshot));
                        app.quit();
                    },
                    Qt::QueuedConnection);
        }
        rc = app.exec();
    }
    pendantsim::setMsgBoxHandler(nullptr);
    // Stops the transfer thread before the application goes away.
    delete BusFileDataManager::getInstance();
    return rc;
}
