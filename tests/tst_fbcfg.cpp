// Runs the built fbcfg tool on fresh copies of the sample controller.
#include "ConfigSnapshot.h"
#include "Csv.h"
#include "PendantSim.h"

#include <QDirIterator>
#include <QJsonDocument>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QtTest>

#include <csignal>

namespace {

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

// Runs the tool; its exit code, with what it printed in `out` and `err`.
int runTool(const QStringList &args, QString *out = nullptr, QString *err = nullptr)
{
    QProcess tool;
    tool.start(FBCFG_PATH, args);
    tool.closeWriteChannel();
    if (!tool.waitForFinished(60000))
        return -1;
    if (out)
        *out = QString::fromUtf8(tool.readAllStandardOutput());
    if (err)
        *err = QString::fromUtf8(tool.readAllStandardError());
    return tool.exitCode();
}

// A pendant workspace in `tmp`: fbcfg takes only a folder that exists.
QString workspaceIn(const QTemporaryDir &tmp)
{
    QDir(tmp.path()).mkpath("ws");
    return tmp.filePath("ws");
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
    void csvRoundTrip();
    void csvRefusedRows();
    void diffWorkingCopy();
    // Trust: the folder asked for, nothing written that was not read cleanly,
    // no change lost to a concurrent writer, no temporary folder left behind.
    void csvRecords_data();
    void csvRecords();
    void csvFromSpreadsheets_data();
    void csvFromSpreadsheets();
    void checkOutput_data();
    void checkOutput();
    void folderOptions_data();
    void folderOptions();
    void uncleanFileRefused();
    void concurrentWriters();
    void cleanEnds_data();
    void cleanEnds();

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
    row("group list json", {"group", "list", "--json", "--dir", "in"}, 0, "\"first\": {gfirst},");
    // Numbers as numbers; --format json is --json, and is refused where there is no JSON.
    row("describe list json", {"describe", "list", "--format", "json"}, 0, "\"index\": \\d+,");
    row("endian get json", {"endian", "get", "--json", "--format", "json"}, 0,
        "\\A\\{\\s+\"endian\": \"(big|little)\"\\s+\\}\\s*\\z");
    row("json without a json form", {"backup", "--format", "json"}, 2,
        "--json does not apply to fbcfg backup");
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
    // The string group of the same number is in the way as much as any other.
    row("group overlap, same number other type",
        {"group", "set", "mtcp", "1", "224", "230", "--dir", "in", "--type", "int"}, 1,
        "refused: 224-230 overlaps string input group 1 of mtcp \\(224-255\\)");
    row("describe <", {"describe", "set", "fbIn[1]", "a<b"}, 1, "refused: .*\"<\"");
    row("describe &", {"describe", "set", "fbIn[1]", "R&D"}, 1, "refused: .*\"&\"");
    row("check", {"check"}, 0, "^no problems found$");
    row("chinese",
        {"--lang", "zh", "map", "set", "{mod}", "{func}", "{bus}", "{taken}", "--dir", "in"}, 1,
        "已拒绝");
    row("backup", {"backup"}, 0, "backup", {mapBackup});
    const QStringList import{"import", "%CONTROLLER%/" + mapBackup, "--modules",
                             "Palletize,Vision"};
    row("import unanswered", import, 2, "nothing was changed");
    row("import not a mapping", {"import", "%CONTROLLER%/application/fidbus/fieldbus.xml", "--all"},
        2, "fieldbus.xml:2: not a saved signal mapping");
    row("import",
        QStringList(import) << "--prefer"
                            << "imported",
        0, "restart", {signalMap, mapBackup});
    const QString dry = "dry run: nothing was changed";
    row("dry bus disable", {"bus", "disable", "{onBus}", "--dry-run"}, 0,
        "^  ~ {onBus} \\(.*\\): on -> off$");
    row("dry map set",
        {"map", "set", "{mod}", "{func}", "{bus}", "{free}", "--dir", "in", "--dry-run"}, 0,
        "^  ~ input {mod} {func}: .* -> {bus} {free} .*\\(line \\d+\\)$");
    row("dry map unset", {"map", "unset", "{mod}", "{func}", "--dir", "in", "--dry-run"}, 0,
        "^  - input {mod} {func}: {bus} ");
    row("dry refused",
        {"map", "set", "{mod}", "{func}", "{bus}", "{taken}", "--dir", "in", "--dry-run"}, 1,
        "refused");
    row("dry group overlap",
        {"group", "set", "{gbus}", "{gfree}", "{gfirst}", "{glast}", "--dir", "in", "--type",
         "{gtype}", "--dry-run"},
        1, "refused: .*overlaps");
    row("dry describe", {"describe", "set", "fbIn[0]", "new text", "--dry-run"}, 0,
        "^  [~+] fbIn\\[0\\]: .*new text$");
    row("dry endian json", {"endian", "set", "big", "--dry-run", "--json"}, 0,
        "\"kind\": \"endian-changed\"");
    row("import repeats",
        {"import", "%DATA%/import/repeated_rows.cfg", "--all", "--prefer", "imported"}, 1,
        "repeated_rows.cfg:3: Common EXT_START is mapped as input already on line 2\\n"
        "[\\s\\S]*repeated_rows.cfg:4: mtcp input address 40 is taken already on line 2\\n"
        "[\\s\\S]*nothing was changed: 2 row");
    row("dry import",
        QStringList(import) << "--prefer"
                            << "imported"
                            << "--dry-run",
        0, dry + ".* would make [1-9]");
    row("diff equal", {"diff", "--against", "%CONTROLLER%"}, 0, "^no differences$");
    row("diff faults", {"diff", "--against", "%FAULTS%"}, 1,
        "^application/fidbus/signal_mapping.cfg\\n  [-+~] ");
    row("diff faults json", {"diff", "--against", "%FAULTS%", "--json"}, 1, "\"kind\": \"mapping-");
    row("diff without working copy", {"diff"}, 2, "no working copy");
    row("question unanswered", {"bus", "performance", "eip", "on", "--current", "1"}, 2,
        "question: .*\\n[\\s\\S]*nothing was changed.*--yes");
    row("question yes", {"bus", "performance", "eip", "on", "--current", "1", "--yes"}, 0, "^4$");
    row("bad address", {"map", "set", "a", "b", "mtcp", "x", "--dir", "in"}, 2,
        "^fbcfg: .*'x'; see fbcfg map set --help$");
    row("foreign option", {"status", "--dir", "in"}, 2, "--dir does not apply.*status --help");
    row("bad direction", {"map", "list", "--dir", "up"}, 2, "'up'; see fbcfg map list --help");
    row("bus filter slip", {"group", "list", "--bus", "mtpc"}, 2,
        "^fbcfg: there is no bus mtpc; the buses are mtcp, .*; see fbcfg group list --help$");
    row("module filter slip", {"map", "list", "--module", "Wled"}, 2,
        "^fbcfg: there is no module Wled; the modules are .*Weld.*; see fbcfg map list --help$");
    // A name that is not there is a usage error that lists the names and suggests a close one.
    row("module slip", {"map", "set", "Comon", "{func}", "{bus}", "{free}", "--dir", "in"}, 2,
        "^fbcfg: no module Comon; did you mean Common\\? \\(known: .*Weld.*\\); see fbcfg map set");
    row("function slip", {"map", "unset", "Common", "ext_strat", "--dir", "in"}, 2,
        "has no input function ext_strat; did you mean ext_start\\?");
    row("bus slip", {"group", "delete", "mtpc", "1", "--dir", "in", "--type", "int"}, 2,
        "no bus mtpc; did you mean mtcp\\?");
    row("import module slips", {"import", "%CONTROLLER%/" + mapBackup, "--modules", "Wled,Nope"}, 2,
        "no module Wled; did you mean Weld\\?; no module Nope \\(known: ");
    row("negative address", {"map", "set", "{mod}", "{func}", "{bus}", "-3", "--dir", "in"}, 1,
        "refused: address -3 is beyond");
    row("negative filter time",
        {"map", "set", "{mod}", "{func}", "{bus}", "{free}", "--dir", "in", "--filter-time", "-5"},
        2, "--filter-time must be a whole number of 0 or more, not '-5'");
    row("every bus listed", {"bus", "list"}, 0, "^FinsTcp +fins +off +no$");
    row("every bus in json", {"bus", "list", "--json"}, 0,
        "\"enabled\": false,\\s+\"mappable\": false,\\s+\"name\": \"ProfibusSlave\"");
    row("performance kept", {"bus", "performance", "eip", "off", "--current", "0"}, 1,
        "^kept: the switch word stays 0$");
    // A performance switch already as asked keeps the word and asks nothing; a bus without
    // signals and an option of the CSV import are usage errors that say so.
    row("performance already on", {"bus", "performance", "eip", "on", "--current", "4"}, 1,
        "^kept: the switch word stays 4$");
    row("performance off, another's", {"bus", "performance", "eip", "off", "--current", "1"}, 1,
        "^kept: the switch word stays 1$");
    row("bus without signals", {"map", "set", "{mod}", "{func}", "fins", "1", "--dir", "in"}, 2,
        "^fbcfg: bus fins carries no mapped signals; the buses that do are mtcp, ");
    row("delimiter without csv",
        {"import", "%CONTROLLER%/" + mapBackup, "--all", "--delimiter", ";"}, 2,
        "--delimiter applies to --csv only");
    row("export to stdout", {"export", "--csv", "-"}, 0,
        "\\A\\S+ rows written to standard output\n\\z");
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
    QVERIFY(pendantsim::copyFolder(sample, controller));
    const QString ws = workspaceIn(tmp);
    // A dry run leaves a working copy as it found it, too.
    const bool dryRun = args.contains("--dry-run");
    if (dryRun)
        QCOMPARE(runTool({"map", "list", "--controller", controller, "--workspace", ws}), 0);
    const QHash<QString, QByteArray> before = readTree(controller);
    const QHash<QString, QByteArray> workspace = readTree(ws);
    args.replaceInStrings("%CONTROLLER%", controller);
    args.replaceInStrings("%FAULTS%", sample + "-with-faults");
    args.replaceInStrings("%DATA%", FBC_TEST_DATA);
    QString out;
    QString err;
    const int exitCode =
            runTool(args << "--controller" << controller << "--workspace" << ws, &out, &err);
    const QString context = args.join(' ') + '\n' + out + err;
    QVERIFY2(exitCode == code, qPrintable(context));
    if (dryRun)
        QVERIFY(readTree(ws) == workspace);
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

// An export imported again changes nothing, with or without the byte-order mark.
void TstFbcfg::csvRoundTrip()
{
    for (const bool excel : {false, true}) {
        QTemporaryDir tmp;
        const QString controller = tmp.filePath("controller");
        QVERIFY(pendantsim::copyFolder(sample, controller));
        const QHash<QString, QByteArray> before = readTree(controller);
        const QString file = tmp.filePath("m.csv");
        const QStringList common{"--controller", controller, "--workspace", workspaceIn(tmp)};
        QStringList exportArgs = QStringList{"export", "--csv", file} + common;
        if (excel)
            exportArgs << "--excel"
                       << "--lang"
                       << "zh";
        QString out;
        QCOMPARE(runTool(exportArgs, &out), 0);
        QFile csv(file);
        QVERIFY(csv.open(QIODevice::ReadOnly));
        const QByteArray bytes = csv.readAll();
        QCOMPARE(bytes.startsWith("\xEF\xBB\xBF"), excel);
        QVERIFY(bytes.contains("module,function,function display name,type,bus,direction,address,"
                               "filter time,invert\r\n"));
        QCOMPARE(runTool(QStringList{"import", "--csv", file} + common, &out), 0);
        QVERIFY2(out.contains("nothing to import"), qPrintable(out));
        QVERIFY(readTree(controller) == before);
    }
}

// Each malformed or refused row is named by its line; nothing is written
// unless --skip-bad, and then only the good row.
void TstFbcfg::csvRefusedRows()
{
    QTemporaryDir tmp;
    const QString controller = tmp.filePath("controller");
    QVERIFY(pendantsim::copyFolder(sample, controller));
    const ConfigSnapshot s = ConfigSnapshot::load(controller, ConfigSnapshot::ControllerLayout);
    const auto unmapped = std::find_if(s.mappings.cbegin(), s.mappings.cend(), [](const auto &m) {
        return m.direction == BusInput && m.row.address == "-1";
    });
    if (unmapped == s.mappings.cend() || !vars.contains("free"))
        QSKIP("the sample has no unmapped input or no free address");
    const QString good = QStringLiteral("%1,%2,,%3,%4,in,%5,0,0")
                                 .arg(unmapped->row.module, unmapped->row.name, unmapped->row.type,
                                      vars.value("bus"), vars.value("free"));
    const QString m = vars.value("mod");
    const QString f = vars.value("func");
    // Line of each bad row -> what its message must say.
    const QList<QPair<QString, QString>> rows{
            {good, QString()},
            {m + ",no_such_function,,bool,mtcp,in,1,0,0", "declares no input function"},
            {m.chopped(1) + "," + f + ",,bool,mtcp,in,1,0,0",
             "no module '" + m.chopped(1) + "'; did you mean " + m + "?"},
            {m + "," + f + ",\"a,\"\"b\"\"\",bool,mtcp,up,1,0,0", "must be in or out, not 'up'"},
            {m + "," + f + ",,bool,mtcp,in,x1,0,0", "'x1' is not a number"},
            {m + "," + f + ",,bool,mtcp", "9 fields expected, found 5"},
            {m + "," + f + ",,bool,mtcp,in,99999,0,0", "outside"},
            {good, "is mapped as input already on line 2"},
            {m + "," + f + ",\"open,bool,mtcp,in,1,0,0", "quote opened on line 10 is not closed"},
    };
    QByteArray bytes = "module,function,function display name,type,bus,direction,address,filter "
                       "time,invert\r\n";
    for (const auto &row : rows)
        bytes += row.first.toUtf8() + "\n";
    QFile csv(tmp.filePath("bad.csv"));
    QVERIFY(csv.open(QIODevice::WriteOnly));
    csv.write(bytes);
    csv.close();
    const QHash<QString, QByteArray> before = readTree(controller);
    const QStringList common{"import",         "--csv",    csv.fileName(),
                             "--controller",   controller, "--workspace",
                             workspaceIn(tmp), "--prefer", "imported"};
    QString out;
    QString err;
    QCOMPARE(runTool(common, &out, &err), 1);
    for (int i = 1; i < rows.size(); ++i) {
        const QString named = QStringLiteral("bad.csv:%1: ").arg(i + 2);
        QVERIFY2(err.contains(named)
                         && err.section(named, 1).section('\n', 0, 0).contains(rows.at(i).second),
                 qPrintable(rows.at(i).second + '\n' + err));
    }
    QVERIFY(!err.contains("bad.csv:2:"));
    QVERIFY(readTree(controller) == before);

    QCOMPARE(runTool(QStringList(common) << "--skip-bad", &out, &err), 0);
    const ConfigSnapshot after = ConfigSnapshot::load(controller, ConfigSnapshot::ControllerLayout);
    QVERIFY(std::any_of(after.mappings.cbegin(), after.mappings.cend(), [&](const auto &a) {
        return a.row.name == unmapped->row.name && a.row.address == vars.value("free");
    }));
}

// The working copy against the controller: equal after a fetch, then the
// controller's edit shows, with exit status 1.
void TstFbcfg::diffWorkingCopy()
{
    QTemporaryDir tmp;
    const QString controller = tmp.filePath("controller");
    QVERIFY(pendantsim::copyFolder(sample, controller));
    const QStringList common{"--controller", controller, "--workspace", workspaceIn(tmp)};
    QString out;
    QCOMPARE(runTool(QStringList{"endian", "get"} + common), 0);
    QCOMPARE(runTool(QStringList{"diff"} + common, &out), 0);
    QCOMPARE(out.trimmed(), QString("no differences"));
    QFile slave(controller + "/fa/fbslave.cfgx");
    QVERIFY(slave.open(QIODevice::ReadOnly));
    QByteArray xml = slave.readAll();
    slave.close();
    const QByteArray other = xml.contains("little") ? "big" : "little";
    xml = QString::fromUtf8(xml)
                  .replace(QRegularExpression("<endian>[^<]*<"), "<endian>" + other + "<")
                  .toUtf8();
    QVERIFY(slave.open(QIODevice::WriteOnly | QIODevice::Truncate));
    slave.write(xml);
    slave.close();
    QCOMPARE(runTool(QStringList{"diff"} + common, &out), 1);
    QVERIFY2(out.contains("fa/fbslave.cfgx\n  ~ byte order: ") && out.contains("1 change"),
             qPrintable(out));
}

void TstFbcfg::csvRecords_data()
{
    QTest::addColumn<QStringList>("fields");
    QTest::addColumn<QString>("delimiter");
    // A file as others write it, read alone; empty: what the writer writes.
    QTest::addColumn<QByteArray>("file");
    QTest::newRow("one empty field") << QStringList{""} << "," << QByteArray();
    QTest::newRow("two empty fields") << QStringList{"", ""} << "," << QByteArray();
    QTest::newRow("quotes, delimiter, line break")
            << QStringList{"a \"b\"", "c,d", "e\r\nf"} << "," << QByteArray();
    QTest::newRow("semicolons") << QStringList{"a;b", "c,d", ""} << ";" << QByteArray();
    QTest::newRow("spaces kept, last field empty")
            << QStringList{"a ", " b", ""} << "," << QByteArray("\n\na , b,\r\n");
    QTest::newRow("no line end at the end")
            << QStringList{"a", "b"} << "," << QByteArray("a,\"b\"");
    QTest::newRow("quoted empty field, LF") << QStringList{""} << "," << QByteArray("\"\"\n");
}

// What the writer writes, the reader reads back field for field.
void TstFbcfg::csvRecords()
{
    QFETCH(QStringList, fields);
    QFETCH(QString, delimiter);
    QFETCH(QByteArray, file);
    const QByteArray bytes =
            file.isEmpty() ? csv::format(fields, delimiter.at(0)) + csv::format({"x"}) : file;
    const QVector<csv::Record> records = csv::parse(bytes, delimiter.at(0));
    QCOMPARE(records.size(), file.isEmpty() ? 2 : 1);
    QCOMPARE(records.at(0).fields, fields);
    QCOMPARE(records.at(0).error, QString());
}

void TstFbcfg::csvFromSpreadsheets_data()
{
    QTest::addColumn<QByteArray>("rows"); // after the header; ';' stands for the delimiter
    QTest::addColumn<QStringList>("args");
    QTest::addColumn<int>("code");
    QTest::addColumn<QString>("message");
    const QByteArray good = "{mod};{func};;BOOL;{BUS};IN;{free};0;0\r\n";
    QTest::newRow("semicolons, words in any case")
            << good << QStringList{"--delimiter", ";"} << 0 << "1 row to import";
    QTest::newRow("semicolons without --delimiter")
            << good << QStringList{} << 1
            << "bad.csv:1: the fields are separated by ';'; "
               "read the file with --delimiter ';'";
    QTest::newRow("NUL byte") << QByteArray("{mod};{func};;bool;{bus};in;1;0;\x00"
                                            "0\r\n",
                                            34)
                    + good << QStringList{"--delimiter", ";"}
                              << 1 << "bad.csv:2: a NUL byte: this is no text file";
    QTest::newRow("legacy encoding") << good + "{mod};{func};caf\xe9;bool;{bus};in;1;0;0\r\n"
                                     << QStringList{"--delimiter", ";"} << 1
                                     << "bad.csv:3: the file is not UTF-8 .*; save it as CSV UTF-8";
    QTest::newRow("two characters")
            << good << QStringList{"--delimiter", ";;"} << 2 << "--delimiter must be one character";
}

// What spreadsheets save: semicolons, other encodings, stray bytes, by line.
void TstFbcfg::csvFromSpreadsheets()
{
    QFETCH(QByteArray, rows);
    QFETCH(QStringList, args);
    QFETCH(int, code);
    QFETCH(QString, message);
    if (!vars.contains("free"))
        QSKIP("the sample gives no free address");
    for (auto it = vars.cbegin(); it != vars.cend(); ++it)
        rows.replace('{' + it.key().toUtf8() + '}', it.value().toUtf8());
    QTemporaryDir tmp;
    const QString controller = tmp.filePath("controller");
    QVERIFY(pendantsim::copyFolder(sample, controller));
    QFile csv(tmp.filePath("bad.csv"));
    QVERIFY(csv.open(QIODevice::WriteOnly));
    csv.write("module;function;function display name;type;bus;direction;address;filter "
              "time;invert\r\n"
              + rows);
    csv.close();
    QString out;
    QString err;
    const int exitCode = runTool(QStringList{"import", "--csv", csv.fileName(), "--controller",
                                             controller, "--prefer", "imported"}
                                         + args,
                                 &out, &err);
    QVERIFY2(exitCode == code, qPrintable(out + err));
    QVERIFY2(QRegularExpression(message).match(out + err).hasMatch(), qPrintable(out + err));
}

void TstFbcfg::checkOutput_data()
{
    QTest::addColumn<QStringList>("args");
    QTest::addColumn<int>("code");
    QTest::addColumn<QString>("pattern");
    const QString errors = "file-missing,file-unreadable,malformed-line,bus-unknown,bus-disabled,"
                           "address-out-of-range,address-collision,bool-in-group,group-overlap,"
                           "group-missing,function-unknown,type-mismatch,function-mapped-twice";
    const QString map = "application/fidbus/signal_mapping.cfg";
    QTest::newRow("absolute path") << QStringList{"check", "--controller", "%FAULTS%"} << 1
                                   << "^%FAULTS%/" + map
                    + ":10: error: address 256 is outside .* \\[address-out-of-range\\]$";
    QTest::newRow("relative path, chinese")
            << QStringList{"check", "--controller", "controller-with-faults", "--lang", "zh"} << 1
            << "^controller-with-faults/" + map + ":1: warning: .* \\[encoding\\]$";
    QTest::newRow("warnings pass")
            << QStringList{"check", "--controller", "%FAULTS%", "--ignore", errors} << 0
            << "^0 errors, 3 warnings \\(15 set aside with --ignore\\)$";
    QTest::newRow("werror") << QStringList{"check",    "--controller", "%FAULTS%",
                                           "--ignore", errors,         "--werror"}
                            << 1 << "^0 errors, 3 warnings";
    QTest::newRow("json types") << QStringList{"check", "--controller", "%FAULTS%", "--json"} << 1
                                << "\"errors\": 15,[\\s\\S]*\"address\": 256,[\\s\\S]*"
                                   "\"warnings\": 3";
    QTest::newRow("unknown kind") << QStringList{"check", "--ignore", "encodng"} << 2
                                  << "there is no kind 'encodng'; the kinds are file-missing, ";
    QTest::newRow("unknown format")
            << QStringList{"check", "--format", "xml"} << 2 << "text, json or sarif, not 'xml'";
    QTest::newRow("json and sarif") << QStringList{"check", "--json", "--format", "sarif"} << 2
                                    << "--json and --format sarif exclude each other";
    QTest::newRow("sarif elsewhere")
            << QStringList{"status", "--format", "sarif"} << 2 << "applies to fbcfg check only";
}

// Findings as compilers print them, from wherever the controller was named.
void TstFbcfg::checkOutput()
{
    QFETCH(QStringList, args);
    QFETCH(int, code);
    QFETCH(QString, pattern);
    const QString faults = QDir::cleanPath(sample + "-with-faults");
    args.replaceInStrings("%FAULTS%", faults);
    pattern.replace("%FAULTS%", QRegularExpression::escape(faults));
    QProcess tool;
    tool.setWorkingDirectory(QFileInfo(faults).path());
    tool.start(FBCFG_PATH, args);
    QVERIFY(tool.waitForFinished(60000));
    const QString out = QString::fromUtf8(tool.readAllStandardOutput())
            + QString::fromUtf8(tool.readAllStandardError());
    QVERIFY2(tool.exitCode() == code, qPrintable(out));
    QVERIFY2(QRegularExpression(pattern, QRegularExpression::MultilineOption).match(out).hasMatch(),
             qPrintable(out));
}

void TstFbcfg::folderOptions_data()
{
    QTest::addColumn<QStringList>("args");
    QTest::addColumn<QString>("message");
    QTest::newRow("empty controller") << QStringList{"check", "--controller", ""}
                                      << "--controller needs a folder, not an empty value";
    QTest::newRow("controller=") << QStringList{"check", "--controller="}
                                 << "--controller needs a folder, not an empty value";
    QTest::newRow("controller file") << QStringList{"status", "--controller", "%FILE%"}
                                     << "--controller %FILE%: not a folder";
    QTest::newRow("missing controller") << QStringList{"check", "--controller", "%MISSING%"}
                                        << "--controller %MISSING%: there is no such folder";
    QTest::newRow("controller without configuration")
            << QStringList{"map", "list", "--controller", "%EMPTY%"}
            << "--controller %EMPTY% holds no controller configuration: none of ";
    QTest::newRow("empty workspace")
            << QStringList{"status", "--workspace", ""} << "--workspace needs a folder";
    QTest::newRow("missing workspace") << QStringList{"status", "--workspace", "%MISSING%"}
                                       << "--workspace %MISSING%: there is no such folder";
    QTest::newRow("against empty folder") << QStringList{"diff", "--against", "%EMPTY%"}
                                          << "--against %EMPTY% holds no controller configuration";
    QTest::newRow("against file") << QStringList{"diff", "--against", "%FILE%"}
                                  << "--against %FILE%: not a folder";
    // The pendant's working files must not land among the controller's, nor the reverse.
    QTest::newRow("workspace in controller")
            << QStringList{"status", "--controller", "%CTL%", "--workspace", "%CTL%/application"}
            << "--workspace %CTL%/application lies in the controller folder %CTL%: ";
    QTest::newRow("controller in workspace")
            << QStringList{"status", "--controller", "%WS%/pendant/ctl", "--workspace", "%WS%"}
            << "--controller %WS%/pendant/ctl lies in %WS%/pendant, which the commands rewrite";
}

// A usage error that names the value; nothing is checked or listed instead.
void TstFbcfg::folderOptions()
{
    QFETCH(QStringList, args);
    QFETCH(QString, message);
    QTemporaryDir tmp;
    QVERIFY(QDir(tmp.path()).mkpath("empty/application/fidbus"));
    QFile file(tmp.filePath("file"));
    QVERIFY(file.open(QIODevice::WriteOnly));
    for (const char *controller : {"ctl", "ws/pendant/ctl"}) {
        QVERIFY(QDir(tmp.path()).mkpath(controller + QStringLiteral("/application/fidbus")));
        QFile list(tmp.filePath(controller) + "/application/fidbus/fieldbus.xml");
        QVERIFY(list.open(QIODevice::WriteOnly));
    }
    const QHash<QString, QString> values{{"%FILE%", file.fileName()},
                                         {"%MISSING%", tmp.filePath("missing")},
                                         {"%EMPTY%", tmp.filePath("empty")},
                                         {"%CTL%", tmp.filePath("ctl")},
                                         {"%WS%", tmp.filePath("ws")}};
    for (auto it = values.cbegin(); it != values.cend(); ++it) {
        args.replaceInStrings(it.key(), it.value());
        message.replace(it.key(), it.value());
    }
    QString out;
    QString err;
    QCOMPARE(runTool(args, &out, &err), 2);
    QVERIFY2(err.startsWith("fbcfg: " + message) && err.contains(" --help"), qPrintable(err));
    QCOMPARE(out, QString());
}

// A row without -FieldBus and a stray line would come back as invented rows:
// every command that writes the file refuses, naming both lines, and writes nothing.
void TstFbcfg::uncleanFileRefused()
{
    QTemporaryDir tmp;
    const QString controller = tmp.filePath("controller");
    QVERIFY(pendantsim::copyFolder(sample, controller));
    QFile map(controller + '/' + signalMap);
    QVERIFY(map.open(QIODevice::ReadOnly));
    QStringList lines = QString::fromUtf8(map.readAll()).split('\n');
    map.close();
    const int row = lines.indexOf(QRegularExpression("^\\s*-Module .*-FieldBus \\S+.*"));
    QVERIFY(row > 0);
    lines[row].remove(QRegularExpression("-FieldBus \\S+"));
    lines.insert(row + 1, "a stray line");
    QVERIFY(map.open(QIODevice::WriteOnly | QIODevice::Truncate));
    map.write(lines.join('\n').toUtf8());
    map.close();
    const QHash<QString, QByteArray> before = readTree(controller);
    const QString path = QDir::cleanPath(controller + '/' + signalMap);
    for (const char *extra : {"", "--dry-run"}) {
        QStringList args{"map",   "unset", vars.value("mod"), vars.value("func"),
                         "--dir", "in",    "--controller",    controller};
        if (*extra)
            args << extra;
        QString err;
        QCOMPARE(runTool(args, nullptr, &err), 1);
        for (const int line : {row + 1, row + 2})
            QVERIFY2(err.contains(QStringLiteral("%1:%2: error: ").arg(path).arg(line)),
                     qPrintable(err));
        QVERIFY2(err.contains("refused: nothing was written") && err.contains("fbcfg check"),
                 qPrintable(err));
        QVERIFY(readTree(controller) == before);
    }
}

// Writers of one folder take turns: whatever exits 0 has its change in the
// file, and a writer that cannot get the lock in time names who holds it.
void TstFbcfg::concurrentWriters()
{
    const ConfigSnapshot s = ConfigSnapshot::load(sample, ConfigSnapshot::ControllerLayout);
    const auto other = std::find_if(s.mappings.cbegin(), s.mappings.cend(), [&](const auto &m) {
        return m.direction == BusInput && m.row.fieldBus == vars.value("bus")
                && m.row.name != vars.value("func") && m.row.address != "-1";
    });
    if (!vars.contains("free") || other == s.mappings.cend())
        QSKIP("the sample has no second mapped input on the bus");
    for (int round = 0; round < 5; ++round) {
        QTemporaryDir tmp;
        const QString controller = tmp.filePath("controller");
        QVERIFY(pendantsim::copyFolder(sample, controller));
        const QStringList common{"--dir", "in", "--controller", controller, "--timeout", "60"};
        QProcess set;
        QProcess unset;
        set.start(FBCFG_PATH,
                  QStringList{"map", "set", vars.value("mod"), vars.value("func"),
                              vars.value("bus"), vars.value("free")}
                          + common);
        unset.start(FBCFG_PATH,
                    QStringList{"map", "unset", other->row.module, other->row.name} + common);
        QVERIFY(set.waitForFinished(60000) && unset.waitForFinished(60000));
        const ConfigSnapshot after =
                ConfigSnapshot::load(controller, ConfigSnapshot::ControllerLayout);
        const auto addressOf = [&after](const QString &module, const QString &name) {
            for (const SnapshotMapping &m : after.mappings) {
                if (m.direction == BusInput && m.row.module == module && m.row.name == name)
                    return m.row.address;
            }
            return QStringLiteral("-1");
        };
        QCOMPARE(set.exitCode(), 0);
        QCOMPARE(unset.exitCode(), 0);
        QCOMPARE(addressOf(vars.value("mod"), vars.value("func")), vars.value("free"));
        QCOMPARE(addressOf(other->row.module, other->row.name), QString("-1"));
    }

    QTemporaryDir tmp;
    const QString controller = tmp.filePath("controller");
    QVERIFY(pendantsim::copyFolder(sample, controller));
    pendantsim::FolderLock held(controller);
    QVERIFY(held.tryLock(0));
    QString err;
    QCOMPARE(runTool({"map", "unset", other->row.module, other->row.name, "--dir", "in",
                      "--controller", controller, "--timeout", "0.5"},
                     nullptr, &err),
             2);
    QVERIFY2(err.contains(QRegularExpression(
                     "^fbcfg: busy: .*controller is being changed by pid "
                             + QString::number(QCoreApplication::applicationPid()),
                     QRegularExpression::MultilineOption)),
             qPrintable(err));
}

void TstFbcfg::cleanEnds_data()
{
    QTest::addColumn<int>("signal");
    QTest::newRow("SIGTERM") << int(SIGTERM);
    QTest::newRow("SIGINT") << int(SIGINT);
    QTest::newRow("SIGHUP") << int(SIGHUP);
    QTest::newRow("closed pipe") << 0;
}

// The temporary workspace goes however the tool ends: killed while it waits
// for a folder's lock, or writing to a reader that has gone.
void TstFbcfg::cleanEnds()
{
    QFETCH(int, signal);
    QTemporaryDir tmp;
    const QString controller = tmp.filePath("controller");
    QVERIFY(pendantsim::copyFolder(sample, controller));
    QVERIFY(QDir(tmp.path()).mkdir("temp"));
    // The tool's temporary folders, and the lock files both sides must agree on.
    const QByteArray previousTemp = qgetenv("TMPDIR");
    qputenv("TMPDIR", tmp.filePath("temp").toUtf8());
    auto lock = std::make_unique<pendantsim::FolderLock>(controller);
    QVERIFY(lock->tryLock(0));
    QProcess tool;
    tool.start(FBCFG_PATH,
               {"map", "unset", vars.value("mod"), vars.value("func"), "--dir", "in",
                "--controller", controller});
    const auto workspaces = [&tmp] {
        return QDir(tmp.filePath("temp")).entryList({"fbcfg-??????"}, QDir::Dirs);
    };
    // It says so while it waits for the lock, its workspace made.
    QString err;
    QTRY_VERIFY((err += QString::fromUtf8(tool.readAllStandardError())).contains("waiting for"));
    QCOMPARE(workspaces().size(), 1);
    if (signal) {
        QCOMPARE(::kill(pid_t(tool.processId()), signal), 0);
    } else {
        tool.closeReadChannel(QProcess::StandardOutput);
        lock.reset();
    }
    QVERIFY(tool.waitForFinished(30000));
    if (previousTemp.isEmpty())
        qunsetenv("TMPDIR");
    else
        qputenv("TMPDIR", previousTemp);
    QCOMPARE(workspaces(), QStringList());
}

QTEST_GUILESS_MAIN(TstFbcfg)
#include "tst_fbcfg.moc"
