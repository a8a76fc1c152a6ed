#include "sheet/ui/frmTillane.h"

#include "frame/Colours.h"
#include "frame/DocumentHost.h"
#include "frame/Prompts.h"
#include "frame/ui/ImageList.h"
#include "frame/ui/ResourceIcons.h"
#include "resources/StringTable.h"
#include "sheet/CellReferences.h"
#include "sheet/Sheet.h"
#include "sheet/ui/FillHandle.h"
#include "sheet/ui/SheetGrid.h"
#include "sheet/ui/SheetGridModel.h"
#include "sheet/ui/frmCellStyle.h"
#include "sheet/ui/frmCopyCell.h"
#include "sheet/ui/frmFormula.h"
#include "sheet/ui/frmNumberFormat.h"

#include <QApplication>
#include <QCloseEvent>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMenuBar>
#include <QProgressBar>
#include <QSettings>
#include <QStatusBar>
#include <QToolBar>

using namespace Qt::Literals::StringLiterals;

namespace Tillane {

namespace {

const QString toolbarSetting = u"tlToolbar"_s;
// The Tillane pair of the frame's open filter.
constexpr int sheetFilterIndex = 4;

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
// Pixels between a tool dialog and the edges of the grid it stands over.
constexpr int margin = 24;
// Milliseconds between two drawings of the status during a load or save.
constexpr int progressInterval = 100;

QFont QtFont(const SheetFont& font)
{
    QFont shown(font.Name);
    shown.setPointSizeF(font.Size > 0 ? font.Size : 10.0);
    shown.setBold(font.Bold);
    shown.setItalic(font.Italic);
    shown.setUnderline(font.Underline);
    shown.setStrikeOut(font.Strikethrough);
    return shown;
}

SheetFont SheetFontOf(const QFont& font)
{
    SheetFont chosen;
    chosen.Name = font.family();
    chosen.Size = font.pointSizeF() > 0 ? font.pointSizeF() : 10.0;
    chosen.Bold = font.bold();
    chosen.Italic = font.italic();
    chosen.Underline = font.underline();
    chosen.Strikethrough = font.strikeOut();
    return chosen;
}

} // namespace

frmTillane::frmTillane(Frame::DocumentHost* host, QWidget* parent)
    : QMainWindow(parent)
    , m_host(host)
    , m_document(new SheetDocument(host, this))
{
    setObjectName(u"frmTillane"_s);
    GridModel = new SheetGridModel(*m_document, this);
    DataGrid = new SheetGrid(GridModel);
    setCentralWidget(DataGrid);
    imgFill = DataGrid->FillHandleWidget();

    txtEdit = new QLineEdit(DataGrid->viewport());
    txtEdit->setObjectName(u"txtEdit"_s);
    txtEdit->setAccessibleName(u"Cell entry"_s);
    txtEdit->setFrame(false);
    txtEdit->hide();
    txtEdit->installEventFilter(this);
    connect(txtEdit, &QLineEdit::textChanged, this, &frmTillane::editTextChanged);

    buildMenus();
    buildToolbar();
    buildStatus();

    connect(DataGrid, &SheetGrid::cellPressed, this, &frmTillane::cellPressed);
    connect(DataGrid, &SheetGrid::cellDoubleClicked, this,
        [this](CellAddress cell) { OpenEditBox(m_document->EditText(cell)); });
    connect(DataGrid, &SheetGrid::keyTyped, this, &frmTillane::gridKeyTyped);
    connect(DataGrid, &SheetGrid::currentCellChanged, this,
        [this](CellAddress current) { currentCellChanged(current); });
    connect(DataGrid, &SheetGrid::fillDragged, this, &frmTillane::fillDragged);
    connect(DataGrid, &SheetGrid::columnResized, this,
        [this](int column, qint32 twips) { m_document->SetColumnWidth(column, twips); });
    connect(DataGrid, &SheetGrid::rowResized, this,
        [this](int row, qint32 twips) { m_document->SetRowHeight(row, twips); });
    // A click on a heading or the corner leaves the cell being typed into: its text is entered
    // first, unless the formula in it still waits for a cell to be pointed at.
    DataGrid->SetLeaveCheck([this] { return !m_editing || (!m_pointMode && CommitEdits()); });

    connect(m_document, &SheetDocument::changed, this, &frmTillane::Refresh);
    connect(m_document, &SheetDocument::progress, this, &frmTillane::showProgress);
    const QVariant layout = QSettings().value(toolbarSetting);
    if (layout.isValid())
        restoreState(layout.toByteArray());
    currentCellChanged(DataGrid->CurrentCell());
    Refresh();
}

frmTillane::~frmTillane()
{
    // Tearing the widgets down moves the focus; nothing of the children may call back now.
    const QList<QObject*> children = findChildren<QObject*>();
    for (QObject* child : children)
        QObject::disconnect(child, nullptr, this, nullptr);
}

QAction* frmTillane::addMenuItem(QMenu* menu, int id)
{
    QAction* action = menu->addAction(GetResString(id));
    action->setObjectName(u"mnu"_s + QString::number(id));
    m_actions.append({ id, action });
    return action;
}

QAction* frmTillane::Action(int id) const
{
    for (const auto& [key, action] : m_actions) {
        if (key == id)
            return action;
    }
    return nullptr;
}

template <typename Command> void frmTillane::forward(Command command)
{
    if (CommitEdits())
        command(*m_document);
}

void frmTillane::buildMenus()
{
    using namespace SheetMenu;
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
        if (m_host != nullptr && CommitEdits())
            m_host->OpenFile(sheetFilterIndex);
    });
    onTriggered(addMenuItem(mnuFile, Close), [this] {
        // Inside the main window the frame around this window asks and closes.
        if (parentWidget() != nullptr)
            parentWidget()->close();
        else
            close();
    });
    mnuFile->addSeparator();
    onTriggered(addMenuItem(mnuFile, Save), [this] {
        forward([](SheetDocument& document) { document.Save(); });
    })->setShortcut(QKeySequence::Save);
    onTriggered(addMenuItem(mnuFile, SaveAs),
        [this] { forward([](SheetDocument& document) { document.SaveAs(); }); });
    // Export, printing, graphs and import come with the sheet's graphs and printing.
    addMenuItem(mnuFile, ExportData)->setEnabled(false);
    mnuFile->addSeparator();
    addMenuItem(mnuFile, Print)->setEnabled(false);
    mnuFile->addSeparator();
    onTriggered(addMenuItem(mnuFile, Exit), [this] {
        if (m_host != nullptr)
            m_host->Exit();
        else
            close();
    });

    mnuEdit = menuBar()->addMenu(GetResString(Edit));
    onTriggered(addMenuItem(mnuEdit, Undo), [this] {
        // While a cell is being typed into, what is undone is the typing.
        if (m_editing)
            closeEditBox();
        else
            m_document->Undo();
    })->setShortcut(QKeySequence::Undo);
    QAction* redo = onTriggered(addMenuItem(mnuEdit, Redo),
        [this] { forward([](SheetDocument& document) { document.Redo(); }); });
    redo->setShortcuts({ QKeySequence(Qt::CTRL | Qt::Key_Y), QKeySequence::Redo });

    mnuFormat = menuBar()->addMenu(GetResString(Format));
    onTriggered(addMenuItem(mnuFormat, SheetMenu::TextStyle), &frmTillane::ChooseTextStyle);
    onTriggered(addMenuItem(mnuFormat, CellStyle), &frmTillane::ShowCellStyle);
    onTriggered(addMenuItem(mnuFormat, NumberFormat), &frmTillane::ShowNumberFormat);

    mnuData = menuBar()->addMenu(GetResString(Data));
    onTriggered(addMenuItem(mnuData, CreateFormula), &frmTillane::ShowFormulaBuilder);
    onTriggered(addMenuItem(mnuData, SheetMenu::CopyCell), &frmTillane::ShowCopyCell);
    addMenuItem(mnuData, MakeGraph)->setEnabled(false);
    mnuData->addSeparator();
    addMenuItem(mnuData, ImportData)->setEnabled(false);

    mnuHelp = menuBar()->addMenu(GetResString(Help));
    onTriggered(addMenuItem(mnuHelp, About), [this] {
        if (m_host != nullptr)
            m_host->ShowAbout();
    });
}

