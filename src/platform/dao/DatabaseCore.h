#pragma once

#include "platform/dao/ColumnType.h"
#include "platform/dao/Connection.h"
#include "platform/dao/SqlTranslator.h"
#include "platform/runtime/Variant.h"

#include <QHash>
#include <QString>
#include <QStringList>
#include <memory>
#include <optional>
#include <vector>

namespace Dao {

class Recordset;

// What the engine's objects share about one open database: the connection, and the reading
// and writing of the schema, the user-defined properties and the saved query definitions.
// Database, TableDef, Field, Index, Property, QueryDef and Recordset objects are views on
// it; once it is closed they all fail with 3420.
//
// Besides the documented tables the file holds three system tables that TableDefs never
// shows: QSysProperties (user-defined properties by table and field; the database's own
// have empty names), QSysQueries (saved query definitions as the engine's SQL text) and
// QSysIndexes (what SQLite cannot say about an index: primary, required, ignore nulls).
// An SQLite index of the engine is named "<table>.<index>".
class DatabaseCore
{
public:
    struct ColumnInfo
    {
        QString name;
        ColumnType type;
        bool required = false;
        bool allowZeroLength = true;
    };
    struct IndexInfo
    {
        QString name;
        QStringList fields;
        bool primary = false;
        bool unique = false;
        bool required = false;
        bool ignoreNulls = false;
    };
    struct StoredProperty
    {
        QString name;
        DataType type = DataType::Text;
        Runtime::Variant value;
    };

    DatabaseCore(std::unique_ptr<Connection> connection, const QString& name);
    ~DatabaseCore();
    DatabaseCore(const DatabaseCore&) = delete;
    DatabaseCore& operator=(const DatabaseCore&) = delete;

    const QString& name() const { return m_name; }
    bool isOpen() const { return m_connection != nullptr; }
    // Closes the recordsets opened on it, then the file.
    void close();
    // Throws 3420 once closed.
    Connection& connection() const;
    bool isReadOnly() const;

    // Tables the program sees, in the order they were made; system tables are left out.
    QStringList tableNames() const;
    // The table's name as stored, when a table of that name (without regard to case) exists.
    std::optional<QString> tableName(const QString& name) const;
    // The columns in order; empty when there is no such table.
    std::vector<ColumnInfo> columns(const QString& table) const;
    std::optional<ColumnInfo> column(const QString& table, const QString& column) const;
    std::vector<IndexInfo> indexes(const QString& table) const;
    SqlSchemaLookup schemaLookup() const;

    void createTable(const QString& table, const std::vector<ColumnInfo>& columns,
        const std::vector<IndexInfo>& indexes);
    void addColumn(const QString& table, const ColumnInfo& column);
    void dropColumn(const QString& table, const QString& column);
    void renameColumn(const QString& table, const QString& from, const QString& to);
    // Writes the table again with these columns (the same names, a new order or new
    // Required and AllowZeroLength settings), keeping every row and index.
    void rebuildTable(const QString& table, const std::vector<ColumnInfo>& columns);
    void createIndex(const QString& table, const IndexInfo& index);
    void dropIndex(const QString& table, const QString& index);
    void dropTable(const QString& table);

    // Properties of the database (table and field empty), a table (field empty) or a field.
    std::vector<StoredProperty> properties(const QString& table, const QString& field) const;
    std::optional<StoredProperty> property(
        const QString& table, const QString& field, const QString& name) const;
    // Throws 3367 when the object has a property of that name already, 3421 when the value
    // cannot be read as the property's type.
    void insertProperty(const QString& table, const QString& field, const StoredProperty& property);
    void setPropertyValue(const QString& table, const QString& field, const QString& name,
        const Runtime::Variant& value);
    void deleteProperty(const QString& table, const QString& field, const QString& name);
    // A value as a property of that type keeps it; 3421 when it cannot.
    static Runtime::Variant PropertyValue(DataType type, const Runtime::Variant& value);

    // Saved query definitions: name and SQL text, in the order they were saved.
    std::vector<std::pair<QString, QString>> queryDefs() const;
    std::optional<QString> queryDefSql(const QString& name) const;
    void createQueryDef(const QString& name, const QString& sql);
    void setQueryDefSql(const QString& name, const QString& sql);
    void renameQueryDef(const QString& from, const QString& to);
    void deleteQueryDef(const QString& name);

    // The SQL expression that numbers a new row's counter column: one past the largest number
    // the column has ever held, so a number freed by a delete is never given again.
    QString nextCounterSql(const QString& table, const QString& column) const;
    // Keeps the largest number each counter column of `table` holds, before rows go.
    void keepCounters(const QString& table);

    SqlStatement translate(const QString& sql) const;
    // Runs an action statement; returns the rows it changed.
    qint64 execute(const SqlStatement& statement);
    // Translates and runs one as the user wrote it; a syntax error names that text.
    qint64 execute(const QString& sql);

    void registerRecordset(const std::weak_ptr<Recordset>& recordset);
    // Makes every open recordset read the file again at its next visit.
    void refreshRecordsets();

private:
    void ensureSystemTables();
    bool hasSystemTable(const QString& name) const;
    void checkWritable() const;
    void invalidate() const;

    QString m_name;
    std::unique_ptr<Connection> m_connection;
    std::vector<std::weak_ptr<Recordset>> m_recordsets;
    mutable qint64 m_schemaVersion = -1;
    mutable QHash<QString, std::vector<ColumnInfo>> m_columns; // by lower-case table name
};

} // namespace Dao
