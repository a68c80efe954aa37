#include "ControllerTree.h"

#include <fieldbusconfig/PendantSim.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTextStream>

#include <algorithm>

namespace {

constexpr int functionsPerDirection = 25;
constexpr int boolFunctions = 21;

struct Bus
{
    const char *shortName;
    const char *record; // element of fieldbus_config.xml holding its user areas
};
const Bus buses[] = {{"mtcp", "ModbusUser"},
                     {"ethcat", "EthercatUser"},
                     {"eip", "EthernetIPUser"},
                     {"pfn", "ProfinetUser"}};

// Group tables: type, how many numbers the screens offer (number 0 left out)
// and the bool addresses a group spans.
struct GroupKind
{
    const char *type;
    int numbers;
    int width;
};
const GroupKind groupKinds[] = {{"int", 255, 16}, {"float", 127, 32}, {"string", 7, 64}};

QString pad(const QString &value, int width)
{
    return value.leftJustified(width, QLatin1Char(' '));
}

QString mappingLine(const FuncAndMapInfo &row, int dir)
{
    QString line = QStringLiteral("    -Module ") + pad(row.module, 16) + QStringLiteral(" -Name ")
            + pad(row.name, 32) + QStringLiteral(" -Type ") + pad(row.type, 8)
            + QStringLiteral(" -FieldBus ") + pad(row.fieldBus.toUpper(), 16)
            + QStringLiteral(" -Address ") + pad(row.address, 8);
    if (row.type != QLatin1String("bool"))
        return line;
    if (dir == BusInput)
        line += QStringLiteral(" -FilterTime ") + pad(row.filterTime, 8);
    return line + QStringLiteral(" -Invert ") + pad(row.invert, 8);
}

void writeFile(const QString &path, const QByteArray &bytes)
{
    QDir().mkpath(QFileInfo(path).absolutePath());
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate) || file.write(bytes) != bytes.size())
        qFatal("cannot write %s", qPrintable(path));
}

QByteArray groupFile(const QVector<GroupInfo> (&groups)[2])
{
    QString text = QStringLiteral("$$ Configuration file with group signals\n");
    for (int dir = 0; dir < 2; ++dir) {
        text += dir == BusInput ? QStringLiteral("\n#Group_Input:\n")
                                : QStringLiteral("\n#Group_Output:\n");
        // The writer's order: int, float, string tables, each by number as text.
        for (const GroupKind &kind : groupKinds) {
            QVector<GroupInfo> table;
            for (const GroupInfo &group : groups[dir]) {
                if (group.type == QLatin1String(kind.type))
                    table.append(group);
            }
            std::sort(table.begin(), table.end(),
                      [](const GroupInfo &a, const GroupInfo &b) { return a.address < b.address; });
            for (const GroupInfo &g : table) {
                text += QStringLiteral("    -Type ") + pad(g.type, 16)
                        + QStringLiteral(" -Address ") + pad(g.address, 16)
                        + QStringLiteral(" -FieldBus ") + pad(g.fieldBus, 16)
                        + QStringLiteral(" -DeviceMap ")
                        + pad(g.deviceMapHead + QLatin1Char('-') + g.deviceMapTail, 16)
                        + QLatin1Char('\n');
            }
        }
    }
    return text.toUtf8();
}

QString areaEntry(const char *name, int length)
{
    return QStringLiteral("\t\t\t<%1>\n\t\t\t\t<Start_Address>0</Start_Address>\n"
                          "\t\t\t\t<Stop_Address>%2</Stop_Address>\n"
                          "\t\t\t\t<Variable_Length>%3</Variable_Length>\n\t\t\t</%1>\n")
            .arg(QLatin1String(name))
            .arg(qMax(0, length - 1))
            .arg(length);
}

// Bool, int and other-type sizes of one bus, the same both ways.
QString userAreas(const char *record, const int (&sizes)[3])
{
    QString text = QStringLiteral("\t<%1>\n").arg(QLatin1String(record));
    const char *areas[] = {"BoolArea", "IntArea", "OtherArea"};
    for (int a = 0; a < 3; ++a) {
        text += QStringLiteral("\t\t<%1>\n").arg(QLatin1String(areas[a]))
                + areaEntry("Input", sizes[a]) + areaEntry("Output", sizes[a])
                + areaEntry("Reserve", 0)
                + QStringLiteral("\t\t</%1>\n").arg(QLatin1String(areas[a]));
    }
    return text + QStringLiteral("\t</%1>\n").arg(QLatin1String(record));
}

} // namespace

void ControllerTree::enter() const
{
    QDir::setCurrent(pendantDir());
    pendantsim::setControllerRoot(controllerDir());
}

QByteArray mappingFile(const QVector<FuncAndMapInfo> (&rows)[2])
{
    QString text = QStringLiteral("$$ Configuration file with fieldbus signals\n");
    for (int dir = 0; dir < 2; ++dir) {
        text += dir == BusInput ? QStringLiteral("\n#System_Input:\n")
                                : QStringLiteral("\n#System_Output:\n");
        for (const FuncAndMapInfo &row : rows[dir])
            text += mappingLine(row, dir) + QLatin1Char('\n');
    }
    return text.toUtf8();
}

