#include "BusFileDataManager.h"

#include "FunctionListXml.h"

bool BusFileDataManager::readFuncInfoXmlMonitor()
{
    pugi::xml_document doc;
    if (!loadFileLocal(doc, TPU_FUNC_INFO_XML))
        return false;

    monitorPathMap.clear();
    for (const functionlist::ModuleEntry &module : functionlist::moduleEntries(doc))
        monitorPathMap.insert(module.displayName(languageId), module.path);
    return true;
}

bool BusFileDataManager::readFuncListXmlMonitor(QStringList &paths)
{
    if (paths.isEmpty())
        return false;
    funcListMonitorMap.clear();
    return readListDocuments(paths, [this](const pugi::xml_document &doc) {
        // The monitor shows every digital function, whatever its region or type.
        const QString module = functionlist::moduleKey(doc);
        const pugi::xml_node list = doc.child("FunctionList");
        if (!module.isEmpty()) {
            funcListMonitorMap.insert(module,
                                      {functionlist::functionRecords(list.child("Input")),
                                       functionlist::functionRecords(list.child("Output"))});
        }
    });
}

QMap<QString, QVector<QVector<FuncAndMapInfo>>> BusFileDataManager::getAllfuncListsMonitor()
{
    return funcListMonitorMap;
}
