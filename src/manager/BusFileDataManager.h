#pragma once

#include "BusObserver.h"
#include "EditVerdict.h"
#include "FieldbusPaths.h"
#include "FieldbusTypes.h"
#include "ImportReport.h"
#include "platform/MsgBox.h"

#include <QObject>
#include <QSet>
#include <QThread>
#include <QTranslator>

#include <functional>
#include <memory>

class QFile;
class QIODevice;
class GetAndSendFile;
namespace validation {
struct BusGroups;
struct BusSignals;
class SignalIndex;
struct Indexes;
} // namespace validation
namespace pugi {
class xml_document;
class xml_node;
} // namespace pugi

// Process-wide variables other pendant modules read or set.
FIELDBUSCONFIG_EXPORT extern BusType g_lastBusType;
FIELDBUSCONFIG_EXPORT extern IoType g_imIoType;
FIELDBUSCONFIG_EXPORT extern bool g_isIoEditable;
FIELDBUSCONFIG_EXPORT extern bool g_isBusEditable;
FIELDBUSCONFIG_EXPORT extern const QString pv_layout;

// The pendant's one way to the fieldbus and IO-mapping configuration: fetches
// the controller's files on its transfer thread, parses them into tables,
// validates and applies edits, writes the files back and sends them.
// Everything but getInstance() is for the GUI thread.
class FIELDBUSCONFIG_EXPORT BusFileDataManager : public QObject
{
    Q_OBJECT

public:
    static BusFileDataManager *getInstance();
    ~BusFileDataManager() override;

    // Mapping import outcome, read by the import screens.
    static bool _isIllegalImportMap;
    static bool _isConflictImportMap;
    // Module whose mapping screen is in edit mode; empty when none is.
    static QString _editMapModuName;

    // Write operation a user-defined process registers for its own map file.
    using SelfCraftWriteFunc = bool (BusFileDataManager::*)(const QVector<FuncAndMapInfo> &,
                                                            const QString &);

    // ---- requests and routing ----
    void emitGetFieldXml();
    void emitGetFieldbusCfg();
    void emitGetFuncInfo();
    void emitGetFuncInfoMonitor();
    void emitGetGroupIo();
    void emitGetSignalMap();
    void emitGetUserDes();
    void emitGetFuncList();

    void setIsGetFuncList(bool value);
    void setReadMapFileStatus(bool value);
    void setGetSignalMapLoad(bool value);
    void updateMapData(bool commit);
    void updateGroupData(bool commit);

    // ---- observers ----
    void attach(BusObserver *observer);
    void detach(BusObserver *observer);
    // Accepts "funcInfo", "funcInfoMonitor", "fieldbus", "fieldbusCfg", "group", "map",
    // "user_description", "funcList" and "funcListMonitor"; any other key answers false.
    bool isFuncInfoNotified(const QString &key);

    // ---- local files ----
    static bool mkpathLocalTPU(const QString &tpuFilePath);

    // ---- fieldbus list file ----
    QVector<BusName> getBusNameList(bool withMes, bool onlyEnabled);
    QMap<QString, BusName> getAllBusName();
    void setBusInfo(const QMap<QString, BusName> &info);
    bool writeSendFieldbusXml();
    int getBusIndex(const QString &shortName);
    bool isOpenFreeBus();

    // ---- function information and function lists ----
    QStringList getModuleList();
    QString getModuleNameEnCn(const QString &name, bool toCn);
    bool isExistModule(const QString &name);
    QString getFuncNameCn(const QString &module, const QString &funcName);
    QVector<QVector<FuncAndMapInfo>> getFuncList(const QString &module);
    QMap<InOut, QVector<FuncAndMapInfo>> getDigitFuncList(const QString &module);
    QMap<InOut, QVector<FuncAndMapInfo>> getAnalogFuncList(const QString &module);
    QMap<QString, QVector<QVector<FuncAndMapInfo>>> getAllfuncListsMonitor();

