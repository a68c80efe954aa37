// Definitions of the pendant platform declarations, backed by pendantsim's state.
#include "DataAccess.h"
#include "FlashFileClient.h"
#include "MsgBox.h"
#include "PendantSim.h"
#include "RbxInterface.h"
#include "SysSettingApi.h"

#include <QThread>

bool DataAccess::GetFileFromController2TPU(const QString &rdeFilePath, const QString &tpuFilePath,
                                           bool)
{
    return pendantsim::transferFile(pendantsim::controllerFilePath(rdeFilePath), tpuFilePath,
                                    false);
}

bool DataAccess::SendFileFromTPU2Controller(const QString &tpuFilePath, const QString &rdeFilePath,
                                            bool)
{
    return pendantsim::transferFile(tpuFilePath, pendantsim::controllerFilePath(rdeFilePath), true);
}

int DataAccess::getLanguageId()
{
    return pendantsim::languageId();
}

bool DataAccess::hasRteAuthority()
{
    return pendantsim::rteAuthority();
}

bool DataAccess::isRobotRunning()
{
    return pendantsim::robotRunning();
}

bool DataAccess::isServoOn()
{
    return pendantsim::servoOn();
}

rbxInterface::rbxInterface(int channel, bool)
    : m_channel(channel)
{ }
rbxInterface::~rbxInterface() = default;

bool rbxInterface::isConnected() const
{
    return pendantsim::isConnected();
}

bool rbxInterface::saveFile(bccClientFlashFileSave *request)
{
    return request
            && pendantsim::transferFile(pendantsim::controllerFilePath(request->srcPath),
                                        request->dstPath, false);
}

bool rbxInterface::loadFile(bccClientFlashFileLoad *request)
{
    return request
            && pendantsim::transferFile(request->srcPath,
                                        pendantsim::controllerFilePath(request->dstPath), true);
}

QString RtmGetLocalizedFileName(const QString &path, bool)
{
    return path;
}

int RtmUIStyle()
{
    return pendantsim::uiStyle();
}

SysSettingApi *SysSettingApi::getInstance()
{
    static SysSettingApi instance;
    return &instance;
}

void SysSettingApi::delay_MSec(unsigned int ms)
{
    QThread::msleep(ms);
}

void SysSettingApi::rebootRde(bool, bool)
{
    pendantsim::recordRebootRequest();
}

MsgBox::MsgBox(int type, const QString &text, int buttons, bool, bool, int, bool, bool,
               const QString &, const QString &, const QString &)
{
    pendantsim::ShownMessage message;
    message.type = type;
    message.text = text;
    message.buttons = buttons;
    m_result = static_cast<returnValue>(pendantsim::showMessage(message));
}

MsgBox::~MsgBox() = default;
