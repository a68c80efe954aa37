#include "ConfigSnapshot.h"

// Placeholder until the loader lands.
ConfigSnapshot ConfigSnapshot::load(const QString &root, Layout layout)
{
    ConfigSnapshot snapshot;
    snapshot.root = root;
    snapshot.layout = layout;
    return snapshot;
}

QString ConfigSnapshot::fixedFilePath(const QString &rdeFilePath) const
{
    return root + rdeFilePath;
}

QString ConfigSnapshot::listFilePath(const QString &rdeFilePath) const
{
    return root + rdeFilePath;
}

QStringList ConfigSnapshot::enabledShortNames() const
{
    return {};
}

int ConfigSnapshot::busNum(const QString &, BiBo, const QString &) const
{
    return 0;
}

bool ConfigSnapshot::readMappingFile(const QString &, QVector<SnapshotMapping> &)
{
    return false;
}
