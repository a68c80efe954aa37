#include "Workspace.h"

#include <fieldbusconfig/ConfigSnapshot.h>
#include <fieldbusconfig/PendantSim.h>

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>

Workspace::~Workspace()
{
    if (!m_previousDir.isEmpty())
        QDir::setCurrent(m_previousDir);
    if (m_temporary)
        pendantsim::forgetOnSignal(m_temporary->path());
}

QString Workspace::sampleDir()
{
    const QDir binDir(QCoreApplication::applicationDirPath());
    const QString candidates[] = {QDir::cleanPath(binDir.absoluteFilePath(QStringLiteral(
                                          SCREEN_DATA_FROM_BIN "/examples/controller"))),
                                  QStringLiteral(SCREEN_SOURCE_SAMPLE)};
    for (const QString &dir : candidates) {
        if (QFileInfo(dir).isDir())
            return dir;
    }
    return QString();
}

bool Workspace::fail(const QString &error)
{
    m_error = error;
    return false;
}

bool Workspace::prepare(const QString &controller)
{
    m_temporary = std::make_unique<QTemporaryDir>(QDir::tempPath()
                                                  + QStringLiteral("/fbcfg-screen-XXXXXX"));
    if (!m_temporary->isValid())
        return fail(m_temporary->errorString());
    // Gone however the screen ends: closed, or SIGINT, SIGTERM or SIGHUP.
    pendantsim::removeOnSignal(m_temporary->path());
    if (controller.isEmpty()) {
        const QString sample = sampleDir();
        if (sample.isEmpty())
            return fail(
                    QStringLiteral("the sample controller is missing; give one with --controller"));
        m_controllerDir = m_temporary->path() + QStringLiteral("/Controller");
        if (!pendantsim::copyFolder(sample, m_controllerDir))
            return fail(QStringLiteral("cannot copy the sample controller"));
    } else {
        m_controllerDir = QDir(controller).absolutePath();
        if (!QFileInfo(m_controllerDir + QStringLiteral("/application/fidbus")).isDir())
            return fail(
                    QStringLiteral("%1 is not a controller folder: it has no application/fidbus")
                            .arg(m_controllerDir));
    }
    const QString pendantDir = m_temporary->path() + QStringLiteral("/pendant");
    if (!QDir().mkpath(pendantDir) || !prepareAppParameters(pendantDir))
        return fail(QStringLiteral("cannot prepare the pendant folder %1").arg(pendantDir));
    // The library finds its working folder and the parameter files from here.
    m_previousDir = QDir::currentPath();
    QDir::setCurrent(pendantDir);
    pendantsim::setControllerRoot(m_controllerDir);
    return true;
}

bool Workspace::prepareAppParameters(const QString &pendantDir)
{
    QMap<QString, SnapshotModule> modules;
    for (const QString &language : {QStringLiteral("en"), QStringLiteral("cn")}) {
        const QString name = QStringLiteral("appParameters_%1.xml").arg(language);
        const QString source = m_controllerDir + QStringLiteral("/pendant/") + name;
        const QString target = pendantDir + QLatin1Char('/') + name;
        if (QFileInfo(source).isFile()) {
            if (!QFile::copy(source, target))
                return false;
            continue;
        }
        if (modules.isEmpty())
            modules =
                    ConfigSnapshot::load(m_controllerDir, ConfigSnapshot::ControllerLayout).modules;
        QStringList names;
        for (const SnapshotModule &module : qAsConst(modules))
            names.append(language == QLatin1String("en") ? module.name : module.nameCn);
        if (!pendantsim::writeAppParameters(target, names))
            return false;
    }
    return true;
}
