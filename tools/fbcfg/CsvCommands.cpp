#include "Commands.h"
#include "Csv.h"
#include "Output.h"
#include "Session.h"

#include <QFile>
#include <QRegularExpression>
#include <QSaveFile>

namespace {

// The columns of the file, as fbcfg export writes them and import reads them.
const QStringList header{QStringLiteral("module"),
                         QStringLiteral("function"),
                         QStringLiteral("function display name"),
                         QStringLiteral("type"),
                         QStringLiteral("bus"),
                         QStringLiteral("direction"),
                         QStringLiteral("address"),
                         QStringLiteral("filter time"),
                         QStringLiteral("invert")};
enum Column { Module, Function, Display, Type, Bus, Direction, Address, FilterTime, Invert };

// The --delimiter of the command: one character, a comma when not given.
int readDelimiter(const Call &call, QChar &delimiter)
{
    const QString text = call.value(QStringLiteral("delimiter"));
    if (!call.isSet(QStringLiteral("delimiter")))
        delimiter = QLatin1Char(',');
    else if (text.size() == 1 && !QStringLiteral("\"\r\n").contains(text))
        delimiter = text.at(0);
    else
        return usageError(call,
                          Fbcfg::tr("--delimiter must be one character such as , or ;, "
                                    "not '%1'")
                                  .arg(text));
    return ExitOk;
}

// A CSV row as a mapping row, or why it is refused.
QString readRow(BusFileDataManager *m, FunctionIndex &declared, const csv::Record &record,
                FuncAndMapInfo &row, BiBo &dir)
{
    if (!record.error.isEmpty())
        return record.error;
    const QStringList &f = record.fields;
    if (f.size() != header.size())
        return Fbcfg::tr("%1 fields expected, found %2").arg(header.size()).arg(f.size());
    row.module = moduleKey(m, f.at(Module).trimmed());
    if (row.module.isEmpty())
        return missingName(Fbcfg::tr("there is no module '%1'").arg(f.at(Module)),
                           f.at(Module).trimmed(), m->getModuleList());
    if (row.module == pv_layout)
        return Fbcfg::tr("the rows of %1 are not imported").arg(pv_layout);
    // Words match without regard to case, as spreadsheets like to capitalise.
    const QString direction = f.at(Direction).trimmed().toLower();
    if (direction != QLatin1String("in") && direction != QLatin1String("out"))
        return Fbcfg::tr("the direction must be in or out, not '%1'").arg(f.at(Direction));
    dir = direction == QLatin1String("in") ? BusInput : BusOutput;
    const QString name = f.at(Function).trimmed();
    const FuncAndMapInfo *function = declared.find(row.module, dir, name);
    if (!function)
        return missingName(Fbcfg::tr("%1 declares no %2 function '%3'")
                                   .arg(row.module, directionWord(dir), name),
                           name, declared.names(row.module, dir));
    row.name = function->name;
    row.type = function->type;
    const QString type = f.at(Type).trimmed();
    if (!type.isEmpty() && type.compare(row.type, Qt::CaseInsensitive) != 0)
        return Fbcfg::tr("the type is %1, not '%2'").arg(row.type, type);
    row.fieldBus = f.at(Bus).trimmed().toLower();
    static const QRegularExpression busShape(QStringLiteral("^[a-z0-9_]+$"));
    if (!busShape.match(row.fieldBus).hasMatch())
        return Fbcfg::tr("'%1' is not a bus short name").arg(f.at(Bus));
    int number = 0;
    if (!readInt(f.at(Address).trimmed(), &number))
        return Fbcfg::tr("the address '%1' is not a number").arg(f.at(Address));
    row.address = QString::number(number);
    const QPair<int, QString *> optional[] = {{FilterTime, &row.filterTime}, {Invert, &row.invert}};
    for (const auto &column : optional) {
        const QString text = f.at(column.first).trimmed();
        if (!text.isEmpty() && !readInt(text, &number))
            return Fbcfg::tr("the %1 '%2' is not a number").arg(header.at(column.first), text);
        *column.second = text.isEmpty() ? QStringLiteral("0") : QString::number(number);
    }
    if (row.invert != QLatin1String("0") && row.invert != QLatin1String("1"))
        return Fbcfg::tr("invert must be 0 or 1, not '%1'").arg(row.invert);
    return QString();
}

bool isHeader(QStringList fields)
{
    for (QString &field : fields)
        field = field.trimmed().toLower();
    return fields == header;
}

// ExitOk when the first record is the header; else a refusal that says what
// to do, naming the delimiter the file uses when it is another.
int checkHeader(const QString &csvPath, const QByteArray &bytes,
                const QVector<csv::Record> &records, QChar delimiter)
{
    if (!records.isEmpty() && isHeader(records.constFirst().fields))
        return ExitOk;
    const QList<QChar> others{QLatin1Char(','), QLatin1Char(';')};
    for (const QChar other : others) {
        const QVector<csv::Record> retry = csv::parse(bytes.left(bytes.indexOf('\n')), other);
        if (other != delimiter && !retry.isEmpty() && isHeader(retry.constFirst().fields))
            return refuse(Fbcfg::tr("%1:1: the fields are separated by '%2'; read the file "
                                    "with --delimiter '%2'")
                                  .arg(csvPath, QString(other)));
    }
    return refuse(Fbcfg::tr("%1:1: the first row must be the header %2")
                          .arg(csvPath, header.join(delimiter)));
}

} // namespace

