#include "BusFileDataManager.h"

QHash<QString, QVector<FuncAndMapInfo>> BusFileDataManager::imSelfCraftMapInfo;

void BusFileDataManager::setSelfCraftWriteFuncFile(QString name, FilePaths paths,
                                                   SelfCraftWriteFunc writeFunc)
{
    selfCraftWriteFuncs.insert(name, writeFunc);
    selfCraftPaths.insert(name, paths);
    imSelfCraftMapInfo.insert(name, QVector<FuncAndMapInfo>());
}

void BusFileDataManager::getSelfCraftsMaps(const FuncAndMapInfo &row)
{
    FuncAndMapInfo copy = row;
    parseSelfNameCnEn(copy.name, copy.nameCn);
    // Only registered processes gather rows.
    const auto it = imSelfCraftMapInfo.find(row.module);
    if (it != imSelfCraftMapInfo.end())
        it.value().append(copy);
}

QVector<FuncAndMapInfo> BusFileDataManager::getSelfCraftMap(const QString &name)
{
    return imSelfCraftMapInfo.value(name);
}

void BusFileDataManager::clearSelfCraftMap()
{
    QHash<QString, QVector<FuncAndMapInfo>> emptied;
    for (auto it = imSelfCraftMapInfo.cbegin(); it != imSelfCraftMapInfo.cend(); ++it)
        emptied.insert(it.key(), QVector<FuncAndMapInfo>());
    imSelfCraftMapInfo = emptied;
}

bool BusFileDataManager::getWriteCraftFile(const QString &name, const QString &rdeFilePath,
                                           const QString &tpuFilePath)
{
    if (!getFileFromCtrl(rdeFilePath, tpuFilePath))
        return false;
    const QVector<FuncAndMapInfo> rows = getSelfCraftMap(name);
    const SelfCraftWriteFunc writeFunc = selfCraftWriteFuncs.value(name, nullptr);
    if (!writeFunc)
        return false;
    return (this->*writeFunc)(rows, tpuFilePath);
}

bool BusFileDataManager::isExistSelfCraftNames(QStringList &names)
{
    // A write operation may register further processes; walk the names as they are now.
    const QList<QString> processes = selfCraftPaths.keys();
    for (const QString &name : processes) {
        if (imSelfCraftMapInfo.value(name).isEmpty())
            continue;
        const FilePaths paths = selfCraftPaths.value(name);
        if (!getWriteCraftFile(name, paths.rdeFilePath, paths.tpuFilePath))
            return false;
        names.append(name);
    }
    return true;
}
