// Backup import: the present mapping, then after the first NUL the backup. The
// library's indexed collision search and merge must give what the plain walk of
// the rules gives (the tests' yardstick).
#include "FuzzHarness.h"
#include "ImportTestData.h"
#include "PlainImport.h"

namespace {

bool sameRows(const QVector<FuncAndMapInfo> &a, const QVector<FuncAndMapInfo> &b)
{
    const auto fields = [](const FuncAndMapInfo &r) {
        return QStringList{r.module, r.nameCn,     r.name,
                           r.type,   r.fieldBus,   r.address,
                           r.invert, r.filterTime, QString::number(r.forceEnabled)};
    };
    if (a.size() != b.size())
        return false;
    for (int i = 0; i < a.size(); ++i) {
        if (fields(a[i]) != fields(b[i]))
            return false;
    }
    return true;
}

bool sameMaps(const BusMap &a, const BusMap &b)
{
    if (a.keys() != b.keys())
        return false;
    for (auto it = a.cbegin(); it != a.cend(); ++it) {
        if (!sameRows(it.value(), b.value(it.key())))
            return false;
    }
    return true;
}

QVector<FuncAndMapInfo> toVector(const QList<FuncAndMapInfo> &list)
{
    return QVector<FuncAndMapInfo>(list.begin(), list.end());
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    BusFileDataManager &m = fuzz::manager();
    static const bool configured = [&m] {
        configureController(&m);
        m.setSelfCraftWriteFuncFile(QStringLiteral("PV_layout"), FilePaths(),
                                    &BusFileDataManager::writePVIoFile);
        return true;
    }();
    (void)configured;

    const QByteArray input = fuzz::bytes(data, size);
    const int split = input.indexOf('\0');
    if (split < 0)
        return 0;
    const QString backup = TPU_FIELDBUS_DIR + QStringLiteral("/fuzz_backup.cfg");
    fuzz::put(TPU_SIGNAL_MAP_CFG, input.left(split));
    fuzz::put(backup, input.mid(split + 1));
    m.readMapList[0].clear();
    m.readMapList[1].clear();
    m.readSignalMapCfg();
    for (int dir = 0; dir < 2; ++dir) {
        m.imBusMap[dir].clear();
        m.conflictMapList[dir].clear();
        m.remapList[dir].clear();
        m.presentMapList[dir].clear();
    }
    const QStringList modules{QStringLiteral("gripper"), QStringLiteral("conveyor"),
                              QStringLiteral("PV_layout")};
    if (!m.readImportMapFile(backup, modules))
        return 0;

    // The cleaning, then the collision search twice: the library's and the plain walk.
    for (int dir = 0; dir < 2; ++dir) {
        m.delNonExistBusType(m.imBusMap[dir]);
        m.delOutOfRangeAddrs(BiBo(dir), m.imBusMap[dir]);
        m.delNonExistBusGroupId(BiBo(dir), m.imBusMap[dir]);
        m.delConflictBusGroupAddr(BiBo(dir), m.imBusMap[dir]);
    }
    ImportState plain;
    for (int dir = 0; dir < 2; ++dir) {
        plain.present[dir] = m.readMapList[dir];
        plain.imported[dir] = m.imBusMap[dir];
    }
    BusFileDataManager::clearSelfCraftMap();
    plainCollisionSearch(plain, 0);
    plainCollisionSearch(plain, 1);
    BusFileDataManager::_isConflictImportMap = false;
    for (int dir = 0; dir < 2; ++dir)
        m.checkGetConflictData(BiBo(dir), m.imBusMap[dir], m.conflictMapList[dir], m.remapList[dir],
                               m.presentMapList[dir]);
    fuzz::require(BusFileDataManager::_isConflictImportMap == plain.conflict, "conflict flag");
    for (int dir = 0; dir < 2; ++dir) {
        fuzz::require(sameMaps(m.imBusMap[dir], plain.imported[dir]), "imported rows");
        fuzz::require(sameRows(toVector(m.conflictMapList[dir]), toVector(plain.collisions[dir])),
                      "collisions");
        fuzz::require(sameRows(toVector(m.remapList[dir]), toVector(plain.remapped[dir])),
                      "re-mapped rows");
        fuzz::require(sameRows(toVector(m.presentMapList[dir]), toVector(plain.presentRows[dir])),
                      "present rows");
    }

    for (int answer : {0, 1, 2}) {
        ImportState merged = plain;
        plainMerge(merged, answer);
        std::copy(plain.imported, plain.imported + 2, m.imBusMap);
        std::copy(plain.result, plain.result + 2, m.writeMapList);
        std::copy(plain.collisions, plain.collisions + 2, m.conflictMapList);
        m.handleImportMapData(MsgBox::returnValue(answer));
        for (int dir = 0; dir < 2; ++dir)
            fuzz::require(sameRows(m.writeMapList[dir], merged.result[dir]), "merge");
    }
    return 0;
}
