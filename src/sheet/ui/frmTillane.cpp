#include "sheet/ui/frmTillane.h"

#include "frame/Colours.h"
#include "frame/DocumentHost.h"
#include "sheet/CellReferences.h"
#include "sheet/Sheet.h"
#include "sheet/ui/FillHandle.h"
#include "sheet/ui/SheetEditBox.h"
#include "sheet/ui/SheetGrid.h"
#include "sheet/ui/SheetGridModel.h"
#include "sheet/ui/SheetStatusArea.h"
#include "sheet/ui/SheetToolDialogs.h"
#include "sheet/ui/frmCellStyle.h"
#include "sheet/ui/frmCopyCell.h"
#include "sheet/ui/frmFormula.h"
#include "sheet/ui/frmNumberFormat.h"

#include <QAction>
#include <QCloseEvent>
#include <QKeyEvent>
#include <QSettings>
#include <QToolBar>

using namespace Qt::Literals::StringLiterals;

namespace Tillane {

namespace {

// The Tillane pair of the frame's open filter.
constexpr int sheetFilterIndex = 4;

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
    m_editBox = std::make_unique<SheetEditBox>(*m_document, *DataGrid, *GridModel);
    txtEdit = m_editBox->Box();
    connect(m_editBox.get(), &SheetEditBox::formulaBuilderWanted, this,
        &frmTillane::ShowFormulaBuilder);

    m_actions = std::make_unique<SheetWindowActions>(*this, host);
    mnuFile = m_actions->mnuFile;
    mnuEdit = m_actions->mnuEdit;
    mnuFormat = m_actions->mnuFormat;
    mnuData = m_actions->mnuData;
    mnuHelp = m_actions->mnuHelp;
    tlToolbar = m_actions->tlToolbar;
    m_tools = std::make_unique<SheetToolDialogs>(*this, *DataGrid, *m_actions);
    connectActions();
    m_status = std::make_unique<SheetStatusArea>(statusBar());
    lblStatus = m_status->lblStatus;
    ProgressBar = m_status->ProgressBar;

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
    DataGrid->SetLeaveCheck(
        [this] { return !m_editBox->IsOpen() || (!m_editBox->PointMode() && CommitEdits()); });

    connect(m_document, &SheetDocument::changed, this, &frmTillane::Refresh);
    connect(m_document, &SheetDocument::progress, this,
        [this](const QString& status, int percent) { m_status->ShowProgress(status, percent); });
    // The toolbar's layout is kept under its name.
    const QVariant layout = QSettings().value(tlToolbar->objectName());
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

template <typename Command> void frmTillane::forward(Command command)
{
    if (CommitEdits())
        command(*m_document);
}

void frmTillane::connectActions()
{
    using namespace SheetMenu;
    const auto on
        = [this](int id, auto handler) { connect(Action(id), &QAction::triggered, this, handler); };
    on(New, [this] {
        if (m_host != nullptr)
            m_host->NewFile();
    });
    on(Open, [this] {
        if (m_host != nullptr && CommitEdits())
            m_host->OpenFile(sheetFilterIndex);
    });
    on(Close, [this] {
        // Inside the main window the frame around this window asks and closes.
        if (parentWidget() != nullptr)
            parentWidget()->close();
        else
            close();
    });
    on(Save, [this] { forward([](SheetDocument& document) { document.Save(); }); });
    on(SaveAs, [this] { forward([](SheetDocument& document) { document.SaveAs(); }); });
    on(Exit, [this] {
        if (m_host != nullptr)
            m_host->Exit();
        else
            close();
    });
    on(Undo, [this] {
        // While a cell is being typed into, what is undone is the typing.
        if (m_editBox->IsOpen())
            m_editBox->Close();
        else
            m_document->Undo();
    });
    on(Redo, [this] { forward([](SheetDocument& document) { document.Redo(); }); });
    on(SheetMenu::TextStyle, &frmTillane::ChooseTextStyle);
    on(CellStyle, &frmTillane::ShowCellStyle);
    on(NumberFormat, &frmTillane::ShowNumberFormat);
    on(CreateFormula, &frmTillane::ShowFormulaBuilder);
    on(SheetMenu::CopyCell, &frmTillane::ShowCopyCell);
    on(About, [this] {
        if (m_host != nullptr)
            m_host->ShowAbout();
    });
    for (const int button : { SheetToolbar::CreateFormula, SheetToolbar::CopyCell })
        on(button, [this, button](bool down) { m_tools->ButtonPressed(button, down); });
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
    const QFont font = QtFontOf(sheet.font());
    if (DataGrid->font() != font)
        DataGrid->setFont(font);
    DataGrid->ApplySizes(sheet);
    GridModel->Refresh();
    m_editBox->Cover();

    Action(SheetMenu::Undo)->setEnabled(m_document->CanUndo());
    Action(SheetMenu::Redo)->setEnabled(m_document->CanRedo());
    if (!m_document->Caption().isEmpty())
        setWindowTitle(m_document->Caption());
    if (m_host != nullptr)
        m_host->SetDocumentChanged(this, m_document->IsChanged());
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

CellAddress frmTillane::EditCell() const
{
    return m_editBox->Cell();
}

bool frmTillane::Editing() const
{
    return m_editBox->IsOpen();
}

bool frmTillane::PointMode() const
{
    return m_editBox->PointMode();
}

bool frmTillane::OpenEditBox(const QString& text)
{
    return m_editBox->Open(text);
}

bool frmTillane::CommitEdits()
{
    return m_editBox->Commit();
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
    if (m_editBox->IsOpen() && m_editBox->PointMode() && !m_tools->FormulaBuilder()) {
        // Pointing at a cell for the formula: the cell being edited stays current.
        m_editBox->InsertCellName(name);
        m_tools->CellClicked(name);
        return;
    }
    if (!CommitEdits())
        return;
    DataGrid->SetCurrentCell(cell);
    m_tools->CellClicked(name);
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
    m_document->FillCells(source, target);
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
    forward([this](SheetDocument& document) { document.ChooseTextStyle(Selection()); });
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
    const CellAddress cell = DataGrid->CurrentCell();
    const CellRecord& record = m_document->SheetObject().record(cell);
    m_tools->ShowFormulaBuilder(cell, record.Kind == FormulaCell ? record.Formula : u"="_s);
}

frmFormula* frmTillane::FormulaBuilder() const
{
    return m_tools->FormulaBuilder();
}

frmCopyCell* frmTillane::CopyCellDialog() const
{
    return m_tools->CopyCell();
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
    if (CommitEdits())
        m_tools->ShowCopyCell(DataGrid->CurrentCell());
}

// ---- closing ----

bool frmTillane::queryClose()
{
    if (!CommitEdits())
        return false;
    if (!m_document->AskToSave())
        return false;
    QSettings().setValue(tlToolbar->objectName(), saveState());
    return true;
}

void frmTillane::closeEvent(QCloseEvent* event)
{
    // Inside the main window the frame has asked already; alone, the window asks itself.
    if (parentWidget() == nullptr && !queryClose()) {
        event->ignore();
        return;
    }
    m_tools->CloseAll();
    QMainWindow::closeEvent(event);
}

} // namespace Tillane
