#include "DaoTestSupport.h"
#include "TableRows.h"
#include "platform/dao/Database.h"
#include "platform/runtime/QStringPrinter.h"

#include <QTemporaryDir>
#include <functional>
#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;
using Runtime::Variant;

namespace {

using TestRows::PrintTo;

// A condition of the engine's dialect and the pets it selects, in name order.
struct DialectRow
{
    const char* name;
    QString condition;
    QStringList names;
};

class DialectTest : public testing::TestWithParam<DialectRow>
{
protected:
    // One file of pets serves every row: the rows only read it.
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

QTemporaryDir* DialectTest::s_folder = nullptr;
Dao::DBEngine* DialectTest::s_engine = nullptr;
std::shared_ptr<Dao::Database> DialectTest::s_database;

TEST_P(DialectTest, WhereClauseSelectsTheRows)
{
    const DialectRow& row = GetParam();
    auto recordset = s_database->OpenRecordset(
        u"SELECT * FROM Pets WHERE "_s + row.condition + u" ORDER BY [CardName]"_s);
    EXPECT_EQ(DaoTest::Names(*recordset), row.names);
}

// The same condition given to FindFirst and FindNext walks the same rows: the two ways of
// evaluating a condition must agree.
TEST_P(DialectTest, FindWalksTheSameRows)
{
    const DialectRow& row = GetParam();
    auto recordset = s_database->OpenRecordset(u"SELECT * FROM Pets ORDER BY CardName"_s);
    QStringList found;
    recordset->FindFirst(row.condition);
    while (!recordset->NoMatch()) {
        found.append(recordset->Fields(u"CardName"_s)->Value().text());
        recordset->FindNext(row.condition);
    }
    EXPECT_EQ(found, row.names);
}

INSTANTIATE_TEST_SUITE_P(Conditions, DialectTest,
    testing::Values(
        DialectRow { "includes", u"Field1 LIKE '*cat*'"_s, { u"Bobcat"_s, u"Tiddles"_s } },
        DialectRow {
            "doesNotInclude", u"Field1 NOT LIKE '*CAT*'"_s, { u"Bubbles"_s, u"R2D2"_s, u"Rex"_s } },
        DialectRow { "oneCharacter", u"CardName LIKE 'R?x'"_s, { u"Rex"_s } },
        DialectRow { "digits", u"CardName Like 'r#d#'"_s, { u"R2D2"_s } },
        DialectRow { "characterList", u"CardName LIKE '[A-C]*'"_s,
            { u"Bobcat"_s, u"Bubbles"_s, u"Cat[1]"_s } },
        DialectRow {
            "negatedList", u"CardName LIKE '[!A-M]*'"_s, { u"R2D2"_s, u"Rex"_s, u"Tiddles"_s } },
        DialectRow { "bracketItself", u"CardName LIKE '*[[]*'"_s, { u"Cat[1]"_s } },
        DialectRow { "equalsWithoutCase", u"CardName = 'REX'"_s, { u"Rex"_s } },
        DialectRow { "comesBefore", u"CardName < 'c'"_s, { u"Bobcat"_s, u"Bubbles"_s } },
        DialectRow { "dateBefore", u"Field5 < #3-5-04#"_s, { u"Bubbles"_s, u"Tiddles"_s } },
        DialectRow { "dateEquals", u"Field5 = #3/5/2004#"_s, { u"Rex"_s } },
        DialectRow { "yearRange", u"Field5 BETWEEN #1-1-1990# AND #12-31-1999#"_s,
            { u"Bubbles"_s, u"Tiddles"_s } },
        DialectRow { "dayOfWeek", u"DATEPART(\"w\", Field5) = 6"_s,
            { u"Cat[1]"_s, u"Rex"_s, u"Tiddles"_s } },
        DialectRow { "month", u"DATEPART(\"m\", Field5) = 12"_s, { u"Tiddles"_s } },
        DialectRow { "yearOfBracketedColumn", u"DatePart('yyyy', [Field5]) = 2004"_s,
            { u"Bobcat"_s, u"Cat[1]"_s, u"Rex"_s } },
        DialectRow { "onIsTrue", u"Field7 = True"_s, { u"Cat[1]"_s, u"R2D2"_s, u"Rex"_s } },
        DialectRow { "offIsNo", u"Field7 = No"_s, { u"Bobcat"_s, u"Tiddles"_s } },
        DialectRow {
            "wholeNumberRange", u"[Field4] > 2 AND [Field4] < 8"_s, { u"Rex"_s, u"Tiddles"_s } },
        DialectRow { "keywordsOrThenAnd", u"(Keyword1 = 12 OR Keyword1 = 15) AND Field4 > 5"_s,
            { u"Bobcat"_s, u"Tiddles"_s } },
        DialectRow { "currency", u"Field6 = 12.5"_s, { u"Rex"_s } },
        DialectRow { "isNull", u"Field1 IS NULL"_s, { u"Cat[1]"_s } },
        DialectRow { "doubleQuotedText", u"Field1 = \"DOG\""_s, { u"Rex"_s } },
        DialectRow { "modulo", u"Field4 MOD 2 = 1"_s,
            { u"Bobcat"_s, u"Bubbles"_s, u"Rex"_s, u"Tiddles"_s } },
        DialectRow { "joinedTextWithoutCase", u"Field1 & CardName = 'dogrex'"_s, { u"Rex"_s } },
        DialectRow {
            "leftWithoutCase", u"Left(CardName, 1) = 'b'"_s, { u"Bobcat"_s, u"Bubbles"_s } },
        DialectRow { "length", u"Len(Field1) = 3"_s, { u"Rex"_s, u"Tiddles"_s } },
        DialectRow { "year", u"Year(Field5) = 1999"_s, { u"Tiddles"_s } },
        DialectRow { "inList", u"Field1 IN ('dog', 'CAT')"_s, { u"Rex"_s, u"Tiddles"_s } },
        DialectRow { "nullToZero", u"Nz(Field4, 0) = 0"_s, { u"R2D2"_s } },
        DialectRow { "qualifiedName", u"Pets.Field4 = 9 OR Pets!Field4 = 1"_s,
            { u"Bobcat"_s, u"Bubbles"_s } },
        // What the query builder pastes in as typed: "includes" wraps the raw text in stars,
        // so SQL's own wildcards must stay plain characters and the engine's must work.
        DialectRow { "percentIsAPlainCharacter", u"Field1 LIKE '*%*' OR CardName LIKE '%'"_s, {} },
        DialectRow { "underscoreIsAPlainCharacter", u"CardName LIKE 'R_x'"_s, {} },
        DialectRow { "includesADigit", u"CardName LIKE '*#*'"_s, { u"Cat[1]"_s, u"R2D2"_s } },
        DialectRow { "includesTypedList", u"CardName LIKE '*[1]*'"_s, { u"Cat[1]"_s } },
        DialectRow { "includesABlank", u"Field1 LIKE '* *'"_s, { u"Bobcat"_s } },
        DialectRow { "includesAnyCharacter", u"Field1 LIKE '*?*'"_s,
            { u"Bobcat"_s, u"Bubbles"_s, u"R2D2"_s, u"Rex"_s, u"Tiddles"_s } },
        // Numbers are pasted in their general form, dates as m-d-yy, on/off words as typed.
        DialectRow { "numberInExponentForm", u"Field4 < 1E+20"_s,
            { u"Bobcat"_s, u"Bubbles"_s, u"Cat[1]"_s, u"Rex"_s, u"Tiddles"_s } },
        DialectRow { "negativeCurrency", u"Field6 > -0.5"_s,
            { u"Bobcat"_s, u"Bubbles"_s, u"Cat[1]"_s, u"Rex"_s, u"Tiddles"_s } },
        DialectRow { "onIsYes", u"Field7 = Yes"_s, { u"Cat[1]"_s, u"R2D2"_s, u"Rex"_s } },
        DialectRow { "notEqualsLeavesNullOut", u"Field7 <> True"_s, { u"Bobcat"_s, u"Tiddles"_s } },
        DialectRow { "laterTheSameDay", u"Field5 > #3-5-04#"_s, { u"Bobcat"_s, u"Cat[1]"_s } },
        DialectRow { "twentyNineIs2029", u"Field5 < #1-1-29#"_s,
            { u"Bobcat"_s, u"Bubbles"_s, u"Cat[1]"_s, u"Rex"_s, u"Tiddles"_s } },
        DialectRow { "thirtyIs1930", u"Field5 < #1-1-30#"_s, {} },
        DialectRow { "quarter", u"DATEPART(\"q\", Field5) = 1"_s,
            { u"Bobcat"_s, u"Bubbles"_s, u"Cat[1]"_s, u"Rex"_s } },
        DialectRow { "notBetween", u"Field4 NOT BETWEEN 2 AND 7"_s, { u"Bobcat"_s, u"Bubbles"_s } },
        DialectRow { "lowerCaseWords", u"field4 between 2 and 3"_s, { u"Cat[1]"_s, u"Rex"_s } },
        DialectRow { "notOfABracket", u"NOT (Field4 > 2)"_s, { u"Bubbles"_s, u"Cat[1]"_s } },
        DialectRow { "isNotNull", u"Field6 IS NOT NULL AND Field6 < 5"_s,
            { u"Bubbles"_s, u"Cat[1]"_s, u"Tiddles"_s } },
        DialectRow {
            "comesAfterWithoutCase", u"CardName > 'r'"_s, { u"R2D2"_s, u"Rex"_s, u"Tiddles"_s } },
        DialectRow { "wordsAndDateInsideAString", u"Field1 <> 'AND #1-1-99# OR'"_s,
            { u"Bobcat"_s, u"Bubbles"_s, u"R2D2"_s, u"Rex"_s, u"Tiddles"_s } },
        DialectRow { "doubledQuoteInsideAString",
            u"Field1 <> 'it''s' AND Field1 <> \"say \"\"hi\"\"\""_s,
            { u"Bobcat"_s, u"Bubbles"_s, u"R2D2"_s, u"Rex"_s, u"Tiddles"_s } }),
    TestRows::Named());

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

TEST_F(DialectQueryTest, OrderByDescendingPutsNullLast)
{
    auto recordset = m_database->OpenRecordset(u"SELECT * FROM Pets ORDER BY [Field4] DESC"_s);
    EXPECT_EQ(DaoTest::Names(*recordset),
        (QStringList {
            u"Bobcat"_s, u"Tiddles"_s, u"Rex"_s, u"Cat[1]"_s, u"Bubbles"_s, u"R2D2"_s }));
}

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

TEST_F(DialectQueryTest, DistinctRowAndTopLimitTheRows)
{
    auto recordset = m_database->OpenRecordset(
        u"SELECT DISTINCTROW TOP 2 * FROM Pets WHERE Field7 = Yes ORDER BY CardName DESC;"_s);
    EXPECT_EQ(DaoTest::Names(*recordset), (QStringList { u"Rex"_s, u"R2D2"_s }));
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

TEST_F(DialectQueryTest, UnknownNamesFailWithTheEngineNumbers)
{
    EXPECT_EQ(DaoTest::ErrorNumber(
                  [&] { m_database->OpenRecordset(u"SELECT * FROM Pets WHERE Colour = 'red'"_s); }),
        Dao::DaoError::TooFewParameters);
    EXPECT_EQ(DaoTest::ErrorNumber([&] { m_database->OpenRecordset(u"SELECT * FROM Vets"_s); }),
        Dao::DaoError::InputTableNotFound);
    EXPECT_EQ(DaoTest::ErrorNumber([&] {
        m_database->OpenRecordset(u"SELECT * FROM Pets WHERE Frobnicate(Field4) = 1"_s);
    }),
        Dao::DaoError::UndefinedFunction);
    auto recordset = m_database->OpenRecordset(u"SELECT * FROM Pets"_s);
    EXPECT_EQ(DaoTest::ErrorNumber([&] { recordset->FindFirst(u"Colour = 'red'"_s); }),
        Dao::DaoError::UnknownName);
}

TEST_F(DialectQueryTest, TextWithAQuoteMakesTheConditionFail)
{
    // The query builder pastes what the user typed; a stray quote must fail cleanly.
    EXPECT_EQ(DaoTest::ErrorNumber([&] {
        m_database->OpenRecordset(u"SELECT * FROM Pets WHERE (Field1 LIKE '*o'brien*')"_s);
    }),
        Dao::DaoError::SyntaxErrorInExpression);
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
