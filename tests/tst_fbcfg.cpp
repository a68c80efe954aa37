// Runs the built fbcfg tool on fresh copies of the sample controller.
#include "ConfigSnapshot.h"

#include <QDirIterator>
#include <QJsonDocument>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QtTest>

namespace {

void copyTree(const QString &from, const QString &to)
{
    QDirIterator it(from, QDir::Files | QDir::NoDotAndDotDot, QDirIterator::Subdirectories);
    while (it.hasNext()) {
        const QString source = it.next();
        const QString target = to + '/' + QDir(from).relativeFilePath(source);
        QVERIFY(QDir().mkpath(QFileInfo(target).path()));
        QVERIFY(QFile::copy(source, target));
    }
}

QHash<QString, QByteArray> readTree(const QString &root)
{
    QHash<QString, QByteArray> files;
    QDirIterator it(root, QDir::Files, QDirIterator::Subdirectories);
    while (it.hasNext()) {
        QFile file(it.next());
        if (file.open(QIODevice::ReadOnly))
            files.insert(QDir(root).relativeFilePath(file.fileName()), file.readAll());
    }
    return files;
}

// XML as the library's writer leaves it: no declaration, comments or indentation.
QString normalizedXml(const QByteArray &bytes)
{
    QString text = QString::fromUtf8(bytes);
    text.remove(QRegularExpression("<\\?xml[^>]*\\?>|<!--.*?-->",
                                   QRegularExpression::DotMatchesEverythingOption));
    return text.replace(QRegularExpression(">\\s+<"), "><").trimmed();
}

const QString fieldbusXml = "application/fidbus/fieldbus.xml";
const QString signalMap = "application/fidbus/signal_mapping.cfg";
const QString mapBackup = "application/fidbus/signal_mapping_backup.cfg";

} // namespace

class TstFbcfg : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void run_data();
    void run();

private:
    // Another controller folder can be tried with FBCFG_SAMPLE.
    QString sample = qEnvironmentVariable("FBCFG_SAMPLE", FBCFG_SAMPLE);
    // Values the cases take from the sample, so that they follow its content.
    QHash<QString, QString> vars;
};

void TstFbcfg::initTestCase()
{
    QVERIFY2(QFileInfo(sample).isDir(), qPrintable(sample));
    const ConfigSnapshot s = ConfigSnapshot::load(sample, ConfigSnapshot::ControllerLayout);
    const QStringList on = s.enabledShortNames();
    const auto isBoolInput = [](const SnapshotMapping &m) {
        return m.direction == BusInput && m.row.type.compare("bool", Qt::CaseInsensitive) == 0;
    };
    // Two declared bool inputs on one bus: one to move, the other's address to collide with.
    for (const SnapshotMapping &t : s.mappings) {
        const QVector<SnapshotFunction> declared =
                s.modules.value(t.row.module).functions[BusInput];
        if (vars.contains("bus") || !isBoolInput(t) || !on.contains(t.row.fieldBus)
            || std::none_of(declared.cbegin(), declared.cend(),
                            [&t](const SnapshotFunction &f) { return f.name == t.row.name; }))
            continue;
        for (const SnapshotMapping &u : s.mappings) {
            if (isBoolInput(u) && u.row.fieldBus == t.row.fieldBus && u.row.name != t.row.name) {
                vars.insert("mod", t.row.module);
                vars.insert("func", t.row.name);
                vars.insert("bus", t.row.fieldBus);
                vars.insert("BUS", t.row.fieldBus.toUpper());
                vars.insert("taken", u.row.address);
                break;
            }
        }
    }
    // A bool input address of that bus that is free and in no group.
    const QString bus = vars.value("bus");
    for (int a = 0; !bus.isEmpty() && a < s.busNum(bus, BusInput, "bool"); ++a) {
        const bool used = std::any_of(s.mappings.cbegin(), s.mappings.cend(), [&](const auto &m) {
            return m.direction == BusInput && m.row.fieldBus == bus && m.row.address.toInt() == a;
        });
        const bool grouped = std::any_of(s.groups.cbegin(), s.groups.cend(), [&](const auto &g) {
            return g.direction == BusInput && g.group.fieldBus.toLower() == bus
                    && g.group.deviceMapHead.toInt() <= a && a <= g.group.deviceMapTail.toInt();
        });
        if (!used && !grouped) {
            vars.insert("free", QString::number(a));
            break;
        }
    }
    // An input group, and a number its type does not use yet.
    for (const SnapshotGroup &g : s.groups) {
        if (vars.contains("gbus") || g.direction != BusInput
            || !on.contains(g.group.fieldBus.toLower()))
            continue;
        vars.insert("gbus", g.group.fieldBus.toLower());
        vars.insert("gtype", g.group.type.toLower());
        vars.insert("gfirst", g.group.deviceMapHead);
        vars.insert("glast", g.group.deviceMapTail);
        for (int n = 0; !vars.contains("gfree"); ++n) {
            if (std::none_of(s.groups.cbegin(), s.groups.cend(), [&](const SnapshotGroup &o) {
                    return o.direction == BusInput && o.group.address.toInt() == n
                            && o.group.type.compare(g.group.type, Qt::CaseInsensitive) == 0;
                }))
                vars.insert("gfree", QString::number(n));
        }
    }
    for (const BusName &b : s.buses.mid(1)) {
        const QString key = b.enable ? "onBus" : "offBus";
        // Not mtcp: the library keeps its own entry of that bus switched on.
        if (!vars.contains(key) && b.shortName != "mtcp" && (!b.enable || on.contains(b.shortName)))
            vars.insert(key, b.shortName);
    }
}

