#include "BusFileDataManager.h"

#include "ConfigFileIo.h"

bool BusFileDataManager::writePVIoFile(const QVector<FuncAndMapInfo> &functions,
                                       const QString &filePath)
{
    // The caller's path and the function names reach the file as Latin-1.
    const QString path = QString::fromLatin1(filePath.toLatin1());
    pugi::xml_document doc;
    if (!configio::loadXml(doc, path, pugi::parse_pi))
        return false;

    const pugi::xml_node config = doc.child("MonitorConfig");
    const pugi::xml_node sections[] = {config.child("SignalConfig"), config.child("LeftCvyCongfig"),
                                       config.child("RightCvyCongfig"), config.child("SuckerState"),
                                       config.child("SafetyDoor")};
    for (const FuncAndMapInfo &function : functions) {
        const QByteArray name = function.name.toLatin1();
        for (const pugi::xml_node &section : sections) {
            pugi::xml_node signal = section.child(name.constData());
            if (signal)
                signal.text().set("-1");
        }
    }
    // Best effort: a failed save is not reported to the caller.
    configio::saveXml(doc, path, "\t", pugi::format_indent, pugi::encoding_utf8);
    return true;
}
