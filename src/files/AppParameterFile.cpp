#include "BusFileDataManager.h"

bool BusFileDataManager::readAppParaXml() { return false; }
