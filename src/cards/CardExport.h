#pragma once

#include <QString>
#include <memory>
#include <vector>

namespace Dao {
class Field;
}

namespace Bramlet {

class CardDatabase;

// One line of the export list: what it shows, and the user field it writes (none for the
// keyword item, which writes a card's six keyword texts).
struct ExportItem
{
    QString Text;
    std::shared_ptr<Dao::Field> Field;
};

// The items the export list holds for a view: "Key Pictures" (2) or "Keywords" (3), or (4)
// every user field (the columns whose names begin with "Field") by its label, in the card
// set's column order.
std::vector<ExportItem> ExportItems(CardDatabase& cards, int view);

// The card set as comma-separated text with the chosen items (some of ExportItems, in list
// order): the heading line "Card Name" and each chosen item's text, then for each card its
// name and, per chosen item, its six keyword texts or the field's value in its display
// format. Cells are in double quotes, nothing inside is escaped; lines end with CR LF except
// the last. The card set's current card is current again afterwards.
QString ExportCards(CardDatabase& cards, const std::vector<ExportItem>& chosen);

// Every item of the view's list chosen, as the export dialog opens.
QString ExportCards(CardDatabase& cards, int view);

} // namespace Bramlet
