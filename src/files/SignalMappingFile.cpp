#include "BusFileDataManager.h"

#include "FieldbusNames.h"

#include "ConfigFileIo.h"
#include "FileFormats.h"

#include <QHash>
#include <QVarLengthArray>

namespace {

const QString signalMapTitle = QStringLiteral("$$ Configuration file with fieldbus signals");
using fieldbusnames::systemInputMarker;
using fieldbusnames::systemOutputMarker;

// Width kinds of insertSignalMapCfg.
enum SignalMapWidth { NameWidth = 1, ShortWidth = 2, WideWidth = 0 };

int columnWidth(int widthKind)
{
    return widthKind == NameWidth ? 32 : widthKind == ShortWidth ? 8 : 16;
}

void appendSignalMapLine(configio::LineFileWriter &out, const FuncAndMapInfo &info, BiBo section)
{
    using Writer = configio::LineFileWriter;
    // Inputs write their type in lower case, so the type has a column per section.
    enum Column { Module, Name, InputType, OutputType, FieldBus, Address, FilterTime, Invert };
    out.appendField(Module, QLatin1String("    -Module "), info.module, columnWidth(WideWidth));
    out.appendField(Name, QLatin1String(" -Name "), info.name, columnWidth(NameWidth));
    if (section == BusInput)
        out.appendField(InputType, QLatin1String(" -Type "), info.type, columnWidth(ShortWidth),
                        Writer::Lower);
    else
        out.appendField(OutputType, QLatin1String(" -Type "), info.type, columnWidth(ShortWidth));
    out.appendField(FieldBus, QLatin1String(" -FieldBus "), info.fieldBus, columnWidth(WideWidth),
                    Writer::Upper);
    out.appendField(Address, QLatin1String(" -Address "), info.address, columnWidth(ShortWidth));
    if (fieldbusnames::isBoolType(info.type)) {
        if (section == BusInput)
            out.appendField(FilterTime, QLatin1String(" -FilterTime "), info.filterTime,
                            columnWidth(ShortWidth));
        out.appendField(Invert, QLatin1String(" -Invert "), info.invert, columnWidth(ShortWidth));
    }
    out.endRow();
}

} // namespace

namespace signalmapfile {

FuncAndMapInfo parseRow(const configio::LineWords &words, configio::ColumnTexts &texts)
{
    FuncAndMapInfo info;
    info.module = texts.text(0, words.after(u"-Module"));
    info.name = texts.text(1, words.after(u"-Name"));
    info.type = texts.text(2, words.after(u"-Type"));
    info.fieldBus = texts.lowerText(3, words.after(u"-FieldBus"));
    info.address = texts.text(4, words.after(u"-Address"));
    info.filterTime = texts.text(5, words.after(u"-FilterTime"));
    info.invert = texts.text(6, words.after(u"-Invert"));
    return info;
}

} // namespace signalmapfile

QString BusFileDataManager::parseLineByWord(const QString &line, const QString &keyword)
{
    return configio::LineWords(line).after(keyword).toString();
}

void BusFileDataManager::parseSignalMap(const QString &line, QVector<FuncAndMapInfo> &out)
{
    configio::ColumnTexts texts;
    out.append(signalmapfile::parseRow(configio::LineWords(line), texts));
}

bool BusFileDataManager::readSignalMapCfg()
{
    return readLocalTextFile(TPU_SIGNAL_MAP_CFG,
                             [this](const QString &text) { parseSignalMapFile(text); });
}

void BusFileDataManager::parseSignalMapFile(const QString &text)
{
    for (int dir = BusInput; dir <= BusOutput; ++dir) {
        readMapList[dir].clear();
        mapList[dir].clear();
        busMap[dir].clear();
    }
    configio::ColumnTexts texts;
    configio::readSectionRows(text, systemInputMarker, systemOutputMarker,
                              [this, &texts](BiBo dir, QStringView row, int) {
                                  readMapList[dir].append(
                                          signalmapfile::parseRow(configio::LineWords(row), texts));
                              });
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

    // Rows of one bus mostly follow each other: their keys are looked up once per run.
    const QString *runBus = nullptr;
    QVarLengthArray<QVector<FuncAndMapInfo> *, 4> runTargets;
    for (const FuncAndMapInfo &info : list) {
        if (!runBus || *runBus != info.fieldBus) {
            runBus = &info.fieldBus;
            runTargets.clear();
            const auto keys = keysByFolded.constFind(info.fieldBus.toCaseFolded());
            for (const QString &key : keys == keysByFolded.constEnd() ? QStringList() : *keys)
                runTargets.append(&byBus[key]);
        }
        for (QVector<FuncAndMapInfo> *rows : runTargets)
            rows->append(info);
    }
}

bool BusFileDataManager::isBusKey(const QString &bus) const
{
    return busShortNames.contains(fieldbusnames::busOfKey(bus));
}

QString BusFileDataManager::insertSignalMapCfg(QString value, int widthKind)
{
    return configio::padRight(value, columnWidth(widthKind));
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

    const bool written = configio::writeSectionFile(
            localPath, signalMapTitle, systemInputMarker, systemOutputMarker,
            [lists](configio::LineFileWriter &out, BiBo dir) {
                for (const FuncAndMapInfo &info : lists[dir])
                    appendSignalMapLine(out, info, dir);
            });
    if (!written)
        return false;

    if (isStandard) {
        writeMapList[BusInput] = mapList[BusInput];
        writeMapList[BusOutput] = mapList[BusOutput];
        emit signalSendSignalMap(localPath, controllerPath);
    }
    return true;
}
