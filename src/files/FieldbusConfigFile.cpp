#include "BusFileDataManager.h"

bool BusFileDataManager::readFieldbusCfg() { return false; }
