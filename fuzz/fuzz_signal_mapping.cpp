// Signal mapping: read, write back, read again; the tables must come back equal
// for every row the line format can carry.
#include "FuzzHarness.h"

#include <QRegularExpression>

namespace {

// A value the writer cannot carry through a read: empty, with blanks, or a keyword.
bool representable(const FuncAndMapInfo &row)
{
    for (const QString &value :
         {row.module, row.name, row.type, row.fieldBus, row.address, row.filterTime, row.invert}) {
        if (value.isEmpty() || value.contains(QRegularExpression(QStringLiteral("\\s")))
            || value.startsWith(QLatin1Char('-')) || value.startsWith(QLatin1Char('#')))
            return false;
    }
    return true;
}

QString describe(const QVector<FuncAndMapInfo> &rows)
{
    QStringList parts;
    for (const FuncAndMapInfo &r : rows)
        parts << QStringList{r.module, r.name, r.type.toLower(), r.fieldBus.toLower(), r.address}
                         .join(QLatin1Char('|'));
    return parts.join('\n');
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    BusFileDataManager &m = fuzz::manager();
    fuzz::put(TPU_SIGNAL_MAP_CFG, fuzz::bytes(data, size));
    if (!m.readSignalMapCfg())
        return 0;
    for (const QVector<FuncAndMapInfo> &rows : m.readMapList) {
        for (const FuncAndMapInfo &row : rows) {
            if (!representable(row))
                return 0;
        }
    }
    const QString first = describe(m.readMapList[0]) + "\n#\n" + describe(m.readMapList[1]);
    const QString copy = TPU_FIELDBUS_DIR + "/fuzz/signal_mapping.cfg";
    std::copy(m.readMapList, m.readMapList + 2, m.writeMapList);
    fuzz::require(m.writeSendSignalMapCfg(copy, QString()), "write");
    QFile::remove(TPU_SIGNAL_MAP_CFG);
    QFile::rename(copy, TPU_SIGNAL_MAP_CFG);
    fuzz::require(m.readSignalMapCfg(), "read again");
    const QString second = describe(m.readMapList[0]) + "\n#\n" + describe(m.readMapList[1]);
    fuzz::require(first == second, "round trip");
    return 0;
}
