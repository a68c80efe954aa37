#include "BusFileDataManager.h"

#include "ConfigFileIo.h"
#include "FileFormats.h"
#include "RbxInterface.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace {

QString nodeText(const pugi::xml_node &node)
{
    return QString::fromUtf8(node.text().get());
}

// Splits a variable key "name[index]" into its name and index texts.
void splitVariableKey(const QString &key, QString &name, QString &index)
{
    const int open = key.indexOf(QLatin1Char('['));
    if (open < 0) {
        name = key;
        index.clear();
        return;
    }
    name = key.left(open);
    const int close = key.indexOf(QLatin1Char(']'), open + 1);
    index = close < 0 ? key.mid(open + 1) : key.mid(open + 1, close - open - 1);
}

// Index text -> description of the `element` entries of a pfs section; a later
// entry of the same index wins.
void readIndexedDescriptions(const pugi::xml_node &section, const char *element,
                             QMap<QString, QString> &descriptions)
{
    for (pugi::xml_node entry : section.children(element))
        descriptions.insert(nodeText(entry.child("Index")), nodeText(entry.child("Descr")));
}

} // namespace

bool BusFileDataManager::readUserDes()
{
    // A missing or broken file only means that there are no descriptions.
    QByteArray bytes;
    QFile file(TPU_USER_DES_XML);
    if (QFileInfo(file).isFile() && file.open(QIODevice::ReadOnly))
        bytes = file.readAll();
    noteEncoding(TPU_USER_DES_XML, configio::isUtf8(bytes));
    pugi::xml_document doc;
    doc.load_buffer(bytes.constData(), size_t(bytes.size()), pugi::parse_pi);
    parseUserDes(doc);
    return true;
}

namespace userdescriptions {

QHash<QString, QString> parse(const pugi::xml_document &doc)
{
    QHash<QString, QString> descriptions;
    for (pugi::xml_node variable : doc.child("BioUserDescription").children()) {
        if (variable.type() != pugi::node_element)
            continue;
        const pugi::xml_text index = variable.child("Index").text();
        if (index.as_int() == -1)
            continue;
        const QString key = QString::fromUtf8(variable.attribute("Variable").value())
                + QLatin1Char('[') + QString::fromUtf8(index.get()) + QLatin1Char(']');
        if (!descriptions.contains(key))
            descriptions.insert(key, nodeText(variable.child("Description")));
    }
    return descriptions;
}

} // namespace userdescriptions

void BusFileDataManager::parseUserDes(const pugi::xml_document &doc)
{
    userDesMap = userdescriptions::parse(doc);
}

QHash<QString, QString> BusFileDataManager::getUseDes()
{
    return userDesMap;
}

bool BusFileDataManager::writeUserDesXml(QString path, QHash<QString, QString> descriptions)
{
    if (path == TPU_USER_DES_XML && refuseLossyWrite(path))
        return false;
    const QString folder = RtmGetLocalizedFileName(TPU_FIELDBUS_DIR, false);
    if (!QDir(folder).exists())
        QDir().mkpath(folder);

    pugi::xml_document doc;
    pugi::xml_node declaration = doc.append_child(pugi::node_declaration);
    declaration.append_attribute("version") = "1.0";
    declaration.append_attribute("encoding") = "UTF-8";
    const QString stamp =
            QDateTime::currentDateTime().toString(QStringLiteral("yyyy/MM/dd hh:mm:ss"));
    doc.append_child(pugi::node_comment)
            .set_value(QStringLiteral(" Date(ymd)/time(hms) %1 ").arg(stamp).toUtf8().constData());
    pugi::xml_node root = doc.append_child("BioUserDescription");
    for (auto it = descriptions.cbegin(); it != descriptions.cend(); ++it) {
        QString name;
        QString index;
        splitVariableKey(it.key(), name, index);
        pugi::xml_node variable = root.append_child("FidbusVariable");
        variable.append_attribute("Variable") = name.toUtf8().constData();
        variable.append_child("Index").text().set(index.toUtf8().constData());
        variable.append_child("Description").text().set(it.value().toUtf8().constData());
    }

    // Unescaped on purpose: the reader does not expand references either.
    const bool saved =
            configio::saveXml(doc, path, "\t", pugi::format_no_escapes, pugi::encoding_utf8);
    emit signalUserDes();
    return saved;
}

bool BusFileDataManager::getAndReadPfsDesc(QMap<QString, QString> &inputs,
                                           QMap<QString, QString> &outputs)
{
    if (!getFileFromCtrl(RDE_PFS_DES_XML, TPU_PFS_DES_XML))
        return false;
    pugi::xml_document doc;
    if (!loadFileLocal(doc, TPU_PFS_DES_XML)) {
        getErrorMsg(RDE_PFS_DES_XML);
        return false;
    }

    inputs.clear();
    outputs.clear();
    const pugi::xml_node root = doc.child("PfsUserDescription");
    readIndexedDescriptions(root.child("InUserDescription"), "InDesc", inputs);
    readIndexedDescriptions(root.child("OutUserDescription"), "OutDesc", outputs);
    return true;
}
