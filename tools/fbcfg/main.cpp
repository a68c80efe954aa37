#include "Commands.h"
#include "Output.h"
#include "Session.h"

#include <fieldbusconfig/ConfigCheck.h>
#include <fieldbusconfig/FieldbusConfigVersion.h>

#include <QCommandLineParser>
#include <QFileInfo>
#include <QRegularExpression>
#include <QTranslator>

#include <algorithm>

namespace {

struct OptionInfo
{
    const char *name;
    const char *valueName; // null for a switch
    const char *description;
};

const OptionInfo globalOptions[] = {
        {"controller", "DIR",
         QT_TRANSLATE_NOOP("fbcfg",
                           "Work on the controller whose files are in DIR, an existing folder "
                           "holding application/fidbus (default, only when the option is not "
                           "given: a fresh copy of the bundled sample controller).")},
        {"workspace", "DIR",
         QT_TRANSLATE_NOOP("fbcfg",
                           "Keep the pendant side in DIR: DIR/pendant, the library's folder "
                           "DIR/Application/fieldbus and, without --controller, a fresh copy "
                           "of the sample in DIR/Controller; DIR must exist (default: a "
                           "temporary folder, removed at exit, also on SIGINT, SIGTERM, SIGHUP "
                           "and a closed pipe).")},
        {"lang", "en|zh",
         QT_TRANSLATE_NOOP("fbcfg",
                           "Language of module and function names and of messages "
                           "(default en).")},
        {"format", "text|json|sarif",
         QT_TRANSLATE_NOOP("fbcfg",
                           "Output format: text (default), json (listing commands, check, diff "
                           "and dry runs) or sarif (check only, SARIF 2.1.0 for CI).")},
        {"json", nullptr, QT_TRANSLATE_NOOP("fbcfg", "The same as --format json.")},
        {"yes", nullptr, QT_TRANSLATE_NOOP("fbcfg", "Answer the library's questions with yes.")},
        {"no", nullptr, QT_TRANSLATE_NOOP("fbcfg", "Answer the library's questions with no.")},
        {"timeout", "SECONDS",
         QT_TRANSLATE_NOOP("fbcfg",
                           "Wait at most SECONDS for each answer of the library, and for "
                           "another command that is changing the same folder (default 30).")},
        {"verbose", nullptr, QT_TRANSLATE_NOOP("fbcfg", "Show the library's diagnostics.")},
        {"help", nullptr, QT_TRANSLATE_NOOP("fbcfg", "Show help for the tool or a command.")},
        {"version", nullptr, QT_TRANSLATE_NOOP("fbcfg", "Show the version.")},
};

const OptionInfo commandOptions[] = {
        {"current", "MASK",
         QT_TRANSLATE_NOOP("fbcfg",
                           "The switch word in force now, decimal or 0x hexadecimal "
                           "(default 0).")},
        {"bus", "BUS",
         QT_TRANSLATE_NOOP("fbcfg",
                           "Only this bus: a short name such as mtcp; group_mtcp for the "
                           "group signals of mtcp.")},
        {"dir", "in|out",
         QT_TRANSLATE_NOOP("fbcfg", "Direction: in (signals the controller receives) or out.")},
        {"module", "MODULE",
         QT_TRANSLATE_NOOP("fbcfg", "Only this module (English or Chinese name).")},
        {"filter-time", "N",
         QT_TRANSLATE_NOOP("fbcfg",
                           "Filter time of a bool input (default: kept, or 0 for a new "
                           "row).")},
        {"invert", "0|1",
         QT_TRANSLATE_NOOP("fbcfg",
                           "Inversion of a bool signal (default: kept, or 0 for a new "
                           "row).")},
        {"type", "int|float|string", QT_TRANSLATE_NOOP("fbcfg", "Value type of the group.")},
        {"modules", "A,B",
         QT_TRANSLATE_NOOP("fbcfg",
                           "Import the rows of these modules (English or Chinese names).")},
        {"all", nullptr,
         QT_TRANSLATE_NOOP("fbcfg",
                           "Import the rows of every module except the process-variable "
                           "layout.")},
        {"prefer", "present|imported",
         QT_TRANSLATE_NOOP("fbcfg",
                           "For functions that both sides map differently: keep the present "
                           "mapping or take the imported one (default: ask on a terminal).")},
        {"dry-run", nullptr,
         QT_TRANSLATE_NOOP("fbcfg",
                           "Print the changes the command would make (as fbcfg diff does) and "
                           "change nothing, neither the working copy nor the controller.")},
        {"werror", nullptr,
         QT_TRANSLATE_NOOP("fbcfg", "Count warnings as errors for the exit status.")},
        {"ignore", "KIND[,KIND]",
         QT_TRANSLATE_NOOP("fbcfg",
                           "Set findings of these kinds aside (fbcfg check --help lists the "
                           "kinds); the summary, or the JSON's \"ignored\", says how many; "
                           "SARIF leaves them out.")},
        {"against", "DIR",
         QT_TRANSLATE_NOOP("fbcfg",
                           "Compare the controller with the configuration in DIR (a controller "
                           "folder or a pendant working folder) instead of the working copy "
                           "with the controller.")},
        {"csv", "FILE",
         QT_TRANSLATE_NOOP("fbcfg", "The CSV file of mappings; - is standard output (export).")},
        {"delimiter", "CHAR",
         QT_TRANSLATE_NOOP("fbcfg",
                           "The character between fields (default ,); ';' for what "
                           "spreadsheets save in locales with a decimal comma.")},
        {"excel", nullptr,
         QT_TRANSLATE_NOOP("fbcfg",
                           "Begin the file with the byte-order mark that spreadsheet programs "
                           "need to show Chinese names.")},
        {"skip-bad", nullptr,
         QT_TRANSLATE_NOOP("fbcfg",
                           "Import the good rows even when some rows are refused (default: "
                           "nothing is written then).")},
};

struct CommandInfo
{
    const char *group;
    const char *sub; // null for a one-word command
    const char *arguments;
    const char *summary;
    const char *details; // may be null
    const char *options; // names separated by blanks
    int minArgs;
    int maxArgs;
    bool json;
    Handler handler;
    // Writes and sends: takes --dry-run.
    bool dryRun = false;
    // Controller path of the file it writes back (see Settings::writes).
    const QString *writes = nullptr;
};

const CommandInfo commands[] = {
        {"status", nullptr, "",
         QT_TRANSLATE_NOOP("fbcfg",
                           "Show the buses, the modules, the mapped signals and groups and "
                           "the user IO areas."),
         nullptr, "", 0, 0, true, runStatus},
        {"bus", "list", "",
         QT_TRANSLATE_NOOP("fbcfg", "List the fieldbuses and whether each is on."), nullptr, "", 0,
         0, true, runBusList},
        {"bus", "enable", "SHORT", QT_TRANSLATE_NOOP("fbcfg", "Switch a bus on."), nullptr,
         "dry-run", 1, 1, false, runBusSwitch, true, &RDE_FIELDBUS_XML},
        {"bus", "disable", "SHORT",
         QT_TRANSLATE_NOOP("fbcfg", "Switch a bus off; its mapped signals stay mapped."), nullptr,
         "dry-run", 1, 1, false, runBusSwitch, true, &RDE_FIELDBUS_XML},
        {"bus", "performance", "SHORT on|off [--current MASK]",
         QT_TRANSLATE_NOOP("fbcfg",
                           "Print the new communication-performance switch word when the "
                           "switch of a bus is turned on or off."),
         QT_TRANSLATE_NOOP("fbcfg",
                           "Only one protocol may hold the switch; the library asks before "
                           "taking it from another one (answer with --yes or --no). Nothing is "
                           "written: the switch word is not kept in the files this tool "
                           "handles. Exit status 0 and the new word when it differs from "
                           "--current; 1 and \"kept: the switch word stays MASK\" when it does "
                           "not: the bus's switch already so (on: MASK is the bus's bit alone; "
                           "off: the bus's bit is clear), a MASK of several switches, or taking "
                           "the switch from another protocol declined."),
         "current", 2, 2, false, runBusPerformance},
        {"map", "list", "[--bus BUS] [--dir in|out] [--module MODULE]",
         QT_TRANSLATE_NOOP("fbcfg", "List the mapped signals."), nullptr, "bus dir module", 0, 0,
         true, runMapList},
        {"map", "set", "MODULE FUNCTION BUS ADDRESS --dir in|out [--filter-time N] [--invert 0|1]",
         QT_TRANSLATE_NOOP("fbcfg",
                           "Map a function of a module to an address of a bus, or to a group "
                           "(BUS group_SHORT, ADDRESS the group number)."),
         QT_TRANSLATE_NOOP("fbcfg",
                           "The change is checked as the pendant checks it: the bus must be "
                           "on, the address within the bus's area, free, and for a bool "
                           "signal outside every group. A refused change writes nothing and "
                           "ends with exit status 1."),
         "dir filter-time invert dry-run", 4, 4, false, runMapSet, true, &RDE_SIGNAL_MAP_CFG},
        {"map", "unset", "MODULE FUNCTION --dir in|out",
         QT_TRANSLATE_NOOP("fbcfg", "Remove the mapping of a function."), nullptr, "dir dry-run", 2,
         2, false, runMapUnset, true, &RDE_SIGNAL_MAP_CFG},
        {"group", "list", "[--bus BUS] [--dir in|out]",
         QT_TRANSLATE_NOOP("fbcfg", "List the group signals' groups."), nullptr, "bus dir", 0, 0,
         true, runGroupList},
        {"group", "set", "BUS NUMBER FIRST LAST --dir in|out --type int|float|string",
         QT_TRANSLATE_NOOP("fbcfg",
                           "Define or change group NUMBER of a bus over the bool addresses "
                           "FIRST to LAST."),
         QT_TRANSLATE_NOOP("fbcfg",
                           "The range must hold no mapped bool signal and overlap no other "
                           "group of the bus."),
         "dir type dry-run", 4, 4, false, runGroupSet, true, &RDE_GROUP_CFG},
        {"group", "delete", "BUS NUMBER --dir in|out --type int|float|string",
         QT_TRANSLATE_NOOP("fbcfg", "Delete a group that no mapped signal uses."), nullptr,
         "dir type dry-run", 2, 2, false, runGroupDelete, true, &RDE_GROUP_CFG},
        {"backup", nullptr, "",
         QT_TRANSLATE_NOOP("fbcfg", "Copy the signal mapping to the controller's mapping backup."),
         nullptr, "", 0, 0, false, runBackup, false, &RDE_SIGNAL_MAP_BACKUP_CFG},
        {"import", nullptr,
         "FILE (--modules A,B | --all) | --csv FILE [--skip-bad] [--prefer present|imported]",
         QT_TRANSLATE_NOOP("fbcfg",
                           "Import the mappings of some modules from a saved mapping file, or "
                           "mappings from a CSV file."),
         QT_TRANSLATE_NOOP("fbcfg",
                           "Rows the controller cannot carry are dropped and reported. The "
                           "present mapping is backed up first. The new mapping takes effect "
                           "after a controller restart. A CSV file (as fbcfg export writes it) "
                           "goes through the same rules; a refused CSV row is named by its "
                           "line, and then nothing is written unless --skip-bad is given."),
         "modules all prefer csv delimiter skip-bad dry-run", 0, 1, false, runImport, true,
         &RDE_SIGNAL_MAP_CFG},
        {"describe", "list", "", QT_TRANSLATE_NOOP("fbcfg", "List the users' signal descriptions."),
         nullptr, "", 0, 0, true, runDescribeList},
        {"describe", "set", "NAME[INDEX] TEXT",
         QT_TRANSLATE_NOOP("fbcfg",
                           "Describe a fieldbus variable; an empty TEXT removes the "
                           "description."),
         QT_TRANSLATE_NOOP("fbcfg",
                           "The file is written without escaping, so TEXT must not hold "
                           "\"&\", \"<\" or \">\" (they are refused), and NAME none of \" < "
                           "[ ]."),
         "dry-run", 2, 2, false, runDescribeSet, true, &RDE_USER_DES_XML},
        {"endian", "get", "",
         QT_TRANSLATE_NOOP("fbcfg", "Print the byte order of the fieldbus slave."), nullptr, "", 0,
         0, true, runEndianGet},
        {"endian", "set", "big|little",
         QT_TRANSLATE_NOOP("fbcfg", "Set the byte order of the fieldbus slave."), nullptr,
         "dry-run", 1, 1, false, runEndianSet, true, &RDE_FBSLAVE_CFGX},
        {"check", nullptr, "",
         QT_TRANSLATE_NOOP("fbcfg", "Check the whole configuration and list what is wrong."),
         QT_TRANSLATE_NOOP("fbcfg",
                           "Reads every file of the controller folder as it lies (a missing or "
                           "broken file is a finding too) and prints one line per finding, as "
                           "compilers do: PATH:LINE[:COLUMN]: error: MESSAGE [KIND], or "
                           "warning:, or PATH: error: ... for a file as a whole. PATH is the "
                           "--controller folder as given joined with the file's path (without "
                           "--controller, the bundled sample's), so editors and CI open it "
                           "from the current folder; the words error and warning stay English "
                           "in every language. A summary follows: N errors, M warnings, or no "
                           "problems found. --format json or sarif (SARIF 2.1.0) for machines. "
                           "Exit status 1 when there are errors (with --werror, also "
                           "warnings), 0 otherwise."),
         "werror ignore", 0, 0, true, runCheck},
        {"diff", nullptr, "[--against DIR]",
         QT_TRANSLATE_NOOP("fbcfg",
                           "Show how the pendant's working copy differs from the controller, "
                           "or the controller from another folder."),
         QT_TRANSLATE_NOOP("fbcfg",
                           "Files are compared by what they mean, not as text: mappings, "
                           "groups, buses, areas, descriptions and the byte order. Changes are "
                           "grouped by file: + added, - removed, ~ changed, with the lines on "
                           "each side. Exit status 0 when equal, 1 when they differ."),
         "against", 0, 0, true, runDiff},
        {"export", nullptr, "--csv FILE|- [--bus BUS] [--dir in|out] [--excel] [--delimiter C]",
         QT_TRANSLATE_NOOP("fbcfg", "Write the mapped signals to a CSV file."),
         QT_TRANSLATE_NOOP("fbcfg",
                           "Columns: module, function, function display name, type, bus, "
                           "direction, address, filter time, invert; UTF-8 with RFC 4180 "
                           "quoting. --csv - writes to standard output. fbcfg import --csv "
                           "reads the file back (with the same --delimiter)."),
         "csv delimiter bus dir excel", 0, 0, false, runExport},
};

QString words(const CommandInfo &c)
{
    return c.sub ? QStringLiteral("%1 %2").arg(QLatin1String(c.group), QLatin1String(c.sub))
                 : QLatin1String(c.group);
}

const OptionInfo *findOption(const QString &name)
{
    for (const OptionInfo &o : globalOptions) {
        if (name == QLatin1String(o.name))
            return &o;
    }
    for (const OptionInfo &o : commandOptions) {
        if (name == QLatin1String(o.name))
            return &o;
    }
    return nullptr;
}

QStringList optionNames(const CommandInfo &c)
{
    return QString::fromLatin1(c.options).split(QLatin1Char(' '), Qt::SkipEmptyParts);
}

// ---- help ----

QStringList wrapped(const QString &text, int width)
{
    QStringList lines;
    QString current;
    for (const QString &word : text.split(QLatin1Char(' '), Qt::SkipEmptyParts)) {
        if (!current.isEmpty() && current.size() + 1 + word.size() > width) {
            lines.append(current);
            current.clear();
        }
        current += (current.isEmpty() ? QString() : QStringLiteral(" ")) + word;
    }
    if (!current.isEmpty())
        lines.append(current);
    return lines;
}

void printEntry(const QString &head, const QString &text)
{
    const int column = 26;
    const QStringList lines = wrapped(text, 78 - column);
    QString first = QStringLiteral("  ") + head;
    if (first.size() + 2 > column) {
        Output::line(first);
        first.clear();
    }
    for (int i = 0; i < lines.size(); ++i) {
        const QString lead = i == 0 && !first.isEmpty() ? first : QString();
        Output::line(lead.leftJustified(column) + lines.at(i));
    }
}

void printParagraph(const QString &text)
{
    for (const QString &line : wrapped(text, 78))
        Output::line(line);
}

void printOptions(const QString &title, const QStringList &names)
{
    if (names.isEmpty())
        return;
    Output::line();
    Output::line(title);
    for (const QString &name : names) {
        const OptionInfo *o = findOption(name);
        QString head = name == QLatin1String("help") ? QStringLiteral("-h, --help")
                                                     : QStringLiteral("--") + name;
        if (o->valueName)
            head += QLatin1Char(' ') + QLatin1String(o->valueName);
        printEntry(head, Fbcfg::tr(o->description));
    }
}

QStringList globalOptionNames()
{
    QStringList names;
    for (const OptionInfo &o : globalOptions)
        names.append(QLatin1String(o.name));
    return names;
}

void printToolHelp()
{
    Output::line(Fbcfg::tr("Usage: fbcfg [options] COMMAND [arguments]"));
    Output::line();
    printParagraph(
            Fbcfg::tr("Does from a terminal what the pendant's fieldbus screens do, on a "
                      "controller whose files are in a folder. Options may stand before or after "
                      "the command."));
    Output::line();
    Output::line(Fbcfg::tr("Commands:"));
    for (const CommandInfo &c : commands)
        printEntry(words(c), Fbcfg::tr(c.summary));
    printOptions(Fbcfg::tr("Options:"), globalOptionNames());
    Output::line();
    printParagraph(
            Fbcfg::tr("Run \"fbcfg COMMAND --help\" for the arguments and options of a command. "
                      "Exit status: 0 done, 1 change refused or check findings, 2 bad usage, "
                      "unreadable controller or failed transfer."));
}

void printCommandHelp(const QString &group, const QString &sub)
{
    QStringList options;
    QString usage;
    int shown = 0;
    for (const CommandInfo &c : commands) {
        if (group != QLatin1String(c.group) || (!sub.isEmpty() && sub != QLatin1String(c.sub)))
            continue;
        for (const QString &name : optionNames(c)) {
            if (!options.contains(name))
                options.append(name);
        }
        const QString synopsis = QStringLiteral("fbcfg [options] %1 %2")
                                         .arg(words(c), QLatin1String(c.arguments))
                                         .trimmed();
        if (shown++ == 0)
            Output::line(Fbcfg::tr("Usage:"));
        Output::line(QStringLiteral("  ") + synopsis);
        for (const QString &line : wrapped(Fbcfg::tr(c.summary), 72))
            Output::line(QStringLiteral("      ") + line);
        if (!sub.isEmpty() || !c.sub) {
            if (c.details) {
                Output::line();
                printParagraph(Fbcfg::tr(c.details));
            }
            // The kinds --ignore takes, from the check itself so that they cannot drift.
            if (c.handler == runCheck) {
                Output::line();
                Output::line(Fbcfg::tr("Kinds of findings:"));
                for (const CheckKind &kind : ConfigCheck::kinds())
                    printEntry(kind.id,
                               QStringLiteral("%1: %2").arg(kind.severity, kind.description));
            }
        }
    }
    printOptions(Fbcfg::tr("Options of the command:"), options);
    printOptions(Fbcfg::tr("Options of every command:"), globalOptionNames());
}

// ---- parsing ----

// "-3" is a number, never an option: an address or group number may be negative.
bool isNegativeNumber(const QString &argument)
{
    static const QRegularExpression negative(QStringLiteral("^-[0-9]+$"));
    return negative.match(argument).hasMatch();
}

// The arguments with negative numbers after "--" (in their order among the
// other positional arguments), so that the parser takes them as arguments.
QStringList negativeNumbersAsArguments(const QStringList &arguments)
{
    QStringList options{arguments.value(0)};
    QStringList positional;
    bool moved = false;
    for (int i = 1; i < arguments.size(); ++i) {
        const QString &a = arguments.at(i);
        if (a == QLatin1String("--")) {
            positional += arguments.mid(i + 1);
            break;
        }
        if (isNegativeNumber(a) || !a.startsWith(QLatin1Char('-')) || a.size() == 1) {
            moved |= isNegativeNumber(a);
            positional.append(a);
            continue;
        }
        options.append(a);
        const OptionInfo *o = findOption(a.mid(a.startsWith(QLatin1String("--")) ? 2 : 1));
        if (o && o->valueName && !a.contains(QLatin1Char('=')) && i + 1 < arguments.size())
            options.append(arguments.at(++i));
    }
    return moved ? options + QStringList{QStringLiteral("--")} + positional : arguments;
}

struct Scan
{
    QStringList words; // positional arguments
    QString lang;
    bool help = false;
    bool version = false;
    bool verbose = false;
};

// A first look that knows which options take a value, to find the command
// wherever the options stand.
Scan scan(const QStringList &arguments)
{
    Scan s;
    for (int i = 1; i < arguments.size(); ++i) {
        const QString &a = arguments.at(i);
        if (a == QLatin1String("--")) {
            s.words += arguments.mid(i + 1);
            break;
        }
        if (!a.startsWith(QLatin1Char('-')) || a.size() == 1 || isNegativeNumber(a)) {
            s.words.append(a);
            continue;
        }
        const QString name =
                a.mid(a.startsWith(QLatin1String("--")) ? 2 : 1).section(QLatin1Char('='), 0, 0);
        const bool inlineValue = a.contains(QLatin1Char('='));
        const OptionInfo *o = findOption(name);
        QString value;
        if (o && o->valueName && !inlineValue && i + 1 < arguments.size())
            value = arguments.at(++i);
        else if (inlineValue)
            value = a.section(QLatin1Char('='), 1);
        if (name == QLatin1String("lang"))
            s.lang = value;
        s.help |= name == QLatin1String("help") || name == QLatin1String("h");
        s.version |= name == QLatin1String("version");
        s.verbose |= name == QLatin1String("verbose");
    }
    return s;
}

void addOption(QCommandLineParser &parser, const OptionInfo &o)
{
    QStringList names{QLatin1String(o.name)};
    if (names.constFirst() == QLatin1String("help"))
        names.prepend(QStringLiteral("h"));
    if (o.valueName)
        parser.addOption(
                QCommandLineOption(names, Fbcfg::tr(o.description), QLatin1String(o.valueName)));
    else
        parser.addOption(QCommandLineOption(names, Fbcfg::tr(o.description)));
}

// The library installs its own translation when the pendant's language is Chinese.
// The library's own texts (the diff's, say) are needed before any manager exists too.
void loadTranslation(QCoreApplication &app, QTranslator &translator, QTranslator &library)
{
    if (translator.load(QStringLiteral(":/translations/fbcfg_zh_CN.qm")))
        app.installTranslator(&translator);
    if (library.load(QStringLiteral(":/translations/fieldbusconfig_zh_CN.qm")))
        app.installTranslator(&library);
}

// The files of which a folder must hold one to count as a configuration.
QStringList configurationFiles()
{
    return {RDE_FIELDBUS_XML, RDE_FIELDBUS_CFG_XML, RDE_FUNC_INFO_XML, RDE_SIGNAL_MAP_CFG,
            RDE_GROUP_CFG};
}

bool holdsConfiguration(const QString &dir, ConfigSnapshot::Layout layout)
{
    ConfigSnapshot probe;
    probe.root = dir;
    probe.layout = layout;
    const QStringList files = configurationFiles();
    return std::any_of(files.cbegin(), files.cend(), [&probe](const QString &file) {
        return QFileInfo(probe.fixedFilePath(file)).isFile();
    });
}

// A folder option must name an existing folder, and a configuration where one
// is read from it: an unset $CTL or a slip must never fall back on the sample.
int checkFolderOption(const Call &call, const char *name, bool controllerOnly, bool configuration)
{
    const QString option = QLatin1String(name);
    if (!call.isSet(option))
        return ExitOk;
    const QString value = call.value(option);
    const QFileInfo info(value);
    if (value.isEmpty())
        return usageError(call, Fbcfg::tr("--%1 needs a folder, not an empty value").arg(option));
    if (!info.exists())
        return usageError(call, Fbcfg::tr("--%1 %2: there is no such folder").arg(option, value));
    if (!info.isDir())
        return usageError(call, Fbcfg::tr("--%1 %2: not a folder").arg(option, value));
    if (configuration && !holdsConfiguration(value, ConfigSnapshot::ControllerLayout)
        && (controllerOnly || !holdsConfiguration(value, ConfigSnapshot::PendantLayout))) {
        QStringList expected;
        for (const QString &file : configurationFiles())
            expected.append(file.mid(1));
        return usageError(call,
                          Fbcfg::tr("--%1 %2 holds no controller configuration: none of %3")
                                  .arg(option, value, expected.join(QStringLiteral(", "))));
    }
    return ExitOk;
}

// Whether `inner` is `outer` or lies in it; both folders exist.
bool isWithin(const QString &inner, const QString &outer)
{
    const QString in = QFileInfo(inner).canonicalFilePath();
    const QString out = QFileInfo(outer).canonicalFilePath();
    return in == out || in.startsWith(out + QLatin1Char('/'));
}

// The workspace's pendant and Application folders are rewritten by every
// command: they must not be, or hold, the controller's files.
int checkFoldersApart(const Call &call)
{
    const QString controller = call.value(QStringLiteral("controller"));
    const QString workspace = call.value(QStringLiteral("workspace"));
    if (controller.isEmpty() || workspace.isEmpty())
        return ExitOk;
    if (isWithin(workspace, controller))
        return usageError(call, Fbcfg::tr("--workspace %1 lies in the controller folder %2: the "
                                          "pendant's working files would be written among the "
                                          "controller's; give a folder outside it")
                                        .arg(workspace, controller));
    for (const char *sub : {"/pendant", "/Application"}) {
        const QString rewritten = workspace + QLatin1String(sub);
        if (QFileInfo(rewritten).isDir() && isWithin(controller, rewritten))
            return usageError(call, Fbcfg::tr("--controller %1 lies in %2, which the commands "
                                              "rewrite; give a workspace that does not hold it")
                                            .arg(controller, rewritten));
    }
    return ExitOk;
}

int settle(const Call &call, const CommandInfo &c, Settings &settings)
{
    const QCommandLineParser &parser = *call.parser;
    if (call.args.size() < c.minArgs) {
        const QStringList expected = QString::fromLatin1(c.arguments).split(QLatin1Char(' '));
        return usageError(call,
                          Fbcfg::tr("missing argument %1").arg(expected.value(call.args.size())));
    }
    if (call.args.size() > c.maxArgs)
        return usageError(call, Fbcfg::tr("unexpected argument '%1'").arg(call.args.at(c.maxArgs)));
    const QString format = parser.isSet(QStringLiteral("format"))
            ? parser.value(QStringLiteral("format"))
            : parser.isSet(QStringLiteral("json")) ? QStringLiteral("json")
                                                   : QStringLiteral("text");
    if (format != QLatin1String("text") && format != QLatin1String("json")
        && format != QLatin1String("sarif"))
        return usageError(call,
                          Fbcfg::tr("--format must be text, json or sarif, not '%1'").arg(format));
    if (parser.isSet(QStringLiteral("json")) && format != QLatin1String("json"))
        return usageError(call, Fbcfg::tr("--json and --format %1 exclude each other").arg(format));
    if (format == QLatin1String("json") && !c.json
        && !(c.dryRun && parser.isSet(QStringLiteral("dry-run"))))
        return usageError(call, Fbcfg::tr("--json does not apply to fbcfg %1").arg(call.name));
    if (format == QLatin1String("sarif") && c.handler != runCheck)
        return usageError(call, Fbcfg::tr("--format sarif applies to fbcfg check only"));
    if (parser.isSet(QStringLiteral("yes")) && parser.isSet(QStringLiteral("no")))
        return usageError(call, Fbcfg::tr("--yes and --no exclude each other"));
    if (const int rc = checkFolderOption(call, "controller", true, true))
        return rc;
    if (const int rc = checkFolderOption(call, "workspace", false, false))
        return rc;
    if (const int rc = checkFolderOption(call, "against", false, true))
        return rc;
    if (const int rc = checkFoldersApart(call))
        return rc;
    settings.controller = parser.value(QStringLiteral("controller"));
    if (c.writes)
        settings.writes = *c.writes;
    settings.workspace = parser.value(QStringLiteral("workspace"));
    settings.json = format == QLatin1String("json");
    settings.sarif = format == QLatin1String("sarif");
    settings.werror = parser.isSet(QStringLiteral("werror"));
    settings.answer = parser.isSet(QStringLiteral("yes")) ? MsgBox::Yes
            : parser.isSet(QStringLiteral("no"))          ? MsgBox::No
                                                          : 0;
    if (parser.isSet(QStringLiteral("lang"))) {
        const QString lang = parser.value(QStringLiteral("lang"));
        if (lang != QLatin1String("en") && lang != QLatin1String("zh"))
            return usageError(call, Fbcfg::tr("--lang must be en or zh, not '%1'").arg(lang));
        settings.chinese = lang == QLatin1String("zh");
    }
    if (parser.isSet(QStringLiteral("timeout"))) {
        bool ok = false;
        settings.timeoutSeconds = parser.value(QStringLiteral("timeout")).toDouble(&ok);
        if (!ok || settings.timeoutSeconds <= 0 || settings.timeoutSeconds > 86400)
            return usageError(call,
                              Fbcfg::tr("--timeout must be a number of seconds, not '%1'")
                                      .arg(parser.value(QStringLiteral("timeout"))));
    }
    return ExitOk;
}

// The command the first words name; null after saying why, or after the help
// of a command group, with `rc` the exit status.
const CommandInfo *findCommand(const Scan &first, int &rc)
{
    const QString group = first.words.at(0);
    const CommandInfo *command = nullptr;
    QStringList subs;
    for (const CommandInfo &c : commands) {
        if (group != QLatin1String(c.group))
            continue;
        if (!c.sub || first.words.value(1) == QLatin1String(c.sub))
            command = &c;
        if (c.sub)
            subs.append(QLatin1String(c.sub));
    }
    rc = ExitFailure;
    if (!command && subs.isEmpty()) {
        Output::error(Fbcfg::tr("unknown command '%1'; see fbcfg --help").arg(group));
    } else if (!command && first.words.size() < 2 && first.help) {
        printCommandHelp(group, QString());
        rc = ExitOk;
    } else if (!command) {
        const QString what = first.words.size() < 2
                ? Fbcfg::tr("fbcfg %1 needs one of: %2").arg(group, subs.join(QStringLiteral(", ")))
                : Fbcfg::tr("unknown command '%1 %2'").arg(group, first.words.at(1));
        Output::error(Fbcfg::tr("%1; see fbcfg %2 --help").arg(what, group));
    }
    return command;
}

} // namespace

