#pragma once

// Helpers that every configuration file format shares.

#include "FieldbusTypes.h"

#include <QByteArray>
#include <QIODevice>
#include <QString>
#include <QStringView>
#include <QVarLengthArray>

#include <pugixml.hpp>

#include <functional>
#include <memory>

namespace configio {

// `value` with blanks appended up to `width`; a longer value stays whole.
QString padRight(const QString &value, int width);

// Writes the UTF-8 text of a line file whose rows are "-Keyword value" fields,
// each value padded with blanks to its column's width. The text goes to the
// device in chunks, so the whole file is never held in memory.
class LineFileWriter
{
public:
    enum Case { AsIs, Lower, Upper };
    static constexpr int columns = 8;
    static constexpr qsizetype bufferSize = 64 * 1024;

    explicit LineFileWriter(QIODevice *device);

    void append(QLatin1String text) { appendBytes(text.data(), text.size()); }
    void append(const QString &text);
    // `keyword`, then `value` (changed to `letterCase`) padded to `width`
    // characters; a longer value stays whole. A column changes the case of
    // its values always the same way.
    void appendField(int column, QLatin1String keyword, const QString &value, int width,
                     Case letterCase = AsIs);
    void endRow();
    // Writes what is left; false when any write failed.
    bool finish();

private:
    // Values repeat from row to row (type, bus), so a column changes the case
    // of a value only when it differs from the previous one.
    const QString &changedCase(int column, const QString &value, Case letterCase);
    void appendBytes(const char *bytes, qsizetype size);
    // Room for `size` (at most bufferSize) more bytes at the end of the
    // buffer, written out first when it is full.
    char *room(qsizetype size);
    void writeOut();

    struct CaseChange
    {
        QString value;
        QString changed;
    };
    QIODevice *m_device;
    bool m_failed = false;
    std::unique_ptr<char[]> m_buffer;
    qsizetype m_used = 0;
    CaseChange m_lastChange[columns];
};

// Writes a two-section line file atomically (see writeFileAtomically): the
// title, a blank line, the input marker and rows, a blank line, the output
// marker and rows, UTF-8 without byte-order mark. `appendRows` appends the
// rows of a direction, each ending with endRow().
bool writeSectionFile(const QString &path, const QString &title, const QString &inputMarker,
                      const QString &outputMarker,
                      const std::function<void(LineFileWriter &, BiBo)> &appendRows);

// The folder that holds a local file: the path with every occurrence of the
// file name removed, so a folder bearing the file's own name loses it too.
QString localFolderOf(const QString &filePath);

// Runs `attempt` until it succeeds, at most `attempts` times; after each
// failed try `afterFailure` learns whether it was the last. The transfers of
// the worker and of the manager wait and log through it.
template<typename Attempt, typename AfterFailure>
bool retry(int attempts, Attempt attempt, AfterFailure afterFailure)
{
    for (int i = 0; i < attempts; ++i) {
        if (attempt())
            return true;
        afterFailure(i == attempts - 1);
    }
    return false;
}

// True when `bytes` are valid UTF-8 throughout.
bool isUtf8(const QByteArray &bytes);

// The text of a line-oriented file as its readers see it: decoded from UTF-8
// (bytes that are not become U+FFFD, a leading byte-order mark is dropped)
// and every carriage return removed, as reading in text mode does. `utf8`
// learns whether all bytes were UTF-8.
QString decodeLineFile(const QByteArray &bytes, bool *utf8 = nullptr);

// The words of a line: the runs of characters that are not white space, as
// splitting the simplified line at blanks gives them. Views into the line.
class LineWords
{
public:
    explicit LineWords(QStringView line);

    int size() const { return int(m_words.size()); }
    QStringView at(int i) const { return m_words.at(i); }
    int indexOf(QStringView word) const;
    // The word after the first word equal to `keyword`; "0" when there is none.
    QStringView after(QStringView keyword) const;

private:
    QVarLengthArray<QStringView, 16> m_words;
};

// The texts of the words of a column, row after row. Values repeat from row to
// row (module, type, bus, flags): a word equal to the column's previous one
// shares that text instead of allocating its own.
class ColumnTexts
{
public:
    static constexpr int columns = 8;
    const QString &text(int column, QStringView word);
    const QString &lowerText(int column, QStringView word);

private:
    QString m_word[columns];
    QString m_lowerWord[columns];
    QString m_lower[columns];
};

// Replaces `path` by what `write` writes to the device, atomically: readers
// never see a half-written file, and a failed write (`write` returning false)
// keeps the earlier file.
bool writeFileAtomically(const QString &path, const std::function<bool(QIODevice &)> &write);
bool writeFileAtomically(const QString &path, const QByteArray &bytes);

// Serialises `doc` in memory with the given pugixml options, then commits it
// with writeFileAtomically.
bool saveXml(const pugi::xml_document &doc, const QString &path, const char *indent,
             unsigned int flags, pugi::xml_encoding encoding);

// Loads `path` (a Qt path) with the given parse options. Only a regular file
// is loaded: anything else fails as a file that cannot be opened.
pugi::xml_parse_result loadXml(pugi::xml_document &doc, const QString &path, unsigned int options);

// Walks the text of a two-section line file ("#System_Input:"/"#System_Output:"
// and alike): every trimmed non-empty line after a section marker goes to
// `onRow` with the section's direction and its 1-based line number. The other
// non-empty lines, the markers' and those before the first marker, are not
// rows: they go to `notRows` when given, with whether the line is a marker's.
void readSectionRows(const QString &text, const QString &inputMarker, const QString &outputMarker,
                     const std::function<void(BiBo, QStringView, int)> &onRow,
                     const std::function<void(QStringView, int, bool)> &notRows = {});

} // namespace configio
