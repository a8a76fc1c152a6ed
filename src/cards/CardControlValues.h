#pragma once

#include "cards/CardControl.h"

#include <QByteArray>
#include <QStringList>
#include <vector>

namespace Dao {
class Recordset;
}

// What the card's controls show of one card, read from the card set's current record and
// written back into it.
namespace Bramlet {

class CardDatabase;

// Every control blank and untouched: no text, not checked, a Null date, no key picture.
void BlankCardControls(std::vector<CardControl>& controls);

// The current record's values into the controls (which are blank): text as shown (a field
// box's with its format), a drop-down's item only when the stored text equals it with case,
// a keyword's text and key picture from the keyword table. Returns the card's main picture as
// stored, empty for none.
QByteArray ReadCardControls(
    const CardDatabase& cards, Dao::Recordset& set, std::vector<CardControl>& controls);

// Writes the controls the user touched into the record being edited, each as its field takes
// it (see TypedFieldValue and PickedDateValue); a new card's name (`adding`) is always
// written, so that an empty one is refused as such. The picture and the keywords change
// through their own commands. Nothing is updated here. Throws Dao::DaoError and the
// Runtime::Error of a value its field cannot hold.
void WriteCardControls(Dao::Recordset& set, const std::vector<CardControl>& controls, bool adding);

// The card as the Sprondle view shows it, one line per control: the label ("Name" for the
// card's name), a tab and the text shown (check boxes 1 or 0, a Null date empty). The free
// text, the pictures, the keywords and hidden fields are not lines.
QStringList CardLinesOf(const std::vector<CardControl>& controls);

} // namespace Bramlet
