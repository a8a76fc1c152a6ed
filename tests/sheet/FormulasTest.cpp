#include "sheet/Formulas.h"

#include "RowFile.h"
#include "sheet/Dependencies.h"
#include "sheet/SheetError.h"
#include "sheet/SheetTestSupport.h"

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;
using namespace Tillane;

namespace {

class Formulas : public SheetTest
{
protected:
    double evaluate(const QString& formula, const char* cell = "J10", bool recordRefs = true)
    {
        const CellAddress address = at(cell);
        return EvaluateFormula(sheet, formula, recordRefs, address.Row, address.Column);
    }
    // The error's offset and text, or "no error".
    std::pair<int, QString> failure(const QString& formula, const char* cell = "J10")
    {
        try {
            evaluate(formula, cell);
        } catch (const SheetError& error) {
            return { error.offset(), error.description() };
        }
        return { -2, u"no error"_s };
    }
};

TEST_F(Formulas, BothSumsOfAFormulaAreReplaced)
{
    enter("A1", u"1"_s);
    enter("A2", u"2"_s);
    enter("B1", u"10"_s);
    enter("B2", u"20"_s);
    enter("C3", u"100"_s);
    EXPECT_EQ(evaluate(u"=2*sum(A1:A2)+SUM(b1:b2)"_s), 36);
    // The first sum found comes first in the links; a range runs row by row.
    const QList<CellRef> expected { { 2, 1, 1 }, { 2, 2, 1 }, { 2, 1, 2 }, { 2, 2, 2 } };
    EXPECT_EQ(record("J10").Precedents, expected);
    EXPECT_EQ(evaluate(u"=sum(A1:B2)"_s), 33);
}

using RowFile::In;
using RowFile::Named;

class FormulaValues : public RowFile::RowTest<Formulas>
{
};

TEST_P(FormulaValues, FollowTheChosenRules)
{
    enterAll(row().list("entered", u"; "_s));
    EXPECT_DOUBLE_EQ(evaluate(row().text("formula")), row().number("value"));
}

INSTANTIATE_TEST_SUITE_P(Rows, FormulaValues, In("sheet/formulas/values.rows"), Named());

class FormulaErrors : public RowFile::RowTest<Formulas>
{
};

TEST_P(FormulaErrors, RaiseTheirOffsetAndText)
{
    EXPECT_EQ(failure(row().text("formula")),
        std::make_pair(int(row().whole("offset")), row().text("description")));
    // A refused formula records no links.
    EXPECT_FALSE(record("J10").HasPrecedents);
    EXPECT_FALSE(record("A1").HasDependents);
}

INSTANTIATE_TEST_SUITE_P(Rows, FormulaErrors, In("sheet/formulas/errors.rows"), Named());

TEST_F(Formulas, TextLeftOverGivesZeroWithoutLinks)
{
    enter("A1", u"5"_s);
    EXPECT_EQ(evaluate(u"=A1 2"_s), 0);
    EXPECT_FALSE(record("J10").HasPrecedents);
    EXPECT_FALSE(record("A1").HasDependents);
}

TEST_F(Formulas, LinksRecordedBothWays)
{
    enter("A1", u"5"_s);
    evaluate(u"=A1+a1+sum(B1:B2)"_s, "C1");
    const QList<CellRef> precedents { { 2, 1, 2 }, { 2, 2, 2 }, { 1, 1, 1 } };
    EXPECT_EQ(record("C1").Precedents, precedents);
    EXPECT_TRUE(record("C1").HasPrecedents);
    for (const char* cell : { "A1", "B1", "B2" }) {
        EXPECT_EQ(record(cell).Dependents, (QList<CellRef> { { 0, 1, 3 } })) << cell;
        EXPECT_TRUE(record(cell).HasDependents) << cell;
    }
    EXPECT_FALSE(record("B3").HasDependents);
}

TEST_F(Formulas, WithoutRecordingNothingIsLinked)
{
    enter("A1", u"5"_s);
    EXPECT_EQ(evaluate(u"=A1*2"_s, "C1", false), 10);
    EXPECT_FALSE(record("C1").HasPrecedents);
    EXPECT_FALSE(record("A1").HasDependents);
}

TEST(PrecedentCellsOfLists, SkipWhatNamesNoCell)
{
    const QList<CellRef> damaged { { 1, 0, 1 }, { 1, 3, 27 }, { 2, 255, 26 }, { 2, 300, 30 },
        { 1, 2, 2 }, { 2, 1, 1 } };
    // The range is held to the sheet; the last corner has no partner.
    const QList<CellAddress> expected { { 255, 26 }, { 256, 26 }, { 2, 2 } };
    EXPECT_EQ(PrecedentCells(damaged), expected);
}

TEST_F(Formulas, CycleAwayFromTheOriginEndsTheSearch)
{
    // Only a damaged file can hold this: B1 and C1 read each other, and A1 reads B1.
    sheet.record(1, 2).Precedents = { { 1, 1, 3 } };
    sheet.record(1, 2).HasPrecedents = true;
    sheet.record(1, 3).Precedents = { { 1, 1, 2 } };
    sheet.record(1, 3).HasPrecedents = true;
    sheet.record(1, 1).Precedents = { { 1, 1, 2 } };
    sheet.record(1, 1).HasPrecedents = true;
    EXPECT_FALSE(LeadsBackTo(sheet, { 1, 1 }));
    EXPECT_TRUE(LeadsBackTo(sheet, { 1, 2 }));
}

} // namespace
