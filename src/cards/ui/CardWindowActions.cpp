#include "cards/ui/CardWindowActions.h"

#include "cards/CardCommandState.h"
#include "cards/CardDocument.h"
#include "frame/DocumentHost.h"
#include "frame/ui/ImageList.h"
#include "frame/ui/ResourceIcons.h"
#include "resources/StringTable.h"

#include <QAction>
#include <QMainWindow>
#include <QMenuBar>
#include <QToolBar>

using namespace Qt::Literals::StringLiterals;

namespace Bramlet {

namespace {

constexpr int removePictureCaption = 836;
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

} // namespace

CardWindowActions::CardWindowActions(QMainWindow& window, Frame::DocumentHost* host)
    : m_window(window)
{
    buildMenus();
    buildToolbar(host);
}

QAction* CardWindowActions::addMenuItem(QMenu* menu, int id)
{
    QAction* action = menu->addAction(GetResString(id));
    action->setObjectName(u"mnu"_s + QString::number(id));
    m_actions.append({ id, action });
    return action;
}

QAction* CardWindowActions::Action(int id) const
{
    for (const auto& [key, action] : m_actions) {
        if (key == id)
            return action;
    }
    return nullptr;
}

void CardWindowActions::buildMenus()
{
    using namespace CardMenu;
    QMenuBar* bar = m_window.menuBar();
    mnuFile = bar->addMenu(GetResString(File));
    addMenuItem(mnuFile, New);
    addMenuItem(mnuFile, Open);
    addMenuItem(mnuFile, Close);
    mnuFile->addSeparator();
    addMenuItem(mnuFile, LoadPicture);
    addMenuItem(mnuFile, ExportPicture);
    QMenu* exportData = mnuFile->addMenu(GetResString(ExportData));
    m_actions.append({ ExportData, exportData->menuAction() });
    addMenuItem(exportData, CreateReport);
    addMenuItem(exportData, ExportCsv);
    mnuFile->addSeparator();
    addMenuItem(mnuFile, Print)->setShortcut(QKeySequence::Print);
    mnuFile->addSeparator();
    addMenuItem(mnuFile, Exit);

    mnuEdit = bar->addMenu(GetResString(Edit));
    for (const int id : { Cut, Copy, Paste })
        addMenuItem(mnuEdit, id);
    mnuEdit->addSeparator();
    addMenuItem(mnuEdit, FindCard);
    addMenuItem(mnuEdit, CreateQuery);
    addMenuItem(mnuEdit, ShowQueries);
    mnuEdit->addSeparator();
    addMenuItem(mnuEdit, EditFields);

    mnuView = bar->addMenu(GetResString(View));
    for (int view = VelkinView; view <= SprondleView; ++view)
        addMenuItem(mnuView, Velkin + view - VelkinView)->setCheckable(true);
    mnuView->addSeparator();
    addMenuItem(mnuView, Table);
    addMenuItem(mnuView, PictureLibrary);

    mnuRecord = bar->addMenu(GetResString(Record));
    const QKeySequence moveKeys[]
        = { QKeySequence(Qt::CTRL | Qt::Key_PageUp), QKeySequence(Qt::Key_PageUp),
              QKeySequence(Qt::Key_PageDown), QKeySequence(Qt::CTRL | Qt::Key_PageDown) };
    for (int action = FirstCard; action <= LastCard; ++action) {
        addMenuItem(mnuRecord, FirstRecord + action - FirstCard)
            ->setShortcut(moveKeys[action - FirstCard]);
    }
    mnuRecord->addSeparator();
    addMenuItem(mnuRecord, AddRecord);
    addMenuItem(mnuRecord, DeleteRecord);
    mnuRecord->addSeparator();
    QMenu* remove = mnuRecord->addMenu(GetResString(Remove));
    m_actions.append({ Remove, remove->menuAction() });
    remove->addAction(GetResString(removePictureCaption))->setEnabled(false);

    mnuData = bar->addMenu(GetResString(Data));
    addMenuItem(mnuData, CountWindow);
    addMenuItem(mnuData, CountOptions);
    mnuData->addSeparator();
    addMenuItem(mnuData, MakeGraph);
    mnuData->addSeparator();
    addMenuItem(mnuData, SortRecords);

    mnuHelp = bar->addMenu(GetResString(Help));
    addMenuItem(mnuHelp, About);

    // Ctrl+Shift+I: cards from a delimited file. F5: the toolbar's Refresh Database.
    m_import = new QAction(&m_window);
    m_import->setShortcut(QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_I));
    m_import->setObjectName(u"actImportCards"_s);
    m_window.addAction(m_import);
}

