#pragma once

#include "platform/runtime/Variant.h"

#include <QString>
#include <optional>

// How a card's values turn into the texts its controls show, and typed texts back into values.
namespace Bramlet {

// A field box's text for a stored value: Null shows as "", anything else formatted with the
// field's FieldFormat (no format when it is empty).
QString ShownText(const Runtime::Variant& value, const QString& format);

// What saving writes into a field box's (or drop-down's) column for the text the user left in
// it, or nothing when the trimmed text equals the stored value as shown, ignoring case (so
// "5" over a stored 5.00 shown as "5.00" is a change, "5.00" is not).
// - Whole and decimal numbers (4, 5): the text's number when it starts with "0", reads as a
//   non-zero number or is numeric as a whole, else Null: "abc" stores Null, "0" 0, "007" 7,
//   "12kg" 12, "1,234" 1234.
// - Currency (6): the text as a currency amount; Null for an empty box. Other text throws
//   Runtime::Error 13, which the card reports.
// - Every other type: the text itself.
std::optional<Runtime::Variant> TypedFieldValue(
    int fieldType, const QString& text, const Runtime::Variant& stored, const QString& format);

// What saving writes for a date picker: its date (a day serial), or Null when its check box is
// cleared; nothing when that is what the column holds.
std::optional<Runtime::Variant> PickedDateValue(
    bool null, double serial, const Runtime::Variant& stored);

} // namespace Bramlet
