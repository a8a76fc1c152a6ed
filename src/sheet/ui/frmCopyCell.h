#pragma once

#include "sheet/CellRef.h"

#include <QDialog>

class QLabel;
class QPushButton;

namespace Tillane {

class frmTillane;

// The copy-cell dialog: modeless beside the sheet, it takes the first and the last cell of a
// range from clicks on the sheet and copies the cell that was current when it opened into the
// range, down a column or across a row, with the references moved.
class frmCopyCell : public QDialog
{
    Q_OBJECT

public:
    frmCopyCell(frmTillane* owner, CellAddress source);

    // The first click names the first cell, the next ones the last. A last cell that shares
    // neither the row nor the column of the first is refused with a message.
    void Cell_Click(const QString& name);

    frmTillane* FormOwner;
    QLabel* lblCell[2] = {};
    QLabel* lblInstructions = nullptr;
    QPushButton* cmdOK = nullptr;
    QPushButton* cmdCancel = nullptr;

private:
    void accept() override;

    CellAddress m_source;
    CellAddress m_first;
    CellAddress m_last;
};

} // namespace Tillane
