#include "BusFileDataManager.h"

#include "ConfigFileIo.h"

#include <QDebug>

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

bool BusFileDataManager::parseFieldbusXml(const pugi::xml_document &doc)
{
    // The controller's own slave bus is always there, listed or not.
    busList.clear();
    busList.append(BusName{QStringLiteral("ModbusTcpSlave"), QStringLiteral("mtcp"), true});
    busShortNames = QStringList{QStringLiteral("mtcp")};

    for (const pugi::xml_node node : doc.child(fieldbusRootName).children()) {
        if (node.type() != pugi::node_element)
            continue;
        BusName bus;
        bus.name = QString::fromUtf8(node.attribute("name").value());
        bus.shortName = QString::fromUtf8(node.attribute("shortname").value()).toLower();
        bus.enable = node.child("enable").text().as_bool();

        busList.append(bus);
        if (bus.name == QLatin1String("FreeBus"))
            isFreeBusOpen = bus.enable;
        // A switched-off bus still groups its signals in the other files.
        if (!isSignallessBus(bus.name))
            busShortNames.append(bus.shortName);
        busInfoMap.insert(bus.name, bus);
    }
    return true;
}

QVector<BusName> BusFileDataManager::getBusNameList(bool withMes, bool onlyEnabled)
{
    return parseFieldBusData(withMes, onlyEnabled);
}

QVector<BusName> BusFileDataManager::parseFieldBusData(bool withMes, bool onlyEnabled)
{
    QVector<BusName> result;
    for (const BusName &bus : qAsConst(busList)) {
        const bool shownMes = withMes && bus.name == QLatin1String("Mes");
        if (isSignallessBus(bus.name) && !shownMes)
            continue;
        if (!onlyEnabled || bus.enable)
            result.append(bus);
    }
    return result;
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
        qDebug().noquote() << "Could not save XML file";
        return false;
    }
    emit signalSendFieldbus();
    return true;
}

int BusFileDataManager::getBusIndex(const QString &shortName)
{
    // The index order is the controller's: it is also the BusType value and
    // the bit of the communication-performance switch.
    static const QStringList order{"mtcp", "ethcat", "eip", "pfn", "ecm",
                                   "dns",  "mbc",    "eim", "pnm", "dnm"};
    return getWordIndex(order, shortName);
}
