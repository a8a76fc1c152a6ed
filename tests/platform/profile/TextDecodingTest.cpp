#include "platform/profile/TextDecoding.h"

#include "RowFile.h"

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

namespace {

using SystemTextDecoding = RowFile::RowTest<>;

TEST_P(SystemTextDecoding, ReadsUtf8ElseWindows1252ByLine)
{
    EXPECT_EQ(Profile::DecodeSystemText(row().bytes("bytes")), row().text("text"));
}

INSTANTIATE_TEST_SUITE_P(
    Rows, SystemTextDecoding, RowFile::In("platform/profile/systemText.rows"), RowFile::Named());

} // namespace
