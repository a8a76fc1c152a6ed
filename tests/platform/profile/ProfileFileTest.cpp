#include "platform/profile/ProfileFile.h"

#include "RowFile.h"

#include <QByteArray>
#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;
using Profile::ProfileFile;

namespace {

class ProfileLookup : public RowFile::RowTest<>
{
};

TEST_P(ProfileLookup, GivesTheClassicReadersValue)
{
    const ProfileFile profile = ProfileFile::fromBytes(row().bytes("file"));
    EXPECT_EQ(profile.value(row().text("section"), row().text("key")).toStdString(),
        row().text("value").toStdString());
    EXPECT_EQ(profile.contains(row().text("section"), row().text("key")), row().flag("found"));
}

INSTANTIATE_TEST_SUITE_P(
    Rows, ProfileLookup, RowFile::In("platform/profile/lookup.rows"), RowFile::Named());

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
    const QString path = write("[Quorbin Colours]\r\nColourName1=RED\r\n");
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