int main(int argc, char *argv[])
{
    // Before the application exists, so that even its start-up stays quiet.
    Output::installMessageHandler();
    QCoreApplication app(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("fbcfg"));
    QCoreApplication::setApplicationVersion(QStringLiteral(FIELDBUSCONFIG_VERSION_STRING));

    const QStringList arguments = negativeNumbersAsArguments(QCoreApplication::arguments());
    const Scan first = scan(arguments);
    Output::setVerbose(first.verbose);
    QTranslator translator;
    QTranslator library;
    if (first.lang == QLatin1String("zh"))
        loadTranslation(app, translator, library);

    Call call;
    call.name = first.words.value(0);
    if (first.words.isEmpty()) {
        if (first.version) {
            Output::line(QStringLiteral("fbcfg ") + QCoreApplication::applicationVersion());
            return ExitOk;
        }
        if (first.help) {
            printToolHelp();
            return ExitOk;
        }
        Output::error(Fbcfg::tr("a command is missing; see fbcfg --help"));
        return ExitFailure;
    }

    const QString group = first.words.at(0);
    int rc = ExitFailure;
    const CommandInfo *command = findCommand(first, rc);
    if (!command)
        return rc;
    call.name = words(*command);

    QCommandLineParser parser;
    for (const OptionInfo &o : globalOptions)
        addOption(parser, o);
    const QStringList own = optionNames(*command);
    for (const QString &name : own)
        addOption(parser, *findOption(name));
    call.parser = &parser;
    if (!parser.parse(arguments)) {
        const QString unknown = parser.unknownOptionNames().value(0);
        QString parserError = parser.errorText();
        if (parserError.endsWith(QLatin1Char('.')))
            parserError.chop(1); // the usage line goes on after it
        const QString what = unknown.isEmpty() ? parserError
                : findOption(unknown)
                ? Fbcfg::tr("option --%1 does not apply to fbcfg %2").arg(unknown, call.name)
                : Fbcfg::tr("unknown option '%1'")
                          .arg((unknown.size() == 1 ? QStringLiteral("-") : QStringLiteral("--"))
                               + unknown);
        return usageError(call, what);
    }
    if (parser.isSet(QStringLiteral("help"))) {
        printCommandHelp(group, command->sub ? QLatin1String(command->sub) : QString());
        return ExitOk;
    }
    if (parser.isSet(QStringLiteral("version"))) {
        Output::line(QStringLiteral("fbcfg ") + QCoreApplication::applicationVersion());
        return ExitOk;
    }
    call.args = parser.positionalArguments().mid(command->sub ? 2 : 1);

    Settings settings;
    if (const int rc = settle(call, *command, settings))
        return rc;
    if (command->dryRun && parser.isSet(QStringLiteral("dry-run")))
        return runDryRun(settings, command->handler, call);
    Session session(settings);
    return command->handler(session, call);
}
