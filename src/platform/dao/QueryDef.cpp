#include "platform/dao/QueryDef.h"

#include "platform/dao/DatabaseCore.h"

using namespace Qt::Literals::StringLiterals;

namespace Dao {

QString StoredQueryText(const QString& sql)
{
    QString text = sql.trimmed();
    while (text.endsWith(u';'))
        text = text.chopped(1).trimmed();
    return text;
}

QueryDef::QueryDef(const std::shared_ptr<DatabaseCore>& core, const QString& name, bool stored)
    : m_core(core)
    , m_name(name)
    , m_stored(stored)
{ }

std::shared_ptr<DatabaseCore> QueryDef::core() const
{
    const auto core = m_core.lock();
    if (!core || !core->isOpen())
        throw DaoError::make(DaoError::ObjectClosed);
    return core;
}

void QueryDef::SetName(const QString& name)
{
    if (m_stored)
        core()->renameQueryDef(m_name, name);
    m_name = name;
}

QString QueryDef::statement() const
{
    if (!m_stored)
        return m_sql;
    const auto sql = core()->queryDefSql(m_name);
    if (!sql)
        throw DaoError::make(DaoError::ObjectClosed);
    return *sql;
}

QString QueryDef::SQL() const
{
    return statement() + u";\r\n"_s;
}

void QueryDef::SetSQL(const QString& sql)
{
    const QString text = StoredQueryText(sql);
    TranslateSql(text); // refuses what is no statement of the dialect
    if (m_stored)
        core()->setQueryDefSql(m_name, text);
    else
        m_sql = text;
}

void QueryDef::Execute()
{
    m_recordsAffected = core()->execute(statement());
}

std::shared_ptr<Recordset> QueryDef::OpenRecordset(RecordsetType type)
{
    if (type == RecordsetType::Table)
        throw DaoError::make(DaoError::InvalidOperation);
    return Recordset::OpenQuery(core(), statement(), type);
}

} // namespace Dao
