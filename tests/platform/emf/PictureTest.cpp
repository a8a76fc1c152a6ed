#include "platform/emf/Picture.h"

#include "platform/emf/RecordTrace.h"
#include "platform/emf/RecordType.h"
#include "platform/emf/RecordingContext.h"

#include <QFile>
#include <QTemporaryDir>
#include <cstring>
#include <functional>
#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;
using Emf::Picture;

namespace {

// Header, rectangle, polygon, ellipse, end: the offsets the damage rows below aim at.
QByteArray soundBytes()
{
    Emf::RecordingContext context(Emf::ReferenceDevice::Screen(), { 0, 0, 2000, 2000 }, u"Test"_s);
    context.rectangle({ 1, 2, 3, 4 });
    const Emf::PointL points[] = { { 0, 0 }, { 5, 0 }, { 5, 5 } };
    context.polygon(points);
    context.ellipse({ 0, 0, 9, 9 });
    return context.finish().bytes();
}

std::uint32_t readU32(const QByteArray& bytes, qsizetype offset)
{
    std::uint32_t value = 0;
    std::memcpy(&value, bytes.constData() + offset, sizeof value);
    return value;
}

void writeU32(QByteArray& bytes, qsizetype offset, std::uint32_t value)
{
    std::memcpy(bytes.data() + offset, &value, sizeof value);
}

// Offset of the n-th record after the header (0 = the rectangle).
qsizetype recordOffset(const QByteArray& bytes, int index)
{
    qsizetype offset = readU32(bytes, 4);
    for (int step = 0; step < index; ++step)
        offset += readU32(bytes, offset + 4);
    return offset;
}

struct DamageRow
{
    const char* name;
    std::function<void(QByteArray&)> damage;
    bool valid;
    std::size_t records;
    QString error;
};

class DamagedPicture : public testing::TestWithParam<DamageRow>
{
};

TEST_P(DamagedPicture, IsRefusedOrReadAsFarAsItIsSound)
{
    QByteArray bytes = soundBytes();
    GetParam().damage(bytes);
    const Picture picture = Picture::fromBytes(bytes);
    EXPECT_EQ(picture.isValid(), GetParam().valid);
    EXPECT_EQ(picture.records().size(), GetParam().records);
    EXPECT_EQ(picture.errorText(), GetParam().error);
}

const QString notEmf = u"The file is not an enhanced metafile."_s;
const QString badHeader = u"The picture is damaged: its header has a wrong size."_s;

const DamageRow damageRows[] = {
    { "sound", [](QByteArray&) {}, true, 4, {} },
    { "empty", [](QByteArray& b) { b.clear(); }, false, 0, notEmf },
    { "shorterThanAHeader", [](QByteArray& b) { b.truncate(60); }, false, 0, notEmf },
    { "wrongSignature", [](QByteArray& b) { b[40] = 'X'; }, false, 0, notEmf },
    { "firstRecordNotAHeader", [](QByteArray& b) { writeU32(b, 0, 3); }, false, 0, notEmf },
    { "headerLongerThanTheFile", [](QByteArray& b) { writeU32(b, 4, 1u << 30); }, false, 0,
        badHeader },
    { "headerSizeNotWholeWords", [](QByteArray& b) { writeU32(b, 4, readU32(b, 4) - 2); }, false, 0,
        badHeader },
    { "recordSizeNotWholeWords", [](QByteArray& b) { writeU32(b, recordOffset(b, 1) + 4, 13); },
        true, 1, u"The picture is damaged: record 2 has a wrong size."_s },
    { "recordOfSizeZero", [](QByteArray& b) { writeU32(b, recordOffset(b, 2) + 4, 0); }, true, 2,
        u"The picture is damaged: record 3 has a wrong size."_s },
    { "recordRunningPastTheEnd",
        [](QByteArray& b) { writeU32(b, recordOffset(b, 0) + 4, 0x7FFFFFF0); }, true, 0,
        u"The picture is damaged: record 1 has a wrong size."_s },
    { "cutInsideARecord", [](QByteArray& b) { b.truncate(recordOffset(b, 1) + 12); }, true, 1,
        u"The picture is damaged: record 2 has a wrong size."_s },
    { "cutInsideARecordPrefix", [](QByteArray& b) { b.truncate(recordOffset(b, 1) + 4); }, true, 1,
        u"The picture is damaged: it ends inside a record."_s },
    { "cutBetweenRecords", [](QByteArray& b) { b.truncate(recordOffset(b, 3)); }, true, 3,
        u"The picture is damaged: it has no end record."_s },
    { "polygonCountBeyondItsRecord",
        [](QByteArray& b) { writeU32(b, recordOffset(b, 1) + 24, 1000); }, true, 3,
        u"The picture is damaged: unreadable records were left out (1)."_s },
    { "bytesAfterTheEndRecord", [](QByteArray& b) { b.append(QByteArray(40, '\x7F')); }, true, 4,
        {} },
};

INSTANTIATE_TEST_SUITE_P(PictureTest, DamagedPicture, testing::ValuesIn(damageRows),
    [](const testing::TestParamInfo<DamageRow>& info) { return std::string(info.param.name); });

TEST(PictureTest, UnknownRecordTypesAreKeptForThePlayerToPassOver)
{
    QByteArray bytes = soundBytes();
    writeU32(bytes, recordOffset(bytes, 0), 4000);
    const Picture picture = Picture::fromBytes(bytes);
    EXPECT_EQ(picture.errorText(), QString());
    ASSERT_EQ(picture.records().size(), 4u);
    EXPECT_EQ(Emf::TraceRecord(4000, picture.recordBytes(picture.records()[0])),
        u"RECORD 4000 size 24"_s);
}

TEST(PictureTest, DescriptionOutsideTheHeaderIsLeftOut)
{
    QByteArray bytes = soundBytes();
    writeU32(bytes, 64, 100000);
    const Picture picture = Picture::fromBytes(bytes);
    EXPECT_TRUE(picture.isValid());
    EXPECT_EQ(picture.header().description, QString());
    EXPECT_EQ(picture.records().size(), 4u);
}

TEST(PictureTest, SavedFileReadsBackByteForByte)
{
    QTemporaryDir folder;
    ASSERT_TRUE(folder.isValid());
    const Picture picture = Picture::fromBytes(soundBytes());
    const QString path = folder.filePath(u"Graph.emf"_s);
    EXPECT_EQ(picture.save(path), QString());
    const Picture read = Picture::fromFile(path);
    EXPECT_EQ(read.bytes(), picture.bytes());
    EXPECT_EQ(read.records().size(), 4u);
}

TEST(PictureTest, MissingFileGivesAnInvalidPictureWithTheReason)
{
    const Picture picture = Picture::fromFile(u"/nonexistent/folder/Graph.emf"_s);
    EXPECT_FALSE(picture.isValid());
    EXPECT_TRUE(picture.errorText().startsWith(u"The picture file could not be opened"_s));
}

TEST(PictureTest, SaveIntoAMissingFolderReportsAndWritesNothing)
{
    const Picture picture = Picture::fromBytes(soundBytes());
    EXPECT_NE(picture.save(u"/nonexistent/folder/Graph.emf"_s), QString());
    EXPECT_FALSE(QFile::exists(u"/nonexistent/folder/Graph.emf"_s));
}

} // namespace
