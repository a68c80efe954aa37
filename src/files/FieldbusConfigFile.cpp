#include "BusFileDataManager.h"

#include "FieldbusNames.h"

#include "ConfigFileIo.h"
#include "FileFormats.h"
#include "UserMessage.h"

#include <QByteArray>

#include <algorithm>
#include <cmath>

namespace {

const char *const fieldbusCfgRootName = "FieldBus_Config";

// Every record holds this many places; nothing is read or written beyond.
constexpr int recordPlaces = 9;
// The master buses other than DeviceNet cannot exchange more bits than this.
constexpr int bitTotalCap = 2048;

// Elements holding the readable and writable bit totals of a master bus.
const char *const bitTotalElements[] = {"EcmUser", "EimUser", "PnmUser", "DnmUser"};

// Elements holding groups of address areas, in the order they are read.
const char *const areaGroupElements[] = {
        "ModbusSys",    "ModbusUser",        "ModbusMasterUser",  "EthercatSys",
        "EthercatUser", "EthernetIPSys",     "EthernetIPUser",    "ProfinetSys",
        "ProfinetUser", "DeviceNetSlaveSys", "DeviceNetSlaveUser"};

struct WritableAreas
{
    const char *element;
    // Entries assumed per group when writing back.
    int stride;
};

// The user-resizable area elements, in the order setBusNumAndAddr receives them;
// the bit totals of "DnmUser" follow at the next position.
const WritableAreas writableAreas[] = {{"ModbusUser", 3},         {"EthercatUser", 3},
                                       {"EthernetIPUser", 3},     {"ProfinetUser", 3},
                                       {"DeviceNetSlaveUser", 3}, {"ModbusMasterUser", 2}};
const char *const writableBitTotals = "DnmUser";

struct BusElements
{
    const char *bus;
    const char *systemElement;
    const char *userElement;
};

// Which record answers for a bus; master buses have one record for both.
const BusElements busElements[] = {{"mtcp", "ModbusSys", "ModbusUser"},
                                   {"ethcat", "EthercatSys", "EthercatUser"},
                                   {"eip", "EthernetIPSys", "EthernetIPUser"},
                                   {"pfn", "ProfinetSys", "ProfinetUser"},
                                   {"dns", "DeviceNetSlaveSys", "DeviceNetSlaveUser"},
                                   {"mbc", "ModbusMasterUser", "ModbusMasterUser"},
                                   {"ecm", "EcmUser", "EcmUser"},
                                   {"eim", "EimUser", "EimUser"},
                                   {"pnm", "PnmUser", "PnmUser"},
                                   {"dnm", "DnmUser", "DnmUser"}};

// Sets the value of the element's first child node; an element without one
// (written as <x/>) is left without a value.
void setFirstChildValue(pugi::xml_node element, int value)
{
    element.first_child().set_value(QByteArray::number(value).constData());
}

// One running position over all groups, unlike the per-group stride of writing.
void readAreaGroups(pugi::xml_node node, int *start, int *stop, int *length)
{
    int position = 0;
    for (const pugi::xml_node group : node.children()) {
        if (group.type() != pugi::node_element)
            continue;
        for (const pugi::xml_node entry : group.children()) {
            if (entry.type() != pugi::node_element)
                continue;
            if (position >= recordPlaces)
                return;
            start[position] = entry.child("Start_Address").text().as_int();
            stop[position] = entry.child("Stop_Address").text().as_int();
            length[position] = entry.child("Variable_Length").text().as_int();
            ++position;
        }
    }
}

void readBitTotals(pugi::xml_node node, BusAddrNumInfo &info)
{
    info.variableLength[0] = node.child("RoBoolTotal").text().as_int();
    info.variableLength[1] = node.child("WoBoolTotal").text().as_int();
}

// Type index of a count: bool, int, then every other type.
int countTypeIndex(const QString &type)
{
    if (fieldbusnames::isBoolType(type))
        return 0;
    if (type.compare(QLatin1String("int"), Qt::CaseInsensitive) == 0)
        return 1;
    return 2;
}

// A kind of bus name in its order of tests, the record its counts come from
// and how many places of it are used.
struct CountKind
{
    const char *kind;
    const char *record;
    int places;
};

const CountKind countKinds[] = {
        {"MTCP", "ModbusUser", 9},
        {"EthCat", "EthercatUser", 9},
        {"EIP", "EthernetIPUser", 9},
        {"PFN", "ProfinetUser", 9},
        {"ECS", "EthercatUser", 9},
        {"MBC", "ModbusMasterUser", 9},
        {"DNS", "DeviceNetSlaveUser", 9},
        {"ECM", "EcmUser", 2},
        {"EIM", "EimUser", 2},
        {"PNM", "PnmUser", 2},
        {"DNM", "DnmUser", 2},
};

} // namespace

