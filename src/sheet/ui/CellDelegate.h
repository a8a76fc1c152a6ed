#pragma once

#include <QStyledItemDelegate>

namespace Tillane {

// Draws a cell of the sheet: its background, or the selection's, and its text in one line,
// cut at the cell's borders, with the cell's font, colour and alignment. Plainer than the
// style's item drawing, which lays out, elides and decorates every cell and would make a
// screenful of a full sheet several times slower to draw.
class CellDelegate : public QStyledItemDelegate
{
    Q_OBJECT

public:
    using QStyledItemDelegate::QStyledItemDelegate;

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
        const QModelIndex& index) const override;
};

} // namespace Tillane
