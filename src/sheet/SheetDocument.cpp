#include "sheet/SheetDocument.h"

#include "frame/ChangeBatch.h"
#include "frame/DocumentHost.h"
#include "frame/Helpers.h"
#include "frame/Hourglass.h"
#include "frame/Prompts.h"
#include "platform/runtime/Error.h"
#include "resources/StringTable.h"
#include "sheet/CellEntry.h"
#include "sheet/CopyCell.h"
#include "sheet/Dependencies.h"
#include "sheet/Formulas.h"
#include "sheet/Sheet.h"
#include "sheet/SheetChange.h"
#include "sheet/SheetError.h"
#include "sheet/SheetFile.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QFont>
#include <optional>

using namespace Qt::Literals::StringLiterals;

namespace Tillane {

namespace {

constexpr int saveAsTitle = 1007;
constexpr int notSavedText = 1271;
constexpr int saveQuestionText = 1272;
constexpr int sheetFilter = 1273;
constexpr int savingText = 1274;
constexpr int loadingText = 1262;
constexpr int formattingText = 1263;

// Steps that merge while a border is dragged: one key per column and per row.
constexpr int columnWidthKey = 1000;
constexpr int rowHeightKey = 2000;

void Report(const QString& text, Frame::MessageIcon icon = Frame::MessageIcon::Exclamation)
{
    Frame::CurrentPrompts().message(text, QString(), icon, Frame::MessageButtons::Ok);
}

// Every cell of the block, row by row; none when its end lies above or left of its start.
template <typename Visit> void ForEachCell(const CellBlock& block, Visit visit)
{
    for (int row = block.Current.Row; row <= block.End.Row; ++row) {
        for (int column = block.Current.Column; column <= block.End.Column; ++column)
            visit(row, column);
    }
}

} // namespace

bool CellBlock::IsWholeSheet() const
{
    return Current == CellAddress { 1, 1 } && End == CellAddress { SheetRows, SheetColumns };
}


SheetDocument::SheetDocument(Frame::DocumentHost* host, QObject* parent)
    : QObject(parent)
    , m_host(host)
    , m_changes([this] { emit changed(); })
{
    m_undo.setUndoLimit(SheetUndoDepth);
    adopt(std::make_unique<Sheet>());
}

SheetDocument::~SheetDocument()
{
    // The steps refer to the sheet; they go first.
    m_undo.clear();
}

void SheetDocument::adopt(std::unique_ptr<Sheet> sheet)
{
    m_undo.clear();
    m_sheet = std::move(sheet);
    connect(m_sheet.get(), &Sheet::cellChanged, this, &SheetDocument::notify);
    connect(m_sheet.get(), &Sheet::modifiedChanged, this, &SheetDocument::notify);
}

const QString& SheetDocument::FileName() const
{
    return m_sheet->fileName();
}

bool SheetDocument::IsChanged() const
{
    return m_sheet->isModified();
}

QString SheetDocument::Caption() const
{
    if (FileName().isEmpty())
        return QString();
    return u"Tillane - "_s + m_sheet->baseName();
}

QString SheetDocument::EditText(CellAddress cell) const
{
    const CellRecord& record = m_sheet->record(cell);
    if (record.Kind == FormulaCell)
        return record.Formula;
    return m_sheet->display(cell.Row, cell.Column).Text;
}

TextStyle SheetDocument::CellTextStyle(CellAddress cell) const
{
    const CellDisplay& display = m_sheet->display(cell.Row, cell.Column);
    TextStyle style { m_sheet->font(), display.ForeColour.value_or(m_sheet->foreColour()) };
    style.Font.Name = display.FontName.value_or(style.Font.Name);
    if (display.FontSize)
        style.Font.Size = *display.FontSize;
    style.Font.Bold = display.Bold.value_or(style.Font.Bold);
    style.Font.Italic = display.Italic.value_or(style.Font.Italic);
    style.Font.Underline = display.Underline.value_or(style.Font.Underline);
    style.Font.Strikethrough = display.Strikethrough.value_or(style.Font.Strikethrough);
    return style;
}

qint32 SheetDocument::CellBackColour(CellAddress cell) const
{
    const qint32 stored = m_sheet->display(cell.Row, cell.Column).BackColour;
    if (stored == 0)
        return m_sheet->backgroundColour();
    return stored == 1 ? Black : stored;
}

void SheetDocument::notify()
{
    if (m_quiet)
        return;
    m_changes.notify();
}

void SheetDocument::syncChanged()
{
    m_sheet->setModified(!m_undo.isClean());
    notify();
}

void SheetDocument::showError(const QString& description)
{
    if (!description.isEmpty())
        Report(description);
}

template <typename Edit> QString SheetDocument::command(Edit edit, int mergeKey)
{
    QString error;
    {
        // A dragged border sends a step for every move of the mouse and keeps its own pointer.
        std::optional<Frame::Hourglass> hourglass;
        if (mergeKey < 0)
            hourglass.emplace();
        const Frame::ChangeBatch::Scope scope(m_changes);
        const SheetContents before = SheetContents::Of(*m_sheet);
        try {
            edit(*m_sheet);
        } catch (const SheetError& fault) {
            error = fault.description();
        } catch (const Runtime::Error& fault) {
            error = fault.message();
        }
        auto step = std::make_unique<SheetChange>(*m_sheet, before, mergeKey);
        if (!step->IsEmpty())
            m_undo.push(step.release());
        syncChanged();
    }
    // After the refresh, so that the sheet shows what the command did before it stopped.
    showError(error);
    return error;
}

bool SheetDocument::EnterCell(CellAddress cell, const QString& text)
{
    if (m_sheet->record(cell).Locked)
        return false;
    return command([&](Sheet& sheet) {
        Tillane::EnterCell(sheet, cell.Row, cell.Column, text);
    }).isEmpty();
}

void SheetDocument::ClearCells(const CellBlock& block)
{
    command([&](Sheet& sheet) {
        QList<CellAddress> cleared;
        ForEachCell(block, [&](int row, int column) {
            if (sheet.record(row, column).Locked)
                return;
            ClearCell(sheet, row, column);
            cleared.append({ row, column });
        });
        // A cleared cell keeps its value for the sums that read it, but a mean no longer
        // counts it: the formulas that read it are brought up to date.
        for (const CellAddress& cell : cleared)
            RecalcDependents(sheet, cell.Row, cell.Column);
    });
}

bool SheetDocument::CopyCell(CellAddress source, CellAddress first, CellAddress last)
{
    return command([&](Sheet& sheet) { Tillane::CopyCell(sheet, source, first, last); }).isEmpty();
}

bool SheetDocument::FillCells(CellAddress source, CellAddress target)
{
    if (target == source)
        return false;
    const int rowStep = target.Row > source.Row ? 1 : (target.Row < source.Row ? -1 : 0);
    const int columnStep
        = target.Column > source.Column ? 1 : (target.Column < source.Column ? -1 : 0);
    const CellAddress neighbour { source.Row + rowStep, source.Column + columnStep };
    const bool forwards = rowStep > 0 || columnStep > 0;
    return CopyCell(source, forwards ? neighbour : target, forwards ? target : neighbour);
}

void SheetDocument::SetTextStyle(const CellBlock& block, const TextStyle& style)
{
    command([&](Sheet& sheet) {
        if (block.IsWholeSheet())
            sheet.setFont(style.Font);
        ForEachCell(block, [&](int row, int column) {
            CellDisplay& display = sheet.display(row, column);
            display.ForeColour = style.Colour;
            if (!block.IsWholeSheet()) {
                display.FontName = style.Font.Name;
                display.FontSize = static_cast<float>(style.Font.Size);
                display.Bold = style.Font.Bold;
                display.Italic = style.Font.Italic;
                display.Underline = style.Font.Underline;
                display.Strikethrough = style.Font.Strikethrough;
            }
            sheet.notifyCellChanged(row, column);
        });
    });
}

void SheetDocument::ChooseTextStyle(const CellBlock& block)
{
    TextStyle style = CellTextStyle(block.Current);
    const std::optional<QFont> font = Frame::CurrentPrompts().font(QtFontOf(style.Font));
    if (!font)
        return;
    style.Font = SheetFontOf(*font);
    // The text colour is asked next; cancelling it keeps the colour the text had.
    if (const std::optional<qint32> colour = Frame::CurrentPrompts().colour(style.Colour))
        style.Colour = *colour;
    SetTextStyle(block, style);
}

void SheetDocument::SetCellStyle(const CellBlock& block, qint32 colour, bool locked)
{
    command([&](Sheet& sheet) {
        qint32 stored = colour;
        if (block.IsWholeSheet()) {
            sheet.setBackgroundColour(colour);
            stored = 0;
        } else if (colour == sheet.backgroundColour()) {
            stored = 0;
        } else if (colour == Black) {
            stored = 1;
        }
        ForEachCell(block, [&](int row, int column) {
            sheet.display(row, column).BackColour = stored;
            sheet.record(row, column).Locked = locked;
            sheet.notifyCellChanged(row, column);
        });
    });
}

void SheetDocument::SetNumberFormat(const CellBlock& block, const QString& format)
{
    const QString chosen
        = format.compare(u"General"_s, Qt::CaseInsensitive) == 0 ? QString() : format;
    const QString status = GetResString(formattingText);
    command([&](Sheet& sheet) {
        const int rows = std::max(block.End.Row - block.Current.Row + 1, 1);
        ForEachCell(block, [&](int row, int column) {
            CellRecord& record = sheet.record(row, column);
            record.NumberFormat = block.IsWholeSheet() ? QString() : chosen;
            if (record.holdsNumber())
                sheet.showNumber(row, column);
            if (column == block.End.Column)
                emit progress(status, (row - block.Current.Row) * 100 / rows);
        });
        if (block.IsWholeSheet())
            sheet.setNumberFormat(chosen);
    });
    emit progress(QString(), -1);
}

void SheetDocument::SetColumnWidth(int column, qint32 twips)
{
    if (column < 1 || column > SheetColumns || twips == m_sheet->columnWidth(column))
        return;
    command([&](Sheet& sheet) { sheet.setColumnWidth(column, twips); }, columnWidthKey + column);
}

void SheetDocument::SetRowHeight(int row, qint32 twips)
{
    if (row < 1 || row > SheetRows || twips == m_sheet->rowHeight(row))
        return;
    command([&](Sheet& sheet) { sheet.setRowHeight(row, twips); }, rowHeightKey + row);
}

bool SheetDocument::FormulaEvaluates(CellAddress cell, const QString& text)
{
    const SheetContents before = SheetContents::Of(*m_sheet);
    bool evaluates = true;
    try {
        EvaluateFormula(*m_sheet, text, true, cell.Row, cell.Column);
    } catch (const SheetError&) {
        evaluates = false;
    } catch (const Runtime::Error&) {
        evaluates = false;
    }
    SheetChange trial(*m_sheet, before);
    m_quiet = true;
    trial.undo();
    m_quiet = false;
    return evaluates;
}

void SheetDocument::Undo()
{
    const Frame::ChangeBatch::Scope scope(m_changes);
    m_undo.undo();
    syncChanged();
}

void SheetDocument::Redo()
{
    const Frame::ChangeBatch::Scope scope(m_changes);
    m_undo.redo();
    syncChanged();
}

bool SheetDocument::Open(const QString& path)
{
    auto loaded = std::make_unique<Sheet>();
    SheetReadResult result;
    {
        const Frame::Hourglass hourglass;
        const QString status = GetResString(loadingText) + Frame::FileTitleOf(path) + u"..."_s;
        emit progress(status, 0);
        result = LoadSheetFile(QFileInfo(path).absoluteFilePath(), *loaded,
            [&](int percent) { emit progress(status, percent); });
        emit progress(QString(), -1);
    }
    if (result.status == SheetReadResult::Unreadable
        || result.status == SheetReadResult::NotASheetFile) {
        Report(result.message);
        return false;
    }
    {
        const Frame::ChangeBatch::Scope scope(m_changes);
        adopt(std::move(loaded));
        // What a damaged file gave is unsaved work: closing asks first.
        if (result.status == SheetReadResult::Damaged)
            m_undo.resetClean();
        syncChanged();
    }
    if (result.status == SheetReadResult::NewerVersion)
        Report(result.message, Frame::MessageIcon::Critical);
    else if (!result.isComplete())
        Report(result.message);
    return result.isComplete();
}

QString SheetDocument::dialogFolder() const
{
    return m_host != nullptr ? m_host->DialogFolder() : QString();
}

bool SheetDocument::saveTo(const QString& path)
{
    QString error;
    {
        const Frame::Hourglass hourglass;
        const QString status = GetResString(savingText) + Frame::FileTitleOf(path) + u"..."_s;
        emit progress(status, 0);
        error = SaveSheetFile(*m_sheet, QFileInfo(path).absoluteFilePath(),
            [&](int percent) { emit progress(status, percent); });
        emit progress(QString(), -1);
    }
    if (!error.isEmpty()) {
        Report(error);
        return false;
    }
    const Frame::ChangeBatch::Scope scope(m_changes);
    m_undo.setClean();
    syncChanged();
    return true;
}

bool SheetDocument::Save()
{
    if (FileName().isEmpty())
        return SaveAs();
    return saveTo(FileName());
}

bool SheetDocument::SaveAs()
{
    Frame::FileDialogRequest request { GetResString(saveAsTitle), GetResString(sheetFilter), 1,
        dialogFolder(), QString() };
    if (!FileName().isEmpty()) {
        request.folder = QFileInfo(FileName()).absolutePath();
        request.fileName = QFileInfo(FileName()).fileName();
    }
    const std::optional<Frame::FileChoice> choice = Frame::CurrentPrompts().saveFile(request);
    if (!choice || choice->path.isEmpty())
        return false;
    QString path = choice->path;
    if (QFileInfo(path).suffix().isEmpty())
        path += u".qnc"_s;
    if (m_host != nullptr)
        m_host->RememberDialogFolder(path);
    return saveTo(path);
}

bool SheetDocument::AskToSave()
{
    if (!IsChanged())
        return true;
    const QString title
        = m_host != nullptr ? m_host->Caption() : QCoreApplication::applicationName();
    const Frame::MessageAnswer answer = Frame::CurrentPrompts().message(
        GetResString(notSavedText) + u"\n"_s + GetResString(saveQuestionText), title,
        Frame::MessageIcon::Question, Frame::MessageButtons::YesNoCancel);
    switch (answer) {
    case Frame::MessageAnswer::Yes:
        return Save();
    case Frame::MessageAnswer::No: {
        const Frame::ChangeBatch::Scope scope(m_changes);
        m_undo.setClean();
        syncChanged();
        return true;
    }
    default:
        return false;
    }
}

} // namespace Tillane
