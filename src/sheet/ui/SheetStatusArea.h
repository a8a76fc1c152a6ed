#pragma once

#include <QElapsedTimer>
#include <QString>

class QLabel;
class QProgressBar;
class QStatusBar;

namespace Tillane {

// The sheet window's status bar: the status text of a load, save or formatting step and its
// progress bar, shown only while such a step runs.
class SheetStatusArea
{
public:
    explicit SheetStatusArea(QStatusBar* bar);

    // The document's progress: the status and the per cent done; -1 clears both.
    void ShowProgress(const QString& status, int percent);

    QLabel* lblStatus = nullptr;
    QProgressBar* ProgressBar = nullptr;

private:
    QStatusBar* m_bar;
    QElapsedTimer m_drawn; // invalid while no load or save runs
};

} // namespace Tillane
