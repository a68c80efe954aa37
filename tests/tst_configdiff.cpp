// The configuration diff: known edits of the sample controller give exactly
// the changes they stand for, and edits of form alone give none.
#include "ConfigDiff.h"
#include "PendantSim.h"

#include <QRandomGenerator>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QtTest>

namespace {

const QString sample = FBC_TEST_DATA "/../../examples/controller";
const QString fidbus = "application/fidbus/";

// "FILE|PATTERN|REPLACEMENT": the first match replaced; "FILE|-" removes the file.
void edit(const QString &root, const QString &change)
{
    const QStringList parts = change.split('|');
    QFile file(root + '/' + parts.at(0));
    if (parts.at(1) == "-") {
        QVERIFY(file.remove());
        return;
    }
    QVERIFY(file.open(QIODevice::ReadOnly));
    QString text = QString::fromUtf8(file.readAll());
    file.close();
    const QRegularExpressionMatch match =
            QRegularExpression(parts.at(1), QRegularExpression::MultilineOption).match(text);
    QVERIFY2(match.hasMatch(), qPrintable(change));
    QString replacement = parts.at(2);
    replacement.replace("\\n", "\n").replace("\\1", match.captured(1));
    text.replace(match.capturedStart(), match.capturedLength(), replacement);
    QVERIFY(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
    file.write(text.toUtf8());
}

// Every run of blanks in a line file made one blank: the same configuration.
void repad(const QString &root, const QString &name)
{
    QFile file(root + '/' + fidbus + name);
    QVERIFY(file.open(QIODevice::ReadOnly));
    QString text = QString::fromUtf8(file.readAll());
    file.close();
    text.replace(QRegularExpression(" +"), " ");
    QVERIFY(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
    file.write(text.toUtf8());
}

} // namespace

class TstConfigDiff : public QObject
{
    Q_OBJECT

private slots:
    void compare_data();
    void compare();
    void pairsAsTheWalk();
};

void TstConfigDiff::compare_data()
{
    QTest::addColumn<QStringList>("edits");
    // "KIND FILE LINE-BEFORE LINE-AFTER SUBJECT: BEFORE => AFTER"
    QTest::addColumn<QStringList>("expected");
    const QString map = fidbus + "signal_mapping.cfg";
    const QString grp = fidbus + "user_groupio.cfg";
    const QString stop = map + "|(-Name ext_stop .*-Address )1 ";
    QTest::newRow("unchanged") << QStringList() << QStringList();
    QTest::newRow("re-padded") << QStringList{"repad"} << QStringList();
    QTest::newRow("moved") << QStringList{stop + "|\\199 "}
                           << QStringList{"mapping-moved " + map
                                          + " 5 5 input Common ext_stop: mtcp 1 (bool), filter "
                                            "time 0, invert 1 => mtcp 99 (bool), filter time 0, "
                                            "invert 1"};
    QTest::newRow("invert") << QStringList{map + "|(-Name ext_stop .*-Invert )1|\\10"}
                            << QStringList{"mapping-changed " + map
                                           + " 5 5 input Common ext_stop: mtcp 1 (bool), filter "
                                             "time 0, invert 1 => mtcp 1 (bool), filter time 0, "
                                             "invert 0"};
    QTest::newRow("unmapped") << QStringList{stop + "|\\1-1 "}
                              << QStringList{"mapping-removed " + map
                                             + " 5 0 input Common ext_stop: mtcp 1 (bool), filter "
                                               "time 0, invert 1 => "};
    QTest::newRow("line removed, rest shifted")
            << QStringList{map + "|^.*-Name ext_stop .*\\n|"}
            << QStringList{
                       "mapping-removed " + map
                       + " 5 0 input Common ext_stop: mtcp 1 (bool), filter time 0, invert 1 => "};
    QTest::newRow("added") << QStringList{map + "|(-Name single_cycle .*-Address )-1 |\\130 "}
                           << QStringList{"mapping-added " + map
                                          + " 0 21 input Common single_cycle:  => mtcp 30 (bool), "
                                            "filter time 0, invert 0"};
    QTest::newRow("group range") << QStringList{grp + "|192-207|192-199"}
                                 << QStringList{"group-changed " + grp
                                                + " 4 4 int input group 1 of mtcp: 192-207 => "
                                                  "192-199"};
    QTest::newRow("group renumbered")
            << QStringList{grp + "|(-Type int +-Address )1 |\\17 "}
            << QStringList{"group-removed " + grp + " 4 0 int input group 1 of mtcp: 192-207 => ",
                           "group-added " + grp + " 0 4 int input group 7 of mtcp:  => 192-207"};
    QTest::newRow("bus off") << QStringList{fidbus + "fieldbus.xml|(\"pfn\">\\s*<enable>)1|\\10"}
                             << QStringList{"bus-disabled " + fidbus
                                            + "fieldbus.xml 0 0 pfn (ProfinetSlave): on => off"};
    QTest::newRow("area") << QStringList{fidbus + "fieldbus_config.xml|64</Var|48</Var"}
                          << QStringList{"area-changed " + fidbus
                                         + "fieldbus_config.xml 0 0 ModbusSys entry 0: start 256, "
                                           "stop 319, length 64 => start 256, stop 319, length 48"};
    QTest::newRow("descriptions")
            << QStringList{fidbus + "user_description.xml|Start from line PLC|Start",
                           fidbus + "user_description.xml|<Index>1<|<Index>77<"}
            << QStringList{
                       "description-changed " + fidbus
                               + "user_description.xml 0 0 fbIn[0]: Start from line PLC => Start",
                       "description-removed " + fidbus
                               + "user_description.xml 0 0 fbIn[1]: Stop from line PLC, "
                                 "normally closed => ",
                       "description-added " + fidbus
                               + "user_description.xml 0 0 fbIn[77]:  => Stop from line PLC, "
                                 "normally closed"};
    QTest::newRow("endian") << QStringList{"fa/fbslave.cfgx|little|big"}
                            << QStringList{"endian-changed fa/fbslave.cfgx 0 0 byte order: little "
                                           "=> big"};
    QTest::newRow("file gone") << QStringList{grp + "|-"}
                               << QStringList{"file-removed " + grp + " 0 0 the file:  => "};
}

void TstConfigDiff::compare()
{
    QFETCH(QStringList, edits);
    QFETCH(QStringList, expected);
    QTemporaryDir tmp;
    QVERIFY(pendantsim::copyFolder(sample, tmp.path()));
    const ConfigSnapshot before =
            ConfigSnapshot::load(tmp.path(), ConfigSnapshot::ControllerLayout);
    for (const QString &change : edits) {
        if (change == "repad") {
            repad(tmp.path(), "signal_mapping.cfg");
            repad(tmp.path(), "user_groupio.cfg");
        } else {
            edit(tmp.path(), change);
        }
    }
    const ConfigSnapshot after = ConfigSnapshot::load(tmp.path(), ConfigSnapshot::ControllerLayout);
    QStringList found;
    for (const ConfigChange &c : ConfigDiff::compare(before, after))
        found << QStringLiteral("%1 %2 %3 %4 %5: %6 => %7")
                         .arg(c.kind, c.file)
                         .arg(c.lineBefore)
                         .arg(c.lineAfter)
                         .arg(c.subject, c.before, c.after);
    QCOMPARE(found, expected);
    // The other way round, every change turns over.
    QCOMPARE(ConfigDiff::compare(after, before).size(), expected.size());
}

// Rows drawn from a few values, so that many share a function and a place:
// the diff pairs them exactly as the plain walk does, equal rows first, then
// rows at the same place, then the rest, each in file order.
void TstConfigDiff::pairsAsTheWalk()
{
    QRandomGenerator random(20261123);
    const auto pick = [&random](const QStringList &values) {
        return values.at(int(random.bounded(quint32(values.size()))));
    };
    const auto snapshot = [&]() {
        ConfigSnapshot s;
        for (int line = 1; line <= 300; ++line) {
            SnapshotMapping m;
            m.line = line;
            m.direction = pick({"in", "out"}) == "in" ? BusInput : BusOutput;
            m.row.module = pick({"Weld", "Spray"});
            m.row.name = pick({"a", "b", "c"});
            m.row.type = pick({"bool", "BOOL", "int"});
            m.row.fieldBus = pick({"mtcp", "ethcat"});
            m.row.address = pick({"0", "1", "2"});
            m.row.filterTime = pick({"0", "5"});
            m.row.invert = pick({"0", "1"});
            s.mappings.append(m);
        }
        return s;
    };
    for (int run = 0; run < 20; ++run) {
        const ConfigSnapshot a = snapshot();
        const ConfigSnapshot b = snapshot();
        using Same = std::function<bool(const FuncAndMapInfo &, const FuncAndMapInfo &)>;
        const Same place = [](const FuncAndMapInfo &x, const FuncAndMapInfo &y) {
            return x.fieldBus == y.fieldBus && x.address == y.address;
        };
        const Same equal = [place](const FuncAndMapInfo &x, const FuncAndMapInfo &y) {
            return place(x, y) && x.filterTime == y.filterTime && x.invert == y.invert
                    && x.type.compare(y.type, Qt::CaseInsensitive) == 0;
        };
        const Same any = [](const FuncAndMapInfo &, const FuncAndMapInfo &) { return true; };
        const QStringList kinds{QString(), "mapping-changed", "mapping-moved"};
        QStringList expected;
        QVector<bool> takenB(b.mappings.size()), pairedA(a.mappings.size());
        int round = 0;
        for (const Same &same : {equal, place, any}) {
            for (int i = 0; i < a.mappings.size(); ++i) {
                const SnapshotMapping &x = a.mappings.at(i);
                for (int j = 0; j < b.mappings.size() && !pairedA[i]; ++j) {
                    const SnapshotMapping &y = b.mappings.at(j);
                    if (takenB[j] || x.direction != y.direction || x.row.module != y.row.module
                        || x.row.name != y.row.name || !same(x.row, y.row))
                        continue;
                    pairedA[i] = takenB[j] = true;
                    if (round > 0)
                        expected << QStringLiteral("%1 %2 %3")
                                            .arg(kinds.at(round))
                                            .arg(x.line)
                                            .arg(y.line);
                }
            }
            ++round;
        }
        for (int i = 0; i < a.mappings.size(); ++i) {
            if (!pairedA[i])
                expected << QStringLiteral("mapping-removed %1 0").arg(a.mappings.at(i).line);
        }
        for (int j = 0; j < b.mappings.size(); ++j) {
            if (!takenB[j])
                expected << QStringLiteral("mapping-added 0 %1").arg(b.mappings.at(j).line);
        }
        QStringList found;
        for (const ConfigChange &c : ConfigDiff::compare(a, b))
            found << QStringLiteral("%1 %2 %3").arg(c.kind).arg(c.lineBefore).arg(c.lineAfter);
        expected.sort();
        found.sort();
        QCOMPARE(found, expected);
    }
}

QTEST_GUILESS_MAIN(TstConfigDiff)
#include "tst_configdiff.moc"
