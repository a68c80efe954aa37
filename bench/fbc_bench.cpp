// The library's costs on synthetic controllers of 1,000 to 50,000 mapping rows.
// Each file operation runs beside its floor, the least work the same files
// demand, so that the ratio tells what the library adds. bench/README.md says
// what each one measures.
#include "ControllerTree.h"

#include <fieldbusconfig/BusFileDataManager.h>
#include <fieldbusconfig/ConfigCheck.h>
#include <fieldbusconfig/PendantSim.h>

#include <benchmark/benchmark.h>

#include <QCoreApplication>
#include <QDir>
#include <QEventLoop>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>
#include <QTemporaryDir>
#include <QTextStream>
#include <QTimer>

#include <chrono>
#include <functional>
#include <map>
#include <memory>
#include <tuple>

namespace {

using benchmark::State;
using Clock = std::chrono::steady_clock;

double secondsSince(Clock::time_point start)
{
    return std::chrono::duration<double>(Clock::now() - start).count();
}

// A screen that wants every kind of file and counts what it is told.
class Screen : public BusObserver
{
public:
    Screen() { setIsEveryFile(true); }
    void onFileNotify(FileHandle, const QString &, bool isSuccess) override
    {
        failed += isSuccess ? 0 : 1;
        onCall();
    }
    int failed = 0;
    std::function<void()> onCall;
};

constexpr int screenCount = 2;
// Fieldbus list, areas, groups, mapping, descriptions, function information and
// lists, and the last two again for the IO monitor.
constexpr int callsPerScreen = 9;

struct StartUp
{
    std::unique_ptr<BusFileDataManager> manager;
    double seconds = 0;
    // Notifications that reported a failure or never came.
    int failed = 0;
};

// The fieldbus screens' start-up: a fresh manager with two screens asks for
// every kind of file, and the GUI thread's loop runs until both heard of all.
StartUp startUp()
{
    Screen screens[screenCount];
    QEventLoop loop;
    int calls = 0;
    for (Screen &screen : screens) {
        screen.onCall = [&] {
            if (++calls == screenCount * callsPerScreen)
                loop.quit();
        };
    }
    StartUp result;
    const Clock::time_point start = Clock::now();
    result.manager.reset(new BusFileDataManager());
    BusFileDataManager &m = *result.manager;
    for (Screen &screen : screens)
        m.attach(&screen);
    m.setIsGetFuncList(true);
    m.emitGetFieldXml();
    m.emitGetFieldbusCfg();
    m.emitGetFuncInfo();
    m.emitGetFuncInfoMonitor();
    m.emitGetGroupIo();
    m.emitGetSignalMap();
    m.emitGetUserDes();
    QTimer::singleShot(60000, &loop, &QEventLoop::quit);
    loop.exec();
    result.seconds = secondsSince(start);
    for (Screen &screen : screens) {
        m.detach(&screen);
        result.failed += screen.failed;
    }
    result.failed += screenCount * callsPerScreen - calls;
    return result;
}

struct Fixture
{
    ControllerTree tree;
    // Started up on the tree; what the reads, writes, validators and imports work on.
    std::unique_ptr<BusFileDataManager> manager;
    // Every transfer of a start-up: controller file and local copy.
    QVector<QPair<QString, QString>> fetches;
    qint64 fetchedBytes = 0;
    qint64 controllerBytes = 0;
    // Why the fixture cannot be measured; empty when it can.
    QString error;
    bool checkedClean = false;

