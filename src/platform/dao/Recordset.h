#pragma once

#include "platform/dao/Collection.h"
#include "platform/dao/ColumnType.h"
#include "platform/dao/Field.h"
#include "platform/dao/SqlTranslator.h"
#include "platform/runtime/Variant.h"

#include <QByteArray>
#include <QHash>
#include <QList>
#include <QString>
#include <memory>
#include <optional>
#include <vector>

namespace Dao {

class DatabaseCore;

enum class RecordsetType : int {
    Default = 0, // a table for a table's name, a dynaset for SQL
    Table = 1,
    Dynaset = 2,
    Snapshot = 4,
};

enum class EditMode : int {
    None = 0,
    InProgress = 1, // after Edit
    Add = 2, // after AddNew
};

// The rows of a table or a query, one current at a time.
//
// A table-type recordset walks a table in the order of its current Index and finds rows with
// Seek. A dynaset on SQL takes the keys of its rows when it opens, in the query's order, and
// reads rows only when they are visited, so a dynaset of 100,000 cards opens quickly. Rows
// are read a few dozen at a time in the direction of travel and kept until the next batch:
// what other users save shows after Requery, after the engine's Idle with RefreshCache, or
// on Move 0 (which reads the current row again); Edit always reads the row afresh. Rows
// added through the dynaset go to its end. A query that groups, joins or computes values
// gives a read-only recordset holding its result.
//
// Edits: Edit copies the current row into a buffer, Update writes the changed fields. With
// LockEdits False (optimistic) Update fails with 3197 when another user changed the row
// since Edit; with LockEdits True (the default) Edit takes the file's write lock and keeps
// it until Update or CancelUpdate, so other users' writes wait and then fail with 3260.
// Moving off a row being edited discards the edit. Update checks Required (3314),
// AllowZeroLength (3315), required indexes (3058) and unique indexes (3022).
class Recordset : public std::enable_shared_from_this<Recordset>
{
public:
    // Opens a recordset; used by Database, TableDef and QueryDef.
    static std::shared_ptr<Recordset> OpenTable(
        const std::shared_ptr<DatabaseCore>& core, const QString& table);
    static std::shared_ptr<Recordset> OpenQuery(
        const std::shared_ptr<DatabaseCore>& core, const QString& sql, RecordsetType type);

    ~Recordset();
    Recordset(const Recordset&) = delete;
    Recordset& operator=(const Recordset&) = delete;

    RecordsetType Type() const { return m_type; }
    QString Name() const { return m_name; }
    bool Updatable() const;

    Collection<Field>& Fields() { return m_fields; }
    std::shared_ptr<Field> Fields(const QString& name) const { return m_fields.Item(name); }
    std::shared_ptr<Field> Fields(int index) const { return m_fields.Item(index); }

    // Before the first row / after the last; both when there are no rows. (EOF is a macro
    // of the C library, hence the Is.)
    bool IsBOF() const;
    bool IsEOF() const;
    qint64 RecordCount() const;
    // The current row's position counted from 0, or -1 when there is none.
    qint64 AbsolutePosition() const;
    void SetAbsolutePosition(qint64 position);

    // Moves; 3021 when there is no row to move to (MoveNext at EOF, MoveFirst with no rows).
    void MoveFirst();
    void MoveLast();
    void MoveNext();
    void MovePrevious();
    void Move(qint64 rows);

    QByteArray Bookmark() const;
    void SetBookmark(const QByteArray& bookmark);
    bool Bookmarkable() const { return true; }
    // The bookmark of the row last added or changed through this recordset.
    QByteArray LastModified() const;

    // Find the first, next, previous or last row meeting a condition written as a WHERE
    // clause without WHERE ("CardName Like '*cat*'"). When none does, NoMatch is True and the
    // current row stays as it was.
    void FindFirst(const QString& criteria);
    void FindLast(const QString& criteria);
    void FindNext(const QString& criteria);
    void FindPrevious(const QString& criteria);
    bool NoMatch() const { return m_noMatch; }

    // Table type only: the index rows are ordered and sought by (3015 for an unknown name).
    QString Index() const { return m_indexName; }
    void SetIndex(const QString& name);
    // Finds the first row (in index order) whose key compares with `keys` as `comparison`
    // says: "=", ">=", ">", "<=" or "<" (the last two find the last such row). Texts compare
    // without regard to case, as the index does. 3251 on a dynaset, 3019 with no index.
    void Seek(const QString& comparison, const QList<Runtime::Variant>& keys);
    void Seek(const QString& comparison, const Runtime::Variant& key);

