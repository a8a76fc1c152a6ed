#include "platform/dao/Property.h"

#include "platform/dao/DatabaseCore.h"

namespace Dao {

Property::Property(const QString& name, DataType type, const Runtime::Variant& value)
    : m_name(name)
    , m_type(type)
    , m_value(value)
{ }

std::shared_ptr<Property> Property::Create(
    const QString& name, DataType type, const Runtime::Variant& value)
{
    return std::shared_ptr<Property>(
        new Property(name, type, DatabaseCore::PropertyValue(type, value)));
}

Runtime::Variant Property::Value() const
{
    if (!m_location)
        return m_value;
    const auto core = m_core.lock();
    if (!core)
        throw DaoError::make(DaoError::ObjectClosed);
    const auto [table, field] = m_location();
    const auto stored = core->property(table, field, m_name);
    if (!stored)
        throw DaoError::make(DaoError::PropertyNotFound);
    return stored->value;
}

void Property::SetValue(const Runtime::Variant& value)
{
    if (!m_location) {
        m_value = DatabaseCore::PropertyValue(m_type, value);
        return;
    }
    const auto core = m_core.lock();
    if (!core)
        throw DaoError::make(DaoError::ObjectClosed);
    const auto [table, field] = m_location();
    core->setPropertyValue(table, field, m_name, value);
}

void Property::Attach(Collection<Property>& collection, const std::shared_ptr<DatabaseCore>& core,
    const Location& location)
{
    collection.setMissingNameError(DaoError::PropertyNotFound);
    const std::vector<std::shared_ptr<Property>> pending = collection.items();
    const std::weak_ptr<DatabaseCore> weak = core;
    auto attachOne = [weak, location](Property& property) {
        property.m_core = weak;
        property.m_location = location;
        property.m_value = Runtime::Variant();
    };
    for (const auto& property : pending) {
        const auto [table, field] = location();
        core->insertProperty(
            table, field, { property->m_name, property->m_type, property->m_value });
        attachOne(*property);
    }
    collection.attach(
        [weak, location, attachOne] {
            std::vector<std::shared_ptr<Property>> result;
            const auto core = weak.lock();
            if (!core)
                throw DaoError::make(DaoError::ObjectClosed);
            const auto [table, field] = location();
            for (const auto& stored : core->properties(table, field)) {
                auto property
                    = std::shared_ptr<Property>(new Property(stored.name, stored.type, {}));
                attachOne(*property);
                result.push_back(property);
            }
            return result;
        },
        [weak, location, attachOne](const std::shared_ptr<Property>& property) {
            const auto core = weak.lock();
            if (!core)
                throw DaoError::make(DaoError::ObjectClosed);
            if (property->m_location)
                throw DaoError::make(DaoError::NameExistsInCollection);
            const auto [table, field] = location();
            core->insertProperty(
                table, field, { property->m_name, property->m_type, property->m_value });
            attachOne(*property);
        },
        [weak, location](const std::shared_ptr<Property>& property) {
            const auto core = weak.lock();
            if (!core)
                throw DaoError::make(DaoError::ObjectClosed);
            const auto [table, field] = location();
            core->deleteProperty(table, field, property->m_name);
        });
}

} // namespace Dao
