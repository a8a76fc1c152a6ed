#pragma once

#include "frame/DocumentWindow.h"

#include <QMdiSubWindow>
#include <QPointer>

namespace Frame {

// The frame around one document window in the main window's document area. Closing it asks
// the document's close query first, except when the program is ending: the main window has
// then asked every document already.
class DocumentSubWindow : public QMdiSubWindow
{
    Q_OBJECT

public:
    // `document` is the window's widget and must also implement DocumentWindow.
    DocumentSubWindow(QWidget* document, DocumentWindow* documentInterface);

    // Nullptr once the document's widget is gone.
    DocumentWindow* document() const { return m_widget ? m_document : nullptr; }
    void setAskBeforeClosing(bool ask) { m_askBeforeClosing = ask; }

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    QPointer<QWidget> m_widget;
    DocumentWindow* m_document;
    bool m_askBeforeClosing = true;
};

} // namespace Frame
