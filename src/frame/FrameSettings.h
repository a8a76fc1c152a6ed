#pragma once

#include "frame/Colours.h"
#include "frame/DocumentTable.h"

#include <QCoreApplication>
#include <QList>
#include <QString>
#include <QStringView>
#include <array>
#include <cstdint>

namespace Frame {

// The frame-wide values every subsystem reads. They are filled once by InitialiseFrame and
// read-only afterwards, except the document table (document windows claim and release
// slots) and the current printer (the print dialogs change it). Kept together in one object
// so that a test can start from a clean state with `Settings() = {}` or InitialiseFrame.
struct FrameSettings
{
    QString RegistryPath;
    // Never empty after InitialiseFrame: at least the one nameless black entry.
    QList<ColourEntry> ColourTable;
    // The data-series colours, taken in turn (entry n modulo 6).
    std::array<std::int32_t, 6> DefaultColours {};
    Frame::DocumentTable DocumentTable;
    // $TEMP; empty when the program has no temporary folder.
    QString TempFolder;
    // TempFolder + "/QBNPicture.tmp"; empty when TempFolder is.
    QString PictureTempFile;
    QString CurrencySymbol;
    // The printer the program prints to, by name; empty means the platform's default printer.
    // The print dialogs change it and the change lasts for the rest of the run.
    QString CurrentPrinter;
    // The print dialogs' "PDF File" entry is chosen: printing asks for a file instead.
    bool PrintToPdfFile = false;
};

// The one instance, for the program's single user-interface thread.
FrameSettings& Settings();

// Fills Settings() at start-up, in this order: the registry path, the colour table from
// Colours.ini in `programFolder`, the default colours, a document table with one free slot,
// the temporary folder and picture file, the currency symbol. (The 3D projection of the graph
// drawing is a constant of the graph library and needs no set-up.) Calling it again starts
// afresh.
void InitialiseFrame(const QString& programFolder = QCoreApplication::applicationDirPath());

// A file of that name in the temporary folder; empty when there is no temporary folder.
// Compaction, the picture file and the sheet's graph store all put their work files here.
QString TempFilePath(QStringView fileName);

} // namespace Frame
