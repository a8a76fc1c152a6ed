#pragma once

#include "platform/dao/Database.h"

#include <QString>
#include <memory>
#include <vector>

namespace Dao {

struct EngineSettings;

// A session of the engine: the databases one card window opens.
class Workspace
{
public:
    QString Name() const { return m_name; }
    QString UserName() const { return m_userName; }

    // The databases opened in this workspace and not yet closed.
    std::vector<std::shared_ptr<Database>> Databases() const;

    // Creates a new file (3204 when it exists) and opens it. The locale text
    // (";LANGID=0x0409;CP=1252;COUNTRY=0") is accepted and has no effect: text is Unicode
    // and compares without regard to case whatever the locale.
    std::shared_ptr<Database> CreateDatabase(
        const QString& path, const QString& locale = {}, int options = 0);
    // Opens a file. Exclusive keeps every other user out while it is open and fails (3045)
    // while anyone else has it open; read-only never writes to it. Failures: 3024 no such
    // file, 3343 not a database (zero-byte files and text files included), 3049 damaged,
    // 3051 no permission to write it (retry read-only), 3045 in use.
    std::shared_ptr<Database> OpenDatabase(const QString& path, bool exclusive = false,
        bool readOnly = false, const QString& connect = {});
    // Closes every database of the workspace.
    void Close();

    // A transaction over every database open in the workspace: the changes made until
    // CommitTrans reach the files together, or none of them after Rollback. An import
    // wraps its rows in one, so that 100,000 rows are one write to the disk, not 100,000.
    // Transactions nest; while one is open the files stay locked for other users' writes.
    void BeginTrans();
    void CommitTrans();
    void Rollback();

private:
    friend class DBEngine;

    Workspace(const QString& name, const QString& userName,
        const std::shared_ptr<EngineSettings>& settings);

    QString m_name;
    QString m_userName;
    std::shared_ptr<EngineSettings> m_settings;
    mutable std::vector<std::weak_ptr<Database>> m_databases;
    // The databases each open transaction level began on, innermost last.
    std::vector<std::vector<std::weak_ptr<Database>>> m_transactions;
};

} // namespace Dao
