#include "frame/Colours.h"

#include "frame/FrameSettings.h"

#include <QFile>
#include <QSet>
#include <QTemporaryDir>
#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;
using Frame::ColourEntry;

namespace {

template <typename Row> std::string RowName(const testing::TestParamInfo<Row>& info)
{
    return info.param.name;
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
    const TableRow& row = GetParam();
    QTemporaryDir folder;
    const QString path = folder.filePath(u"Colours.ini"_s);
    if (!row.file.isNull()) {
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(row.file);
    }
    const QList<ColourEntry> table = Frame::ReadColourTable(path);
    ASSERT_EQ(table.size(), row.expected.size());
    for (qsizetype index = 0; index < table.size(); ++index) {
        EXPECT_EQ(table[index].Name, row.expected[index].Name) << "entry " << index;
        EXPECT_EQ(table[index].Value, row.expected[index].Value) << "entry " << index;
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
        TableRow { "hex_and_decimal_give_the_same_red",
            "[Quorbin Colours]\nNumber=2\nColourValue1=&HFF\nColourValue2=255\n",
            { { QString(), 255 }, { QString(), 255 } } },
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
        TableRow { "number_zero", "[Quorbin Colours]\nNumber=0\nColourName1=RED\n", noColours },
        TableRow { "number_negative", "[Quorbin Colours]\nNumber=-2\n", noColours },
        TableRow { "number_not_numeric", "[Quorbin Colours]\nNumber=many\n", noColours },
        TableRow { "number_rounds_half_to_even",
            "[Quorbin Colours]\nNumber=2.5\nColourName3=NOT READ\n",
            { { QString(), 0 }, { QString(), 0 } } },
        TableRow { "other_section_ignored", "[Colours]\nNumber=1\nColourName1=RED\n", noColours },
        TableRow { "names_kept_with_inner_blanks",
            "[quorbin colours]\nnumber = 1\ncolourname1 = \" Sky  Blue \"\n",
            { { u" Sky  Blue "_s, 0 } } }),
    RowName<TableRow>);

TEST(ColourFile, HugeNumberIsCut)
{
    QTemporaryDir folder;
    const QString path = folder.filePath(u"Colours.ini"_s);
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("[Quorbin Colours]\nNumber=2000000000\nColourName1=RED\n");
    file.close();
    const QList<ColourEntry> table = Frame::ReadColourTable(path);
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
        EXPECT_GE(entry.Value, 0) << entry.Name.toStdString();
        EXPECT_LE(entry.Value, 0xFFFFFF) << entry.Name.toStdString();
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
        ByNameRow { "exact_match_wins_either_order", redFirst, u"RED"_s, 255 },
        ByNameRow { "lower_case_takes_last_containing", darkRedFirst, u"red"_s, 255 },
        ByNameRow { "lower_case_order_reversed", redFirst, u"red"_s, 128 },
        ByNameRow { "part_of_a_name", redFirst, u"dark"_s, 128 },
        ByNameRow { "not_found", redFirst, u"GREEN"_s, -1 },
        ByNameRow { "nameless_table", { { QString(), 0 } }, u"RED"_s, -1 },
        ByNameRow {
            "empty_name_matches_nameless_entry_exactly", { { QString(), 7 } }, QString(), 7 },
        ByNameRow { "exact_match_stops_the_search", { { u"BLUE"_s, 1 }, { u"LIGHT BLUE"_s, 2 } },
            u"BLUE"_s, 1 },
        ByNameRow { "non_ascii_without_case", { { u"ROSÉ"_s, 9 } }, u"rosé"_s, 9 }),
    RowName<ByNameRow>);

TEST(ColourByName, SearchesTheFrameTable)
{
    Frame::Settings().ColourTable = darkRedFirst;
    EXPECT_EQ(Frame::ColourValueByName(u"red"), 255);
    EXPECT_EQ(Frame::ColourNameByValue(128), u"DARK RED"_s);
    Frame::Settings() = {};
}

struct ByValueRow
{
    const char* name;
    QList<ColourEntry> table;
    std::int32_t value;
    QString expected;
};

class ColourByValue : public testing::TestWithParam<ByValueRow>
{
};

TEST_P(ColourByValue, FindsTheName)
{
    EXPECT_EQ(Frame::ColourNameByValue(GetParam().value, GetParam().table), GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(Rows, ColourByValue,
    testing::Values(ByValueRow { "found", redFirst, 128, u"DARK RED"_s },
        ByValueRow { "first_of_two_equal_values", { { u"A"_s, 5 }, { u"B"_s, 5 } }, 5, u"A"_s },
        ByValueRow { "not_found_is_empty", redFirst, 1, QString() },
        ByValueRow { "minus_one_not_found", redFirst, -1, QString() }),
    RowName<ByValueRow>);

// ---- Shading --------------------------------------------------------------------------------

struct QuadRow
{
    const char* name;
    std::int32_t colour;
    std::array<std::uint8_t, 4> expected;
};

class RgbQuad : public testing::TestWithParam<QuadRow>
{
};

TEST_P(RgbQuad, IsBlueGreenRedZero)
{
    EXPECT_EQ(Frame::ColourToRgbQuad(GetParam().colour), GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(Rows, RgbQuad,
    testing::Values(QuadRow { "red", 0x0000FF, { 0, 0, 255, 0 } },
        QuadRow { "mixed", 0x123456, { 0x12, 0x34, 0x56, 0 } },
        QuadRow { "top_byte_ignored", 0x7F0000FF, { 0, 0, 255, 0 } },
        QuadRow { "minus_one", -1, { 255, 255, 255, 0 } }),
    RowName<QuadRow>);

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
        ShadeRow { "zero_percent_unchanged", 0x123456, 0, 0x123456 },
        ShadeRow { "full_dark_is_black", 0xFFFFFF, -100, 0 },
        ShadeRow { "full_light_is_white", 0x000000, 100, 0xFFFFFF },
        ShadeRow { "each_channel_on_its_own", Rgb(100, 50, 200), -10, Rgb(90, 45, 180) },
        ShadeRow { "lighten_each_channel", Rgb(0, 100, 255), 20, Rgb(51, 131, 255) },
        ShadeRow { "half_down_to_even", Rgb(1, 3, 5), -50, Rgb(0, 2, 2) },
        ShadeRow { "beyond_minus_100_held", Rgb(200, 100, 50), -150, 0 },
        ShadeRow { "beyond_100_held", Rgb(200, 100, 50), 250, 0xFFFFFF },
        ShadeRow { "top_byte_dropped", 0x7F0000FF, 0, 0x0000FF }),
    RowName<ShadeRow>);

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
