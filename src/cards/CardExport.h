#pragma once

#include <QString>

namespace Bramlet {

class CardDatabase;

// The card set as comma-separated text, every item of the export list selected: the
// heading line "Card Name" and, by view, "Key Pictures" (2) or "Keywords" (3) followed on
// each card's line by its six keyword texts, or (4) the label of every user field (the
// columns whose names begin with "Field") followed by each card's values in their display
// formats. Cells are in double quotes, nothing inside is escaped; lines end with CR LF
// except the last. The card set's current card is current again afterwards.
QString ExportCards(CardDatabase& cards, int view);

} // namespace Bramlet
