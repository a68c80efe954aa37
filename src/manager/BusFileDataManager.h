#pragma once

/// @file
/// The manager a screen talks to, and the globals the pendant's screens share with it.

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

// Process-wide variables other pendant modules read or set; GUI thread only.
/// The protocol whose communication-performance switch the user last agreed
/// to turn off in getPerformanceValue(); BusType(-1) until then.
FIELDBUSCONFIG_EXPORT extern BusType g_lastBusType;
/// Kind of IO a finished import changed: finishImport() sets IoTypeAll, and
/// isMapFuncEdit() refuses edits of that kind until the controller restarts.
FIELDBUSCONFIG_EXPORT extern IoType g_imIoType;
/// Whether the pendant's IO screens allow editing; kept for other modules, the
/// library does not consult it.
FIELDBUSCONFIG_EXPORT extern bool g_isIoEditable;
/// Whether the pendant's bus screens allow editing; kept for other modules, the
/// library does not consult it.
FIELDBUSCONFIG_EXPORT extern bool g_isBusEditable;
/// "PV_layout", the module of the process-variable layout. Selecting it for an
/// import means every other module (kept-behaviours.md, entry 51).
FIELDBUSCONFIG_EXPORT extern const QString pv_layout;

/// The pendant's one way to the fieldbus and IO-mapping configuration: fetches
/// the controller's files on its transfer thread, parses them into tables,
/// validates and applies edits, writes the files back and sends them.
///
/// Threads. The manager belongs to the thread of the first getInstance() call,
/// the GUI thread; every member is for that thread unless its comment says
/// otherwise. Only the transfers asked for by the emitGet and writeSend calls
/// run on the manager's transfer thread ("BusFileDataManagerThread"); their
/// results come back queued, so the readers, the tables and the observers'
/// BusObserver::onFileNotify() all run on the GUI thread. A few calls fetch or
/// send synchronously instead (getAndReadPfsDesc(), getAndReadFbslave(),
/// getWriteCraftFile(), finishImport() and others, each says so): they block
/// the GUI thread for the transfer while keeping its events turning between
/// attempts, so queued results and observer callbacks may arrive meanwhile.
/// Many answers that look odd are kept on purpose; docs/kept-behaviours.md
/// lists them by number.
class FIELDBUSCONFIG_EXPORT BusFileDataManager : public QObject
{
    Q_OBJECT

public:
    /// The one manager, made on the first call, which also starts the
    /// transfer thread. Make that call on the GUI thread: the manager belongs
    /// to the thread that makes it. The first call is not guarded against a
    /// second thread making it at the same time.
    static BusFileDataManager *getInstance();
    /// Stops the transfer thread, waiting for a transfer under way to end.
    /// Does not clear the pointer getInstance() hands out.
    ~BusFileDataManager() override;

    /// Set by the import's cleaning (readMapParaBackup(), prepareImport())
    /// when it dropped rows of the imported mapping; the import screens show it.
    static bool _isIllegalImportMap;
    /// Set by the import's collision search when imported rows take addresses
    /// of other functions or map functions that are mapped elsewhere; only then
    /// does the answer given to handleImportMapData() matter.
    static bool _isConflictImportMap;
    /// Module whose mapping screen is in edit mode; empty when none is.
    /// While it is set, isEditable() refuses and names it.
    static QString _editMapModuName;

    /// Write operation a user-defined process registers for its own map file:
    /// it gets the rows gathered for the process and the local path of the
    /// file, and answers whether it wrote the file.
    using SelfCraftWriteFunc = bool (BusFileDataManager::*)(const QVector<FuncAndMapInfo> &,
                                                            const QString &);

    // ---- requests and routing ----
    /// Asks the transfer thread to fetch the fieldbus list file; returns at once.
    /// The observers following it hear FileFetchedAndRead with RDE_FIELDBUS_XML
    /// on the GUI thread. Each of the requests below works alike: a file that
    /// arrived once is not fetched again in this run, and one read successfully
    /// is not read again (kept-behaviours.md, entry 32); a failed fetch shows an
    /// error box and reads the earlier local copy (entry 33).
    void emitGetFieldXml();
    /// Asks the transfer thread to fetch the fieldbus configuration file (the
    /// bus areas); notification key RDE_FIELDBUS_CFG_XML. Returns at once.
    void emitGetFieldbusCfg();
    /// Asks the transfer thread to fetch the function information; it is read
    /// with the pendant's application parameters, which hide modules.
    /// Notification key RDE_FUNC_INFO_XML. When setIsGetFuncList() is on, each
    /// arrival, read or not, also requests the function lists. Returns at once.
    void emitGetFuncInfo();
    /// Asks the transfer thread to fetch the function information for the
    /// monitor; after the read (key RDE_FUNC_INFO_XML) the monitor's function
    /// lists are requested as well (key "funcListMonitor"), fetched afresh on
    /// every request. Returns at once.
    void emitGetFuncInfoMonitor();
    /// Asks the transfer thread to fetch the group IO file; notification key
    /// RDE_GROUP_CFG. A read fills the working and the saved group tables. Returns at once.
    void emitGetGroupIo();
    /// Asks the transfer thread to fetch the signal mapping file; notification
    /// key RDE_SIGNAL_MAP_CFG. A read replaces the working and committed
    /// mapping tables. It is fetched again only after setGetSignalMapLoad(false),
    /// and read again only after setReadMapFileStatus(false). Returns at once.
    void emitGetSignalMap();
    /// Asks the transfer thread to fetch the user description file;
    /// notification key RDE_USER_DES_XML. Returns at once.
    void emitGetUserDes();
    /// Asks the transfer thread to fetch the function lists that the function
    /// information names (hidden modules' lists included); notification key
    /// "funcList". The function information must have been read first: without
    /// it there are no lists and the read fails. The lists are read in order,
    /// and one that does not load ends the batch (entry 27). A list that cannot
    /// be fetched shows the fetch error box after the observers are told; one
    /// whose local folder cannot be made ends the request with no answer at all
    /// (entry 31). Returns at once.
    void emitGetFuncList();

