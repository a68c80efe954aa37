#include "BusFileDataManager.h"

bool BusFileDataManager::readSignalMapCfg() { return false; }
void BusFileDataManager::parseSignalMapByBus(const QVector<FuncAndMapInfo> &, QMap<QString, QVector<FuncAndMapInfo>> &byBus) { byBus.clear(); }
