#include "platform/dao/Workspace.h"

#include "platform/dao/Connection.h"
#include "platform/dao/DBEngine.h"

namespace Dao {

Workspace::Workspace(
    const QString& name, const QString& userName, const std::shared_ptr<EngineSettings>& settings)
    : m_name(name)
    , m_userName(userName)
    , m_settings(settings)
{ }

std::vector<std::shared_ptr<Database>> Workspace::Databases() const
{
    std::vector<std::shared_ptr<Database>> open;
    std::erase_if(m_databases, [&open](const std::weak_ptr<Database>& weak) {
        const auto database = weak.lock();
        if (!database || !database->IsOpen())
            return true;
        open.push_back(database);
        return false;
    });
    return open;
}

std::shared_ptr<Database> Workspace::CreateDatabase(const QString& path, const QString&, int)
{
    std::shared_ptr<Database> database(
        new Database(Connection::create(path, m_settings->busyTimeout)));
    database->attachCollections();
    m_databases.push_back(database);
    return database;
}

std::shared_ptr<Database> Workspace::OpenDatabase(
    const QString& path, bool exclusive, bool readOnly, const QString&)
{
    Connection::Options options;
    options.exclusive = exclusive;
    options.readOnly = readOnly;
    options.busyTimeout = m_settings->busyTimeout;
    std::shared_ptr<Database> database(new Database(Connection::open(path, options)));
    database->attachCollections();
    m_databases.push_back(database);
    return database;
}

void Workspace::BeginTrans()
{
    std::vector<std::weak_ptr<Database>> begun;
    try {
        for (const auto& database : Databases()) {
            database->beginTransaction();
            begun.push_back(database);
        }
    } catch (...) {
        for (const auto& weak : begun) {
            if (const auto database = weak.lock())
                database->rollbackTransaction();
        }
        throw;
    }
    m_transactions.push_back(std::move(begun));
}

void Workspace::CommitTrans()
{
    if (m_transactions.empty())
        throw DaoError::make(DaoError::InvalidOperation);
    const auto begun = std::move(m_transactions.back());
    m_transactions.pop_back();
    for (const auto& weak : begun) {
        if (const auto database = weak.lock(); database && database->IsOpen())
            database->commitTransaction();
    }
}

void Workspace::Rollback()
{
    if (m_transactions.empty())
        throw DaoError::make(DaoError::InvalidOperation);
    const auto begun = std::move(m_transactions.back());
    m_transactions.pop_back();
    for (const auto& weak : begun) {
        if (const auto database = weak.lock(); database && database->IsOpen())
            database->rollbackTransaction();
    }
}

void Workspace::Close()
{
    for (const auto& database : Databases())
        database->Close();
    m_databases.clear();
    m_transactions.clear();
}

} // namespace Dao
