#pragma once

#include <QDialog>

class QCheckBox;
class QComboBox;
class QLabel;
class QPushButton;

namespace Tillane {

class frmTillane;

// Cell Style: the background colour (a named colour of the colour table, or any colour from the
// colour dialog) and the lock of the selected cells. OK and Apply hand both to the owner.
class frmCellStyle : public QDialog
{
    Q_OBJECT

public:
    // Opens on the current cell's colour (as shown) and lock.
    frmCellStyle(frmTillane* owner, qint32 colour, bool locked);

    qint32 Colour() const { return m_colour; }
    void SetColour(qint32 colour);

    frmTillane* FormOwner;
    QLabel* lblColour = nullptr;
    QLabel* picColour = nullptr;
    QComboBox* cmbColour = nullptr;
    QPushButton* cmdColour = nullptr;
    QCheckBox* chkLock = nullptr;
    QPushButton* cmdOK = nullptr;
    QPushButton* cmdCancel = nullptr;
    QPushButton* cmdApply = nullptr;

signals:
    void Applied(qint32 colour, bool locked);

private:
    qint32 m_colour = 0;
};

} // namespace Tillane
