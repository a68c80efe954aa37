#pragma once

#include <QString>

// Pendant data-access library: controller file transfers and robot state.
class DataAccess
{
public:
    static bool GetFileFromController2TPU(const QString &rdeFilePath, const QString &tpuFilePath,
                                          bool isShowProgress);
    static bool SendFileFromTPU2Controller(const QString &tpuFilePath, const QString &rdeFilePath,
                                           bool isShowProgress);
    static int getLanguageId();
    static bool hasRteAuthority();
    static bool isRobotRunning();
    static bool isServoOn();
};
