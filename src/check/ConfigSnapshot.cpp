#include "ConfigSnapshot.h"

#include "BusFileDataManager.h"
#include "ConfigFileIo.h"
#include "FieldbusNames.h"
#include "FileFormats.h"
#include "FunctionListXml.h"

#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>
#include <QSet>
#include <QTextCodec>

namespace {

const QString mappingKeywords[] = {QStringLiteral("-Module"), QStringLiteral("-Name"),
                                   QStringLiteral("-Type"), QStringLiteral("-FieldBus"),
                                   QStringLiteral("-Address")};
const QString groupKeywords[] = {QStringLiteral("-Type"), QStringLiteral("-Address"),
                                 QStringLiteral("-FieldBus"), QStringLiteral("-DeviceMap")};

// The first keyword a row lacks, or whose value is missing or is another keyword.
template<size_t N>
QString missingKeyword(const configio::LineWords &words, const QString (&keywords)[N])
{
    const auto isKeyword = [&keywords](QStringView word) {
        return std::any_of(std::begin(keywords), std::end(keywords),
                           [word](const QString &keyword) { return keyword == word; });
    };
    for (const QString &keyword : keywords) {
        const int at = words.indexOf(keyword);
        if (at < 0 || at + 1 >= words.size() || isKeyword(words.at(at + 1)))
            return keyword;
    }
    return QString();
}

// Walks a two-section line file as the manager reads it (a zero-byte file not
// at all), and notes what a write-back would not keep, as the readers skip it:
// lines other than the title before the first section marker, and more than
// the marker on a marker's line.
void readLineFile(const QString &path, const QString &rdeFilePath, const QByteArray &bytes,
                  const QString &inputMarker, const QString &outputMarker,
                  const std::function<void(BiBo, QStringView, int)> &onRow,
                  QVector<SnapshotFileProblem> &problems)
{
    if (bytes.isEmpty()) {
        problems.append({SnapshotFileProblem::Empty, rdeFilePath, 0, path});
        return;
    }
    // CRs are dropped when read: a file without LFs is one line.
    const QString crOnly = bytes.contains('\r') && !bytes.contains('\n') ? QStringLiteral("cr")
                                                                       : QString();
    bool titleSeen = false;
    int first = 0;
    int skipped = 0;
    configio::readSectionRows(
            configio::decodeLineFile(bytes), inputMarker, outputMarker, onRow,
            [&](QStringView text, int line, bool isMarker) {
                if (isMarker) {
                    if (text != inputMarker && text != outputMarker)
                        problems.append(
                                {SnapshotFileProblem::MarkerWithText, rdeFilePath, line, crOnly});
                } else if (!titleSeen) {
                    titleSeen = true;
                } else if (skipped++ == 0) {
                    first = line;
                }
            });
    if (skipped > 0)
        problems.append({SnapshotFileProblem::SkippedLines, rdeFilePath, first,
                         QString::number(skipped)});
}

void readMappings(const QString &path, const QString &rdeFilePath, const QByteArray &bytes,
                  QVector<SnapshotMapping> &rows, QVector<SnapshotFileProblem> &problems)
{
    configio::ColumnTexts texts;
    readLineFile(path, rdeFilePath, bytes, fieldbusnames::systemInputMarker,
                 fieldbusnames::systemOutputMarker,
                 [&rows, &texts](BiBo dir, QStringView row, int line) {
                     const configio::LineWords words(row);
                     rows.append({signalmapfile::parseRow(words, texts), dir, line,
                                  missingKeyword(words, mappingKeywords)});
                 },
                 problems);
}

// 1-based line and column of a byte offset; the column counts characters.
QPair<int, int> lineAndColumn(const QByteArray &bytes, qsizetype offset)
{
    const QByteArray before = bytes.left(int(qBound<qsizetype>(0, offset, bytes.size())));
    const int lineStart = before.lastIndexOf('\n') + 1;
    return {1 + int(before.count('\n')),
            1
                    + QString::fromUtf8(before.constData() + lineStart, before.size() - lineStart)
                              .size()};
}

// Reads a file whole, noting why when it cannot be read or is not UTF-8.
bool readBytes(const QString &path, const QString &rdeFilePath, QByteArray &bytes,
               QVector<SnapshotFileProblem> &problems)
{
    const QFileInfo info(path);
    if (!info.exists()) {
        problems.append({SnapshotFileProblem::Missing, rdeFilePath, 0, path});
        return false;
    }
    // There but not readable: the fetch fails as for a missing file, yet the
    // fix is another one.
    QFile file(path);
    if (!info.isFile() || !file.open(QIODevice::ReadOnly)) {
        problems.append({SnapshotFileProblem::Unreadable, rdeFilePath, 0,
                         info.isDir() ? QString() : file.errorString()});
        return false;
    }
    bytes = file.readAll();
    if (const int line = ConfigSnapshot::firstLineNotUtf8(bytes))
        problems.append({SnapshotFileProblem::NotUtf8, rdeFilePath, line, path});
    return true;
}

// Offset of the first "&" that starts no character or predefined entity
// reference outside comments, CDATA and processing instructions, or -1. The
// manager's readers take it as text; any other XML reader refuses the file.
qsizetype firstBareAmpersand(const QByteArray &bytes)
{
    static const QRegularExpression reference(
            QStringLiteral("^&(amp|lt|gt|quot|apos|#[0-9]+|#x[0-9a-fA-F]+);"));
    const QPair<const char *, const char *> skipped[] = {
            {"<!--", "-->"}, {"<![CDATA[", "]]>"}, {"<?", "?>"}};
    for (qsizetype at = 0; at < bytes.size(); ++at) {
        if (bytes.at(at) == '<') {
            for (const auto &skip : skipped) {
                // The buffer ends in a NUL, so the comparison stops there.
                if (qstrncmp(bytes.constData() + at, skip.first, qstrlen(skip.first)) == 0) {
                    const qsizetype end = bytes.indexOf(skip.second, at);
                    at = end < 0 ? bytes.size() : end;
                    break;
                }
            }
        } else if (bytes.at(at) == '&'
                   && !reference.match(QString::fromLatin1(bytes.mid(at, 12))).hasMatch()) {
            return at;
        }
    }
    return -1;
}

bool loadXml(const QString &path, const QString &rdeFilePath, pugi::xml_document &doc,
             QVector<SnapshotFileProblem> &problems)
{
    QByteArray bytes;
    if (!readBytes(path, rdeFilePath, bytes, problems))
        return false;
    // The options of the manager's readers: processing instructions only.
    const pugi::xml_parse_result result = doc.load_buffer(bytes.constData(), size_t(bytes.size()),
                                                          pugi::parse_pi, pugi::encoding_auto);
    if (result) {
        const qsizetype bare = firstBareAmpersand(bytes);
        if (bare >= 0) {
            const QPair<int, int> at = lineAndColumn(bytes, bare);
            problems.append({SnapshotFileProblem::NotWellFormed, rdeFilePath, at.first,
                             QStringLiteral("\"&\" starts no entity reference"), at.second});
        }
        return true;
    }
    const QPair<int, int> at = lineAndColumn(bytes, result.offset);
    problems.append({SnapshotFileProblem::Unparsable, rdeFilePath, at.first,
                     QString::fromUtf8(result.description()), at.second});
    return false;
}

// The functions of a list's sections for one direction.
QVector<SnapshotFunction> declaredFunctions(const pugi::xml_node &list, const char *digital,
                                            const char *analog)
{
    QVector<SnapshotFunction> functions;
    for (const char *section : {digital, analog}) {
        for (const FuncAndMapInfo &record : functionlist::functionRecords(list.child(section)))
            functions.append({record.name, record.nameCn, record.type});
    }
    return functions;
}

} // namespace

