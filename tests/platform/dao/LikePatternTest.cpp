#include "platform/dao/LikePattern.h"

#include "RowFile.h"

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

namespace {

class LikePatternTest : public RowFile::RowTest<>
{
};

TEST_P(LikePatternTest, MatchesTheWholeText)
{
    EXPECT_EQ(
        Dao::LikePattern(row().text("pattern")).matches(row().text("text")), row().flag("matches"));
}

// SQLite hands rows over as UTF-8: that reading must agree with the QString one.
TEST_P(LikePatternTest, MatchesUtf8TextAlike)
{
    const QByteArray utf8 = row().bytes("text");
    EXPECT_EQ(Dao::LikePattern(row().text("pattern")).matchesUtf8(utf8.constData(), utf8.size()),
        row().flag("matches"));
}

TEST(LikePatternUtf8Test, MalformedBytesAreOneUnknownCharacterEach)
{
    const Dao::LikePattern threeCharacters(u"???"_s);
    EXPECT_TRUE(threeCharacters.matchesUtf8("a\xff"
                                            "b",
        3));
    EXPECT_TRUE(threeCharacters.matchesUtf8("a\xc3", 2) == false);
    EXPECT_TRUE(Dao::LikePattern(u"a?"_s).matchesUtf8("a\xe2\x82", 3));
}

INSTANTIATE_TEST_SUITE_P(
    Patterns, LikePatternTest, RowFile::In("platform/dao/likePatterns.rows"), RowFile::Named());

} // namespace
