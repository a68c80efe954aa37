#include "ConfigCheck.h"

// Placeholder until the rules land.
QVector<CheckFinding> ConfigCheck::run(const ConfigSnapshot &)
{
    return {};
}

int ConfigCheck::errorCount(const QVector<CheckFinding> &findings)
{
    int errors = 0;
    for (const CheckFinding &finding : findings)
        errors += finding.severity == QLatin1String("error");
    return errors;
}