    /// Whether reading the function information also requests the function
    /// lists (emitGetFuncList()); off at start.
    void setIsGetFuncList(bool value);
    /// Sets whether the signal mapping counts as read: false makes its next
    /// arrival parse the local copy again, and isFuncInfoNotified("map") answer false.
    void setReadMapFileStatus(bool value);
    /// Tells the transfer thread whether the signal mapping file has been
    /// fetched: false makes the next emitGetSignalMap() fetch it again. Safe to
    /// call while a transfer runs (the flag is atomic).
    void setGetSignalMapLoad(bool value);
    /// Ends the mapping edits: commit copies the working tables (the screens'
    /// edits) to the committed ones, otherwise the edits are dropped. The
    /// per-bus view of getMapInfoList() is rebuilt from the committed tables.
    void updateMapData(bool commit);
    /// Ends the group edits: commit copies the working group tables to the
    /// saved ones, otherwise the working tables return to the saved state.
    void updateGroupData(bool commit);

    // ---- observers ----
    /// Adds an observer; it is called on the GUI thread for the files its flags
    /// follow. The manager does not own it; attaching twice calls it twice.
    void attach(BusObserver *observer);
    /// Removes one attachment of an observer; unknown observers are ignored.
    void detach(BusObserver *observer);
    /// Whether the files of a polling key have been read successfully in this run.
    /// Accepts "funcInfo", "funcInfoMonitor", "fieldbus", "fieldbusCfg", "group", "map",
    /// "user_description", "funcList" and "funcListMonitor", and "groupFiles"
    /// (fieldbus, fieldbusCfg, map and group) and "fieldbusSet" (fieldbus and
    /// fieldbusCfg), which ask for several files at once; any other key answers
    /// false, the notification keys included (kept-behaviours.md, entry 53).
    bool isFuncInfoNotified(const QString &key);

    // ---- local files ----
    /// Makes the folder of a local file: the path up to its last slash, a
    /// leading slash dropped so that it is taken from the current directory.
    /// True when the folder exists or was made, and for a path without a slash.
    /// Touches no manager state.
    static bool mkpathLocalTPU(const QString &tpuFilePath);

    // ---- fieldbus list file ----
    /// The buses of the fieldbus list as last read, in file order, ModbusTcpSlave
    /// (mtcp) always first (entry 22). Buses that carry no mapped signals (Mes,
    /// FinsTcp, ProfibusSlave, FreeBus) are left out, Mes only when withMes is
    /// false; onlyEnabled keeps the switched-on buses only.
    QVector<BusName> getBusNameList(bool withMes, bool onlyEnabled);
    /// Bus name to entry, as the bus screens edit them: every bus the file has
    /// listed in this run (entries are never removed, entry 23), without the
    /// implicit ModbusTcpSlave, unless setBusInfo() replaced the map.
    QMap<QString, BusName> getAllBusName();
    /// Replaces the name-keyed bus map that writeSendFieldbusXml() writes from.
    void setBusInfo(const QMap<QString, BusName> &info);
    /// Writes the switched-on state of each bus of the map into the local
    /// fieldbus list (only where an enable text exists, entry 6) and asks the
    /// transfer thread to send it. False when the local copy does not load (an
    /// error box is shown) or cannot be saved; then nothing is sent. After the
    /// send, whatever its result, the file is read again and the observers hear
    /// FileWrittenAndSent (entry 35).
    bool writeSendFieldbusXml();
    /// Index of a bus short name in the controller's order (mtcp, ethcat, eip,
    /// pfn, ecm, dns, mbc, eim, pnm, dnm), any case: the BusType value and the
    /// bit of the communication-performance switch; -1 when unknown.
    int getBusIndex(const QString &shortName);
    /// Whether the FreeBus entry was switched on at the last read; false until
    /// a list with FreeBus was read, and kept when a later list lacks it.
    bool isOpenFreeBus();

