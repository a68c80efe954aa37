#pragma once

#include <QString>

struct bccClientFlashFileSave;
struct bccClientFlashFileLoad;

// Controller-link library: one connection to the robot controller.
class rbxInterface
{
public:
    rbxInterface(int channel, bool autoConnect);
    ~rbxInterface();

    rbxInterface(const rbxInterface &) = delete;
    rbxInterface &operator=(const rbxInterface &) = delete;

    bool isConnected() const;
    // Copies a controller file to the pendant.
    bool saveFile(bccClientFlashFileSave *request);
    // Copies a pendant file to the controller.
    bool loadFile(bccClientFlashFileLoad *request);

private:
    int m_channel;
};

// Language-specific variant of a pendant file name.
QString RtmGetLocalizedFileName(const QString &path, bool isSystemFile);
int RtmUIStyle();