void frmTillane::buildToolbar()
{
    tlToolbar = addToolBar(QString());
    tlToolbar->setObjectName(toolbarSetting);
    tlToolbar->setIconSize(QSize(24, 24));
    const auto addButton = [this](int id, int image) {
        QIcon icon;
        if (image < 0)
            icon = Frame::ResourceIcon(-image);
        else if (m_host != nullptr)
            icon = m_host->ToolbarImages().ListImages(image);
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
        connect(button, &QAction::triggered, item, &QAction::trigger);
    };
    mirror(addButton(SheetToolbar::Open, openImage), SheetMenu::Open);
    mirror(addButton(SheetToolbar::Save, saveImage), SheetMenu::Save);
    mirror(addButton(SheetToolbar::Print, printImage), SheetMenu::Print);
    tlToolbar->addSeparator();
    mirror(addButton(SheetToolbar::TextStyle, textStyleImage), SheetMenu::TextStyle);
    mirror(addButton(SheetToolbar::CellStyle, cellStyleImage), SheetMenu::CellStyle);
    mirror(addButton(SheetToolbar::NumberFormat, numberFormatImage), SheetMenu::NumberFormat);
    // Down while their dialog is open; pressing one that is down closes its dialog.
    QAction* formula = addButton(SheetToolbar::CreateFormula, createFormulaImage);
    formula->setCheckable(true);
    connect(formula, &QAction::triggered, this, [this](bool down) {
        if (down)
            ShowFormulaBuilder();
        else if (m_formula)
            m_formula->close();
        setDialogButton(SheetToolbar::CreateFormula, m_formula != nullptr);
    });
    QAction* copy = addButton(SheetToolbar::CopyCell, -copyCellResource);
    copy->setCheckable(true);
    connect(copy, &QAction::triggered, this, [this](bool down) {
        if (down)
            ShowCopyCell();
        else if (m_copyCell)
            m_copyCell->close();
        setDialogButton(SheetToolbar::CopyCell, m_copyCell != nullptr);
    });
    tlToolbar->addSeparator();
    mirror(addButton(SheetToolbar::MakeGraph, makeGraphImage), SheetMenu::MakeGraph);
}

