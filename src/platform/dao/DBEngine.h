#pragma once

#include "platform/dao/Collection.h"
#include "platform/dao/Workspace.h"

#include <QString>
#include <memory>

namespace Dao {

// Settings every workspace of an engine shares.
struct EngineSettings
{
    // How long a busy file is waited for before an operation fails with 3260 (3045 when
    // opening): long enough to ride out another copy's save, short enough that the user is
    // not left waiting on a file held for good.
    int busyTimeout = 2000;
};

// The engine: workspaces, compaction and cache refreshing.
class DBEngine
{
public:
    // Idle actions.
    static constexpr int FreeLocks = 1;
    static constexpr int RefreshCache = 8;

    DBEngine();

    // Workspaces appended by the program; the first is made on first use when none is.
    Collection<Workspace>& Workspaces();
    std::shared_ptr<Workspace> DefaultWorkspace();
    std::shared_ptr<Workspace> CreateWorkspace(
        const QString& name, const QString& userName, const QString& password = {}, int type = 0);

    // Writes a compact copy of `source` to `destination`, which must not exist (3204).
    // Every row and value is kept. The source must not be open anywhere (3045). The copy is
    // written to a temporary file beside the destination and renamed into place only when
    // complete, so a failure leaves no destination and the source as it was.
    void CompactDatabase(const QString& source, const QString& destination,
        const QString& locale = {}, int options = 0);

    // With RefreshCache, lets other users' saved changes be seen: every recordset of every
    // workspace forgets the rows it read ahead and reads the file at its next visit.
    void Idle(int action = 0);

    int BusyTimeout() const { return m_settings->busyTimeout; }
    void SetBusyTimeout(int milliseconds) { m_settings->busyTimeout = milliseconds; }

private:
    std::shared_ptr<EngineSettings> m_settings;
    Collection<Workspace> m_workspaces;
};

} // namespace Dao