int runExport(Session &session, const Call &call)
{
    if (!call.isSet(QStringLiteral("csv")))
        return usageError(call, Fbcfg::tr("--csv FILE is required"));
    QVector<BiBo> directions;
    if (const int rc = readDirections(call, false, directions))
        return rc;
    QChar delimiter;
    if (const int rc = readDelimiter(call, delimiter))
        return rc;
    // "-": the file is standard output.
    const bool toStdout = call.value(QStringLiteral("csv")) == QLatin1String("-");
    const QString path = session.userPath(call.value(QStringLiteral("csv")));
    if (const int rc =
                session.fetch(Session::FieldbusList | Session::Functions | Session::SignalMap))
        return rc;
    BusFileDataManager *m = session.manager();
    const QString bus = call.value(QStringLiteral("bus"));
    QByteArray bytes = call.isSet(QStringLiteral("excel")) ? csv::byteOrderMark : QByteArray();
    bytes += csv::format(header, delimiter);
    int count = 0;
    FunctionIndex functions(m);
    const bool chinese = showsChinese(m);
    for (const BiBo dir : qAsConst(directions)) {
        QVector<FuncAndMapInfo> rows;
        m->getBusSignalMap(dir, rows);
        for (const FuncAndMapInfo &row : qAsConst(rows)) {
            if (row.address.trimmed() == QLatin1String("-1")
                || (!bus.isEmpty() && row.fieldBus.compare(bus, Qt::CaseInsensitive) != 0))
                continue;
            bytes += csv::format({row.module, row.name, functions.displayName(row.module, row.name, chinese),
                                  row.type, row.fieldBus, directionKey(dir), row.address,
                                  row.filterTime, row.invert},
                                 delimiter);
            ++count;
        }
    }
    if (count == 0) {
        if (const int rc = checkBusFilter(m, call))
            return rc;
    }
    const QString written = count == 1 ? Fbcfg::tr("1 row written to %1")
                                       : Fbcfg::tr("%1 rows written to %2").arg(count);
    if (toStdout) {
        Output::raw(bytes);
        Output::note(written.arg(Fbcfg::tr("standard output")));
        return ExitOk;
    }
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size() || !file.commit()) {
        Output::error(Fbcfg::tr("cannot write %1: %2").arg(path, file.errorString()));
        return ExitFailure;
    }
    Output::line(written.arg(path));
    return ExitOk;
}

int readCsvRows(Session &session, const Call &call, const QString &csvPath,
                QVector<ImportRow> &rows, QMap<int, QString> &refused)
{
    QChar delimiter;
    if (const int rc = readDelimiter(call, delimiter))
        return rc;
    QFile in(csvPath);
    if (!in.open(QIODevice::ReadOnly)) {
        Output::error(Fbcfg::tr("cannot read %1").arg(csvPath));
        return ExitFailure;
    }
    const QByteArray bytes = in.readAll();
    if (const int line = ConfigSnapshot::firstLineNotUtf8(bytes))
        return refuse(Fbcfg::tr("%1:%2: the file is not UTF-8 (a spreadsheet saved it in another "
                                "encoding); save it as CSV UTF-8 and import it again")
                              .arg(csvPath)
                              .arg(line));
    const QVector<csv::Record> records = csv::parse(bytes, delimiter);
    if (const int rc = checkHeader(csvPath, bytes, records, delimiter))
        return rc;
    BusFileDataManager *m = session.manager();
    FunctionIndex declared(m);
    for (const csv::Record &record : records.mid(1)) {
        ImportRow row;
        row.line = record.line;
        const QString why = readRow(m, declared, record, row.row, row.direction);
        if (why.isEmpty())
            rows.append(row);
        else
            refused.insert(record.line, why);
    }
    return ExitOk;
}
