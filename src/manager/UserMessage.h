#pragma once

#include "FieldbusNames.h"
#include "MsgBox.h"

#include <QString>

// Shows a modal pendant message box and returns the user's answer.
MsgBox::returnValue showUserMessage(MessageKind kind, const QString &text, MessageButtons buttons);
