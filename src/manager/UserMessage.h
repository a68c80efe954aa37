#pragma once

#include "MsgBox.h"

#include <QString>

// The pendant's message-box kinds and button sets the library uses.
enum MessageKind : int { InfoMessage = 0, WarningMessage = 1, ErrorMessage = 2 };
enum MessageButtons : int { OkButton = 1, YesNoButtons = 3 };

// Shows a modal pendant message box and returns the user's answer.
MsgBox::returnValue showUserMessage(MessageKind kind, const QString &text, MessageButtons buttons);
