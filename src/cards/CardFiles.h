#pragma once

#include "cards/CardImport.h"

#include <QString>
#include <memory>
#include <optional>

namespace Dao {
class DBEngine;
}

namespace Frame {
class DocumentHost;
}

// The card document's files: opening, making a new one, importing cards into one, with their
// dialogs and messages (through the frame's Prompts). The host, when there is one, gives the
// dialogs' folder and remembers the one chosen.
namespace Bramlet {

class CardDatabase;

// Opens a card file, with the hourglass. nullptr when it cannot be opened, told in one
// message: a file that is no card file of ours, or a damaged one, as a damaged file; one the
// user could not reach (missing, in use, not allowed, a full disk) with the engine's error.
std::unique_ptr<CardDatabase> OpenCardFile(Dao::DBEngine& engine, const QString& path);
// Opens the file again, exclusively or shared. A failure is told and the file is opened
// shared again; false then.
bool ReopenCardFile(CardDatabase& cards, const QString& path, bool exclusive);

// The new-database dialog: asks for a file that does not exist yet (".qnd" added to a name
// without one); an existing one is refused with messages 844 and 845 and the dialog comes
// back in its folder. Nothing when the user cancels.
std::optional<QString> AskNewCardFile(Frame::DocumentHost* host);
// Makes an empty card file for `view`. A failure is told, unlike a cancelled dialog, and
// whatever was written of a file that did not exist before goes again; false then.
bool CreateCardFile(Dao::DBEngine& engine, const QString& path, int view);

// The import's open dialog; nothing when the user cancels.
std::optional<QString> AskImportFile(Frame::DocumentHost* host);

// What importing a delimited file did, or the engine's failure that stopped it.
struct CardImportOutcome
{
    CardImportResult Result;
    QString Failure;
};

// Imports the file's rows as cards (see ImportCardRows), with the hourglass.
CardImportOutcome ImportCardFile(CardDatabase& cards, const QString& path);
// Tells the user of the import's failure, else of the rows left out: those whose name a card
// has already (one message for all of them) and the first of the others. False for a
// failure.
bool TellCardImport(const CardImportOutcome& outcome);

} // namespace Bramlet
