#pragma once

#include "cards/ui/CardLayoutBuilder.h"

#include <QObject>
#include <QPoint>

class QLabel;
class QWidget;

namespace Bramlet {

class CardDocument;
class frmBramlet;

// The card window's controls bound to the document's: the field controls made again whenever
// the document's layout changes, what the user does to them handed to the document at once,
// the values of every control shown on refresh, and, while the fields are edited, a press on
// a field control choosing it and a drag moving it (nothing of a control is edited then).
class CardControlBinder : public QObject
{
    Q_OBJECT

public:
    // The window's fixed controls are made already; the window and the document outlive this.
    CardControlBinder(frmBramlet& window, CardDocument& document);

    // Makes the field controls again if the document's layout changed since they were made;
    // true when it did (they are hidden until ShowView).
    bool Rebuild();
    // The field controls and their labels of the Sprondle view shown or hidden for `view`.
    void ShowView(int view);
    // Every control's value from the document, editable unless `readOnly`, and the card's
    // picture.
    void ShowValues(bool readOnly);

    // The widget showing a document control, and a field's label; nullptr for none.
    QWidget* ControlWidget(int control) const;
    QLabel* LabelWidget(int control) const;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void connectControl(int index, QWidget* widget);

    frmBramlet& m_window;
    CardDocument& m_document;
    CardWidgets m_widgets;
    int m_layoutVersion = -1;
    // A field control being dragged while the fields are edited: its index and where the
    // mouse took hold of it.
    int m_dragged = -1;
    QPoint m_dragStart;
};

} // namespace Bramlet
