#pragma once

#include <QString>
#include <optional>

namespace Dao {
class Recordset;
}

// Moving through a card set as the card window's Record menu and record box do.
namespace Bramlet {

// GoToCard's actions.
enum CardMove : int {
    FirstCard = 1,
    PreviousCard = 2,
    NextCard = 3,
    LastCard = 4,
};

// Starts a blank new card after the last; a set that takes no new rows starts none.
void StartNewCard(Dao::Recordset& set);
// Drops the card's edit and reads the card on show again as stored; a set still out of reach
// keeps what it read last.
void ReloadCard(Dao::Recordset& set);
// Moves the set by one of GoToCard's actions. Previous stops at the first card; Next past the
// last starts a new card where `mayAdd` allows one, else stays on the last. An empty set, or
// a move the engine refuses, leaves the set where it is.
void MoveCardSet(Dao::Recordset& set, int action, bool mayAdd);

// The record box and the count beside it: "3" for the card at position 2 and "--" for none
// (-1, a new card); "/20".
QString CardNumberText(int position);
QString CardCountText(int count);
// The card number typed into the record box, counted from 1; nothing for a text that is no
// whole number from 1 to `count`.
std::optional<int> CardNumberFrom(const QString& text, int count);

// Moves to the first card whose name equals `name` as the name index compares it; false when
// there is none.
bool FindCardNamed(Dao::Recordset& set, const QString& name);

} // namespace Bramlet
