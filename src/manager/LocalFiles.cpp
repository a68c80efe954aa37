#include "BusFileDataManager.h"
#include "Logging.h"

#include "ConfigFileIo.h"
#include "DataAccess.h"
#include "RbxInterface.h"
#include "UserMessage.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace {
constexpr int managerTransferAttempts = 3;
constexpr unsigned int managerRetryWaitMs = 100;
} // namespace

bool BusFileDataManager::getFileFromCtrl(const QString &rdeFilePath, const QString &tpuFilePath)
{
    if (!mkpathLocalTPU(tpuFilePath))
        return false;
    const bool fetched = configio::retry(
            managerTransferAttempts,
            [&] { return DataAccess::GetFileFromController2TPU(rdeFilePath, tpuFilePath, false); },
            [](bool) { delay_MSec(managerRetryWaitMs); });
    if (!fetched)
        getErrorMsg(rdeFilePath);
    return fetched;
}

bool BusFileDataManager::sendFileToCtrl(const QString &rdeFilePath, const QString &tpuFilePath)
{
    return configio::retry(
            managerTransferAttempts,
            [&] { return DataAccess::SendFileFromTPU2Controller(tpuFilePath, rdeFilePath, false); },
            [](bool) { delay_MSec(managerRetryWaitMs); });
}

bool BusFileDataManager::loadFileLocal(pugi::xml_document &doc, const QString &tpuFilePath)
{
    const QString localized = RtmGetLocalizedFileName(tpuFilePath, false);
    const pugi::xml_parse_result result = configio::loadXml(doc, localized, pugi::parse_pi);
    if (result)
        return true;

    qCDebug(lcFieldbus).noquote() << "BusFileDataManager::loadFileLocal() " + tpuFilePath
                    + " failed!";
    qCDebug(lcFieldbus).noquote() << "  " << absolutePathOf(localized) << ": "
                                  << result.description() << " at offset " << result.offset;
    const int slash = tpuFilePath.lastIndexOf(QLatin1Char('/'));
    const QString fileName = slash < 0 ? QString() : tpuFilePath.mid(slash + 1);
    showUserMessage(ErrorMessage, tr("Failed to read file :%1!").arg(fileName), OkButton);
    return false;
}

bool BusFileDataManager::openFileLocal(QFile &file)
{
    if (!file.open(QIODevice::ReadOnly | QIODevice::Text)) {
        qCDebug(lcFieldbus).noquote()
                << "BusFileDataManager::openFileLocal() open fail: " + curFilePath;
        qCDebug(lcFieldbus).noquote()
                << "  " << absolutePathOf(file.fileName()) << ": " << file.errorString();
        return false;
    }
    if (file.size() == 0) {
        qCDebug(lcFieldbus).noquote()
                << "BusFileDataManager::openFileLocal() file size is zero: " + curFilePath;
        qCDebug(lcFieldbus).noquote() << "  " << absolutePathOf(file.fileName());
        return false;
    }
    return true;
}

bool BusFileDataManager::readLocalTextFile(const QString &path,
                                           const std::function<void(const QString &)> &parse)
{
    curFilePath = path;
    QFile file(path);
    if (!openFileLocal(file))
        return false;
    bool utf8 = true;
    const QString text = configio::decodeLineFile(file.readAll(), &utf8);
    noteEncoding(path, utf8);
    parse(text);
    return true;
}

void BusFileDataManager::noteEncoding(const QString &path, bool utf8)
{
    if (utf8) {
        notUtf8Files.remove(path);
        return;
    }
    notUtf8Files.insert(path);
    qCWarning(lcFieldbus).noquote()
            << "  " << absolutePathOf(path)
            << ": holds bytes that are not UTF-8; it will not be written back";
}

bool BusFileDataManager::refuseLossyWrite(const QString &path)
{
    if (!notUtf8Files.contains(path))
        return false;
    showUserMessage(ErrorMessage,
                    tr("%1 holds bytes that are not UTF-8 text. It was not written, so that they "
                       "are not lost: correct the file on the controller first.")
                            .arg(QFileInfo(path).fileName()),
                    OkButton);
    return true;
}

bool BusFileDataManager::mkpathLocalTPU(const QString &tpuFilePath)
{
    QStringList parts = tpuFilePath.split(QLatin1Char('/'));
    if (parts.size() < 2)
        return true;
    parts.removeLast();
    QString folder = parts.join(QLatin1Char('/'));
    if (folder.startsWith(QLatin1Char('/')) && folder.size() > 1)
        folder.remove(0, 1);
    QDir dir(folder);
    if (dir.exists())
        return true;
    return dir.mkpath(folder);
}
