#pragma once

#include <QString>

// Flash-file client library: transfer requests handed to rbxInterface.
struct bccClientFlashFileSave
{
    QString srcPath; // controller path
    QString dstPath; // pendant path
    int mode = 0;
};

struct bccClientFlashFileLoad
{
    QString srcPath; // pendant path
    QString dstPath; // controller path
    int mode = 0;
};
