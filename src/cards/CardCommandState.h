#pragma once

namespace Bramlet {

class CardDocument;

// Which of the card window's commands may run, as the document stands; the window enables its
// menu items and buttons from it.
struct CardCommandState
{
    // A file is open: moving on, printing, reading the file again.
    bool Open = false;
    // Open and not read-only: adding cards, importing, removing.
    bool Writable = false;
    // The fields are being edited: the menus and the toolbar are off.
    bool Designing = false;
    // First and Previous.
    bool MoveBack = false;
    // Writable, with a stored card on show.
    bool Delete = false;
};

CardCommandState CommandStateOf(const CardDocument& document);

} // namespace Bramlet
