#include "BusFileDataManager.h"
#include "Logging.h"

#include "ConfigFileIo.h"
#include "FieldbusNames.h"
#include "DataAccess.h"

#include <QFile>

bool BusFileDataManager::readImportMapFile(const QString &filePath, const QStringList &modules)
{
    return readLocalTextFile(filePath,
                             [&](const QString &text) { parseImportMapFile(text, modules); });
}

void BusFileDataManager::parseImportMapFile(const QString &text, const QStringList &modules)
{
    imModuleList = modules;
    imBusMap[BusInput].clear();
    imBusMap[BusOutput].clear();
    configio::readSectionRows(text, fieldbusnames::systemInputMarker,
                              fieldbusnames::systemOutputMarker,
                              [this](BiBo dir, QStringView row, int) {
                                  getImBusMapInfo(row.toString(), imBusMap[dir]);
                              });
}

bool BusFileDataManager::copyMapBackup()
{
    if (!QFile::exists(TPU_SIGNAL_MAP_CFG)) {
        qCDebug(lcFieldbus).noquote()
                << "copyMapBackup() " + TPU_SIGNAL_MAP_CFG + " does not exist!";
        return false;
    }
    if (QFile::exists(TPU_SIGNAL_MAP_BACKUP_CFG) && !QFile::remove(TPU_SIGNAL_MAP_BACKUP_CFG))
        qCDebug(lcFieldbus).noquote()
                << "copyMapBackup(): " + TPU_SIGNAL_MAP_BACKUP_CFG + " remove file failed!";
    // QFile::copy writes a temporary file beside the target and renames it.
    if (!QFile::copy(TPU_SIGNAL_MAP_CFG, TPU_SIGNAL_MAP_BACKUP_CFG)) {
        qCDebug(lcFieldbus).noquote()
                << "copyMapBackup(): " + TPU_SIGNAL_MAP_BACKUP_CFG + " Copy file failed!";
        return false;
    }
    return true;
}

bool BusFileDataManager::readMapParaBackup(const QString &filePath, const QStringList &modules)
{
    if (!readImportMapFile(filePath, modules))
        return false;
    delIllegalBusMap();
    return true;
}

bool BusFileDataManager::delPvMapParaBackup(const QString &filePath, const QStringList &modules)
{
    if (!readImportMapFile(filePath, modules))
        return false;
    writeMapList[BusInput].clear();
    writeMapList[BusOutput].clear();
    getWriteMapData(writeMapList[BusInput], imBusMap[BusInput]);
    getWriteMapData(writeMapList[BusOutput], imBusMap[BusOutput]);
    return true;
}

bool BusFileDataManager::sendMapBackupToCtrl()
{
    return DataAccess::SendFileFromTPU2Controller(TPU_SIGNAL_MAP_BACKUP_CFG,
                                                  RDE_SIGNAL_MAP_BACKUP_CFG, false);
}