void frmTillane::buildStatus()
{
    lblStatus = new QLabel;
    lblStatus->setObjectName(u"lblStatus"_s);
    lblStatus->setAccessibleName(u"Status"_s);
    ProgressBar = new QProgressBar;
    ProgressBar->setObjectName(u"ProgressBar"_s);
    ProgressBar->setAccessibleName(u"Progress"_s);
    ProgressBar->setRange(0, 100);
    ProgressBar->setMaximumWidth(200);
    ProgressBar->hide();
    statusBar()->addWidget(lblStatus, 1);
    statusBar()->addPermanentWidget(ProgressBar);
}

void frmTillane::setDialogButton(int id, bool down)
{
    if (QAction* button = Action(id))
        button->setChecked(down);
}

void frmTillane::setFileName(const QString& fileName)
{
    // A pupil starts typing at once: the keys, and the menus' keys, go to this sheet.
    activateWindow();
    DataGrid->setFocus();
    if (!fileName.isEmpty())
        m_document->Open(fileName);
}

QString frmTillane::fileName() const
{
    return m_document->FileName();
}

void frmTillane::Refresh()
{
    const Sheet& sheet = m_document->SheetObject();
    QPalette palette = DataGrid->palette();
    const QColor background = Frame::ColourFromValue(sheet.backgroundColour());
    const QColor text = Frame::ColourFromValue(sheet.foreColour());
    if (palette.color(QPalette::Base) != background || palette.color(QPalette::Text) != text) {
        palette.setColor(QPalette::Base, background);
        palette.setColor(QPalette::Text, text);
        DataGrid->setPalette(palette);
    }
    const QFont font = QtFont(sheet.font());
    if (DataGrid->font() != font)
        DataGrid->setFont(font);
    DataGrid->ApplySizes(sheet);
    GridModel->Refresh();
    if (m_editing)
        DataGrid->CoverCell(txtEdit, m_editCell);

    Action(SheetMenu::Undo)->setEnabled(m_document->CanUndo());
    Action(SheetMenu::Redo)->setEnabled(m_document->CanRedo());
    if (!m_document->Caption().isEmpty())
        setWindowTitle(m_document->Caption());
    if (m_host != nullptr)
        m_host->SetDocumentChanged(this, m_document->IsChanged());
}