    // ---- signal mapping file ----
    static QString parseLineByWord(const QString &line, const QString &keyword);
    static void parseSignalMap(const QString &line, QVector<FuncAndMapInfo> &out);
    void parseSignalMapByBus(const QVector<FuncAndMapInfo> &list,
                             QMap<QString, QVector<FuncAndMapInfo>> &byBus);
    static int getWordIndex(const QStringList &words, const QString &word);
    static QString insertSignalMapCfg(QString value, int widthKind);
    bool writeSendSignalMapCfg(const QString &localPath, const QString &controllerPath);

    // ---- group IO file ----
    bool writeSendGroupCfg();
    QVector<GroupInfo> getBusGroupInfo(QString bus, BiBo dir, QString type, bool saved);
    QMap<QString, GroupInfo> getAllGroupInfo(BiBo dir, QString type);
    void setGroupInfo(const GroupInfo &info, const QString &type, BiBo dir);
    QVector<int> getBusTypeChange();
    void clearBusTypeChange();
    bool isGroupDataChange();
    void getGroupInfoBydType(bool second, const QMap<QString, GroupInfo> &a,
                             const QMap<QString, GroupInfo> &b, QMap<QString, GroupInfo> &out);

    // ---- fieldbus configuration file ----
    bool writeSendFieldbusCfg();
    BusAddrNumInfo getBusNumAndAddr(QString bus, bool user);
    QHash<QString, BusAddrNumInfo> getBusAddrNumInfo();
    void setBusNumAndAddr(const QVector<BusAddrNumInfo> &infos);
    static int getPerformanceValue(BusType type, int current, bool on);

    // ---- user description files ----
    QHash<QString, QString> getUseDes();
    bool writeUserDesXml(QString path, QHash<QString, QString> descriptions);
    bool getAndReadPfsDesc(QMap<QString, QString> &inputs, QMap<QString, QString> &outputs);

    // ---- slave-device file and PV IO file ----
    static bool getAndReadFbslave(QString &endian);
    static bool writeAndSendFbslave(const QString &endian);
    bool writePVIoFile(const QVector<FuncAndMapInfo> &functions, const QString &filePath);

    // ---- validation ----
    QString isAddressValid(const QString &bus, BiBo dir, QString type, int address);
    QString isGroupAddrValid(const QString &bus, BiBo dir, QString range);
    QString isAddressGroupValid(const QString &bus, BiBo dir, const QString &groupKey,
                                const QString &groupNumber, const QString &range, bool saved);
    QString isGroupIdExist(const QString &bus, BiBo dir, QString selector, int groupNumber,
                           bool saved);
    QString isConflict(const QString &bus, const QString &module, const QString &funcKey, int);
    int getBusNum(const QString &bus, BiBo dir, QString type);
    static bool checkIPv4Format(QString text);

    // ---- verdicts of edits: may it be made, and if not, why ----
    // Each runs the pendant's edit checks (which show their own message boxes),
    // then the names, then the validators in the screens' order, on the working
    // tables. A function's own present row does not count against it.
    EditVerdict canMapFunction(const QString &module, const QString &function, BiBo dir,
                               const QString &bus, const QString &address);
    EditVerdict canUnmapFunction(const QString &module, const QString &function, BiBo dir);
    EditVerdict canSetGroup(const QString &bus, BiBo dir, const QString &type, int number,
                            int first, int last);
    EditVerdict canDeleteGroup(const QString &bus, BiBo dir, const QString &type, int number);
    // The edit checks alone, for edits without an entry point of their own (an import).
    EditVerdict canEdit();

    // ---- mapping queries and edits ----
    QVector<FuncAndMapInfo> getMapInfoList(const QString &bus, BiBo dir);
    void getBusSignalMap(BiBo dir, QVector<FuncAndMapInfo> &destination);
    void setMapInfo(const QVector<FuncAndMapInfo> &rows, BiBo dir);

