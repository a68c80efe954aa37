#pragma once

// What every fuzz target shares: one application, one pendant workspace and one
// manager for the whole process (a manager starts a thread, too dear per input),
// and the input laid down as the local or controller file a reader takes.
#include "BusFileDataManager.h"
#include "PendantSim.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <cstdint>
#include <cstdlib>

namespace fuzz {

inline BusFileDataManager &manager()
{
    static int argc = 1;
    static char name[] = "fuzz";
    static char *argv[] = {name, nullptr};
    static QCoreApplication app(argc, argv);
    static QTemporaryDir dir;
    static BusFileDataManager *instance = [] {
        qputenv("QT_LOGGING_RULES", "*.debug=false;*.warning=false");
        QDir(dir.path()).mkpath(QStringLiteral("pendant"));
        QDir::setCurrent(dir.path() + QStringLiteral("/pendant"));
        pendantsim::setControllerRoot(dir.path() + QStringLiteral("/Controller"));
        // Boxes answer "no" at once and are not kept.
        pendantsim::setMsgBoxHandler([](const pendantsim::ShownMessage &) { return 0; });
        return new BusFileDataManager();
    }();
    return *instance;
}

inline QByteArray bytes(const uint8_t *data, size_t size)
{
    return QByteArray(reinterpret_cast<const char *>(data), int(size));
}

inline void put(const QString &path, const QByteArray &content)
{
    QDir().mkpath(QFileInfo(path).absolutePath());
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate))
        std::abort();
    file.write(content);
}

inline void putOnController(const QString &rdeFilePath, const QByteArray &content)
{
    put(pendantsim::controllerFilePath(rdeFilePath), content);
}

// A finding that is not a crash: libFuzzer keeps the input when we abort.
inline void require(bool condition, const char *what)
{
    if (!condition) {
        fprintf(stderr, "fuzz check failed: %s\n", what);
        std::abort();
    }
}

} // namespace fuzz
