#include "ConfigFileIo.h"

#include <QFile>
#include <QFileInfo>
#include <QSaveFile>
#include <QTextCodec>
#include <QTextStream>

#include <algorithm>
#include <sstream>

namespace configio {

QString padRight(const QString &value, int width)
{
    return value.size() >= width ? value : value.leftJustified(width, QLatin1Char(' '));
}

void appendPadded(QString &out, QStringView value, int width)
{
    static const QString blanks(64, QLatin1Char(' '));
    out.append(value);
    for (int missing = width - int(value.size()); missing > 0; missing -= blanks.size())
        out.append(blanks.constData(), std::min(missing, int(blanks.size())));
}

QByteArray sectionFileBytes(const QString &title, const QString &inputMarker,
                            const QString &outputMarker,
                            const std::function<void(QString &, BiBo)> &appendRows)
{
    QString text;
    text += title + QLatin1String("\n\n") + inputMarker + QLatin1Char('\n');
    appendRows(text, BusInput);
    text += QLatin1Char('\n') + outputMarker + QLatin1Char('\n');
    appendRows(text, BusOutput);
    return text.toUtf8();
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

bool writeFileAtomically(const QString &path, const QByteArray &bytes)
{
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly))
        return false;
    // Small writes stay buffered: flush first, since commit() does not report
    // a buffered write that fails on a full disk.
    if (file.write(bytes) != bytes.size() || !file.flush()) {
        file.cancelWriting();
        return false;
    }
    return file.commit();
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
                     const std::function<void(BiBo, QStringView, int)> &onRow)
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
        const bool mayMark = row.contains(markerStarts[0]) || row.contains(markerStarts[1]);
        if (mayMark && row.contains(inputMarker)) {
            inSection = true;
            section = BusInput;
        } else if (mayMark && row.contains(outputMarker)) {
            inSection = true;
            section = BusOutput;
        } else if (inSection) {
            onRow(section, row, lineNumber);
        }
    }
}

} // namespace configio
