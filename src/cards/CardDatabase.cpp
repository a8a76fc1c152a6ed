#include "cards/CardDatabase.h"

#include "cards/CardCompaction.h"
#include "cards/DaoProperties.h"
#include "platform/dao/DaoError.h"

#include <QFile>
#include <QTemporaryDir>

using namespace Qt::Literals::StringLiterals;
using Dao::DataType;
using Runtime::Variant;

namespace Bramlet {

namespace {

const QString CardTable = u"Quorbin_Card"_s;
const QString KeywordsTable = u"KeyWords"_s;

} // namespace

CardDatabase::CardDatabase(Dao::DBEngine& engine, Compactor compactor)
    : m_engine(engine)
    , m_compactor(std::move(compactor))
    , m_workspace(engine.CreateWorkspace(u"Quorbin"_s, u"Admin"_s, QString()))
{
    m_engine.Workspaces().Append(m_workspace);
    if (!m_compactor) {
        m_compactor = [this](const QString& path) {
            const QString work = CompactionWorkFile();
            if (!work.isEmpty())
                CompactCardDatabase(m_engine, path, work);
        };
    }
}

CardDatabase::~CardDatabase()
{
    Close();
    m_workspace->Close();
    m_engine.Workspaces().Remove(m_workspace);
}

void CardDatabase::Close()
{
    m_mainTable.reset();
    m_keywordTable.reset();
    m_mainTableDef.reset();
    if (m_database)
        m_database->Close();
    m_database.reset();
    m_queries.clear();
    m_upgradeFolder.reset();
}

void CardDatabase::CreateCardDatabase(const QString& path, int viewType)
{
    auto database = m_workspace->CreateDatabase(path, u";LANGID=0x0409;CP=1252;COUNTRY=0"_s);
    auto card = database->CreateTableDef(CardTable);
    auto name = card->CreateField(u"CardName"_s, DataType::Text, 30);
    name->SetRequired(true);
    card->Fields().Append(name);
    card->Fields().Append(card->CreateField(u"FreeText"_s, DataType::Memo));
    card->Fields().Append(card->CreateField(u"Picture"_s, DataType::LongBinary));
    for (int i = 1; i <= 6; ++i)
        card->Fields().Append(card->CreateField(u"Keyword"_s + QString::number(i), DataType::Long));
    for (int i = 1; i <= 6; ++i) {
        auto field = card->CreateField(u"Field"_s + QString::number(i), DataType::Text, 50);
        field->SetAllowZeroLength(true);
        card->Fields().Append(field);
    }
    auto cardId = card->CreateIndex(u"CardID"_s);
    cardId->SetPrimary(true);
    cardId->SetUnique(true);
    cardId->SetRequired(true);
    cardId->Fields().Append(cardId->CreateField(u"CardName"_s));
    card->Indexes().Append(cardId);
    database->TableDefs().Append(card);

    SetDaoProperty(*card, u"FormWidth"_s, qint64(8190));
    SetDaoProperty(*card, u"FormHeight"_s, qint64(6600));
    SetFieldType(*card->Fields(u"CardName"_s), CardNameField);
    SetFieldType(*card->Fields(u"FreeText"_s), FreeTextField);
    SetFieldType(*card->Fields(u"Picture"_s), MainPictureField);
    for (int i = 1; i <= 6; ++i) {
        SetFieldType(*card->Fields(u"Keyword"_s + QString::number(i)), KeywordField);
        SetDefaultFieldLayout(*card->Fields(u"Field"_s + QString::number(i)), i - 1);
    }
    card->Properties().Append(
        card->CreateProperty(u"ViewType"_s, DataType::Integer, qint64(viewType)));

    auto keywords = database->CreateTableDef(KeywordsTable);
    auto keyId = keywords->CreateField(u"KeyID"_s, DataType::Long);
    keyId->SetAttributes(Dao::AutoIncrementField);
    keywords->Fields().Append(keyId);
    keywords->Fields().Append(keywords->CreateField(u"KeyText"_s, DataType::Text, 20));
    keywords->Fields().Append(keywords->CreateField(u"KeyPicture"_s, DataType::LongBinary));
    auto byId = keywords->CreateIndex(u"KeyID"_s);
    byId->SetPrimary(true);
    byId->SetUnique(true);
    byId->SetRequired(true);
    byId->Fields().Append(byId->CreateField(u"KeyID"_s));
    keywords->Indexes().Append(byId);
    auto byText = keywords->CreateIndex(u"KeyText"_s);
    byText->SetUnique(true);
    byText->SetRequired(true);
    byText->Fields().Append(byText->CreateField(u"KeyText"_s));
    keywords->Indexes().Append(byText);
    database->TableDefs().Append(keywords);

    database->Properties().Append(
        database->CreateProperty(u"QBVersion"_s, DataType::Integer, qint64(CurrentVersion)));
    database->Close();
}

void CardDatabase::openFile(const QString& path, bool exclusive)
{
    m_readOnly = false;
    try {
        m_database = m_workspace->OpenDatabase(path, exclusive, false);
    } catch (const Dao::DaoError&) {
        // Whatever the reason, the file is tried once more for reading only.
        m_database = m_workspace->OpenDatabase(path, exclusive, true);
        m_readOnly = true;
    }
}

namespace {

// The schema version a file claims. A file without one is older than the first version that
// kept it. A version of any other kind than a number (a text, an on/off value) is no version:
// writing 350 into such a property cannot make it read 350, so upgrading would never end.
int StoredVersion(Dao::Database& database, const QString& path)
{
    const auto property = database.Properties().Find(u"QBVersion"_s);
    if (!property)
        return 0;
    switch (property->Type()) {
    case DataType::Byte:
    case DataType::Integer:
    case DataType::Long:
    case DataType::Single:
    case DataType::Double:
    case DataType::Currency:
        break;
    default:
        throw Dao::DaoError::make(Dao::DaoError::CorruptFile, path);
    }
    const Variant version = property->Value();
    const double number = version.isNumeric() ? version.number() : -1.0;
    if (!(number >= 0.0 && number <= 1e9))
        throw Dao::DaoError::make(Dao::DaoError::CorruptFile, path);
    return static_cast<int>(number);
}

} // namespace

void CardDatabase::OpenCardDatabase(const QString& path, bool exclusive)
{
    openCardDatabase(path, exclusive, false);
}

void CardDatabase::openCardDatabase(const QString& path, bool exclusive, bool upgraded)
{
    Close();
    m_fileName = path;
    m_sortField = u"CardName"_s;
    m_sortOrder = SortAscending;
    m_selectedField.clear();
    openFile(path, exclusive);
    try {
        m_version = StoredVersion(*m_database, path);
        if (m_version < CurrentVersion) {
            // An upgrade that did not reach the file would start again on every open.
            if (upgraded)
                throw Dao::DaoError::make(Dao::DaoError::CorruptFile, path);
            if (m_readOnly) {
                openUpgradedCopy(path, exclusive);
            } else {
                // All of the upgrade reaches the file, or none of it.
                m_workspace->BeginTrans();
                try {
                    UpgradeCardDatabase(*m_database);
                } catch (...) {
                    m_workspace->Rollback();
                    throw;
                }
                m_workspace->CommitTrans();
                Close();
                m_compactor(path);
                openCardDatabase(path, exclusive, true);
                return;
            }
        }
        m_mainTableDef = m_database->TableDefs(CardTable);
        m_keywordTable = m_database->OpenRecordset(KeywordsTable);
        readQueries();
        OpenMainRecordSet();
    } catch (...) {
        Close();
        throw;
    }
}

void CardDatabase::openUpgradedCopy(const QString& path, bool exclusive)
{
    // A file that may not be written is upgraded in a private copy, which is what the window
    // then shows: its fields get their types and layout, and the file itself is never touched.
    Close();
    m_upgradeFolder = std::make_unique<QTemporaryDir>();
    const QString copy = m_upgradeFolder->filePath(u"upgraded.qnd"_s);
    if (!m_upgradeFolder->isValid() || !QFile::copy(path, copy))
        throw Dao::DaoError::make(Dao::DaoError::DiskOrNetworkError);
    QFile::setPermissions(copy, QFile::ReadOwner | QFile::WriteOwner);
    {
        const auto database = m_workspace->OpenDatabase(copy);
        m_workspace->BeginTrans();
        try {
            UpgradeCardDatabase(*database);
        } catch (...) {
            m_workspace->Rollback();
            database->Close();
            throw;
        }
        m_workspace->CommitTrans();
        database->Close();
    }
    m_database = m_workspace->OpenDatabase(copy, exclusive, true);
    m_readOnly = true;
    m_version = StoredVersion(*m_database, path);
}

void CardDatabase::UpgradeCardDatabase(Dao::Database& database)
{
    auto card = database.TableDefs(CardTable);
    SetDaoProperty(*card, u"FormWidth"_s, qint64(8190));
    SetDaoProperty(*card, u"FormHeight"_s, qint64(6600));
    SetDaoProperty(database, u"QBVersion"_s, qint64(CurrentVersion));
    SetFieldType(*card->Fields(u"CardName"_s), CardNameField);
    SetFieldType(*card->Fields(u"FreeText"_s), FreeTextField);
    SetFieldType(*card->Fields(u"Picture"_s), MainPictureField);
    for (const auto& field : card->Fields().items()) {
        const QString name = field->Name();
        const QString start = name.left(5);
        if (start.compare(u"Field"_s, Qt::CaseInsensitive) == 0) {
            // The old schema numbered its fields 1 to 6: the last character is the number.
            const int number = name.back().isDigit() ? name.back().digitValue() : 0;
            SetDefaultFieldLayout(*field, number - 1);
            const QString oldLabel = u"FieldLabel"_s + QString::number(number);
            if (const auto label = card->Properties().Find(oldLabel)) {
                SetDaoProperty(*field, u"FieldLabel"_s, label->Value());
                card->Properties().Delete(oldLabel);
            }
            switch (field->Type()) {
            case DataType::Currency:
                SetFieldType(*field, CurrencyField);
                SetFieldFormat(*field, u"Currency"_s);
                break;
            case DataType::Long:
                SetFieldType(*field, WholeNumberField);
                break;
            case DataType::Double:
                SetFieldType(*field, DecimalNumberField);
                break;
            default:
                SetFieldType(*field, TextField);
                break;
            }
        } else if (start.compare(u"URL"_s, Qt::CaseInsensitive) == 0
            || start.compare(u"Resou"_s, Qt::CaseInsensitive) == 0) {
            const bool url = start.compare(u"URL"_s, Qt::CaseInsensitive) == 0;
            SetFieldType(*field, url ? WebAddressField : ResourceField);
            SetDaoProperty(*field, u"FieldLeft"_s, qint64(url ? 6480 : 7200));
            SetDaoProperty(*field, u"FieldTop"_s, qint64(720));
            SetDaoProperty(*field, u"FieldWidth"_s, qint64(570));
            SetDaoProperty(*field, u"FieldHeight"_s, qint64(570));
            SetDaoProperty(*field, u"FieldVisible"_s, true);
        } else if (start.compare(u"Keywo"_s, Qt::CaseInsensitive) == 0) {
            SetFieldType(*field, KeywordField);
        }
    }
}

int CardDatabase::ViewType() const
{
    if (!m_mainTableDef)
        return 3;
    const Variant view = GetDaoProperty(*m_mainTableDef, u"ViewType"_s);
    return view.isNumeric() ? static_cast<int>(view.number()) : 3;
}

void CardDatabase::readQueries()
{
    m_queries.clear();
    for (const auto& definition : m_database->QueryDefs().items()) {
        const QString sql = definition->SQL();
        // The condition starts just after "WHERE "; the engine ends the text with ";" and
        // a line break, which are not part of it.
        const qsizetype where = sql.indexOf(u"WHERE"_s, 0, Qt::CaseInsensitive);
        QString condition = sql.mid(where + 6);
        condition.chop(3);
        m_queries.push_back({ condition, definition->Name(), false, 0 });
    }
}

QString CardDatabase::MainRecordSetSql() const
{
    QString order = u" ORDER BY ["_s + m_sortField + u"]"_s;
    if (m_sortOrder == SortDescending)
        order += u" DESC"_s;
    QStringList conditions;
    for (const qbQuery& query : m_queries) {
        if (query.Applied)
            conditions.append(u"("_s + query.SQLQuery + u")"_s);
    }
    if (conditions.isEmpty())
        return u"SELECT * FROM Quorbin_Card"_s + order;
    return u"SELECT * FROM Quorbin_Card WHERE "_s + conditions.join(u" AND "_s) + order;
}

bool CardDatabase::OpenMainRecordSet()
{
    const QString selected = m_selectedField;
    const bool conditional = std::any_of(
        m_queries.begin(), m_queries.end(), [](const qbQuery& query) { return query.Applied; });
    auto cards = m_database->OpenRecordset(MainRecordSetSql(), Dao::RecordsetType::Dynaset);
    if (m_mainTable)
        m_mainTable->Close();
    m_mainTable = cards;
    m_selectedField.clear();
    for (const auto& field : m_mainTable->Fields().items()) {
        if (field->Name().compare(selected, Qt::CaseInsensitive) == 0) {
            m_selectedField = field->Name();
            break;
        }
    }
    if (m_selectedField.isEmpty()) {
        for (const auto& field : m_mainTable->Fields().items()) {
            if (field->Name().startsWith(u"Field"_s, Qt::CaseInsensitive)) {
                m_selectedField = field->Name();
                break;
            }
        }
    }
    return !conditional || m_mainTable->RecordCount() > 0;
}

std::shared_ptr<Dao::Field> CardDatabase::FieldWithLabel(const QString& label) const
{
    if (!m_mainTable)
        return nullptr;
    for (const auto& field : m_mainTable->Fields().items()) {
        if (FieldLabel(*field).compare(label, Qt::CaseInsensitive) == 0)
            return field;
    }
    return nullptr;
}

ColumnCounters CardDatabase::Counters() const
{
    QStringList names;
    if (m_mainTableDef) {
        for (const auto& field : m_mainTableDef->Fields().items())
            names.append(field->Name());
    }
    return CountColumns(names);
}

bool CardDatabase::AddQuery(const QString& name, const QString& condition, int type)
{
    m_queries.push_back({ condition, name, true, type });
    return OpenMainRecordSet();
}

bool CardDatabase::QueryNameExists(const QString& name) const
{
    return std::any_of(m_queries.begin(), m_queries.end(), [&name](const qbQuery& query) {
        return query.QueryName.compare(name, Qt::CaseInsensitive) == 0;
    });
}

bool CardDatabase::SaveQueries()
{
    if (m_readOnly || !m_database)
        return false;
    try {
        while (m_database->QueryDefs().Count() > 0)
            m_database->QueryDefs().Delete(m_database->QueryDefs()(0)->Name());
        for (const qbQuery& query : m_queries) {
            m_database->CreateQueryDef(
                query.QueryName, u"SELECT * FROM Quorbin_Card WHERE "_s + query.SQLQuery);
        }
    } catch (const Dao::DaoError&) {
        return false;
    }
    return true;
}

QString CardDatabase::KeywordText(const Variant& keyId) const
{
    if (!m_keywordTable || keyId.isNull() || keyId.isEmpty())
        return {};
    m_keywordTable->SetIndex(u"KeyID"_s);
    m_keywordTable->Seek(u"="_s, keyId);
    if (m_keywordTable->NoMatch())
        return {};
    const Variant text = m_keywordTable->Fields(u"KeyText"_s)->Value();
    return text.isNull() ? QString() : text.text();
}

} // namespace Bramlet