ConfigSnapshot ConfigSnapshot::load(const QString &root, Layout layout)
{
    ConfigSnapshot s;
    s.root = root;
    s.layout = layout;

    pugi::xml_document doc;
    if (loadXml(s.fixedFilePath(RDE_FIELDBUS_XML), RDE_FIELDBUS_XML, doc, s.problems)) {
        const fieldbuslist::Contents contents = fieldbuslist::parse(doc);
        s.buses = contents.buses;
        s.busShortNames = contents.shortNames;
        s.freeBusOpen = contents.freeBusOpen;
    }

    if (loadXml(s.fixedFilePath(RDE_FIELDBUS_CFG_XML), RDE_FIELDBUS_CFG_XML, doc, s.problems))
        fieldbusareas::parse(doc, s.areas);

    if (loadXml(s.fixedFilePath(RDE_FUNC_INFO_XML), RDE_FUNC_INFO_XML, doc, s.problems)) {
        // A list several modules name is reported once.
        QSet<QString> failedLists;
        for (const functionlist::ModuleEntry &entry : functionlist::moduleEntries(doc)) {
            // The pendant skips an empty path without a word.
            if (entry.path.isEmpty())
                continue;
            if (failedLists.contains(entry.path)) {
                s.unreadListModules.insert(entry.name, entry.path);
                continue;
            }
            const QString listFile = s.listFilePath(entry.path);
            if (listFile.isEmpty())
                s.problems.append({SnapshotFileProblem::Refused, entry.path, 0, entry.name});
            pugi::xml_document list;
            if (listFile.isEmpty() || !loadXml(listFile, entry.path, list, s.problems)) {
                failedLists.insert(entry.path);
                s.unreadListModules.insert(entry.name, entry.path);
                continue;
            }
            const QString key = functionlist::moduleKey(list);
            if (key.isEmpty())
                continue;
            const pugi::xml_node functions = list.child("FunctionList");
            SnapshotModule &module = s.modules[key];
            module.name = entry.name;
            module.nameCn = entry.nameCn;
            module.listPath = entry.path;
            module.functions[BusInput] = declaredFunctions(functions, "Input", "AnalogInput");
            module.functions[BusOutput] = declaredFunctions(functions, "Output", "AnalogOutput");
        }
    }

    QByteArray bytes;
    const QString mappingPath = s.fixedFilePath(RDE_SIGNAL_MAP_CFG);
    if (readBytes(mappingPath, RDE_SIGNAL_MAP_CFG, bytes, s.problems))
        readMappings(mappingPath, RDE_SIGNAL_MAP_CFG, bytes, s.mappings, s.problems);

    const QString groupPath = s.fixedFilePath(RDE_GROUP_CFG);
    if (readBytes(groupPath, RDE_GROUP_CFG, bytes, s.problems)) {
        configio::ColumnTexts texts;
        readLineFile(groupPath, RDE_GROUP_CFG, bytes, fieldbusnames::groupInputMarker,
                     fieldbusnames::groupOutputMarker,
                     [&s, &texts](BiBo dir, QStringView row, int line) {
                         const configio::LineWords words(row);
                         s.groups.append({groupfile::parseRow(words, texts), dir, line,
                                          missingKeyword(words, groupKeywords)});
                     },
                     s.problems);
    }

    // Like the manager, a missing or broken description file means no descriptions.
    if (loadXml(s.fixedFilePath(RDE_USER_DES_XML), RDE_USER_DES_XML, doc, s.problems))
        s.descriptions = userdescriptions::parse(doc);

    // Only read to know whether it can be: the safety descriptions are shown,
    // never compared or written.
    loadXml(s.fixedFilePath(RDE_PFS_DES_XML), RDE_PFS_DES_XML, doc, s.problems);

    if (loadXml(s.fixedFilePath(RDE_FBSLAVE_CFGX), RDE_FBSLAVE_CFGX, doc, s.problems)) {
        const pugi::xml_node endian = slavedevice::endianNode(doc);
        s.hasEndian = bool(endian);
        s.endian = QString::fromUtf8(endian.text().get());
    }
    return s;
}