    int groupCount() const { return tree.groups[0].size() + tree.groups[1].size(); }
};

// Compares what the manager read with what was generated, row by row.
QString readBackError(BusFileDataManager &m, const ControllerTree &tree)
{
    const auto fields = [](const FuncAndMapInfo &r) {
        return std::tie(r.module, r.name, r.type, r.fieldBus, r.address, r.filterTime, r.invert);
    };
    for (int dir = 0; dir < 2; ++dir) {
        QVector<FuncAndMapInfo> read;
        m.getBusSignalMap(BiBo(dir), read);
        if (read.size() != tree.mappings[dir].size())
            return QStringLiteral("read %1 mapping rows, generated %2")
                    .arg(read.size())
                    .arg(tree.mappings[dir].size());
        for (int i = 0; i < read.size(); ++i) {
            if (fields(read.at(i)) != fields(tree.mappings[dir].at(i)))
                return QStringLiteral("mapping row %1 (%2) reads back otherwise")
                        .arg(i)
                        .arg(tree.mappings[dir].at(i).name);
        }
        int groups = 0;
        for (const char *type : {"int", "float", "string"})
            groups += m.getAllGroupInfo(BiBo(dir), QLatin1String(type)).size();
        if (groups != tree.groups[dir].size())
            return QStringLiteral("read %1 groups, generated %2")
                    .arg(groups)
                    .arg(tree.groups[dir].size());
        for (const GroupInfo &g : tree.groups[dir]) {
            const GroupInfo r = m.getAllGroupInfo(BiBo(dir), g.type).value(g.address);
            if (std::tie(r.type, r.fieldBus, r.deviceMapHead, r.deviceMapTail)
                != std::tie(g.type, g.fieldBus, g.deviceMapHead, g.deviceMapTail))
                return QStringLiteral("%1 group %2 reads back otherwise").arg(g.type, g.address);
        }
    }
    return QString();
}

// In memory when the machine offers it: every write and transfer commits with
// an fsync, whose cost on a shared disk would drown what the library does.
// FBC_BENCH_DIR names another folder, say on the pendant's flash.
QString benchRoot()
{
    static const QString parent = [] {
        const QString asked = qEnvironmentVariable("FBC_BENCH_DIR");
        if (!asked.isEmpty())
            return asked;
        return QFileInfo(QStringLiteral("/dev/shm")).isWritable() ? QStringLiteral("/dev/shm")
                                                                  : QDir::tempPath();
    }();
    static QTemporaryDir dir(parent + QStringLiteral("/fbc_bench-XXXXXX"));
    if (!dir.isValid())
        qFatal("cannot make a folder in %s", qPrintable(parent));
    return dir.path();
}

std::map<std::pair<int, TreeShape>, std::unique_ptr<Fixture>> fixtures;

std::unique_ptr<Fixture> makeFixture(int rows, TreeShape shape)
{
    auto f = std::make_unique<Fixture>();
    const char *names[] = {"spread", "one-bus", "one-module"};
    const QString root = QStringLiteral("%1/%2-%3")
                                 .arg(benchRoot())
                                 .arg(rows)
                                 .arg(QLatin1String(names[int(shape)]));
    f->tree = writeControllerTree(root, rows, shape);
    f->tree.enter();
    for (const QString &file : qAsConst(f->tree.controllerFiles)) {
        const QPair<QString, QString> fetch(
                pendantsim::controllerFilePath(file),
                TPU_FIELDBUS_DIR + file.mid(QStringLiteral("/application/fidbus").size()));
        const qint64 size = QFileInfo(fetch.first).size();
        f->controllerBytes += size;
        // The IO monitor fetches the function information and lists once more.
        const int times =
                file.contains(QLatin1String("/funclist/")) || file == RDE_FUNC_INFO_XML ? 2 : 1;
        for (int i = 0; i < times; ++i) {
            f->fetches.append(fetch);
            f->fetchedBytes += size;
        }
    }

    pendantsim::resetCounters();
    StartUp s = startUp();
    f->manager = std::move(s.manager);
    if (s.failed)
        f->error = QStringLiteral("%1 start-up notifications failed or never came").arg(s.failed);
    else if (pendantsim::transferAttempts() != f->fetches.size())
        f->error = QStringLiteral("the start-up made %1 transfers, the floor copies %2 files")
                           .arg(pendantsim::transferAttempts())
                           .arg(f->fetches.size());
    else
        f->error = readBackError(*f->manager, f->tree);
    return f;
}

Fixture &fixture(int rows, TreeShape shape)
{
    std::unique_ptr<Fixture> &f = fixtures[{rows, shape}];
    if (!f)
        f = makeFixture(rows, shape);
    f->tree.enter();
    return *f;
}

void account(State &state, qint64 rows, qint64 bytes = 0)
{
    state.counters["rows"] = double(rows);
    state.SetItemsProcessed(state.iterations() * rows);
    if (bytes > 0)
        state.SetBytesProcessed(state.iterations() * bytes);
}

QByteArray fileBytes(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

// The read floor: every line of the file, and nothing done with it.
int readLines(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly | QIODevice::Text))
        return -1;
    QTextStream in(&file);
    in.setCodec("UTF-8");
    int lines = 0;
    while (!in.atEnd()) {
        QString line = in.readLine();
        benchmark::DoNotOptimize(line);
        ++lines;
    }
    return lines;
}

