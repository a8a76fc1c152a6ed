#pragma once

#include <QStringList>
#include <QTextStream>

// The quorbin-cli verbs on sheets and expressions, for teachers' batch work and for testing
// whole paths without a display. `arguments` start at the verb:
//
//   eval EXPR                    prints the value as formulas insert it ("14", "0.5", "1E+20");
//                                words after EXPR are joined to it with blanks
//   sheet convert IN OUT         IN and OUT each .qnc, .csv or .txt (tab-separated); text in
//                                is entered as typed, text out is the shown texts
//   sheet get FILE.qnc CELL      prints: shown text TAB Kind TAB Value TAB Formula
//   sheet set FILE.qnc CELL TEXT enters TEXT as typed, recalculates and saves; a refused entry
//                                leaves the file as it was
//
// Messages for the user go to `err`, one per line, in the program's own words (the
// evaluator's message, the sheet's error text, the file's problem).
namespace Tillane {

// Exit statuses besides 0 (success). eval returns the evaluator's error code 1, 2 or 3.
enum SheetCommandStatus {
    CommandFailed = 1, // sheet verbs: the file could not be read or written, an entry refused
    ArithmeticFault = 4, // eval: division by zero, overflow, invalid argument
    UsageError = 64,
};

// Whether the arguments name one of these verbs ("eval" or "sheet").
bool IsSheetCommand(const QStringList& arguments);

int RunSheetCommand(const QStringList& arguments, QTextStream& out, QTextStream& err);

} // namespace Tillane
