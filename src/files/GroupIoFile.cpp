#include "BusFileDataManager.h"

bool BusFileDataManager::readGroupCfg() { return false; }