// ---- reading and writing the mapping and group files ----

struct LineFile
{
    const QString &localPath;
    const QString &controllerPath;
    bool (BusFileDataManager::*read)();
    std::function<bool(BusFileDataManager &)> write;
};

const LineFile signalMapping{TPU_SIGNAL_MAP_CFG, RDE_SIGNAL_MAP_CFG,
                             &BusFileDataManager::readSignalMapCfg, [](BusFileDataManager &m) {
                                 return m.writeSendSignalMapCfg(TPU_SIGNAL_MAP_CFG,
                                                                RDE_SIGNAL_MAP_CFG);
                             }};
const LineFile groupIo{TPU_GROUP_CFG, RDE_GROUP_CFG, &BusFileDataManager::readGroupCfg,
                       [](BusFileDataManager &m) { return m.writeSendGroupCfg(); }};

qint64 rowsOf(const LineFile &file, const Fixture &f)
{
    return &file == &signalMapping ? f.tree.rows : f.groupCount();
}

void readFile(State &state, Fixture &f, const LineFile &file)
{
    for (auto _ : state) {
        if (!(f.manager.get()->*file.read)()) {
            state.SkipWithError("the reader failed");
            break;
        }
    }
    account(state, rowsOf(file, f), QFileInfo(file.localPath).size());
}

void readFileFloor(State &state, Fixture &f, const LineFile &file)
{
    for (auto _ : state)
        benchmark::DoNotOptimize(readLines(file.localPath));
    account(state, rowsOf(file, f), QFileInfo(file.localPath).size());
}

void writeFile(State &state, Fixture &f, const LineFile &file)
{
    BusFileDataManager &m = *f.manager;
    // The send to the controller that follows a write is not measured.
    const QSignalBlocker noSend(m);
    const QByteArray generated = fileBytes(pendantsim::controllerFilePath(file.controllerPath));
    if (!file.write(m) || fileBytes(file.localPath) != generated) {
        state.SkipWithError("the writer does not give back the generated file");
        return;
    }
    for (auto _ : state) {
        if (!file.write(m)) {
            state.SkipWithError("the writer failed");
            break;
        }
    }
    account(state, rowsOf(file, f), generated.size());
}

void writeFileFloor(State &state, Fixture &f, const LineFile &file)
{
    const QByteArray bytes = fileBytes(pendantsim::controllerFilePath(file.controllerPath));
    for (auto _ : state) {
        QSaveFile out(file.localPath);
        if (!out.open(QIODevice::WriteOnly) || out.write(bytes) != bytes.size() || !out.commit()) {
            state.SkipWithError("QSaveFile failed");
            break;
        }
    }
    account(state, rowsOf(file, f), bytes.size());
}

// ---- start-up and the whole-configuration check ----

void startUpBench(State &state, Fixture &f)
{
    for (auto _ : state) {
        StartUp s = startUp();
        state.SetIterationTime(s.seconds);
        if (s.failed) {
            state.SkipWithError("a start-up notification failed or never came");
            break;
        }
        // Quitting the manager's thread is no part of the start-up; manual time leaves it out.
    }
    account(state, f.tree.rows, f.fetchedBytes);
}

void startUpFloor(State &state, Fixture &f)
{
    bool copied = true;
    for (auto _ : state) {
        for (const auto &fetch : qAsConst(f.fetches)) {
            QFile::remove(fetch.second);
            copied = QFile::copy(fetch.first, fetch.second) && copied;
        }
    }
    if (!copied)
        state.SkipWithError("QFile::copy failed");
    account(state, f.tree.rows, f.fetchedBytes);
}

QVector<CheckFinding> checkTree(const Fixture &f)
{
    return ConfigCheck::run(
            ConfigSnapshot::load(f.tree.controllerDir(), ConfigSnapshot::ControllerLayout));
}

void checkBench(State &state, Fixture &f)
{
    if (!f.checkedClean) {
        const QVector<CheckFinding> findings = checkTree(f);
        if (!findings.isEmpty()) {
            const CheckFinding &first = findings.first();
            const QString error = QStringLiteral("the check finds %1 faults, first %2:%3 %4: %5")
                                          .arg(findings.size())
                                          .arg(first.file)
                                          .arg(first.line)
                                          .arg(first.kind, first.message);
            state.SkipWithError(qPrintable(error));
            return;
        }
        f.checkedClean = true;
    }
    for (auto _ : state) {
        QVector<CheckFinding> findings = checkTree(f);
        benchmark::DoNotOptimize(findings);
    }
    account(state, f.tree.rows, f.controllerBytes);
}

