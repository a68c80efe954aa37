#include "BusFileDataManager.h"

bool BusFileDataManager::readFuncInfoXml() { return false; }
bool BusFileDataManager::readFuncListXml(QStringList &) { return false; }
