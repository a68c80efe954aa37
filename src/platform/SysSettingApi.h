#pragma once

/// Pendant system-settings library.
///
/// One of the pendant's closed libraries, declared here; tests and tools link
/// the simulator's definitions (pendantsim). The library calls it on the GUI
/// thread only, when the manager reboots the robot.
class SysSettingApi
{
public:
    /// The one instance of the process.
    static SysSettingApi *getInstance();

    /// Blocks the calling thread for `ms` milliseconds; the simulator sleeps
    /// without turning the event loop. The manager waits 1000 ms before it
    /// asks for a reboot.
    void delay_MSec(unsigned int ms);
    /// Asks the controller to reboot. The library passes true for both; the
    /// simulator counts the request (pendantsim::rebootRequests) and ignores them.
    void rebootRde(bool isSave, bool isForce);

private:
    SysSettingApi() = default;
};
