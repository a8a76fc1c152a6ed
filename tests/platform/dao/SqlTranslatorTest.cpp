#include "platform/dao/SqlTranslator.h"

#include "RowFile.h"
#include "platform/dao/DaoError.h"

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

namespace {

using Dao::SqlStatement;

using RowFile::In;
using RowFile::Named;

// Texts are compared as std::string, which failure messages show as text.
std::string Text(const QString& text)
{
    return text.toStdString();
}

// How a select is taken apart: whether its rows can be walked by row id, and the pieces the
// recordset builds its queries from.
class SelectShapeTest : public RowFile::RowTest<>
{
};

TEST_P(SelectShapeTest, SplitsTheSelect)
{
    const SqlStatement statement = Dao::TranslateSql(row().text("sql"));
    EXPECT_EQ(statement.kind, SqlStatement::Kind::Select);
    EXPECT_EQ(statement.singleTable, row().flag("walked"));
    EXPECT_EQ(Text(statement.table), Text(row().text("table")));
    EXPECT_EQ(Text(statement.selectedColumns.join(u", ")), Text(row().text("columns")));
    EXPECT_EQ(Text(statement.where), Text(row().text("where")));
    EXPECT_EQ(Text(statement.orderBy), Text(row().text("orderBy")));
    EXPECT_EQ(Text(statement.limit), Text(row().text("limit")));
}

INSTANTIATE_TEST_SUITE_P(
    Selects, SelectShapeTest, In("platform/dao/sqlTranslator/selects.rows"), Named());

TEST(SqlTranslatorTest, MinAndMaxNameTheColumnTheyShow)
{
    const SqlStatement statement = Dao::TranslateSql(
        u"SELECT Min(Field5) AS [MinValue], Max([Field5]) AS [MaxValue], Count(*) FROM T"_s);
    EXPECT_EQ(
        statement.sourceColumns, (std::vector<QString> { u"Field5"_s, u"Field5"_s, QString() }));
}

TEST(SqlTranslatorTest, UpdateConvertsEveryAssignedValueToItsColumn)
{
    Dao::SqlSchemaLookup schema;
    schema.column
        = [](const QString& table, const QString& column) -> std::optional<Dao::ColumnSchema> {
        if (table == u"Quorbin_Card"_s && column == u"AlterTempField"_s)
            return Dao::ColumnSchema { { Dao::DataType::Long, 4, false }, false, true };
        return std::nullopt;
    };
    const SqlStatement statement = Dao::TranslateSql(
        u"UPDATE DISTINCTROW [Quorbin_Card] SET AlterTempField = [Field2]"_s, schema);
    EXPECT_EQ(statement.kind, SqlStatement::Kind::Update);
    EXPECT_EQ(statement.sql,
        u"UPDATE \"Quorbin_Card\" SET \"AlterTempField\" = qb_convert(\"Field2\", 4, 4, 1)"_s);
}

TEST(SqlTranslatorTest, AddColumnWritesTheDeclaredType)
{
    const SqlStatement statement
        = Dao::TranslateSql(u"ALTER TABLE [Quorbin_Card] ADD COLUMN AlterTempField TEXT(50)"_s);
    EXPECT_EQ(statement.kind, SqlStatement::Kind::AddColumn);
    EXPECT_EQ(statement.table, u"Quorbin_Card"_s);
    EXPECT_EQ(statement.column, u"AlterTempField"_s);
    EXPECT_EQ(statement.sql,
        u"ALTER TABLE \"Quorbin_Card\" ADD COLUMN \"AlterTempField\" TEXT(50) COLLATE NOCASE "
        u"CHECK (\"AlterTempField\" <> '')"_s);
}

class ConditionTest : public RowFile::RowTest<>
{
};

TEST_P(ConditionTest, TurnsTheDialectIntoSqlite)
{
    EXPECT_EQ(Text(Dao::TranslateCondition(row().text("condition"))), Text(row().text("sqlite")));
}

INSTANTIATE_TEST_SUITE_P(
    Conditions, ConditionTest, In("platform/dao/sqlTranslator/conditions.rows"), Named());

// Statements the engine refuses, and the number it refuses them with.
class RefusedStatementTest : public RowFile::RowTest<>
{
};

TEST_P(RefusedStatementTest, FailsWithTheEngineNumber)
{
    try {
        Dao::TranslateSql(row().text("sql"));
        FAIL() << "accepted";
    } catch (const Dao::DaoError& error) {
        EXPECT_EQ(error.number(), row().whole("number")) << error.what();
    }
}

INSTANTIATE_TEST_SUITE_P(
    Refusals, RefusedStatementTest, In("platform/dao/sqlTranslator/refusals.rows"), Named());

} // namespace
