#pragma once

#include <QString>

namespace Bramlet {

class CardDatabase;

// What importing a delimited file did.
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

// What a row that cannot be added does to the rest.
enum class ImportRefusals {
    // Nothing is added: the file is left as it was and the engine's error is thrown, its text
    // naming the line (quorbin-cli, whose scripts want all or nothing).
    StopAll,
    // The row is left out and every other row kept, so one pupil already in the file does not
    // cost the rest of the class list (the card window, which reports the rows left out).
    LeaveOut,
};

// Adds a card for every record of a comma-separated (.csv) or tab-separated (.txt) file whose
// first line holds labels: the record's first value, trimmed, is the card's name; each further
// value that is not empty goes to the field whose FieldLabel matches that column's heading and
// takes the field's type; values of columns without such a field are skipped, and so are
// columns whose heading is empty (it would otherwise match the columns that carry no label,
// the card's name first, and overwrite it). Blank lines are no cards. One transaction; the
// card set is opened again afterwards. Throws the engine's 3024 when the file cannot be read.
CardImportResult ImportCardRows(CardDatabase& cards, const QString& path, ImportRefusals refusals);

// ImportCardRows with StopAll: the number of cards added.
int ImportDelimitedFile(CardDatabase& cards, const QString& path);

} // namespace Bramlet
