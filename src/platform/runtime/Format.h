#pragma once

#include "platform/runtime/Variant.h"

#include <QString>
#include <QStringView>

namespace Runtime {

// The classic Format conversion: what pupils see in every cell, field, count line and export.
//
// Without a format: numbers in the general form of GeneralNumber ("0.5", "1E+15"), dates in
// General Date, on/off values "True"/"False", texts unchanged, Empty and Null "".
//
// Named formats (any case): "General Number", "Currency" (the host locale's symbol and
// places, "-" before negatives: "£1,234.50", "-£0.50"), "Fixed" (0.00), "Standard"
// (#,##0.00), "Percent" (0.00%), "Scientific" (0.00E+00), "Yes/No", "True/False", "On/Off";
// "General Date" (the date alone when there is no time, the time alone when the date part is
// 0, else both), "Long Date" (the locale's long form: "Thursday, 29 February 2024" in en_GB),
// "Medium Date" (dd-mmm-yy), "Short Date" (the locale's: dd/mm/yyyy in en_GB), "Long Time"
// (the locale's: hh:nn:ss in en_GB), "Medium Time" (hh:nn AM/PM), "Short Time" (hh:nn).
//
// Custom number formats: 0 (digit or zero) # (digit or nothing) . (the locale's decimal
// point, shown only when a decimal digit follows it, so "#0.##" shows 12 as "12") , (between
// digit placeholders: thousands separators; directly before the point or the end: divide by
// 1000) % (times 100) E+ E- e+ e- (exponent), "quoted text", \c (the character c), any other
// character as itself; up to four sections separated by ";" for positive, negative, zero and
// Null values (an empty or missing section falls back to the first; a negative section
// shows no minus sign of its own). Digits round HALVES AWAY FROM ZERO after the number has
// been read to 15 significant digits: Format(2.5, "0") is "3", Format(-0.5, "0") is "-1",
// Format(1.005, "0.00") is "1.01". (CInt, CLng and Round round halves to even instead.) A
// value that rounds to all zeros loses its minus sign: Format(-0.001, "0.00") is "0.00".
//
// Custom date formats (letters in any case): d dd ddd dddd ddddd (short date) dddddd (long
// date), m mm mmm mmmm, y (day of year) yy yyyy (the year without padding), h hh, n nn, s ss,
// w (weekday) ww (week), q (quarter), c (general date), ttttt (long time), AM/PM am/pm A/P a/p
// (as written) and AMPM (the locale's texts), which make hours 12-hour; "/" and ":" give the
// locale's date and time separators. m or mm right after an hour or right before a second
// means minutes, so "dd MMM yyyy" and "HH:mm" work. A format is a date format when a date
// letter comes before any 0 or # placeholder, so "#0.## days" is a number format.
//
// Numbers given a date format are date serials; outside the valid dates they are shown in
// the general number form. Texts are converted when they read as numbers (or, for date
// formats, as dates) and are returned unchanged otherwise.
QString Format(const Variant& value, QStringView format = {});

} // namespace Runtime
