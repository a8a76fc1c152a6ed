#pragma once

#include "platform/runtime/Variant.h"

#include <QByteArray>
#include <QString>

struct sqlite3_stmt;

namespace Dao {

class Connection;

// One prepared SQLite statement. A statement taken from the connection's cache is reset,
// not finalized, when this object goes; either way no read lock outlives it.
class Statement
{
public:
    Statement() = default;
    // `inUse` is the connection's mark of a cached statement, cleared again when this object
    // goes; null for a statement used once.
    Statement(const Connection* connection, sqlite3_stmt* statement, bool* inUse);
    Statement(Statement&& other) noexcept;
    Statement& operator=(Statement&& other) noexcept;
    ~Statement();
    Statement(const Statement&) = delete;
    Statement& operator=(const Statement&) = delete;

    // Parameters count from 1. Empty and Null bind NULL; on/off binds 1 or 0; dates and
    // currency bind their real; texts bind UTF-8.
    void bind(int index, const Runtime::Variant& value);
    void bind(int index, qint64 value);
    void bind(int index, const QString& value);

    // True when a row is ready. Throws DaoError, numbered from SQLite's failure.
    bool step();
    void reset();

    int columnCount() const;
    bool isNull(int column) const;
    // The stored value as its storage class reads: whole numbers Long, reals Double, text
    // Text, blobs Binary, NULL Null.
    Runtime::Variant value(int column) const;
    qint64 integer(int column) const;
    double real(int column) const;
    QString text(int column) const;
    QByteArray bytes(int column) const;
    QString columnName(int column) const;
    QString declaredType(int column) const; // empty for an expression
    QString originTable(int column) const; // empty for an expression
    QString originColumn(int column) const;

    sqlite3_stmt* handle() const { return m_statement; }

private:
    void release();

    const Connection* m_connection = nullptr;
    sqlite3_stmt* m_statement = nullptr;
    bool* m_inUse = nullptr;
};

} // namespace Dao
