#pragma once

#include "frame/Prompts.h"

#include <QString>

// What the card document tells the user, through the frame's Prompts.
namespace Bramlet {

// `text` with the icon and an OK button.
void ShowCardMessage(const QString& text, Frame::MessageIcon icon);
// Two lines of the string table, `first` and the one after it, as one message.
QString TwoLineMessage(int first);
// An engine failure as the card window tells it: "Error 3022: ...".
QString EngineErrorText(int number, const QString& description);

// What is left for the document to do once a failed save is told.
enum class AfterSaveFailure {
    Nothing,
    // Another copy changed or holds the card: the stored card is to be shown again.
    ShowStoredCard,
};

// Tells the user why a card could not be saved or deleted, by the engine's error number: a
// name another card has (messages 841 and 842), an empty name (840), another copy's change or
// lock (855 and 856), no current card (nothing), anything else "Error n: description".
AfterSaveFailure TellSaveFailure(int number, const QString& description);

} // namespace Bramlet
