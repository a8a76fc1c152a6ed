#include "platform/dao/TableDef.h"

#include "platform/dao/DatabaseCore.h"
#include "platform/dao/Recordset.h"
#include "platform/dao/SchemaSql.h"

using namespace Qt::Literals::StringLiterals;

namespace Dao {

TableDef::TableDef(const QString& name)
    : m_name(name)
{ }

std::shared_ptr<TableDef> TableDef::Create(const QString& name)
{
    return std::shared_ptr<TableDef>(new TableDef(name));
}

void TableDef::SetName(const QString& name)
{
    if (m_inFile)
        throw DaoError::make(DaoError::InvalidOperation);
    m_name = name;
}

std::shared_ptr<DatabaseCore> TableDef::core() const
{
    const auto core = m_core.lock();
    if (!core || !core->isOpen())
        throw DaoError::make(DaoError::ObjectClosed);
    return core;
}

std::shared_ptr<Field> TableDef::CreateField(const QString& name, DataType type, int size)
{
    return Field::Create(name, type, size);
}

std::shared_ptr<Dao::Index> TableDef::CreateIndex(const QString& name)
{
    return Dao::Index::Create(name);
}

std::shared_ptr<Property> TableDef::CreateProperty(
    const QString& name, DataType type, const Runtime::Variant& value)
{
    return Property::Create(name, type, value);
}

void TableDef::attach(const std::shared_ptr<DatabaseCore>& core)
{
    m_inFile = true;
    m_core = core;
    const std::weak_ptr<DatabaseCore> weakCore = core;
    const std::weak_ptr<TableDef> weakSelf = weak_from_this();
    auto lockCore = [weakCore] {
        const auto locked = weakCore.lock();
        if (!locked || !locked->isOpen())
            throw DaoError::make(DaoError::ObjectClosed);
        return locked;
    };
    auto tableName = [weakSelf] {
        const auto self = weakSelf.lock();
        return self ? self->m_name : QString();
    };

    m_fields.attach(
        [lockCore, tableName] {
            const auto database = lockCore();
            const QString table = tableName();
            std::vector<std::shared_ptr<Field>> fields;
            for (const auto& column : database->columns(table))
                fields.push_back(Field::ForTable(database, table, column.name));
            return fields;
        },
        [lockCore, tableName](const std::shared_ptr<Field>& field) {
            if (field->m_kind != Field::Kind::Detached)
                throw DaoError::make(DaoError::AlreadyAppended);
            const auto database = lockCore();
            const QString table = tableName();
            database->connection().write([&] {
                database->addColumn(table,
                    { field->m_name, field->m_type, field->m_required, field->m_allowZeroLength });
                field->attachToTable(database, table);
            });
        },
        [lockCore, tableName](const std::shared_ptr<Field>& field) {
            lockCore()->dropColumn(tableName(), field->Name());
        });

    m_indexes.attach(
        [lockCore, tableName] {
            std::vector<std::shared_ptr<Dao::Index>> indexes;
            for (const auto& info : lockCore()->indexes(tableName())) {
                auto index = Dao::Index::Create(info.name);
                index->m_primary = info.primary;
                index->m_unique = info.unique;
                index->m_required = info.required;
                index->m_ignoreNulls = info.ignoreNulls;
                for (const QString& field : info.fields)
                    index->m_fields.Append(Field::Create(field, DataType::Text, 0));
                index->fix();
                indexes.push_back(index);
            }
            return indexes;
        },
        [lockCore, tableName](const std::shared_ptr<Dao::Index>& index) {
            if (index->m_inFile)
                throw DaoError::make(DaoError::AlreadyAppended);
            DatabaseCore::IndexInfo info { index->m_name, {}, index->m_primary, index->m_unique,
                index->m_required, index->m_ignoreNulls };
            for (const auto& field : index->m_fields.items())
                info.fields.append(field->Name());
            lockCore()->createIndex(tableName(), info);
            index->fix();
        },
        [lockCore, tableName](const std::shared_ptr<Dao::Index>& index) {
            lockCore()->dropIndex(tableName(), index->Name());
        });

    Property::Attach(m_properties, core, [tableName] { return std::pair(tableName(), QString()); });
}

std::shared_ptr<Recordset> TableDef::OpenRecordset()
{
    if (!m_inFile)
        throw DaoError::make(DaoError::InvalidOperation);
    return Recordset::OpenTable(core(), m_name);
}

qint64 TableDef::RecordCount() const
{
    if (!m_inFile)
        return 0;
    Statement count
        = core()->connection().prepareOnce(u"SELECT count(*) FROM "_s + QuoteIdentifier(m_name));
    return count.step() ? count.integer(0) : 0;
}

bool TableDef::Updatable() const
{
    return !m_inFile || !core()->isReadOnly();
}

} // namespace Dao
