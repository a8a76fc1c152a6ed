#include "platform/dao/Statement.h"

#include "platform/dao/Connection.h"

#include <sqlite3.h>

namespace Dao {

Statement::Statement(const Connection* connection, sqlite3_stmt* statement, bool* inUse)
    : m_connection(connection)
    , m_statement(statement)
    , m_inUse(inUse)
{ }

Statement::Statement(Statement&& other) noexcept
    : m_connection(other.m_connection)
    , m_statement(other.m_statement)
    , m_inUse(other.m_inUse)
{
    other.m_statement = nullptr;
}

Statement& Statement::operator=(Statement&& other) noexcept
{
    if (this != &other) {
        release();
        m_connection = other.m_connection;
        m_statement = other.m_statement;
        m_inUse = other.m_inUse;
        other.m_statement = nullptr;
    }
    return *this;
}

Statement::~Statement()
{
    release();
}

void Statement::release()
{
    if (!m_statement)
        return;
    if (m_inUse) {
        sqlite3_reset(m_statement);
        sqlite3_clear_bindings(m_statement);
        *m_inUse = false;
    } else {
        sqlite3_finalize(m_statement);
    }
    m_statement = nullptr;
}

void Statement::bind(int index, const Runtime::Variant& value)
{
    int result = SQLITE_OK;
    switch (value.type()) {
    case Runtime::VariantType::Empty:
    case Runtime::VariantType::Null:
        result = sqlite3_bind_null(m_statement, index);
        break;
    case Runtime::VariantType::Boolean:
        result = sqlite3_bind_int(m_statement, index, value.boolean() ? 1 : 0);
        break;
    case Runtime::VariantType::Long:
        result = sqlite3_bind_int64(m_statement, index, value.whole());
        break;
    case Runtime::VariantType::Double:
    case Runtime::VariantType::Currency:
    case Runtime::VariantType::Date:
        result = sqlite3_bind_double(m_statement, index, value.number());
        break;
    case Runtime::VariantType::Text:
        bind(index, value.text());
        return;
    case Runtime::VariantType::Binary: {
        const QByteArray bytes = value.bytes();
        result = sqlite3_bind_blob64(m_statement, index, bytes.constData(),
            static_cast<sqlite3_uint64>(bytes.size()), SQLITE_TRANSIENT);
        break;
    }
    }
    if (result != SQLITE_OK)
        m_connection->raise(result);
}

void Statement::bind(int index, qint64 value)
{
    const int result = sqlite3_bind_int64(m_statement, index, value);
    if (result != SQLITE_OK)
        m_connection->raise(result);
}

void Statement::bind(int index, const QString& value)
{
    const QByteArray utf8 = value.toUtf8();
    const int result = sqlite3_bind_text64(m_statement, index, utf8.constData(),
        static_cast<sqlite3_uint64>(utf8.size()), SQLITE_TRANSIENT, SQLITE_UTF8);
    if (result != SQLITE_OK)
        m_connection->raise(result);
}

bool Statement::step()
{
    const int result = sqlite3_step(m_statement);
    if (result == SQLITE_ROW)
        return true;
    if (result == SQLITE_DONE)
        return false;
    // The error is read before the reset clears it.
    const QString sql = QString::fromUtf8(sqlite3_sql(m_statement));
    try {
        m_connection->raise(result, sql);
    } catch (...) {
        sqlite3_reset(m_statement);
        throw;
    }
}

void Statement::reset()
{
    sqlite3_reset(m_statement);
}

int Statement::columnCount() const
{
    return sqlite3_column_count(m_statement);
}

bool Statement::isNull(int column) const
{
    return sqlite3_column_type(m_statement, column) == SQLITE_NULL;
}

Runtime::Variant Statement::value(int column) const
{
    switch (sqlite3_column_type(m_statement, column)) {
    case SQLITE_INTEGER:
        return Runtime::Variant(static_cast<qint64>(sqlite3_column_int64(m_statement, column)));
    case SQLITE_FLOAT:
        return Runtime::Variant(sqlite3_column_double(m_statement, column));
    case SQLITE_TEXT:
        return Runtime::Variant(text(column));
    case SQLITE_BLOB:
        return Runtime::Variant(bytes(column));
    default:
        return Runtime::Variant::null();
    }
}

qint64 Statement::integer(int column) const
{
    return sqlite3_column_int64(m_statement, column);
}

double Statement::real(int column) const
{
    return sqlite3_column_double(m_statement, column);
}

QString Statement::text(int column) const
{
    const auto* data = reinterpret_cast<const char*>(sqlite3_column_text(m_statement, column));
    return QString::fromUtf8(data, sqlite3_column_bytes(m_statement, column));
}

QByteArray Statement::bytes(int column) const
{
    const auto* data = static_cast<const char*>(sqlite3_column_blob(m_statement, column));
    return QByteArray(data, sqlite3_column_bytes(m_statement, column));
}

QString Statement::columnName(int column) const
{
    return QString::fromUtf8(sqlite3_column_name(m_statement, column));
}

QString Statement::declaredType(int column) const
{
    return QString::fromUtf8(sqlite3_column_decltype(m_statement, column));
}

QString Statement::originTable(int column) const
{
    return QString::fromUtf8(sqlite3_column_table_name(m_statement, column));
}

QString Statement::originColumn(int column) const
{
    return QString::fromUtf8(sqlite3_column_origin_name(m_statement, column));
}

} // namespace Dao
