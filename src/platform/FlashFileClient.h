#pragma once

#include <QString>

/// @file
/// Flash-file client library: transfer requests handed to rbxInterface.
/// A closed library of the pendant, declared here.

/// A request to copy a controller file to the pendant (rbxInterface::saveFile).
/// The transfer thread makes one for each attempt.
struct bccClientFlashFileSave
{
    QString srcPath; ///< controller path
    QString dstPath; ///< pendant path
    int mode = 0; ///< Transfer mode; the library passes 1 and the simulator ignores it.
};

/// A request to copy a pendant file to the controller (rbxInterface::loadFile).
/// The transfer thread makes one for each attempt.
struct bccClientFlashFileLoad
{
    QString srcPath; ///< pendant path
    QString dstPath; ///< controller path
    int mode = 0; ///< Transfer mode; the library passes 1 and the simulator ignores it.
};
