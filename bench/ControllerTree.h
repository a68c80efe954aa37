#pragma once

#include <fieldbusconfig/FieldbusTypes.h>

#include <QByteArray>
#include <QHash>
#include <QPair>
#include <QString>
#include <QStringList>
#include <QVector>

// A synthetic controller in the files' own formats, for measuring at sizes no
// sample reaches. Every module has 25 input and 25 output functions, each
// mapped once: 21 bool, 2 int and a float on the module's bus, and one int,
// float or string signal in a group of its own while group numbers last (the
// screens allow 255 int, 127 float and 7 string groups per direction). The
// modules take turns on four switched-on buses, or all sit on the Modbus TCP
// slave, or one module maps them all there. Every bus offers twice the addresses its rows use, so
// everything is in range and an import finds free addresses.
struct ControllerTree
{
    QString root;
    int rows = 0;
    QStringList modules;
    // What the readers give back: mapping rows and groups per direction, in file order.
    QVector<FuncAndMapInfo> mappings[2];
    QVector<GroupInfo> groups[2];
    // Controller paths of every file written to the controller.
    QStringList controllerFiles;
    // Per direction and bus, the first bool address above every row and group.
    QHash<QString, int> freeBool[2];

    QString pendantDir() const { return root + QStringLiteral("/pendant"); }
    QString controllerDir() const { return root + QStringLiteral("/Controller"); }
    // Makes this tree the simulated controller and its pendant folder the current one.
    void enter() const;
};

// How the rows are spread: modules of 25 functions each way taking turns on
// four buses, the same modules all on one bus, or one module declaring every
// function (the case that finds a lookup walking a module's list per row).
enum class TreeShape { Spread, OneBus, OneModule };

// Writes a tree of about `rows` mapping rows under `root` (created if needed).
ControllerTree writeControllerTree(const QString &root, int rows, TreeShape shape);

// The tree's mapping as a saved file for an import: 80% of the bool rows as
// they are, 10% of the functions at free addresses, 5% of the addresses taken
// by functions of other names and 5% new functions; other rows unchanged.
struct ImportBackup
{
    QByteArray bytes;
    int remapped = 0;
    int colliding = 0;
    int added = 0;
};
ImportBackup importBackup(const ControllerTree &tree);

// The signal mapping file of these rows, byte for byte as the library writes it.
QByteArray mappingFile(const QVector<FuncAndMapInfo> (&rows)[2]);
