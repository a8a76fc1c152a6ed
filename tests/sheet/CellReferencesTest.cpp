#include "sheet/CellReferences.h"

#include "sheet/SheetError.h"
#include "sheet/SheetTestSupport.h"

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;
using namespace Tillane;

namespace {

template <typename Row> std::string rowName(const testing::TestParamInfo<Row>& info)
{
    return info.param.name;
}

struct FindRow
{
    const char* name;
    QString text;
    qsizetype from;
    QString reference; // the reference's text; empty when none is found
    CellAddress cell;
    bool columnFixed;
    bool rowFixed;
};

void PrintTo(const FindRow& row, std::ostream* stream)
{
    *stream << row.name << ": " << row.text.toStdString();
}

class FindingReferences : public testing::TestWithParam<FindRow>
{
};

TEST_P(FindingReferences, TakesTheFirstLetterFollowedByDollarOrDigit)
{
    const FindRow& row = GetParam();
    qsizetype position = row.from;
    const CellReferenceMatch match = FindNextReference(row.text, position);
    ASSERT_EQ(match.Found, !row.reference.isEmpty());
    if (!match.Found) {
        EXPECT_EQ(position, row.text.size());
        return;
    }
    EXPECT_EQ(row.text.mid(match.Start, match.Length), row.reference);
    EXPECT_EQ(position, match.Start + match.Length);
    EXPECT_EQ(match.Cell, row.cell);
    EXPECT_EQ(match.ColumnFixed, row.columnFixed);
    EXPECT_EQ(match.RowFixed, row.rowFixed);
}

INSTANTIATE_TEST_SUITE_P(Rows, FindingReferences,
    testing::Values(FindRow { "plain", u"=A1+1"_s, 0, u"A1"_s, { 1, 1 }, false, false },
        FindRow { "lowerCase", u"=b12*2"_s, 0, u"b12"_s, { 12, 2 }, false, false },
        FindRow { "fixedColumn", u"=$C3"_s, 0, u"$C3"_s, { 3, 3 }, true, false },
        FindRow { "fixedRow", u"=C$3"_s, 0, u"C$3"_s, { 3, 3 }, false, true },
        FindRow { "fixedBoth", u"=$Z$256"_s, 0, u"$Z$256"_s, { 256, 26 }, true, true },
        FindRow { "fromPosition", u"=A1+B2"_s, 3, u"B2"_s, { 2, 2 }, false, false },
        FindRow { "exponentIsACell", u"=1e5"_s, 0, u"e5"_s, { 5, 5 }, false, false },
        FindRow { "functionNameIsNot", u"=sum(A1:A3)"_s, 0, u"A1"_s, { 1, 1 }, false, false },
        FindRow { "letterInWordBeforeDigit", u"=abc7"_s, 0, u"c7"_s, { 7, 3 }, false, false },
        FindRow { "rowEndsAtNonDigit", u"=A12$3"_s, 0, u"A12"_s, { 12, 1 }, false, false },
        FindRow { "none", u"=1+2"_s, 0, QString(), {}, false, false },
        FindRow { "letterAtEnd", u"=2*A"_s, 0, QString(), {}, false, false },
        FindRow { "nonAsciiLetterIsNoColumn", u"=é1"_s, 0, QString(), {}, false, false }),
    rowName<FindRow>);

struct NoSuchCellRow
{
    const char* name;
    QString text;
};

class ReferencesOutsideTheSheet : public testing::TestWithParam<NoSuchCellRow>
{
};

TEST_P(ReferencesOutsideTheSheet, AreNoSuchCell)
{
    qsizetype position = 0;
    try {
        FindNextReference(GetParam().text, position);
        ADD_FAILURE() << "no error";
    } catch (const SheetError& error) {
        EXPECT_EQ(error.offset(), SheetError::NoSuchCell);
        EXPECT_EQ(error.description(), u"No such cell"_s);
    }
}

INSTANTIATE_TEST_SUITE_P(Rows, ReferencesOutsideTheSheet,
    testing::Values(NoSuchCellRow { "rowZero", u"=A0"_s },
        NoSuchCellRow { "rowBelowSheet", u"=A257"_s },
        NoSuchCellRow { "rowTooLargeForSixteenBits", u"=A99999"_s },
        NoSuchCellRow { "rowTooLongToRead", u"=A"_s + QString(400, u'9') },
        NoSuchCellRow { "dollarWithoutRow", u"=A$+1"_s }),
    rowName<NoSuchCellRow>);

TEST(ParsingReferences, ReadColumnLetterAndRow)
{
    EXPECT_EQ(ParseCellReference(u"$b$7"), (CellAddress { 7, 2 }));
    EXPECT_EQ(ParseCellReference(u"Z256"), (CellAddress { 256, 26 }));
    // A row of 32768 does not fit 16 bits: no cell.
    EXPECT_EQ(ParseCellReference(u"A32768").Row, 0);
    EXPECT_EQ(ParseCellReference(u"17"), (CellAddress {}));
}

struct NameRow
{
    const char* name;
    QString text;
    std::optional<CellAddress> cell;
};

class CellsFromNames : public testing::TestWithParam<NameRow>
{
};

TEST_P(CellsFromNames, AcceptOnlyAWholeReference)
{
    EXPECT_EQ(CellFromName(GetParam().text), GetParam().cell);
}

INSTANTIATE_TEST_SUITE_P(Rows, CellsFromNames,
    testing::Values(NameRow { "plain", u"B7"_s, CellAddress { 7, 2 } },
        NameRow { "lowerCase", u"b7"_s, CellAddress { 7, 2 } },
        NameRow { "fixed", u"$B$7"_s, CellAddress { 7, 2 } },
        NameRow { "trailingText", u"B7x"_s, std::nullopt },
        NameRow { "rowOutside", u"B257"_s, std::nullopt }),
    rowName<NameRow>);

struct ShiftRow
{
    const char* name;
    QString formula;
    int rows;
    int columns;
    QString expected; // empty: out of range
};

void PrintTo(const ShiftRow& row, std::ostream* stream)
{
    *stream << row.name << ": " << row.formula.toStdString();
}

class ShiftingReferences : public testing::TestWithParam<ShiftRow>
{
};

TEST_P(ShiftingReferences, MoveAllButTheFixedParts)
{
    const ShiftRow& row = GetParam();
    if (!row.expected.isEmpty()) {
        EXPECT_EQ(ShiftFormulaReferences(row.formula, row.rows, row.columns), row.expected);
        return;
    }
    try {
        ShiftFormulaReferences(row.formula, row.rows, row.columns);
        ADD_FAILURE() << "no error";
    } catch (const SheetError& error) {
        EXPECT_EQ(error.offset(), SheetError::CopyOutOfRange);
        EXPECT_EQ(
            error.description(), u"Unable to copy cells as cell references go out of range"_s);
    }
}

INSTANTIATE_TEST_SUITE_P(Rows, ShiftingReferences,
    testing::Values(ShiftRow { "downOneRow", u"=A1*2"_s, 1, 0, u"=A2*2"_s },
        ShiftRow { "fixedBothUnchanged", u"=$A$1*2"_s, 3, 2, u"=$A$1*2"_s },
        ShiftRow { "mixedFixes", u"=A$1+$A1"_s, 1, 0, u"=A$1+$A2"_s },
        ShiftRow { "acrossColumns", u"=A$1+$A1"_s, 0, 2, u"=C$1+$A1"_s },
        ShiftRow { "lettersUpperCased", u"=sum(a1:a3)"_s, 0, 1, u"=sum(B1:B3)"_s },
        ShiftRow { "noReferences", u"=1+2"_s, 5, 5, u"=1+2"_s },
        ShiftRow { "upToRowOne", u"=B2"_s, -1, -1, u"=A1"_s },
        ShiftRow { "toLastCell", u"=A1"_s, 255, 25, u"=Z256"_s },
        ShiftRow { "aboveRowOne", u"=A1"_s, -1, 0, QString() },
        ShiftRow { "belowRow256", u"=A256"_s, 1, 0, QString() },
        ShiftRow { "pastColumnZ", u"=Z1"_s, 0, 1, QString() },
        ShiftRow { "secondReferenceOutside", u"=A1+A256"_s, 1, 0, QString() }),
    rowName<ShiftRow>);

} // namespace
