#include "platform/profile/TextDecoding.h"

#include "RowFile.h"

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

namespace {

class SystemTextDecoding : public RowFile::RowTest<>
{
};

TEST_P(SystemTextDecoding, ReadsUtf8ElseWindows1252ByLine)
{
    EXPECT_EQ(Profile::DecodeSystemText(row().bytes("bytes")), row().text("text"));
}

INSTANTIATE_TEST_SUITE_P(
    Rows, SystemTextDecoding, RowFile::In("platform/profile/systemText.rows"), RowFile::Named());

TEST(Windows1252, EveryByteHasOneCharacter)
{
    QByteArray all;
    for (int byte = 0; byte < 256; ++byte)
        all += char(byte);
    const QString text = Profile::DecodeWindows1252(all);
    ASSERT_EQ(text.size(), 256);
    EXPECT_EQ(text[0x41], u'A');
    EXPECT_EQ(text[0x80], QChar(0x20AC));
    EXPECT_EQ(text[0x9F], QChar(0x0178));
    EXPECT_EQ(text[0xA0], QChar(0x00A0));
    EXPECT_EQ(text[0xFF], QChar(0x00FF));
}

} // namespace