void checkFloor(State &state, Fixture &f)
{
    for (auto _ : state) {
        for (const QString &file : qAsConst(f.tree.controllerFiles))
            benchmark::DoNotOptimize(readLines(pendantsim::controllerFilePath(file)));
    }
    account(state, f.tree.rows, f.controllerBytes);
}

// ---- validators ----

enum Validator { AddressValid, GroupAddrValid, AddressGroupValid, GroupIdExist };

struct Probe
{
    QString bus;
    BiBo dir = BusInput;
    QString type; // a signal's type, or the group table
    int number = 0; // an address or a group number
    QString groupNumber;
    QString range;
    bool saved = false;
    bool hit = false;
};

QString ask(BusFileDataManager &m, Validator v, const Probe &p)
{
    switch (v) {
    case AddressValid:
        return m.isAddressValid(p.bus, p.dir, p.type, p.number);
    case GroupAddrValid:
        return m.isGroupAddrValid(p.bus, p.dir, p.range);
    case AddressGroupValid:
        return m.isAddressGroupValid(p.bus, p.dir, p.type, p.groupNumber, p.range, p.saved);
    case GroupIdExist:
        return m.isGroupIdExist(p.bus, p.dir, p.type, p.number, p.saved);
    }
    return QString();
}

// Whether an answer found what the probe looks for: a taken address, a bool
// row in a range, an overlapped group; for isGroupIdExist the group itself.
bool found(Validator v, const QString &answer)
{
    return (answer == QLatin1String("ok")) == (v == GroupIdExist);
}

// Calls spread over the table, every other one a miss.
std::vector<Probe> probes(const ControllerTree &tree, Validator v)
{
    std::vector<Probe> probes;
    for (int j = 0; j < 512; ++j) {
        Probe p;
        p.dir = BiBo((j / 2) % 2);
        p.hit = j % 2 == 0;
        p.saved = (j / 4) % 2 == 0;
        const QVector<FuncAndMapInfo> &rows = tree.mappings[p.dir];
        const FuncAndMapInfo &row = rows.at(int(j * 7919LL % rows.size()));
        // Each module's first 21 functions are bool signals on its bus.
        const FuncAndMapInfo &boolRow =
                rows.at(int(j * 104729LL % (rows.size() / 25)) * 25 + j % 21);
        const int boolAddress = boolRow.address.toInt();
        const GroupInfo &group = tree.groups[p.dir].at(int(j * 1009LL % tree.groups[p.dir].size()));
        const QString groupBus = group.fieldBus.toLower();
        const QString groupRange = group.deviceMapHead + QLatin1Char(',') + group.deviceMapTail;
        p.groupNumber = QStringLiteral("no");
        switch (v) {
        case AddressValid:
            p.bus = p.hit ? row.fieldBus : boolRow.fieldBus;
            p.type = p.hit ? row.type : QStringLiteral("bool");
            p.number =
                    p.hit ? row.address.toInt() : tree.freeBool[p.dir].value(boolRow.fieldBus) + j;
            break;
        case GroupAddrValid:
            p.bus = p.hit ? boolRow.fieldBus : groupBus;
            p.range = p.hit
                    ? QStringLiteral("%1,%2").arg(qMax(0, boolAddress - 2)).arg(boolAddress + 2)
                    : groupRange;
            break;
        case AddressGroupValid:
            // A miss is a bool row's address, or a group's own range while it is edited.
            p.bus = p.hit || j % 4 == 3 ? groupBus : boolRow.fieldBus;
            p.type =
                    p.hit || j % 4 == 3 ? group.type : QString::fromLatin1(j % 3 ? "int" : "float");
            p.groupNumber = j % 4 == 3 ? group.address : QStringLiteral("no");
            p.range = p.hit || j % 4 == 3 ? groupRange : QStringLiteral("%1,-1").arg(boolAddress);
            break;
        case GroupIdExist:
            p.bus = QStringLiteral("group_") + groupBus;
            p.type = group.type;
            p.number = p.hit ? group.address.toInt() : 1000 + j;
            break;
        }
        probes.push_back(p);
    }
    return probes;
}

