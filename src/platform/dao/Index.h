#pragma once

#include "platform/dao/Collection.h"
#include "platform/dao/Field.h"

#include <QString>
#include <memory>

namespace Dao {

// An index of a table: its fields in order, and whether it is the primary key, unique,
// required (no Null in its fields). Shaped before it is appended; afterwards it is fixed
// (3219), as the engine's indexes are.
class Index
{
public:
    static std::shared_ptr<Index> Create(const QString& name);

    QString Name() const { return m_name; }
    void SetName(const QString& name);
    bool Primary() const { return m_primary; }
    void SetPrimary(bool primary);
    bool Unique() const { return m_unique || m_primary; }
    void SetUnique(bool unique);
    bool Required() const { return m_required || m_primary; }
    void SetRequired(bool required);
    bool IgnoreNulls() const { return m_ignoreNulls; }
    void SetIgnoreNulls(bool ignore);
    bool Foreign() const { return false; }

    Collection<Field>& Fields() { return m_fields; }
    // A field to append to Fields: only its name counts.
    std::shared_ptr<Field> CreateField(
        const QString& name, DataType type = DataType::Text, int size = 0);

private:
    friend class Database;
    friend class TableDef;

    explicit Index(const QString& name);
    void checkChangeable() const;
    void fix(); // the index is in the file now

    QString m_name;
    bool m_primary = false;
    bool m_unique = false;
    bool m_required = false;
    bool m_ignoreNulls = false;
    bool m_inFile = false;
    Collection<Field> m_fields;
};

} // namespace Dao
