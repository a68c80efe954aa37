#include "ConfigFileIo.h"

#include <QFile>
#include <QFileInfo>
#include <QSaveFile>
#include <QTextCodec>
#include <QTextStream>

#include <algorithm>
#include <cstring>
#include <sstream>

namespace configio {

QString padRight(const QString &value, int width)
{
    return value.size() >= width ? value : value.leftJustified(width, QLatin1Char(' '));
}

LineFileWriter::LineFileWriter(QIODevice *device)
    : m_device(device)
    , m_buffer(new char[bufferSize])
{ }

const QString &LineFileWriter::changedCase(int column, const QString &value, Case letterCase)
{
    CaseChange &last = m_lastChange[column];
    // Texts read from a file share their data from row to row: most rows are
    // told apart without comparing characters.
    if (!last.value.isSharedWith(value) && (last.value != value || last.value.isNull())) {
        last.value = value;
        last.changed = letterCase == Lower ? value.toLower() : value.toUpper();
    }
    return last.changed;
}

void LineFileWriter::appendField(int column, QLatin1String keyword, const QString &value, int width,
                                 Case letterCase)
{
    const QString &text = letterCase == AsIs ? value : changedCase(column, value, letterCase);
    const qsizetype length = text.size();
    const qsizetype padding = std::max<qsizetype>(0, width - length);
    appendBytes(keyword.data(), keyword.size());
    // Nearly every value is ASCII: those are narrowed in place.
    const char16_t *chars = reinterpret_cast<const char16_t *>(text.constData());
    char16_t all = 0;
    for (qsizetype i = 0; i < length; ++i)
        all |= chars[i];
    if (all < 0x80 && length <= bufferSize) {
        char *out = room(length);
        for (qsizetype i = 0; i < length; ++i)
            out[i] = char(chars[i]);
    } else {
        append(text);
    }
    // Widths are small, so the blanks always fit.
    std::memset(room(padding), ' ', size_t(padding));
}

void LineFileWriter::append(const QString &text)
{
    const QByteArray utf8 = text.toUtf8();
    appendBytes(utf8.constData(), utf8.size());
}

void LineFileWriter::appendBytes(const char *bytes, qsizetype size)
{
    if (size <= bufferSize) {
        std::memcpy(room(size), bytes, size_t(size));
        return;
    }
    writeOut();
    if (!m_failed && m_device->write(bytes, size) != size)
        m_failed = true;
}

char *LineFileWriter::room(qsizetype size)
{
    if (m_used + size > bufferSize)
        writeOut();
    char *at = m_buffer.get() + m_used;
    m_used += size;
    return at;
}

void LineFileWriter::endRow()
{
    *room(1) = '\n';
}

void LineFileWriter::writeOut()
{
    if (!m_failed && m_device->write(m_buffer.get(), m_used) != m_used)
        m_failed = true;
    m_used = 0;
}

bool LineFileWriter::finish()
{
    writeOut();
    return !m_failed;
}

bool writeSectionFile(const QString &path, const QString &title, const QString &inputMarker,
                      const QString &outputMarker,
                      const std::function<void(LineFileWriter &, BiBo)> &appendRows)
{
    return writeFileAtomically(path, [&](QIODevice &device) {
        LineFileWriter out(&device);
        out.append(title);
        out.append(QLatin1String("\n\n"));
        out.append(inputMarker);
        out.endRow();
        appendRows(out, BusInput);
        out.endRow();
        out.append(outputMarker);
        out.endRow();
        appendRows(out, BusOutput);
        return out.finish();
    });
}

QString localFolderOf(const QString &filePath)
{
    const QString fileName = filePath.split(QLatin1Char('/')).last();
    return QString(filePath).remove(fileName, Qt::CaseSensitive);
}

bool isUtf8(const QByteArray &bytes)
{
    QTextCodec::ConverterState state(QTextCodec::IgnoreHeader);
    QTextCodec::codecForMib(106)->toUnicode(bytes.constData(), int(bytes.size()), &state);
    return state.invalidChars == 0 && state.remainingChars == 0;
}

bool writeFileAtomically(const QString &path, const std::function<bool(QIODevice &)> &write)
{
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly))
        return false;
    // Small writes stay buffered: flush first, since commit() does not report
    // a buffered write that fails on a full disk.
    if (!write(file) || !file.flush()) {
        file.cancelWriting();
        return false;
    }
    return file.commit();
}