void frmTillane::showProgress(const QString& status, int percent)
{
    if (percent < 0) {
        lblStatus->clear();
        ProgressBar->hide();
        m_progressDrawn.invalidate();
        return;
    }
    if (lblStatus->text() != status)
        lblStatus->setText(status);
    ProgressBar->show();
    ProgressBar->setValue(percent);
    // The work runs without returning to the event loop, so the status is drawn at once; but
    // only now and then, since drawing it for every step would take longer than most loads.
    if (!m_progressDrawn.isValid() || m_progressDrawn.elapsed() >= progressInterval) {
        statusBar()->repaint();
        m_progressDrawn.start();
    }
}

CellBlock frmTillane::Selection() const
{
    return DataGrid->Selection();
}

bool frmTillane::AllCellsSelected() const
{
    return DataGrid->AllCellsSelected();
}

// ---- the edit box ----

bool frmTillane::OpenEditBox(const QString& text)
{
    if (m_editing)
        return false;
    const CellAddress cell = DataGrid->CurrentCell();
    if (m_document->SheetObject().record(cell).Locked) {
        QApplication::beep();
        return false;
    }
    m_editCell = cell;
    m_editing = true;
    txtEdit->setFont(GridModel->CellFont(cell));
    {
        const QSignalBlocker quiet(txtEdit);
        txtEdit->setText(text);
    }
    editTextChanged(text);
    txtEdit->setCursorPosition(int(text.size()));
    DataGrid->scrollTo(GridModel->IndexOf(cell));
    DataGrid->CoverCell(txtEdit, cell);
    DataGrid->SetFillHandleShown(false);
    txtEdit->show();
    txtEdit->raise();
    txtEdit->setFocus();
    return true;
}

void frmTillane::closeEditBox()
{
    m_editing = false;
    m_pointMode = false;
    // The grid takes the focus before the box goes: a focused box that hides hands the focus
    // on as a Tab would, which moves the grid's current cell.
    DataGrid->setFocus();
    DataGrid->CoverCell(nullptr, {});
    txtEdit->hide();
    DataGrid->SetFillHandleShown(true);
}

bool frmTillane::CommitEdits()
{
    if (!m_editing)
        return true;
    const CellAddress cell = m_editCell;
    // The entry goes to the cell being edited, which becomes current again.
    DataGrid->SetCurrentCell(cell);
    if (m_document->SheetObject().record(cell).Locked) {
        closeEditBox();
        return true;
    }
    if (!m_document->EnterCell(cell, txtEdit->text())) {
        txtEdit->setFocus();
        return false;
    }
    closeEditBox();
    return true;
}

void frmTillane::editTextChanged(const QString& text)
{
    m_pointMode = false;
    // The formula as far as it is typed: while it does not evaluate, a click on a cell
    // inserts the cell's name instead of leaving the cell.
    if (m_editing && text.startsWith(u'='))
        m_pointMode = !m_document->FormulaEvaluates(m_editCell, text);
}

