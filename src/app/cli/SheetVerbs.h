#pragma once

#include <QStringList>
#include <QTextStream>

// The quorbin-cli verbs on sheets and expressions. `arguments` start at the verb:
//
//   eval EXPR                    prints the value as formulas insert it ("14", "0.5", "1E+20");
//                                words after EXPR are joined to it with blanks
//   sheet convert IN OUT         IN and OUT each .qnc, .csv or .txt (tab-separated), or "-"
//                                for comma-separated text on standard input or output; text
//                                in is entered as typed, text out is the shown texts
//   sheet get FILE.qnc CELL      prints: shown text TAB Kind TAB Value TAB Formula
//   sheet set FILE.qnc CELL TEXT enters TEXT as typed, recalculates and saves; a refused entry
//                                leaves the file as it was
//
// Messages for the user go to `err`, one per line, in the program's own words (the
// evaluator's message, the sheet's error text, the file's problem). The sheet verbs exit
// with the statuses of VerbStatus; eval with the evaluator's error code 1, 2 or 3, or
// EvalArithmeticFault.
namespace Cli {

// eval: division by zero, overflow, an invalid argument.
inline constexpr int EvalArithmeticFault = 4;

// Whether the arguments name one of these verbs ("eval" or "sheet").
bool IsSheetVerb(const QStringList& arguments);

int RunSheetVerb(const QStringList& arguments, QTextStream& out, QTextStream& err);

} // namespace Cli
