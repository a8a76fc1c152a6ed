#pragma once

#include <QString>

namespace Bramlet {

class CardDatabase;

// What importing a delimited file into the card window did.
struct CardImportResult
{
    int Added = 0;
    // Rows left out because a card of that name exists (in the file or earlier in the list).
    int DuplicateNames = 0;
    // Rows left out for any other reason (an empty name, a value its field cannot hold), and
    // the engine's message for the first of them.
    int OtherRefused = 0;
    QString FirstRefusal;
};

// The card window's import (Ctrl+Shift+I) of a comma-separated (.csv) or tab-separated (.txt)
// file whose first line holds labels: the record's first value is the card's name; each
// further value that is not empty goes to the field whose FieldLabel matches that column's
// heading, taking the field's type; values of columns without such a field are skipped. Two
// decisions differ from the all-or-nothing import of quorbin-cli (ImportDelimitedFile):
// - A column whose heading is empty is skipped: an empty heading would otherwise match the
//   columns that carry no label at all, the card's name first, and overwrite it.
// - A row that cannot be added is left out and every other row is kept, so one pupil
//   already in the file does not cost the rest of the class list; the window reports the
//   rows left out once, at the end.
// Blank lines are no cards. The card set is opened again afterwards. Throws the engine's 3024
// when the file cannot be read; nothing is added then.
CardImportResult ImportCardRows(CardDatabase& cards, const QString& path);

} // namespace Bramlet
