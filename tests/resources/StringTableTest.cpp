#include "resources/StringTable.h"

#include <climits>
#include <gtest/gtest.h>
#include <map>
#include <vector>

using namespace Qt::Literals::StringLiterals;
using Resources::StringTable;

namespace {

std::string describe(const QList<Resources::StringTableProblem>& problems)
{
    std::string text;
    for (const auto& problem : problems) {
        text += "line " + std::to_string(problem.line) + ": ";
        text += problem.message.toStdString() + "\n";
    }
    return text;
}

template <typename Row> std::string rowName(const testing::TestParamInfo<Row>& info)
{
    return info.param.name;
}

// Failure messages name the row instead of dumping its bytes.
template <typename Row> void printRow(const Row& row, std::ostream* stream)
{
    *stream << row.name;
}

// ---- Numbers the table lacks ---------------------------------------------------------------

struct MissingRow
{
    std::string name;
    int id;
};

void PrintTo(const MissingRow& row, std::ostream* stream)
{
    printRow(row, stream);
}

class MissingId : public testing::TestWithParam<MissingRow>
{
};

TEST_P(MissingId, GivesErrorText)
{
    EXPECT_EQ(GetResString(GetParam().id), u"ERROR"_s);
}

INSTANTIATE_TEST_SUITE_P(StringTable, MissingId,
    testing::Values(MissingRow { "zero", 0 }, MissingRow { "negative", -451 },
        MissingRow { "belowTheFirstNumber", 399 }, MissingRow { "betweenSubsystems", 3000 },
        MissingRow { "largestInteger", INT_MAX }, MissingRow { "smallestInteger", INT_MIN }),
    rowName<MissingRow>);

// ---- Exact texts of every subsystem --------------------------------------------------------

struct TextRow
{
    std::string name;
    int id;
    QString text;
};

void PrintTo(const TextRow& row, std::ostream* stream)
{
    printRow(row, stream);
}

class ExactText : public testing::TestWithParam<TextRow>
{
};

TEST_P(ExactText, MatchesTheProgramsWording)
{
    EXPECT_EQ(GetResString(GetParam().id), GetParam().text);
}

INSTANTIATE_TEST_SUITE_P(StringTable, ExactText,
    testing::Values(
        // Frame
        TextRow { "mainMenuAccelerator", 404, u"E&xit"_s },
        TextRow { "aboutTrailingBlank", 430, u"About "_s },
        TextRow { "versionTrailingBlank", 431, u"Version "_s },
        TextRow { "unknownErrorOwnSpelling", 451, u"An unknown error occured: "_s },
        TextRow { "openFilterWithBars", 452,
            u"All Quorbin Files|*.qnp;*.qnd;*.qnc|Ormsey Files|*.qnp|DataBase Files|*.qnd|"
            u"Tillane Files|*.qnc"_s },
        TextRow { "untitledCaption", 1008, u"- Untitled:"_s },
        TextRow { "newGraphButtonTwoLines", 604, u"New\r\nOrmse&y Graph"_s },
        TextRow { "newSprondleButtonTwoLines", 608, u"New\r\n&Sprondle File"_s },
        TextRow { "openButtonOneLine", 603, u"&Open an Existing File"_s },
        TextRow { "noPrinters", 440, u"No Printers"_s },
        // Cards
        TextRow { "duplicateCardName", 841, u"There is already a record with this name."_s },
        TextRow { "countWindowQuotes", 849,
            u"Select the items you wish to plot in the 'Count Window',"_s },
        TextRow { "queryWordTrailingBlank", 950, u"Card contains "_s },
        TextRow { "pictureLibraryCaption", 837, u"Picture Library - "_s },
        TextRow { "readOnlyMarker", 1082, u"[Read Only]"_s },
        TextRow { "cardMenuItem", 716, u"Export CSV..."_s },
        TextRow { "cardToolTip", 817, u"Refresh Database"_s },
        TextRow { "fieldEditorPalette", 1093, u"On / Off Field"_s },
        // Sheet
        TextRow { "graphLimitLeadingBlank", 1283, u" graphs in a spreadsheet."_s },
        TextRow { "countColumnTrailingBlank", 1506, u"Count Column "_s },
        TextRow { "fileMenuSeparator", 1204, u"-"_s },
        TextRow { "newerFileVersion", 1275,
            u"This file was created by a more recent version of Quorbin and cannot be loaded."_s },
        TextRow { "circularReference", 1277, u"Circular cell reference"_s },
        // Graph
        TextRow { "graphMenuAccelerator", 536, u"Make 3&D"_s },
        TextRow { "seriesWord", 577, u"Series"_s },
        TextRow { "metafileFilter", 581, u"Windows Enhanced Metafiles (*.emf)|*.emf"_s },
        TextRow { "clockApostrophe", 10035, u"Twelve O' Clock"_s },
        TextRow { "correlation", 10042, u"Coefficient of Correlation"_s }),
    rowName<TextRow>);

// ---- The compiled-in table -----------------------------------------------------------------

TEST(StringTable, BuiltInFileHasNoBadLines)
{
    const StringTable& table = StringTable::builtIn();
    EXPECT_TRUE(table.problems().isEmpty()) << describe(table.problems());
    ASSERT_GT(table.size(), 0);
    EXPECT_GE(table.ids().first(), 400) << "texts are numbered from 400 upward";
}

// Menus take item i from first + i, so a hole in a run would show "ERROR" in a menu.
struct RunRow
{
    std::string name;
    int first;
    int last;
};

void PrintTo(const RunRow& row, std::ostream* stream)
{
    printRow(row, stream);
}

class MenuRun : public testing::TestWithParam<RunRow>
{
};

TEST_P(MenuRun, HasNoGaps)
{
    for (int id = GetParam().first; id <= GetParam().last; ++id)
        EXPECT_TRUE(StringTable::builtIn().contains(id)) << "no text for " << id;
}

INSTANTIATE_TEST_SUITE_P(StringTable, MenuRun,
    testing::Values(RunRow { "mainFile", 401, 404 }, RunRow { "mainUtilities", 411, 412 },
        RunRow { "pictureLibrary", 1061, 1062 }, RunRow { "reportWindowFile", 1071, 1074 },
        RunRow { "sheetFile", 1201, 1211 }, RunRow { "sheetFormat", 1221, 1223 },
        RunRow { "sheetData", 1231, 1235 }),
    rowName<RunRow>);

// ---- The file format -----------------------------------------------------------------------

struct ParseRow
{
    std::string name;
    QByteArray input;
    std::map<int, QString> texts; // what the table holds afterwards
    std::vector<int> problemLines; // lines reported, in order
    QString messagePart = {}; // part of the first problem's message, when it matters
};

void PrintTo(const ParseRow& row, std::ostream* stream)
{
    printRow(row, stream);
}

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

INSTANTIATE_TEST_SUITE_P(StringTable, ParseFile,
    testing::Values(ParseRow { "escapes", "500\tA\\tB\\nC\\rD\\\\E\\s\n",
                        { { 500, u"A\tB\nC\rD\\E "_s } }, {} },
        ParseRow { "leadingBlankKept", "500\t graphs\n", { { 500, u" graphs"_s } }, {} },
        ParseRow { "crlfLineEnds", "500\tOne\r\n501\tTwo\r\n",
            { { 500, u"One"_s }, { 501, u"Two"_s } }, {} },
        ParseRow { "lastLineWithoutLineEnd", "500\tOne\n501\tTwo",
            { { 500, u"One"_s }, { 501, u"Two"_s } }, {} },
        ParseRow { "commentsAndBlankLines", "# heading\n\n500\tOne\n#501\tTwo\n",
            { { 500, u"One"_s } }, {} },
        ParseRow { "nonAsciiText",
            "500\tCaf\xc3\xa9 \xc2\xa3"
            "3 \xe2\x80\x93 \xc3\x9f\n",
            { { 500, u"Caf\u00e9 \u00a33 \u2013 \u00df"_s } }, {} },
        ParseRow { "missingTab", "500 One\n501\tTwo\n", { { 501, u"Two"_s } }, { 1 }, u"TAB"_s },
        ParseRow { "signedNumber", "+500\tOne\n", {}, { 1 }, u"not a number"_s },
        ParseRow { "negativeNumber", "-500\tOne\n", {}, { 1 }, u"not a number"_s },
        ParseRow { "numberTooLarge", "99999999999\tOne\n", {}, { 1 }, u"not a number"_s },
        ParseRow { "blankBeforeNumber", " 500\tOne\n", {}, { 1 }, u"not a number"_s },
        ParseRow { "emptyText", "500\t\n", {}, { 1 }, u"empty"_s },
        ParseRow { "rawTrailingBlank", "500\tAbout \n", {}, { 1 }, u"\\s"_s },
        ParseRow { "rawTrailingTab", "500\tAbout\t\n", {}, { 1 }, u"control"_s },
        ParseRow { "rawTabInsideText", "500\tA\tB\n", {}, { 1 }, u"control"_s },
        ParseRow { "unknownEscape", "500\tA\\qB\n", {}, { 1 }, u"\\q"_s },
        ParseRow { "loneBackslashAtEnd", "500\tA\\\n", {}, { 1 }, u"backslash"_s },
        ParseRow { "invalidUtf8", "500\tA\xff\n501\tB\n", { { 501, u"B"_s } }, { 1 }, u"UTF-8"_s },
        ParseRow { "duplicateKeepsFirst", "500\tOne\n501\tTwo\n500\tThree\n",
            { { 500, u"One"_s }, { 501, u"Two"_s } }, { 3 }, u"line 1"_s },
        ParseRow { "everyBadLineReported", "x\n500\tOne\n\ty\n500\tAgain\n", { { 500, u"One"_s } },
            { 1, 3, 4 } }),
    rowName<ParseRow>);

} // namespace