bool frmTillane::editKeyPressed(QKeyEvent* event)
{
    const auto commitAndMove = [this](int rowStep, int columnStep) {
        if (!CommitEdits())
            return;
        const CellAddress cell = DataGrid->CurrentCell();
        const CellAddress next { std::clamp(cell.Row + rowStep, 1, SheetRows),
            std::clamp(cell.Column + columnStep, 1, SheetColumns) };
        DataGrid->SetCurrentCell(next);
        DataGrid->scrollTo(GridModel->IndexOf(next));
    };
    switch (event->key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
        CommitEdits();
        return true;
    case Qt::Key_Escape:
        closeEditBox();
        return true;
    case Qt::Key_Up:
        commitAndMove(-1, 0);
        return true;
    case Qt::Key_Down:
        commitAndMove(1, 0);
        return true;
    case Qt::Key_Tab:
        commitAndMove(0, 1);
        return true;
    case Qt::Key_Backtab:
        commitAndMove(0, -1);
        return true;
    case Qt::Key_PageUp:
    case Qt::Key_PageDown:
        return true;
    default:
        break;
    }
    if (event->text() == u"="_s && txtEdit->text().isEmpty()) {
        closeEditBox();
        ShowFormulaBuilder();
        return true;
    }
    return false;
}

bool frmTillane::eventFilter(QObject* watched, QEvent* event)
{
    // Seen before the box itself, so Tab commits and moves instead of moving the focus.
    if (watched == txtEdit && event->type() == QEvent::KeyPress)
        return editKeyPressed(static_cast<QKeyEvent*>(event));
    return QMainWindow::eventFilter(watched, event);
}

// ---- the grid ----

void frmTillane::currentCellChanged(CellAddress current)
{
    // A formula shows as typed while its cell is current, and as its value once left.
    GridModel->SetFormulaCell(current);
}

void frmTillane::cellPressed(CellAddress cell)
{
    const QString name = CellName(cell);
    if (m_editing && m_pointMode && !m_formula) {
        // Pointing at a cell for the formula: its name replaces the selected text, and the
        // cell being edited stays current.
        QString text = txtEdit->text();
        const int start
            = txtEdit->hasSelectedText() ? txtEdit->selectionStart() : txtEdit->cursorPosition();
        text.replace(start, txtEdit->selectedText().size(), name);
        txtEdit->setText(text);
        txtEdit->setCursorPosition(int(text.size()));
        txtEdit->setFocus();
        if (m_copyCell)
            m_copyCell->Cell_Click(name);
        return;
    }
    if (!CommitEdits())
        return;
    DataGrid->SetCurrentCell(cell);
    if (m_formula)
        m_formula->Cell_Click(name);
    if (m_copyCell)
        m_copyCell->Cell_Click(name);
}

void frmTillane::gridKeyTyped(QKeyEvent* event)
{
    const CellAddress cell = DataGrid->CurrentCell();
    switch (event->key()) {
    case Qt::Key_Delete:
        m_document->ClearCells(Selection());
        return;
    case Qt::Key_Backspace:
    case Qt::Key_Escape:
    case Qt::Key_F2:
        OpenEditBox(m_document->EditText(cell));
        return;
    default:
        break;
    }
    const QString text = event->text();
    const bool command
        = event->modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier);
    if (command || text.size() != 1 || !text[0].isPrint())
        return;
    if (text == u"="_s)
        ShowFormulaBuilder();
    else
        OpenEditBox(m_document->EditText(cell) + text);
}

void frmTillane::fillDragged(CellAddress target)
{
    if (!CommitEdits())
        return;
    const CellAddress source = DataGrid->CurrentCell();
    if (target == source)
        return;
    // The cells from the source's neighbour to the one under the pointer, either way.
    const int rowStep = target.Row > source.Row ? 1 : (target.Row < source.Row ? -1 : 0);
    const int columnStep
        = target.Column > source.Column ? 1 : (target.Column < source.Column ? -1 : 0);
    const CellAddress neighbour { source.Row + rowStep, source.Column + columnStep };
    const bool forwards = rowStep > 0 || columnStep > 0;
    CopyCell(source, forwards ? neighbour : target, forwards ? target : neighbour);
    DataGrid->SetSelection(source, target);
}

void frmTillane::CopyCell(CellAddress source, CellAddress first, CellAddress last)
{
    if (CommitEdits())
        m_document->CopyCell(source, first, last);
}

// ---- commands with dialogs ----

