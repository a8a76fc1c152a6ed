#include "sheet/ui/SheetWindowActions.h"

#include "frame/DocumentHost.h"
#include "frame/ui/ImageList.h"
#include "frame/ui/ResourceIcons.h"
#include "resources/StringTable.h"

#include <QAction>
#include <QMainWindow>
#include <QMenuBar>
#include <QToolBar>

using namespace Qt::Literals::StringLiterals;

namespace Tillane {

namespace {

// The toolbar's pictures: indexes into the frame's shared image list.
constexpr int openImage = 1;
constexpr int saveImage = 2;
constexpr int printImage = 3;
constexpr int makeGraphImage = 4;
constexpr int textStyleImage = 16;
constexpr int cellStyleImage = 17;
constexpr int numberFormatImage = 18;
constexpr int createFormulaImage = 19;
// Not among the frame's shared images: the resource itself.
constexpr int copyCellResource = 143;

} // namespace

SheetWindowActions::SheetWindowActions(QMainWindow& window, Frame::DocumentHost* host)
{
    buildMenus(window);
    buildToolbar(window, host);
}

QAction* SheetWindowActions::addMenuItem(QMenu* menu, int id)
{
    QAction* action = menu->addAction(GetResString(id));
    action->setObjectName(u"mnu"_s + QString::number(id));
    m_actions.append({ id, action });
    return action;
}

QAction* SheetWindowActions::Action(int id) const
{
    for (const auto& [key, action] : m_actions) {
        if (key == id)
            return action;
    }
    return nullptr;
}

void SheetWindowActions::buildMenus(QMainWindow& window)
{
    using namespace SheetMenu;
    QMenuBar* bar = window.menuBar();
    mnuFile = bar->addMenu(GetResString(File));
    addMenuItem(mnuFile, New);
    addMenuItem(mnuFile, Open);
    addMenuItem(mnuFile, Close);
    mnuFile->addSeparator();
    addMenuItem(mnuFile, Save)->setShortcut(QKeySequence::Save);
    addMenuItem(mnuFile, SaveAs);
    // Export, printing, graphs and import come with the sheet's graphs and printing.
    addMenuItem(mnuFile, ExportData)->setEnabled(false);
    mnuFile->addSeparator();
    addMenuItem(mnuFile, Print)->setEnabled(false);
    mnuFile->addSeparator();
    addMenuItem(mnuFile, Exit);

    mnuEdit = bar->addMenu(GetResString(Edit));
    addMenuItem(mnuEdit, Undo)->setShortcut(QKeySequence::Undo);
    addMenuItem(mnuEdit, Redo)
        ->setShortcuts({ QKeySequence(Qt::CTRL | Qt::Key_Y), QKeySequence::Redo });

    mnuFormat = bar->addMenu(GetResString(Format));
    addMenuItem(mnuFormat, SheetMenu::TextStyle);
    addMenuItem(mnuFormat, CellStyle);
    addMenuItem(mnuFormat, NumberFormat);

    mnuData = bar->addMenu(GetResString(Data));
    addMenuItem(mnuData, CreateFormula);
    addMenuItem(mnuData, SheetMenu::CopyCell);
    addMenuItem(mnuData, MakeGraph)->setEnabled(false);
    mnuData->addSeparator();
    addMenuItem(mnuData, ImportData)->setEnabled(false);

    mnuHelp = bar->addMenu(GetResString(Help));
    addMenuItem(mnuHelp, About);
}

void SheetWindowActions::buildToolbar(QMainWindow& window, Frame::DocumentHost* host)
{
    tlToolbar = window.addToolBar(QString());
    tlToolbar->setObjectName(u"tlToolbar"_s);
    tlToolbar->setIconSize(QSize(24, 24));
    const auto addButton = [this, host](int id, int image) {
        QIcon icon;
        if (image < 0)
            icon = Frame::ResourceIcon(-image);
        else if (host != nullptr)
            icon = host->ToolbarImages().ListImages(image);
        else
            icon = Frame::ResourceIcon(Frame::ToolbarIconNumbers().value(image - 1));
        QAction* button = tlToolbar->addAction(icon, GetResString(id));
        button->setObjectName(u"tbr"_s + QString::number(id));
        m_actions.append({ id, button });
        return button;
    };
    // The buttons do what the menu items of the same name do.
    const auto mirror = [this](QAction* button, int menuId) {
        QAction* item = Action(menuId);
        button->setEnabled(item->isEnabled());
        QObject::connect(button, &QAction::triggered, item, &QAction::trigger);
    };
    mirror(addButton(SheetToolbar::Open, openImage), SheetMenu::Open);
    mirror(addButton(SheetToolbar::Save, saveImage), SheetMenu::Save);
    mirror(addButton(SheetToolbar::Print, printImage), SheetMenu::Print);
    tlToolbar->addSeparator();
    mirror(addButton(SheetToolbar::TextStyle, textStyleImage), SheetMenu::TextStyle);
    mirror(addButton(SheetToolbar::CellStyle, cellStyleImage), SheetMenu::CellStyle);
    mirror(addButton(SheetToolbar::NumberFormat, numberFormatImage), SheetMenu::NumberFormat);
    addButton(SheetToolbar::CreateFormula, createFormulaImage)->setCheckable(true);
    addButton(SheetToolbar::CopyCell, -copyCellResource)->setCheckable(true);
    tlToolbar->addSeparator();
    mirror(addButton(SheetToolbar::MakeGraph, makeGraphImage), SheetMenu::MakeGraph);
}

} // namespace Tillane
