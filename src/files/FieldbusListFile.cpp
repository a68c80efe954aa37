#include "BusFileDataManager.h"

bool BusFileDataManager::readFieldbusXml() { return false; }
