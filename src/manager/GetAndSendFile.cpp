#include "GetAndSendFile.h"
#include "Logging.h"

#include "ConfigFileIo.h"
#include "FlashFileClient.h"
#include "FunctionListXml.h"
#include "RbxInterface.h"

#include <QDir>
#include <QMetaType>
#include <QThread>

namespace {

constexpr int transferAttempts = 10;
constexpr unsigned long retryWaitMs = 100;

} // namespace

GetAndSendFile::GetAndSendFile(QObject *parent)
    : QObject(parent)
{
    // Lets the result signals cross to the manager's thread by queued delivery.
    qRegisterMetaType<QString>("QString&");
    qRegisterMetaType<bool>("bool&");

    QDir dir;
    if (!dir.exists(TPU_FIELDBUS_DIR) && !dir.mkpath(TPU_FIELDBUS_DIR))
        qCDebug(lcFieldbus).noquote()
                << "GetAndSendFile:: tpu path is not exit" << TPU_FIELDBUS_DIR;
}

GetAndSendFile::~GetAndSendFile()
{
    delete rbx;
}

rbxInterface *GetAndSendFile::connection()
{
    if (!rbx)
        rbx = new rbxInterface(1, true);
    return rbx;
}

bool GetAndSendFile::getFileFromCtrl(const QString &tpuFilePath, const QString &rdeFilePath)
{
    rbxInterface *link = connection();
    return configio::retry(
            transferAttempts,
            [&] {
                // A fetch tries even without a link.
                if (!link->isConnected())
                    qCDebug(lcFieldbus).noquote()
                            << "GetAndSendFile::getFileFromCtrl connection not established!";
                bccClientFlashFileSave request;
                request.srcPath = rdeFilePath;
                request.dstPath = tpuFilePath;
                request.mode = 1;
                return link->saveFile(&request);
            },
            [&](bool last) {
                QThread::msleep(retryWaitMs);
                if (last) {
                    qCDebug(lcFieldbus).noquote()
                            << "GetAndSendFile::getFileFromCtrl Get file failed!" << rdeFilePath;
                    qCDebug(lcFieldbus).noquote() << "  to" << absolutePathOf(tpuFilePath);
                }
            });
}

bool GetAndSendFile::sendFileToCtrl(const QString &tpuFilePath, const QString &rdeFilePath)
{
    rbxInterface *link = connection();
    // Unlike a fetch, a send does not try without a link.
    if (!link->isConnected()) {
        qCDebug(lcFieldbus).noquote()
                << "GetAndSendFile::sendFileToCtrl connection not established!";
        return false;
    }
    return configio::retry(
            transferAttempts,
            [&] {
                bccClientFlashFileLoad request;
                request.srcPath = tpuFilePath;
                request.dstPath = rdeFilePath;
                request.mode = 1;
                return link->loadFile(&request);
            },
            [&](bool last) {
                QThread::msleep(retryWaitMs);
                if (last) {
                    qCDebug(lcFieldbus).noquote()
                            << "GetAndSendFile::sendFileToCtrl Get file failed!" << rdeFilePath;
                    qCDebug(lcFieldbus).noquote() << "  from" << absolutePathOf(tpuFilePath);
                }
            });
}

bool GetAndSendFile::mkLocalDir(const QString &tpuFilePath)
{
    const QString folder = configio::localFolderOf(tpuFilePath);
    QDir dir;
    if (!dir.exists(folder))
        return dir.mkdir(folder);
    return true;
}

void GetAndSendFile::fetchOnce(bool &fetched, const QString &tpuFilePath,
                               const QString &rdeFilePath, bool monitor)
{
    if (!fetched)
        fetched = getFileFromCtrl(tpuFilePath, rdeFilePath);
    bool isSuccess = fetched;
    if (monitor)
        emit resultNotifyMonitor(rdeFilePath, isSuccess);
    else
        emit resultNotify(rdeFilePath, isSuccess);
}

void GetAndSendFile::slotGetFuncInfoXml()
{
    fetchOnce(isFuncInfoGot, TPU_FUNC_INFO_XML, RDE_FUNC_INFO_XML, false);
}

