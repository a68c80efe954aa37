#pragma once

#include <QString>

/// Pendant data-access library: controller file transfers and robot state.
///
/// One of the pendant's closed libraries, declared here; tests and tools link
/// the simulator's definitions (pendantsim). The library calls it only on the
/// GUI thread: the manager's synchronous helpers, its edit checks and its
/// constructor. The transfers of the transfer thread go through rbxInterface.
class DataAccess
{
public:
    /// Copies the controller file `rdeFilePath` to the local `tpuFilePath`, one
    /// attempt; blocks until it is copied or has failed, and returns which. The
    /// manager makes the local folder first and retries, turning the event
    /// loop between attempts; the simulator makes no folder. `isShowProgress` asks
    /// the pendant to show its progress; the library passes false and the
    /// simulator ignores it. The simulator fails while the link is down.
    static bool GetFileFromController2TPU(const QString &rdeFilePath, const QString &tpuFilePath,
                                          bool isShowProgress);
    /// Copies the local `tpuFilePath` to the controller file `rdeFilePath`, one
    /// attempt; blocks until it is copied or has failed, and returns which. The
    /// simulator makes missing controller folders and replaces the file
    /// atomically. `isShowProgress` as for GetFileFromController2TPU.
    static bool SendFileFromTPU2Controller(const QString &tpuFilePath, const QString &rdeFilePath,
                                           bool isShowProgress);
    /// The pendant's language: 2 English, 3 Chinese (see fieldbusnames). The
    /// manager reads it once, when it is made.
    static int getLanguageId();
    /// Whether this pendant holds the RTE authority, which editing needs; the
    /// edit checks ask it.
    static bool hasRteAuthority();
    /// Whether the robot program is running; the edit checks refuse while it is.
    static bool isRobotRunning();
    /// Whether the servo is on; the edit checks refuse while it is.
    static bool isServoOn();
};
