#pragma once

#include "FieldbusPaths.h"

#include <QObject>
#include <QStringList>

#include <atomic>

class rbxInterface;

// Moves configuration files between controller and pendant. Lives on the
// manager's transfer thread; every slot blocks that thread while it works.
class FIELDBUSCONFIG_EXPORT GetAndSendFile : public QObject
{
    Q_OBJECT
    friend class BusFileDataManager;

public:
    explicit GetAndSendFile(QObject *parent = nullptr);
    ~GetAndSendFile() override;

signals:
    void resultNotify(const QString &filePath, bool &isSuccess);
    void resultListNotify(QStringList &, QString &failedFilePath);
    void resultNotifyMonitor(const QString &filePath, bool &isSuccess);
    void resultListNotifyMonitor(QStringList &, QString &failedFilePath);
    void resultSendNotify(const QString &filePath, bool &isSuccess);

public slots:
    void slotGetFuncInfoXml();
    void slotGetFieldbusXml();
    void slotGetSignalMapCfg();
    void slotGetFuncListXml(const QStringList &paths);
    void slotGetFieldbusCfgXml();
    void slotGetGroupCfg();
    void slotGetUserDes();
    void slotGetFuncInfoXmlMonitor();
    void slotGetFuncListXmlMonitor(const QStringList &paths);
    void slotSendSignalMapCfg(const QString &tpuFilePath = TPU_SIGNAL_MAP_CFG,
                              const QString &rdeFilePath = RDE_SIGNAL_MAP_CFG);
    void slotSendGroupCfg();
    void slotSendFieldbus();
    void slotSendFieldbusCfg();
    void slotsignalUserDes();

private:
    bool getFileFromCtrl(const QString &tpuFilePath, const QString &rdeFilePath);
    bool sendFileToCtrl(const QString &tpuFilePath, const QString &rdeFilePath);
    bool mkLocalDir(const QString &tpuFilePath);

    // Fetches one fixed file unless `fetched` says it arrived before.
    void fetchOnce(bool &fetched, const QString &tpuFilePath, const QString &rdeFilePath,
                   bool monitor);
    void sendAndNotify(const QString &tpuFilePath, const QString &rdeFilePath);
    // Shared by the ordinary and the monitor function-list fetch; returns false
    // when a local folder could not be made and no answer may be sent.
    bool fetchListFiles(const QStringList &paths, bool &fetched, bool keepSuccess,
                        QStringList &localPaths, QString &failedFilePath);
    rbxInterface *connection();

    bool isFieldbusGot = false;
    // Written by the manager on the GUI thread, read here on the transfer thread.
    std::atomic<bool> isSignalMapGot{false};
    bool isGroupCfgGot = false;
    bool isUserDesGot = false;
    bool isFieldbusCfgGot = false;
    bool isFuncInfoGot = false;
    bool isFuncListGot = false;
    bool isFuncInfoMonitorGot = false;
    bool isFuncListMonitorGot = false;

    rbxInterface *rbx = nullptr;
};