void validatorBench(State &state, Fixture &f, Validator v)
{
    BusFileDataManager &m = *f.manager;
    const std::vector<Probe> calls = probes(f.tree, v);
    for (size_t i = 0; i < calls.size(); ++i) {
        if (found(v, ask(m, v, calls[i])) != calls[i].hit) {
            const QString error =
                    QStringLiteral("validator probe %1 answers otherwise than the tree says")
                            .arg(i);
            state.SkipWithError(qPrintable(error));
            return;
        }
    }
    size_t next = 0;
    for (auto _ : state) {
        QString answer = ask(m, v, calls[next]);
        benchmark::DoNotOptimize(answer);
        next = (next + 1) % calls.size();
    }
    // Calls, not rows, are what the time is per.
    state.counters["rows"] = f.tree.rows;
}

// The validators keep lookups of the table; the first call after an edit pays
// for bringing them up to date.
void firstCallAfterEdit(State &state, Fixture &f)
{
    BusFileDataManager &m = *f.manager;
    const QVector<FuncAndMapInfo> &rows = f.tree.mappings[BusInput];
    FuncAndMapInfo row =
            rows.at(rows.size() / 50 * 25); // the first bool signal of the middle module
    const QString home = row.address;
    const QString away = QString::number(f.tree.freeBool[BusInput].value(row.fieldBus));
    for (auto _ : state) {
        row.address = row.address == home ? away : home;
        m.setMapInfo({row}, BusInput);
        const int address = row.address.toInt();
        const Clock::time_point start = Clock::now();
        QString answer = m.isAddressValid(row.fieldBus, BusInput, row.type, address);
        state.SetIterationTime(secondsSince(start));
        benchmark::DoNotOptimize(answer);
    }
    m.updateMapData(false);
    state.counters["rows"] = f.tree.rows;
}

// ---- edits and import ----

void setMapInfoBench(State &state, Fixture &f)
{
    constexpr int tableRows = 20000;
    constexpr int editCount = 5000;
    const QVector<FuncAndMapInfo> &all = f.tree.mappings[BusInput];
    const QVector<FuncAndMapInfo> table = all.mid(0, tableRows);
    // A screen's edits spread over the table: moves, attribute changes,
    // removals and functions mapped anew, a quarter each.
    QVector<FuncAndMapInfo> edits;
    for (int e = 0; e < editCount; ++e) {
        FuncAndMapInfo edit = table.at(e * (tableRows / editCount));
        switch (e % 4) {
        case 0:
            edit.address = QString::number(edit.address.toInt() + 1);
            break;
        case 1:
            edit.invert =
                    edit.invert == QLatin1String("1") ? QStringLiteral("0") : QStringLiteral("1");
            break;
        case 2:
            edit.address = QStringLiteral("-1");
            break;
        default:
            edit = all.at(tableRows + e / 4);
            break;
        }
        edits.append(edit);
    }
    QVector<FuncAndMapInfo> &target = f.manager->mapList[BusInput];
    for (auto _ : state) {
        target = table;
        target.detach();
        const Clock::time_point start = Clock::now();
        f.manager->setMapInfo(edits, BusInput);
        state.SetIterationTime(secondsSince(start));
    }
    // As many rows left as came in.
    const bool merged = target.size() == tableRows;
    f.manager->updateMapData(false);
    if (!merged)
        state.SkipWithError("setMapInfo left an unexpected number of rows");
    state.counters["edits"] = editCount;
    account(state, tableRows);
}

void importBench(State &state, Fixture &f)
{
    BusFileDataManager &m = *f.manager;
    const ImportBackup backup = importBackup(f.tree);
    const QString path = TPU_FIELDBUS_DIR + QStringLiteral("/import_backup.cfg");
    QSaveFile out(path);
    if (!out.open(QIODevice::WriteOnly) || out.write(backup.bytes) != backup.bytes.size()
        || !out.commit() || !m.readMapParaBackup(path, f.tree.modules)) {
        state.SkipWithError("cannot write or read the backup");
        return;
    }
    int collisions = 0, remapped = 0, left = 0;
    for (BiBo dir : {BusInput, BusOutput}) {
        collisions += m.getImportAddressCollisions(dir).size();
        remapped += m.getImportRemappedFunctions(dir).size();
        for (const QVector<FuncAndMapInfo> &rows : m.getImportBusMap(dir))
            left += rows.size();
    }
    if (BusFileDataManager::_isIllegalImportMap || collisions != backup.colliding
        || remapped != backup.remapped
        || left != backup.colliding + backup.remapped + backup.added) {
        state.SkipWithError("the import finds otherwise than the backup was made");
        return;
    }
    for (auto _ : state) {
        m.readMapParaBackup(path, f.tree.modules);
        m.handleImportMapData(MsgBox::Yes);
    }
    account(state, f.tree.rows, backup.bytes.size());
}

