#pragma once

/// @file
/// The pendant's controller-link library and two of its runtime helpers:
/// closed libraries, declared here; tests and tools link the simulator's
/// definitions (pendantsim).

#include <QString>

struct bccClientFlashFileSave;
struct bccClientFlashFileLoad;

/// Controller-link library: one connection to the robot controller.
///
/// The transfer worker makes its one connection on the transfer thread (on its
/// first transfer, channel 1, connecting by itself) and uses it there only.
class rbxInterface
{
public:
    /// A connection on `channel`; with `autoConnect` it connects by itself.
    /// The simulator's connection is the shared simulated link.
    rbxInterface(int channel, bool autoConnect);
    ~rbxInterface();

    rbxInterface(const rbxInterface &) = delete;
    rbxInterface &operator=(const rbxInterface &) = delete;

    /// Whether the link to the controller is up. A send gives up at once
    /// without it; a fetch tries anyway.
    bool isConnected() const;
    /// Copies a controller file to the pendant.
    /// One attempt; blocks until the file is copied or the attempt failed, and
    /// returns which (false for a null request). The worker retries up to 10
    /// times, 100 ms apart. The simulator makes no pendant folder.
    bool saveFile(bccClientFlashFileSave *request);
    /// Copies a pendant file to the controller.
    /// One attempt; blocks and retries as saveFile. The simulator makes missing
    /// controller folders and replaces the file atomically.
    bool loadFile(bccClientFlashFileLoad *request);

private:
    int m_channel;
};

/// The variant of a pendant file name for the pendant's language. The library asks it on
/// the GUI thread before it reads a local XML file, and for the folder of the
/// description files, with `isSystemFile` false; the simulator returns `path`
/// unchanged.
QString RtmGetLocalizedFileName(const QString &path, bool isSystemFile);
/// The pendant's screen style. The manager reads it once, on the GUI thread
/// when it is made, and answers its screens' style question from it.
int RtmUIStyle();
