#pragma once

#include "platform/dao/Collection.h"
#include "platform/dao/ColumnType.h"
#include "platform/dao/Field.h"
#include "platform/dao/Index.h"
#include "platform/dao/Property.h"

#include <QString>
#include <memory>

namespace Dao {

class DatabaseCore;
class Recordset;

// A table's definition. Made with Database::CreateTableDef, given fields and indexes, and
// written to the file when appended to TableDefs; from then on its Fields, Indexes and
// Properties are the file's, and appending or deleting changes the file at once.
class TableDef : public std::enable_shared_from_this<TableDef>
{
public:
    static std::shared_ptr<TableDef> Create(const QString& name);

    QString Name() const { return m_name; }
    void SetName(const QString& name); // before appending only (3219 after)

    Collection<Field>& Fields() { return m_fields; }
    std::shared_ptr<Field> Fields(const QString& name) const { return m_fields.Item(name); }
    std::shared_ptr<Field> Fields(int index) const { return m_fields.Item(index); }
    Collection<Dao::Index>& Indexes() { return m_indexes; }
    Collection<Property>& Properties() { return m_properties; }

    std::shared_ptr<Field> CreateField(
        const QString& name = {}, DataType type = DataType::Text, int size = 0);
    std::shared_ptr<Dao::Index> CreateIndex(const QString& name = {});
    std::shared_ptr<Property> CreateProperty(
        const QString& name, DataType type, const Runtime::Variant& value);

    // A table-type recordset on this table (3219 before it is appended).
    std::shared_ptr<Recordset> OpenRecordset();
    qint64 RecordCount() const;
    bool Updatable() const;
    bool IsInFile() const { return m_inFile; }

private:
    friend class Database;

    explicit TableDef(const QString& name);
    // The table exists in the file now (written by Database, or read from the file).
    void attach(const std::shared_ptr<DatabaseCore>& core);
    std::shared_ptr<DatabaseCore> core() const;

    QString m_name;
    bool m_inFile = false;
    std::weak_ptr<DatabaseCore> m_core;
    Collection<Field> m_fields;
    Collection<Dao::Index> m_indexes;
    Collection<Property> m_properties { DaoError::PropertyNotFound };
};

} // namespace Dao
