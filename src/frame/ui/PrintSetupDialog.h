#pragma once

#include <QComboBox>
#include <QDialog>
#include <QGroupBox>
#include <QLabel>
#include <QPointer>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

namespace Frame {

// What the three print dialogs share: the printer list, OK and Cancel, and for the sheet and
// graph dialogs the orientation frame. A document's own dialog derives from it and adds its
// options to optionsLayout(); the dialogs only ask, and the window that showed one prints
// what it answered once it is accepted. The printer chosen here stays the program's printer
// for the rest of the run and is preselected by every later print dialog.
class PrintSetupDialog : public QDialog
{
    Q_OBJECT

public:
    enum class Orientation { Hidden, Shown };

    explicit PrintSetupDialog(
        QWidget* owner = nullptr, Orientation orientation = Orientation::Hidden);

    // The document window that opened the dialog, set before it is shown.
    QPointer<QWidget> FormOwner;

    bool isLandscape() const { return optLandscape != nullptr && optLandscape->isChecked(); }

    QLabel* lblPrinters = nullptr;
    QComboBox* cmbPrinters = nullptr;
    QGroupBox* fmeOrientation = nullptr; // nullptr without the orientation frame
    QRadioButton* optPortrait = nullptr;
    QRadioButton* optLandscape = nullptr;
    QPushButton* cmdOK = nullptr;
    QPushButton* cmdCancel = nullptr;

protected:
    // Where a derived dialog puts its own frames and check boxes, between the printer list
    // and the buttons.
    QVBoxLayout* optionsLayout() const { return m_options; }

private:
    QVBoxLayout* m_options = nullptr;
};

} // namespace Frame
