#include "UserMessage.h"

MsgBox::returnValue showUserMessage(MessageKind kind, const QString &text, MessageButtons buttons)
{
    const QString unchanged = QStringLiteral("unchanged");
    MsgBox box(kind, text, buttons, true, false, 0, false, false, unchanged, unchanged, unchanged);
    return box.result();
}
