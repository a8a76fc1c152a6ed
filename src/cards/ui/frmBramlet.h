#pragma once

#include "cards/ui/CardWindowActions.h"
#include "frame/DocumentWindow.h"

#include <QList>
#include <QMainWindow>
#include <memory>

class QAction;
class QLabel;
class QLineEdit;
class QMenu;
class QTextEdit;
class QToolBar;

namespace Dao {
class DBEngine;
}

namespace Frame {
class DocumentHost;
}

namespace Bramlet {

class CardArea;
class CardControlBinder;
class CardDocument;

// The card window: a view of one CardDocument in one of the three views (Velkin, Bramlet,
// Sprondle). It lays the card out from the document's controls, shows the card on show,
// forwards every edit and command to the document and answers its changed() with Refresh.
// Boxes hand each keystroke to the document as it is typed, so no edit is ever left open in
// the window when a command runs. The menus and toolbar are CardWindowActions; the controls
// are bound to the document's by CardControlBinder.
class frmBramlet : public QMainWindow, public Frame::DocumentWindow
{
    Q_OBJECT

public:
    // `docType` (2, 3 or 4) is the view a new database starts in; an opened file shows the
    // view stored in it. The host gives the frame's dialogs, icons and commands; without one
    // (tests) those menu items do nothing. `engine` is for tests that play a second copy.
    explicit frmBramlet(Frame::DocumentHost* host = nullptr, int docType = 3,
        Dao::DBEngine* engine = nullptr, QWidget* parent = nullptr);
    ~frmBramlet() override;

    // Frame::DocumentWindow: an empty name runs the new-database dialog, any other opens that
    // file. When neither gives a card file the window closes.
    void setFileName(const QString& fileName) override;
    QString fileName() const override;
    bool queryClose() override;

    CardDocument& Document() { return *m_document; }

    // Everything shown, from the document: layout, view, values, record box, menus, caption.
    void Refresh();
    void SetView(int view);
    // The field editor's side of the window: menus and toolbar off, the file to itself, a
    // blank card, the chosen control marked, controls dragged to the 120-twip grid.
    void SetFieldEditing(bool on);
    // The print dialog, then the cards it asks for, as this view shows them, one to a page.
    void PrintCards();

    // The widget showing a document control, and a field's label.
    QWidget* ControlWidget(int control) const;
    QLabel* LabelWidget(int control) const;

    CardArea* picCard = nullptr;
    QLabel* lblName = nullptr;
    QLineEdit* txtName = nullptr;
    QTextEdit* txtFreeText = nullptr;
    QLabel* picPicture = nullptr;
    QLabel* lblKeyWords = nullptr;
    QList<QLineEdit*> txtKeyWord;
    QLabel* lblKeyPictures = nullptr;
    QList<QLabel*> picKeyPicture;
    QList<QLabel*> lblKeyPicture;
    QLabel* lblRecord = nullptr;
    QLineEdit* txtRecordNo = nullptr;
    QLabel* lblNoOfRecords = nullptr;
    QToolBar* dbToolbar = nullptr;

    QMenu* mnuFile = nullptr;
    QMenu* mnuEdit = nullptr;
    QMenu* mnuView = nullptr;
    QMenu* mnuRecord = nullptr;
    QMenu* mnuData = nullptr;
    QMenu* mnuHelp = nullptr;
    // A menu item by its CardMenu number, or a toolbar button by CardToolbar::Key plus its
    // number; nullptr for any other number.
    QAction* Action(int id) const { return m_actions->Action(id); }

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    void buildCard();
    void connectActions();
    void applyView();
    void closeSoon();
    void clipboard(int id);

    Frame::DocumentHost* m_host;
    int m_docType;
    CardDocument* m_document;
    // Gone before the widgets they work on, so nothing of them runs while the window is torn
    // down.
    std::unique_ptr<CardWindowActions> m_actions;
    std::unique_ptr<CardControlBinder> m_controls;
    int m_shownView = 0;
    bool m_refreshing = false;
    bool m_closing = false;
    // A blank new card was on show at the last refresh.
    bool m_newCardShown = false;
};

} // namespace Bramlet
