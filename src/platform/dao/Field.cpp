#include "platform/dao/Field.h"

#include "platform/dao/DatabaseCore.h"
#include "platform/dao/Recordset.h"

namespace Dao {

std::shared_ptr<Field> Field::Create(const QString& name, DataType type, int size)
{
    std::shared_ptr<Field> field(new Field);
    field->m_name = name;
    field->m_type = ColumnType { type, size > 0 ? size : DefaultSize(type), false };
    if (type == DataType::Text && size > 255)
        field->m_type.size = 255;
    return field;
}

std::shared_ptr<Field> Field::ForTable(
    const std::shared_ptr<DatabaseCore>& core, const QString& table, const QString& name)
{
    std::shared_ptr<Field> field(new Field);
    field->m_kind = Kind::TableColumn;
    field->m_name = name;
    field->m_table = table;
    field->m_core = core;
    const std::weak_ptr<Field> weak = field;
    Property::Attach(field->m_properties, core, [weak] {
        const auto self = weak.lock();
        return self ? std::pair(self->m_table, self->m_name) : std::pair(QString(), QString());
    });
    return field;
}

std::shared_ptr<Field> Field::ForRecordset(const std::shared_ptr<Recordset>& recordset, int index,
    const QString& name, const ColumnType& type, bool required, bool allowZeroLength,
    const QString& sourceTable, const QString& sourceField)
{
    std::shared_ptr<Field> field(new Field);
    field->m_kind = Kind::RecordsetColumn;
    field->m_name = name;
    field->m_type = type;
    field->m_required = required;
    field->m_allowZeroLength = allowZeroLength;
    field->m_ordinal = index;
    field->m_table = sourceTable;
    field->m_sourceField = sourceField;
    field->m_recordset = recordset.get();
    field->m_index = index;
    // A recordset field shows the properties of the table column it comes from.
    if (const auto core = recordset->core(); core && !sourceTable.isEmpty()) {
        field->m_core = core;
        Property::Attach(field->m_properties, core,
            [sourceTable, sourceField] { return std::pair(sourceTable, sourceField); });
    }
    return field;
}

void Field::attachToTable(const std::shared_ptr<DatabaseCore>& core, const QString& table)
{
    m_kind = Kind::TableColumn;
    m_table = table;
    m_core = core;
    const std::weak_ptr<Field> weak = weak_from_this();
    Property::Attach(m_properties, core, [weak] {
        const auto self = weak.lock();
        return self ? std::pair(self->m_table, self->m_name) : std::pair(QString(), QString());
    });
}

std::shared_ptr<DatabaseCore> Field::core() const
{
    const auto core = m_core.lock();
    if (!core || !core->isOpen())
        throw DaoError::make(DaoError::ObjectClosed);
    return core;
}

Recordset* Field::recordset() const
{
    if (!m_recordset || !m_recordset->IsOpen())
        throw DaoError::make(DaoError::ObjectClosed);
    return m_recordset;
}

Field::Schema Field::tableSchema() const
{
    const auto columns = core()->columns(m_table);
    for (size_t i = 0; i < columns.size(); ++i) {
        if (columns[i].name.compare(m_name, Qt::CaseInsensitive) == 0) {
            return Schema { columns[i].type, columns[i].required, columns[i].allowZeroLength,
                static_cast<int>(i) };
        }
    }
    throw DaoError::make(DaoError::ItemNotFound);
}

void Field::changeTableColumn(const std::function<void(Schema&)>& change, int newPosition)
{
    const auto database = core();
    auto columns = database->columns(m_table);
    auto found = std::find_if(columns.begin(), columns.end(), [this](const auto& column) {
        return column.name.compare(m_name, Qt::CaseInsensitive) == 0;
    });
    if (found == columns.end())
        throw DaoError::make(DaoError::ItemNotFound);
    Schema schema { found->type, found->required, found->allowZeroLength,
        static_cast<int>(found - columns.begin()) };
    change(schema);
    DatabaseCore::ColumnInfo changed = *found;
    changed.required = schema.required;
    changed.allowZeroLength = schema.allowZeroLength;
    columns.erase(found);
    const int last = static_cast<int>(columns.size());
    const int position = std::clamp(newPosition < 0 ? schema.ordinal : newPosition, 0, last);
    columns.insert(columns.begin() + position, changed);
    database->rebuildTable(m_table, columns);
}

QString Field::Name() const
{
    return m_name;
}

void Field::SetName(const QString& name)
{
    switch (m_kind) {
    case Kind::Detached:
        m_name = name;
        break;
    case Kind::TableColumn:
        core()->renameColumn(m_table, m_name, name);
        m_name = name;
        break;
    case Kind::RecordsetColumn:
        throw DaoError::make(DaoError::InvalidOperation);
    }
}

DataType Field::Type() const
{
    return m_kind == Kind::TableColumn ? tableSchema().type.type : m_type.type;
}

void Field::SetType(DataType type)
{
    if (m_kind != Kind::Detached)
        throw DaoError::make(DaoError::InvalidOperation);
    m_type.type = type;
    m_type.size = DefaultSize(type);
}

int Field::Size() const
{
    const ColumnType type = m_kind == Kind::TableColumn ? tableSchema().type : m_type;
    return type.size > 0 ? type.size : DefaultSize(type.type);
}

void Field::SetSize(int size)
{
    if (m_kind != Kind::Detached)
        throw DaoError::make(DaoError::InvalidOperation);
    if (m_type.type == DataType::Text || m_type.type == DataType::Binary)
        m_type.size = size > 0 ? std::min(size, 255) : DefaultSize(m_type.type);
}

int Field::Attributes() const
{
    const ColumnType type = m_kind == Kind::TableColumn ? tableSchema().type : m_type;
    int attributes = type.type == DataType::Text || type.type == DataType::Memo
            || type.type == DataType::Binary || type.type == DataType::LongBinary
        ? VariableField
        : FixedField;
    if (type.autoIncrement)
        attributes |= AutoIncrementField;
    if (m_kind != Kind::RecordsetColumn || recordset()->Updatable())
        attributes |= type.autoIncrement ? 0 : UpdatableField;
    return attributes;
}

void Field::SetAttributes(int attributes)
{
    if (m_kind != Kind::Detached)
        throw DaoError::make(DaoError::InvalidOperation);
    // Only a whole-number field can count by itself.
    m_type.autoIncrement = (attributes & AutoIncrementField) && m_type.type == DataType::Long;
}

bool Field::Required() const
{
    return m_kind == Kind::TableColumn ? tableSchema().required : m_required;
}

void Field::SetRequired(bool required)
{
    switch (m_kind) {
    case Kind::Detached:
        m_required = required;
        break;
    case Kind::TableColumn:
        if (Required() != required)
            changeTableColumn([required](Schema& schema) { schema.required = required; }, -1);
        break;
    case Kind::RecordsetColumn:
        throw DaoError::make(DaoError::InvalidOperation);
    }
}

bool Field::AllowZeroLength() const
{
    return m_kind == Kind::TableColumn ? tableSchema().allowZeroLength : m_allowZeroLength;
}

void Field::SetAllowZeroLength(bool allow)
{
    switch (m_kind) {
    case Kind::Detached:
        m_allowZeroLength = allow;
        break;
    case Kind::TableColumn:
        if (IsTextType(Type()) && AllowZeroLength() != allow)
            changeTableColumn([allow](Schema& schema) { schema.allowZeroLength = allow; }, -1);
        break;
    case Kind::RecordsetColumn:
        throw DaoError::make(DaoError::InvalidOperation);
    }
}

int Field::OrdinalPosition() const
{
    if (m_kind == Kind::TableColumn)
        return tableSchema().ordinal;
    return std::max(m_ordinal, 0);
}

void Field::SetOrdinalPosition(int position)
{
    switch (m_kind) {
    case Kind::Detached:
        m_ordinal = std::max(position, 0);
        break;
    case Kind::TableColumn:
        if (OrdinalPosition() != position)
            changeTableColumn([](Schema&) {}, std::max(position, 0));
        break;
    case Kind::RecordsetColumn:
        throw DaoError::make(DaoError::InvalidOperation);
    }
}

QString Field::SourceTable() const
{
    return m_kind == Kind::Detached ? QString() : m_table;
}

QString Field::SourceField() const
{
    if (m_kind == Kind::TableColumn)
        return m_name;
    return m_kind == Kind::RecordsetColumn ? m_sourceField : QString();
}

Runtime::Variant Field::Value() const
{
    if (m_kind != Kind::RecordsetColumn)
        throw DaoError::make(DaoError::InvalidOperation);
    return recordset()->value(m_index);
}

void Field::SetValue(const Runtime::Variant& value)
{
    if (m_kind != Kind::RecordsetColumn)
        throw DaoError::make(DaoError::InvalidOperation);
    recordset()->setValue(m_index, value);
}

qint64 Field::FieldSize() const
{
    const Runtime::Variant value = Value();
    if (value.type() == Runtime::VariantType::Binary)
        return value.bytes().size();
    if (value.type() == Runtime::VariantType::Text)
        return value.text().size();
    return 0;
}

QByteArray Field::GetChunk(qint64 offset, qint64 length) const
{
    if (offset < 0 || length < 0)
        throw DaoError::make(DaoError::InvalidArgument);
    const Runtime::Variant value = Value();
    QByteArray bytes;
    if (value.type() == Runtime::VariantType::Binary) {
        bytes = value.bytes();
    } else if (value.type() == Runtime::VariantType::Text) {
        const QString text = value.text();
        bytes = QByteArray(reinterpret_cast<const char*>(text.utf16()),
            text.size() * static_cast<qsizetype>(sizeof(char16_t)));
    }
    if (offset >= bytes.size())
        return {};
    return bytes.mid(offset, length);
}

void Field::AppendChunk(const Runtime::Variant& data)
{
    if (m_kind != Kind::RecordsetColumn)
        throw DaoError::make(DaoError::InvalidOperation);
    Recordset* owner = recordset();
    const Runtime::Variant current = owner->value(m_index);
    if (IsTextType(m_type.type)) {
        const QString text = current.isNull() ? QString() : current.text();
        owner->setValue(m_index, Runtime::Variant(text + data.text()));
        return;
    }
    QByteArray bytes
        = current.type() == Runtime::VariantType::Binary ? current.bytes() : QByteArray();
    if (data.type() == Runtime::VariantType::Text) {
        const QString text = data.text();
        bytes.append(reinterpret_cast<const char*>(text.utf16()),
            text.size() * static_cast<qsizetype>(sizeof(char16_t)));
    } else {
        bytes.append(data.bytes());
    }
    owner->setValue(m_index, Runtime::Variant(bytes));
}

std::shared_ptr<Property> Field::CreateProperty(
    const QString& name, DataType type, const Runtime::Variant& value)
{
    return Property::Create(name, type, value);
}

} // namespace Dao
