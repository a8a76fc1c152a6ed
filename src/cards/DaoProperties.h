#pragma once

#include "platform/dao/Database.h"
#include "platform/dao/Field.h"
#include "platform/dao/TableDef.h"
#include "platform/runtime/Variant.h"

#include <QString>
#include <optional>

namespace Bramlet {

// The card layout and the meaning of every column live in user-defined properties of the
// database, the card table's definition and its columns.

// The type a new property takes from the first value stored in it: on/off Boolean, a
// whole number Integer when it fits 16 bits and Long otherwise, a real Double, currency
// Currency, a date Date, a text Text, binary data Long binary.
Dao::DataType PropertyTypeFor(const Runtime::Variant& value);

// Stores `value` in the property `name`, creating it (with the type of PropertyTypeFor, or
// `type` when given) when it does not exist. An empty text, Empty or Null never creates a
// property: nothing is stored then.
void SetDaoProperty(Dao::Database& object, const QString& name, const Runtime::Variant& value,
    std::optional<Dao::DataType> type = std::nullopt);
void SetDaoProperty(Dao::TableDef& object, const QString& name, const Runtime::Variant& value,
    std::optional<Dao::DataType> type = std::nullopt);
void SetDaoProperty(Dao::Field& object, const QString& name, const Runtime::Variant& value,
    std::optional<Dao::DataType> type = std::nullopt);

// The property's value, or Empty when there is no such property. Never fails on a missing
// property.
Runtime::Variant GetDaoProperty(Dao::Database& object, const QString& name);
Runtime::Variant GetDaoProperty(Dao::TableDef& object, const QString& name);
Runtime::Variant GetDaoProperty(Dao::Field& object, const QString& name);

} // namespace Bramlet
