#pragma once

// Pendant system-settings library.
class SysSettingApi
{
public:
    static SysSettingApi *getInstance();

    void delay_MSec(unsigned int ms);
    void rebootRde(bool isSave, bool isForce);

private:
    SysSettingApi() = default;
};
