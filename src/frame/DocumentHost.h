#pragma once

#include <QString>

class QObject;

namespace Frame {

class ImageList;

// What a document window may ask of the frame that holds it. The main window implements it
// and hands it to every window it makes, so that no window reaches up to the main window:
// a window made elsewhere (a test, a future second frame) gets its own host. The frame
// outlives every window it hosts.
class DocumentHost
{
public:
    virtual ~DocumentHost() = default;

    // File > New: the new-file chooser.
    virtual void NewFile() = 0;
    // The frame's open dialog with filter pair `filterIndex` (from 1) chosen; the file opens
    // in a window of its own kind.
    virtual void OpenFile(int filterIndex) = 0;
    virtual void ShowAbout() = 0;
    // File > Exit: ends the program after every document has agreed to close.
    virtual void Exit() = 0;

    // Where open and save dialogs start; a chosen file's folder becomes the next start.
    virtual QString DialogFolder() const = 0;
    virtual void RememberDialogFolder(const QString& chosenFile) = 0;
    // The frame's caption, the title of the question asked before closing a changed document.
    virtual QString Caption() const = 0;
    // The shared toolbar icons, indexes 1 to 24.
    virtual const ImageList& ToolbarImages() const = 0;

    // A document window reports its unsaved state, which the frame keeps in the table of
    // open documents (the window is found by its Tag).
    virtual void SetDocumentChanged(const QObject* window, bool changed) = 0;
};

} // namespace Frame
