#include "BusFileDataManager.h"
#include "Logging.h"

#include "ConfigFileIo.h"
#include "FieldbusNames.h"
#include "FileFormats.h"

namespace {

const char *const fieldbusRootName = "FieldbusSettingConfig";

// Buses the file lists that carry no mapped signals of their own.
bool isSignallessBus(const QString &name)
{
    return name == QLatin1String("Mes") || name == QLatin1String("FinsTcp")
            || name == QLatin1String("ProfibusSlave") || name == QLatin1String("FreeBus");
}

} // namespace

bool BusFileDataManager::readFieldbusXml()
{
    pugi::xml_document doc;
    if (!loadFileLocal(doc, TPU_FIELDBUS_XML))
        return false;
    return parseFieldbusXml(doc);
}

namespace fieldbuslist {

Contents parse(const pugi::xml_document &doc)
{
    Contents contents;
    // The controller's own slave bus is always there, listed or not.
    contents.buses.append(BusName{QStringLiteral("ModbusTcpSlave"), QStringLiteral("mtcp"), true});
    contents.shortNames.append(QStringLiteral("mtcp"));

    for (const pugi::xml_node node : doc.child(fieldbusRootName).children()) {
        if (node.type() != pugi::node_element)
            continue;
        BusName bus;
        bus.name = QString::fromUtf8(node.attribute("name").value());
        bus.shortName = QString::fromUtf8(node.attribute("shortname").value()).toLower();
        bus.enable = node.child("enable").text().as_bool();

        contents.buses.append(bus);
        if (bus.name == QLatin1String("FreeBus")) {
            contents.hasFreeBus = true;
            contents.freeBusOpen = bus.enable;
        }
        // A switched-off bus still groups its signals in the other files.
        if (!isSignallessBus(bus.name))
            contents.shortNames.append(bus.shortName);
    }
    return contents;
}

QVector<BusName> filter(const QVector<BusName> &buses, bool withMes, bool onlyEnabled)
{
    QVector<BusName> result;
    for (const BusName &bus : buses) {
        const bool shownMes = withMes && bus.name == QLatin1String("Mes");
        if (isSignallessBus(bus.name) && !shownMes)
            continue;
        if (!onlyEnabled || bus.enable)
            result.append(bus);
    }
    return result;
}

} // namespace fieldbuslist

bool BusFileDataManager::parseFieldbusXml(const pugi::xml_document &doc)
{
    const fieldbuslist::Contents contents = fieldbuslist::parse(doc);
    busList = contents.buses;
    busShortNames = contents.shortNames;
    if (contents.hasFreeBus)
        isFreeBusOpen = contents.freeBusOpen;
    // Entries that left the file stay until a screen replaces the map.
    for (auto bus = busList.cbegin() + 1; bus != busList.cend(); ++bus)
        busInfoMap.insert(bus->name, *bus);
    return true;
}

QVector<BusName> BusFileDataManager::getBusNameList(bool withMes, bool onlyEnabled)
{
    return parseFieldBusData(withMes, onlyEnabled);
}

QVector<BusName> BusFileDataManager::parseFieldBusData(bool withMes, bool onlyEnabled)
{
    return fieldbuslist::filter(busList, withMes, onlyEnabled);
}

QMap<QString, BusName> BusFileDataManager::getAllBusName()
{
    return busInfoMap;
}

void BusFileDataManager::setBusInfo(const QMap<QString, BusName> &info)
{
    busInfoMap = info;
}

bool BusFileDataManager::writeSendFieldbusXml()
{
    pugi::xml_document doc;
    if (!loadFileLocal(doc, TPU_FIELDBUS_XML))
        return false;

    for (const pugi::xml_node node : doc.child(fieldbusRootName).children()) {
        if (node.type() != pugi::node_element)
            continue;
        const auto bus = busInfoMap.constFind(QString::fromUtf8(node.attribute("name").value()));
        if (bus == busInfoMap.constEnd() || bus->name.isEmpty())
            continue;
        // Only an existing text node is replaced; an empty "enable" stays empty.
        pugi::xml_text enable = node.child("enable").text();
        if (enable)
            enable.set(bus->enable ? 1 : 0);
    }

    if (!configio::saveXml(doc, TPU_FIELDBUS_XML, "\t", pugi::format_no_escapes,
                           pugi::encoding_utf8)) {
        qCDebug(lcFieldbus).noquote() << "Could not save XML file";
        return false;
    }
    emit signalSendFieldbus();
    return true;
}

int BusFileDataManager::getBusIndex(const QString &shortName)
{
    // The index order is the controller's: it is also the BusType value and
    // the bit of the communication-performance switch.
    static const QStringList order = fieldbusnames::busKindNames();
    return getWordIndex(order, shortName);
}

bool BusFileDataManager::isOpenFreeBus()
{
    return isFreeBusOpen;
}

int BusFileDataManager::getWordIndex(const QStringList &words, const QString &word)
{
    for (int i = 0; i < words.size(); ++i) {
        if (words.at(i).compare(word, Qt::CaseInsensitive) == 0)
            return i;
    }
    return -1;
}
