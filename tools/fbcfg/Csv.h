#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <QVector>

// RFC 4180 comma-separated values, UTF-8, the one reader and writer of the tool.
namespace csv {

struct Record
{
    // 1-based line of the file where the record begins.
    int line = 0;
    QStringList fields;
    // Why the record is malformed, else empty.
    QString error;
};

// The records of a file: a leading byte-order mark is skipped, lines may end
// with LF or CRLF, quoted fields may hold commas, quotes ("") and line breaks.
// Blank lines give no record. A quote left open makes the last record malformed.
QVector<Record> parse(const QByteArray &bytes);

// One record, fields quoted where they need it, ended with CRLF.
QByteArray format(const QStringList &fields);

// What spreadsheet programs look for to read UTF-8.
const QByteArray byteOrderMark("\xEF\xBB\xBF", 3);

} // namespace csv
