#include "Csv.h"

#include "Output.h"

namespace csv {

QVector<Record> parse(const QByteArray &bytes, QChar delimiter)
{
    // With its size: a NUL byte must not end the text.
    const int skip = bytes.startsWith(byteOrderMark) ? byteOrderMark.size() : 0;
    const QString text = QString::fromUtf8(bytes.constData() + skip, bytes.size() - skip);
    QVector<Record> records;
    Record record;
    QString field;
    bool quoted = false; // inside a quoted field
    bool closed = false; // after the closing quote of a field
    bool empty = true; // nothing of the record read yet
    int line = 1;
    int quoteLine = 0;
    const auto next = [&text](int i) { return i + 1 < text.size() ? text.at(i + 1) : QChar(); };
    const auto endField = [&] {
        record.fields.append(field);
        field.clear();
        closed = false;
    };
    const auto endRecord = [&] {
        if (!empty) {
            endField();
            records.append(record);
        }
        record = Record();
        field.clear();
        closed = false;
        empty = true;
    };
    for (int i = 0; i < text.size(); ++i) {
        const QChar c = text.at(i);
        if (empty) {
            record.line = line;
            if (c == u'\n' || (c == u'\r' && next(i) == u'\n')) {
                line += c == u'\n' ? 1 : 0;
                continue;
            }
            empty = false;
        }
        if (c == QChar(0) && record.error.isEmpty())
            record.error = Fbcfg::tr("a NUL byte: this is no text file");
        if (quoted) {
            if (c == u'"' && next(i) == u'"') {
                field += c;
                ++i;
            } else if (c == u'"') {
                quoted = false;
                closed = true;
            } else {
                field += c;
                line += c == u'\n' ? 1 : 0;
            }
            continue;
        }
        if (c == delimiter) {
            endField();
        } else if (c == u'\n' || (c == u'\r' && next(i) == u'\n')) {
            if (c == u'\r')
                ++i;
            endRecord();
            ++line;
        } else if (closed) {
            if (record.error.isEmpty())
                record.error = Fbcfg::tr("text after the closing quote of field %1")
                                       .arg(record.fields.size() + 1);
        } else if (c == u'"' && field.isEmpty()) {
            quoted = true;
            quoteLine = line;
        } else {
            field += c;
        }
    }
    if (quoted)
        record.error = Fbcfg::tr("the quote opened on line %1 is not closed").arg(quoteLine);
    endRecord();
    return records;
}

QByteArray format(const QStringList &fields, QChar delimiter)
{
    QStringList out;
    for (QString field : fields) {
        if (field.contains(delimiter) || field.contains(QLatin1Char('"'))
            || field.contains(QLatin1Char('\n')) || field.contains(QLatin1Char('\r'))
            || (fields.size() == 1 && field.isEmpty())) {
            field.replace(QLatin1String("\""), QLatin1String("\"\""));
            field = QLatin1Char('"') + field + QLatin1Char('"');
        }
        out.append(field);
    }
    return out.join(delimiter).toUtf8() + "\r\n";
}

} // namespace csv
