#include "platform/dao/DateLiteral.h"

#include <QString>
#include <gtest/gtest.h>
#include <optional>

using namespace Qt::Literals::StringLiterals;

namespace {

struct DateRow
{
    const char* name;
    QString text;
    std::optional<double> serial;
};

class DateLiteralTest : public testing::TestWithParam<DateRow>
{
};

TEST_P(DateLiteralTest, ReadsMonthDayYear)
{
    const DateRow& row = GetParam();
    const auto serial = Dao::ParseDateLiteral(row.text);
    ASSERT_EQ(serial.has_value(), row.serial.has_value()) << row.text.toStdString();
    if (row.serial) {
        EXPECT_DOUBLE_EQ(*serial, *row.serial);
    }
}

INSTANTIATE_TEST_SUITE_P(Literals, DateLiteralTest,
    testing::Values(DateRow { "monthDayTwoDigitYear", u"3-5-04"_s, 38051.0 },
        DateRow { "slashesFourDigitYear", u"12/31/1999"_s, 36525.0 },
        DateRow { "firstOfJanuary", u"1-1-1990"_s, 32874.0 },
        DateRow { "yearFirstWithFourDigits", u"2004-03-05"_s, 38051.0 },
        DateRow { "year29IsThisCentury", u"3-5-29"_s, 47182.0 },
        DateRow { "year30IsLastCentury", u"3-5-30"_s, 11022.0 },
        DateRow { "leapDay", u"2-29-2024"_s, 45351.0 },
        DateRow { "blanksAround", u" 3-5-04 "_s, 38051.0 },
        DateRow { "dateAndAfternoon", u"3-5-04 6:00 PM"_s, 38051.75 },
        DateRow { "dateAndSeconds", u"3-5-04 00:00:36"_s, 38051.0 + 36.0 / 86400.0 },
        DateRow { "timeAlone", u"10:30"_s, 0.4375 },
        DateRow { "beforeDayZeroRunsForward", u"12-29-1899 6:00"_s, -1.25 },
        DateRow { "monthThirteen", u"13-1-04"_s, std::nullopt },
        DateRow { "thirtiethOfFebruary", u"2-30-04"_s, std::nullopt },
        DateRow { "twoParts", u"3-5"_s, std::nullopt },
        DateRow { "hourTwentyFive", u"3-5-04 25:00"_s, std::nullopt },
        DateRow { "notANumber", u"March 5"_s, std::nullopt },
        DateRow { "empty", u""_s, std::nullopt }),
    [](const testing::TestParamInfo<DateRow>& info) { return std::string(info.param.name); });

} // namespace