    // ---- function information and function lists ----
    /// Modules to offer, by their names in the pendant's language, in the
    /// order of the function information. Modules the application parameters
    /// hide are removed from the list for good; Common always stays (entry 28).
    QStringList getModuleList();
    /// With toCn, the Chinese name of an English module name, an unknown name
    /// passing through; without, the English name of a module named in either
    /// language, empty when unknown (entry 29).
    QString getModuleNameEnCn(const QString &name, bool toCn);
    /// Whether the function information declares a module of this English name.
    bool isExistModule(const QString &name);
    /// The Chinese name of a fieldbus function of a module (named in either
    /// language) followed by a comma, the form isConflict() joins; empty when
    /// the module's lists hold no function of that name.
    QString getFuncNameCn(const QString &module, const QString &funcName);
    /// The functions a fieldbus may carry of a module (its English key): the
    /// inputs at index 0 (FuncInput), the outputs at 1; empty when unknown.
    /// Replaced as a whole each time the function lists are read.
    QVector<QVector<FuncAndMapInfo>> getFuncList(const QString &module);
    /// The digital IO functions (bool) of a module, by FuncInput and
    /// FuncOutput. Never cleared: a module whose list is no longer read keeps
    /// its entries (entry 27). A list offering neither fieldbus nor digital
    /// functions stores nothing here nor in the analog table (entry 26).
    QMap<InOut, QVector<FuncAndMapInfo>> getDigitFuncList(const QString &module);
    /// The analog functions of a module, by FuncInput and FuncOutput; kept
    /// like getDigitFuncList().
    QMap<InOut, QVector<FuncAndMapInfo>> getAnalogFuncList(const QString &module);
    /// Module key to its inputs and outputs for the monitor: every function of
    /// the monitor's lists, whatever its region or type, as last read.
    QMap<QString, QVector<QVector<FuncAndMapInfo>>> getAllfuncListsMonitor();

    // ---- signal mapping file ----
    /// The word after the first word equal to keyword (case-sensitive) in a
    /// line of blank-separated words; "0" when there is none (entry 16).
    /// Touches no manager state; any thread.
    static QString parseLineByWord(const QString &line, const QString &keyword);
    /// Appends the record of one mapping file row to out: its -Module, -Name,
    /// -Type, -FieldBus (lowered), -Address, -FilterTime and -Invert values,
    /// "0" for each that is missing. Touches no manager state; any thread.
    static void parseSignalMap(const QString &line, QVector<FuncAndMapInfo> &out);
    /// Fills byBus (cleared first) with the rows of list under the bus keys of
    /// the fieldbus list: each short name and its group key ("group_mtcp"),
    /// matched in any case. Rows of other buses are left out.
    void parseSignalMapByBus(const QVector<FuncAndMapInfo> &list,
                             QMap<QString, QVector<FuncAndMapInfo>> &byBus);
    /// Index of the first of words equal to word in any case; -1 for none.
    /// Touches no manager state; any thread.
    static int getWordIndex(const QStringList &words, const QString &word);
    /// value padded with blanks to a mapping file column: 32 characters for
    /// widthKind 1 (names), 8 for 2, 16 for any other; a longer value stays
    /// whole (entry 10). Touches no manager state; any thread.
    static QString insertSignalMapCfg(QString value, int widthKind);
    /// Writes a mapping file atomically and, for the standard local path
    /// (TPU_SIGNAL_MAP_CFG), asks the transfer thread to send it.
    ///
    /// The standard path gets the working tables, which also become the write
    /// tables; the send always goes to RDE_SIGNAL_MAP_CFG, whatever
    /// controllerPath says (entry 35). After a successful send the working
    /// tables are committed, and the observers hear FileWrittenAndSent. Any
    /// other path gets the write tables (an import's result, setMapData()) and
    /// nothing is sent; controllerPath is then unused.
    /// @return false when the folder cannot be made, the file cannot be
    /// written, or the standard file was read with bytes that are not UTF-8
    /// (refused with a message box, so that they are not lost); true says
    /// the local file is written, not that the send succeeded.
    bool writeSendSignalMapCfg(const QString &localPath, const QString &controllerPath);

