#include "platform/dao/LikePattern.h"

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

namespace {

struct LikeRow
{
    const char* name;
    QString pattern;
    QString text;
    bool matches;
};

void PrintTo(const LikeRow& row, std::ostream* out)
{
    *out << row.name;
}

class LikePatternTest : public testing::TestWithParam<LikeRow>
{
};

TEST_P(LikePatternTest, MatchesTheWholeText)
{
    const LikeRow& row = GetParam();
    EXPECT_EQ(Dao::LikePattern(row.pattern).matches(row.text), row.matches)
        << row.pattern.toStdString() << " against " << row.text.toStdString();
}

// SQLite hands rows over as UTF-8: that reading must agree with the QString one.
TEST_P(LikePatternTest, MatchesUtf8TextAlike)
{
    const LikeRow& row = GetParam();
    const QByteArray utf8 = row.text.toUtf8();
    EXPECT_EQ(
        Dao::LikePattern(row.pattern).matchesUtf8(utf8.constData(), utf8.size()), row.matches);
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

INSTANTIATE_TEST_SUITE_P(Patterns, LikePatternTest,
    testing::Values(LikeRow { "starIncludes", u"*cat*"_s, u"Bobcat kitten"_s, true },
        LikeRow { "starIgnoresCase", u"*CAT*"_s, u"bobcat"_s, true },
        LikeRow { "starMissing", u"*cat*"_s, u"dog"_s, false },
        LikeRow { "starMatchesEmpty", u"*"_s, u""_s, true },
        LikeRow { "starsAroundNothing", u"**"_s, u"x"_s, true },
        LikeRow { "literalWholeOnly", u"cat"_s, u"cats"_s, false },
        LikeRow { "literalIgnoresCase", u"rex"_s, u"REX"_s, true },
        LikeRow { "questionOneCharacter", u"R?x"_s, u"Rex"_s, true },
        LikeRow { "questionNotTwo", u"R?x"_s, u"Reex"_s, false },
        LikeRow { "questionNotNone", u"R?x"_s, u"Rx"_s, false },
        LikeRow { "hashDigit", u"R#D#"_s, u"R2D2"_s, true },
        LikeRow { "hashNotLetter", u"R#D#"_s, u"RxD2"_s, false },
        LikeRow { "listMember", u"[A-C]*"_s, u"bubbles"_s, true },
        LikeRow { "listNotMember", u"[A-C]*"_s, u"Rex"_s, false },
        LikeRow { "listSeveral", u"[xyz]"_s, u"y"_s, true },
        LikeRow { "negatedList", u"[!A-M]*"_s, u"Rex"_s, true },
        LikeRow { "negatedListRefuses", u"[!A-M]*"_s, u"Bubbles"_s, false },
        LikeRow { "bracketedStar", u"a[*]b"_s, u"a*b"_s, true },
        LikeRow { "bracketedStarIsLiteral", u"a[*]b"_s, u"axb"_s, false },
        LikeRow { "bracketedQuestion", u"[?]"_s, u"?"_s, true },
        LikeRow { "bracketedHash", u"[#]1"_s, u"#1"_s, true },
        LikeRow { "bracketedOpenBracket", u"*[[]*"_s, u"Cat[1]"_s, true },
        LikeRow { "unmatchedBracketIsItself", u"a[b"_s, u"a[b"_s, true },
        LikeRow { "emptyListStandsForNothing", u"a[]b"_s, u"ab"_s, true },
        LikeRow { "accentedLettersFold", u"*É*"_s, u"café"_s, true },
        LikeRow { "backtrackAcrossStars", u"*a*b*c"_s, u"xaxbxbxc"_s, true },
        LikeRow { "backtrackFailsAtEnd", u"*a*b*c"_s, u"xaxbxbx"_s, false },
        LikeRow { "trailingTextAfterStar", u"*ab"_s, u"aab"_s, true },
        LikeRow { "emptyPatternEmptyText", u""_s, u""_s, true },
        LikeRow { "emptyPatternText", u""_s, u"a"_s, false }),
    [](const testing::TestParamInfo<LikeRow>& info) { return std::string(info.param.name); });

} // namespace
