#include "sheet/SheetTransfer.h"

#include "sheet/SheetTestSupport.h"

#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;
using namespace Tillane;

namespace {

class Transfers : public SheetTest
{
protected:
    QString write(const char* name, const QByteArray& bytes)
    {
        const QString path = folder.filePath(QString::fromLatin1(name));
        QFile file(path);
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(bytes);
        return path;
    }
    QByteArray read(const QString& path)
    {
        QFile file(path);
        EXPECT_TRUE(file.open(QIODevice::ReadOnly));
        return file.readAll();
    }

    QTemporaryDir folder;
};

TEST_F(Transfers, ImportEntersEveryFieldAsTyped)
{
    const ImportResult result = ImportDelimitedText(sheet,
        write("in.csv", "Day,\"Rain, mm\",Sun\r\nMon,2.5mm,40%\r\nTue,=B2*2,12/3/2004\r\n"),
        u","_s);
    EXPECT_TRUE(result.error.isEmpty());
    EXPECT_TRUE(result.refusedEntries.isEmpty());
    EXPECT_EQ(shown("B1"), u"Rain, mm"_s);
    EXPECT_EQ(record("B2").NumberFormat, u"#0.##mm"_s);
    EXPECT_EQ(value("C2"), 0.4);
    EXPECT_EQ(record("B3").Kind, FormulaCell);
    EXPECT_EQ(value("B3"), 5);
    EXPECT_EQ(record("C3").NumberFormat, u"General Date"_s);
    EXPECT_EQ(sheet.usedRows(), 3);
    EXPECT_EQ(sheet.usedColumns(), 3);
}

TEST_F(Transfers, ImportedFormulaReadsALaterLine)
{
    ImportDelimitedText(sheet, write("in.csv", "=A2+A3\n4\n5\n"), u","_s);
    EXPECT_EQ(value("A1"), 9);
}

TEST_F(Transfers, TabSeparatedTextKeepsCommasInFields)
{
    ImportDelimitedText(sheet, write("in.txt", "a,b\t7\n"), u"\t"_s);
    EXPECT_EQ(shown("A1"), u"a,b"_s);
    EXPECT_EQ(value("B1"), 7);
    EXPECT_EQ(DelimitedText(sheet, u"\t"_s), u"a,b\t7\r\n"_s);
}

TEST_F(Transfers, RefusedEntriesAreReportedAndTheRestEntered)
{
    const ImportResult result
        = ImportDelimitedText(sheet, write("in.csv", "=A1+1,=sum(A1,3\n"), u","_s);
    EXPECT_EQ(result.refusedEntries,
        (QStringList {
            u"A1: Circular cell reference"_s, u"B1: Functions must end with closed brackets."_s }));
    EXPECT_EQ(value("C1"), 3);
    EXPECT_EQ(sheet.usedColumns(), 3);
}

TEST_F(Transfers, FieldsBeyondTheSheetAreLeftOutAndCounted)
{
    QByteArray wide;
    for (int field = 1; field <= 28; ++field)
        wide += QByteArray::number(field) + (field < 28 ? "," : "\n");
    QByteArray lines = wide;
    for (int line = 2; line <= 257; ++line)
        lines += "1\n";
    const ImportResult result = ImportDelimitedText(sheet, write("in.csv", lines), u","_s);
    EXPECT_EQ(result.fieldsLeftOut, 3);
    EXPECT_EQ(value("Z1"), 26);
    EXPECT_EQ(sheet.usedRows(), 256);
}

TEST_F(Transfers, ImportOfMissingFileFails)
{
    const ImportResult result = ImportDelimitedText(sheet, folder.filePath(u"none.csv"_s), u","_s);
    EXPECT_TRUE(result.error.contains(u"none.csv"_s));
}

TEST_F(Transfers, ExportWritesShownTextsUnquoted)
{
    enter("A1", u"a,b"_s);
    enter("B1", u"50%"_s);
    enter("A2", u"=6*7"_s);
    enter("C2", u"£3"_s);
    const QString path = folder.filePath(u"out.csv"_s);
    ASSERT_TRUE(ExportDelimitedText(sheet, path, u","_s).isEmpty());
    EXPECT_EQ(read(path),
        "a,b,50%,\r\n42,,\xC2\xA3"
        "3.00\r\n"_ba);
}

TEST_F(Transfers, ExportedNumbersImportToTheSameValues)
{
    enter("A1", u"12.5"_s);
    enter("B1", u"-3"_s);
    enter("C1", u"=A1*B1"_s);
    const QString path = folder.filePath(u"out.csv"_s);
    ASSERT_TRUE(ExportDelimitedText(sheet, path, u","_s).isEmpty());
    Sheet back;
    ImportDelimitedText(back, path, u","_s);
    for (int column = 1; column <= 3; ++column)
        EXPECT_EQ(back.record(1, column).Value, sheet.record(1, column).Value) << column;
}

} // namespace
