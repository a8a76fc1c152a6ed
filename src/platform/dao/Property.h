#pragma once

#include "platform/dao/Collection.h"
#include "platform/dao/ColumnType.h"
#include "platform/runtime/Variant.h"

#include <QString>
#include <functional>
#include <memory>

namespace Dao {

class DatabaseCore;

// A user-defined property of a database, a table definition or a field. The card layout
// lives in such properties (FieldType, FieldLabel, FormWidth ...). A property keeps the type
// it was created with: a value written later is converted to it (3421 when it cannot be).
class Property
{
public:
    // A property not yet appended to any object.
    static std::shared_ptr<Property> Create(
        const QString& name, DataType type, const Runtime::Variant& value);

    QString Name() const { return m_name; }
    DataType Type() const { return m_type; }
    Runtime::Variant Value() const;
    void SetValue(const Runtime::Variant& value);
    // User-defined properties always belong to the object that holds them.
    bool Inherited() const { return false; }

    // Where an object's properties live: the table and field names that key them in the
    // file (both empty for the database; the field empty for a table). A function, because
    // a table or field may be renamed while its properties are in use.
    using Location = std::function<std::pair<QString, QString>()>;

    // Makes `collection` the file's properties of the object at `location`. Properties
    // appended before (while the object was not yet in the file) are written first.
    static void Attach(Collection<Property>& collection, const std::shared_ptr<DatabaseCore>& core,
        const Location& location);

private:
    Property(const QString& name, DataType type, const Runtime::Variant& value);

    QString m_name;
    DataType m_type;
    Runtime::Variant m_value; // until the property is in the file
    std::weak_ptr<DatabaseCore> m_core;
    Location m_location;
};

} // namespace Dao
