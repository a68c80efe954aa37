#pragma once

#include "BusObserver.h"

#include <QStringList>

#include <functional>

// Remembers every notification as "<handle> <key> <ok|failed>".
class RecordingObserver : public BusObserver
{
public:
    static QString call(FileHandle handle, const QString &fileKey, bool isSuccess)
    {
        return QStringLiteral("%1 %2 %3")
                .arg(int(handle))
                .arg(fileKey, isSuccess ? QStringLiteral("ok") : QStringLiteral("failed"));
    }

    void onFileNotify(FileHandle handle, const QString &fileKey, bool isSuccess) override
    {
        calls.append(call(handle, fileKey, isSuccess));
        if (onCall)
            onCall();
    }

    QStringList calls;
    // Runs inside each notification, to act on the manager from a callback.
    std::function<void()> onCall;
};
