#pragma once

#include "BusFileDataManager.h"

struct BusFileDataManager::FileKind
{
    // What a successful send leads to; NotSent for files the library never sends.
    enum AfterSend { NotSent, CommitMappings, CommitGroups, ReadAgain, NothingMore };

    // The key of its results and notifications: a controller path or a list key.
    QString fileKey;
    // Its key for isFuncInfoNotified.
    const char *pollingKey;
    bool BusFileDataManager::*readFlag;
    // Null for the function lists, which arrive as a batch.
    bool (BusFileDataManager::*read)();
    bool (BusObserver::*wanted)() const;
    AfterSend afterSend;
};
