#include "platform/dao/DatabaseCore.h"

#include "platform/dao/DaoError.h"
#include "platform/dao/Recordset.h"
#include "platform/dao/SchemaSql.h"
#include "platform/dao/ValueConversion.h"

#include <QRegularExpression>
#include <QSet>
#include <algorithm>

using namespace Qt::Literals::StringLiterals;

namespace Dao {

namespace {

const QString PropertiesTable = u"QSysProperties"_s;
const QString QueriesTable = u"QSysQueries"_s;
const QString IndexesTable = u"QSysIndexes"_s;
const QString RebuildTable = u"QSysRebuild"_s;
const QString CountersTable = u"QSysCounters"_s;

bool IsHiddenTable(const QString& name)
{
    return name.startsWith(u"QSys"_s, Qt::CaseInsensitive)
        || name.startsWith(u"sqlite_"_s, Qt::CaseInsensitive);
}

QString Unquote(const QString& name)
{
    if (name.size() >= 2
        && ((name.front() == u'"' && name.back() == u'"')
            || (name.front() == u'`' && name.back() == u'`'))) {
        const QChar quote = name.front();
        return name.mid(1, name.size() - 2).replace(QString(2, quote), QString(quote));
    }
    if (name.size() >= 2 && name.front() == u'[' && name.back() == u']')
        return name.mid(1, name.size() - 2);
    return name;
}

// The columns that refuse zero-length text: each carries CHECK ("name" <> '') in the
// table's definition, as ColumnDefinition writes it.
QSet<QString> ColumnsRefusingZeroLength(const QString& tableSql)
{
    static const QRegularExpression check(
        u"CHECK\\s*\\(\\s*(\"(?:[^\"]|\"\")*\"|\\[[^\\]]*\\]|`[^`]*`|[A-Za-z_][A-Za-z0-9_]*)"
        u"\\s*<>\\s*''\\s*\\)"_s,
        QRegularExpression::CaseInsensitiveOption);
    QSet<QString> names;
    auto matches = check.globalMatch(tableSql);
    while (matches.hasNext())
        names.insert(Unquote(matches.next().captured(1)).toLower());
    return names;
}

QString IndexSqliteName(const QString& table, const QString& index)
{
    return table + u'.' + index;
}

} // namespace

DatabaseCore::DatabaseCore(std::unique_ptr<Connection> connection, const QString& name)
    : m_name(name)
    , m_connection(std::move(connection))
{ }

DatabaseCore::~DatabaseCore()
{
    close();
}

void DatabaseCore::close()
{
    if (!m_connection)
        return;
    for (const auto& weak : m_recordsets) {
        if (const auto recordset = weak.lock())
            recordset->Close();
    }
    m_recordsets.clear();
    m_connection.reset();
    invalidate();
}

Connection& DatabaseCore::connection() const
{
    if (!m_connection)
        throw DaoError::make(DaoError::ObjectClosed);
    return *m_connection;
}

bool DatabaseCore::isReadOnly() const
{
    return connection().isReadOnly();
}

void DatabaseCore::checkWritable() const
{
    if (connection().isReadOnly())
        throw DaoError::make(DaoError::ReadOnly);
}

void DatabaseCore::invalidate() const
{
    m_schemaVersion = -1;
    m_columns.clear();
}

void DatabaseCore::registerRecordset(const std::weak_ptr<Recordset>& recordset)
{
    std::erase_if(m_recordsets, [](const auto& weak) { return weak.expired(); });
    m_recordsets.push_back(recordset);
}

void DatabaseCore::refreshRecordsets()
{
    for (const auto& weak : m_recordsets) {
        if (const auto recordset = weak.lock())
            recordset->refresh();
    }
}

QStringList DatabaseCore::tableNames() const
{
    QStringList names;
    Statement statement = connection().prepare(
        u"SELECT name FROM sqlite_master WHERE type = 'table' ORDER BY rowid"_s);
    while (statement.step()) {
        const QString name = statement.text(0);
        if (!IsHiddenTable(name))
            names.append(name);
    }
    return names;
}

std::optional<QString> DatabaseCore::tableName(const QString& name) const
{
    if (IsHiddenTable(name))
        return std::nullopt;
    Statement statement = connection().prepare(
        u"SELECT name FROM sqlite_master WHERE type = 'table' AND name = ?1 COLLATE NOCASE"_s);
    statement.bind(1, name);
    if (statement.step())
        return statement.text(0);
    return std::nullopt;
}

bool DatabaseCore::hasSystemTable(const QString& name) const
{
    Statement statement
        = connection().prepare(u"SELECT 1 FROM sqlite_master WHERE type = 'table' AND name = ?1"_s);
    statement.bind(1, name);
    return statement.step();
}

void DatabaseCore::ensureSystemTables()
{
    const Connection& database = connection();
    if (!hasSystemTable(PropertiesTable)) {
        database.execute(u"CREATE TABLE "_s + QuoteIdentifier(PropertiesTable)
            + u" (TableName TEXT NOT NULL COLLATE NOCASE, FieldName TEXT NOT NULL COLLATE "
              u"NOCASE, Name TEXT NOT NULL COLLATE NOCASE, Type INTEGER NOT NULL, Value, "
              u"PRIMARY KEY (TableName, FieldName, Name))"_s);
    }
    if (!hasSystemTable(QueriesTable)) {
        database.execute(u"CREATE TABLE "_s + QuoteIdentifier(QueriesTable)
            + u" (Name TEXT NOT NULL PRIMARY KEY COLLATE NOCASE, SQL TEXT NOT NULL)"_s);
    }
    if (!hasSystemTable(CountersTable)) {
        database.execute(u"CREATE TABLE "_s + QuoteIdentifier(CountersTable)
            + u" (TableName TEXT NOT NULL COLLATE NOCASE, FieldName TEXT NOT NULL COLLATE "
              u"NOCASE, LastValue INTEGER NOT NULL, PRIMARY KEY (TableName, FieldName))"_s);
    }
    if (!hasSystemTable(IndexesTable)) {
        database.execute(u"CREATE TABLE "_s + QuoteIdentifier(IndexesTable)
            + u" (IndexName TEXT NOT NULL PRIMARY KEY, IsPrimary INTEGER NOT NULL, "
              u"IsRequired INTEGER NOT NULL, IgnoreNulls INTEGER NOT NULL)"_s);
    }
}

std::vector<DatabaseCore::ColumnInfo> DatabaseCore::columns(const QString& table) const
{
    {
        Statement version = connection().prepare(u"PRAGMA schema_version"_s);
        const qint64 current = version.step() ? version.integer(0) : -1;
        if (current != m_schemaVersion) {
            m_columns.clear();
            m_schemaVersion = current;
        }
    }
    const QString key = table.toLower();
    if (const auto found = m_columns.constFind(key); found != m_columns.constEnd())
        return *found;
    const auto name = tableName(table);
    if (!name)
        return {};
    QSet<QString> refusing;
    {
        Statement definition = connection().prepare(
            u"SELECT sql FROM sqlite_master WHERE type = 'table' AND name = ?1"_s);
        definition.bind(1, *name);
        if (definition.step())
            refusing = ColumnsRefusingZeroLength(definition.text(0));
    }
    std::vector<ColumnInfo> result;
    Statement statement
        = connection().prepare(u"SELECT name, type, \"notnull\" FROM pragma_table_info(?1)"_s);
    statement.bind(1, *name);
    while (statement.step()) {
        ColumnInfo column;
        column.name = statement.text(0);
        column.type = ColumnTypeFromDeclared(statement.text(1));
        column.required = statement.integer(2) != 0;
        column.allowZeroLength
            = !IsTextType(column.type.type) || !refusing.contains(column.name.toLower());
        result.push_back(column);
    }
    m_columns.insert(key, result);
    return result;
}

std::optional<DatabaseCore::ColumnInfo> DatabaseCore::column(
    const QString& table, const QString& name) const
{
    for (const ColumnInfo& column : columns(table)) {
        if (column.name.compare(name, Qt::CaseInsensitive) == 0)
            return column;
    }
    return std::nullopt;
}

std::vector<DatabaseCore::IndexInfo> DatabaseCore::indexes(const QString& table) const
{
    const auto name = tableName(table);
    if (!name)
        return {};
    const bool haveMeta = hasSystemTable(IndexesTable);
    std::vector<IndexInfo> result;
    QStringList sqliteNames;
    {
        Statement list = connection().prepare(u"SELECT name FROM sqlite_master WHERE type = "
                                              u"'index' AND tbl_name = ?1 ORDER BY rowid"_s);
        list.bind(1, *name);
        while (list.step())
            sqliteNames.append(list.text(0));
    }
    for (const QString& sqliteName : sqliteNames) {
        IndexInfo index;
        const QString prefix = *name + u'.';
        index.name = sqliteName.startsWith(prefix, Qt::CaseInsensitive)
            ? sqliteName.mid(prefix.size())
            : sqliteName;
        bool expression = false;
        {
            Statement fields
                = connection().prepare(u"SELECT name FROM pragma_index_info(?1) ORDER BY seqno"_s);
            fields.bind(1, sqliteName);
            while (fields.step()) {
                if (fields.isNull(0))
                    expression = true;
                else
                    index.fields.append(fields.text(0));
            }
        }
        if (expression || index.fields.isEmpty())
            continue; // an index on expressions is none the engine knows
        {
            Statement kind = connection().prepare(
                u"SELECT \"unique\", origin FROM pragma_index_list(?1) WHERE name = ?2"_s);
            kind.bind(1, *name);
            kind.bind(2, sqliteName);
            if (kind.step()) {
                index.unique = kind.integer(0) != 0;
                index.primary = kind.text(1) == u"pk"_s;
            }
        }
        if (haveMeta) {
            Statement meta = connection().prepare(u"SELECT IsPrimary, IsRequired, IgnoreNulls "
                                                  u"FROM QSysIndexes WHERE IndexName = ?1"_s);
            meta.bind(1, sqliteName);
            if (meta.step()) {
                index.primary = index.primary || meta.integer(0) != 0;
                index.required = meta.integer(1) != 0;
                index.ignoreNulls = meta.integer(2) != 0;
            }
        }
        index.required = index.required || index.primary;
        result.push_back(index);
    }
    return result;
}

SqlSchemaLookup DatabaseCore::schemaLookup() const
{
    SqlSchemaLookup lookup;
    lookup.column
        = [this](const QString& table, const QString& name) -> std::optional<ColumnSchema> {
        const auto found = column(table, name);
        if (!found)
            return std::nullopt;
        return ColumnSchema { found->type, found->required, found->allowZeroLength };
    };
    lookup.nextCounter = [this](const QString& table, const QString& column) {
        return nextCounterSql(tableName(table).value_or(table), column);
    };
    lookup.columnNames = [this](const QString& table) {
        QStringList names;
        for (const ColumnInfo& column : columns(table))
            names.append(column.name);
        return names;
    };
    return lookup;
}

namespace {

QString CreateIndexSql(const QString& table, const DatabaseCore::IndexInfo& index)
{
    QStringList fields;
    for (const QString& field : index.fields)
        fields.append(QuoteIdentifier(field));
    return u"CREATE "_s + (index.unique || index.primary ? u"UNIQUE "_s : QString()) + u"INDEX "_s
        + QuoteIdentifier(IndexSqliteName(table, index.name)) + u" ON "_s + QuoteIdentifier(table)
        + u" ("_s + fields.join(u", "_s) + u")"_s;
}

QString TableDefinitionSql(
    const QString& table, const std::vector<DatabaseCore::ColumnInfo>& columns)
{
    QStringList definitions;
    for (const auto& column : columns) {
        definitions.append(
            ColumnDefinition(column.name, column.type, column.required, column.allowZeroLength));
    }
    return u"CREATE TABLE "_s + QuoteIdentifier(table) + u" ("_s + definitions.join(u", "_s)
        + u")"_s;
}

} // namespace

void DatabaseCore::createTable(const QString& table, const std::vector<ColumnInfo>& columns,
    const std::vector<IndexInfo>& indexes)
{
    checkWritable();
    if (table.trimmed().isEmpty() || IsHiddenTable(table))
        throw DaoError::make(DaoError::InvalidArgument);
    if (tableName(table))
        throw DaoError::make(DaoError::TableExists, table);
    if (columns.empty())
        throw DaoError::make(DaoError::NoFieldsDefined);
    QSet<QString> names;
    for (const ColumnInfo& column : columns) {
        if (column.name.trimmed().isEmpty())
            throw DaoError::make(DaoError::SyntaxErrorInFieldDefinition);
        if (names.contains(column.name.toLower()))
            throw DaoError::make(DaoError::FieldDefinedTwice);
        names.insert(column.name.toLower());
    }
    int primaries = 0;
    for (const IndexInfo& index : indexes) {
        primaries += index.primary ? 1 : 0;
        if (index.fields.isEmpty())
            throw DaoError::make(DaoError::NoFieldsDefined);
        for (const QString& field : index.fields) {
            if (!names.contains(field.toLower()))
                throw DaoError::make(DaoError::ItemNotFound);
        }
    }
    if (primaries > 1)
        throw DaoError::make(DaoError::PrimaryKeyExists);
    connection().write([&] {
        connection().execute(TableDefinitionSql(table, columns));
        for (const IndexInfo& index : indexes)
            createIndex(table, index);
        // A counter's largest number is kept from the start, so numbering reads it inside
        // the very statement that inserts.
        if (std::any_of(columns.cbegin(), columns.cend(),
                [](const ColumnInfo& column) { return column.type.autoIncrement; }))
            ensureSystemTables();
    });
    invalidate();
}

void DatabaseCore::addColumn(const QString& table, const ColumnInfo& column)
{
    checkWritable();
    const auto name = tableName(table);
    if (!name)
        throw DaoError::make(DaoError::ObjectNotFound, table);
    if (column.name.trimmed().isEmpty())
        throw DaoError::make(DaoError::SyntaxErrorInFieldDefinition);
    if (this->column(*name, column.name))
        throw DaoError::make(DaoError::FieldExists, column.name);
    if (column.required) {
        // SQLite adds a NOT NULL column only with a default; writing the table again adds
        // it the engine's way (and fails with 3314 when rows are there to leave empty).
        std::vector<ColumnInfo> all = columns(*name);
        all.push_back(column);
        rebuildTable(*name, all);
        return;
    }
    connection().execute(u"ALTER TABLE "_s + QuoteIdentifier(*name) + u" ADD COLUMN "_s
        + ColumnDefinition(column.name, column.type, false, column.allowZeroLength));
    invalidate();
}

void DatabaseCore::dropColumn(const QString& table, const QString& name)
{
    checkWritable();
    const auto stored = tableName(table);
    if (!stored)
        throw DaoError::make(DaoError::ObjectNotFound, table);
    const auto existing = column(*stored, name);
    if (!existing)
        throw DaoError::make(DaoError::ItemNotFound);
    for (const IndexInfo& index : indexes(*stored)) {
        if (index.fields.contains(existing->name, Qt::CaseInsensitive))
            throw DaoError::make(DaoError::FieldInIndex);
    }
    connection().write([&] {
        connection().execute(u"ALTER TABLE "_s + QuoteIdentifier(*stored) + u" DROP COLUMN "_s
            + QuoteIdentifier(existing->name));
        for (const QString& system : { PropertiesTable, CountersTable }) {
            if (!hasSystemTable(system))
                continue;
            Statement remove = connection().prepare(
                u"DELETE FROM "_s + system + u" WHERE TableName = ?1 AND FieldName = ?2"_s);
            remove.bind(1, *stored);
            remove.bind(2, existing->name);
            remove.step();
        }
    });
    invalidate();
}

void DatabaseCore::renameColumn(const QString& table, const QString& from, const QString& to)
{
    checkWritable();
    const auto stored = tableName(table);
    if (!stored)
        throw DaoError::make(DaoError::ObjectNotFound, table);
    const auto existing = column(*stored, from);
    if (!existing)
        throw DaoError::make(DaoError::ItemNotFound);
    if (to.trimmed().isEmpty())
        throw DaoError::make(DaoError::InvalidArgument);
    if (existing->name == to)
        return;
    if (to.compare(existing->name, Qt::CaseInsensitive) != 0 && column(*stored, to))
        throw DaoError::make(DaoError::FieldExists, to);
    connection().write([&] {
        connection().execute(u"ALTER TABLE "_s + QuoteIdentifier(*stored) + u" RENAME COLUMN "_s
            + QuoteIdentifier(existing->name) + u" TO "_s + QuoteIdentifier(to));
        // The field's properties and counter follow it to its new name.
        for (const QString& system : { PropertiesTable, CountersTable }) {
            if (!hasSystemTable(system))
                continue;
            Statement move = connection().prepare(u"UPDATE "_s + system
                + u" SET FieldName = ?3 WHERE TableName = ?1 AND FieldName = ?2"_s);
            move.bind(1, *stored);
            move.bind(2, existing->name);
            move.bind(3, to);
            move.step();
        }
    });
    invalidate();
}

void DatabaseCore::rebuildTable(const QString& table, const std::vector<ColumnInfo>& newColumns)
{
    checkWritable();
    const auto stored = tableName(table);
    if (!stored)
        throw DaoError::make(DaoError::ObjectNotFound, table);
    // Only columns that exist now are copied; a new one starts empty.
    QStringList copied;
    for (const ColumnInfo& column : newColumns) {
        if (this->column(*stored, column.name))
            copied.append(QuoteIdentifier(column.name));
    }
    connection().write([&] {
        QStringList indexSql;
        {
            Statement indexes = connection().prepare(u"SELECT sql FROM sqlite_master WHERE "
                                                     u"type = 'index' AND tbl_name = ?1 AND "
                                                     u"sql IS NOT NULL ORDER BY rowid"_s);
            indexes.bind(1, *stored);
            while (indexes.step())
                indexSql.append(indexes.text(0));
        }
        connection().execute(TableDefinitionSql(RebuildTable, newColumns));
        connection().execute(u"INSERT INTO "_s + QuoteIdentifier(RebuildTable) + u" ("_s
            + copied.join(u", "_s) + u") SELECT "_s + copied.join(u", "_s) + u" FROM "_s
            + QuoteIdentifier(*stored));
        connection().execute(u"DROP TABLE "_s + QuoteIdentifier(*stored));
        connection().execute(u"ALTER TABLE "_s + QuoteIdentifier(RebuildTable) + u" RENAME TO "_s
            + QuoteIdentifier(*stored));
        for (const QString& sql : std::as_const(indexSql))
            connection().execute(sql);
    });
    invalidate();
}

void DatabaseCore::createIndex(const QString& table, const IndexInfo& index)
{
    checkWritable();
    const auto stored = tableName(table);
    if (!stored)
        throw DaoError::make(DaoError::ObjectNotFound, table);
    if (index.name.trimmed().isEmpty())
        throw DaoError::make(DaoError::InvalidArgument);
    if (index.fields.isEmpty())
        throw DaoError::make(DaoError::NoFieldsDefined);
    for (const QString& field : index.fields) {
        if (!column(*stored, field))
            throw DaoError::make(DaoError::ItemNotFound);
    }
    for (const IndexInfo& existing : indexes(*stored)) {
        if (existing.name.compare(index.name, Qt::CaseInsensitive) == 0)
            throw DaoError::make(DaoError::IndexExists);
        if (existing.primary && index.primary)
            throw DaoError::make(DaoError::PrimaryKeyExists);
    }
    connection().write([&] {
        connection().execute(CreateIndexSql(*stored, index));
        if (index.primary || index.required || index.ignoreNulls) {
            ensureSystemTables();
            Statement meta = connection().prepare(
                u"INSERT OR REPLACE INTO QSysIndexes VALUES (?1, ?2, ?3, ?4)"_s);
            meta.bind(1, IndexSqliteName(*stored, index.name));
            meta.bind(2, qint64(index.primary ? 1 : 0));
            meta.bind(3, qint64(index.required || index.primary ? 1 : 0));
            meta.bind(4, qint64(index.ignoreNulls ? 1 : 0));
            meta.step();
        }
    });
}

void DatabaseCore::dropIndex(const QString& table, const QString& name)
{
    checkWritable();
    const auto stored = tableName(table);
    if (!stored)
        throw DaoError::make(DaoError::ObjectNotFound, table);
    QString sqliteName;
    {
        Statement list = connection().prepare(
            u"SELECT name FROM sqlite_master WHERE type = 'index' AND tbl_name = ?1"_s);
        list.bind(1, *stored);
        while (list.step()) {
            const QString candidate = list.text(0);
            if (candidate.compare(IndexSqliteName(*stored, name), Qt::CaseInsensitive) == 0
                || candidate.compare(name, Qt::CaseInsensitive) == 0)
                sqliteName = candidate;
        }
    }
    if (sqliteName.isEmpty())
        throw DaoError::make(DaoError::ItemNotFound);
    connection().write([&] {
        connection().execute(u"DROP INDEX "_s + QuoteIdentifier(sqliteName));
        if (hasSystemTable(IndexesTable)) {
            Statement meta
                = connection().prepare(u"DELETE FROM QSysIndexes WHERE IndexName = ?1"_s);
            meta.bind(1, sqliteName);
            meta.step();
        }
    });
}

void DatabaseCore::dropTable(const QString& table)
{
    checkWritable();
    const auto stored = tableName(table);
    if (!stored)
        throw DaoError::make(DaoError::ObjectNotFound, table);
    QStringList indexNames;
    {
        Statement list = connection().prepare(
            u"SELECT name FROM sqlite_master WHERE type = 'index' AND tbl_name = ?1"_s);
        list.bind(1, *stored);
        while (list.step())
            indexNames.append(list.text(0));
    }
    connection().write([&] {
        connection().execute(u"DROP TABLE "_s + QuoteIdentifier(*stored));
        // A table made again under the same name starts without properties, counting from 1.
        for (const QString& system : { PropertiesTable, CountersTable }) {
            if (!hasSystemTable(system))
                continue;
            Statement remove
                = connection().prepare(u"DELETE FROM "_s + system + u" WHERE TableName = ?1"_s);
            remove.bind(1, *stored);
            remove.step();
        }
        if (hasSystemTable(IndexesTable)) {
            for (const QString& index : std::as_const(indexNames)) {
                Statement meta
                    = connection().prepare(u"DELETE FROM QSysIndexes WHERE IndexName = ?1"_s);
                meta.bind(1, index);
                meta.step();
            }
        }
    });
    invalidate();
}

std::vector<DatabaseCore::StoredProperty> DatabaseCore::properties(
    const QString& table, const QString& field) const
{
    std::vector<StoredProperty> result;
    if (!hasSystemTable(PropertiesTable))
        return result;
    Statement statement = connection().prepare(u"SELECT Name, Type, Value FROM QSysProperties "
                                               u"WHERE TableName = ?1 AND FieldName = ?2 "
                                               u"ORDER BY rowid"_s);
    statement.bind(1, table);
    statement.bind(2, field);
    while (statement.step()) {
        StoredProperty property;
        property.name = statement.text(0);
        property.type = static_cast<DataType>(statement.integer(1));
        property.value = FromStorage(statement.value(2), property.type);
        result.push_back(property);
    }
    return result;
}

std::optional<DatabaseCore::StoredProperty> DatabaseCore::property(
    const QString& table, const QString& field, const QString& name) const
{
    if (!hasSystemTable(PropertiesTable))
        return std::nullopt;
    Statement statement = connection().prepare(u"SELECT Name, Type, Value FROM QSysProperties "
                                               u"WHERE TableName = ?1 AND FieldName = ?2 AND "
                                               u"Name = ?3"_s);
    statement.bind(1, table);
    statement.bind(2, field);
    statement.bind(3, name);
    if (!statement.step())
        return std::nullopt;
    StoredProperty property;
    property.name = statement.text(0);
    property.type = static_cast<DataType>(statement.integer(1));
    property.value = FromStorage(statement.value(2), property.type);
    return property;
}

Runtime::Variant DatabaseCore::PropertyValue(DataType type, const Runtime::Variant& value)
{
    if (value.isNull() || value.isEmpty())
        return Runtime::Variant::null();
    const Runtime::Variant converted
        = ConvertForColumn(value, ColumnType { type, 0, false }, ConversionMode::Assignment);
    if (converted.isNull())
        throw DaoError::make(DaoError::ConversionError);
    return converted;
}

void DatabaseCore::insertProperty(
    const QString& table, const QString& field, const StoredProperty& property)
{
    checkWritable();
    if (property.name.trimmed().isEmpty())
        throw DaoError::make(DaoError::InvalidArgument);
    const Runtime::Variant value = PropertyValue(property.type, property.value);
    connection().write([&] {
        ensureSystemTables();
        if (this->property(table, field, property.name))
            throw DaoError::make(DaoError::NameExistsInCollection);
        Statement insert
            = connection().prepare(u"INSERT INTO QSysProperties VALUES (?1, ?2, ?3, ?4, ?5)"_s);
        insert.bind(1, table);
        insert.bind(2, field);
        insert.bind(3, property.name);
        insert.bind(4, qint64(static_cast<int>(property.type)));
        insert.bind(5, value);
        insert.step();
    });
}

void DatabaseCore::setPropertyValue(
    const QString& table, const QString& field, const QString& name, const Runtime::Variant& value)
{
    checkWritable();
    const auto existing = property(table, field, name);
    if (!existing)
        throw DaoError::make(DaoError::PropertyNotFound);
    const Runtime::Variant converted = PropertyValue(existing->type, value);
    connection().write([&] {
        Statement update
            = connection().prepare(u"UPDATE QSysProperties SET Value = ?4 WHERE "
                                   u"TableName = ?1 AND FieldName = ?2 AND Name = ?3"_s);
        update.bind(1, table);
        update.bind(2, field);
        update.bind(3, name);
        update.bind(4, converted);
        update.step();
    });
}

void DatabaseCore::deleteProperty(const QString& table, const QString& field, const QString& name)
{
    checkWritable();
    if (!property(table, field, name))
        throw DaoError::make(DaoError::ItemNotFound);
    connection().write([&] {
        Statement remove = connection().prepare(u"DELETE FROM QSysProperties WHERE TableName = "
                                                u"?1 AND FieldName = ?2 AND Name = ?3"_s);
        remove.bind(1, table);
        remove.bind(2, field);
        remove.bind(3, name);
        remove.step();
    });
}

std::vector<std::pair<QString, QString>> DatabaseCore::queryDefs() const
{
    std::vector<std::pair<QString, QString>> result;
    if (!hasSystemTable(QueriesTable))
        return result;
    Statement statement
        = connection().prepare(u"SELECT Name, SQL FROM QSysQueries ORDER BY rowid"_s);
    while (statement.step())
        result.emplace_back(statement.text(0), statement.text(1));
    return result;
}

std::optional<QString> DatabaseCore::queryDefSql(const QString& name) const
{
    if (!hasSystemTable(QueriesTable))
        return std::nullopt;
    Statement statement = connection().prepare(u"SELECT SQL FROM QSysQueries WHERE Name = ?1"_s);
    statement.bind(1, name);
    if (statement.step())
        return statement.text(0);
    return std::nullopt;
}

void DatabaseCore::createQueryDef(const QString& name, const QString& sql)
{
    checkWritable();
    if (name.trimmed().isEmpty())
        throw DaoError::make(DaoError::InvalidArgument);
    connection().write([&] {
        ensureSystemTables();
        if (queryDefSql(name))
            throw DaoError::make(DaoError::ObjectExists, name);
        Statement insert = connection().prepare(u"INSERT INTO QSysQueries VALUES (?1, ?2)"_s);
        insert.bind(1, name);
        insert.bind(2, sql);
        insert.step();
    });
}

void DatabaseCore::setQueryDefSql(const QString& name, const QString& sql)
{
    checkWritable();
    if (!queryDefSql(name))
        throw DaoError::make(DaoError::ObjectNotFound, name);
    connection().write([&] {
        Statement update
            = connection().prepare(u"UPDATE QSysQueries SET SQL = ?2 WHERE Name = ?1"_s);
        update.bind(1, name);
        update.bind(2, sql);
        update.step();
    });
}

void DatabaseCore::renameQueryDef(const QString& from, const QString& to)
{
    checkWritable();
    if (!queryDefSql(from))
        throw DaoError::make(DaoError::ObjectNotFound, from);
    if (to.trimmed().isEmpty())
        throw DaoError::make(DaoError::InvalidArgument);
    if (from.compare(to, Qt::CaseInsensitive) != 0 && queryDefSql(to))
        throw DaoError::make(DaoError::ObjectExists, to);
    connection().write([&] {
        Statement update
            = connection().prepare(u"UPDATE QSysQueries SET Name = ?2 WHERE Name = ?1"_s);
        update.bind(1, from);
        update.bind(2, to);
        update.step();
    });
}

void DatabaseCore::deleteQueryDef(const QString& name)
{
    checkWritable();
    if (!queryDefSql(name))
        throw DaoError::make(DaoError::ItemNotFound);
    connection().write([&] {
        Statement remove = connection().prepare(u"DELETE FROM QSysQueries WHERE Name = ?1"_s);
        remove.bind(1, name);
        remove.step();
    });
}

SqlStatement DatabaseCore::translate(const QString& sql) const
{
    return TranslateSql(sql, schemaLookup());
}

QString DatabaseCore::nextCounterSql(const QString& table, const QString& column) const
{
    const QString largest = u"COALESCE(MAX("_s + QuoteIdentifier(column) + u"), 0)"_s;
    // A file from before numbers were kept has no QSysCounters until its first delete, and
    // until then nothing was freed: the largest in the table is the largest ever given.
    if (!hasSystemTable(CountersTable))
        return u"(SELECT "_s + largest + u" + 1 FROM "_s + QuoteIdentifier(table) + u")"_s;
    // The kept number is read by the INSERT itself, so no other copy of the program can
    // delete and keep a larger one between reading and numbering.
    return u"(SELECT MAX("_s + largest
        + u", COALESCE((SELECT LastValue FROM QSysCounters WHERE TableName = "_s
        + QuoteString(table) + u" AND FieldName = "_s + QuoteString(column) + u"), 0)) + 1 FROM "_s
        + QuoteIdentifier(table) + u")"_s;
}

void DatabaseCore::keepCounters(const QString& table)
{
    const auto stored = tableName(table);
    if (!stored)
        return;
    for (const ColumnInfo& column : columns(*stored)) {
        if (!column.type.autoIncrement)
            continue;
        ensureSystemTables();
        // The WHERE also tells SQLite's parser that ON CONFLICT belongs to the INSERT.
        Statement keep = connection().prepare(
            u"INSERT INTO QSysCounters SELECT ?1, ?2, Largest FROM (SELECT MAX("_s
            + QuoteIdentifier(column.name) + u") AS Largest FROM "_s + QuoteIdentifier(*stored)
            + u") WHERE Largest IS NOT NULL ON CONFLICT (TableName, FieldName) "
              u"DO UPDATE SET LastValue = MAX(LastValue, excluded.LastValue)"_s);
        keep.bind(1, *stored);
        keep.bind(2, column.name);
        keep.step();
    }
}

qint64 DatabaseCore::execute(const QString& sql)
{
    const SqlStatement statement = translate(sql);
    try {
        return execute(statement);
    } catch (const DaoError& error) {
        throw error.naming(sql);
    }
}

qint64 DatabaseCore::execute(const SqlStatement& statement)
{
    checkWritable();
    switch (statement.kind) {
    case SqlStatement::Kind::Select:
        throw DaoError::make(DaoError::CannotExecuteSelect);
    case SqlStatement::Kind::DropColumn:
        dropColumn(statement.table, statement.column);
        return 0;
    case SqlStatement::Kind::DropTable:
        dropTable(statement.table);
        return 0;
    default:
        break;
    }
    qint64 affected = 0;
    connection().write([&] {
        if (statement.kind == SqlStatement::Kind::Delete)
            keepCounters(statement.table);
        connection().execute(statement.sql);
        affected = connection().changes();
    });
    if (statement.kind == SqlStatement::Kind::AddColumn
        || statement.kind == SqlStatement::Kind::CreateTable) {
        invalidate();
        return 0;
    }
    return affected;
}

} // namespace Dao
