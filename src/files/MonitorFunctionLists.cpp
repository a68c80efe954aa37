#include "BusFileDataManager.h"

bool BusFileDataManager::readFuncInfoXmlMonitor() { return false; }
bool BusFileDataManager::readFuncListXmlMonitor(QStringList &) { return false; }
