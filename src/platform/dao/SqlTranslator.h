#pragma once

#include "platform/dao/ColumnType.h"

#include <QString>
#include <QStringList>
#include <QStringView>
#include <functional>
#include <optional>
#include <vector>

namespace Dao {

// What the translator needs to know about a column to convert values written into it.
struct ColumnSchema
{
    ColumnType type;
    bool required = false;
    bool allowZeroLength = true;
};

// Looks the file's columns up; either function may be empty (then nothing is converted).
struct SqlSchemaLookup
{
    std::function<std::optional<ColumnSchema>(const QString& table, const QString& column)> column;
    std::function<QStringList(const QString& table)> columnNames; // in column order
    // The expression that numbers a new row's counter; empty: one past the largest in the table.
    std::function<QString(const QString& table, const QString& column)> nextCounter;
};

// One statement of the engine's dialect, rewritten for SQLite.
struct SqlStatement
{
    enum class Kind {
        Select,
        Update,
        Delete,
        Insert,
        AddColumn,
        DropColumn,
        CreateTable,
        DropTable
    };

    Kind kind = Kind::Select;
    QString sql; // the whole statement in SQLite's dialect
    QString table; // the one table the statement works on, when there is one
    QString column; // AddColumn, DropColumn: the column added or dropped

    // A select from one table whose rows can be walked by row id: no joins, grouping,
    // aggregates or DISTINCT, and only plain columns (or *) selected.
    bool singleTable = false;
    QStringList selectedColumns; // empty for *
    QString where; // SQLite condition, empty when there is none
    QString orderBy; // SQLite ORDER BY list, empty when there is none
    QString limit; // from TOP n, empty when there is none

    // For any select: per result column, the table column it shows when it is a column or
    // Min/Max of one (so that Min of a date column is a date), else empty.
    std::vector<QString> sourceColumns;
};

// Rewrites one statement: [bracketed names] and bare names become quoted names, 'x' and
// "x" strings become SQLite strings, #m-d-yy# dates become day serials, True/Yes and
// False/No become 1 and 0, Mod becomes %, & becomes ||, DISTINCTROW is dropped, TOP n
// becomes LIMIT n, the engine's functions (DatePart, Year, Left, Nz, ...) become the
// functions the connection registers, and ALTER TABLE type words become declared types.
// Values written by UPDATE and INSERT pass through qb_convert so that they take the
// column's type. LIKE keeps its form: the connection's own LIKE knows * ? # [list].
// Throws DaoError: 3129 for a statement that is none of SELECT, UPDATE, DELETE, INSERT,
// ALTER TABLE, CREATE TABLE, DROP TABLE; 3075 for a malformed expression or date; 3131
// for a missing FROM; 3144 for a malformed UPDATE; 3293 for a malformed ALTER TABLE; 3138
// for text after a closing ";".
SqlStatement TranslateSql(QStringView statement, const SqlSchemaLookup& schema = {});

// Rewrites a condition as FindFirst and FindNext take it (a WHERE clause without WHERE).
QString TranslateCondition(QStringView condition);

} // namespace Dao
