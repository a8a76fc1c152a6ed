#include "platform/dao/Recordset.h"

#include "platform/dao/DatabaseCore.h"
#include "platform/dao/SchemaSql.h"
#include "platform/dao/ValueConversion.h"

#include <QRegularExpression>
#include <QSet>
#include <cstring>

using namespace Qt::Literals::StringLiterals;

namespace Dao {

namespace {

using Runtime::Variant;

// Rows examined per statement while finding: small first, so that a match near the
// current row is found at once, then larger to keep a long search quick.
constexpr int FindChunkLimit = 512;

// Rows read in one go while walking: one read of the file per batch instead of per row.
constexpr int ReadAheadRows = 64;
// Pictures larger than this are read only when asked for, so that a batch stays small.
constexpr int LargePictureBytes = 16384;

QByteArray KeyBytes(qint64 key)
{
    QByteArray bytes(sizeof key, Qt::Uninitialized);
    std::memcpy(bytes.data(), &key, sizeof key);
    return bytes;
}

std::optional<qint64> KeyOf(const QByteArray& bytes)
{
    if (bytes.size() != sizeof(qint64))
        return std::nullopt;
    qint64 key = 0;
    std::memcpy(&key, bytes.constData(), sizeof key);
    return key;
}

bool WithoutRowId(Connection& connection, const QString& table)
{
    static const QRegularExpression pattern(
        u"\\bWITHOUT\\s+ROWID\\b"_s, QRegularExpression::CaseInsensitiveOption);
    Statement definition
        = connection.prepare(u"SELECT sql FROM sqlite_master WHERE type = 'table' AND name = ?1"_s);
    definition.bind(1, table);
    return definition.step() && pattern.match(definition.text(0)).hasMatch();
}

ColumnType TypeOfStorage(const Variant& value)
{
    switch (value.type()) {
    case Runtime::VariantType::Long:
        return { DataType::Long, 4, false };
    case Runtime::VariantType::Double:
        return { DataType::Double, 8, false };
    case Runtime::VariantType::Binary:
        return { DataType::LongBinary, 0, false };
    default:
        return { DataType::Memo, 0, false };
    }
}

} // namespace

Recordset::Recordset(const std::shared_ptr<DatabaseCore>& core)
    : m_core(core)
{ }

Recordset::~Recordset()
{
    try {
        Close();
    } catch (...) {
        // Closing never fails in a way the caller could act on.
    }
    for (const auto& field : m_ownFields)
        field->m_recordset = nullptr;
}

std::shared_ptr<Recordset> Recordset::OpenTable(
    const std::shared_ptr<DatabaseCore>& core, const QString& table)
{
    std::shared_ptr<Recordset> recordset(new Recordset(core));
    recordset->m_type = RecordsetType::Table;
    recordset->m_name = table;
    if (WithoutRowId(core->connection(), table))
        throw DaoError::make(DaoError::OperationNotSupported);
    recordset->openKeyed(table, {}, {}, {}, {});
    core->registerRecordset(recordset);
    return recordset;
}

std::shared_ptr<Recordset> Recordset::OpenQuery(
    const std::shared_ptr<DatabaseCore>& core, const QString& sql, RecordsetType type)
{
    const SqlStatement statement = core->translate(sql);
    if (statement.kind != SqlStatement::Kind::Select)
        throw DaoError::make(DaoError::InvalidOperation);
    std::shared_ptr<Recordset> recordset(new Recordset(core));
    recordset->m_type = type == RecordsetType::Snapshot ? type : RecordsetType::Dynaset;
    recordset->m_name = sql;
    const auto table = statement.singleTable ? core->tableName(statement.table) : std::nullopt;
    try {
        if (table && !WithoutRowId(core->connection(), *table)) {
            recordset->openKeyed(*table, statement.selectedColumns, statement.where,
                statement.orderBy, statement.limit);
        } else {
            recordset->openStatic(statement);
        }
    } catch (const DaoError& error) {
        throw error.naming(sql);
    }
    core->registerRecordset(recordset);
    return recordset;
}

std::shared_ptr<DatabaseCore> Recordset::core() const
{
    const auto core = m_core.lock();
    if (!core || !core->isOpen())
        throw DaoError::make(DaoError::ObjectClosed);
    return core;
}

void Recordset::checkOpen() const
{
    // Closing the database closes its recordsets first, so an open recordset has an open
    // file behind it.
    if (!m_open)
        throw DaoError::make(DaoError::ObjectClosed);
}

bool Recordset::Updatable() const
{
    if (!m_open || !m_keyed || m_type == RecordsetType::Snapshot)
        return false;
    const auto database = m_core.lock();
    return database && database->isOpen() && !database->isReadOnly();
}

void Recordset::checkUpdatable() const
{
    checkOpen();
    if (core()->isReadOnly())
        throw DaoError::make(DaoError::ReadOnly);
    if (!Updatable())
        throw DaoError::make(DaoError::NotUpdatable);
}

void Recordset::openKeyed(const QString& table, const QStringList& columns, const QString& where,
    const QString& orderBy, const QString& limit)
{
    const auto database = core();
    const auto all = database->columns(table);
    if (all.empty())
        throw DaoError::make(DaoError::InputTableNotFound, table);
    std::vector<DatabaseCore::ColumnInfo> chosen;
    if (columns.isEmpty()) {
        chosen = all;
    } else {
        for (const QString& name : columns) {
            const auto found = database->column(table, name);
            if (!found)
                throw DaoError::make(DaoError::TooFewParameters, name);
            chosen.push_back(*found);
        }
    }
    QStringList quoted;
    for (const auto& column : chosen) {
        m_columns.push_back({ column.name, column.type, column.required, column.allowZeroLength,
            !column.type.autoIncrement, table, column.name });
        quoted.append(QuoteIdentifier(column.name));
    }
    m_keyed = true;
    m_table = table;
    m_rowSql = u"SELECT "_s + quoted.join(u", "_s) + u" FROM "_s + QuoteIdentifier(table)
        + u" WHERE rowid = ?1"_s;
    QStringList parameters;
    for (int i = 1; i <= ReadAheadRows; ++i)
        parameters.append(u'?' + QString::number(i));
    // Large pictures are left out of a batch and read when asked for: a walk through cards
    // with pictures then neither reads nor holds them. Each picture column gives two: the
    // value when it is small (or Null), and whether it was left out.
    QStringList ahead;
    for (qsizetype i = 0; i < quoted.size(); ++i) {
        if (m_columns[static_cast<size_t>(i)].type.type == DataType::LongBinary) {
            const QString large
                = u"length("_s + quoted[i] + u") > "_s + QString::number(LargePictureBytes);
            ahead.append(u"CASE WHEN "_s + large + u" THEN NULL ELSE "_s + quoted[i] + u" END"_s);
            ahead.append(u"coalesce("_s + large + u", 0)"_s);
        } else {
            ahead.append(quoted[i]);
        }
    }
    m_aheadSql = u"SELECT rowid, "_s + ahead.join(u", "_s) + u" FROM "_s + QuoteIdentifier(table)
        + u" WHERE rowid IN ("_s + parameters.join(u", "_s) + u")"_s;
    for (const auto& index : database->indexes(table)) {
        if (!index.required)
            continue;
        for (size_t i = 0; i < m_columns.size(); ++i) {
            if (index.fields.contains(m_columns[i].name, Qt::CaseInsensitive))
                m_requiredIndexColumns.push_back(i);
        }
    }
    setKeysOrder(where, orderBy, limit);
    loadKeys();
    positionAfterOpen();
    makeFields();
}

void Recordset::setKeysOrder(const QString& where, const QString& orderBy, const QString& limit)
{
    // Ties in the order are broken by row id, so that the order is the same every time.
    m_keysSql = u"SELECT rowid FROM "_s + QuoteIdentifier(m_table);
    if (!where.isEmpty())
        m_keysSql += u" WHERE "_s + where;
    m_keysSql += u" ORDER BY "_s + (orderBy.isEmpty() ? u"rowid"_s : orderBy + u", rowid"_s);
    if (!limit.isEmpty())
        m_keysSql += u" LIMIT "_s + limit;
}

void Recordset::loadKeys()
{
    std::vector<qint64> keys;
    Statement statement = core()->connection().prepareOnce(m_keysSql);
    while (statement.step())
        keys.push_back(statement.integer(0));
    m_keys = std::move(keys);
    m_positionsValid = false;
    m_ahead.clear();
}

void Recordset::openStatic(const SqlStatement& statement)
{
    m_statement = statement;
    m_keyed = false;
    loadStatic();
    positionAfterOpen();
    makeFields();
}

void Recordset::loadStatic()
{
    const auto database = core();
    Statement query = database->connection().prepareOnce(m_statement.sql);
    const int count = query.columnCount();
    std::vector<Column> columns(static_cast<size_t>(count));
    std::vector<bool> known(static_cast<size_t>(count), false);
    for (int i = 0; i < count; ++i) {
        Column& column = columns[static_cast<size_t>(i)];
        column.name = query.columnName(i);
        QString table = query.originTable(i);
        QString source = query.originColumn(i);
        if (source.isEmpty() && static_cast<size_t>(i) < m_statement.sourceColumns.size()) {
            table = m_statement.table;
            source = m_statement.sourceColumns[static_cast<size_t>(i)];
        }
        if (!table.isEmpty() && !source.isEmpty()) {
            if (const auto info = database->column(table, source)) {
                column.type = info->type;
                column.sourceTable = query.originTable(i).isEmpty() ? QString() : table;
                column.sourceColumn = column.sourceTable.isEmpty() ? QString() : info->name;
                known[static_cast<size_t>(i)] = true;
            }
        }
    }
    std::vector<std::vector<Variant>> rows;
    while (query.step()) {
        std::vector<Variant> row;
        row.reserve(static_cast<size_t>(count));
        for (int i = 0; i < count; ++i) {
            const Variant stored = query.value(i);
            if (!known[static_cast<size_t>(i)] && !stored.isNull()) {
                columns[static_cast<size_t>(i)].type = TypeOfStorage(stored);
                known[static_cast<size_t>(i)] = true;
            }
            row.push_back(stored);
        }
        rows.push_back(std::move(row));
    }
    for (auto& row : rows) {
        for (size_t i = 0; i < row.size(); ++i)
            row[i] = FromStorage(row[i], columns[i].type.type);
    }
    if (m_columns.empty())
        m_columns = std::move(columns);
    m_rows = std::move(rows);
}

void Recordset::makeFields()
{
    std::vector<std::shared_ptr<Field>> fields;
    const auto self = shared_from_this();
    for (size_t i = 0; i < m_columns.size(); ++i) {
        const Column& column = m_columns[i];
        fields.push_back(Field::ForRecordset(self, static_cast<int>(i), column.name, column.type,
            column.required, column.allowZeroLength, column.sourceTable, column.sourceColumn));
    }
    m_ownFields = fields;
    m_fields.attach([fields] { return fields; },
        [](const std::shared_ptr<Field>&) { throw DaoError::make(DaoError::InvalidOperation); },
        [](const std::shared_ptr<Field>&) { throw DaoError::make(DaoError::InvalidOperation); });
}

void Recordset::positionAfterOpen()
{
    m_position = 0; // the first row, or both ends when there are none
    m_currentDeleted = false;
    m_rowLoaded = false;
}

qint64 Recordset::count() const
{
    return m_keyed ? static_cast<qint64>(m_keys.size()) : static_cast<qint64>(m_rows.size());
}

bool Recordset::hasCurrent() const
{
    return !m_currentDeleted && m_position >= 0 && m_position < count();
}

bool Recordset::IsBOF() const
{
    checkOpen();
    return count() == 0 || m_position < 0;
}

bool Recordset::IsEOF() const
{
    checkOpen();
    return count() == 0 || m_position >= count();
}

qint64 Recordset::RecordCount() const
{
    checkOpen();
    return count();
}

qint64 Recordset::AbsolutePosition() const
{
    checkOpen();
    return hasCurrent() ? m_position : -1;
}

void Recordset::SetAbsolutePosition(qint64 position)
{
    checkOpen();
    if (position < 0 || position >= count())
        throw DaoError::make(DaoError::InvalidArgument);
    leaveRow();
    setPosition(position);
}

void Recordset::setPosition(qint64 position)
{
    m_position = std::clamp<qint64>(position, -1, count());
    m_currentDeleted = false;
    m_rowLoaded = false;
}

void Recordset::discardEdit()
{
    if (m_editMode == Dao::EditMode::Add)
        m_position = m_positionBeforeAdd;
    m_editMode = Dao::EditMode::None;
    m_buffer.clear();
    m_changed.clear();
    m_original.clear();
    releaseLock();
}

void Recordset::leaveRow()
{
    if (m_editMode != Dao::EditMode::None)
        discardEdit();
    m_rowLoaded = false;
}

void Recordset::releaseLock()
{
    if (!m_lockHeld)
        return;
    m_lockHeld = false;
    try {
        // Nothing of this recordset was written under the lock; committing keeps what other
        // recordsets of the database wrote meanwhile.
        core()->connection().commit();
    } catch (const DaoError&) { }
}

void Recordset::MoveFirst()
{
    checkOpen();
    leaveRow();
    if (count() == 0)
        throw DaoError::make(DaoError::NoCurrentRecord);
    m_direction = 1;
    setPosition(0);
}

void Recordset::MoveLast()
{
    checkOpen();
    leaveRow();
    if (count() == 0)
        throw DaoError::make(DaoError::NoCurrentRecord);
    m_direction = -1;
    setPosition(count() - 1);
}

void Recordset::MoveNext()
{
    checkOpen();
    const bool deleted = m_currentDeleted;
    if (m_editMode == Dao::EditMode::Add)
        leaveRow(); // back to the row that was current before AddNew
    if (!deleted && (count() == 0 || m_position >= count()))
        throw DaoError::make(DaoError::NoCurrentRecord);
    leaveRow();
    // After Delete the next row has moved up into the deleted one's place.
    m_direction = 1;
    setPosition(deleted ? m_position : m_position + 1);
}

void Recordset::MovePrevious()
{
    checkOpen();
    if (m_editMode == Dao::EditMode::Add)
        leaveRow();
    if (count() == 0 || m_position < 0)
        throw DaoError::make(DaoError::NoCurrentRecord);
    leaveRow();
    m_direction = -1;
    setPosition(m_position - 1);
}

void Recordset::Move(qint64 rows)
{
    checkOpen();
    if (m_editMode == Dao::EditMode::Add)
        leaveRow();
    if (rows == 0) {
        checkCurrent();
        leaveRow();
        if (m_keyed)
            m_ahead.remove(m_keys[static_cast<size_t>(m_position)]);
        return;
    }
    if ((rows < 0 && (count() == 0 || m_position < 0))
        || (rows > 0 && !m_currentDeleted && (count() == 0 || m_position >= count())))
        throw DaoError::make(DaoError::NoCurrentRecord);
    const qint64 from = m_currentDeleted && rows > 0 ? m_position - 1 : m_position;
    leaveRow();
    m_direction = rows > 0 ? 1 : -1;
    setPosition(from + rows);
}

void Recordset::checkCurrent() const
{
    checkOpen();
    if (m_currentDeleted)
        throw DaoError::make(DaoError::RecordDeleted);
    if (!hasCurrent())
        throw DaoError::make(DaoError::NoCurrentRecord);
}

QByteArray Recordset::Bookmark() const
{
    checkCurrent();
    return KeyBytes(m_keyed ? m_keys[static_cast<size_t>(m_position)] : m_position);
}

void Recordset::SetBookmark(const QByteArray& bookmark)
{
    checkOpen();
    const auto key = KeyOf(bookmark);
    if (!key)
        throw DaoError::make(DaoError::NotAValidBookmark);
    const qint64 position = m_keyed ? positionOfKey(*key) : *key;
    if (position < 0 || position >= count())
        throw DaoError::make(DaoError::NotAValidBookmark);
    leaveRow();
    setPosition(position);
}

QByteArray Recordset::LastModified() const
{
    checkOpen();
    if (!m_lastModified)
        throw DaoError::make(DaoError::NoCurrentRecord);
    return KeyBytes(*m_lastModified);
}

qint64 Recordset::positionOfKey(qint64 key) const
{
    if (!m_positionsValid) {
        m_positions.clear();
        m_positions.reserve(static_cast<qsizetype>(m_keys.size()));
        for (size_t i = 0; i < m_keys.size(); ++i)
            m_positions.insert(m_keys[i], static_cast<qint64>(i));
        m_positionsValid = true;
    }
    return m_positions.value(key, -1);
}

std::optional<std::vector<Variant>> Recordset::readRow(qint64 key) const
{
    Statement statement = core()->connection().prepare(m_rowSql);
    statement.bind(1, key);
    if (!statement.step())
        return std::nullopt;
    std::vector<Variant> row;
    row.reserve(m_columns.size());
    const int available
        = std::min<int>(statement.columnCount(), static_cast<int>(m_columns.size()));
    for (int i = 0; i < available; ++i)
        row.push_back(FromStorage(statement.value(i), m_columns[static_cast<size_t>(i)].type.type));
    row.resize(m_columns.size(), Variant::null());
    return row;
}

const std::vector<Variant>& Recordset::currentRow() const
{
    checkCurrent();
    if (!m_rowLoaded) {
        if (m_keyed) {
            const qint64 key = m_keys[static_cast<size_t>(m_position)];
            if (!m_ahead.contains(key))
                readAhead(m_position);
            if (auto ahead = m_ahead.find(key); ahead != m_ahead.end()) {
                // Read in place: the batch stays unchanged until the row is left.
                m_currentRow = &ahead.value();
            } else {
                auto row = readRow(key);
                if (!row)
                    throw DaoError::make(DaoError::RecordDeleted); // deleted by another user
                m_row = std::move(*row);
                m_currentRow = &m_row;
            }
        } else {
            // A static row has every value read, so nothing is written through it.
            m_currentRow
                = const_cast<std::vector<Variant>*>(&m_rows[static_cast<size_t>(m_position)]);
        }
        m_rowLoaded = true;
    }
    return *m_currentRow;
}

void Recordset::readAhead(qint64 position) const
{
    m_ahead.clear();
    std::vector<qint64> keys;
    for (qint64 p = position; keys.size() < ReadAheadRows && p >= 0 && p < count();
         p += m_direction)
        keys.push_back(m_keys[static_cast<size_t>(p)]);
    Statement statement = core()->connection().prepare(m_aheadSql);
    for (int i = 0; i < ReadAheadRows; ++i) {
        if (static_cast<size_t>(i) < keys.size())
            statement.bind(i + 1, keys[static_cast<size_t>(i)]);
        else
            statement.bind(i + 1, Variant::null());
    }
    const int available = statement.columnCount();
    while (statement.step()) {
        std::vector<Variant> row;
        row.reserve(m_columns.size());
        int result = 1;
        for (size_t i = 0; i < m_columns.size() && result < available; ++i) {
            const DataType type = m_columns[i].type.type;
            Variant value = FromStorage(statement.value(result++), type);
            // Empty marks a picture left out; a stored value is never Empty.
            if (type == DataType::LongBinary && result < available && statement.integer(result++))
                value = Variant();
            row.push_back(std::move(value));
        }
        row.resize(m_columns.size(), Variant::null());
        m_ahead.insert(statement.integer(0), std::move(row));
    }
}

void Recordset::refresh()
{
    m_ahead.clear();
    m_rowLoaded = false;
}

Variant Recordset::value(int index) const
{
    checkOpen();
    if (index < 0 || static_cast<size_t>(index) >= m_columns.size())
        throw DaoError::make(DaoError::ItemNotFound);
    if (m_editMode != Dao::EditMode::None)
        return m_buffer[static_cast<size_t>(index)];
    const auto& row = currentRow();
    const size_t column = static_cast<size_t>(index);
    if (!row[column].isEmpty())
        return row[column];
    // A picture left out of the batch, read now and kept with the row.
    Statement statement
        = core()->connection().prepare(u"SELECT "_s + QuoteIdentifier(m_columns[column].name)
            + u" FROM "_s + QuoteIdentifier(m_table) + u" WHERE rowid = ?1"_s);
    statement.bind(1, m_keys[static_cast<size_t>(m_position)]);
    if (!statement.step())
        throw DaoError::make(DaoError::RecordDeleted);
    m_currentRow->at(column) = FromStorage(statement.value(0), m_columns[column].type.type);
    return m_currentRow->at(column);
}

void Recordset::setValue(int index, const Variant& value)
{
    checkOpen();
    if (index < 0 || static_cast<size_t>(index) >= m_columns.size())
        throw DaoError::make(DaoError::ItemNotFound);
    if (m_editMode == Dao::EditMode::None)
        throw DaoError::make(DaoError::UpdateWithoutEdit);
    const Column& column = m_columns[static_cast<size_t>(index)];
    if (!column.updatable)
        throw DaoError::make(DaoError::FieldNotUpdatable);
    m_buffer[static_cast<size_t>(index)]
        = ConvertForColumn(value, column.type, ConversionMode::Assignment);
    m_changed[static_cast<size_t>(index)] = true;
}

void Recordset::AddNew()
{
    checkUpdatable();
    leaveRow();
    m_positionBeforeAdd = m_position;
    m_addFromEnd = m_position >= count();
    m_buffer.assign(m_columns.size(), Variant::null());
    m_changed.assign(m_columns.size(), false);
    m_editMode = Dao::EditMode::Add;
}

void Recordset::Edit()
{
    checkUpdatable();
    if (m_editMode == Dao::EditMode::Add)
        leaveRow();
    checkCurrent();
    m_editMode = Dao::EditMode::None;
    const qint64 key = m_keys[static_cast<size_t>(m_position)];
    auto& connection = core()->connection();
    if (m_lockEdits) {
        connection.begin();
        m_lockHeld = true;
    }
    // The row is read afresh: what Update compares against is what the file held at Edit.
    std::optional<std::vector<Variant>> row;
    try {
        row = readRow(key);
    } catch (...) {
        releaseLock();
        throw;
    }
    if (!row) {
        releaseLock();
        throw DaoError::make(DaoError::RecordDeleted);
    }
    m_ahead.remove(key);
    m_row = *row;
    m_currentRow = &m_row;
    m_rowLoaded = true;
    m_buffer = *row;
    m_original = std::move(*row);
    m_changed.assign(m_columns.size(), false);
    m_editMode = Dao::EditMode::InProgress;
}

void Recordset::validateBuffer() const
{
    for (size_t i = 0; i < m_columns.size(); ++i) {
        const Column& column = m_columns[i];
        const Variant& value = m_buffer[i];
        if (column.type.autoIncrement && m_editMode == Dao::EditMode::Add)
            continue; // numbered when the row is written
        if (column.required && value.isNull())
            throw DaoError::make(DaoError::RequiredFieldNull, m_table + u'.' + column.name);
        if (IsTextType(column.type.type) && !column.allowZeroLength
            && value.type() == Runtime::VariantType::Text && value.text().isEmpty())
            throw DaoError::make(DaoError::ZeroLengthNotAllowed, m_table + u'.' + column.name);
    }
    // A required index takes no Null in its fields, even where the field itself may be Null.
    for (const size_t i : m_requiredIndexColumns) {
        if (m_buffer[i].isNull()
            && !(m_columns[i].type.autoIncrement && m_editMode == Dao::EditMode::Add))
            throw DaoError::make(DaoError::IndexRequiresValue);
    }
}

const QString& Recordset::insertSql()
{
    // The same fields are set card after card (an import, a form), so the text of the last
    // INSERT is kept while they stay the same. A counter's number is read by the INSERT
    // itself from a table that may appear later, so tables with counters build it afresh.
    bool counted = false;
    for (const Column& column : m_columns)
        counted = counted || column.type.autoIncrement;
    if (!counted && !m_insertSql.isEmpty() && m_insertChanged == m_changed)
        return m_insertSql;
    const QString table = QuoteIdentifier(m_table);
    QStringList names;
    QStringList values;
    int parameters = 0;
    for (size_t i = 0; i < m_columns.size(); ++i) {
        const Column& column = m_columns[i];
        if (column.type.autoIncrement) {
            names.append(QuoteIdentifier(column.name));
            values.append(core()->nextCounterSql(m_table, column.name));
        } else if (m_changed[i]) {
            names.append(QuoteIdentifier(column.name));
            values.append(u'?' + QString::number(++parameters));
        }
    }
    m_insertSql = names.isEmpty() ? u"INSERT INTO "_s + table + u" DEFAULT VALUES"_s
                                  : u"INSERT INTO "_s + table + u" ("_s + names.join(u", "_s)
            + u") VALUES ("_s + values.join(u", "_s) + u")"_s;
    m_insertChanged = m_changed;
    return m_insertSql;
}

void Recordset::Update()
{
    checkOpen();
    if (m_editMode == Dao::EditMode::None)
        throw DaoError::make(DaoError::UpdateWithoutEdit);
    validateBuffer();
    auto& connection = core()->connection();
    const QString table = QuoteIdentifier(m_table);

    if (m_editMode == Dao::EditMode::Add) {
        const QString& sql = insertSql();
        qint64 key = 0;
        const auto insert = [&] {
            Statement statement = connection.prepare(sql);
            int parameter = 0;
            for (size_t i = 0; i < m_columns.size(); ++i) {
                if (m_changed[i] && !m_columns[i].type.autoIncrement)
                    statement.bind(++parameter, m_buffer[i]);
            }
            statement.step();
            key = connection.lastInsertRowId();
        };
        // Inside a transaction one INSERT needs no savepoint of its own: a statement that
        // fails leaves nothing behind. An import adds thousands of cards in one transaction.
        if (connection.inTransaction())
            insert();
        else
            connection.write(insert);
        m_lastModified = key;
        m_editMode = Dao::EditMode::None;
        m_buffer.clear();
        m_changed.clear();
        const qint64 oldCount = count();
        if (m_type == RecordsetType::Table) {
            // A table-type recordset keeps its index order: the new row takes its place.
            const std::optional<qint64> current
                = m_positionBeforeAdd >= 0 && m_positionBeforeAdd < oldCount
                ? std::optional(m_keys[static_cast<size_t>(m_positionBeforeAdd)])
                : std::nullopt;
            loadKeys();
            setPosition(current ? positionOfKey(*current) : (m_addFromEnd ? count() : -1));
        } else {
            // A dynaset shows the new row at its end; the row current before AddNew stays
            // current (the end stays the end).
            m_keys.push_back(key);
            m_positionsValid = false;
            setPosition(m_addFromEnd ? count() : m_positionBeforeAdd);
        }
        return;
    }

    std::vector<size_t> changed;
    for (size_t i = 0; i < m_columns.size(); ++i) {
        if (m_changed[i])
            changed.push_back(i);
    }
    const qint64 key = m_keys[static_cast<size_t>(m_position)];
    if (!changed.empty()) {
        QStringList assignments;
        for (size_t c = 0; c < changed.size(); ++c) {
            assignments.append(
                QuoteIdentifier(m_columns[changed[c]].name) + u" = ?"_s + QString::number(c + 1));
        }
        const QString sql = u"UPDATE "_s + table + u" SET "_s + assignments.join(u", "_s)
            + u" WHERE rowid = ?"_s + QString::number(changed.size() + 1);
        try {
            connection.write([&] {
                if (!m_lockHeld) {
                    // Optimistic: the row must still be what Edit read.
                    const auto now = readRow(key);
                    if (!now)
                        throw DaoError::make(DaoError::RecordDeleted);
                    if (*now != m_original)
                        throw DaoError::make(DaoError::ChangedByAnotherUser);
                }
                Statement update = connection.prepare(sql);
                for (size_t c = 0; c < changed.size(); ++c)
                    update.bind(static_cast<int>(c + 1), m_buffer[changed[c]]);
                update.bind(static_cast<int>(changed.size() + 1), key);
                update.step();
                if (connection.changes() == 0)
                    throw DaoError::make(DaoError::RecordDeleted);
            });
            if (m_lockHeld) {
                m_lockHeld = false;
                connection.commit();
            }
        } catch (...) {
            // The edit stays, so the caller can show the user's values or cancel; a lock
            // lost with a failed commit is not held any more.
            if (m_lockHeld && !connection.inTransaction())
                m_lockHeld = false;
            throw;
        }
    }
    releaseLock();
    m_ahead.remove(key);
    m_lastModified = key;
    m_editMode = Dao::EditMode::None;
    m_buffer.clear();
    m_changed.clear();
    m_original.clear();
    m_rowLoaded = false;
}

void Recordset::CancelUpdate()
{
    checkOpen();
    if (m_editMode == Dao::EditMode::None)
        throw DaoError::make(DaoError::UpdateWithoutEdit);
    discardEdit();
    m_rowLoaded = false;
}

void Recordset::Delete()
{
    checkUpdatable();
    if (m_editMode != Dao::EditMode::None)
        discardEdit();
    checkCurrent();
    const qint64 key = m_keys[static_cast<size_t>(m_position)];
    auto& connection = core()->connection();
    connection.write([&] {
        core()->keepCounters(m_table);
        Statement remove = connection.prepare(
            u"DELETE FROM "_s + QuoteIdentifier(m_table) + u" WHERE rowid = ?1"_s);
        remove.bind(1, key);
        remove.step();
        if (connection.changes() == 0)
            throw DaoError::make(DaoError::RecordDeleted);
    });
    m_ahead.remove(key);
    m_keys.erase(m_keys.begin() + static_cast<std::ptrdiff_t>(m_position));
    m_positionsValid = false;
    m_rowLoaded = false;
    m_currentDeleted = true;
}

void Recordset::SetLockEdits(bool lock)
{
    checkOpen();
    m_lockEdits = lock;
}

void Recordset::Requery()
{
    checkOpen();
    leaveRow();
    if (m_keyed)
        loadKeys();
    else
        loadStatic();
    positionAfterOpen();
}

void Recordset::Close()
{
    if (!m_open)
        return;
    if (m_editMode != Dao::EditMode::None)
        discardEdit();
    releaseLock();
    m_open = false;
    m_keys.clear();
    m_rows.clear();
    m_row.clear();
    m_ahead.clear();
    m_rowLoaded = false;
}

void Recordset::SetIndex(const QString& name)
{
    checkOpen();
    if (m_type != RecordsetType::Table)
        throw DaoError::make(DaoError::OperationNotSupported);
    for (const auto& index : core()->indexes(m_table)) {
        if (index.name.compare(name, Qt::CaseInsensitive) != 0)
            continue;
        leaveRow();
        m_indexName = index.name;
        m_indexColumns = index.fields;
        QStringList order;
        for (const QString& field : index.fields)
            order.append(QuoteIdentifier(field));
        setKeysOrder({}, order.join(u", "_s), {});
        loadKeys();
        positionAfterOpen();
        return;
    }
    throw DaoError::make(DaoError::NotAnIndex, name);
}

void Recordset::Seek(const QString& comparison, const Variant& key)
{
    Seek(comparison, QList<Variant> { key });
}

void Recordset::Seek(const QString& comparison, const QList<Variant>& keys)
{
    checkOpen();
    if (m_type != RecordsetType::Table)
        throw DaoError::make(DaoError::OperationNotSupported);
    if (m_indexColumns.isEmpty())
        throw DaoError::make(DaoError::NoCurrentIndex);
    const QString operation = comparison.trimmed();
    static const QStringList operations = { u"="_s, u">="_s, u">"_s, u"<="_s, u"<"_s };
    if (!operations.contains(operation) || keys.isEmpty() || keys.size() > m_indexColumns.size())
        throw DaoError::make(DaoError::InvalidArgument);
    leaveRow();
    const bool backwards = operation.startsWith(u'<');
    QStringList left;
    QStringList right;
    QStringList order;
    for (qsizetype i = 0; i < m_indexColumns.size(); ++i) {
        const QString column = QuoteIdentifier(m_indexColumns[i]);
        if (i < keys.size()) {
            left.append(column);
            right.append(u'?' + QString::number(i + 1));
        }
        order.append(column + (backwards ? u" DESC"_s : QString()));
    }
    order.append(backwards ? u"rowid DESC"_s : u"rowid"_s);
    const QString condition = keys.size() == 1
        ? left.front() + u' ' + operation + u' ' + right.front()
        : u'(' + left.join(u", "_s) + u") "_s + operation + u" ("_s + right.join(u", "_s) + u')';
    const QString sql = u"SELECT rowid FROM "_s + QuoteIdentifier(m_table) + u" WHERE "_s
        + condition + u" ORDER BY "_s + order.join(u", "_s) + u" LIMIT 1"_s;

    Statement seek = core()->connection().prepare(sql);
    for (qsizetype i = 0; i < keys.size(); ++i) {
        const auto info = core()->column(m_table, m_indexColumns[i]);
        seek.bind(static_cast<int>(i + 1),
            info ? ConvertForColumn(keys[i], info->type, ConversionMode::Statement) : keys[i]);
    }
    if (!seek.step()) {
        m_noMatch = true;
        return;
    }
    const qint64 key = seek.integer(0);
    seek = Statement();
    qint64 position = positionOfKey(key);
    if (position < 0) {
        loadKeys(); // added since the keys were read, by this program or another user
        position = positionOfKey(key);
    }
    if (position < 0) {
        m_noMatch = true;
        return;
    }
    m_noMatch = false;
    setPosition(position);
}

void Recordset::FindFirst(const QString& criteria)
{
    find(criteria, 0, 1);
}

void Recordset::FindLast(const QString& criteria)
{
    find(criteria, count() - 1, -1);
}

void Recordset::FindNext(const QString& criteria)
{
    const qint64 start = m_currentDeleted ? m_position : std::max<qint64>(m_position + 1, 0);
    find(criteria, start, 1);
}

void Recordset::FindPrevious(const QString& criteria)
{
    const qint64 start = std::min(m_position, count()) - 1;
    find(criteria, start, -1);
}

void Recordset::find(const QString& criteria, qint64 start, int step)
{
    checkOpen();
    const QString condition = TranslateCondition(criteria);
    std::optional<qint64> found;
    try {
        found = m_keyed ? findKeyed(condition, start, step) : findStatic(condition, start, step);
    } catch (const DaoError& error) {
        // A name the condition uses that no field has.
        if (error.number() == DaoError::TooFewParameters)
            throw DaoError::make(DaoError::UnknownName, criteria);
        throw error.naming(criteria);
    }
    if (!found) {
        m_noMatch = true;
        return;
    }
    leaveRow();
    setPosition(*found);
    m_noMatch = false;
}

std::optional<qint64> Recordset::findKeyed(const QString& condition, qint64 start, int step) const
{
    QStringList parameters;
    for (int i = 1; i <= FindChunkLimit; ++i)
        parameters.append(u'?' + QString::number(i));
    const QString sql = u"SELECT rowid FROM "_s + QuoteIdentifier(m_table) + u" WHERE rowid IN ("_s
        + parameters.join(u", "_s) + u") AND ("_s + condition + u")"_s;
    Statement statement = core()->connection().prepareOnce(sql);
    const qint64 total = count();
    qint64 position = start;
    int chunk = 16;
    while (position >= 0 && position < total) {
        std::vector<qint64> positions;
        for (int i = 0; i < chunk && position >= 0 && position < total; ++i) {
            positions.push_back(position);
            position += step;
        }
        for (int i = 0; i < FindChunkLimit; ++i) {
            if (static_cast<size_t>(i) < positions.size())
                statement.bind(
                    i + 1, m_keys[static_cast<size_t>(positions[static_cast<size_t>(i)])]);
            else
                statement.bind(i + 1, Variant::null());
        }
        QSet<qint64> matches;
        while (statement.step())
            matches.insert(statement.integer(0));
        statement.reset();
        for (const qint64 candidate : positions) {
            if (matches.contains(m_keys[static_cast<size_t>(candidate)]))
                return candidate;
        }
        chunk = std::min(chunk * 4, FindChunkLimit);
    }
    return std::nullopt;
}

std::optional<qint64> Recordset::findStatic(const QString& condition, qint64 start, int step) const
{
    // Each row is offered to the condition as a one-row table with the recordset's fields.
    QStringList names;
    QStringList parameters;
    for (size_t i = 0; i < m_columns.size(); ++i) {
        names.append(QuoteIdentifier(m_columns[i].name));
        parameters.append(u'?' + QString::number(i + 1));
    }
    if (names.isEmpty())
        return std::nullopt;
    const QString sql = u"WITH row("_s + names.join(u", "_s) + u") AS (VALUES ("_s
        + parameters.join(u", "_s) + u")) SELECT 1 FROM row WHERE ("_s + condition + u")"_s;
    Statement statement = core()->connection().prepareOnce(sql);
    for (qint64 position = start; position >= 0 && position < count(); position += step) {
        const auto& row = m_rows[static_cast<size_t>(position)];
        for (size_t i = 0; i < row.size(); ++i)
            statement.bind(static_cast<int>(i + 1), row[i]);
        const bool match = statement.step();
        statement.reset();
        if (match)
            return position;
    }
    return std::nullopt;
}

} // namespace Dao
