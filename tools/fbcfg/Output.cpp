#include "Output.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <cstdio>
#include <unistd.h>

namespace {

bool verboseOutput = false;
bool progressShown = false;
bool linesToStderr = false;

void write(FILE *stream, const QString &text)
{
    const QByteArray bytes = text.toUtf8();
    fwrite(bytes.constData(), 1, size_t(bytes.size()), stream);
    fflush(stream);
}

bool stderrIsTerminal()
{
    return isatty(STDERR_FILENO) == 1;
}

// Columns a text takes on a terminal: East Asian wide characters take two.
int displayWidth(const QString &text)
{
    int width = 0;
    for (const QChar c : text) {
        const ushort u = c.unicode();
        const bool wide = (u >= 0x1100 && u <= 0x115F) || (u >= 0x2E80 && u <= 0xA4CF)
                || (u >= 0xAC00 && u <= 0xD7A3) || (u >= 0xF900 && u <= 0xFAFF)
                || (u >= 0xFE30 && u <= 0xFE4F) || (u >= 0xFF00 && u <= 0xFF60)
                || (u >= 0xFFE0 && u <= 0xFFE6);
        width += wide ? 2 : 1;
    }
    return width;
}

void messageHandler(QtMsgType type, const QMessageLogContext &, const QString &message)
{
    if (!verboseOutput && (type == QtDebugMsg || type == QtInfoMsg || type == QtWarningMsg))
        return;
    Output::note(message);
}

} // namespace

namespace Output {

void setVerbose(bool verbose)
{
    verboseOutput = verbose;
}

bool isVerbose()
{
    return verboseOutput;
}

void setLinesToStderr(bool toStderr)
{
    linesToStderr = toStderr;
}

void line(const QString &text)
{
    endProgress();
    write(linesToStderr ? stderr : stdout, text + QLatin1Char('\n'));
}

void note(const QString &text)
{
    endProgress();
    write(stderr, text + QLatin1Char('\n'));
}

void error(const QString &text)
{
    note(QStringLiteral("fbcfg: ") + text);
}

void progress(const QString &text)
{
    if (!stderrIsTerminal())
        return;
    endProgress();
    write(stderr, text);
    progressShown = true;
}

void endProgress()
{
    if (!progressShown)
        return;
    progressShown = false;
    // Blank out the line so that what follows starts clean.
    write(stderr, QStringLiteral("\r\033[K"));
}

void json(const QJsonValue &value)
{
    const QJsonDocument document =
            value.isArray() ? QJsonDocument(value.toArray()) : QJsonDocument(value.toObject());
    endProgress();
    write(linesToStderr ? stderr : stdout,
          QString::fromUtf8(document.toJson(QJsonDocument::Indented)));
}

void raw(const QByteArray &bytes)
{
    endProgress();
    fwrite(bytes.constData(), 1, size_t(bytes.size()), stdout);
    fflush(stdout);
}

QJsonValue numberOrText(const QString &text)
{
    bool ok = false;
    const int number = text.toInt(&ok, 10);
    return ok && text == QString::number(number) ? QJsonValue(number) : QJsonValue(text);
}

void table(const QStringList &header, const QVector<QStringList> &rows)
{
    QVector<QStringList> all;
    if (!header.isEmpty())
        all.append(header);
    all += rows;
    QVector<int> widths;
    for (const QStringList &row : qAsConst(all)) {
        for (int i = 0; i < row.size(); ++i) {
            if (widths.size() <= i)
                widths.append(0);
            widths[i] = qMax(widths[i], displayWidth(row.at(i)));
        }
    }
    for (const QStringList &row : qAsConst(all)) {
        QString text;
        for (int i = 0; i < row.size(); ++i) {
            text += row.at(i);
            if (i + 1 < row.size())
                text += QString(widths.at(i) - displayWidth(row.at(i)) + 2, QLatin1Char(' '));
        }
        line(text);
    }
}

QString folded(const QString &text)
{
    return text.simplified();
}

bool colourful()
{
    return isatty(STDOUT_FILENO) == 1 && !linesToStderr && qEnvironmentVariableIsEmpty("NO_COLOR");
}

bool stdinIsTerminal()
{
    return isatty(STDIN_FILENO) == 1;
}

void installMessageHandler()
{
    qInstallMessageHandler(messageHandler);
}

} // namespace Output