void TstFbcfg::run_data()
{
    QTest::addColumn<QStringList>("args");
    QTest::addColumn<int>("code");
    // Must match stdout or stderr.
    QTest::addColumn<QString>("pattern");
    // Controller files that must change; every other file must stay byte-identical.
    QTest::addColumn<QStringList>("changed");
    // Must match the first changed file afterwards; a leading "!" negates it.
    QTest::addColumn<QString>("after");

    const auto row = [](const char *name, const QStringList &args, int code, const QString &pattern,
                        const QStringList &changed = {}, const QString &after = {}) {
        QTest::newRow(name) << args << code << pattern << changed << after;
    };
    row("status", {"status"}, 0, "Buses:[\\s\\S]*mtcp[\\s\\S]*BOOL");
    row("status json", {"status", "--json"}, 0, "\"areas\"[\\s\\S]*\"freeBusOpen\"");
    row("bus list json", {"bus", "list", "--json"}, 0, "\"shortName\": \"mtcp\"");
    row("map list", {"map", "list", "--dir", "in"}, 0, "MODULE[\\s\\S]*{func}");
    row("map list json", {"map", "list", "--json", "--bus", "{bus}"}, 0, "\"line\": [1-9]");
    row("group list json", {"group", "list", "--json", "--dir", "in"}, 0,
        "\"first\": \"{gfirst}\"");
    row("bus disable", {"bus", "disable", "{onBus}"}, 0, "switched off", {fieldbusXml});
    row("bus enable", {"bus", "enable", "{offBus}"}, 0, "switched on", {fieldbusXml});
    row("map set taken", {"map", "set", "{mod}", "{func}", "{bus}", "{taken}", "--dir", "in"}, 1,
        "refused: address {taken} of {bus} .* is taken by");
    row("map set beyond", {"map", "set", "{mod}", "{func}", "{bus}", "99999", "--dir", "in"}, 1,
        "refused: address 99999 is beyond {bus}'s \\d+ bool input addresses");
    row("map set", {"map", "set", "{mod}", "{func}", "{bus}", "{free}", "--dir", "in"}, 0,
        "-> {bus} {free}$", {signalMap},
        "-Module {mod} +-Name {func} +-Type bool +-FieldBus {BUS} +-Address {free} ");
    row("map unset", {"map", "unset", "{mod}", "{func}", "--dir", "in"}, 0, "-> not mapped",
        {signalMap}, "!-Module {mod} +-Name {func} +-Type bool +-FieldBus {BUS} ");
    row("group overlap",
        {"group", "set", "{gbus}", "{gfree}", "{gfirst}", "{glast}", "--dir", "in", "--type",
         "{gtype}"},
        1, "refused: .*overlaps");
    row("describe <", {"describe", "set", "fbIn[1]", "a<b"}, 1, "refused: .*\"<\"");
    row("check", {"check"}, 0, "^no problems found$");
    row("chinese",
        {"--lang", "zh", "map", "set", "{mod}", "{func}", "{bus}", "{taken}", "--dir", "in"}, 1,
        "已拒绝");
    row("backup", {"backup"}, 0, "backup", {mapBackup});
    const QStringList import{"import", "%CONTROLLER%/" + mapBackup, "--modules",
                             "Palletize,Vision"};
    row("import unanswered", import, 2, "nothing was changed");
    row("import",
        QStringList(import) << "--prefer"
                            << "imported",
        0, "restart", {signalMap, mapBackup});
    row("question unanswered", {"bus", "performance", "eip", "on", "--current", "1"}, 2,
        "question: .*\\n[\\s\\S]*nothing was changed.*--yes");
    row("question yes", {"bus", "performance", "eip", "on", "--current", "1", "--yes"}, 0, "^4$");
    row("bad address", {"map", "set", "a", "b", "mtcp", "x", "--dir", "in"}, 2,
        "^fbcfg: .*'x'; see fbcfg map set --help$");
    row("foreign option", {"status", "--dir", "in"}, 2, "--dir does not apply.*status --help");
    row("bad direction", {"map", "list", "--dir", "up"}, 2, "'up'; see fbcfg map list --help");
    row("unknown command", {"frobnicate"}, 2, "unknown command 'frobnicate'; see fbcfg --help");
    row("version", {"--version"}, 0, "^fbcfg \\d+\\.\\d+\\.\\d+$");
    row("help", {"--help"}, 0, "Commands:[\\s\\S]*map set");
    for (const QString command : {"status", "map set", "group delete", "check"})
        row(qPrintable(command + " --help"), command.split(' ') << "--help", 0,
            "Usage:\\n  fbcfg \\[options\\] " + command);
}

