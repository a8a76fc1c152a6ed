#pragma once

#include <QStringList>
#include <QTextStream>

// The quorbin-cli verbs on the classic conversions, so that a teacher (or a test) can see
// exactly what a cell, field or count line will show. `arguments` start at the verb:
//
//   format VALUE FORMAT   VALUE read as a typed entry (a number, a date, a date and time, or
//                         else text) and shown in FORMAT: format 0.5 "0.00" prints 0.50
//   val TEXT              the number at the start of TEXT: val "  12kg" prints 12
//   str NUMBER            NUMBER in the Str form, sign position included: str 0.5 prints " .5"
//
// Exit status 0; 2 for a usage error and 1 for a value beyond what a number holds, each with
// a one-line message on `err`.
namespace Cli {

bool IsConversionVerb(const QStringList& arguments);

int RunConversionVerb(const QStringList& arguments, QTextStream& out, QTextStream& err);

} // namespace Cli
