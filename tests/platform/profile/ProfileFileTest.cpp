#include "platform/profile/ProfileFile.h"

#include <QByteArray>
#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;
using Profile::ProfileFile;

namespace {

struct LookupRow
{
    const char* name;
    QByteArray file;
    QString section;
    QString key;
    QString expected;
    bool found;
};

void PrintTo(const LookupRow& row, std::ostream* stream)
{
    *stream << row.name;
}

class ProfileLookup : public testing::TestWithParam<LookupRow>
{
};

TEST_P(ProfileLookup, GivesTheClassicReadersValue)
{
    const LookupRow& row = GetParam();
    const ProfileFile profile = ProfileFile::fromBytes(row.file);
    EXPECT_EQ(profile.value(row.section, row.key), row.expected);
    EXPECT_EQ(profile.contains(row.section, row.key), row.found);
}

const QByteArray colours = "[Quorbin Colours]\r\nNumber=2\r\nColourName1=RED\r\n"
                           "ColourValue1=&HFF\r\nColourName2 = LIGHT BLUE \r\n";
const QString section = u"Quorbin Colours"_s;

INSTANTIATE_TEST_SUITE_P(Rows, ProfileLookup,
    testing::Values(LookupRow { "plain_key", colours, section, u"ColourValue1"_s, u"&HFF"_s, true },
        LookupRow {
            "section_without_case", colours, u"QUORBIN colours"_s, u"Number"_s, u"2"_s, true },
        LookupRow { "key_without_case", colours, section, u"colourname1"_s, u"RED"_s, true },
        LookupRow { "blanks_around_key_and_value_dropped", colours, section, u"ColourName2"_s,
            u"LIGHT BLUE"_s, true },
        LookupRow { "tabs_are_blanks", "[s]\n\tk\t=\tv w\t\n", u"s"_s, u"k"_s, u"v w"_s, true },
        LookupRow {
            "blanks_inside_section_brackets", "[ s ]\nk=v\n", u"s"_s, u"k"_s, u"v"_s, true },
        LookupRow { "missing_key", colours, section, u"ColourName3"_s, {}, false },
        LookupRow { "missing_section", colours, u"Other"_s, u"Number"_s, {}, false },
        LookupRow { "empty_file", "", section, u"Number"_s, {}, false },
        LookupRow { "empty_value_is_present", "[s]\nk=\n", u"s"_s, u"k"_s, {}, true },
        LookupRow {
            "double_quotes_dropped", "[s]\nk=\"  a b  \"\n", u"s"_s, u"k"_s, u"  a b  "_s, true },
        LookupRow { "single_quotes_dropped", "[s]\nk='x'\n", u"s"_s, u"k"_s, u"x"_s, true },
        LookupRow {
            "only_one_pair_of_quotes", "[s]\nk=\"\"x\"\"\n", u"s"_s, u"k"_s, u"\"x\""_s, true },
        LookupRow { "mismatched_quotes_kept", "[s]\nk=\"x'\n", u"s"_s, u"k"_s, u"\"x'"_s, true },

        LookupRow {
            "quotes_inside_blanks_dropped", "[s]\nk=  \"v\"  \n", u"s"_s, u"k"_s, u"v"_s, true },
        LookupRow { "value_keeps_later_equals", "[s]\nk=a=b\n", u"s"_s, u"k"_s, u"a=b"_s, true },
        LookupRow { "comment_line_skipped", "[s]\n;k=1\nk=2\n", u"s"_s, u"k"_s, u"2"_s, true },
        LookupRow { "indented_comment_skipped", "[s]\n  ; k=1\n", u"s"_s, u"; k"_s, {}, false },
        LookupRow { "semicolon_inside_value_kept", "[s]\nk=1 ; note\n", u"s"_s, u"k"_s,
            u"1 ; note"_s, true },
        LookupRow { "first_duplicate_key_wins", "[s]\nk=1\nK=2\n", u"s"_s, u"k"_s, u"1"_s, true },
        LookupRow { "repeated_section_adds_keys", "[s]\na=1\n[t]\nb=2\n[S]\nb=3\n", u"s"_s, u"b"_s,
            u"3"_s, true },
        LookupRow { "repeated_section_first_key_wins", "[s]\nb=1\n[s]\nb=2\n", u"s"_s, u"b"_s,
            u"1"_s, true },
        LookupRow { "keys_before_any_section_ignored", "k=1\n[s]\n", u"s"_s, u"k"_s, {}, false },
        LookupRow { "line_without_equals_ignored", "[s]\nk\nk=2\n", u"s"_s, u"k"_s, u"2"_s, true },

        LookupRow {
            "text_after_bracket_ignored", "[s] trailing\nk=v\n", u"s"_s, u"k"_s, u"v"_s, true },
        LookupRow {
            "unclosed_section_takes_whole_line", "[s\nk=v\n", u"s"_s, u"k"_s, u"v"_s, true },

        LookupRow { "cr_only_line_ends", "[s]\ra=1\rb=2\r", u"s"_s, u"b"_s, u"2"_s, true },
        LookupRow { "no_line_end_at_end", "[s]\nk=last", u"s"_s, u"k"_s, u"last"_s, true },
        LookupRow { "nul_ends_its_line", QByteArray("[s]\nk=ab\0cd\nm=2\n", 16), u"s"_s, u"k"_s,
            u"ab"_s, true },
        LookupRow { "nul_before_equals_hides_key", QByteArray("[s]\nk\0=1\nm=2\n", 13), u"s"_s,
            u"m"_s, u"2"_s, true },
        LookupRow { "utf8_value", "[s]\nk=caf\xC3\xA9 \xE2\x82\xAC\n", u"s"_s, u"k"_s,
            u"caf\u00E9 \u20AC"_s, true },
        LookupRow { "windows_1252_value", "[s]\nk=caf\xE9 \x80\n", u"s"_s, u"k"_s,
            u"caf\u00E9 \u20AC"_s, true },

        LookupRow {
            "byte_order_mark_dropped", "\xEF\xBB\xBF[s]\nk=v\n", u"s"_s, u"k"_s, u"v"_s, true }),
    [](const testing::TestParamInfo<LookupRow>& info) { return std::string(info.param.name); });

struct LengthRow
{
    const char* name;
    qsizetype valueLength;
    qsizetype expectedLength;
};

class ProfileValueLength : public testing::TestWithParam<LengthRow>
{
};

// The classic 255-character buffer: 254 characters and the NUL.
TEST_P(ProfileValueLength, IsCutToTheBuffer)
{
    const LengthRow& row = GetParam();
    QByteArray file = "[s]\nk=";
    for (qsizetype i = 0; i < row.valueLength; ++i)
        file += char('a' + i % 26);
    file += "\nafter=1\n";
    const ProfileFile profile = ProfileFile::fromBytes(file);
    const QString value = profile.value(u"s", u"k");
    ASSERT_EQ(value.size(), row.expectedLength);
    for (qsizetype i = 0; i < value.size(); ++i)
        ASSERT_EQ(value[i], QLatin1Char(char(u8'a' + i % 26))) << "at " << i;
    EXPECT_EQ(profile.value(u"s", u"after"), u"1"_s);
}

INSTANTIATE_TEST_SUITE_P(Rows, ProfileValueLength,
    testing::Values(LengthRow { "short", 10, 10 }, LengthRow { "exactly_254", 254, 254 },
        LengthRow { "255_cut", 255, 254 }, LengthRow { "one_megabyte_line", 1 << 20, 254 }),
    [](const testing::TestParamInfo<LengthRow>& info) { return std::string(info.param.name); });

TEST(ProfileValue, CutDoesNotSplitASurrogatePair)
{
    // 253 letters, then a character outside the basic plane (two UTF-16 units).
    QByteArray file = "[s]\nk=" + QByteArray(253, 'a') + "\xF0\x9F\x98\x80" + "b\n";
    const QString value = ProfileFile::fromBytes(file).value(u"s", u"k");
    EXPECT_EQ(value, QString(253, u'a'));
}

TEST(ProfileValue, QuotesAreDroppedBeforeTheCut)
{
    const QByteArray file = "[s]\nk=\"" + QByteArray(300, 'x') + "\"\n";
    EXPECT_EQ(ProfileFile::fromBytes(file).value(u"s", u"k"), QString(254, u'x'));
}

TEST(ProfileFile, ReadsManyKeysFromOneParse)
{
    QByteArray file = "[Data]\r\n";
    for (int row = 0; row < 2000; ++row)
        file += "Row" + QByteArray::number(row) + "=" + QByteArray::number(row * 7) + "\r\n";
    const ProfileFile profile = ProfileFile::fromBytes(file);
    for (int row = 0; row < 2000; ++row)
        ASSERT_EQ(
            profile.value(u"data", u"ROW"_s + QString::number(row)), QString::number(row * 7));
}

class ReadIniStringFile : public testing::Test
{
protected:
    QString write(const QByteArray& bytes)
    {
        const QString path = m_folder.filePath(u"Colours.ini"_s);
        QFile file(path);
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(bytes);
        return path;
    }
    QTemporaryDir m_folder;
};

TEST_F(ReadIniStringFile, ReadsAKeyFromAFile)
{
    const QString path = write(colours);
    EXPECT_EQ(Profile::ReadIniString(path, u"quorbin colours", u"COLOURNAME1"), u"RED"_s);
}

TEST_F(ReadIniStringFile, MissingFileReadsEmpty)
{
    EXPECT_EQ(Profile::ReadIniString(m_folder.filePath(u"none.ini"_s), u"s", u"k"), QString());
    EXPECT_TRUE(ProfileFile::load(m_folder.filePath(u"none.ini"_s)).isEmpty());
}

TEST_F(ReadIniStringFile, FolderInsteadOfFileReadsEmpty)
{
    EXPECT_EQ(Profile::ReadIniString(m_folder.path(), u"s", u"k"), QString());
}

} // namespace
