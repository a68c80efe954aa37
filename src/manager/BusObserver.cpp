#include "BusObserver.h"

BusObserver::BusObserver(const BusObserver &other)
    : isFieldXml(other.isFieldXml)
    , isFieldbusCfg(other.isFieldbusCfg)
    , isSignalMap(other.isSignalMap)
    , isGroupIO(other.isGroupIO)
    , isFuncInfo(other.isFuncInfo)
    , isFuncList(other.isFuncList)
    , isUsedes(other.isUsedes)
    , isFuncListMonitor(other.isFuncListMonitor)
{ }

BusObserver &BusObserver::operator=(const BusObserver &other)
{
    isFieldXml = other.isFieldXml;
    isFieldbusCfg = other.isFieldbusCfg;
    isSignalMap = other.isSignalMap;
    isGroupIO = other.isGroupIO;
    isFuncInfo = other.isFuncInfo;
    isFuncList = other.isFuncList;
    isUsedes = other.isUsedes;
    isFuncListMonitor = other.isFuncListMonitor;
    return *this;
}

void BusObserver::setIsEveryFile(bool value)
{
    isFieldXml = isFieldbusCfg = isSignalMap = isGroupIO = value;
    isFuncInfo = isFuncList = isUsedes = isFuncListMonitor = value;
}
