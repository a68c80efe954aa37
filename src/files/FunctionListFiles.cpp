#include "BusFileDataManager.h"

#include "FieldbusNames.h"

#include "FunctionListXml.h"

#include <algorithm>

namespace {

bool regionIs(const QString &region, const char *name)
{
    return region.compare(QLatin1String(name), Qt::CaseInsensitive) == 0;
}

// Sorts the functions of an "Input" or "Output" section into those a fieldbus
// may carry and the digital IO functions. A "Region" without value excludes a
// function from both.
void splitDigitalSection(const pugi::xml_node &section, QVector<FuncAndMapInfo> &fieldbus,
                         QVector<FuncAndMapInfo> &digital)
{
    const pugi::xml_attribute sectionForce = section.attribute("ForceEnabled");
    for (pugi::xml_node function : section.children()) {
        if (function.type() != pugi::node_element)
            continue;
        const pugi::xml_attribute region = function.attribute("Region");
        const QString regionText = QString::fromUtf8(region.value());
        FuncAndMapInfo record = functionlist::functionRecord(function);
        if (!region || regionIs(regionText, "fidbus") || regionIs(regionText, "all"))
            fieldbus.append(record);
        if (fieldbusnames::isBoolType(record.type)
            && (!region || regionIs(regionText, "io") || regionIs(regionText, "all"))) {
            // The section's switch overrides the function's own.
            const pugi::xml_attribute ownForce = function.attribute("ForceEnabled");
            if (sectionForce)
                record.forceEnabled = sectionForce.as_bool();
            else if (ownForce)
                record.forceEnabled = ownForce.as_bool();
            digital.append(record);
        }
    }
}

// The English name of a module given by its English or Chinese name; empty when unknown.
QString englishModuleName(const QMap<QString, QString> &nameMap, const QString &name)
{
    if (nameMap.contains(name))
        return name;
    for (auto it = nameMap.cbegin(); it != nameMap.cend(); ++it) {
        if (it.value() == name)
            return it.key();
    }
    return QString();
}

} // namespace

bool BusFileDataManager::readFuncInfoXml()
{
    pugi::xml_document doc;
    if (!loadFileLocal(doc, TPU_FUNC_INFO_XML))
        return false;

    modulePathMap.clear();
    moduleNameMap.clear();
    moduleList.clear();
    modulePathMapCn.clear();
    for (const functionlist::ModuleEntry &module : functionlist::moduleEntries(doc)) {
        moduleNameMap.insert(module.name, module.nameCn);
        const QString shown = module.displayName(languageId);
        modulePathMap.insert(shown, module.path);
        moduleList.append(shown);
        modulePathMapCn.insert(module.nameCn, module.path);
    }
    return true;
}

bool BusFileDataManager::readFuncListXml(QStringList &paths)
{
    if (paths.isEmpty())
        return false;
    // Only the fieldbus table starts afresh: digital and analog entries of
    // modules that are no longer read stay.
    funcListMap.clear();
    return readListDocuments(paths,
                             [this](const pugi::xml_document &doc) { parseFuncListXml(doc); });
}

bool BusFileDataManager::readListDocuments(
        const QStringList &paths, const std::function<void(const pugi::xml_document &)> &parse)
{
    // A file that cannot be loaded ends the batch: later files are not read.
    for (const QString &path : paths) {
        if (path.isEmpty())
            continue;
        pugi::xml_document doc;
        if (!loadFileLocal(doc, path))
            return false;
        parse(doc);
    }
    return true;
}

void BusFileDataManager::parseFuncListXml(const pugi::xml_document &doc)
{
    const QString module = functionlist::moduleKey(doc);
    const pugi::xml_node list = doc.child("FunctionList");
    QVector<FuncAndMapInfo> fieldbus[2];
    QVector<FuncAndMapInfo> digital[2];
    splitDigitalSection(list.child("Input"), fieldbus[FuncInput], digital[FuncInput]);
    splitDigitalSection(list.child("Output"), fieldbus[FuncOutput], digital[FuncOutput]);

    // A module without digital functions is not offered, not even its analog ones.
    if (fieldbus[FuncInput].isEmpty() && fieldbus[FuncOutput].isEmpty()
        && digital[FuncInput].isEmpty() && digital[FuncOutput].isEmpty())
        return;
    if (module.isEmpty())
        return;
    if (!fieldbus[FuncInput].isEmpty() || !fieldbus[FuncOutput].isEmpty())
        funcListMap.insert(module, {fieldbus[FuncInput], fieldbus[FuncOutput]});
    digitFuncMap.insert(module,
                        {{FuncInput, digital[FuncInput]}, {FuncOutput, digital[FuncOutput]}});
    analogFuncMap.insert(module,
                         {{FuncInput, functionlist::functionRecords(list.child("AnalogInput"))},
                          {FuncOutput, functionlist::functionRecords(list.child("AnalogOutput"))}});
}

QStringList BusFileDataManager::getModuleList()
{
    // Drops for good the modules that the application parameters hid.
    moduleList.erase(
            std::remove_if(moduleList.begin(), moduleList.end(),
                           [this](const QString &name) { return !modulePathMap.contains(name); }),
            moduleList.end());
    return moduleList;
}

QString BusFileDataManager::getModuleNameEnCn(const QString &name, bool toCn)
{
    if (toCn)
        return moduleNameMap.value(name, name);
    return englishModuleName(moduleNameMap, name);
}

bool BusFileDataManager::isExistModule(const QString &name)
{
    return moduleNameMap.contains(name);
}

QString BusFileDataManager::getFuncNameCn(const QString &module, const QString &funcName)
{
    const QVector<QVector<FuncAndMapInfo>> lists =
            funcListMap.value(englishModuleName(moduleNameMap, module));
    for (const QVector<FuncAndMapInfo> &list : lists) {
        for (const FuncAndMapInfo &function : list) {
            if (function.name == funcName)
                return function.nameCn + QLatin1Char(',');
        }
    }
    return QString();
}

QVector<QVector<FuncAndMapInfo>> BusFileDataManager::getFuncList(const QString &module)
{
    return funcListMap.value(module);
}

QMap<InOut, QVector<FuncAndMapInfo>> BusFileDataManager::getDigitFuncList(const QString &module)
{
    return digitFuncMap.value(module);
}

QMap<InOut, QVector<FuncAndMapInfo>> BusFileDataManager::getAnalogFuncList(const QString &module)
{
    return analogFuncMap.value(module);
}
