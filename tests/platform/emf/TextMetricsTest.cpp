#include "platform/emf/TextMetrics.h"

#include <QFontInfo>
#include <QFontMetricsF>
#include <cmath>
#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

namespace {

Emf::LogFont arial(std::int32_t height)
{
    Emf::LogFont font;
    font.height = height;
    font.faceName = u"Arial"_s;
    return font;
}

TEST(TextMetricsTest, ArialResolvesToTheMetricCompatibleFace)
{
    const QFontInfo info(Emf::FontFromLogFont(arial(-16)));
    EXPECT_EQ(info.family(), u"Liberation Sans"_s);
    EXPECT_EQ(info.pixelSize(), 16);
}

TEST(TextMetricsTest, PositiveHeightIsTheCellHeight)
{
    for (int height : { 12, 16, 40 }) {
        const QFontMetricsF metrics(Emf::FontFromLogFont(arial(height)));
        EXPECT_NEAR(metrics.ascent() + metrics.descent(), height, 0.6) << height;
        EXPECT_EQ(Emf::MeasureText(arial(height), u"x").cy, height) << height;
    }
}

TEST(TextMetricsTest, WeightItalicAndUnderlineReachTheFont)
{
    Emf::LogFont font = arial(-20);
    font.weight = 700;
    font.italic = true;
    font.underline = true;
    const QFont qtFont = Emf::FontFromLogFont(font);
    EXPECT_EQ(qtFont.weight(), QFont::Bold);
    EXPECT_TRUE(qtFont.italic());
    EXPECT_TRUE(qtFont.underline());
    EXPECT_EQ(Emf::FontFromLogFont(arial(-20)).weight(), QFont::Normal);
}

TEST(TextMetricsTest, AdvancesAddUpToTheRoundedWidthWithoutDrifting)
{
    const Emf::LogFont font = arial(-13);
    const QString text = u"Illustrative illumination, 1,111 millilitres"_s;
    const std::vector<std::uint32_t> advances = Emf::CharacterAdvances(font, text);
    ASSERT_EQ(advances.size(), std::size_t(text.size()));
    const QFontMetricsF metrics(Emf::FontFromLogFont(font));
    double exact = 0;
    std::int64_t placed = 0;
    for (qsizetype index = 0; index < text.size(); ++index) {
        exact += metrics.horizontalAdvance(text.at(index));
        placed += advances[std::size_t(index)];
        EXPECT_LE(std::abs(placed - exact), 0.5) << index;
    }
    EXPECT_EQ(Emf::MeasureText(font, text).cx, placed);
}

TEST(TextMetricsTest, SurrogatePairAdvancesOnce)
{
    const QString text = u"a"_s + QString::fromUcs4(U"\U0001D400") + u"b"_s;
    const std::vector<std::uint32_t> advances = Emf::CharacterAdvances(arial(-16), text);
    ASSERT_EQ(advances.size(), 4u);
    EXPECT_EQ(advances[2], 0u);
}

TEST(TextMetricsTest, EmptyTextHasNoWidthButALineHeight)
{
    const Emf::SizeL size = Emf::MeasureText(arial(-16), u"");
    EXPECT_EQ(size.cx, 0);
    EXPECT_GT(size.cy, 16);
}

} // namespace
