#include "platform/dao/DBEngine.h"

#include "platform/dao/Connection.h"
#include "platform/dao/DaoError.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryFile>
#include <fcntl.h>
#include <unistd.h>

using namespace Qt::Literals::StringLiterals;

namespace Dao {

DBEngine::DBEngine()
    : m_settings(std::make_shared<EngineSettings>())
{
    m_workspaces.allowSharedNames();
}

Collection<Workspace>& DBEngine::Workspaces()
{
    return m_workspaces;
}

std::shared_ptr<Workspace> DBEngine::DefaultWorkspace()
{
    if (m_workspaces.Count() == 0)
        m_workspaces.Append(CreateWorkspace(u"#Default Workspace#"_s, u"admin"_s));
    return m_workspaces.Item(0);
}

std::shared_ptr<Workspace> DBEngine::CreateWorkspace(
    const QString& name, const QString& userName, const QString&, int)
{
    return std::shared_ptr<Workspace>(new Workspace(name, userName, m_settings));
}

namespace {

// Makes the written copy durable before it replaces anything.
bool FlushToDisk(const QString& path)
{
    const int descriptor = ::open(path.toLocal8Bit().constData(), O_RDONLY | O_CLOEXEC);
    if (descriptor < 0)
        return false;
    const bool flushed = ::fsync(descriptor) == 0;
    ::close(descriptor);
    return flushed;
}

} // namespace

void DBEngine::CompactDatabase(
    const QString& source, const QString& destination, const QString&, int)
{
    const QFileInfo target(destination);
    if (target.exists())
        throw DaoError::make(DaoError::DatabaseExists, destination);
    if (!target.absoluteDir().exists())
        throw DaoError::make(DaoError::InvalidPath, destination);

    Connection::Options options;
    options.readOnly = true;
    options.exclusive = true;
    options.busyTimeout = m_settings->busyTimeout;
    const std::unique_ptr<Connection> connection = Connection::open(source, options);

    // VACUUM INTO wants a file that does not exist or is empty; the temporary file reserves
    // a name in the destination's folder, so the final rename never crosses file systems.
    QTemporaryFile temporary(target.absoluteDir().filePath(u".compact-XXXXXX"_s));
    if (!temporary.open())
        throw DaoError::make(DaoError::PermissionDenied, destination);
    const QString work = temporary.fileName();
    temporary.close();
    try {
        Statement vacuum = connection->prepareOnce(u"VACUUM INTO ?1"_s);
        vacuum.bind(1, work);
        vacuum.step();
    } catch (...) {
        QFile::remove(work);
        throw;
    }
    if (!FlushToDisk(work)) {
        QFile::remove(work);
        throw DaoError::make(DaoError::DiskOrNetworkError);
    }
    temporary.setAutoRemove(false);
    if (!QFile::rename(work, destination)) {
        QFile::remove(work);
        throw DaoError::make(
            QFileInfo::exists(destination) ? DaoError::DatabaseExists : DaoError::PermissionDenied,
            destination);
    }
}

void DBEngine::Idle(int action)
{
    if (!(action & RefreshCache))
        return;
    for (const auto& workspace : m_workspaces.items()) {
        for (const auto& database : workspace->Databases())
            database->refresh();
    }
}

} // namespace Dao
