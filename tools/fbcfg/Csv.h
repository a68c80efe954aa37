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
// with LF or CRLF, quoted fields may hold the delimiter, quotes ("") and line
// breaks. Blank lines give no record. A quote left open makes the last record
// malformed, and so does a NUL byte (the file is no text).
QVector<Record> parse(const QByteArray &bytes, QChar delimiter = QLatin1Char(','));

// One record, fields quoted where they need it, ended with CRLF; a record of
// one empty field is written as "" so that it is no blank line.
QByteArray format(const QStringList &fields, QChar delimiter = QLatin1Char(','));

// What spreadsheet programs look for to read UTF-8.
const QByteArray byteOrderMark("\xEF\xBB\xBF", 3);

} // namespace csv
