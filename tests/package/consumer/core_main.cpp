// Uses FieldbusConfig::Core the way a terminal tool would: no widget in sight.
#include <fieldbusconfig/BusFileDataManager.h>
#include <fieldbusconfig/ConfigCheck.h>

#include <QCoreApplication>
#include <QTemporaryDir>

int main(int argc, char **argv)
{
    QCoreApplication app(argc, argv);
    QTemporaryDir empty;
    // An empty folder: every file is missing, and the check says so.
    const ConfigSnapshot snapshot =
            ConfigSnapshot::load(empty.path(), ConfigSnapshot::ControllerLayout);
    const QVector<CheckFinding> findings = ConfigCheck::run(snapshot);
    return !findings.isEmpty() && BusFileDataManager::checkIPv4Format("10.0.0.1") ? 0 : 1;
}
