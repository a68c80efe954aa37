#include "Logging.h"

#include <QFileInfo>

Q_LOGGING_CATEGORY(lcFieldbus, "fieldbusconfig")

QString absolutePathOf(const QString &path)
{
    return QFileInfo(path).absoluteFilePath();
}