    // ---- group IO file ----
    /// Writes the working group tables atomically to the local group IO file
    /// (in text order of their numbers, entry 11) and asks the transfer thread
    /// to send it; after a successful send they become the saved tables, and
    /// the observers hear FileWrittenAndSent. False when the file cannot be
    /// written or was read with bytes that are not UTF-8 (refused with a
    /// message box); then nothing is sent.
    bool writeSendGroupCfg();
    /// The groups of a bus in one table, in text order of their numbers.
    /// bus is a short name or a group key ("group_mtcp": the part after the
    /// first underscore), matched in any case; type selects the int, float or
    /// string table in any case (any other type gives none); saved selects the
    /// saved tables instead of the working ones.
    QVector<GroupInfo> getBusGroupInfo(QString bus, BiBo dir, QString type, bool saved);
    /// Group number text to group of a direction and type, from the saved
    /// tables even while edits are pending (entry 15); empty for a type other
    /// than int, float or string.
    QMap<QString, GroupInfo> getAllGroupInfo(BiBo dir, QString type);
    /// Edits the working table of a direction and type (int, float or string,
    /// any case; other types are ignored): a deviceMapHead of "-1" deletes
    /// the group numbered info.address, anything else adds or replaces it.
    /// The buses involved are noted for getBusTypeChange().
    void setGroupInfo(const GroupInfo &info, const QString &type, BiBo dir);
    /// Indexes (getBusIndex()) of the buses whose groups setGroupInfo()
    /// changed since clearBusTypeChange(), in order of their first change.
    QVector<int> getBusTypeChange();
    /// Forgets the buses getBusTypeChange() reports.
    void clearBusTypeChange();
    /// Whether the working group tables differ from the saved ones in their
    /// numbers, buses or device maps; device maps are compared with their
    /// halves joined, so 1-23 and 12-3 count as equal (entry 14).
    bool isGroupDataChange();
    /// Sets out to b when second is true, otherwise to a.
    void getGroupInfoBydType(bool second, const QMap<QString, GroupInfo> &a,
                             const QMap<QString, GroupInfo> &b, QMap<QString, GroupInfo> &out);

    // ---- fieldbus configuration file ----
    /// Writes the user area records and the DeviceNet master bit totals set by
    /// setBusNumAndAddr() into the local fieldbus configuration file (at a
    /// fixed stride, entry 5; empty elements stay empty, entry 6) and asks the
    /// transfer thread to send it; the observers hear FileWrittenAndSent.
    /// False, with nothing sent, only when the local copy does not load; a
    /// failed save is not reported and the earlier local file is sent (entry 8).
    bool writeSendFieldbusCfg();
    /// The area record of a bus short name (exact case): slave buses have a
    /// system record and a user one (user selects it), master buses one for
    /// both. Nine places each of start address, stop address and count; all
    /// zero for an unknown bus or a record not read. getBusNum() tells how the
    /// counts are indexed.
    BusAddrNumInfo getBusNumAndAddr(QString bus, bool user);
    /// Every area record by its element name (ModbusUser, EcmUser, ...), zero
    /// for records not read. The bit totals of the masters other than
    /// DeviceNet are capped at 2048 (entry 7).
    QHash<QString, BusAddrNumInfo> getBusAddrNumInfo();
    /// Replaces the user area records, in this order: ModbusUser, EthercatUser,
    /// EthernetIPUser, ProfinetUser, DeviceNetSlaveUser, ModbusMasterUser, then
    /// the DnmUser bit totals (places 0 and 1 of its counts). Fewer than seven
    /// records change nothing; further ones are ignored. Nothing is written
    /// until writeSendFieldbusCfg().
    void setBusNumAndAddr(const QVector<BusAddrNumInfo> &infos);
    /// The new value of the communication-performance switch (one bit per
    /// BusType) when the switch of type is turned on or off. Off gives 0; on
    /// with no protocol holding it (current 0) gives the bit of type. When a
    /// protocol holds it, even type itself, a Yes/No box asks whether to turn that protocol's switch off:
    /// Yes gives the bit of type and notes the protocol in g_lastBusType; No,
    /// or a value that is not a single known bit, gives -1 (leave the switch
    /// as it is). Shows a box: GUI thread.
    static int getPerformanceValue(BusType type, int current, bool on);

    // ---- user description files ----
    /// The user descriptions as last read, by "name[index]" key; the first
    /// entry of a key wins (entry 18). Empty when the file is missing or
    /// broken (entry 19).
    QHash<QString, QString> getUseDes();
    /// Writes descriptions, by "name[index]" key, to path and asks the transfer
    /// thread to send the standard local description file, whichever path was
    /// written (entry 8); after the send that file is read again and the
    /// observers hear FileWrittenAndSent. The texts are not escaped (entry 1)
    /// and come in hash order (entry 21).
    /// @return whether the save succeeded; the send is asked for all the same.
    /// Writing the standard file when it was read with bytes that are not UTF-8
    /// is refused instead, with a message box: false, nothing sent.
    bool writeUserDesXml(QString path, QHash<QString, QString> descriptions);
    /// Fetches and reads the safety (PROFIsafe) descriptions, synchronously:
    /// blocks the GUI thread for up to three attempts 100 ms apart, keeping
    /// its events turning. On success inputs and outputs are replaced with
    /// index text to description (the last entry of an index wins, entry 18).
    /// False, the maps left alone, when the fetch fails or the copy does not
    /// load; each failure shows its error box (entry 36).
    bool getAndReadPfsDesc(QMap<QString, QString> &inputs, QMap<QString, QString> &outputs);

