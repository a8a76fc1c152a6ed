#pragma once

#include "platform/dao/Collection.h"
#include "platform/dao/Property.h"
#include "platform/dao/QueryDef.h"
#include "platform/dao/Recordset.h"
#include "platform/dao/TableDef.h"

#include <QString>
#include <memory>

namespace Dao {

class Connection;
class DatabaseCore;

// One open database file. Made by Workspace::CreateDatabase and Workspace::OpenDatabase.
class Database : public std::enable_shared_from_this<Database>
{
public:
    ~Database();
    Database(const Database&) = delete;
    Database& operator=(const Database&) = delete;

    // The file's path as it was opened.
    QString Name() const;
    bool IsOpen() const;
    bool Updatable() const;
    bool Exclusive() const;

    Collection<TableDef>& TableDefs() { return m_tableDefs; }
    std::shared_ptr<TableDef> TableDefs(const QString& name) { return m_tableDefs.Item(name); }
    Collection<QueryDef>& QueryDefs() { return m_queryDefs; }
    std::shared_ptr<QueryDef> QueryDefs(const QString& name) { return m_queryDefs.Item(name); }
    Collection<Property>& Properties() { return m_properties; }

    std::shared_ptr<TableDef> CreateTableDef(const QString& name = {});
    // A definition with a name is saved in the file at once (3012 when the name is taken);
    // one without a name is temporary.
    std::shared_ptr<QueryDef> CreateQueryDef(const QString& name = {}, const QString& sql = {});
    std::shared_ptr<Property> CreateProperty(
        const QString& name, DataType type, const Runtime::Variant& value);

    // `source` is a table's name (a table-type recordset by default), a saved query's name
    // or an SQL statement (a dynaset by default).
    std::shared_ptr<Recordset> OpenRecordset(
        const QString& source, RecordsetType type = RecordsetType::Default);
    // Runs an action statement of the engine's dialect (UPDATE, DELETE, INSERT, ALTER
    // TABLE, CREATE TABLE, DROP TABLE); 3065 for a SELECT.
    void Execute(const QString& sql);
    qint64 RecordsAffected() const { return m_recordsAffected; }

    // Closes the recordsets opened on the database and the file.
    void Close();

private:
    friend class Workspace;

    friend class DBEngine;
    void refresh();

    // The workspace's transactions on this file.
    void beginTransaction();
    void commitTransaction();
    void rollbackTransaction();

    explicit Database(std::unique_ptr<Connection> connection);
    void attachCollections();
    std::shared_ptr<DatabaseCore> core() const;

    std::shared_ptr<DatabaseCore> m_core;
    Collection<TableDef> m_tableDefs;
    Collection<QueryDef> m_queryDefs;
    Collection<Property> m_properties { DaoError::PropertyNotFound };
    qint64 m_recordsAffected = 0;
};

} // namespace Dao
