#pragma once

#include "platform/dao/ColumnType.h"
#include "platform/runtime/Variant.h"

namespace Dao {

// How a value that does not fit its column is treated.
enum class ConversionMode {
    // A recordset assignment: a value that cannot be read as the column's kind ("abc" into
    // a number) becomes Null, but a number too large (3349) or a text too long (3163) is an
    // error, so that nothing the user typed is cut short unseen.
    Assignment,
    // An UPDATE or INSERT statement: whatever cannot be stored becomes Null, row by row, so
    // that a change of a column's type keeps every value that converts.
    Statement,
};

// The value a column of this type stores for `value`: "12" into a whole-number column is
// 12 and "abc" is Null; 2.5 into it is 2 (halves to even); a number into a text column is
// its text as CStr gives it; a text into a date column is read as CDate reads it; a currency
// value keeps four decimals; a text into a binary column is its UTF-16 bytes (how chunks of
// text are appended to pictures). Empty and Null stay Null. A text of zero length into a
// number, date or on/off column is Null.
Runtime::Variant ConvertForColumn(
    const Runtime::Variant& value, const ColumnType& column, ConversionMode mode);

// A stored value read back as the column's kind: 1 in an on/off column is True, a real in a
// date column is a date, in a currency column currency. A stored value of another storage
// class (a file written by another program) is returned as it is stored.
Runtime::Variant FromStorage(const Runtime::Variant& stored, DataType type);

} // namespace Dao
