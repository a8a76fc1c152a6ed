#pragma once

#include "cards/CardControl.h"

#include <vector>

namespace Dao {
class Recordset;
class TableDef;
} // namespace Dao

// The card's controls laid out from the card set's columns and their layout properties, and a
// field control's new place stored back into them.
namespace Bramlet {

// One control per column a card shows, in column order: the kind from the column's
// FieldType, the rectangles (twips), label, format, visibility and drop-down items from its
// properties. Columns no control shows, and keywords after the sixth, have none. Field control
// arrays count from 1 (element 0 is the template). While the fields are being edited
// (`fieldEditing`) date and drop-down fields are text boxes.
std::vector<CardControl> MakeCardControls(Dao::Recordset& set, bool fieldEditing);

// The first control of a kind, or the user field whose label is `label` ignoring case; -1
// when there is none.
int FindControlOfKind(const std::vector<CardControl>& controls, ControlKind kind);
int FindControlWithLabel(const std::vector<CardControl>& controls, const QString& label);

// A field of the user's own (text to resource), which may be labelled and moved.
bool IsUserField(const CardControl& control);

// A field control dropped at (left, top), in twips: its rectangle moves to the point snapped
// down to `grid`, and for text boxes and date pickers the label with it, 105 twips to its left
// and 60 lower.
void SnapFieldControl(CardControl& control, int left, int top, int grid);
// Stores the control's rectangle, and its label's when it has one, in its column's layout
// properties. Throws Dao::DaoError.
void StoreFieldPlacement(Dao::TableDef& table, const CardControl& control);

} // namespace Bramlet