// ---- registration ----

using Body = std::function<void(State &, Fixture &)>;

struct Options
{
    bool manualTime = false;
    TreeShape shape = TreeShape::Spread;
    // The tree measured on, when it is not one of `rows` rows.
    int treeRows = 0;
};

benchmark::internal::Benchmark *add(const std::string &name, int rows, const Body &body,
                                    Options options = {})
{
    const int treeRows = options.treeRows ? options.treeRows : rows;
    benchmark::internal::Benchmark *b = benchmark::RegisterBenchmark(
            (name + '/' + std::to_string(rows)).c_str(), [=](State &state) {
                Fixture &f = fixture(treeRows, options.shape);
                if (!f.error.isEmpty()) {
                    state.SkipWithError(qPrintable(f.error));
                    return;
                }
                body(state, f);
            });
    b->Unit(benchmark::kMicrosecond);
    if (options.manualTime)
        b->UseManualTime();
    else
        b->UseRealTime();
    return b;
}

// An operation and its floor, one beside the other.
void addWithFloor(const std::string &name, int rows, const Body &body, const Body &floor,
                  Options options = {})
{
    add(name, rows, body, options);
    Options floorOptions = options; // the same tree
    floorOptions.manualTime = false;
    add(name + "_floor", rows, floor, floorOptions);
}

void registerBenchmarks()
{
    const int sizes[] = {1000, 10000, 50000};
    const std::pair<std::string, const LineFile *> files[] = {{"signal_mapping", &signalMapping},
                                                              {"group_io", &groupIo}};
    for (const auto &file : files) {
        const LineFile &lf = *file.second;
        for (int rows : sizes) {
            addWithFloor(
                    "read_" + file.first, rows, [&lf](State &s, Fixture &f) { readFile(s, f, lf); },
                    [&lf](State &s, Fixture &f) { readFileFloor(s, f, lf); });
        }
        for (int rows : sizes) {
            addWithFloor(
                    "write_" + file.first, rows,
                    [&lf](State &s, Fixture &f) { writeFile(s, f, lf); },
                    [&lf](State &s, Fixture &f) { writeFileFloor(s, f, lf); });
        }
    }
    for (int rows : sizes)
        addWithFloor("startup", rows, startUpBench, startUpFloor, {true});
    for (int rows : sizes)
        addWithFloor("check", rows, checkBench, checkFloor);
    // Every row in one module of 25,000 functions each way: linear too.
    addWithFloor("check_one_module", 50000, checkBench, checkFloor, {false, TreeShape::OneModule});
    const std::pair<const char *, Validator> validators[] = {
            {"isAddressValid", AddressValid},
            {"isGroupAddrValid", GroupAddrValid},
            {"isAddressGroupValid", AddressGroupValid},
            {"isGroupIdExist", GroupIdExist}};
    for (const auto &validator : validators) {
        const Validator v = validator.second;
        for (int rows : sizes)
            add(validator.first, rows, [v](State &s, Fixture &f) { validatorBench(s, f, v); });
    }
    // Each iteration edits the whole table first, so a few are enough.
    for (int rows : sizes)
        add("isAddressValid_after_edit", rows, firstCallAfterEdit, {true})->Iterations(16);
    // 20,000 of the 25,000 input rows of the largest tree; the others are mapped anew.
    add("setMapInfo_5000_edits", 20000, setMapInfoBench, {true, TreeShape::Spread, 50000});
    add("import_spread", 10000, importBench);
    add("import_one_bus", 10000, importBench, {false, TreeShape::OneBus});
}

} // namespace

int main(int argc, char **argv)
{
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 1;
    QCoreApplication app(argc, argv);
    const QString home = QDir::currentPath();
    registerBenchmarks();
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    // Managers and their threads go before the application, the folders last.
    QDir::setCurrent(home);
    fixtures.clear();
    return 0;
}
