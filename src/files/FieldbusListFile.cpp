#include "BusFileDataManager.h"

bool BusFileDataManager::readFieldbusXml() { return false; }

int BusFileDataManager::getBusIndex(const QString &shortName)
{
    // The index order is the controller's: it is also the BusType value and
    // the bit of the communication-performance switch.
    static const QStringList order{"mtcp", "ethcat", "eip", "pfn", "ecm",
                                   "dns",  "mbc",    "eim", "pnm", "dnm"};
    return getWordIndex(order, shortName);
}
