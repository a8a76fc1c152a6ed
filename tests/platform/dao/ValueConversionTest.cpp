#include "platform/dao/ValueConversion.h"

#include "platform/dao/DaoError.h"

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;
using Dao::ColumnType;
using Dao::ConversionMode;
using Dao::DataType;
using Runtime::Variant;

namespace {

const ColumnType Long { DataType::Long, 4, false };
const ColumnType Integer { DataType::Integer, 2, false };
const ColumnType Byte { DataType::Byte, 1, false };
const ColumnType Real { DataType::Double, 8, false };
const ColumnType Single { DataType::Single, 4, false };
const ColumnType Money { DataType::Currency, 8, false };
const ColumnType When { DataType::Date, 8, false };
const ColumnType OnOff { DataType::Boolean, 1, false };
const ColumnType Text5 { DataType::Text, 5, false };
const ColumnType Memo { DataType::Memo, 0, false };
const ColumnType Picture { DataType::LongBinary, 0, false };

// What a column stores for a value written into it, by a statement (nothing fails: what
// cannot be stored is Null).
struct ConversionRow
{
    const char* name;
    Variant value;
    ColumnType column;
    Variant stored;
};

class ConversionTest : public testing::TestWithParam<ConversionRow>
{
};

TEST_P(ConversionTest, StoresTheColumnsKind)
{
    const ConversionRow& row = GetParam();
    EXPECT_EQ(Dao::ConvertForColumn(row.value, row.column, ConversionMode::Statement), row.stored);
}

INSTANTIATE_TEST_SUITE_P(Values, ConversionTest,
    testing::Values(ConversionRow { "textToWhole", u"12"_s, Long, qint64(12) },
        ConversionRow { "wordToWholeIsNull", u"abc"_s, Long, Variant::null() },
        ConversionRow { "leadingZeros", u"007"_s, Long, qint64(7) },
        ConversionRow { "numberThenWordIsNull", u"12abc"_s, Long, Variant::null() },
        ConversionRow { "halfRoundsToEvenDown", u"2.5"_s, Long, qint64(2) },
        ConversionRow { "trueIsMinusOne", true, Long, qint64(-1) },
        ConversionRow { "beyondLongIsNull", 3e9, Long, Variant::null() },
        ConversionRow { "beyondIntegerIsNull", qint64(40000), Integer, Variant::null() },
        ConversionRow { "negativeByteIsNull", qint64(-1), Byte, Variant::null() },
        ConversionRow { "textToReal", u"12.25"_s, Real, 12.25 },
        ConversionRow { "thousandsSeparator", u"1,234.5"_s, Real, 1234.5 },
        ConversionRow { "singleKeepsSinglePrecision", 0.1, Single, static_cast<double>(0.1f) },
        ConversionRow {
            "currencyKeepsFourDecimals", u"1.23456"_s, Money, Variant::currency(1.2346) },
        ConversionRow { "currencySymbol", u"£3.50"_s, Money, Variant::currency(3.5) },
        ConversionRow { "dateText", u"5 March 2004"_s, When, Variant::date(38051) },
        ConversionRow { "dateOrderOfTheLocale", u"05/03/2004"_s, When, Variant::date(38051) },
        ConversionRow { "wordToDateIsNull", u"someday"_s, When, Variant::null() },
        ConversionRow { "beyondYear9999IsNull", 3e6, When, Variant::null() },
        ConversionRow { "trueWord", u"True"_s, OnOff, true },
        ConversionRow { "zeroIsOff", u"0"_s, OnOff, false },
        ConversionRow { "anyNumberIsOn", qint64(5), OnOff, true },
        ConversionRow { "otherWordToOnOffIsNull", u"maybe"_s, OnOff, Variant::null() },
        ConversionRow { "numberToText", 2.5, Memo, u"2.5"_s },
        ConversionRow { "onOffToText", true, Memo, u"True"_s },
        ConversionRow { "dateToText", Variant::date(38051.75), Memo, u"05/03/2004 18:00:00"_s },
        ConversionRow { "textTooLongIsNull", u"abcdef"_s, Text5, Variant::null() },
        ConversionRow { "textToPictureIsUtf16", u"jpg"_s, Picture, QByteArray("j\0p\0g\0", 6) },
        ConversionRow { "numberToPictureIsNull", qint64(1), Picture, Variant::null() },
        ConversionRow { "pictureToNumberIsNull", QByteArray("\1", 1), Long, Variant::null() },
        ConversionRow { "nullStaysNull", Variant::null(), Long, Variant::null() },
        ConversionRow { "emptyIsNull", Variant(), Memo, Variant::null() }),
    [](const testing::TestParamInfo<ConversionRow>& info) { return std::string(info.param.name); });

// A recordset assignment refuses what would be lost without a trace: numbers too large and
// texts too long fail instead of becoming Null.
struct AssignmentRow
{
    const char* name;
    Variant value;
    ColumnType column;
    int number;
};

class AssignmentTest : public testing::TestWithParam<AssignmentRow>
{
};

TEST_P(AssignmentTest, RefusesWhatWouldBeLost)
{
    const AssignmentRow& row = GetParam();
    try {
        Dao::ConvertForColumn(row.value, row.column, ConversionMode::Assignment);
        FAIL() << "accepted";
    } catch (const Dao::DaoError& error) {
        EXPECT_EQ(error.number(), row.number);
    }
}

INSTANTIATE_TEST_SUITE_P(Values, AssignmentTest,
    testing::Values(AssignmentRow { "textTooLong", u"abcdef"_s, Text5, 3163 },
        AssignmentRow { "wholeTooLarge", 3e9, Long, 3349 },
        AssignmentRow { "integerTooLarge", u"40000"_s, Integer, 3349 },
        AssignmentRow { "dateTooLate", 3e6, When, 3349 }),
    [](const testing::TestParamInfo<AssignmentRow>& info) { return std::string(info.param.name); });

TEST(ConversionTest, AssignmentStillTurnsWordsIntoNull)
{
    EXPECT_EQ(Dao::ConvertForColumn(u"abc"_s, Long, ConversionMode::Assignment), Variant::null());
}

// Stored values read back as the column's kind; other storage stays as stored.
struct ReadingRow
{
    const char* name;
    Variant stored;
    DataType type;
    Variant read;
};

class ReadingTest : public testing::TestWithParam<ReadingRow>
{
};

TEST_P(ReadingTest, ReadsTheColumnsKind)
{
    const ReadingRow& row = GetParam();
    EXPECT_EQ(Dao::FromStorage(row.stored, row.type), row.read);
}

INSTANTIATE_TEST_SUITE_P(Values, ReadingTest,
    testing::Values(ReadingRow { "oneIsOn", qint64(1), DataType::Boolean, true },
        ReadingRow { "zeroIsOff", qint64(0), DataType::Boolean, false },
        ReadingRow { "realIsDate", 38051.5, DataType::Date, Variant::date(38051.5) },
        ReadingRow { "wholeIsDate", qint64(38051), DataType::Date, Variant::date(38051) },
        ReadingRow { "realIsCurrency", 1.25, DataType::Currency, Variant::currency(1.25) },
        ReadingRow { "textInDateColumnStays", u"2004-03-05"_s, DataType::Date, u"2004-03-05"_s },
        ReadingRow { "nullStays", Variant::null(), DataType::Long, Variant::null() }),
    [](const testing::TestParamInfo<ReadingRow>& info) { return std::string(info.param.name); });

} // namespace