void frmTillane::ChooseTextStyle()
{
    if (!CommitEdits())
        return;
    const CellBlock block = Selection();
    TextStyle style = m_document->CellTextStyle(block.Current);
    const std::optional<QFont> font = Frame::CurrentPrompts().font(QtFont(style.Font));
    if (!font)
        return;
    style.Font = SheetFontOf(*font);
    // The text colour is asked next; cancelling it keeps the colour the text had.
    if (const std::optional<qint32> colour = Frame::CurrentPrompts().colour(style.Colour))
        style.Colour = *colour;
    m_document->SetTextStyle(block, style);
}

void frmTillane::ShowCellStyle()
{
    if (!CommitEdits())
        return;
    const CellAddress cell = DataGrid->CurrentCell();
    frmCellStyle dialog(
        this, m_document->CellBackColour(cell), m_document->SheetObject().record(cell).Locked);
    connect(&dialog, &frmCellStyle::Applied, this, [this](qint32 colour, bool locked) {
        m_document->SetCellStyle(Selection(), colour, locked);
    });
    dialog.exec();
}

void frmTillane::ShowNumberFormat()
{
    if (!CommitEdits())
        return;
    const CellAddress cell = DataGrid->CurrentCell();
    frmNumberFormat dialog(this, m_document->SheetObject().record(cell).NumberFormat);
    connect(&dialog, &frmNumberFormat::Applied, this,
        [this](const QString& format) { m_document->SetNumberFormat(Selection(), format); });
    dialog.exec();
}

void frmTillane::ShowFormulaBuilder()
{
    if (!CommitEdits())
        return;
    if (m_copyCell)
        m_copyCell->close();
    if (!m_formula) {
        const CellAddress cell = DataGrid->CurrentCell();
        const CellRecord& record = m_document->SheetObject().record(cell);
        m_formula
            = new frmFormula(this, cell, record.Kind == FormulaCell ? record.Formula : u"="_s);
        connect(m_formula, &QObject::destroyed, this,
            [this] { setDialogButton(SheetToolbar::CreateFormula, false); });
        placeBeside(m_formula);
        m_formula->show();
    }
    m_formula->raise();
    m_formula->activateWindow();
    setDialogButton(SheetToolbar::CreateFormula, true);
}

void frmTillane::placeBeside(QWidget* dialog)
{
    // Over the right-hand edge of the sheet, where it hides the fewest of the cells a pupil
    // clicks while it is open.
    dialog->adjustSize();
    const QPoint topRight = DataGrid->mapToGlobal(QPoint(DataGrid->width(), 0));
    dialog->move(topRight.x() - dialog->width() - margin, topRight.y() + margin);
}

frmFormula* frmTillane::FormulaBuilder() const
{
    return m_formula;
}

frmCopyCell* frmTillane::CopyCellDialog() const
{
    return m_copyCell;
}

void frmTillane::TakeFormula(CellAddress cell, const QString& formula)
{
    if (!CommitEdits())
        return;
    DataGrid->SetCurrentCell(cell);
    // The builder had the keyboard; the typing goes on in the sheet.
    activateWindow();
    OpenEditBox(formula);
}

void frmTillane::ShowCopyCell()
{
    if (!CommitEdits())
        return;
    if (m_formula)
        m_formula->close();
    if (!m_copyCell) {
        m_copyCell = new frmCopyCell(this, DataGrid->CurrentCell());
        connect(m_copyCell, &QObject::destroyed, this,
            [this] { setDialogButton(SheetToolbar::CopyCell, false); });
        placeBeside(m_copyCell);
        m_copyCell->show();
    }
    m_copyCell->raise();
    m_copyCell->activateWindow();
    setDialogButton(SheetToolbar::CopyCell, true);
}

// ---- closing ----

bool frmTillane::queryClose()
{
    if (!CommitEdits())
        return false;
    if (!m_document->AskToSave())
        return false;
    QSettings().setValue(toolbarSetting, saveState());
    return true;
}

void frmTillane::closeEvent(QCloseEvent* event)
{
    // Inside the main window the frame has asked already; alone, the window asks itself.
    if (parentWidget() == nullptr && !queryClose()) {
        event->ignore();
        return;
    }
    if (m_formula)
        m_formula->close();
    if (m_copyCell)
        m_copyCell->close();
    QMainWindow::closeEvent(event);
}

} // namespace Tillane
