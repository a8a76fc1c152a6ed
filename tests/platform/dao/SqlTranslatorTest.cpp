#include "platform/dao/SqlTranslator.h"

#include "platform/dao/DaoError.h"

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

namespace {

using Dao::SqlStatement;

// How a select is taken apart: whether its rows can be walked by row id, and the pieces the
// recordset builds its queries from.
struct ShapeRow
{
    const char* name;
    QString sql;
    bool singleTable;
    QString table;
    QStringList columns;
    QString where;
    QString orderBy;
    QString limit;
};

class SelectShapeTest : public testing::TestWithParam<ShapeRow>
{
};

TEST_P(SelectShapeTest, SplitsTheSelect)
{
    const ShapeRow& row = GetParam();
    const SqlStatement statement = Dao::TranslateSql(row.sql);
    EXPECT_EQ(statement.kind, SqlStatement::Kind::Select);
    EXPECT_EQ(statement.singleTable, row.singleTable);
    EXPECT_EQ(statement.table, row.table);
    EXPECT_EQ(statement.selectedColumns, row.columns);
    EXPECT_EQ(statement.where, row.where);
    EXPECT_EQ(statement.orderBy, row.orderBy);
    EXPECT_EQ(statement.limit, row.limit);
}

INSTANTIATE_TEST_SUITE_P(Selects, SelectShapeTest,
    testing::Values(ShapeRow { "cardSetUnsorted", u"SELECT * FROM Quorbin_Card"_s, true,
                        u"Quorbin_Card"_s, {}, {}, {}, {} },
        ShapeRow { "cardSetTwoQueries",
            u"SELECT * FROM Quorbin_Card WHERE (Field3 LIKE '*cat*') AND (Field4 = 7) "
            u"ORDER BY [CardName]"_s,
            true, u"Quorbin_Card"_s, {},
            u"(\"Field3\" LIKE '*cat*' COLLATE NOCASE) AND (\"Field4\" = 7)"_s, u"\"CardName\""_s,
            {} },
        ShapeRow { "descendingSort", u"SELECT * FROM Quorbin_Card ORDER BY [Field2] DESC"_s, true,
            u"Quorbin_Card"_s, {}, {}, u"\"Field2\" DESC"_s, {} },
        ShapeRow { "bracketedTableAndColumns",
            u"SELECT [Card Name], Field1 FROM [My Cards] WHERE Field1 = 'x';"_s, true,
            u"My Cards"_s, { u"Card Name"_s, u"Field1"_s }, u"\"Field1\" = 'x' COLLATE NOCASE"_s,
            {}, {} },
        ShapeRow { "distinctRowIsDropped",
            u"SELECT DISTINCTROW * FROM Quorbin_Card WHERE Field7 = True"_s, true,
            u"Quorbin_Card"_s, {}, u"\"Field7\" = 1"_s, {}, {} },
        ShapeRow { "topBecomesLimit", u"SELECT TOP 5 * FROM Quorbin_Card ORDER BY CardName"_s, true,
            u"Quorbin_Card"_s, {}, {}, u"\"CardName\""_s, u"5"_s },
        ShapeRow { "aggregatesAreNotWalked",
            u"SELECT Min(Field4) AS [MinValue], Max(Field4) AS [MaxValue] FROM Quorbin_Card"_s,
            false, u"Quorbin_Card"_s, {}, {}, {}, {} },
        ShapeRow { "distinctIsNotWalked", u"SELECT DISTINCT Field1 FROM Quorbin_Card"_s, false,
            u"Quorbin_Card"_s, {}, {}, {}, {} },
        ShapeRow { "expressionsAreNotWalked", u"SELECT Field4 * 2 FROM Quorbin_Card"_s, false,
            u"Quorbin_Card"_s, {}, {}, {}, {} },
        ShapeRow { "groupingIsNotWalked",
            u"SELECT Field1, Count(*) FROM Quorbin_Card GROUP BY Field1"_s, false,
            u"Quorbin_Card"_s, {}, {}, {}, {} }),
    [](const testing::TestParamInfo<ShapeRow>& info) { return std::string(info.param.name); });

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

TEST(SqlTranslatorTest, ConditionTurnsDialectIntoSqlite)
{
    EXPECT_EQ(Dao::TranslateCondition(u"DATEPART(\"w\", Field5) = 6 AND [Field 7] <> False "
                                      u"AND Field1 & 'x' = 'ax' AND Field4 Mod 2 = 1"_s),
        u"qb_datepart('w' COLLATE NOCASE, \"Field5\") = 6 AND \"Field 7\" <> 0 AND \"Field1\" "
        u"|| 'x' COLLATE NOCASE = 'ax' COLLATE NOCASE AND \"Field4\" % 2 = 1"_s);
}

TEST(SqlTranslatorTest, DateLiteralBecomesADaySerial)
{
    EXPECT_EQ(Dao::TranslateCondition(u"Field5 BETWEEN #1-1-1990# AND #12-31-1999 12:00#"_s),
        u"\"Field5\" BETWEEN 32874.0 AND 36525.5"_s);
}

// Statements the engine refuses, and the number it refuses them with.
struct RefusalRow
{
    const char* name;
    QString sql;
    int number;
};

class RefusedStatementTest : public testing::TestWithParam<RefusalRow>
{
};

TEST_P(RefusedStatementTest, FailsWithTheEngineNumber)
{
    const RefusalRow& row = GetParam();
    try {
        Dao::TranslateSql(row.sql);
        FAIL() << "accepted " << row.sql.toStdString();
    } catch (const Dao::DaoError& error) {
        EXPECT_EQ(error.number(), row.number) << error.what();
    }
}

INSTANTIATE_TEST_SUITE_P(Refusals, RefusedStatementTest,
    testing::Values(RefusalRow { "empty", u""_s, 3129 },
        RefusalRow { "notAStatement", u"FETCH everything"_s, 3129 },
        RefusalRow { "onlySemicolon", u";"_s, 3129 },
        RefusalRow { "noTableAfterFrom", u"SELECT * FROM"_s, 3131 },
        RefusalRow { "openString", u"SELECT * FROM T WHERE Field1 = 'it's'"_s, 3075 },
        RefusalRow { "openBracket", u"SELECT * FROM [T"_s, 3075 },
        RefusalRow { "badDate", u"SELECT * FROM T WHERE Field5 < #13-45-04#"_s, 3075 },
        RefusalRow { "openDate", u"SELECT * FROM T WHERE Field5 < #3-5-04"_s, 3075 },
        RefusalRow { "unbalancedParenthesis", u"SELECT * FROM T WHERE (Field4 = 1"_s, 3075 },
        RefusalRow { "textAfterSemicolon", u"SELECT * FROM T; DELETE FROM T"_s, 3138 },
        RefusalRow { "integerDivisionUnknown", u"SELECT * FROM T WHERE Field4 \\ 2 = 1"_s, 3075 },
        RefusalRow { "updateWithoutSet", u"UPDATE T Field1 = 1"_s, 3144 },
        RefusalRow { "updateWithoutValue", u"UPDATE T SET Field1 ="_s, 3144 },
        RefusalRow { "unknownTypeWord", u"ALTER TABLE T ADD COLUMN F WIBBLE"_s, 3292 },
        RefusalRow { "alterWithoutAction", u"ALTER TABLE T RENAME TO U"_s, 3293 },
        RefusalRow { "sizeNotANumber", u"ALTER TABLE T ADD COLUMN F TEXT(x)"_s, 3292 }),
    [](const testing::TestParamInfo<RefusalRow>& info) { return std::string(info.param.name); });

} // namespace