    // ---- import, user-defined process maps, backup ----
    void handleImportMapData(MsgBox::returnValue answer);
    void setMapData(const QVector<FuncAndMapInfo> &in, const QVector<FuncAndMapInfo> &out);
    void setSelfCraftWriteFuncFile(QString name, FilePaths paths, SelfCraftWriteFunc writeFunc);
    static void getSelfCraftsMaps(const FuncAndMapInfo &row);
    static QVector<FuncAndMapInfo> getSelfCraftMap(const QString &name);
    static void clearSelfCraftMap();
    bool getWriteCraftFile(const QString &name, const QString &rdeFilePath,
                           const QString &tpuFilePath);
    bool isExistSelfCraftNames(QStringList &names);
    bool copyMapBackup();
    bool readMapParaBackup(const QString &filePath, const QStringList &modules);
    bool delPvMapParaBackup(const QString &filePath, const QStringList &modules);
    bool sendMapBackupToCtrl();
    // What an import left behind, for tools and screens that report it: the
    // merged tables of handleImportMapData, the imported rows that survived the
    // cleaning (by bus key), the imported rows taking another function's
    // address, the imported rows of functions mapped elsewhere and the present
    // rows of those functions.
    QVector<FuncAndMapInfo> getImportResult(BiBo dir) const;
    QMap<QString, QVector<FuncAndMapInfo>> getImportBusMap(BiBo dir) const;
    QList<FuncAndMapInfo> getImportAddressCollisions(BiBo dir) const;
    QList<FuncAndMapInfo> getImportRemappedFunctions(BiBo dir) const;
    QList<FuncAndMapInfo> getImportPresentRows(BiBo dir) const;

    // ---- import as one operation ----
    // Reads a saved mapping's rows of `modules` (PV_layout: every module but
    // it) through the import's intake and cleaning, and reports row by row;
    // nothing is written. Rows repeating an earlier row stop it: a report with
    // `repeated` and nothing prepared.
    ImportReport prepareImport(const QString &mappingFile, const QStringList &modules);
    // The same for rows (of a CSV file, say): repeated rows are left out and
    // reported, the others go through the same intake and cleaning.
    ImportReport prepareImport(const QVector<ImportRow> &rows);
    // Ends a prepared import: merges with the answer, backs up the present
    // mapping, writes and sends the result with the transfer's retries and
    // marks the import done (g_imIoType). False with `error` when a step fails.
    bool finishImport(MsgBox::returnValue answer, QString *error);

    // ---- machine state and restarts ----
    static bool isEditable();
    bool isHasRteAuthority();
    static bool isRebootRde();
    static bool isMapFuncEdit(IoType type);
    static void rebootRobot(bool);
    static void rebootTpu(bool);
    static int checkProfiSAFEStatus();
    static void getErrorMsg(const QString &path);
    static void delay_MSec(unsigned int ms);
    static void delay_BMSec(unsigned int ms);
    bool isKestraVersion();

    // ---- language and display helpers ----
    QString getBusNameCn(const QString &shortName);
    QString getCurLanguageModuName(QString moduleName);
    static void parseSelfNameCnEn(QString &nameCn, QString &nameEn);
    static QString getDecimalPointStr(double value, char format, int decimals);
    int getLanguageType();

signals:
    void signalGetFuncInfo();
    void signalGetFieldbus();
    void signalGetFieldbusCfg();
    void signalGetSignalMap();
    void signalGetGroupCfg();
    void signalGetUserDes();
    void signalGetFuncList(const QStringList &paths);
    void signalGetFuncInfoMonitor();
    void signalGetFuncListMonitor(const QStringList &paths);
    void signalSendSignalMap(const QString &tpuFilePath = TPU_SIGNAL_MAP_CFG,
                             const QString &rdeFilePath = RDE_SIGNAL_MAP_CFG);
    void signalSendGroupCfg();
    void signalSendFieldbus();
    void signalSendFieldbusCfg();
    void signalUserDes();

private slots:
    void slotReadFile(const QString &filePath, bool &isSuccess);
    void slotReadListFiles(QStringList &filePaths, QString &failedFilePath);
    void slotReadFileMonitor(const QString &filePath, bool &isSuccess);
    void slotReadListFilesMonitor(QStringList &filePaths, QString &failedFilePath);
    void slotSendFile(const QString &filePath, bool &isSuccess);

private:
    BusFileDataManager();
    Q_DISABLE_COPY(BusFileDataManager)
    // Installs the library's Chinese texts when the pendant speaks Chinese.
    void installTranslation();

