#pragma once

#include "cards/CardControl.h"
#include "cards/CardNavigation.h"

#include <QByteArray>
#include "frame/ChangeBatch.h"

#include <QObject>
#include <QString>
#include <QStringList>
#include <memory>
#include <vector>

namespace Dao {
class DBEngine;
class Recordset;
} // namespace Dao

namespace Frame {
class DocumentHost;
}

// The card window's document, after the pattern of Ormsey::GraphDocument (see the comment at
// the top of graph/GraphDocument.h): one open card file, its card set, the card on show and
// what the user has typed into it. The window mirrors Controls() and forwards what the user
// does; quorbin-cli adds and shows cards through the very same commands.
//
// The document keeps the state and the order of things; the work is done behind it: the
// controls laid out from the columns (CardControls.h), one card's values read and written
// (CardControlValues.h), moving through the card set (CardNavigation.h), files opened, made
// and imported (CardFiles.h) and what the user is told (CardMessages.h).
namespace Bramlet {

class CardDatabase;

// The three views of a card file, by their document type codes.
enum CardView : int {
    VelkinView = 2, // keywords as key pictures
    BramletView = 3, // keywords as words
    SprondleView = 4, // every user field on its free layout
};

class CardDocument : public QObject
{
    Q_OBJECT

public:
    // The card areas of the two fixed views, in twips; the third takes FormWidth and
    // FormHeight from the file.
    static constexpr int FixedViewWidth = 8190;
    static constexpr int VelkinViewHeight = 6105;
    static constexpr int BramletViewHeight = 4680;
    // Field controls dropped while the fields are edited snap to this grid, in twips.
    static constexpr int LayoutGrid = 120;

    // `engine` is the card engine the document opens files with; without one, the program's
    // shared engine. A second engine stands for a second copy of the program.
    explicit CardDocument(Frame::DocumentHost* host = nullptr, Dao::DBEngine* engine = nullptr,
        QObject* parent = nullptr);
    ~CardDocument() override;

    // The engine windows share when none is given.
    static Dao::DBEngine& SharedEngine();

    bool IsOpen() const { return m_cards != nullptr; }
    // The open card file, its card set and its properties; nullptr until a file is open.
    CardDatabase* Cards() const { return m_cards.get(); }
    Dao::Recordset* MainTable() const;
    const QString& FileName() const { return m_fileName; }
    bool ReadOnly() const;
    int View() const { return m_view; }
    // "Bramlet - Pets", with " [Read Only]" after it for a file that may only be read; empty
    // while no file is open.
    QString Caption() const;
    // A card is being added or edited and the user has changed something on it.
    bool IsChanged() const { return m_changed; }

    // Opens a card file in the view stored in it (or `view` when given). A file that cannot
    // be opened is reported (a damaged one with one message) and the document keeps what it
    // had; false then.
    bool Open(const QString& path, int view = 0);
    // The new-database dialog: asks for a file that does not exist yet (an existing one is
    // refused with a message and the dialog comes back), creates it for `view`, opens it and
    // starts a blank new card. False when the user cancels or the file cannot be made; a
    // failed creation leaves no file behind.
    bool CreateWithDialog(int view);
    bool Create(const QString& path, int view);

    // The bound controls in column order, as the layout was last built.
    const std::vector<CardControl>& Controls() const { return m_controls; }
    // Counts the layouts built, so that a view knows when to make its controls again.
    int LayoutVersion() const { return m_layoutVersion; }
    // The first control of a kind, or the user field whose label is `label` ignoring case;
    // -1 when there is none.
    int ControlOfKind(ControlKind kind) const;
    int ControlWithLabel(const QString& label) const;
    // Builds the controls from the card set's columns: kinds from FieldType, rectangles and
    // labels from the layout properties. Done after opening and after the fields change.
    void BuildCardLayout();
    // The card area of the current view, in twips.
    int ViewWidth() const;
    int ViewHeight() const;
    // View 4's card area, kept in the file; the window stores its size when it closes.
    void StoreFormSize(int widthTwips, int heightTwips);
    // Switches views (an edited card is saved first; false when that fails) and keeps the
    // view in the file.
    bool SetView(int view);