void TstFbcfg::run()
{
    QFETCH(QStringList, args);
    QFETCH(int, code);
    QFETCH(QString, pattern);
    QFETCH(QStringList, changed);
    QFETCH(QString, after);
    for (auto it = vars.cbegin(); it != vars.cend(); ++it) {
        pattern.replace('{' + it.key() + '}', QRegularExpression::escape(it.value()));
        after.replace('{' + it.key() + '}', QRegularExpression::escape(it.value()));
    }
    for (QString &arg : args) {
        if (arg.startsWith('{') && arg.endsWith('}')) {
            if (!vars.contains(arg.mid(1, arg.size() - 2)))
                QSKIP(qPrintable("the sample gives no " + arg));
            arg = vars.value(arg.mid(1, arg.size() - 2));
        }
    }

    QTemporaryDir tmp;
    const QString controller = tmp.filePath("controller");
    copyTree(sample, controller);
    const QHash<QString, QByteArray> before = readTree(controller);
    args.replaceInStrings("%CONTROLLER%", controller);
    QProcess tool;
    tool.start(FBCFG_PATH,
               args << "--controller" << controller << "--workspace" << tmp.filePath("ws"));
    tool.closeWriteChannel();
    QVERIFY(tool.waitForFinished(60000));
    const QString out = QString::fromUtf8(tool.readAllStandardOutput());
    const QString err = QString::fromUtf8(tool.readAllStandardError());
    const QString context = args.join(' ') + '\n' + out + err;
    QVERIFY2(tool.exitCode() == code, qPrintable(context));
    const QRegularExpression expected(pattern, QRegularExpression::MultilineOption);
    QVERIFY2(expected.match(out).hasMatch() || expected.match(err).hasMatch(), qPrintable(context));
    if (args.contains("--json"))
        QVERIFY2(!QJsonDocument::fromJson(out.toUtf8()).isNull(), qPrintable(out));

    const QHash<QString, QByteArray> now = readTree(controller);
    QCOMPARE(QSet<QString>(now.keyBegin(), now.keyEnd()),
             QSet<QString>(before.keyBegin(), before.keyEnd()));
    for (auto it = before.cbegin(); it != before.cend(); ++it)
        QVERIFY2((now.value(it.key()) != it.value()) == changed.contains(it.key()),
                 qPrintable(it.key()));
    if (!after.isEmpty()) {
        const bool negated = after.startsWith('!');
        const QRegularExpression re(after.mid(negated ? 1 : 0));
        QVERIFY2(re.match(QString::fromUtf8(now.value(changed.first()))).hasMatch() != negated,
                 qPrintable(after));
    }
    if (changed.contains(fieldbusXml)) {
        // Only the switched bus's enable text differs from what the writer makes of the file.
        QString xml = normalizedXml(before.value(fieldbusXml));
        const QRegularExpressionMatch bus =
                QRegularExpression("shortname=\"" + args.at(2) + "\"[^>]*>.*?<enable>([^<]*)<",
                                   QRegularExpression::CaseInsensitiveOption
                                           | QRegularExpression::DotMatchesEverythingOption)
                        .match(xml);
        QVERIFY(bus.hasMatch());
        xml.replace(bus.capturedStart(1), bus.capturedLength(1),
                    args.at(1) == "enable" ? "1" : "0");
        QCOMPARE(normalizedXml(now.value(fieldbusXml)), xml);
    }
}

QTEST_GUILESS_MAIN(TstFbcfg)
#include "tst_fbcfg.moc"
