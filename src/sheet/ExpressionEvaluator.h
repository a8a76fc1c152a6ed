#pragma once

#include <QString>
#include <QStringView>

// The sheet's arithmetic and logical expression evaluator. It knows nothing of cells: the
// formula machinery replaces references and range functions by numbers first and hands the
// rest of the text to it.
//
// Twelve precedence levels, loosest first: imp, eqv, xor, or, and, comparisons (= <> < > <=
// >=), + and -, mod, \ (integer quotient), * and /, ^, operands. All operators are
// left-associative (2^3^2 is 64); unary minus binds looser than ^ (-2^2 is -4) and tighter
// than *; "not" looser than the comparisons (not 1 = 2 is -1). Logical results are -1 and 0;
// the logical operators, "not", \ and mod work on the operands rounded to 32-bit integers
// (halves to even, so 2.5\1 is 2). Functions take one argument in brackets: abs atn cos exp
// fix int log rnd sgn sin sqr tan. Input is read in lower case.
//
// Error codes: 1 text left over after a complete expression ("1 2"), 2 an unexpected token
// where an operand belongs ("*3", and an empty expression), 3 an unknown function ("foo(1)").
// Only the first error counts. Brackets are not checked: "(1+2" is 3, and in "sin 2)" the 2
// stands where the bracket belongs.
//
// Arithmetic faults are not error codes: division by zero (Runtime::Error 11), overflow (6),
// and the logarithm or square root of a negative number (5) are thrown as Runtime::Error.
namespace Tillane {

enum EvaluatorErrorCode {
    NoEvaluatorError = 0,
    TrailingText = 1,
    UnexpectedToken = 2,
    UndefinedFunction = 3,
};

// Expressions nested deeper than this (brackets, signs, "not") are refused with code 2 rather
// than exhausting the stack; no pupil's formula comes near it.
inline constexpr int MaximumExpressionDepth = 1000;

struct Evaluation
{
    // Meaningful only when ErrorCode is 0; otherwise whatever had been computed.
    double Result = 0.0;
    int ErrorCode = NoEvaluatorError;
    // The text shown for the first error: "syntax error, token = '2'" for codes 1 and 2,
    // "Undefined function 'foo'" for code 3; empty without an error.
    QString Message;
};

// Throws Runtime::Error for arithmetic faults.
Evaluation EvaluateExpression(QStringView expression);

// The classic entry point: the result goes to `result`, the error code is returned, and with
// showErrors the first error's message is shown in a plain message box (Frame::Prompts).
int Evaluate(QStringView expression, double& result, bool showErrors);

// The text of a number as formulas insert it and the evaluator reads it back: no leading
// blank, "-" for negatives, a leading point as it stands (".5"), at most 15 significant digits, the
// exponent form from 1E+15 up and below 0.0001 ("1E+20", "1E-05"). Never contains a letter
// followed by a digit, so an inserted value is never taken for a cell reference.
QString FormulaNumberText(double value);

} // namespace Tillane
