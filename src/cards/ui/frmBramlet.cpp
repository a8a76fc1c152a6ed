#include "cards/ui/frmBramlet.h"

#include "cards/CardCommandState.h"
#include "cards/CardDocument.h"
#include "cards/ui/CardArea.h"
#include "cards/ui/CardControlBinder.h"
#include "cards/ui/KeyFilter.h"
#include "cards/ui/frmBramletPrint.h"
#include "frame/DocumentHost.h"
#include "frame/ui/ResourceIcons.h"
#include "resources/StringTable.h"

#include <QAction>
#include <QApplication>
#include <QCloseEvent>
#include <QLabel>
#include <QLayout>
#include <QLineEdit>
#include <QMdiSubWindow>
#include <QMenu>
#include <QSettings>
#include <QTextEdit>
#include <QTimer>
#include <QToolBar>

using namespace Qt::Literals::StringLiterals;

namespace Bramlet {

namespace {

constexpr int nameCaption = 820;
constexpr int recordCaption = 821;
constexpr int keyPicturesCaption = 822;
constexpr int keywordsCaption = 823;
// The window icons of the three views.
constexpr int viewIcons[] = { 111, 110, 112 };

QString ElementName(const QString& array, int index)
{
    return array + u'(' + QString::number(index) + u')';
}

} // namespace

frmBramlet::frmBramlet(
    Frame::DocumentHost* host, int docType, Dao::DBEngine* engine, QWidget* parent)
    : QMainWindow(parent)
    , m_host(host)
    , m_docType(docType)
    , m_document(new CardDocument(host, engine, this))
{
    setObjectName(u"frmBramlet"_s);
    buildCard();
    m_controls = std::make_unique<CardControlBinder>(*this, *m_document);
    m_actions = std::make_unique<CardWindowActions>(*this, host);
    mnuFile = m_actions->mnuFile;
    mnuEdit = m_actions->mnuEdit;
    mnuView = m_actions->mnuView;
    mnuRecord = m_actions->mnuRecord;
    mnuData = m_actions->mnuData;
    mnuHelp = m_actions->mnuHelp;
    dbToolbar = m_actions->dbToolbar;
    connectActions();
    connect(m_document, &CardDocument::changed, this, &frmBramlet::Refresh);
    // The toolbar's layout is kept under its name.
    const QVariant layout = QSettings().value(dbToolbar->objectName());
    if (layout.isValid())
        restoreState(layout.toByteArray());
    Refresh();
}

frmBramlet::~frmBramlet()
{
    // Tearing the widgets down moves the focus; nothing of the children may call back now.
    const QList<QObject*> children = findChildren<QObject*>();
    for (QObject* child : children)
        QObject::disconnect(child, nullptr, this, nullptr);
}

void frmBramlet::buildCard()
{
    picCard = new CardArea;
    setCentralWidget(picCard);
    const auto place = [this](QWidget* widget, int left, int top, int width, int height) {
        widget->setParent(picCard);
        widget->setGeometry(picCard->pixels(left), picCard->pixels(top), picCard->pixels(width),
            picCard->pixels(height));
    };
    const auto label = [&](int caption, int left, int top, int width) {
        auto* made = new QLabel(caption != 0 ? GetResString(caption) : QString());
        place(made, left, top, width, 255);
        return made;
    };

    lblName = label(nameCaption, 240, 240, 780);
    lblName->setObjectName(u"lblName"_s);
    txtName = new QLineEdit;
    txtName->setObjectName(u"txtName"_s);
    txtName->setMaxLength(30);
    place(txtName, 1080, 180, 3480, 375);
    lblName->setBuddy(txtName);
    lblRecord = label(recordCaption, 4800, 240, 780);
    lblRecord->setObjectName(u"lblRecord"_s);
    txtRecordNo = new QLineEdit;
    txtRecordNo->setObjectName(u"txtRecordNo"_s);
    txtRecordNo->setMaxLength(5);
    txtRecordNo->installEventFilter(new KeyFilter(u"N"_s, txtRecordNo));
    place(txtRecordNo, 5640, 180, 720, 375);
    lblRecord->setBuddy(txtRecordNo);
    lblNoOfRecords = label(0, 6420, 240, 1200);
    lblNoOfRecords->setObjectName(u"lblNoOfRecords"_s);
    txtFreeText = new QTextEdit;
    txtFreeText->setObjectName(u"txtFreeText"_s);
    txtFreeText->setAcceptRichText(false);
    place(txtFreeText, 240, 720, 4560, 2880);
    picPicture = new QLabel;
    picPicture->setObjectName(u"picPicture"_s);
    picPicture->setFrameShape(QFrame::StyledPanel);
    picPicture->setAlignment(Qt::AlignCenter);
    place(picPicture, 4920, 720, 3030, 2880);

    lblKeyWords = label(keywordsCaption, 240, 3840, 1500);
    lblKeyWords->setObjectName(u"lblKeyWords"_s);
    lblKeyPictures = label(keyPicturesCaption, 240, 3840, 1500);
    lblKeyPictures->setObjectName(u"lblKeyPictures"_s);
    for (int slot = 0; slot < 6; ++slot) {
        const int column = slot % 3;
        const int row = slot / 3;
        auto* keyword = new QLineEdit;
        keyword->setObjectName(ElementName(u"txtKeyWord"_s, slot));
        keyword->setMaxLength(20);
        // Keywords are chosen through the keyword commands, not typed here.
        keyword->setReadOnly(true);
        keyword->setAccessibleName(
            GetResString(keywordsCaption).remove(u':') + u' ' + QString::number(slot + 1));
        place(keyword, 1800 + 2040 * column, 3720 + 480 * row, 1920, 375);
        txtKeyWord.append(keyword);
        auto* picture = new QLabel;
        picture->setObjectName(ElementName(u"picKeyPicture"_s, slot));
        picture->setAlignment(Qt::AlignCenter);
        picture->setFrameShape(QFrame::StyledPanel);
        picture->setAccessibleName(
            GetResString(keyPicturesCaption).remove(u':') + u' ' + QString::number(slot + 1));
        place(picture, 2228 + 2280 * column - 480, 4028 + 1200 * row - 360, 960, 720);
        picKeyPicture.append(picture);
        QLabel* caption = label(0, 1200 + 2280 * column, 4440 + 1200 * row, 2055);
        caption->setObjectName(ElementName(u"lblKeyPicture"_s, slot));
        caption->setAlignment(Qt::AlignHCenter | Qt::AlignTop);
        lblKeyPicture.append(caption);
    }
    txtName->setAccessibleName(lblName->text().remove(u':'));
    txtRecordNo->setAccessibleName(lblRecord->text().remove(u':'));
    txtFreeText->setAccessibleName(u"Free text"_s);
    picPicture->setAccessibleName(u"Picture"_s);

    connect(txtName, &QLineEdit::textEdited, this, [this](const QString& text) {
        m_document->SetControlText(m_document->ControlOfKind(ControlKind::Name), text);
    });
    connect(txtFreeText, &QTextEdit::textChanged, this, [this] {
        if (!m_refreshing)
            m_document->SetControlText(
                m_document->ControlOfKind(ControlKind::FreeText), txtFreeText->toPlainText());
    });
    connect(txtRecordNo, &QLineEdit::returnPressed, this, [this] {
        m_document->GoToNumber(txtRecordNo->text());
        txtRecordNo->setModified(false);
        txtRecordNo->selectAll();
    });
}

void frmBramlet::connectActions()
{
    using namespace CardMenu;
    const auto on
        = [this](int id, auto handler) { connect(Action(id), &QAction::triggered, this, handler); };
    on(New, [this] {
        if (m_host != nullptr)
            m_host->NewFile();
    });
    on(Open, [this] {
        if (m_host != nullptr)
            m_host->OpenFile(3);
    });
    on(Close, [this] {
        if (parentWidget() != nullptr)
            parentWidget()->close();
        else
            close();
    });
    on(Print, &frmBramlet::PrintCards);
    on(Exit, [this] {
        if (m_host != nullptr)
            m_host->Exit();
        else
            close();
    });
    for (const int id : { Cut, Copy, Paste })
        on(id, [this, id] { clipboard(id); });
    for (int view = VelkinView; view <= SprondleView; ++view)
        on(Velkin + view - VelkinView, [this, view] { SetView(view); });
    for (int action = FirstCard; action <= LastCard; ++action)
        on(FirstRecord + action - FirstCard, [this, action] { m_document->GoToCard(action); });
    on(AddRecord, [this] { m_document->AddCard(); });
    on(DeleteRecord, [this] { m_document->DeleteCard(); });
    on(About, [this] {
        if (m_host != nullptr)
            m_host->ShowAbout();
    });
    connect(m_actions->ImportAction(), &QAction::triggered, this,
        [this] { m_document->ImportWithDialog(); });
    on(CardToolbar::Key + CardToolbar::Refresh, [this] { m_document->RefreshDatabase(); });
}

void frmBramlet::clipboard(int id)
{
    QWidget* focused = focusWidget();
    if (auto* line = qobject_cast<QLineEdit*>(focused)) {
        if (id == CardMenu::Cut)
            line->cut();
        else if (id == CardMenu::Copy)
            line->copy();
        else
            line->paste();
        // A cut or paste is an edit like typing.
        if (id != CardMenu::Copy)
            emit line->textEdited(line->text());
    } else if (auto* text = qobject_cast<QTextEdit*>(focused)) {
        if (id == CardMenu::Cut)
            text->cut();
        else if (id == CardMenu::Copy)
            text->copy();
        else
            text->paste();
    }
}

void frmBramlet::setFileName(const QString& fileName)
{
    const bool opened
        = fileName.isEmpty() ? m_document->CreateWithDialog(m_docType) : m_document->Open(fileName);
    if (!opened) {
        closeSoon();
        return;
    }
    txtName->setFocus();
}

void frmBramlet::closeSoon()
{
    // The frame is still making the window: it goes once that is done, asking nothing.
    m_closing = true;
    QTimer::singleShot(0, this, [this] {
        if (parentWidget() != nullptr)
            parentWidget()->close();
        else
            close();
    });
}

QString frmBramlet::fileName() const
{
    return m_document->FileName();
}

QWidget* frmBramlet::ControlWidget(int control) const
{
    return m_controls->ControlWidget(control);
}

QLabel* frmBramlet::LabelWidget(int control) const
{
    return m_controls->LabelWidget(control);
}

void frmBramlet::applyView()
{
    const int view = m_document->View();
    m_shownView = view;
    const bool velkin = view == VelkinView;
    const bool bramlet = view == BramletView;
    const bool sprondle = view == SprondleView;
    lblKeyPictures->setVisible(velkin);
    for (int slot = 0; slot < 6; ++slot) {
        picKeyPicture[slot]->setVisible(velkin);
        lblKeyPicture[slot]->setVisible(velkin);
        txtKeyWord[slot]->setVisible(bramlet);
    }
    lblKeyWords->setVisible(bramlet);
    m_controls->ShowView(view);
    // Views 2 and 3 keep their size: any resize springs back. View 4 starts at the file's
    // size and may be sized freely.
    const QSize inner(
        picCard->pixels(m_document->ViewWidth()), picCard->pixels(m_document->ViewHeight()));
    picCard->setFixedSize(inner);
    if (layout() != nullptr)
        layout()->activate();
    auto* frame = qobject_cast<QMdiSubWindow*>(parentWidget());
    if (frame != nullptr)
        frame->adjustSize();
    else
        adjustSize();
    if (sprondle) {
        picCard->setMinimumSize(0, 0);
        picCard->setMaximumSize(QWIDGETSIZE_MAX, QWIDGETSIZE_MAX);
    }
    setWindowIcon(Frame::ResourceIcon(viewIcons[view - VelkinView]));
    m_actions->ShowView(view);
}

void frmBramlet::Refresh()
{
    if (m_refreshing)
        return;
    m_refreshing = true;
    if (m_controls->Rebuild())
        m_shownView = 0;
    if (m_document->IsOpen() && m_shownView != m_document->View())
        applyView();
    m_controls->ShowValues(m_document->ReadOnly() || !m_document->IsOpen());
    if (!txtRecordNo->hasFocus() || !txtRecordNo->isModified())
        txtRecordNo->setText(m_document->RecordNumberText());
    lblNoOfRecords->setText(m_document->RecordCountText());
    m_actions->Enable(CommandStateOf(*m_document));
    // A new card starts with its name: the keys go to the name box once it is on show, if
    // this window has them.
    const bool newCard = m_document->IsOpen() && m_document->CurrentPosition() < 0
        && !m_document->IsChanged() && !m_document->FieldEditing();
    QWidget* focused = QApplication::focusWidget();
    if (newCard && !m_newCardShown && focused != nullptr && isAncestorOf(focused))
        txtName->setFocus();
    m_newCardShown = newCard;
    const int selected = m_document->SelectedControl();
    QWidget* chosen = m_document->FieldEditing() ? ControlWidget(selected) : nullptr;
    picCard->setSelection(chosen != nullptr ? chosen->geometry() : QRect());
    if (!m_document->Caption().isEmpty())
        setWindowTitle(m_document->Caption());
    if (m_host != nullptr)
        m_host->SetDocumentChanged(this, m_document->IsChanged());
    m_refreshing = false;
}

void frmBramlet::SetView(int view)
{
    m_document->SetView(view);
}

void frmBramlet::SetFieldEditing(bool on)
{
    m_document->SetFieldEditing(on);
}

void frmBramlet::PrintCards()
{
    // Printing moves through the cards: the card on show is saved first, as any move does.
    if (m_document->IsChanged() && !m_document->SaveCard())
        return;
    frmBramletPrint dialog(*m_document, this);
    if (dialog.exec() == QDialog::Accepted)
        PrintCardPages(*this, dialog.Choices(), windowTitle());
}

bool frmBramlet::queryClose()
{
    if (!m_closing && m_document->IsOpen()) {
        if (m_document->FieldEditing())
            m_document->SetFieldEditing(false);
        if (!m_document->AskToSaveCard())
            return false;
        if (m_document->View() == SprondleView)
            m_document->StoreFormSize(
                picCard->twips(picCard->width()), picCard->twips(picCard->height()));
    }
    QSettings().setValue(dbToolbar->objectName(), saveState());
    return true;
}

void frmBramlet::closeEvent(QCloseEvent* event)
{
    // Inside the main window the frame has asked already; alone, the window asks itself.
    if (parentWidget() == nullptr && !queryClose()) {
        event->ignore();
        return;
    }
    QMainWindow::closeEvent(event);
}

} // namespace Bramlet
