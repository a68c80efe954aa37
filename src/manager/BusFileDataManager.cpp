#include "BusFileDataManager.h"

#include "DataAccess.h"
#include "GetAndSendFile.h"
#include "RbxInterface.h"

#include <QMetaType>

BusFileDataManager *BusFileDataManager::_pInstance = nullptr;
bool BusFileDataManager::_isIllegalImportMap = false;
bool BusFileDataManager::_isConflictImportMap = false;
QString BusFileDataManager::_editMapModuName;

BusType g_lastBusType = BusType(-1);
IoType g_imIoType = IoType(0);
bool g_isIoEditable = false;
bool g_isBusEditable = false;
const QString pv_layout = QStringLiteral("PV_layout");

BusFileDataManager *BusFileDataManager::getInstance()
{
    if (!_pInstance)
        _pInstance = new BusFileDataManager();
    return _pInstance;
}

BusFileDataManager::BusFileDataManager()
    : QObject(nullptr)
{
    // Lets the list results cross to the GUI thread by queued delivery.
    qRegisterMetaType<QStringList>("QStringList&");

    languageId = DataAccess::getLanguageId();
    isFreeBusOpen = false;
    uiStyle = RtmUIStyle();

    worker = new GetAndSendFile(nullptr);
    thread.setObjectName(QStringLiteral("BusFileDataManagerThread"));
    worker->moveToThread(&thread);
    thread.start(QThread::InheritPriority);

    connect(&thread, SIGNAL(finished()), worker, SLOT(deleteLater()));
    connect(this, SIGNAL(signalGetFuncInfo()), worker, SLOT(slotGetFuncInfoXml()));
    connect(this, SIGNAL(signalGetFieldbus()), worker, SLOT(slotGetFieldbusXml()));
    connect(this, SIGNAL(signalGetFuncList(const QStringList &)), worker,
            SLOT(slotGetFuncListXml(const QStringList &)));
    connect(this, SIGNAL(signalGetSignalMap()), worker, SLOT(slotGetSignalMapCfg()));
    connect(this, SIGNAL(signalGetFieldbusCfg()), worker, SLOT(slotGetFieldbusCfgXml()));
    connect(this, SIGNAL(signalGetGroupCfg()), worker, SLOT(slotGetGroupCfg()));
    connect(this, SIGNAL(signalGetUserDes()), worker, SLOT(slotGetUserDes()));
    connect(this, SIGNAL(signalGetFuncInfoMonitor()), worker, SLOT(slotGetFuncInfoXmlMonitor()));
    connect(this, SIGNAL(signalGetFuncListMonitor(const QStringList &)), worker,
            SLOT(slotGetFuncListXmlMonitor(const QStringList &)));
    // The argument-less form: a mapping file always travels between the standard paths.
    connect(this, SIGNAL(signalSendSignalMap()), worker, SLOT(slotSendSignalMapCfg()));
    connect(this, SIGNAL(signalSendGroupCfg()), worker, SLOT(slotSendGroupCfg()));
    connect(this, SIGNAL(signalSendFieldbus()), worker, SLOT(slotSendFieldbus()));
    connect(this, SIGNAL(signalSendFieldbusCfg()), worker, SLOT(slotSendFieldbusCfg()));
    connect(this, SIGNAL(signalUserDes()), worker, SLOT(slotsignalUserDes()));
    connect(worker, SIGNAL(resultNotify(const QString &, bool &)), this,
            SLOT(slotReadFile(const QString &, bool &)));
    connect(worker, SIGNAL(resultListNotify(QStringList &, QString &)), this,
            SLOT(slotReadListFiles(QStringList &, QString &)));
    connect(worker, SIGNAL(resultSendNotify(const QString &, bool &)), this,
            SLOT(slotSendFile(const QString &, bool &)));
    connect(worker, SIGNAL(resultNotifyMonitor(const QString &, bool &)), this,
            SLOT(slotReadFileMonitor(const QString &, bool &)));
    connect(worker, SIGNAL(resultListNotifyMonitor(QStringList &, QString &)), this,
            SLOT(slotReadListFilesMonitor(QStringList &, QString &)));
}

BusFileDataManager::~BusFileDataManager()
{
    thread.quit();
    thread.wait();
}

void BusFileDataManager::emitGetFieldXml()
{
    emit signalGetFieldbus();
}

void BusFileDataManager::emitGetFieldbusCfg()
{
    emit signalGetFieldbusCfg();
}

void BusFileDataManager::emitGetFuncInfo()
{
    emit signalGetFuncInfo();
}

void BusFileDataManager::emitGetFuncInfoMonitor()
{
    emit signalGetFuncInfoMonitor();
}

void BusFileDataManager::emitGetGroupIo()
{
    emit signalGetGroupCfg();
}

void BusFileDataManager::emitGetSignalMap()
{
    emit signalGetSignalMap();
}

