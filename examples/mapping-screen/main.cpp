// fbcfg-screen: the pendant's IO-mapping screen on the simulated platform.

#include "MappingScreen.h"
#include "Workspace.h"

#include <fieldbusconfig/PendantSim.h>

#include <QApplication>
#include <QCommandLineParser>
#include <QMessageBox>

#include <cstdio>

namespace {

// The platform's message box, drawn with Qt's: type 2 is an error, 1 a warning,
// buttons 3 a yes/no question.
int showBox(const pendantsim::ShownMessage &message)
{
    const QMessageBox::Icon icon = message.type == 2 ? QMessageBox::Critical
            : message.type == 1                      ? QMessageBox::Warning
                                                     : QMessageBox::Information;
    const QMessageBox::StandardButtons buttons = message.buttons == 3
            ? QMessageBox::Yes | QMessageBox::No
            : QMessageBox::StandardButtons(QMessageBox::Ok);
    QMessageBox box(icon, QApplication::applicationDisplayName(), message.text, buttons,
                    QApplication::activeWindow());
    const int answer = box.exec();
    return answer == QMessageBox::No ? MsgBox::No : MsgBox::Yes;
}

} // namespace

int main(int argc, char *argv[])
{
    QApplication app(argc, argv);
    QApplication::setApplicationName(QStringLiteral("fbcfg-screen"));
    QApplication::setApplicationDisplayName(QStringLiteral("fbcfg-screen"));

    QCommandLineParser parser;
    parser.setApplicationDescription(
            QStringLiteral("The pendant's fieldbus IO-mapping screen, on a controller folder."));
    parser.addHelpOption();
    const QCommandLineOption controller(
            QStringLiteral("controller"),
            QStringLiteral("Controller folder to work on (changed by Save); default: a copy of "
                           "the bundled sample."),
            QStringLiteral("DIR"));
    const QCommandLineOption language(QStringLiteral("language"),
                                      QStringLiteral("Language of the screen: en or zh."),
                                      QStringLiteral("en|zh"), QStringLiteral("en"));
    const QCommandLineOption style(QStringLiteral("style"),
                                   QStringLiteral("The pendant's look: light or dark."),
                                   QStringLiteral("light|dark"), QStringLiteral("light"));
    const QCommandLineOption delay(QStringLiteral("transfer-delay"),
                                   QStringLiteral("Milliseconds each controller transfer takes."),
                                   QStringLiteral("ms"), QStringLiteral("300"));
    const QCommandLineOption screenshot(
            QStringLiteral("screenshot"),
            QStringLiteral("Save a picture of the window once it is ready, then quit."),
            QStringLiteral("FILE"));
    parser.addOptions({controller, language, style, delay, screenshot});
    parser.process(app);

    Workspace workspace;
    if (!workspace.prepare(parser.value(controller))) {
        fprintf(stderr, "fbcfg-screen: %s\n", qPrintable(workspace.errorString()));
        return 1;
    }
    fprintf(stderr, "fbcfg-screen: controller folder %s\n", qPrintable(workspace.controllerDir()));

    // What the pendant's platform reports; the manager takes them when it is made.
    pendantsim::setUiStyle(parser.value(style) == QLatin1String("dark") ? 1 : 0);
    pendantsim::setTransferDelayMs(parser.value(delay).toInt());
    pendantsim::setMsgBoxHandler(showBox);

    int rc = 0;
    {
        MappingScreen screen;
        if (parser.value(language) == QLatin1String("zh"))
            screen.setLanguage(MappingScreen::Chinese);
        screen.show();
        if (parser.isSet(screenshot)) {
            QObject::connect(
                    &screen, &MappingScreen::ready, &app,
                    [&] {
                        if (!screen.grab().save(parser.value(screenshot)))
                            fprintf(stderr, "fbcfg-screen: cannot save %s\n",
                                    qPrintable(parser.value(screenshot)));
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
