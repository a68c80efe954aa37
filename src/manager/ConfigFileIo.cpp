#include "ConfigFileIo.h"

#include <QFile>
#include <QFileInfo>
#include <QSaveFile>
#include <QTextCodec>
#include <QTextStream>

#include <sstream>

namespace configio {

QString padRight(const QString &value, int width)
{
    return value.size() >= width ? value : value.leftJustified(width, QLatin1Char(' '));
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

void useFileEncoding(QTextStream &stream)
{
    stream.setCodec("UTF-8");
    stream.setGenerateByteOrderMark(false);
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

void readSectionRows(QIODevice &device, const QString &inputMarker, const QString &outputMarker,
                     const std::function<void(BiBo, const QString &, int)> &onRow)
{
    QTextStream stream(&device);
    useFileEncoding(stream);
    bool inSection = false;
    BiBo section = BusInput;
    QString line;
    int lineNumber = 0;
    while (stream.readLineInto(&line)) {
        ++lineNumber;
        const QString row = line.trimmed();
        if (row.isEmpty())
            continue;
        if (row.contains(inputMarker)) {
            inSection = true;
            section = BusInput;
        } else if (row.contains(outputMarker)) {
            inSection = true;
            section = BusOutput;
        } else if (inSection) {
            onRow(section, row, lineNumber);
        }
    }
}

} // namespace configio