    void notify(FileHandle handle, const QString &fileKey, bool isSuccess);

    // What the routing knows of one kind of file: its keys, read flag,
    // reader, observer flag and what follows a send (FileKind.h). The read and
    // send slots, notify and isFuncInfoNotified all consult this one table.
    struct FileKind;
    static const QVector<FileKind> &fileKinds();
    static const FileKind *fileKindByKey(const QString &fileKey);
    static const FileKind *fileKindByPollingKey(const QString &pollingKey);
    // The function information with the application parameters that filter it.
    bool readFuncInfoFiles();

    // ---- local files ----
    static bool getFileFromCtrl(const QString &rdeFilePath, const QString &tpuFilePath);
    static bool sendFileToCtrl(const QString &rdeFilePath, const QString &tpuFilePath);
    static bool loadFileLocal(pugi::xml_document &doc, const QString &tpuFilePath);
    bool openFileLocal(QFile &file);
    // Opens a local text file with openFileLocal and hands it to `parse`;
    // false when it cannot be opened or is empty.
    bool readLocalTextFile(const QString &path, const std::function<void(const QString &)> &parse);
    // Text that is not UTF-8 cannot pass through a QString unchanged: a file read
    // with such bytes is remembered, and writing it back is refused with a message
    // (true) instead of replacing them.
    void noteEncoding(const QString &path, bool utf8);
    bool refuseLossyWrite(const QString &path);

    // ---- readers; each parse* takes bytes so that it can be fed from memory ----
    bool readFieldbusXml();
    bool parseFieldbusXml(const pugi::xml_document &doc);
    QVector<BusName> parseFieldBusData(bool withMes, bool onlyEnabled);

    bool readFuncInfoXml();
    bool readFuncListXml(QStringList &paths);
    // Stores the functions of one function-list document under its module.
    void parseFuncListXml(const pugi::xml_document &doc);
    // Loads the function-list files in order, handing each to `parse`.
    bool readListDocuments(const QStringList &paths,
                           const std::function<void(const pugi::xml_document &)> &parse);
    bool readAppParaXml();
    bool readFuncInfoXmlMonitor();
    bool readFuncListXmlMonitor(QStringList &paths);

    bool readSignalMapCfg();
    void parseSignalMapFile(const QString &text);
    // Whether parseSignalMapByBus makes an entry for `bus`.
    bool isBusKey(const QString &bus) const;

    bool readGroupCfg();
    void parseGroupFile(const QString &text);
    void setModifyGroupInfo(QMap<QString, GroupInfo> &table, const GroupInfo &info);
    void setGroupBusTypeChange(const QString &oldBus, const QString &newBus);
    bool isGroupCurDataChange(const QMap<QString, GroupInfo> &current,
                              const QMap<QString, GroupInfo> &saved);
    // The table of a direction and type ("int", "float", "string", any case);
    // null for any other type.
    QMap<QString, GroupInfo> *groupTable(BiBo dir, const QString &type, bool saved);

