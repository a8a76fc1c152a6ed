#include "platform/dao/Connection.h"

#include "platform/dao/DaoError.h"
#include "platform/dao/FileLock.h"
#include "platform/dao/SqlFunctions.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QMutex>
#include <QRegularExpression>
#include <sqlite3.h>

using namespace Qt::Literals::StringLiterals;

namespace Dao {

namespace {

// Marks files made by this engine; `file` and other tools can tell them apart.
constexpr int ApplicationId = 0x51424E44; // "QBND"

// Every SQLite database file starts so and is at least one page of the smallest size.
const QByteArray Magic("SQLite format 3\0", 16);
constexpr qint64 MinimumFileSize = 512;

// Sessions of this program that hold a write transaction, by file: a busy file is then
// "locked by another session on this machine" (3188) rather than by another user.
QMutex& WritersMutex()
{
    static QMutex mutex;
    return mutex;
}

QHash<QString, int>& Writers()
{
    static QHash<QString, int> writers;
    return writers;
}

void CountWriter(const QString& path, int change)
{
    QMutexLocker locker(&WritersMutex());
    int& count = Writers()[path];
    count += change;
    if (count <= 0)
        Writers().remove(path);
}

int WriterCount(const QString& path)
{
    QMutexLocker locker(&WritersMutex());
    return Writers().value(path);
}

QString AfterPrefix(const QString& message, const QString& prefix)
{
    return message.startsWith(prefix) ? message.mid(prefix.size()).trimmed() : QString();
}

// The column named in a constraint message: "Quorbin_Card.CardName" gives CardName.
QString ColumnOfConstraint(const QString& message)
{
    const QString qualified = message.section(u": "_s, 1);
    return qualified.section(u'.', -1).trimmed();
}

// The first quoted name in a CHECK constraint message: "CardName" <> ''.
QString ColumnOfCheck(const QString& message)
{
    static const QRegularExpression quoted(u"\"((?:[^\"]|\"\")*)\""_s);
    const QRegularExpressionMatch match = quoted.match(message);
    return match.hasMatch() ? match.captured(1).replace(u"\"\""_s, u"\""_s) : QString();
}

} // namespace

std::unique_ptr<Connection> Connection::open(const QString& path, const Options& options)
{
    const QFileInfo info(path);
    if (!info.exists())
        throw DaoError::make(DaoError::FileNotFound, path);
    if (info.isDir())
        throw DaoError::make(DaoError::InvalidPath, path);
    if (!info.isReadable() || (!options.readOnly && !info.isWritable()))
        throw DaoError::make(DaoError::PermissionDenied, path);

    std::unique_ptr<Connection> connection(new Connection);
    connection->m_path = path;
    connection->m_canonicalPath = info.canonicalFilePath();
    connection->m_readOnly = options.readOnly;
    connection->m_exclusive = options.exclusive;
    connection->m_lock = FileLock::acquire(path, options.exclusive, options.busyTimeout);
    // SQLite takes a file shorter than one page for a new, empty database and would write
    // one into it; every real database starts with the header and fills at least one page.
    if (connection->m_lock->fileSize() < MinimumFileSize
        || connection->m_lock->readStart(Magic.size()) != Magic)
        throw DaoError::make(DaoError::UnrecognizedFormat, path);

    // One connection is only ever used by one thread, so SQLite need not take its mutex on
    // every call: that is a sixth of the time of reading 100,000 keys.
    const int flags = (options.readOnly ? SQLITE_OPEN_READONLY : SQLITE_OPEN_READWRITE)
        | SQLITE_OPEN_PRIVATECACHE | SQLITE_OPEN_EXRESCODE | SQLITE_OPEN_NOMUTEX;
    const int result
        = sqlite3_open_v2(path.toUtf8().constData(), &connection->m_database, flags, nullptr);
    if (result != SQLITE_OK)
        throw DaoError::make(DaoError::PermissionDenied, path);
    // SQLite falls back to reading quietly when the file cannot be written; the caller asked
    // to write and must hear that it cannot, so that it can retry read-only.
    if (!options.readOnly && sqlite3_db_readonly(connection->m_database, "main") == 1)
        throw DaoError::make(DaoError::PermissionDenied, path);
    connection->configure(options);
    return connection;
}

std::unique_ptr<Connection> Connection::create(const QString& path, int busyTimeout)
{
    const QFileInfo info(path);
    if (info.exists())
        throw DaoError::make(DaoError::DatabaseExists, path);
    if (!info.absoluteDir().exists())
        throw DaoError::make(DaoError::InvalidPath, path);
    {
        QFile file(path);
        if (!file.open(QIODevice::WriteOnly | QIODevice::NewOnly)) {
            if (file.exists())
                throw DaoError::make(DaoError::DatabaseExists, path);
            throw DaoError::make(DaoError::PermissionDenied, path);
        }
    }
    std::unique_ptr<Connection> connection(new Connection);
    try {
        connection->m_path = path;
        connection->m_canonicalPath = QFileInfo(path).canonicalFilePath();
        connection->m_lock = FileLock::acquire(path, false, busyTimeout);
        const int result = sqlite3_open_v2(path.toUtf8().constData(), &connection->m_database,
            SQLITE_OPEN_READWRITE | SQLITE_OPEN_PRIVATECACHE | SQLITE_OPEN_EXRESCODE
                | SQLITE_OPEN_NOMUTEX,
            nullptr);
        if (result != SQLITE_OK)
            throw DaoError::make(DaoError::PermissionDenied, path);
        Options options;
        options.busyTimeout = busyTimeout;
        // Writing the header now makes the file a database at once, never an empty file.
        connection->execute(u"PRAGMA application_id = "_s + QString::number(ApplicationId));
        connection->configure(options);
    } catch (...) {
        connection.reset();
        QFile::remove(path);
        throw;
    }
    return connection;
}

void Connection::configure(const Options& options)
{
    sqlite3_extended_result_codes(m_database, 1);
    sqlite3_busy_timeout(m_database, std::max(options.busyTimeout, 0));
    // A file is untrusted input: its schema may not call functions with side effects, and
    // SQL may not write to the schema tables directly.
    sqlite3_db_config(m_database, SQLITE_DBCONFIG_DEFENSIVE, 1, nullptr);
    sqlite3_db_config(m_database, SQLITE_DBCONFIG_TRUSTED_SCHEMA, 0, nullptr);
    // Every name is written in double quotes; one that names no column must fail, never
    // quietly become a text.
    sqlite3_db_config(m_database, SQLITE_DBCONFIG_DQS_DML, 0, nullptr);
    sqlite3_db_config(m_database, SQLITE_DBCONFIG_DQS_DDL, 0, nullptr);
    RegisterSqlFunctions(m_database);
    try {
        execute(u"PRAGMA cell_size_check = ON"_s);
        // Pages stay cached between statements while nobody else writes; a card file of
        // 100,000 cards (about 10 MB) fits, so walking it reads the disk once.
        execute(u"PRAGMA cache_size = -16384"_s);
        if (options.exclusive)
            execute(u"PRAGMA locking_mode = EXCLUSIVE"_s);
        // Reading the schema proves the file is a database and nobody holds it exclusively.
        Statement check = prepareOnce(u"SELECT count(*) FROM sqlite_master"_s);
        check.step();
        check = Statement();
        if (options.exclusive && !options.readOnly) {
            // In exclusive locking mode the lock a write takes is kept until the file closes.
            execute(u"BEGIN EXCLUSIVE"_s);
            execute(u"COMMIT"_s);
        }
        if (!options.readOnly) {
            // The rollback journal works on network file systems; a write-ahead log does not.
            Statement mode = prepareOnce(u"PRAGMA journal_mode"_s);
            if (mode.step() && mode.text(0).compare(u"wal"_s, Qt::CaseInsensitive) == 0) {
                mode = Statement();
                execute(u"PRAGMA journal_mode = DELETE"_s);
            }
        }
    } catch (const DaoError& error) {
        if (error.number() == DaoError::LockedByUser || error.number() == DaoError::LockedBySession)
            throw DaoError::make(DaoError::FileInUse, m_path);
        throw;
    }
}

Connection::~Connection()
{
    for (const auto& cached : std::as_const(m_cache))
        sqlite3_finalize(cached->statement);
    m_cache.clear();
    if (m_depth > 0) {
        sqlite3_exec(m_database, "ROLLBACK", nullptr, nullptr, nullptr);
        CountWriter(m_canonicalPath, -1);
    }
    if (m_database)
        sqlite3_close_v2(m_database);
    m_database = nullptr;
    m_lock.reset();
}

Statement Connection::prepare(const QString& sql) const
{
    const auto found = m_cache.constFind(sql);
    if (found != m_cache.constEnd()) {
        CachedStatement& cached = **found;
        if (cached.inUse)
            return prepareOnce(sql); // the cached one is busy in an outer loop
        cached.inUse = true;
        return Statement(this, cached.statement, &cached.inUse);
    }
    sqlite3_stmt* statement = nullptr;
    const QByteArray utf8 = sql.toUtf8();
    const int result = sqlite3_prepare_v3(m_database, utf8.constData(),
        static_cast<int>(utf8.size()), SQLITE_PREPARE_PERSISTENT, &statement, nullptr);
    if (result != SQLITE_OK) {
        sqlite3_finalize(statement);
        raise(result, sql);
    }
    if (!statement)
        throw DaoError::make(DaoError::InvalidStatement);
    auto cached = std::make_shared<CachedStatement>(CachedStatement { statement, true });
    m_cache.insert(sql, cached);
    return Statement(this, statement, &cached->inUse);
}

Statement Connection::prepareOnce(const QString& sql) const
{
    sqlite3_stmt* statement = nullptr;
    const QByteArray utf8 = sql.toUtf8();
    const char* tail = nullptr;
    const int result = sqlite3_prepare_v2(
        m_database, utf8.constData(), static_cast<int>(utf8.size()), &statement, &tail);
    if (result != SQLITE_OK) {
        sqlite3_finalize(statement);
        raise(result, sql);
    }
    if (!statement)
        throw DaoError::make(DaoError::InvalidStatement);
    if (tail && QByteArray(tail).trimmed().size() > 0) {
        sqlite3_finalize(statement);
        throw DaoError::make(DaoError::SyntaxErrorAtEnd);
    }
    return Statement(this, statement, nullptr);
}

void Connection::run(const QString& sql) const
{
    Statement statement = prepare(sql);
    while (statement.step()) { }
}

void Connection::execute(const QString& sql) const
{
    Statement statement = prepareOnce(sql);
    while (statement.step()) { }
}

qint64 Connection::changes() const
{
    return sqlite3_changes64(m_database);
}

qint64 Connection::lastInsertRowId() const
{
    return sqlite3_last_insert_rowid(m_database);
}

void Connection::begin()
{
    if (m_depth == 0) {
        run(u"BEGIN IMMEDIATE"_s);
        CountWriter(m_canonicalPath, 1);
    } else {
        run(u"SAVEPOINT qb"_s + QString::number(m_depth));
    }
    ++m_depth;
}

void Connection::commit()
{
    if (m_depth <= 0)
        return;
    if (m_depth > 1) {
        --m_depth;
        run(u"RELEASE qb"_s + QString::number(m_depth));
        return;
    }
    try {
        run(u"COMMIT"_s);
    } catch (...) {
        // A commit that could not get the file (readers holding it past the busy timeout)
        // leaves the transaction open; nothing of it may reach the file later by accident.
        sqlite3_exec(m_database, "ROLLBACK", nullptr, nullptr, nullptr);
        m_depth = 0;
        CountWriter(m_canonicalPath, -1);
        throw;
    }
    m_depth = 0;
    CountWriter(m_canonicalPath, -1);
}

void Connection::rollback()
{
    if (m_depth <= 0)
        return;
    --m_depth;
    if (m_depth > 0) {
        const QByteArray name = "qb" + QByteArray::number(m_depth);
        sqlite3_exec(m_database, ("ROLLBACK TO " + name + "; RELEASE " + name).constData(), nullptr,
            nullptr, nullptr);
        return;
    }
    sqlite3_exec(m_database, "ROLLBACK", nullptr, nullptr, nullptr);
    CountWriter(m_canonicalPath, -1);
}

void Connection::raise(int resultCode, const QString& sql) const
{
    const QString message = QString::fromUtf8(sqlite3_errmsg(m_database));
    // The engine's own SQL functions report "DAO<number>:<text>".
    static const QRegularExpression own(
        u"^DAO(\\d{4}):(.*)$"_s, QRegularExpression::DotMatchesEverythingOption);
    const QRegularExpressionMatch ownMatch = own.match(message);
    if (ownMatch.hasMatch())
        throw DaoError(ownMatch.captured(1).toInt(), ownMatch.captured(2));

    const QString statementText = sql.isEmpty() ? message : sql;
    switch (resultCode & 0xff) {
    case SQLITE_BUSY:
    case SQLITE_LOCKED: {
        const int others = WriterCount(m_canonicalPath) - (m_depth > 0 ? 1 : 0);
        throw DaoError::make(others > 0 ? DaoError::LockedBySession : DaoError::LockedByUser);
    }
    case SQLITE_CONSTRAINT:
        switch (resultCode) {
        case SQLITE_CONSTRAINT_NOTNULL:
            throw DaoError::make(DaoError::RequiredFieldNull, ColumnOfConstraint(message));
        case SQLITE_CONSTRAINT_CHECK:
            throw DaoError::make(DaoError::ZeroLengthNotAllowed, ColumnOfCheck(message));
        default:
            throw DaoError::make(DaoError::DuplicateValue);
        }
    case SQLITE_READONLY:
        throw DaoError::make(DaoError::ReadOnly);
    case SQLITE_FULL:
        throw DaoError::make(DaoError::DiskFull);
    case SQLITE_CORRUPT:
        throw DaoError::make(DaoError::CorruptFile, m_path);
    case SQLITE_NOTADB:
        throw DaoError::make(DaoError::UnrecognizedFormat, m_path);
    case SQLITE_IOERR:
    case SQLITE_CANTOPEN:
    case SQLITE_PROTOCOL:
        throw DaoError::make(DaoError::DiskOrNetworkError);
    case SQLITE_NOMEM:
    case SQLITE_TOOBIG:
        throw DaoError::make(DaoError::ResourcesExceeded);
    case SQLITE_MISMATCH:
        throw DaoError::make(DaoError::TypeMismatchInCriteria);
    default:
        break;
    }
    if (const QString column = AfterPrefix(message, u"no such column:"_s); !column.isEmpty())
        throw DaoError::make(DaoError::TooFewParameters, column);
    if (const QString table = AfterPrefix(message, u"no such table:"_s); !table.isEmpty())
        throw DaoError::make(DaoError::InputTableNotFound, table);
    if (const QString function = AfterPrefix(message, u"no such function:"_s); !function.isEmpty())
        throw DaoError::make(DaoError::UndefinedFunction, function);
    if (const QString column = AfterPrefix(message, u"duplicate column name:"_s); !column.isEmpty())
        throw DaoError::make(DaoError::FieldExists, column);
    if (message.startsWith(u"table "_s) && message.endsWith(u" already exists"_s))
        throw DaoError::make(DaoError::TableExists, message.mid(6, message.size() - 21));
    if (message.startsWith(u"index "_s) && message.endsWith(u" already exists"_s))
        throw DaoError::make(DaoError::IndexExists);
    if (message.contains(u"drop column"_s, Qt::CaseInsensitive))
        throw DaoError::make(DaoError::FieldInIndex);
    throw DaoError::make(DaoError::SyntaxErrorInExpression, statementText);
}

} // namespace Dao
