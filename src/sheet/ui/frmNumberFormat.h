#pragma once

#include <QDialog>

class QComboBox;
class QLabel;
class QPushButton;

namespace Tillane {

class frmTillane;

// Number Format: one of the named formats from the list, or any format typed in the box.
// OK and Apply hand the text to the owner ("General" stands for no format).
class frmNumberFormat : public QDialog
{
    Q_OBJECT

public:
    // Opens on the current cell's format, "General" when it has none.
    frmNumberFormat(frmTillane* owner, const QString& format);

    QString Format() const;

    frmTillane* FormOwner;
    QLabel* lblInstructions = nullptr;
    QComboBox* cmbFormat = nullptr;
    QPushButton* cmdOK = nullptr;
    QPushButton* cmdCancel = nullptr;
    QPushButton* cmdApply = nullptr;

signals:
    void Applied(const QString& format);
};

} // namespace Tillane
