#include "BusFileDataManager.h"

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
    bool (BusObserver::*wants)() const = nullptr;
    if (fileKey == RDE_FUNC_INFO_XML)
        wants = &BusObserver::getIsFuncInfo;
    else if (fileKey == RDE_FIELDBUS_XML)
        wants = &BusObserver::getIsFieldXml;
    else if (fileKey == RDE_FIELDBUS_CFG_XML)
        wants = &BusObserver::getIsFieldbusCfg;
    else if (fileKey == RDE_GROUP_CFG)
        wants = &BusObserver::getIsGroupIO;
    else if (fileKey == RDE_SIGNAL_MAP_CFG)
        wants = &BusObserver::getIsSignalMap;
    else if (fileKey == QLatin1String("funcList"))
        wants = &BusObserver::getIsFuncList;
    else if (fileKey == RDE_USER_DES_XML)
        wants = &BusObserver::getIsUsedes;
    else if (fileKey == QLatin1String("funcListMonitor"))
        wants = &BusObserver::getIsFuncListMonitor;
    else
        return;

    // A copy, so that an observer may attach or detach from its callback.
    const QList<BusObserver *> current = observers;
    for (BusObserver *observer : current) {
        if ((observer->*wants)())
            observer->onFileNotify(handle, fileKey, isSuccess);
    }
}

bool BusFileDataManager::isFuncInfoNotified(const QString &key)
{
    if (key == QLatin1String("fieldbus"))
        return isFieldXmlRead;
    if (key == QLatin1String("fieldbusCfg"))
        return isFieldbusCfgRead;
    if (key == QLatin1String("groupFiles"))
        return isFieldXmlRead && isFieldbusCfgRead && isSignalMapRead && isGroupCfgRead;
    if (key == QLatin1String("fieldbusSet"))
        return isFieldXmlRead && isFieldbusCfgRead;
    if (key == QLatin1String("group"))
        return isGroupCfgRead;
    if (key == QLatin1String("map"))
        return isSignalMapRead;
    if (key == QLatin1String("funcInfo"))
        return isFuncInfoRead;
    if (key == QLatin1String("funcList"))
        return isFuncListRead;
    if (key == QLatin1String("funcInfoMonitor"))
        return isFuncInfoMonitorRead;
    if (key == QLatin1String("funcListMonitor"))
        return isFuncListMonitorRead;
    if (key == QLatin1String("user_description"))
        return isUserDesRead;
    return false;
}
