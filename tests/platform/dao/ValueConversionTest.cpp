#include "platform/dao/ValueConversion.h"

#include "DaoTestSupport.h"
#include "RowFile.h"
#include "platform/dao/DaoError.h"
#include "platform/runtime/RuntimeRows.h"

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;
using Dao::ColumnType;
using Dao::ConversionMode;
using Dao::DataType;
using Runtime::Variant;

namespace {

using RowFile::In;
using RowFile::Named;

// The kinds of column by name, in the order of their numbers.
const QStringList kinds { QString(), u"Boolean"_s, u"Byte"_s, u"Integer"_s, u"Long"_s,
    u"Currency"_s, u"Single"_s, u"Double"_s, u"Date"_s, u"Binary"_s, u"Text"_s, u"LongBinary"_s,
    u"Memo"_s };

// A column as the rows write it: its kind and size, "Text 5".
ColumnType ColumnOf(const RowFile::Row& row)
{
    const QStringList parts = row.list("column", u" "_s);
    EXPECT_TRUE(parts.size() == 2 && kinds.indexOf(parts.front()) > 0) << row.where();
    return ColumnType { DataType(kinds.indexOf(parts.value(0))), parts.value(1).toInt(), false };
}

// What a column stores for a value written into it, by a statement (nothing fails: what
// cannot be stored is Null).
class ConversionTest : public RowFile::RowTest<>
{
};

TEST_P(ConversionTest, StoresTheColumnsKind)
{
    EXPECT_EQ(Dao::ConvertForColumn(
                  RuntimeRows::Value(row(), "value"), ColumnOf(row()), ConversionMode::Statement),
        RuntimeRows::Value(row(), "stored"));
}

INSTANTIATE_TEST_SUITE_P(
    Values, ConversionTest, In("platform/dao/valueConversion/statements.rows"), Named());

// A recordset assignment refuses what would be lost without a trace: numbers too large and
// texts too long fail instead of becoming Null.
class AssignmentTest : public RowFile::RowTest<>
{
};

TEST_P(AssignmentTest, RefusesWhatWouldBeLost)
{
    Variant stored;
    const int number = DaoTest::ErrorNumber([&] {
        stored = Dao::ConvertForColumn(
            RuntimeRows::Value(row(), "value"), ColumnOf(row()), ConversionMode::Assignment);
    });
    if (row().text("stored").startsWith(u"error "))
        EXPECT_EQ(u"error "_s + QString::number(number), row().text("stored"));
    else
        EXPECT_EQ(stored, RuntimeRows::Value(row(), "stored"));
}

INSTANTIATE_TEST_SUITE_P(
    Values, AssignmentTest, In("platform/dao/valueConversion/assignments.rows"), Named());

// Stored values read back as the column's kind; other storage stays as stored.
class ReadingTest : public RowFile::RowTest<>
{
};

TEST_P(ReadingTest, ReadsTheColumnsKind)
{
    EXPECT_EQ(Dao::FromStorage(
                  RuntimeRows::Value(row(), "stored"), DataType(kinds.indexOf(row().text("kind")))),
        RuntimeRows::Value(row(), "read"));
}

INSTANTIATE_TEST_SUITE_P(
    Values, ReadingTest, In("platform/dao/valueConversion/reading.rows"), Named());

} // namespace