    // The card on show. With no current card (an empty set, a new card) every control is
    // blank.
    void DisplayCard();
    // A control is about to change: starts editing the current card (optimistically, so a
    // conflict is found when saving). False when the card may not change (a read-only file,
    // no card, an engine error).
    bool BeginCardEdit();
    // Writes what the user changed into the card and updates it. A refusal is reported as
    // the user is told (duplicate or empty name, another user's change, "Error n: ...") and
    // gives false; the card stays in its edit with the user's values, except after another
    // user's change, when the stored card is shown again.
    bool SaveCard();
    void GoToCard(int action);
    // Saves the card on show and starts a blank new card after the last.
    void AddCard();
    // Asks first; false when the user says No or nothing was deleted.
    bool DeleteCard();
    // The record box: `text` is a card number counted from 1; any other is refused with
    // message 852.
    bool GoToNumber(const QString& text);
    // Toolbar button 17 and F5: reads the card set again and shows the current card.
    void RefreshDatabase();
    // The close question 854 for a changed card: Yes saves (false when that fails), No drops
    // the changes.
    bool AskToSaveCard();

    // The user's changes to a control. Each begins the card's edit first; false (and the
    // control shown as it was) when the card may not change.
    bool SetControlText(int control, const QString& text);
    bool SetControlChecked(int control, bool checked);
    bool SetControlDate(int control, bool null, double serial);

    // The record box and the count beside it: "3" and "/20"; "--" while no stored card is on
    // show (a new card).
    QString RecordNumberText() const;
    QString RecordCountText() const;
    int CardCount() const;
    // The current card's position from 0; -1 for none (a new card).
    int CurrentPosition() const;
    // First and Previous are of use: the set holds cards and this is not the first (a new card
    // counts as not first).
    bool CanMoveBack() const;
    // Shows the card at `position` without saving or asking: for printing, which saves first.
    void ShowCardAt(int position);
    // Finds the card of that name (as the name index compares) and shows it; false when there
    // is none.
    bool ShowCardNamed(const QString& name);
    // The card's main picture as stored, empty for none.
    const QByteArray& PictureBytes() const { return m_picture; }
    // The card as the Sprondle view shows it, one line per control: the label ("Name" for
    // the card's name), a tab and the text shown (check boxes 1 or 0, a date picker's Null
    // empty). The free text, the pictures, the keywords and hidden fields are not lines.
    QStringList CardLines() const;

    // Ctrl+Shift+I: the open dialog, then ImportCards. False when cancelled or failed.
    bool ImportWithDialog();
    // Imports a delimited file (see ImportCardRows), tells the user about rows left out and
    // refreshes the card set.
    bool ImportCards(const QString& path);

    // The field editor's mode: the file is opened again, exclusively while the fields are
    // being edited, and a blank card is on show; date and drop-down fields become text boxes.
    // False when the mode could not change (the file in use by another copy).
    bool FieldEditing() const { return m_fieldEditing; }
    bool SetFieldEditing(bool on);
    // The field control pressed on while the fields are edited; pressing it again clears the
    // choice (-1).
    int SelectedControl() const { return m_selectedControl; }
    void SelectControl(int control);
    // A field control dropped at (left, top), in twips: the point snaps down to the grid and
    // the control's rectangle (and for text boxes and date pickers its label beside it) is
    // stored in the file.
    void MoveField(int control, int left, int top);

signals:
    // Anything of the document changed: the file, the layout, the card on show or the state.
    void changed();

private:
    void notify();
    Dao::DBEngine& engine() const;
    // Begins the card's edit, changes the control and marks it touched; false (nothing
    // changed) when the card may not change.
    template <typename Change> bool changeControl(int index, Change change);
    // Saves what leaving the card asks for; false when the save failed.
    bool leaveCard(int action);
    void startNewCard();
    void showAfterOpen();
    void reportSaveError(int number, const QString& description);

    Frame::DocumentHost* m_host;
    Dao::DBEngine* m_engine;
    std::unique_ptr<CardDatabase> m_cards;
    QString m_fileName;
    int m_view = BramletView;
    std::vector<CardControl> m_controls;
    QByteArray m_picture;
    bool m_changed = false;
    // Cleared while a card is being put into the controls: their change notifications are
    // then no edits.
    bool m_editEnabled = true;
    bool m_fieldEditing = false;
    int m_selectedControl = -1;
    int m_layoutVersion = 0;
    Frame::ChangeBatch m_changes;
};

} // namespace Bramlet
