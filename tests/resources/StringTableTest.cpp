#include "resources/StringTable.h"

#include "TableRows.h"

#include <climits>
#include <gtest/gtest.h>
#include <map>
#include <vector>

using namespace Qt::Literals::StringLiterals;
using Resources::StringTable;

namespace {

using TestRows::PrintTo;

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

struct ParseRow
{
    const char* name;
    QByteArray input;
    std::map<int, QString> texts; // what the table holds afterwards
    std::vector<int> problemLines; // lines reported, in order
    QString messagePart = {}; // part of the first problem's message, when it matters
};

class ParseFile : public testing::TestWithParam<ParseRow>
{
};

TEST_P(ParseFile, TakesGoodLinesAndReportsBadOnes)
{
    const ParseRow& row = GetParam();
    const StringTable table = StringTable::parse(row.input);
    std::map<int, QString> texts;
    for (int id : table.ids())
        texts[id] = table.text(id);
    EXPECT_EQ(texts, row.texts);
    std::vector<int> lines;
    for (const auto& problem : table.problems())
        lines.push_back(problem.line);
    EXPECT_EQ(lines, row.problemLines) << describe(table.problems());
    if (!row.messagePart.isEmpty() && !table.problems().isEmpty()) {
        EXPECT_TRUE(table.problems().first().message.contains(row.messagePart))
            << describe(table.problems());
    }
}

// Texts with blanks at either end ("About ", " graphs in a spreadsheet.") and two-line
// captions depend on the escapes.
INSTANTIATE_TEST_SUITE_P(StringTable, ParseFile,
    testing::Values(ParseRow { "escapes", "500\tA\\tB\\nC\\rD\\\\E\\s\n",
                        { { 500, u"A\tB\nC\rD\\E "_s } }, {} },
        ParseRow { "leadingBlankKept", "500\t graphs\n", { { 500, u" graphs"_s } }, {} },
        ParseRow { "crlfAndNoLastLineEnd", "500\tOne\r\n501\tTwo",
            { { 500, u"One"_s }, { 501, u"Two"_s } }, {} },
        ParseRow { "commentsAndBlankLines", "# heading\n\n500\tOne\n#501\tTwo\n",
            { { 500, u"One"_s } }, {} },
        ParseRow { "nonAsciiText", "500\tCaf\xc3\xa9 \xc2\xa3\x33 \xe2\x80\x93\n",
            { { 500, u"Caf\u00e9 \u00a33 \u2013"_s } }, {} },
        ParseRow { "missingTab", "500 One\n501\tTwo\n", { { 501, u"Two"_s } }, { 1 }, u"TAB"_s },
        ParseRow { "signedNumber", "+500\tOne\n", {}, { 1 }, u"not a number"_s },
        ParseRow { "rawTrailingBlank", "500\tAbout \n", {}, { 1 }, u"\\s"_s },
        ParseRow { "unknownEscape", "500\tA\\qB\n", {}, { 1 }, u"\\q"_s },
        ParseRow { "invalidUtf8", "500\tA\xff\n501\tB\n", { { 501, u"B"_s } }, { 1 }, u"UTF-8"_s },
        ParseRow { "duplicateKeepsFirst", "500\tOne\n501\tTwo\n500\tThree\n",
            { { 500, u"One"_s }, { 501, u"Two"_s } }, { 3 }, u"line 1"_s },
        ParseRow { "everyBadLineReported", "x\n500\tOne\n\ty\n500\tAgain\n", { { 500, u"One"_s } },
            { 1, 3, 4 } }),
    TestRows::Named());

} // namespace