bool BusFileDataManager::readFieldbusCfg()
{
    pugi::xml_document doc;
    if (!loadFileLocal(doc, TPU_FIELDBUS_CFG_XML))
        return false;
    parseFieldbusCfg(doc);
    return true;
}

namespace fieldbusareas {

void parse(const pugi::xml_document &doc, QHash<QString, BusAddrNumInfo> &areas)
{
    const pugi::xml_node root = doc.child(fieldbusCfgRootName);

    for (const char *name : bitTotalElements) {
        const pugi::xml_node node = root.child(name);
        if (!node)
            continue;
        BusAddrNumInfo &info = areas[QLatin1String(name)];
        readBitTotals(node, info);
        // DeviceNet master totals are taken as they stand.
        if (qstrcmp(name, "DnmUser") != 0) {
            info.variableLength[0] = std::min(info.variableLength[0], bitTotalCap);
            info.variableLength[1] = std::min(info.variableLength[1], bitTotalCap);
        }
    }

    for (const char *name : areaGroupElements) {
        const pugi::xml_node node = root.child(name);
        if (!node)
            continue;
        BusAddrNumInfo &info = areas[QLatin1String(name)];
        readAreaGroups(node, info.startAddress, info.stopAddress, info.variableLength);
    }
}

int busNum(const QHash<QString, BusAddrNumInfo> &areas, const QString &bus, BiBo dir,
           const QString &type)
{
    if (fieldbusnames::mentionsGroup(bus, Qt::CaseInsensitive)) {
        if (type.contains(QLatin1String("int"), Qt::CaseInsensitive))
            return 256;
        if (type.contains(QLatin1String("float"), Qt::CaseInsensitive))
            return 128;
        if (type.contains(QLatin1String("string"), Qt::CaseInsensitive))
            return 8;
    }

    const int stride = bus.contains(QLatin1String("MBC"), Qt::CaseInsensitive) ? 2 : 3;
    const qint64 index = qint64(countTypeIndex(type)) * stride + dir;
    for (const CountKind &kind : countKinds) {
        if (!bus.contains(QLatin1String(kind.kind), Qt::CaseInsensitive))
            continue;
        if (index < 0 || index >= kind.places)
            return 0;
        return areas.value(QLatin1String(kind.record)).variableLength[index];
    }
    return 0;
}

} // namespace fieldbusareas

void BusFileDataManager::parseFieldbusCfg(const pugi::xml_document &doc)
{
    fieldbusareas::parse(doc, busAddrNumInfo);
}

void BusFileDataManager::parseFunNode(pugi::xml_node node, int *start, int *stop, int *length)
{
    readAreaGroups(node, start, stop, length);
}

void BusFileDataManager::parseOtherBusFunNode(pugi::xml_node node, BusAddrNumInfo &info)
{
    readBitTotals(node, info);
}

