#include "frame/ui/DocumentSubWindow.h"

#include <QCloseEvent>

namespace Frame {

DocumentSubWindow::DocumentSubWindow(QWidget* document, DocumentWindow* documentInterface)
    : m_widget(document)
    , m_document(documentInterface)
{
    setAttribute(Qt::WA_DeleteOnClose);
    setWidget(document);
}

void DocumentSubWindow::closeEvent(QCloseEvent* event)
{
    if (m_askBeforeClosing && document() != nullptr && !document()->queryClose()) {
        event->ignore();
        return;
    }
    QMdiSubWindow::closeEvent(event);
}

} // namespace Frame
