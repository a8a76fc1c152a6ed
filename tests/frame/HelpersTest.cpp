#include "frame/Helpers.h"

#include "frame/FileFilters.h"
#include "platform/runtime/Error.h"

#include <QFile>
#include <QImage>
#include <QTemporaryDir>
#include <cmath>
#include <gtest/gtest.h>
#include <limits>

using namespace Qt::Literals::StringLiterals;

namespace {

template <typename Row> std::string RowName(const testing::TestParamInfo<Row>& info)
{
    return info.param.name;
}

// ---- MinOf, MaxOf, Log10Of ------------------------------------------------------------------

struct MinMaxRow
{
    const char* name;
    double a;
    double b;
    double minimum;
    double maximum;
};

class MinMax : public testing::TestWithParam<MinMaxRow>
{
};

TEST_P(MinMax, PicksTheValue)
{
    const MinMaxRow& row = GetParam();
    const double minimum = Frame::MinOf(row.a, row.b);
    const double maximum = Frame::MaxOf(row.a, row.b);
    EXPECT_EQ(minimum, row.minimum);
    EXPECT_EQ(maximum, row.maximum);
    EXPECT_EQ(std::signbit(minimum), std::signbit(row.minimum));
    EXPECT_EQ(std::signbit(maximum), std::signbit(row.maximum));
}

INSTANTIATE_TEST_SUITE_P(Rows, MinMax,
    testing::Values(MinMaxRow { "a_smaller", 1, 2, 1, 2 }, MinMaxRow { "b_smaller", 5, -3, -3, 5 },
        // Equal values: MinOf gives B (A >= B), MaxOf gives B too (A > B is false).
        MinMaxRow { "equal_zeros_give_b", 0.0, -0.0, -0.0, -0.0 },
        MinMaxRow { "equal_zeros_other_order", -0.0, 0.0, 0.0, 0.0 }),
    RowName<MinMaxRow>);

struct LogRow
{
    const char* name;
    double x;
    double expected;
};

class Log10 : public testing::TestWithParam<LogRow>
{
};

TEST_P(Log10, IsTheDecimalLogarithm)
{
    EXPECT_NEAR(Frame::Log10Of(GetParam().x), GetParam().expected, 1e-12);
}

INSTANTIATE_TEST_SUITE_P(Rows, Log10,
    testing::Values(LogRow { "one", 1, 0 }, LogRow { "thousand", 1000, 3 },
        LogRow { "tenth", 0.1, -1 }, LogRow { "fifty", 50, 1.6989700043360187 }),
    RowName<LogRow>);

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
        KeyRow { "backspace_in_N", 8, u"N"_s, true }, KeyRow { "zero_in_N", '0', u"N"_s, true },
        KeyRow { "nine_in_I", '9', u"I"_s, true },
        KeyRow { "minus_swallowed_in_N", '-', u"N"_s, false },
        KeyRow { "point_swallowed_in_N", '.', u"N"_s, false },
        KeyRow { "minus_passes_in_I", '-', u"I"_s, true },
        KeyRow { "point_swallowed_in_I", '.', u"I"_s, false },
        KeyRow { "minus_passes_in_decimal", '-', QString(), true },
        KeyRow { "point_passes_in_decimal", '.', u"D"_s, true },
        KeyRow { "lower_case_n_is_decimal", '.', u"n"_s, true },
        KeyRow { "letter_swallowed", 'a', QString(), false },
        KeyRow { "plus_swallowed", '+', QString(), false },
        KeyRow { "comma_swallowed", ',', QString(), false },
        KeyRow { "space_swallowed", ' ', QString(), false },
        KeyRow { "tab_swallowed", 9, QString(), false },
        KeyRow { "slash_before_zero_swallowed", '/', QString(), false },
        KeyRow { "colon_after_nine_swallowed", ':', QString(), false },
        KeyRow { "non_ascii_digit_swallowed", 0x0663, QString(), false }),
    RowName<KeyRow>);

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
        FitRow { "exact_fit", 80, 60, 80, 60, 40, 30, 0, 0, 80, 60 },
        FitRow { "height_and_corner_round_half_to_even", 10, 5, 5, 5, 0, 0, -2, -1, 3, 1 },
        FitRow { "no_picture_width", 0, 50, 100, 100, 10, 20, 10, 20, 10, 20 },
        FitRow { "no_picture_height", 30, 0, 100, 100, 10, 20, 10, 20, 10, 20 },
        FitRow { "negative_picture", -5, 50, 100, 100, 10, 20, 10, 20, 10, 20 },
        FitRow { "empty_box", 100, 50, 0, 0, 7, 7, 7, 7, 7, 7 },
        FitRow { "negative_box_is_empty", 100, 50, -40, 50, 7, 7, 7, 7, 7, 7 }),
    RowName<FitRow>);

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
        TitleRow { "linux_path", u"/home/class/Pets.qnd"_s, u"Pets"_s },
        TitleRow { "mixed_separators_last_wins", u"C:\\a/b\\Birds.qnp"_s, u"Birds"_s },
        TitleRow { "no_separator", u"Pets.qnd"_s, u"Pets"_s },
        TitleRow { "points_inside_name_kept", u"/x/Class 4.2 pets.qnc"_s, u"Class 4.2 pets"_s },
        TitleRow { "empty", QString(), QString() }, TitleRow { "one_character", u"a"_s, QString() },
        TitleRow { "name_only_extension", u"/x/.qnd"_s, QString() },
        TitleRow { "name_shorter_than_extension", u"/x/ab"_s, QString() },
        TitleRow { "ends_in_separator", u"/x/y/"_s, QString() },
        TitleRow { "non_ascii", u"/home/zoë/Fêtes.qnd"_s, u"Fêtes"_s }),
    RowName<TitleRow>);

