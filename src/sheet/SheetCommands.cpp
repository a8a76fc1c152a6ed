#include "sheet/SheetCommands.h"

#include "platform/runtime/Conversions.h"
#include "platform/runtime/Error.h"
#include "sheet/CellEntry.h"
#include "sheet/CellReferences.h"
#include "sheet/DelimitedFile.h"
#include "sheet/ExpressionEvaluator.h"
#include "sheet/Sheet.h"
#include "sheet/SheetError.h"
#include "sheet/SheetFile.h"
#include "sheet/SheetTransfer.h"

#include <optional>

using namespace Qt::Literals::StringLiterals;

namespace Tillane {

namespace {

enum class FileKind { Sheet, Delimited, Unknown };

FileKind fileKind(const QString& path)
{
    if (path.endsWith(u".qnc"_s, Qt::CaseInsensitive))
        return FileKind::Sheet;
    if (path.endsWith(u".csv"_s, Qt::CaseInsensitive)
        || path.endsWith(u".txt"_s, Qt::CaseInsensitive))
        return FileKind::Delimited;
    return FileKind::Unknown;
}

int usage(QTextStream& err, const QString& text)
{
    err << u"usage: quorbin-cli "_s << text << Qt::endl;
    return UsageError;
}

int failed(QTextStream& err, const QString& message)
{
    err << message << Qt::endl;
    return CommandFailed;
}

int evaluate(const QStringList& arguments, QTextStream& out, QTextStream& err)
{
    if (arguments.size() < 2)
        return usage(err, u"eval EXPR"_s);
    const QString expression = arguments.mid(1).join(u' ');
    try {
        const Evaluation evaluation = EvaluateExpression(expression);
        if (evaluation.ErrorCode != NoEvaluatorError) {
            err << evaluation.Message << Qt::endl;
            return evaluation.ErrorCode;
        }
        out << Runtime::GeneralNumber(evaluation.Result) << Qt::endl;
        return 0;
    } catch (const Runtime::Error& fault) {
        err << fault.message() << Qt::endl;
        return ArithmeticFault;
    }
}

// Loads a whole sheet file; a damaged, newer or unreadable file is an error here, since a
// batch command must not go on with a part of a sheet.
bool loadSheet(const QString& path, Sheet& sheet, QTextStream& err)
{
    const SheetReadResult result = LoadSheetFile(path, sheet);
    if (result.isComplete())
        return true;
    err << result.message << Qt::endl;
    return false;
}

int convert(const QStringList& arguments, QTextStream& err)
{
    const QString syntax = u"sheet convert IN OUT (each .qnc, .csv or .txt)"_s;
    if (arguments.size() != 4)
        return usage(err, syntax);
    const QString& input = arguments[2];
    const QString& output = arguments[3];
    if (fileKind(input) == FileKind::Unknown || fileKind(output) == FileKind::Unknown)
        return usage(err, syntax);

    Sheet sheet;
    if (fileKind(input) == FileKind::Sheet) {
        if (!loadSheet(input, sheet, err))
            return CommandFailed;
    } else {
        const ImportResult imported = ImportDelimitedText(sheet, input, SeparatorForFile(input));
        if (!imported.error.isEmpty())
            return failed(err, imported.error);
        for (const QString& refused : imported.refusedEntries)
            err << refused << Qt::endl;
        if (imported.fieldsLeftOut > 0)
            err << u"%1 fields beyond row 256 or column Z were left out."_s.arg(
                imported.fieldsLeftOut)
                << Qt::endl;
    }

    const QString error = fileKind(output) == FileKind::Sheet
        ? SaveSheetFile(sheet, output)
        : ExportDelimitedText(sheet, output, SeparatorForFile(output));
    if (!error.isEmpty())
        return failed(err, error);
    return 0;
}

std::optional<CellAddress> cellArgument(const QString& name, QTextStream& err)
{
    const std::optional<CellAddress> cell = CellFromName(name);
    if (!cell)
        err << u"\"%1\" names no cell: give a column letter A-Z and a row 1-256, as in B7."_s.arg(
            name)
            << Qt::endl;
    return cell;
}

int get(const QStringList& arguments, QTextStream& out, QTextStream& err)
{
    if (arguments.size() != 4)
        return usage(err, u"sheet get FILE.qnc CELL"_s);
    const std::optional<CellAddress> cell = cellArgument(arguments[3], err);
    if (!cell)
        return UsageError;
    Sheet sheet;
    if (!loadSheet(arguments[2], sheet, err))
        return CommandFailed;
    const CellRecord& record = sheet.record(*cell);
    out << sheet.display(cell->Row, cell->Column).Text << u'\t' << record.Kind << u'\t'
        << Runtime::GeneralNumber(record.Value) << u'\t' << record.Formula << Qt::endl;
    return 0;
}

int set(const QStringList& arguments, QTextStream& err)
{
    if (arguments.size() != 5)
        return usage(err, u"sheet set FILE.qnc CELL TEXT"_s);
    const QString& path = arguments[2];
    const std::optional<CellAddress> cell = cellArgument(arguments[3], err);
    if (!cell)
        return UsageError;
    Sheet sheet;
    if (!loadSheet(path, sheet, err))
        return CommandFailed;
    try {
        if (!EnterCell(sheet, cell->Row, cell->Column, arguments[4]))
            return failed(err, u"Cell %1 is locked."_s.arg(CellName(*cell)));
    } catch (const SheetError& error) {
        return failed(err, error.description());
    }
    const QString error = SaveSheetFile(sheet, path);
    if (!error.isEmpty())
        return failed(err, error);
    return 0;
}

} // namespace

bool IsSheetCommand(const QStringList& arguments)
{
    return !arguments.isEmpty() && (arguments[0] == u"eval" || arguments[0] == u"sheet");
}

int RunSheetCommand(const QStringList& arguments, QTextStream& out, QTextStream& err)
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
    return usage(err,
        u"eval EXPR | sheet convert IN OUT | sheet get FILE.qnc CELL | "
        u"sheet set FILE.qnc CELL TEXT"_s);
}

} // namespace Tillane
