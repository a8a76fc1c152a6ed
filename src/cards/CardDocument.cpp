#include "cards/CardDocument.h"

#include "cards/CardControlValues.h"
#include "cards/CardControls.h"
#include "cards/CardDatabase.h"
#include "cards/CardFiles.h"
#include "cards/CardMessages.h"
#include "cards/DaoProperties.h"
#include "frame/ChangeBatch.h"
#include "frame/Helpers.h"
#include "frame/Prompts.h"
#include "platform/dao/DBEngine.h"
#include "platform/dao/DaoError.h"
#include "platform/runtime/Error.h"
#include "resources/StringTable.h"

#include <QFileInfo>
#include <algorithm>

using namespace Qt::Literals::StringLiterals;
using Dao::DaoError;
using Runtime::Variant;

namespace Bramlet {

namespace {

constexpr int emptyNameText = 840;
constexpr int deleteQuestion = 835;
constexpr int noSuchCardText = 852;
constexpr int saveQuestion = 854;
constexpr int readOnlyText = 1082;

} // namespace


CardDocument::CardDocument(Frame::DocumentHost* host, Dao::DBEngine* engine, QObject* parent)
    : QObject(parent)
    , m_host(host)
    , m_engine(engine)
    , m_changes([this] { emit changed(); })
{ }

CardDocument::~CardDocument() = default;

Dao::DBEngine& CardDocument::SharedEngine()
{
    static Dao::DBEngine engine;
    return engine;
}

Dao::DBEngine& CardDocument::engine() const
{
    return m_engine != nullptr ? *m_engine : SharedEngine();
}

void CardDocument::notify()
{
    m_changes.notify();
}

Dao::Recordset* CardDocument::MainTable() const
{
    return m_cards ? m_cards->MainTable().get() : nullptr;
}

bool CardDocument::ReadOnly() const
{
    return m_cards && m_cards->ReadOnly();
}

QString CardDocument::Caption() const
{
    if (!m_cards)
        return {};
    static const QString words[] = { u"Velkin - "_s, u"Bramlet - "_s, u"Sprondle - "_s };
    QString caption = words[std::clamp(m_view, 2, 4) - 2] + Frame::FileTitleOf(m_fileName);
    if (ReadOnly())
        caption += u' ' + GetResString(readOnlyText);
    return caption;
}

bool CardDocument::Open(const QString& path, int view)
{
    const Frame::ChangeBatch::Scope scope(m_changes);
    std::unique_ptr<CardDatabase> cards = OpenCardFile(engine(), path);
    if (!cards)
        return false;
    m_cards = std::move(cards);
    m_fileName = QFileInfo(path).absoluteFilePath();
    m_fieldEditing = false;
    m_selectedControl = -1;
    const int stored = m_cards->ViewType();
    m_view = view != 0 ? view : (stored >= VelkinView && stored <= SprondleView ? stored : 3);
    BuildCardLayout();
    showAfterOpen();
    return true;
}

void CardDocument::showAfterOpen()
{
    if (CardCount() == 0)
        startNewCard();
    DisplayCard();
}

bool CardDocument::CreateWithDialog(int view)
{
    const std::optional<QString> path = AskNewCardFile(m_host);
    return path && Create(*path, view);
}

bool CardDocument::Create(const QString& path, int view)
{
    return CreateCardFile(engine(), path, view) && Open(path, view);
}

void CardDocument::BuildCardLayout()
{
    const Frame::ChangeBatch::Scope scope(m_changes);
    m_controls.clear();
    m_selectedControl = -1;
    ++m_layoutVersion;
    Dao::Recordset* set = MainTable();
    if (set == nullptr)
        return;
    m_controls = MakeCardControls(*set, m_fieldEditing);
    notify();
}

int CardDocument::ControlOfKind(ControlKind kind) const
{
    return FindControlOfKind(m_controls, kind);
}

int CardDocument::ControlWithLabel(const QString& label) const
{
    return FindControlWithLabel(m_controls, label);
}

int CardDocument::ViewWidth() const
{
    if (m_view != SprondleView || !m_cards || !m_cards->MainTableDef())
        return FixedViewWidth;
    const Variant width = GetDaoProperty(*m_cards->MainTableDef(), u"FormWidth"_s);
    return width.isNumeric() && width.number() >= 1 ? int(width.number()) : FixedViewWidth;
}

int CardDocument::ViewHeight() const
{
    if (m_view == VelkinView)
        return VelkinViewHeight;
    if (m_view != SprondleView || !m_cards || !m_cards->MainTableDef())
        return BramletViewHeight;
    const Variant height = GetDaoProperty(*m_cards->MainTableDef(), u"FormHeight"_s);
    return height.isNumeric() && height.number() >= 1 ? int(height.number()) : 6600;
}

void CardDocument::StoreFormSize(int widthTwips, int heightTwips)
{
    if (!m_cards || ReadOnly() || m_view != SprondleView)
        return;
    try {
        SetDaoProperty(*m_cards->MainTableDef(), u"FormWidth"_s, qint64(widthTwips));
        SetDaoProperty(*m_cards->MainTableDef(), u"FormHeight"_s, qint64(heightTwips));
    } catch (const DaoError&) {
        // The size is a convenience; a file that refuses it keeps the one it had.
    } catch (const Runtime::Error&) { }
}

bool CardDocument::SetView(int view)
{
    const Frame::ChangeBatch::Scope scope(m_changes);
    if (view < VelkinView || view > SprondleView || !m_cards)
        return false;
    if (!leaveCard(0))
        return false;
    m_view = view;
    if (!ReadOnly()) {
        try {
            SetDaoProperty(*m_cards->MainTableDef(), u"ViewType"_s, qint64(view));
        } catch (const std::exception&) {
            // The file opens in its old view next time; nothing is lost.
        }
    }
    showAfterOpen();
    return true;
}

void CardDocument::DisplayCard()
{
    const Frame::ChangeBatch::Scope scope(m_changes);
    m_editEnabled = false;
    BlankCardControls(m_controls);
    m_picture.clear();
    Dao::Recordset* set = MainTable();
    if (set != nullptr && set->EditMode() != Dao::EditMode::Add && set->AbsolutePosition() >= 0)
        m_picture = ReadCardControls(*m_cards, *set, m_controls);
    m_changed = false;
    m_editEnabled = true;
    notify();
}

bool CardDocument::BeginCardEdit()
{
    Dao::Recordset* set = MainTable();
    if (set == nullptr || ReadOnly())
        return false;
    if (m_editEnabled && !m_fieldEditing && set->EditMode() == Dao::EditMode::None) {
        try {
            set->SetLockEdits(false);
            set->Edit();
        } catch (const DaoError&) {
            return false;
        }
    }
    return set->EditMode() != Dao::EditMode::None;
}

template <typename Change> bool CardDocument::changeControl(int index, Change change)
{
    const Frame::ChangeBatch::Scope scope(m_changes);
    notify();
    if (index < 0 || index >= static_cast<int>(m_controls.size()) || !BeginCardEdit())
        return false;
    CardControl& control = m_controls[static_cast<size_t>(index)];
    change(control);
    control.Touched = true;
    m_changed = true;
    return true;
}

bool CardDocument::SetControlText(int index, const QString& text)
{
    return changeControl(index, [&](CardControl& control) { control.Text = text; });
}

bool CardDocument::SetControlChecked(int index, bool checked)
{
    return changeControl(index, [&](CardControl& control) { control.Checked = checked; });
}

bool CardDocument::SetControlDate(int index, bool null, double serial)
{
    return changeControl(index, [&](CardControl& control) {
        control.Null = null;
        control.Date = serial;
    });
}

bool CardDocument::SaveCard()
{
    const Frame::ChangeBatch::Scope scope(m_changes);
    Dao::Recordset* set = MainTable();
    if (set == nullptr || set->EditMode() == Dao::EditMode::None)
        return true;
    const bool adding = set->EditMode() == Dao::EditMode::Add;
    try {
        WriteCardControls(*set, m_controls, adding);
        set->Update();
        engine().Idle(Dao::DBEngine::RefreshCache);
    } catch (const DaoError& error) {
        reportSaveError(error.number(), error.description());
        return false;
    } catch (const Runtime::Error& error) {
        reportSaveError(error.number(), error.message());
        return false;
    }
    for (CardControl& control : m_controls)
        control.Touched = false;
    m_changed = false;
    notify();
    return true;
}

void CardDocument::reportSaveError(int number, const QString& description)
{
    notify();
    if (TellSaveFailure(number, description) != AfterSaveFailure::ShowStoredCard)
        return;
    ReloadCard(*MainTable());
    if (CardCount() == 0)
        startNewCard();
    DisplayCard();
}

void CardDocument::startNewCard()
{
    Dao::Recordset* set = MainTable();
    if (set != nullptr && !ReadOnly())
        StartNewCard(*set);
}

bool CardDocument::leaveCard(int action)
{
    Dao::Recordset* set = MainTable();
    if (set == nullptr)
        return false;
    if (set->EditMode() == Dao::EditMode::Add) {
        const int name = ControlOfKind(ControlKind::Name);
        const QString typed = name >= 0 ? m_controls[static_cast<size_t>(name)].Text : QString();
        if (!typed.trimmed().isEmpty())
            return SaveCard();
        if (action == NextCard)
            ShowCardMessage(GetResString(emptyNameText), Frame::MessageIcon::Information);
        return true;
    }
    if (set->EditMode() == Dao::EditMode::InProgress && set->AbsolutePosition() >= 0)
        return SaveCard();
    return true;
}

void CardDocument::GoToCard(int action)
{
    const Frame::ChangeBatch::Scope scope(m_changes);
    Dao::Recordset* set = MainTable();
    if (set == nullptr || !leaveCard(action))
        return;
    MoveCardSet(*set, action, !ReadOnly());
    if (CardCount() == 0 && set->EditMode() != Dao::EditMode::Add)
        startNewCard();
    DisplayCard();
}

void CardDocument::AddCard()
{
    const Frame::ChangeBatch::Scope scope(m_changes);
    // A blank new card on show is already what was asked for.
    Dao::Recordset* set = MainTable();
    const int name = ControlOfKind(ControlKind::Name);
    if (set != nullptr && set->EditMode() == Dao::EditMode::Add && name >= 0
        && m_controls[static_cast<size_t>(name)].Text.trimmed().isEmpty())
        return;
    GoToCard(LastCard);
    GoToCard(NextCard);
}

bool CardDocument::DeleteCard()
{
    const Frame::ChangeBatch::Scope scope(m_changes);
    Dao::Recordset* set = MainTable();
    if (set == nullptr || ReadOnly() || CurrentPosition() < 0)
        return false;
    const Frame::MessageAnswer answer
        = Frame::CurrentPrompts().message(GetResString(deleteQuestion), QString(),
            Frame::MessageIcon::Question, Frame::MessageButtons::YesNoDefaultNo);
    if (answer != Frame::MessageAnswer::Yes)
        return false;
    const qint64 position = set->AbsolutePosition();
    try {
        set->Delete();
        engine().Idle(Dao::DBEngine::RefreshCache);
    } catch (const DaoError& error) {
        reportSaveError(error.number(), error.description());
        return false;
    }
    if (set->RecordCount() == 0)
        startNewCard();
    else
        set->SetAbsolutePosition(std::min(position, set->RecordCount() - 1));
    DisplayCard();
    return true;
}

bool CardDocument::GoToNumber(const QString& text)
{
    const Frame::ChangeBatch::Scope scope(m_changes);
    Dao::Recordset* set = MainTable();
    if (set == nullptr)
        return false;
    const std::optional<int> wanted = CardNumberFrom(text, CardCount());
    if (!wanted) {
        ShowCardMessage(GetResString(noSuchCardText), Frame::MessageIcon::Exclamation);
        notify(); // the record box shows the card on show again
        return false;
    }
    if (!leaveCard(0))
        return false;
    set->SetAbsolutePosition(std::min<qint64>(*wanted - 1, set->RecordCount() - 1));
    DisplayCard();
    return true;
}

void CardDocument::RefreshDatabase()
{
    const Frame::ChangeBatch::Scope scope(m_changes);
    Dao::Recordset* set = MainTable();
    if (set == nullptr || !leaveCard(0))
        return;
    const qint64 position = set->AbsolutePosition();
    try {
        set->Requery();
        if (set->RecordCount() > 0)
            set->SetAbsolutePosition(std::clamp<qint64>(position, 0, set->RecordCount() - 1));
    } catch (const DaoError& error) {
        reportSaveError(error.number(), error.description());
    }
    if (CardCount() == 0)
        startNewCard();
    DisplayCard();
}

bool CardDocument::AskToSaveCard()
{
    Dao::Recordset* set = MainTable();
    if (set == nullptr || set->EditMode() == Dao::EditMode::None || !m_changed)
        return true;
    const Frame::MessageAnswer answer = Frame::CurrentPrompts().message(GetResString(saveQuestion),
        QString(), Frame::MessageIcon::Question, Frame::MessageButtons::YesNo);
    if (answer == Frame::MessageAnswer::Yes)
        return SaveCard();
    const Frame::ChangeBatch::Scope scope(m_changes);
    set->CancelUpdate();
    m_changed = false;
    notify();
    return true;
}

QString CardDocument::RecordNumberText() const
{
    return CardNumberText(CurrentPosition());
}

QString CardDocument::RecordCountText() const
{
    return CardCountText(CardCount());
}

int CardDocument::CardCount() const
{
    Dao::Recordset* set = MainTable();
    return set != nullptr ? static_cast<int>(set->RecordCount()) : 0;
}

int CardDocument::CurrentPosition() const
{
    Dao::Recordset* set = MainTable();
    if (set == nullptr || set->EditMode() == Dao::EditMode::Add)
        return -1;
    return static_cast<int>(set->AbsolutePosition());
}

bool CardDocument::CanMoveBack() const
{
    Dao::Recordset* set = MainTable();
    return set != nullptr && CardCount() > 0 && CurrentPosition() != 0;
}

void CardDocument::ShowCardAt(int position)
{
    const Frame::ChangeBatch::Scope scope(m_changes);
    Dao::Recordset* set = MainTable();
    if (set == nullptr || position < 0 || position >= CardCount())
        return;
    set->SetAbsolutePosition(position);
    DisplayCard();
}

bool CardDocument::ShowCardNamed(const QString& name)
{
    const Frame::ChangeBatch::Scope scope(m_changes);
    Dao::Recordset* set = MainTable();
    if (set == nullptr || CardCount() == 0)
        return false;
    if (!FindCardNamed(*set, name))
        return false;
    DisplayCard();
    return true;
}

QStringList CardDocument::CardLines() const
{
    return CardLinesOf(m_controls);
}

bool CardDocument::ImportWithDialog()
{
    if (!m_cards || ReadOnly())
        return false;
    const std::optional<QString> path = AskImportFile(m_host);
    return path && ImportCards(*path);
}

bool CardDocument::ImportCards(const QString& path)
{
    const Frame::ChangeBatch::Scope scope(m_changes);
    if (!m_cards || ReadOnly() || !leaveCard(0))
        return false;
    const CardImportOutcome outcome = ImportCardFile(*m_cards, path);
    // The card set was opened anew: show it as button 17 would.
    if (CardCount() == 0)
        startNewCard();
    DisplayCard();
    return TellCardImport(outcome);
}

bool CardDocument::SetFieldEditing(bool on)
{
    const Frame::ChangeBatch::Scope scope(m_changes);
    if (!m_cards || on == m_fieldEditing || (on && ReadOnly()))
        return false;
    if (!leaveCard(0))
        return false;
    // Changing columns needs the file to itself.
    const bool done = ReopenCardFile(*m_cards, m_fileName, on);
    m_fieldEditing = done ? on : false;
    BuildCardLayout();
    if (m_fieldEditing) {
        // No stored card is on show while the layout is designed.
        startNewCard();
    } else if (CardCount() > 0) {
        MainTable()->MoveLast();
    } else {
        startNewCard();
    }
    DisplayCard();
    return done;
}

void CardDocument::SelectControl(int control)
{
    const Frame::ChangeBatch::Scope scope(m_changes);
    m_selectedControl = control == m_selectedControl ? -1 : control;
    notify();
}

void CardDocument::MoveField(int index, int left, int top)
{
    const Frame::ChangeBatch::Scope scope(m_changes);
    if (!m_cards || !m_fieldEditing || index < 0 || index >= static_cast<int>(m_controls.size()))
        return;
    CardControl& control = m_controls[static_cast<size_t>(index)];
    if (!IsUserField(control))
        return;
    ++m_layoutVersion;
    SnapFieldControl(control, left, top, LayoutGrid);
    try {
        StoreFieldPlacement(*m_cards->MainTableDef(), control);
    } catch (const DaoError& error) {
        ShowCardMessage(
            EngineErrorText(error.number(), error.description()), Frame::MessageIcon::None);
    }
    notify();
}

} // namespace Bramlet
