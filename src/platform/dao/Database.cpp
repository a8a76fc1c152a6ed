#include "platform/dao/Database.h"

#include "platform/dao/Connection.h"
#include "platform/dao/DatabaseCore.h"

#include <algorithm>

using namespace Qt::Literals::StringLiterals;

namespace Dao {

Database::Database(std::unique_ptr<Connection> connection)
{
    const QString path = connection->path();
    m_core = std::make_shared<DatabaseCore>(std::move(connection), path);
}

Database::~Database()
{
    if (m_core)
        m_core->close();
}

std::shared_ptr<DatabaseCore> Database::core() const
{
    if (!m_core->isOpen())
        throw DaoError::make(DaoError::ObjectClosed);
    return m_core;
}

void Database::attachCollections()
{
    const std::weak_ptr<DatabaseCore> weak = m_core;
    auto lockCore = [weak] {
        const auto locked = weak.lock();
        if (!locked || !locked->isOpen())
            throw DaoError::make(DaoError::ObjectClosed);
        return locked;
    };

    m_tableDefs.attach(
        [lockCore] {
            const auto core = lockCore();
            std::vector<std::shared_ptr<TableDef>> tables;
            for (const QString& name : core->tableNames()) {
                auto table = TableDef::Create(name);
                table->attach(core);
                tables.push_back(table);
            }
            return tables;
        },
        [lockCore](const std::shared_ptr<TableDef>& table) {
            if (table->m_inFile)
                throw DaoError::make(DaoError::AlreadyAppended);
            const auto core = lockCore();
            // Columns go in their OrdinalPosition order; unset positions keep the order
            // in which the fields were appended.
            auto fields = table->m_fields.items();
            std::vector<std::pair<int, std::shared_ptr<Field>>> ordered;
            for (size_t i = 0; i < fields.size(); ++i) {
                const int ordinal
                    = fields[i]->m_ordinal >= 0 ? fields[i]->m_ordinal : static_cast<int>(i);
                ordered.emplace_back(ordinal, fields[i]);
            }
            std::stable_sort(ordered.begin(), ordered.end(),
                [](const auto& a, const auto& b) { return a.first < b.first; });
            std::vector<DatabaseCore::ColumnInfo> columns;
            for (const auto& [ordinal, field] : ordered) {
                columns.push_back(
                    { field->m_name, field->m_type, field->m_required, field->m_allowZeroLength });
            }
            std::vector<DatabaseCore::IndexInfo> indexes;
            const auto tableIndexes = table->m_indexes.items();
            for (const auto& index : tableIndexes) {
                DatabaseCore::IndexInfo info { index->Name(), {}, index->Primary(), index->Unique(),
                    index->Required(), index->IgnoreNulls() };
                for (const auto& field : index->Fields().items())
                    info.fields.append(field->Name());
                indexes.push_back(info);
            }
            core->connection().write([&] {
                core->createTable(table->m_name, columns, indexes);
                for (const auto& [ordinal, field] : ordered)
                    field->attachToTable(core, table->m_name);
                table->attach(core);
            });
            for (const auto& index : tableIndexes)
                index->fix();
        },
        [lockCore](
            const std::shared_ptr<TableDef>& table) { lockCore()->dropTable(table->Name()); });

    m_queryDefs.attach(
        [lockCore] {
            const auto core = lockCore();
            std::vector<std::shared_ptr<QueryDef>> queries;
            for (const auto& [name, sql] : core->queryDefs())
                queries.push_back(std::shared_ptr<QueryDef>(new QueryDef(core, name, true)));
            return queries;
        },
        [lockCore](const std::shared_ptr<QueryDef>& query) {
            if (query->m_stored)
                throw DaoError::make(DaoError::AlreadyAppended);
            lockCore()->createQueryDef(query->m_name, query->m_sql);
            query->m_stored = true;
            query->m_sql.clear();
        },
        [lockCore](
            const std::shared_ptr<QueryDef>& query) { lockCore()->deleteQueryDef(query->Name()); });

    Property::Attach(m_properties, m_core, [] { return std::pair(QString(), QString()); });
}

QString Database::Name() const
{
    return m_core->name();
}

bool Database::IsOpen() const
{
    return m_core->isOpen();
}

bool Database::Updatable() const
{
    return !core()->isReadOnly();
}

bool Database::Exclusive() const
{
    return core()->connection().isExclusive();
}

std::shared_ptr<TableDef> Database::CreateTableDef(const QString& name)
{
    core();
    return TableDef::Create(name);
}

std::shared_ptr<QueryDef> Database::CreateQueryDef(const QString& name, const QString& sql)
{
    const auto database = core();
    std::shared_ptr<QueryDef> query(new QueryDef(database, name, false));
    if (!sql.isEmpty())
        query->SetSQL(sql);
    if (!name.isEmpty()) {
        if (database->queryDefSql(name))
            throw DaoError::make(DaoError::ObjectExists, name);
        m_queryDefs.Append(query);
    }
    return query;
}

std::shared_ptr<Property> Database::CreateProperty(
    const QString& name, DataType type, const Runtime::Variant& value)
{
    return Property::Create(name, type, value);
}

std::shared_ptr<Recordset> Database::OpenRecordset(const QString& source, RecordsetType type)
{
    const auto database = core();
    if (const auto table = database->tableName(source)) {
        if (type == RecordsetType::Default || type == RecordsetType::Table)
            return Recordset::OpenTable(database, *table);
        return Recordset::OpenQuery(database, u"SELECT * FROM ["_s + *table + u"]"_s, type);
    }
    if (type == RecordsetType::Table)
        throw DaoError::make(DaoError::InvalidOperation);
    const RecordsetType queryType = type == RecordsetType::Default ? RecordsetType::Dynaset : type;
    if (const auto stored = database->queryDefSql(source))
        return Recordset::OpenQuery(database, *stored, queryType);
    return Recordset::OpenQuery(database, source, queryType);
}

void Database::Execute(const QString& sql)
{
    m_recordsAffected = core()->execute(sql);
}

void Database::refresh()
{
    if (m_core->isOpen())
        m_core->refreshRecordsets();
}

void Database::beginTransaction()
{
    core()->connection().begin();
}

void Database::commitTransaction()
{
    core()->connection().commit();
}

void Database::rollbackTransaction()
{
    core()->connection().rollback();
}

void Database::Close()
{
    m_core->close();
}

} // namespace Dao