    // ---- slave-device file and PV IO file ----
    /// Fetches the slave-device file synchronously (like getAndReadPfsDesc())
    /// and sets endian to its byte-order text. False, endian left alone, when
    /// the fetch fails or the copy does not load, each with its error box
    /// (entry 36). GUI thread.
    static bool getAndReadFbslave(QString &endian);
    /// Writes endian into the local slave-device file (an empty element stays
    /// empty, entry 6) and sends it synchronously, blocking the GUI thread for
    /// up to three attempts 100 ms apart. False when the local copy does not
    /// load (error box), cannot be saved or cannot be sent (no message, entry
    /// 37). Fetch it with getAndReadFbslave() first.
    static bool writeAndSendFbslave(const QString &endian);
    /// Resets to -1 the monitor signals named like the functions in five
    /// sections of a PV IO file (entry 38); names and path go through Latin-1.
    /// Nothing is sent. False when the file does not load; true whatever the
    /// save does (entry 37).
    bool writePVIoFile(const QVector<FuncAndMapInfo> &functions, const QString &filePath);

    // ---- validation ----
    // The validators answer in the screens' words: "ok" when nothing is in the
    // way, otherwise what is. They look at the working tables.
    /// "ok" when no row of the bus (a bus key of the fieldbus list: "mtcp" or
    /// "group_mtcp", lower case) in the working table of dir holds address with a type containing type
    /// (any case, so "bool" finds "Bool_t", entry 43); otherwise the module of
    /// the first such row, in the pendant's language. Address -1 is always "ok".
    QString isAddressValid(const QString &bus, BiBo dir, QString type, int address);
    /// For a group range "first,last": the address text of the first bool row
    /// (in table order) of the bus whose address lies in the range, or "ok"
    /// when there is none, when last is -1 or missing, or when the bus is not a
    /// bus key of the fieldbus list (as for isAddressValid()).
    QString isGroupAddrValid(const QString &bus, BiBo dir, QString range);
    /// The number text of the first group of the bus whose device map overlaps
    /// range, or "ok" when none does.
    ///
    /// bus holding "group" is taken after its first dash ("GROUP-eip" is eip,
    /// entry 45), and a group key after its underscore as in getBusGroupInfo().
    /// groupKey is a table type, or "table,type": the table is
    /// searched, and the group numbered groupNumber with that type is skipped
    /// as the one being edited. range is "first,last"; "first,-1" asks whether
    /// first lies inside a group, "-1,last" the same for last, and "-1,-1"
    /// overlaps nothing. saved selects the saved group tables.
    QString isAddressGroupValid(const QString &bus, BiBo dir, const QString &groupKey,
                                const QString &groupNumber, const QString &range, bool saved);
    /// Answers the other way round from the other validators (entry 42): "ok"
    /// when the bus has a group numbered groupNumber in the selector's table
    /// (int, float or string), and for groupNumber -1; an empty string when it
    /// has none.
    QString isGroupIdExist(const QString &bus, BiBo dir, QString selector, int groupNumber,
                           bool saved);
    /// Whether functions competing with funcKey for addresses are mapped: for
    /// the first competing set holding funcKey in which another function has
    /// an address on bus, the Chinese names of the set's functions joined by
    /// commas; empty otherwise. Refreshes the set's addresses from the working
    /// tables first (entry 46). The last argument is unused. Nothing in the
    /// library fills the competing sets, so the answer is empty unless they
    /// are set from outside.
    QString isConflict(const QString &bus, const QString &module, const QString &funcKey, int);
    /// How many addresses of type the bus offers in a direction, from the area
    /// counts of the fieldbus configuration file: the record of the first bus
    /// kind the name holds (MTCP, EthCat, EIP, PFN, ECS, MBC, DNS, ECM, ...,
    /// any case), at place type times stride plus direction, the type being 0
    /// for bool, 1 for int and 2 for any other, the stride 2 for a name holding
    /// MBC and 3 otherwise. A name holding "group" counts 256 int, 128 float
    /// and 8 string groups (entry 44). 0 when unknown.
    int getBusNum(const QString &bus, BiBo dir, QString type);
    /// Whether text is an IPv4 address of four dotted decimal parts (entry 47).
    /// Touches no manager state; any thread.
    static bool checkIPv4Format(QString text);

