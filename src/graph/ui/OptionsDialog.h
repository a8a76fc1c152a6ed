#pragma once

#include <QDialog>

class QCheckBox;
class QComboBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QVBoxLayout;
class QWidget;

namespace Ormsey {

// What the three graph options dialogs share: the OK, Cancel and Apply buttons, captions
// from the string table, and the rule that OK and Apply first check the dialog's contents
// (staying open when they are refused), then hand the settings over; OK also hides the
// dialog and Cancel hides it without handing anything over.
class OptionsDialog : public QDialog
{
    Q_OBJECT

public:
    explicit OptionsDialog(QWidget* parent);

    QPushButton* cmdOK() const { return m_ok; }
    QPushButton* cmdCancel() const { return m_cancel; }
    QPushButton* cmdApply() const { return m_apply; }

    // Captions from the string table once the controls are in place.
    void Localise();

protected:
    // The area above the buttons where each dialog lays out its controls.
    QVBoxLayout* body() const { return m_body; }
    // False keeps the dialog open (the dialog has told the user why).
    virtual bool CheckContents() { return true; }
    virtual void HandOver() = 0;

    // Ticking auto scale disables the range boxes and their captions; unticking enables
    // them and puts the focus in the first box.
    static void BindAutoScale(
        QCheckBox* autoScale, const QList<QWidget*>& rangeControls, QLineEdit* firstBox);
    // The same enabling without the focus, after the dialog has been filled.
    static void EnableRange(QCheckBox* autoScale, const QList<QWidget*>& rangeControls);
    // The range check of OK and Apply on a pair of boxes: a number too large to read is
    // refused with the standard error message, equal values with string 10020; a minimum
    // above the maximum is swapped in the boxes.
    static bool CheckRangeBoxes(QLineEdit* minimum, QLineEdit* maximum);
    // The colour table's names, in its order.
    static void FillColourList(QComboBox* list);
    static void SelectColourName(QComboBox* list, const QString& name);

private:
    void Apply(bool hide);

    QVBoxLayout* m_body = nullptr;
    QPushButton* m_ok = nullptr;
    QPushButton* m_cancel = nullptr;
    QPushButton* m_apply = nullptr;
};

// A widget whose caption comes from string `id` when the dialog is localised.
template <typename Control> Control* Tagged(Control* control, int id)
{
    control->setProperty("Tag", id);
    return control;
}

} // namespace Ormsey
