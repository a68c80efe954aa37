#pragma once

#include "MsgBox.h"

#include <QString>

// Shows a modal pendant message box and returns the user's answer.
MsgBox::returnValue showUserMessage(int type, const QString &text, int buttons);
