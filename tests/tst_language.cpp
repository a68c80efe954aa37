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
    void getBusNameCn_data()
    {
        QTest::addColumn<QString>("shortName");
        QTest::addColumn<QString>("expected");

        QTest::newRow("mtcp") << "mtcp"
                              << "mtcp从站";
        QTest::newRow("ethcat") << "ethcat"
                                << "ethcat从站";
        QTest::newRow("ecm") << "ecm"
                             << "ethcat主站";
        QTest::newRow("dns") << "dns"
                             << "dn从站";
        QTest::newRow("mbc") << "mbc"
                             << "mtcp主站";
        QTest::newRow("dnm") << "dnm"
                             << "dn主站";
        QTest::newRow("case-sensitive") << "MTCP"
                                        << "";
        QTest::newRow("group key") << "group_mtcp"
                                   << "";
        QTest::newRow("empty") << ""
                               << "";
    }

    void getBusNameCn()
    {
        QFETCH(QString, shortName);
        QFETCH(QString, expected);
        BusFileDataManager manager;
        QCOMPARE(manager.getBusNameCn(shortName), expected);
    }

    void getCurLanguageModuName_data()
    {
        QTest::addColumn<int>("language");
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("expected");

        QTest::newRow("Chinese, English name") << 3 << "Weld"
                                               << "焊接";
        QTest::newRow("Chinese, Chinese name") << 3 << "焊接"
                                               << "焊接";
        QTest::newRow("Chinese, unknown") << 3 << "Spot"
                                          << "Spot";
        QTest::newRow("Chinese, case differs") << 3 << "weld"
                                               << "weld";
        QTest::newRow("English") << 2 << "Weld"
                                 << "Weld";
        QTest::newRow("other language") << 1 << "Weld"
                                        << "Weld";
    }

    void getCurLanguageModuName()
    {
        QFETCH(int, language);
        QFETCH(QString, name);
        QFETCH(QString, expected);
        pendantsim::setLanguageId(language);
        BusFileDataManager manager;
        manager.moduleNameMap = {{"Weld", "焊接"}, {"Glue", "涂胶"}};
        QCOMPARE(manager.getLanguageType(), language);
        QCOMPARE(manager.getCurLanguageModuName(name), expected);
    }

    void parseSelfNameCnEn_data()
    {
        QTest::addColumn<QString>("combined");
        QTest::addColumn<QString>("nameCn");
        QTest::addColumn<QString>("nameEn");

        QTest::newRow("two parts") << "甲.Beta"
                                   << "甲"
                                   << "Beta";
        QTest::newRow("further parts dropped") << "甲.Beta.Gamma"
                                               << "甲"
                                               << "Beta";
        QTest::newRow("no point") << "甲乙"
                                  << "甲乙"
                                  << "previous";
        QTest::newRow("empty") << ""
                               << ""
                               << "previous";
        QTest::newRow("empty first part") << ".Beta"
                                          << ""
                                          << "Beta";
        QTest::newRow("empty second part") << "甲."
                                           << "甲"
                                           << "";
    }

    void parseSelfNameCnEn()
    {
        QFETCH(QString, combined);
        QFETCH(QString, nameCn);
        QFETCH(QString, nameEn);
        QString cn = combined;
        QString en = QStringLiteral("previous");
        BusFileDataManager::parseSelfNameCnEn(cn, en);
        QCOMPARE(cn, nameCn);
        QCOMPARE(en, nameEn);
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
        QTest::newRow("no decimals") << 3.0 << 'f' << 0 << "3";
        QTest::newRow("no decimals, fraction cut") << 3.75 << 'f' << 0 << "3";
        QTest::newRow("zero") << 0.0 << 'f' << 3 << "0";
        QTest::newRow("small value cut to zero") << 0.0001 << 'f' << 3 << "0";
        QTest::newRow("negative") << -0.5 << 'f' << 1 << "-0.5";
        QTest::newRow("more decimals than precision") << 1.5 << 'f' << 12 << "1.5";
        QTest::newRow("negative count keeps the integer part") << 100.25 << 'f' << -3 << "100";
        QTest::newRow("exponent cut away") << 123456.7 << 'e' << 2 << "1.23";
        QTest::newRow("exponent kept") << 123456.7 << 'e' << 20 << "1.2345670e+05";
        QTest::newRow("exponent, zeros") << 100000.0 << 'e' << 3 << "1";
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

    void cleanupTestCase() { pendantsim::setLanguageId(2); }
};

QTEST_GUILESS_MAIN(LanguageTest)
#include "tst_language.moc"
