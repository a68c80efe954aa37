#include "BusFileDataManager.h"
#include "Logging.h"

#include "ConfigFileIo.h"
#include "FileFormats.h"

namespace slavedevice {

pugi::xml_node endianNode(const pugi::xml_document &doc)
{
    return doc.child("fieldBusSlave").child("backend").child("endian");
}

} // namespace slavedevice

bool BusFileDataManager::getAndReadFbslave(QString &endian)
{
    if (!getFileFromCtrl(RDE_FBSLAVE_CFGX, TPU_FBSLAVE_CFGX))
        return false;
    pugi::xml_document doc;
    if (!loadFileLocal(doc, TPU_FBSLAVE_CFGX))
        return false;
    endian = QString::fromUtf8(slavedevice::endianNode(doc).text().get());
    return true;
}

bool BusFileDataManager::writeAndSendFbslave(const QString &endian)
{
    pugi::xml_document doc;
    if (!loadFileLocal(doc, TPU_FBSLAVE_CFGX))
        return false;
    // Replaces the existing text only: an empty "endian" element stays empty.
    slavedevice::endianNode(doc).first_child().set_value(endian.toLocal8Bit().constData());
    if (!configio::saveXml(doc, TPU_FBSLAVE_CFGX, "\t", pugi::format_no_escapes,
                           pugi::encoding_utf8)) {
        qCDebug(lcFieldbus).noquote() << "Could not save XML file";
        return false;
    }
    return sendFileToCtrl(RDE_FBSLAVE_CFGX, TPU_FBSLAVE_CFGX);
}
