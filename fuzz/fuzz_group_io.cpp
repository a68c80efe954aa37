// Group IO: read, write back, read again; the tables must come back equal.
#include "FuzzHarness.h"

#include <QRegularExpression>

namespace {

QString describe(const BusFileDataManager &m)
{
    QStringList out;
    for (int dir = 0; dir < 2; ++dir) {
        for (int type = 0; type < 3; ++type) {
            for (auto it = m.curGroupTables[dir][type].cbegin();
                 it != m.curGroupTables[dir][type].cend(); ++it)
                out << QStringList{QString::number(dir), it.key(),          it->type,
                                   it->fieldBus,         it->deviceMapHead, it->deviceMapTail}
                                .join(QLatin1Char('|'));
        }
    }
    return out.join(QLatin1Char('\n'));
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    BusFileDataManager &m = fuzz::manager();
    fuzz::put(TPU_GROUP_CFG, fuzz::bytes(data, size));
    if (!m.readGroupCfg())
        return 0;
    const QString first = describe(m);
    // Blanks inside a value do not survive the column layout.
    if (first.contains(QRegularExpression(QStringLiteral("\\s[^\\n]|\\|\\||\\|$|\\|\\n"))))
        return 0;
    if (!m.writeSendGroupCfg())
        return 0; // refused: bytes that are not UTF-8
    fuzz::require(m.readGroupCfg(), "read again");
    fuzz::require(describe(m) == first, "round trip");
    return 0;
}
