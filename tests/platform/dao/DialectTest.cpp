#include "DaoTestSupport.h"
#include "RowFile.h"
#include "platform/dao/Database.h"
#include "platform/runtime/QStringPrinter.h"

#include <QTemporaryDir>
#include <functional>
#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;
using Runtime::Variant;

namespace {

using RowFile::In;
using RowFile::Named;

// Texts are compared as std::string: other files of this program print a QString as its
// characters' bytes.

// One file of pets serves every row: the rows only read it.
class PetsFile : public RowFile::RowTest<>
{
protected:
    static void SetUpTestSuite()
    {
        s_folder = new QTemporaryDir;
        s_engine = new Dao::DBEngine;
        s_database
            = s_engine->DefaultWorkspace()->CreateDatabase(s_folder->filePath(u"pets.qnd"_s));
        DaoTest::MakePets(*s_database);
    }
    static void TearDownTestSuite()
    {
        s_database->Close();
        s_database.reset();
        delete s_engine;
        delete s_folder;
    }

    static QTemporaryDir* s_folder;
    static Dao::DBEngine* s_engine;
    static std::shared_ptr<Dao::Database> s_database;
};

QTemporaryDir* PetsFile::s_folder = nullptr;
Dao::DBEngine* PetsFile::s_engine = nullptr;
std::shared_ptr<Dao::Database> PetsFile::s_database;

class DialectTest : public PetsFile
{
};

TEST_P(DialectTest, WhereClauseSelectsTheRows)
{
    auto recordset = s_database->OpenRecordset(
        u"SELECT * FROM Pets WHERE "_s + row().text("condition") + u" ORDER BY [CardName]"_s);
    EXPECT_EQ(
        DaoTest::Names(*recordset).join(u", "_s).toStdString(), row().text("cards").toStdString());
}

// The same condition given to FindFirst and FindNext walks the same rows: the two ways of
// evaluating a condition must agree.
TEST_P(DialectTest, FindWalksTheSameRows)
{
    auto recordset = s_database->OpenRecordset(u"SELECT * FROM Pets ORDER BY CardName"_s);
    QStringList found;
    recordset->FindFirst(row().text("condition"));
    while (!recordset->NoMatch()) {
        found.append(recordset->Fields(u"CardName"_s)->Value().text());
        recordset->FindNext(row().text("condition"));
    }
    EXPECT_EQ(found.join(u", "_s).toStdString(), row().text("cards").toStdString());
}

INSTANTIATE_TEST_SUITE_P(
    Conditions, DialectTest, In("platform/dao/dialect/conditions.rows"), Named());

class DialectQueries : public PetsFile
{
};

TEST_P(DialectQueries, GiveTheRowsOrTheEngineNumber)
{
    QString cards;
    const int number = DaoTest::ErrorNumber([&] {
        cards = DaoTest::Names(*s_database->OpenRecordset(row().text("query"))).join(u", "_s);
    });
    EXPECT_EQ((number ? u"error "_s + QString::number(number) : cards).toStdString(),
        row().text("cards").toStdString());
}

INSTANTIATE_TEST_SUITE_P(Rows, DialectQueries, In("platform/dao/dialect/queries.rows"), Named());

class DialectQueryTest : public DaoTest::DaoTestBase
{
protected:
    void SetUp() override
    {
        DaoTestBase::SetUp();
        m_database = m_workspace->CreateDatabase(path(u"pets.qnd"_s));
        DaoTest::MakePets(*m_database);
    }

    std::shared_ptr<Dao::Database> m_database;
};

TEST_F(DialectQueryTest, NamesSortWithoutRegardToCase)
{
    auto recordset = m_database->OpenRecordset(u"Pets"_s, Dao::RecordsetType::Dynaset);
    recordset->MoveFirst();
    recordset->Edit();
    recordset->Fields(u"CardName"_s)->SetValue(u"aardvark"_s); // was Rex
    recordset->Update();
    auto sorted = m_database->OpenRecordset(u"SELECT CardName FROM Pets ORDER BY CardName"_s);
    EXPECT_EQ(DaoTest::Names(*sorted),
        (QStringList {
            u"aardvark"_s, u"Bobcat"_s, u"Bubbles"_s, u"Cat[1]"_s, u"R2D2"_s, u"Tiddles"_s }));
}

TEST_F(DialectQueryTest, MinAndMaxKeepTheColumnsKind)
{
    struct Case
    {
        QString column;
        Variant minimum;
        Variant maximum;
    };
    const Case cases[] = {
        { u"Field4"_s, Variant(qint64(1)), Variant(qint64(9)) },
        { u"Field5"_s, Variant::date(32874), Variant::date(38052) },
        { u"Field6"_s, Variant::currency(0), Variant::currency(100) },
        { u"CardName"_s, Variant(u"Bobcat"_s), Variant(u"Tiddles"_s) },
    };
    for (const Case& check : cases) {
        auto recordset = m_database->OpenRecordset(u"SELECT Min("_s + check.column
            + u") AS [MinValue], Max("_s + check.column + u") AS [MaxValue] FROM Pets"_s);
        EXPECT_EQ(recordset->Fields(u"MinValue"_s)->Value(), check.minimum)
            << check.column.toStdString();
        EXPECT_EQ(recordset->Fields(u"MaxValue"_s)->Value(), check.maximum)
            << check.column.toStdString();
        EXPECT_FALSE(recordset->Updatable());
    }
}

TEST_F(DialectQueryTest, GroupedCountsAreReadOnlyRows)
{
    auto recordset = m_database->OpenRecordset(
        u"SELECT Field7, Count(*) AS [Cards] FROM Pets GROUP BY Field7 ORDER BY Field7"_s);
    QList<qint64> counts;
    while (!recordset->IsEOF()) {
        counts.append(recordset->Fields(u"Cards"_s)->Value().whole());
        recordset->MoveNext();
    }
    EXPECT_EQ(counts, (QList<qint64> { 1, 2, 3 })); // Null, off, on
    recordset->MoveFirst();
    EXPECT_EQ(DaoTest::ErrorNumber([&] { recordset->Edit(); }), Dao::DaoError::NotUpdatable);
}

TEST_F(DialectQueryTest, FindWithAnUnknownNameFails)
{
    auto recordset = m_database->OpenRecordset(u"SELECT * FROM Pets"_s);
    EXPECT_EQ(DaoTest::ErrorNumber([&] { recordset->FindFirst(u"Colour = 'red'"_s); }),
        Dao::DaoError::UnknownName);
}

// A pupil sees the query or condition as it was written, never the engine's own SQL.
TEST_F(DialectQueryTest, SyntaxErrorsNameWhatWasWritten)
{
    const auto description = [](const std::function<void()>& action) {
        try {
            action();
        } catch (const Dao::DaoError& error) {
            EXPECT_EQ(error.number(), Dao::DaoError::SyntaxErrorInExpression);
            return error.description();
        }
        return u"no error"_s;
    };
    const QString query = u"SELECT * FROM Pets WHERE Field1 = 'x' AND"_s;
    EXPECT_EQ(description([&] { m_database->OpenRecordset(query); }),
        Dao::DaoError::standardDescription(Dao::DaoError::SyntaxErrorInExpression, query));
    auto recordset = m_database->OpenRecordset(u"SELECT * FROM Pets"_s);
    const QString condition = u"Field1 = 'x' OR"_s;
    EXPECT_EQ(description([&] { recordset->FindFirst(condition); }),
        Dao::DaoError::standardDescription(Dao::DaoError::SyntaxErrorInExpression, condition));
}

} // namespace