void CardWindowActions::buildToolbar(Frame::DocumentHost* host)
{
    dbToolbar = m_window.addToolBar(QString());
    dbToolbar->setObjectName(u"dbToolbar"_s);
    dbToolbar->setIconSize(QSize(24, 24));
    for (const auto& [id, image] : toolbarImages) {
        if (id == CardToolbar::FirstRecord || id == CardToolbar::FindCard
            || id == CardToolbar::CountWindow || id == CardToolbar::MakeGraph)
            dbToolbar->addSeparator();
        const QIcon icon = host != nullptr
            ? host->ToolbarImages().ListImages(image)
            : Frame::ResourceIcon(Frame::ToolbarIconNumbers().value(image - 1));
        QAction* button = dbToolbar->addAction(icon, GetResString(id));
        button->setObjectName(u"tbr"_s + QString::number(id));
        m_actions.append({ CardToolbar::Key + id, button });
    }
    const auto mirror = [this](int button, int menuId) {
        QObject::connect(Action(CardToolbar::Key + button), &QAction::triggered, Action(menuId),
            &QAction::trigger);
    };
    mirror(CardToolbar::Open, CardMenu::Open);
    mirror(CardToolbar::Print, CardMenu::Print);
    for (int action = 0; action < 4; ++action)
        mirror(CardToolbar::FirstRecord + action, CardMenu::FirstRecord + action);
    for (const int toggle :
        { CardToolbar::CountWindow, CardToolbar::QueriesWindow, CardToolbar::PictureLibrary })
        Action(CardToolbar::Key + toggle)->setCheckable(true);
    Action(CardToolbar::Key + CardToolbar::Refresh)->setShortcut(QKeySequence(Qt::Key_F5));
}

void CardWindowActions::Enable(const CardCommandState& state)
{
    for (QMenu* menu : { mnuFile, mnuRecord, mnuEdit, mnuView, mnuData })
        menu->menuAction()->setEnabled(!state.Designing);
    dbToolbar->setEnabled(!state.Designing);
    for (const int id : { CardMenu::FirstRecord, CardMenu::PreviousRecord,
             CardToolbar::Key + CardToolbar::FirstRecord,
             CardToolbar::Key + CardToolbar::PreviousRecord })
        Action(id)->setEnabled(state.MoveBack);
    for (const int id :
        { CardMenu::NextRecord, CardMenu::LastRecord, CardToolbar::Key + CardToolbar::NextRecord,
            CardToolbar::Key + CardToolbar::LastRecord, CardMenu::Print,
            CardToolbar::Key + CardToolbar::Print, CardToolbar::Key + CardToolbar::Refresh })
        Action(id)->setEnabled(state.Open);
    Action(CardMenu::AddRecord)->setEnabled(state.Writable);
    Action(CardMenu::DeleteRecord)->setEnabled(state.Delete);
    for (const int id : laterCommands)
        Action(id)->setEnabled(false);
    Action(CardMenu::Remove)->setEnabled(state.Writable);
    for (QAction* action : m_window.actions())
        action->setEnabled(state.Writable && !state.Designing);
}

void CardWindowActions::ShowView(int view)
{
    for (int item = VelkinView; item <= SprondleView; ++item)
        Action(CardMenu::Velkin + item - VelkinView)->setChecked(item == view);
}

} // namespace Bramlet