    // ---- verdicts of edits: may it be made, and if not, why ----
    // Each runs the pendant's edit checks (which show their own message boxes),
    // then the names, then the validators in the screens' order, on the working
    // tables. A function's own present row does not count against it.
    /// Whether a function may be mapped at an address, and if not, why.
    ///
    /// Runs canEdit(), then the names: module in either language, function by
    /// its name or Chinese name among the module's fieldbus functions of dir,
    /// bus as a short name or group key (any case) of a bus that is switched
    /// on; then address, which must be a number (for a group key, the number
    /// of a group that exists), below the bus's size (busSize of the verdict),
    /// not held by another function's row of the same type, and for a bool
    /// signal not inside a group's range. A function's own present row does
    /// not count against it. Nothing is changed; the edit checks may show
    /// message boxes.
    EditVerdict canMapFunction(const QString &module, const QString &function, BiBo dir,
                               const QString &bus, const QString &address);
    /// Whether a function's mapping in dir may be removed: allowed when the
    /// working table holds a row of it, even of a module or function no longer
    /// declared; otherwise UnknownModule, UnknownFunction or NotMapped. Runs
    /// canEdit() first.
    EditVerdict canUnmapFunction(const QString &module, const QString &function, BiBo dir);
    /// Whether group number of type (int, float or string) may take the bool
    /// addresses first to last of bus (a short name, any case) in dir: the bus
    /// exists and is on, the number is below the bus's group count, the range is
    /// in order and within the bus's bool addresses, holds no mapped bool
    /// signal, and overlaps no other group of the working tables; in each of
    /// the three tables the group bearing this number is passed over as the
    /// one being edited. Last, the number must not belong to another bus's
    /// group of that direction and type in the saved tables (numbers are shared
    /// by all buses). Runs canEdit() first.
    EditVerdict canSetGroup(const QString &bus, BiBo dir, const QString &type, int number,
                            int first, int last);
    /// Whether group number of type may be deleted from bus in dir: the bus
    /// exists, the group exists in the working table, and no signal is mapped
    /// into it (GroupInUse names the first). Runs canEdit() first.
    EditVerdict canDeleteGroup(const QString &bus, BiBo dir, const QString &type, int number);
    /// The edit checks alone, for edits without an entry point of their own (an import):
    /// isEditable(), isHasRteAuthority(), isRebootRde() and
    /// isMapFuncEdit(IoTypeFieldbus), in this order. The first that fails has
    /// shown its message box, and the verdict is EditNotAllowed.
    EditVerdict canEdit();

    // ---- mapping queries and edits ----
    /// The committed rows (last read, sent or committed with updateMapData())
    /// of a bus key followed by those of its group key ("mtcp", then
    /// "group_mtcp"); the working edits are not in it. The bus is looked up as
    /// given: the keys are the lower-case short names.
    QVector<FuncAndMapInfo> getMapInfoList(const QString &bus, BiBo dir);
    /// Copies the working mapping table of a direction, the screens' edits
    /// included, into destination.
    void getBusSignalMap(BiBo dir, QVector<FuncAndMapInfo> &destination);
    /// Merges edited rows into the working table of a direction (entry 49).
    ///
    /// A row is matched by its function name and bus (a group key counting as
    /// its bus; a module that is not declared is matched by the name alone).
    /// An address of "-1" removes the matched row; any other updates its
    /// address, bus, filter time and invert, or, when nothing matches, is
    /// appended after the table's rows. The bus names of the working table are
    /// lowered; the caller's rows are not changed.
    void setMapInfo(const QVector<FuncAndMapInfo> &rows, BiBo dir);

