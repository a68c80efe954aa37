#pragma once

#include <QCoreApplication>
#include <QJsonValue>
#include <QString>
#include <QStringList>
#include <QVector>

// Translation context of every text the tool shows.
class Fbcfg
{
    Q_DECLARE_TR_FUNCTIONS(fbcfg)
};

// Exit status of a command.
enum ExitCode : int { ExitOk = 0, ExitRefused = 1, ExitFailure = 2 };

// Terminal output, always UTF-8 whatever the locale.
namespace Output {

void setVerbose(bool verbose);
bool isVerbose();

// A line on stdout, or on stderr while a dry run keeps stdout for its diff.
void line(const QString &text = QString());
void setLinesToStderr(bool toStderr);
// A line on stderr, as it stands.
void note(const QString &text);
// "fbcfg: TEXT" on stderr.
void error(const QString &text);
// Replaces the progress line on stderr; only when stderr is a terminal.
void progress(const QString &text);
void endProgress();

void json(const QJsonValue &value);
// Bytes on stdout as they are (a file written to "-").
void raw(const QByteArray &bytes);
// A decimal integer as a JSON number, any other text as it stands.
QJsonValue numberOrText(const QString &text);
// Aligned columns; `header` may be empty.
void table(const QStringList &header, const QVector<QStringList> &rows);

// A message box text on one line.
QString folded(const QString &text);

bool stdinIsTerminal();
// Whether lines may carry colours: stdout is a terminal and NO_COLOR is not set.
bool colourful();
// Drops Qt's debug, info and warning output unless verbose.
void installMessageHandler();

} // namespace Output
