#include "frame/Colours.h"

#include "TableRows.h"
#include "frame/FrameSettings.h"

#include <QFile>
#include <QSet>
#include <QTemporaryDir>
#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;
using Frame::ColourEntry;

namespace {

using TestRows::PrintTo;

QList<ColourEntry> ReadTable(const QByteArray& contents)
{
    QTemporaryDir folder;
    const QString path = folder.filePath(u"Colours.ini"_s);
    if (!contents.isNull()) {
        QFile file(path);
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(contents);
    }
    return Frame::ReadColourTable(path);
}

// ---- The colour settings file -------------------------------------------------------------

struct TableRow
{
    const char* name;
    QByteArray file; // null: no file at all
    QList<ColourEntry> expected;
};

class ColourFile : public testing::TestWithParam<TableRow>
{
};

TEST_P(ColourFile, GivesTheColourTable)
{
    const QList<ColourEntry> table = ReadTable(GetParam().file);
    const QList<ColourEntry>& expected = GetParam().expected;
    ASSERT_EQ(table.size(), expected.size());
    for (qsizetype index = 0; index < table.size(); ++index) {
        EXPECT_EQ(table[index].Name, expected[index].Name) << "entry " << index;
        EXPECT_EQ(table[index].Value, expected[index].Value) << "entry " << index;
    }
}

const QList<ColourEntry> noColours { ColourEntry { QString(), 0 } };

INSTANTIATE_TEST_SUITE_P(Rows, ColourFile,
    testing::Values(TableRow { "missing_file", QByteArray(), noColours },
        TableRow { "two_colours",
            "[Quorbin Colours]\r\nNumber=2\r\nColourName1=RED\r\nColourValue1=255\r\n"
            "ColourName2=LIGHT BLUE\r\nColourValue2=&HE6D8AD\r\n",
            { { u"RED"_s, 255 }, { u"LIGHT BLUE"_s, 0xE6D8AD } } },
        TableRow { "number_three_with_one_colour",
            "[Quorbin Colours]\nNumber=3\nColourName1=RED\nColourValue1=255\n",
            { { u"RED"_s, 255 }, { QString(), 0 }, { QString(), 0 } } },
        TableRow { "short_hex_reads_as_16_bits",
            "[Quorbin Colours]\nNumber=2\nColourValue1=&HFF00\nColourValue2=&HFF00&\n",
            { { QString(), -256 }, { QString(), 0xFF00 } } },
        TableRow { "value_read_leniently",
            "[Quorbin Colours]\nNumber=3\nColourValue1=  12abc\nColourValue2=blue\n"
            "ColourValue3=2.5\n",
            { { QString(), 12 }, { QString(), 0 }, { QString(), 2 } } },
        TableRow { "value_too_large_reads_zero",
            "[Quorbin Colours]\nNumber=1\nColourValue1=99999999999\n", { { QString(), 0 } } },
        TableRow { "number_missing", "[Quorbin Colours]\nColourName1=RED\n", noColours },
        TableRow { "number_rounds_half_to_even",
            "[Quorbin Colours]\nNumber=2.5\nColourName3=NOT READ\n",
            { { QString(), 0 }, { QString(), 0 } } },
        TableRow { "other_section_ignored", "[Colours]\nNumber=1\nColourName1=RED\n", noColours },
        TableRow { "names_kept_with_inner_blanks",
            "[quorbin colours]\nnumber = 1\ncolourname1 = \" Sky  Blue \"\n",
            { { u" Sky  Blue "_s, 0 } } }),
    TestRows::Named());

TEST(ColourFile, HugeNumberIsCut)
{
    const QList<ColourEntry> table
        = ReadTable("[Quorbin Colours]\nNumber=2000000000\nColourName1=RED\n");
    EXPECT_EQ(table.size(), Frame::MaximumColourCount);
    EXPECT_EQ(table.front().Name, u"RED"_s);
}

TEST(ShippedColourFile, HoldsTheNamedColoursTheProgramLooksUp)
{
    const QList<ColourEntry> table
        = Frame::ReadColourTable(QStringLiteral(QUORBIN_RESOURCES_DIR "/Colours.ini"));
    EXPECT_GE(table.size(), 16);
    EXPECT_EQ(Frame::ColourValueByName(u"RED", table), 0x0000FF);
    EXPECT_EQ(Frame::ColourValueByName(u"LIGHT BLUE", table), 0xE6D8AD);
    QSet<QString> names;
    for (const ColourEntry& entry : table) {
        EXPECT_FALSE(entry.Name.isEmpty());
        EXPECT_FALSE(names.contains(entry.Name)) << entry.Name.toStdString();
        names.insert(entry.Name);
        EXPECT_TRUE(entry.Value >= 0 && entry.Value <= 0xFFFFFF) << entry.Name.toStdString();
    }
}

// ---- Lookups --------------------------------------------------------------------------------

struct ByNameRow
{
    const char* name;
    QList<ColourEntry> table;
    QString sought;
    std::int32_t expected;
};

class ColourByName : public testing::TestWithParam<ByNameRow>
{
};

TEST_P(ColourByName, FindsTheValue)
{
    EXPECT_EQ(Frame::ColourValueByName(GetParam().sought, GetParam().table), GetParam().expected);
}

const QList<ColourEntry> darkRedFirst { { u"DARK RED"_s, 128 }, { u"RED"_s, 255 } };
const QList<ColourEntry> redFirst { { u"RED"_s, 255 }, { u"DARK RED"_s, 128 } };

INSTANTIATE_TEST_SUITE_P(Rows, ColourByName,
    testing::Values(ByNameRow { "exact_match_wins", darkRedFirst, u"RED"_s, 255 },
        ByNameRow { "lower_case_takes_last_containing", darkRedFirst, u"red"_s, 255 },
        ByNameRow { "lower_case_order_reversed", redFirst, u"red"_s, 128 },
        ByNameRow { "part_of_a_name", redFirst, u"dark"_s, 128 },
        ByNameRow { "not_found", redFirst, u"GREEN"_s, -1 },
        ByNameRow { "nameless_table", { { QString(), 0 } }, u"RED"_s, -1 },
        ByNameRow { "exact_match_stops_the_search", { { u"BLUE"_s, 1 }, { u"LIGHT BLUE"_s, 2 } },
            u"BLUE"_s, 1 },
        ByNameRow { "non_ascii_without_case", { { u"ROSÉ"_s, 9 } }, u"rosé"_s, 9 }),
    TestRows::Named());

TEST(ColourByValue, IsTheFirstNameWithThatValueOrEmpty)
{
    EXPECT_EQ(Frame::ColourNameByValue(128, redFirst), u"DARK RED"_s);
    EXPECT_EQ(Frame::ColourNameByValue(5, { { u"A"_s, 5 }, { u"B"_s, 5 } }), u"A"_s);
    EXPECT_EQ(Frame::ColourNameByValue(-1, redFirst), QString());
}

// ---- Shading --------------------------------------------------------------------------------

struct ShadeRow
{
    const char* name;
    std::int32_t colour;
    double percent;
    std::int32_t expected;
};

class Shade : public testing::TestWithParam<ShadeRow>
{
};

TEST_P(Shade, GivesTheShadedColour)
{
    EXPECT_EQ(Frame::ShadeColour(GetParam().colour, GetParam().percent), GetParam().expected);
}

constexpr std::int32_t Rgb(int red, int green, int blue)
{
    return red + green * 256 + blue * 65536;
}

INSTANTIATE_TEST_SUITE_P(Rows, Shade,
    testing::Values(ShadeRow { "red_darkened_half_rounds_to_even", 255, -50, Rgb(128, 0, 0) },
        ShadeRow { "red_lightened_half", 255, 50, Rgb(255, 128, 128) },
        ShadeRow { "full_dark_is_black", 0xFFFFFF, -100, 0 },
        ShadeRow { "full_light_is_white", 0x000000, 100, 0xFFFFFF },
        ShadeRow { "lighten_each_channel", Rgb(0, 100, 255), 20, Rgb(51, 131, 255) },
        ShadeRow { "half_down_to_even", Rgb(1, 3, 5), -50, Rgb(0, 2, 2) },
        ShadeRow { "beyond_minus_100_held", Rgb(200, 100, 50), -150, 0 },
        ShadeRow { "beyond_100_held", Rgb(200, 100, 50), 250, 0xFFFFFF },
        ShadeRow { "top_byte_dropped", 0x7F0000FF, 0, 0x0000FF }),
    TestRows::Named());

// Values are 0x00BBGGRR: a swap would paint every red bar blue.
TEST(QtColour, RoundTripsTheProgramsValues)
{
    for (const std::int32_t value : { 0x000000, 0x0000FF, 0x00FF00, 0xFF0000, 0xE6D8AD }) {
        const QColor colour = Frame::ColourFromValue(value);
        EXPECT_EQ(colour.red(), value & 0xFF);
        EXPECT_EQ(colour.blue(), (value >> 16) & 0xFF);
        EXPECT_EQ(Frame::ValueFromColour(colour), value);
    }
}

} // namespace
