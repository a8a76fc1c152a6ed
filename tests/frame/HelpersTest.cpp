#include "frame/Helpers.h"

#include "TableRows.h"
#include "frame/FileFilters.h"
#include "platform/runtime/Error.h"

#include <QImage>
#include <gtest/gtest.h>
#include <limits>

using namespace Qt::Literals::StringLiterals;

namespace {

using TestRows::PrintTo;

// ---- Log10Of --------------------------------------------------------------------------------

TEST(Log10, IsTheDecimalLogarithm)
{
    EXPECT_NEAR(Frame::Log10Of(1000), 3, 1e-12);
    EXPECT_NEAR(Frame::Log10Of(0.1), -1, 1e-12);
    EXPECT_NEAR(Frame::Log10Of(50), 1.6989700043360187, 1e-12);
}

TEST(Log10, RefusesZeroNegativeAndNaNWithError5)
{
    for (const double x : { 0.0, -1.0, std::numeric_limits<double>::quiet_NaN() }) {
        try {
            Frame::Log10Of(x);
            ADD_FAILURE() << "no error for " << x;
        } catch (const Runtime::Error& error) {
            EXPECT_EQ(error.number(), 5) << x;
        }
    }
}

// ---- NumericKeyFilter -----------------------------------------------------------------------

struct KeyRow
{
    const char* name;
    int key;
    QString mode;
    bool passes;
};

class KeyFilter : public testing::TestWithParam<KeyRow>
{
};

TEST_P(KeyFilter, PassesOrSwallows)
{
    const KeyRow& row = GetParam();
    EXPECT_EQ(Frame::NumericKeyFilter(row.key, row.mode), row.passes ? row.key : 0);
}

INSTANTIATE_TEST_SUITE_P(Rows, KeyFilter,
    testing::Values(KeyRow { "enter_in_N", 13, u"N"_s, true },
        KeyRow { "minus_swallowed_in_N", '-', u"N"_s, false },
        KeyRow { "point_swallowed_in_N", '.', u"N"_s, false },
        KeyRow { "minus_passes_in_I", '-', u"I"_s, true },
        KeyRow { "point_swallowed_in_I", '.', u"I"_s, false },
        KeyRow { "point_passes_in_decimal", '.', u"D"_s, true },
        KeyRow { "letter_swallowed", 'a', QString(), false },
        KeyRow { "slash_before_zero_swallowed", '/', QString(), false },
        KeyRow { "colon_after_nine_swallowed", ':', QString(), false },
        KeyRow { "non_ascii_digit_swallowed", 0x0663, QString(), false }),
    TestRows::Named());

// ---- FitPictureRect -------------------------------------------------------------------------

struct FitRow
{
    const char* name;
    int pictureWidth, pictureHeight, boxWidth, boxHeight, centreX, centreY;
    int left, top, right, bottom;
};

class FitPicture : public testing::TestWithParam<FitRow>
{
};

TEST_P(FitPicture, GivesTheRectangle)
{
    const FitRow& row = GetParam();
    const QRect rect = Frame::FitPictureRect(
        row.pictureWidth, row.pictureHeight, row.boxWidth, row.boxHeight, row.centreX, row.centreY);
    EXPECT_EQ(rect.left(), row.left);
    EXPECT_EQ(rect.top(), row.top);
    EXPECT_EQ(rect.left() + rect.width(), row.right);
    EXPECT_EQ(rect.top() + rect.height(), row.bottom);
}

INSTANTIATE_TEST_SUITE_P(Rows, FitPicture,
    testing::Values(FitRow { "never_enlarged", 100, 50, 400, 400, 200, 200, 150, 175, 250, 225 },
        FitRow { "shrunk_half_rounds_to_even", 100, 50, 50, 50, 25, 25, 0, 12, 50, 37 },
        FitRow { "tall_picture_fits_height", 50, 200, 100, 100, 50, 50, 38, 0, 63, 100 },
        FitRow { "height_and_corner_round_half_to_even", 10, 5, 5, 5, 0, 0, -2, -1, 3, 1 },
        FitRow { "no_picture_width", 0, 50, 100, 100, 10, 20, 10, 20, 10, 20 },
        FitRow { "negative_picture", -5, 50, 100, 100, 10, 20, 10, 20, 10, 20 },
        FitRow { "negative_box_is_empty", 100, 50, -40, 50, 7, 7, 7, 7, 7, 7 }),
    TestRows::Named());

// ---- FileTitleOf ----------------------------------------------------------------------------

struct TitleRow
{
    const char* name;
    QString path;
    QString expected;
};

class FileTitle : public testing::TestWithParam<TitleRow>
{
};

TEST_P(FileTitle, IsTheNameWithoutExtension)
{
    EXPECT_EQ(Frame::FileTitleOf(GetParam().path), GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(Rows, FileTitle,
    testing::Values(TitleRow { "windows_path", u"C:\\Class\\Pets.qnd"_s, u"Pets"_s },
        TitleRow { "mixed_separators_last_wins", u"C:\\a/b\\Birds.qnp"_s, u"Birds"_s },
        TitleRow { "no_separator", u"Pets.qnd"_s, u"Pets"_s },
        TitleRow { "points_inside_name_kept", u"/x/Class 4.2 pets.qnc"_s, u"Class 4.2 pets"_s },
        TitleRow { "name_shorter_than_extension", u"/x/ab"_s, QString() },
        TitleRow { "non_ascii", u"/home/zoë/Fêtes.qnd"_s, u"Fêtes"_s }),
    TestRows::Named());

// ---- TwipsToPixels --------------------------------------------------------------------------

TEST(Twips, ArePixelsAtTheDeviceResolutionHalvesToEven)
{
    EXPECT_EQ(Frame::TwipsToPixels(1440, 96), 96);
    EXPECT_EQ(Frame::TwipsToPixels(2400, 120), 200);
    EXPECT_EQ(Frame::TwipsToPixels(7.5, 96), 0);
    EXPECT_EQ(Frame::TwipsToPixels(22.5, 96), 2);
    EXPECT_EQ(Frame::TwipsToPixels(-1440, 96), -96);
}

// ---- TextWidthPixels ------------------------------------------------------------------------

TEST(TextWidth, FollowsTheTextAndTheDeviceResolution)
{
    QFont arial(u"Arial"_s);
    arial.setPointSize(10);
    EXPECT_EQ(Frame::TextWidthPixels(arial, QString()), 0);
    EXPECT_GT(
        Frame::TextWidthPixels(arial, u"WWWW"_s), 2 * Frame::TextWidthPixels(arial, u"iiii"_s));
    QImage screen(10, 10, QImage::Format_RGB32);
    QImage printer(10, 10, QImage::Format_RGB32);
    screen.setDotsPerMeterX(3780); // 96 dpi
    screen.setDotsPerMeterY(3780);
    printer.setDotsPerMeterX(7559); // 192 dpi
    printer.setDotsPerMeterY(7559);
    const QString text = u"Number of pets in the class"_s;
    const int atScreen = Frame::TextWidthPixels(arial, text, &screen);
    const int atPrinter = Frame::TextWidthPixels(arial, text, &printer);
    // Hinting moves glyph advances by a pixel here and there, so the ratio is only near 2.
    ASSERT_GT(atScreen, 0);
    EXPECT_NEAR(double(atPrinter) / atScreen, 2.0, 0.1);
}

// ---- File filters ---------------------------------------------------------------------------

struct FilterRow
{
    const char* name;
    QString programFilter;
    QStringList expected;
};

class NameFilters : public testing::TestWithParam<FilterRow>
{
};

TEST_P(NameFilters, BecomeQtForm)
{
    EXPECT_EQ(Frame::QtNameFilters(GetParam().programFilter), GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(Rows, NameFilters,
    testing::Values(
        FilterRow { "open_dialog",
            u"All Quorbin Files|*.qnp;*.qnd;*.qnc|Ormsey Files|*.qnp|DataBase Files|*.qnd|"
            "Tillane Files|*.qnc"_s,
            { u"All Quorbin Files (*.qnp *.qnd *.qnc)"_s, u"Ormsey Files (*.qnp)"_s,
                u"DataBase Files (*.qnd)"_s, u"Tillane Files (*.qnc)"_s } },
        FilterRow { "blanks_and_empty_patterns_dropped", u"Text|*.txt; ;*.csv;"_s,
            { u"Text (*.txt *.csv)"_s } },
        FilterRow { "patterns_already_shown_once", u"Windows Enhanced Metafiles (*.emf)|*.emf"_s,
            { u"Windows Enhanced Metafiles (*.emf)"_s } },
        FilterRow { "empty", QString(), {} }),
    TestRows::Named());

} // namespace
