#pragma once

#include "FieldbusTypes.h"

// What a screen implements to hear about fetched, read and sent files.
class FIELDBUSCONFIG_EXPORT BusObserver
{
public:
    BusObserver() = default;
    BusObserver(const BusObserver &other);
    BusObserver &operator=(const BusObserver &other);
    virtual ~BusObserver() = default;

    // fileKey is the controller path of the file (RDE_FIELDBUS_XML, RDE_FIELDBUS_CFG_XML,
    // RDE_SIGNAL_MAP_CFG, RDE_GROUP_CFG, RDE_USER_DES_XML, or RDE_FUNC_INFO_XML for both the
    // ordinary and the monitor function information), or "funcList" / "funcListMonitor"
    // for a batch of function lists.
    virtual void onFileNotify(FileHandle handle, const QString &fileKey, bool isSuccess) = 0;

    bool getIsFieldXml() const { return isFieldXml; }
    void setIsFieldXml(bool value) { isFieldXml = value; }
    bool getIsFieldbusCfg() const { return isFieldbusCfg; }
    void setIsFieldbusCfg(bool value) { isFieldbusCfg = value; }
    bool getIsSignalMap() const { return isSignalMap; }
    void setIsSignalMap(bool value) { isSignalMap = value; }
    bool getIsGroupIO() const { return isGroupIO; }
    void setIsGroupIO(bool value) { isGroupIO = value; }
    bool getIsFuncInfo() const { return isFuncInfo; }
    void setIsFuncInfo(bool value) { isFuncInfo = value; }
    bool getIsFuncList() const { return isFuncList; }
    void setIsFuncList(bool value) { isFuncList = value; }
    bool getIsUsedes() const { return isUsedes; }
    void setIsUsedes(bool value) { isUsedes = value; }
    bool getIsFuncListMonitor() const { return isFuncListMonitor; }
    void setIsFuncListMonitor(bool value) { isFuncListMonitor = value; }
    // Every flag above at once, for tools that follow the whole configuration.
    void setIsEveryFile(bool value);

private:
    bool isFieldXml = false;
    bool isFieldbusCfg = false;
    bool isSignalMap = false;
    bool isGroupIO = false;
    bool isFuncInfo = false;
    bool isFuncList = false;
    bool isUsedes = false;
    bool isFuncListMonitor = false;
};
