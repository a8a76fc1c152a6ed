#pragma once

#include "platform/runtime/Variant.h"

#include <QString>
#include <QStringView>

// The classic BASIC conversions between numbers and text, written once for every subsystem.
// Two families live here and must not be confused:
// - Val and Str are locale-blind machine forms: "." is always the decimal point. Files (graph
//   files, formulas) and lenient cell readings use them.
// - IsNumeric, CDbl, CCur, CStr follow the host locale (HostLocale.h): its decimal point, its
//   thousands separator and its currency symbol. What the user types and sees uses them.
// Every real-to-integer conversion (CInt, CLng, Round) rounds halves to the even neighbour.
// Errors are thrown as Runtime::Error with the classic numbers (Error.h).
namespace Runtime {

// The leading number of a text. Blanks, tabs and line ends are ignored wherever they stand
// ("1 000" reads 1000); then an optional sign, digits, one "." and an exponent introduced by E
// or D (either case) are read for as long as they form a number; nothing numeric reads 0.
// "&H" and "&O" read hexadecimal and octal digits. A value up to &HFFFF is a 16-bit integer
// and so &HFFFF reads -1; larger values up to &HFFFFFFFF are 32-bit (&HFFFFF reads 1048575,
// &HFFFFFFFF reads -1); a trailing "&" asks for 32 bits at once (&HFFFF& reads 65535).
// Throws Error 6 when the number is too large for a double or the digits after "&H"/"&O" do
// not fit in 32 bits.
double Val(QStringView text);

// The number as text with a leading blank for zero and positive values, "-" otherwise, "."
// as the point, no zero before the point (" .5"), at most 15 significant digits, and the
// exponent form (" 1E+15", " 1E-05") from 1E+15 upward and below 0.0001.
QString Str(double value);

// The locale's general text of a number, as CStr and Format without a format give it: no
// leading blank, the locale's decimal point, a zero before it ("0.5"), otherwise like Str.
QString GeneralNumber(double value);

// Whether the text reads as a number in the host locale: blanks around it, a sign before or
// after it or brackets around it, the currency symbol, thousands separators, the decimal
// point, an exponent, or "&H"/"&O" digits. An empty text is not numeric.
bool IsNumeric(QStringView text);
bool IsNumeric(const QString& text);
// Numbers, on/off values and Empty are numeric; Null, dates and binary data are not; texts
// as above.
bool IsNumeric(const Variant& value);

// The number a text or value stands for; Error 13 for a text that is not numeric, Error 94
// for Null, Error 6 for a number too large.
double CDbl(QStringView text);
double CDbl(const QString& text);
double CDbl(const Variant& value);

// Whole numbers, rounded halves to even (2.5 -> 2, 3.5 -> 4, -2.5 -> -2); Error 6 outside
// -32768..32767 (CInt) and -2147483648..2147483647 (CLng).
int CInt(double value);
int CInt(const Variant& value);
int CLng(double value);
int CLng(const Variant& value);

// A currency amount: the number rounded to four decimals (halves to even, on the number read
// to 15 significant digits, so "1.00005" gives 1.0000); texts may carry
// the locale's currency symbol and thousands separators ("£1,234.50"). Error 6 beyond
// ±922337203685477.5807.
double CCur(double value);
double CCur(QStringView text);
double CCur(const QString& text);
double CCur(const Variant& value);

// Int rounds down (Int(-2.5) = -3); Fix drops the fraction (Fix(-2.5) = -2).
double Int(double value);
double Fix(double value);

// The value rounded to `digits` decimals, halves to even on the scaled binary value, so
// Round(2.5) = 2 and Round(0.125, 2) = 0.12. Error 5 for negative digits.
double Round(double value, int digits = 0);

// The text a value converts to, the same as Format without a format: numbers in the general
// form, dates in General Date, on/off values "True" and "False", Empty and Null as the empty
// text, binary data read as UTF-8.
QString CStr(const Variant& value);

} // namespace Runtime
