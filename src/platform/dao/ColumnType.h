#pragma once

#include <QString>
#include <optional>

namespace Dao {

// The engine's field types, numbered as the original engine numbered them: callers compare
// Field::Type() with these values (a date column is type 8).
enum class DataType : int {
    Boolean = 1,
    Byte = 2,
    Integer = 3, // 16-bit
    Long = 4, // 32-bit
    Currency = 5,
    Single = 6,
    Double = 7,
    Date = 8,
    Binary = 9,
    Text = 10,
    LongBinary = 11,
    Memo = 12,
};

// Bits of Field::Attributes().
enum FieldAttribute : int {
    FixedField = 1,
    VariableField = 2,
    AutoIncrementField = 16,
    UpdatableField = 32,
};

// What a column is, as its declared SQLite type carries it: "TEXT(50)", "LONG", "COUNTER" ...
struct ColumnType
{
    DataType type = DataType::Memo;
    int size = 0; // characters for Text; bytes for the fixed-size kinds; 0 for Memo, LongBinary
    bool autoIncrement = false;

    friend bool operator==(const ColumnType&, const ColumnType&) = default;
};

// The size a column of the type has when none is given: Text gets 255, as a text column
// added with a size of 0 does.
int DefaultSize(DataType type);

bool IsTextType(DataType type); // Text and Memo compare without regard to case
bool IsNumericType(DataType type); // Byte to Double, Currency and Date

// The declared SQLite type that stores the column: TEXT(n), LONGTEXT, LONGBINARY, BINARY(n),
// BYTE, SHORT, LONG, COUNTER, SINGLE, DOUBLE, CURRENCY, DATETIME, BOOLEAN.
QString DeclaredType(const ColumnType& column);

// Reads a declared type back. Never fails: declared types written by other programs map to
// the nearest kind (INTEGER is Long, REAL is Double, VARCHAR(n) is Text), and an unknown or
// empty one reads as Memo so that any value can still be shown.
ColumnType ColumnTypeFromDeclared(const QString& declared);

// The engine's SQL type words in ALTER TABLE ... ADD COLUMN, with the size in brackets when
// one was written (-1 when none): TEXT, LONGTEXT/MEMO, LONGBINARY, LONG/INTEGER, SHORT, BYTE,
// DOUBLE, SINGLE, CURRENCY, DATETIME, BOOLEAN/BIT/YESNO, COUNTER ... Empty when the word is
// not a type word.
std::optional<ColumnType> ColumnTypeFromTypeWord(const QString& word, int size);

// The engine's name of a type, for messages and tests: "Text", "Long", "Date/Time" ...
QString DataTypeName(DataType type);

} // namespace Dao
