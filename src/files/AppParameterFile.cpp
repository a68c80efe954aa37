#include "BusFileDataManager.h"

#include <pugixml.hpp>

#include "FieldbusNames.h"

namespace {

// Application name -> visible, from the entries of "root"; a later entry of
// the same name wins.
QMap<QString, bool> appVisibility(const pugi::xml_document &doc)
{
    QMap<QString, bool> visible;
    for (pugi::xml_node app : doc.child("root").children()) {
        if (app.type() != pugi::node_element)
            continue;
        visible.insert(QString::fromUtf8(app.child("appName").text().get()),
                       app.child("appVisible").text().as_bool());
    }
    return visible;
}

} // namespace

bool BusFileDataManager::readAppParaXml()
{
    // A pendant file, looked up from the current directory; never fetched.
    const QString fileName = languageId == fieldbusnames::englishLanguageId
            ? QStringLiteral("appParameters_en.xml")
            : QStringLiteral("appParameters_cn.xml");
    pugi::xml_document doc;
    if (!loadFileLocal(doc, fileName))
        return false;

    const QMap<QString, bool> visible = appVisibility(doc);
    const QStringList modules = modulePathMap.keys();
    for (const QString &module : modules) {
        // The common functions are always offered, whatever the file says.
        if (module == QLatin1String("Common") || module == QStringLiteral("通用功能"))
            continue;
        if (!visible.value(module, false))
            modulePathMap.remove(module);
    }
    return true;
}
