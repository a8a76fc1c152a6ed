#include "sheet/ui/SheetStatusArea.h"

#include <QLabel>
#include <QProgressBar>
#include <QStatusBar>

using namespace Qt::Literals::StringLiterals;

namespace Tillane {

namespace {

// Milliseconds between two drawings of the status during a load or save.
constexpr int progressInterval = 100;

} // namespace

SheetStatusArea::SheetStatusArea(QStatusBar* bar)
    : m_bar(bar)
{
    lblStatus = new QLabel;
    lblStatus->setObjectName(u"lblStatus"_s);
    lblStatus->setAccessibleName(u"Status"_s);
    ProgressBar = new QProgressBar;
    ProgressBar->setObjectName(u"ProgressBar"_s);
    ProgressBar->setAccessibleName(u"Progress"_s);
    ProgressBar->setRange(0, 100);
    ProgressBar->setMaximumWidth(200);
    ProgressBar->hide();
    m_bar->addWidget(lblStatus, 1);
    m_bar->addPermanentWidget(ProgressBar);
}

void SheetStatusArea::ShowProgress(const QString& status, int percent)
{
    if (percent < 0) {
        lblStatus->clear();
        ProgressBar->hide();
        m_drawn.invalidate();
        return;
    }
    if (lblStatus->text() != status)
        lblStatus->setText(status);
    ProgressBar->show();
    ProgressBar->setValue(percent);
    // The work runs without returning to the event loop, so the status is drawn at once; but
    // only now and then, since drawing it for every step would take longer than most loads.
    if (!m_drawn.isValid() || m_drawn.elapsed() >= progressInterval) {
        m_bar->repaint();
        m_drawn.start();
    }
}

} // namespace Tillane
