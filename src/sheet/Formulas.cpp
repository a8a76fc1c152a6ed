#include "sheet/Formulas.h"

#include "platform/runtime/Error.h"
#include "sheet/CellReferences.h"
#include "sheet/Dependencies.h"
#include "sheet/ExpressionEvaluator.h"
#include "sheet/Sheet.h"
#include "sheet/SheetError.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <optional>
#include <vector>

using namespace Qt::Literals::StringLiterals;

namespace Tillane {

namespace {

struct RangeFunctionName
{
    QStringView name;
    RangeFunction function;
};

constexpr std::array<RangeFunctionName, 5> RangeFunctionNames { {
    { u"sum(", SumFunction },
    { u"average(", MeanFunction },
    { u"mean(", MeanFunction },
    { u"mode(", ModeFunction },
    { u"median(", MedianFunction },
} };

// Only the ASCII letters change, so positions in the lower-cased text are those of the
// original whatever other characters the formula holds.
QString asciiLower(const QString& text)
{
    QString lower = text;
    for (QChar& c : lower) {
        if (c >= u'A' && c <= u'Z')
            c = QChar(c.unicode() + 32);
    }
    return lower;
}

double checkedSum(double sum)
{
    if (std::isinf(sum))
        throw SheetError::fromRuntime(Runtime::Error(Runtime::Error::Overflow));
    return sum;
}

double median(std::vector<double> values)
{
    if (values.empty())
        return 0.0;
    std::sort(values.begin(), values.end());
    const std::size_t middle = values.size() / 2;
    if (values.size() % 2 == 1)
        return values[middle];
    // Halving each first keeps two huge values from overflowing.
    return values[middle - 1] / 2 + values[middle] / 2;
}

double mode(std::vector<double> values)
{
    if (values.empty())
        return 0.0;
    std::sort(values.begin(), values.end());
    double best = values.front();
    std::size_t bestCount = 0;
    for (std::size_t start = 0; start < values.size();) {
        std::size_t end = start;
        while (end < values.size() && values[end] == values[start])
            ++end;
        // Ascending order and a strict comparison: the smallest of equally frequent values.
        if (end - start > bestCount) {
            bestCount = end - start;
            best = values[start];
        }
        start = end;
    }
    return best;
}

// A range function found in the formula: where its text starts and ends, and its two cells.
struct RangeCall
{
    RangeFunction function = SumFunction;
    qsizetype start = 0;
    qsizetype end = 0; // just after its ")"
    CellAddress first;
    CellAddress second;
};

std::optional<RangeCall> findRangeCall(const QString& formula)
{
    const QString lower = asciiLower(formula);
    for (const RangeFunctionName& candidate : RangeFunctionNames) {
        const qsizetype start = lower.indexOf(candidate.name);
        if (start < 0)
            continue;
        const qsizetype closing = formula.indexOf(u')', start);
        if (closing < 0)
            throw SheetError::user(SheetError::UnclosedFunction);
        RangeCall call;
        call.function = candidate.function;
        call.start = start;
        call.end = closing + 1;
        const QStringView text = QStringView(formula).mid(start, call.end - start);
        // From the third character on: no letter of a function name is followed by a digit.
        qsizetype position = 2;
        const CellReferenceMatch first = FindNextReference(text, position);
        const CellReferenceMatch second
            = first.Found ? FindNextReference(text, position) : CellReferenceMatch {};
        if (!second.Found)
            throw SheetError::user(SheetError::MissingReference);
        call.first = first.Cell;
        call.second = second.Cell;
        return call;
    }
    return std::nullopt;
}

CellRef precedent(quint8 kind, CellAddress cell)
{
    return CellRef { kind, static_cast<qint16>(cell.Row), static_cast<qint16>(cell.Column) };
}

} // namespace

double RangeValue(const Sheet& sheet, RangeFunction function, CellAddress first, CellAddress second)
{
    double sum = 0.0;
    std::vector<double> counted;
    for (int row = first.Row; row <= second.Row; ++row) {
        for (int column = first.Column; column <= second.Column; ++column) {
            const CellRecord& cell = sheet.record(row, column);
            sum = checkedSum(sum + cell.Value);
            if (cell.holdsNumber())
                counted.push_back(cell.Value);
        }
    }
    switch (function) {
    case SumFunction:
        return sum;
    case MeanFunction:
        return counted.empty() ? sum : sum / static_cast<double>(counted.size());
    case MedianFunction:
        return median(std::move(counted));
    case ModeFunction:
        return mode(std::move(counted));
    }
    return sum;
}

double EvaluateFormula(Sheet& sheet, const QString& formula, bool recordRefs, int row, int column)
{
    QList<CellRef> precedents;
    QString text = formula;

    while (const std::optional<RangeCall> call = findRangeCall(text)) {
        if (recordRefs) {
            precedents.append(precedent(RangeCornerPrecedent, call->first));
            precedents.append(precedent(RangeCornerPrecedent, call->second));
        }
        const double value = RangeValue(sheet, call->function, call->first, call->second);
        text.replace(call->start, call->end - call->start, FormulaNumberText(value));
    }

    qsizetype position = 1;
    while (true) {
        const CellReferenceMatch match = FindNextReference(text, position);
        if (!match.Found)
            break;
        const CellRef single = precedent(SingleCellPrecedent, match.Cell);
        if (recordRefs && !precedents.contains(single))
            precedents.append(single);
        text.replace(match.Start, match.Length, FormulaNumberText(sheet.record(match.Cell).Value));
        // The inserted number holds no reference; scanning goes on from where it starts.
        position = match.Start;
    }

    if (text == u"=")
        return 0.0;

    Evaluation evaluation;
    try {
        evaluation = EvaluateExpression(QStringView(text).mid(1));
    } catch (const Runtime::Error& fault) {
        throw SheetError::fromRuntime(fault);
    }
    if (evaluation.ErrorCode == UnexpectedToken)
        throw SheetError::user(SheetError::EvaluationFailed, u"Syntax Error"_s);
    if (evaluation.ErrorCode == UndefinedFunction)
        throw SheetError::user(SheetError::EvaluationFailed, u"Undefined Function"_s);
    if (evaluation.ErrorCode == TrailingText)
        return 0.0;

    if (recordRefs && !precedents.isEmpty()) {
        CellRecord& cell = sheet.record(row, column);
        cell.Precedents = precedents;
        cell.HasPrecedents = true;
        if (LeadsBackTo(sheet, { row, column })) {
            cell.Precedents.clear();
            cell.HasPrecedents = false;
            throw SheetError::user(SheetError::CircularReference);
        }
        for (const CellAddress& target : PrecedentCells(precedents))
            AddDependent(sheet, { row, column }, target, FormulaDependent);
    }
    return evaluation.Result;
}

QList<CellAddress> PrecedentCells(const QList<CellRef>& precedents)
{
    QList<CellAddress> cells;
    VisitPrecedentCells(precedents, [&](CellAddress cell) {
        cells.append(cell);
        return true;
    });
    return cells;
}

bool LeadsBackTo(const Sheet& sheet, CellAddress origin)
{
    // Only whether the origin can be reached matters, so a cell searched once without finding
    // it need not be searched again; that also ends cycles that miss the origin.
    std::vector<bool> searched(SheetCellCount, false);
    std::vector<CellAddress> pending { origin };
    while (!pending.empty()) {
        const CellAddress cell = pending.back();
        pending.pop_back();
        const CellRecord& record = sheet.record(cell);
        if (!record.HasPrecedents)
            continue;
        const bool searchedAll = VisitPrecedentCells(record.Precedents, [&](CellAddress next) {
            if (next == origin)
                return false;
            const auto index
                = static_cast<std::size_t>((next.Row - 1) * SheetColumns + next.Column - 1);
            if (!searched[index]) {
                searched[index] = true;
                pending.push_back(next);
            }
            return true;
        });
        if (!searchedAll)
            return true;
    }
    return false;
}

} // namespace Tillane
