#include "BusFileDataManager.h"

#include "DataAccess.h"
#include "FieldbusNames.h"
#include "FileKind.h"
#include "GetAndSendFile.h"
#include "RbxInterface.h"
#include "ValidationIndex.h"

#include <QCoreApplication>
#include <QMetaType>
#include <QTranslator>

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
    , indexes(new validation::Indexes)
{
    // Lets the list results cross to the GUI thread by queued delivery.
    qRegisterMetaType<QStringList>("QStringList&");

    languageId = DataAccess::getLanguageId();
    installTranslation();
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

void BusFileDataManager::installTranslation()
{
    // A Chinese pendant shows the library's texts in Chinese; the translation
    // is built into the library, so nothing need be installed beside it.
    if (languageId == fieldbusnames::chineseLanguageId && QCoreApplication::instance()
        && translator.load(QStringLiteral(":/translations/fieldbusconfig_zh_CN.qm")))
        QCoreApplication::installTranslator(&translator);
}

BusFileDataManager::~BusFileDataManager()
{
    thread.quit();
    thread.wait();
    // A later getInstance() makes a new manager rather than answer a freed one.
    if (_pInstance == this)
        _pInstance = nullptr;
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

namespace {

using Manager = BusFileDataManager;

} // namespace

const QVector<BusFileDataManager::FileKind> &BusFileDataManager::fileKinds()
{
    static const QVector<FileKind> kinds = {
            {RDE_FUNC_INFO_XML, "funcInfo", &Manager::isFuncInfoRead, &Manager::readFuncInfoFiles,
             &BusObserver::getIsFuncInfo, FileKind::NotSent},
            {RDE_FIELDBUS_XML, "fieldbus", &Manager::isFieldXmlRead, &Manager::readFieldbusXml,
             &BusObserver::getIsFieldXml, FileKind::ReadAgain},
            {RDE_FIELDBUS_CFG_XML, "fieldbusCfg", &Manager::isFieldbusCfgRead,
             &Manager::readFieldbusCfg, &BusObserver::getIsFieldbusCfg, FileKind::NothingMore},
            {RDE_GROUP_CFG, "group", &Manager::isGroupCfgRead, &Manager::readGroupCfg,
             &BusObserver::getIsGroupIO, FileKind::CommitGroups},
            {RDE_SIGNAL_MAP_CFG, "map", &Manager::isSignalMapRead, &Manager::readSignalMapCfg,
             &BusObserver::getIsSignalMap, FileKind::CommitMappings},
            {QStringLiteral("funcList"), "funcList", &Manager::isFuncListRead, nullptr,
             &BusObserver::getIsFuncList, FileKind::NotSent},
            {RDE_USER_DES_XML, "user_description", &Manager::isUserDesRead, &Manager::readUserDes,
             &BusObserver::getIsUsedes, FileKind::ReadAgain},
            {QStringLiteral("funcListMonitor"), "funcListMonitor", &Manager::isFuncListMonitorRead,
             nullptr, &BusObserver::getIsFuncListMonitor, FileKind::NotSent},
            // Answers only polls: its results carry the function information's key.
            {QString(), "funcInfoMonitor", &Manager::isFuncInfoMonitorRead, nullptr, nullptr,
             FileKind::NotSent},
    };
    return kinds;
}

const BusFileDataManager::FileKind *BusFileDataManager::fileKindByKey(const QString &fileKey)
{
    for (const FileKind &kind : fileKinds()) {
        if (!kind.fileKey.isEmpty() && kind.fileKey == fileKey)
            return &kind;
    }
    return nullptr;
}

const BusFileDataManager::FileKind *
BusFileDataManager::fileKindByPollingKey(const QString &pollingKey)
{
    for (const FileKind &kind : fileKinds()) {
        if (pollingKey == QLatin1String(kind.pollingKey))
            return &kind;
    }
    return nullptr;
}

bool BusFileDataManager::readFuncInfoFiles()
{
    return readFuncInfoXml() && readAppParaXml();
}

void BusFileDataManager::slotReadFile(const QString &filePath, bool &isSuccess)
{
    if (!isSuccess)
        getErrorMsg(filePath);
    const FileKind *kind = fileKindByKey(filePath);
    if (!kind || !kind->read)
        return;

    // A file is parsed once per start-up unless a setter or a send clears the way.
    bool &read = this->*kind->readFlag;
    if (!read)
        read = (this->*kind->read)();
    notify(FileFetchedAndRead, filePath, read);
    if (kind->readFlag == &Manager::isFuncInfoRead && isGetFuncList)
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
    const FileKind *kind = fileKindByKey(filePath);
    if (!kind || kind->afterSend == FileKind::NotSent)
        return;
    switch (kind->afterSend) {
    case FileKind::CommitMappings:
        if (isSuccess)
            updateMapData(true);
        break;
    case FileKind::CommitGroups:
        if (isSuccess)
            updateGroupData(true);
        break;
    case FileKind::ReadAgain:
        // Whatever the send said: the screens see the file as it now stands.
        (this->*kind->read)();
        break;
    case FileKind::NotSent:
    case FileKind::NothingMore:
        break;
    }
    notify(FileWrittenAndSent, filePath, isSuccess);
}