bool writeFileAtomically(const QString &path, const QByteArray &bytes)
{
    return writeFileAtomically(
            path, [&bytes](QIODevice &device) { return device.write(bytes) == bytes.size(); });
}

bool saveXml(const pugi::xml_document &doc, const QString &path, const char *indent,
             unsigned int flags, pugi::xml_encoding encoding)
{
    std::ostringstream out;
    doc.save(out, indent, flags, encoding);
    const std::string bytes = out.str();
    return writeFileAtomically(path, QByteArray(bytes.data(), static_cast<int>(bytes.size())));
}

pugi::xml_parse_result loadXml(pugi::xml_document &doc, const QString &path, unsigned int options)
{
    // pugixml sizes its buffer by seeking to the end, which a folder or a
    // device answers with nonsense.
    if (!QFileInfo(path).isFile()) {
        pugi::xml_parse_result result;
        result.status = pugi::status_file_not_found;
        return result;
    }
    return doc.load_file(QFile::encodeName(path).constData(), options, pugi::encoding_auto);
}

QString decodeLineFile(const QByteArray &bytes, bool *utf8)
{
    QTextCodec::ConverterState state;
    QString text =
            QTextCodec::codecForMib(106)->toUnicode(bytes.constData(), int(bytes.size()), &state);
    if (utf8)
        *utf8 = state.invalidChars == 0 && state.remainingChars == 0;
    if (text.contains(QLatin1Char('\r')))
        text.remove(QLatin1Char('\r'));
    return text;
}

LineWords::LineWords(QStringView line)
{
    const QChar *at = line.begin();
    const QChar *const end = line.end();
    while (at != end) {
        while (at != end && at->isSpace())
            ++at;
        const QChar *const start = at;
        while (at != end && !at->isSpace())
            ++at;
        if (at != start)
            m_words.append(QStringView(start, at));
    }
}

int LineWords::indexOf(QStringView word) const
{
    for (int i = 0; i < size(); ++i) {
        if (m_words.at(i) == word)
            return i;
    }
    return -1;
}

QStringView LineWords::after(QStringView keyword) const
{
    const int at = indexOf(keyword);
    if (at < 0 || at + 1 >= size())
        return u"0";
    return m_words.at(at + 1);
}

const QString &ColumnTexts::text(int column, QStringView word)
{
    QString &last = m_word[column];
    if (last != word)
        last = word.toString();
    return last;
}

const QString &ColumnTexts::lowerText(int column, QStringView word)
{
    if (m_lowerWord[column] != word) {
        m_lowerWord[column] = word.toString();
        m_lower[column] = m_lowerWord[column].toLower();
    }
    return m_lower[column];
}

void readSectionRows(const QString &text, const QString &inputMarker, const QString &outputMarker,
                     const std::function<void(BiBo, QStringView, int)> &onRow,
                     const std::function<void(QStringView, int, bool)> &notRows)
{
    bool inSection = false;
    BiBo section = BusInput;
    int lineNumber = 0;
    // A row without a marker's first character holds no marker: most rows are
    // told apart without searching for the markers.
    const QChar markerStarts[] = {inputMarker.at(0), outputMarker.at(0)};
    for (qsizetype start = 0; start < text.size();) {
        qsizetype end = text.indexOf(QLatin1Char('\n'), start);
        if (end < 0)
            end = text.size();
        ++lineNumber;
        const QStringView row = QStringView(text).mid(start, end - start).trimmed();
        start = end + 1;
        if (row.isEmpty())
            continue;
        const bool mayMark = row.contains(markerStarts[0])
                || (markerStarts[1] != markerStarts[0] && row.contains(markerStarts[1]));
        const bool isInput = mayMark && row.contains(inputMarker);
        if (isInput || (mayMark && row.contains(outputMarker))) {
            inSection = true;
            section = isInput ? BusInput : BusOutput;
            if (notRows)
                notRows(row, lineNumber, true);
        } else if (inSection) {
            onRow(section, row, lineNumber);
        } else if (notRows) {
            notRows(row, lineNumber, false);
        }
    }
}

} // namespace configio
