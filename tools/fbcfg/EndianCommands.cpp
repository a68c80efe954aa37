// endian get and set: the fieldbus slave's byte order, read and written with
// the library's synchronous calls.
#include "Commands.h"
#include "Output.h"
#include "Session.h"

#include <QJsonObject>

int runEndianGet(Session &session, const Call &)
{
    if (const int rc = session.open())
        return rc;
    QString endian;
    if (!BusFileDataManager::getAndReadFbslave(endian))
        return session.cannotRead(RDE_FBSLAVE_CFGX);
    if (session.settings().json)
        Output::json(QJsonObject{{QStringLiteral("endian"), endian}});
    else
        Output::line(endian);
    return ExitOk;
}

int runEndianSet(Session &session, const Call &call)
{
    const QString wanted = call.args.at(0);
    if (wanted != QLatin1String("big") && wanted != QLatin1String("little"))
        return usageError(call, Fbcfg::tr("the byte order is big or little, not '%1'").arg(wanted));
    if (const int rc = session.open())
        return rc;
    // Fetched first: the write changes the local copy.
    QString present;
    if (!BusFileDataManager::getAndReadFbslave(present))
        return session.cannotRead(RDE_FBSLAVE_CFGX);
    if (present == wanted) {
        Output::line(Fbcfg::tr("the byte order is already %1").arg(wanted));
        return ExitOk;
    }
    if (!BusFileDataManager::writeAndSendFbslave(wanted)) {
        Output::error(Fbcfg::tr("writing or sending %1 failed").arg(RDE_FBSLAVE_CFGX));
        return ExitFailure;
    }
    Output::line(Fbcfg::tr("byte order: %1 -> %2").arg(present, wanted));
    return ExitOk;
}