    bool readFieldbusCfg();
    void parseFieldbusCfg(const pugi::xml_document &doc);
    void parseFunNode(pugi::xml_node node, int *start, int *stop, int *length);
    void parseOtherBusFunNode(pugi::xml_node node, BusAddrNumInfo &info);
    void writeBusNodeUser(pugi::xml_node node, int *start, int *stop, int *length, int stride);
    void writeOtherBusFunNode(pugi::xml_node node, int *totals);

    bool readUserDes();
    void parseUserDes(const pugi::xml_document &doc);

    // ---- validation ----
    static int powerOfTwo(int value);
    // The first row of the table at `address` whose type holds `type`, other
    // than the rows of the excepted function; null for none.
    const FuncAndMapInfo *occupyingRow(int index, const QString &bus, const QString &type,
                                       int address, const QString &exceptModule,
                                       const QString &exceptName);
    // The English key of a module named in either language; empty when unknown.
    QString moduleKeyOf(const QString &name);
    // The signals of `bus` in mapList[index] as the validators look them up;
    // null when the bus has none.
    const validation::BusSignals *indexedSignals(int index, const QString &bus);
    const validation::SignalIndex &mappingIndex(int index);
    // The groups getBusGroupInfo gives, with their numbers; null for none.
    const validation::BusGroups *indexedGroups(const QString &bus, BiBo dir, const QString &type,
                                               bool saved);

    // ---- mapping edits ----
    // Index of a direction's mapping tables: any value but input selects output.
    static int mapIndex(BiBo dir);
    void modifyMapInfo(QVector<FuncAndMapInfo> rows, QVector<FuncAndMapInfo> &table);
    QStringList getListKey(QVector<FuncAndMapInfo> &rows);

    // ---- import ----
    void getImBusMapInfo(const QString &line, QMap<QString, QVector<FuncAndMapInfo>> &map);
    // The intake's selection by the import module list, for one parsed row.
    void takeImportRow(const FuncAndMapInfo &row, QMap<QString, QVector<FuncAndMapInfo>> &map);
    QVector<ImportReport::Dropped> repeatedRows(const QVector<ImportRow> &rows);
    // Why the cleaning dropped a row: the first of its rules, and its kind.
    QString importDropReason(BiBo dir, const FuncAndMapInfo &row, QString *kind);
    // Counts and lists what the cleaning and the collision search made of `rows`.
    void reportImport(const QVector<ImportRow> &rows, ImportReport &report);
    void delIllegalBusMap();
    // Removes the import rows `refused` holds for, noting an illegal import.
    template<typename Refused>
    void dropRows(QVector<FuncAndMapInfo> &rows, Refused refused);
    void delNonExistBusType(QMap<QString, QVector<FuncAndMapInfo>> &map);
    void delOutOfRangeAddrs(BiBo dir, QMap<QString, QVector<FuncAndMapInfo>> &map);
    void delNonExistBusGroupId(BiBo dir, QMap<QString, QVector<FuncAndMapInfo>> &map);
    void delConflictBusGroupAddr(BiBo dir, QMap<QString, QVector<FuncAndMapInfo>> &map);
    void checkGetConflictData(BiBo dir, QMap<QString, QVector<FuncAndMapInfo>> &map,
                              QList<FuncAndMapInfo> &addressCollisions,
                              QList<FuncAndMapInfo> &remappedFunctions,
                              QList<FuncAndMapInfo> &presentRows);
    void getAndkeepImportedMapData();
    void getAndkeepImportMapData();
    void keepImportedMapData(const QList<FuncAndMapInfo> &list,
                             QMap<QString, QVector<FuncAndMapInfo>> &map);
    void keepImportMapData(const QList<FuncAndMapInfo> &list, QVector<FuncAndMapInfo> &table);
    void getWriteMapData(QVector<FuncAndMapInfo> &table,
                         const QMap<QString, QVector<FuncAndMapInfo>> &map);
    void setConflictMapInfo(const QList<FuncAndMapInfo> &in, QList<FuncAndMapInfo> &out);
    void addConflictData(const QString &bus);
    // Reads a mapping file's sections into the import bus maps.
    bool readImportMapFile(const QString &filePath, const QStringList &modules);
    void parseImportMapFile(const QString &text, const QStringList &modules);

