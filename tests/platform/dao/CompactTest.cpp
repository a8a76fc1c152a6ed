#include "DaoTestSupport.h"
#include "platform/dao/Database.h"

#include <QCryptographicHash>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRandomGenerator>
#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;
using Dao::DaoError;
using DaoTest::ErrorNumber;
using Runtime::Variant;

namespace {

QByteArray Digest(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return {};
    return QCryptographicHash::hash(file.readAll(), QCryptographicHash::Sha256);
}

// Every row of the pets table with its picture, as text for comparing two files.
QStringList Rows(Dao::Database& database)
{
    QStringList rows;
    auto pets = database.OpenRecordset(u"SELECT * FROM Pets ORDER BY CardName"_s);
    while (!pets->IsEOF()) {
        QStringList values;
        for (const auto& field : pets->Fields().items()) {
            const Variant value = field->Value();
            values.append(value.type() == Runtime::VariantType::Binary
                    ? QString::fromLatin1(
                        QCryptographicHash::hash(value.bytes(), QCryptographicHash::Sha1).toHex())
                    : value.isNull() ? u"Null"_s
                                     : value.text() + QString::number(value.number()));
        }
        rows.append(values.join(u'|'));
        pets->MoveNext();
    }
    return rows;
}

class CompactTest : public DaoTest::DaoTestBase
{
protected:
    void SetUp() override
    {
        DaoTestBase::SetUp();
        m_source = path(u"class.qnd"_s);
        m_target = path(u"compact.qnd"_s);
        auto database = m_workspace->CreateDatabase(m_source);
        DaoTest::MakePets(*database);
        // Pictures of many sizes, then many cards deleted, so that the file has room to lose.
        auto pets = database->OpenRecordset(u"Pets"_s, Dao::RecordsetType::Dynaset);
        QRandomGenerator random(7);
        for (int i = 0; i < 120; ++i) {
            QByteArray picture(
                1 + static_cast<qsizetype>(random.bounded(40000)), Qt::Uninitialized);
            for (char& byte : picture)
                byte = static_cast<char>(random.bounded(256));
            pets->AddNew();
            pets->Fields(u"CardName"_s)->SetValue(u"Pet "_s + QString::number(i));
            pets->Fields(u"Picture"_s)->SetValue(picture);
            pets->Update();
        }
        database->Execute(u"DELETE FROM Pets WHERE CardName LIKE 'Pet *[02468]'"_s);
        database->CreateQueryDef(u"Dogs"_s, u"SELECT * FROM Pets WHERE Field1 = 'Dog'"_s);
        auto table = database->TableDefs(u"Pets"_s);
        table->Fields(u"Field1"_s)
            ->Properties()
            .Append(table->CreateProperty(u"FieldLabel"_s, Dao::DataType::Text, u"Kind"_s));
        m_rows = Rows(*database);
        database->Close();
        m_digest = Digest(m_source);
    }

    QString m_source;
    QString m_target;
    QStringList m_rows;
    QByteArray m_digest;
};

TEST_F(CompactTest, KeepsEveryRowPictureQueryAndProperty)
{
    m_engine.CompactDatabase(m_source, m_target);
    EXPECT_LT(QFileInfo(m_target).size(), QFileInfo(m_source).size());
    EXPECT_EQ(Digest(m_source), m_digest);
    auto compacted = m_workspace->OpenDatabase(m_target);
    EXPECT_EQ(m_rows.size(), 66);
    EXPECT_EQ(Rows(*compacted), m_rows);
    EXPECT_EQ(
        compacted->QueryDefs(u"Dogs"_s)->SQL(), u"SELECT * FROM Pets WHERE Field1 = 'Dog';\r\n"_s);
    EXPECT_EQ(compacted->TableDefs(u"Pets"_s)
                  ->Fields(u"Field1"_s)
                  ->Properties()(u"FieldLabel"_s)
                  ->Value(),
        Variant(u"Kind"_s));
    EXPECT_TRUE(compacted->TableDefs(u"Pets"_s)->Indexes()(u"CardID"_s)->Primary());
}

TEST_F(CompactTest, NeverOverwritesTheDestination)
{
    QFile existing(m_target);
    ASSERT_TRUE(existing.open(QIODevice::WriteOnly));
    existing.write("keep");
    existing.close();
    EXPECT_EQ(ErrorNumber([&] { m_engine.CompactDatabase(m_source, m_target); }),
        DaoError::DatabaseExists);
    EXPECT_EQ(Digest(m_target), QCryptographicHash::hash("keep", QCryptographicHash::Sha256));
}

TEST_F(CompactTest, RefusesAFileInUseAndLeavesNoTrace)
{
    auto open = m_workspace->OpenDatabase(m_source);
    EXPECT_EQ(
        ErrorNumber([&] { m_engine.CompactDatabase(m_source, m_target); }), DaoError::FileInUse);
    open->Close();
    EXPECT_EQ(QDir(m_folder.path()).entryList(QDir::Files | QDir::Hidden),
        QStringList { u"class.qnd"_s });
    EXPECT_EQ(Digest(m_source), m_digest);
}

TEST_F(CompactTest, RefusesWhatIsNoDatabase)
{
    const QString text = path(u"notes.qnd"_s);
    QFile file(text);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("Rex,Dog\n");
    file.close();
    EXPECT_EQ(ErrorNumber([&] { m_engine.CompactDatabase(text, m_target); }),
        DaoError::UnrecognizedFormat);
    EXPECT_FALSE(QFile::exists(m_target));
}

} // namespace
