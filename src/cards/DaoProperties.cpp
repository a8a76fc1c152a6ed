#include "cards/DaoProperties.h"

#include "platform/dao/DaoError.h"

namespace Bramlet {

namespace {

using Runtime::Variant;
using Runtime::VariantType;

template <class Object>
void Set(
    Object& object, const QString& name, const Variant& value, std::optional<Dao::DataType> type)
{
    if (const auto existing = object.Properties().Find(name)) {
        existing->SetValue(value);
        return;
    }
    const bool nothing = value.isEmpty() || value.isNull()
        || (value.type() == VariantType::Text && value.text().isEmpty());
    if (nothing)
        return;
    object.Properties().Append(
        object.CreateProperty(name, type.value_or(PropertyTypeFor(value)), value));
}

template <class Object> Variant Get(Object& object, const QString& name)
{
    const auto property = object.Properties().Find(name);
    return property ? property->Value() : Variant();
}

} // namespace

Dao::DataType PropertyTypeFor(const Variant& value)
{
    switch (value.type()) {
    case VariantType::Boolean:
        return Dao::DataType::Boolean;
    case VariantType::Long:
        return value.whole() >= -32768 && value.whole() <= 32767 ? Dao::DataType::Integer
                                                                 : Dao::DataType::Long;
    case VariantType::Double:
        return Dao::DataType::Double;
    case VariantType::Currency:
        return Dao::DataType::Currency;
    case VariantType::Date:
        return Dao::DataType::Date;
    case VariantType::Binary:
        return Dao::DataType::LongBinary;
    default:
        return Dao::DataType::Text;
    }
}

void SetDaoProperty(Dao::Database& object, const QString& name, const Variant& value,
    std::optional<Dao::DataType> type)
{
    Set(object, name, value, type);
}

void SetDaoProperty(Dao::TableDef& object, const QString& name, const Variant& value,
    std::optional<Dao::DataType> type)
{
    Set(object, name, value, type);
}

void SetDaoProperty(Dao::Field& object, const QString& name, const Variant& value,
    std::optional<Dao::DataType> type)
{
    Set(object, name, value, type);
}

Variant GetDaoProperty(Dao::Database& object, const QString& name)
{
    return Get(object, name);
}

Variant GetDaoProperty(Dao::TableDef& object, const QString& name)
{
    return Get(object, name);
}

Variant GetDaoProperty(Dao::Field& object, const QString& name)
{
    return Get(object, name);
}

} // namespace Bramlet
