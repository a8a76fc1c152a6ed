#include "cards/ui/frmBramlet.h"

#include "cards/CardDocument.h"
#include "cards/ui/CardArea.h"
#include "cards/ui/DatePicker.h"
#include "cards/ui/KeyFilter.h"
#include "cards/ui/frmBramletPrint.h"
#include "frame/DocumentHost.h"
#include "frame/ui/ImageList.h"
#include "frame/ui/ResourceIcons.h"
#include "resources/StringTable.h"

#include <QAbstractButton>
#include <QApplication>
#include <QCheckBox>
#include <QCloseEvent>
#include <QComboBox>
#include <QDesktopServices>
#include <QLabel>
#include <QLayout>
#include <QLineEdit>
#include <QMdiSubWindow>
#include <QMenuBar>
#include <QMouseEvent>
#include <QSettings>
#include <QTextEdit>
#include <QTimer>
#include <QToolBar>
#include <QUrl>

using namespace Qt::Literals::StringLiterals;

namespace Bramlet {

namespace {

constexpr int nameCaption = 820;
constexpr int recordCaption = 821;
constexpr int keyPicturesCaption = 822;
constexpr int keywordsCaption = 823;
constexpr int removePictureCaption = 836;
const QString toolbarSetting = u"dbToolbar"_s;
// The window icons of the three views.
constexpr int viewIcons[] = { 111, 110, 112 };
// The toolbar buttons that have a command of their own here, with their images in the frame's
// shared list.
constexpr std::pair<int, int> toolbarImages[] = { { CardToolbar::Open, 1 },
    { CardToolbar::Print, 3 }, { CardToolbar::FirstRecord, 9 }, { CardToolbar::PreviousRecord, 10 },
    { CardToolbar::NextRecord, 11 }, { CardToolbar::LastRecord, 12 }, { CardToolbar::FindCard, 22 },
    { CardToolbar::CreateQuery, 23 }, { CardToolbar::CountWindow, 13 },
    { CardToolbar::QueriesWindow, 24 }, { CardToolbar::PictureLibrary, 20 },
    { CardToolbar::MakeGraph, 4 }, { CardToolbar::Refresh, 21 } };
// The commands whose windows and dialogs belong to other parts of the card tool and are not
// made yet: their items stay disabled.
constexpr int laterCommands[] = { CardMenu::LoadPicture, CardMenu::ExportPicture,
    CardMenu::ExportData, CardMenu::CreateReport, CardMenu::ExportCsv, CardMenu::FindCard,
    CardMenu::CreateQuery, CardMenu::ShowQueries, CardMenu::EditFields, CardMenu::Table,
    CardMenu::PictureLibrary, CardMenu::CountWindow, CardMenu::CountOptions, CardMenu::MakeGraph,
    CardMenu::SortRecords, CardToolbar::Key + CardToolbar::FindCard,
    CardToolbar::Key + CardToolbar::CreateQuery, CardToolbar::Key + CardToolbar::CountWindow,
    CardToolbar::Key + CardToolbar::QueriesWindow, CardToolbar::Key + CardToolbar::PictureLibrary,
    CardToolbar::Key + CardToolbar::MakeGraph };

QString ElementName(const QString& array, int index)
{
    return array + u'(' + QString::number(index) + u')';
}

QPixmap PictureOf(const QByteArray& bytes, const QSize& box)
{
    QPixmap picture;
    if (bytes.isEmpty() || !picture.loadFromData(bytes))
        return {};
    // Fitted, never enlarged.
    if (picture.width() > box.width() || picture.height() > box.height())
        picture = picture.scaled(box, Qt::KeepAspectRatio, Qt::SmoothTransformation);
    return picture;
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
    buildMenus();
    buildToolbar();
    connect(m_document, &CardDocument::changed, this, &frmBramlet::Refresh);
    const QVariant layout = QSettings().value(toolbarSetting);
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

QAction* frmBramlet::addMenuItem(QMenu* menu, int id)
{
    QAction* action = menu->addAction(GetResString(id));
    action->setObjectName(u"mnu"_s + QString::number(id));
    m_actions.append({ id, action });
    return action;
}

QAction* frmBramlet::Action(int id) const
{
    for (const auto& [key, action] : m_actions) {
        if (key == id)
            return action;
    }
    return nullptr;
}

void frmBramlet::buildMenus()
{
    using namespace CardMenu;
    const auto onTriggered = [this](QAction* action, auto handler) {
        connect(action, &QAction::triggered, this, handler);
        return action;
    };

    mnuFile = menuBar()->addMenu(GetResString(File));
    onTriggered(addMenuItem(mnuFile, New), [this] {
        if (m_host != nullptr)
            m_host->NewFile();
    });
    onTriggered(addMenuItem(mnuFile, Open), [this] {
        if (m_host != nullptr)
            m_host->OpenFile(3);
    });
    onTriggered(addMenuItem(mnuFile, Close), [this] {
        if (parentWidget() != nullptr)
            parentWidget()->close();
        else
            close();
    });
    mnuFile->addSeparator();
    addMenuItem(mnuFile, LoadPicture);
    addMenuItem(mnuFile, ExportPicture);
    QMenu* exportData = mnuFile->addMenu(GetResString(ExportData));
    m_actions.append({ ExportData, exportData->menuAction() });
    addMenuItem(exportData, CreateReport);
    addMenuItem(exportData, ExportCsv);
    mnuFile->addSeparator();
    onTriggered(addMenuItem(mnuFile, Print), &frmBramlet::PrintCards)
        ->setShortcut(QKeySequence::Print);
    mnuFile->addSeparator();
    onTriggered(addMenuItem(mnuFile, Exit), [this] {
        if (m_host != nullptr)
            m_host->Exit();
        else
            close();
    });

    mnuEdit = menuBar()->addMenu(GetResString(Edit));
    for (const int id : { Cut, Copy, Paste })
        onTriggered(addMenuItem(mnuEdit, id), [this, id] { clipboard(id); });
    mnuEdit->addSeparator();
    addMenuItem(mnuEdit, FindCard);
    addMenuItem(mnuEdit, CreateQuery);
    addMenuItem(mnuEdit, ShowQueries);
    mnuEdit->addSeparator();
    addMenuItem(mnuEdit, EditFields);

    mnuView = menuBar()->addMenu(GetResString(View));
    for (int view = VelkinView; view <= SprondleView; ++view) {
        QAction* item = addMenuItem(mnuView, Velkin + view - VelkinView);
        item->setCheckable(true);
        onTriggered(item, [this, view] { SetView(view); });
    }
    mnuView->addSeparator();
    addMenuItem(mnuView, Table);
    addMenuItem(mnuView, PictureLibrary);

    mnuRecord = menuBar()->addMenu(GetResString(Record));
    const QKeySequence moveKeys[]
        = { QKeySequence(Qt::CTRL | Qt::Key_PageUp), QKeySequence(Qt::Key_PageUp),
              QKeySequence(Qt::Key_PageDown), QKeySequence(Qt::CTRL | Qt::Key_PageDown) };
    for (int action = FirstCard; action <= LastCard; ++action) {
        onTriggered(addMenuItem(mnuRecord, FirstRecord + action - FirstCard), [this, action] {
            goToCard(action);
        })->setShortcut(moveKeys[action - FirstCard]);
    }
    mnuRecord->addSeparator();
    onTriggered(addMenuItem(mnuRecord, AddRecord), [this] { m_document->AddCard(); });
    onTriggered(addMenuItem(mnuRecord, DeleteRecord), [this] { m_document->DeleteCard(); });
    mnuRecord->addSeparator();
    QMenu* remove = mnuRecord->addMenu(GetResString(Remove));
    m_actions.append({ Remove, remove->menuAction() });
    remove->addAction(GetResString(removePictureCaption))->setEnabled(false);

    mnuData = menuBar()->addMenu(GetResString(Data));
    addMenuItem(mnuData, CountWindow);
    addMenuItem(mnuData, CountOptions);
    mnuData->addSeparator();
    addMenuItem(mnuData, MakeGraph);
    mnuData->addSeparator();
    addMenuItem(mnuData, SortRecords);

    mnuHelp = menuBar()->addMenu(GetResString(Help));
    onTriggered(addMenuItem(mnuHelp, About), [this] {
        if (m_host != nullptr)
            m_host->ShowAbout();
    });

    // Ctrl+Shift+I: cards from a delimited file. F5: the toolbar's Refresh Database.
    auto* import = new QAction(this);
    import->setShortcut(QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_I));
    import->setObjectName(u"actImportCards"_s);
    connect(import, &QAction::triggered, this, [this] { m_document->ImportWithDialog(); });
    addAction(import);
}

void frmBramlet::buildToolbar()
{
    dbToolbar = addToolBar(QString());
    dbToolbar->setObjectName(toolbarSetting);
    dbToolbar->setIconSize(QSize(24, 24));
    for (const auto& [id, image] : toolbarImages) {
        if (id == CardToolbar::FirstRecord || id == CardToolbar::FindCard
            || id == CardToolbar::CountWindow || id == CardToolbar::MakeGraph)
            dbToolbar->addSeparator();
        const QIcon icon = m_host != nullptr
            ? m_host->ToolbarImages().ListImages(image)
            : Frame::ResourceIcon(Frame::ToolbarIconNumbers().value(image - 1));
        QAction* button = dbToolbar->addAction(icon, GetResString(id));
        button->setObjectName(u"tbr"_s + QString::number(id));
        m_actions.append({ CardToolbar::Key + id, button });
    }
    const auto mirror = [this](int button, int menuId) {
        connect(Action(CardToolbar::Key + button), &QAction::triggered, Action(menuId),
            &QAction::trigger);
    };
    mirror(CardToolbar::Open, CardMenu::Open);
    mirror(CardToolbar::Print, CardMenu::Print);
    for (int action = 0; action < 4; ++action)
        mirror(CardToolbar::FirstRecord + action, CardMenu::FirstRecord + action);
    for (const int toggle :
        { CardToolbar::CountWindow, CardToolbar::QueriesWindow, CardToolbar::PictureLibrary })
        Action(CardToolbar::Key + toggle)->setCheckable(true);
    QAction* refresh = Action(CardToolbar::Key + CardToolbar::Refresh);
    refresh->setShortcut(QKeySequence(Qt::Key_F5));
    connect(refresh, &QAction::triggered, this, [this] { m_document->RefreshDatabase(); });
}

void frmBramlet::goToCard(int action)
{
    m_document->GoToCard(action);
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
    return control >= 0 && static_cast<size_t>(control) < m_widgets.Controls.size()
        ? m_widgets.Controls[static_cast<size_t>(control)]
        : nullptr;
}

QLabel* frmBramlet::LabelWidget(int control) const
{
    return control >= 0 && static_cast<size_t>(control) < m_widgets.Labels.size()
        ? m_widgets.Labels[static_cast<size_t>(control)]
        : nullptr;
}

void frmBramlet::connectControl(int index, QWidget* widget)
{
    const CardControl& control = m_document->Controls()[static_cast<size_t>(index)];
    switch (control.Kind) {
    case ControlKind::TextField:
        connect(qobject_cast<QLineEdit*>(widget), &QLineEdit::textEdited, this,
            [this, index](const QString& text) { m_document->SetControlText(index, text); });
        break;
    case ControlKind::DatePicker:
        connect(qobject_cast<DatePicker*>(widget), &DatePicker::valueEdited, this,
            [this, index](
                bool null, double serial) { m_document->SetControlDate(index, null, serial); });
        break;
    case ControlKind::CheckBox:
        connect(qobject_cast<QCheckBox*>(widget), &QCheckBox::clicked, this,
            [this, index](bool checked) { m_document->SetControlChecked(index, checked); });
        break;
    case ControlKind::DropDown: {
        auto* list = qobject_cast<QComboBox*>(widget);
        connect(list, &QComboBox::activated, this, [this, index, list](int item) {
            m_document->SetControlText(index, list->itemText(item));
        });
        break;
    }
    case ControlKind::WebAddress:
    case ControlKind::Resource:
        connect(
            qobject_cast<QAbstractButton*>(widget), &QAbstractButton::clicked, this, [this, index] {
                const CardControl& shown = m_document->Controls()[static_cast<size_t>(index)];
                if (!shown.Text.isEmpty())
                    QDesktopServices::openUrl(shown.Kind == ControlKind::WebAddress
                            ? QUrl::fromUserInput(shown.Text)
                            : QUrl::fromLocalFile(shown.Text));
            });
        break;
    default:
        break;
    }
    // While the fields are edited a press on a field control chooses and drags it.
    widget->installEventFilter(this);
    for (QWidget* child : widget->findChildren<QWidget*>())
        child->installEventFilter(this);
}

void frmBramlet::rebuildLayout()
{
    for (QWidget* widget : std::as_const(m_widgets.Made)) {
        // Gone for good now (a name search must not find it), deleted once the event that
        // led here is over.
        widget->hide();
        widget->setObjectName(QString());
        widget->deleteLater();
    }
    FixedCardWidgets fixed { txtName, txtFreeText, picPicture, {} };
    for (QLineEdit* keyword : std::as_const(txtKeyWord))
        fixed.txtKeyWord.append(keyword);
    m_widgets = BuildCardLayout(picCard, m_document->Controls(), fixed);
    for (QWidget* widget : std::as_const(m_widgets.Made)) {
        const auto found = std::find(m_widgets.Controls.begin(), m_widgets.Controls.end(), widget);
        if (found != m_widgets.Controls.end())
            connectControl(static_cast<int>(found - m_widgets.Controls.begin()), widget);
    }
    m_layoutVersion = m_document->LayoutVersion();
    m_shownView = 0;
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
    const auto& controls = m_document->Controls();
    for (size_t index = 0; index < controls.size(); ++index) {
        if (!m_widgets.Made.contains(m_widgets.Controls[index]))
            continue;
        m_widgets.Controls[index]->setVisible(sprondle && controls[index].Visible);
        if (m_widgets.Labels[index] != nullptr)
            m_widgets.Labels[index]->setVisible(sprondle);
    }
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
    for (int item = VelkinView; item <= SprondleView; ++item)
        Action(CardMenu::Velkin + item - VelkinView)->setChecked(item == view);
}

void frmBramlet::showValues()
{
    const bool readOnly = m_document->ReadOnly() || !m_document->IsOpen();
    const auto& controls = m_document->Controls();
    for (size_t index = 0; index < controls.size(); ++index) {
        const CardControl& control = controls[index];
        QWidget* widget = m_widgets.Controls[index];
        if (widget == nullptr)
            continue;
        switch (control.Kind) {
        case ControlKind::Name:
        case ControlKind::TextField:
        case ControlKind::Keyword: {
            auto* box = qobject_cast<QLineEdit*>(widget);
            if (box->text() != control.Text)
                box->setText(control.Text);
            if (control.Kind != ControlKind::Keyword) {
                box->setReadOnly(readOnly);
            } else if (control.ArrayIndex >= 0 && control.ArrayIndex < 6) {
                // The same keyword under its key picture in the Velkin view.
                lblKeyPicture[control.ArrayIndex]->setText(control.Text);
                QLabel* picture = picKeyPicture[control.ArrayIndex];
                picture->setPixmap(PictureOf(control.KeyPicture, picture->size()));
            }
            break;
        }
        case ControlKind::FreeText:
            if (txtFreeText->toPlainText() != control.Text)
                txtFreeText->setPlainText(control.Text);
            txtFreeText->setReadOnly(readOnly);
            break;
        case ControlKind::CheckBox:
            qobject_cast<QCheckBox*>(widget)->setChecked(control.Checked);
            widget->setEnabled(!readOnly);
            break;
        case ControlKind::DropDown: {
            auto* list = qobject_cast<QComboBox*>(widget);
            list->setCurrentIndex(control.Text.isEmpty() ? -1 : list->findText(control.Text));
            widget->setEnabled(!readOnly);
            break;
        }
        case ControlKind::DatePicker: {
            auto* picker = qobject_cast<DatePicker*>(widget);
            picker->setValue(control.Null, control.Date);
            picker->setReadOnly(readOnly);
            break;
        }
        case ControlKind::WebAddress:
        case ControlKind::Resource:
            widget->setToolTip(control.Text);
            break;
        case ControlKind::Picture:
            break;
        }
    }
    picPicture->setPixmap(PictureOf(m_document->PictureBytes(), picPicture->size()));
    if (!txtRecordNo->hasFocus() || !txtRecordNo->isModified())
        txtRecordNo->setText(m_document->RecordNumberText());
    lblNoOfRecords->setText(m_document->RecordCountText());
}

void frmBramlet::enableCommands()
{
    const bool open = m_document->IsOpen();
    const bool writable = open && !m_document->ReadOnly();
    const bool designing = m_document->FieldEditing();
    for (QMenu* menu : { mnuFile, mnuRecord, mnuEdit, mnuView, mnuData })
        menu->menuAction()->setEnabled(!designing);
    dbToolbar->setEnabled(!designing);
    const bool back = open && m_document->CanMoveBack();
    for (const int id : { CardMenu::FirstRecord, CardMenu::PreviousRecord,
             CardToolbar::Key + CardToolbar::FirstRecord,
             CardToolbar::Key + CardToolbar::PreviousRecord })
        Action(id)->setEnabled(back);
    for (const int id :
        { CardMenu::NextRecord, CardMenu::LastRecord, CardToolbar::Key + CardToolbar::NextRecord,
            CardToolbar::Key + CardToolbar::LastRecord, CardMenu::Print,
            CardToolbar::Key + CardToolbar::Print, CardToolbar::Key + CardToolbar::Refresh })
        Action(id)->setEnabled(open);
    Action(CardMenu::AddRecord)->setEnabled(writable);
    Action(CardMenu::DeleteRecord)->setEnabled(writable && m_document->CurrentPosition() >= 0);
    for (const int id : laterCommands)
        Action(id)->setEnabled(false);
    Action(CardMenu::Remove)->setEnabled(writable);
    for (QAction* action : actions())
        action->setEnabled(writable && !designing);
}

void frmBramlet::Refresh()
{
    if (m_refreshing)
        return;
    m_refreshing = true;
    if (m_layoutVersion != m_document->LayoutVersion())
        rebuildLayout();
    if (m_document->IsOpen() && m_shownView != m_document->View())
        applyView();
    showValues();
    enableCommands();
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
    QSettings().setValue(toolbarSetting, saveState());
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

bool frmBramlet::eventFilter(QObject* watched, QEvent* event)
{
    if (!m_document->FieldEditing())
        return QMainWindow::eventFilter(watched, event);
    const auto type = event->type();
    if (type != QEvent::MouseButtonPress && type != QEvent::MouseMove
        && type != QEvent::MouseButtonRelease && type != QEvent::MouseButtonDblClick)
        return QMainWindow::eventFilter(watched, event);
    auto* widget = qobject_cast<QWidget*>(watched);
    const auto* mouse = static_cast<QMouseEvent*>(event);
    const QPoint onCard
        = widget != nullptr ? widget->mapTo(picCard, mouse->position().toPoint()) : QPoint();
    if (type == QEvent::MouseButtonPress && mouse->button() == Qt::LeftButton) {
        // The field control the press landed on (or inside).
        for (size_t index = 0; index < m_widgets.Controls.size(); ++index) {
            QWidget* control = m_widgets.Controls[index];
            if (control != nullptr && m_widgets.Made.contains(control)
                && (control == widget || control->isAncestorOf(widget))) {
                m_document->SelectControl(static_cast<int>(index));
                m_dragged = static_cast<int>(index);
                m_dragStart = onCard;
                break;
            }
        }
    } else if (type == QEvent::MouseButtonRelease && m_dragged >= 0) {
        const int dragged = std::exchange(m_dragged, -1);
        if ((onCard - m_dragStart).manhattanLength() >= QApplication::startDragDistance())
            m_document->MoveField(dragged, picCard->twips(onCard.x()), picCard->twips(onCard.y()));
    }
    // Nothing of a control is edited while the card is being designed.
    return true;
}

} // namespace Bramlet
