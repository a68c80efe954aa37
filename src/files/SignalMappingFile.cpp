#include "BusFileDataManager.h"

#include "FieldbusNames.h"

#include "ConfigFileIo.h"

#include <QFile>
#include <QHash>
#include <QTextStream>

namespace {

const QString signalMapTitle = QStringLiteral("$$ Configuration file with fieldbus signals");
const QString systemInputMarker = QStringLiteral("#System_Input:");
const QString systemOutputMarker = QStringLiteral("#System_Output:");

// Width kinds of insertSignalMapCfg.
enum SignalMapWidth { NameWidth = 1, ShortWidth = 2, WideWidth = 0 };

QString signalMapLine(const FuncAndMapInfo &info, BiBo section)
{
    const bool isBool = fieldbusnames::isBoolType(info.type);
    const QString type = section == BusInput ? info.type.toLower() : info.type;
    QString line = QStringLiteral("    -Module ")
            + BusFileDataManager::insertSignalMapCfg(info.module, WideWidth)
            + QStringLiteral(" -Name ")
            + BusFileDataManager::insertSignalMapCfg(info.name, NameWidth)
            + QStringLiteral(" -Type ") + BusFileDataManager::insertSignalMapCfg(type, ShortWidth)
            + QStringLiteral(" -FieldBus ")
            + BusFileDataManager::insertSignalMapCfg(info.fieldBus.toUpper(), WideWidth)
            + QStringLiteral(" -Address ")
            + BusFileDataManager::insertSignalMapCfg(info.address, ShortWidth);
    if (!isBool)
        return line;
    if (section == BusInput) {
        line += QStringLiteral(" -FilterTime ")
                + BusFileDataManager::insertSignalMapCfg(info.filterTime, ShortWidth);
    }
    return line + QStringLiteral(" -Invert ")
            + BusFileDataManager::insertSignalMapCfg(info.invert, ShortWidth);
}

// The words of a line: white space trimmed and collapsed, split at blanks.
QStringList lineWords(const QString &line)
{
    return line.simplified().split(QLatin1Char(' '));
}

// The word after the first word equal to `keyword`; "0" when there is none.
QString wordAfter(const QStringList &words, const QString &keyword)
{
    const int at = words.indexOf(keyword);
    if (at < 0 || at + 1 >= words.size())
        return QStringLiteral("0");
    return words.at(at + 1);
}

} // namespace

QString BusFileDataManager::parseLineByWord(const QString &line, const QString &keyword)
{
    return wordAfter(lineWords(line), keyword);
}

void BusFileDataManager::parseSignalMap(const QString &line, QVector<FuncAndMapInfo> &out)
{
    // The line is split once for all seven keywords.
    const QStringList words = lineWords(line);
    FuncAndMapInfo info;
    info.module = wordAfter(words, QStringLiteral("-Module"));
    info.name = wordAfter(words, QStringLiteral("-Name"));
    info.type = wordAfter(words, QStringLiteral("-Type"));
    info.fieldBus = wordAfter(words, QStringLiteral("-FieldBus")).toLower();
    info.address = wordAfter(words, QStringLiteral("-Address"));
    info.filterTime = wordAfter(words, QStringLiteral("-FilterTime"));
    info.invert = wordAfter(words, QStringLiteral("-Invert"));
    out.append(info);
}

bool BusFileDataManager::readSignalMapCfg()
{
    return readLocalTextFile(TPU_SIGNAL_MAP_CFG,
                             [this](QIODevice &file) { parseSignalMapFile(file); });
}

void BusFileDataManager::parseSignalMapFile(QIODevice &device)
{
    for (int dir = BusInput; dir <= BusOutput; ++dir) {
        readMapList[dir].clear();
        mapList[dir].clear();
        busMap[dir].clear();
    }
    configio::readSectionRows(
            device, systemInputMarker, systemOutputMarker,
            [this](BiBo dir, const QString &row, int) { parseSignalMap(row, readMapList[dir]); });
    for (int dir = BusInput; dir <= BusOutput; ++dir) {
        mapList[dir] = readMapList[dir];
        parseSignalMapByBus(readMapList[dir], busMap[dir]);
    }
}

void BusFileDataManager::parseSignalMapByBus(const QVector<FuncAndMapInfo> &list,
                                             QMap<QString, QVector<FuncAndMapInfo>> &byBus)
{
    byBus.clear();
    // Keys by their case-folded text, so that one pass over the list serves
    // every key however long the bus list is.
    QHash<QString, QStringList> keysByFolded;
    const auto addKey = [&keysByFolded](const QString &key) {
        QStringList &keys = keysByFolded[key.toCaseFolded()];
        if (!keys.contains(key))
            keys.append(key);
    };
    for (const QString &shortName : qAsConst(busShortNames))
        addKey(fieldbusnames::groupKey(shortName));
    for (const QString &shortName : qAsConst(busShortNames))
        addKey(shortName);

    for (const FuncAndMapInfo &info : list) {
        const auto keys = keysByFolded.constFind(info.fieldBus.toCaseFolded());
        if (keys == keysByFolded.constEnd())
            continue;
        for (const QString &key : *keys)
            byBus[key].append(info);
    }
}

bool BusFileDataManager::isBusKey(const QString &bus) const
{
    const QString &prefix = fieldbusnames::groupPrefix;
    return busShortNames.contains(bus)
            || (bus.startsWith(prefix) && busShortNames.contains(bus.mid(prefix.size())));
}

QString BusFileDataManager::insertSignalMapCfg(QString value, int widthKind)
{
    const int width = widthKind == NameWidth ? 32 : widthKind == ShortWidth ? 8 : 16;
    return configio::padRight(value, width);
}

bool BusFileDataManager::writeSendSignalMapCfg(const QString &localPath,
                                               const QString &controllerPath)
{
    if (!mkpathLocalTPU(localPath))
        return false;
    // Only the standard file is written from the working lists; other paths
    // get the lists handed over by setMapData.
    const bool isStandard = localPath == TPU_SIGNAL_MAP_CFG;
    if (isStandard && refuseLossyWrite(localPath))
        return false;
    const QVector<FuncAndMapInfo> *lists = isStandard ? mapList : writeMapList;

    QByteArray bytes;
    QTextStream out(&bytes, QIODevice::WriteOnly);
    configio::useFileEncoding(out);
    out << signalMapTitle << "\n\n" << systemInputMarker << '\n';
    for (const FuncAndMapInfo &info : lists[BusInput])
        out << signalMapLine(info, BusInput) << '\n';
    out << '\n' << systemOutputMarker << '\n';
    for (const FuncAndMapInfo &info : lists[BusOutput])
        out << signalMapLine(info, BusOutput) << '\n';
    out.flush();
    if (!configio::writeFileAtomically(localPath, bytes))
        return false;

    if (isStandard) {
        writeMapList[BusInput] = mapList[BusInput];
        writeMapList[BusOutput] = mapList[BusOutput];
        emit signalSendSignalMap(localPath, controllerPath);
    }
    return true;
}
