#include "FieldbusTypes.h"

#include "FieldbusNames.h"

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
        QStringList list;
        for (const fieldbusnames::BusKind &kind : fieldbusnames::busKinds)
            list.append(QLatin1String(kind.protocol) + (kind.master ? master : slave));
        return list;
    }();
    return names;
}
