#include "BusFileDataManager.h"

bool BusFileDataManager::readSignalMapCfg() { return false; }
void BusFileDataManager::parseSignalMapByBus(const QVector<FuncAndMapInfo> &, QMap<QString, QVector<FuncAndMapInfo>> &byBus) { byBus.clear(); }

int BusFileDataManager::getWordIndex(const QStringList &words, const QString &word)
{
    for (int i = 0; i < words.size(); ++i) {
        if (words.at(i).compare(word, Qt::CaseInsensitive) == 0)
            return i;
    }
    return -1;
}