    void AddNew();
    void Edit();
    void Update();
    void CancelUpdate();
    void Delete();
    Dao::EditMode EditMode() const { return m_editMode; }
    bool LockEdits() const { return m_lockEdits; }
    void SetLockEdits(bool lock);

    // Runs the query again; the first row becomes current.
    void Requery();
    void Close();
    bool IsOpen() const { return m_open; }

private:
    friend class Field;
    friend class DatabaseCore;

    // Forgets the rows read ahead, so that the next visit reads the file.
    void refresh();
    void readAhead(qint64 position) const;

    struct Column
    {
        QString name;
        ColumnType type;
        bool required = false;
        bool allowZeroLength = true;
        bool updatable = false;
        QString sourceTable;
        QString sourceColumn;
    };

    explicit Recordset(const std::shared_ptr<DatabaseCore>& core);
    void makeFields();
    void openKeyed(const QString& table, const QStringList& columns, const QString& where,
        const QString& orderBy, const QString& limit);
    void openStatic(const SqlStatement& statement);
    void loadStatic();
    void loadKeys();
    void setKeysOrder(const QString& where, const QString& orderBy, const QString& limit);
    void positionAfterOpen();

    std::shared_ptr<DatabaseCore> core() const;
    void checkOpen() const;
    void checkCurrent() const;
    void checkUpdatable() const;
    qint64 count() const;
    bool hasCurrent() const;
    const std::vector<Runtime::Variant>& currentRow() const;
    std::optional<std::vector<Runtime::Variant>> readRow(qint64 key) const;
    void leaveRow(); // discards an edit and the cached row before a move
    void setPosition(qint64 position);
    qint64 positionOfKey(qint64 key) const;
    void find(const QString& criteria, qint64 start, int step);
    std::optional<qint64> findKeyed(const QString& condition, qint64 start, int step) const;
    std::optional<qint64> findStatic(const QString& condition, qint64 start, int step) const;
    void discardEdit();
    void validateBuffer() const;
    const QString& insertSql();
    void releaseLock();

    Runtime::Variant value(int index) const;
    void setValue(int index, const Runtime::Variant& value);

    std::weak_ptr<DatabaseCore> m_core;
    RecordsetType m_type = RecordsetType::Dynaset;
    QString m_name;
    bool m_open = true;
    std::vector<Column> m_columns;
    Collection<Field> m_fields;
    std::vector<std::shared_ptr<Field>> m_ownFields;

    // Keyed rows: the row ids of one table, in order.
    bool m_keyed = false;
    QString m_table;
    QString m_keysSql;
    QString m_rowSql;
    std::vector<qint64> m_keys;
    mutable QHash<qint64, qint64> m_positions; // row id to position, built when needed
    mutable bool m_positionsValid = false;
    // Static rows: a query's whole result.
    SqlStatement m_statement;
    std::vector<std::vector<Runtime::Variant>> m_rows;

    qint64 m_position = -1; // -1 before the first row, count() after the last
    bool m_currentDeleted = false;
    mutable bool m_rowLoaded = false;
    mutable std::vector<Runtime::Variant> m_row;
    // The current row's values while m_rowLoaded: m_row, a row read ahead or a static row.
    mutable std::vector<Runtime::Variant>* m_currentRow = nullptr;
    // Rows read ahead, by row id, and the direction the last move went (+1 or -1).
    mutable QHash<qint64, std::vector<Runtime::Variant>> m_ahead;
    int m_direction = 1;
    QString m_aheadSql;
    // Positions of the columns that a required index keeps from being Null.
    std::vector<size_t> m_requiredIndexColumns;

    Dao::EditMode m_editMode = Dao::EditMode::None;
    std::vector<Runtime::Variant> m_buffer;
    std::vector<bool> m_changed;
    std::vector<Runtime::Variant> m_original;
    // The INSERT of the last added row and the fields it set.
    QString m_insertSql;
    std::vector<bool> m_insertChanged;
    bool m_lockEdits = true;
    bool m_lockHeld = false;
    qint64 m_positionBeforeAdd = -1;
    bool m_addFromEnd = false;
    std::optional<qint64> m_lastModified;
    bool m_noMatch = false;

    QString m_indexName;
    QStringList m_indexColumns;
};

} // namespace Dao
