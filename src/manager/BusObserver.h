#pragma once

/// @file
/// The observer record through which screens hear about files.

#include "FieldbusTypes.h"

/// What a screen implements to hear about fetched, read and sent files.
///
/// A screen derives from it, sets the flags of the files it follows and
/// attaches itself with BusFileDataManager::attach(). The manager calls
/// onFileNotify() on the GUI thread (the manager's own thread), never on its
/// transfer thread, and only for files whose flag is set at that moment. The
/// flags are plain members: set them on the GUI thread too.
class FIELDBUSCONFIG_EXPORT BusObserver
{
public:
    /// Follows no file until a flag is set.
    BusObserver() = default;
    /// Copies the file flags only; the copy is not attached to the manager.
    BusObserver(const BusObserver &other);
    /// Takes the other's file flags; whether this observer is attached stays as it was.
    BusObserver &operator=(const BusObserver &other);
    /// Does not detach: detach from the manager before an observer goes, or
    /// the next notification calls a destroyed object.
    virtual ~BusObserver() = default;

    /// Called on the GUI thread when a file this observer follows was fetched
    /// and read, or written and sent.
    ///
    /// fileKey is the controller path of the file (RDE_FIELDBUS_XML, RDE_FIELDBUS_CFG_XML,
    /// RDE_SIGNAL_MAP_CFG, RDE_GROUP_CFG, RDE_USER_DES_XML, or RDE_FUNC_INFO_XML for both the
    /// ordinary and the monitor function information), or "funcList" / "funcListMonitor"
    /// for a batch of function lists. These keys are not the polling keys of
    /// BusFileDataManager::isFuncInfoNotified() (kept-behaviours.md, entry 53).
    ///
    /// For FileFetchedAndRead, isSuccess says whether the local copy was read:
    /// after a failed fetch the manager shows its error box and reads the
    /// earlier local copy, so success can follow a failed fetch (entry 33). A
    /// file read successfully before is not read again: success is told again.
    /// For FileWrittenAndSent, isSuccess is the result of the send.
    /// The callback may attach or detach observers, itself included.
    virtual void onFileNotify(FileHandle handle, const QString &fileKey, bool isSuccess) = 0;

    /// Whether the fieldbus list file (RDE_FIELDBUS_XML) is followed.
    bool getIsFieldXml() const { return isFieldXml; }
    /// Follows the fieldbus list file, or stops following it.
    void setIsFieldXml(bool value) { isFieldXml = value; }
    /// Whether the fieldbus configuration file with the bus areas (RDE_FIELDBUS_CFG_XML) is followed.
    bool getIsFieldbusCfg() const { return isFieldbusCfg; }
    /// Follows the fieldbus configuration file, or stops following it.
    void setIsFieldbusCfg(bool value) { isFieldbusCfg = value; }
    /// Whether the signal mapping file (RDE_SIGNAL_MAP_CFG) is followed.
    bool getIsSignalMap() const { return isSignalMap; }
    /// Follows the signal mapping file, or stops following it.
    void setIsSignalMap(bool value) { isSignalMap = value; }
    /// Whether the group IO file (RDE_GROUP_CFG) is followed.
    bool getIsGroupIO() const { return isGroupIO; }
    /// Follows the group IO file, or stops following it.
    void setIsGroupIO(bool value) { isGroupIO = value; }
    /// Whether the function information (RDE_FUNC_INFO_XML, ordinary and monitor) is followed.
    bool getIsFuncInfo() const { return isFuncInfo; }
    /// Follows the function information, or stops following it.
    void setIsFuncInfo(bool value) { isFuncInfo = value; }
    /// Whether the batch of function lists ("funcList") is followed.
    bool getIsFuncList() const { return isFuncList; }
    /// Follows the batch of function lists, or stops following it.
    void setIsFuncList(bool value) { isFuncList = value; }
    /// Whether the user description file (RDE_USER_DES_XML) is followed.
    bool getIsUsedes() const { return isUsedes; }
    /// Follows the user description file, or stops following it.
    void setIsUsedes(bool value) { isUsedes = value; }
    /// Whether the monitor's batch of function lists ("funcListMonitor") is followed.
    bool getIsFuncListMonitor() const { return isFuncListMonitor; }
    /// Follows the monitor's batch of function lists, or stops following it.
    void setIsFuncListMonitor(bool value) { isFuncListMonitor = value; }
    /// Every flag above at once, for tools that follow the whole configuration.
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