bool BusFileDataManager::writeSendFieldbusCfg()
{
    const QString path = TPU_FIELDBUS_CFG_XML;
    pugi::xml_document doc;
    if (!configio::loadXml(doc, path, pugi::parse_pi))
        return false;

    const pugi::xml_node root = doc.child(fieldbusCfgRootName);
    for (const WritableAreas &areas : writableAreas) {
        BusAddrNumInfo info = busAddrNumInfo.value(QLatin1String(areas.element));
        writeBusNodeUser(root.child(areas.element), info.startAddress, info.stopAddress,
                         info.variableLength, areas.stride);
    }
    BusAddrNumInfo totals = busAddrNumInfo.value(QLatin1String(writableBitTotals));
    writeOtherBusFunNode(root.child(writableBitTotals), totals.variableLength);

    // The controller takes the file as sent; a failed save is not reported.
    configio::saveXml(doc, path, "\t", pugi::format_indent, pugi::encoding_utf8);
    emit signalSendFieldbusCfg();
    return true;
}

void BusFileDataManager::writeBusNodeUser(pugi::xml_node node, int *start, int *stop, int *length,
                                          int stride)
{
    int group = 0;
    for (const pugi::xml_node areaGroup : node.children()) {
        if (areaGroup.type() != pugi::node_element)
            continue;
        if (group * stride >= recordPlaces)
            return;
        int entry = 0;
        for (const pugi::xml_node area : areaGroup.children()) {
            if (area.type() != pugi::node_element)
                continue;
            const int position = group * stride + entry;
            if (position >= recordPlaces)
                break;
            setFirstChildValue(area.child("Start_Address"), start[position]);
            setFirstChildValue(area.child("Stop_Address"), stop[position]);
            setFirstChildValue(area.child("Variable_Length"), length[position]);
            ++entry;
        }
        ++group;
    }
}

void BusFileDataManager::writeOtherBusFunNode(pugi::xml_node node, int *totals)
{
    setFirstChildValue(node.child("RoBoolTotal"), totals[0]);
    setFirstChildValue(node.child("WoBoolTotal"), totals[1]);
}

BusAddrNumInfo BusFileDataManager::getBusNumAndAddr(QString bus, bool user)
{
    for (const BusElements &elements : busElements) {
        if (bus == QLatin1String(elements.bus))
            return busAddrNumInfo.value(
                    QLatin1String(user ? elements.userElement : elements.systemElement));
    }
    return BusAddrNumInfo();
}

QHash<QString, BusAddrNumInfo> BusFileDataManager::getBusAddrNumInfo()
{
    // Records not read yet are reported as zero.
    QHash<QString, BusAddrNumInfo> all;
    for (const char *name : bitTotalElements)
        all.insert(QLatin1String(name), busAddrNumInfo.value(QLatin1String(name)));
    for (const char *name : areaGroupElements)
        all.insert(QLatin1String(name), busAddrNumInfo.value(QLatin1String(name)));
    return all;
}

void BusFileDataManager::setBusNumAndAddr(const QVector<BusAddrNumInfo> &infos)
{
    const int areaCount = int(sizeof(writableAreas) / sizeof(writableAreas[0]));
    if (infos.size() < areaCount + 1)
        return;
    for (int i = 0; i < areaCount; ++i)
        busAddrNumInfo.insert(QLatin1String(writableAreas[i].element), infos.at(i));
    busAddrNumInfo.insert(QLatin1String(writableBitTotals), infos.at(areaCount));
}

int BusFileDataManager::getPerformanceValue(BusType type, int current, bool on)
{
    if (!on)
        return 0;
    const int onlyType = 1 << type;
    if (current == 0)
        return onlyType;

    // Only one protocol may hold the switch; ask before taking it away.
    const int holder = powerOfTwo(current);
    const QStringList &names = performanceProtocolNames();
    if (holder >= 0 && holder < names.size()) {
        const QString question =
                tr("The communication performance switch does not support \nsimultaneous "
                   "activation of multiple protocols.\n Do you want to turn off the %1 "
                   "protocol communication performance switch?");
        if (showUserMessage(WarningMessage, question.arg(names.at(holder)), YesNoButtons)
            == MsgBox::Yes) {
            g_lastBusType = BusType(holder);
            return onlyType;
        }
    }
    return -1;
}

int BusFileDataManager::powerOfTwo(int value)
{
    if (value == 0)
        return -1;
    for (int i = 0; i < 10; ++i) {
        if (std::pow(2.0, i) == value)
            return i;
    }
    return -1;
}