// ---- TwipsToPixels --------------------------------------------------------------------------

struct TwipsRow
{
    const char* name;
    double twips;
    double dotsPerInch;
    int pixels;
};

class Twips : public testing::TestWithParam<TwipsRow>
{
};

TEST_P(Twips, ArePixelsAtTheDeviceResolution)
{
    EXPECT_EQ(Frame::TwipsToPixels(GetParam().twips, GetParam().dotsPerInch), GetParam().pixels);
}

INSTANTIATE_TEST_SUITE_P(Rows, Twips,
    testing::Values(TwipsRow { "inch_at_96", 1440, 96, 96 },
        TwipsRow { "inch_at_120", 1440, 120, 120 }, TwipsRow { "pixel_at_96", 15, 96, 1 },
        TwipsRow { "twelve_twips_per_pixel_at_120", 2400, 120, 200 },
        TwipsRow { "half_pixel_down_to_even", 7.5, 96, 0 },
        TwipsRow { "one_and_a_half_up_to_even", 22.5, 96, 2 },
        TwipsRow { "negative", -1440, 96, -96 }, TwipsRow { "printer_600", 720, 600, 300 }),
    RowName<TwipsRow>);

// ---- TextWidthPixels ------------------------------------------------------------------------

QFont Arial(int pointSize)
{
    QFont font(u"Arial"_s);
    font.setPointSize(pointSize);
    return font;
}

TEST(TextWidth, EmptyTextIsZero)
{
    EXPECT_EQ(Frame::TextWidthPixels(Arial(10), QString()), 0);
}

TEST(TextWidth, WideLettersMeasureWider)
{
    EXPECT_GT(Frame::TextWidthPixels(Arial(10), u"WWWW"_s),
        2 * Frame::TextWidthPixels(Arial(10), u"iiii"_s));
}

TEST(TextWidth, GrowsWithTheText)
{
    const int once = Frame::TextWidthPixels(Arial(12), u"Class 4"_s);
    const int twice = Frame::TextWidthPixels(Arial(12), u"Class 4Class 4"_s);
    EXPECT_GT(once, 0);
    EXPECT_NEAR(twice, 2 * once, 2);
}

TEST(TextWidth, FollowsTheDeviceResolution)
{
    QImage screen(10, 10, QImage::Format_RGB32);
    QImage printer(10, 10, QImage::Format_RGB32);
    screen.setDotsPerMeterX(3780); // 96 dpi
    screen.setDotsPerMeterY(3780);
    printer.setDotsPerMeterX(7559); // 192 dpi
    printer.setDotsPerMeterY(7559);
    const QString text = u"Number of pets in the class"_s;
    const int atScreen = Frame::TextWidthPixels(Arial(10), text, &screen);
    const int atPrinter = Frame::TextWidthPixels(Arial(10), text, &printer);
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
        FilterRow { "one_pair", u"Quorbin Database Files|*.qnd"_s,
            { u"Quorbin Database Files (*.qnd)"_s } },
        FilterRow { "blanks_and_empty_patterns_dropped", u"Text|*.txt; ;*.csv;"_s,
            { u"Text (*.txt *.csv)"_s } },
        FilterRow { "trailing_description_dropped", u"A|*.a|B"_s, { u"A (*.a)"_s } },
        FilterRow { "patterns_already_shown_once", u"Windows Enhanced Metafiles (*.emf)|*.emf"_s,
            { u"Windows Enhanced Metafiles (*.emf)"_s } },
        FilterRow {
            "other_brackets_kept", u"Graphs (school)|*.qnp"_s, { u"Graphs (school) (*.qnp)"_s } },
        FilterRow { "empty", QString(), {} }),
    RowName<FilterRow>);

// ---- ReadIniString --------------------------------------------------------------------------

TEST(ReadIniString, ForwardsToTheProfileReader)
{
    QTemporaryDir folder;
    const QString path = folder.filePath(u"Graph.qnp"_s);
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("[Ormsey Data File]\r\nTitle = \"Pets\"\r\n");
    file.close();
    EXPECT_EQ(Frame::ReadIniString(path, u"ormsey data file", u"TITLE"), u"Pets"_s);
    EXPECT_EQ(Frame::ReadIniString(path, u"ormsey data file", u"Other"), QString());
}

} // namespace
