#include "platform/profile/TextDecoding.h"

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

namespace {

struct DecodeRow
{
    const char* name;
    QByteArray bytes;
    QString expected;
};

class SystemTextDecoding : public testing::TestWithParam<DecodeRow>
{
};

TEST_P(SystemTextDecoding, ReadsUtf8ElseWindows1252ByLine)
{
    EXPECT_EQ(Profile::DecodeSystemText(GetParam().bytes), GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(Rows, SystemTextDecoding,
    testing::Values(DecodeRow { "ascii", "abc\r\n", u"abc\r\n"_s },
        DecodeRow { "utf8",
            "\xC2\xA3"
            "5",
            u"\u00A35"_s },
        DecodeRow { "byte_order_mark_dropped", "\xEF\xBB\xBFx", u"x"_s },
        DecodeRow { "windows_1252_pound_and_quotes", "\xA3\x93q\x94", u"\u00A3\u201Cq\u201D"_s },
        DecodeRow { "undefined_1252_byte_is_c1", "\x81", u"\u0081"_s },
        DecodeRow {
            "lines_decided_separately", "\xC3\xA9\n\xE9\n\xC3\xA9", u"\u00E9\n\u00E9\n\u00E9"_s },
        DecodeRow { "truncated_sequence_is_1252", "\xC3", u"\u00C3"_s },
        DecodeRow { "overlong_slash_is_1252", "\xC0\xAF", u"\u00C0\u00AF"_s },
        DecodeRow { "encoded_surrogate_is_1252", "\xED\xA0\x80", u"\u00ED\u00A0\u20AC"_s },
        DecodeRow { "nul_kept", QByteArray("a\0b", 3), QString(u"a\0b"_s) }),
    [](const testing::TestParamInfo<DecodeRow>& info) { return std::string(info.param.name); });

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
