#include "BusFileDataManager.h"

bool BusFileDataManager::readUserDes() { return false; }
