#include "BusFileDataManager.h"

#include "FileKind.h"

void BusFileDataManager::attach(BusObserver *observer)
{
    observers.append(observer);
}

void BusFileDataManager::detach(BusObserver *observer)
{
    if (!observers.isEmpty())
        observers.removeOne(observer);
}

void BusFileDataManager::notify(FileHandle handle, const QString &fileKey, bool isSuccess)
{
    const FileKind *kind = fileKindByKey(fileKey);
    if (!kind || !kind->wanted)
        return;
    // A copy, so that an observer may attach or detach from its callback.
    const QList<BusObserver *> current = observers;
    for (BusObserver *observer : current) {
        if ((observer->*kind->wanted)())
            observer->onFileNotify(handle, fileKey, isSuccess);
    }
}

bool BusFileDataManager::isFuncInfoNotified(const QString &key)
{
    // Two polls ask for several files at once.
    static const QHash<QString, QStringList> together = {
            {QStringLiteral("groupFiles"), {"fieldbus", "fieldbusCfg", "map", "group"}},
            {QStringLiteral("fieldbusSet"), {"fieldbus", "fieldbusCfg"}},
    };
    const QStringList pollingKeys = together.value(key, QStringList{key});
    for (const QString &pollingKey : pollingKeys) {
        const FileKind *kind = fileKindByPollingKey(pollingKey);
        if (!kind || !(this->*kind->readFlag))
            return false;
    }
    return true;
}
