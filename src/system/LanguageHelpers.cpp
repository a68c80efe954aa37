#include "BusFileDataManager.h"

#include "FieldbusNames.h"

#include <QtGlobal>

QString BusFileDataManager::getBusNameCn(const QString &shortName)
{
    // Shown as they stand, not through the translation mechanism.
    for (const fieldbusnames::BusKind &kind : fieldbusnames::busKinds) {
        if (shortName == QLatin1String(kind.shortName))
            return QString::fromUtf8(kind.chineseName);
    }
    return QString();
}

QString BusFileDataManager::getCurLanguageModuName(QString moduleName)
{
    if (languageId == fieldbusnames::chineseLanguageId) {
        const auto it = moduleNameMap.constFind(moduleName);
        if (it != moduleNameMap.cend())
            return it.value();
    }
    return moduleName;
}

void BusFileDataManager::parseSelfNameCnEn(QString &nameCn, QString &nameEn)
{
    if (!nameCn.contains(QLatin1Char('.')))
        return;
    const QStringList parts = nameCn.split(QLatin1Char('.'));
    nameCn = parts.at(0);
    nameEn = parts.at(1);
}

QString BusFileDataManager::getDecimalPointStr(double value, char format, int decimals)
{
    QString text = QString::number(value, format, 7);
    const int point = text.indexOf(QLatin1Char('.'));
    if (point < 0)
        return text;
    // A negative count would cut into the digits before the point.
    text.truncate(point + 1 + qBound(0, decimals, text.size()));
    while (text.endsWith(QLatin1Char('0')))
        text.chop(1);
    if (text.endsWith(QLatin1Char('.')))
        text.chop(1);
    return text;
}

int BusFileDataManager::getLanguageType()
{
    return languageId;
}
