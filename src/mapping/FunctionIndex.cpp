#include "FunctionIndex.h"

#include "BusFileDataManager.h"

FunctionIndex::FunctionIndex(BusFileDataManager *manager)
    : m(manager)
{
}

const FunctionIndex::Module &FunctionIndex::module(const QString &name)
{
    const auto known = modules.constFind(name);
    if (known != modules.cend())
        return *known;
    Module t;
    const QVector<QVector<FuncAndMapInfo>> lists =
            m->getFuncList(m->getModuleNameEnCn(name, false));
    for (int dir = 0; dir < 2; ++dir) {
        t.functions[dir] = lists.value(dir);
        for (int i = 0; i < t.functions[dir].size(); ++i) {
            const FuncAndMapInfo &f = t.functions[dir].at(i);
            // The first of a name wins, as a walk of the list finds it.
            if (!t.byName[dir].contains(f.name))
                t.byName[dir].insert(f.name, i);
            if (!f.nameCn.isEmpty() && !t.byName[dir].contains(f.nameCn))
                t.byName[dir].insert(f.nameCn, i);
            if (!t.chineseNames.contains(f.name))
                t.chineseNames.insert(f.name, f.nameCn);
        }
    }
    return *modules.insert(name, t);
}

const FuncAndMapInfo *FunctionIndex::find(const QString &moduleName, BiBo dir,
                                          const QString &name)
{
    const Module &t = module(moduleName);
    const auto at = t.byName[dir].constFind(name);
    return at == t.byName[dir].cend() ? nullptr : &t.functions[dir].at(*at);
}

QStringList FunctionIndex::names(const QString &moduleName, BiBo dir)
{
    QStringList names;
    for (const FuncAndMapInfo &f : module(moduleName).functions[dir])
        names.append(f.name);
    return names;
}

QString FunctionIndex::chineseName(const QString &moduleName, const QString &name)
{
    return module(moduleName).chineseNames.value(name);
}

QString FunctionIndex::displayName(const QString &moduleName, const QString &name, bool chinese)
{
    const QString shown = chinese ? chineseName(moduleName, name) : QString();
    return shown.isEmpty() ? name : shown;
}
