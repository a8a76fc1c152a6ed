#include "frame/Colours.h"

#include "RowFile.h"
#include "frame/FrameSettings.h"

#include <QFile>
#include <QSet>
#include <QTemporaryDir>
#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;
using Frame::ColourEntry;

namespace {

using RowFile::In;
using RowFile::Named;

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

// A colour table as the rows write it: name=value entries separated by ", ".
QList<ColourEntry> TableOf(const RowFile::Row& row, const char* column)
{
    QList<ColourEntry> table;
    for (const QString& entry : row.list(column)) {
        const qsizetype equals = entry.lastIndexOf(u'=');
        bool ok = false;
        table.append(
            { entry.first(equals), std::int32_t(entry.sliced(equals + 1).toLongLong(&ok, 0)) });
        EXPECT_TRUE(ok) << row.where() << ": " << entry.toStdString();
    }
    return table;
}

using ColourFile = RowFile::RowTest<>;

TEST_P(ColourFile, GivesTheColourTable)
{
    const QList<ColourEntry> table
        = ReadTable(row().text("file") == u"(no file)" ? QByteArray() : row().bytes("file"));
    const QList<ColourEntry> expected = TableOf(row(), "colours");
    ASSERT_EQ(table.size(), expected.size());
    for (qsizetype index = 0; index < table.size(); ++index) {
        EXPECT_EQ(table[index].Name.toStdString(), expected[index].Name.toStdString())
            << "entry " << index;
        EXPECT_EQ(table[index].Value, expected[index].Value) << "entry " << index;
    }
}

INSTANTIATE_TEST_SUITE_P(Rows, ColourFile, In("frame/colours/colourFile.rows"), Named());

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

using ColourByName = RowFile::RowTest<>;

TEST_P(ColourByName, FindsTheValue)
{
    EXPECT_EQ(Frame::ColourValueByName(row().text("sought"), TableOf(row(), "table")),
        row().whole("value"));
}

INSTANTIATE_TEST_SUITE_P(Rows, ColourByName, In("frame/colours/colourByName.rows"), Named());

using ColourByValue = RowFile::RowTest<>;

TEST_P(ColourByValue, IsTheFirstNameWithThatValueOrEmpty)
{
    EXPECT_EQ(Frame::ColourNameByValue(std::int32_t(row().whole("value")), TableOf(row(), "table"))
                  .toStdString(),
        row().text("colourName").toStdString());
}

INSTANTIATE_TEST_SUITE_P(Rows, ColourByValue, In("frame/colours/colourByValue.rows"), Named());

using Shade = RowFile::RowTest<>;

TEST_P(Shade, GivesTheShadedColour)
{
    EXPECT_EQ(Frame::ShadeColour(std::int32_t(row().whole("colour")), row().number("percent")),
        row().whole("shaded"));
}

INSTANTIATE_TEST_SUITE_P(Rows, Shade, In("frame/colours/shade.rows"), Named());

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
