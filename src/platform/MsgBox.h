#pragma once

#include <QString>

// Pendant GUI library's modal message box: constructing one shows it and
// waits for the user's answer.
class MsgBox
{
public:
    enum returnValue : int { Closed = 0, Yes = 1, No = 2 };

    MsgBox(int type, const QString &text, int buttons, bool isModal, bool hasTimeout,
           int timeoutSec, bool hasCheckBox, bool isChecked, const QString &yesText,
           const QString &noText, const QString &cancelText);
    ~MsgBox();

    MsgBox(const MsgBox &) = delete;
    MsgBox &operator=(const MsgBox &) = delete;

    returnValue result() const { return m_result; }

private:
    returnValue m_result = Closed;
};
