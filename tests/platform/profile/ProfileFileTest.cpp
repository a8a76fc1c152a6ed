#include "platform/profile/ProfileFile.h"

#include "RowFile.h"
#include "TableRows.h"

#include <QByteArray>
#include <QTemporaryDir>
#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;
using Profile::ProfileFile;

namespace {

using TestRows::PrintTo;

using ProfileLookup = RowFile::RowTest<>;

TEST_P(ProfileLookup, GivesTheClassicReadersValue)
{
    const ProfileFile profile = ProfileFile::fromBytes(row().bytes("file"));
    EXPECT_EQ(profile.value(row().text("section"), row().text("key")).toStdString(),
        row().text("value").toStdString());
    EXPECT_EQ(profile.contains(row().text("section"), row().text("key")), row().flag("found"));
}

INSTANTIATE_TEST_SUITE_P(
    Rows, ProfileLookup, RowFile::In("platform/profile/lookup.rows"), RowFile::Named());

// The letters a to z over and over, so that a cut in the wrong place changes the text.
QByteArray Letters(qsizetype count)
{
    QByteArray letters;
    for (qsizetype index = 0; index < count; ++index)
        letters += char('a' + index % 26);
    return letters;
}

struct LengthRow
{
    const char* name;
    QByteArray value; // as the file holds it
    QByteArray expected;
};

class ProfileValueLength : public testing::TestWithParam<LengthRow>
{
};

// The classic 255-character buffer: 254 characters and the NUL.
TEST_P(ProfileValueLength, IsCutToTheBuffer)
{
    const ProfileFile profile
        = ProfileFile::fromBytes("[s]\nk=" + GetParam().value + "\nafter=1\n");
    EXPECT_EQ(profile.value(u"s", u"k").toStdString(), GetParam().expected.toStdString());
    EXPECT_EQ(profile.value(u"s", u"after"), u"1"_s);
}

INSTANTIATE_TEST_SUITE_P(Rows, ProfileValueLength,
    testing::Values(LengthRow { "short", Letters(10), Letters(10) },
        LengthRow { "exactly_254", Letters(254), Letters(254) },
        LengthRow { "255_cut", Letters(255), Letters(254) },
        LengthRow { "one_megabyte_line", Letters(1 << 20), Letters(254) },
        // 253 letters, then a character outside the basic plane (two UTF-16 units).
        LengthRow { "cut_keeps_surrogate_pairs_whole", Letters(253) + "\xF0\x9F\x98\x80" + 'b',
            Letters(253) },
        LengthRow { "quotes_dropped_before_the_cut", '"' + Letters(300) + '"', Letters(254) }),
    TestRows::Named());

// Colours.ini is read through load (ColoursTest); a folder in its place reads as no file.
TEST(ProfileFileLoad, MissingFileOrFolderReadsEmpty)
{
    QTemporaryDir folder;
    EXPECT_TRUE(ProfileFile::load(folder.filePath(u"none.ini"_s)).isEmpty());
    EXPECT_TRUE(ProfileFile::load(folder.path()).isEmpty());
}

} // namespace
