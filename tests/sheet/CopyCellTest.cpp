#include "sheet/CopyCell.h"

#include "sheet/SheetError.h"
#include "sheet/SheetTestSupport.h"

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;
using namespace Tillane;

namespace {

class Copying : public SheetTest
{
protected:
    void copy(const char* source, const char* first, const char* last)
    {
        CopyCell(sheet, at(source), at(first), at(last));
    }
};

TEST_F(Copying, FormulaDownAColumnShiftsRowsLinksAndRecalculates)
{
    for (int row = 1; row <= 4; ++row)
        EnterCell(sheet, row, 1, QString::number(row * 10));
    enter("C3", u"=B3+1"_s);
    enter("B1", u"=A1*2"_s);
    copy("B1", "B2", "B4");
    EXPECT_EQ(record("B4").Formula, u"=A4*2"_s);
    EXPECT_EQ(shown("B4"), u"80"_s);
    EXPECT_EQ(value("C3"), 61); // B3's dependent saw the copy
    enter("A2", u"21"_s);
    EXPECT_EQ(value("B2"), 42);
    EXPECT_EQ(sheet.usedColumns(), 3);
}

TEST_F(Copying, AcrossARowShiftsColumns)
{
    enter("A2", u"=sum(A1:A1)+A1"_s);
    copy("A2", "B2", "C2");
    EXPECT_EQ(record("C2").Formula, u"=sum(C1:C1)+C1"_s);
}

TEST_F(Copying, TextNumberFormatAndEmptinessAreCopied)
{
    enter("A1", u"Rain"_s);
    enter("B1", u"50%"_s);
    enter("D2", u"=D1+1"_s);
    copy("A1", "A2", "A3");
    copy("B1", "B2", "B2");
    copy("C1", "D2", "D2");
    EXPECT_EQ(shown("A3"), u"Rain"_s);
    EXPECT_EQ(sheet.display(3, 1).Alignment, AlignLeftCentre);
    EXPECT_EQ(record("B2").NumberFormat, u"#0.##%"_s);
    EXPECT_EQ(shown("B2"), u"50%"_s);
    EXPECT_EQ(record("D2").Kind, EmptyCell);
    EXPECT_FALSE(record("D1").HasDependents);
}

TEST_F(Copying, SourceInsideTheRangeIsRewrittenAndABackwardsRangeIsNone)
{
    enter("A2", u"2"_s);
    enter("B1", u"=A1*2"_s);
    copy("B1", "B1", "B2");
    EXPECT_EQ(record("B1").Formula, u"=A1*2"_s);
    EXPECT_EQ(value("B2"), 4);
    copy("B1", "B5", "B3");
    EXPECT_EQ(record("B4").Kind, EmptyCell);
}

TEST_F(Copying, OutOfRangeKeepsDoneTargetsAndLeavesTheCurrentOneCleared)
{
    enter("Y1", u"=Z1"_s);
    enter("Z2", u"old"_s);
    // Into Y2 the reference becomes Z2; into Z2 it would pass column Z.
    EXPECT_THROW(copy("Y1", "Y2", "Z2"), SheetError);
    EXPECT_EQ(record("Y2").Formula, u"=Z2"_s);
    EXPECT_EQ(record("Z2").Kind, EmptyCell);
    EXPECT_TRUE(shown("Z2").isEmpty());
}

TEST_F(Copying, CircularTargetStopsTheCopy)
{
    enter("A2", u"=B2+1"_s);
    enter("B1", u"=A1"_s);
    // Into B2 the formula becomes =A2, which reads B2.
    try {
        copy("B1", "B2", "B3");
        ADD_FAILURE() << "no error";
    } catch (const SheetError& error) {
        EXPECT_EQ(error.description(), u"Circular cell reference"_s);
    }
    EXPECT_EQ(record("B2").Kind, EmptyCell);
    EXPECT_EQ(record("B3").Kind, EmptyCell); // not reached
}

TEST_F(Copying, LockedTargetIsPassedOver)
{
    enter("B2", u"keep"_s);
    sheet.record(2, 2).Locked = true;
    enter("B1", u"=A1"_s);
    copy("B1", "B2", "B3");
    EXPECT_EQ(shown("B2"), u"keep"_s);
    EXPECT_EQ(record("B3").Formula, u"=A3"_s);
}

} // namespace
