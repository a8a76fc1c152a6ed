#include "app/cli/SheetVerbs.h"

#include "app/cli/VerbStatus.h"
#include "platform/io/StandardStreams.h"
#include "platform/runtime/Conversions.h"
#include "platform/runtime/Error.h"
#include "platform/text/DelimitedText.h"
#include "sheet/CellReferences.h"
#include "sheet/ExpressionEvaluator.h"
#include "sheet/Sheet.h"
#include "sheet/SheetFile.h"
#include "sheet/SheetFileEntry.h"
#include "sheet/SheetTransfer.h"

#include <optional>

using namespace Qt::Literals::StringLiterals;

namespace Cli {

namespace {

enum class FileKind { Sheet, Delimited, Unknown };

// "-" is comma-separated text, the kind a sheet is exchanged in.
FileKind fileKind(const QString& path)
{
    if (Io::IsStandardStream(path))
        return FileKind::Delimited;
    if (path.endsWith(u".qnc"_s, Qt::CaseInsensitive))
        return FileKind::Sheet;
    if (path.endsWith(u".csv"_s, Qt::CaseInsensitive)
        || path.endsWith(u".txt"_s, Qt::CaseInsensitive))
        return FileKind::Delimited;
    return FileKind::Unknown;
}

int evaluate(const QStringList& arguments, QTextStream& out, QTextStream& err)
{
    if (arguments.size() < 2)
        return Usage(err, u"eval EXPR");
    const QString expression = arguments.mid(1).join(u' ');
    try {
        const Tillane::Evaluation evaluation = Tillane::EvaluateExpression(expression);
        if (evaluation.ErrorCode != Tillane::NoEvaluatorError) {
            err << evaluation.Message << Qt::endl;
            return evaluation.ErrorCode;
        }
        out << Runtime::GeneralNumber(evaluation.Result) << Qt::endl;
        return Succeeded;
    } catch (const Runtime::Error& fault) {
        err << fault.message() << Qt::endl;
        return EvalArithmeticFault;
    }
}

// A batch command must not go on with a part of a sheet: a damaged, newer or unreadable
// file is a failure here.
QString loadWholeSheet(const QString& path, Tillane::Sheet& sheet)
{
    return Tillane::LoadSheetFile(path, sheet).message;
}

int convert(const QStringList& arguments, QTextStream& err)
{
    constexpr QStringView syntax = u"sheet convert IN OUT (each .qnc, .csv or .txt)";
    if (arguments.size() != 4)
        return Usage(err, syntax);
    const QString& input = arguments[2];
    const QString& output = arguments[3];
    if (fileKind(input) == FileKind::Unknown || fileKind(output) == FileKind::Unknown)
        return Usage(err, syntax);

    Tillane::Sheet sheet;
    if (fileKind(input) == FileKind::Sheet) {
        const QString problem = loadWholeSheet(input, sheet);
        if (!problem.isEmpty())
            return Failure(err, problem);
    } else {
        const Tillane::ImportResult imported
            = Tillane::ImportDelimitedText(sheet, input, Text::SeparatorForFile(input));
        if (!imported.error.isEmpty())
            return Failure(err, imported.error);
        for (const QString& refused : imported.refusedEntries)
            err << refused << Qt::endl;
        if (imported.fieldsLeftOut > 0)
            err << u"%1 fields beyond row 256 or column Z were left out."_s.arg(
                imported.fieldsLeftOut)
                << Qt::endl;
    }

    const QString problem = fileKind(output) == FileKind::Sheet
        ? Tillane::SaveSheetFile(sheet, output)
        : Tillane::ExportDelimitedText(sheet, output, Text::SeparatorForFile(output));
    return problem.isEmpty() ? Succeeded : Failure(err, problem);
}

std::optional<Tillane::CellAddress> cellArgument(const QString& name, QTextStream& err)
{
    const std::optional<Tillane::CellAddress> cell = Tillane::CellFromName(name);
    if (!cell)
        err << u"\"%1\" names no cell: give a column letter A-Z and a row 1-256, as in B7."_s.arg(
            name)
            << Qt::endl;
    return cell;
}

int get(const QStringList& arguments, QTextStream& out, QTextStream& err)
{
    if (arguments.size() != 4)
        return Usage(err, u"sheet get FILE.qnc CELL");
    const std::optional<Tillane::CellAddress> cell = cellArgument(arguments[3], err);
    if (!cell)
        return UsageError;
    Tillane::Sheet sheet;
    const QString problem = loadWholeSheet(arguments[2], sheet);
    if (!problem.isEmpty())
        return Failure(err, problem);
    const Tillane::CellRecord& record = sheet.record(*cell);
    out << sheet.display(cell->Row, cell->Column).Text << u'\t' << record.Kind << u'\t'
        << Runtime::GeneralNumber(record.Value) << u'\t' << record.Formula << Qt::endl;
    return Succeeded;
}

int set(const QStringList& arguments, QTextStream& err)
{
    if (arguments.size() != 5)
        return Usage(err, u"sheet set FILE.qnc CELL TEXT");
    const std::optional<Tillane::CellAddress> cell = cellArgument(arguments[3], err);
    if (!cell)
        return UsageError;
    const QString problem = Tillane::EnterCellInFile(arguments[2], *cell, arguments[4]);
    return problem.isEmpty() ? Succeeded : Failure(err, problem);
}

} // namespace

bool IsSheetVerb(const QStringList& arguments)
{
    return !arguments.isEmpty() && (arguments[0] == u"eval" || arguments[0] == u"sheet");
}

int RunSheetVerb(const QStringList& arguments, QTextStream& out, QTextStream& err)
{
    if (arguments.value(0) == u"eval")
        return evaluate(arguments, out, err);
    const QString verb = arguments.value(1);
    if (arguments.value(0) == u"sheet" && verb == u"convert")
        return convert(arguments, err);
    if (arguments.value(0) == u"sheet" && verb == u"get")
        return get(arguments, out, err);
    if (arguments.value(0) == u"sheet" && verb == u"set")
        return set(arguments, err);
    return Usage(err,
        u"eval EXPR | sheet convert IN OUT | sheet get FILE.qnc CELL | "
        u"sheet set FILE.qnc CELL TEXT");
}

} // namespace Cli
