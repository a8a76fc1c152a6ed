#pragma once

#include <QAction>
#include <QList>
#include <QWidget>

// Helpers the windows share: captions from the string table, option-button groups and
// window sizes.
namespace Frame {

// Item i takes GetResString(firstId + i). A caption of "-" makes the item a separator with no
// text, as the program's menus mark them. A menu's own title is set through its menuAction().
void SetMenuCaptions(const QList<QAction*>& items, int firstId);

// Every widget inside `window` whose dynamic property "Tag" holds a number takes its text
// from the string table: buttons and labels their text, group boxes their title, other
// widgets their window title. Tags that are not numbers are left alone, and so is the
// window's own Tag (a document window keeps its slot number there).
void LocaliseControls(QWidget* window);

// The position of the first checked button; -1 when none is.
template <typename Button> int SelectedOptionIndex(const QList<Button*>& buttons)
{
    for (qsizetype index = 0; index < buttons.size(); ++index) {
        if (buttons[index] != nullptr && buttons[index]->isChecked())
            return int(index);
    }
    return -1;
}

// Makes the window's inner area (a main window's central widget, else the widget itself)
// `size` pixels high (wide) by growing or shrinking the whole window by the difference.
// Callers with layout values in twips convert them with TwipsToPixels first.
void SetClientHeight(QWidget* window, int size);
void SetClientWidth(QWidget* window, int size);

} // namespace Frame
