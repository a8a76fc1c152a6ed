#include "platform/dao/DateLiteral.h"

#include "RowFile.h"

#include <QString>
#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

namespace {

class DateLiteralTest : public RowFile::RowTest<>
{
};

TEST_P(DateLiteralTest, ReadsMonthDayYear)
{
    const auto serial = Dao::ParseDateLiteral(row().text("text"));
    ASSERT_EQ(serial.has_value(), row().text("serial") != u"none");
    if (serial) {
        EXPECT_DOUBLE_EQ(*serial, row().number("serial"));
    }
}

INSTANTIATE_TEST_SUITE_P(
    Literals, DateLiteralTest, RowFile::In("platform/dao/dateLiterals.rows"), RowFile::Named());

} // namespace
