#include "platform/text/DelimitedFile.h"

#include "RowFile.h"

#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;
using Text::DelimitedFile;

namespace {

// Records as the rows write them: [a|b][c].
QString Bracketed(const QList<QStringList>& records)
{
    QString text;
    for (const QStringList& record : records)
        text += u'[' + record.join(u'|') + u']';
    return text;
}

class DelimitedFiles : public RowFile::RowTest<>
{
protected:
    QTemporaryDir m_folder;
    DelimitedFile file;
};

TEST_P(DelimitedFiles, CountLinesAndReadRecordsInOrder)
{
    const QString path = m_folder.filePath(u"data.csv"_s);
    QFile bytes(path);
    ASSERT_TRUE(bytes.open(QIODevice::WriteOnly));
    bytes.write(row().bytes("file"));
    bytes.close();
    file.setFirstRowIsLabels(row().flag("labels"));
    file.setSeparator(row().text("separator"));
    ASSERT_TRUE(file.OpenFile(path));
    EXPECT_EQ(file.NumberOfRecords(), row().whole("records"));
    ASSERT_EQ(file.NumberOfFields(), row().whole("fields"));
    QStringList labels;
    for (int index = 0; index < file.NumberOfFields(); ++index)
        labels << file.FieldLabel(index);
    EXPECT_EQ(Bracketed(labels.isEmpty() ? QList<QStringList> {} : QList<QStringList> { labels })
                  .toStdString(),
        row().text("fieldLabels").toStdString());
    EXPECT_TRUE(file.FieldLabel(-1).isEmpty());
    EXPECT_TRUE(file.FieldLabel(file.NumberOfFields()).isEmpty());
    QList<QStringList> records;
    for (QStringList fields; file.GetRecords(fields);)
        records << fields;
    EXPECT_EQ(Bracketed(records).toStdString(), row().text("read").toStdString());
    file.CloseFile();
    EXPECT_EQ(file.NumberOfRecords(), 0);
    EXPECT_EQ(file.NumberOfFields(), 0);
}

INSTANTIATE_TEST_SUITE_P(
    Rows, DelimitedFiles, RowFile::In("platform/text/delimitedFile.rows"), RowFile::Named());

TEST(DelimitedFile, MissingFileIsNotOpened)
{
    QTemporaryDir folder;
    DelimitedFile file;
    EXPECT_FALSE(file.OpenFile(folder.filePath(u"none.csv"_s)));
    EXPECT_EQ(file.NumberOfRecords(), 0);
}

} // namespace