    static BusFileDataManager *_pInstance;
    static QHash<QString, QVector<FuncAndMapInfo>> imSelfCraftMapInfo;
    // Cached answer of checkProfiSAFEStatus; -1 until known.
    static int profiSafeStatus;

    // ---- read flags ----
    bool isFieldXmlRead = false;
    bool isFieldbusCfgRead = false;
    bool isGroupCfgRead = false;
    bool isSignalMapRead = false;
    bool isUserDesRead = false;
    bool isFuncInfoRead = false;
    bool isFuncListRead = false;
    bool isFuncInfoMonitorRead = false;
    bool isFuncListMonitorRead = false;
    bool isGetFuncList = false;

    int uiStyle = 0;
    bool isFreeBusOpen = false;
    int languageId = 0;
    QString curFilePath;
    QSet<QString> notUtf8Files;
    QList<BusObserver *> observers;
    QThread thread;
    GetAndSendFile *worker = nullptr;
    // The library's Chinese texts; leaves the application with the manager.
    QTranslator translator;

    // ---- fieldbus list file ----
    QVector<BusName> busList;
    QMap<QString, BusName> busInfoMap;
    QStringList busShortNames;

    // ---- function information and function lists ----
    QMap<QString, QString> moduleNameMap; // English name -> Chinese name
    QMap<QString, QString> modulePathMap; // display name -> list path
    QMap<QString, QString> modulePathMapCn; // Chinese name -> list path
    QStringList moduleList;
    QHash<QString, QVector<QVector<FuncAndMapInfo>>> funcListMap;
    QHash<QString, QMap<InOut, QVector<FuncAndMapInfo>>> digitFuncMap;
    QHash<QString, QMap<InOut, QVector<FuncAndMapInfo>>> analogFuncMap;
    QMap<QString, QString> monitorPathMap;
    QMap<QString, QVector<QVector<FuncAndMapInfo>>> funcListMonitorMap;

    // ---- signal mapping, indexed by BiBo ----
    QVector<FuncAndMapInfo> mapList[2]; // working copy the screens edit
    QVector<FuncAndMapInfo> readMapList[2]; // committed copy
    QVector<FuncAndMapInfo> writeMapList[2]; // what the writer writes; import results
    QMap<QString, QVector<FuncAndMapInfo>> busMap[2];

    // ---- group IO, indexed by [BiBo][int, float, string] ----
    QMap<QString, GroupInfo> curGroupTables[2][3];
    QMap<QString, GroupInfo> savedGroupTables[2][3];
    QVector<int> busTypeChange;

    // What the validators look up instead of walking the tables.
    std::unique_ptr<validation::Indexes> indexes;

    // ---- fieldbus configuration, by element name ----
    QHash<QString, BusAddrNumInfo> busAddrNumInfo;

    // ---- user descriptions: "name[index]" -> text ----
    QHash<QString, QString> userDesMap;

    // ---- import, indexed by BiBo ----
    QMap<QString, QVector<FuncAndMapInfo>> imBusMap[2];
    QStringList imModuleList;
    QList<FuncAndMapInfo> conflictMapList[2]; // imported rows taking another function's address
    QList<FuncAndMapInfo> remapList[2]; // imported rows of functions mapped elsewhere
    QList<FuncAndMapInfo> presentMapList[2]; // present rows of those functions
    // Functions that compete for addresses, function name -> address (-1: none).
    QVector<QMap<QString, int>> conflictDatas;

    // ---- user-defined process maps ----
    QHash<QString, SelfCraftWriteFunc> selfCraftWriteFuncs;
    QHash<QString, FilePaths> selfCraftPaths;
};
