// Uses the installed headers and libraries the way a pendant screen would.
#include <fieldbusconfig/BusFileDataManager.h>
#include <fieldbusconfig/FieldbusConfigVersion.h>
#include <fieldbusconfig/PendantSim.h>
#include <fieldbusconfig/platform/DataAccess.h>

#include <QCoreApplication>
#include <QDir>
#include <QTemporaryDir>

class Screen : public BusObserver
{
public:
    void onFileNotify(FileHandle, const QString &, bool) override { ++calls; }
    int calls = 0;
};

int main(int argc, char **argv)
{
    QCoreApplication app(argc, argv);
    QTemporaryDir dir;
    QDir(dir.path()).mkpath("pendant");
    QDir::setCurrent(dir.path() + "/pendant");
    pendantsim::setControllerRoot(dir.path() + "/Controller");

    Screen screen;
    screen.setIsFieldXml(true);
    BusFileDataManager *manager = BusFileDataManager::getInstance();
    manager->attach(&screen);
    manager->detach(&screen);
    static_assert(FIELDBUSCONFIG_VERSION_MAJOR >= 0, "version header");
    const bool ok = !manager->isFuncInfoNotified("fieldbus")
            && performanceProtocolNames().size() == 10
            && QString(FIELDBUSCONFIG_VERSION_STRING).count('.') == 2
            && !DataAccess::GetFileFromController2TPU("/nowhere", "x", false);
    return ok ? 0 : 1;
}
