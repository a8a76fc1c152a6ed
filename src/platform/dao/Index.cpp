#include "platform/dao/Index.h"

namespace Dao {

Index::Index(const QString& name)
    : m_name(name)
{ }

std::shared_ptr<Index> Index::Create(const QString& name)
{
    return std::shared_ptr<Index>(new Index(name));
}

void Index::checkChangeable() const
{
    if (m_inFile)
        throw DaoError::make(DaoError::InvalidOperation);
}

void Index::SetName(const QString& name)
{
    checkChangeable();
    m_name = name;
}

void Index::SetPrimary(bool primary)
{
    checkChangeable();
    m_primary = primary;
}

void Index::SetUnique(bool unique)
{
    checkChangeable();
    m_unique = unique;
}

void Index::SetRequired(bool required)
{
    checkChangeable();
    m_required = required;
}

void Index::SetIgnoreNulls(bool ignore)
{
    checkChangeable();
    m_ignoreNulls = ignore;
}

std::shared_ptr<Field> Index::CreateField(const QString& name, DataType type, int size)
{
    return Field::Create(name, type, size);
}

void Index::fix()
{
    m_inFile = true;
    const auto fields = m_fields.items();
    m_fields.attach([fields] { return fields; },
        [](const std::shared_ptr<Field>&) { throw DaoError::make(DaoError::InvalidOperation); },
        [](const std::shared_ptr<Field>&) { throw DaoError::make(DaoError::InvalidOperation); });
}

} // namespace Dao
