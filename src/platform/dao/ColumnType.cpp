#include "platform/dao/ColumnType.h"

#include <QRegularExpression>

using namespace Qt::Literals::StringLiterals;

namespace Dao {

int DefaultSize(DataType type)
{
    switch (type) {
    case DataType::Boolean:
    case DataType::Byte:
        return 1;
    case DataType::Integer:
        return 2;
    case DataType::Long:
    case DataType::Single:
        return 4;
    case DataType::Currency:
    case DataType::Double:
    case DataType::Date:
        return 8;
    case DataType::Binary:
    case DataType::Text:
        return 255;
    case DataType::LongBinary:
    case DataType::Memo:
        return 0;
    }
    return 0;
}

bool IsTextType(DataType type)
{
    return type == DataType::Text || type == DataType::Memo;
}

bool IsNumericType(DataType type)
{
    switch (type) {
    case DataType::Byte:
    case DataType::Integer:
    case DataType::Long:
    case DataType::Currency:
    case DataType::Single:
    case DataType::Double:
    case DataType::Date:
        return true;
    default:
        return false;
    }
}

QString DeclaredType(const ColumnType& column)
{
    const int size = column.size > 0 ? column.size : DefaultSize(column.type);
    switch (column.type) {
    case DataType::Boolean:
        return u"BOOLEAN"_s;
    case DataType::Byte:
        return u"BYTE"_s;
    case DataType::Integer:
        return u"SHORT"_s;
    case DataType::Long:
        return column.autoIncrement ? u"COUNTER"_s : u"LONG"_s;
    case DataType::Currency:
        return u"CURRENCY"_s;
    case DataType::Single:
        return u"SINGLE"_s;
    case DataType::Double:
        return u"DOUBLE"_s;
    case DataType::Date:
        return u"DATETIME"_s;
    case DataType::Binary:
        return u"BINARY("_s + QString::number(size) + u")"_s;
    case DataType::Text:
        return u"TEXT("_s + QString::number(size) + u")"_s;
    case DataType::LongBinary:
        return u"LONGBINARY"_s;
    case DataType::Memo:
        return u"LONGTEXT"_s;
    }
    return u"LONGTEXT"_s;
}

namespace {

// The type words of the engine's SQL and their kinds. A size in brackets is only
// meaningful for the text and binary kinds.
std::optional<ColumnType> KindOfWord(const QString& word)
{
    const QString upper = word.toUpper();
    if (upper == u"TEXT"_s || upper == u"VARCHAR"_s || upper == u"CHAR"_s || upper == u"CHARACTER"_s
        || upper == u"STRING"_s || upper == u"ALPHANUMERIC"_s || upper == u"NVARCHAR"_s
        || upper == u"NCHAR"_s)
        return ColumnType { DataType::Text, 0, false };
    if (upper == u"LONGTEXT"_s || upper == u"MEMO"_s || upper == u"NOTE"_s || upper == u"LONGCHAR"_s
        || upper == u"NTEXT"_s || upper == u"CLOB"_s)
        return ColumnType { DataType::Memo, 0, false };
    if (upper == u"LONGBINARY"_s || upper == u"IMAGE"_s || upper == u"OLEOBJECT"_s
        || upper == u"GENERAL"_s || upper == u"BLOB"_s)
        return ColumnType { DataType::LongBinary, 0, false };
    if (upper == u"BINARY"_s || upper == u"VARBINARY"_s)
        return ColumnType { DataType::Binary, 0, false };
    if (upper == u"LONG"_s || upper == u"INTEGER"_s || upper == u"INT"_s || upper == u"INTEGER4"_s)
        return ColumnType { DataType::Long, 0, false };
    if (upper == u"SHORT"_s || upper == u"SMALLINT"_s || upper == u"INTEGER2"_s)
        return ColumnType { DataType::Integer, 0, false };
    if (upper == u"BYTE"_s || upper == u"TINYINT"_s || upper == u"INTEGER1"_s)
        return ColumnType { DataType::Byte, 0, false };
    if (upper == u"COUNTER"_s || upper == u"AUTOINCREMENT"_s)
        return ColumnType { DataType::Long, 0, true };
    if (upper == u"DOUBLE"_s || upper == u"FLOAT"_s || upper == u"FLOAT8"_s || upper == u"NUMBER"_s
        || upper == u"NUMERIC"_s || upper == u"REAL"_s)
        return ColumnType { DataType::Double, 0, false };
    if (upper == u"SINGLE"_s || upper == u"FLOAT4"_s || upper == u"IEEESINGLE"_s)
        return ColumnType { DataType::Single, 0, false };
    if (upper == u"CURRENCY"_s || upper == u"MONEY"_s)
        return ColumnType { DataType::Currency, 0, false };
    if (upper == u"DATETIME"_s || upper == u"DATE"_s || upper == u"TIME"_s
        || upper == u"TIMESTAMP"_s)
        return ColumnType { DataType::Date, 0, false };
    if (upper == u"BOOLEAN"_s || upper == u"BIT"_s || upper == u"LOGICAL"_s
        || upper == u"LOGICAL1"_s || upper == u"YESNO"_s || upper == u"BOOL"_s)
        return ColumnType { DataType::Boolean, 0, false };
    return std::nullopt;
}

ColumnType WithSize(ColumnType column, int size)
{
    if (column.type == DataType::Text || column.type == DataType::Binary)
        column.size = size > 0 ? std::min(size, 255) : DefaultSize(column.type);
    else
        column.size = DefaultSize(column.type);
    return column;
}

} // namespace

ColumnType ColumnTypeFromDeclared(const QString& declared)
{
    static const QRegularExpression pattern(
        u"^\\s*([A-Za-z_][A-Za-z0-9_]*)\\s*(?:\\(\\s*(\\d{1,9})\\s*(?:,\\s*\\d{1,9}\\s*)?\\))?"_s);
    const QRegularExpressionMatch match = pattern.match(declared);
    if (match.hasMatch()) {
        if (const auto kind = KindOfWord(match.captured(1)))
            return WithSize(*kind, match.captured(2).isEmpty() ? 0 : match.captured(2).toInt());
    }
    return ColumnType { DataType::Memo, 0, false };
}

std::optional<ColumnType> ColumnTypeFromTypeWord(const QString& word, int size)
{
    const auto kind = KindOfWord(word);
    if (!kind)
        return std::nullopt;
    return WithSize(*kind, size);
}

QString DataTypeName(DataType type)
{
    switch (type) {
    case DataType::Boolean:
        return u"Yes/No"_s;
    case DataType::Byte:
        return u"Byte"_s;
    case DataType::Integer:
        return u"Integer"_s;
    case DataType::Long:
        return u"Long"_s;
    case DataType::Currency:
        return u"Currency"_s;
    case DataType::Single:
        return u"Single"_s;
    case DataType::Double:
        return u"Double"_s;
    case DataType::Date:
        return u"Date/Time"_s;
    case DataType::Binary:
        return u"Binary"_s;
    case DataType::Text:
        return u"Text"_s;
    case DataType::LongBinary:
        return u"Long Binary"_s;
    case DataType::Memo:
        return u"Memo"_s;
    }
    return u"Memo"_s;
}

} // namespace Dao
