#include "sheet/ui/CellDelegate.h"

#include <QPainter>

namespace Tillane {

namespace {

// Room between the text and the cell's left and right borders, in pixels.
constexpr int textMargin = 3;

} // namespace

void CellDelegate::paint(
    QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const
{
    const bool selected = option.state.testFlag(QStyle::State_Selected);
    if (selected) {
        painter->fillRect(option.rect, option.palette.brush(QPalette::Highlight));
    } else if (const QVariant background = index.data(Qt::BackgroundRole); background.isValid()) {
        painter->fillRect(option.rect, background.value<QBrush>());
    }
    const QString text = index.data(Qt::DisplayRole).toString();
    if (text.isEmpty())
        return;
    const QVariant font = index.data(Qt::FontRole);
    painter->setFont(font.isValid() ? font.value<QFont>() : option.font);
    const QVariant foreground = index.data(Qt::ForegroundRole);
    if (selected)
        painter->setPen(option.palette.color(QPalette::HighlightedText));
    else
        painter->setPen(foreground.isValid() ? foreground.value<QBrush>().color()
                                             : option.palette.color(QPalette::Text));
    const auto alignment = index.data(Qt::TextAlignmentRole).value<Qt::Alignment>();
    painter->drawText(option.rect.adjusted(textMargin, 0, -textMargin, 0),
        int(alignment) | Qt::TextSingleLine, text);
}

} // namespace Tillane
