// Display names and number formatting.
#include "BusFileDataManager.h"
#include "PendantSim.h"
#include "TestWorkspace.h"

#include <QtTest>

class LanguageTest : public QObject
{
    Q_OBJECT

private:
    TestWorkspace workspace;

private slots:
    // Exact, case-sensitive lookup of the bus-role table.
    void getBusNameCn()
    {
        const QStringList shortNames{"mtcp", "pfn", "ethcat", "eip",  "ecm",        "dns", "mbc",
                                     "eim",  "pnm", "dnm",    "MTCP", "group_mtcp", ""};
        const QStringList expected{
                "mtcp从站", "pfn从站", "ethcat从站", "eip从站", "ethcat主站", "dn从站", "mtcp主站",
                "eip主站",  "pfn主站", "dn主站",     "",        "",           ""};
        BusFileDataManager manager;
        for (int i = 0; i < shortNames.size(); ++i)
            QCOMPARE(manager.getBusNameCn(shortNames.at(i)), expected.at(i));
    }

    // Only language 3 translates, and only an English name that matches exactly.
    void getCurLanguageModuName()
    {
        const auto name = [](int language, const QString &module) {
            pendantsim::setLanguageId(language);
            BusFileDataManager manager;
            manager.moduleNameMap = {{"Weld", "焊接"}, {"Glue", "涂胶"}};
            return QString::number(manager.getLanguageType()) + ' '
                    + manager.getCurLanguageModuName(module);
        };
        QCOMPARE(name(3, "Weld"), QStringLiteral("3 焊接"));
        QCOMPARE(name(3, "Spot"), QStringLiteral("3 Spot"));
        QCOMPARE(name(3, "weld"), QStringLiteral("3 weld"));
        QCOMPARE(name(2, "Weld"), QStringLiteral("2 Weld"));
        QCOMPARE(name(1, "Weld"), QStringLiteral("1 Weld"));
        pendantsim::setLanguageId(2);
    }

    // Split at "."; further parts are dropped, and a name without "." changes nothing.
    void parseSelfNameCnEn()
    {
        const auto split = [](QString combined) {
            QString en = QStringLiteral("previous");
            BusFileDataManager::parseSelfNameCnEn(combined, en);
            return combined + "|" + en;
        };
        QCOMPARE(split("甲.Beta"), QStringLiteral("甲|Beta"));
        QCOMPARE(split("甲.Beta.Gamma"), QStringLiteral("甲|Beta"));
        QCOMPARE(split("甲乙"), QStringLiteral("甲乙|previous"));
        QCOMPARE(split("甲."), QStringLiteral("甲|"));
    }

    void getDecimalPointStr_data()
    {
        QTest::addColumn<double>("value");
        QTest::addColumn<char>("format");
        QTest::addColumn<int>("decimals");
        QTest::addColumn<QString>("expected");
        QTest::newRow("cut, not rounded") << 1.23456789 << 'f' << 3 << "1.234";
        QTest::newRow("trailing zeros") << 2.5 << 'f' << 2 << "2.5";
        QTest::newRow("whole number") << 100.0 << 'f' << 2 << "100";
        QTest::newRow("no decimals") << 3.75 << 'f' << 0 << "3";
        QTest::newRow("more decimals than precision") << 1.5 << 'f' << 12 << "1.5";
        QTest::newRow("negative count keeps the integer part") << 100.25 << 'f' << -3 << "100";
        QTest::newRow("exponent cut away") << 123456.7 << 'e' << 2 << "1.23";
        QTest::newRow("exponent kept") << 123456.7 << 'e' << 20 << "1.2345670e+05";
        QTest::newRow("no point") << 1234567.0 << 'g' << 2 << "1234567";
    }

    void getDecimalPointStr()
    {
        QFETCH(double, value);
        QFETCH(char, format);
        QFETCH(int, decimals);
        QFETCH(QString, expected);
        QCOMPARE(BusFileDataManager::getDecimalPointStr(value, format, decimals), expected);
    }
};

QTEST_GUILESS_MAIN(LanguageTest)
#include "tst_language.moc"
