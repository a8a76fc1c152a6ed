#pragma once

#include <QString>

namespace Frame {

// What the main window needs of every document window (graph, card database, spreadsheet).
// The window itself is a widget that the main window places in its document area; this
// interface carries no widget so that the frame model can name it.
class DocumentWindow
{
public:
    virtual ~DocumentWindow() = default;

    // Called once, right after the window is shown: an empty name means a new, untitled
    // document; otherwise the window opens that file and reports its own failures.
    virtual void setFileName(const QString& fileName) = 0;
    virtual QString fileName() const = 0;

    // "May I close?": asked before the window closes, by the user or by the end of the
    // program. The window may offer to save; false keeps it open and cancels the exit.
    virtual bool queryClose() = 0;
};

} // namespace Frame