ControllerTree writeControllerTree(const QString &root, int rows, TreeShape shape)
{
    ControllerTree tree;
    tree.root = root;
    QDir().mkpath(tree.pendantDir());
    const bool oneModule = shape == TreeShape::OneModule;
    const int moduleCount = oneModule ? 1 : qMax(1, rows / (2 * functionsPerDirection));
    const int perDirection =
            oneModule ? qMax(functionsPerDirection, rows / 2) : functionsPerDirection;
    tree.rows = moduleCount * 2 * perDirection;

    // Next free address per direction, bus and area (bool, int, other).
    QHash<QString, int> next[2][3];
    int groupsUsed[2][3] = {};
    const QString fidbus = QStringLiteral("/application/fidbus/");
    QString functionInfo =
            QStringLiteral("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<FunctionInfo>\n");
    QString appParameters = QStringLiteral("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<root>\n");
    QString descriptions =
            QStringLiteral("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<BioUserDescription>\n");

    for (int m = 0; m < moduleCount; ++m) {
        const QString number = QStringLiteral("%1").arg(m, 4, 10, QLatin1Char('0'));
        const QString module = QStringLiteral("Mod") + number;
        const QString bus =
                QLatin1String(shape == TreeShape::Spread ? buses[m % 4].shortName : "mtcp");
        const QString listPath = fidbus + QStringLiteral("funclist/mod%1.xml").arg(number);
        tree.modules.append(module);
        QString list = QStringLiteral("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<FunctionList>\n"
                                      "\t<Module>%1</Module>\n")
                               .arg(module);
        for (int dir = 0; dir < 2; ++dir) {
            const QString way = dir == BusInput ? QStringLiteral("in") : QStringLiteral("out");
            list += dir == BusInput ? QStringLiteral("\t<Input>\n")
                                    : QStringLiteral("\t<Output>\n");
            for (int k = 0; k < perDirection; ++k) {
                FuncAndMapInfo row;
                row.module = module;
                row.name = QStringLiteral("m%1_%2_%3")
                                   .arg(number, way)
                                   .arg(k, oneModule ? 5 : 2, 10, QLatin1Char('0'));
                row.fieldBus = bus;
                row.filterTime =
                        dir == BusInput && k % 4 == 3 ? QStringLiteral("20") : QStringLiteral("0");
                row.invert = k % 7 == 5 ? QStringLiteral("1") : QStringLiteral("0");
                // Each run of 25 functions has the types of a module of the spread tree.
                const int turn = k % functionsPerDirection;
                int area = turn < boolFunctions ? 0 : turn < boolFunctions + 2 ? 1 : 2;
                row.type = QLatin1String(area == 0 ? "bool" : area == 1 ? "int" : "float");
                if (k == perDirection - 1) {
                    // The group signal: the module's turn of type, else any left.
                    static const int preferred[] = {0, 1, 0, 2};
                    int kind = preferred[m % 4];
                    if (groupsUsed[dir][kind] >= groupKinds[kind].numbers) {
                        kind = 0;
                        while (kind < 3 && groupsUsed[dir][kind] >= groupKinds[kind].numbers)
                            ++kind;
                    }
                    if (kind < 3) {
                        const GroupKind &g = groupKinds[kind];
                        const int head = next[dir][0][bus];
                        next[dir][0][bus] += g.width;
                        row.type = QLatin1String(g.type);
                        row.fieldBus = QStringLiteral("group_") + bus;
                        row.address = QString::number(++groupsUsed[dir][kind]);
                        tree.groups[dir].append({row.type, row.address, bus.toUpper(),
                                                 QString::number(head),
                                                 QString::number(head + g.width - 1)});
                        area = -1;
                    } else {
                        row.type = QStringLiteral("int");
                        area = 1;
                    }
                }
                if (area >= 0)
                    row.address = QString::number(next[dir][area][bus]++);
                if (row.type != QLatin1String("bool")) {
                    // The line carries neither; the reader gives "0".
                    row.filterTime = row.invert = QStringLiteral("0");
                } else if (dir == BusOutput) {
                    row.filterTime = QStringLiteral("0");
                }
                list += QStringLiteral("\t\t<Function Description=\"%1\" DescriptionCn=\"功能%2\" "
                                       "Type=\"%3\"/>\n")
                                .arg(row.name, row.name.mid(1), row.type);
                tree.mappings[dir].append(row);
            }
            list += dir == BusInput ? QStringLiteral("\t</Input>\n")
                                    : QStringLiteral("\t</Output>\n");
        }
        list += QStringLiteral("</FunctionList>\n");
        writeFile(tree.controllerDir() + listPath, list.toUtf8());
        tree.controllerFiles.append(listPath);
        functionInfo += QStringLiteral("\t<Module Name=\"%1\" NameCn=\"模块%2\" Path=\"%3\"/>\n")
                                .arg(module, number, listPath);
        appParameters += QStringLiteral("\t<app>\n\t\t<appName>%1</appName>\n"
                                        "\t\t<appVisible>true</appVisible>\n\t</app>\n")
                                 .arg(module);
        descriptions += QStringLiteral("<FidbusVariable Variable=\"fbIn\">\n<Index>%1</Index>\n"
                                       "<Description>Signal of %2</Description>\n"
                                       "</FidbusVariable>\n")
                                .arg(m)
                                .arg(module);
    }

    QString config =
            QStringLiteral("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<FieldBus_Config>\n");
    for (const Bus &b : buses) {
        const QString bus = QLatin1String(b.shortName);
        int sizes[3];
        for (int area = 0; area < 3; ++area) {
            const int used =
                    qMax(next[BusInput][area].value(bus), next[BusOutput][area].value(bus));
            sizes[area] = 2 * used + 64;
        }
        config += userAreas(b.record, sizes);
        for (int dir = 0; dir < 2; ++dir)
            tree.freeBool[dir].insert(bus, next[dir][0].value(bus));
    }
    config += QStringLiteral("</FieldBus_Config>\n");

    // The Modbus TCP slave is always on and not listed.
    const QByteArray fieldbusList =
            "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<FieldbusSettingConfig>\n"
            "\t<Fieldbus name=\"EtherCatSlave\" "
            "shortname=\"EthCat\">\n\t\t<enable>1</enable>\n\t</Fieldbus>\n"
            "\t<Fieldbus name=\"EthernetIPSlave\" "
            "shortname=\"eip\">\n\t\t<enable>1</enable>\n\t</Fieldbus>\n"
            "\t<Fieldbus name=\"ProfinetSlave\" "
            "shortname=\"pfn\">\n\t\t<enable>1</enable>\n\t</Fieldbus>\n"
            "\t<Fieldbus name=\"DeviceNetSlave\" "
            "shortname=\"dns\">\n\t\t<enable>0</enable>\n\t</Fieldbus>\n"
            "\t<Fieldbus name=\"FreeBus\" "
            "shortname=\"free\">\n\t\t<enable>0</enable>\n\t</Fieldbus>\n"
            "</FieldbusSettingConfig>\n";
    const QPair<QString, QByteArray> fixed[] = {
            {QStringLiteral("fieldbus.xml"), fieldbusList},
            {QStringLiteral("fieldbus_config.xml"), config.toUtf8()},
            {QStringLiteral("functionInfo.xml"),
             (functionInfo + QStringLiteral("</FunctionInfo>\n")).toUtf8()},
            {QStringLiteral("signal_mapping.cfg"), mappingFile(tree.mappings)},
            {QStringLiteral("user_groupio.cfg"), groupFile(tree.groups)},
            {QStringLiteral("user_description.xml"),
             (descriptions + QStringLiteral("</BioUserDescription>\n")).toUtf8()}};
    for (const auto &file : fixed) {
        writeFile(tree.controllerDir() + fidbus + file.first, file.second);
        tree.controllerFiles.append(fidbus + file.first);
    }
    // The slave device and the safety descriptions, which the check reads too
    // (the start-up fetches neither).
    writeFile(tree.controllerDir() + QStringLiteral("/fa/fbslave.cfgx"),
              "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<fieldBusSlave>\n\t<backend>\n"
              "\t\t<endian>little</endian>\n\t</backend>\n</fieldBusSlave>\n");
    writeFile(tree.controllerDir() + fidbus + QStringLiteral("pfs_description.xml"),
              "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<PfsUserDescription>\n"
              "\t<InUserDescription/>\n\t<OutUserDescription/>\n</PfsUserDescription>\n");
    // A pendant file, read from the current folder.
    writeFile(tree.pendantDir() + QStringLiteral("/appParameters_en.xml"),
              (appParameters + QStringLiteral("</root>\n")).toUtf8());
    return tree;
}

ImportBackup importBackup(const ControllerTree &tree)
{
    ImportBackup backup;
    QVector<FuncAndMapInfo> rows[2];
    for (int dir = 0; dir < 2; ++dir) {
        QHash<QString, int> free = tree.freeBool[dir];
        for (int i = 0; i < tree.mappings[dir].size(); ++i) {
            FuncAndMapInfo row = tree.mappings[dir].at(i);
            // 19 is prime to 100: every hundred rows take each share once.
            const int share = (i * 19 + dir) % 100;
            if (row.type == QLatin1String("bool") && share >= 80) {
                if (share >= 95) {
                    row.name += QStringLiteral("_new");
                    row.address = QString::number(free[row.fieldBus]++);
                    ++backup.added;
                } else if (share >= 90) {
                    row.name += QStringLiteral("_other");
                    ++backup.colliding;
                } else {
                    row.address = QString::number(free[row.fieldBus]++);
                    ++backup.remapped;
                }
            }
            rows[dir].append(row);
        }
    }
    backup.bytes = mappingFile(rows);
    return backup;
}
