#pragma once

#include "sheet/CellRef.h"

#include <QAbstractTableModel>
#include <QFont>

namespace Tillane {

class SheetDocument;

// The sheet's grid as an item model: a thin adapter over the cells' display half (shown text,
// colours, font, alignment), 256 rows and 26 columns with the row numbers and the letters as
// headings. Nothing is computed here: the document has done that. The one thing of the view it
// knows is the current cell, which shows its formula instead of its value while it is not
// locked. Cells are not edited through the model: the window's edit box enters them.
class SheetGridModel : public QAbstractTableModel
{
    Q_OBJECT

public:
    explicit SheetGridModel(const SheetDocument& document, QObject* parent = nullptr);

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;
    QVariant headerData(
        int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;

    // Model indexes count from 0; cells from 1.
    static CellAddress CellOf(const QModelIndex& index);
    QModelIndex IndexOf(CellAddress cell) const;
    // The font the cell shows.
    QFont CellFont(CellAddress cell) const;

    // The cell whose formula shows; an invalid address for none.
    void SetFormulaCell(CellAddress cell);
    // Every cell may have changed underneath.
    void Refresh();

private:
    const SheetDocument& m_document;
    CellAddress m_formulaCell;
};

} // namespace Tillane
