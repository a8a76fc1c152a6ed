#pragma once

#include "platform/dao/Collection.h"
#include "platform/dao/ColumnType.h"
#include "platform/dao/Property.h"
#include "platform/runtime/Variant.h"

#include <QByteArray>
#include <QString>
#include <memory>

namespace Dao {

class DatabaseCore;
class Recordset;

// A column: of a table definition (its schema), of a recordset (its value in the current
// row) or of an index (just its name). A field made with CreateField and not yet appended
// can be shaped freely; once in the file its name, Required, AllowZeroLength and
// OrdinalPosition can still change (the table is rewritten when needed, keeping every
// row), its type and size cannot (3219).
class Field : public std::enable_shared_from_this<Field>
{
public:
    // A field not yet appended anywhere: the type defaults to Text with the default size;
    // Required and AllowZeroLength start False, as the engine's new fields do.
    static std::shared_ptr<Field> Create(const QString& name, DataType type, int size);

    QString Name() const;
    void SetName(const QString& name);
    DataType Type() const;
    void SetType(DataType type);
    int Size() const;
    void SetSize(int size);
    int Attributes() const;
    void SetAttributes(int attributes);
    bool Required() const;
    void SetRequired(bool required);
    bool AllowZeroLength() const;
    void SetAllowZeroLength(bool allow);
    // The position among the table's columns, counted from 0. Setting it moves the column
    // there (the others keep their order around it).
    int OrdinalPosition() const;
    void SetOrdinalPosition(int position);
    // For a recordset field: the table and column the value comes from.
    QString SourceTable() const;
    QString SourceField() const;

    // The value in the recordset's current row (or its edit buffer); fields of tables and
    // indexes have none (3219). Writing needs Edit or AddNew first (3020) and converts the
    // value to the column's type.
    Runtime::Variant Value() const;
    void SetValue(const Runtime::Variant& value);
    // Long binary and memo values in pieces: the size in bytes, `length` bytes from
    // `offset`, and appending to the value being edited (texts append their UTF-16 bytes).
    qint64 FieldSize() const;
    QByteArray GetChunk(qint64 offset, qint64 length) const;
    void AppendChunk(const Runtime::Variant& data);

    Collection<Property>& Properties() { return m_properties; }
    std::shared_ptr<Property> CreateProperty(
        const QString& name, DataType type, const Runtime::Variant& value);

private:
    friend class Database;
    friend class TableDef;
    friend class Recordset;
    friend class Index;

    enum class Kind { Detached, TableColumn, RecordsetColumn };

    Field() = default;
    // Table columns and recordset fields are made by their owners.
    static std::shared_ptr<Field> ForTable(
        const std::shared_ptr<DatabaseCore>& core, const QString& table, const QString& name);
    static std::shared_ptr<Field> ForRecordset(const std::shared_ptr<Recordset>& recordset,
        int index, const QString& name, const ColumnType& type, bool required, bool allowZeroLength,
        const QString& sourceTable, const QString& sourceField);
    // Called when the table this detached field belongs to is written to the file.
    void attachToTable(const std::shared_ptr<DatabaseCore>& core, const QString& table);

    struct Schema
    {
        ColumnType type;
        bool required = false;
        bool allowZeroLength = true;
        int ordinal = 0;
    };
    Schema tableSchema() const; // a table column's schema as the file has it now
    std::shared_ptr<DatabaseCore> core() const;
    Recordset* recordset() const;
    void changeTableColumn(const std::function<void(Schema&)>& change, int newPosition);

    Kind m_kind = Kind::Detached;
    QString m_name;
    ColumnType m_type { DataType::Text, 255, false };
    bool m_required = false;
    bool m_allowZeroLength = false;
    int m_ordinal = -1; // -1 until set: then the order of appending counts
    std::weak_ptr<DatabaseCore> m_core;
    QString m_table; // a table column's table, or a recordset field's source table
    QString m_sourceField;
    // The recordset a recordset field belongs to; it clears this when it goes, so reading
    // a value needs no reference counting (a walk reads millions of values).
    Recordset* m_recordset = nullptr;
    int m_index = 0; // position in the recordset
    Collection<Property> m_properties { DaoError::PropertyNotFound };
};

} // namespace Dao