void GetAndSendFile::slotGetFieldbusXml()
{
    fetchOnce(isFieldbusGot, TPU_FIELDBUS_XML, RDE_FIELDBUS_XML, false);
}

void GetAndSendFile::slotGetSignalMapCfg()
{
    bool fetched = isSignalMapGot;
    fetchOnce(fetched, TPU_SIGNAL_MAP_CFG, RDE_SIGNAL_MAP_CFG, false);
    isSignalMapGot = fetched;
}

void GetAndSendFile::slotGetFieldbusCfgXml()
{
    fetchOnce(isFieldbusCfgGot, TPU_FIELDBUS_CFG_XML, RDE_FIELDBUS_CFG_XML, false);
}

void GetAndSendFile::slotGetGroupCfg()
{
    fetchOnce(isGroupCfgGot, TPU_GROUP_CFG, RDE_GROUP_CFG, false);
}

void GetAndSendFile::slotGetUserDes()
{
    fetchOnce(isUserDesGot, TPU_USER_DES_XML, RDE_USER_DES_XML, false);
}

void GetAndSendFile::slotGetFuncInfoXmlMonitor()
{
    fetchOnce(isFuncInfoMonitorGot, TPU_FUNC_INFO_XML, RDE_FUNC_INFO_XML, true);
}

bool GetAndSendFile::fetchListFiles(const QStringList &paths, bool &fetched, bool keepSuccess,
                                    QStringList &localPaths, QString &failedFilePath)
{
    if (fetched)
        return true;
    bool anyFailed = false;
    for (const QString &path : paths) {
        if (path.isEmpty())
            continue;
        const QString localPath = functionlist::localListPath(TPU_FIELDBUS_DIR, path);
        bool ok = false;
        if (localPath.isEmpty()) {
            qCDebug(lcFieldbus).noquote()
                    << "GetAndSendFile::slotGetFuncListXml refused path outside the working folder"
                    << path;
        } else {
            if (!mkLocalDir(localPath)) {
                qCDebug(lcFieldbus).noquote()
                        << "GetAndSendFile::slotGetFuncListXml tpu path is not exit" << localPath;
                return false;
            }
            ok = getFileFromCtrl(localPath, path);
        }
        if (ok) {
            localPaths.append(localPath);
            // The monitor lists are fetched afresh on every request.
            if (keepSuccess)
                fetched = !anyFailed;
        } else {
            fetched = false;
            anyFailed = true;
            failedFilePath = path;
        }
    }
    return true;
}

void GetAndSendFile::slotGetFuncListXml(const QStringList &paths)
{
    QStringList localPaths;
    QString failedFilePath;
    if (fetchListFiles(paths, isFuncListGot, true, localPaths, failedFilePath))
        emit resultListNotify(localPaths, failedFilePath);
}

void GetAndSendFile::slotGetFuncListXmlMonitor(const QStringList &paths)
{
    QStringList localPaths;
    QString failedFilePath;
    if (fetchListFiles(paths, isFuncListMonitorGot, false, localPaths, failedFilePath))
        emit resultListNotifyMonitor(localPaths, failedFilePath);
}

void GetAndSendFile::sendAndNotify(const QString &tpuFilePath, const QString &rdeFilePath)
{
    bool isSuccess = sendFileToCtrl(tpuFilePath, rdeFilePath);
    emit resultSendNotify(rdeFilePath, isSuccess);
}

void GetAndSendFile::slotSendSignalMapCfg(const QString &tpuFilePath, const QString &rdeFilePath)
{
    sendAndNotify(tpuFilePath, rdeFilePath);
}

void GetAndSendFile::slotSendGroupCfg()
{
    sendAndNotify(TPU_GROUP_CFG, RDE_GROUP_CFG);
}

void GetAndSendFile::slotSendFieldbus()
{
    sendAndNotify(TPU_FIELDBUS_XML, RDE_FIELDBUS_XML);
}

void GetAndSendFile::slotSendFieldbusCfg()
{
    sendAndNotify(TPU_FIELDBUS_CFG_XML, RDE_FIELDBUS_CFG_XML);
}

void GetAndSendFile::slotsignalUserDes()
{
    sendAndNotify(TPU_USER_DES_XML, RDE_USER_DES_XML);
}
