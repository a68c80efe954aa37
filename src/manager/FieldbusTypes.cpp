#include "FieldbusTypes.h"

#include <QCoreApplication>

const QString VAR_TYPE_NAMES[12] = {
        QStringLiteral("I16"),   QStringLiteral("I32"),  QStringLiteral("DOUBLE"),
        QStringLiteral("FLOAT"), QStringLiteral("CHAR"), QStringLiteral("U16"),
        QStringLiteral("U32"),   QStringLiteral("BIT"),  QStringLiteral("BOOL"),
        QStringLiteral("U8"),    QStringLiteral("I8"),   QStringLiteral("CHINESEUNDEF"),
};

const QStringList &performanceProtocolNames()
{
    static const QStringList names = [] {
        const QString slave = QCoreApplication::translate("BusFileDataManager", "Slave");
        const QString master = QCoreApplication::translate("BusFileDataManager", "Master");
        return QStringList{
                QStringLiteral("ModbusTcp") + slave,  QStringLiteral("EtherCat") + slave,
                QStringLiteral("EthernetIP") + slave, QStringLiteral("Profinet") + slave,
                QStringLiteral("EtherCat") + master,  QStringLiteral("DeviceNet") + slave,
                QStringLiteral("ModbusTcp") + master, QStringLiteral("EthernetIP") + master,
                QStringLiteral("Profinet") + master,  QStringLiteral("DeviceNet") + master,
        };
    }();
    return names;
}
