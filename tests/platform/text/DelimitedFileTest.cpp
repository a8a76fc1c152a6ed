#include "platform/text/DelimitedFile.h"

#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>
#include <ostream>

// Shows QString values as text in failure messages instead of bytes.
inline void PrintTo(const QString& text, std::ostream* stream)
{
    *stream << '"' << text.toStdString() << '"';
}

using namespace Qt::Literals::StringLiterals;
using Text::DelimitedFile;

namespace {

class DelimitedFiles : public testing::Test
{
protected:
    QString write(const QByteArray& bytes)
    {
        const QString path = m_folder.filePath(u"data.csv"_s);
        QFile file(path);
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(bytes);
        return path;
    }

    QTemporaryDir m_folder;
    DelimitedFile file;
};

struct CountRow
{
    const char* name;
    QByteArray bytes;
    bool labels;
    int records;
    int fields;
};

class CountingRecords : public DelimitedFiles, public testing::WithParamInterface<CountRow>
{
};

// Counted by lines, whatever the quotes hold.
TEST_P(CountingRecords, CountsLinesLessTheLabels)
{
    file.setFirstRowIsLabels(GetParam().labels);
    ASSERT_TRUE(file.OpenFile(write(GetParam().bytes)));
    EXPECT_EQ(file.NumberOfRecords(), GetParam().records);
    EXPECT_EQ(file.NumberOfFields(), GetParam().fields);
}

INSTANTIATE_TEST_SUITE_P(Rows, CountingRecords,
    testing::Values(CountRow { "threeLines", "Name,Age\r\nAnn,9\r\nBen,10\r\n", false, 3, 2 },
        CountRow { "threeLinesOneOfLabels", "Name,Age\r\nAnn,9\r\nBen,10\r\n", true, 2, 2 },
        CountRow { "lastLineWithoutLineEnd", "a\nb\nc", false, 3, 1 },
        CountRow { "quoteAcrossLines", "\"a\nb\",c\n", false, 2, 1 },
        CountRow { "empty", "", true, 0, 0 }),
    [](const testing::TestParamInfo<CountRow>& info) { return info.param.name; });

TEST_F(DelimitedFiles, FirstLineGivesFieldsAndLabels)
{
    ASSERT_TRUE(file.OpenFile(write("Name,\"Age, years\",Pet\nAnn,9,cat\n")));
    EXPECT_EQ(file.NumberOfFields(), 3);
    EXPECT_EQ(file.FieldLabel(1), u"Age, years"_s);
    EXPECT_TRUE(file.FieldLabel(3).isEmpty());
    EXPECT_TRUE(file.FieldLabel(-1).isEmpty());
}

TEST_F(DelimitedFiles, RecordsInOrderThenEnd)
{
    ASSERT_TRUE(file.OpenFile(write("Name,Age\r\nAnn,9\r\nBen,10\r\n")));
    QStringList fields;
    ASSERT_TRUE(file.GetRecords(fields));
    EXPECT_EQ(fields, (QStringList { u"Name"_s, u"Age"_s }));
    ASSERT_TRUE(file.GetRecords(fields));
    ASSERT_TRUE(file.GetRecords(fields));
    EXPECT_EQ(fields, (QStringList { u"Ben"_s, u"10"_s }));
    EXPECT_FALSE(file.GetRecords(fields));
}

TEST_F(DelimitedFiles, LabelsLineIsPassedOver)
{
    file.setFirstRowIsLabels(true);
    ASSERT_TRUE(file.OpenFile(write("Name,Age\nAnn,9\n")));
    QStringList fields;
    ASSERT_TRUE(file.GetRecords(fields));
    EXPECT_EQ(fields, (QStringList { u"Ann"_s, u"9"_s }));
    EXPECT_FALSE(file.GetRecords(fields));
}

TEST_F(DelimitedFiles, TabSeparated)
{
    file.setSeparator(u"\t"_s);
    ASSERT_TRUE(file.OpenFile(write("a,b\tc\n")));
    EXPECT_EQ(file.FieldLabel(0), u"a,b"_s);
    EXPECT_EQ(file.NumberOfFields(), 2);
}

TEST_F(DelimitedFiles, Windows1252LinesAndUtf8Lines)
{
    ASSERT_TRUE(file.OpenFile(write("\xEF\xBB\xBF"
                                    "caf\xC3\xA9\n\xA3"
                                    "5\n")));
    QStringList fields;
    ASSERT_TRUE(file.GetRecords(fields));
    EXPECT_EQ(fields, QStringList { u"café"_s });
    ASSERT_TRUE(file.GetRecords(fields));
    EXPECT_EQ(fields, QStringList { u"£5"_s });
}

TEST_F(DelimitedFiles, ClosingResetsTheCounts)
{
    ASSERT_TRUE(file.OpenFile(write("a,b\nc,d\n")));
    file.CloseFile();
    EXPECT_EQ(file.NumberOfRecords(), 0);
    EXPECT_EQ(file.NumberOfFields(), 0);
    QStringList fields;
    EXPECT_FALSE(file.GetRecords(fields));
}

TEST_F(DelimitedFiles, MissingFileIsNotOpened)
{
    EXPECT_FALSE(file.OpenFile(m_folder.filePath(u"none.csv"_s)));
    EXPECT_EQ(file.NumberOfRecords(), 0);
}

} // namespace
