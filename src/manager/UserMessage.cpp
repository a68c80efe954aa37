#include "UserMessage.h"

MsgBox::returnValue showUserMessage(int type, const QString &text, int buttons)
{
    const QString unchanged = QStringLiteral("unchanged");
    MsgBox box(type, text, buttons, true, false, 0, false, false, unchanged, unchanged, unchanged);
    return box.result();
}
