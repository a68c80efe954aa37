#pragma once

#include <QLoggingCategory>

// The library's diagnostics: "fieldbusconfig.debug=false" in QT_LOGGING_RULES silences them.
Q_DECLARE_LOGGING_CATEGORY(lcFieldbus)

// Where a relative path lies, for log lines a person can act on.
QString absolutePathOf(const QString &path);