void BusFileDataManager::emitGetUserDes()
{
    emit signalGetUserDes();
}

void BusFileDataManager::emitGetFuncList()
{
    emit signalGetFuncList(modulePathMapCn.values());
}

void BusFileDataManager::setIsGetFuncList(bool value)
{
    isGetFuncList = value;
}

void BusFileDataManager::setReadMapFileStatus(bool value)
{
    isSignalMapRead = value;
}

void BusFileDataManager::setGetSignalMapLoad(bool value)
{
    if (worker)
        worker->isSignalMapGot = value;
}

void BusFileDataManager::updateMapData(bool commit)
{
    for (int dir = BusInput; dir <= BusOutput; ++dir) {
        if (commit)
            readMapList[dir] = mapList[dir];
        else
            mapList[dir] = readMapList[dir];
    }
    parseSignalMapByBus(readMapList[BusInput], busMap[BusInput]);
    parseSignalMapByBus(readMapList[BusOutput], busMap[BusOutput]);
}

void BusFileDataManager::updateGroupData(bool commit)
{
    for (int dir = BusInput; dir <= BusOutput; ++dir) {
        for (int type = 0; type < 3; ++type) {
            if (commit)
                savedGroupTables[dir][type] = curGroupTables[dir][type];
            else
                curGroupTables[dir][type] = savedGroupTables[dir][type];
        }
    }
}

void BusFileDataManager::slotReadFile(const QString &filePath, bool &isSuccess)
{
    if (!isSuccess)
        getErrorMsg(filePath);

    bool *flag = nullptr;
    if (filePath == RDE_FUNC_INFO_XML) {
        flag = &isFuncInfoRead;
        if (!*flag)
            *flag = readFuncInfoXml() && readAppParaXml();
    } else if (filePath == RDE_FIELDBUS_XML) {
        flag = &isFieldXmlRead;
        if (!*flag)
            *flag = readFieldbusXml();
    } else if (filePath == RDE_FIELDBUS_CFG_XML) {
        flag = &isFieldbusCfgRead;
        if (!*flag)
            *flag = readFieldbusCfg();
    } else if (filePath == RDE_GROUP_CFG) {
        flag = &isGroupCfgRead;
        if (!*flag)
            *flag = readGroupCfg();
    } else if (filePath == RDE_SIGNAL_MAP_CFG) {
        flag = &isSignalMapRead;
        if (!*flag)
            *flag = readSignalMapCfg();
    } else if (filePath == RDE_USER_DES_XML) {
        flag = &isUserDesRead;
        if (!*flag)
            *flag = readUserDes();
    } else {
        return;
    }

    notify(FileFetchedAndRead, filePath, *flag);
    if (filePath == RDE_FUNC_INFO_XML && isGetFuncList)
        emitGetFuncList();
}

void BusFileDataManager::slotReadFileMonitor(const QString &filePath, bool &isSuccess)
{
    if (!isSuccess)
        getErrorMsg(filePath);
    if (filePath != RDE_FUNC_INFO_XML)
        return;
    if (!isFuncInfoMonitorRead)
        isFuncInfoMonitorRead = readFuncInfoXmlMonitor();
    notify(FileFetchedAndRead, filePath, isFuncInfoMonitorRead);
    emit signalGetFuncListMonitor(monitorPathMap.values());
}

void BusFileDataManager::slotReadListFiles(QStringList &filePaths, QString &failedFilePath)
{
    if (!isFuncListRead)
        isFuncListRead = readFuncListXml(filePaths);
    notify(FileFetchedAndRead, QStringLiteral("funcList"), isFuncListRead);
    if (!failedFilePath.isEmpty())
        getErrorMsg(failedFilePath);
}

void BusFileDataManager::slotReadListFilesMonitor(QStringList &filePaths, QString &failedFilePath)
{
    if (!isFuncListMonitorRead)
        isFuncListMonitorRead = readFuncListXmlMonitor(filePaths);
    notify(FileFetchedAndRead, QStringLiteral("funcListMonitor"), isFuncListMonitorRead);
    if (!failedFilePath.isEmpty())
        getErrorMsg(failedFilePath);
}

void BusFileDataManager::slotSendFile(const QString &filePath, bool &isSuccess)
{
    if (filePath == RDE_SIGNAL_MAP_CFG) {
        if (isSuccess)
            updateMapData(true);
    } else if (filePath == RDE_GROUP_CFG) {
        if (isSuccess)
            updateGroupData(true);
    } else if (filePath == RDE_FIELDBUS_XML) {
        readFieldbusXml();
    } else if (filePath == RDE_FIELDBUS_CFG_XML) {
        // Nothing to commit: the records were edited in place.
    } else if (filePath == RDE_USER_DES_XML) {
        readUserDes();
    } else {
        return;
    }
    notify(FileWrittenAndSent, filePath, isSuccess);
}
