#include "BusFileDataManager.h"

#include "DataAccess.h"
#include "SysSettingApi.h"
#include "UserMessage.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QTextStream>
#include <QTime>

int BusFileDataManager::profiSafeStatus = -1;

bool BusFileDataManager::isEditable()
{
    if (_editMapModuName.isEmpty())
        return true;
    showUserMessage(InfoMessage,
                    tr("%1 is in editing mode,\n please exit and try again!").arg(_editMapModuName),
                    OkButton);
    return false;
}

bool BusFileDataManager::isHasRteAuthority()
{
    if (DataAccess::hasRteAuthority())
        return true;
    showUserMessage(WarningMessage, tr("Please get the RTE authority, and retry!"), OkButton);
    return false;
}

bool BusFileDataManager::isRebootRde()
{
    if (!DataAccess::isRobotRunning() && !DataAccess::isServoOn())
        return true;
    showUserMessage(WarningMessage, tr("Please turn off the servo first!"), OkButton);
    return false;
}

bool BusFileDataManager::isMapFuncEdit(IoType type)
{
    if (g_imIoType != type && g_imIoType != IoTypeAll)
        return true;
    const MsgBox::returnValue answer = showUserMessage(
            InfoMessage,
            tr("The mapping file has been updated and needs to be restarted to take effect.\n Do "
               "you want to restart now?"),
            YesNoButtons);
    if (answer == MsgBox::Yes)
        rebootRobot(true);
    return false;
}

void BusFileDataManager::rebootRobot(bool)
{
    SysSettingApi::getInstance()->delay_MSec(1000);
    SysSettingApi::getInstance()->rebootRde(true, true);
    showUserMessage(InfoMessage, tr("Please close and reopen the teaching pendant."), OkButton);
}

void BusFileDataManager::rebootTpu(bool) { }

int BusFileDataManager::checkProfiSAFEStatus()
{
    if (profiSafeStatus >= 0)
        return profiSafeStatus;
    if (!DataAccess::GetFileFromController2TPU(RDE_CONTROLLER_CFG, TPU_CONTROLLER_CFG, false))
        return -1;
    profiSafeStatus = 0;

    QFile file(TPU_CONTROLLER_CFG);
    if (!file.exists() || !file.open(QIODevice::ReadWrite | QIODevice::Text))
        return 0;
    QTextStream stream(&file);
    QString line;
    while (stream.readLineInto(&line)) {
        if (line.contains(QLatin1String("elec_man.enable_profisafe"))
            && line.contains(QLatin1Char('1'))) {
            profiSafeStatus = 1;
            return 1;
        }
    }
    return 0;
}

void BusFileDataManager::getErrorMsg(const QString &path)
{
    showUserMessage(ErrorMessage, tr("Failed to get file from controller:%1!").arg(path), OkButton);
}

void BusFileDataManager::delay_MSec(unsigned int ms)
{
    // Compares times of day, so a wait across midnight ends early.
    const QTime target = QTime::currentTime().addMSecs(static_cast<int>(ms));
    while (QTime::currentTime() < target)
        QCoreApplication::processEvents(QEventLoop::AllEvents, 100);
}

void BusFileDataManager::delay_BMSec(unsigned int ms)
{
    QElapsedTimer timer;
    timer.start();
    while (static_cast<quint32>(timer.elapsed()) < ms) { }
}

bool BusFileDataManager::isKestraVersion()
{
    return uiStyle == 1;
}
