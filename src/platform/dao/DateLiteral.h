#pragma once

#include <QStringView>
#include <optional>

namespace Dao {

// The text between the two "#" of a date literal in the engine's SQL, read as a day serial
// (days from 30 December 1899, the time as the fraction). The order is fixed and does not
// follow the locale: month, day, year ("3-5-04", "12/31/1999"), or year, month, day when the
// first number has four digits ("2004-03-05"); "-" and "/" both separate. A two-digit year
// 00-29 is 2000-2029 and 30-99 is 1930-1999. A time "h:mm", "h:mm:ss", with AM or PM, may
// follow the date or stand alone (then the day is 0). Empty when the text is no such date.
std::optional<double> ParseDateLiteral(QStringView text);

} // namespace Dao
