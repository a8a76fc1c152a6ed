#pragma once

#include "cards/CardFields.h"
#include "cards/qbQuery.h"
#include "platform/dao/DBEngine.h"

#include <QString>
#include <QTemporaryDir>
#include <functional>
#include <memory>
#include <vector>

namespace Bramlet {

// The database side of a card window: its workspace, the open card file, the keyword table,
// the card set and its saved queries. The window owns one and shows its state; quorbin-cli
// drives it without a window.
class CardDatabase
{
public:
    static constexpr int CurrentVersion = 350;
    static constexpr int SortAscending = 0;
    static constexpr int SortDescending = 1;

    // Compacts a closed card file in place; run after an upgrade. The frame's compaction
    // (MDICompactDatabase) is given here; without one, CompactCardDatabase with the
    // temporary folder of $TEMP is used.
    using Compactor = std::function<void(const QString& path)>;

    // Makes the window's workspace ("Quorbin", user "Admin") in `engine`.
    explicit CardDatabase(Dao::DBEngine& engine, Compactor compactor = {});
    ~CardDatabase();
    CardDatabase(const CardDatabase&) = delete;
    CardDatabase& operator=(const CardDatabase&) = delete;

    // Creates a new card file: the card table with its columns in order, the keyword
    // table, their indexes and properties, ViewType `viewType` (2, 3 or 4) and QBVersion
    // 350. The file is closed again; 3204 when it exists already.
    void CreateCardDatabase(const QString& path, int viewType);
    // Opens a card file: read-write (exclusively when asked), else read-only when that
    // fails; upgrades and compacts a file older than 350 first (one that may only be read is
    // upgraded in a private copy, never in place); reads the saved queries and opens the card
    // set sorted by card name. Throws the engine's error when even the read-only open fails,
    // and 3049 for a file whose QBVersion is no number or that an upgrade did not bring to
    // 350; the object then holds no database.
    void OpenCardDatabase(const QString& path, bool exclusive = false);
    // Brings a file of an older schema to 350: layout and type properties on every column,
    // labels moved from the table definition to their columns.
    static void UpgradeCardDatabase(Dao::Database& database);
    void Close();

    const std::shared_ptr<Dao::Workspace>& Workspace() const { return m_workspace; }
    const std::shared_ptr<Dao::Database>& DataBase() const { return m_database; }
    const std::shared_ptr<Dao::Recordset>& KeywordTable() const { return m_keywordTable; }
    const std::shared_ptr<Dao::Recordset>& MainTable() const { return m_mainTable; }
    const std::shared_ptr<Dao::TableDef>& MainTableDef() const { return m_mainTableDef; }
    const QString& FileName() const { return m_fileName; }
    bool ReadOnly() const { return m_readOnly; }
    // The schema version the file had when it was opened (after any upgrade).
    int Version() const { return m_version; }
    // The view the file was last shown in (the table's ViewType), 3 when it has none.
    int ViewType() const;

    std::vector<qbQuery>& Queries() { return m_queries; }
    const QString& SortField() const { return m_sortField; }
    void SetSortField(const QString& field) { m_sortField = field; }
    int SortOrder() const { return m_sortOrder; }
    void SetSortOrder(int order) { m_sortOrder = order; }
    // The counted field's name; OpenMainRecordSet keeps it or picks the first Field<n>.
    const QString& SelectedField() const { return m_selectedField; }
    void SetSelectedField(const QString& field) { m_selectedField = field; }

    // The card set's SQL: "SELECT * FROM Quorbin_Card", then " WHERE (A) AND (B)" for the
    // applied queries in order, then " ORDER BY [" + SortField + "]" and " DESC" when
    // descending.
    QString MainRecordSetSql() const;
    // Opens the card set anew. False when applied queries selected no card (the window
    // then says "There were no cards that matched this search."); the empty set stays.
    bool OpenMainRecordSet();

    // The card set's field whose FieldLabel is `label` without regard to case, or nothing.
    std::shared_ptr<Dao::Field> FieldWithLabel(const QString& label) const;
    ColumnCounters Counters() const;

    // Saved queries: a new applied query and the card set rebuilt; names compare without
    // regard to case; saving rewrites every query definition of the file (false when the
    // file is read-only or a definition could not be written).
    bool AddQuery(const QString& name, const QString& condition, int type);
    bool QueryNameExists(const QString& name) const;
    bool SaveQueries();

    // The text of keyword `keyId`, empty when there is none.
    QString KeywordText(const Runtime::Variant& keyId) const;

private:
    void openCardDatabase(const QString& path, bool exclusive, bool upgraded);
    void openFile(const QString& path, bool exclusive);
    void openUpgradedCopy(const QString& path, bool exclusive);
    void readQueries();

    Dao::DBEngine& m_engine;
    Compactor m_compactor;
    std::shared_ptr<Dao::Workspace> m_workspace;
    std::shared_ptr<Dao::Database> m_database;
    std::shared_ptr<Dao::Recordset> m_keywordTable;
    std::shared_ptr<Dao::Recordset> m_mainTable;
    std::shared_ptr<Dao::TableDef> m_mainTableDef;
    QString m_fileName;
    bool m_readOnly = false;
    int m_version = 0;
    std::vector<qbQuery> m_queries;
    QString m_sortField = QStringLiteral("CardName");
    int m_sortOrder = SortAscending;
    QString m_selectedField;
    // Holds the upgraded copy of an old file that could only be opened read-only.
    std::unique_ptr<QTemporaryDir> m_upgradeFolder;
};

} // namespace Bramlet
