#pragma once

#include <QString>

/// Pendant GUI library's modal message box: constructing one shows it and
/// waits for the user's answer.
///
/// One of the pendant's closed libraries, declared here; tests and tools link
/// the simulator's definition, which records the box and answers at once with
/// the next scripted answer or the tool's handler (pendantsim::showMessage).
/// The library shows boxes on the GUI thread only.
class MsgBox
{
public:
    /// The user's answer.
    enum returnValue : int {
        /// Closed without an answer; also the simulator's answer when none is scripted.
        Closed = 0,
        Yes = 1, ///< Yes.
        No = 2 ///< No.
    };

    /// Shows the box and blocks until it is answered. `type` is a MessageKind,
    /// `buttons` a MessageButtons; `timeoutSec` is in seconds. The library
    /// passes a modal box without time-out or check box and the text
    /// "unchanged" for the three button texts; the simulator keeps only `type`,
    /// `text` and `buttons`.
    MsgBox(int type, const QString &text, int buttons, bool isModal, bool hasTimeout,
           int timeoutSec, bool hasCheckBox, bool isChecked, const QString &yesText,
           const QString &noText, const QString &cancelText);
    ~MsgBox();

    MsgBox(const MsgBox &) = delete;
    MsgBox &operator=(const MsgBox &) = delete;

    /// The answer the box was given.
    returnValue result() const { return m_result; }

private:
    returnValue m_result = Closed;
};
