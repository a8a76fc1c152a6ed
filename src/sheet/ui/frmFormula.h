#pragma once

#include "sheet/CellRef.h"

#include <QDialog>

class QLabel;
class QLineEdit;
class QPushButton;

namespace Tillane {

class frmTillane;

// The formula builder: a small modeless window beside the sheet in which a pupil puts a formula
// together from function and operator buttons and clicks on cells, then hands it to the edit
// box of the cell it was opened on. Two states alternate: while an operand is expected the
// function buttons are offered; once one is complete, the operators and OK.
class frmFormula : public QDialog
{
    Q_OBJECT

public:
    // Starts with `formula` (the cell's own formula, or "=") and the caret at its end.
    frmFormula(frmTillane* owner, CellAddress cell, const QString& formula);

    // A cell clicked in the sheet: its name goes in where the caret is.
    void Cell_Click(const QString& name);
    // Replaces the selected text, then puts the caret where the next cell name belongs: inside
    // an unfinished range "(:" or ":)", or empty brackets "()", else at the end.
    void InsertText(const QString& text);

    frmTillane* FormOwner;
    QLabel* lblFormula = nullptr;
    QLineEdit* txtFormula = nullptr;
    QPushButton* cmdFunction[2] = {};
    QPushButton* cmdOperand[4] = {};
    QLabel* lblInstructions = nullptr;
    QPushButton* cmdOK = nullptr;
    QPushButton* cmdCancel = nullptr;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void expectOperand(bool expecting);
    void accept() override;

    CellAddress m_cell;
};

} // namespace Tillane
