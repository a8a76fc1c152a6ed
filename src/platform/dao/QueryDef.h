#pragma once

#include "platform/dao/Recordset.h"

#include <QString>
#include <memory>

namespace Dao {

class DatabaseCore;

// A query definition: the engine's SQL under a name, kept in the file, or (with an empty
// name) a temporary one for running statements. SQL reads back as stored followed by ";"
// and a line break, as the original engine gave it.
class QueryDef
{
public:
    QString Name() const { return m_name; }
    void SetName(const QString& name);
    QString SQL() const;
    // Checks the statement's form (3129, 3075 ...) before keeping it.
    void SetSQL(const QString& sql);

    void Execute();
    qint64 RecordsAffected() const { return m_recordsAffected; }
    std::shared_ptr<Recordset> OpenRecordset(RecordsetType type = RecordsetType::Dynaset);
    void Close() { }

private:
    friend class Database;

    QueryDef(const std::shared_ptr<DatabaseCore>& core, const QString& name, bool stored);
    std::shared_ptr<DatabaseCore> core() const;
    QString statement() const; // the SQL without the closing ";"

    std::weak_ptr<DatabaseCore> m_core;
    QString m_name;
    bool m_stored;
    QString m_sql; // a temporary definition's text
    qint64 m_recordsAffected = 0;
};

// The text a definition keeps: without a closing ";" and blanks around.
QString StoredQueryText(const QString& sql);

} // namespace Dao