bool ConfigSnapshot::readMappingFile(const QString &path, QVector<SnapshotMapping> &rows,
                                     QVector<SnapshotFileProblem> *problems)
{
    QVector<SnapshotFileProblem> found;
    QByteArray bytes;
    const bool read = readBytes(path, path, bytes, found);
    if (read)
        readMappings(path, path, bytes, rows, found);
    if (problems)
        *problems += found;
    return read;
}

QString ConfigSnapshot::fixedFilePath(const QString &rdeFilePath) const
{
    if (layout == ControllerLayout)
        return root + rdeFilePath;
    return root + QLatin1Char('/') + rdeFilePath.section(QLatin1Char('/'), -1);
}

QString ConfigSnapshot::listFilePath(const QString &rdeFilePath) const
{
    if (layout == PendantLayout)
        return functionlist::localListPath(root, rdeFilePath);
    // Controller paths from a file must not lead out of the folder either.
    if (rdeFilePath.split(QLatin1Char('/')).contains(QStringLiteral("..")))
        return QString();
    return root + (rdeFilePath.startsWith(QLatin1Char('/')) ? QString() : QStringLiteral("/"))
            + rdeFilePath;
}

QStringList ConfigSnapshot::enabledShortNames() const
{
    QStringList names;
    QSet<QString> seen;
    for (const BusName &bus : fieldbuslist::filter(buses, false, true)) {
        if (!seen.contains(bus.shortName)) {
            seen.insert(bus.shortName);
            names.append(bus.shortName);
        }
    }
    return names;
}

int ConfigSnapshot::busNum(const QString &bus, BiBo dir, const QString &type) const
{
    return fieldbusareas::busNum(areas, bus, dir, type);
}

int ConfigSnapshot::firstLineNotUtf8(const QByteArray &bytes)
{
    if (configio::isUtf8(bytes))
        return 0;
    QTextCodec *utf8 = QTextCodec::codecForName("UTF-8");
    int line = 1;
    for (int start = 0; start < bytes.size(); ++line) {
        int end = bytes.indexOf('\n', start);
        if (end < 0)
            end = bytes.size();
        QTextCodec::ConverterState state;
        utf8->toUnicode(bytes.constData() + start, end - start, &state);
        // A sequence cut off by the line end is as invalid as a wrong byte.
        if (state.invalidChars > 0 || state.remainingChars > 0)
            return line;
        start = end + 1;
    }
    return line;
}
