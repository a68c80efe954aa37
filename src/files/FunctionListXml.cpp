#include "FunctionListXml.h"

#include "ConfigFileIo.h"
#include "FieldbusNames.h"

#include <QDir>

namespace functionlist {

namespace {

QString attributeText(const pugi::xml_node &node, const char *name)
{
    return QString::fromUtf8(node.attribute(name).value());
}

} // namespace

QString ModuleEntry::displayName(int languageId) const
{
    return languageId == fieldbusnames::chineseLanguageId ? nameCn : name;
}

QVector<ModuleEntry> moduleEntries(const pugi::xml_document &doc)
{
    QVector<ModuleEntry> entries;
    for (pugi::xml_node module : doc.child("FunctionInfo").children("Module")) {
        entries.append({attributeText(module, "Name"), attributeText(module, "NameCn"),
                        attributeText(module, "Path")});
    }
    return entries;
}

QString moduleKey(const pugi::xml_document &doc)
{
    return QString::fromUtf8(doc.child("FunctionList").child("Module").text().get());
}

FuncAndMapInfo functionRecord(const pugi::xml_node &function)
{
    FuncAndMapInfo record;
    record.name = attributeText(function, "Description");
    record.nameCn = attributeText(function, "DescriptionCn");
    record.type = attributeText(function, "Type");
    return record;
}

QVector<FuncAndMapInfo> functionRecords(const pugi::xml_node &section)
{
    QVector<FuncAndMapInfo> records;
    for (pugi::xml_node function : section.children()) {
        if (function.type() == pugi::node_element)
            records.append(functionRecord(function));
    }
    return records;
}

QString localListPath(const QString &folder, const QString &rdeFilePath)
{
    const QStringList parts = rdeFilePath.split(QLatin1Char('/'));
    if (parts.contains(QStringLiteral("..")))
        return QString();
    const QString localPath = folder + QLatin1Char('/') + parts.value(parts.size() - 2)
            + QLatin1Char('/') + parts.last();
    const QString localFolder = QDir::cleanPath(configio::localFolderOf(localPath));
    const QString root = QDir::cleanPath(folder);
    if (localFolder != root && !localFolder.startsWith(root + QLatin1Char('/')))
        return QString();
    return localPath;
}

} // namespace functionlist