    // ---- import, user-defined process maps, backup ----
    /// Merges the cleaned import into the write tables (getImportResult()).
    ///
    /// Without collisions or moved functions (_isConflictImportMap false) the
    /// committed tables get the imported rows appended. Otherwise MsgBox::Yes
    /// keeps the present mapping of moved functions, MsgBox::No takes the
    /// imported one, and any other answer appends the imports to the write
    /// tables as they are (entry 52). Address collisions are kept by every
    /// answer (entry 50). Nothing is written.
    void handleImportMapData(MsgBox::returnValue answer);
    /// Replaces the write tables, which writeSendSignalMapCfg() writes to a
    /// path other than the standard one.
    void setMapData(const QVector<FuncAndMapInfo> &in, const QVector<FuncAndMapInfo> &out);
    /// Registers a user-defined process by name: the write operation that
    /// rewrites its map file, the file's controller and local paths, and an
    /// empty list in which the import gathers its rows (getSelfCraftsMaps()).
    void setSelfCraftWriteFuncFile(QString name, FilePaths paths, SelfCraftWriteFunc writeFunc);
    /// Gathers a present row for the registered process its module names; rows
    /// of other modules are ignored. A name holding a dot is split into the
    /// name and Chinese-name fields the other way round (entry 39). The import's
    /// collision search calls it. The gathered rows are shared process-wide
    /// without a lock: GUI thread.
    static void getSelfCraftsMaps(const FuncAndMapInfo &row);
    /// The rows gathered for a process; empty when none or not registered. GUI thread.
    static QVector<FuncAndMapInfo> getSelfCraftMap(const QString &name);
    /// Empties every process's gathered rows; the registrations stay. GUI thread.
    static void clearSelfCraftMap();
    /// Fetches a process's map file synchronously (up to three attempts 100 ms
    /// apart, the GUI thread's events turning; an error box when it fails),
    /// then lets the process's write operation rewrite the local copy from the
    /// gathered rows. The file is not sent. False when the fetch fails, no
    /// write operation is registered, or the operation fails.
    bool getWriteCraftFile(const QString &name, const QString &rdeFilePath,
                           const QString &tpuFilePath);
    /// Rewrites the file of every registered process that gathered rows, with
    /// getWriteCraftFile(), appending each one's name to names. False at the
    /// first failure (names then holds the processes done before it).
    bool isExistSelfCraftNames(QStringList &names);
    /// Copies the local signal mapping file over the local backup file. False
    /// when there is no local mapping file or the copy fails.
    bool copyMapBackup();
    /// Reads the rows of modules (PV_layout: every module but it, entry 51)
    /// from a saved mapping file into the import's bus tables, then cleans them
    /// (rows of buses that are off or unknown, addresses out of range, groups
    /// that do not exist, bool signals inside groups) and searches the
    /// committed tables for collisions; sets _isIllegalImportMap and
    /// _isConflictImportMap. False when the file cannot be opened or is empty.
    bool readMapParaBackup(const QString &filePath, const QStringList &modules);
    /// Replaces the write tables with the rows of modules of a saved mapping
    /// file, uncleaned; with PV_layout among them, the mapping without its
    /// process-variable layout. Ready for writeSendSignalMapCfg() to another
    /// path. False when the file cannot be opened or is empty.
    bool delPvMapParaBackup(const QString &filePath, const QStringList &modules);
    /// Sends the local backup file to RDE_SIGNAL_MAP_BACKUP_CFG synchronously,
    /// in one attempt and without a message (entry 37).
    bool sendMapBackupToCtrl();
    // What an import left behind, for tools and screens that report it: the
    // merged tables of handleImportMapData, the imported rows that survived the
    // cleaning (by bus key), the imported rows taking another function's
    // address, the imported rows of functions mapped elsewhere and the present
    // rows of those functions.
    /// The write table of a direction: after an import, the merged table of
    /// handleImportMapData().
    QVector<FuncAndMapInfo> getImportResult(BiBo dir) const;
    /// The imported rows that survived the cleaning, by bus key.
    QMap<QString, QVector<FuncAndMapInfo>> getImportBusMap(BiBo dir) const;
    /// The imported rows taking another function's address. Once
    /// handleImportMapData() has answered Yes or No it holds the rows that
    /// answer worked from instead: the moved functions' imported rows for Yes,
    /// their present rows for No.
    QList<FuncAndMapInfo> getImportAddressCollisions(BiBo dir) const;
    /// The imported rows of functions mapped elsewhere at present.
    QList<FuncAndMapInfo> getImportRemappedFunctions(BiBo dir) const;
    /// The present rows of those functions, in the order of getImportRemappedFunctions().
    QList<FuncAndMapInfo> getImportPresentRows(BiBo dir) const;

    // ---- import as one operation ----
    /// Reads a saved mapping's rows of `modules` (PV_layout: every module but
    /// it) through the import's intake and cleaning, and reports row by row;
    /// nothing is written or sent, but the import's tables and flags are
    /// replaced. Rows repeating an earlier row stop it: a report with
    /// `repeated` and nothing prepared. A file that cannot be read gives a
    /// report that is not readable.
    ImportReport prepareImport(const QString &mappingFile, const QStringList &modules);
    /// The same for rows (of a CSV file, say): repeated rows are left out and
    /// reported, the others go through the same intake and cleaning.
    ImportReport prepareImport(const QVector<ImportRow> &rows);
    /// Ends a prepared import: merges with the answer, backs up the present
    /// mapping (local copy, sent once), writes the result to
    /// signal_mapping_import.cfg in the working folder and sends it to
    /// RDE_SIGNAL_MAP_CFG, and marks the import done (g_imIoType), so that
    /// edits wait for a restart. The sends are synchronous: the GUI thread is
    /// blocked, its events turning, for up to three attempts 100 ms apart. The
    /// working and committed mapping tables are not changed. False with `error` (which must not be
    /// null) when a step fails.
    bool finishImport(MsgBox::returnValue answer, QString *error);

