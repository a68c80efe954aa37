#pragma once

// Helpers that every configuration file format shares.

#include "FieldbusTypes.h"

#include <QByteArray>
#include <QString>

#include <pugixml.hpp>

#include <functional>

class QIODevice;
class QTextStream;

namespace configio {

// `value` with blanks appended up to `width`; a longer value stays whole.
QString padRight(const QString &value, int width);

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

// Sets the encoding of the line-oriented files: UTF-8 without byte-order mark.
void useFileEncoding(QTextStream &stream);

// Replaces `path` by `bytes` atomically: readers never see a half-written file,
// and a failed write keeps the earlier file.
bool writeFileAtomically(const QString &path, const QByteArray &bytes);

// Serialises `doc` in memory with the given pugixml options, then commits it
// with writeFileAtomically.
bool saveXml(const pugi::xml_document &doc, const QString &path, const char *indent,
             unsigned int flags, pugi::xml_encoding encoding);

// Loads `path` (a Qt path) with the given parse options. Only a regular file
// is loaded: anything else fails as a file that cannot be opened.
pugi::xml_parse_result loadXml(pugi::xml_document &doc, const QString &path, unsigned int options);

// Walks a two-section line file ("#System_Input:"/"#System_Output:" and alike):
// every trimmed non-empty line after a section marker goes to `onRow` with the
// section's direction and its 1-based line number; lines before the first
// marker are ignored.
void readSectionRows(QIODevice &device, const QString &inputMarker, const QString &outputMarker,
                     const std::function<void(BiBo, const QString &, int)> &onRow);

} // namespace configio
