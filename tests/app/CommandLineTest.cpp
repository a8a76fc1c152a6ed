#include "RowFile.h"
#include "VerbTestSupport.h"
#include "sheet/CellEntry.h"
#include "sheet/Sheet.h"
#include "sheet/SheetFile.h"

#include <QFile>

using namespace Qt::Literals::StringLiterals;
using CliTest::RunCli;

namespace {

const QString separator = QStringLiteral(" | ");

// ---- Verbs that answer on standard output ------------------------------------------------

class Answers : public RowFile::RowTest<CliTest::VerbTest>
{
};

TEST_P(Answers, PrintTheValueOrTheMessage)
{
    const CliTest::Outcome outcome = RunCli(row().list("arguments", separator));
    EXPECT_EQ(outcome.status, row().whole("status"));
    EXPECT_EQ(outcome.out, row().text("out"));
    EXPECT_EQ(outcome.err, row().text("err"));
}

INSTANTIATE_TEST_SUITE_P(Verbs, Answers, RowFile::In("app/answers.rows"), RowFile::Named());

// ---- Refusals: a status, a message, no output, and no file changed -----------------------

// One folder of inputs, good and bad, for every verb.
class Refusals : public RowFile::RowTest<CliTest::VerbTest>
{
protected:
    void SetUp() override
    {
        RowTest::SetUp();
        write(u"ok.csv"_s, "a,1\n");
        write(u"empty.csv"_s, "\n\n");
        write(u"bad.qnp"_s, "[Ormsey Data File]\nRow1 = \"a\",\"1\",\"2\",\"3\",\"4\",\"5\"\n");
        write(u"damaged.qnc"_s, "\x01\x00\x00\x00\x02\x00\x36\x01\x02\x00"_ba);
        write(u"text.qnd"_s, "Name,Kind\r\nRex,Dog\r\n");
        write(u"dup.csv"_s, "Name\r\nTiddles\r\nrex\r\n");
        Tillane::Sheet sheet;
        Tillane::EnterCell(sheet, 1, 1, u"4"_s);
        Tillane::EnterCell(sheet, 1, 2, u"=A1*2"_s);
        Tillane::EnterCell(sheet, 1, 3, u"=1/A1"_s);
        ASSERT_EQ(Tillane::SaveSheetFile(sheet, path(u"sheet.qnc"_s)), QString());
        sheet.record(1, 1).Locked = true;
        ASSERT_EQ(Tillane::SaveSheetFile(sheet, path(u"locked.qnc"_s)), QString());
        write(u"class.qnd"_s, s_cardFile);
    }

    // A card file holding one card, made once: the engine syncs every write to the disk.
    static void SetUpTestSuite()
    {
        QTemporaryDir folder;
        const QString file = folder.filePath(u"class.qnd"_s);
        const QString csv = folder.filePath(u"one.csv"_s);
        QFile list(csv);
        ASSERT_TRUE(list.open(QIODevice::WriteOnly));
        list.write("Name\r\nRex\r\n");
        list.close();
        ASSERT_EQ(RunCli({ u"cards"_s, u"new"_s, file }).status, 0);
        ASSERT_EQ(RunCli({ u"cards"_s, u"import"_s, file, csv }).status, 0);
        s_cardFile = read(file);
    }

    static QByteArray s_cardFile;
};

QByteArray Refusals::s_cardFile;

TEST_P(Refusals, SayWhyAndChangeNothing)
{
    const QMap<QString, QByteArray> before = snapshot();
    const CliTest::Outcome outcome = RunCli(inFolder(row().list("arguments", separator)));
    EXPECT_EQ(outcome.status, row().whole("status"));
    const QString errStart = inFolder({ row().text("err") }).front();
    EXPECT_TRUE(outcome.err.startsWith(errStart)) << outcome.err.toStdString();
    EXPECT_TRUE(outcome.err.endsWith(u'\n'));
    EXPECT_TRUE(outcome.out.isEmpty()) << outcome.out.toStdString();
    EXPECT_EQ(snapshot(), before);
}

INSTANTIATE_TEST_SUITE_P(Verbs, Refusals, RowFile::In("app/refusals.rows"), RowFile::Named());

TEST(CommandLine, HelpListsEveryVerb)
{
    const CliTest::Outcome outcome = RunCli({ u"--help"_s });
    EXPECT_EQ(outcome.status, 0);
    for (const QString& verb : { u"format VALUE FORMAT"_s, u"val TEXT"_s, u"str NUMBER"_s,
             u"eval EXPR"_s, u"sheet convert"_s, u"sheet get"_s, u"sheet set"_s, u"graph convert"_s,
             u"cards new"_s, u"cards import"_s, u"cards export"_s, u"cards find"_s, u"cards info"_s,
             u"cards compact"_s })
        EXPECT_TRUE(outcome.out.contains(verb)) << verb.toStdString();
}

} // namespace