    // ---- machine state and restarts ----
    /// True when no mapping screen is in edit mode (_editMapModuName is
    /// empty); otherwise shows a box naming it and answers false.
    static bool isEditable();
    /// True when the pendant holds the RTE authority; otherwise shows a
    /// warning box and answers false.
    bool isHasRteAuthority();
    /// True when the robot is not running and the servo is off, so that the
    /// controller's configuration may change; otherwise shows a warning box
    /// and answers false.
    static bool isRebootRde();
    /// True unless an import of this kind of IO (or of all kinds) is done and
    /// waits for a restart (g_imIoType). Then it asks whether to restart now,
    /// restarts the controller on Yes (rebootRobot()), and answers false either way.
    static bool isMapFuncEdit(IoType type);
    /// Restarts the controller after waiting 1000 ms, then asks the user in a
    /// box to reopen the pendant. The argument is ignored (entry 54).
    static void rebootRobot(bool);
    /// Does nothing; the user restarts the pendant (entry 54).
    static void rebootTpu(bool);
    /// 1 when the controller's configuration switches the PROFIsafe option on
    /// (any 1 in its line, entry 40), 0 when not or when the fetched file
    /// cannot be opened, -1 when the file cannot be fetched. The answer 0 or 1
    /// is kept for the life of the process; -1 is tried again on the next
    /// call. The first call fetches synchronously, once, without a message.
    static int checkProfiSAFEStatus();
    /// Shows the error box "Failed to get file from controller" naming path.
    static void getErrorMsg(const QString &path);
    /// Waits ms milliseconds while processing the calling thread's events, by
    /// the time of day: a wait across midnight ends early (entry 41).
    static void delay_MSec(unsigned int ms);
    /// Waits ms milliseconds busily, processing no events; blocks the calling
    /// thread, any thread.
    static void delay_BMSec(unsigned int ms);
    /// Whether the pendant shows its Kestra interface style (style 1, read when
    /// the manager was made).
    bool isKestraVersion();

    // ---- language and display helpers ----
    /// How the Chinese screens name a bus short name (exact case); empty when unknown.
    QString getBusNameCn(const QString &shortName);
    /// On a Chinese pendant the Chinese name of an English module name;
    /// otherwise, or for an unknown name, the name as given.
    QString getCurLanguageModuName(QString moduleName);
    /// Splits a self-made "Chinese.English" name held in nameCn: the part
    /// before the first dot stays in nameCn, the part after it (up to any
    /// further dot) goes to nameEn. Without a dot both stay. Any thread.
    static void parseSelfNameCnEn(QString &nameCn, QString &nameEn);
    /// value as QString::number gives it with precision 7, cut (not rounded)
    /// after decimals digits behind the point, trailing zeros and a bare point
    /// dropped; an exponent is cut away too (entry 55). Any thread.
    static QString getDecimalPointStr(double value, char format, int decimals);
    /// The pendant's language id, read when the manager was made: 2 English,
    /// 3 Chinese; any other reads the Chinese files.
    int getLanguageType();

signals:
    // Emitted on the GUI thread and received, queued, by the transfer worker
    // on the transfer thread. The emitGet and writeSend calls emit them.
    /// Asks the transfer thread to fetch the function information; emitted by emitGetFuncInfo().
    void signalGetFuncInfo();
    /// Asks the transfer thread to fetch the fieldbus list file; emitted by emitGetFieldXml().
    void signalGetFieldbus();
    /// Asks the transfer thread to fetch the fieldbus configuration file; emitted by emitGetFieldbusCfg().
    void signalGetFieldbusCfg();
    /// Asks the transfer thread to fetch the signal mapping file; emitted by emitGetSignalMap().
    void signalGetSignalMap();
    /// Asks the transfer thread to fetch the group IO file; emitted by emitGetGroupIo().
    void signalGetGroupCfg();
    /// Asks the transfer thread to fetch the user description file; emitted by emitGetUserDes().
    void signalGetUserDes();
    /// Asks the transfer thread to fetch the function lists at these controller
    /// paths; emitted by emitGetFuncList().
    void signalGetFuncList(const QStringList &paths);
    /// Asks the transfer thread to fetch the function information for the
    /// monitor; emitted by emitGetFuncInfoMonitor().
    void signalGetFuncInfoMonitor();
    /// Asks the transfer thread to fetch the monitor's function lists at these
    /// controller paths; emitted after the monitor's function information arrived.
    void signalGetFuncListMonitor(const QStringList &paths);
    /// Asks the transfer thread to send the signal mapping file; emitted by
    /// writeSendSignalMapCfg(). The transfer is connected to the form without
    /// arguments, so the standard local file goes to the standard controller
    /// path whatever the paths say (entry 35).
    void signalSendSignalMap(const QString &tpuFilePath = TPU_SIGNAL_MAP_CFG,
                             const QString &rdeFilePath = RDE_SIGNAL_MAP_CFG);
    /// Asks the transfer thread to send the group IO file; emitted by writeSendGroupCfg().
    void signalSendGroupCfg();
    /// Asks the transfer thread to send the fieldbus list file; emitted by writeSendFieldbusXml().
    void signalSendFieldbus();
    /// Asks the transfer thread to send the fieldbus configuration file;
    /// emitted by writeSendFieldbusCfg().
    void signalSendFieldbusCfg();
    /// Asks the transfer thread to send the standard user description file;
    /// emitted by writeUserDesXml().
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
