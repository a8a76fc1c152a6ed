#pragma once

#include "platform/dao/Statement.h"

#include <QHash>
#include <QString>
#include <memory>

struct sqlite3;
struct sqlite3_stmt;

namespace Dao {

class FileLock;

// One open SQLite database file with the engine's functions registered, a busy timeout, the
// rollback journal, and SQLite's failures turned into the engine's numbered errors.
class Connection
{
public:
    struct Options
    {
        bool readOnly = false;
        bool exclusive = false;
        int busyTimeout = 2000; // milliseconds a busy file is waited for
    };

    // Opens an existing file. Throws DaoError: 3024 no such file; 3343 not a database (a
    // zero-byte file included: it is never turned into one); 3049 damaged; 3051 not
    // writable when writing was asked for; 3045 open exclusively elsewhere, or open at all
    // elsewhere when exclusive was asked for.
    static std::unique_ptr<Connection> open(const QString& path, const Options& options);
    // Creates a new file; 3204 when it exists already.
    static std::unique_ptr<Connection> create(const QString& path, int busyTimeout);

    ~Connection();
    Connection(const Connection&) = delete;
    Connection& operator=(const Connection&) = delete;

    const QString& path() const { return m_path; }
    bool isReadOnly() const { return m_readOnly; }
    bool isExclusive() const { return m_exclusive; }

    // A statement kept prepared for reuse: the engine runs the same few statements over and
    // over (reading a row, checking a row before an update).
    Statement prepare(const QString& sql) const;
    // A statement used once.
    Statement prepareOnce(const QString& sql) const;
    // Runs a statement that returns no rows.
    void execute(const QString& sql) const;
    qint64 changes() const;
    qint64 lastInsertRowId() const;

    // Write transactions; an inner one is a savepoint. begin() waits for the busy timeout
    // and then fails with 3260 (3188 when the holder is another session of this program).
    void begin();
    void commit();
    void rollback();
    bool inTransaction() const { return m_depth > 0; }

    // Runs `work` in a write transaction: committed when it returns, rolled back when it
    // throws.
    template <class Work> void write(Work&& work)
    {
        begin();
        try {
            work();
        } catch (...) {
            rollback();
            throw;
        }
        commit();
    }

    // Throws the DaoError for an SQLite result code, reading the connection's message.
    [[noreturn]] void raise(int resultCode, const QString& sql = {}) const;

    sqlite3* handle() const { return m_database; }

private:
    Connection() = default;
    void configure(const Options& options);
    void run(const QString& sql) const; // a cached statement without rows

    QString m_path;
    QString m_canonicalPath;
    bool m_readOnly = false;
    bool m_exclusive = false;
    int m_depth = 0;
    std::unique_ptr<FileLock> m_lock; // released after the file is closed
    sqlite3* m_database = nullptr;
    struct CachedStatement
    {
        sqlite3_stmt* statement = nullptr;
        bool inUse = false;
    };
    // Held by pointer: a statement in use points at its entry's mark.
    mutable QHash<QString, std::shared_ptr<CachedStatement>> m_cache;
};

} // namespace Dao
