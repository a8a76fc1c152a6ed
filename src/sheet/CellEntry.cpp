#include "sheet/CellEntry.h"

#include "frame/FrameSettings.h"
#include "platform/runtime/Conversions.h"
#include "platform/runtime/Dates.h"
#include "platform/runtime/Error.h"
#include "platform/runtime/HostLocale.h"
#include "sheet/CellRecord.h"
#include "sheet/Dependencies.h"
#include "sheet/Formulas.h"
#include "sheet/Sheet.h"
#include "sheet/SheetError.h"

#include <cmath>

using namespace Qt::Literals::StringLiterals;

namespace Tillane {

namespace {

QString trimBlanks(const QString& text)
{
    qsizetype start = 0;
    qsizetype end = text.size();
    while (start < end && text[start] == u' ')
        ++start;
    while (end > start && text[end - 1] == u' ')
        --end;
    return text.mid(start, end - start);
}

bool isDigit(QChar c)
{
    return c >= u'0' && c <= u'9';
}

// Whether the leading number, rounded to a 32-bit whole number, is not 0. A number too large
// for that (or to read at all) is certainly not 0.
bool leadingNumberIsNotZero(const QString& text)
{
    try {
        const double value = Runtime::Val(text);
        if (std::fabs(value) >= 2147483647.5)
            return true;
        return Runtime::CLng(value) != 0;
    } catch (const Runtime::Error&) {
        return true;
    }
}

CellEntry classify(const QString& typed, const QString& numberFormat, const QString& currency)
{
    CellEntry entry;
    entry.Text = trimBlanks(typed);
    entry.NumberFormat = numberFormat;
    const QString& text = entry.Text;

    const bool isDate = Runtime::IsDate(text);
    const bool numberLike = (leadingNumberIsNotZero(text) && !text.contains(u' ')) || isDate;
    const bool numeric = Runtime::IsNumeric(text);
    if (!numberLike && !numeric) {
        if (text.startsWith(u'='))
            entry.Kind = FormulaCell;
        else
            entry.Kind = text.isEmpty() ? EmptyCell : TextCell;
        return entry;
    }

    entry.Kind = NumberCell;
    if (text.contains(u'.') || !isDate) {
        if (!currency.isEmpty() && text.startsWith(currency)) {
            entry.Value = Runtime::CCur(text);
            entry.NumberFormat = u"Currency"_s;
            return entry;
        }
        entry.Value = Runtime::Val(text);
        if (text.endsWith(u'%'))
            entry.Value /= 100;
        qsizetype suffixStart = text.size();
        while (suffixStart > 0 && !isDigit(text[suffixStart - 1]))
            --suffixStart;
        if (suffixStart < text.size())
            entry.NumberFormat = u"#0.##"_s + text.mid(suffixStart);
        return entry;
    }
    entry.Value = Runtime::CDate(text);
    if (entry.NumberFormat.isEmpty())
        entry.NumberFormat = u"General Date"_s;
    return entry;
}

} // namespace

CellEntry ClassifyEntry(
    const QString& text, const QString& numberFormat, const QString& currencySymbol)
{
    try {
        return classify(text, numberFormat, currencySymbol);
    } catch (const Runtime::Error& fault) {
        throw SheetError::fromRuntime(fault);
    }
}

QString EntryCurrencySymbol()
{
    const QString& symbol = Frame::Settings().CurrencySymbol;
    // Before InitialiseFrame (quorbin-cli, model tests) the frame has none yet.
    return symbol.isEmpty() ? Runtime::CurrencySymbol() : symbol;
}

bool EnterCell(Sheet& sheet, int row, int column, const QString& text)
{
    if (sheet.record(row, column).Locked)
        return false;
    ClearCell(sheet, row, column);
    CellRecord& cell = sheet.record(row, column);
    CellDisplay& display = sheet.display(row, column);
    const CellEntry entry = ClassifyEntry(text, cell.NumberFormat, EntryCurrencySymbol());

    switch (entry.Kind) {
    case TextCell:
        cell.Kind = TextCell;
        cell.Value = 0.0;
        display.Text = entry.Text;
        display.Alignment = AlignLeftCentre;
        sheet.notifyCellChanged(row, column);
        break;
    case EmptyCell:
        cell.Kind = EmptyCell;
        cell.Value = 0.0;
        display.Text.clear();
        sheet.notifyCellChanged(row, column);
        break;
    case NumberCell:
        cell.Kind = NumberCell;
        cell.Value = entry.Value;
        cell.NumberFormat = entry.NumberFormat;
        display.Alignment = AlignRightCentre;
        sheet.showNumber(row, column);
        break;
    case FormulaCell:
        // Kind stays 0 until the formula is accepted, so a refused one leaves the cell empty.
        try {
            cell.Value = EvaluateFormula(sheet, entry.Text, true, row, column);
        } catch (const SheetError&) {
            // The formulas that read the emptied cell must not keep values computed from what
            // it held (a mean would still count it): they are brought up to date before the
            // refusal is reported. A fault of theirs would only hide the refusal's reason.
            try {
                RecalcDependents(sheet, row, column);
            } catch (const SheetError&) { }
            throw;
        }
        cell.Formula = entry.Text;
        cell.Kind = FormulaCell;
        display.Alignment = AlignRightCentre;
        sheet.showNumber(row, column);
        break;
    }

    sheet.noteEntry(row, column);
    sheet.setModified(true);
    RecalcDependents(sheet, row, column);
    return true;
}

} // namespace Tillane
