#pragma once

#include <QString>

namespace Bramlet {

class CardDatabase;

// Adds a card for every record of a comma-separated (.csv) or tab-separated (.txt) file
// whose first line holds labels: the record's first value is the card's name; each further
// value that is not empty goes to the field whose FieldLabel matches that column's label
// (values of columns without such a field are skipped) and takes the field's type. The
// card set is opened again afterwards. Returns the number of cards added.
//
// All or nothing: when a record cannot be added (a name already used, 3022; an empty name,
// 3315 ...) the file is left as it was and the engine's error is thrown, its text naming
// the line. 3024 when the text file cannot be read.
int ImportDelimitedFile(CardDatabase& cards, const QString& path);

} // namespace Bramlet
