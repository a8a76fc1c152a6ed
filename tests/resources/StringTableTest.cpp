#include "resources/StringTable.h"

#include "RowFile.h"

#include <climits>
#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;
using Resources::StringTable;

namespace {

using RowFile::In;
using RowFile::Named;

std::string describe(const QList<Resources::StringTableProblem>& problems)
{
    std::string text;
    for (const auto& problem : problems)
        text
            += "line " + std::to_string(problem.line) + ": " + problem.message.toStdString() + "\n";
    return text;
}

TEST(StringTable, MissingNumberGivesErrorText)
{
    for (const int id : { 0, -451, 399, 3000, INT_MAX, INT_MIN })
        EXPECT_EQ(GetResString(id), u"ERROR"_s) << id;
}

TEST(StringTable, BuiltInFileHasNoBadLines)
{
    const StringTable& table = StringTable::builtIn();
    EXPECT_TRUE(table.problems().isEmpty()) << describe(table.problems());
    ASSERT_GT(table.size(), 0);
    EXPECT_GE(table.ids().first(), 400) << "texts are numbered from 400 upward";
}

// Menus take item i from first + i, so a hole in a run would show "ERROR" in a menu.
TEST(StringTable, MenuRunsHaveNoGaps)
{
    const std::pair<int, int> runs[] = { { 401, 404 }, { 411, 412 }, { 1061, 1062 }, { 1071, 1074 },
        { 1201, 1211 }, { 1221, 1223 }, { 1231, 1235 } };
    for (const auto& [first, last] : runs)
        for (int id = first; id <= last; ++id)
            EXPECT_TRUE(StringTable::builtIn().contains(id)) << "no text for " << id;
}

using ParseFile = RowFile::RowTest<>;

TEST_P(ParseFile, TakesGoodLinesAndReportsBadOnes)
{
    const StringTable table = StringTable::parse(row().bytes("input"));
    QStringList texts;
    for (int id : table.ids())
        texts << QString::number(id) + u'=' + table.text(id);
    EXPECT_EQ(texts.join(u" | ").toStdString(), row().text("texts").toStdString());
    QStringList lines;
    for (const auto& problem : table.problems())
        lines << QString::number(problem.line);
    EXPECT_EQ(lines.join(u", ").toStdString(), row().text("problemLines").toStdString())
        << describe(table.problems());
    if (!table.problems().isEmpty()) {
        EXPECT_TRUE(table.problems().first().message.contains(row().text("messagePart")))
            << describe(table.problems());
    }
}

INSTANTIATE_TEST_SUITE_P(StringTable, ParseFile, In("resources/parse.rows"), Named());

} // namespace
